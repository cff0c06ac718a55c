// Hexahedra, wedges and pyramids: measures against values worked out by hand, collapsed,
// inverted and unmeasurable elements, parabolic elements measured on their corners, and beams
// counted as not checked.
#include "CKwMeshModel.h"
#include "CKwUIMeshQualityResults.h"
#include "KW_UOM.h"
#include "KwMeshQuality.h"
#include "KwQualitySamples.h"

#include <gtest/gtest.h>
#include <array>
#include <cmath>
#include <limits>
#include <vector>

namespace {

using namespace KwMeshQuality;
using P = std::array<double, 3>;
constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kDeg = 3.14159265358979323846 / 180.0;
// In an expected row: any finite number (the shape is there for another measure).
constexpr double kAny = -1e300;
const double r2 = std::sqrt(2.0), r3 = std::sqrt(3.0);
const double h3 = r3 / 2; // height of the unit equilateral triangle

struct Solid
{
    const char* name;
    int family;
    std::vector<P> p;
    double expected[MeasureCount]; // angles in radians
};

void measure(const Solid& s, double out[MeasureCount])
{
    const double* pts[8];
    for (std::size_t i = 0; i < s.p.size(); ++i)
        pts[i] = s.p[i].data();
    MeasureFamily(s.family, pts, out);
}

// Unit cube corners, bottom counter-clockwise from the origin, then the top above them.
std::vector<P> box(double a, double b, double c)
{
    return {{0, 0, 0}, {a, 0, 0}, {a, b, 0}, {0, b, 0}, {0, 0, c}, {a, 0, c}, {a, b, c}, {0, b, c}};
}

// The unit equilateral triangle at z = 0 and its copy moved by (dx, 0, height).
std::vector<P> wedge(double height, double dx = 0)
{
    return {{0, 0, 0}, {1, 0, 0}, {0.5, h3, 0}, {dx, 0, height}, {1 + dx, 0, height},
            {0.5 + dx, h3, height}};
}

// The unit square with its apex at (x, y, z).
std::vector<P> pyramid(double x, double y, double z)
{
    return {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {x, y, z}};
}

void expectRow(const Solid& s, const double out[MeasureCount])
{
    const char* names[] = {"aspect ratio", "skew", "warping", "taper", "Jacobian"};
    for (int m = 0; m < MeasureCount; ++m) {
        EXPECT_FALSE(std::isnan(out[m])) << s.name << ": " << names[m];
        if (s.expected[m] == kAny) {
            EXPECT_TRUE(std::isfinite(out[m])) << s.name << ": " << names[m];
        } else if (std::isinf(s.expected[m])) {
            EXPECT_EQ(out[m], s.expected[m]) << s.name << ": " << names[m];
        } else {
            EXPECT_NEAR(out[m], s.expected[m], 1e-9) << s.name << ": " << names[m];
        }
    }
}

} // namespace

