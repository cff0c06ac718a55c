#include "CKwMFCUIMaterial.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwOrthotropic3DDlg.h"
#include "CKwiCKAddin.h"
#include "KwMessageBox.h"
#include "KwNumbers.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "CKwSNCurveDialog.h"
#include "KwMaterialEditorSupport.h"
#include "KwMaterialKeys.h"
#include "KwOrthotropicStiffness.h"
#include "KwMaterialPanels.h"
#include "KwMaterialValueTable.h"
#include "ui_CKwMFCUIMaterial.h"

#include <QGuiApplication>
#include <QHeaderView>
#include <QTableView>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QStyle>
#include <algorithm>
#include <array>

namespace K = KwMaterialKeys;

namespace {

using M = CKwUIMaterial;
using E = CKwMFCUIMaterial;
using T = KwTextTarget;
constexpr unsigned kEdit = KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip;
constexpr int kExtras = CKwMaterial::ExtraCount;
constexpr int kMatrix = CKwMaterial::MatrixSize;

// Control codes of the logic -> controls: name, ID, description, per extra value its edit and
// unit, the matrix cells and their unit. The property keys' values and units are cells of the
// value table (see SetControlText).
constexpr auto kControlCodes = [] {
    std::array<KwControlCode, 3 + 2 * kExtras + kMatrix + 1> t{};
    std::size_t n = 0;
    t[n++] = {M::CodeName, 1380, kEdit};
    t[n++] = {M::CodeID, 1381, kEdit};
    t[n++] = {M::CodeDescription, 1382, kEdit};
    for (int e = 0; e < kExtras; ++e) {
        t[n++] = {M::CodeExtraFirst + e, E::kExtraIdBase + e, kEdit};
        t[n++] = {M::CodeExtraUnitFirst + e, E::kExtraUnitIdBase + e, KwCodeOp::Text};
    }
    for (int k = 0; k < kMatrix; ++k)
        t[n++] = {M::CodeMatrixFirst + k, E::kMatrixIdBase + k, kEdit};
    t[n++] = {M::CodeMatrixUnit, E::kMatrixHeadIdBase + 6, KwCodeOp::Text};
    return t;
}();

constexpr KwValueBinding kBindings[] = {
    {M::FieldType, 1390, KwBind::TypeCombo},
    {M::FieldHyperelasticModel, 1391, KwBind::ComboIndex},
    {M::FieldFailureTheory, 1392, KwBind::ComboIndex},
    {M::FieldFatigue, 1393, KwBind::Check},
    {M::FieldPPFA, 1394, KwBind::Check},
};

bool explicitEnabled() { return TheApplication && TheApplication->IsExplicitEnabledInTechPreview(); }
template <int Type>
bool offered()
{
    return CKwUIMaterial::IsTypeOffered(Type, explicitEnabled());
}

constexpr KwTextRow kTexts[] = {
    {1370, "Materials", "LabelGeneral", "General"},
    {CKwMFCUIMaterial::kAijTitleId, "Materials", "LabelDistortionalDeformationConstants",
     "Distortional Deformation Constants(Aij)"},
    {1360, "General", "LabelName", "Name", true},
    {1361, "General", "LabelID", "ID", true},
    {1362, "General", "LabelType", "Type", true},
    {1363, "PhysicalPropertiesLaminateDlg", "LabelFailureTheory", "Failure Theory", true},
    {1364, "General", "LabelDescription", "Description", true},
    {1371, "Materials", "GroupStructural", "Structural"},
    {1372, "Materials", "MaterialPropMatLabelName", "Material Property Matrix"},
    {CKwMFCUIMaterial::kOrthoMatrixId, "Materials", "MaterialPropMatLabelName",
     "Material Property Matrix"},
    {CKwMFCUIMaterial::kOrthoNoteId, "Materials", "LabelMatrixNotPositiveDefinite",
     "No matrix: these constants give no positive-definite compliance."},
    {1373, "Materials", "DropDownHyperelastic", "Hyperelastic"},
    {1365, "Materials", "LabelHyperelasticModel", "Model", true},
    {1366, "Materials", "ExperimentalDataFunction", "Experimental Data Function", true},
    {1400, "Materials", "ButtonDefineTable", "Define..."},
    {1393, "Materials", "FatigueOn", "Fatigue (on)"},
    {1394, "Materials", "PPFAON", "PPFA (on)"},
    {1402, "SNCurveDlg", "ButtonSNCurve", "S-N Curve..."},
    {1397, "NonlinearMaterialDlg", "ButtonStressStrain", "Stress-Strain Curve..."},
    {1398, "TemperatureDependencematerialDlg", "ButtonDefineNewTable",
     "Temperature Dependence Table for K"},
    {1401, "Materials", "ButtonOrthotropic3D", "3D Orthotropic Definition..."},
    {1395, "Materials", "ButtonLoadMaterial", "Load Material..."},
    {1396, "Materials", "ButtonLoadFromLibrary", "Load from Library..."},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
    {1390, "Materials", "DropDownIsotropic", "Isotropic", T::Item},
    {1390, "Materials", "DropDownOrthotropic2D", "Orthotropic 2D", T::Item},
    {1390, "Materials", "DropDownOrthotropic3D", "Orthotropic 3D", T::Item},
    {1390, "Materials", "DropDownAnisotropic3D", "Anisotropic 3D", T::Item},
    {1390, "Materials", "DropDownHyperelastic", "Hyperelastic", T::Item},
    {1390, "Materials", "DropDownNitinol", "Nitinol", T::Item},
    {1390, "Materials", "DropDownViscoElastic", "Viscoelastic", T::Item},
    {1390, "Materials", "DropDownCrushableFoam", "Crushable Foam", T::Item, KwTextLookup::Prop,
     0, offered<CKwMaterial::CrushableFoam>},
    {1390, "Materials", "DropDownRigid", "Rigid", T::Item, KwTextLookup::Prop, 0,
     offered<CKwMaterial::Rigid>},
    {1390, "Materials", "DropDownConcrete", "Concrete", T::Item, KwTextLookup::Prop, 0,
     offered<CKwMaterial::Concrete>},
    {1391, "Materials", "DropDownNeoHookean", "Neo-Hookean", T::Item},
    {1391, "Materials", "DropDownRivlin", "Mooney-Rivlin", T::Item},
    {1391, "Materials", "DropDownYeoh", "Yeoh", T::Item},
    {1391, "Materials", "DropDownOgden", "Ogden", T::Item},
    {1391, "Materials", "DropDownPolynomial", "Polynomial", T::Item},
    {1392, "General", "LabelNone", "None", T::Item},
    {1392, "Materials", "DropDownVonMisesStress", "von Mises Stress", T::Item},
    {1392, "Materials", "DropDownPrincipalStress", "Principal Stress", T::Item},
    {1399, "Materials", "SimpleTandC", "Simple Tension / Compression", T::Item},
    {1399, "Materials", "EquibiaxialTension", "Equibiaxial Tension", T::Item},
    {1399, "Materials", "SimpleShear", "Simple Shear", T::Item},
    {1399, "Materials", "PureVolumetricCompression", "Pure Volumetric Compression", T::Item},
    {1399, "Materials", "PureShear", "Pure Shear", T::Item},
};

// Labels of the extra values: the hyperelastic constants by their symbols, the others named.
struct ExtraLabel
{
    const char* key;
    const char* english;
};
constexpr ExtraLabel kExtraLabels[kExtras] = {
    {"LabelA10", "A10"}, {"LabelA01", "A01"}, {"LabelA20", "A20"}, {"LabelA11", "A11"},
    {"LabelA02", "A02"}, {"LabelA30", "A30"}, {"LabelA21", "A21"}, {"LabelA12", "A12"},
    {"LabelA03", "A03"}, {"LabelShift", "SHIFT"}, {"LabelFPC", "FPC"}, {"LabelCYM", "CYM"},
    {"AusteniteToMartensite", "Austenite to Martensite"},
    {"LabelFinishAusteniteToMartensite", "Austenite to Martensite, finish"},
    {"Martensite To Austenite", "Martensite to Austenite"},
    {"LabelFinishMartensiteToAustenite", "Martensite to Austenite, finish"},
    {"LabelTransformationStrain", "Transformation strain"},
    {"LabelMartensiteModulus", "Martensite modulus"},
};

CKwMFCUIMaterial::PointTableHook& pointTableHook()
{
    static CKwMFCUIMaterial::PointTableHook hook;
    return hook;
}

} // namespace

