#pragma once
// The stiffness matrix of an orthotropic solid, from the nine engineering constants a material
// of type Orthotropic 3D holds: the inverse of its compliance matrix. The editor shows it for
// reference; the constants stay the material's data.
//
// Rows and columns, 0-based: 0, 1, 2 the normal directions 1, 2, 3; 3 the shear 12, 4 the
// shear 23, 5 the shear 13. The Poisson's ratio nu_ij is the contraction in j under a stress in
// i; the other three follow from nu_ji / E_j = nu_ij / E_i.
#include "KwiCADExport.h"

#include <array>

class CKwMaterial;

struct KWICAD_EXPORT KwOrthotropicConstants
{
    double e1, e2, e3;       // moduli (NUXY and the others below are the key names)
    double nu12, nu23, nu13; // NUXY, NUYZ, NUXZ
    double g12, g13, g23;    // G12, G1Z, G2Z

    // The constants of a material by its keys, missing ones as MissingDouble.
    static KwOrthotropicConstants Of(const CKwMaterial& material);
};

struct KWICAD_EXPORT KwOrthotropicStiffness
{
    enum Status {
        Ok = 0,
        Incomplete,          // a constant is missing or not finite
        NotPositiveDefinite, // the compliance has no positive-definite inverse
    };
    Status status = Incomplete;
    // Row by row, 36 values; all zero unless status is Ok.
    std::array<double, 36> c{};

    double At(int row, int column) const { return c[std::size_t(row * 6 + column)]; }

    static KwOrthotropicStiffness From(const KwOrthotropicConstants& k);
};
