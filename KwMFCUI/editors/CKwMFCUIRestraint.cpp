#include "CKwMFCUIRestraint.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwColorSwatch.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"
#include "KwCustomColors.h"
#include "KwLangText.h"
#include "ui_CKwMFCUIRestraint.h"

#include <QColorDialog>

namespace {

constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 368.
constexpr KwControlCode kControlCodes[] = {
    {CKwUIRestraint::CodeName, 273, kEdit},
    {CKwUIRestraint::CodeID, 274, kEdit},
    {CKwUIRestraint::CodeCoordSystems, 1487, KwCodeOp::Items},
    {CKwUIRestraint::CodeTemperature, 1531, kEdit},
    {CKwUIRestraint::CodeSubcaseItems, 1535, KwCodeOp::Items},
    {CKwUIRestraint::CodeSubcaseSelection, 1535, KwCodeOp::Select},
    {CKwUIRestraint::CodeEntities, 1406, KwCodeOp::ToolTip},
    {CKwUIRestraint::CodeColor, 1734, KwCodeOp::Color},
};

// Captions in order; the X symmetry key serves both the caption and the button text.
constexpr KwTextRow kLabels[] = {
    {1419, "General", "LabelName", "Name", true},
    {343, "General", "LabelID", "ID", true},
    {342, "General", "LabelType", "Type", true},
    {1498, "Constraints", "LabelSelectedEntities", "Selected Entities", false},
    {1726, "Load", "GroupDisplay", "Display Options", false},
    {1727, "General", "LabelSize", "Size", false},
    {1729, "General", "LabelDensity", "Density", false},
    {1731, "General", "LabelColor", "Color", false},
    {7116, "Constraints", "GroupDegreesofFreedom", "Degrees of Freedom", false},
    {1486, "General", "LabelCoordinateSystem", "Coordinate System", false},
    {7675, "Constraints", "CheckboxFixRadialDirection", "Fix Radial Direction", false},
    {7676, "Constraints", "CheckboxFixAxialDirection", "Fix Axial Direction", false},
    {7677, "Constraints", "CheckboxFixTangentialDirection", "Fix Tangential Direction", false},
    {1532, "Constraints", "ButtonFixed", "Fixed", false},
    {7497, "Constraints", "ButtonFixed", "Fixed", false},
    {276, "Constraints", "ButtonFree", "Free", false},
    {7499, "Constraints", "ButtonFree", "Free", false},
    {278, "Constraints", "ButtonPinned", "No Translation", false},
    {7498, "Constraints", "ButtonPinned", "No Translation", false},
    {277, "Constraints", "ButtonNoRotation", "No Rotation", false},
    {7500, "Constraints", "ButtonNoRotation", "No Rotation", false},
    {7496, "Constraints", "ButtonXSymmetry", "Symmetry", false},
    {1524, "Constraints", "ButtonXSymmetry", "X", false},
    {1525, "Constraints", "ButtonYSymmetry", "Y", false},
    {1526, "Constraints", "ButtonZSymmetry", "Z", false},
    {7495, "Constraints", "ButtonXAntiSym", "AntiSymmetry", false},
    {1527, "Constraints", "ButtonXAntiSymAxis", "X", false},
    {1528, "Constraints", "ButtonYAntiSymAxis", "Y", false},
    {1529, "Constraints", "ButtonZAntiSymAxis", "Z", false},
    {7117, "Constraints", "GroupThermal", "Thermal", false},
    {7468, "PhysicalProperties", "RadioStructuralMember", "Structural Member", false},
    {1, "General", "ButtonOk", "OK", false},
    {2, "General", "ButtonCancel", "Cancel", false},
};

// The pictures of the "Hide Structural Members" toggle: normal and disabled, per state.
const char* const kMembersShown = ":/kwmfcui/icons/members-shown-7474.svg";
const char* const kMembersShownOff = ":/kwmfcui/icons/members-shown-disabled-7471.svg";
const char* const kMembersHidden = ":/kwmfcui/icons/members-hidden-7472.svg";
const char* const kMembersHiddenOff = ":/kwmfcui/icons/members-hidden-disabled-7473.svg";

constexpr unsigned kFilterGeometry = 33278;  // vertices, edges, faces
constexpr unsigned kFilterPoints = 32782;    // points and vertices
constexpr unsigned kFilterFaces = 0x40;
constexpr unsigned kFilterExplicitRigid = 4592; // bodies, faces, edges
constexpr int kSelectionOption = 128;

QIcon icon(const char* path) { return QIcon(QString::fromLatin1(path)); }

} // namespace

