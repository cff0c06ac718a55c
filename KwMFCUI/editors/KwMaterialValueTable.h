#pragma once
// The material editor's property values in one table: a model holding the value, unit, label
// and tool tip of every key of the shared key table whatever the type, and showing as rows the
// keys of the current type (CKwMaterial::KeysForType) grouped under their headings. Symbols,
// labels and units come from the shared key table; no row is written out by hand.
#include "KwLangText.h"
#include "KwMaterialKeys.h"

#include <QAbstractTableModel>
#include <algorithm>
#include <array>
#include <vector>

class QTableView;
class QWidget;

namespace KwMaterialRows {
// The headings of the value table. The allowables of the orthotropic types carry the names
// of their allowables groups.
enum ValueHeading { HeadStiffness, HeadAllowables, HeadMatL8, HeadMatL12, HeadExpansion,
                    HeadThermal, HeadingCount };

// The rows of a type: its keys grouped under their headings, in heading order, the keys of a
// group in the type's order. A heading row is stored as -1 - heading.
std::vector<int> groupedRows(int type);
} // namespace KwMaterialRows

// The property values of the material: every key has its value, unit and tool tip here
// whether or not the current type shows it; the rows are the keys of the current type under
// their headings.
class KwMaterialValueModel : public QAbstractTableModel
{
public:
    enum Column { Symbol, Label, Value, Unit, ColumnCount };
    using QAbstractTableModel::QAbstractTableModel;

    std::array<QString, KwMaterialKeys::Count> value, unit, tip, label;
    std::array<QString, KwMaterialRows::HeadingCount> heading;

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_shown.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : ColumnCount;
    }
    // The key of a row; -1 for a heading or a row that is not there.
    int keyAt(int row) const
    {
        return row >= 0 && row < rowCount() && m_shown[row] >= 0 ? m_shown[row] : -1;
    }
    int headingAt(int row) const
    {
        return row >= 0 && row < rowCount() && m_shown[row] < 0 ? -1 - m_shown[row] : -1;
    }
    int rowOf(int key) const
    {
        if (key < 0)
            return -1;
        const auto it = std::find(m_shown.begin(), m_shown.end(), key);
        return it == m_shown.end() ? -1 : int(it - m_shown.begin());
    }
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override
    {
        if (headingAt(index.row()) >= 0)
            return Qt::NoItemFlags;
        Qt::ItemFlags f = QAbstractTableModel::flags(index);
        return index.column() == Value ? f | Qt::ItemIsEditable : f;
    }
    bool setData(const QModelIndex& index, const QVariant& v, int role) override
    {
        const int key = keyAt(index.row());
        if (key < 0 || index.column() != Value || role != Qt::EditRole)
            return false;
        setText(value, key, v.toString());
        return true;
    }
    void setText(std::array<QString, KwMaterialKeys::Count>& column, int key, const QString& text)
    {
        if (key < 0 || key >= KwMaterialKeys::Count || column[key] == text)
            return;
        column[key] = text;
        const int row = rowOf(key);
        if (row >= 0) {
            const int c = &column == &value ? Value : &column == &unit ? Unit : Label;
            emit dataChanged(index(row, c), index(row, c));
        }
    }
    // True if the rows changed (the view then lays its heading spans anew).
    bool show(std::vector<int> rows)
    {
        if (rows == m_shown)
            return false;
        beginResetModel();
        m_shown = std::move(rows);
        endResetModel();
        return true;
    }
    // Labels, tool tips and headings in the current language.
    void relabel();

private:
    std::vector<int> m_shown;
};


// The table view over `model` as the editor shows it: no headers or grid, one row selected,
// typing in the value column only, the columns sized for symbols, values and units, ten rows
// in sight at least.
QTableView* KwMakeMaterialValueView(QWidget* parent, KwMaterialValueModel* model);
// Shows the rows of `type`; the headings span the row.
void KwShowMaterialRows(QTableView* view, KwMaterialValueModel* model, int type);
