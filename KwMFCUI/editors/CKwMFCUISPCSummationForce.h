#pragma once
// The reaction sum: the subcase, the constrained faces, edges and vertices picked in the view,
// the origin of the moment (a typed point, a picked vertex, or the centroid of the summed
// nodes), and the sums of the reaction forces and their moment, recomputed on every change.
// Its logic half is CKwUISPCSummationForce.
#include "CKwMFCUIBase.h"
#include "CKwUISPCSummationForce.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwMFCNodeElemSelectionBox;
class KW_UOM;

namespace Ui {
class CKwMFCUISPCSummationForce;
}

class KWMFCUI_EXPORT CKwMFCUISPCSummationForce : public CKwMFCUIBase,
                                                 public CKwUISPCSummationForce
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 1203;

    // `subcase` (null: the first with results) of `analysis`; `entities`, when given, are
    // summed from the start; `option` is the origin to start with (Origin; others: typed).
    CKwMFCUISPCSummationForce(CFMView* view, CKwAnalysis* analysis,
                              const QList<CKwUIEntity*>* entities, CKwSubCase* subcase,
                              int option, KW_UOM* units, QWidget* parent = nullptr);
    ~CKwMFCUISPCSummationForce() override;

    CKwMFCNodeElemSelectionBox* GetEntityBox() const;
    CKwMFCNodeElemSelectionBox* GetOriginBox() const;

    void SetTextToCurrentLang() override;
    // The boxes hand their entities to the logic after every pick and drop.
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;

protected:
    bool OnInitDialog() override;

private:
    void handOver();

    std::unique_ptr<Ui::CKwMFCUISPCSummationForce> m_ui;
};
