#pragma once
// A local mesh control: the vertices, points, edges or faces it acts on and the element size
// or the number of elements the mesher uses there.
#include "CKwFEBase.h"
#include "KwNumbers.h"

#include <QList>

class CKwUIEntity;

class KWICAD_EXPORT CKwMeshLocal : public CKwFEBase
{
public:
    CKwMeshLocal(int id = 0, const QString& name = QString()) : CKwFEBase(id, name) {}
    QString GetTypeName() const override { return QStringLiteral("Mesh Control"); }

    // Either may be unset (MissingDouble, 0); a control with neither is refused.
    double m_elementSize = MissingDouble; // m
    int m_elementCount = 0;          // along each edge
    QList<CKwUIEntity*> m_entities;
};
