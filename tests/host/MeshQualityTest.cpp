// Quality measures against values worked out by hand, collapsed elements, the failed-element
// selection on the sample mesh, groups, and node and element picks in the view.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwSelectionHandler.h"
#include "CKwUIEntity.h"
#include "CKwUIMeshQualityResults.h"
#include "KW_UOM.h"
#include "KwMeshQuality.h"

#include <gtest/gtest.h>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace KwMeshQuality;
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kDeg = 3.14159265358979323846 / 180.0;
const double s3 = std::sqrt(3.0);

struct Shape
{
    const char* name;
    int type;
    std::vector<std::array<double, 3>> p;
    double expected[MeasureCount]; // NaN: does not apply; angles in radians
};

void measure(const Shape& s, double out[MeasureCount])
{
    const double* pts[4];
    for (std::size_t i = 0; i < s.p.size(); ++i)
        pts[i] = s.p[i].data();
    if (s.type == CKwMeshModel::Tri3)
        MeasureTriangle(pts, out);
    else if (s.type == CKwMeshModel::Quad4)
        MeasureQuadrilateral(pts, out);
    else
        MeasureTetrahedron(pts, out);
}

double measured(const Shape& s, int m)
{
    double out[MeasureCount];
    measure(s, out);
    return out[m];
}

} // namespace

TEST(MeshQuality, measuresMatchHandComputedValues)
{
    const Shape shapes[] = {
        {"unit square", CKwMeshModel::Quad4, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}},
         {1, 0, 0, 0, 1}},
        {"rectangle 2x1", CKwMeshModel::Quad4, {{0, 0, 0}, {2, 0, 0}, {2, 1, 0}, {0, 1, 0}},
         {2, 0, 0, 0, 1}},
        {"parallelogram sheared by 1", CKwMeshModel::Quad4,
         {{0, 0, 0}, {1, 0, 0}, {2, 1, 0}, {1, 1, 0}},
         {std::sqrt(2.0), 45 * kDeg, 0, 0, std::sqrt(0.5)}},
        {"trapezoid 2/1 high 1", CKwMeshModel::Quad4,
         {{0, 0, 0}, {2, 0, 0}, {1.5, 1, 0}, {0.5, 1, 0}},
         {1.5, 0, 0, 0.5, 2 / std::sqrt(5.0)}},
        {"square with a corner lifted by 1", CKwMeshModel::Quad4,
         {{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}},
         {1, std::asin(0.2), 60 * kDeg, 1 / std::sqrt(5.0), std::sqrt(2.0 / 3.0)}},
        {"equilateral triangle", CKwMeshModel::Tri3, {{0, 0, 0}, {1, 0, 0}, {0.5, s3 / 2, 0}},
         {1, 0, kNaN, kNaN, 1}},
        {"right isosceles triangle", CKwMeshModel::Tri3, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}},
         {(std::sqrt(2.0) + 1) / s3, 30 * kDeg, kNaN, kNaN, std::sqrt(2.0 / 3.0)}},
        {"regular tetrahedron", CKwMeshModel::Tet4,
         {{0, 0, 0}, {1, 0, 0}, {0.5, s3 / 2, 0}, {0.5, s3 / 6, std::sqrt(2.0 / 3.0)}},
         {1, 0, kNaN, kNaN, 1}},
        {"corner tetrahedron", CKwMeshModel::Tet4,
         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
         {(1 + s3) / 2, 90 * kDeg - std::acos(1.0 / 3.0), kNaN, kNaN, std::sqrt(0.5)}},
    };
    const char* names[] = {"aspect ratio", "skew", "warping", "taper", "Jacobian"};
    for (const Shape& s : shapes) {
        double out[MeasureCount];
        measure(s, out);
        for (int m = 0; m < MeasureCount; ++m) {
            if (std::isnan(s.expected[m]))
                EXPECT_TRUE(std::isnan(out[m])) << s.name << ": " << names[m];
            else
                EXPECT_NEAR(out[m], s.expected[m], 1e-9) << s.name << ": " << names[m];
        }
    }
}

