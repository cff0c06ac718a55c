#pragma once
// A connector between two places of the model: a rod or cable (cross-section area and
// material), a spring (axial stiffness), a bolt (shank and head diameter, material, preload,
// friction under the head) or a rigid link. Each end is what the user picked for it.
#include "CKwFEBase.h"
#include "KwNumbers.h"

#include <QList>

class CKwUIEntity;

class KWICAD_EXPORT CKwConnector : public CKwFEBase
{
public:
    enum Type { Rod = 0, Cable = 1, Spring = 2, Bolt = 3, Rigid = 4 };

    CKwConnector(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Connector"); }
    // Rods, cables and bolts are made of a material; springs and rigid links are not.
    bool HasMaterial() const { return m_type == Rod || m_type == Cable || m_type == Bolt; }
    // A cable carries tension only, whatever its flag says.
    bool CarriesTensionOnly() const { return m_type == Cable || m_tensionOnly; }

    int m_type = Bolt;
    QList<CKwUIEntity*> m_end1;
    QList<CKwUIEntity*> m_end2;
    int m_materialId = 0;                      // 0: none chosen
    double m_area = MissingDouble;             // m^2, rods and cables
    double m_diameter = MissingDouble;         // m, bolt shank
    double m_headDiameter = MissingDouble;     // m, bolt head or nut
    double m_axialStiffness = MissingDouble;   // N/m, springs
    double m_preload = 0.0;                    // N, bolts and springs
    double m_friction = 0.0;                   // under the bolt head
    bool m_tensionOnly = false;                // rods
};
