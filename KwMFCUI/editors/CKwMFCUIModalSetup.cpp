#include "CKwMFCUIModalSetup.h"

#include "KW_UOM.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIModalSetup.h"

#include <QAbstractButton>

namespace {

using T = KwTextTarget;
using U = CKwUIModalSetup;
using Ed = CKwMFCUIModalSetup;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeModes, Ed::kModes, kEdit},
    {U::CodeLower, Ed::kLower, kEdit},
    {U::CodeUpper, Ed::kUpper, kEdit},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldUseBand, Ed::kUseBand, KwBind::Check},
    {U::FieldNormalization, Ed::kNormalizeMass, KwBind::RadioGroup, 2},
};

constexpr KwTextRow kTexts[] = {
    {7711, "ModalSetup", "LabelModeCount", "Number of Modes", T::Label},
    {Ed::kModes, "ModalSetup", "TooltipModeCount",
     "How many modes to find, starting with the lowest frequency", T::ToolTip},
    {Ed::kUseBand, "ModalSetup", "CheckboxFrequencyBand", "Only Modes in a Frequency Band"},
    {7714, "ModalSetup", "LabelLowerFrequency", "Lower Frequency", T::UnitLabel,
     KwTextLookup::Prop, KwUnitKind::Frequency},
    {7716, "ModalSetup", "LabelUpperFrequency", "Upper Frequency", T::UnitLabel,
     KwTextLookup::Prop, KwUnitKind::Frequency},
    {7717, "ModalSetup", "GroupNormalization", "Normalization"},
    {7718, "ModalSetup", "RadioMass", "Mass"},
    {7719, "ModalSetup", "RadioMaxDisplacement", "Maximum Displacement"},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIModalSetup::CKwMFCUIModalSetup(CKwModalSetup* setup, CKwAnalysis* analysis,
                                       CFMView* view, KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIModalSetup>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    connect(m_ui->useBand, &QAbstractButton::toggled, this, [this] { syncBand(); });
    SetAnalysis(analysis);
    OnCreate(view, setup, nullptr);
}

CKwMFCUIModalSetup::~CKwMFCUIModalSetup() = default;

bool CKwMFCUIModalSetup::OnInitDialog()
{
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->form);
    KwStyle::ApplyGroupLayout(m_ui->groupNormalizationLayout);
    const int w = KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars);
    for (QWidget* e : {static_cast<QWidget*>(m_ui->modes), static_cast<QWidget*>(m_ui->lower),
                       static_cast<QWidget*>(m_ui->upper)}) {
        e->setMinimumWidth(w);
        static_cast<QLineEdit*>(e)->setAlignment(KwStyle::NumberAlignment);
    }
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUIModalSetup::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    syncBand();
}

// The band limits take input only while the band is on.
void CKwMFCUIModalSetup::syncBand()
{
    const bool on = m_ui->useBand->isChecked();
    m_ui->lower->setEnabled(on);
    m_ui->upper->setEnabled(on);
}
