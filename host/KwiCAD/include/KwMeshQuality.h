#pragma once
// Shape measures of linear triangles, quadrilaterals and tetrahedra (docs/meshquality.md gives
// each definition and its source). Angles are in radians. A measure that does not apply to
// the family is NaN; a measure that cannot be taken because the element collapsed (a zero
// edge, area or volume) is +infinity, except the Jacobian, which is then 0.
#include "KwiCADExport.h"

namespace KwMeshQuality {

enum Measure : int { AspectRatio = 0, Skew = 1, Warping = 2, Taper = 3, Jacobian = 4,
                     MeasureCount = 5 };
enum Family : unsigned char { NoFamily = 0, Triangle = 1, Quadrilateral = 2, Tetrahedron = 3 };

// Points are x, y, z triples in the element's node order.
KWICAD_EXPORT void MeasureTriangle(const double* const p[3], double out[MeasureCount]);
KWICAD_EXPORT void MeasureQuadrilateral(const double* const p[4], double out[MeasureCount]);
KWICAD_EXPORT void MeasureTetrahedron(const double* const p[4], double out[MeasureCount]);

// Whether a measure is an angle (converted to the display angle unit before it is compared).
constexpr bool IsAngle(int measure) { return measure == Skew || measure == Warping; }
// Whether a smaller value is worse (the Jacobian fails below its limit, the rest above).
constexpr bool FailsBelow(int measure) { return measure == Jacobian; }

} // namespace KwMeshQuality
