#include "CKwMFCUICoordSystem.h"

#include "CFMView.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "KwControls.h"
#include "KwStyle.h"
#include "KW_UOM.h"
#include "ui_CKwMFCUICoordSystem.h"

#include <QLabel>
#include <algorithm>
#include <QLineEdit>

namespace {

using T = KwTextTarget;
using L = KwTextLookup;
using U = CKwUICoordSystem;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

constexpr KwControlCode kControlCodes[] = {
    {U::CodeName, 273, kEdit},
    {U::CodeID, 274, kEdit},
    {U::CodeOriginFirst + 0, 7915, kEdit}, {U::CodeOriginFirst + 1, 7916, kEdit},
    {U::CodeOriginFirst + 2, 7917, kEdit},
    {U::CodeZAxisFirst + 0, 7919, kEdit},  {U::CodeZAxisFirst + 1, 7920, kEdit},
    {U::CodeZAxisFirst + 2, 7921, kEdit},
    {U::CodeXAxisFirst + 0, 7923, kEdit},  {U::CodeXAxisFirst + 1, 7924, kEdit},
    {U::CodeXAxisFirst + 2, 7925, kEdit},
    {U::CodePointFirst + 0, 7935, kEdit},  {U::CodePointFirst + 1, 7936, kEdit},
    {U::CodePointFirst + 2, 7937, kEdit},
    {U::CodePointFirst + 3, 7939, kEdit},  {U::CodePointFirst + 4, 7940, kEdit},
    {U::CodePointFirst + 5, 7941, kEdit},
    {U::CodePointFirst + 6, 7943, kEdit},  {U::CodePointFirst + 7, 7944, kEdit},
    {U::CodePointFirst + 8, 7945, kEdit},
    {U::CodeEntities, 1406, KwCodeOp::ToolTip},
    {U::CodeReferenceItems, 7902, KwCodeOp::Items},
};

constexpr KwValueBinding kBindings[] = {
    {U::FieldDefinition, 7904, KwBind::TypeCombo},
    {U::FieldType, 1417, KwBind::ComboIndex},
    {U::FieldReference, 7902, KwBind::ComboIndex},
};

// Points and vertices (0x800E, as every point pick); the picked definition's box shows them.
constexpr unsigned kPointFilter = 32782;
constexpr KwPrompt kPromptPoint{"CoordinateSystem", "LabelSelectPoint", "Select a point or a vertex"};
constexpr KwTypePanel kPanels[] = {
    {CKwCoordinateSystem::OriginAndAxes, {7910}, kPointFilter, 0, kPromptPoint, {}},
    {CKwCoordinateSystem::ThreePoints, {7930}, kPointFilter, 0, kPromptPoint, {}},
    {CKwCoordinateSystem::PickedPoint, {7950}, kPointFilter, 0, kPromptPoint, {}},
};

constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {342, "General", "LabelType", "Type", true},
    {7901, "CoordinateSystem", "LabelReference", "Reference", true},
    {7903, "CoordinateSystem", "LabelDefinedBy", "Defined by", true},
    {7905, "CoordinateSystem", "GroupPlacement", "Placement"},
    {7911, "General", "LabelX", "X"}, {7912, "General", "LabelY", "Y"},
    {7913, "General", "LabelZ", "Z"}, {7931, "General", "LabelX", "X"},
    {7932, "General", "LabelY", "Y"}, {7933, "General", "LabelZ", "Z"},
    {7914, "CoordinateSystem", "LabelOrigin", "Origin", T::UnitLabel, L::Prop, KwUnitKind::Length},
    {7918, "CoordinateSystem", "LabelZAxis", "Z Axis", true},
    {7922, "CoordinateSystem", "LabelXAxis", "X Axis", true},
    {7934, "CoordinateSystem", "LabelOrigin", "Origin", T::UnitLabel, L::Prop, KwUnitKind::Length},
    {7938, "CoordinateSystem", "LabelPointOnXAxis", "Point on X Axis", T::UnitLabel, L::Prop,
     KwUnitKind::Length},
    {7942, "CoordinateSystem", "LabelPointInXYPlane", "Point in XY Plane", T::UnitLabel, L::Prop,
     KwUnitKind::Length},
    {7951, "CoordinateSystem", "LabelPointOrVertex", "Point or Vertex"},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {1417, "CoordinateSystem", "DropDownRectangular", "Rectangular", T::Item},
    {1417, "CoordinateSystem", "DropDownCylindrical", "Cylindrical", T::Item},
    {1417, "CoordinateSystem", "DropDownSpherical", "Spherical", T::Item},
    {7904, "CoordinateSystem", "DropDownOriginAndAxes", "Origin and Axes", T::Item},
    {7904, "CoordinateSystem", "DropDownThreePoints", "Three Points", T::Item},
    {7904, "CoordinateSystem", "DropDownPickedPoint", "Point or Vertex", T::Item},
};

} // namespace

