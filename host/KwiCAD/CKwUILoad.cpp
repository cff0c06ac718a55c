#include "CKwUILoad.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwFunction.h"
#include "CKwSubCase.h"
#include "CKwTable.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwTableLookup.h"
#include "KwUIText.h"

#include <QFile>
#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <span>

using KwEntityLogic::FillArgs;
using KwEntityLogic::FormatNumber;
using KwUIText::err;
using KwUIText::prop;

namespace {

constexpr unsigned kVertices = 0x2;
constexpr unsigned kPoints = 0x4;
constexpr unsigned kEdges = 0x10;
constexpr unsigned kFaces = 0x40;
constexpr unsigned kNodes = 0x400; // CKwUIEntity::FilterBitOf(Node)
constexpr unsigned kBodies = 0x1000;
constexpr unsigned kGeometry = kFaces | kEdges | kVertices | kPoints;

namespace F = KwLoadFlag;
namespace P = KwLoadPanel;

// Selection prompts (section, key, English).
#define KW_PROMPT_FEP "Loads", "TooltipSelectedEntities", "Select face, edge, or point"
#define KW_PROMPT_BFEP "Loads", "TooltipSelectedEntities2", "Select body, face, edge or point"
#define KW_PROMPT_BODY "ConMass", "TooltipAutomaticSelectedEntities", "Select Body"
#define KW_PROMPT_FACES "PhysicalProperties", "TooltipFaces", "Select faces/surfaces"
#define KW_HEADING(key, english) {-1, key, english, P::None, 0, 0, nullptr, nullptr, nullptr, 0}

// The rows of the type combo, in order. Structural loads first, then the thermal,
// enforced-motion and initial-condition groups, each under its heading (rows 12, 18, 20).
constexpr KwLoadTypeRow kRows[] = {
    {CKwLoad::Force, "DropDownForce", "Force", P::Vector, 2, kGeometry | kNodes, KW_PROMPT_FEP,
     F::Direction | F::Distribution | F::TimeTable | F::TemperatureTable | F::NeedsEntities},
    {CKwLoad::Pressure, "DropDownPressure", "Pressure", P::Scalar, 4, kFaces, KW_PROMPT_FACES,
     F::TimeTable | F::TemperatureTable | F::NeedsEntities},
    {CKwLoad::Moment, "DropDownMoment", "Moment", P::Vector, 3, kGeometry, KW_PROMPT_FEP,
     F::Direction | F::Distribution | F::TimeTable | F::NeedsEntities},
    {CKwLoad::Gravity, "DropDownGravity", "Gravity", P::Vector, 15, kBodies, KW_PROMPT_BODY,
     F::Direction | F::TimeTable},
    {CKwLoad::Torque, "DropDownTorque", "Torque", P::Vector, 3, kFaces, KW_PROMPT_FACES,
     F::Direction | F::Distribution | F::TimeTable | F::NeedsEntities},
    {CKwLoad::RotationalForce, "DropDownRotationalForce", "Rotational Force", P::Rotational, 21,
     kBodies, KW_PROMPT_BODY, F::Direction | F::Location | F::LocationByNode | F::TimeTable},
    {CKwLoad::DistributedLoad, "DropDownDistributedLoad", "Distributed Load", P::Vector, 2,
     kGeometry, KW_PROMPT_FEP, F::Direction | F::TimeTable | F::NeedsEntities},
    {CKwLoad::RemoteForce, "DropDownRemoteForce", "Remote Force", P::RemoteForce, 2, kFaces,
     KW_PROMPT_FACES,
     F::Direction | F::Location | F::LocationByNode | F::TimeTable | F::NeedsEntities},
    {CKwLoad::BearingLoad, "DropDownBearingLoad", "Bearing Load", P::Bearing, 2, kFaces,
     KW_PROMPT_FACES, F::Direction | F::TimeTable | F::NeedsEntities},
    {CKwLoad::HydrostaticLoad, "DropDownHydrostaticLoad", "Hydrostatic Load", P::Hydrostatic, 10,
     kFaces, KW_PROMPT_FACES, F::Direction | F::Location | F::NeedsEntities},
    {CKwLoad::FromOutput, "DropDownFromOutput", "From Output", P::FromOutput, 0,
     kBodies | kGeometry, KW_PROMPT_BFEP, F::ResultsFile | F::NeedsEntities},
    {CKwLoad::PressurePulse, "DropDownPressurePulse", "Pressure Pulse", P::Scalar, 4, kFaces,
     KW_PROMPT_FACES, F::TimeTable | F::NeedsEntities},
    KW_HEADING("DropDownHeadingThermal", "Thermal Loads"),
    {CKwLoad::Temperature, "DropDownTemperature", "Temperature", P::Temperature, 11,
     kBodies | kGeometry, KW_PROMPT_BFEP, F::TimeTable | F::NeedsEntities},
    {CKwLoad::HeatFlux, "DropDownHeatFlux", "Heat Flux", P::HeatFlux, 23, kFaces,
     KW_PROMPT_FACES, F::TimeTable | F::TemperatureTable | F::NeedsEntities},
    {CKwLoad::Convection, "DropDownConvection", "Convection", P::Convection, 0, kFaces,
     KW_PROMPT_FACES, F::TimeTable | F::TemperatureTable | F::NeedsEntities},
    {CKwLoad::Radiation, "DropDownRadiation", "Radiation", P::Radiation, 0, kFaces,
     KW_PROMPT_FACES, F::TimeTable | F::NeedsEntities},
    {CKwLoad::HeatPower, "DropDownHeatPower", "Heat Power", P::Scalar, 25, kBodies | kGeometry,
     KW_PROMPT_BFEP, F::TimeTable | F::TemperatureTable | F::NeedsEntities},
    KW_HEADING("DropDownHeadingEnforcedMotion", "Enforced Motion"),
    {CKwLoad::EnforcedMotion, "DropDownEnforcedMotion", "Enforced Motion", P::Enforced, -1,
     kGeometry | kNodes, KW_PROMPT_FEP, F::Direction | F::TimeTable | F::NeedsEntities},
    KW_HEADING("DropDownHeadingInitialConditions", "Initial Conditions"),
    {CKwLoad::InitialCondition, "DropDownInitialCondition", "Initial Condition", P::Initial, -1,
     kBodies, KW_PROMPT_BODY, F::Direction},
};
#undef KW_PROMPT_FEP
#undef KW_PROMPT_BFEP
#undef KW_PROMPT_BODY
#undef KW_PROMPT_FACES
#undef KW_HEADING

constexpr int kRowCount = static_cast<int>(std::size(kRows));

struct Subtype
{
    const char* key;
    const char* english;
    int unitKind;
};
constexpr Subtype kEnforced[] = {
    {"DropDownEnforcedDisplacement", "Displacement", KwUnitKind::Length},
    {"DropDownEnforcedVelocity", "Velocity", KwUnitKind::Velocity},
    {"DropDownEnforcedAcceleration", "Acceleration", KwUnitKind::Acceleration},
};
constexpr Subtype kInitial[] = {
    {"DropDownInitialVelocity", "Velocity", KwUnitKind::Velocity},
    {"DropDownInitialAngularVelocity", "Angular Velocity", KwUnitKind::AngularVelocity},
    {"DropDownInitialAcceleration", "Acceleration", KwUnitKind::Acceleration},
    {"DropDownInitialAngularAcceleration", "Angular Acceleration",
     KwUnitKind::AngularAcceleration},
};

std::span<const Subtype> subtypesOf(int type)
{
    if (type == CKwLoad::EnforcedMotion)
        return kEnforced;
    if (type == CKwLoad::InitialCondition)
        return kInitial;
    return {};
}

// Largest magnitude a field takes, in internal units.
constexpr double kHuge = 1.0e20;
constexpr double kAbsoluteZero = 0.0; // K

int useIndex(int use) { return use == KwTableLookup::Temperature ? 1 : 0; }

} // namespace

