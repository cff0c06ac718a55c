#include "CKwUIPlot.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwPhysicalProperty.h"
#include "CKwSubCase.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwSolverResults.h"
#include "KwUIText.h"

#include <algorithm>
#include <cmath>

using KwUIText::err;
using KwUIText::prop;

namespace {

using S = KwPlotSettings;
using U = CKwUIPlot;
constexpr const char* kSec = "PlotTemplate";

// The settings behind the value interface: a check state or a number within its bounds.
struct SettingSlot
{
    int field;
    bool S::*flag;
    int S::*number;
    int low;
    int high;
};

const SettingSlot kSlots[] = {
    {U::FieldContourOn, &S::contourOn, nullptr, 0, 1},
    {U::FieldContourStyle, nullptr, &S::contourStyle, 0, 1},
    {U::FieldBands, nullptr, &S::bands, 2, 24},
    {U::FieldAutoRange, &S::autoRange, nullptr, 0, 1},
    {U::FieldColorMap, nullptr, &S::colorMap, 0, 2},
    {U::FieldAveraging, nullptr, &S::averaging, 0, 1},
    {U::FieldDeformedOn, &S::deformedOn, nullptr, 0, 1},
    {U::FieldScaleMode, nullptr, &S::scaleMode, 0, 2},
    {U::FieldOutline, &S::undeformedOutline, nullptr, 0, 1},
    {U::FieldSolids, &S::showSolids, nullptr, 0, 1},
    {U::FieldMembers, &S::showMembers, nullptr, 0, 1},
    {U::FieldSectionOn, &S::sectionOn, nullptr, 0, 1},
    {U::FieldSectionAxis, nullptr, &S::sectionAxis, 0, 2},
    {U::FieldSectionPosition, nullptr, &S::sectionPosition, 0, 100},
    {U::FieldSectionCap, &S::sectionCap, nullptr, 0, 1},
    {U::FieldVectorsOn, &S::vectorsOn, nullptr, 0, 1},
    {U::FieldVectorResult, nullptr, &S::vectorResult, 0, KwPlotResult::VectorCount - 1},
    {U::FieldVectorSize, nullptr, &S::vectorSize, 1, 40},
    {U::FieldVectorsByMagnitude, &S::vectorsByMagnitude, nullptr, 0, 1},
    {U::FieldAnimate, &S::animate, nullptr, 0, 1},
    {U::FieldFrames, nullptr, &S::frames, 2, 100},
    {U::FieldSpeed, nullptr, &S::framesPerSecond, 1, 60},
    {U::FieldLoop, &S::loop, nullptr, 0, 1},
    {U::FieldMeshEdges, &S::meshEdges, nullptr, 0, 1},
    {U::FieldLoads, &S::loadsAndConstraints, nullptr, 0, 1},
    {U::FieldLegend, &S::legend, nullptr, 0, 1},
};

const SettingSlot* slotOf(int field)
{
    for (const SettingSlot& s : kSlots)
        if (s.field == field)
            return &s;
    return nullptr;
}

const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}

QString shown(double internal, int kind, const KW_UOM* units)
{
    return IsMissingValue(internal) ? QString()
                                    : KwEntityLogic::FormatShown(internal, kind, units);
}

} // namespace

CKwUIPlot::CKwUIPlot() = default;
CKwUIPlot::~CKwUIPlot() = default;

CKwAnalysis* CKwUIPlot::GetAnalysis() const
{
    const CKwPlot* p = GetEditObject();
    return p && p->GetAnalysis() ? p->GetAnalysis() : m_analysis;
}

const KW_UOM* CKwUIPlot::GetUnits() const
{
    const KW_UOM* units = m_pView ? m_pView->GetUnitHolder() : nullptr;
    return units ? units : &si();
}

QList<CKwPlot*>* CKwUIPlot::GetModelList() const
{
    return GetModel() ? &GetModel()->m_plots : nullptr;
}

std::unique_ptr<CKwPlot> CKwUIPlot::CreateNewObject()
{
    const int id = NextFreeID();
    auto p = std::make_unique<CKwPlot>(id, prop(kSec, "DefaultName", "Plot %1").arg(id),
                                       m_analysis);
    // A new plot starts on the first result set of the first subcase with results.
    const KwSolverResults* r = m_analysis ? m_analysis->GetSolverResults() : nullptr;
    const CKwSubCase* first = m_analysis ? m_analysis->GetFirstValidSubcaseInAnalysisResults()
                                         : nullptr;
    if (r && first)
        for (std::size_t i = 0; i < r->sets.size(); ++i)
            if (r->sets[i].subcaseId == first->GetID()) {
                p->m_settings.resultSet = int(i);
                break;
            }
    // A mode shape has no stress worth a first look; its displacement is the point.
    if (const KwResultSet* set = r && !r->sets.empty() ? &r->sets[std::size_t(p->m_settings.resultSet)] : nullptr;
        set && set->modal)
        p->m_settings.result = KwPlotResult::Displacement;
    return p;
}

