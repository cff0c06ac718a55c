#include "CKwMFCUILoad.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwHideMembersButton.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwMessageBox.h"
#include "KwStyle.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "KwTableLookup.h"
#include "ui_CKwMFCUILoad.h"

#include <QComboBox>
#include <QEvent>
#include <QFileDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <algorithm>
#include <tuple>
#include <vector>

namespace {

using T = KwTextTarget;
using L = CKwUILoad;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;

// Control codes of the logic -> controls of template 370.
constexpr KwControlCode kControlCodes[] = {
    {L::CodeName, 273, kEdit},
    {L::CodeID, 274, kEdit},
    {L::CodeTypeItems, 1417, KwCodeOp::Items},
    {L::CodeSubtypeItems, 7420, KwCodeOp::Items},
    {L::CodeMagnitude, 7432, kEdit},
    {L::CodeMagnitudeLabel, 7431, KwCodeOp::Text},
    {L::CodeDirectionX, 7434, kEdit},
    {L::CodeDirectionX + 1, 7435, kEdit},
    {L::CodeDirectionX + 2, 7436, kEdit},
    {L::CodeLocationX, 7453, kEdit},
    {L::CodeLocationX + 1, 7454, kEdit},
    {L::CodeLocationX + 2, 7455, kEdit},
    {L::CodeSubcaseItems, 1535, KwCodeOp::Items},
    {L::CodeSubcaseSelection, 1535, KwCodeOp::Select},
    {L::CodeAmbientTemperature, 7440, kEdit},
    {L::CodeConvectionCoefficient, 7442, kEdit},
    {L::CodeAbsorptivity, 7444, kEdit},
    {L::CodeEntities, 1406, KwCodeOp::ToolTip},
    {L::CodeEmissivity, 7446, kEdit},
    {L::CodeLocationEntity, 7452, KwCodeOp::ToolTip},
    {L::CodeColor, 1734, KwCodeOp::Color},
    {L::CodeTimeTables, 7482, KwCodeOp::Items},
    {L::CodeTemperatureTables, 7486, KwCodeOp::Items},
    {L::CodeResultsFile, 7457, kEdit},
    {L::CodeAmbientLabel, 7439, KwCodeOp::Text},
};

// Fields of the logic shown by controls that have no control code.
constexpr KwValueBinding kBindings[] = {
    {L::FieldType, 1417, KwBind::TypeCombo},
    {L::FieldSubtype, 7420, KwBind::ComboIndex},
    {L::FieldDistribution, 7437, KwBind::RadioGroup, 2},
    {L::FieldLocationMode, 7449, KwBind::RadioGroup, 3},
    {L::FieldTimeDependent, 7481, KwBind::Check},
    {L::FieldTemperatureDependent, 7485, KwBind::Check},
    {L::FieldSize, 1728, KwBind::Slider},
    {L::FieldDensity, 1730, KwBind::Slider},
    {L::FieldColor, 1734, KwBind::Color},
};

// Panel rows of template 370.
constexpr int kSubtype = 7420, kMagnitude = 7490, kDirection = 7491, kDistribution = 7492,
              kAmbient = 7493, kConvection = 7494, kRadiation = 7495, kLocation = 7496,
              kResults = 7497;

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
    {7468, "PhysicalProperties", "RadioStructuralMember", "Structural Member"},
    {1417, "Loads", "TooltipSelectType", "Select the type of Load", T::ToolTip},
    {7480, "Loads", "GroupAdvancedOptions", "Advanced Options"},
    {7430, "Loads", "GroupLoadSpecs", "&Load Definition"},
    {7433, "Loads", "LabelDirection", "Direction", true},
    {7437, "Loads", "TotalForce", "Total Force"},
    {7438, "Loads", "TotalForcePerEntity", "Force per Entity"},
    {7441, "Loads", "LabelConvectionCoefficient", "Convection Coefficient", T::UnitLabel,
     KwTextLookup::Prop, KwUnitKind::ConvectionCoefficient},
    {7443, "Loads", "LabelRadiationabsorptivity", "Absorptivity", true},
    {7445, "Loads", "LabelRadiationemisivity", "Emissivity", true},
    {7448, "Loads", "OptionSelectionType", "Selection Type", true},
    {7449, "Loads", "OptionSelectVertexPoint", "Vertex/Point"},
    {7450, "Loads", "OptionSelectNode", "Node"},
    {7451, "General", "LabelCoordinates", "Coordinates"},
    {7459, "General", "LabelCoordinates", "Coordinates", T::UnitLabel, KwTextLookup::Prop,
     KwUnitKind::Length},
    {7456, "Loads", "LabelFlowEFDResultsFile", "Results File", true},
    {7481, "Loads", "CheckboxTimeDependence", "Time Dependence"},
    {7485, "Loads", "EnterCheckboxTemperatureTableData", "Temperature Dependence"},
    {7483, "Loads", "ButtonEditTableData", "Edit Table Data"},
    {7487, "Loads", "ButtonEditTableData", "Edit Table Data"},
    {7484, "Loads", "ButtonDefineNewTable", "Define New Table"},
    {7488, "Loads", "ButtonDefineNewTable", "Define New Table"},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

// The panel table follows the logic's type list: each type's controls, its filter and prompt.
std::span<const KwTypePanel> panelTable()
{
    static const std::vector<KwTypePanel> table = [] {
        std::vector<KwTypePanel> t;
        int count = 0;
        const KwLoadTypeRow* rows = CKwUILoad::GetTypeRows(&count);
        for (int i = 0; i < count; ++i) {
            const KwLoadTypeRow& r = rows[i];
            if (r.code < 0)
                continue;
            std::array<int, 4> p{};
            const bool dist = r.flags & KwLoadFlag::Distribution;
            switch (r.panel) {
            case KwLoadPanel::Vector: p = {kMagnitude, kDirection, dist ? kDistribution : 0}; break;
            case KwLoadPanel::Convection: p = {kAmbient, kConvection}; break;
            case KwLoadPanel::Radiation: p = {kAmbient, kRadiation}; break;
            case KwLoadPanel::RemoteForce:
            case KwLoadPanel::Rotational:
            case KwLoadPanel::Hydrostatic: p = {kMagnitude, kDirection, kLocation}; break;
            case KwLoadPanel::Bearing: p = {kMagnitude, kDirection}; break;
            case KwLoadPanel::FromOutput: p = {kResults}; break;
            case KwLoadPanel::Enforced:
            case KwLoadPanel::Initial: p = {kSubtype, kMagnitude, kDirection}; break;
            default: p = {kMagnitude}; break;
            }
            t.push_back({r.code, p, r.accepts, 0, {r.promptSection, r.promptKey, r.promptEnglish},
                         {}, KwPanelFlag::Refill});
        }
        return t;
    }();
    return table;
}

// The load types refused in explicit analyses, by code: moment, rotational force, distributed,
// remote, bearing and hydrostatic loads.
constexpr unsigned long long kRefusedInExplicit = 0x2000072002ull;

constexpr unsigned kLocationByVertex = 0x6; // vertices and points
constexpr unsigned kLocationByNode = 0x400; // CKwUIEntity::FilterBitOf(Node)

} // namespace

