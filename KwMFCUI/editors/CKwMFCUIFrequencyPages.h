#pragma once
// The pages of the solution frequency editor, one per way of choosing the frequencies. A page
// never touches the entity: each change of one of its controls goes to the editor that holds
// it as an option change (control id and value), and the editor applies it through its logic.
#include "CKwMFCDialog.h"
#include "KwLangText.h"
#include "KwMFCUIExport.h"

#include <QAbstractTableModel>
#include <QStringList>
#include <memory>
#include <span>

class KW_UOM;
class QTableView;

namespace Ui {
class CKwMFCUIDiscreteFrequency;
class CKwMFCUIFrequencyRange;
class CKwMFCUIFrequencySolnClusterModes;
class CKwMFCUIFrequencySolnSpreadAround;
}

// The discrete frequencies as typed: one column of texts that grows and shrinks by rows.
class KWMFCUI_EXPORT KwFrequencyListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetTexts(const QStringList& texts);
    const QStringList& Texts() const { return m_texts; }
    void SetHeader(const QString& header);
    // An empty row at the end; returns its row.
    int AddRow();
    // Removes the rows given (any order, duplicates and rows out of range ignored).
    void RemoveRows(QList<int> rows);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QStringList m_texts;
    QString m_header;
};

// What the pages share: embedding in the editor, their texts, and the option changes.
class KWMFCUI_EXPORT CKwFrequencyPage : public CKwMFCDialog
{
    Q_OBJECT
public:
    CKwFrequencyPage(unsigned templateId, CFMView* view, const KW_UOM* units, QWidget* parent);
    void SetTextToCurrentLang() override;

protected:
    void SetPageTexts(std::span<const KwTextRow> texts) { m_texts = texts; }
    const KW_UOM* Units() const { return m_units; }
    // Every edit reports when its text was changed by the user, every combo its row.
    void ReportChanges();
    long Notify(int ctrlId, int value);

private:
    std::span<const KwTextRow> m_texts;
    const KW_UOM* m_units;
};

class KWMFCUI_EXPORT CKwMFCUIDiscreteFrequency : public CKwFrequencyPage
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7016;
    static constexpr int kListId = 7041;
    CKwMFCUIDiscreteFrequency(CFMView* view, const KW_UOM* units, QWidget* parent);
    ~CKwMFCUIDiscreteFrequency() override;

    KwFrequencyListModel* Model() const { return m_model; }
    QTableView* View() const;
    // Ends an edit still open in a cell, so that its text counts.
    void CommitOpenEdit();
    void AddRow();
    void DeleteSelectedRows();
    void SetTextToCurrentLang() override;

private:
    std::unique_ptr<Ui::CKwMFCUIDiscreteFrequency> m_ui;
    KwFrequencyListModel* m_model;
};

class KWMFCUI_EXPORT CKwMFCUIFrequencyRange : public CKwFrequencyPage
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7017;
    CKwMFCUIFrequencyRange(CFMView* view, const KW_UOM* units, QWidget* parent);
    ~CKwMFCUIFrequencyRange() override;

private:
    std::unique_ptr<Ui::CKwMFCUIFrequencyRange> m_ui;
};

class KWMFCUI_EXPORT CKwMFCUIFrequencySolnClusterModes : public CKwFrequencyPage
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7018;
    CKwMFCUIFrequencySolnClusterModes(CFMView* view, const KW_UOM* units, QWidget* parent);
    ~CKwMFCUIFrequencySolnClusterModes() override;

private:
    std::unique_ptr<Ui::CKwMFCUIFrequencySolnClusterModes> m_ui;
};

class KWMFCUI_EXPORT CKwMFCUIFrequencySolnSpreadAround : public CKwFrequencyPage
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7019;
    CKwMFCUIFrequencySolnSpreadAround(CFMView* view, const KW_UOM* units, QWidget* parent);
    ~CKwMFCUIFrequencySolnSpreadAround() override;

private:
    std::unique_ptr<Ui::CKwMFCUIFrequencySolnSpreadAround> m_ui;
};
