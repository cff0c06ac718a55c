#include "KwPointTableModel.h"

#include <QTimer>
#include <algorithm>
#include <cmath>

KwPointTableModel::KwPointTableModel(int columns, QObject* parent)
    : QAbstractTableModel(parent), m_columns(columns > 0 ? columns : 1)
{
    for (int c = 0; c < m_columns; ++c)
        m_headers << QString();
}

int KwPointTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : rows();
}

int KwPointTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_columns;
}

QVariant KwPointTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= rows() || index.column() >= m_columns)
        return {};
    if (role != Qt::DisplayRole && role != Qt::EditRole)
        return {};
    const int r = index.row();
    if (r >= m_pendingDone && r < m_pendingEnd) {
        // A painted row of numbers not yet turned into text: formatted for the paint only.
        if (index.column() > 1)
            return QString();
        const double v =
            m_pending[std::size_t(r - m_pendingFirst) * 2 + std::size_t(index.column())];
        char buf[48];
        const int n = std::isnan(v) ? 0 : m_format(v, buf);
        return QString::fromLatin1(buf, n);
    }
    // Other rows are text already: read without asking for the pending ones.
    const Cell& c = m_cells[std::size_t(r) * std::size_t(m_columns) + std::size_t(index.column())];
    return QString::fromUtf8(m_text.data() + c.offset, qsizetype(c.length));
}

bool KwPointTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::EditRole || !index.isValid() || index.row() >= rows() ||
        index.column() >= m_columns)
        return false;
    setCellText(index.row(), index.column(), value.toString());
    return true;
}

Qt::ItemFlags KwPointTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsEditable;
}

QVariant KwPointTableModel::headerData(int section, Qt::Orientation o, int role) const
{
    if (o == Qt::Horizontal && section >= 0 && section < m_columns &&
        (role == Qt::DisplayRole || role == Qt::EditRole))
        return m_headers[section];
    if (o == Qt::Horizontal && role == Qt::TextAlignmentRole)
        return QVariant::fromValue(Qt::AlignLeft | Qt::AlignVCenter);
    return QAbstractTableModel::headerData(section, o, role);
}

bool KwPointTableModel::setHeaderData(int section, Qt::Orientation o, const QVariant& value,
                                      int role)
{
    if (o != Qt::Horizontal || section < 0 || section >= m_columns ||
        (role != Qt::DisplayRole && role != Qt::EditRole))
        return false;
    m_headers[section] = value.toString();
    Q_EMIT headerDataChanged(o, section, section);
    return true;
}

std::string_view KwPointTableModel::cellView(int row, int col) const
{
    ensureText();
    if (row < 0 || row >= rows() || col < 0 || col >= m_columns)
        return {};
    const Cell& c = m_cells[std::size_t(row) * std::size_t(m_columns) + std::size_t(col)];
    return std::string_view(m_text.data() + c.offset, c.length);
}

QString KwPointTableModel::cellText(int row, int col) const
{
    const std::string_view v = cellView(row, col);
    return QString::fromUtf8(v.data(), qsizetype(v.size()));
}

KwPointTableModel::Cell KwPointTableModel::store(std::string_view utf8)
{
    if (utf8.empty())
        return {0, 0};
    // Offsets are 32-bit: a buffer close to that is compacted first; text that still does not
    // fit is cut to what does (four gigabytes of cell text is no table a person edits).
    if (m_text.size() + utf8.size() > 0xFFFFFFF0u) {
        compactIfWasteful();
        if (m_text.size() + utf8.size() > 0xFFFFFFF0u)
            utf8 = utf8.substr(0, 0xFFFFFFF0u - std::min<std::size_t>(m_text.size(), 0xFFFFFFF0u));
    }
    const Cell c{std::uint32_t(m_text.size()), std::uint32_t(utf8.size())};
    m_text.append(utf8);
    return c;
}