void CKwMFCUIMaterial::SetPointTableHook(PointTableHook hook) { pointTableHook() = std::move(hook); }

CKwMFCUIMaterial::CKwMFCUIMaterial(CFMView* view, KW_UOM* units, CKwMaterial* material,
                                   QWidget* parent, CKwAnalysis* analysis)
    : CKwMFCUIBase(kTemplateId, view, parent), m_ui(std::make_unique<Ui::CKwMFCUIMaterial>())
{
    m_ui->setupUi(this);
    // A type change sets the width only: the height stays, the value list scrolls.
    layout()->setSizeConstraint(QLayout::SetNoConstraint);
    // The property values: one table over a model, rows for the keys of the current type.
    // The extra values and the matrix are made when a type first shows them (see ensureRows).
    m_values = new KwMaterialValueModel(this);
    m_values->relabel();
    m_valueView = KwMakeMaterialValueView(m_ui->structural, m_values);
    m_ui->structuralLayout->insertWidget(0, m_valueView, 1);
    m_extraRows.resize(kExtras);
    m_ui->valuesGrid->setColumnStretch(1, 1);
    {
        // The list of extra values lines up with the table: its symbols and labels start
        // where the table's do (the table's cells keep a text margin), it has no right margin.
        QGridLayout* grid = m_ui->valuesGrid;
        const int textMargin = textMarginOfTable();
        QMargins m = grid->contentsMargins();
        grid->setContentsMargins(textMargin, m.top(), 0, m.bottom());
        grid->setColumnMinimumWidth(
            0, m_valueView->horizontalHeader()->sectionSize(KwMaterialValueModel::Symbol) -
                   spacingOr(grid->horizontalSpacing()));
    }
    // The extra rows stand at the top of their list, however tall it is.
    m_ui->valuesGrid->setRowStretch(K::Count + kExtras, 1);
    SetControlCodes(kControlCodes);
    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    // The computed stiffness follows the constants as the table shows them: typed, refilled
    // after the 3D orthotropic definition or a database load, or shown in other units.
    connect(m_values, &QAbstractItemModel::dataChanged, this, [this] {
        if (m_orthoMatrix && !m_orthoMatrix->isHidden())
            showOrthotropicStiffness();
    });
    connect(m_ui->fatigue, &QCheckBox::clicked, this, &CKwMFCUIMaterial::onFatigue);
    connect(m_ui->ppfa, &QCheckBox::clicked, this, &CKwMFCUIMaterial::onPPFA);
    connect(m_ui->stressStrain, &QPushButton::clicked, this,
            [this] { OpenPointTable(CKwMaterial::StressStrain); });
    connect(m_ui->temperatureTable, &QPushButton::clicked, this,
            [this] { OpenPointTable(CKwMaterial::ConductivityVsTemperature); });
    connect(m_ui->defineExperimental, &QPushButton::clicked, this, [this] {
        OpenPointTable(CKwMaterial::SimpleTension + std::max(0, m_ui->experimental->currentIndex()));
    });
    connect(m_ui->orthotropic3D, &QPushButton::clicked, this,
            &CKwMFCUIMaterial::OpenOrthotropic3DDefinition);
    connect(m_ui->snCurve, &QPushButton::clicked, this, &CKwMFCUIMaterial::OpenSNCurve);
    connect(m_ui->loadOwn, &QPushButton::clicked, this, [this] { LoadMaterialFromDB(true); });
    connect(m_ui->loadAny, &QPushButton::clicked, this, [this] { LoadMaterialFromDB(false); });
    SetAnalysis(analysis);
    OnCreate(view, material, nullptr);
}