CKwUILoad::CKwUILoad() = default;
CKwUILoad::~CKwUILoad() = default;

// --- the type list ---

const KwLoadTypeRow* CKwUILoad::GetTypeRows(int* count)
{
    if (count)
        *count = kRowCount;
    return kRows;
}

int CKwUILoad::GetTypeRowCount() { return kRowCount; }

bool CKwUILoad::IsHeadingRow(int row)
{
    return row >= 0 && row < kRowCount && kRows[row].code < 0;
}

int CKwUILoad::TypeOfRow(int row)
{
    return row >= 0 && row < kRowCount ? kRows[row].code : -1;
}

int CKwUILoad::RowOfType(int type)
{
    if (type < 0)
        return -1;
    for (int i = 0; i < kRowCount; ++i)
        if (kRows[i].code == type)
            return i;
    return -1;
}

const KwLoadTypeRow* CKwUILoad::GetTypeRow(int type)
{
    const int row = RowOfType(type);
    return row < 0 ? nullptr : &kRows[row];
}

QString CKwUILoad::GetTypeName(int type)
{
    const KwLoadTypeRow* r = GetTypeRow(type);
    return r ? prop("Loads", r->key, r->english) : QString();
}

QStringList CKwUILoad::GetTypeItems()
{
    QStringList items;
    for (const KwLoadTypeRow& r : kRows)
        items << prop("Loads", r.key, r.english);
    return items;
}

QStringList CKwUILoad::GetSubtypeItems(int type)
{
    QStringList items;
    for (const Subtype& s : subtypesOf(type))
        items << prop("Loads", s.key, s.english);
    return items;
}

int CKwUILoad::GetUnitKind(int type, int subtype)
{
    const KwLoadTypeRow* r = GetTypeRow(type);
    if (!r)
        return 0;
    if (r->unitKind >= 0)
        return r->unitKind;
    const auto subs = subtypesOf(type);
    return subtype >= 0 && subtype < static_cast<int>(subs.size())
               ? subs[static_cast<std::size_t>(subtype)].unitKind
               : 0;
}

// --- the edited load ---

CKwAnalysis* CKwUILoad::GetAnalysis() const
{
    return AnalysisInContext(m_pSubCase, m_analysis, GetModel());
}

const KW_UOM* CKwUILoad::units() const { return m_pView ? m_pView->GetUnitHolder() : nullptr; }

QString CKwUILoad::shown(double internalValue, int unitKind) const
{
    return KwEntityLogic::FormatShown(internalValue, unitKind, units());
}

int CKwUILoad::GetMagnitudeUnitKind() const
{
    const CKwLoad* l = GetEditObject();
    return l ? GetUnitKind(l->m_type, l->m_subtype) : 0;
}

QString CKwUILoad::GetMagnitudeCaption() const
{
    const CKwLoad* l = GetEditObject();
    QString label;
    switch (l ? l->m_type : -1) {
    case CKwLoad::HeatFlux: label = prop("Loads", "LabelHeatFlux", "Heat Flux"); break;
    case CKwLoad::Temperature: label = prop("Loads", "LabelTemperature", "Temperature"); break;
    case CKwLoad::HydrostaticLoad:
        label = prop("Loads", "LabelFluidDensity", "Fluid Density");
        break;
    default: label = prop("Loads", "LabelMagnitude", "Magnitude"); break;
    }
    const KW_UOM* u = units();
    const QString unit = u ? u->GetUnits(GetMagnitudeUnitKind())
                           : KW_UOM().GetUnits(GetMagnitudeUnitKind());
    return unit.isEmpty() ? label + QStringLiteral(":")
                          : QStringLiteral("%1 (%2):").arg(label, unit);
}