const KwResultSet* CKwUIPlot::CurrentSet() const
{
    const CKwAnalysis* a = GetAnalysis();
    const KwSolverResults* r = a ? a->GetSolverResults() : nullptr;
    const CKwPlot* p = GetEditObject();
    if (!r || !p)
        return nullptr;
    const int i = p->m_settings.resultSet;
    return i >= 0 && std::size_t(i) < r->sets.size() ? &r->sets[std::size_t(i)] : nullptr;
}

QStringList CKwUIPlot::ResultSetNames() const { return ResultSetNamesOf(GetAnalysis(), GetUnits()); }

QStringList CKwUIPlot::ResultSetNamesOf(const CKwAnalysis* a, const KW_UOM* units)
{
    QStringList names;
    const KwSolverResults* r = a ? a->GetSolverResults() : nullptr;
    if (!r)
        return names;
    if (!units)
        units = &si();
    for (const KwResultSet& set : r->sets) {
        if (set.modal) {
            names << prop(kSec, "ItemMode", "Mode %1: %2 %3")
                         .arg(set.increment)
                         .arg(KwEntityLogic::FormatNumber(
                             units->GetDisplayValue(set.value, KwUnitKind::Frequency)))
                         .arg(units->GetUnits(KwUnitKind::Frequency));
            continue;
        }
        QString subcase = prop(kSec, "ItemSubcase", "Subcase %1").arg(set.subcaseId);
        for (const CKwSubCase* s : a->GetSubCases())
            if (s->GetID() == set.subcaseId)
                subcase = s->GetName();
        int inStep = 0;
        for (const KwResultSet& other : r->sets)
            inStep += other.step == set.step ? 1 : 0;
        if (inStep <= 1) {
            names << subcase;
            continue;
        }
        const bool harmonic = !set.displacementImaginary.empty();
        const int kind = harmonic ? KwUnitKind::Frequency : KwUnitKind::Time;
        names << prop(kSec, "ItemIncrement", "%1, Increment %2: %3 %4")
                     .arg(subcase)
                     .arg(set.increment)
                     .arg(KwEntityLogic::FormatNumber(units->GetDisplayValue(set.value, kind)))
                     .arg(units->GetUnits(kind));
    }
    return names;
}

QStringList CKwUIPlot::ResultNames()
{
    return {prop(kSec, "DropDownDisplacement", "Displacement"),
            prop(kSec, "DropDownVonMises", "Von Mises Stress"),
            prop(kSec, "DropDownPrincipal", "Principal Stress"),
            prop(kSec, "DropDownComponents", "Stress Components"),
            prop(kSec, "DropDownStrain", "Strain"),
            prop(kSec, "DropDownReaction", "Reaction Force")};
}

QStringList CKwUIPlot::ComponentNames(int result)
{
    using R = KwPlotResult::Result;
    const QString x = prop("General", "LabelAxisX", "X");
    const QString y = prop("General", "LabelAxisY", "Y");
    const QString z = prop("General", "LabelAxisZ", "Z");
    switch (result) {
    case R::Displacement:
    case R::Reaction: return {prop(kSec, "DropDownMagnitude", "Magnitude"), x, y, z};
    case R::VonMises: return {prop(kSec, "DropDownEquivalent", "Equivalent")};
    case R::Principal:
        return {prop(kSec, "DropDownFirstPrincipal", "First (Largest)"),
                prop(kSec, "DropDownSecondPrincipal", "Second"),
                prop(kSec, "DropDownThirdPrincipal", "Third (Smallest)")};
    case R::Components: return {x + x, y + y, z + z, x + y, y + z, z + x};
    case R::Strain:
        return {prop(kSec, "DropDownEquivalent", "Equivalent"), x + x, y + y, z + z, x + y,
                y + z, z + x};
    default: return {};
    }
}

KwPlotMaterial CKwUIPlot::GetPlotMaterial() const { return PlotMaterialOf(GetModel()); }

KwPlotMaterial CKwUIPlot::PlotMaterialOf(const CKwFEModel* model)
{
    KwPlotMaterial m;
    if (!model || model->m_materials.isEmpty())
        return m;
    const CKwMaterial* material = model->m_materials.first();
    for (const CKwPhysicalProperty* p : model->m_properties)
        if (p->m_idealization == CKwPhysicalProperty::Solid) {
            for (const CKwMaterial* candidate : model->m_materials)
                if (candidate->GetID() == p->m_materialId)
                    material = candidate;
            break;
        }
    const double e = material->GetValue(QStringLiteral("EX"));
    const double nu = material->GetValue(QStringLiteral("NUXY"));
    if (!IsMissingValue(e) && !IsMissingValue(nu)) {
        m.youngs = e;
        m.poisson = nu;
    }
    return m;
}

