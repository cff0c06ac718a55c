#pragma once
// The fatigue setup of the host's current fatigue analysis: load cycles, a constant-amplitude
// loading (fully reversed, zero-based or a custom stress ratio) or a load history of blocks,
// the mean-stress correction, the stress measure and a scale factor. The materials' fatigue
// curves are their own (the material editor's fatigue switch); the dialog lists which
// materials have one. OK checks every field in order and writes the setup only when all pass;
// Cancel writes nothing.
#include "CKwFatigueSetup.h"
#include "CKwMFCDialog.h"

#include <QAbstractTableModel>
#include <memory>

class CKwAnalysis;
class KW_UOM;

namespace Ui {
class CKwFatigueSetupDialog;
}

// The load history blocks as a table: cycles, minimum and maximum factor, one row per block.
// Cells hold what the user typed; Blocks() reads them.
class KWMFCUI_EXPORT KwFatigueHistoryModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { ColCycles = 0, ColMin = 1, ColMax = 2, ColumnCount = 3 };
    explicit KwFatigueHistoryModel(QObject* parent = nullptr);

    void SetBlocks(const QList<CKwFatigueSetup::Block>& blocks);
    // The first cell that is no number, or a block that breaks a rule: its row and column, and
    // the message; -1 when every row reads. `blocks` gets the rows read.
    int ReadBlocks(QList<CKwFatigueSetup::Block>& blocks, int* column, QString* message) const;
    void AppendRow();
    void RemoveRowAt(int row);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

private:
    QList<std::array<QString, ColumnCount>> m_rows;
};

class KWMFCUI_EXPORT CKwFatigueSetupDialog : public CKwMFCDialog
{
    Q_OBJECT
public:
    enum ControlId { IdAnalysis = 7902, IdCycles = 7905, IdLoading = 7907, IdRatio = 7909,
                     IdHistory = 7910, IdAddRow = 7911, IdRemoveRow = 7912, IdMeanStress = 7915,
                     IdMeasure = 7917, IdScale = 7919, IdCurves = 7921 };

    // The fatigue analysis the host has made current in `view`, or null (no view, no current
    // analysis, or one of another type).
    static CKwAnalysis* CurrentFatigueAnalysis(const CFMView* view);

    // `analysis` must be a fatigue analysis; its setup is created on OK when it has none.
    CKwFatigueSetupDialog(CKwAnalysis* analysis, CFMView* view, KW_UOM* units = nullptr,
                          QWidget* parent = nullptr);
    ~CKwFatigueSetupDialog() override;

    CKwAnalysis* GetAnalysis() const { return m_analysis; }
    KwFatigueHistoryModel* GetHistoryModel() const { return m_history; }
    // The last field message (empty after a successful OK).
    QString GetLastMessage() const { return m_lastMessage; }

    void OnOK() override;
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    void fill();
    void fillCurves();
    void syncLoading();
    // Reads and checks every field into `out`; false after the first field's message.
    bool read(CKwFatigueSetup& out);
    void fieldError(const QString& label, const QString& message);

    std::unique_ptr<Ui::CKwFatigueSetupDialog> m_ui;
    CKwAnalysis* m_analysis;
    KW_UOM* m_units;
    KwFatigueHistoryModel* m_history;
    CKwFatigueSetup m_shown; // what the fields were filled with
    QString m_lastMessage;
};
