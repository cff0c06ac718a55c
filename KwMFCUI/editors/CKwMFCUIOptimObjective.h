#pragma once
// The optimization objective editor: what an optimization study drives (a response made as
// small or as large as it can be, or brought to a target) and the factor it is divided by.
// Its logic half is CKwUIOptimObjective.
#include "CKwMFCUIBase.h"
#include "CKwUIOptimObjective.h"
#include "KwMFCUIExport.h"

#include <memory>

class KW_UOM;

namespace Ui {
class CKwMFCUIOptimObjective;
}

class KWMFCUI_EXPORT CKwMFCUIOptimObjective : public CKwMFCUIBase, public CKwUIOptimObjective
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7187;
    enum ControlId { IdName = 7802, IdID = 7804, IdGoal = 7806, IdResponse = 7808, IdMode = 7810,
                     IdTarget = 7812, IdTargetUnit = 7813, IdNormalization = 7815 };

    // `objective` null: a new objective of `study`.
    CKwMFCUIOptimObjective(CKwOptimObjective* objective, CKwAnalysis* study, CFMView* view,
                           KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIOptimObjective() override;

    void OnObjectDataLoaded() override;

private:
    void syncFields();
    std::unique_ptr<Ui::CKwMFCUIOptimObjective> m_ui;
};
