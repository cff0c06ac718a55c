// The mesh quality check and its failed-elements window on a generated mesh of 1,000,000
// mixed elements (tetrahedra, quadrilaterals, triangles over a jittered grid), and the check
// of 1,000,000 jittered hexahedra.
// Targets: measures >= 5M elements/s on one core, hexahedra too; window open and filled with 1M failed
// elements < 100 ms; repaint of the visible rows < 16 ms; sort by a value column < 500 ms;
// Ctrl+A, Ctrl+C of 1M failed elements to the clipboard < 300 ms; the process grows by at
// most 100 MB for the window with 1M rows, its results included (counter "window_MB", the
// resident set before the results are copied and after the window is painted).
#include "CFMView.h"
#include "CKwMeshModel.h"
#include "CKwMeshQualityResultsDialog.h"
#include "CKwMeshQualityResultsModel.h"
#include "CKwUIMeshQualityResults.h"
#include "KW_UOM.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QScrollBar>
#include <QTableView>
#include <benchmark/benchmark.h>
#include <algorithm>
#include <cmath>
#include <fstream>
#include <random>

namespace {

constexpr std::size_t kElements = 1'000'000;

// The nodes of an n x n x n grid of unit cells, each moved by up to 0.15 in every direction;
// `id` numbers them.
struct JitteredGrid
{
    int n;
    int id(int i, int j, int k) const { return 1 + i + j * (n + 1) + k * (n + 1) * (n + 1); }
    CKwMeshModel* build(int meshId, const QString& name, unsigned seed,
                        std::size_t connectivity) const
    {
        auto* m = new CKwMeshModel(meshId, name);
        m->Reserve(static_cast<std::size_t>((n + 1) * (n + 1) * (n + 1)), kElements, connectivity);
        std::mt19937 rng(seed);
        std::uniform_real_distribution<double> jitter(-0.15, 0.15);
        for (int k = 0; k <= n; ++k)
            for (int j = 0; j <= n; ++j)
                for (int i = 0; i <= n; ++i)
                    m->AddNode(id(i, j, k), i + jitter(rng), j + jitter(rng), k + jitter(rng));
        return m;
    }
};

// Per cell of a jittered grid: four tetrahedra, one quadrilateral and two triangles.
CKwMeshModel* mixedMesh()
{
    static CKwMeshModel* mesh = [] {
        const JitteredGrid grid{53}; // 53^3 cells * 7 > 1M
        const int n = grid.n;
        auto id = [&grid](int i, int j, int k) { return grid.id(i, j, k); };
        auto* m = grid.build(1, QStringLiteral("Bench"), 7, 4 * kElements);
        int e = 1;
        for (int k = 0; k < n && m->ElementCount() < kElements; ++k)
            for (int j = 0; j < n && m->ElementCount() < kElements; ++j)
                for (int i = 0; i < n && m->ElementCount() < kElements; ++i) {
                    const int a = id(i, j, k), b = id(i + 1, j, k), c = id(i + 1, j + 1, k),
                              d = id(i, j + 1, k), a1 = id(i, j, k + 1), b1 = id(i + 1, j, k + 1),
                              c1 = id(i + 1, j + 1, k + 1);
                    auto add = [&](int type, std::initializer_list<int> nodes) {
                        if (m->ElementCount() < kElements)
                            m->AddElement(e++, type, nodes);
                    };
                    add(CKwMeshModel::Tet4, {a, b, d, a1});
                    add(CKwMeshModel::Tet4, {b, c, d, c1});
                    add(CKwMeshModel::Tet4, {b, d, a1, c1});
                    add(CKwMeshModel::Tet4, {b, b1, a1, c1});
                    add(CKwMeshModel::Quad4, {a, b, c, d});
                    add(CKwMeshModel::Tri3, {a, b, b1});
                    add(CKwMeshModel::Tri3, {a, b1, a1});
                }
        return m;
    }();
    return mesh;
}

// Limits every element fails (a Jacobian of at most 1 is below 2).
CKwMeshModel* allFailingMesh()
{
    static CKwMeshModel* mesh = [] {
        auto* m = new CKwMeshModel(*mixedMesh());
        m->SetQualityLimit(CKwMeshModel::QuadJacobian, 2.0f);
        m->SetQualityLimit(CKwMeshModel::TriaJacobian, 2.0f);
        m->SetQualityLimit(CKwMeshModel::TetJacobian, 2.0f);
        return m;
    }();
    return mesh;
}

KW_UOM& units()
{
    static KW_UOM u(KW_UOM::MMNS);
    return u;
}

const CKwUIMeshQualityResults& allFailed()
{
    static CKwUIMeshQualityResults r = [] {
        CKwUIMeshQualityResults x;
        x.CheckMeshQuality(allFailingMesh(), &units());
        return x;
    }();
    return r;
}

double residentMB()
{
    std::ifstream statm("/proc/self/statm");
    long pages = 0, resident = 0;
    statm >> pages >> resident;
    return static_cast<double>(resident) * 4096.0 / (1024.0 * 1024.0);
}

void BM_MeasureAndSelect(benchmark::State& state)
{
    CKwMeshModel* mesh = mixedMesh();
    CKwUIMeshQualityResults r;
    for (auto _ : state) {
        r.CheckMeshQuality(mesh, &units());
        benchmark::DoNotOptimize(r.GetFailedElements().data());
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(mesh->ElementCount()));
    state.counters["failed"] = static_cast<double>(r.GetFailedElements().size());
}
BENCHMARK(BM_MeasureAndSelect)->Unit(benchmark::kMillisecond);

// A 100 x 100 x 100 block of hexahedra over a jittered grid: every face a little warped,
// every corner a little off a right angle.
CKwMeshModel* hexMesh()
{
    static CKwMeshModel* mesh = [] {
        const JitteredGrid grid{100};
        const int n = grid.n;
        auto id = [&grid](int i, int j, int k) { return grid.id(i, j, k); };
        auto* m = grid.build(2, QStringLiteral("Hexahedra"), 11, 8 * kElements);
        int e = 1;
        for (int k = 0; k < n; ++k)
            for (int j = 0; j < n; ++j)
                for (int i = 0; i < n; ++i)
                    m->AddElement(e++, CKwMeshModel::Hex8,
                                  {id(i, j, k), id(i + 1, j, k), id(i + 1, j + 1, k),
                                   id(i, j + 1, k), id(i, j, k + 1), id(i + 1, j, k + 1),
                                   id(i + 1, j + 1, k + 1), id(i, j + 1, k + 1)});
        return m;
    }();
    return mesh;
}

// Measuring and selecting 1M hexahedra (every measure, every corner); target >= 5M/s.
void BM_MeasureHexahedra(benchmark::State& state)
{
    CKwMeshModel* mesh = hexMesh();
    CKwUIMeshQualityResults r;
    for (auto _ : state) {
        r.CheckMeshQuality(mesh, &units());
        benchmark::DoNotOptimize(r.GetFailedElements().data());
    }
    if (r.GetCheckedElementCount() != mesh->ElementCount())
        state.SkipWithError("not every hexahedron was checked");
    state.SetItemsProcessed(state.iterations() * static_cast<long>(mesh->ElementCount()));
    state.counters["failed"] = static_cast<double>(r.GetFailedElements().size());
}
BENCHMARK(BM_MeasureHexahedra)->Unit(benchmark::kMillisecond);

void BM_OpenWindowFilled(benchmark::State& state)
{
    CFMView view;
    allFailed(); // the check itself is no part of the window
    double grownMB = 0;
    for (auto _ : state) {
        state.PauseTiming();
        // The window owns its copy of the results: their memory is the window's.
        const double before = residentMB();
        auto* copy = new CKwUIMeshQualityResults(allFailed());
        state.ResumeTiming();
        auto* d = new CKwMeshQualityResultsDialog(allFailingMesh(), &view, &units(), copy);
        d->show();
        QApplication::processEvents();
        state.PauseTiming();
        if (d->ResultsModel()->rowCount() != static_cast<int>(kElements))
            state.SkipWithError("not every element listed");
        // Freed pages of an earlier round may be reused without showing as growth: the
        // largest growth of the rounds is the window's.
        grownMB = std::max(grownMB, residentMB() - before);
        delete d;
        delete copy;
        state.ResumeTiming();
    }
    state.counters["window_MB"] = grownMB;
}
BENCHMARK(BM_OpenWindowFilled)->Unit(benchmark::kMillisecond)->Iterations(5);

struct OpenWindow
{
    CFMView view;
    CKwUIMeshQualityResults copy = allFailed();
    CKwMeshQualityResultsDialog* d =
        new CKwMeshQualityResultsDialog(allFailingMesh(), &view, &units(), &copy);
    OpenWindow()
    {
        d->resize(800, 900);
        d->show();
        QTableView* t = d->ResultsView();
        t->verticalScrollBar()->setValue(t->verticalScrollBar()->maximum() / 2);
        QApplication::processEvents();
    }
    ~OpenWindow() { delete d; }
};

void BM_RepaintVisibleRows(benchmark::State& state)
{
    OpenWindow w;
    QWidget* viewport = w.d->ResultsView()->viewport();
    for (auto _ : state)
        viewport->repaint();
    state.counters["rows_shown"] =
        viewport->height() / static_cast<double>(w.d->ResultsView()->rowHeight(0));
}
BENCHMARK(BM_RepaintVisibleRows)->Unit(benchmark::kMillisecond);

// Whether the table's rows stand in the order of the column (cells that do not apply last).
bool sortedBy(const CKwMeshQualityResultsModel* m, int column, bool up)
{
    const int measure = column - CKwMeshQualityResultsModel::ColumnAspectRatio;
    const int n = m->rowCount();
    for (int r = 1; r < n; ++r) {
        const double a = m->RecordAt(r - 1).value[measure], b = m->RecordAt(r).value[measure];
        if (std::isnan(a) ? !std::isnan(b) : (!std::isnan(b) && (up ? b < a : a < b)))
            return false;
    }
    return n == static_cast<int>(kElements);
}

void BM_SortByValueColumn(benchmark::State& state)
{
    OpenWindow w;
    bool up = true;
    for (auto _ : state) {
        w.d->ResultsView()->sortByColumn(CKwMeshQualityResultsModel::ColumnSkew,
                                         up ? Qt::AscendingOrder : Qt::DescendingOrder);
        state.PauseTiming();
        if (!sortedBy(w.d->ResultsModel(), CKwMeshQualityResultsModel::ColumnSkew, up))
            state.SkipWithError("the rows are not in the order of the column");
        up = !up;
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(kElements));
}
BENCHMARK(BM_SortByValueColumn)->Unit(benchmark::kMillisecond)->Iterations(6);

// The user's copy: Ctrl+A in the list, then Ctrl+C (the list's copy action) puts every failed
// element on the clipboard as tab-separated lines.
void BM_CopyAllRows(benchmark::State& state)
{
    OpenWindow w;
    QTableView* t = w.d->ResultsView();
    QAction* copy = w.d->findChild<QAction*>(QStringLiteral("copyAction"));
    if (!copy) {
        state.SkipWithError("no copy action");
        return;
    }
    for (auto _ : state) {
        t->selectAll();
        copy->trigger();
        state.PauseTiming();
        const QString text = QApplication::clipboard()->text();
        if (text.count(QLatin1Char('\n')) != static_cast<qsizetype>(kElements) + 1)
            state.SkipWithError("not every element copied");
        QApplication::clipboard()->clear();
        t->clearSelection();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<long>(kElements));
}
BENCHMARK(BM_CopyAllRows)->Unit(benchmark::kMillisecond)->Iterations(5);

} // namespace