CKwMFCUIRestraint::CKwMFCUIRestraint(CKwRestraint* restraint, CKwSubCase* subcase, int option,
                                     CFMView* view, KW_UOM* units, CKwAnalysis* analysis,
                                     QWidget* parent)
    : CKwMFCUIBase(368, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIRestraint>()),
      m_units(units ? units : (view ? view->GetUnitHolder() : nullptr)), m_option(option)
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    m_dofToggles = {m_ui->tx, m_ui->ty, m_ui->tz, m_ui->rx, m_ui->ry, m_ui->rz};

    connect(m_ui->ok, &QPushButton::clicked, this, [this] { OnOK(); });
    connect(m_ui->cancel, &QPushButton::clicked, this, [this] { OnCancel(); });
    connect(m_ui->type, &QComboBox::currentIndexChanged, this,
            &CKwMFCUIRestraint::OnTypeSelChange);
    connect(m_ui->coordSystem, &QComboBox::currentIndexChanged, this,
            [this](int row) { SetValue(FieldCoordSystem, row); });
    connect(m_ui->subcases, &QListWidget::itemSelectionChanged, this,
            &CKwMFCUIRestraint::handOverSubcases);
    const std::pair<QAbstractButton*, unsigned> presets[] = {
        {m_ui->btnFixed, PresetFixed},     {m_ui->btnFree, PresetFree},
        {m_ui->btnPinned, PresetNoTranslation}, {m_ui->btnNoRotation, PresetNoRotation},
        {m_ui->symX, SymmetryX},           {m_ui->symY, SymmetryY},
        {m_ui->symZ, SymmetryZ},           {m_ui->antiX, AntiSymmetryX},
        {m_ui->antiY, AntiSymmetryY},      {m_ui->antiZ, AntiSymmetryZ},
    };
    for (const auto& [button, mask] : presets)
        connect(button, &QAbstractButton::clicked, this, [this, m = mask] { applyDofMask(m); });
    for (int i = 0; i < 6; ++i)
        connect(m_dofToggles[static_cast<std::size_t>(i)], &QToolButton::toggled, this,
                [this, i](bool on) { SetValue(FieldDofFirst + i, on ? 1 : 0); });
    const QCheckBox* pins[] = {m_ui->fixRadial, m_ui->fixAxial, m_ui->fixTangential};
    for (int i = 0; i < 3; ++i)
        connect(pins[i], &QCheckBox::toggled, this,
                [this, i](bool on) { SetValue(FieldPinFirst + i, on ? 1 : 0); });
    connect(m_ui->size, &QSlider::valueChanged, this, [this](int v) { SetValue(FieldSize, v); });
    connect(m_ui->density, &QSlider::valueChanged, this,
            [this](int v) { SetValue(FieldDensity, v); });
    connect(m_ui->color, &QPushButton::clicked, this, &CKwMFCUIRestraint::OnColorClicked);
    connect(m_ui->hideMembers, &QToolButton::clicked, this,
            &CKwMFCUIRestraint::OnHideStructuralMembers);

    SetAnalysis(analysis);
    OnCreate(view, restraint, subcase);
}

CKwMFCUIRestraint::~CKwMFCUIRestraint()
{
    // The controls outlive the logic half while the widget tree is taken down; none of their
    // signals may reach this editor any more.
    for (QObject* child : findChildren<QObject*>())
        child->disconnect(this);
}

CKwMFCNodeElemSelectionBox* CKwMFCUIRestraint::GetSelectionBox() const
{
    return m_ui->selection;
}

unsigned CKwMFCUIRestraint::GetColor() const { return m_ui->color->GetColor(); }

unsigned CKwMFCUIRestraint::GetDofMask() const
{
    unsigned mask = 0;
    for (std::size_t i = 0; i < 6; ++i)
        if (m_dofToggles[i]->isChecked())
            mask |= 1u << i;
    return mask;
}

