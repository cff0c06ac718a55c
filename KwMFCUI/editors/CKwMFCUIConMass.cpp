#include "CKwMFCUIConMass.h"

#include "CFMView.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "KW_UOM.h"
#include "ui_CKwMFCUIConMass.h"

namespace {

using T = KwTextTarget;
using L = KwTextLookup;
using U = CKwUIConMass;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 353.
constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},
    {U::CodeID, 274, kEdit},
    {U::CodeMass, 7802, kEdit},
    {U::CodeInertiaFirst + 0, 7804, kEdit},
    {U::CodeInertiaFirst + 1, 7805, kEdit},
    {U::CodeInertiaFirst + 2, 7806, kEdit},
    {U::CodeOffsetFirst + 0, 7811, kEdit},
    {U::CodeOffsetFirst + 1, 7812, kEdit},
    {U::CodeOffsetFirst + 2, 7813, kEdit},
    {U::CodeEntities, 1406, KwCodeOp::ToolTip},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldType, 1417, KwBind::TypeCombo},
};

// Filters: points and vertices (0x800E, as every point pick), bodies and parts (0x3000).
constexpr unsigned kPointFilter = 32782;
constexpr unsigned kBodyFilter = 0x3000;

constexpr KwTypePanel kPanels[] = {
    {CKwConMass::PointMass, {7800}, kPointFilter, 0,
     {"Constraints", "TooltipSelectedEntitiesOnlyPointOrVertex", "Select point or vertex"}, {}},
    {CKwConMass::Automatic, {7815}, kBodyFilter, 0,
     {"ConMass", "TooltipAutomaticSelectedEntities", "Select Body"}, {}},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {342, "General", "LabelType", "Type", true},
    {1498, "Constraints", "LabelSelectedEntities", "Selected Entities"},
    {7800, "ConMass", "GroupMassProperties", "Mass Properties"},
    {7801, "ConMass", "LabelMass", "Mass", T::UnitLabel, L::Prop, KwUnitKind::Mass},
    {7803, "ConMass", "LabelMomentsOfInertia", "Moments of Inertia", T::UnitLabel, L::Prop,
     KwUnitKind::MassMomentOfInertia},
    {7810, "ConMass", "LabelOffset", "Offset", T::UnitLabel, L::Prop, KwUnitKind::Length},
    {7807, "General", "LabelX", "X"},
    {7808, "General", "LabelY", "Y"},
    {7809, "General", "LabelZ", "Z"},
    {7804, "ConMass", "LabelInertiaXX", "Ixx", T::ToolTip},
    {7805, "ConMass", "LabelInertiaYY", "Iyy", T::ToolTip},
    {7806, "ConMass", "LabelInertiaZZ", "Izz", T::ToolTip},
    {7815, "ConMass", "LabelAutomaticNote",
     "The mass, inertias and centre of gravity are computed from the body."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {1417, "ConMass", "DropDownPointMass", "Point Mass", T::Item},
    {1417, "ConMass", "DropDownAutomatic", "Automatic (from Body)", T::Item},
};

} // namespace

CKwMFCUIConMass::CKwMFCUIConMass(CKwConMass* mass, CFMView* view, KW_UOM* units,
                                 CKwAnalysis* analysis, QWidget* parent)
    : CKwMFCUIBase(353, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIConMass>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetTypePanels(kPanels, CodeEntities);
    SetUnitSystem(units);
    SetUnits(units);
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyFormGrid(m_ui->topGrid);
    KwStyle::ApplyGroupLayout(m_ui->massGrid);
    const int triple = KwStyle::CharsWidth(fontMetrics(), KwStyle::TripleFieldChars);
    for (QWidget* w : {m_ui->ixx, m_ui->iyy, m_ui->izz, m_ui->offsetX, m_ui->offsetY,
                       m_ui->offsetZ})
        w->setFixedWidth(triple);
    for (QLabel* head : {m_ui->headX, m_ui->headY, m_ui->headZ})
        head->setAlignment(Qt::AlignHCenter);
    SetAnalysis(analysis);
    OnCreate(view, mass, nullptr);
}

CKwMFCUIConMass::~CKwMFCUIConMass() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUIConMass::GetSelectionBox() const { return m_ui->selection; }

bool CKwMFCUIConMass::OnInitDialog()
{
    SetupSelectionBox(m_ui->selection, kPointFilter, 128);
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUIConMass::OnTypeLeaving(int)
{
    // What was typed into the mass fields stays when the user looks at the other type.
    CKwUIConMass::UpdateObjectData(true);
}

int CKwMFCUIConMass::OnTypeRowChosen(int row)
{
    // A part document has no other body to stand in for: the type stays as it was, and so do
    // the picks it holds.
    int stored = CKwConMass::PointMass;
    GetValue(FieldType, stored);
    if (GetTypeFromSelection(row) == CKwConMass::Automatic && stored != CKwConMass::Automatic &&
        IsPartDocument(GetModel())) {
        ShowAdvisory("ConMass", "ConmassNotSupportedForPart",
                     "Automatic concentrated mass is not supported in part documents.");
        return GetSelectionFromType(stored);
    }
    return row;
}

void CKwMFCUIConMass::OnTypeChanged(int)
{
    // The logic dropped the picks the type does not take; the box shows what is left.
    CKwMFCNodeElemSelectionBox* box = m_ui->selection;
    box->ResetContent();
    const bool ids = GetFMView() && GetFMView()->GetShowIDs();
    for (CKwUIEntity* e : GetSelectedEntities())
        box->AddEntity(e, ids);
    box->FlushAdded();
}
