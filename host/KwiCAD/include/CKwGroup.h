#pragma once
// A named set of nodes or of elements, kept as the ID list the user typed ("1-100, 205") so
// that it reads back as written, and as the IDs that list found in the mesh when it was made.
#include "CKwFEBase.h"

#include <QString>
#include <vector>

class KWICAD_EXPORT CKwGroup : public CKwFEBase
{
public:
    enum Mode : int { Nodes = 0, Elements = 1 };

    CKwGroup(int id = 0, const QString& name = QString()) : CKwFEBase(id, name) {}
    QString GetTypeName() const override
    {
        return m_mode == Nodes ? QStringLiteral("Node Set") : QStringLiteral("Element Set");
    }

    int m_mode = Elements;
    QString m_idList;
    std::vector<int> m_ids; // ascending, each once
};
