#include "CKwMFCUIRestraint.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwColorSwatch.h"
#include "CKwHideMembersButton.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "ui_CKwMFCUIRestraint.h"

namespace {

using T = KwTextTarget;
using R = CKwUIRestraint;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 368.
constexpr KwControlCode kControlCodes[] = {
    {R::CodeName, 273, kEdit},
    {R::CodeID, 274, kEdit},
    {R::CodeCoordSystems, 1487, KwCodeOp::Items},
    {R::CodeTemperature, 1531, kEdit},
    {R::CodeSubcaseItems, 1535, KwCodeOp::Items},
    {R::CodeSubcaseSelection, 1535, KwCodeOp::Select},
    {R::CodeEntities, 1406, KwCodeOp::ToolTip},
    {R::CodeColor, 1734, KwCodeOp::Color},
};

// Fields of the logic shown by controls that have no control code.
constexpr KwValueBinding kBindings[] = {
    {R::FieldType, 1417, KwBind::TypeCombo},
    {R::FieldCoordSystem, 1487, KwBind::ComboIndex},
    {R::FieldDofFirst + 0, 279, KwBind::Check}, {R::FieldDofFirst + 1, 280, KwBind::Check},
    {R::FieldDofFirst + 2, 281, KwBind::Check}, {R::FieldDofFirst + 3, 282, KwBind::Check},
    {R::FieldDofFirst + 4, 283, KwBind::Check}, {R::FieldDofFirst + 5, 284, KwBind::Check},
    {R::FieldPinFirst + 0, 7675, KwBind::Check}, {R::FieldPinFirst + 1, 7676, KwBind::Check},
    {R::FieldPinFirst + 2, 7677, KwBind::Check},
    {R::FieldSize, 1728, KwBind::Slider},
    {R::FieldDensity, 1730, KwBind::Slider},
    {R::FieldColor, 1734, KwBind::Color},
};

constexpr KwPrompt kPromptGeometry{"Constraints", "TooltipSelectedEntities",
                                   "Select face, edge, or vertex"};
constexpr KwPrompt kPromptFaces{"MeshControl", "TooltipSelectFaces", "Select Faces"};
constexpr unsigned kHideRefill = KwPanelFlag::HideCoordSystems | KwPanelFlag::Refill;

// What each constraint type shows: panel, filter (vertices, edges, faces: 33278; points and
// vertices: 32782; faces: 0x40; bodies, faces, edges in an explicit analysis: 4592), prompt.
constexpr KwTypePanel kPanels[] = {
    {CKwRestraint::Structural, {7116}, 33278, 0, kPromptGeometry, {}, kHideRefill},
    {CKwRestraint::Thermal, {7117}, 33278, 0, kPromptGeometry, {}, KwPanelFlag::HideCoordSystems},
    {CKwRestraint::ResponseSpectrum, {7116}, 32782, 0,
     {"Constraints", "TooltipSelectedEntitiesOnlyPointOrVertex", "Select point or vertex"}, {},
     kHideRefill},
    {CKwRestraint::Pin, {7675, 7676, 7677}, 0x40, 0, kPromptFaces, {}, 0},
    {CKwRestraint::Frictionless, {}, 0x40, 0, kPromptFaces, {}, 0},
    {CKwRestraint::RigidExplicit, {7116}, 33278, 4592, kPromptGeometry,
     {"Constraints", "TooltipSelectedEntities3", "Select body, face or edge"}, kHideRefill},
};

bool explicitEnabled() { return TheApplication && TheApplication->IsExplicitEnabledInTechPreview(); }

// Captions in order; the X symmetry key serves both the caption and the button text.
constexpr KwTextRow kTexts[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {342, "General", "LabelType", "Type", true},
    {7408, "Subcases", "TreeCategoryText", "Subcases", true, KwTextLookup::Tree},
    {1498, "Constraints", "LabelSelectedEntities", "Selected Entities"},
    {1726, "Load", "GroupDisplay", "Display Options"},
    {1727, "General", "LabelSize", "Size"},
    {1729, "General", "LabelDensity", "Density"},
    {1731, "General", "LabelColor", "Color"},
    {7116, "Constraints", "GroupDegreesofFreedom", "Degrees of Freedom"},
    {1486, "General", "LabelCoordinateSystem", "Coordinate System"},
    {7675, "Constraints", "CheckboxFixRadialDirection", "Fix Radial Direction"},
    {7676, "Constraints", "CheckboxFixAxialDirection", "Fix Axial Direction"},
    {7677, "Constraints", "CheckboxFixTangentialDirection", "Fix Tangential Direction"},
    {1532, "Constraints", "ButtonFixed", "Fixed"},
    {1532, "Constraints", "ButtonFixed", "Fixed", T::ToolTip},
    {7497, "Constraints", "ButtonFixed", "Fixed"},
    {276, "Constraints", "ButtonFree", "Free"},
    {276, "Constraints", "ButtonFree", "Free", T::ToolTip},
    {7499, "Constraints", "ButtonFree", "Free"},
    {278, "Constraints", "ButtonPinned", "No Translation"},
    {278, "Constraints", "ButtonPinned", "No Translation", T::ToolTip},
    {7498, "Constraints", "ButtonPinned", "No Translation"},
    {277, "Constraints", "ButtonNoRotation", "No Rotation"},
    {277, "Constraints", "ButtonNoRotation", "No Rotation", T::ToolTip},
    {7500, "Constraints", "ButtonNoRotation", "No Rotation"},
    {7496, "Constraints", "ButtonXSymmetry", "Symmetry"},
    {1524, "Constraints", "ButtonXSymmetry", "X"},
    {1525, "Constraints", "ButtonYSymmetry", "Y"},
    {1526, "Constraints", "ButtonZSymmetry", "Z"},
    {7495, "Constraints", "ButtonXAntiSym", "AntiSymmetry"},
    {1527, "Constraints", "ButtonXAntiSymAxis", "X"},
    {1528, "Constraints", "ButtonYAntiSymAxis", "Y"},
    {1529, "Constraints", "ButtonZAntiSymAxis", "Z"},
    {279, "Constraints", "ToolTipTranslationX", "Translation X", T::ToolTip},
    {280, "Constraints", "ToolTipTranslationY", "Translation Y", T::ToolTip},
    {281, "Constraints", "ToolTipTranslationZ", "Translation Z", T::ToolTip},
    {282, "Constraints", "ToolTipRotationX", "Rotation X", T::ToolTip},
    {283, "Constraints", "ToolTipRotationY", "Rotation Y", T::ToolTip},
    {284, "Constraints", "ToolTipRotationZ", "Rotation Z", T::ToolTip},
    {7117, "Constraints", "GroupThermal", "Thermal"},
    {1530, "Constraints", "LabelThermalConstraint", "Temperature", T::UnitLabel,
     KwTextLookup::Prop, KwUnitKind::Temperature},
    {7468, "PhysicalProperties", "RadioStructuralMember", "Structural Member"},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    // The type list is in another order than the type codes; the logic maps between them.
    {1417, "Constraints", "DropDownStructural", "Structural", T::Item},
    {1417, "Constraints", "DropDownPin", "Pin", T::Item},
    {1417, "Constraints", "DropDownFrictionless", "Frictionless", T::Item},
    {1417, "Constraints", "DropDownResponseSpectrum", "Response Spectrum", T::Item},
    {1417, "Constraints", "DropDownThermal", "Thermal", T::Item},
    {1417, "Constraints", "DropDownRigidExplicit", "Rigid(Explicit", T::Item, KwTextLookup::Prop,
     0, explicitEnabled},
};

// Pictures of the degree-of-freedom buttons.
constexpr std::pair<int, const char*> kPictures[] = {
    {1532, ":/kwmfcui/icons/dof-fixed-7267.svg"}, {278, ":/kwmfcui/icons/dof-pinned-7266.svg"},
    {276, ":/kwmfcui/icons/dof-free-7265.svg"},   {277, ":/kwmfcui/icons/dof-norotation-7268.svg"},
    {279, ":/kwmfcui/icons/axis-x-7278.svg"},     {280, ":/kwmfcui/icons/axis-y-7279.svg"},
    {281, ":/kwmfcui/icons/axis-z-7280.svg"},     {282, ":/kwmfcui/icons/axis-x-7278.svg"},
    {283, ":/kwmfcui/icons/axis-y-7279.svg"},     {284, ":/kwmfcui/icons/axis-z-7280.svg"},
};

// Preset buttons and the degrees of freedom each holds.
constexpr std::pair<int, unsigned> kPresets[] = {
    {1532, CKwMFCUIRestraint::PresetFixed},  {276, CKwMFCUIRestraint::PresetFree},
    {278, CKwMFCUIRestraint::PresetNoTranslation}, {277, CKwMFCUIRestraint::PresetNoRotation},
    {1524, CKwMFCUIRestraint::SymmetryX},    {1525, CKwMFCUIRestraint::SymmetryY},
    {1526, CKwMFCUIRestraint::SymmetryZ},    {1527, CKwMFCUIRestraint::AntiSymmetryX},
    {1528, CKwMFCUIRestraint::AntiSymmetryY}, {1529, CKwMFCUIRestraint::AntiSymmetryZ},
};

} // namespace

