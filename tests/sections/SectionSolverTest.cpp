// The section solver against closed forms and against its own refinement.
#include "CKwPhysicalProperty.h"
#include "KwNumbers.h"
#include "KwSectionSolver.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using P = CKwPhysicalProperty;

KwLoop polygon(double r, int n, bool ccw = true)
{
    KwLoop l;
    for (int i = 0; i < n; ++i) {
        const double a = 2 * M_PI * i / n * (ccw ? 1 : -1);
        l.push_back({r * std::cos(a), r * std::sin(a)});
    }
    return l;
}

KwLoop rect(double x0, double y0, double x1, double y1)
{
    return {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}};
}

// Saint-Venant's series for a b x t rectangle (t <= b).
double rectangleTorsion(double b, double t)
{
    double s = 0;
    for (int n = 1; n < 200; n += 2)
        s += std::tanh(n * M_PI * b / (2 * t)) / std::pow(n, 5);
    return b * t * t * t / 3 * (1 - 192 / std::pow(M_PI, 5) * t / b * s);
}

KwSectionResult solve(const std::vector<KwLoop>& loops, int target = 400)
{
    KwSectionResult r;
    EXPECT_TRUE(KwSolveSection(loops, r, target));
    return r;
}

} // namespace

TEST(SectionSolver, rectanglesMatchTheSeriesAndTheParabolicShearFactor)
{
    for (double t : {10.0, 5.0, 1.0}) { // square, thick and thin
        const KwSectionResult r = solve({rect(0, 0, 10, t)});
        EXPECT_NEAR(r.torsion / rectangleTorsion(10, t), 1, 2e-3) << t;
        EXPECT_NEAR(r.shearFactorX, 5.0 / 6, 2e-3) << t;
        EXPECT_NEAR(r.shearFactorY, 5.0 / 6, 2e-3) << t;
        EXPECT_NEAR(r.shearCenterX, 5, 1e-9);
        EXPECT_NEAR(r.shearCenterY, t / 2, 1e-9);
        EXPECT_NEAR(r.exact.ixx, t * 1000 / 12, 1e-9);
    }
}

TEST(SectionSolver, circleAndAnnulusAgreeWithTheClosedForms)
{
    // A 96-gon differs from its circle by 0.07% in area; the tolerances cover it.
    P p;
    double rod[KwSectionValue::Count], tube[KwSectionValue::Count];
    ASSERT_TRUE(p.GetRodSectionProperties(2.0, rod));
    ASSERT_TRUE(p.GetTubeSectionProperties(2.0, 1.5, tube));
    EXPECT_NEAR(rod[KwSectionValue::ShearFactorZ], 6.0 / 7, 1e-12);
    EXPECT_NEAR(rod[KwSectionValue::Torsion], M_PI * 8, 1e-12);
    const KwSectionResult c = solve({polygon(2, 96)}, 3000);
    EXPECT_NEAR(c.torsion / rod[KwSectionValue::Torsion], 1, 3e-3);
    EXPECT_NEAR(c.shearFactorY / rod[KwSectionValue::ShearFactorY], 1, 3e-3);
    // The ring is cut into ears, which needs a finer mesh for the shear factor.
    const KwSectionResult a = solve({polygon(2, 96), polygon(1.5, 96, false)}, 12000);
    EXPECT_NEAR(a.torsion / tube[KwSectionValue::Torsion], 1, 3e-3);
    EXPECT_NEAR(a.shearFactorX / tube[KwSectionValue::ShearFactorZ], 1, 5e-3);
    EXPECT_NEAR(a.warping, 0, 1e-6);
}

TEST(SectionSolver, thinWalledSectionsAgreeWithThinWallTheory)
{
    // Closed square box, centre line a = 50, wall t = 1: Bredt J = 4 A^2 t / s = a^3 t.
    const KwSectionResult box = solve({rect(-25.5, -25.5, 25.5, 25.5), rect(-24.5, 24.5, 24.5, -24.5)});
    EXPECT_NEAR(box.torsion / (50.0 * 50 * 50 * 1), 1, 0.02);
    // Channel of flanges b = 40 and web h = 80 (centre lines), t = 1: the shear centre lies
    // e = 3 b^2 / (6 b + h) behind the web, J is about the sum of b t^3 / 3.
    const KwLoop chan{{0, 0}, {40.5, 0}, {40.5, 1}, {1, 1}, {1, 80}, {40.5, 80}, {40.5, 81}, {0, 81}};
    const KwSectionResult c = solve({chan});
    const double e = 3 * 40.0 * 40 / (6 * 40 + 80);
    EXPECT_NEAR(c.shearCenterX, 0.5 - e, 0.03 * e);
    EXPECT_NEAR(c.shearCenterY, 40.5, 1e-6);
    EXPECT_NEAR(c.torsion / ((40 + 40 + 80) * 1.0 / 3), 1, 0.05);
    // Its warping constant: Cw = t b^3 h^2 / 12 (3 b t + 2 h t) / (6 b t + h t).
    const double cw = 1 * std::pow(40.0, 3) * 80 * 80 / 12 * (3 * 40 + 2 * 80) / (6 * 40 + 80);
    EXPECT_NEAR(c.warping / cw, 1, 0.03);
}