void CKwUIPlot::loadComponents()
{
    const CKwPlot* p = GetEditObject();
    const QStringList c = ComponentNames(p ? p->m_settings.result : 0);
    SetControlItems(CodeComponents, int(c.size()), c.constData());
}

void CKwUIPlot::loadRangeTexts()
{
    const CKwPlot* p = GetEditObject();
    if (!p)
        return;
    const KW_UOM* units = GetUnits();
    const int kind = KwResultMapping::UnitKind(p->m_settings.result);
    // An automatic range shows the field's own minimum and maximum, a fixed one what was set.
    double lo = p->m_settings.rangeMin, hi = p->m_settings.rangeMax;
    if (p->m_settings.autoRange) {
        const KwResultDisplay d = BuildDisplay();
        const double f = units->GetDisplayValue(1.0, kind) - units->GetDisplayValue(0.0, kind);
        lo = d.active && f != 0 ? d.rangeMin / f : MissingDouble;
        hi = d.active && f != 0 ? d.rangeMax / f : MissingDouble;
    }
    SetControlText(CodeRangeMin, shown(lo, kind, units));
    SetControlText(CodeRangeMax, shown(hi, kind, units));
}

void CKwUIPlot::LoadObjectData()
{
    CKwPlot* p = GetEditObject();
    if (!p)
        return;
    LoadNameAndID(CodeName, CodeID);
    const QStringList sets = ResultSetNames();
    SetControlItems(CodeResultSets, int(sets.size()), sets.constData());
    if (p->m_settings.resultSet >= sets.size())
        p->m_settings.resultSet = 0;
    const QStringList results = ResultNames();
    SetControlItems(CodeResults, int(results.size()), results.constData());
    loadComponents();
    loadRangeTexts();
    SetControlText(CodeScaleFactor,
                   KwEntityLogic::FormatNumber(p->m_settings.scaleFactor));
}

double CKwUIPlot::readNumber(int code, int unitKind) const
{
    QString text;
    if (!const_cast<CKwUIPlot*>(this)->GetControlText(code, text))
        return MissingDouble;
    return CFMView::GetDoubleFromString(GetUnits(), text, unitKind, 1);
}

void CKwUIPlot::UpdateObjectData(bool)
{
    CKwPlot* p = GetEditObject();
    if (!p)
        return;
    UpdateNameAndID(CodeName, CodeID);
    KwPlotSettings& s = p->m_settings;
    if (!s.autoRange) {
        const int kind = KwResultMapping::UnitKind(s.result);
        s.rangeMin = readNumber(CodeRangeMin, kind);
        s.rangeMax = readNumber(CodeRangeMax, kind);
    }
    s.scaleFactor = readNumber(CodeScaleFactor, KwUnitKind::Dimensionless);
}

int CKwUIPlot::ValidateObjectData()
{
    CKwPlot* p = GetEditObject();
    if (!p)
        return 0;
    if (!ValidateNameAndID({kSec, "Enter a name for the plot.",
                            "Another plot already uses this ID."}))
        return 0;
    const KwPlotSettings& s = p->m_settings;
    if (!s.autoRange) {
        const QString label = prop(kSec, "LabelRangeMinimum", "Minimum");
        if (IsMissingValue(s.rangeMin) || IsMissingValue(s.rangeMax)) {
            ShowFieldError(IsMissingValue(s.rangeMin) ? label
                                                      : prop(kSec, "LabelRangeMaximum", "Maximum"),
                           GetUnits()->GetErrorMessageForUnit(KwResultMapping::UnitKind(s.result)));
            return 0;
        }
        if (s.rangeMin >= s.rangeMax) {
            ShowFieldError(label, err(kSec, "RangeOrder",
                                      "The minimum must be below the maximum."));
            return 0;
        }
    }
    if (s.scaleMode == KwPlotSettings::ScaleFactor &&
        (IsMissingValue(s.scaleFactor) || !(s.scaleFactor > 0))) {
        ShowFieldError(prop(kSec, "LabelScaleFactor", "Factor"),
                       err(kSec, "FactorPositive", "Enter a factor above zero."));
        return 0;
    }
    return 1;
}

QString CKwUIPlot::GetPageTitleString() const { return prop(kSec, "Title", "Plot"); }

int CKwUIPlot::GetValue(int field, int& value)
{
    const CKwPlot* p = GetEditObject();
    if (!p)
        return 0;
    const KwPlotSettings& s = p->m_settings;
    switch (field) {
    case FieldResultSet: value = s.resultSet; return 1;
    case FieldResult: value = s.result; return 1;
    case FieldComponent: value = s.component; return 1;
    default: break;
    }
    const SettingSlot* slot = slotOf(field);
    if (!slot)
        return 0;
    value = slot->flag ? (s.*(slot->flag) ? 1 : 0) : s.*(slot->number);
    return 1;
}

