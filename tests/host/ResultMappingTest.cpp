// The numbers a plot shows: result components at a node (stress measures of known states,
// principal order, displacement magnitude, strains by Hooke's law), their display units, and
// the display built from a plot's settings (range, bands, deformation scale, section plane,
// element means).
#include "CKwMeshModel.h"
#include "KW_UOM.h"
#include "KwResultMapping.h"
#include "KwSolverResults.h"

#include <cmath>
#include <gtest/gtest.h>

namespace {

using R = KwPlotResult::Result;
namespace M = KwResultMapping;

KwNodalField field(int components, std::vector<int> ids, std::vector<double> values)
{
    KwNodalField f;
    f.components = components;
    f.nodeIds = std::move(ids);
    f.values = std::move(values);
    return f;
}

// One node (id 7) in a stress state, the tensor only: the measures are derived from it.
KwResultSet stressAt7(std::vector<double> tensor)
{
    KwResultSet s;
    s.stress = field(6, {7}, std::move(tensor));
    return s;
}

TEST(ResultMapping, stressMeasuresOfKnownStates)
{
    const double mpa = 1e6;
    const struct
    {
        const char* state;
        std::vector<double> tensor; // xx yy zz xy yz zx
        double vonMises;
        double principal[3];
    } cases[] = {
        {"uniaxial", {100 * mpa, 0, 0, 0, 0, 0}, 100 * mpa, {100 * mpa, 0, 0}},
        {"compression", {0, -60 * mpa, 0, 0, 0, 0}, 60 * mpa, {0, 0, -60 * mpa}},
        {"pure shear", {0, 0, 0, 50 * mpa, 0, 0}, std::sqrt(3.0) * 50 * mpa,
         {50 * mpa, 0, -50 * mpa}},
        {"hydrostatic", {-30 * mpa, -30 * mpa, -30 * mpa, 0, 0, 0}, 0,
         {-30 * mpa, -30 * mpa, -30 * mpa}},
        // In-plane 80/20 with shear 40 has principals 50 +- 50; out of plane -10.
        {"general", {80 * mpa, 20 * mpa, -10 * mpa, 40 * mpa, 0, 0}, std::sqrt(11100.0) * mpa,
         {100 * mpa, 0, -10 * mpa}},
    };
    const KwPlotMaterial none;
    for (const auto& c : cases) {
        const KwResultSet set = stressAt7(c.tensor);
        EXPECT_NEAR(M::NodeValue(set, R::VonMises, 0, 7, none), c.vonMises, 1e-6 * mpa) << c.state;
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(M::NodeValue(set, R::Principal, i, 7, none), c.principal[i], 1e-6 * mpa)
                << c.state << " principal " << i + 1;
        for (int i = 0; i < 6; ++i)
            EXPECT_EQ(M::NodeValue(set, R::Components, i, 7, none), c.tensor[std::size_t(i)])
                << c.state << " component " << i;
    }
}

TEST(ResultMapping, vectorsStrainsAndMissingValues)
{
    KwResultSet set;
    set.displacement = field(3, {1, 2}, {0.003, 0.004, 0.012, 0, 0, 0});
    set.reaction = field(3, {2}, {-10, 0, 0});
    set.stress = field(6, {1}, {200e6, 0, 0, 0, 0, 0});
    const KwPlotMaterial steel{200e9, 0.3};
    const double g = 200e9 / 2.6;
    const struct
    {
        int result, component, node;
        double expected;
    } cases[] = {
        {R::Displacement, 0, 1, 0.013}, {R::Displacement, 1, 1, 0.003},
        {R::Displacement, 3, 1, 0.012}, {R::Reaction, 0, 2, 10.0},
        {R::Reaction, 1, 2, -10.0},     {R::Strain, 1, 1, 1e-3},
        {R::Strain, 2, 1, -3e-4},       {R::Strain, 3, 1, -3e-4},
        {R::Strain, 0, 1, 200e6 / (3 * g)},
        {R::Strain, 4, 1, 0.0},
    };
    for (const auto& c : cases)
        EXPECT_NEAR(M::NodeValue(set, c.result, c.component, c.node, steel), c.expected,
                    1e-12 + 1e-9 * std::abs(c.expected))
            << "result " << c.result << " component " << c.component;
    // No value where the field has none, no strain without a material, no such component.
    EXPECT_TRUE(std::isnan(M::NodeValue(set, R::Reaction, 0, 1, steel)));
    EXPECT_TRUE(std::isnan(M::NodeValue(set, R::Strain, 1, 1, KwPlotMaterial{})));
    EXPECT_TRUE(std::isnan(M::NodeValue(set, R::Displacement, 4, 1, steel)));
    EXPECT_TRUE(std::isnan(M::NodeValue(set, R::VonMises, 0, 99, steel)));
}

class ResultDisplay : public ::testing::Test
{
protected:
    void SetUp() override
    {
        // 2 x 1 x 1 hexahedra over 0.2 x 0.1 x 0.05 m: nodes 1..12, x = 0, 0.1, 0.2.
        mesh.BuildBlock(2, 1, 1, 0.2, 0.1, 0.05);
        std::vector<int> ids;
        std::vector<double> stress, disp;
        for (const CKwMeshModel::Node& n : mesh.Nodes()) {
            ids.push_back(n.id);
            // Uniaxial stress growing along x: 10, 20, 30 MPa.
            const double s = (1 + std::round(n.x / 0.1)) * 10e6;
            stress.insert(stress.end(), {s, 0, 0, 0, 0, 0});
            disp.insert(disp.end(), {0, 0, -n.x * 0.01}); // tip 2 mm down
        }
        set.stress = field(6, ids, stress);
        set.displacement = field(3, ids, disp);
    }
    CKwMeshModel mesh;
    KwResultSet set;
    KW_UOM mm{KW_UOM::MMNS};
};

TEST_F(ResultDisplay, contourInDisplayUnitsWithItsOwnRange)
{
    KwPlotSettings s;
    s.result = R::VonMises;
    s.bands = 7;
    const KwResultDisplay d = M::BuildDisplay(s, &set, mesh, &mm, {}, QStringLiteral("VM"));
    ASSERT_TRUE(d.active);
    EXPECT_EQ(d.unitLabel, QStringLiteral("MPa"));
    EXPECT_EQ(d.contour, KwResultDisplay::ContourBanded);
    ASSERT_EQ(d.nodalValues.size(), mesh.Nodes().size());
    EXPECT_FLOAT_EQ(d.nodalValues[0], 10.0f);
    EXPECT_FLOAT_EQ(d.nodalValues[2], 30.0f);
    EXPECT_FALSE(d.fixedRange);
    EXPECT_DOUBLE_EQ(d.rangeMin, 10.0);
    EXPECT_DOUBLE_EQ(d.rangeMax, 30.0);
    EXPECT_EQ(d.bands, 7);

    // A fixed range is kept internal and shown in the display unit.
    s.autoRange = false;
    s.rangeMin = 0;
    s.rangeMax = 50e6;
    const KwResultDisplay fixed = M::BuildDisplay(s, &set, mesh, &mm, {}, {});
    EXPECT_TRUE(fixed.fixedRange);
    EXPECT_DOUBLE_EQ(fixed.rangeMax, 50.0);

    // Per element: the mean of its nodes; elements 1 and 2 span 10..20 and 20..30.
    s.averaging = KwPlotSettings::PerElement;
    const KwResultDisplay perElement = M::BuildDisplay(s, &set, mesh, &mm, {}, {});
    EXPECT_TRUE(perElement.nodalValues.empty());
    ASSERT_EQ(perElement.elementValues.size(), 2u);
    EXPECT_FLOAT_EQ(perElement.elementValues[0], 15.0f);
    EXPECT_FLOAT_EQ(perElement.elementValues[1], 25.0f);

    // Without results nothing is shown.
    EXPECT_FALSE(M::BuildDisplay(s, nullptr, mesh, &mm, {}, {}).active);
}

TEST_F(ResultDisplay, deformationScaleSectionAndSwitches)
{
    const struct
    {
        int mode;
        double factor;
        double expected;
    } scales[] = {
        {KwPlotSettings::ScaleActual, 7, 1.0},
        {KwPlotSettings::ScaleFactor, 25, 25.0},
        // Largest extent 0.2 m, a twentieth of it is 0.01 m; the tip moves 0.002 m.
        {KwPlotSettings::ScaleAutomatic, 7, 5.0},
    };
    KwPlotSettings s;
    for (const auto& c : scales) {
        s.scaleMode = c.mode;
        s.scaleFactor = c.factor;
        const KwResultDisplay d = M::BuildDisplay(s, &set, mesh, &mm, {}, {});
        // Displacements are drawn from floats: six digits.
        EXPECT_NEAR(d.deformScale, c.expected, 1e-6 * c.expected) << "mode " << c.mode;
        ASSERT_EQ(d.displacement.size(), mesh.Nodes().size() * 3);
        EXPECT_FLOAT_EQ(d.displacement[2 * 3 + 2], -0.002f); // node 3 at x = 0.2, in metres
    }
    s.sectionOn = true;
    s.sectionAxis = 1;
    s.sectionPosition = 25;
    s.deformedOn = false;
    s.contourOn = false;
    s.vectorsOn = true;
    s.vectorSize = 15;
    s.meshEdges = false;
    s.animate = true;
    s.frames = 20;
    const KwResultDisplay d = M::BuildDisplay(s, &set, mesh, &mm, {}, {});
    EXPECT_TRUE(d.sectionOn);
    EXPECT_DOUBLE_EQ(d.sectionNormal[1], 1.0);
    EXPECT_DOUBLE_EQ(d.sectionNormal[0], 0.0);
    EXPECT_NEAR(d.sectionPoint[1], 0.025, 1e-12);
    EXPECT_NEAR(d.sectionPoint[0], 0.1, 1e-12);
    EXPECT_TRUE(d.displacement.empty());
    EXPECT_EQ(d.deformScale, 0.0);
    EXPECT_EQ(d.contour, KwResultDisplay::ContourNone);
    EXPECT_FALSE(d.showLegend);
    EXPECT_EQ(d.vectors.size(), mesh.Nodes().size() * 3);
    EXPECT_DOUBLE_EQ(d.vectorSize, 1.5);
    EXPECT_FALSE(d.showMeshEdges);
    EXPECT_TRUE(d.animate);
    EXPECT_EQ(d.frameCount, 20);
}

} // namespace