void KwPointTableModel::setCellText(int row, int col, std::string_view utf8)
{
    ensureText();
    if (row < 0 || row >= rows() || col < 0 || col >= m_columns)
        return;
    Cell& c = m_cells[std::size_t(row) * std::size_t(m_columns) + std::size_t(col)];
    if (utf8.size() <= c.length) {
        // Fits where the old text was: overwrite in place, the tail becomes waste.
        if (!utf8.empty())
            std::copy(utf8.begin(), utf8.end(), m_text.begin() + c.offset);
        m_garbage += c.length - utf8.size();
        c.length = std::uint32_t(utf8.size());
        if (utf8.empty())
            c.offset = 0;
    } else {
        release(c);
        c = store(utf8);
    }
    if (!m_bulk) {
        const QModelIndex i = index(row, col);
        Q_EMIT dataChanged(i, i, {Qt::DisplayRole, Qt::EditRole});
        compactIfWasteful();
    }
}

void KwPointTableModel::setCellText(int row, int col, const QString& text)
{
    const QByteArray u = text.toUtf8();
    setCellText(row, col, std::string_view(u.constData(), std::size_t(u.size())));
}

void KwPointTableModel::insertRowTexts(int index, std::string_view c0, std::string_view c1)
{
    ensureText();
    index = std::clamp(index, 0, rows());
    if (!m_bulk)
        beginInsertRows({}, index, index);
    Cell row[8] = {};
    const int n = std::min(m_columns, 8);
    row[0] = store(c0);
    if (n > 1)
        row[1] = store(c1);
    const std::size_t cols = std::size_t(m_columns);
    const std::size_t end = m_cells.size();
    if (m_columns <= 8 && std::size_t(index) * cols + cols >= end) {
        // At the end or just before the last row (the edit row, where typing and pasting
        // add): the vector grows in place and at most one row moves, with no range insert.
        m_cells.resize(end + cols);
        if (std::size_t(index) * cols < end)
            std::copy_n(m_cells.begin() + std::ptrdiff_t(end - cols), cols,
                        m_cells.begin() + std::ptrdiff_t(end));
        std::copy_n(row, cols, m_cells.begin() + std::ptrdiff_t(index) * m_columns);
    } else if (m_columns <= 8) {
        const auto at = m_cells.begin() + std::ptrdiff_t(index) * m_columns;
        m_cells.insert(at, row, row + m_columns);
    } else {
        std::vector<Cell> cells(std::size_t(m_columns), Cell{0, 0});
        cells[0] = row[0];
        cells[1] = row[1];
        m_cells.insert(m_cells.begin() + std::ptrdiff_t(index) * m_columns, cells.begin(),
                       cells.end());
    }
    if (!m_bulk)
        endInsertRows();
}

void KwPointTableModel::removeRowAt(int index)
{
    ensureText();
    if (index < 0 || index >= rows())
        return;
    if (!m_bulk)
        beginRemoveRows({}, index, index);
    const auto at = m_cells.begin() + std::ptrdiff_t(index) * m_columns;
    for (auto it = at; it != at + m_columns; ++it)
        release(*it);
    m_cells.erase(at, at + m_columns);
    if (!m_bulk) {
        endRemoveRows();
        compactIfWasteful();
    }
}

void KwPointTableModel::removeRowsAt(const std::vector<int>& ascending)
{
    if (ascending.empty())
        return;
    ensureText();
    if (ascending.size() == 1) {
        removeRowAt(ascending.front());
        return;
    }
    beginBulk();
    // One pass that slides the kept rows down: linear however many rows go.
    std::size_t out = 0;
    std::size_t next = 0;
    const std::size_t n = std::size_t(rows());
    const std::size_t cols = std::size_t(m_columns);
    for (std::size_t r = 0; r < n; ++r) {
        while (next < ascending.size() && ascending[next] < int(r))
            ++next;
        if (next < ascending.size() && ascending[next] == int(r)) {
            for (std::size_t c = 0; c < cols; ++c)
                release(m_cells[r * cols + c]);
            continue;
        }
        if (out != r)
            std::copy_n(m_cells.begin() + std::ptrdiff_t(r * cols), cols,
                        m_cells.begin() + std::ptrdiff_t(out * cols));
        ++out;
    }
    m_cells.resize(out * cols);
    endBulk();
}

void KwPointTableModel::truncate(int n)
{
    ensureText();
    if (n < 0 || n >= rows())
        return;
    if (!m_bulk)
        beginRemoveRows({}, n, rows() - 1);
    for (std::size_t i = std::size_t(n) * std::size_t(m_columns); i < m_cells.size(); ++i)
        release(m_cells[i]);
    m_cells.resize(std::size_t(n) * std::size_t(m_columns));
    if (!m_bulk) {
        endRemoveRows();
        compactIfWasteful();
    }
}

