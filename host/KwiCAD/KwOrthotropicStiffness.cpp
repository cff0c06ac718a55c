#include "KwOrthotropicStiffness.h"

#include "CKwMaterial.h"
#include "KwNumbers.h"

#include <cmath>

namespace K = KwMaterialKeys;

namespace {

// The determinant of the moduli-scaled normal block must stay clear of zero by more than
// rounding: at nu = 0.5 (isotropic) it is zero in exact arithmetic and a few ulps off in floating
// point, which would give a matrix of huge numbers instead of none.
constexpr double kSingular = 1e-12;

bool usable(double v) { return !IsMissingValue(v) && std::isfinite(v); }

} // namespace

KwOrthotropicConstants KwOrthotropicConstants::Of(const CKwMaterial& m)
{
    return {m.GetValue(K::E1),  m.GetValue(K::E2),   m.GetValue(K::E3),
            m.GetValue(K::NUXY), m.GetValue(K::NUYZ), m.GetValue(K::NUXZ),
            m.GetValue(K::G12),  m.GetValue(K::G1Z),  m.GetValue(K::G2Z)};
}

KwOrthotropicStiffness KwOrthotropicStiffness::From(const KwOrthotropicConstants& k)
{
    KwOrthotropicStiffness out;
    for (double v : {k.e1, k.e2, k.e3, k.nu12, k.nu23, k.nu13, k.g12, k.g13, k.g23})
        if (!usable(v))
            return out;
    out.status = NotPositiveDefinite;
    for (double v : {k.e1, k.e2, k.e3, k.g12, k.g13, k.g23})
        if (v <= 0)
            return out;

    // The normal block of the compliance, symmetric by the reciprocal relation:
    // S_ij = -nu_ij / E_i = -nu_ji / E_j.
    const double s11 = 1 / k.e1, s22 = 1 / k.e2, s33 = 1 / k.e3;
    const double s12 = -k.nu12 / k.e1, s13 = -k.nu13 / k.e1, s23 = -k.nu23 / k.e2;

    // Scaled by the moduli it has a unit diagonal; positive definite when its leading minors
    // are positive.
    const double a = s12 * std::sqrt(k.e1 * k.e2);
    const double b = s13 * std::sqrt(k.e1 * k.e3);
    const double c = s23 * std::sqrt(k.e2 * k.e3);
    const double minor2 = 1 - a * a;
    const double minor3 = 1 - a * a - b * b - c * c + 2 * a * b * c;
    if (!(minor2 > kSingular) || !(minor3 > kSingular))
        return out;

    // The inverse of the normal block by its cofactors.
    const double c11 = s22 * s33 - s23 * s23;
    const double c12 = s13 * s23 - s12 * s33;
    const double c13 = s12 * s23 - s13 * s22;
    const double c22 = s11 * s33 - s13 * s13;
    const double c23 = s12 * s13 - s11 * s23;
    const double c33 = s11 * s22 - s12 * s12;
    const double det = s11 * c11 + s12 * c12 + s13 * c13;
    const double block[3][3] = {{c11, c12, c13}, {c12, c22, c23}, {c13, c23, c33}};
    for (int i = 0; i < 3; ++i)
        for (int j = 0; j < 3; ++j)
            out.c[std::size_t(i * 6 + j)] = block[i][j] / det;
    out.c[3 * 6 + 3] = k.g12;
    out.c[4 * 6 + 4] = k.g23;
    out.c[5 * 6 + 5] = k.g13;
    out.status = Ok;
    return out;
}
