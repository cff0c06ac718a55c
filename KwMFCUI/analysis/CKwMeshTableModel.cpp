#include "CKwMeshTableModel.h"

#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwPhysicalProperty.h"
#include "KW_UOM.h"
#include "KwLangText.h"
#include "KwStyle.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <numeric>

namespace {

// The family texts by slot, and the slot of an element type (-1 for a type the table does not
// name, shown as its number).
int familySlot(int type)
{
    switch (type) {
    case CKwMeshModel::Beam2: return 0;
    case CKwMeshModel::Tri3: return 1;
    case CKwMeshModel::Quad4: return 2;
    case CKwMeshModel::Tet4: return 3;
    case CKwMeshModel::Hex8: return 4;
    default: return -1;
    }
}

// The idealization whose property an element of a type takes.
int idealizationOf(int type)
{
    switch (type) {
    case CKwMeshModel::Beam2: return CKwPhysicalProperty::Beam;
    case CKwMeshModel::Tri3:
    case CKwMeshModel::Quad4: return CKwPhysicalProperty::Shell;
    default: return CKwPhysicalProperty::Solid;
    }
}

int clampedCount(std::size_t n)
{
    return n > static_cast<std::size_t>(INT_MAX) ? INT_MAX : static_cast<int>(n);
}

} // namespace

CKwMeshTableModel::CKwMeshTableModel(const CKwMeshModel* mesh, const CKwFEModel* model,
                                     const KW_UOM* units, QObject* parent)
    : QAbstractTableModel(parent), m_mesh(mesh), m_model(model), m_units(units)
{
    RetranslateTexts();
    Reload();
}

double CKwMeshTableModel::shown(double internal) const
{
    return m_units ? m_units->GetDisplayValue(internal, KwUnitKind::Length) : internal;
}

void CKwMeshTableModel::RetranslateTexts()
{
    m_unit = m_units ? m_units->GetUnits(KwUnitKind::Length) : QStringLiteral("m");
    const QString id = KwPropText("MeshTable", "LabelId", "ID");
    m_head[Nodes][ColumnNodeId] = id;
    m_head[Nodes][ColumnX] = KwStyle::WithUnit(KwPropText("General", "LabelAxisX", "X"), m_unit);
    m_head[Nodes][ColumnY] = KwStyle::WithUnit(KwPropText("General", "LabelAxisY", "Y"), m_unit);
    m_head[Nodes][ColumnZ] = KwStyle::WithUnit(KwPropText("General", "LabelAxisZ", "Z"), m_unit);
    m_head[Elements][ColumnElementId] = id;
    m_head[Elements][ColumnFamily] = KwPropText("MeshTable", "LabelFamily", "Family");
    m_head[Elements][ColumnNodeList] = KwPropText("MeshTable", "LabelNodes", "Nodes");
    m_head[Elements][ColumnProperty] = KwPropText("MeshTable", "LabelProperty", "Property");
    m_family[0] = KwPropText("MeshTable", "FamilyBeam", "Beam");
    m_family[1] = KwPropText("MeshTable", "FamilyTriangle", "Triangle");
    m_family[2] = KwPropText("MeshTable", "FamilyQuadrilateral", "Quadrilateral");
    m_family[3] = KwPropText("MeshTable", "FamilyTetrahedron", "Tetrahedron");
    m_family[4] = KwPropText("MeshTable", "FamilyHexahedron", "Hexahedron");
    // The first property of an idealization is the one its elements take.
    for (QString& p : m_property)
        p.clear();
    bool found[3] = {false, false, false};
    if (m_model)
        for (const CKwPhysicalProperty* p : m_model->m_properties)
            if (p && p->m_idealization >= 0 && p->m_idealization < 3 && !found[p->m_idealization]) {
                found[p->m_idealization] = true;
                m_property[p->m_idealization] = p->GetName();
            }
    computeDecimals();
    if (m_rows > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, ColumnCount - 1));
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}

void CKwMeshTableModel::computeDecimals()
{
    for (int c = 0; c < 3; ++c) {
        // Length has no offset: the largest shown magnitude is the largest internal one scaled.
        const double largest = std::fabs(shown(m_largest[c]));
        const int digits = largest >= 1.0 ? static_cast<int>(std::floor(std::log10(largest))) + 1 : 1;
        m_decimals[c] = std::clamp(6 - digits, 0, 9);
    }
}

