#pragma once
// A constraint of the model: its type, degrees of freedom, the picked entities it acts on,
// its display settings and the subcases it belongs to.
#include "CKwFEBase.h"

#include <QList>
#include <array>

class CKwUIEntity;

class KWICAD_EXPORT CKwRestraint : public CKwFEBase
{
public:
    enum Type { Structural = 0, Thermal = 1, ResponseSpectrum = 2, Pin = 3, Frictionless = 4,
                RigidExplicit = 5 };

    CKwRestraint(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Constraint"); }
    bool IsThermal() const { return m_type == Thermal; }

    int m_type = Structural;
    std::array<bool, 6> m_dof{}; // TX TY TZ RX RY RZ fixed
    std::array<bool, 3> m_pinFix{}; // radial, axial, tangential
    double m_temperature;    // K, or MissingDouble
    int m_coordSystem = 0;   // index into the model's coordinate systems
    unsigned m_color = 0x00FF0000; // 0x00BBGGRR: blue
    int m_size = 5;
    int m_density = 10;
    QList<CKwUIEntity*> m_entities;
    QList<int> m_subcaseIds;
};
