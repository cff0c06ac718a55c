#include "CKwMFCUIConnector.h"

#include "CFMView.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "KW_UOM.h"
#include "ui_CKwMFCUIConnector.h"

#include <QLabel>
#include <algorithm>

namespace {

using T = KwTextTarget;
using L = KwTextLookup;
using U = CKwUIConnector;
using C = CKwConnector;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},          {U::CodeID, 274, kEdit},
    {U::CodeArea, 7852, kEdit},         {U::CodeStiffness, 7855, kEdit},
    {U::CodeDiameter, 7858, kEdit},     {U::CodePreload, 7865, kEdit},
    {U::CodeHeadDiameter, 7873, kEdit}, {U::CodeFriction, 7875, kEdit},
    {U::CodeMaterialItems, 7862, KwCodeOp::Items},
    {U::CodeEnd1, 7842, KwCodeOp::ToolTip},
    {U::CodeEnd2, 7844, KwCodeOp::ToolTip},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldType, 1417, KwBind::TypeCombo},
    {U::FieldMaterial, 7862, KwBind::ComboIndex},
    {U::FieldTensionOnly, 7871, KwBind::Check},
};

constexpr KwPrompt kPromptPoint{"Constraints", "TooltipSelectedEntitiesOnlyPointOrVertex",
                                "Select point or vertex"};
// Panels: material 7860, area 7850, stiffness 7853, diameter 7856, preload 7863, rigid note.
constexpr KwTypePanel kPanels[] = {
    {C::Rod, {7860, 7850}, 32782, 0, kPromptPoint, {}},
    {C::Cable, {7860, 7850}, 32782, 0, kPromptPoint, {}},
    {C::Spring, {7853, 7863}, 32782, 0, kPromptPoint, {}},
    {C::Bolt, {7860, 7856, 7863}, 0x10, 0,
     {"Connector", "TooltipSelectHoleEdges", "Select the edges of a hole"}, {}},
    {C::Rigid, {7866}, 33278, 0, {"Constraints", "TooltipSelectedEntities",
                                  "Select face, edge, or vertex"}, {}},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {342, "General", "LabelType", "Type", true},
    {7841, "Connector", "LabelEnd1", "End 1"},
    {7843, "Connector", "LabelEnd2", "End 2"},
    {7845, "Connector", "GroupDefinition", "Definition"},
    {7861, "General", "LabelMaterial", "Material", true},
    {7851, "Connector", "LabelArea", "Area", T::UnitLabel, L::Prop, KwUnitKind::Area},
    {7854, "Connector", "LabelAxialStiffness", "Axial Stiffness", T::UnitLabel, L::Prop,
     KwUnitKind::Stiffness},
    {7857, "Connector", "LabelDiameter", "Diameter", T::UnitLabel, L::Prop, KwUnitKind::Length},
    {7864, "Connector", "LabelPreload", "Preload", T::UnitLabel, L::Prop, KwUnitKind::Force},
    {7866, "Connector", "LabelRigidNote",
     "A rigid link holds both ends together in all six degrees of freedom."},
    {7870, "Loads", "GroupAdvancedOptions", "Advanced Options"},
    {7871, "Connector", "CheckboxTensionOnly", "Tension Only"},
    {7872, "Connector", "LabelHeadDiameter", "Head Diameter", T::UnitLabel, L::Prop,
     KwUnitKind::Length},
    {7874, "Connector", "LabelFrictionCoefficient", "Friction Coefficient", true},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {1417, "Connector", "DropDownRod", "Rod", T::Item},
    {1417, "Connector", "DropDownCable", "Cable", T::Item},
    {1417, "Connector", "DropDownSpring", "Spring", T::Item},
    {1417, "Connector", "DropDownBolt", "Bolt", T::Item},
    {1417, "Connector", "DropDownRigid", "Rigid", T::Item},
};

} // namespace

CKwMFCUIConnector::CKwMFCUIConnector(CKwConnector* connector, CFMView* view, KW_UOM* units,
                                     CKwAnalysis* analysis, QWidget* parent)
    : CKwMFCUIBase(7001, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIConnector>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetTypePanels(kPanels, CodeEnd1);
    SetUnitSystem(units);
    SetUnits(units);
    KwStyle::ApplyDialogLayout(m_ui->outer);
    m_ui->mainBox->setSpacing(KwStyle::GroupSpacing);
    KwStyle::ApplyFormGrid(m_ui->topGrid);
    KwStyle::ApplyGroupLayout(m_ui->definitionBox);
    KwStyle::ApplyGroupLayout(m_ui->advGrid);
    m_ui->advGrid->setColumnStretch(2, 1);
    m_ui->endGrid->setHorizontalSpacing(KwStyle::ColumnSpacing);
    m_ui->endGrid->setVerticalSpacing(KwStyle::RowSpacing);
    for (QGridLayout* g : {m_ui->materialGrid, m_ui->areaGrid, m_ui->stiffnessGrid,
                           m_ui->diameterGrid, m_ui->preloadGrid}) {
        // Fields stand next to their labels; the spare width goes right of them.
        g->setHorizontalSpacing(KwStyle::ColumnSpacing);
        g->setColumnStretch(2, 1);
    }
    m_ui->materialCombo->setMinimumWidth(KwStyle::CharsWidth(fontMetrics(), 24));
    const int number = KwStyle::CharsWidth(fontMetrics(), KwStyle::NumberFieldChars);
    for (QWidget* w : {m_ui->area, m_ui->stiffness, m_ui->diameter, m_ui->preload,
                       m_ui->headDiameter, m_ui->friction})
        w->setFixedWidth(number);
    connect(m_ui->advancedToggle, &QPushButton::clicked, this,
            &CKwMFCUIConnector::ToggleAdvancedOptions);
    SetAnalysis(analysis);
    OnCreate(view, connector, nullptr);
}

