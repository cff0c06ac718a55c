#include "CKwMeshQualityResultsModel.h"

#include "CKwMeshModel.h"
#include "KW_UOM.h"
#include "KwLangText.h"
#include "KwNumbers.h"
#include "KwStyle.h"

#include <QBrush>
#include <QColor>
#include <algorithm>
#include <charconv>
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

constexpr double kRadToDeg = 180.0 / 3.14159265358979323846;

// The shortest text that reads back as `v`: the full value behind a rounded cell.
QString fullValueText(double v)
{
    char buf[CKwMeshQualityResultsModel::kValueBuffer];
    const auto r = std::to_chars(buf, buf + sizeof buf, v);
    return QString::fromLatin1(buf, static_cast<int>(r.ptr - buf));
}

} // namespace

char* CKwMeshQualityResultsModel::WriteValue(char* p, char* end, double v, bool exponent)
{
    // The same digits as QString::asprintf (the exact binary value rounded), faster: below a
    // million, the thousandths are v * 1000 rounded. That product carries one rounding of at
    // most 1.2e-7, so unless its fraction lies within 1e-6 of one half it rounds the same way
    // as the exact binary value.
    if (v == 0)
        v = 0.0; // no sign on a zero, as QString::asprintf writes it
    const double a = std::fabs(v);
    if (!exponent && a < 1.0e6 && end - p >= 12) {
        const double x = a * 1000.0;
        const double whole = std::floor(x);
        const double frac = x - whole;
        if (std::fabs(frac - 0.5) > 1.0e-6) {
            const auto n = static_cast<std::uint32_t>(whole) + (frac > 0.5 ? 1u : 0u);
            if (std::signbit(v))
                *p++ = '-';
            p = std::to_chars(p, end, n / 1000).ptr;
            const std::uint32_t r = n % 1000;
            *p++ = '.';
            *p++ = static_cast<char>('0' + r / 100);
            *p++ = static_cast<char>('0' + r / 10 % 10);
            *p++ = static_cast<char>('0' + r % 10);
            return p;
        }
    }
    // Near a half, for large numbers and in the exponent form, asprintf itself (ties away
    // from zero, unlike to_chars).
    const QByteArray text = QString::asprintf(exponent ? "%0.3E" : "%0.3f", v).toLatin1();
    const auto n = std::min<std::ptrdiff_t>(text.size(), end - p);
    return std::copy(text.constData(), text.constData() + n, p);
}

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
    m_typeText[Hexahedron] = KwPropText("MeshQuality", "ElemHex", "Hexahedral");
    m_typeText[Wedge] = KwPropText("MeshQuality", "ElemWedge", "Wedge");
    m_typeText[Pyramid] = KwPropText("MeshQuality", "ElemPyramid", "Pyramid");
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

double CKwMeshQualityResultsModel::ShownValue(const CKwUIMeshQualityResults::FailedElement& rec,
                                              int measure) const
{
    const double v = rec.value[measure];
    if (!IsAngle(measure) || !std::isfinite(v))
        return v;
    return m_units ? m_units->GetDisplayValue(v, KwUnitKind::Angle) : v * kRadToDeg;
}

bool CKwMeshQualityResultsModel::UsesExponent(const CKwUIMeshQualityResults::FailedElement& rec,
                                              int measure, double shown)
{
    // A sliver triangle's aspect ratio grows without bound; past four digits before the
    // point the exponent form stays readable in the column.
    return rec.family == Triangle && measure == AspectRatio && shown >= kTriangleExponentFrom;
}

bool CKwMeshQualityResultsModel::CellFails(int row, int column) const
{
    if (row < 0 || row >= m_rows || column < ColumnAspectRatio || column >= ColumnCount ||
        !m_mesh)
        return false;
    const auto& rec = RecordAt(row);
    const int m = measureOf(column);
    const double v = rec.value[m];
    if (std::isnan(v)) // an empty cell
        return false;
    // A collapsed element's cell says so in words; it failed the check because it could not
    // be measured.
    if (std::isinf(v))
        return CKwUIMeshQualityResults::FailsShownValue(*m_mesh, rec.family, m, v);
    // The cell is judged by the number it shows, so a cell that reads like its limit is never
    // red; the measured value itself may still lie beyond (see the tool tip).
    return CKwUIMeshQualityResults::FailsShownValue(*m_mesh, rec.family, m,
                                                    KwAtof(CellText(row, column)));
}

QString CKwMeshQualityResultsModel::CellToolTip(int row, int column) const
{
    if (row < 0 || row >= m_rows || column < ColumnAspectRatio || column >= ColumnCount ||
        !m_mesh)
        return QString();
    const auto& rec = RecordAt(row);
    const int m = measureOf(column);
    const double shown = ShownValue(rec, m);
    if (!std::isfinite(shown) ||
        !CKwUIMeshQualityResults::FailsShownValue(*m_mesh, rec.family, m, shown) ||
        CellFails(row, column))
        return QString();
    // Listed for this value, but its rounded text does not pass the limit: say why.
    const double limit = CKwUIMeshQualityResults::LimitValue(
        m_mesh->GetQualityLimit(CKwUIMeshQualityResults::CheckFor(rec.family, m)));
    const QString text =
        FailsBelow(m)
            ? KwPropText("MeshQuality", "TipRoundedBelowLimit",
                         "Measured %1, below the limit %2: the cell shows it rounded to %3.")
            : KwPropText("MeshQuality", "TipRoundedAboveLimit",
                         "Measured %1, above the limit %2: the cell shows it rounded to %3.");
    return text.arg(fullValueText(shown), fullValueText(limit), CellText(row, column));
}