TEST(MeshQualitySolids, measuresMatchHandComputedValues)
{
    std::vector<P> lifted = box(1, 1, 1);
    lifted[6] = {1, 1, 2}; // the top face is the quadrilateral "square with a corner lifted by 1"
    const std::vector<P> tapered = {{0, 0, 0},       {1, 0, 0},       {1, 1, 0},
                                    {0, 1, 0},       {0.25, 0.25, 1}, {0.75, 0.25, 1},
                                    {0.75, 0.75, 1}, {0.25, 0.75, 1}};
    std::vector<P> sheared = box(1, 1, 1);
    for (int i = 4; i < 8; ++i)
        sheared[i][0] += 1;
    const std::vector<P> rightWedge = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0},
                                       {0, 0, 1}, {1, 0, 1}, {0, 1, 1}};
    const Solid shapes[] = {
        // Hexahedra: principal axes X1, X2, X3 (sums of the four edges each way).
        {"unit cube", Hexahedron, box(1, 1, 1), {1, 0, 0, 0, 1}},
        {"box 2x1x1", Hexahedron, box(2, 1, 1), {2, 0, 0, 0, 1}},
        // X3 = 4(1, 0, 1): 45 degrees from X1; every corner has one edge at 45 degrees.
        {"hexahedron sheared by 1", Hexahedron, sheared, {r2, 45 * kDeg, 0, 0, 1 / r2}},
        // Top square of side 0.5 centred 1 above: X1 = X2 = 3, X3 = 4; side faces are
        // trapezoids 1 / 0.5 with taper 1/3; each corner's upright leans by (0.25, 0.25).
        {"tapered hexahedron", Hexahedron, tapered, {4.0 / 3, 0, 0, 1.0 / 3, 2 * r2 / 3}},
        // X1 = (4, 0, 1), X2 = (0, 4, 1), X3 = (0, 0, 5); the lifted corner's edges
        // (0,-1,-1), (-1,0,-1), (0,0,-2) give 2 / (sqrt2 sqrt2 2).
        {"hexahedron with a top corner lifted by 1", Hexahedron, lifted,
         {5 / std::sqrt(17.0), std::asin(1 / std::sqrt(17.0)), 60 * kDeg, 1 / std::sqrt(5.0),
          0.5}},
        // Wedges: end triangles, the extrusion axis, the three quadrilateral sides.
        {"regular wedge", Wedge, wedge(1), {1, 0, 0, 0, 1}},
        {"wedge twice as long as wide", Wedge, wedge(2), {2, 0, 0, 0, 1}},
        // Axis (1, 0, 1): sqrt2 long against edges of 1, 45 degrees off the normal; each
        // corner: sin 60 / sqrt2, scaled by 2/sqrt3.
        {"wedge sheared by 1", Wedge, wedge(1, 1), {r2, 45 * kDeg, 0, 0, 1 / r2}},
        // The right isosceles triangle's values rule: (sqrt2 + 1)/sqrt3, 30 degrees and
        // (2/sqrt3) sin 45.
        {"right-angled wedge", Wedge, rightWedge,
         {(r2 + 1) / r3, 30 * kDeg, 0, 0, std::sqrt(2.0 / 3.0)}},
        // Pyramids: base axes 1 and 1, sqrt2 times the height.
        {"regular pyramid (every edge 1)", Pyramid, pyramid(0.5, 0.5, 1 / r2), {1, 0, 0, 0, 1}},
        // Height 0.5: sqrt2 * 0.5 against 1; base corner 0.5 / (1 * 1 * sqrt0.75) * sqrt2.
        {"square pyramid half as high as wide", Pyramid, pyramid(0.5, 0.5, 0.5),
         {r2, 0, 0, 0, std::sqrt(2.0 / 3.0)}},
        // Apex over the corner 1: the height axis (-0.5, -0.5, 1) is sqrt(1.5) long and
        // atan(sqrt0.5) off the normal; the far corner's edge (-1,-1,1): sqrt2 / sqrt3. The
        // corner under the apex is a right angle: sqrt2, stopped at 1.
        {"pyramid leaning over a corner", Pyramid, pyramid(0, 0, 1),
         {r3, std::atan(std::sqrt(0.5)), 0, 0, std::sqrt(2.0 / 3.0)}},
        {"tall pyramid", Pyramid, pyramid(0.5, 0.5, 4), {4 * r2, 0, 0, 0, 1}},
    };
    for (const Solid& s : shapes) {
        double out[MeasureCount];
        measure(s, out);
        expectRow(s, out);
    }
}

