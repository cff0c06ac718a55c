#pragma once
// "Highlight": nodes or elements of the mesh by an ID list with "ALL" and ranges, shown in the
// view; ranges can be added through "Define Range", IDs the mesh lacks are listed in the
// warning, and the list can be kept as a node or element set of the model. Its logic half is
// CKwUIHighlightNodeElem.
#include "CKwMFCUIBase.h"
#include "CKwUIHighlightNodeElem.h"
#include "KwMFCUIExport.h"

#include <memory>

namespace Ui {
class CKwMFCUIHighlightNodeElem;
}

class KWMFCUI_EXPORT CKwMFCUIHighlightNodeElem : public CKwMFCUIBase,
                                                 public CKwUIHighlightNodeElem
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7010;
    enum ControlId { IdModeNodes = 7102, IdModeElements = 7103, IdListLabel = 7104,
                     IdList = 7105, IdAll = 7107, IdRange = 7108, IdHighlight = 7109,
                     IdSummary = 7110, IdGroupBox = 7111, IdCreateGroup = 7112,
                     IdGroupName = 7114 };

    // `mode` 0 nodes, 1 elements; `mesh` null: the view's model's mesh; `set` an existing
    // node or element set to edit (its mode wins); `flag` 1 lets the user switch the mode and
    // keep the list as a new set.
    CKwMFCUIHighlightNodeElem(int mode, CKwMeshModel* mesh, CKwGroup* set, int flag,
                              CFMView* view, QWidget* parent = nullptr);
    ~CKwMFCUIHighlightNodeElem() override;

    // "Highlight": the list shown in the view, the editor stays open.
    void OnHighlight();
    // "Add Range...": a range from "Define Range" is appended to the list.
    void OnAddRange();
    // "All": the list becomes "ALL".
    void OnAll();

    void SetTextToCurrentLang() override;
    void OnObjectDataLoaded() override;
    int SetValue(int field, int value) override;

protected:
    void ShowMissingIds(const QList<int>& ids) override;

private:
    void syncControls();

    std::unique_ptr<Ui::CKwMFCUIHighlightNodeElem> m_ui;
};