CKwMFCUIMaterial::~CKwMFCUIMaterial() = default;

bool CKwMFCUIMaterial::OnInitDialog()
{
    // The rows of the edited type exist before the first fill, so it fills them at once.
    int type = 0;
    GetValue(FieldType, type);
    ensureRows(type);
    const bool ok = CKwMFCUIBase::OnInitDialog();
    showRowsOfType(type);
    // A type change keeps the height, so the dialog opens tall enough for the type with the
    // most panels: any type then finds room for its panels, the value table gets the rest.
    int most = 0;
    for (int t : GetListedTypes())
        most = std::max(most, heightOfTypePanels(t));
    const int extra = most - heightOfTypePanels(type);
    // Shorter than that by hand, the panels would be squeezed.
    const int least = minimumSizeHint().height() + extra;
    setMinimumHeight(least);
    // At its least height the value table shows its minimum of rows; the dialog opens taller
    // by what the table then lacks to show every row of the opened type, as far as the screen
    // allows: a list that fits never scrolls.
    const int lacking =
        std::max(0, m_valueView->verticalHeader()->length() + 2 * m_valueView->frameWidth() -
                        m_valueView->minimumHeight() - extra);
    const QScreen* s = screen();
    const int room = s ? s->availableGeometry().height() * 9 / 10 : least + lacking;
    const int opened = std::max(least, std::min(least + lacking, room));
    resize(width(), opened);
    ApplyTypeWidth(type);
    return ok;
}

void CKwMFCUIMaterial::SetTextToCurrentLang()
{
    CKwMFCUIBase::SetTextToCurrentLang();
    m_values->relabel();
    for (int e = CKwMaterial::A10; e <= CKwMaterial::A03; ++e)
        if (QLineEdit* cell = m_aij.cells[std::size_t(e)])
            cell->setToolTip(KwAijToolTip(e));
    // The experimental data list names what "Define..." opens: never blank.
    if (m_ui->experimental->currentIndex() < 0 && m_ui->experimental->count() > 0)
        m_ui->experimental->setCurrentIndex(0);
    syncTypeItems();
    SelectTypeFromEntity();
}

