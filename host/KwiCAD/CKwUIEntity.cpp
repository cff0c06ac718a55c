#include "CKwUIEntity.h"

CKwUIEntity::CKwUIEntity(Kind kind, int id, const QString& label, int bodyId)
    : m_kind(kind), m_id(id), m_label(label), m_bodyId(bodyId)
{
}

QString CKwUIEntity::KindName(Kind kind)
{
    switch (kind) {
    case Vertex: return QStringLiteral("Vertex");
    case Edge: return QStringLiteral("Edge");
    case Face: return QStringLiteral("Face");
    case Body: return QStringLiteral("Body");
    case Node: return QStringLiteral("Node");
    case Element: return QStringLiteral("Element");
    case Point: return QStringLiteral("Point");
    }
    return QString();
}

QString CKwUIEntity::GetDisplayText(bool showIds) const
{
    const QString base = m_label.isEmpty() ? KindName(m_kind) : m_label;
    return showIds ? QStringLiteral("%1 <%2>").arg(base).arg(m_id) : base;
}

unsigned CKwUIEntity::FilterBitOf(Kind kind)
{
    switch (kind) {
    case Vertex: return 0x2;
    case Point: return 0x4;
    case Edge: return 0x10;
    case Face: return 0x40;
    case Body: return 0x1000;
    case Node: return 0x400;
    case Element: return 0x200;
    }
    return 0;
}