int CKwUILoad::GetTableIdAtRow(int use, int row) const
{
    const std::vector<int>& ids = m_tableRows[useIndex(use)];
    return row >= 0 && row < static_cast<int>(ids.size()) ? ids[static_cast<std::size_t>(row)]
                                                          : 0;
}

int CKwUILoad::GetRowOfTable(int use, int id) const
{
    const std::vector<int>& ids = m_tableRows[useIndex(use)];
    for (std::size_t i = 0; i < ids.size(); ++i)
        if (ids[i] == id && id > 0)
            return static_cast<int>(i);
    return -1;
}

void CKwUILoad::LoadTableItems()
{
    const int uses[] = {KwTableLookup::Time, KwTableLookup::Temperature};
    const int codes[] = {CodeTimeTables, CodeTemperatureTables};
    for (int i = 0; i < 2; ++i) {
        QStringList names;
        std::vector<int>& ids = m_tableRows[i];
        ids.clear();
        for (const KwTableLookup::Entry& t : KwTableLookup::List(GetModel(), uses[i])) {
            names << t.name;
            ids.push_back(t.id);
        }
        names << prop("Loads", "DropDownNewTable", "New Table");
        ids.push_back(-1);
        SetControlItems(codes[i], static_cast<int>(names.size()), names.constData());
    }
}

int CKwUILoad::AddNewTable(int use)
{
    CKwFEModel* model = GetModel();
    const int count = static_cast<int>(KwTableLookup::List(model, use).size());
    const int id = KwTableLookup::Add(model, use,
                                      prop("Loads", "DropDownNewTable", "New Table") +
                                          QStringLiteral(" %1").arg(count + 1));
    if (id > 0)
        m_addedTables.push_back(id);
    return id;
}

void CKwUILoad::DropNewTable(int id)
{
    const auto at = std::find(m_addedTables.begin(), m_addedTables.end(), id);
    if (at == m_addedTables.end())
        return; // only what this editor added
    m_addedTables.erase(at);
    KwTableLookup::Remove(GetModel(), id);
    m_keptTables.erase(std::remove_if(m_keptTables.begin(), m_keptTables.end(),
                                      [id](const KeptTable& k) { return k.id == id; }),
                       m_keptTables.end());
}

void CKwUILoad::KeepTableForCancel(int id, int use)
{
    const CKwTable* t = KwTableLookup::Find(GetModel(), id, use);
    if (!t || std::find(m_addedTables.begin(), m_addedTables.end(), id) != m_addedTables.end())
        return; // a table this editor added goes as a whole
    for (const KeptTable& k : m_keptTables)
        if (k.id == id)
            return; // the first state is the one to go back to
    m_keptTables.push_back({id, use, t->GetName(), t->GetXFunction()->Values(),
                            t->GetYFunction()->Values(), t->GetXFunction()->GetUnitType(),
                            t->GetYFunction()->GetUnitType()});
}

long CKwUILoad::OnSubmitUI()
{
    const long status = CKwFEUIBase<CKwLoad>::OnSubmitUI();
    if (status == 0) { // the tables belong to the model now
        m_addedTables.clear();
        m_keptTables.clear();
    }
    return status;
}

long CKwUILoad::OnCancelUI()
{
    // The tables made and edited from this editor go back to what the model had.
    CKwFEModel* model = GetModel();
    for (int id : m_addedTables)
        KwTableLookup::Remove(model, id);
    for (const KeptTable& k : m_keptTables) {
        CKwTable* t = KwTableLookup::Find(model, k.id, k.use);
        if (!t)
            continue; // deleted meanwhile: nothing to put back
        const auto column = [](const std::vector<double>& values, int unitType) {
            auto* f = new CKwFunction;
            for (double v : values)
                f->AddValue(v);
            f->SetUnitType(unitType);
            return f;
        };
        t->SetName(k.name);
        t->SetFunctions(column(k.x, k.xUnit), column(k.y, k.yUnit));
    }
    m_addedTables.clear();
    m_keptTables.clear();
    return CKwFEUIBase<CKwLoad>::OnCancelUI();
}

bool CKwUILoad::ReportMissingTable(int use)
{
    const CKwLoad* l = GetEditObject();
    if (!l)
        return false;
    const bool time = use == KwTableLookup::Time;
    const int id = time ? l->m_timeTableId : l->m_temperatureTableId;
    if (id == 0 || KwTableLookup::Exists(GetModel(), id, use))
        return false;
    if (m_pView)
        m_pView->ShowBubbleToolTipWarning(
            QStringLiteral("%1 - \n '%2'")
                .arg(time ? prop("Loads", "CheckboxTimeDependence", "Time Dependence")
                          : prop("Loads", "EnterCheckboxTemperatureTableData",
                                 "Temperature Dependence"),
                     FillArgs(err("Loads", "TableDeleted",
                                  "Table %s no longer exists; choose another table."),
                              {QString::number(id)})),
            0);
    return true;
}

QList<CKwLoad*>* CKwUILoad::GetModelList() const
{
    return GetModel() ? &GetModel()->m_loads : nullptr;
}

