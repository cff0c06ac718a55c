// The host's shape rules on every path, the outlines they give, and values that stay finite.
#include "CFMView.h"
#include "CKwPhysicalProperty.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwSectionLibrary.h"
#include "KwSectionSolver.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using P = CKwPhysicalProperty;
constexpr double M = MissingDouble;

P section(int shape, std::array<double, 6> d, int kind = P::KindBeam)
{
    P p(1, QStringLiteral("S"));
    p.m_elementKind = kind;
    p.m_sectionShape = shape;
    for (int i = 0; i < 6; ++i)
        p.m_dimA[i] = i < P::ShapeDimensionCount(shape) ? d[i] : M;
    return p;
}

std::vector<KwLoop> loopsOf(const P& p)
{
    Kw::Point loops[P::kMaxLoops][P::kMaxLoopPoints];
    int counts[P::kMaxLoops] = {};
    int n = 0;
    p.GetSectionLoopPoints(loops, n, counts, 1);
    std::vector<KwLoop> out;
    for (int l = 0; l < n; ++l)
        out.emplace_back(loops[l], loops[l] + counts[l]);
    return out;
}

} // namespace

// Each case breaks one rule by the smallest step and keeps all others; the same dimensions a
// hair inside the rule pass. Everything the host offers refuses the broken set: the check, the
// outline and the values.
TEST(SectionShapeRules, oneRuleForEveryPath)
{
    struct Case
    {
        int shape;
        std::array<double, 6> broken;
        int dim;      // the dimension (index) moved back inside the rule
        double fixed; // its value then
        const char* what;
    };
    const Case cases[] = {
        {P::TUBE, {10, 10}, 1, 9.99, "inner radius as large as the outer"},
        {P::I, {200, 100, 100, 100, 12, 12}, 3, 99, "web as wide as the bottom flange"},
        {P::I, {200, 100, 60, 60, 12, 12}, 3, 59, "web as wide as the top flange"},
        {P::I, {200, 100, 100, 8, 100, 100}, 5, 99, "flanges filling the height"},
        {P::CHAN, {50, 100, 50, 8}, 2, 49, "web as thick as the channel is wide"},
        {P::CHAN, {50, 100, 6, 50}, 3, 49, "flanges filling the height"},
        {P::CHAN2, {50, 10, 100, 100}, 0, 49, "legs filling the width"},
        {P::T, {50, 50, 6, 50}, 3, 49, "web as wide as the flange"},
        {P::T, {50, 50, 50, 6}, 2, 49, "flange as thick as the tee is high"},
        {P::T1, {50, 80, 6, 50}, 3, 49, "web as thick as the flange is high"},
        {P::T2, {50, 50, 6, 50}, 3, 49, "web as wide as the flange"},
        {P::CROSS, {100, 10, 200, 200}, 3, 199, "arms as thick as the cross is high"},
        {P::BOX, {40, 80, 4, 20}, 3, 19, "side walls meeting"},
        {P::BOX, {40, 80, 40, 4}, 2, 39, "top and bottom walls meeting"},
        {P::BOX1, {100, 200, 10, 12, 50, 50}, 5, 49, "left and right walls meeting"},
        {P::BOX1, {100, 200, 100, 100, 8, 9}, 3, 99, "top and bottom walls meeting"},
        {P::H, {100, 20, 200, 200}, 3, 199, "web as thick as the uprights are high"},
        {P::HEXA, {50, 100, 80}, 0, 49, "tips meeting"},
        {P::Z, {92, 8, 200, 200}, 2, 199, "no flanges"},
        {P::HAT, {3, 50, 100, 30}, 1, 49, "crown not twice as wide as the hat is high"},
        {P::HAT, {40, 40, 100, 30}, 0, 39, "wall as thick as the hat is high"},
        {P::L, {100, 80, 10, 100}, 3, 99, "upright leg as thick as the angle is wide"},
        {P::L, {100, 80, 80, 8}, 2, 79, "horizontal leg as thick as the angle is high"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(P::ShapeName(c.shape).toStdString() + ": " + c.what);
        P p = section(c.shape, c.broken);
        double v[KwSectionValue::Count];
        EXPECT_EQ(P::CheckShapeDimensions(c.shape, p.m_dimA.data()), 3);
        EXPECT_FALSE(P::IsValidShape(c.shape, p.m_dimA.data()));
        EXPECT_TRUE(loopsOf(p).empty());
        EXPECT_FALSE(p.ComputeSectionProperties(1, v));
        p.m_dimA[c.dim] = c.fixed;
        EXPECT_EQ(P::CheckShapeDimensions(c.shape, p.m_dimA.data()), 0);
        EXPECT_TRUE(p.ComputeSectionProperties(1, v));
        EXPECT_GT(v[KwSectionValue::Area], 0);
    }
    // The profile library and files take the same path: a standard section is valid.
    for (const KwStandardSection& s : KwStandardSections()) {
        const int shape = P::ShapeFromName(QString::fromLatin1(s.shape));
        std::array<double, 6> d{};
        for (int i = 0; i < 6; ++i)
            d[i] = s.dimsMm[i] / 1000;
        EXPECT_TRUE(P::IsValidShape(shape, section(shape, d).m_dimA.data())) << s.name;
    }
}

// The area of each outline against the area of the shape drawn by hand from its dimensions
// (ROD and TUBE: the circles' values are exact, not those of their 20-gons).
TEST(SectionShapeRules, everyOutlineHasTheAreaOfItsShape)
{
    struct Case
    {
        int shape;
        std::array<double, 6> d;
        double area;
    };
    const Case cases[] = {
        {P::ROD, {10}, M_PI * 100},
        {P::TUBE, {10, 8}, M_PI * (100 - 64)},
        {P::I, {200, 100, 80, 8, 12, 10}, 100 * 12 + 80 * 10 + 8 * 178},
        {P::I1, {92, 8, 176, 200}, 2 * 100 * 12 + 8 * 176},
        {P::CHAN, {100, 200, 8, 12}, 2 * 100 * 12 + 8 * 176},
        {P::CHAN1, {92, 8, 176, 200}, 2 * 100 * 12 + 8 * 176},
        {P::CHAN2, {8, 12, 200, 100}, 100 * 12 + 2 * 8 * 188},
        {P::T, {100, 200, 12, 8}, 100 * 12 + 8 * 188},
        {P::T1, {200, 100, 12, 8}, 200 * 12 + 100 * 8},
        {P::T2, {100, 200, 12, 8}, 100 * 12 + 8 * 188},
        {P::CROSS, {100, 10, 200, 12}, 10 * 200 + 100 * 12},
        {P::BAR, {50, 100}, 5000},
        {P::BOX, {100, 200, 10, 8}, 100 * 200 - 84 * 180},
        {P::BOX1, {100, 200, 10, 12, 8, 9}, 100 * 200 - 83 * 178},
        {P::H, {100, 20, 200, 10}, 20 * 200 + 100 * 10},
        {P::HEXA, {20, 100, 80}, 100 * 80 - 20 * 80},
        {P::Z, {92, 8, 176, 200}, 8 * 200 + 2 * 92 * 12},
        {P::HAT, {3, 40, 100, 30}, 100 * 3 + 2 * 3 * 37 + 2 * 30 * 3},
        {P::HAT1, {200, 60, 80, 4, 5}, 200 * 9 + 80 * 51 - 72 * 51},
        {P::L, {100, 80, 10, 8}, 100 * 10 + 8 * 70},
    };
    static_assert(std::size(cases) == P::ShapeCount);
    for (const Case& c : cases) {
        SCOPED_TRACE(P::ShapeName(c.shape).toStdString());
        const P p = section(c.shape, c.d);
        double v[KwSectionValue::Count];
        ASSERT_TRUE(p.ComputeSectionProperties(1, v));
        EXPECT_NEAR(v[KwSectionValue::Area] / c.area, 1, 1e-12);
        if (c.shape == P::ROD || c.shape == P::TUBE)
            continue;
        KwPolygonIntegrals in;
        ASSERT_TRUE(KwIntegratePolygons(loopsOf(p), in));
        EXPECT_NEAR(in.area / c.area, 1, 1e-12);
    }
}

// Very large and very small sections: values are finite or there are none; the unit-input
// check stops lengths whose section values could not be represented.
TEST(SectionShapeRules, valuesAreFiniteAtEveryScale)
{
    const std::pair<int, std::array<double, 6>> shapes[] = {
        {P::ROD, {1}}, {P::TUBE, {1, 0.5}}, {P::BAR, {1, 2}}, {P::HEXA, {0.2, 1, 0.8}},
        {P::I, {2, 1, 1, 0.08, 0.12, 0.12}}};
    for (double scale : {1e-12, 1e15, 1e20, 1e60, 1e100, 1e200}) {
        for (const auto& [shape, unit] : shapes) {
            SCOPED_TRACE(P::ShapeName(shape).toStdString() + " x " + std::to_string(scale));
            std::array<double, 6> d{};
            for (int i = 0; i < 6; ++i)
                d[i] = unit[i] * scale;
            const P p = section(shape, d);
            double v[KwSectionValue::Count];
            for (double& x : v)
                x = 12345; // untouched when refused
            if (!p.ComputeSectionProperties(1, v)) {
                EXPECT_GT(scale, 1e15) << "a representable section was refused";
                for (double x : v)
                    EXPECT_EQ(x, 12345);
                continue;
            }
            for (double x : v)
                EXPECT_TRUE(std::isfinite(x));
            EXPECT_GT(v[KwSectionValue::Area], 0);
            if (shape == P::BAR) {
                EXPECT_NEAR(v[KwSectionValue::ShearFactorZ], 5.0 / 6.0, 1e-3);
            }
            if (shape == P::ROD) {
                EXPECT_NEAR(v[KwSectionValue::ShearFactorZ], 6.0 / 7.0, 1e-9);
            }
        }
    }
    // Up to the largest length (in any display unit) every section value is representable.
    for (const auto& [shape, unit] : shapes) {
        std::array<double, 6> d{};
        for (int i = 0; i < 6; ++i)
            d[i] = unit[i] * CFMView::LargestLength * 1000; // km typed as the largest length
        double v[KwSectionValue::Count];
        EXPECT_TRUE(section(shape, d).ComputeSectionProperties(1, v)) << shape;
    }
    const std::pair<const char*, bool> typed[] = {
        {"1e15", true}, {"-1e15", true}, {"1.0000001e15", false}, {"1e20", false},
        {"1e308", false}, {"12", true}};
    for (const auto& [text, ok] : typed)
        EXPECT_EQ(CFMView::IsValidNumberString(QString::fromLatin1(text), KwUnitKind::Length), ok)
            << text;
    EXPECT_TRUE(CFMView::IsValidNumberString(QStringLiteral("1e20"), KwUnitKind::Stress));
}

// Recovery points lie on the outline (a vertex of the outer loop), nearest to the corners of
// the bounding box; a section symmetric about an axis has its shear centre on that axis.
TEST(SectionShapeRules, recoveryPointsOnTheSectionAndSymmetryIsExact)
{
    for (int steps : {0, 1}) {
        P tee = section(P::T, {0.1, 0.2, 0.012, 0.008});
        tee.m_rotationSteps = steps;
        double v[KwSectionValue::Count];
        ASSERT_TRUE(tee.ComputeSectionProperties(1, v));
        const std::vector<KwLoop> loops = loopsOf(tee);
        for (int k = 0; k < 4; ++k) {
            const Kw::Point pt{v[KwSectionValue::RecoveryFirst + 2 * k],
                               v[KwSectionValue::RecoveryFirst + 2 * k + 1]};
            bool onOutline = false;
            for (const Kw::Point& q : loops.front())
                onOutline = onOutline || (q.x == pt.x && q.y == pt.y);
            EXPECT_TRUE(onOutline) << "point " << k << " turned " << steps;
        }
    }
    // The tee's lower corners are its web's, not its box's (flange 100 wide, web 8).
    P tee = section(P::T, {0.1, 0.2, 0.012, 0.008});
    double v[KwSectionValue::Count];
    ASSERT_TRUE(tee.ComputeSectionProperties(1, v));
    EXPECT_NEAR(v[KwSectionValue::RecoveryFirst + 4], -0.004, 1e-15); // E z
    EXPECT_NEAR(v[KwSectionValue::RecoveryFirst + 5], -0.1, 1e-15);   // E y
    EXPECT_NEAR(v[KwSectionValue::RecoveryFirst + 0], 0.05, 1e-15);   // C z: flange corner

    // Symmetric sections, the slanted HEXA among them, turned or not.
    const std::pair<int, std::array<double, 6>> symmetric[] = {
        {P::HEXA, {0.02, 0.1, 0.08}}, {P::HEXA, {0.049, 0.1, 0.3}}, {P::CROSS, {0.1, 0.01, 0.2, 0.012}},
        {P::BOX, {0.1, 0.2, 0.01, 0.008}}};
    for (const auto& [shape, d] : symmetric)
        for (int steps : {0, 1, 3}) {
            P p = section(shape, d);
            p.m_rotationSteps = steps;
            ASSERT_TRUE(p.ComputeSectionProperties(1, v));
            EXPECT_EQ(v[KwSectionValue::ShearOffsetZ], 0) << P::ShapeName(shape).toStdString();
            EXPECT_EQ(v[KwSectionValue::ShearOffsetY], 0) << P::ShapeName(shape).toStdString();
            EXPECT_EQ(v[KwSectionValue::Izy], 0);
        }
    // Symmetric about one axis only: the other offset is kept.
    P chan = section(P::CHAN, {0.1, 0.2, 0.008, 0.012});
    ASSERT_TRUE(chan.ComputeSectionProperties(1, v));
    EXPECT_EQ(v[KwSectionValue::ShearOffsetY], 0);
    EXPECT_LT(v[KwSectionValue::ShearOffsetZ], -0.01); // outside the web, away from the flanges
}

// The demo host's standard sections follow the element kind as the definition dialog does.
TEST(SectionShapeRules, standardSectionsFollowTheElementKind)
{
    struct Case
    {
        int kind;
        const char* shape;
        bool taken;
    };
    const Case cases[] = {
        {P::KindBar, "L", false},  {P::KindBar, "I", true},    {P::KindBeam, "L", true},
        {P::KindPipe, "I", false}, {P::KindPipe, "ROD", false}, {P::KindPipe, "TUBE", true},
    };
    for (const Case& c : cases) {
        P p = section(P::BAR, {0.02, 0.04}, c.kind);
        EXPECT_EQ(KwApplyStandardSection(&p, QString::fromLatin1(c.shape), 0), c.taken)
            << c.kind << " " << c.shape;
        EXPECT_EQ(p.m_sectionShape, c.taken ? P::ShapeFromName(QString::fromLatin1(c.shape))
                                            : int(P::BAR));
        QStringList names, shapes;
        KwStandardSectionLists(c.kind, names, shapes);
        EXPECT_EQ(shapes.contains(QString::fromLatin1(c.shape)), c.taken);
    }
}
