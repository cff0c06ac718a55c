// Picking many entities into a selection box: one pick event carrying N entities, listed with
// one line each (and a repeated pick of the same N, which adds entries but no lines).
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwUIEntity.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <memory>
#include <vector>

namespace {

std::vector<std::unique_ptr<CKwUIEntity>> makeFaces(int n)
{
    std::vector<std::unique_ptr<CKwUIEntity>> out;
    out.reserve(static_cast<std::size_t>(n));
    for (int i = 1; i <= n; ++i)
        out.push_back(std::make_unique<CKwUIEntity>(CKwUIEntity::Face, i,
                                                    QStringLiteral("Face %1").arg(i)));
    return out;
}

void pickIntoBox(benchmark::State& state, int repeats, bool shown = false)
{
    const int n = static_cast<int>(state.range(0));
    const auto faces = makeFaces(n);
    for (auto _ : state) {
        state.PauseTiming();
        auto box = std::make_unique<CKwMFCNodeElemSelectionBox>();
        box->SetFilter(33278);
        box->resize(240, 120);
        if (shown) {
            box->show();
            QApplication::processEvents();
        }
        state.ResumeTiming();
        for (int r = 0; r < repeats; ++r) {
            for (const auto& f : faces)
                box->AddEntity(f.get(), false);
            box->FlushAdded();
        }
        if (shown)
            QApplication::processEvents(); // the list lays out and paints what it shows
        benchmark::DoNotOptimize(box->count());
        state.PauseTiming();
        box.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * n * repeats);
}

void BM_PickIntoSelectionBox(benchmark::State& state) { pickIntoBox(state, 1); }
void BM_PickSameEntitiesTwice(benchmark::State& state) { pickIntoBox(state, 2); }
void BM_PickIntoShownSelectionBox(benchmark::State& state) { pickIntoBox(state, 1, true); }

} // namespace

BENCHMARK(BM_PickIntoSelectionBox)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PickSameEntitiesTwice)->Arg(10000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_PickIntoShownSelectionBox)->Arg(10000)->Unit(benchmark::kMillisecond);
