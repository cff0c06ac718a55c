// Highlighting by ID lists: reading "1-1000000" and a list of 100,000 single IDs, and
// highlighting 100,000 elements of a generated block of hexahedra in the view (the list read,
// split against the mesh and handed to the view; then the same with the view painted).
// Targets: each reading < 50 ms; highlighting 100,000 elements < 50 ms.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "KwIdRanges.h"

#include <QApplication>
#include <QPixmap>
#include <QStringList>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

void BM_ParseRange(benchmark::State& state)
{
    const QString text = QStringLiteral("1-1000000");
    for (auto _ : state) {
        // The reading and the split against a mesh that has every ID.
        const KwIdRanges::Parsed p = KwIdRanges::Parse(text);
        const KwIdRanges::Resolved r = KwIdRanges::Resolve(p, [](int) { return true; }, {});
        benchmark::DoNotOptimize(r.ids.data());
    }
}

void BM_ParseList(benchmark::State& state)
{
    // 100,000 single IDs, every other one of 1..200,000, in descending order.
    QStringList items;
    for (int id = 200000; id > 0; id -= 2)
        items << QString::number(id);
    const QString text = items.join(QStringLiteral(", "));
    for (auto _ : state) {
        const KwIdRanges::Parsed p = KwIdRanges::Parse(text);
        const KwIdRanges::Resolved r =
            KwIdRanges::Resolve(p, [](int id) { return id <= 150000; }, {});
        benchmark::DoNotOptimize(r.ids.data());
    }
}

struct BlockView
{
    std::unique_ptr<CKwFEModel> model{CKwFEModel::CreateSampleModel()};
    std::unique_ptr<CFMView> view;
    BlockView()
    {
        delete model->m_mesh;
        model->m_mesh = new CKwMeshModel(1, QStringLiteral("Block"));
        model->m_mesh->BuildBlock(50, 50, 40, 0.2, 0.2, 0.16); // 100,000 hexahedra
        view = std::make_unique<CFMView>(model.get());
        view->resize(800, 600);
    }
};

void highlight(BlockView& b)
{
    CKwMeshModel* mesh = b.model->m_mesh;
    const KwIdRanges::Parsed p = KwIdRanges::Parse(u"1-100000");
    KwIdRanges::Resolved r =
        KwIdRanges::Resolve(p, [mesh](int id) { return mesh->HasElement(id); }, {});
    b.view->ClearMeshHighlight();
    b.view->SetHighlightedMesh(CFMView::HighlightElements, std::move(r.ids));
}

void BM_Highlight100k(benchmark::State& state)
{
    static BlockView b;
    for (auto _ : state)
        highlight(b);
    state.counters["highlighted"] =
        static_cast<double>(b.view->GetHighlightedMesh(CFMView::HighlightElements).size());
}

void BM_Highlight100kPainted(benchmark::State& state)
{
    static BlockView b;
    QPixmap target(b.view->size());
    for (auto _ : state) {
        highlight(b);
        b.view->render(&target);
    }
}

// The same view painted with nothing highlighted: what the painting costs by itself.
void BM_Paint100kUnhighlighted(benchmark::State& state)
{
    static BlockView b;
    b.view->ClearMeshHighlight();
    QPixmap target(b.view->size());
    for (auto _ : state)
        b.view->render(&target);
}

} // namespace

BENCHMARK(BM_ParseRange)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_ParseList)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Highlight100k)->Unit(benchmark::kMillisecond)->Repetitions(5)->ReportAggregatesOnly(true);
BENCHMARK(BM_Highlight100kPainted)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_Paint100kUnhighlighted)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(3)
    ->ReportAggregatesOnly(true);