int CKwUIPlot::SetValue(int field, int value)
{
    CKwPlot* p = GetEditObject();
    if (!p)
        return 0;
    KwPlotSettings& s = p->m_settings;
    switch (field) {
    case FieldResultSet:
        if (value < 0 || value >= int(ResultSetNames().size()))
            return 0;
        s.resultSet = value;
        break;
    case FieldResult:
        if (value < 0 || value >= KwPlotResult::Count)
            return 0;
        if (value != s.result) {
            s.result = value;
            s.component = 0;
            // A fixed range belongs to the result it was set for.
            s.autoRange = true;
            loadComponents();
        }
        break;
    case FieldComponent:
        if (value < 0 || value >= KwResultMapping::ComponentCount(s.result))
            return 0;
        s.component = value;
        break;
    default: {
        const SettingSlot* slot = slotOf(field);
        if (!slot || value < slot->low || value > slot->high)
            return 0;
        if (field == FieldAutoRange && value == 0 &&
            (IsMissingValue(s.rangeMin) || IsMissingValue(s.rangeMax) ||
             !(s.rangeMin < s.rangeMax))) {
            // A fixed range starts from the range the field has now.
            const KwResultDisplay d = BuildDisplay();
            const int kind = KwResultMapping::UnitKind(s.result);
            const double f = GetUnits()->GetDisplayValue(1.0, kind) -
                             GetUnits()->GetDisplayValue(0.0, kind);
            if (d.active && f != 0 && d.rangeMin < d.rangeMax) {
                s.rangeMin = d.rangeMin / f;
                s.rangeMax = d.rangeMax / f;
            }
        }
        if (slot->flag)
            s.*(slot->flag) = value != 0;
        else
            s.*(slot->number) = value;
        break;
    }
    }
    if (field == FieldResultSet || field == FieldResult || field == FieldComponent ||
        field == FieldAutoRange)
        loadRangeTexts();
    ShowResult();
    return 1;
}

KwResultDisplay CKwUIPlot::BuildDisplay() const
{
    const CKwPlot* p = GetEditObject();
    const CKwFEModel* model = GetModel();
    const KwResultSet* set = CurrentSet();
    if (!p || !set || !model || !model->m_mesh)
        return {};
    KwPlotSettings s = p->m_settings;
    if (!s.autoRange && (IsMissingValue(s.rangeMin) || IsMissingValue(s.rangeMax) ||
                         !(s.rangeMin < s.rangeMax)))
        s.autoRange = true;
    if (s.scaleMode == KwPlotSettings::ScaleFactor &&
        (IsMissingValue(s.scaleFactor) || !(s.scaleFactor > 0)))
        s.scaleMode = KwPlotSettings::ScaleAutomatic;
    const QStringList results = ResultNames();
    const QStringList components = ComponentNames(s.result);
    QString title = results.value(s.result);
    if (components.size() > 1)
        title += QStringLiteral(" - ") + components.value(s.component);
    return KwResultMapping::BuildDisplay(s, set, *model->m_mesh, GetUnits(), GetPlotMaterial(),
                                         title);
}

void CKwUIPlot::ShowResult()
{
    CFMView* view = GetView();
    const CKwPlot* p = GetEditObject();
    if (!view || !p)
        return;
    view->SetResultDisplay(BuildDisplay());
    view->HideBodies(CFMView::BodySolids, p->m_settings.showSolids ? 0 : 1);
    view->HideBodies(CFMView::BodyStructuralMembers, p->m_settings.showMembers ? 0 : 1);
    ++m_showCount;
    if (!view->IsRedrawSuspended())
        view->ReDraw();
}

void CKwUIPlot::Display(int on)
{
    CFMView* view = GetView();
    if (!view)
        return;
    if (on) {
        ShowResult();
        return;
    }
    view->SetResultDisplay(KwResultDisplay{});
    view->HideBodies(CFMView::BodySolids | CFMView::BodyStructuralMembers, 0);
}

long CKwUIPlot::OnSubmitUI()
{
    const long status = CKwFEUIBase<CKwPlot>::OnSubmitUI();
    CKwPlot* stored = GetObject();
    CFMView* view = GetView();
    if (status != 0 || !stored || !view)
        return status;
    // The plot stays on in the view after its editor closes, with the result toolbar.
    if (!stored->GetAnalysis())
        stored->SetAnalysis(m_analysis);
    stored->TurnPlotDisplayOn();
    if (stored->m_settings.animate)
        stored->TurnPlotAnimateOn();
    else
        stored->TurnPlotAnimateOff();
    view->SetActivePlot(stored);
    ShowResult();
    view->CreateResultToolbarIfPlotDispalyed();
    return 0;
}
