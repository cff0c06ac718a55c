#pragma once
// Plain point types of beam cross sections. Section coordinates: x is the section's Z axis
// (horizontal in the drawing), y its Y axis (vertical).

namespace Kw {
struct Point
{
    double x = 0;
    double y = 0;
};
} // namespace Kw

namespace SymMatrixUtils {
struct Point2D
{
    double x = 0;
    double y = 0;
};
} // namespace SymMatrixUtils

// Positions in the array of 22 section values.
namespace KwSectionValue {
enum : int {
    Area = 0,
    Izz = 1,       // about the Z axis: integral of Y^2
    Iyy = 2,       // about the Y axis: integral of Z^2
    Izy = 3,       // product, integral of Z*Y
    PrincipalAngle = 4,
    Torsion = 5,   // J
    ShearFactorZ = 6,
    ShearFactorY = 7,
    Rotation = 8,
    CentroidZ = 9,
    CentroidY = 10,
    ShearOffsetZ = 11, // shear centre minus centroid
    ShearOffsetY = 12,
    Warping = 13,  // Cw
    RecoveryFirst = 14, // C, D, E, F as (Z, Y) pairs
    Count = 22,
};
}
