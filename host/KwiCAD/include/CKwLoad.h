#pragma once
// A load of the model: kind, magnitude and direction, the entities it acts on.
#include "CKwFEBase.h"

#include <QList>

class CKwUIEntity;

class KWICAD_EXPORT CKwLoad : public CKwFEBase
{
public:
    enum Kind { Force = 0, Pressure = 1, Moment = 2, Gravity = 3, Temperature = 4 };
    CKwLoad(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Load"); }

    int m_kind = Force;
    double m_value = 0.0;          // internal units of the kind
    double m_direction[3] = {0, 0, -1};
    QList<CKwUIEntity*> m_entities;
    QList<int> m_subcaseIds;
};