TEST(SectionSolver, convergesFromAboveUnderRefinement)
{
    P p;
    p.m_sectionShape = P::I;
    p.m_dimA = {0.2, 0.1, 0.1, 0.008, 0.012, 0.012};
    Kw::Point loops[P::kMaxLoops][P::kMaxLoopPoints];
    int counts[P::kMaxLoops], n = 0;
    p.GetSectionLoopPoints(loops, n, counts, 1);
    ASSERT_EQ(n, 1);
    const std::vector<KwLoop> l{KwLoop(loops[0], loops[0] + counts[0])};
    double last = 1e300;
    for (int target : {200, 800, 3200}) {
        const double j = solve(l, target).torsion;
        EXPECT_LT(j, last);
        last = j;
    }
    EXPECT_NEAR(solve(l).torsion / solve(l, 20000).torsion, 1, 0.01);
}

TEST(SectionSolver, refusesSectionsThatAreNotOne)
{
    KwSectionResult r;
    const std::vector<std::vector<KwLoop>> bad = {
        {},
        {{{0, 0}, {1, 1}, {1, 0}, {0, 1}}},              // crosses itself
        {rect(0, 0, 1, 1), rect(2, 2, 3, 3)},            // hole outside
        {rect(0, 0, 2, 2), rect(0, 0.5, 1, 1.5)},        // hole touching the boundary
        {{{0, 0}, {1, 0}, {2, 0}}},                      // no area
        {{{0, 0}, {NAN, 0}, {1, 1}}},
    };
    for (const auto& loops : bad)
        EXPECT_FALSE(KwSolveSection(loops, r));
}

TEST(SectionSolver, everyShapeGivesAFiniteSectionAndTurnsInQuarterSteps)
{
    const double mm[P::ShapeCount][6] = {
        {10}, {10, 8}, {200, 100, 100, 8, 12, 12}, {92, 8, 176, 200}, {100, 200, 8, 12},
        {92, 8, 176, 200}, {8, 12, 200, 100}, {100, 200, 12, 8}, {200, 100, 12, 8},
        {100, 200, 12, 8}, {100, 10, 200, 10}, {50, 100}, {100, 200, 10, 10},
        {100, 200, 10, 12, 8, 9}, {100, 20, 200, 10}, {20, 100, 80}, {92, 8, 176, 200},
        {3, 40, 100, 30}, {200, 60, 80, 4, 5}, {100, 80, 10, 8}};
    for (int s = 0; s < P::ShapeCount; ++s) {
        P p;
        p.m_sectionShape = s;
        for (int i = 0; i < P::ShapeDimensionCount(s); ++i)
            p.m_dimA[i] = mm[s][i] / 1000;
        double v[KwSectionValue::Count], turned[KwSectionValue::Count];
        ASSERT_TRUE(p.ComputeSectionProperties(1, v)) << P::ShapeName(s).toStdString();
        for (double x : v)
            EXPECT_TRUE(std::isfinite(x));
        EXPECT_GT(v[KwSectionValue::Torsion], 0);
        p.m_rotationSteps = 1;
        ASSERT_TRUE(p.ComputeSectionProperties(1, turned));
        EXPECT_NEAR(turned[KwSectionValue::Izz] / v[KwSectionValue::Iyy], 1, 1e-9);
        EXPECT_NEAR(turned[KwSectionValue::Torsion] / v[KwSectionValue::Torsion], 1, 1e-6)
            << P::ShapeName(s).toStdString();
        EXPECT_NEAR(turned[KwSectionValue::Rotation], M_PI / 2, 1e-12);
        // A bad dimension gives no outline and no values.
        p.m_dimA[0] = -p.m_dimA[0];
        EXPECT_FALSE(p.ComputeSectionProperties(1, v));
    }
}