void CKwMFCUIMaterial::syncTypeItems()
{
    // The text table lists the offered types; a stored or loaded type that is not offered
    // follows them (see GetListedTypes). The type list's item rows stand in type code order.
    const std::vector<int> listed = GetListedTypes();
    std::vector<const KwTextRow*> items;
    for (const KwTextRow& row : kTexts)
        if (row.ctrlId == 1390 && row.to.target == T::Item)
            items.push_back(&row);
    QComboBox* combo = m_ui->type;
    const QSignalBlocker block(combo);
    for (int row = 0; row < int(listed.size()); ++row) {
        const int t = listed[row];
        const QString text = t >= 0 && t < int(items.size()) ? KwRowText(*items[t]) : QString();
        if (row >= combo->count())
            combo->addItem(text);
        else if (combo->itemText(row) != text)
            combo->setItemText(row, text);
    }
    while (combo->count() > int(listed.size()))
        combo->removeItem(combo->count() - 1);
}

std::array<QWidget*, 4> CKwMFCUIMaterial::makeRow(int gridRow, const QString& symbol,
                                                  const QString& label, int labelId, int editId,
                                                  int unitId)
{
    QWidget* parent = m_ui->valuesGrid->parentWidget();
    auto* s = new QLabel(symbol, parent);
    s->setProperty("kwData", true);
    auto* l = new QLabel(label, parent);
    auto* e = new QLineEdit(parent);
    auto* u = new QLabel(parent);
    u->setProperty("kwData", true);
    // As wide as the table's value and unit columns, so the values line up with the table's.
    e->setFixedWidth(m_valueView->horizontalHeader()->sectionSize(KwMaterialValueModel::Value));
    u->setMinimumWidth(extraUnitWidth());
    KwSetControlId(l, labelId);
    KwSetControlId(e, editId);
    KwSetControlId(u, unitId);
    QGridLayout* grid = m_ui->valuesGrid;
    grid->addWidget(s, gridRow, 0);
    grid->addWidget(l, gridRow, 1);
    grid->addWidget(e, gridRow, 2);
    grid->addWidget(u, gridRow, 3);
    return {s, l, e, u};
}

bool CKwMFCUIMaterial::ensureRows(int type)
{
    // Rows keep their grid row (key index, then the extras after the keys), so the list keeps
    // its order whatever order the rows were made in; empty grid rows take no room.
    bool made = false;
    for (int e : CKwMaterial::ExtrasForType(type)) {
        if (e < 0 || e >= kExtras || m_extraRows[e][2])
            continue;
        if (e <= CKwMaterial::A03) {
            makeAijGrid();
            made = true;
            continue;
        }
        // A value labelled by its own symbol (SHIFT, FPC, CYM) shows it once.
        const QString symbol = CKwMaterial::ExtraKey(e);
        m_extraRows[e] = makeRow(K::Count + e,
                                 symbol == QLatin1String(kExtraLabels[e].english) ? QString()
                                                                                  : symbol,
                                 KwLabel(KwPropText("Materials", kExtraLabels[e].key,
                                                    kExtraLabels[e].english)),
                                 kExtraLabelIdBase + e, kExtraIdBase + e, kExtraUnitIdBase + e);
        m_freshExtras.push_back(e);
        made = true;
    }
    if (type == CKwMaterial::Anisotropic3D && !m_matrixMade) {
        KwAddStiffnessGrid(m_ui->matrix, m_ui->matrixGrid, kMatrixIdBase, kMatrixHeadIdBase, 60,
                           false);
        m_matrixMade = m_freshMatrix = made = true;
    }
    // Computed, not filled: nothing for the logic to load.
    if (type == CKwMaterial::Orthotropic3D)
        makeOrthotropicMatrix();
    return made;
}