std::unique_ptr<CKwLoad> CKwUILoad::CreateNewObject()
{
    const int id = NextFreeID();
    auto l = std::make_unique<CKwLoad>(id, QStringLiteral("Load %1").arg(id));
    l->m_subcaseIds = KwEntityLogic::NewEntitySubcaseIds(m_pSubCase, GetAnalysis());
    return l;
}

void CKwUILoad::LoadObjectData()
{
    CKwLoad* l = GetEditObject();
    if (!l)
        return;
    m_pickTarget = PickEntities;
    m_typedMagnitudes.clear();
    if (!GetTypeRow(l->m_type)) {
        // A code no row has (a heading row, or a type of another version): shown as a force,
        // and the user is told before anything can be written.
        if (m_pView)
            m_pView->ShowBubbleToolTipWarning(
                FillArgs(err("Loads", "UnknownLoadType",
                             "The stored load type %s is unknown; the load is shown as %s."),
                         {QString::number(l->m_type), GetTypeName(CKwLoad::Force)}),
                0);
        l->m_type = CKwLoad::Force;
        l->m_subtype = 0;
    }
    if (l->m_subtype < 0 || l->m_subtype >= std::max<int>(1, static_cast<int>(
                                                                 subtypesOf(l->m_type).size())))
        l->m_subtype = 0;

    LoadNameAndID(CodeName, CodeID);
    const QStringList types = GetTypeItems();
    SetControlItems(CodeTypeItems, static_cast<int>(types.size()), types.constData());

    KwEntityLogic::FillSubcaseList(*this, GetAnalysis(), CodeSubcaseItems, CodeSubcaseSelection,
                                   l->m_subcaseIds);
    SetControlColor(CodeColor, l->m_color);
    LoadTableItems();
    SetControlText(CodeResultsFile, l->m_resultsFile);
    loadTypeDependent(false);

    ReportMissingTable(KwTableLookup::Time);
    ReportMissingTable(KwTableLookup::Temperature);
    Display(1);
}

void CKwUILoad::switchMagnitudeKind(int oldKind)
{
    CKwLoad* l = GetEditObject();
    const int newKind = GetMagnitudeUnitKind();
    if (!l || newKind == oldKind)
        return;
    // A number in one quantity is no number in another (1500 N is not 1500 Pa), so the field
    // is not carried over; what was typed waits for its own quantity, as it was typed, in
    // case the user comes back to it.
    TypedMagnitude& away = m_typedMagnitudes[oldKind];
    away.value = l->m_magnitude;
    away.hasText = GetControlText(CodeMagnitude, away.text) != 0;
    const auto back = m_typedMagnitudes.find(newKind);
    if (back == m_typedMagnitudes.end()) {
        l->m_magnitude = MissingDouble;
        SetControlText(CodeMagnitude, QString());
        return;
    }
    l->m_magnitude = back->second.value;
    SetControlText(CodeMagnitude,
                   back->second.hasText ? back->second.text : shown(back->second.value, newKind));
}

void CKwUILoad::loadTypeDependent(bool keepTypedValues)
{
    CKwLoad* l = GetEditObject();
    const KwLoadTypeRow* row = l ? GetTypeRow(l->m_type) : nullptr;
    if (!row)
        return;
    const QStringList subtypes = GetSubtypeItems(l->m_type);
    SetControlItems(CodeSubtypeItems, static_cast<int>(subtypes.size()), subtypes.constData());
    SetControlText(CodeMagnitudeLabel, GetMagnitudeCaption());
    const KW_UOM* u = units();
    const QString kelvin = u ? u->GetUnits(KwUnitKind::Temperature)
                             : KW_UOM().GetUnits(KwUnitKind::Temperature);
    SetControlText(CodeAmbientLabel,
                   QStringLiteral("%1 (%2):").arg(prop("Loads", "LabelAmbTemp",
                                                       "Ambient Temperature"),
                                                  kelvin));
    if (!keepTypedValues) {
        SetControlText(CodeMagnitude, shown(l->m_magnitude, GetMagnitudeUnitKind()));
        for (int i = 0; i < 3; ++i) {
            const std::size_t a = static_cast<std::size_t>(i);
            SetControlText(CodeDirectionX + i, IsMissingValue(l->m_direction[a])
                                                   ? QString()
                                                   : FormatNumber(l->m_direction[a]));
            SetControlText(CodeLocationX + i, shown(l->m_location[a], KwUnitKind::Length));
        }
        SetControlText(CodeAmbientTemperature,
                       shown(l->m_ambientTemperature, KwUnitKind::Temperature));
        SetControlText(CodeConvectionCoefficient,
                       shown(l->m_convectionCoefficient, KwUnitKind::ConvectionCoefficient));
        SetControlText(CodeAbsorptivity, shown(l->m_absorptivity, KwUnitKind::Dimensionless));
        SetControlText(CodeEmissivity, shown(l->m_emissivity, KwUnitKind::Dimensionless));
    }
    SetControlToolTip(CodeEntities,
                      prop(row->promptSection, row->promptKey, row->promptEnglish));

    QString where;
    const int mode = l->m_locationMode;
    switch (row->panel) {
    case KwLoadPanel::RemoteForce:
        where = mode == CKwLoad::LocationNode
                    ? prop("Loads", "TooltipSelectRemoteNode",
                           "Select grid point for remote force location")
                : mode == CKwLoad::LocationCoordinates
                    ? prop("Loads", "ToolTipEnterRemoteForceCoordinates",
                           "Enter coordinates of remote force location")
                    : prop("Loads", "TooltipSelectRemotePoint",
                           "Select Point/Vertex for remote force location");
        break;
    case KwLoadPanel::Rotational:
        where = mode == CKwLoad::LocationNode
                    ? prop("Loads", "TooltipSelectNode", "Select node for Axis origin")
                : mode == CKwLoad::LocationCoordinates
                    ? prop("Loads", "ToolTipEnterRotationalForceCoordinates",
                           "Enter coordinates for Axis origin")
                    : prop("Loads", "TooltipSelectOrigin", "Select Point/Vertex for Axis origin");
        break;
    case KwLoadPanel::Hydrostatic:
        where = mode == CKwLoad::LocationCoordinates
                    ? prop("Loads", "ToolTipEnterFluidSurfaceCoordinates",
                           "Enter coordinates of a point on the fluid surface")
                    : prop("CoordinateSystem", "LabelSelectPoint", "Select a point or a vertex");
        break;
    default: break;
    }
    if (!where.isEmpty())
        SetControlToolTip(CodeLocationEntity, where);
}

