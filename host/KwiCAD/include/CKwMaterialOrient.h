#pragma once
// The material orientation of shell elements: the faces whose elements it orients and the
// direction of the material's first axis, taken from a straight edge or given as a vector.
#include "CKwFEBase.h"

#include <QList>
#include <array>

class CKwUIEntity;

class KWICAD_EXPORT CKwMaterialOrient : public CKwFEBase
{
public:
    enum Method { FromEdge = 0, FromVector = 1 };

    CKwMaterialOrient(int id = 0, const QString& name = QString()) : CKwFEBase(id, name) {}
    QString GetTypeName() const override { return QStringLiteral("Material Orientation"); }

    int m_method = FromEdge;
    QList<CKwUIEntity*> m_faces;
    CKwUIEntity* m_edge = nullptr; // the secondary geometry of FromEdge
    std::array<double, 3> m_vector{1.0, 0.0, 0.0};
    int m_propertyId = 0; // the shell property it was created for (0: none)
};