TEST(MeshQualitySolids, collapsedAndInvertedElementsGiveNumbersOrInfinityNeverNaN)
{
    std::vector<P> flatHex = box(1, 1, 1);
    for (int i = 4; i < 8; ++i)
        flatHex[i][2] = 0;
    std::vector<P> inverted = box(1, 1, 1);
    for (int i = 0; i < 4; ++i)
        std::swap(inverted[i], inverted[i + 4]);
    std::vector<P> invertedWedge = wedge(1);
    for (int i = 0; i < 3; ++i)
        std::swap(invertedWedge[i], invertedWedge[i + 3]);
    std::vector<P> bowtie = box(1, 1, 1); // two top corners crossed: a twisted element
    std::swap(bowtie[6], bowtie[7]);
    const Solid shapes[] = {
        // A flat element: no height axis, side faces on lines (no warping), Jacobian 0.
        {"hexahedron pressed flat", Hexahedron, flatHex, {kInf, kInf, 0, kInf, 0}},
        {"hexahedron on one point", Hexahedron, std::vector<P>(8, P{3, 3, 3}),
         {kInf, kInf, 0, kInf, 0}},
        {"hexahedron turned inside out", Hexahedron, inverted, {1, 0, 0, 0, -1}},
        // The crossed top face has no principal axis along its crossed edges: taper "Degenerate".
        {"hexahedron with a crossed top", Hexahedron, bowtie, {kAny, kAny, kAny, kInf, kAny}},
        {"wedge pressed flat", Wedge, wedge(0), {kInf, kInf, 0, kInf, 0}},
        {"wedge on one point", Wedge, std::vector<P>(6, P{1, 2, 3}), {kInf, kInf, 0, kInf, 0}},
        {"wedge turned inside out", Wedge, invertedWedge, {1, 0, 0, 0, -1}},
        {"pyramid with its apex in the base", Pyramid, pyramid(0.5, 0.5, 0),
         {kInf, kInf, 0, 0, 0}},
        {"pyramid with its apex below the base", Pyramid, pyramid(0.5, 0.5, -0.5),
         {r2, 0, 0, 0, -std::sqrt(2.0 / 3.0)}},
        {"pyramid on one point", Pyramid, std::vector<P>(5, P{0, 0, 0}),
         {kInf, kInf, 0, kInf, 0}},
    };
    CKwMeshModel mesh;
    for (const Solid& s : shapes) {
        double out[MeasureCount];
        measure(s, out);
        expectRow(s, out);
        if (out[Jacobian] <= 0) {
            EXPECT_TRUE(CKwUIMeshQualityResults::FailsCheck(mesh, nullptr, s.family, Jacobian,
                                                            out[Jacobian]))
                << s.name;
        }
    }
    // A coordinate that is not a number: every measure reads as collapsed.
    for (int family : {int(Hexahedron), int(Wedge), int(Pyramid)}) {
        std::vector<P> p = box(1, 1, 1);
        p[family == Pyramid ? 4 : 2][1] = kNaN;
        const Solid s{"a NaN coordinate", family, p, {kInf, kInf, kInf, kInf, 0}};
        double out[MeasureCount];
        measure(s, out);
        expectRow(s, out);
    }
}

// Moving and scaling a solid changes none of its measures, however far out it lies.
TEST(MeshQualitySolids, extremeCoordinatesMeasureLikeTheUnitElement)
{
    std::vector<P> tapered = {{0, 0, 0},       {1, 0, 0},       {1, 1, 0},       {0, 1, 0},
                              {0.25, 0.25, 1}, {0.75, 0.25, 1}, {0.8, 0.75, 1.2}, {0.25, 0.75, 1}};
    const Solid shapes[] = {{"tapered hexahedron", Hexahedron, tapered, {}},
                            {"sheared wedge", Wedge, wedge(1.5, 0.3), {}},
                            {"leaning pyramid", Pyramid, pyramid(0.2, 0.3, 0.6), {}}};
    for (const Solid& s : shapes) {
        double ref[MeasureCount];
        measure(s, ref);
        for (double scale : {1e-300, 1e-12, 1e12, 1e300})
            for (double shift : {0.0, 1e6}) {
                Solid moved = s;
                for (P& q : moved.p)
                    for (double& c : q)
                        c = (c + shift) * scale;
                double out[MeasureCount];
                measure(moved, out);
                // A shift of a million element sizes costs about ten digits.
                const double tol = shift == 0 ? 1e-12 : 1e-6;
                for (int m = 0; m < MeasureCount; ++m)
                    EXPECT_NEAR(out[m], ref[m], tol * std::max(1.0, std::fabs(ref[m])))
                        << s.name << " scale " << scale << " shift " << shift << " measure " << m;
            }
    }
}