void CKwMeshTableModel::Reload()
{
    beginResetModel();
    m_order.clear();
    m_rowOf.clear();
    m_rows = 0;
    for (double& l : m_largest)
        l = 0;
    if (m_mesh) {
        if (m_contents == Nodes) {
            m_rows = clampedCount(m_mesh->Nodes().size());
            for (const CKwMeshModel::Node& n : m_mesh->Nodes()) {
                const double v[3] = {n.x, n.y, n.z};
                for (int c = 0; c < 3; ++c)
                    if (std::isfinite(v[c]))
                        m_largest[c] = std::max(m_largest[c], std::fabs(v[c]));
            }
        } else {
            m_rows = clampedCount(m_mesh->ElementCount());
        }
    }
    computeDecimals();
    endResetModel();
}

void CKwMeshTableModel::SetContents(Contents contents)
{
    if (contents == m_contents)
        return;
    m_contents = contents;
    Reload();
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}

int CKwMeshTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int CKwMeshTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

int CKwMeshTableModel::MeshIndexOfRow(int row) const
{
    if (row < 0 || row >= m_rows)
        return -1;
    return m_order.empty() ? row : m_order[static_cast<std::size_t>(row)];
}

int CKwMeshTableModel::Decimals(int column) const
{
    return column >= ColumnX && column <= ColumnZ ? m_decimals[column - ColumnX] : 0;
}

QString CKwMeshTableModel::familyText(int type) const
{
    const int slot = familySlot(type);
    return slot >= 0 ? m_family[slot] : QString::number(type);
}

const QString& CKwMeshTableModel::propertyText(int type) const
{
    return m_property[idealizationOf(type)];
}

QString CKwMeshTableModel::CellText(int row, int column) const
{
    const int i = MeshIndexOfRow(row);
    if (i < 0 || column < 0 || column >= ColumnCount)
        return QString();
    const auto index = static_cast<std::size_t>(i);
    if (m_contents == Nodes) {
        const CKwMeshModel::Node& n = m_mesh->Nodes()[index];
        if (column == ColumnNodeId)
            return QString::number(n.id);
        const double v = column == ColumnX ? n.x : column == ColumnY ? n.y : n.z;
        const double d = shown(v);
        return std::isfinite(d) ? QString::number(d, 'f', m_decimals[column - ColumnX]) : QString();
    }
    switch (column) {
    case ColumnElementId: return QString::number(m_mesh->ElementID(index));
    case ColumnFamily: return familyText(m_mesh->ElementType(index));
    case ColumnNodeList: {
        QString text;
        const auto& nodes = m_mesh->Nodes();
        for (int n : m_mesh->ElementNodes(index)) {
            if (!text.isEmpty())
                text += QLatin1Char(' ');
            text += QString::number(n >= 0 && static_cast<std::size_t>(n) < nodes.size()
                                        ? nodes[static_cast<std::size_t>(n)].id
                                        : n);
        }
        return text;
    }
    default: return propertyText(m_mesh->ElementType(index));
    }
}

QVariant CKwMeshTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole: return CellText(index.row(), index.column());
    case Qt::TextAlignmentRole: {
        const bool number = m_contents == Nodes || index.column() == ColumnElementId;
        return int(number ? KwStyle::NumberAlignment : KwStyle::TextAlignment);
    }
    default: return QVariant();
    }
}

QVariant CKwMeshTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return role == Qt::DisplayRole ? QVariant(section + 1) : QVariant();
    if (section < 0 || section >= ColumnCount)
        return QVariant();
    if (role == Qt::DisplayRole)
        return m_head[m_contents][section];
    if (role == Qt::TextAlignmentRole) {
        const bool number = m_contents == Nodes || section == ColumnElementId;
        return int(number ? KwStyle::NumberAlignment : KwStyle::TextAlignment);
    }
    return QVariant();
}