CKwMFCUIRestraint::CKwMFCUIRestraint(CKwRestraint* restraint, CKwSubCase* subcase, int option,
                                     CFMView* view, KW_UOM* units, CKwAnalysis* analysis,
                                     QWidget* parent)
    : CKwMFCUIBase(368, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIRestraint>()),
      m_option(option)
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetTypePanels(kPanels, CodeEntities);
    SetSubcaseList(1535, CodeSubcaseSelection);
    SetUpdateGate(7675);
    SetUnitSystem(units);
    for (const auto& [id, mask] : kPresets)
        connect(KwControl<QAbstractButton>(this, id), &QAbstractButton::clicked, this,
                [this, m = mask] { applyDofMask(m); });
    ConnectHideMembersButton(m_ui->hideMembers);
    SetAnalysis(analysis);
    OnCreate(view, restraint, subcase);
}

CKwMFCUIRestraint::~CKwMFCUIRestraint() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUIRestraint::GetSelectionBox() const { return m_ui->selection; }
unsigned CKwMFCUIRestraint::GetColor() const { return m_ui->color->GetColor(); }
bool CKwMFCUIRestraint::AreStructuralMembersShown() const
{
    return m_ui->hideMembers->AreMembersShown();
}
QString CKwMFCUIRestraint::GetHideMembersPicture() const { return m_ui->hideMembers->GetPicture(); }

