#pragma once
// Something the user can pick in the model view: a geometric part, face, edge or vertex, or a
// mesh node or element. Owned by the model; dialogs hold plain pointers.
#include "KwiCADExport.h"

#include <QString>

class KWICAD_EXPORT CKwUIEntity
{
public:
    enum Kind { Vertex = 0, Edge = 1, Face = 2, Body = 3, Node = 4, Element = 5, Point = 6 };

    CKwUIEntity(Kind kind, int id, const QString& label, int bodyId = 1);
    Kind GetKind() const { return m_kind; }
    int GetID() const { return m_id; }
    int GetBodyID() const { return m_bodyId; }
    QString GetLabel() const { return m_label; }
    // The text a selection list shows: "Face 3" or, with IDs shown, "Face 3 <12>"...
    QString GetDisplayText(bool showIds) const;
    // The bit of a selection filter mask that admits this kind.
    unsigned FilterBit() const { return FilterBitOf(m_kind); }
    // Nodes and elements have bits of their own, outside the geometry editors' masks (33278,
    // 32782, 4592), so that an editor that picks geometry never gets mesh entities.
    static unsigned FilterBitOf(Kind kind);
    static QString KindName(Kind kind);
    // Edges and faces are straight or plane unless the part's geometry curves them (an arc,
    // a fillet).
    bool IsCurved() const { return m_curved; }
    void SetCurved(bool curved) { m_curved = curved; }

private:
    Kind m_kind;
    int m_id;
    QString m_label;
    int m_bodyId;
    bool m_curved = false;
};
