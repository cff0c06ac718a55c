// The model view's frames and picks: a frame of the sample model, a frame of a generated block
// of 1,000,000 hexahedra (100 x 100 x 100), a pick on that block with the pick buffers drawn
// and after a turn of the camera (buffers drawn again), and working out the block's skin and
// edges once when its mesh arrives.
// Targets: sample frame < 16 ms; 1M-element frame < 100 ms; pick < 5 ms.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwSelectionHandler.h"
#include "CKwUIEntity.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

constexpr int kWidth = 1024, kHeight = 768;

struct SampleView
{
    std::unique_ptr<CKwFEModel> model{CKwFEModel::CreateSampleModel()};
    CFMView view{model.get()};
    SampleView()
    {
        view.resize(kWidth, kHeight);
        view.RenderFrame(); // the scene of the mesh, once
    }
};

// One block view for all benchmarks of the program: making the mesh takes seconds.
struct BlockView
{
    std::unique_ptr<CKwFEModel> model{CKwFEModel::CreateSampleModel()};
    std::unique_ptr<CFMView> view;
    BlockView()
    {
        model->m_mesh->BuildBlock(100, 100, 100, 1.0, 1.0, 1.0);
        model->m_mesh->ClassifyAsBox();
        model->m_restraints.clear(); // their faces now hold thousands of nodes; not measured here
        model->m_loads.clear();
        view = std::make_unique<CFMView>(model.get());
        view->resize(kWidth, kHeight);
        view->RenderFrame();
    }
    static BlockView& Get()
    {
        static BlockView b;
        return b;
    }
};

void BM_ViewFrameSample(benchmark::State& state)
{
    SampleView s;
    for (auto _ : state) {
        s.view.Camera().Rotate(1, 0);
        const QImage frame = s.view.RenderFrame();
        benchmark::DoNotOptimize(frame.constBits());
    }
}

void BM_ViewFrameBlock1M(benchmark::State& state)
{
    BlockView& b = BlockView::Get();
    for (auto _ : state) {
        b.view->Camera().Rotate(1, 0);
        const QImage frame = b.view->RenderFrame();
        benchmark::DoNotOptimize(frame.constBits());
    }
    state.counters["elements"] = double(b.model->m_mesh->ElementCount());
}

void BM_ViewPickBlock1M(benchmark::State& state)
{
    BlockView& b = BlockView::Get();
    b.view->GetSelectionHandler()->SetFilter(CKwUIEntity::FilterBitOf(CKwUIEntity::Face) |
                                             CKwUIEntity::FilterBitOf(CKwUIEntity::Edge) |
                                             CKwUIEntity::FilterBitOf(CKwUIEntity::Vertex));
    const QPointF at(kWidth / 2.0 + 37, kHeight / 2.0 - 21);
    if (!b.view->EntityAt(at))
        state.SkipWithError("nothing under the point");
    for (auto _ : state)
        benchmark::DoNotOptimize(b.view->EntityAt(at));
}

void BM_ViewPickAfterTurnBlock1M(benchmark::State& state)
{
    BlockView& b = BlockView::Get();
    b.view->GetSelectionHandler()->SetFilter(CKwUIEntity::FilterBitOf(CKwUIEntity::Node));
    const QPointF at(kWidth / 2.0, kHeight / 2.0);
    for (auto _ : state) {
        b.view->Camera().Rotate(1, 0);
        benchmark::DoNotOptimize(b.view->EntityAt(at));
    }
}

void BM_ViewSceneBuildBlock1M(benchmark::State& state)
{
    BlockView& b = BlockView::Get();
    for (auto _ : state) {
        b.view->NotifyMeshReplaced();
        const QImage frame = b.view->RenderFrame();
        benchmark::DoNotOptimize(frame.constBits());
    }
}

} // namespace

BENCHMARK(BM_ViewFrameSample)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ViewFrameBlock1M)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_ViewPickBlock1M)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_ViewPickAfterTurnBlock1M)->Unit(benchmark::kMillisecond)->Iterations(20);
BENCHMARK(BM_ViewSceneBuildBlock1M)->Unit(benchmark::kMillisecond)->Iterations(2);
