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
    void release(const Cell& c) { m_garbage += c.length; }
    void compactIfWasteful();

    using Text = std::basic_string<char, std::char_traits<char>, KwLargeAllocator<char>>;

    int m_columns;
    Text m_text;
    std::vector<Cell, KwLargeAllocator<Cell>> m_cells;
    std::size_t m_garbage = 0;
    int m_bulk = 0;
    QStringList m_headers;
};