void CKwMFCUIMaterial::makeOrthotropicMatrix()
{
    if (m_orthoMatrix)
        return;
    // The anisotropic matrix's layout (heads "%s(Gij)", upper triangle, the unit beside the
    // heads) with cells that only show; the logic has no codes for them, so nothing computed
    // reaches the material.
    auto* group = new QGroupBox(KwPropText("Materials", "MaterialPropMatLabelName",
                                           "Material Property Matrix"),
                                this);
    KwSetControlId(group, kOrthoMatrixId);
    auto* grid = new QGridLayout(group);
    // Room for the widest number a cell shows, sign and exponent included; a line edit keeps
    // its frame and two pixels either side of its text.
    const int wide = fontMetrics().horizontalAdvance(QStringLiteral("-8.8888e+05 ")) +
                     2 * (style()->pixelMetric(QStyle::PM_DefaultFrameWidth) + 2);
    m_orthoUnit = KwAddStiffnessGrid(group, grid, kOrthoCellIdBase, kOrthoHeadIdBase, wide, true,
                                     &m_orthoCells);
    m_orthoNote = new QLabel(KwPropText("Materials", "LabelMatrixNotPositiveDefinite",
                                        "No matrix: these constants give no positive-definite "
                                        "compliance."),
                             group);
    KwSetControlId(m_orthoNote, kOrthoNoteId);
    // The line keeps its room while hidden: the grid does not move as the constants change.
    QSizePolicy policy = m_orthoNote->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    m_orthoNote->setSizePolicy(policy);
    m_orthoNote->hide();
    grid->addWidget(m_orthoNote, 7, 0, 1, 7);
    // Below the anisotropic matrix's place; only one of the two shows.
    m_ui->outer->insertWidget(m_ui->outer->indexOf(m_ui->matrix) + 1, group);
    m_orthoMatrix = group;
}

void CKwMFCUIMaterial::showOrthotropicStiffness()
{
    // The constants as the table shows them, in the units it shows them in.
    static const KW_UOM si(KW_UOM::SI);
    const KW_UOM* units = GetUnits();
    const auto shown = [&](int key) {
        const QString text = m_values->value[key].trimmed();
        if (text.isEmpty() || !IsNumber(text))
            return MissingDouble;
        return (units ? units : &si)->ToInternalValue(KwAtof(text), K::UnitKind(key));
    };
    const KwOrthotropicStiffness s = KwOrthotropicStiffness::From(
        {shown(K::E1), shown(K::E2), shown(K::E3), shown(K::NUXY), shown(K::NUYZ),
         shown(K::NUXZ), shown(K::G12), shown(K::G1Z), shown(K::G2Z)});
    int k = 0;
    for (int r = 0; r < 6; ++r)
        for (int c = r; c < 6; ++c) {
            const double v = s.status == KwOrthotropicStiffness::Ok ? s.At(r, c) : MissingDouble;
            QLineEdit* cell = m_orthoCells[std::size_t(k++)];
            // Computed, not typed: five digits tell the stiffnesses apart and keep the grid
            // narrow; the constants they come from keep all their digits in the table.
            const QString text =
                IsMissingValue(v) ? QString()
                                  : QString::asprintf("%.5g", (units ? units : &si)->GetDisplayValue(
                                                                  v, KwUnitKind::Stress));
            if (cell->text() != text) {
                cell->setText(text);
                cell->setCursorPosition(0);
            }
        }
    m_orthoUnit->setText((units ? units : &si)->GetUnits(KwUnitKind::Stress));
    m_orthoNote->setVisible(s.status == KwOrthotropicStiffness::NotPositiveDefinite);
}

void CKwMFCUIMaterial::makeAijGrid()
{
    if (m_aij.widget)
        return;
    m_aij = KwMakeAijGrid(m_ui->hyperelastic, kExtraIdBase, kExtraUnitIdBase + CKwMaterial::A10,
                          kAijTitleId);
    // The cells keep the extra values' ids: the logic fills and reads them by their codes.
    for (int e = CKwMaterial::A10; e <= CKwMaterial::A03; ++e) {
        m_extraRows[e] = {nullptr, nullptr, m_aij.cells[std::size_t(e)],
                          e == CKwMaterial::A10 ? m_aij.unit : nullptr};
        m_freshExtras.push_back(e);
    }
    m_ui->hyperGrid->addWidget(m_aij.widget, 2, 0, 1, 3);
    connect(m_ui->model, &QComboBox::currentIndexChanged, this,
            [this](int model) { KwEnableAijCells(m_aij, model); });
}

bool CKwMFCUIMaterial::isAbsentCode(int code) const
{
    // A row is there when its value edit (slot 2) or its unit label (slot 3) is; the Aij grid
    // has one unit label for all its cells.
    const auto absent = [](const auto& rows, int first, int code, int slot) {
        const int i = code - first;
        return i >= 0 && i < int(rows.size()) && !rows[i][slot];
    };
    if (absent(m_extraRows, CodeExtraFirst, code, 2) ||
        absent(m_extraRows, CodeExtraUnitFirst, code, 3))
        return true;
    return !m_matrixMade && ((code >= CodeMatrixFirst && code < CodeMatrixFirst + kMatrix) ||
                             code == CodeMatrixUnit);
}

bool CKwMFCUIMaterial::isFreshCode(int code) const
{
    const auto in = [](const std::vector<int>& fresh, int first, int code) {
        return std::find(fresh.begin(), fresh.end(), code - first) != fresh.end();
    };
    return in(m_freshExtras, CodeExtraFirst, code) || in(m_freshExtras, CodeExtraUnitFirst, code) ||
           (m_freshMatrix && ((code >= CodeMatrixFirst && code < CodeMatrixFirst + kMatrix) ||
                              code == CodeMatrixUnit));
}