const char* CKwMFCUILoad::ResultsFileFilter()
{
    return "FNO Binary Results Files (*.fno)|*.fno|CFD Study Results Files (*.cfdst)|*.cfdst";
}

CKwMFCUILoad::CKwMFCUILoad(CKwLoad* load, CKwSubCase* subcase, int, CFMView* view,
                           KW_UOM* units, CKwAnalysis* analysis, QWidget* parent)
    : CKwMFCUIBase(370, view, parent), m_ui(std::make_unique<Ui::CKwMFCUILoad>())
{
    m_ui->setupUi(this);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetTypePanels(panelTable(), CodeEntities);
    SetSubcaseList(1535, CodeSubcaseSelection);
    SetUnitSystem(units);
    KwStyle::ApplyDialogLayout(m_ui->outer);
    KwStyle::ApplyGroupLayout(m_ui->specBox);
    KwStyle::ApplyFormGrid(m_ui->topGrid);
    // The ID's column is no wider than the ID field: the spare width goes to the column the
    // name and type reach into, never to the labels.
    m_ui->topGrid->setColumnStretch(2, 1);
    m_ui->advGrid->setColumnStretch(1, 1);
    m_ui->advGrid->setColumnStretch(2, 1);
    for (QGridLayout* grid :
         {m_ui->panelMagnitudeGrid, m_ui->panelDirectionGrid, m_ui->panelDistributionGrid,
          m_ui->panelAmbientGrid, m_ui->panelConvectionGrid, m_ui->panelRadiationGrid,
          m_ui->panelLocationGrid, m_ui->panelResultsGrid}) {
        grid->setContentsMargins(0, 0, 0, 0);
        grid->setHorizontalSpacing(KwStyle::ColumnSpacing);
        grid->setVerticalSpacing(KwStyle::RowSpacing);
    }
    m_ui->hideMembers->SetToolTips(
        {"Loads", "ToolTipHideStructuralMember", "Hide all bodies"},
        {"Loads", "ToolTipShowStructuralMember", "Show all bodies"});
    ConnectHideMembersButton(m_ui->hideMembers);
    connect(m_ui->advancedToggle, &QPushButton::clicked, this,
            &CKwMFCUILoad::ToggleAdvancedOptions);
    connect(m_ui->browse, &QPushButton::clicked, this, &CKwMFCUILoad::BrowseResultsFile);
    connect(m_ui->subtype, &QComboBox::currentIndexChanged, this, &CKwMFCUILoad::onSubtype);
    connect(m_ui->timeTables, &QComboBox::currentIndexChanged, this,
            [this](int row) { onTableRow(KwTableLookup::Time, row); });
    connect(m_ui->tempTables, &QComboBox::currentIndexChanged, this,
            [this](int row) { onTableRow(KwTableLookup::Temperature, row); });
    connect(m_ui->newTime, &QPushButton::clicked, this,
            [this] { defineNewTable(KwTableLookup::Time); });
    connect(m_ui->newTemp, &QPushButton::clicked, this,
            [this] { defineNewTable(KwTableLookup::Temperature); });
    connect(m_ui->editTime, &QPushButton::clicked, this,
            [this] { EditTableData(KwTableLookup::Time); });
    connect(m_ui->editTemp, &QPushButton::clicked, this,
            [this] { EditTableData(KwTableLookup::Temperature); });
    for (QAbstractButton* b : {static_cast<QAbstractButton*>(m_ui->byVertex),
                               static_cast<QAbstractButton*>(m_ui->byNode),
                               static_cast<QAbstractButton*>(m_ui->byCoordinates)})
        connect(b, &QAbstractButton::toggled, this, [this](bool on) {
            if (on)
                onLocationMode();
        });
    SetAnalysis(analysis);
    OnCreate(view, load, subcase);
}