TEST(MeshQuality, collapsedElementsGiveNumbersOrInfinityNeverNaN)
{
    const Shape shapes[] = {
        {"collinear triangle", CKwMeshModel::Tri3, {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}},
         {kInf, 120 * kDeg, kNaN, kNaN, 0}},
        {"triangle with coincident nodes", CKwMeshModel::Tri3,
         {{0, 0, 0}, {0, 0, 0}, {1, 1, 0}}, {kInf, kInf, kNaN, kNaN, 0}},
        {"quadrilateral on a line", CKwMeshModel::Quad4,
         {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}, {3, 0, 0}}, {kInf, kInf, 0, kInf, 0}},
        {"quadrilateral on one point", CKwMeshModel::Quad4,
         {{1, 1, 1}, {1, 1, 1}, {1, 1, 1}, {1, 1, 1}}, {kInf, kInf, 0, kInf, 0}},
        {"flat tetrahedron", CKwMeshModel::Tet4, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}},
         {kInf, -1, kNaN, kNaN, 0}},
        {"tetrahedron with coincident nodes", CKwMeshModel::Tet4,
         {{0, 0, 0}, {0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {kInf, kInf, kNaN, kNaN, 0}},
        {"inverted corner tetrahedron", CKwMeshModel::Tet4,
         {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}},
         {(1 + s3) / 2, 90 * kDeg - std::acos(1.0 / 3.0), kNaN, kNaN, -std::sqrt(0.5)}},
    };
    CKwMeshModel mesh;
    for (const Shape& s : shapes) {
        double out[MeasureCount];
        measure(s, out);
        for (int m = 0; m < MeasureCount; ++m) {
            if (std::isnan(s.expected[m])) {
                EXPECT_TRUE(std::isnan(out[m])) << s.name << " " << m;
                continue;
            }
            EXPECT_FALSE(std::isnan(out[m])) << s.name << " " << m;
            if (std::isinf(s.expected[m])) {
                EXPECT_EQ(out[m], kInf) << s.name << " " << m;
            } else if (s.expected[m] >= 0) { // -1: any number
                EXPECT_NEAR(out[m], s.expected[m], 1e-9) << s.name << " " << m;
            }
        }
        // Collapsed and inverted elements fail the Jacobian check.
        const int family = CKwUIMeshQualityResults::FamilyOf(s.type);
        EXPECT_TRUE(CKwUIMeshQualityResults::FailsCheck(mesh, nullptr, family, Jacobian,
                                                        out[Jacobian]))
            << s.name;
    }
}

// Every measure is a ratio or an angle: moving and scaling an element changes none, however
// far the coordinates go, and no element measures NaN.
TEST(MeshQuality, extremeCoordinatesMeasureLikeTheUnitElement)
{
    const Shape shapes[] = {
        {"parallelogram", CKwMeshModel::Quad4, {{0, 0, 0}, {1, 0, 0}, {2, 1, 0}, {1, 1, 0}}, {}},
        {"lifted square", CKwMeshModel::Quad4, {{0, 0, 0}, {1, 0, 0}, {1, 1, 1}, {0, 1, 0}}, {}},
        {"right triangle", CKwMeshModel::Tri3, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}},
        {"sliver triangle", CKwMeshModel::Tri3, {{0, 0, 0}, {1, 0, 0}, {0.5, 1e-6, 0}}, {}},
        {"corner tetrahedron", CKwMeshModel::Tet4,
         {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {}},
    };
    struct Move
    {
        double scale;
        double offset;
    };
    const Move moves[] = {{1e200, 0}, {1e200, 3e201}, {1e-200, 0}, {1e-200, -5e-199},
                          {1e306, 1e307}, {1e-310, 0}};
    for (const Shape& s : shapes) {
        double ref[MeasureCount];
        measure(s, ref);
        for (const Move& mv : moves) {
            Shape moved = s;
            for (auto& p : moved.p)
                for (double& c : p)
                    c = mv.offset + mv.scale * c;
            double out[MeasureCount];
            measure(moved, out);
            for (int m = 0; m < MeasureCount; ++m) {
                if (std::isnan(ref[m])) {
                    EXPECT_TRUE(std::isnan(out[m])) << s.name << " x" << mv.scale << " " << m;
                    continue;
                }
                // Subnormal coordinates (1e-310) keep a few digits only.
                const double tol = mv.scale < 1e-300 ? 1e-3 : 1e-6;
                EXPECT_NEAR(out[m], ref[m], tol * std::max(1.0, std::fabs(ref[m])))
                    << s.name << " x" << mv.scale << " +" << mv.offset << " " << m;
            }
        }
    }
    // A coordinate that is no number: the element cannot be measured and reads as collapsed.
    for (const Shape& s : shapes) {
        for (double bad : {kNaN, kInf}) {
            Shape broken = s;
            broken.p[1][1] = bad;
            double out[MeasureCount];
            measure(broken, out);
            for (int m = 0; m < MeasureCount; ++m) {
                const double want = std::isnan(measured(s, m)) ? kNaN : m == Jacobian ? 0 : kInf;
                EXPECT_TRUE(std::isnan(want) ? std::isnan(out[m]) : out[m] == want)
                    << s.name << " " << bad << " " << m << ": " << out[m];
            }
        }
    }
}

