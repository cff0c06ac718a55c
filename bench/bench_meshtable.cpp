// The mesh table on a generated mesh of 1,000,000 hexahedra (1,030,301 nodes).
// Targets: the window opened, filled and shown under 100 ms; a scroll by one page, repainted,
// under 16 ms.
#include "CFMView.h"
#include "CKwMFCMeshTableDialog.h"
#include "CKwMeshModel.h"
#include "CKwMeshTableModel.h"
#include "KW_UOM.h"

#include <QApplication>
#include <QScrollBar>
#include <QTableView>
#include <benchmark/benchmark.h>

namespace {

CKwMeshModel* millionElements()
{
    static CKwMeshModel* mesh = [] {
        auto* m = new CKwMeshModel(1, QStringLiteral("Block"));
        m->BuildBlock(100, 100, 100, 1.0, 1.0, 1.0);
        return m;
    }();
    return mesh;
}

KW_UOM& units()
{
    static KW_UOM u(KW_UOM::MMNS);
    return u;
}

void BM_OpenMeshTable(benchmark::State& state, int contents)
{
    CFMView view;
    CKwMeshModel* mesh = millionElements();
    for (auto _ : state) {
        auto* d = new CKwMFCMeshTableDialog(mesh, &view, &units());
        d->Create();
        d->ShowContents(contents);
        d->show();
        QApplication::processEvents();
        state.PauseTiming();
        const std::size_t want = contents == 1 ? mesh->ElementCount() : mesh->Nodes().size();
        if (d->TableModel()->rowCount() != static_cast<int>(want))
            state.SkipWithError("rows missing");
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
}
BENCHMARK_CAPTURE(BM_OpenMeshTable, nodes, 0)->Unit(benchmark::kMillisecond)->Iterations(7);
BENCHMARK_CAPTURE(BM_OpenMeshTable, elements, 1)->Unit(benchmark::kMillisecond)->Iterations(7);

void BM_ScrollOnePage(benchmark::State& state, int contents)
{
    CFMView view;
    auto* d = new CKwMFCMeshTableDialog(millionElements(), &view, &units());
    d->Create();
    d->ShowContents(contents);
    d->resize(800, 900);
    d->show();
    QApplication::processEvents();
    QTableView* t = d->TableView();
    QScrollBar* bar = t->verticalScrollBar();
    bar->setValue(bar->maximum() / 2);
    QApplication::processEvents();
    int step = bar->pageStep();
    for (auto _ : state) {
        // Down a page, then back once the end is near: every round paints rows not seen before.
        if (bar->value() + step > bar->maximum() || bar->value() - step < 0)
            step = -step;
        bar->setValue(bar->value() + step);
        t->viewport()->repaint();
    }
    state.counters["rows_shown"] = t->viewport()->height() / static_cast<double>(t->rowHeight(0));
    d->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}
BENCHMARK_CAPTURE(BM_ScrollOnePage, nodes, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_ScrollOnePage, elements, 1)->Unit(benchmark::kMillisecond);

} // namespace
