#pragma once
// A concentrated mass of the model: a point mass with its moments of inertia and the offset of
// its centre of gravity from the picked point or vertex, or an automatic mass that stands in
// for a picked body of an assembly (mass and inertias then come from the body itself).
#include "CKwFEBase.h"
#include "KwNumbers.h"

#include <QList>
#include <array>

class CKwUIEntity;

class KWICAD_EXPORT CKwConMass : public CKwFEBase
{
public:
    enum Type { PointMass = 0, Automatic = 1 };

    CKwConMass(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Concentrated Mass"); }

    int m_type = PointMass;
    double m_mass = MissingDouble;          // kg
    std::array<double, 3> m_inertia{};      // Ixx Iyy Izz, kg m^2
    std::array<double, 3> m_offset{};       // m, from the picked point
    QList<CKwUIEntity*> m_entities;
};
