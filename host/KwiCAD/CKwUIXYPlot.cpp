#include "CKwUIXYPlot.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "CKwUIPlot.h"
#include "KW_UOM.h"
#include "KwResultMapping.h"
#include "KwSolverDeck.h"
#include "KwSolverResults.h"
#include "KwUIText.h"

#include <algorithm>
#include <cmath>

using KwUIText::err;
using KwUIText::prop;

namespace {

constexpr const char* kSec = "XYPlot";

const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}

} // namespace

CKwUIXYPlot::CKwUIXYPlot() = default;
CKwUIXYPlot::~CKwUIXYPlot() = default;

const KW_UOM* CKwUIXYPlot::GetUnits() const
{
    const KW_UOM* units = m_pView ? m_pView->GetUnitHolder() : nullptr;
    return units ? units : &si();
}

QList<CKwXYPlot*>* CKwUIXYPlot::GetModelList() const
{
    return GetModel() ? &GetModel()->m_xyPlots : nullptr;
}

std::unique_ptr<CKwXYPlot> CKwUIXYPlot::CreateNewObject()
{
    const int id = NextFreeID();
    return std::make_unique<CKwXYPlot>(id, prop(kSec, "DefaultName", "XY Plot %1").arg(id));
}

QString CKwUIXYPlot::GetPageTitleString() const { return prop(kSec, "Title", "XY Plot"); }

QList<CKwAnalysis*> CKwUIXYPlot::analysesWithResults() const
{
    QList<CKwAnalysis*> out;
    if (const CKwFEModel* m = GetModel())
        for (CKwAnalysis* a : m->m_analyses)
            if (a->GetSolverResults() && !a->GetSolverResults()->sets.empty())
                out.append(a);
    return out;
}

CKwAnalysis* CKwUIXYPlot::GetAnalysis() const
{
    const QList<CKwAnalysis*> all = analysesWithResults();
    return m_analysisRow >= 0 && m_analysisRow < all.size() ? all[m_analysisRow] : nullptr;
}

void CKwUIXYPlot::loadLists()
{
    QStringList names;
    for (const CKwAnalysis* a : analysesWithResults())
        names << a->GetName();
    SetControlItems(CodeAnalyses, int(names.size()), names.constData());
    const QStringList results = CKwUIPlot::ResultNames();
    SetControlItems(CodeResults, int(results.size()), results.constData());
    const QStringList components = CKwUIPlot::ComponentNames(m_result);
    SetControlItems(CodeComponents, int(components.size()), components.constData());
    // The sets are named as the plot editor names them.
    const QStringList sets = CKwUIPlot::ResultSetNamesOf(GetAnalysis(), GetUnits());
    SetControlItems(CodeResultSets, int(sets.size()), sets.constData());
}

void CKwUIXYPlot::LoadObjectData()
{
    if (!GetEditObject())
        return;
    // A view's current analysis with results is the one to plot.
    const QList<CKwAnalysis*> all = analysesWithResults();
    if (m_pView && all.contains(m_pView->GetCurrentAnalysis()))
        m_analysisRow = int(all.indexOf(m_pView->GetCurrentAnalysis()));
    LoadNameAndID(CodeName, CodeID);
    loadLists();
}

void CKwUIXYPlot::UpdateObjectData(bool) { UpdateNameAndID(CodeName, CodeID); }

int CKwUIXYPlot::GetValue(int field, int& value)
{
    switch (field) {
    case FieldAnalysis: value = m_analysisRow; return 1;
    case FieldResult: value = m_result; return 1;
    case FieldComponent: value = m_component; return 1;
    case FieldAxis: value = m_axis; return 1;
    case FieldResultSet: value = m_set; return 1;
    default: return 0;
    }
}

int CKwUIXYPlot::SetValue(int field, int value)
{
    if (value < 0)
        return 0;
    switch (field) {
    case FieldAnalysis:
        if (value >= analysesWithResults().size())
            return 0;
        m_analysisRow = value;
        m_set = 0;
        loadLists();
        return 1;
    case FieldResult:
        if (value >= KwPlotResult::Count)
            return 0;
        m_result = value;
        m_component = 0;
        {
            const QStringList c = CKwUIPlot::ComponentNames(m_result);
            SetControlItems(CodeComponents, int(c.size()), c.constData());
        }
        return 1;
    case FieldComponent:
        if (value >= KwResultMapping::ComponentCount(m_result))
            return 0;
        m_component = value;
        return 1;
    case FieldAxis:
        if (value > AxisPath)
            return 0;
        m_axis = value;
        return 1;
    case FieldResultSet: {
        const CKwAnalysis* a = GetAnalysis();
        if (!a || std::size_t(value) >= a->GetSolverResults()->sets.size())
            return 0;
        m_set = value;
        return 1;
    }
    default: return 0;
    }
}

