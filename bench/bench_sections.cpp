// All 22 values of each of the twenty section shapes after one dimension changes, as the
// definition dialog recomputes them while the user types. The torsion constant is checked
// against a converged solution once per shape (counter "J_error_pct").
#include "CKwPhysicalProperty.h"
#include "KwSectionSolver.h"

#include <benchmark/benchmark.h>
#include <cmath>

namespace {

using P = CKwPhysicalProperty;

const double kMm[P::ShapeCount][6] = {
    {10}, {10, 8}, {200, 100, 100, 8, 12, 12}, {92, 8, 176, 200}, {100, 200, 8, 12},
    {92, 8, 176, 200}, {8, 12, 200, 100}, {100, 200, 12, 8}, {200, 100, 12, 8},
    {100, 200, 12, 8}, {100, 10, 200, 10}, {50, 100}, {100, 200, 10, 10},
    {100, 200, 10, 12, 8, 9}, {100, 20, 200, 10}, {20, 100, 80}, {92, 8, 176, 200},
    {3, 40, 100, 30}, {200, 60, 80, 4, 5}, {100, 80, 10, 8}};

P shape(int s)
{
    P p;
    p.m_sectionShape = s;
    for (int i = 0; i < P::ShapeDimensionCount(s); ++i)
        p.m_dimA[i] = kMm[s][i] / 1000;
    return p;
}

void BM_SectionAfterOneChange(benchmark::State& state)
{
    const int s = static_cast<int>(state.range(0));
    P p = shape(s);
    double v[KwSectionValue::Count];
    // Converged torsion constant of the section as it is measured.
    double converged = 0;
    if (s != P::ROD && s != P::TUBE) {
        Kw::Point loops[P::kMaxLoops][P::kMaxLoopPoints];
        int counts[P::kMaxLoops], n = 0;
        p.GetSectionLoopPoints(loops, n, counts, 1);
        std::vector<KwLoop> l;
        for (int i = 0; i < n; ++i)
            l.emplace_back(loops[i], loops[i] + counts[i]);
        KwSectionResult r;
        KwSolveSection(l, r, 40000);
        converged = r.torsion;
    }
    const double base = p.m_dimA[0];
    int flip = 0;
    for (auto _ : state) {
        // One dimension changes (as a keystroke would), then everything is recomputed.
        p.m_dimA[0] = base * (flip++ % 2 ? 1.0 : 1.0 + 1e-3);
        benchmark::DoNotOptimize(p.ComputeSectionProperties(1, v));
    }
    p.m_dimA[0] = base;
    p.ComputeSectionProperties(1, v);
    state.counters["J_error_pct"] =
        converged > 0 ? 100 * std::abs(v[KwSectionValue::Torsion] / converged - 1) : 0;
    state.SetLabel(P::ShapeName(s).toStdString());
}

} // namespace

BENCHMARK(BM_SectionAfterOneChange)->DenseRange(0, P::ShapeCount - 1)->Unit(benchmark::kMillisecond);
BENCHMARK_MAIN();