void CKwMFCUIRestraint::fillTypeCombo()
{
    const QSignalBlocker block(m_ui->type);
    m_ui->type->clear();
    m_ui->type->addItem(KwPropText("Constraints", "DropDownStructural", "Structural"));
    m_ui->type->addItem(KwPropText("Constraints", "DropDownPin", "Pin"));
    m_ui->type->addItem(KwPropText("Constraints", "DropDownFrictionless", "Frictionless"));
    m_ui->type->addItem(
        KwPropText("Constraints", "DropDownResponseSpectrum", "Response Spectrum"));
    m_ui->type->addItem(KwPropText("Constraints", "DropDownThermal", "Thermal"));
    if (TheApplication && TheApplication->IsExplicitEnabledInTechPreview())
        m_ui->type->addItem(KwPropText("Constraints", "DropDownRigidExplicit", "Rigid(Explicit"));
    selectTypeFromEntity();
}

void CKwMFCUIRestraint::selectTypeFromEntity()
{
    int type = 0;
    GetValue(FieldType, type);
    const QSignalBlocker block(m_ui->type);
    const int row = GetSelectionFromType(type);
    m_ui->type->setCurrentIndex(row < m_ui->type->count() ? row : -1);
}

bool CKwMFCUIRestraint::OnInitDialog()
{
    fillTypeCombo();
    m_ui->btnFixed->setIcon(icon(":/kwmfcui/icons/dof-fixed-7267.svg"));
    m_ui->btnPinned->setIcon(icon(":/kwmfcui/icons/dof-pinned-7266.svg"));
    m_ui->btnFree->setIcon(icon(":/kwmfcui/icons/dof-free-7265.svg"));
    m_ui->btnNoRotation->setIcon(icon(":/kwmfcui/icons/dof-norotation-7268.svg"));
    const char* axes[] = {":/kwmfcui/icons/axis-x-7278.svg", ":/kwmfcui/icons/axis-y-7279.svg",
                          ":/kwmfcui/icons/axis-z-7280.svg"};
    for (std::size_t i = 0; i < 6; ++i) {
        m_dofToggles[i]->setIcon(icon(axes[i % 3]));
        // A held direction must be told apart from a free one at a glance.
        m_dofToggles[i]->setStyleSheet(QStringLiteral(
            "QToolButton:checked{background:#aed6f1;border:1px solid #2e86c1;border-radius:3px;}"));
    }
    m_ui->iconTranslation->setPixmap(
        icon(":/kwmfcui/icons/dof-translation.svg").pixmap(QSize(20, 20)));
    m_ui->iconRotation->setPixmap(icon(":/kwmfcui/icons/dof-rotation.svg").pixmap(QSize(20, 20)));
    m_bMembersShown = true;
    applyMembersState();

    CKwMFCNodeElemSelectionBox* box = m_ui->selection;
    box->SetFilter(kFilterGeometry);
    RegisterSelectionBox(box);
    box->SetOption(kSelectionOption);
    {
        // A range change clamps the value; that is not the user's choice of a size.
        const QSignalBlocker b1(m_ui->size), b2(m_ui->density);
        m_ui->size->setRange(1, 10);
        m_ui->density->setRange(1, 20);
    }

    LoadObjectData();
    // What has no control code comes from the value interface.
    int v = 0;
    {
        const QSignalBlocker b1(m_ui->coordSystem), b2(m_ui->size), b3(m_ui->density);
        if (GetValue(FieldCoordSystem, v))
            m_ui->coordSystem->setCurrentIndex(v);
        if (GetValue(FieldSize, v))
            m_ui->size->setValue(v);
        if (GetValue(FieldDensity, v))
            m_ui->density->setValue(v);
    }
    QCheckBox* pins[] = {m_ui->fixRadial, m_ui->fixAxial, m_ui->fixTangential};
    for (int i = 0; i < 3; ++i) {
        const QSignalBlocker b(pins[i]);
        pins[i]->setChecked(GetValue(FieldPinFirst + i, v) && v);
    }
    if (CKwRestraint* r = GetEditObject()) {
        QList<CKwUIEntity*> shown = r->m_entities;
        AddEntitiesToSelectionBox(&shown);
    }
    int type = 0;
    GetValue(FieldType, type);
    switchPanels(type);
    return CKwMFCUIBase::OnInitDialog();
}