QString CKwMeshQualityResultsModel::CellText(int row, int column) const
{
    if (row < 0 || row >= m_rows || column < 0 || column >= ColumnCount)
        return QString();
    const auto& rec = RecordAt(row);
    if (column == ColumnId)
        return QString::number(rec.id);
    if (column == ColumnType)
        return rec.family < FamilyCount ? m_typeText[rec.family] : QString();
    const int m = measureOf(column);
    const double v = ShownValue(rec, m);
    if (std::isnan(v))
        return QString();
    if (std::isinf(v))
        return m_degenerate;
    char buf[CKwMeshQualityResultsModel::kValueBuffer];
    const char* end = WriteValue(buf, buf + sizeof buf, v, UsesExponent(rec, m, v));
    return QString::fromLatin1(buf, static_cast<int>(end - buf));
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
    case Qt::ToolTipRole: {
        const QString tip = CellToolTip(index.row(), index.column());
        return tip.isEmpty() ? QVariant() : QVariant(tip);
    }
    case Qt::TextAlignmentRole:
        // The element type is a word; the ID and the measures are numbers.
        return index.column() == ColumnType ? QVariant(int(KwStyle::TextAlignment))
                                            : QVariant(int(KwStyle::NumberAlignment));
    case RawValueRole: {
        const auto& rec = RecordAt(index.row());
        if (index.column() == ColumnId)
            return rec.id;
        if (index.column() == ColumnType)
            return int(rec.family);
        return rec.value[measureOf(index.column())];
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
    // One 64-bit key per record: the value made orderable as an unsigned integer, and the
    // record (ties keep their order). Cells that do not apply stay last either way, collapsed
    // elements count as the largest values.
    struct Key
    {
        std::uint64_t value;
        std::uint32_t record;
        bool operator<(const Key& o) const
        {
            return value != o.value ? value < o.value : record < o.record;
        }
    };
    std::vector<Key> keys(recs.size());
    constexpr std::uint64_t kSign = 0x8000000000000000ull;
    constexpr std::uint64_t kLast = ~0ull;
    for (std::size_t i = 0; i < recs.size(); ++i) {
        std::uint64_t k;
        if (column == ColumnId || column == ColumnType) {
            const int v = column == ColumnId ? recs[i].id : recs[i].family;
            k = static_cast<std::uint64_t>(static_cast<std::int64_t>(v)) ^ kSign;
            if (desc)
                k = ~k;
        } else {
            const double v = recs[i].value[measureOf(column)];
            if (std::isnan(v)) {
                k = kLast;
            } else {
                std::uint64_t bits;
                std::memcpy(&bits, &v, sizeof bits);
                k = (bits & kSign) ? ~bits : (bits | kSign);
                if (desc)
                    k = ~k;
                k = std::min(k, kLast - 1);
            }
        }
        keys[i] = {k, static_cast<std::uint32_t>(i)};
    }
    std::sort(keys.begin(), keys.end());
    const std::vector<int> oldOrder = m_order;
    m_order.resize(keys.size());
    std::vector<int> newRowOf(keys.size());
    for (std::size_t r = 0; r < keys.size(); ++r) {
        const int rec = static_cast<int>(keys[r].record);
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
        if (!std::is_sorted(rows.begin(), rows.end()))
            std::sort(rows.begin(), rows.end());
        rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    }
    QString out;
    // About 50 characters a row; one allocation up front instead of doubling through a
    // million rows.
    out.reserve(static_cast<qsizetype>(rows.size()) * 56 + 128);
    for (int c = 0; c < ColumnCount; ++c)
        out += m_caption[c] + (c + 1 < ColumnCount ? QLatin1Char('\t') : QLatin1Char('\n'));
    // Each row is composed in UTF-16 in one line buffer and appended once; the numbers are
    // written by WriteValue, as CellText writes them.
    qsizetype longestText = m_degenerate.size();
    for (const QString& t : m_typeText)
        longestText = std::max(longestText, t.size());
    std::vector<char16_t> line(static_cast<std::size_t>(
        16 + (longestText + 1) * 6 + MeasureCount * static_cast<qsizetype>(kValueBuffer)));
    char num[kValueBuffer];
    char* const numEnd = num + sizeof num;
    for (int r : rows) {
        if (r < 0 || r >= m_rows)
            continue;
        const auto& rec = RecordAt(r);
        char16_t* q = line.data();
        auto put = [&q](const char* b, const char* e) {
            while (b != e)
                *q++ = static_cast<unsigned char>(*b++);
        };
        auto putText = [&q](const QString& t) {
            q = std::copy(t.utf16(), t.utf16() + t.size(), q);
        };
        put(num, std::to_chars(num, numEnd, rec.id).ptr);
        *q++ = u'\t';
        if (rec.family < FamilyCount)
            putText(m_typeText[rec.family]);
        for (int m = 0; m < MeasureCount; ++m) {
            *q++ = u'\t';
            const double v = ShownValue(rec, m);
            if (std::isnan(v))
                continue;
            if (std::isinf(v))
                putText(m_degenerate);
            else
                put(num, WriteValue(num, numEnd, v, UsesExponent(rec, m, v)));
        }
        *q++ = u'\n';
        out.append(reinterpret_cast<const QChar*>(line.data()), q - line.data());
    }
    return out;
}
