#pragma once
// The design variable editor: which size of which property an optimization study varies, its
// bounds, initial value and step. Its logic half is CKwUIOptimVariable.
#include "CKwMFCUIBase.h"
#include "CKwUIOptimVariable.h"
#include "KwMFCUIExport.h"

#include <memory>

class KW_UOM;

namespace Ui {
class CKwMFCUIOptimVariable;
}

class KWMFCUI_EXPORT CKwMFCUIOptimVariable : public CKwMFCUIBase, public CKwUIOptimVariable
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7197;
    enum ControlId { IdName = 7822, IdID = 7824, IdProperty = 7826, IdParameter = 7828,
                     IdLower = 7830, IdUpper = 7833, IdInitial = 7836, IdStep = 7839 };

    // `variable` null: a new variable of `study`.
    CKwMFCUIOptimVariable(CKwOptimVariable* variable, CKwAnalysis* study, CFMView* view,
                          KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIOptimVariable() override;

private:
    std::unique_ptr<Ui::CKwMFCUIOptimVariable> m_ui;
};
