#include "CKwMFCUIOptimObjective.h"

#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIOptimObjective.h"

#include <QComboBox>
#include <QLineEdit>

namespace {

using T = KwTextTarget;
using O = CKwUIOptimObjective;
using D = CKwMFCUIOptimObjective;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {O::CodeName, D::IdName, kEdit},
    {O::CodeID, D::IdID, kEdit},
    {O::CodeMode, D::IdMode, kEdit},
    {O::CodeTarget, D::IdTarget, kEdit},
    {O::CodeTargetUnit, D::IdTargetUnit, KwCodeOp::Text},
    {O::CodeNormalization, D::IdNormalization, kEdit},
};

constexpr KwValueBinding kBindings[] = {
    {O::FieldGoal, D::IdGoal, KwBind::ComboIndex},
    {O::FieldResponse, D::IdResponse, KwBind::ComboIndex},
};

constexpr KwTextRow kTexts[] = {
    {7801, "General", "LabelName", "Name", true},
    {7803, "General", "LabelID", "ID", true},
    {7805, "OptimObjective", "LabelGoal", "Goal", true},
    {7807, "OptimObjective", "LabelResponse", "Response", true},
    {7809, "OptimObjective", "LabelMode", "Mode", true},
    {7811, "OptimObjective", "LabelTarget", "Target", true},
    {7814, "OptimObjective", "LabelNormalization", "Normalizing Factor", true},
    {D::IdMode, "OptimObjective", "TooltipMode", "The mode whose frequency is the response",
     T::ToolTip},
    {D::IdTarget, "OptimObjective", "TooltipTarget",
     "The value the response is brought to, in the response's unit", T::ToolTip},
    {D::IdNormalization, "OptimObjective", "TooltipNormalization",
     "The response is divided by this factor, so that objectives of different size weigh alike",
     T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {D::IdGoal, "OptimObjective", "DropDownMinimize", "Minimize", T::Item},
    {D::IdGoal, "OptimObjective", "DropDownMaximize", "Maximize", T::Item},
    {D::IdGoal, "OptimObjective", "DropDownTarget", "Target", T::Item},
    {D::IdResponse, "OptimObjective", "DropDownMass", "Mass", T::Item},
    {D::IdResponse, "OptimObjective", "DropDownVolume", "Volume", T::Item},
    {D::IdResponse, "OptimObjective", "DropDownDisplacement", "Maximum Displacement", T::Item},
    {D::IdResponse, "OptimObjective", "DropDownStress", "Maximum von Mises Stress", T::Item},
    {D::IdResponse, "OptimObjective", "DropDownFrequency", "Natural Frequency", T::Item},
};

} // namespace

CKwMFCUIOptimObjective::CKwMFCUIOptimObjective(CKwOptimObjective* objective, CKwAnalysis* study,
                                               CFMView* view, KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIOptimObjective>())
{
    m_ui->setupUi(this);
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->topGrid);
    const int number = KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars);
    for (QLineEdit* e : {m_ui->id, m_ui->mode, m_ui->target, m_ui->normalization})
        e->setFixedWidth(number);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetAnalysis(study);
    connect(m_ui->goal, &QComboBox::currentIndexChanged, this, [this] { syncFields(); });
    connect(m_ui->response, &QComboBox::currentIndexChanged, this, [this] { syncFields(); });
    OnCreate(view, objective, nullptr);
}

CKwMFCUIOptimObjective::~CKwMFCUIOptimObjective() = default;

void CKwMFCUIOptimObjective::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncFields();
}

// The target takes input only for a target goal, the mode only for a frequency.
void CKwMFCUIOptimObjective::syncFields()
{
    // The rows are the goal and response codes.
    m_ui->target->setEnabled(m_ui->goal->currentIndex() == CKwOptimObjective::Target);
    m_ui->mode->setEnabled(m_ui->response->currentIndex() == CKwOptimObjective::Frequency);
}
