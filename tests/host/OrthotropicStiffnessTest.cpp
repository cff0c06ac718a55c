// The stiffness of an orthotropic solid from its engineering constants: the isotropic special
// case, a real composite read back as load cases, the limits of positive definiteness and
// constants that are missing.
#include "CKwMaterial.h"
#include "KwNumbers.h"
#include "KwOrthotropicStiffness.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace {

using S = KwOrthotropicStiffness;

KwOrthotropicConstants isotropic(double e, double nu)
{
    const double g = e / (2 * (1 + nu));
    return {e, e, e, nu, nu, nu, g, g, g};
}

// A unidirectional carbon/epoxy: fibres along 1.
constexpr KwOrthotropicConstants kCarbon = {181e9, 10.3e9, 10.3e9, 0.28, 0.49, 0.28,
                                            7.17e9, 7.17e9, 3.46e9};

void expectNear(double actual, double expected, double scale, const char* what)
{
    EXPECT_NEAR(actual, expected, 1e-12 * scale) << what;
}

TEST(OrthotropicStiffness, isotropicConstantsGiveTheLameForm)
{
    const struct { double e, nu; } cases[] = {
        {200e9, 0.3}, {70e9, 0.33}, {1e6, 0.0}, {1.0, -0.5}, {3e9, 0.4999}};
    for (const auto& t : cases) {
        SCOPED_TRACE(testing::Message() << "E " << t.e << " nu " << t.nu);
        const S s = S::From(isotropic(t.e, t.nu));
        ASSERT_EQ(s.status, S::Ok);
        const double mu = t.e / (2 * (1 + t.nu));
        const double lambda = t.e * t.nu / ((1 + t.nu) * (1 - 2 * t.nu));
        const double scale = lambda + 2 * mu;
        for (int i = 0; i < 6; ++i)
            for (int j = 0; j < 6; ++j) {
                double expected = 0;
                if (i < 3 && j < 3)
                    expected = i == j ? lambda + 2 * mu : lambda;
                else if (i == j)
                    expected = mu;
                EXPECT_NEAR(s.At(i, j), expected, 1e-9 * scale) << i << "," << j;
            }
    }
}

// Each load case is a strain state written from the meaning of the constants; the stiffness
// must give back the stress that causes it. Together they are C times the compliance, column
// by column, so a swapped ratio or modulus shows.
TEST(OrthotropicStiffness, compositeStrainsOfKnownStressesGiveTheStressesBack)
{
    const KwOrthotropicConstants& k = kCarbon;
    const S s = S::From(k);
    ASSERT_EQ(s.status, S::Ok);
    const double nu21 = k.nu12 * k.e2 / k.e1;
    const double nu31 = k.nu13 * k.e3 / k.e1;
    const double nu32 = k.nu23 * k.e3 / k.e2;
    struct Case
    {
        const char* load;
        std::array<double, 6> strain; // per unit stress
        int stressed;
    };
    const Case cases[] = {
        {"tension along 1", {1 / k.e1, -k.nu12 / k.e1, -k.nu13 / k.e1, 0, 0, 0}, 0},
        {"tension along 2", {-nu21 / k.e2, 1 / k.e2, -k.nu23 / k.e2, 0, 0, 0}, 1},
        {"tension along 3", {-nu31 / k.e3, -nu32 / k.e3, 1 / k.e3, 0, 0, 0}, 2},
        {"shear 12", {0, 0, 0, 1 / k.g12, 0, 0}, 3},
        {"shear 23", {0, 0, 0, 0, 1 / k.g23, 0}, 4},
        {"shear 13", {0, 0, 0, 0, 0, 1 / k.g13}, 5},
    };
    for (const Case& c : cases)
        for (int i = 0; i < 6; ++i) {
            double stress = 0;
            for (int j = 0; j < 6; ++j)
                stress += s.At(i, j) * c.strain[std::size_t(j)];
            EXPECT_NEAR(stress, i == c.stressed ? 1.0 : 0.0, 1e-12) << c.load << ", row " << i;
        }
    for (int i = 0; i < 6; ++i)
        for (int j = 0; j < 6; ++j)
            EXPECT_EQ(s.At(i, j), s.At(j, i)) << i << "," << j;
    // The closed form of the textbook, term by term.
    const double d = 1 - k.nu12 * nu21 - k.nu23 * nu32 - k.nu13 * nu31 - 2 * nu21 * nu32 * k.nu13;
    const double scale = s.At(0, 0);
    expectNear(s.At(0, 0), k.e1 * (1 - k.nu23 * nu32) / d, scale, "C11");
    expectNear(s.At(1, 1), k.e2 * (1 - k.nu13 * nu31) / d, scale, "C22");
    expectNear(s.At(2, 2), k.e3 * (1 - k.nu12 * nu21) / d, scale, "C33");
    expectNear(s.At(0, 1), k.e1 * (nu21 + nu31 * k.nu23) / d, scale, "C12");
    expectNear(s.At(0, 2), k.e1 * (nu31 + nu21 * nu32) / d, scale, "C13");
    expectNear(s.At(1, 2), k.e2 * (nu32 + k.nu12 * nu31) / d, scale, "C23");
    EXPECT_NEAR(s.At(0, 0) / 1e9, 184.22, 0.01);
}

