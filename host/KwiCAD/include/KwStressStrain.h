#pragma once
// Stress-strain curves of nonlinear materials: engineering values (force over the original
// area, stretch over the original length) to true ones, and the plastic curve a solver takes
// from them: true stress against plastic strain, starting at zero plastic strain at yield.
#include "KwiCADExport.h"

#include <vector>

// In place: true stress = s (1 + e), true strain = ln(1 + e). A strain at or below -1 has no
// true value; such points are left as they are and counted in the return value.
KWICAD_EXPORT int KwEngineeringToTrue(std::vector<double>& strain, std::vector<double>& stress);

struct KwPlasticCurve
{
    enum Problem { NoProblem = 0, TooFewPoints, NoModulus, NotIncreasing, BelowZero };
    Problem problem = NoProblem;
    int point = -1; // the curve point (0-based) a problem is at
    std::vector<double> stress;        // true stress
    std::vector<double> plasticStrain; // from 0, strictly increasing
    bool ok() const { return problem == NoProblem; }
};

// The plastic curve of a stress-strain curve (strain as X, stress as Y, engineering values when
// `engineering`, else true ones) and the material's elastic modulus. Points without stress (the
// origin) and points still on the elastic line (plastic strain within 1e-9 of none) before the
// first one beyond it are not part of it; the first plastic point is the yield point and its
// plastic strain counts as zero. The plastic strain must grow from point to point.
KWICAD_EXPORT KwPlasticCurve KwPlasticCurveOf(const std::vector<double>& strain,
                                             const std::vector<double>& stress, double modulus,
                                             bool engineering);