int CKwMFCUIMaterial::SetControlText(int code, const QString& text)
{
    // Rows not made yet refuse their codes (the logic keeps those values); while new rows
    // are filled, the rows the user may have typed in are left as they are. The property
    // values live in the table's model, every key there from the start.
    if (isAbsentCode(code) || (m_fillingFresh && !isFreshCode(code)))
        return 0;
    if (code >= CodeValueFirst && code < CodeValueFirst + K::Count) {
        m_values->setText(m_values->value, code - CodeValueFirst, text);
        return 1;
    }
    if (code >= CodeUnitFirst && code < CodeUnitFirst + K::Count) {
        m_values->setText(m_values->unit, code - CodeUnitFirst, text);
        return 1;
    }
    return CKwMFCUIBase::SetControlText(code, text);
}

int CKwMFCUIMaterial::GetControlText(int code, QString& text)
{
    if (code >= CodeValueFirst && code < CodeValueFirst + K::Count) {
        commitTypedValue();
        text = m_values->value[code - CodeValueFirst];
        return 1;
    }
    return isAbsentCode(code) ? 0 : CKwMFCUIBase::GetControlText(code, text);
}

int CKwMFCUIMaterial::SetControlToolTip(int code, const QString& text)
{
    if (isAbsentCode(code) || (m_fillingFresh && !isFreshCode(code)))
        return 0;
    if (code >= CodeValueFirst && code < CodeValueFirst + K::Count) {
        m_values->tip[code - CodeValueFirst] = text;
        return 1;
    }
    return CKwMFCUIBase::SetControlToolTip(code, text);
}

void CKwMFCUIMaterial::commitTypedValue() const
{
    // The table's editor is a child of its viewport while a value is being typed; handing it
    // to the delegate's commit writes the text into the model.
    // A closed editor is hidden before it goes, so only a shown one holds typed text.
    for (QLineEdit* editor : m_valueView->viewport()->findChildren<QLineEdit*>())
        if (!editor->isHidden())
            emit m_valueView->itemDelegate()->commitData(editor);
}

QString CKwMFCUIMaterial::KeyValueText(int key) const
{
    commitTypedValue();
    return key >= 0 && key < K::Count ? m_values->value[key] : QString();
}

void CKwMFCUIMaterial::SetKeyValueText(int key, const QString& text)
{
    const int row = m_values->rowOf(key);
    if (row >= 0)
        m_values->setData(m_values->index(row, KwMaterialValueModel::Value), text, Qt::EditRole);
}

void CKwMFCUIMaterial::OnObjectDataLoaded()
{
    // A material read from a file may bring a type the list does not offer.
    syncTypeItems();
    CKwMFCUIBase::OnObjectDataLoaded();
    int type = 0;
    if (GetValue(FieldType, type)) {
        showRowsOfType(type);
        ApplyTypeWidth(type);
    }
}

bool CKwMFCUIMaterial::IsKeyShown(int key) const { return m_values->rowOf(key) >= 0; }

bool CKwMFCUIMaterial::IsExtraShown(int extra) const
{
    return extra >= 0 && extra < kExtras && m_extraRows[extra][2] &&
           !m_extraRows[extra][2]->isHidden();
}

void CKwMFCUIMaterial::showRowsOfType(int type)
{
    if (ensureRows(type)) {
        // New rows show the edit copy's values; nothing else is touched.
        m_fillingFresh = true;
        LoadObjectData();
        m_fillingFresh = false;
    }
    m_freshExtras.clear();
    m_freshMatrix = false;
    const std::vector<int> extras = CKwMaterial::ExtrasForType(type);
    commitTypedValue();
    KwShowMaterialRows(m_valueView, m_values, type);
    // The extra rows stand in the list below the table; the hyperelastic constants in their
    // grid.
    for (int e = 0; e < kExtras; ++e) {
        if (!m_extraRows[e][2])
            continue;
        const bool on = std::find(extras.begin(), extras.end(), e) != extras.end();
        for (QWidget* w : m_extraRows[e])
            if (w)
                w->setVisible(on);
    }
    // The list is as tall as its rows: it never scrolls, and the value table above takes
    // what the dialog has left.
    const int listed = extraListRows(type);
    if (listed > 0)
        m_ui->scroll->setFixedHeight(extraListHeight(listed));
    m_ui->scroll->setVisible(listed > 0);
    KwEnableAijCells(m_aij, m_ui->model->currentIndex());
    m_ui->matrix->setVisible(type == CKwMaterial::Anisotropic3D);
    m_ui->hyperelastic->setVisible(type == CKwMaterial::Hyperelastic);
    m_ui->stressStrain->setVisible(hasStressStrainCurve(type));
    m_ui->temperatureTable->setVisible(hasConductivityTable(type));
    m_ui->orthotropic3D->setVisible(type == CKwMaterial::Orthotropic3D);
    if (m_orthoMatrix) {
        m_orthoMatrix->setVisible(type == CKwMaterial::Orthotropic3D);
        if (type == CKwMaterial::Orthotropic3D)
            showOrthotropicStiffness();
    }
    fitUnitColumn();
}