CKwMFCUIConnector::~CKwMFCUIConnector() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUIConnector::GetEndBox(int end) const
{
    return end == 2 ? m_ui->end2 : m_ui->end1;
}

bool CKwMFCUIConnector::IsAdvancedShown() const { return !m_ui->groupAdvanced->isHidden(); }

bool CKwMFCUIConnector::OnInitDialog()
{
    SetupSelectionBox(m_ui->end1, FilterOf(C::Bolt), 128);
    RegisterSelectionBox(m_ui->end2);
    // Clicking into an end's box makes it the target of the next picks.
    TargetOnClick(m_ui->end1, [this] { return SetValue(FieldPickTarget, 1) != 0; });
    TargetOnClick(m_ui->end2, [this] { return SetValue(FieldPickTarget, 2) != 0; });
    const bool ok = CKwMFCUIBase::OnInitDialog();
    // The value panels share one label column as wide as the language shown needs.
    int labelWidth = 0;
    for (QLabel* l : {m_ui->materialLabel, m_ui->areaLabel, m_ui->stiffnessLabel,
                      m_ui->diameterLabel, m_ui->preloadLabel})
        labelWidth = std::max(labelWidth, l->sizeHint().width());
    for (QGridLayout* g : {m_ui->materialGrid, m_ui->areaGrid, m_ui->stiffnessGrid,
                           m_ui->diameterGrid, m_ui->preloadGrid})
        g->setColumnMinimumWidth(0, labelWidth);
    // The editor opens short: the first toggle leaves the long form, the second hides the
    // advanced part again.
    SetFormToggle({{m_ui->mainPart, {}, {}}, {m_ui->ok, {}, {}}, {m_ui->cancel, {}, {}}},
                  m_ui->advancedToggle, {}, {});
    ToggleForm();
    ToggleForm();
    m_ui->advancedToggle->setText(QStringLiteral(" >> "));
    return ok;
}

void CKwMFCUIConnector::ToggleAdvancedOptions()
{
    m_ui->advancedToggle->setText(ToggleForm() ? QStringLiteral(" << ") : QStringLiteral(" >> "));
}

void CKwMFCUIConnector::OnObjectDataLoaded()
{
    CKwMFCUIBase::OnObjectDataLoaded();
    refillEnds();
}

void CKwMFCUIConnector::OnTypeLeaving(int)
{
    // Values typed for the kind being left stay in the edit copy.
    CKwUIConnector::UpdateObjectData(true);
}

void CKwMFCUIConnector::OnTypeChanged(int)
{
    refillEnds();
}

void CKwMFCUIConnector::refillEnds()
{
    const CKwConnector* c = GetEditObject();
    if (!c)
        return;
    // Both ends take what the kind takes; each box lists its own end.
    m_ui->end2->SetFilter(m_ui->end1->GetFilter());
    SetControlToolTip(CodeEnd2, m_ui->end1->toolTip());
    const bool ids = GetFMView() && GetFMView()->GetShowIDs();
    for (auto [box, list] : {std::pair{m_ui->end1, &c->m_end1}, {m_ui->end2, &c->m_end2}}) {
        box->ResetContent();
        for (CKwUIEntity* e : *list)
            box->AddEntity(e, ids);
        box->FlushAdded();
    }
    // A cable carries tension only; a rod may be told to. Head and friction are a bolt's.
    m_ui->tensionOnly->setEnabled(c->m_type == C::Rod);
    for (QWidget* w : {static_cast<QWidget*>(m_ui->labelHead), static_cast<QWidget*>(m_ui->headDiameter),
                       static_cast<QWidget*>(m_ui->labelFriction), static_cast<QWidget*>(m_ui->friction)})
        w->setEnabled(c->m_type == C::Bolt);
    FillBoundControls();
}

long CKwMFCUIConnector::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    SetValue(FieldPickTarget, GetActiveSelectionBox() == m_ui->end2 ? 2 : 1);
    const long handled = CKwMFCUIBase::OnEntitiesPicked(entities);
    // End 1 held, end 2 empty: the next pick is end 2's.
    const CKwConnector* c = GetEditObject();
    if (c && GetPickTarget() == 1 && !c->m_end1.isEmpty() && c->m_end2.isEmpty()) {
        SetActiveSelectionBox(m_ui->end2);
        SetValue(FieldPickTarget, 2);
    }
    return handled;
}