// The results logic measures every family, parabolic elements on their corners (the mid-side
// nodes may lie anywhere), and counts what it cannot measure.
TEST(MeshQualitySolids, everyFamilyIsCheckedParabolicOnCornersBeamsCounted)
{
    CKwMeshModel mesh;
    int node = 1;
    auto add = [&](const std::vector<P>& corners, int extra) {
        std::vector<int> ids;
        for (const P& p : corners) {
            mesh.AddNode(node, p[0], p[1], p[2]);
            ids.push_back(node++);
        }
        // Mid-side nodes far off: a measure that read them would see a wrecked element.
        for (int k = 0; k < extra; ++k) {
            mesh.AddNode(node, 50.0 + k, -30.0, 7.0 * k);
            ids.push_back(node++);
        }
        return ids;
    };
    using M = CKwMeshModel;
    struct Row
    {
        int id, type;
        std::vector<P> corners;
        int family;
        bool fails;
    };
    std::vector<P> sheared = box(1, 1, 1);
    for (int i = 4; i < 8; ++i)
        sheared[i][0] += 2; // 63.4 degrees of skew: fails 45
    const Row rows[] = {
        {1, M::Hex8, box(1, 1, 1), Hexahedron, false},
        {2, M::Hex20, box(1, 1, 1), Hexahedron, false},
        {3, M::Hex8, sheared, Hexahedron, true},
        {4, M::Hex20, sheared, Hexahedron, true},
        {5, M::Wedge6, wedge(1), Wedge, false},
        {6, M::Wedge15, wedge(6), Wedge, true}, // aspect ratio 6
        {7, M::Pyr5, pyramid(0.5, 0.5, 1 / r2), Pyramid, false},
        {8, M::Pyr13, pyramid(0.5, 0.5, -0.5), Pyramid, true}, // inverted
        {9, M::Tet10, {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, Tetrahedron, false},
        {10, M::Quad8, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}, Quadrilateral, false},
        {11, M::Tri6, {{0, 0, 0}, {1, 0, 0}, {0.5, h3, 0}}, Triangle, false},
    };
    int parabolic = 0;
    for (const Row& r : rows) {
        const int corners = M::CornerCount(r.type);
        ASSERT_EQ(static_cast<int>(r.corners.size()), corners) << r.id;
        const auto ids = add(r.corners, M::NodesPerElement(r.type) - corners);
        ASSERT_TRUE(mesh.AddElement(r.id, r.type, std::span<const int>(ids))) << r.id;
        parabolic += M::IsParabolic(r.type) ? 1 : 0;
    }
    // Two beams, one of each order.
    const auto b2 = add({{0, 0, 0}, {1, 0, 0}}, 0);
    const auto b3 = add({{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}, 0);
    ASSERT_TRUE(mesh.AddElement(20, M::Beam2, std::span<const int>(b2)));
    ASSERT_TRUE(mesh.AddElement(21, M::Beam3, std::span<const int>(b3)));

    KW_UOM units(KW_UOM::SI);
    CKwUIMeshQualityResults r;
    r.CheckMeshQuality(&mesh, &units);
    EXPECT_EQ(r.GetCheckedElementCount(), std::size(rows));
    EXPECT_EQ(r.GetParabolicElementCount(), static_cast<std::size_t>(parabolic));
    EXPECT_EQ(r.GetUncheckedElementCount(), 2u);
    std::vector<int> failed;
    for (const auto& f : r.GetFailedElements()) {
        failed.push_back(f.id);
        for (const Row& row : rows) {
            if (row.id == f.id) {
                EXPECT_EQ(int(f.family), row.family) << f.id;
            }
        }
    }
    std::vector<int> expected;
    for (const Row& row : rows)
        if (row.fails)
            expected.push_back(row.id);
    EXPECT_EQ(failed, expected);
    // A parabolic element measures exactly as its linear form.
    ASSERT_EQ(r.GetFailedElements().size(), 4u);
    for (int m = 0; m < MeasureCount; ++m)
        EXPECT_EQ(r.GetFailedElements()[0].value[m], r.GetFailedElements()[1].value[m]) << m;
    // Results handed to a window keep the counts.
    CKwUIMeshQualityResults taken;
    taken.TakeResults(r);
    EXPECT_EQ(taken.GetParabolicElementCount(), static_cast<std::size_t>(parabolic));
    EXPECT_EQ(taken.GetUncheckedElementCount(), 2u);
}

// Each family's checks are its own: switching one off or changing its limit leaves the
// others' results alone, and the names follow the pattern of the first families.
TEST(MeshQualitySolids, eachFamilyHasItsOwnNamedChecks)
{
    using M = CKwMeshModel;
    struct Rule
    {
        int family;
        int measure;
        M::QualityCheck check;
        const char* name;
    };
    const Rule rules[] = {
        {Hexahedron, AspectRatio, M::HexAspectRatio, "Hex Aspect Ratio"},
        {Hexahedron, Skew, M::HexSkew, "Hex Skew"},
        {Hexahedron, Warping, M::HexWarpage, "Hex Warpage"},
        {Hexahedron, Taper, M::HexTaper, "Hex Taper"},
        {Hexahedron, Jacobian, M::HexJacobian, "Hex Jacobian"},
        {Wedge, AspectRatio, M::WedgeAspectRatio, "Wedge Aspect Ratio"},
        {Wedge, Skew, M::WedgeSkew, "Wedge Skew"},
        {Wedge, Warping, M::WedgeWarpage, "Wedge Warpage"},
        {Wedge, Taper, M::WedgeTaper, "Wedge Taper"},
        {Wedge, Jacobian, M::WedgeJacobian, "Wedge Jacobian"},
        {Pyramid, AspectRatio, M::PyramidAspectRatio, "Pyramid Aspect Ratio"},
        {Pyramid, Skew, M::PyramidSkew, "Pyramid Skew"},
        {Pyramid, Warping, M::PyramidWarpage, "Pyramid Warpage"},
        {Pyramid, Taper, M::PyramidTaper, "Pyramid Taper"},
        {Pyramid, Jacobian, M::PyramidJacobian, "Pyramid Jacobian"},
    };
    // The first families keep their places.
    EXPECT_EQ(int(M::TetJacobian), 10);
    EXPECT_EQ(int(M::HexAspectRatio), 11);
    M mesh;
    KW_UOM units(KW_UOM::SI);
    for (const Rule& r : rules) {
        EXPECT_EQ(CKwUIMeshQualityResults::CheckFor(r.family, r.measure), r.check) << r.name;
        EXPECT_EQ(M::QualityParamName(r.check), QString::fromLatin1(r.name));
        float v = -1;
        EXPECT_TRUE(mesh.GetQualityParam(QString::fromLatin1(r.name) + QStringLiteral(" Check"), &v));
        EXPECT_EQ(v, 1.0f) << r.name;
        // A value just beyond the limit fails; with the check off it passes, and no other
        // family's check decides for it.
        const double limit = CKwUIMeshQualityResults::LimitValue(mesh.GetQualityLimit(r.check));
        const double angle = IsAngle(r.measure) ? kDeg : 1.0;
        const double beyond = (FailsBelow(r.measure) ? limit - 0.01 : limit + 0.01) * angle;
        EXPECT_TRUE(CKwUIMeshQualityResults::FailsCheck(mesh, &units, r.family, r.measure, beyond))
            << r.name;
        EXPECT_FALSE(CKwUIMeshQualityResults::FailsCheck(mesh, &units, r.family, r.measure,
                                                         limit * angle))
            << r.name;
        ASSERT_TRUE(mesh.SetQualityParam(QString::fromLatin1(r.name) + QStringLiteral(" Check"), 0));
        EXPECT_FALSE(CKwUIMeshQualityResults::FailsCheck(mesh, &units, r.family, r.measure, beyond))
            << r.name;
        mesh.SetQualityCheck(r.check, true);
    }
}

// The solid samples the gallery shows: each fails the check its shape is named for, the good
// ones pass, and the beam is counted as not checked.
TEST(MeshQualitySolids, samplesFailWhatTheyAreBuiltToFail)
{
    CKwMeshModel mesh;
    const KwQualitySample* samples = nullptr;
    const int count = KwBuildSolidQualitySamples(mesh, &samples);
    ASSERT_EQ(mesh.ElementCount(), static_cast<std::size_t>(count));
    KW_UOM units(KW_UOM::SI);
    CKwUIMeshQualityResults r;
    r.CheckMeshQuality(&mesh, &units);
    EXPECT_EQ(r.GetUncheckedElementCount(), 1u);
    EXPECT_EQ(r.GetParabolicElementCount(), 3u);
    for (int i = 0; i < count; ++i) {
        const KwQualitySample& s = samples[i];
        const CKwUIMeshQualityResults::FailedElement* row = nullptr;
        for (const auto& f : r.GetFailedElements())
            if (f.id == s.elementId)
                row = &f;
        if (s.failsMeasure < 0) {
            EXPECT_EQ(row, nullptr) << s.shape << " " << s.elementId;
            continue;
        }
        ASSERT_NE(row, nullptr) << s.shape << " " << s.elementId;
        EXPECT_TRUE(CKwUIMeshQualityResults::FailsCheck(mesh, &units, row->family, s.failsMeasure,
                                                        row->value[s.failsMeasure]))
            << s.shape << " " << s.elementId;
    }
}