// --- reading the dialog ---

void CKwUILoad::readNumber(int code, int unitKind, double* target)
{
    QString text;
    if (!GetControlText(code, text))
        return;
    int status = KW_UOM::ParseOk;
    QString seen;
    const KW_UOM si;
    const KW_UOM* u = units() ? units() : &si;
    const double v = u->ParseQuantity(text, unitKind, &status, &seen);
    if (status == KW_UOM::ParseOk || status == KW_UOM::ParseEmpty)
        *target = v;
    else // the edit copy keeps its last good value; validation names the field
        m_fieldErrors.push_back({code, status, seen});
}

void CKwUILoad::UpdateObjectData(bool)
{
    CKwLoad* l = GetEditObject();
    if (!l)
        return;
    m_fieldErrors.clear();
    QString text;
    UpdateNameAndID(CodeName, CodeID);
    readNumber(CodeMagnitude, GetMagnitudeUnitKind(), &l->m_magnitude);
    for (int i = 0; i < 3; ++i)
        readNumber(CodeDirectionX + i, KwUnitKind::Dimensionless,
                   &l->m_direction[static_cast<std::size_t>(i)]);
    for (int i = 0; i < 3; ++i)
        readNumber(CodeLocationX + i, KwUnitKind::Length,
                   &l->m_location[static_cast<std::size_t>(i)]);
    readNumber(CodeAmbientTemperature, KwUnitKind::Temperature, &l->m_ambientTemperature);
    readNumber(CodeConvectionCoefficient, KwUnitKind::ConvectionCoefficient,
               &l->m_convectionCoefficient);
    readNumber(CodeAbsorptivity, KwUnitKind::Dimensionless, &l->m_absorptivity);
    readNumber(CodeEmissivity, KwUnitKind::Dimensionless, &l->m_emissivity);
    if (GetControlText(CodeResultsFile, text))
        l->m_resultsFile = text.trimmed();
}

// --- validation ---

QString CKwUILoad::fieldLabel(int code) const
{
    const CKwLoad* l = GetEditObject();
    switch (code) {
    case CodeMagnitude: {
        QString caption = GetMagnitudeCaption();
        caption.chop(1); // the colon
        return caption;
    }
    case CodeDirectionX:
    case CodeDirectionX + 1:
    case CodeDirectionX + 2:
        return l && l->m_type == CKwLoad::RotationalForce
                   ? prop("Loads", "LabelRotationalVectorComp", "Rotational Vector")
                   : prop("Loads", "LabelDirection", "Direction");
    case CodeLocationX:
    case CodeLocationX + 1:
    case CodeLocationX + 2: return prop("General", "LabelCoordinates", "Coordinates");
    case CodeAmbientTemperature: return prop("Loads", "LabelAmbTemp", "Ambient Temperature");
    case CodeConvectionCoefficient:
        return prop("Loads", "LabelConvectionCoefficient", "Convection Coefficient");
    case CodeAbsorptivity: return prop("Loads", "LabelRadiationabsorptivity", "Absorptivity");
    case CodeEmissivity: return prop("Loads", "LabelRadiationemisivity", "Emissivity");
    default: return QString();
    }
}

int CKwUILoad::validateNumber(double value, int unitKind, double min, double max,
                              bool minExclusive, const QString& label)
{
    const KW_UOM si;
    const KW_UOM* u = units() ? units() : &si;
    if (IsMissingValue(value) || !std::isfinite(value)) {
        const QString unit = u->GetUnits(unitKind);
        ShowFieldError(
            label, unit.isEmpty()
                       ? err("Loads", "NumberRequiredNoUnit", "Enter a number.")
                       : FillArgs(err("Loads", "NumberRequired", "Enter a number in %s."), {unit}));
        return 0;
    }
    const bool low = minExclusive ? value <= min : value < min;
    if (low || value > max) {
        const QString lo = FormatNumber(u->GetDisplayValue(min, unitKind));
        const QString hi = FormatNumber(u->GetDisplayValue(max, unitKind));
        ShowFieldError(
            label,
            minExclusive && max >= kHuge
                ? FillArgs(err("Loads", "ValueAbove", "Enter a value above %s."), {lo})
                : FillArgs(err("Loads", "ValueBetween", "Enter a value from %s to %s."), {lo, hi}));
        return 0;
    }
    return 1;
}

