#pragma once
// The XY plot editor: the analysis with results, the result and its component, the kind of
// curve (the history of each picked node over time, frequency or mode, or over the result
// sets; or the values along the picked nodes for one result set) and the nodes or vertices
// picked in the view. OK keeps the XY plot in the model and opens the XY plot window on it.
// Its logic half is CKwUIXYPlot.
#include "CKwMFCUIBase.h"
#include "CKwUIXYPlot.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwMFCNodeElemSelectionBox;
class KW_UOM;

namespace Ui {
class CKwMFCUIXYPlot;
}

class KWMFCUI_EXPORT CKwMFCUIXYPlot : public CKwMFCUIBase, public CKwUIXYPlot
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7014;

    CKwMFCUIXYPlot(CFMView* view, KW_UOM* units, QWidget* parent = nullptr);
    ~CKwMFCUIXYPlot() override;

    CKwMFCNodeElemSelectionBox* GetNodeBox() const;
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    void OnObjectDataLoaded() override;
    int SetValue(int field, int value) override;

protected:
    bool OnInitDialog() override;
    // The XY plot window shows what was kept.
    void OnAfterSubmit() override;

private:
    void syncSetList();
    std::unique_ptr<Ui::CKwMFCUIXYPlot> m_ui;
};
