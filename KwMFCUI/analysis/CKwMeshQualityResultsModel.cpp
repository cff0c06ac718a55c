#include "CKwMeshQualityResultsModel.h"

#include "CKwMeshModel.h"
#include "KW_UOM.h"
#include "KwLangText.h"

#include <QBrush>
#include <QColor>
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>

using namespace KwMeshQuality;

namespace {

// Columns 2..6 hold the measures in this order.
constexpr int measureOf(int column) { return column - 2; }

struct CaptionRow
{
    const char* key;
    const char* english;
};
constexpr CaptionRow kCaptions[CKwMeshQualityResultsModel::ColumnCount] = {
    {"LabelElemID", "Elem. ID"},     {"LabelElementType", "Elem. Type"},
    {"LabelAspectRatio", "Aspect Ratio"}, {"LabelSkew", "Skew"},
    {"LabelWarping", "Warping"},     {"LabelTaper", "Taper"},
    {"LabelJacobian", "Jacobian"},
};

} // namespace

CKwMeshQualityResultsModel::CKwMeshQualityResultsModel(const CKwUIMeshQualityResults* results,
                                                       const CKwMeshModel* mesh,
                                                       const KW_UOM* units, QObject* parent)
    : QAbstractTableModel(parent), m_results(results), m_mesh(mesh), m_units(units)
{
    RetranslateTexts();
    m_rows = m_results ? static_cast<int>(m_results->GetFailedElements().size()) : 0;
}

void CKwMeshQualityResultsModel::RetranslateTexts()
{
    for (int c = 0; c < ColumnCount; ++c)
        m_caption[c] = KwPropText("MeshQuality", kCaptions[c].key, kCaptions[c].english);
    m_typeText[Triangle] = KwPropText("MeshQuality", "ElemTri", "Triangle");
    m_typeText[Quadrilateral] = KwPropText("MeshQuality", "ElemQuad", "Quadrilateral");
    m_typeText[Tetrahedron] = KwPropText("MeshQuality", "ElemTet", "Tetrahedral");
    m_degenerate = KwPropText("MeshQuality", "LabelDegenerate", "Degenerate");
    if (m_rows > 0)
        Q_EMIT dataChanged(index(0, 0), index(m_rows - 1, ColumnCount - 1));
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
}

void CKwMeshQualityResultsModel::Reload()
{
    beginResetModel();
    m_order.clear();
    m_rows = m_results ? static_cast<int>(m_results->GetFailedElements().size()) : 0;
    endResetModel();
}

int CKwMeshQualityResultsModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows;
}

int CKwMeshQualityResultsModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

const CKwUIMeshQualityResults::FailedElement& CKwMeshQualityResultsModel::RecordAt(int row) const
{
    const std::size_t r = m_order.empty() ? static_cast<std::size_t>(row)
                                          : static_cast<std::size_t>(m_order[static_cast<std::size_t>(row)]);
    return m_results->GetFailedElements()[r];
}

bool CKwMeshQualityResultsModel::CellFails(int row, int column) const
{
    if (row < 0 || row >= m_rows || column < ColumnAspectRatio || column >= ColumnCount ||
        !m_mesh)
        return false;
    const auto& rec = RecordAt(row);
    return CKwUIMeshQualityResults::FailsCheck(*m_mesh, m_units, rec.family, measureOf(column),
                                               rec.value[measureOf(column)]);
}

QString CKwMeshQualityResultsModel::CellText(int row, int column) const
{
    if (row < 0 || row >= m_rows || column < 0 || column >= ColumnCount)
        return QString();
    const auto& rec = RecordAt(row);
    if (column == ColumnId)
        return QString::number(rec.id);
    if (column == ColumnType)
        return rec.family < 4 ? m_typeText[rec.family] : QString();
    const int m = measureOf(column);
    double v = rec.value[m];
    if (std::isnan(v))
        return QString();
    if (std::isinf(v))
        return m_degenerate;
    if (IsAngle(m) && m_units)
        v = m_units->GetDisplayValue(v, KwUnitKind::Angle);
    else if (IsAngle(m))
        v = v * 180.0 / 3.14159265358979323846;
    // A sliver triangle's aspect ratio grows without bound; past four digits before the
    // point the exponent form stays readable in the column.
    if (rec.family == Triangle && m == AspectRatio && v >= kTriangleExponentFrom)
        return QString::asprintf("%0.3E", v);
    return QString::asprintf("%0.3f", v);
}

QVariant CKwMeshQualityResultsModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_rows || index.column() >= ColumnCount)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return CellText(index.row(), index.column());
    case Qt::BackgroundRole:
        // COLORREF 0x0000FF: pure red. The text colour stays the view's.
        if (CellFails(index.row(), index.column()))
            return QBrush(QColor(0xFF, 0x00, 0x00));
        return QVariant();
    case Qt::TextAlignmentRole:
        return index.column() >= ColumnAspectRatio
                   ? QVariant(int(Qt::AlignRight | Qt::AlignVCenter))
                   : QVariant(int(Qt::AlignLeft | Qt::AlignVCenter));
    case RawValueRole: {
        const auto& rec = RecordAt(index.row());
        if (index.column() == ColumnId)
            return rec.id;
        if (index.column() == ColumnType)
            return int(rec.family);
        return double(rec.value[measureOf(index.column())]);
    }
    default:
        return QVariant();
    }
}

QVariant CKwMeshQualityResultsModel::headerData(int section, Qt::Orientation orientation,
                                                int role) const
{
    if (role != Qt::DisplayRole)
        return QVariant();
    if (orientation == Qt::Horizontal)
        return section >= 0 && section < ColumnCount ? QVariant(m_caption[section]) : QVariant();
    return section + 1;
}

void CKwMeshQualityResultsModel::sort(int column, Qt::SortOrder order)
{
    if (column < 0 || column >= ColumnCount || m_rows == 0)
        return;
    Q_EMIT layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    const auto& recs = m_results->GetFailedElements();
    const bool desc = order == Qt::DescendingOrder;
    // One 64-bit key per record: the value made orderable as an unsigned integer above, the
    // record below (ties keep their order). Cells that do not apply stay last either way,
    // collapsed elements count as the largest values.
    std::vector<std::uint64_t> keys(recs.size());
    for (std::size_t i = 0; i < recs.size(); ++i) {
        std::uint32_t k;
        if (column == ColumnId || column == ColumnType) {
            const int v = column == ColumnId ? recs[i].id : recs[i].family;
            k = static_cast<std::uint32_t>(v) ^ 0x80000000u;
            if (desc)
                k = ~k;
        } else {
            const float v = recs[i].value[measureOf(column)];
            if (std::isnan(v)) {
                k = 0xFFFFFFFFu;
            } else {
                std::uint32_t bits;
                std::memcpy(&bits, &v, sizeof bits);
                k = (bits & 0x80000000u) ? ~bits : (bits | 0x80000000u);
                if (desc)
                    k = ~k;
                k = std::min(k, 0xFFFFFFFEu);
            }
        }
        keys[i] = (static_cast<std::uint64_t>(k) << 32) | static_cast<std::uint32_t>(i);
    }
    std::sort(keys.begin(), keys.end());
    const std::vector<int> oldOrder = m_order;
    m_order.resize(keys.size());
    std::vector<int> newRowOf(keys.size());
    for (std::size_t r = 0; r < keys.size(); ++r) {
        const int rec = static_cast<int>(keys[r] & 0xFFFFFFFFu);
        m_order[r] = rec;
        newRowOf[static_cast<std::size_t>(rec)] = static_cast<int>(r);
    }
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& i : before) {
        const int rec = oldOrder.empty() ? i.row() : oldOrder[static_cast<std::size_t>(i.row())];
        after << index(newRowOf[static_cast<std::size_t>(rec)], i.column());
    }
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, QAbstractItemModel::VerticalSortHint);
}

QString CKwMeshQualityResultsModel::CopyText(std::vector<int> rows) const
{
    if (rows.empty()) {
        rows.resize(static_cast<std::size_t>(m_rows));
        for (int r = 0; r < m_rows; ++r)
            rows[static_cast<std::size_t>(r)] = r;
    } else {
        std::sort(rows.begin(), rows.end());
        rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    }
    QString out;
    for (int c = 0; c < ColumnCount; ++c)
        out += m_caption[c] + (c + 1 < ColumnCount ? QLatin1Char('\t') : QLatin1Char('\n'));
    for (int r : rows) {
        if (r < 0 || r >= m_rows)
            continue;
        for (int c = 0; c < ColumnCount; ++c)
            out += CellText(r, c) + (c + 1 < ColumnCount ? QLatin1Char('\t') : QLatin1Char('\n'));
    }
    return out;
}
