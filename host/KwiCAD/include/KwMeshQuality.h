#pragma once
// Shape measures of triangles, quadrilaterals, tetrahedra, hexahedra, wedges and pyramids,
// taken on the corner nodes (docs/meshquality.md gives each definition, its ideal value and its
// source). Angles are in radians. A measure that does not apply to
// the family is NaN; a measure that cannot be taken because the element collapsed (a zero
// edge, area or volume) is +infinity, except the Jacobian, which is then 0.
#include "KwiCADExport.h"

namespace KwMeshQuality {

enum Measure : int { AspectRatio = 0, Skew = 1, Warping = 2, Taper = 3, Jacobian = 4,
                     MeasureCount = 5 };
enum Family : unsigned char { NoFamily = 0, Triangle = 1, Quadrilateral = 2, Tetrahedron = 3,
                              Hexahedron = 4, Wedge = 5, Pyramid = 6, FamilyCount = 7 };

// Points are x, y, z triples in the element's node order.
KWICAD_EXPORT void MeasureTriangle(const double* const p[3], double out[MeasureCount]);
KWICAD_EXPORT void MeasureQuadrilateral(const double* const p[4], double out[MeasureCount]);
KWICAD_EXPORT void MeasureTetrahedron(const double* const p[4], double out[MeasureCount]);
// Solids with quadrilateral faces, corners numbered as the mesh numbers them: a hexahedron's
// bottom 1-4 counter-clockwise seen from its top 5-8; a wedge's triangle 1-3 counter-clockwise
// seen from 4-6; a pyramid's base 1-4 counter-clockwise seen from its apex 5. Every measure
// applies to them.
KWICAD_EXPORT void MeasureHexahedron(const double* const p[8], double out[MeasureCount]);
KWICAD_EXPORT void MeasureWedge(const double* const p[6], double out[MeasureCount]);
KWICAD_EXPORT void MeasurePyramid(const double* const p[5], double out[MeasureCount]);
// Measures the corners of an element of any family (`pts` as many as the family has corners).
KWICAD_EXPORT void MeasureFamily(int family, const double* const pts[], double out[MeasureCount]);

// Whether a measure is an angle (converted to the display angle unit before it is compared).
constexpr bool IsAngle(int measure) { return measure == Skew || measure == Warping; }
// Whether a smaller value is worse (the Jacobian fails below its limit, the rest above).
constexpr bool FailsBelow(int measure) { return measure == Jacobian; }

} // namespace KwMeshQuality