CKwMFCUILoad::~CKwMFCUILoad() = default;

CKwMFCNodeElemSelectionBox* CKwMFCUILoad::GetSelectionBox() const { return m_ui->selection; }
CKwMFCNodeElemSelectionBox* CKwMFCUILoad::GetLocationBox() const { return m_ui->locationBox; }
bool CKwMFCUILoad::IsAdvancedShown() const { return !m_ui->groupAdvanced->isHidden(); }

bool CKwMFCUILoad::OnInitDialog()
{
    SetupSelectionBox(m_ui->selection, 0x56, 128);
    m_ui->locationBox->SetSingleSelection(true);
    m_ui->locationBox->SetFilter(kLocationByVertex);
    RegisterSelectionBox(m_ui->locationBox);
    // Clicking into a box makes it the target of picks; the location box only while the
    // load takes a location.
    TargetOnClick(m_ui->selection, [this] {
        SetValue(FieldPickTarget, PickEntities);
        return true;
    });
    TargetOnClick(m_ui->locationBox, [this] { return SetValue(FieldPickTarget, PickLocation) != 0; });
    {
        const QSignalBlocker b1(m_ui->size), b2(m_ui->density);
        m_ui->size->setRange(1, 10);
        m_ui->density->setRange(1, 20);
    }
    const bool ok = CKwMFCUIBase::OnInitDialog();
    // The advanced part goes and comes with the dialog's two-form toggle: the main part and
    // the OK and Cancel buttons stay; the layout places them. The editor opens in the long
    // form, so the toggle is run once here and " <<" then shortens the dialog.
    SetFormToggle({{m_ui->mainPart, {}, {}}, {m_ui->ok, {}, {}}, {m_ui->cancel, {}, {}}},
                  m_ui->advancedToggle, {}, {});
    ToggleForm();
    // A new load opens with the general prompt; the type's own prompt takes over once the
    // user chooses a type.
    m_openingPrompt = GetNewObject() != nullptr;
    showOpeningPrompt();
    return ok;
}

