#pragma once
// Base of every entity of the finite-element model: an identifier and a name.
#include "KwiCADExport.h"

#include <QString>

class KWICAD_EXPORT CKwFEBase
{
public:
    CKwFEBase(int id = 0, const QString& name = QString());
    virtual ~CKwFEBase();
    int GetID() const { return m_id; }
    void SetID(int id) { m_id = id; }
    QString GetName() const { return m_name; }
    void SetName(const QString& name) { m_name = name; }
    // Short entity family name for the model tree ("Material", "Constraint", ...).
    virtual QString GetTypeName() const = 0;

private:
    int m_id;
    QString m_name;
};
