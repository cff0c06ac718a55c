#pragma once
// A contact between two sets of entities: the master and slave sides, how they interact,
// friction, and the penetration, stiffness and search parameters of the contact algorithm.
#include "CKwFEBase.h"

#include <QList>

class CKwUIEntity;

class KWICAD_EXPORT CKwSurfaceContact : public CKwFEBase
{
public:
    enum Kind { Bonded = 0, Separating = 1, SlidingNoSeparation = 2, Welded = 3,
                OffsetBonded = 4, KindCount = 5 };

    CKwSurfaceContact(int id = 0, const QString& name = QString()) : CKwFEBase(id, name) {}
    QString GetTypeName() const override { return QStringLiteral("Surface Contact"); }

    int m_kind = Bonded;
    double m_friction = 0.0; // coefficient; separating contacts only
    QList<CKwUIEntity*> m_master;
    QList<CKwUIEntity*> m_slave;
    // The contact parameters.
    double m_penetrationTolerance = 1.0e-5; // m
    double m_stiffnessFactor = 1.0;
    double m_searchDistance = 1.0e-3; // m
};
