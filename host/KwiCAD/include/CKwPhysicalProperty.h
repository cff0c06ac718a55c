#pragma once
// An idealization: solid, shell (thickness) or beam (cross section), with its material.
#include "CKwFEBase.h"

class KWICAD_EXPORT CKwPhysicalProperty : public CKwFEBase
{
public:
    enum Idealization { Solid = 0, Shell = 1, Beam = 2 };
    CKwPhysicalProperty(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Physical Property"); }

    int m_idealization = Solid;
    int m_materialId = 0;
    double m_thickness;       // m, shells
    QString m_sectionName;    // beams
    double m_sectionArea;     // m^2, beams
};