void KwPointTableModel::clear()
{
    beginBulk();
    m_cells.clear();
    m_text.clear();
    m_garbage = 0;
    Numbers().swap(m_pending);
    m_pendingFirst = m_pendingDone = m_pendingEnd = 0;
    endBulk();
}

void KwPointTableModel::reserve(std::size_t rowsWanted, std::size_t textBytes)
{
    if (rowsWanted * std::size_t(m_columns) > m_cells.capacity())
        m_cells.reserve(rowsWanted * std::size_t(m_columns));
    if (textBytes > m_text.capacity())
        m_text.reserve(textBytes);
}

void KwPointTableModel::beginBulk()
{
    if (m_bulk++ == 0)
        beginResetModel();
}

void KwPointTableModel::endBulk()
{
    if (m_bulk <= 0)
        return;
    if (--m_bulk == 0) {
        compactIfWasteful();
        endResetModel();
    }
}

void KwPointTableModel::insertNumberRows(int index, Numbers values, NumberFormat format)
{
    const int n = int(std::min<std::size_t>(values.size() / 2, std::size_t(0x7fffffff - rows())));
    if (n <= 0 || !format)
        return;
    ensureText();
    index = std::clamp(index, 0, rows());
    if (!m_bulk)
        beginInsertRows({}, index, index + n - 1);
    // Empty placeholders for the rows; their text comes later.
    m_cells.insert(m_cells.begin() + std::ptrdiff_t(index) * m_columns,
                   std::size_t(n) * std::size_t(m_columns), Cell{0, 0});
    // Room for the text the numbers will take ("%.10g" of table values is short).
    m_text.reserve(m_text.size() + std::size_t(n) * 20);
    values.resize(std::size_t(n) * 2);
    m_pending = std::move(values);
    m_format = format;
    m_pendingFirst = m_pendingDone = index;
    m_pendingEnd = index + n;
    if (!m_bulk)
        endInsertRows();
    formatPendingLater();
}

void KwPointTableModel::formatPending(int count)
{
    const int end = m_pendingEnd - m_pendingDone > count ? m_pendingDone + count : m_pendingEnd;
    char buf[48];
    const std::size_t cols = std::size_t(m_columns);
    for (int r = m_pendingDone; r < end; ++r) {
        const double* v = &m_pending[std::size_t(r - m_pendingFirst) * 2];
        Cell* cells = &m_cells[std::size_t(r) * cols];
        for (int c = 0; c < 2 && c < m_columns; ++c) {
            const int len = std::isnan(v[c]) ? 0 : m_format(v[c], buf);
            cells[c] = store(std::string_view(buf, std::size_t(len)));
        }
    }
    m_pendingDone = end;
    if (m_pendingDone >= m_pendingEnd) {
        Numbers().swap(m_pending);
        m_pendingFirst = m_pendingDone = m_pendingEnd = 0;
    }
}

void KwPointTableModel::formatPendingLater()
{
    if (m_sliceQueued || m_pendingEnd <= m_pendingDone)
        return;
    m_sliceQueued = true;
    // A slice of a few milliseconds at a time, so the user can type and scroll meanwhile.
    QTimer::singleShot(0, this, [this] {
        m_sliceQueued = false;
        formatPending(20000);
        formatPendingLater();
    });
}

void KwPointTableModel::compactIfWasteful()
{
    // Edits and deletes leave dead text behind; once it outweighs the live text (and is worth
    // the copy), the live text is copied into a fresh buffer in row order.
    if (m_garbage < (1u << 20) || m_garbage * 2 < m_text.size())
        return;
    Text fresh;
    fresh.reserve(m_text.size() - std::min(m_garbage, m_text.size()));
    for (Cell& c : m_cells) {
        if (!c.length) {
            c.offset = 0;
            continue;
        }
        const std::uint32_t at = std::uint32_t(fresh.size());
        fresh.append(m_text, c.offset, c.length);
        c.offset = at;
    }
    m_text.swap(fresh);
    m_garbage = 0;
}

std::size_t KwPointTableModel::memoryBytes() const
{
    return m_text.capacity() + m_cells.capacity() * sizeof(Cell) +
           m_pending.capacity() * sizeof(double);
}
