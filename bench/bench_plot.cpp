// The result plot's numbers. Targets: recolouring a contour of 1,000,000 nodes (a new
// component of the stress tensor, its range and the whole display) under 50 ms; switching the
// result set of a plot on the sample model (display and view) under 100 ms.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwSubCase.h"
#include "CKwUIPlot.h"
#include "KW_UOM.h"
#include "KwResultMapping.h"
#include "KwSolverResults.h"

#include <benchmark/benchmark.h>
#include <memory>

namespace {

// Stress and displacement at every node of a mesh, varying with the position.
KwResultSet fieldOn(const CKwMeshModel& mesh, double scale)
{
    KwResultSet set;
    set.stress.components = 6;
    set.displacement.components = 3;
    set.stress.nodeIds.reserve(mesh.Nodes().size());
    set.stress.values.reserve(mesh.Nodes().size() * 6);
    for (const CKwMeshModel::Node& n : mesh.Nodes()) {
        set.stress.nodeIds.push_back(n.id);
        set.stress.values.insert(set.stress.values.end(),
                                 {scale * n.x, scale * n.y, -scale * n.z, scale * n.x * n.y, 0, 0});
        set.displacement.nodeIds.push_back(n.id);
        set.displacement.values.insert(set.displacement.values.end(), {0, 0, -1e-3 * n.x});
    }
    return set;
}

void BM_ContourOfAMillionNodes(benchmark::State& state)
{
    static CKwMeshModel mesh = [] {
        CKwMeshModel m;
        m.BuildBlock(99, 99, 99, 1.0, 1.0, 1.0); // 100^3 nodes
        return m;
    }();
    static const KwResultSet set = fieldOn(mesh, 1e8);
    const KW_UOM mm(KW_UOM::MMNS);
    KwPlotSettings s;
    s.result = KwPlotResult::Components;
    s.deformedOn = false;
    int component = 0;
    for (auto _ : state) {
        s.component = component++ % 6;
        KwResultDisplay d = KwResultMapping::BuildDisplay(s, &set, mesh, &mm, {}, QString());
        benchmark::DoNotOptimize(d.rangeMax);
    }
    state.SetItemsProcessed(state.iterations() * std::int64_t(mesh.Nodes().size()));
}

void BM_SwitchResultSetOnSample(benchmark::State& state)
{
    static std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    static CFMView view(model.get());
    CKwAnalysis* a = model->m_analyses.first();
    if (!a->GetSolverResults()) {
        auto r = std::make_shared<KwSolverResults>();
        for (int i = 0; i < 2; ++i) {
            KwResultSet set = fieldOn(*model->m_mesh, 1e8 * (i + 1));
            set.step = 1;
            set.increment = i + 1;
            set.subcaseId = a->GetSubCases().first()->GetID();
            r->sets.push_back(std::move(set));
        }
        a->SetSolverResults(r);
    }
    CKwUIPlot plot;
    plot.SetAnalysis(a);
    plot.OnCreate(&view, nullptr, nullptr);
    int i = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(plot.SetValue(CKwUIPlot::FieldResultSet, ++i % 2));
    state.SetItemsProcessed(state.iterations());
}

} // namespace

BENCHMARK(BM_ContourOfAMillionNodes)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_SwitchResultSetOnSample)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