std::vector<int> CKwUIXYPlot::PickedNodes() const
{
    std::vector<int> nodes;
    const CKwFEModel* m = GetModel();
    if (!m || !m->m_mesh)
        return nodes;
    for (const CKwUIEntity* e : m_entities) {
        if (!e || (e->GetKind() != CKwUIEntity::Node && e->GetKind() != CKwUIEntity::Vertex))
            continue;
        for (int id : KwGeometryNodes(*m->m_mesh, *e))
            if (std::find(nodes.begin(), nodes.end(), id) == nodes.end())
                nodes.push_back(id);
    }
    return nodes;
}

bool CKwUIXYPlot::BuildCurves()
{
    CKwXYPlot* plot = GetEditObject();
    const CKwAnalysis* a = GetAnalysis();
    const CKwFEModel* model = GetModel();
    const std::vector<int> nodes = PickedNodes();
    if (!plot || !a || !model || !model->m_mesh || nodes.empty())
        return false;
    const auto& sets = a->GetSolverResults()->sets;
    const KwPlotMaterial material = CKwUIPlot::PlotMaterialOf(model);
    plot->ClearValues();
    plot->m_yTitle = CKwUIPlot::ResultNames().value(m_result);
    const QStringList components = CKwUIPlot::ComponentNames(m_result);
    if (components.size() > 1)
        plot->m_yTitle += QStringLiteral(" - ") + components.value(m_component);
    plot->m_yUnitType = KwResultMapping::UnitKind(m_result);
    if (m_axis == AxisPath) {
        const KwResultSet& set = sets[std::size_t(std::min<std::size_t>(m_set, sets.size() - 1))];
        plot->m_xTitle = prop(kSec, "AxisDistance", "Distance along the Path");
        plot->m_xUnitType = KwUnitKind::Length;
        plot->AddSeries(prop(kSec, "SeriesPath", "Path of %1 nodes").arg(nodes.size()));
        double distance = 0;
        const CKwMeshModel::Node* previous = nullptr;
        for (int id : nodes) {
            const CKwMeshModel::Node* n = model->m_mesh->FindNode(id);
            if (!n)
                continue;
            if (previous)
                distance += std::hypot(n->x - previous->x, n->y - previous->y, n->z - previous->z);
            previous = n;
            const double v = KwResultMapping::NodeValue(set, m_result, m_component, id, material);
            if (std::isfinite(v))
                plot->AddValue({0, distance, v});
        }
        return plot->GetSeriesCount() > 0;
    }
    const bool modal = !sets.empty() && sets.front().modal;
    const bool harmonic = !sets.empty() && !sets.front().displacementImaginary.empty();
    plot->m_xTitle = m_axis == AxisStep ? prop(kSec, "AxisStep", "Result Set")
                     : modal            ? prop(kSec, "AxisMode", "Mode")
                     : harmonic         ? prop(kSec, "AxisFrequency", "Frequency")
                                        : prop(kSec, "AxisTime", "Time");
    plot->m_xUnitType = m_axis == AxisStep || modal ? -1
                        : harmonic                 ? KwUnitKind::Frequency
                                                   : KwUnitKind::Time;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        const int series = plot->AddSeries(prop(kSec, "SeriesNode", "Node %1").arg(nodes[i]));
        for (std::size_t s = 0; s < sets.size(); ++s) {
            const double x = m_axis == AxisStep ? double(s + 1)
                             : modal           ? double(sets[s].increment)
                                               : sets[s].value;
            const double v =
                KwResultMapping::NodeValue(sets[s], m_result, m_component, nodes[i], material);
            if (std::isfinite(v))
                plot->AddValue({series, x, v});
        }
    }
    return true;
}

int CKwUIXYPlot::ValidateObjectData()
{
    if (!ValidateNameAndID({kSec, "Enter a name for the XY plot.",
                            "Another XY plot already uses this ID."}))
        return 0;
    const QString label = prop(kSec, "LabelNodes", "Nodes");
    if (!GetAnalysis()) {
        ShowFieldError(prop(kSec, "LabelAnalysis", "Analysis"),
                       err("PlotTemplate", "NoValidResults", "No Valid Results are available."));
        return 0;
    }
    if (PickedNodes().empty()) {
        ShowFieldError(label, err(kSec, "PickNodes", "Pick the nodes or vertices to plot."));
        return 0;
    }
    if (!BuildCurves()) {
        ShowFieldError(label, err(kSec, "NoValues", "The picked nodes have no such result."));
        return 0;
    }
    return 1;
}