void CKwMFCUILoad::showOpeningPrompt()
{
    if (m_openingPrompt)
        SetControlToolTip(CodeEntities, KwPropText("Constraints", "TooltipSelectedEntities",
                                                   "Select face, edge, or vertex"));
}

void CKwMFCUILoad::OnObjectDataLoaded()
{
    m_openingPrompt = false; // a reload (next, duplicate, refresh) shows the type's prompt
    CKwMFCUIBase::OnObjectDataLoaded();
    showTypeExtras();
}

void CKwMFCUILoad::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    KwStyle::LabelTriple(m_ui->dirX, m_ui->dirY, m_ui->dirZ);
    KwStyle::LabelTriple(m_ui->locX, m_ui->locY, m_ui->locZ);
    // The logic's texts: type names, captions with units, prompts.
    if (m_ui->type->count() > 0) {
        const QStringList types = GetTypeItems();
        SetControlItems(CodeTypeItems, static_cast<int>(types.size()), types.constData());
        SelectTypeFromEntity();
        showTypeExtras();
    }
    showOpeningPrompt();
}

int CKwMFCUILoad::OnTypeRowChosen(int row)
{
    // A heading cannot stay chosen: the row below it is taken.
    const int taken = IsHeadingRow(row) ? row + 1 : row;
    // The advisories come before the base compares the type with the stored one: a heading
    // that hands on to the stored type warns like any other choice of it.
    adviseOn(TypeOfRow(taken));
    return taken;
}

