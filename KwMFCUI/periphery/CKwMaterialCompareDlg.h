#pragma once
// Two materials side by side: a row per property either of them has a value for (type and
// category first, then the property keys in table order, then the extra values), the two
// values in the units of the analysis, the unit, and the rows whose values differ marked.
#include "CKwMFCDialog.h"
#include "CKwMaterial.h"

#include <QAbstractTableModel>
#include <vector>

class KW_UOM;
class QCheckBox;
class QTableView;

class KWMFCUI_EXPORT KwMaterialCompareModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { ColProperty = 0, ColFirst, ColSecond, ColUnit, ColumnCount };
    // A row: what it shows, the two texts, and whether they differ.
    struct Row
    {
        enum Kind { Type, Category, Key, Extra } kind;
        int index; // key or extra index
        QString first, second;
        bool differs;
    };

    KwMaterialCompareModel(const CKwMaterial& first, const CKwMaterial& second,
                           const KW_UOM* units, QObject* parent = nullptr);
    // Only the rows whose values differ.
    void SetDifferencesOnly(bool on);
    bool IsDifferencesOnly() const { return m_differencesOnly; }
    // Builds the rows again in the current language.
    void Relabel();
    const Row& RowAt(int row) const { return m_rows[std::size_t(m_shown[std::size_t(row)])]; }
    int DifferenceCount() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    void rebuild();

    CKwMaterial m_first, m_second;
    const KW_UOM* m_units;
    std::vector<Row> m_rows;
    std::vector<int> m_shown;
    bool m_differencesOnly = false;
};

class KWMFCUI_EXPORT CKwMaterialCompareDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 356;
    enum ControlId { IDC_TABLE = 3571, IDC_DIFFERENCES_ONLY = 3572, IDC_SUMMARY = 3573 };

    CKwMaterialCompareDlg(const CKwMaterial& first, const CKwMaterial& second, KW_UOM* units,
                          QWidget* parent = nullptr);
    ~CKwMaterialCompareDlg() override;

    KwMaterialCompareModel* GetModel() const { return m_model; }
    QTableView* GetTable() const { return m_table; }
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    KwMaterialCompareModel* m_model;
    QTableView* m_table;
    QCheckBox* m_differencesOnly;
    QString m_firstName, m_secondName;
};
