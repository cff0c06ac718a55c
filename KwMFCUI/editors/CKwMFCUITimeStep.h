#pragma once
// The time step editor: the intervals of a transient analysis in a table (number of steps,
// increment, output interval, and the computed end time of each), rows added and removed,
// the total time and steps below. Its logic half is CKwUITimeStep, which reads every cell.
#include "CKwMFCUIBase.h"
#include "CKwUITimeStep.h"
#include "KwMFCUIExport.h"

#include <QAbstractTableModel>
#include <memory>

class KW_UOM;
class QTableView;

namespace Ui {
class CKwMFCUITimeStep;
}

// The table over the logic's rows: three editable columns and the computed end time.
class KWMFCUI_EXPORT CKwTimeStepTableModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    explicit CKwTimeStepTableModel(CKwUITimeStep* logic, QObject* parent = nullptr);
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    // The rows changed underneath (a reload, an insert or removal): show them afresh.
    void Reset();

private:
    CKwUITimeStep* m_logic;
};

class KWMFCUI_EXPORT CKwMFCUITimeStep : public CKwMFCUIBase, public CKwUITimeStep
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7008;
    enum ControlId { kTable = 7720, kAddRow = 7721, kRemoveRow = 7722, kTotalTime = 7723,
                     kTotalSteps = 7725 };

    // `steps` null: new time stepping for `analysis`, which keeps it on OK.
    CKwMFCUITimeStep(CKwTimeStep* steps, CKwAnalysis* analysis, CFMView* view,
                     KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUITimeStep() override;

    QTableView* GetTable() const;
    CKwTimeStepTableModel* GetTableModel() const { return m_model; }
    // "Add Interval" inserts after the current row (at the end without one); "Remove
    // Interval" removes the current row.
    void OnAddRow();
    void OnRemoveRow();

    void OnRowsChanged() override;
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    std::unique_ptr<Ui::CKwMFCUITimeStep> m_ui;
    CKwTimeStepTableModel* m_model = nullptr;
    bool m_inReset = false;
    int m_shownRows = -1;
};