void CKwMFCUILoad::showTypeExtras()
{
    const CKwLoad* l = GetEditObject();
    const KwLoadTypeRow* row = l ? GetTypeRow(l->m_type) : nullptr;
    if (!row)
        return;
    const unsigned flags = row->flags;
    m_ui->timeDep->setEnabled(flags & KwLoadFlag::TimeTable);
    m_ui->timeTables->setEnabled(flags & KwLoadFlag::TimeTable);
    m_ui->newTime->setEnabled(flags & KwLoadFlag::TimeTable);
    m_ui->tempDep->setEnabled(flags & KwLoadFlag::TemperatureTable);
    m_ui->tempTables->setEnabled(flags & KwLoadFlag::TemperatureTable);
    m_ui->newTemp->setEnabled(flags & KwLoadFlag::TemperatureTable);
    // A table is edited only while the load names one the model still has.
    m_ui->editTime->setEnabled((flags & KwLoadFlag::TimeTable) &&
                               KwTableLookup::Exists(GetModel(), l->m_timeTableId,
                                                     KwTableLookup::Time));
    m_ui->editTemp->setEnabled((flags & KwLoadFlag::TemperatureTable) &&
                               KwTableLookup::Exists(GetModel(), l->m_temperatureTableId,
                                                     KwTableLookup::Temperature));
    for (const auto& [combo, use, id] :
         {std::tuple{m_ui->timeTables, int(KwTableLookup::Time), l->m_timeTableId},
          std::tuple{m_ui->tempTables, int(KwTableLookup::Temperature),
                     l->m_temperatureTableId}}) {
        const QSignalBlocker b(combo);
        combo->setCurrentIndex(GetRowOfTable(use, id));
    }
    if (row->code == CKwLoad::EnforcedMotion)
        m_ui->subtype->setToolTip(
            KwPropText("Loads", "TooltipSubTypeEnforced", "Enforced Motion Types"));
    else if (row->code == CKwLoad::InitialCondition)
        m_ui->subtype->setToolTip(
            KwPropText("Loads", "TooltipSubTypeInitial", "Initial Condition Types"));
    if (flags & KwLoadFlag::Location) {
        QString where, typed;
        switch (row->panel) {
        case KwLoadPanel::RemoteForce:
            where = KwPropText("Loads", "LabelRemoteForceLocation", "Remote Force Location");
            typed = KwPropText("Loads", "ToolTipEnterRemoteForceCoordinates",
                               "Enter coordinates of remote force location");
            break;
        case KwLoadPanel::Rotational:
            where = KwPropText("Loads", "LabelOrigin", "Origin");
            typed = KwPropText("Loads", "ToolTipEnterRotationalForceCoordinates",
                               "Enter coordinates for Axis origin");
            break;
        default:
            where = KwPropText("Loads", "LabelPointOnFluidSurface", "Point on Fluid Surface");
            typed = KwPropText("Loads", "ToolTipEnterFluidSurfaceCoordinates",
                               "Enter coordinates of a point on the fluid surface");
            break;
        }
        m_ui->labelLocation->setText(where);
        for (QWidget* e : {m_ui->locX, m_ui->locY, m_ui->locZ})
            e->setToolTip(typed);
        m_ui->byNode->setVisible(flags & KwLoadFlag::LocationByNode);
        if (row->panel == KwLoadPanel::Rotational)
            m_ui->labelDirection->setText(
                KwLabel(KwPropText("Loads", "LabelRotationalVectorComp", "Rotational Vector")));
        else
            m_ui->labelDirection->setText(
                KwLabel(KwPropText("Loads", "LabelDirection", "Direction")));
        onLocationMode();
    } else {
        m_ui->labelDirection->setText(KwLabel(KwPropText("Loads", "LabelDirection", "Direction")));
        SetValue(FieldPickTarget, PickEntities);
        SetActiveSelectionBox(m_ui->selection);
    }
    alignSpecColumns();
}

void CKwMFCUILoad::alignSpecColumns()
{
    QGridLayout* const grids[] = {m_ui->panelMagnitudeGrid, m_ui->panelDirectionGrid,
                                  m_ui->panelAmbientGrid,   m_ui->panelConvectionGrid,
                                  m_ui->panelRadiationGrid, m_ui->panelLocationGrid,
                                  m_ui->panelResultsGrid};
    int width = 0;
    for (QGridLayout* grid : grids) {
        if (grid->parentWidget()->isHidden())
            continue;
        for (int i = 0; i < grid->count(); ++i) {
            int row = 0, column = 0, rows = 0, columns = 0;
            grid->getItemPosition(i, &row, &column, &rows, &columns);
            auto* label = qobject_cast<QLabel*>(grid->itemAt(i)->widget());
            // A label over the whole width (the location's heading) is no row label.
            if (label && column == 0 && columns == 1 && !label->isHidden())
                width = std::max(width, label->sizeHint().width());
        }
    }
    // The name, ID and type above and the advanced options below start their fields at the
    // same x as the load definition: one field column for the whole dialog. The groups' fields
    // sit further in by the group's frame and margin.
    const auto inset = [](QGroupBox* group) {
        return group->contentsMargins().left() +
               (group->layout() ? group->layout()->contentsMargins().left() : 0);
    };
    const int specInset = inset(m_ui->groupSpecs);
    const int advancedInset = inset(m_ui->groupAdvanced);
    QGridLayout* const others[] = {m_ui->topGrid, m_ui->advGrid};
    const int insets[] = {0, advancedInset};
    int column = width + specInset;
    for (int g = 0; g < 2; ++g) {
        QGridLayout* grid = others[g];
        for (int i = 0; i < grid->count(); ++i) {
            int row = 0, col = 0, rows = 0, cols = 0;
            grid->getItemPosition(i, &row, &col, &rows, &cols);
            QWidget* w = grid->itemAt(i)->widget();
            if (w && col == 0 && cols == 1 && !w->isHidden())
                column = std::max(column, w->sizeHint().width() + insets[g]);
        }
    }
    for (QGridLayout* grid : grids)
        grid->setColumnMinimumWidth(0, column - specInset);
    m_ui->topGrid->setColumnMinimumWidth(0, column);
    m_ui->advGrid->setColumnMinimumWidth(0, column - advancedInset);
}