bool CKwMFCUIMaterial::hasStressStrainCurve(int type)
{
    return type == CKwMaterial::Isotropic || type == CKwMaterial::CrushableFoam;
}

bool CKwMFCUIMaterial::hasConductivityTable(int type)
{
    const std::vector<int> keys = CKwMaterial::KeysForType(type);
    return std::find(keys.begin(), keys.end(), int(K::KX)) != keys.end();
}

int CKwMFCUIMaterial::extraListRows(int type)
{
    // The hyperelastic constants stand in their grid, not in the list.
    const std::vector<int> extras = CKwMaterial::ExtrasForType(type);
    return int(std::count_if(extras.begin(), extras.end(),
                             [](int e) { return e > CKwMaterial::A03 && e < kExtras; }));
}

int CKwMFCUIMaterial::spacingOr(int layoutSpacing) const
{
    // A style that spaces controls pair by pair reports no layout spacing; take its spacing
    // between two edits.
    return layoutSpacing >= 0 ? layoutSpacing
                              : std::max(0, style()->layoutSpacing(QSizePolicy::LineEdit,
                                                                   QSizePolicy::LineEdit,
                                                                   Qt::Vertical));
}

int CKwMFCUIMaterial::extraListHeight(int rows) const
{
    const QMargins m = m_ui->valuesGrid->contentsMargins();
    return rows * m_ui->name->sizeHint().height() +
           (rows - 1) * spacingOr(m_ui->valuesGrid->verticalSpacing()) + m.top() + m.bottom() +
           2 * m_ui->scroll->frameWidth();
}

int CKwMFCUIMaterial::matrixPanelHeight() const
{
    // Before its cells are made the group is its frame and title only.
    int h = m_ui->matrix->sizeHint().height();
    if (!m_matrixMade) // heads and six rows of cells
        h += m_ui->nameLabel->sizeHint().height() +
             6 * (m_ui->name->sizeHint().height() + spacingOr(m_ui->matrixGrid->verticalSpacing()));
    return h;
}

int CKwMFCUIMaterial::heightOfTypePanels(int type) const
{
    // What a type shows beyond the parts every type has, each with the spacing before it.
    // Panels not made yet are reckoned from the rows they will hold.
    const int spacing = spacingOr(layout()->spacing());
    const int edit = m_ui->name->sizeHint().height();
    const int label = m_ui->nameLabel->sizeHint().height();
    int h = 0;
    if (type == CKwMaterial::Hyperelastic) {
        const int gap = spacingOr(m_ui->hyperGrid->verticalSpacing());
        h += spacing + m_ui->hyperelastic->sizeHint().height();
        if (!m_aij.widget) // title, heads, four rows of constants
            h += gap + 2 * label + 4 * edit + 5 * gap;
    }
    if (type == CKwMaterial::Anisotropic3D)
        h += spacing + matrixPanelHeight();
    if (type == CKwMaterial::Orthotropic3D) {
        // The same grid, and the line under it that tells why it is empty.
        const int gap = spacingOr(m_ui->matrixGrid->verticalSpacing());
        h += spacing + (m_orthoMatrix ? m_orthoMatrix->sizeHint().height()
                                      : matrixPanelHeight() + gap + label);
    }
    if (const int rows = extraListRows(type))
        h += spacingOr(m_ui->structuralLayout->spacing()) + extraListHeight(rows);
    if (hasStressStrainCurve(type) || hasConductivityTable(type) ||
        type == CKwMaterial::Orthotropic3D)
        h += spacing + m_ui->stressStrain->sizeHint().height();
    return h;
}

void CKwMFCUIMaterial::fitUnitColumn()
{
    // Every unit of every key, so the column keeps its width from type to type.
    const QFontMetrics fm(m_valueView->font());
    int widest = fm.horizontalAdvance(QStringLiteral("mW/(mm C)"));
    for (const QString& unit : m_values->unit)
        widest = std::max(widest, fm.horizontalAdvance(unit));
    const int width = widest + 2 * textMarginOfTable() + fm.horizontalAdvance(QLatin1Char('W'));
    QHeaderView* h = m_valueView->horizontalHeader();
    if (h->sectionSize(KwMaterialValueModel::Unit) == width)
        return;
    h->resizeSection(KwMaterialValueModel::Unit, width);
    // The list of extra values keeps in line (its rows have a symbol; the Aij grid's not).
    for (const auto& row : m_extraRows)
        if (row[0] && row[3])
            row[3]->setMinimumWidth(extraUnitWidth());
}

