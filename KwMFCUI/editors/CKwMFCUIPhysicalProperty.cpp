#include "CKwMFCUIPhysicalProperty.h"

#include "CFMView.h"
#include "CKwDefineCrossSectionDlg.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "ui_CKwMFCUIPhysicalProperty.h"
#include "ui_CKwMFCUIShellPropertyAdvancedOptions.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

using T = KwTextTarget;
using P = CKwUIPhysicalProperty;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 367.
constexpr KwControlCode kControlCodes[] = {
    {P::CodeName, 273, kEdit},
    {P::CodeID, 274, kEdit},
    {P::CodeMaterials, 7601, KwCodeOp::Items},
    {P::CodeThickness, 7612, kEdit},
    {P::CodeSection, 7624, KwCodeOp::Text | KwCodeOp::ToolTip},
};

constexpr KwValueBinding kBindings[] = {
    {P::FieldType, 1417, KwBind::TypeCombo},
    {P::FieldMaterial, 7601, KwBind::ComboIndex},
    {P::FieldElementKind, 7622, KwBind::ComboIndex},
};

// One panel per idealization; nothing is picked in this editor.
constexpr KwTypePanel kPanels[] = {
    {CKwPhysicalProperty::Solid, {7630}, 0, 0, {}, {}},
    {CKwPhysicalProperty::Shell, {7610}, 0, 0, {}, {}},
    {CKwPhysicalProperty::Beam, {7620}, 0, 0, {}, {}},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {342, "General", "LabelType", "Type", true},
    {7600, "PhysicalProperties", "LabelMaterial", "Material", true},
    {7630, "PhysicalProperties", "GroupSolid", "Solid"},
    {7631, "PhysicalProperties", "SolidNote",
     "Solid elements take their stiffness from the material alone."},
    {7610, "PhysicalProperties", "GroupShell", "Shell"},
    {7611, "PhysicalProperties", "LabelThickness", "Thickness", T::UnitLabel, KwTextLookup::Prop,
     KwUnitKind::Length},
    {7613, "PhysicalProperties", "ButtonAdvancedOptions", "Advanced Options..."},
    {7620, "PhysicalProperties", "GroupBeam", "Beam"},
    {7621, "PhysicalProperties", "LabelElementType", "Element Type", true},
    {7623, "PhysicalProperties", "LabelCrossSection", "Cross Section", true},
    {7625, "PhysicalProperties", "ButtonDefineSection", "Define..."},
    {7625, "PhysicalProperties", "DefineCrossSectionDialog", "Cross Section Definition",
     T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {1417, "PhysicalProperties", "DropDownSolid", "Solid", T::Item},
    {1417, "PhysicalProperties", "DropDownShell", "Shell", T::Item},
    {1417, "PhysicalProperties", "DropDownBeam", "Beam", T::Item},
    {7622, "PhysicalProperties", "DropDownBar", "Bar", T::Item},
    {7622, "PhysicalProperties", "DropDownBeam", "Beam", T::Item},
    {7622, "PhysicalProperties", "DropDownPipe", "Pipe", T::Item},
};

constexpr KwTextRow kPageTexts[] = {
    {7285, "PhysicalProperties", "LabelShellOffset", "Offset", T::UnitLabel, KwTextLookup::Prop,
     KwUnitKind::Length},
    {7287, "PhysicalProperties", "LabelBendingStiffnessRatio", "Bending Stiffness Ratio", true},
    {7289, "PhysicalProperties", "LabelTransverseShearRatio", "Transverse Shear Ratio", true},
    {7286, "PhysicalProperties", "ToolTipShellOffset",
     "Distance of the reference surface from the mid-surface", T::ToolTip},
    {7288, "PhysicalProperties", "ToolTipBendingStiffnessRatio", "12 I / t^3 (1 for a plain plate)",
     T::ToolTip},
    {7290, "PhysicalProperties", "ToolTipTransverseShearRatio",
     "Shear thickness over thickness (5/6 for a plain plate)", T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

// Edits of the page in the order of the logic's shell options.
constexpr int kOptionEdits[P::ShellOptionCount] = {7286, 7288, 7290};
constexpr int kOptionLabels[P::ShellOptionCount] = {7285, 7287, 7289};

} // namespace

CKwMFCUIPhysicalProperty::CKwMFCUIPhysicalProperty(CFMView* view, CKwPhysicalProperty* property,
                                                   KW_UOM* units, int option, QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIPhysicalProperty>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetTypePanels(kPanels, 0);
    SetUnitSystem(units);
    connect(m_ui->defineSection, &QPushButton::clicked, this,
            &CKwMFCUIPhysicalProperty::DefineCrossSection);
    connect(m_ui->advanced, &QPushButton::clicked, this,
            &CKwMFCUIPhysicalProperty::OpenShellAdvancedOptions);
    OnCreate(view, property, nullptr);
    if (!property && option >= CKwPhysicalProperty::Solid && option <= CKwPhysicalProperty::Beam)
        SetValue(FieldType, option);
}

CKwMFCUIPhysicalProperty::~CKwMFCUIPhysicalProperty() = default;

bool CKwMFCUIPhysicalProperty::OnInitDialog()
{
    m_ui->section->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return CKwMFCUIBase::OnInitDialog();
}

int CKwMFCUIPhysicalProperty::DefineCrossSection()
{
    CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return KwMB::IDCANCEL;
    // What was typed (the name goes into a saved section file) is in the edit copy first.
    UpdateObjectData(false);
    CKwDefineCrossSectionDlg dlg(p, GetUnitSystem(), GetFMView(), this);
    const int result = dlg.DoModal();
    if (result == KwMB::IDOK)
        OnSectionDefined();
    return result;
}

int CKwMFCUIPhysicalProperty::OpenShellAdvancedOptions()
{
    if (!GetEditObject())
        return KwMB::IDCANCEL;
    CKwMFCUIShellPropertyAdvancedOptions page(this, GetFMView(), GetUnitSystem(), this);
    return page.DoModal();
}

// --- the shell's advanced options ---

CKwMFCUIShellPropertyAdvancedOptions::CKwMFCUIShellPropertyAdvancedOptions(
    CKwUIPhysicalProperty* owner, CFMView* view, const KW_UOM* units, QWidget* parent)
    : CKwMFCDialog(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIShellPropertyAdvancedOptions>()), m_owner(owner),
      m_units(units)
{
    m_ui->setupUi(this);
    connect(m_ui->ok, &QPushButton::clicked, this, &CKwMFCUIShellPropertyAdvancedOptions::OnOK);
    connect(m_ui->cancel, &QPushButton::clicked, this, &CKwMFCDialog::OnCancel);
}

CKwMFCUIShellPropertyAdvancedOptions::~CKwMFCUIShellPropertyAdvancedOptions() = default;

bool CKwMFCUIShellPropertyAdvancedOptions::OnInitDialog()
{
    for (int i = 0; i < P::ShellOptionCount; ++i)
        KwControl<QLineEdit>(this, kOptionEdits[i])
            ->setText(m_owner ? m_owner->GetShellOptionText(i) : QString());
    m_ui->ok->setEnabled(m_owner != nullptr);
    return CKwMFCDialog::OnInitDialog();
}

void CKwMFCUIShellPropertyAdvancedOptions::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("PhysicalProperties", "TitleShellAdvancedOptions",
                              "Advanced Options"));
    KwApplyTextTable(this, kPageTexts, m_units);
}

void CKwMFCUIShellPropertyAdvancedOptions::OnOK()
{
    if (!m_owner)
        return;
    QString texts[P::ShellOptionCount];
    for (int i = 0; i < P::ShellOptionCount; ++i)
        texts[i] = KwControl<QLineEdit>(this, kOptionEdits[i])->text();
    int bad = 0;
    QString why;
    if (!m_owner->SetShellOptionTexts(texts, &bad, &why)) {
        QString label = KwControl<QLabel>(this, kOptionLabels[bad])->text();
        label.chop(1); // the label's ":"
        const QString text = KwFieldMessage(label, why);
        if (CFMView* v = GetFMView())
            v->ShowBubbleToolTipError(text, 0);
        else
            KwAfxMessageBox(text, KwMB::OK | KwMB::ICONERROR);
        QLineEdit* edit = KwControl<QLineEdit>(this, kOptionEdits[bad]);
        edit->setFocus();
        edit->selectAll();
        return;
    }
    CKwMFCDialog::OnOK();
}