CKwMFCUICoordSystem::CKwMFCUICoordSystem(CKwCoordinateSystem* system, CFMView* view,
                                         KW_UOM* units, QWidget* parent)
    : CKwMFCUIBase(7012, view, parent), m_ui(std::make_unique<Ui::CKwMFCUICoordSystem>())
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
    KwStyle::ApplyGroupLayout(m_ui->placementBox);
    const int triple = KwStyle::CharsWidth(fontMetrics(), KwStyle::TripleFieldChars);
    for (QGridLayout* grid : {m_ui->axesGrid, m_ui->pointsGrid}) {
        grid->setHorizontalSpacing(KwStyle::ColumnSpacing);
        grid->setVerticalSpacing(KwStyle::RowSpacing);
    }
    for (QLineEdit* e : findChildren<QLineEdit*>())
        if (e != m_ui->name && e != m_ui->id)
            e->setFixedWidth(triple);
    for (QLabel* head : {m_ui->axesHeadX, m_ui->axesHeadY, m_ui->axesHeadZ, m_ui->pointsHeadX,
                         m_ui->pointsHeadY, m_ui->pointsHeadZ})
        head->setAlignment(Qt::AlignHCenter);
    OnCreate(view, system, nullptr);
}

CKwMFCUICoordSystem::~CKwMFCUICoordSystem() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUICoordSystem::GetSelectionBox() const
{
    return m_ui->selection;
}

bool CKwMFCUICoordSystem::OnInitDialog()
{
    m_ui->selection->SetSingleSelection(true);
    SetupSelectionBox(m_ui->selection, kPointFilter, 128);
    const bool ok = CKwMFCUIBase::OnInitDialog();
    // The two coordinate panels share one label column as wide as the language shown needs,
    // so that switching keeps the fields where they were.
    const int labelWidth = std::max({m_ui->axesLabelOrigin->sizeHint().width(),
                                     m_ui->pointsLabelOnX->sizeHint().width(),
                                     m_ui->pointsLabelInXY->sizeHint().width()});
    m_ui->axesGrid->setColumnMinimumWidth(0, labelWidth);
    m_ui->pointsGrid->setColumnMinimumWidth(0, labelWidth);
    return ok;
}

void CKwMFCUICoordSystem::OnTypeLeaving(int)
{
    // What was typed into the panel being left stays in the edit copy.
    CKwUICoordSystem::UpdateObjectData(true);
}

long CKwMFCUICoordSystem::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    const long handled = CKwMFCUIBase::OnEntitiesPicked(entities);
    // The box shows the point the logic placed the system at, and nothing it refused.
    CKwMFCNodeElemSelectionBox* box = m_ui->selection;
    box->ResetContent();
    const bool ids = GetFMView() && GetFMView()->GetShowIDs();
    for (CKwUIEntity* e : GetSelectedEntities())
        box->AddEntity(e, ids);
    box->FlushAdded();
    return handled;
}
