#pragma once
// Element deletion of an explicit analysis: per physical property, the criteria that remove
// an element from the solution (an equivalent plastic strain, a maximum principal stress, a
// time), each switched on or off.
#include "CKwFEBase.h"
#include "KwNumbers.h"

#include <QList>

class KWICAD_EXPORT CKwElementDeletion : public CKwFEBase
{
public:
    enum Criterion { PlasticStrain = 0, PrincipalStress = 1, Time = 2, CriterionCount = 3 };
    struct PropertyCriteria
    {
        int propertyId = 0;
        bool on[CriterionCount] = {false, false, false};
        double limit[CriterionCount] = {MissingDouble, MissingDouble, MissingDouble}; // -, Pa, s
    };

    CKwElementDeletion(int id = 0, const QString& name = QString()) : CKwFEBase(id, name) {}
    QString GetTypeName() const override { return QStringLiteral("Element Deletion"); }

    // The criteria of a property; null when the property has none yet.
    PropertyCriteria* Find(int propertyId)
    {
        for (PropertyCriteria& c : m_criteria)
            if (c.propertyId == propertyId)
                return &c;
        return nullptr;
    }

    int m_analysisId = 0;
    QList<PropertyCriteria> m_criteria;
};
