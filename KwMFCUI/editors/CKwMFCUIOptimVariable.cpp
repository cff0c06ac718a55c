#include "CKwMFCUIOptimVariable.h"

#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIOptimVariable.h"

#include <QComboBox>
#include <QLineEdit>

namespace {

using T = KwTextTarget;
using V = CKwUIOptimVariable;
using D = CKwMFCUIOptimVariable;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {V::CodeName, D::IdName, kEdit},
    {V::CodeID, D::IdID, kEdit},
    {V::CodeProperties, D::IdProperty, KwCodeOp::Items},
    {V::CodeParameters, D::IdParameter, KwCodeOp::Items},
    {V::CodeLower, D::IdLower, kEdit},
    {V::CodeUpper, D::IdUpper, kEdit},
    {V::CodeInitial, D::IdInitial, kEdit},
    {V::CodeStep, D::IdStep, kEdit},
    {V::CodeUnitFirst + 0, 7831, KwCodeOp::Text},
    {V::CodeUnitFirst + 1, 7834, KwCodeOp::Text},
    {V::CodeUnitFirst + 2, 7837, KwCodeOp::Text},
    {V::CodeUnitFirst + 3, 7840, KwCodeOp::Text},
};

constexpr KwValueBinding kBindings[] = {
    {V::FieldProperty, D::IdProperty, KwBind::ComboIndex},
    {V::FieldParameter, D::IdParameter, KwBind::ComboIndex},
};

constexpr KwTextRow kTexts[] = {
    {7821, "General", "LabelName", "Name", true},
    {7823, "General", "LabelID", "ID", true},
    {7825, "OptimVariable", "LabelProperty", "Property", true},
    {7827, "OptimVariable", "LabelParameter", "Size", true},
    {7829, "OptimVariable", "LabelLower", "Lower Bound", true},
    {7832, "OptimVariable", "LabelUpper", "Upper Bound", true},
    {7835, "OptimVariable", "LabelInitial", "Initial Value", true},
    {7838, "OptimVariable", "LabelStep", "Step", true},
    {D::IdProperty, "OptimVariable", "TooltipProperty",
     "The shell or beam property whose size varies", T::ToolTip},
    {D::IdParameter, "OptimVariable", "TooltipParameter",
     "The shell thickness, or a dimension of the beam section at end A", T::ToolTip},
    {D::IdStep, "OptimVariable", "TooltipStep", "How far the search moves the size at a time",
     T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIOptimVariable::CKwMFCUIOptimVariable(CKwOptimVariable* variable, CKwAnalysis* study,
                                             CFMView* view, KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIOptimVariable>())
{
    m_ui->setupUi(this);
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->topGrid);
    const int number = KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars);
    for (QLineEdit* e : {m_ui->id, m_ui->lower, m_ui->upper, m_ui->initial, m_ui->step})
        e->setFixedWidth(number);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetAnalysis(study);
    OnCreate(view, variable, nullptr);
}

CKwMFCUIOptimVariable::~CKwMFCUIOptimVariable() = default;
