// Engineering to true stress-strain values, and the plastic curve the solver gets from them.
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "KwSolverDeck.h"
#include "KwStressStrain.h"

#include <cmath>
#include <memory>
#include <gtest/gtest.h>

namespace {

constexpr double E = 2e11;

TEST(StressStrain, engineeringValuesBecomeTrueOnes)
{
    std::vector<double> strain{0, 0.001, 0.1, -0.05, -1.0};
    std::vector<double> stress{0, 2e8, 3e8, -1e8, 5e8};
    EXPECT_EQ(KwEngineeringToTrue(strain, stress), 1); // a strain of -1 has no true value
    const double expectStrain[] = {0, std::log1p(0.001), std::log1p(0.1), std::log1p(-0.05), -1.0};
    const double expectStress[] = {0, 2e8 * 1.001, 3e8 * 1.1, -1e8 * 0.95, 5e8};
    for (std::size_t i = 0; i < strain.size(); ++i) {
        EXPECT_DOUBLE_EQ(strain[i], expectStrain[i]) << i;
        EXPECT_DOUBLE_EQ(stress[i], expectStress[i]) << i;
    }
}

TEST(StressStrain, plasticCurveStartsAtYieldAndMustRise)
{
    struct Case
    {
        const char* what;
        std::vector<double> strain, stress;
        bool engineering;
        KwPlasticCurve::Problem problem;
        int point;
        std::vector<double> plasticStrain; // when sound
    };
    const Case cases[] = {
        {"true values, origin and yield", {0, 0.001, 0.011}, {0, 2e8, 2.2e8}, false,
         KwPlasticCurve::NoProblem, -1, {0, 0.011 - 2.2e8 / E}},
        {"engineering values", {0, 0.001, 0.05}, {0, 2e8, 2.5e8}, true,
         KwPlasticCurve::NoProblem, -1, {0, std::log(1.05) - 2.5e8 * 1.05 / E}},
        {"elastic points before yield move it up", {0.0005, 0.001, 0.02}, {1e8, 2e8, 2.2e8}, false,
         KwPlasticCurve::NoProblem, -1, {0, 0.02 - 2.2e8 / E}},
        {"softening back onto less plastic strain", {0.001, 0.02, 0.019}, {2e8, 3e8, 2e8}, false,
         KwPlasticCurve::NotIncreasing, 2, {}},
        {"only the elastic line", {0, 0.001}, {0, 2e8}, false, KwPlasticCurve::TooFewPoints, -1, {}},
        {"a negative point", {0, -0.001, 0.01}, {0, 2e8, 3e8}, false, KwPlasticCurve::BelowZero, 1,
         {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const KwPlasticCurve p = KwPlasticCurveOf(c.strain, c.stress, E, c.engineering);
        EXPECT_EQ(p.problem, c.problem);
        EXPECT_EQ(p.point, c.point);
        if (c.problem != KwPlasticCurve::NoProblem)
            continue;
        ASSERT_EQ(p.plasticStrain.size(), c.plasticStrain.size());
        for (std::size_t i = 0; i < p.plasticStrain.size(); ++i)
            EXPECT_NEAR(p.plasticStrain[i], c.plasticStrain[i], 1e-12) << i;
        EXPECT_EQ(p.plasticStrain.front(), 0.0);
    }
    EXPECT_EQ(KwPlasticCurveOf({0, 1}, {0, 1}, 0, false).problem, KwPlasticCurve::NoModulus);
}

// The deck writes the plastic curve of a nonlinear run (converted when engineering), leaves it
// out of a linear one and refuses a curve that does not rise.
TEST(StressStrain, deckWritesThePlasticCurveOfANonlinearRun)
{
    std::unique_ptr<CKwFEModel> m(CKwFEModel::CreateSampleModel());
    CKwAnalysis* nonlinear = nullptr;
    CKwAnalysis* linear = nullptr;
    for (CKwAnalysis* a : m->m_analyses) {
        if (a->GetAnalysisTypeCode() == CKwAnalysis::NonlinearStatic && !nonlinear)
            nonlinear = a;
        if (a->GetAnalysisTypeCode() == CKwAnalysis::LinearStatic && !linear)
            linear = a;
    }
    ASSERT_TRUE(nonlinear && linear);
    // The solid elements take the first solid property's material.
    const KwSolverDeck before = KwWriteSolverDeck(*m, *nonlinear);
    ASSERT_TRUE(before.ok()) << before.refusal.toStdString();
    CKwMaterial* mat = nullptr;
    for (CKwMaterial* c : m->m_materials)
        if (before.text.find("*MATERIAL, NAME=M" + std::to_string(c->GetID()) + "\n")
            != std::string::npos && !mat)
            mat = c;
    ASSERT_NE(mat, nullptr);
    const double e = mat->GetValue(QStringLiteral("EX"));
    KwMaterialCurve curve;
    curve.x = {0, 2e8 / e, 0.1};
    curve.y = {0, 2e8, 3e8};
    mat->SetCurve(CKwMaterial::StressStrain, curve);

    const KwSolverDeck deck = KwWriteSolverDeck(*m, *nonlinear);
    ASSERT_TRUE(deck.ok()) << deck.refusal.toStdString();
    const KwPlasticCurve expected = KwPlasticCurveOf(curve.x, curve.y, e, true);
    ASSERT_TRUE(expected.ok());
    const std::size_t at = deck.text.find("*PLASTIC\n");
    ASSERT_NE(at, std::string::npos) << deck.text.substr(0, 2000);
    double s0 = 0, p0 = -1, s1 = 0, p1 = -1;
    ASSERT_EQ(std::sscanf(deck.text.c_str() + at + 9, "%lf, %lf\n%lf, %lf", &s0, &p0, &s1, &p1), 4);
    EXPECT_NEAR(s0, 2e8 * (1 + 2e8 / e), 1e-6 * s0); // true stress at yield
    EXPECT_EQ(p0, 0.0);
    EXPECT_NEAR(s1, 3e8 * 1.1, 1e-6 * s1);
    EXPECT_NEAR(p1, std::log(1.1) - 3.3e8 / e, 1e-9);

    // Already true values: taken as they stand.
    mat->m_stressStrainTrue = true;
    const KwSolverDeck asTrue = KwWriteSolverDeck(*m, *nonlinear);
    EXPECT_NE(asTrue.text.find("*PLASTIC\n200000000, 0\n300000000, "), std::string::npos);

    EXPECT_EQ(KwWriteSolverDeck(*m, *linear).text.find("*PLASTIC"), std::string::npos);

    curve.x = {0, 2e8 / e, 0.02, 0.018};
    curve.y = {0, 2e8, 3e8, 2e8};
    mat->SetCurve(CKwMaterial::StressStrain, curve);
    const KwSolverDeck falling = KwWriteSolverDeck(*m, *nonlinear);
    EXPECT_FALSE(falling.ok());
    EXPECT_TRUE(falling.refusal.contains(QStringLiteral("does not increase at point 4")))
        << falling.refusal.toStdString();
}

} // namespace
