#include "CKwMFCUINonlinearSetup.h"

#include "CKwNonlinearParametersDlg.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwStyle.h"
#include "ui_CKwMFCUINonlinearSetup.h"

#include <QAbstractButton>

namespace {

using T = KwTextTarget;
using U = CKwUINonlinearSetup;
using Ed = CKwMFCUINonlinearSetup;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeIncrements, Ed::kIncrements, kEdit},
    {U::CodeOutputEvery, Ed::kOutputEvery, kEdit},
    {U::CodeTimeIncrement, Ed::kTimeIncrement, kEdit},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldSolution, Ed::kStatic, KwBind::RadioGroup, 2},
    {U::FieldLargeDisplacement, Ed::kLargeDisplacement, KwBind::Check},
    {U::FieldFollowerForces, Ed::kFollowerForces, KwBind::Check},
};

constexpr KwTextRow kTexts[] = {
    {7730, "NonlinearSetup", "GroupSolution", "Solution"},
    {Ed::kStatic, "NonlinearSetup", "RadioStatic", "Static"},
    {Ed::kTransient, "NonlinearSetup", "RadioTransient", "Transient"},
    {Ed::kLargeDisplacement, "NonlinearSetup", "CheckboxLargeDisplacement", "Large Displacements"},
    {Ed::kLargeDisplacement, "NonlinearSetup", "TooltipLargeDisplacement",
     "Update the geometry with the displacements (geometric nonlinearity)", T::ToolTip},
    {Ed::kFollowerForces, "NonlinearSetup", "CheckboxFollowerForces", "Follower Forces"},
    {Ed::kFollowerForces, "NonlinearSetup", "TooltipFollowerForces",
     "Pressures and forces turn with the deformed structure", T::ToolTip},
    {7738, "NonlinearSetup", "LabelTimeIncrement", "Time Increment", T::UnitLabel,
     KwTextLookup::Prop, KwUnitKind::Time},
    {7740, "NonlinearSetup", "LabelOutputEvery", "Output Every", T::Label},
    {Ed::kOutputEvery, "NonlinearSetup", "TooltipOutputEvery",
     "Write results at every n-th increment", T::ToolTip},
    {Ed::kParameters, "NonlinearSetup", "ButtonParameters", "Nonlinear Parameters..."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUINonlinearSetup::CKwMFCUINonlinearSetup(CKwNonlinearSetup* setup, CFMView* view,
                                               KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUINonlinearSetup>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    connect(m_ui->solTransient, &QAbstractButton::toggled, this, [this] { syncSolution(); });
    connect(m_ui->parameters, &QAbstractButton::clicked, this, &CKwMFCUINonlinearSetup::OnParameters);
    OnCreate(view, setup, nullptr);
}

CKwMFCUINonlinearSetup::~CKwMFCUINonlinearSetup() = default;

bool CKwMFCUINonlinearSetup::OnInitDialog()
{
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->form);
    KwStyle::ApplyGroupLayout(m_ui->groupSolutionLayout);
    const int w = KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars);
    for (QLineEdit* e : {m_ui->increments, m_ui->timeIncrement, m_ui->outputEvery}) {
        e->setMinimumWidth(w);
        e->setAlignment(KwStyle::NumberAlignment);
    }
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUINonlinearSetup::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncSolution();
}

void CKwMFCUINonlinearSetup::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    syncSolution();
}

// A transient run counts time steps of a time increment; a static one load increments.
void CKwMFCUINonlinearSetup::syncSolution()
{
    const bool transient = m_ui->solTransient->isChecked();
    m_ui->labelIncrements->setText(
        KwLabel(transient ? KwPropText("NonlinearSetup", "LabelTimeSteps", "Number of Time Steps")
                          : KwPropText("NonlinearSetup", "LabelIncrements",
                                       "Number of Increments")));
    m_ui->labelTimeIncrement->setVisible(transient);
    m_ui->timeIncrement->setVisible(transient);
    const bool fixed = IsSolutionFixed();
    m_ui->solStatic->setEnabled(!fixed);
    m_ui->solTransient->setEnabled(!fixed);
    const QString tip = fixed ? KwPropText("NonlinearSetup", "TooltipSolutionFixed",
                                           "The analysis decides between static and transient")
                              : QString();
    m_ui->groupSolution->setToolTip(tip);
}

void CKwMFCUINonlinearSetup::OnParameters()
{
    CKwNonlinearSetup* s = GetEditObject();
    if (!s)
        return;
    CKwNonlinearParametersDlg dlg(s, this);
    dlg.SetFMView(GetFMView());
    dlg.DoModal();
}