void CKwMFCUILoad::onLocationMode()
{
    // Runs from the radio buttons before or after their binding: the buttons decide.
    int mode = m_ui->byCoordinates->isChecked() ? CKwLoad::LocationCoordinates
               : m_ui->byNode->isChecked()      ? CKwLoad::LocationNode
                                                : CKwLoad::LocationVertexOrPoint;
    if (!SetValue(FieldLocationMode, mode))
        GetValue(FieldLocationMode, mode);
    const bool typed = mode == CKwLoad::LocationCoordinates;
    for (QWidget* w : {static_cast<QWidget*>(m_ui->locX), static_cast<QWidget*>(m_ui->locY),
                       static_cast<QWidget*>(m_ui->locZ),
                       static_cast<QWidget*>(m_ui->labelCoordinates)})
        w->setEnabled(typed);
    m_ui->locationBox->setEnabled(!typed);
    m_ui->locationBox->SetFilter(mode == CKwLoad::LocationNode ? kLocationByNode
                                                               : kLocationByVertex);
    if (!GetEditObject() || !GetEditObject()->m_locationEntity)
        m_ui->locationBox->ResetContent();
    if (typed) {
        SetValue(FieldPickTarget, PickEntities);
        SetActiveSelectionBox(m_ui->selection);
    }
}

void CKwMFCUILoad::adviseOn(int type)
{
    const CKwAnalysis* analysis = GetAnalysis();
    const int code = analysis ? analysis->GetAnalysisTypeCode() : 0;
    const bool isExplicit = IsExplicitAnalysis();
    if (type == CKwLoad::EnforcedMotion && code == CKwAnalysis::NonlinearTransient)
        ShowAdvisory("Loads", "EnforcedMotionLoadNotSupported",
                     "Enforced Motion Loads not supported in Nonlinear Transient Response "
                     "analysis.");
    if (type == CKwLoad::PressurePulse && !isExplicit)
        ShowAdvisory("FEModel", "IncompatibleLoadForAnalysis",
                     "The load selected is not compatible with this analysis.");
    if (isExplicit && type >= 0 && type <= 37 && ((kRefusedInExplicit >> type) & 1u)) {
        // Moment is looked up with key and default exchanged; a language without a "Moment"
        // entry names it by the text "DropDownMoment".
        const QString name = type == CKwLoad::Moment
                                 ? KwPropText("Loads", "Moment", "DropDownMoment")
                                 : GetTypeName(type);
        if (CFMView* view = GetFMView())
            view->ShowBubbleToolTipWarning(
                KwErrText("Loads", "LoadNotSupportedInExplicitAnalyses",
                          "%s not supported in Explicit analyses.")
                    .replace(QStringLiteral("%s"), name),
                0);
    }
    if (isExplicit && type == CKwLoad::FromOutput)
        ShowAdvisory("Loads", "FromOutputLoadNotSupportedExplicit",
                     "'From Output' load not supported in Explicit analyses.");
}