int CKwUILoad::ValidateObjectData()
{
    CKwLoad* l = GetEditObject();
    if (!l)
        return 0;
    if (!ValidateNameAndID(
            {"Loads", "Enter a name for the load.", "Another load already uses this ID."}))
        return 0;
    const KwLoadTypeRow* row = GetTypeRow(l->m_type);
    if (!row) {
        ShowFieldError(prop("General", "LabelType", "Type"),
                       err("Loads", "SelectLoadType", "Select a load type."));
        return 0;
    }
    const unsigned flags = row->flags;
    const int panel = row->panel;
    const bool usesLocationCoords =
        (flags & KwLoadFlag::Location) && l->m_locationMode == CKwLoad::LocationCoordinates;

    // Fields that held no number, in the order the user sees them; hidden fields do not count.
    const int kind = GetMagnitudeUnitKind();
    for (const FieldError& e : m_fieldErrors) {
        const bool used =
            (e.code == CodeMagnitude && kind != 0) ||
            (e.code >= CodeDirectionX && e.code < CodeDirectionX + 3 &&
             (flags & KwLoadFlag::Direction)) ||
            (e.code >= CodeLocationX && e.code < CodeLocationX + 3 && usesLocationCoords) ||
            (e.code == CodeAmbientTemperature &&
             (panel == KwLoadPanel::Convection || panel == KwLoadPanel::Radiation)) ||
            (e.code == CodeConvectionCoefficient && panel == KwLoadPanel::Convection) ||
            ((e.code == CodeAbsorptivity || e.code == CodeEmissivity) &&
             panel == KwLoadPanel::Radiation);
        if (!used)
            continue;
        const KW_UOM si;
        const KW_UOM* u = units() ? units() : &si;
        const int fieldKind = e.code == CodeMagnitude ? kind
                              : e.code >= CodeLocationX && e.code < CodeLocationX + 3
                                  ? KwUnitKind::Length
                              : e.code == CodeAmbientTemperature ? KwUnitKind::Temperature
                              : e.code == CodeConvectionCoefficient
                                  ? KwUnitKind::ConvectionCoefficient
                                  : KwUnitKind::Dimensionless;
        const QString unit = u->GetUnits(fieldKind);
        QString message;
        if (e.status == KW_UOM::ParseOutOfRange)
            message = FillArgs(err("Loads", "ValueBetween", "Enter a value from %s to %s."),
                               {FormatNumber(u->GetDisplayValue(-kHuge, fieldKind)),
                                FormatNumber(u->GetDisplayValue(kHuge, fieldKind))});
        else if (e.status == KW_UOM::ParseWrongUnit)
            message = FillArgs(err("Loads", "WrongUnit", "The value is in %s; enter it in %s."),
                               {e.unitSeen, unit});
        else if (unit.isEmpty())
            message = err("Loads", "NumberRequiredNoUnit", "Enter a number.");
        else
            message = FillArgs(err("Loads", "NumberRequired", "Enter a number in %s."), {unit});
        ShowFieldError(fieldLabel(e.code), message);
        return 0;
    }

    if (kind != 0) {
        double min = -kHuge;
        bool exclusive = false;
        if (l->m_type == CKwLoad::Temperature) {
            min = kAbsoluteZero;
            exclusive = true;
        } else if (l->m_type == CKwLoad::HydrostaticLoad) {
            min = 0.0;
            exclusive = true;
        }
        if (!validateNumber(l->m_magnitude, kind, min, kHuge, exclusive,
                            fieldLabel(CodeMagnitude)))
            return 0;
    }
    if (flags & KwLoadFlag::Direction) {
        for (int i = 0; i < 3; ++i)
            if (!validateNumber(l->m_direction[static_cast<std::size_t>(i)],
                                KwUnitKind::Dimensionless, -kHuge, kHuge, false,
                                fieldLabel(CodeDirectionX)))
                return 0;
        if (l->m_direction[0] == 0 && l->m_direction[1] == 0 && l->m_direction[2] == 0) {
            ShowFieldError(fieldLabel(CodeDirectionX),
                           err("Loads", "DirectionZero", "The direction must not be zero."));
            return 0;
        }
    }
    if (panel == KwLoadPanel::Convection || panel == KwLoadPanel::Radiation) {
        if (!validateNumber(l->m_ambientTemperature,
                            KwUnitKind::Temperature, kAbsoluteZero, kHuge, true,
                            fieldLabel(CodeAmbientTemperature)))
            return 0;
    }
    if (panel == KwLoadPanel::Convection &&
        !validateNumber(l->m_convectionCoefficient,
                        KwUnitKind::ConvectionCoefficient, 0.0, kHuge, false,
                        fieldLabel(CodeConvectionCoefficient)))
        return 0;
    if (panel == KwLoadPanel::Radiation) {
        for (int code : {CodeAbsorptivity, CodeEmissivity}) {
            const double v = code == CodeAbsorptivity ? l->m_absorptivity : l->m_emissivity;
            if (!validateNumber(v, KwUnitKind::Dimensionless, 0.0, 1.0, false,
                                fieldLabel(code)))
                return 0;
        }
    }
    if (flags & KwLoadFlag::Location) {
        const QString where =
            panel == KwLoadPanel::RemoteForce
                ? prop("Loads", "LabelRemoteForceLocation", "Remote Force Location")
            : panel == KwLoadPanel::Rotational
                ? prop("Loads", "LabelOrigin", "Origin")
                : prop("Loads", "LabelPointOnFluidSurface", "Point on Fluid Surface");
        if (usesLocationCoords) {
            for (int i = 0; i < 3; ++i)
                if (!validateNumber(l->m_location[static_cast<std::size_t>(i)],
                                    KwUnitKind::Length, -kHuge, kHuge, false, where))
                    return 0;
        } else if (!l->m_locationEntity || !acceptsLocation(l->m_locationEntity)) {
            ShowFieldError(where, err("Loads", "LocationRequired",
                                      "Pick the location or enter its coordinates."));
            return 0;
        }
    }
    if (flags & KwLoadFlag::ResultsFile) {
        const QString label = prop("Loads", "LabelFlowEFDResultsFile", "Results File");
        const QFileInfo info(l->m_resultsFile);
        const QString suffix = info.suffix().toLower();
        QString problem;
        if (l->m_resultsFile.isEmpty())
            problem = err("Loads", "ResultsFileRequired", "Choose a results file.");
        else if (suffix != QStringLiteral("fno") && suffix != QStringLiteral("cfdst"))
            problem = err("Loads", "ResultsFileType", "Choose a .fno or .cfdst results file.");
        else if (!info.exists() || !info.isFile())
            problem = err("Loads", "ResultsFileMissing", "The file does not exist.");
        else {
            QFile f(l->m_resultsFile);
            if (info.size() == 0 || !f.open(QIODevice::ReadOnly))
                problem = err("Loads", "ResultsFileUnreadable", "The file cannot be read.");
        }
        if (!problem.isEmpty()) {
            ShowFieldError(label, problem);
            return 0;
        }
    }

    const QString selected = prop("Constraints", "LabelSelectedEntities", "Selected Entities");
    if ((flags & KwLoadFlag::NeedsEntities) && l->m_entities.isEmpty()) {
        ShowFieldError(selected, err("Loads", "NoEntitiesSelected", "Select at least one entity."));
        return 0;
    }
    for (const CKwUIEntity* e : l->m_entities) {
        if (!(row->accepts & e->FilterBit())) {
            const bool ids = m_pView && m_pView->GetShowIDs();
            ShowFieldError(selected, FillArgs(err("Loads", "EntityKindRefused",
                                                  "%s cannot carry this type of load."),
                                              {e->GetDisplayText(ids)}));
            return 0;
        }
    }

    const struct
    {
        unsigned flag;
        bool on;
        int id;
        int use;
        const char* key;
        const char* english;
    } tables[] = {{KwLoadFlag::TimeTable, l->m_timeDependent, l->m_timeTableId,
                   KwTableLookup::Time, "CheckboxTimeDependence", "Time Dependence"},
                  {KwLoadFlag::TemperatureTable, l->m_temperatureDependent,
                   l->m_temperatureTableId, KwTableLookup::Temperature,
                   "EnterCheckboxTemperatureTableData", "Temperature Dependence"}};
    for (const auto& t : tables) {
        if (!(flags & t.flag) || !t.on)
            continue;
        if (t.id <= 0) {
            ShowFieldError(prop("Loads", t.key, t.english),
                           err("Loads", "TableRequired", "Choose a table."));
            return 0;
        }
        if (!KwTableLookup::Exists(GetModel(), t.id, t.use)) {
            ShowFieldError(prop("Loads", t.key, t.english),
                           FillArgs(err("Loads", "TableDeleted",
                                        "Table %s no longer exists; choose another table."),
                                    {QString::number(t.id)}));
            return 0;
        }
    }

    if (l->m_subcaseIds.isEmpty()) {
        ShowFieldError(KwUIText::subcasesLabel(),
                       err("Loads", "NoSubcaseSelected", "Add the load to a subcase."));
        return 0;
    }
    return 1;
}

