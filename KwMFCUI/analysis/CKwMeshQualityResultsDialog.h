#pragma once
// "Failed Elements": the modeless window that lists the elements of a mesh quality check that
// failed, with their measured values (failing cells red), a summary line, "Highlight" to show
// them in the view and "Create Group" to gather them into a new element group on OK. The
// window deletes itself when closed.
#include "CKwDlgBase.h"
#include "CKwFEUIBase.h"
#include "CKwMeshModel.h"
#include "CKwUIMeshQualityResults.h"
#include "KwMFCUIExport.h"

#include <QDialog>
#include <QRect>
#include <memory>

class CFMView;
class CKwMeshQualityResultsModel;
class KW_UOM;
class QTableView;

namespace Ui {
class CKwMeshQualityResultsDialog;
}

// QDialog comes first among the bases because the meta-object system requires it.
class KWMFCUI_EXPORT CKwMeshQualityResultsDialog : public QDialog,
                                                   public CKwFEUIBase<CKwMeshModel>,
                                                   public CKwUIMeshQualityResults,
                                                   public CKwDlgBase
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7021;
    enum ControlId
    {
        IDC_MESH_QUALITY_LIST = 7451,
        IDC_MESH_QUALITY_SUMMARY = 7452,
        IDC_MESH_QUALITY_GROUP_CHECK = 7453,
        IDC_MESH_QUALITY_GROUP_LABEL = 7454,
        IDC_MESH_QUALITY_GROUP_NAME = 7455,
        IDC_MESH_QUALITY_HIGHLIGHT_BUTTON = 7456,
        IDC_MESH_QUALITY_COVERAGE = 7457,
    };
    static constexpr int kMinWidth = 500;
    static constexpr int kMinHeight = 300;

    // Runs the check on `mesh` with its quality parameters and lists the failures.
    CKwMeshQualityResultsDialog(CKwMeshModel* mesh, CFMView* view, KW_UOM* units,
                                QWidget* parent = nullptr);
    // Lists the results of a check already run (`results` is emptied).
    CKwMeshQualityResultsDialog(CKwMeshModel* mesh, CFMView* view, KW_UOM* units,
                                CKwUIMeshQualityResults* results, QWidget* parent = nullptr);
    ~CKwMeshQualityResultsDialog() override;

    void SetTextToCurrentLang() override;
    // Fills the list and the summary line from the results.
    void UpdateResults();
    QString GetSummaryText() const;
    // What the check did with elements other than linear shells and solids: parabolic ones
    // measured on their corners, beams not checked. Empty when there were none.
    QString GetCoverageText() const;
    // "Group" followed by the group counter ("%s%d").
    QString GetNextGroupName() const;
    // Hands the group settings of the controls to the results logic; true when they changed.
    bool UpdateElementGroup();

    void OnBnClickedMeshQualityGroupCheck();
    void OnBnClickedMeshQualityOk();
    void OnBnClickedMeshQualityHighlightButton();
    // Copies the selected rows (all rows when none is selected) to the clipboard.
    void CopySelection();
    // A proposed window rectangle: one narrower or lower than the minimum is replaced by the
    // last accepted one. Returns whether the proposal was accepted.
    bool OnSizing(QRect* proposed);
    void OnClose() { close(); }

    CKwMeshQualityResultsModel* ResultsModel() const { return m_model; }
    QTableView* ResultsView() const;
    KW_UOM* GetUnits() const { return m_units; }

    // --- editor-logic half: the window edits no entity copy; OK builds the group ---
    void LoadObjectData() override { UpdateResults(); }
    void UpdateObjectData(bool) override { UpdateElementGroup(); }
    int ValidateObjectData() override { return 1; }
    void AddNewObjects() override {}
    QString GetPageTitleString() const override;

protected:
    std::unique_ptr<CKwMeshModel> CreateNewObject() override { return nullptr; }
    void resizeEvent(QResizeEvent* event) override;

private:
    void init(CKwMeshModel* mesh, CFMView* view);
    void showGroupMessage(GroupStatus status);

    std::unique_ptr<Ui::CKwMeshQualityResultsDialog> m_ui;
    CKwMeshQualityResultsModel* m_model = nullptr;
    KW_UOM* m_units;
    QRect m_lastAccepted;
};