void CKwMFCUILoad::OnTypeChanged(int)
{
    m_openingPrompt = false;
    showTypeExtras();
}

void CKwMFCUILoad::onSubtype(int row)
{
    int type = -1;
    GetValue(FieldType, type);
    if (type != CKwLoad::InitialCondition || !IsExplicitAnalysis())
        return;
    if (row == CKwLoad::InitialAcceleration)
        ShowAdvisory("Loads", "InitialAccelerationNotSupportedExplicit",
                     "Inital Acceleration not supported in Explicit Dynamics analysis.");
    else if (row == CKwLoad::InitialAngularAcceleration)
        ShowAdvisory("Loads", "InitialAngularAccelerationNotSupportedExplicit",
                     "Inital Angular Acceleration not supported in Explicit Dynamics analysis.");
}

void CKwMFCUILoad::onTableRow(int use, int row)
{
    const int id = GetTableIdAtRow(use, row);
    if (id < 0) { // "New Table"
        defineNewTable(use);
        return;
    }
    SetValue(use == KwTableLookup::Time ? FieldTimeTable : FieldTemperatureTable, id);
    showTypeExtras();
}

bool CKwMFCUILoad::EditTableData(int use)
{
    const CKwLoad* l = GetEditObject();
    if (!l)
        return false;
    const int id = use == KwTableLookup::Time ? l->m_timeTableId : l->m_temperatureTableId;
    // The table may have gone since the editor was filled: the logic names the missing table.
    CKwTable* table = KwTableLookup::Find(GetModel(), id, use);
    if (!table) {
        ReportMissingTable(use);
        showTypeExtras();
        return false;
    }
    KeepTableForCancel(id, use); // the table dialog writes into the model's table
    return CKwTableDialog::RunModal(this, GetFMView(), table, GetUnitSystem()) == KwMB::IDOK;
}

int CKwMFCUILoad::defineNewTable(int use)
{
    // A new, empty table of this use, kept only when its dialog ends with OK and then only
    // as long as the load editor is not cancelled.
    if (!GetModel() || !GetEditObject())
        return 0;
    const int id = AddNewTable(use);
    CKwTable* table = KwTableLookup::Find(GetModel(), id, use);
    const bool kept =
        table && CKwTableDialog::RunModal(this, GetFMView(), table, GetUnitSystem()) == KwMB::IDOK;
    if (!kept)
        DropNewTable(id);
    LoadTableItems();
    if (kept) {
        SetValue(use == KwTableLookup::Time ? FieldTimeTable : FieldTemperatureTable, id);
        SetValue(use == KwTableLookup::Time ? FieldTimeDependent : FieldTemperatureDependent, 1);
        FillBoundControls();
    }
    showTypeExtras(); // the combo shows the load's table again after a cancel
    return kept ? id : 0;
}

void CKwMFCUILoad::ToggleAdvancedOptions()
{
    m_ui->advancedToggle->setText(ToggleForm() ? QStringLiteral(" <<") : QStringLiteral(" >>"));
}

void CKwMFCUILoad::BrowseResultsFile()
{
    const QStringList filters = FileDialogFilters(QString::fromLatin1(ResultsFileFilter()));
    QFileDialog dlg(this, KwPropText("Loads", "LabelFlowEFDResultsFile", "Results File"));
    dlg.setAcceptMode(QFileDialog::AcceptOpen);
    dlg.setFileMode(QFileDialog::ExistingFile);
    dlg.setNameFilters(filters);
    dlg.setDefaultSuffix(QStringLiteral("fno"));
    dlg.setOption(QFileDialog::DontUseNativeDialog, true);
    if (dlg.exec() != QDialog::Accepted || dlg.selectedFiles().isEmpty())
        return;
    SetControlText(CodeResultsFile, dlg.selectedFiles().first());
}