// --- writing ---

void CKwUILoad::Display(int on)
{
    if (!m_pView)
        return;
    QList<CKwUIEntity*> shownEntities;
    if (on && GetEditObject()) {
        shownEntities = GetEditObject()->m_entities;
        if (CKwUIEntity* at = GetEditObject()->m_locationEntity)
            shownEntities.append(at);
    }
    m_pView->SetHighlightedEntities(shownEntities);
}

QString CKwUILoad::GetPageTitleString() const { return prop("Loads", "Title", "Loads"); }

QList<CKwUIEntity*> CKwUILoad::GetSelectedEntities() const
{
    const CKwLoad* l = GetEditObject();
    if (!l)
        return {};
    QList<CKwUIEntity*> all = l->m_entities;
    if (l->m_locationEntity)
        all.append(l->m_locationEntity);
    return all;
}

// --- picks ---

bool CKwUILoad::acceptsLocation(const CKwUIEntity* e) const
{
    const CKwLoad* l = GetEditObject();
    const KwLoadTypeRow* row = l ? GetTypeRow(l->m_type) : nullptr;
    if (!row || !(row->flags & KwLoadFlag::Location) || !e)
        return false;
    switch (l->m_locationMode) {
    case CKwLoad::LocationVertexOrPoint:
        return e->GetKind() == CKwUIEntity::Vertex || e->GetKind() == CKwUIEntity::Point;
    case CKwLoad::LocationNode:
        return (row->flags & KwLoadFlag::LocationByNode) && e->GetKind() == CKwUIEntity::Node;
    default: return false;
    }
}

void CKwUILoad::OnSelected(QList<CKwUIEntity*>* entities)
{
    CKwLoad* l = GetEditObject();
    const KwLoadTypeRow* row = l ? GetTypeRow(l->m_type) : nullptr;
    if (!row || !entities)
        return;
    QList<CKwUIEntity*> refused;
    for (CKwUIEntity* e : *entities) {
        if (!e)
            continue;
        if (m_pickTarget == PickLocation) {
            if (acceptsLocation(e))
                l->m_locationEntity = e; // one location: the last pick wins
            else
                refused.append(e);
        } else if (row->accepts & e->FilterBit()) {
            if (!l->m_entities.contains(e))
                l->m_entities.append(e);
        } else {
            refused.append(e);
        }
    }
    // The caller learns what was taken.
    for (CKwUIEntity* e : refused)
        entities->removeAll(e);
    if (!refused.isEmpty()) {
        const bool ids = m_pView && m_pView->GetShowIDs();
        ShowFieldError(
            prop("Constraints", "LabelSelectedEntities", "Selected Entities"),
            FillArgs(err("Loads", "EntityKindRefused", "%s cannot carry this type of load."),
                     {refused.first()->GetDisplayText(ids)}));
    }
    Display(1);
}

