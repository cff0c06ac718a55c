#include "KwMeshBodyTableModel.h"

#include "KwLangText.h"
#include "KwStyle.h"

KwMeshBodyTableModel::KwMeshBodyTableModel(CKwUIMeshModel* logic, QObject* parent)
    : QAbstractTableModel(parent), m_logic(logic)
{
    Reload();
}

void KwMeshBodyTableModel::Reload()
{
    beginResetModel();
    m_bodies = m_logic ? m_logic->GetBodies() : QList<CKwUIMeshModel::Body>();
    m_kindNames = CKwUIMeshModel::BodyMeshNames();
    endResetModel();
}

int KwMeshBodyTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_bodies.size());
}

int KwMeshBodyTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant KwMeshBodyTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_bodies.size() || !m_logic)
        return {};
    const CKwUIMeshModel::Body& body = m_bodies.at(index.row());
    const int kind = m_logic->GetBodyMesh(body.id);
    switch (role) {
    case Qt::DisplayRole:
        if (index.column() == ColumnBody)
            return body.name;
        return m_kindNames.value(kind - CKwUIMeshModel::FromGeometry);
    case Qt::EditRole:
        return index.column() == ColumnMeshAs ? QVariant(kind) : QVariant(body.name);
    case Qt::TextAlignmentRole: return QVariant::fromValue(KwStyle::TextAlignment);
    default: return {};
    }
}

bool KwMeshBodyTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.column() != ColumnMeshAs ||
        index.row() >= m_bodies.size() || !m_logic)
        return false;
    bool ok = false;
    const int kind = value.toInt(&ok);
    if (!ok || !m_logic->SetBodyMesh(m_bodies.at(index.row()).id, kind))
        return false;
    Q_EMIT dataChanged(index, index);
    return true;
}

Qt::ItemFlags KwMeshBodyTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags base = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == ColumnMeshAs ? base | Qt::ItemIsEditable : base;
}

QVariant KwMeshBodyTableModel::headerData(int section, Qt::Orientation orientation,
                                          int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    return section == ColumnBody ? KwPropText("MeshSettings", "ColumnBody", "Body")
                                 : KwPropText("MeshSettings", "ColumnMeshAs", "Mesh As");
}
