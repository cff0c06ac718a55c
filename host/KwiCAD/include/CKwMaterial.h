#pragma once
// An isotropic material of the model. Values are internal (SI); missing ones hold MissingDouble.
#include "CKwFEBase.h"

class KWICAD_EXPORT CKwMaterial : public CKwFEBase
{
public:
    CKwMaterial(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Material"); }

    double m_youngsModulus;   // Pa
    double m_poissonRatio;    // -
    double m_density;         // kg/m^3
    double m_yieldStress;     // Pa
    double m_thermalExpansion; // 1/K
    double m_conductivity;    // W/(m K)
    int m_failureTheory = 0;
};