QString CKwMFCUIRestraint::temperatureLabel() const
{
    const QString unit = m_units ? m_units->GetUnits(KwUnitKind::Temperature) : QString();
    return KwPropText("Constraints", "LabelThermalConstraint", "Temperature") +
           QStringLiteral(" (") + unit + QStringLiteral("):");
}

void CKwMFCUIRestraint::SetTextToCurrentLang()
{
    setWindowTitle(GetPageTitleString());
    KwApplyTextTable(this, kLabels);
    KwSetControlText(this, 7408,
                     KwLabel(KwTreeText("Subcases", "TreeCategoryText", "Subcases")));
    KwSetControlText(this, 1530, temperatureLabel());
    const QString tips[6] = {
        KwPropText("Constraints", "ToolTipTranslationX", "Translation X"),
        KwPropText("Constraints", "ToolTipTranslationY", "Translation Y"),
        KwPropText("Constraints", "ToolTipTranslationZ", "Translation Z"),
        KwPropText("Constraints", "ToolTipRotationX", "Rotation X"),
        KwPropText("Constraints", "ToolTipRotationY", "Rotation Y"),
        KwPropText("Constraints", "ToolTipRotationZ", "Rotation Z")};
    for (std::size_t i = 0; i < 6; ++i)
        m_dofToggles[i]->setToolTip(tips[i]);
    for (QToolButton* b : {m_ui->btnFixed, m_ui->btnFree, m_ui->btnPinned, m_ui->btnNoRotation})
        b->setToolTip(b->text());
    if (m_ui->type->count() > 0)
        fillTypeCombo();
    applyMembersState();
    int type = 0;
    GetValue(FieldType, type);
    if (m_ui->selection->GetFilter() != 0)
        switchPanels(type);
}

void CKwMFCUIRestraint::OnTypeSelChange(int row)
{
    const int type = GetTypeFromSelection(row);
    int stored = -1;
    GetValue(FieldType, stored);
    if (type < 0 || type == stored)
        return;
    SetValue(FieldType, type);
    switchPanels(type);
    Display(1);

    CFMView* view = GetFMView();
    CKwAnalysis* analysis = GetAnalysis();
    const bool isExplicit = analysis && analysis->IsExplicitAnalysis();
    const int code = analysis ? analysis->GetAnalysisTypeCode() : 0;
    if (isExplicit && GetEditObject() && GetEditObject()->IsThermal() && view)
        view->ShowBubbleToolTipWarning(
            KwErrText("Constraints", "ThermalConstraintsNotSupported",
                      "Thermal constraints not supported in Explicit Dynamics analysis."),
            0);
    const bool incompatible = (type == CKwRestraint::ResponseSpectrum && code != 20) ||
                              (type == CKwRestraint::Thermal && code == 20) ||
                              (type == CKwRestraint::RigidExplicit && !isExplicit);
    if (incompatible) {
        if (view)
            view->ShowBubbleToolTipWarning(
                KwErrText("FMView", "IncompatibleConstraint",
                          "The constraint selected is not compatible with this analysis."),
                0);
        selectTypeFromEntity();
    }
}

void CKwMFCUIRestraint::switchPanels(int type)
{
    CFMView* view = GetFMView();
    CKwAnalysis* analysis = GetAnalysis();
    const bool isExplicit = analysis && analysis->IsExplicitAnalysis();
    bool dof = false, thermal = false, pin = false;
    unsigned filter = kFilterGeometry;
    QString prompt = KwPropText("Constraints", "TooltipSelectedEntities",
                                "Select face, edge, or vertex");
    switch (type) {
    case CKwRestraint::Structural:
    case CKwRestraint::RigidExplicit:
        if (view)
            view->HideAllCoordinateSystem();
        dof = true;
        showDof();
        if (type == CKwRestraint::RigidExplicit && isExplicit) {
            filter = kFilterExplicitRigid;
            prompt = KwPropText("Constraints", "TooltipSelectedEntities3",
                                "Select body, face or edge");
        }
        break;
    case CKwRestraint::Thermal:
        if (view)
            view->HideAllCoordinateSystem();
        thermal = true;
        break;
    case CKwRestraint::ResponseSpectrum:
        if (view)
            view->HideAllCoordinateSystem();
        dof = true;
        showDof();
        filter = kFilterPoints;
        prompt = KwPropText("Constraints", "TooltipSelectedEntitiesOnlyPointOrVertex",
                            "Select point or vertex");
        break;
    case CKwRestraint::Pin:
        pin = true;
        filter = kFilterFaces;
        prompt = KwPropText("MeshControl", "TooltipSelectFaces", "Select Faces");
        break;
    case CKwRestraint::Frictionless:
        filter = kFilterFaces;
        prompt = KwPropText("MeshControl", "TooltipSelectFaces", "Select Faces");
        break;
    default:
        break;
    }
    m_ui->groupDof->setVisible(dof);
    m_ui->groupThermal->setVisible(thermal);
    m_ui->pinPanel->setVisible(pin);
    m_ui->selection->SetFilter(filter);
    SetControlToolTip(CodeEntities, prompt);
    handOverSubcases();
}

