#include "CKwMFCUISurfaceContact.h"

#include "CFMView.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwMessageBox.h"
#include "KwModelEditorForms.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace {

using T = KwTextTarget;
using U = CKwUISurfaceContact;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 360.
constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},
    {U::CodeID, 274, kEdit},
    {U::CodeFriction, 7764, kEdit},
    {U::CodeMaster, 7766, KwCodeOp::ToolTip},
    {U::CodeSlave, 7768, KwCodeOp::ToolTip},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldKind, CKwMFCUISurfaceContact::kKindCombo, KwBind::ComboIndex},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {7761, "SurfaceContact", "LabelContactType", "Contact Type", true},
    {7763, "SurfaceContact", "LabelFriction", "Friction Coefficient", true},
    {7765, "SurfaceContact", "LabelMaster", "Master Entities"},
    {7767, "SurfaceContact", "LabelSlave", "Slave Entities"},
    {CKwMFCUISurfaceContact::kParametersButton, "SurfaceContact", "ButtonContactParameters",
     "Contact Parameters..."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    // In the order of the contact kinds.
    {CKwMFCUISurfaceContact::kKindCombo, "SurfaceContact", "DropDownBonded", "Bonded", T::Item},
    {CKwMFCUISurfaceContact::kKindCombo, "SurfaceContact", "DropDownSeparating", "Separating",
     T::Item},
    {CKwMFCUISurfaceContact::kKindCombo, "SurfaceContact", "DropDownSlidingNoSeparation",
     "Sliding without Separation", T::Item},
    {CKwMFCUISurfaceContact::kKindCombo, "SurfaceContact", "DropDownWelded", "Welded", T::Item},
    {CKwMFCUISurfaceContact::kKindCombo, "SurfaceContact", "DropDownOffsetBonded",
     "Offset Bonded", T::Item},
};

constexpr KwTextRow kPageTexts[] = {
    {7781, "SurfaceContact", "LabelPenetrationTolerance", "Penetration Tolerance", T::UnitLabel,
     KwTextLookup::Prop, KwUnitKind::Length},
    {7783, "SurfaceContact", "LabelStiffnessFactor", "Stiffness Factor", true},
    {7785, "SurfaceContact", "LabelSearchDistance", "Search Distance", T::UnitLabel,
     KwTextLookup::Prop, KwUnitKind::Length},
    {7782, "SurfaceContact", "TooltipPenetrationTolerance",
     "Overlap of the two sides still taken as touching", T::ToolTip},
    {7784, "SurfaceContact", "TooltipStiffnessFactor",
     "Scales the contact stiffness (1 for the default)", T::ToolTip},
    {7786, "SurfaceContact", "TooltipSearchDistance",
     "How far apart the two sides may be and still come into contact", T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

} // namespace

CKwMFCUISurfaceContact::CKwMFCUISurfaceContact(CFMView* view, CKwSurfaceContact* contact,
                                               CKwAnalysis* analysis, int option, KW_UOM* units,
                                               QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent), m_analysis(analysis)
{
    QVBoxLayout* outer = KwForm::DialogLayout(this);
    QGridLayout* top = KwForm::FormGrid(outer);
    KwForm::NameAndID(this, top);
    KwForm::Row(top, KwForm::Label(this, 7761), KwForm::Combo(this, kKindCombo), nullptr, true);
    KwForm::Row(top, KwForm::Label(this, 7763), KwForm::NumberEdit(this, 7764));
    outer->addWidget(KwForm::Label(this, 7765));
    m_master = KwForm::SelectionBox(this, 7766);
    outer->addWidget(m_master);
    outer->addWidget(KwForm::Label(this, 7767));
    m_slave = KwForm::SelectionBox(this, 7768);
    outer->addWidget(m_slave);
    KwForm::ButtonRow(this, outer, KwForm::Button(this, kParametersButton));

    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetInitialKind(option);
    // A drop from a list's menu is a drop from that list's side; these run before the base's
    // handler, which is connected when the lists are registered.
    connect(m_master, &CKwMFCNodeElemSelectionBox::entitiesDropped, this,
            [this] { SetPickSide(Master); });
    connect(m_slave, &CKwMFCNodeElemSelectionBox::entitiesDropped, this,
            [this] { SetPickSide(Slave); });
    connect(KwControl<QPushButton>(this, kParametersButton), &QPushButton::clicked, this,
            &CKwMFCUISurfaceContact::OpenContactParameters);
    TargetOnClick(m_master);
    TargetOnClick(m_slave);
    OnCreate(view, contact, nullptr);
}

CKwMFCUISurfaceContact::~CKwMFCUISurfaceContact() = default;

bool CKwMFCUISurfaceContact::OnInitDialog()
{
    SetupSelectionBox(m_master, kFilter, 128);
    SetupSelectionBox(m_slave, kFilter, 128);
    const bool ok = CKwMFCUIBase::OnInitDialog();
    connect(KwControl<QComboBox>(this, kKindCombo), &QComboBox::currentIndexChanged, this,
            &CKwMFCUISurfaceContact::syncFriction);
    return ok;
}

void CKwMFCUISurfaceContact::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    // Each list shows its own side; the base put both sides into whichever list admits them.
    const bool showIds = GetFMView() && GetFMView()->GetShowIDs();
    for (Side side : {Master, Slave}) {
        CKwMFCNodeElemSelectionBox* box = GetBox(side);
        box->ResetContent();
        for (CKwUIEntity* e : GetSideEntities(side))
            box->AddEntity(e, showIds);
        box->FlushAdded();
    }
    syncFriction();
}

