#pragma once
// The cells of a point table as one text buffer: every cell is an (offset, length) pair into
// a UTF-8 buffer, rows follow each other in one array. No object per cell, so a million rows
// take a few tens of megabytes, and text is turned into a QString only for the rows painted.
#include "KwLargeAllocator.h"
#include "KwMFCUIExport.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class KWMFCUI_EXPORT KwPointTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit KwPointTableModel(int columns = 2, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation o, int role = Qt::DisplayRole) const override;
    bool setHeaderData(int section, Qt::Orientation o, const QVariant& value,
                       int role = Qt::EditRole) override;

    int rows() const { return static_cast<int>(m_cells.size() / std::size_t(m_columns)); }
    int columns() const { return m_columns; }

    // A cell's text as stored (UTF-8); empty for a cell outside the table.
    std::string_view cellView(int row, int col) const;
    QString cellText(int row, int col) const;
    void setCellText(int row, int col, std::string_view utf8);
    void setCellText(int row, int col, const QString& text);

    // Inserts a row at `index` (clamped to 0..rows()) with the texts of its first columns.
    void insertRowTexts(int index, std::string_view c0, std::string_view c1);
    void removeRowAt(int index);
    // Removes the rows at these indices (ascending, no duplicates).
    void removeRowsAt(const std::vector<int>& ascending);
    // Keeps rows 0..n-1.
    void truncate(int n);
    void clear();
    void reserve(std::size_t rows, std::size_t textBytes);

    // Changes made between beginBulk and the matching endBulk reach the views as one reset
    // instead of a signal per row (a paste of a million rows would otherwise send a million).
    void beginBulk();
    void endBulk();
    bool inBulk() const { return m_bulk > 0; }

    // Rows of numbers whose text is made only when it is needed: a table of a million stored
    // points opens without formatting two million numbers first. `values` holds two display
    // values per row (column 0, column 1; NaN for an empty cell), `format` writes one into at
    // most 47 bytes and returns the length. Painting formats the rows it shows; anything that
    // reads or changes cells turns every pending row into text first; in between, idle time
    // does so a slice at a time. The rows go in at `index` like insertRowTexts.
    using NumberFormat = int (*)(double value, char* out);
    using Numbers = std::vector<double, KwLargeAllocator<double>>;
    void insertNumberRows(int index, Numbers values, NumberFormat format);
    // Rows still waiting for their text (0 once every cell is text).
    int pendingRows() const { return m_pendingEnd - m_pendingDone; }

    std::size_t textBytes() const { return m_text.size(); }
    // Bytes the storage holds (capacity, not only what is in use).
    std::size_t memoryBytes() const;

private:
    struct Cell
    {
        std::uint32_t offset;
        std::uint32_t length;
    };

    Cell store(std::string_view utf8);
    // Turns pending rows into text: all of them, or up to `rows` of them.
    void formatPending(int rows);
    void ensureText() const
    {
        if (m_pendingEnd > m_pendingDone)
            const_cast<KwPointTableModel*>(this)->formatPending(m_pendingEnd - m_pendingDone);
    }
    void formatPendingLater();
    void release(const Cell& c) { m_garbage += c.length; }
    void compactIfWasteful();

    using Text = std::basic_string<char, std::char_traits<char>, KwLargeAllocator<char>>;

    int m_columns;
    Text m_text;
    std::vector<Cell, KwLargeAllocator<Cell>> m_cells;
    std::size_t m_garbage = 0;
    int m_bulk = 0;
    QStringList m_headers;
    // Rows [m_pendingFirst, m_pendingEnd) came as numbers; those from m_pendingDone on are
    // not text yet (their cells are empty placeholders).
    Numbers m_pending;
    NumberFormat m_format = nullptr;
    int m_pendingFirst = 0;
    int m_pendingDone = 0;
    int m_pendingEnd = 0;
    bool m_sliceQueued = false;
};