TEST(MeshQuality, elementsFarOutAreCheckedNotPassedSilently)
{
    // A 10 x 1 quadrilateral near 1e200 and a triangle with a node at NaN fail; a good
    // triangle near 1e200 passes.
    CKwMeshModel mesh;
    const double f = 1e200, h = 1e198;
    const double nodes[][3] = {{f, f, 0},     {f + 10 * h, f, 0}, {f + 10 * h, f + h, 0},
                               {f, f + h, 0}, {0, 0, 0},          {1, 0, 0},
                               {0, kNaN, 0},  {f + h, f, 0},      {f + 0.5 * h, f + 0.8660254 * h, 0}};
    for (int i = 0; i < 9; ++i)
        mesh.AddNode(i + 1, nodes[i][0], nodes[i][1], nodes[i][2]);
    mesh.AddElement(1, CKwMeshModel::Quad4, {1, 2, 3, 4});
    mesh.AddElement(2, CKwMeshModel::Tri3, {5, 6, 7});
    mesh.AddElement(3, CKwMeshModel::Tri3, {1, 8, 9});
    CKwUIMeshQualityResults r;
    r.CheckMeshQuality(&mesh, nullptr);
    std::vector<int> ids;
    for (const auto& e : r.GetFailedElements()) {
        ids.push_back(e.id);
        for (int m = 0; m < MeasureCount; ++m) {
            if (CKwUIMeshQualityResults::CheckFor(e.family, m) != CKwMeshModel::QualityCheckCount) {
                EXPECT_FALSE(std::isnan(e.value[m])) << e.id << " " << m;
            }
        }
    }
    EXPECT_EQ(ids, (std::vector<int>{1, 2}));
    ASSERT_FALSE(r.GetFailedElements().empty());
    EXPECT_NEAR(r.GetFailedElements()[0].value[AspectRatio], 10.0, 1e-9);
}