void CKwUILoad::OnDeselected(QList<CKwUIEntity*>* entities)
{
    CKwLoad* l = GetEditObject();
    if (!l || !entities)
        return;
    for (CKwUIEntity* e : *entities) {
        l->m_entities.removeAll(e);
        if (l->m_locationEntity == e)
            l->m_locationEntity = nullptr;
    }
    Display(1);
}

// --- list and value interface ---

void CKwUILoad::SetListValue(int code, const QList<int>& values)
{
    CKwLoad* l = GetEditObject();
    if (code == CodeSubcaseSelection && l && GetAnalysis())
        l->m_subcaseIds = KwEntityLogic::SubcaseIdsOfRows(GetAnalysis(), values);
}

int CKwUILoad::GetValue(int field, int& value)
{
    const CKwLoad* l = GetEditObject();
    if (!l)
        return 0;
    switch (field) {
    case FieldType: value = l->m_type; return 1;
    case FieldSubtype: value = l->m_subtype; return 1;
    case FieldDistribution: value = l->m_distribution; return 1;
    case FieldLocationMode: value = l->m_locationMode; return 1;
    case FieldTimeDependent: value = l->m_timeDependent ? 1 : 0; return 1;
    case FieldTimeTable: value = l->m_timeTableId; return 1;
    case FieldTemperatureDependent: value = l->m_temperatureDependent ? 1 : 0; return 1;
    case FieldTemperatureTable: value = l->m_temperatureTableId; return 1;
    case FieldPickTarget: value = m_pickTarget; return 1;
    case FieldSize: value = l->m_size; return 1;
    case FieldDensity: value = l->m_density; return 1;
    case FieldColor: value = static_cast<int>(l->m_color); return 1;
    default: return 0;
    }
}

int CKwUILoad::SetValue(int field, int value)
{
    CKwLoad* l = GetEditObject();
    if (!l)
        return 0;
    const KwLoadTypeRow* row = GetTypeRow(l->m_type);
    const unsigned flags = row ? row->flags : 0;
    switch (field) {
    case FieldType: {
        const KwLoadTypeRow* next = GetTypeRow(value);
        if (!next)
            return 0;
        if (value == l->m_type)
            return 1;
        const int oldKind = GetMagnitudeUnitKind();
        l->m_type = value;
        l->m_subtype = 0;
        switchMagnitudeKind(oldKind);
        if (!(next->flags & KwLoadFlag::LocationByNode) &&
            l->m_locationMode == CKwLoad::LocationNode)
            l->m_locationMode = CKwLoad::LocationVertexOrPoint;
        if (!(next->flags & KwLoadFlag::Location))
            m_pickTarget = PickEntities;
        if (l->m_locationEntity && !acceptsLocation(l->m_locationEntity))
            l->m_locationEntity = nullptr;
        loadTypeDependent(true);
        Display(1);
        return 1;
    }
    case FieldSubtype: {
        const int count = static_cast<int>(subtypesOf(l->m_type).size());
        if (value < 0 || value >= count)
            return 0;
        if (value == l->m_subtype)
            return 1;
        const int oldKind = GetMagnitudeUnitKind();
        l->m_subtype = value;
        switchMagnitudeKind(oldKind);
        SetControlText(CodeMagnitudeLabel, GetMagnitudeCaption());
        return 1;
    }
    case FieldDistribution:
        if (!(flags & KwLoadFlag::Distribution) ||
            (value != CKwLoad::TotalForce && value != CKwLoad::ForcePerEntity))
            return 0;
        l->m_distribution = value;
        return 1;
    case FieldLocationMode:
        if (!(flags & KwLoadFlag::Location) || value < CKwLoad::LocationVertexOrPoint ||
            value > CKwLoad::LocationCoordinates ||
            (value == CKwLoad::LocationNode && !(flags & KwLoadFlag::LocationByNode)))
            return 0;
        l->m_locationMode = value;
        if (l->m_locationEntity && !acceptsLocation(l->m_locationEntity))
            l->m_locationEntity = nullptr;
        if (value == CKwLoad::LocationCoordinates)
            m_pickTarget = PickEntities;
        loadTypeDependent(true);
        Display(1);
        return 1;
    case FieldTimeDependent:
        if (!(flags & KwLoadFlag::TimeTable))
            return 0;
        l->m_timeDependent = value != 0;
        return 1;
    case FieldTemperatureDependent:
        if (!(flags & KwLoadFlag::TemperatureTable))
            return 0;
        l->m_temperatureDependent = value != 0;
        return 1;
    case FieldTimeTable:
    case FieldTemperatureTable: {
        const int use =
            field == FieldTimeTable ? KwTableLookup::Time : KwTableLookup::Temperature;
        if (value != 0 && !KwTableLookup::Exists(GetModel(), value, use))
            return 0;
        (field == FieldTimeTable ? l->m_timeTableId : l->m_temperatureTableId) = value;
        return 1;
    }
    case FieldPickTarget:
        if (value == PickEntities) {
            m_pickTarget = value;
            return 1;
        }
        if (value != PickLocation || !(flags & KwLoadFlag::Location) ||
            l->m_locationMode == CKwLoad::LocationCoordinates)
            return 0;
        m_pickTarget = value;
        return 1;
    case FieldSize: l->m_size = value; return 1;
    case FieldDensity: l->m_density = value; return 1;
    case FieldColor: l->m_color = static_cast<unsigned>(value) & 0x00FFFFFFu; return 1;
    default: return 0;
    }
}