TEST(OrthotropicStiffness, constantsWithoutAPositiveDefiniteComplianceGiveNoMatrix)
{
    const auto with = [](auto change) {
        KwOrthotropicConstants k = kCarbon;
        change(k);
        return k;
    };
    const struct
    {
        const char* what;
        KwOrthotropicConstants k;
        S::Status status;
    } cases[] = {
        {"isotropic nu 0.5", isotropic(200e9, 0.5), S::NotPositiveDefinite},
        {"isotropic nu 0.6", isotropic(200e9, 0.6), S::NotPositiveDefinite},
        {"isotropic nu 0.4999", isotropic(200e9, 0.4999), S::Ok},
        {"isotropic nu -1", {1e9, 1e9, 1e9, -1, -1, -1, 1e9, 1e9, 1e9}, S::NotPositiveDefinite},
        {"nu23 1", with([](auto& k) { k.nu23 = 1.0; }), S::NotPositiveDefinite},
        {"nu23 1.3", with([](auto& k) { k.nu23 = 1.3; }), S::NotPositiveDefinite},
        {"nu23 0.99", with([](auto& k) { k.nu23 = 0.99; }), S::Ok},
        // nu12 may pass 0.5 in a composite: nu21 = nu12 E2/E1 stays small.
        {"nu12 2", with([](auto& k) { k.nu12 = 2.0; k.nu13 = 0.1; }), S::Ok},
        {"nu12 5", with([](auto& k) { k.nu12 = 5.0; }), S::NotPositiveDefinite},
        {"E2 zero", with([](auto& k) { k.e2 = 0; }), S::NotPositiveDefinite},
        {"E3 negative", with([](auto& k) { k.e3 = -1e9; }), S::NotPositiveDefinite},
        {"G23 zero", with([](auto& k) { k.g23 = 0; }), S::NotPositiveDefinite},
        {"G13 negative", with([](auto& k) { k.g13 = -1; }), S::NotPositiveDefinite},
    };
    for (const auto& c : cases) {
        const S s = S::From(c.k);
        EXPECT_EQ(s.status, c.status) << c.what;
        if (s.status != S::Ok) {
            for (double v : s.c)
                ASSERT_EQ(v, 0.0) << c.what;
        }
    }
}

TEST(OrthotropicStiffness, aMissingOrNonFiniteConstantLeavesItIncomplete)
{
    const double bad[] = {MissingDouble, std::numeric_limits<double>::quiet_NaN(),
                          std::numeric_limits<double>::infinity()};
    for (int which = 0; which < 9; ++which)
        for (double v : bad) {
            KwOrthotropicConstants k = kCarbon;
            (&k.e1)[which] = v;
            EXPECT_EQ(S::From(k).status, S::Incomplete) << which << " " << v;
        }
}

// The key names say 1, 2 and 3 in two ways (NUXZ is nu13, G1Z is G13); every constant reaches
// its own field.
TEST(OrthotropicStiffness, constantsOfAMaterialComeFromTheirKeys)
{
    CKwMaterial m;
    m.SetMaterialType(CKwMaterial::Orthotropic3D);
    const char* keys[] = {"E1", "E2", "E3", "NUXY", "NUYZ", "NUXZ", "G12", "G1Z", "G2Z"};
    for (int i = 0; i < 9; ++i)
        m.SetValue(QString::fromLatin1(keys[i]), 1.0 + i);
    const KwOrthotropicConstants k = KwOrthotropicConstants::Of(m);
    const double got[] = {k.e1, k.e2, k.e3, k.nu12, k.nu23, k.nu13, k.g12, k.g13, k.g23};
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(got[i], 1.0 + i) << keys[i];
    m.SetValue("G2Z", MissingDouble);
    EXPECT_EQ(S::From(KwOrthotropicConstants::Of(m)).status, S::Incomplete);
}

} // namespace