// A flat quadrilateral with a re-entrant corner is not warped: the diagonal outside it is no
// fold. Its Jacobian says what it is (negative at that corner); a concave element that does
// bend shows the bend along its inner diagonal.
TEST(MeshQuality, concaveQuadrilateralsAreReportedByTheirJacobianNotAsWarped)
{
    struct Case
    {
        const char* name;
        std::vector<std::array<double, 3>> p;
        double warping;
        double jacobian; // NaN: any negative number
    };
    const Case cases[] = {
        {"flat dart", {{0, 0, 0}, {2, 1, 0}, {0, 2, 0}, {0.5, 1, 0}}, 0, -0.8},
        {"flat dart, other start", {{2, 1, 0}, {0, 2, 0}, {0.5, 1, 0}, {0, 0, 0}}, 0, -0.8},
        {"flat dart, clockwise", {{0, 0, 0}, {0.5, 1, 0}, {0, 2, 0}, {2, 1, 0}}, 0, -0.8},
        {"dart with its reflex corner lifted", {{0, 0, 0}, {2, 1, 0}, {0, 2, 0}, {0.5, 1, 0.5}},
         std::acos(3.0 / 7.0), kNaN},
        {"flat square (convex)", {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, 0, 1},
    };
    for (const Case& c : cases) {
        const double* pts[4];
        for (int i = 0; i < 4; ++i)
            pts[i] = c.p[static_cast<std::size_t>(i)].data();
        double out[MeasureCount];
        MeasureQuadrilateral(pts, out);
        EXPECT_NEAR(out[Warping], c.warping, 1e-12) << c.name;
        if (std::isnan(c.jacobian))
            EXPECT_LT(out[Jacobian], 0) << c.name;
        else
            EXPECT_NEAR(out[Jacobian], c.jacobian, 1e-12) << c.name;
    }
}

// A limit stands for the decimal number typed, not for the float that stores it: a value
// equal to it passes, one beyond it by any amount fails.
TEST(MeshQuality, limitsCompareAsTheDecimalsTheyStoreStrictly)
{
    CKwMeshModel mesh;
    using R = CKwUIMeshQualityResults;
    struct Case
    {
        CKwMeshModel::QualityCheck check;
        float limit;
        int family;
        int measure;
        double value;
        bool fails;
    };
    const Case cases[] = {
        {CKwMeshModel::QuadJacobian, 0.6f, Quadrilateral, Jacobian, 0.6, false},
        {CKwMeshModel::QuadJacobian, 0.6f, Quadrilateral, Jacobian, 0.5999999999, true},
        {CKwMeshModel::TriaJacobian, 0.3f, Triangle, Jacobian, 0.3, false},
        {CKwMeshModel::TetAspectRatio, 2.0f, Tetrahedron, AspectRatio, 2.0000001, true},
        {CKwMeshModel::TetAspectRatio, 2.0f, Tetrahedron, AspectRatio, 2.0, false},
        {CKwMeshModel::QuadTaper, 0.1f, Quadrilateral, Taper, 0.1, false},
        {CKwMeshModel::QuadTaper, 0.1f, Quadrilateral, Taper, 0.10000000149, true},
    };
    for (const Case& c : cases) {
        mesh.SetQualityLimit(c.check, c.limit);
        EXPECT_EQ(R::FailsCheck(mesh, nullptr, c.family, c.measure, c.value), c.fails)
            << c.limit << " " << c.value;
    }
    EXPECT_EQ(R::LimitValue(0.6f), 0.6);
    EXPECT_EQ(R::LimitValue(1e-7f), 1e-7);
}

TEST(MeshQuality, strictLimitsAngleUnitsAndSwitchedOffChecks)
{
    CKwMeshModel mesh;
    KW_UOM units(KW_UOM::SI);
    using R = CKwUIMeshQualityResults;
    mesh.SetQualityLimit(CKwMeshModel::QuadAspectRatio, 2.0f);
    EXPECT_FALSE(R::FailsCheck(mesh, &units, Quadrilateral, AspectRatio, 2.0));
    EXPECT_TRUE(R::FailsCheck(mesh, &units, Quadrilateral, AspectRatio, 2.001));
    mesh.SetQualityLimit(CKwMeshModel::TetJacobian, 0.3f);
    EXPECT_FALSE(R::FailsCheck(mesh, &units, Tetrahedron, Jacobian, 0.3f));
    EXPECT_TRUE(R::FailsCheck(mesh, &units, Tetrahedron, Jacobian, 0.2999));
    // 50 degrees against a limit of 45: red in degrees, not in radians (0.87 < 45).
    EXPECT_TRUE(R::FailsCheck(mesh, &units, Quadrilateral, Skew, 50 * kDeg));
    units.SetAngleInRadians(true);
    EXPECT_FALSE(R::FailsCheck(mesh, &units, Quadrilateral, Skew, 50 * kDeg));
    mesh.SetQualityLimit(CKwMeshModel::QuadWarpage, 0.1f);
    EXPECT_TRUE(R::FailsCheck(mesh, &units, Quadrilateral, Warping, 0.2));
    mesh.SetQualityCheck(CKwMeshModel::QuadWarpage, false);
    EXPECT_FALSE(R::FailsCheck(mesh, &units, Quadrilateral, Warping, 0.2));
    EXPECT_FALSE(R::FailsCheck(mesh, &units, Quadrilateral, Warping, kInf));
    // Measures a family does not have never fail.
    EXPECT_FALSE(R::FailsCheck(mesh, &units, Triangle, Taper, 100));
    // The parameters by name, as the dialogs read them.
    float v = 0;
    EXPECT_TRUE(mesh.GetQualityParam(QStringLiteral("Quad Warpage Check"), &v));
    EXPECT_EQ(v, 0.0f);
    EXPECT_TRUE(mesh.SetQualityParam(QStringLiteral("Tria Skew"), 12.5f));
    EXPECT_EQ(mesh.GetQualityLimit(CKwMeshModel::TriaSkew), 12.5f);
    EXPECT_FALSE(mesh.SetQualityParam(QStringLiteral("Hexa Skew"), 1));
    EXPECT_FALSE(mesh.SetQualityParam(QStringLiteral("Beam Skew"), 1));
}

TEST(MeshQuality, sampleMeshFailsEveryCheckAndNothingElse)
{
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    CKwMeshModel& mesh = *model->m_mesh;
    KW_UOM units(KW_UOM::MMNS);
    CKwUIMeshQualityResults r;
    r.CheckMeshQuality(&mesh, &units);
    EXPECT_EQ(r.GetCheckedElementCount(), mesh.CountOfType(CKwMeshModel::Tri3) +
                                              mesh.CountOfType(CKwMeshModel::Quad4) +
                                              mesh.CountOfType(CKwMeshModel::Tet4));
    // The beams are counted as not checked: nothing is passed over silently.
    EXPECT_EQ(r.GetUncheckedElementCount(), mesh.CountOfType(CKwMeshModel::Beam2));
    EXPECT_EQ(r.GetCheckedElementCount() + r.GetUncheckedElementCount(), mesh.ElementCount());
    bool seen[FamilyCount][MeasureCount] = {};
    for (const auto& f : r.GetFailedElements()) {
        bool any = false;
        for (int m = 0; m < MeasureCount; ++m) {
            const bool fails =
                CKwUIMeshQualityResults::FailsCheck(mesh, &units, f.family, m, f.value[m]);
            seen[f.family][m] = seen[f.family][m] || fails;
            any = any || fails;
        }
        EXPECT_TRUE(any) << f.id;
    }
    for (int family = Triangle; family <= Tetrahedron; ++family)
        for (int m = 0; m < MeasureCount; ++m)
            if (CKwUIMeshQualityResults::CheckFor(family, m) != CKwMeshModel::QualityCheckCount) {
                EXPECT_TRUE(seen[family][m]) << "family " << family << " measure " << m;
            }
    // Every check off: nothing fails.
    for (int c = 0; c < CKwMeshModel::QualityCheckCount; ++c)
        mesh.SetQualityCheck(static_cast<CKwMeshModel::QualityCheck>(c), false);
    r.CheckMeshQuality(&mesh, &units);
    EXPECT_TRUE(r.GetFailedElements().empty());
    r.CheckMeshQuality(nullptr, &units);
    EXPECT_EQ(r.GetCheckedElementCount(), 0u);
}

TEST(MeshModel, refusesBadElementsAndBuildsGroupsOnce)
{
    CKwMeshModel mesh;
    mesh.AddNode(1, 0, 0, 0);
    mesh.AddNode(2, 1, 0, 0);
    mesh.AddNode(3, 0, 1, 0);
    EXPECT_FALSE(mesh.AddNode(3, 5, 5, 5));
    EXPECT_TRUE(mesh.AddElement(10, CKwMeshModel::Tri3, {1, 2, 3}));
    EXPECT_FALSE(mesh.AddElement(10, CKwMeshModel::Tri3, {1, 2, 3}));  // id taken
    EXPECT_FALSE(mesh.AddElement(11, CKwMeshModel::Tri3, {1, 2}));     // too few nodes
    EXPECT_FALSE(mesh.AddElement(12, CKwMeshModel::Tri3, {1, 2, 99})); // missing node
    EXPECT_FALSE(mesh.AddElement(13, 77, {1, 2, 3}));                  // unknown type
    EXPECT_TRUE(mesh.AddElement(14, CKwMeshModel::Beam2, {2, 3}));
    ASSERT_EQ(mesh.ElementCount(), 2u);
    EXPECT_EQ(mesh.ElementNodes(1).size(), 2u);
    EXPECT_EQ(mesh.Nodes()[static_cast<std::size_t>(mesh.ElementNodes(1)[1])].id, 3);

    CKwUIMeshQualityResults r;
    mesh.SetQualityLimit(CKwMeshModel::TriaJacobian, 0.9f); // the right triangle fails
    r.CheckMeshQuality(&mesh, nullptr);
    ASSERT_EQ(r.GetFailedElements().size(), 1u);
    EXPECT_EQ(r.GetGroupCounter(), 1);
    EXPECT_EQ(r.BuildGroups(&mesh), CKwUIMeshQualityResults::GroupNone); // not asked for
    r.SetPendingGroup(true, QStringLiteral("  "));
    EXPECT_EQ(r.BuildGroups(&mesh), CKwUIMeshQualityResults::GroupNameEmpty);
    EXPECT_TRUE(r.SetPendingGroup(true, QStringLiteral("Group1")));
    EXPECT_EQ(r.BuildGroups(&mesh), CKwUIMeshQualityResults::GroupBuilt);
    EXPECT_EQ(r.BuildGroups(&mesh), CKwUIMeshQualityResults::GroupBuilt); // once only
    ASSERT_EQ(mesh.Groups().size(), 1u);
    EXPECT_EQ(mesh.Groups()[0].elementIds, std::vector<int>{10});
    EXPECT_EQ(r.GetGroupCounter(), 2);
    r.ResetPendingGroup();
    EXPECT_EQ(r.BuildGroups(&mesh), CKwUIMeshQualityResults::GroupNameUsed);
    EXPECT_EQ(mesh.Groups().size(), 1u);
    // Picked nodes and elements keep their object through copies of the mesh.
    CKwUIEntity* e = mesh.ElementEntity(10);
    ASSERT_NE(e, nullptr);
    EXPECT_EQ(e->GetKind(), CKwUIEntity::Element);
    CKwMeshModel copy(mesh);
    mesh = copy;
    EXPECT_EQ(mesh.ElementEntity(10), e);
    EXPECT_EQ(mesh.ElementEntity(99), nullptr);
    EXPECT_EQ(copy.Groups().size(), 1u);
}

TEST(View, picksNodesAndElementsAsTheFilterAllows)
{
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    CFMView view(model.get());
    view.resize(900, 600);
    CKwMeshModel& mesh = *model->m_mesh;
    CKwUIEntity* tab = mesh.ElementEntity(3001);
    CKwUIEntity* corner = mesh.NodeEntity(5001);
    const QPointF inTab = view.ScreenPointOf(tab);
    const QPointF atCorner = view.ScreenPointOf(corner);
    const unsigned kNode = CKwUIEntity::FilterBitOf(CKwUIEntity::Node);
    const unsigned kElem = CKwUIEntity::FilterBitOf(CKwUIEntity::Element);
    struct Case
    {
        unsigned filter;
        QPointF at;
        CKwUIEntity* expected;
    };
    const Case cases[] = {
        {kElem, inTab, tab},
        {kNode, atCorner, corner},
        {kNode | kElem, atCorner, corner},
        {kNode | kElem, (atCorner + inTab) / 2, tab},
        {33278, atCorner, nullptr}, // a geometry editor's mask takes no mesh entity
        {0x40, inTab, nullptr},
        {0, inTab, nullptr},
        {kNode, inTab, nullptr},
    };
    for (const Case& c : cases) {
        view.GetSelectionHandler()->SetFilter(c.filter);
        EXPECT_EQ(view.EntityAt(c.at), c.expected) << std::hex << c.filter;
    }
    EXPECT_EQ(model->FindGeometry(CKwUIEntity::Node, 5001), corner);
    view.SetHighlightedMesh(CFMView::HighlightElements, {3001, 3002});
    EXPECT_EQ(view.GetHighlightedMesh(CFMView::HighlightElements).size(), 2u);
    view.ClearMeshHighlight();
    EXPECT_TRUE(view.GetHighlightedMesh(CFMView::HighlightElements).empty());
}
