#include "CKwMFCUIElementDeletion.h"

#include "KW_UOM.h"
#include "KwControls.h"
#include "KwModelEditorForms.h"
#include "KwStyle.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace {

using T = KwTextTarget;
using U = CKwUIElementDeletion;
using D = CKwElementDeletion;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;
constexpr int kCheck[D::CriterionCount] = {7746, 7748, 7750};

// Control codes of the logic -> controls of template 7225.
constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},
    {U::CodeID, 274, kEdit},
    {U::CodeProperties, CKwMFCUIElementDeletion::kPropertyCombo, KwCodeOp::Items},
    {U::CodeAnalysis, 7742, KwCodeOp::Text},
    {U::CodeLimitFirst + 0, 7747, kEdit},
    {U::CodeLimitFirst + 1, 7749, kEdit},
    {U::CodeLimitFirst + 2, 7751, kEdit},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldProperty, CKwMFCUIElementDeletion::kPropertyCombo, KwBind::ComboIndex},
    {U::FieldOnFirst + 0, 7746, KwBind::Check},
    {U::FieldOnFirst + 1, 7748, KwBind::Check},
    {U::FieldOnFirst + 2, 7750, KwBind::Check},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {7741, "ElementDeletion", "LabelAnalysis", "Analysis", true},
    {7743, "ElementDeletion", "LabelPhysicalProperty", "Physical Property", true},
    {7745, "ElementDeletion", "GroupCriteria", "Deletion Criteria"},
    {7746, "ElementDeletion", "CheckboxPlasticStrain", "Equivalent Plastic Strain"},
    {7748, "ElementDeletion", "CheckboxPrincipalStress", "Maximum Principal Stress"},
    {7750, "ElementDeletion", "CheckboxTime", "Deletion Time"},
    {7755, "ElementDeletion", "NoteCriteria",
     "An element is deleted when any switched-on criterion reaches its limit."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUIElementDeletion::CKwMFCUIElementDeletion(CFMView* view, CKwAnalysis* analysis,
                                                 CKwElementDeletion* deletion, KW_UOM* units,
                                                 QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent)
{
    QVBoxLayout* outer = KwForm::DialogLayout(this);
    QGridLayout* top = KwForm::FormGrid(outer);
    KwForm::NameAndID(this, top);
    QLineEdit* analysisName = KwForm::TextEdit(this, 7742);
    analysisName->setReadOnly(true);
    KwForm::Row(top, KwForm::Label(this, 7741), analysisName, nullptr, true);
    KwForm::Row(top, KwForm::Label(this, 7743), KwForm::Combo(this, kPropertyCombo), nullptr,
                true);
    QGridLayout* criteria = nullptr;
    KwForm::Group(this, 7745, outer, &criteria);
    for (int c = 0; c < D::CriterionCount; ++c) {
        QLabel* unit = KwForm::Label(this, 7760 + c);
        unit->setProperty("kwData", true);
        KwForm::Row(criteria, KwForm::Check(this, kCheck[c]),
                    KwForm::NumberEdit(this, kCheck[c] + 1), unit);
    }
    QLabel* note = KwForm::Label(this, 7755);
    note->setWordWrap(true);
    note->setFixedWidth(KwStyle::CharsWidth(note->fontMetrics(), 48));
    outer->addWidget(note);
    KwForm::ButtonRow(this, outer);

    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetAnalysis(analysis);
    for (int id : kCheck)
        connect(KwControl<QAbstractButton>(this, id), &QAbstractButton::toggled, this,
                [this] { syncLimitEdits(); });
    OnCreate(view, deletion, nullptr);
}

CKwMFCUIElementDeletion::~CKwMFCUIElementDeletion() = default;

bool CKwMFCUIElementDeletion::OnInitDialog()
{
    const bool ok = CKwMFCUIBase::OnInitDialog();
    // After the binding's own handler: the property's switches and limits are shown afresh.
    connect(KwControl<QComboBox>(this, kPropertyCombo), &QComboBox::currentIndexChanged, this,
            [this] {
                FillBoundControls();
                syncLimitEdits();
            });
    return ok;
}

void CKwMFCUIElementDeletion::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    static const KW_UOM si(KW_UOM::SI);
    const KW_UOM& units = GetUnitSystem() ? *GetUnitSystem() : si;
    for (int c = 0; c < D::CriterionCount; ++c)
        if (auto* unit = KwControl<QLabel>(this, 7760 + c))
            unit->setText(units.GetUnits(UnitKindOf(c)));
    syncLimitEdits();
}

// A switched-off criterion's limit takes no input.
void CKwMFCUIElementDeletion::syncLimitEdits()
{
    for (int id : kCheck)
        if (auto* b = KwControl<QAbstractButton>(this, id))
            if (QWidget* e = KwFindControl(this, id + 1))
                e->setEnabled(b->isChecked());
}