void CKwMFCUIRestraint::handOverSubcases()
{
    QList<int> rows;
    for (int i = 0; i < m_ui->subcases->count(); ++i)
        if (m_ui->subcases->item(i)->isSelected())
            rows << i;
    SetListValue(CodeSubcaseSelection, rows);
}

void CKwMFCUIRestraint::showDof()
{
    int v = 0;
    for (int i = 0; i < 6; ++i) {
        QToolButton* t = m_dofToggles[static_cast<std::size_t>(i)];
        const QSignalBlocker b(t);
        t->setChecked(GetValue(FieldDofFirst + i, v) && v);
    }
}

void CKwMFCUIRestraint::applyDofMask(unsigned mask)
{
    for (int i = 0; i < 6; ++i)
        SetValue(FieldDofFirst + i, (mask >> i) & 1u);
    showDof();
    Display(1);
}

void CKwMFCUIRestraint::applyMembersState()
{
    QIcon pic;
    if (m_bMembersShown) {
        m_membersPicture = QString::fromLatin1(kMembersShown);
        pic.addFile(m_membersPicture, QSize(), QIcon::Normal);
        pic.addFile(QString::fromLatin1(kMembersShownOff), QSize(), QIcon::Disabled);
        m_ui->hideMembers->setToolTip(
            KwPropText("Loads", "ToolTipHideStructuralMember", "Hide all bodies"));
    } else {
        m_membersPicture = QString::fromLatin1(kMembersHidden);
        pic.addFile(m_membersPicture, QSize(), QIcon::Normal);
        pic.addFile(QString::fromLatin1(kMembersHiddenOff), QSize(), QIcon::Disabled);
        m_ui->hideMembers->setToolTip(
            KwPropText("Loads", "ToolTipHideStructuralMember", "Show all bodies"));
    }
    m_ui->hideMembers->setIcon(pic);
}

void CKwMFCUIRestraint::OnHideStructuralMembers()
{
    m_bMembersShown = !m_bMembersShown;
    applyMembersState();
    if (CFMView* view = GetFMView())
        view->HideBodies(CFMView::BodyStructuralMembers | CFMView::BodySolids,
                         m_bMembersShown ? 0 : 1);
    DeleteRestraintDrawList();
    update();
}

void CKwMFCUIRestraint::OnColorClicked()
{
    const KwCustomColors custom = LoadCustomColors();
    for (int i = 0; i < 16; ++i)
        QColorDialog::setCustomColor(i, CKwColorSwatch::ToQColor(custom[static_cast<std::size_t>(i)]));
    QColorDialog dlg(CKwColorSwatch::ToQColor(GetColor()), this);
    dlg.setOption(QColorDialog::DontUseNativeDialog);
    const bool chosen = dlg.exec() == QDialog::Accepted;
    KwCustomColors keep;
    for (int i = 0; i < 16; ++i)
        keep[static_cast<std::size_t>(i)] =
            CKwColorSwatch::FromQColor(QColorDialog::customColor(i));
    SaveCustomColors(keep);
    if (!chosen)
        return;
    const unsigned c = CKwColorSwatch::FromQColor(dlg.selectedColor());
    SetValue(FieldColor, static_cast<int>(c));
    SetControlColor(CodeColor, c);
}
