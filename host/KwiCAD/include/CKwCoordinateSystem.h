#pragma once
// A coordinate system the user defined: rectangular, cylindrical or spherical, placed by its
// origin and two axes, by three points (origin, a point on X, a point in the XY plane) or at a
// picked point or vertex with the axes of the global system.
#include "CKwFEBase.h"

#include <array>

class CKwUIEntity;

class KWICAD_EXPORT CKwCoordinateSystem : public CKwFEBase
{
public:
    enum Type { Rectangular = 0, Cylindrical = 1, Spherical = 2 };
    enum Definition { OriginAndAxes = 0, ThreePoints = 1, PickedPoint = 2 };
    using Vec = std::array<double, 3>;

    CKwCoordinateSystem(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Coordinate System"); }

    // Why a definition cannot place the system.
    enum Problem { Fine = 0, ZeroDirection, ParallelAxes, CollinearPoints, NoPoint };
    // The origin and the unit X, Y and Z axes the definition gives (Z from the axes' cross
    // product); Fine, or the problem and the axes left as they were.
    Problem ComputeAxes(Vec* origin, Vec* x, Vec* y, Vec* z) const;

    int m_type = Rectangular;
    int m_definition = OriginAndAxes;
    int m_reference = 0;                 // index into the model's coordinate system names
    Vec m_origin{0, 0, 0};               // m
    Vec m_zAxis{0, 0, 1};
    Vec m_xAxis{1, 0, 0};
    std::array<Vec, 3> m_points{Vec{0, 0, 0}, Vec{1, 0, 0}, Vec{0, 1, 0}}; // m
    CKwUIEntity* m_pickedPoint = nullptr;
    Vec m_pickedPosition{0, 0, 0};       // m, where the picked point lies
};