void CKwMeshTableModel::sort(int column, Qt::SortOrder order)
{
    if (!m_mesh || column < 0 || column >= ColumnCount || m_rows == 0)
        return;
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    std::vector<int> idx(static_cast<std::size_t>(m_rows));
    std::iota(idx.begin(), idx.end(), 0);
    const bool desc = order == Qt::DescendingOrder;
    // Each comparison says whether a sorts strictly before b by the column alone; ties keep
    // mesh order either way.
    auto sortBy = [&](auto less) {
        std::stable_sort(idx.begin(), idx.end(), [&](int a, int b) {
            return desc ? less(b, a) : less(a, b);
        });
    };
    const auto& nodes = m_mesh->Nodes();
    if (m_contents == Nodes) {
        if (column == ColumnNodeId) {
            sortBy([&](int a, int b) { return nodes[std::size_t(a)].id < nodes[std::size_t(b)].id; });
        } else {
            auto coord = [&](int i) {
                const CKwMeshModel::Node& n = nodes[std::size_t(i)];
                return column == ColumnX ? n.x : column == ColumnY ? n.y : n.z;
            };
            // A value that is no number sorts last in both orders: `less` is called with its
            // arguments swapped for a descending sort.
            sortBy([&](int a, int b) {
                const double x = coord(a), y = coord(b);
                if (std::isnan(x) || std::isnan(y))
                    return desc ? std::isnan(x) && !std::isnan(y) : !std::isnan(x) && std::isnan(y);
                return x < y;
            });
        }
    } else if (column == ColumnElementId) {
        sortBy([&](int a, int b) { return m_mesh->ElementID(std::size_t(a)) < m_mesh->ElementID(std::size_t(b)); });
    } else if (column == ColumnFamily) {
        sortBy([&](int a, int b) {
            return familyText(m_mesh->ElementType(std::size_t(a))) <
                   familyText(m_mesh->ElementType(std::size_t(b)));
        });
    } else if (column == ColumnNodeList) {
        auto nodeId = [&](int n) {
            return n >= 0 && std::size_t(n) < nodes.size() ? nodes[std::size_t(n)].id : n;
        };
        sortBy([&](int a, int b) {
            const auto x = m_mesh->ElementNodes(std::size_t(a));
            const auto y = m_mesh->ElementNodes(std::size_t(b));
            return std::lexicographical_compare(
                x.begin(), x.end(), y.begin(), y.end(),
                [&](int p, int q) { return nodeId(p) < nodeId(q); });
        });
    } else {
        sortBy([&](int a, int b) {
            return propertyText(m_mesh->ElementType(std::size_t(a))) <
                   propertyText(m_mesh->ElementType(std::size_t(b)));
        });
    }
    const std::vector<int> oldOrder = m_order;
    m_order = std::move(idx);
    m_rowOf.assign(m_order.size(), 0);
    for (std::size_t r = 0; r < m_order.size(); ++r)
        m_rowOf[std::size_t(m_order[r])] = static_cast<int>(r);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& i : before) {
        const int mesh = oldOrder.empty() ? i.row() : oldOrder[std::size_t(i.row())];
        after << index(m_rowOf[std::size_t(mesh)], i.column());
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

int CKwMeshTableModel::RowOfId(int id) const
{
    if (!m_mesh)
        return -1;
    const int i = m_contents == Nodes ? m_mesh->NodeIndex(id) : m_mesh->ElementIndex(id);
    if (i < 0 || i >= m_rows)
        return -1;
    return m_rowOf.empty() ? i : m_rowOf[std::size_t(i)];
}

QString CKwMeshTableModel::CopyText(std::vector<int> rows) const
{
    if (rows.empty()) {
        rows.resize(static_cast<std::size_t>(m_rows));
        std::iota(rows.begin(), rows.end(), 0);
    } else {
        std::sort(rows.begin(), rows.end());
        rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    }
    QString out;
    out.reserve(static_cast<qsizetype>(rows.size()) * 48 + 64);
    for (int c = 0; c < ColumnCount; ++c)
        out += m_head[m_contents][c] + (c + 1 < ColumnCount ? QLatin1Char('\t') : QLatin1Char('\n'));
    for (int r : rows) {
        if (r < 0 || r >= m_rows)
            continue;
        for (int c = 0; c < ColumnCount; ++c)
            out += CellText(r, c) + (c + 1 < ColumnCount ? QLatin1Char('\t') : QLatin1Char('\n'));
    }
    return out;
}
