#include "CKwMFCUISolutionFrequency.h"

#include "CKwMFCUIFrequencyPages.h"
#include "KwControls.h"
#include "ui_CKwMFCUISolutionFrequency.h"

#include <QLayout>

namespace {

using T = KwTextTarget;
using U = CKwUISolutionFrequency;
using F = CKwSolutionFrequency;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;
constexpr int kSpacingCombo = 7058;

// Control codes of the logic -> controls of template 7015 and its pages.
constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},
    {U::CodeID, 274, kEdit},
    {U::CodeRangeStart, 7052, kEdit},
    {U::CodeRangeEnd, 7054, kEdit},
    {U::CodeRangeIncrements, 7056, kEdit},
    {U::CodeClusterLow, 7062, kEdit},
    {U::CodeClusterHigh, 7064, kEdit},
    {U::CodeClusterPoints, 7066, kEdit},
    {U::CodeClusterBias, 7068, kEdit},
    {U::CodeSpreadLow, 7072, kEdit},
    {U::CodeSpreadHigh, 7074, kEdit},
    {U::CodeSpreadPercent, 7076, kEdit},
    {U::CodeSpreadPoints, 7078, kEdit},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldMethod, CKwMFCUISolutionFrequency::kMethodCombo, KwBind::TypeCombo},
    {U::FieldSpacing, kSpacingCombo, KwBind::ComboIndex},
};

// The method's page is its panel; nothing is picked in this editor.
constexpr KwTypePanel kPanels[] = {
    {F::Discrete, {int(CKwMFCUIDiscreteFrequency::kTemplateId)}, 0, 0, {}, {}},
    {F::Range, {int(CKwMFCUIFrequencyRange::kTemplateId)}, 0, 0, {}, {}},
    {F::ClusterModes, {int(CKwMFCUIFrequencySolnClusterModes::kTemplateId)}, 0, 0, {}, {}},
    {F::SpreadAround, {int(CKwMFCUIFrequencySolnSpreadAround::kTemplateId)}, 0, 0, {}, {}},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {7020, "SolutionFrequency", "LabelMethod", "Method", true},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {7021, "SolutionFrequency", "DropDownDiscrete", "Discrete Frequencies", T::Item},
    {7021, "SolutionFrequency", "DropDownRange", "Frequency Range", T::Item},
    {7021, "SolutionFrequency", "DropDownCluster", "Clustered between Modes", T::Item},
    {7021, "SolutionFrequency", "DropDownSpread", "Spread around Modes", T::Item},
};

} // namespace

CKwMFCUISolutionFrequency::CKwMFCUISolutionFrequency(CKwSolutionFrequency* frequencies,
                                                     CFMView* view, KW_UOM* units,
                                                     CKwAnalysis* analysis, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUISolutionFrequency>())
{
    m_ui->setupUi(this);
    // The pages sit in a holder whose parent is this editor: their option changes find it.
    m_pages = {new CKwMFCUIDiscreteFrequency(view, units, m_ui->pages),
               new CKwMFCUIFrequencyRange(view, units, m_ui->pages),
               new CKwMFCUIFrequencySolnClusterModes(view, units, m_ui->pages),
               new CKwMFCUIFrequencySolnSpreadAround(view, units, m_ui->pages)};
    m_ui->pages->layout()->setContentsMargins(0, 0, 0, 0);
    for (CKwFrequencyPage* page : m_pages)
        m_ui->pages->layout()->addWidget(page);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetTypePanels(kPanels, 0);
    SetUnitSystem(units);
    SetAnalysis(analysis);
    OnCreate(view, frequencies, nullptr);
}

CKwMFCUISolutionFrequency::~CKwMFCUISolutionFrequency() = default;

CKwFrequencyPage* CKwMFCUISolutionFrequency::GetPage(int method) const
{
    return method >= 0 && method < int(m_pages.size()) ? m_pages[std::size_t(method)] : nullptr;
}

CKwMFCUIDiscreteFrequency* CKwMFCUISolutionFrequency::GetDiscretePage() const
{
    return static_cast<CKwMFCUIDiscreteFrequency*>(m_pages[F::Discrete]);
}

int CKwMFCUISolutionFrequency::SetControlItems(int code, int count, const QString* items)
{
    if (code != CodeDiscrete)
        return CKwMFCUIBase::SetControlItems(code, count, items);
    QStringList texts;
    for (int i = 0; items && i < count; ++i)
        texts << items[i];
    // A reset, not an edit: the page reports nothing back.
    GetDiscretePage()->Model()->SetTexts(texts);
    return 1;
}

void CKwMFCUISolutionFrequency::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    for (CKwFrequencyPage* page : m_pages)
        page->SetTextToCurrentLang();
}

long CKwMFCUISolutionFrequency::OnOptionChanged(int ctrlId, int value)
{
    if (ctrlId == CKwMFCUIDiscreteFrequency::kListId) {
        SetDiscreteTexts(GetDiscretePage()->Model()->Texts());
        return 1;
    }
    if (ctrlId == kSpacingCombo)
        return SetValue(FieldSpacing, value);
    // An edit of a page: its text goes into the edit copy (a bad one is named on OK).
    UpdateObjectData(true);
    return 1;
}

void CKwMFCUISolutionFrequency::OnOK()
{
    CKwMFCUIDiscreteFrequency* discrete = GetDiscretePage();
    discrete->CommitOpenEdit();
    SetDiscreteTexts(discrete->Model()->Texts());
    CKwMFCUIBase::OnOK();
}