int CKwMFCUIMaterial::textMarginOfTable() const
{
    // The item delegate keeps this much room either side of a cell's text.
    return m_valueView->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr,
                                             m_valueView) + 1;
}

int CKwMFCUIMaterial::extraUnitWidth() const
{
    // The list has no right margin; its unit label and the spacing before it take the width
    // of the table's unit column.
    return m_valueView->horizontalHeader()->sectionSize(KwMaterialValueModel::Unit) -
           spacingOr(m_ui->valuesGrid->horizontalSpacing());
}

int CKwMFCUIMaterial::WidthForType(int type) const { return KwMaterialDialogWidth(type); }

void CKwMFCUIMaterial::OnTypeLeaving(int)
{
    // The edit copy takes what the panels of the old type show before they change: the
    // sub-choices as their controls stand, and the values typed in the old type's rows.
    for (const auto& [field, combo] : {std::pair{int(FieldFailureTheory), m_ui->failure},
                                       std::pair{int(FieldHyperelasticModel), m_ui->model}})
        if (combo->currentIndex() >= 0)
            SetValue(field, combo->currentIndex());
    SetValue(FieldFatigue, m_ui->fatigue->isChecked() ? 1 : 0);
    UpdateObjectData(false);
}

void CKwMFCUIMaterial::OnTypeChanged(int type)
{
    showRowsOfType(type);
    // Each advisory is a bubble of its own, shown one after the other.
    ShowAdvisories(KwMaterialTypeAdvisories(type, GetAnalysis(), GetEditObject()));
}

void CKwMFCUIMaterial::onFatigue(bool on)
{
    const CKwAnalysis* analysis = GetAnalysis();
    if (on && !(analysis && analysis->IsFatigueAnalysis()))
        ShowAdvisory("Materials", "FatigueOptionRequiredForMaterials",
                     "Material fatigue data will not be applicable until a fatigue analysis has "
                     "been selected.");
}

void CKwMFCUIMaterial::onPPFA(bool on)
{
    QStringList texts{
        on ? KwErrText("Materials", "PPFATurnedON", "PPFA Calculation has been turned ON for all analyses")
           : KwErrText("Materials", "PPFATurnedOFF",
                       "PPFA Calculation has been turned OFF for all analyses")};
    if (on && !KwTakesNonlinearMaterialData(GetAnalysis()))
        texts << KwErrText("Materials", "NonlinearAnalysisRequiredForPPFA",
                           "PPFA data will not be applicable until a Nonlinear analysis has "
                           "been selected.");
    ShowAdvisories(texts);
}

void CKwMFCUIMaterial::OpenPointTable(int curve)
{
    UpdateObjectData(false);
    if (pointTableHook()) {
        pointTableHook()(this, curve);
        return;
    }
    KwEditMaterialCurve(this, this, curve, GetUnitSystem(), GetFMView());
}

bool CKwMFCUIMaterial::OpenSNCurve()
{
    // The S-N curve is fatigue data of the edit copy: its OK writes the copy, the model waits
    // for this editor's OK, as with the other point tables.
    UpdateObjectData(false);
    return KwEditSNCurve(this, GetEditObject(), GetUnitSystem(), GetFMView());
}

bool CKwMFCUIMaterial::OpenOrthotropic3DDefinition()
{
    // The definition works on the edit copy: it shows what was typed here and its OK writes
    // the copy, which the table then shows; the model waits for this editor's OK.
    UpdateObjectData(false);
    CKwMaterial* m = GetEditObject();
    if (!m)
        return false;
    CKwOrthotropic3DDlg dlg(m, GetUnitSystem(), GetFMView(), this);
    if (dlg.DoModal() != KwMB::IDOK)
        return false;
    ReloadObjectData();
    return true;
}

bool CKwMFCUIMaterial::LoadMaterialFromDB(bool ownFilesOnly)
{
    if (!ownFilesOnly)
        return KwBrowseMaterialLibrary(this, this, GetUnitSystem());
    return KwLoadMaterialFromDB(this, this, ownFilesOnly);
}

void CKwMFCUIMaterial::SetFailureTheorySetting(unsigned option)
{
    CKwUIMaterial::SetFailureTheorySetting(option);
}

void CKwMFCUIMaterial::RefreshFromHost()
{
    // The edit copy stays: what the user typed is kept, the controls show it afresh.
    UpdateObjectData(false);
    ReloadObjectData();
}