void CKwMFCUISurfaceContact::syncFriction()
{
    if (QWidget* friction = KwFindControl(this, 7764))
        friction->setEnabled(TakesFriction());
}

void CKwMFCUISurfaceContact::followActiveBox()
{
    SetPickSide(GetActiveSelectionBox() == m_slave ? Slave : Master);
}

long CKwMFCUISurfaceContact::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    followActiveBox();
    return CKwMFCUIBase::OnEntitiesPicked(entities);
}

long CKwMFCUISurfaceContact::OnEntitiesDropped(QList<CKwUIEntity*>* entities)
{
    if (!m_bNotificationsEnabled || !entities)
        return 0;
    // A drop in the view leaves both sides.
    SetPickSide(Slave);
    OnDeselected(entities);
    SetPickSide(Master);
    const long result = CKwMFCUIBase::OnEntitiesDropped(entities);
    followActiveBox();
    return result;
}

int CKwMFCUISurfaceContact::OpenContactParameters()
{
    if (!GetEditObject())
        return KwMB::IDCANCEL;
    CKwMFCUIContactParameters page(this, GetFMView(), GetUnitSystem(), this);
    return page.DoModal();
}

// --- the contact parameters ---

CKwMFCUIContactParameters::CKwMFCUIContactParameters(CKwUISurfaceContact* owner, CFMView* view,
                                                     const KW_UOM* units, QWidget* parent)
    : CKwMFCDialog(kTemplateId, view, parent), m_owner(owner), m_units(units)
{
    QVBoxLayout* outer = KwForm::DialogLayout(this);
    QGridLayout* grid = KwForm::FormGrid(outer);
    for (int i = 0; i < CKwUISurfaceContact::ParameterCount; ++i)
        KwForm::Row(grid, KwForm::Label(this, kEditFirst - 1 + 2 * i),
                    KwForm::NumberEdit(this, kEditFirst + 2 * i));
    KwForm::ButtonRow(this, outer);
    connect(KwControl<QPushButton>(this, 1), &QPushButton::clicked, this,
            &CKwMFCUIContactParameters::OnOK);
    connect(KwControl<QPushButton>(this, 2), &QPushButton::clicked, this,
            &CKwMFCDialog::OnCancel);
}

CKwMFCUIContactParameters::~CKwMFCUIContactParameters() = default;

bool CKwMFCUIContactParameters::OnInitDialog()
{
    for (int i = 0; i < CKwUISurfaceContact::ParameterCount; ++i)
        KwControl<QLineEdit>(this, kEditFirst + 2 * i)
            ->setText(m_owner ? m_owner->GetParameterText(i) : QString());
    KwControl<QPushButton>(this, 1)->setEnabled(m_owner != nullptr);
    return CKwMFCDialog::OnInitDialog();
}

void CKwMFCUIContactParameters::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("SurfaceContact", "TitleContactParameters", "Contact Parameters"));
    KwApplyTextTable(this, kPageTexts, m_units);
}

void CKwMFCUIContactParameters::OnOK()
{
    if (!m_owner)
        return;
    QString texts[CKwUISurfaceContact::ParameterCount];
    for (int i = 0; i < CKwUISurfaceContact::ParameterCount; ++i)
        texts[i] = KwControl<QLineEdit>(this, kEditFirst + 2 * i)->text();
    int bad = 0;
    QString why;
    if (!m_owner->SetParameterTexts(texts, &bad, &why)) {
        QString label = KwControl<QLabel>(this, kEditFirst - 1 + 2 * bad)->text();
        label.chop(1); // the label's ":"
        const QString text = KwFieldMessage(label, why);
        if (CFMView* v = GetFMView())
            v->ShowBubbleToolTipError(text, 0);
        else
            KwAfxMessageBox(text, KwMB::OK | KwMB::ICONERROR);
        QLineEdit* edit = KwControl<QLineEdit>(this, kEditFirst + 2 * bad);
        edit->setFocus();
        edit->selectAll();
        return;
    }
    CKwMFCDialog::OnOK();
}