unsigned CKwMFCUIRestraint::GetDofMask() const
{
    unsigned mask = 0;
    for (int i = 0; i < 6; ++i)
        if (KwControl<QAbstractButton>(this, 279 + i)->isChecked())
            mask |= 1u << i;
    return mask;
}

void CKwMFCUIRestraint::UpdateObjectData(bool checkOnly)
{
    if (UpdateGateAllows(checkOnly))
        CKwUIRestraint::UpdateObjectData(checkOnly);
}

bool CKwMFCUIRestraint::OnInitDialog()
{
    for (const auto& [id, path] : kPictures)
        KwControl<QAbstractButton>(this, id)->setIcon(KwIcon(QString::fromLatin1(path)));
    for (int id = 279; id <= 284; ++id)
        // A held direction must be told apart from a free one at a glance.
        KwFindControl(this, id)->setStyleSheet(QStringLiteral(
            "QToolButton:checked{background:#aed6f1;border:1px solid #2e86c1;border-radius:3px;}"));
    m_ui->iconTranslation->setPixmap(
        KwIcon(QStringLiteral(":/kwmfcui/icons/dof-translation.svg")).pixmap(QSize(20, 20)));
    m_ui->iconRotation->setPixmap(
        KwIcon(QStringLiteral(":/kwmfcui/icons/dof-rotation.svg")).pixmap(QSize(20, 20)));
    SetupSelectionBox(m_ui->selection, 33278, 128);
    {
        // A range change clamps the value; that is not the user's choice of a size.
        const QSignalBlocker b1(m_ui->size), b2(m_ui->density);
        m_ui->size->setRange(1, 10);
        m_ui->density->setRange(1, 20);
    }
    return CKwMFCUIBase::OnInitDialog();
}

void CKwMFCUIRestraint::OnTypeChanged(int type)
{
    const CKwAnalysis* analysis = GetAnalysis();
    const bool isExplicit = IsExplicitAnalysis();
    const int code = analysis ? analysis->GetAnalysisTypeCode() : 0;
    if (isExplicit && GetEditObject() && GetEditObject()->IsThermal())
        ShowAdvisory("Constraints", "ThermalConstraintsNotSupported",
                     "Thermal constraints not supported in Explicit Dynamics analysis.");
    const bool incompatible = (type == CKwRestraint::ResponseSpectrum && code != 20) ||
                              (type == CKwRestraint::Thermal && code == 20) ||
                              (type == CKwRestraint::RigidExplicit && !isExplicit);
    if (incompatible) {
        ShowAdvisory("FMView", "IncompatibleConstraint",
                     "The constraint selected is not compatible with this analysis.");
        SelectTypeFromEntity();
    }
}

void CKwMFCUIRestraint::applyDofMask(unsigned mask)
{
    for (int i = 0; i < 6; ++i)
        SetValue(FieldDofFirst + i, (mask >> i) & 1u);
    FillBoundControls();
    Display(1);
}

void CKwMFCUIRestraint::OnHideStructuralMembers(bool shown)
{
    // The constraint symbols are drawn again over what the view now shows.
    DeleteRestraintDrawList();
    CKwMFCUIBase::OnHideStructuralMembers(shown);
}
