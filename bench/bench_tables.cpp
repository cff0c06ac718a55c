// Point tables at a million rows: paste against a bare parse of the same text, sort and
// compress, turning a column into a function, copy, memory beside a widget-per-cell table,
// one-row changes and a repaint, and the chart drawing a million points.
#include "CKwFunction.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "KW_UOM.h"
#include "KwChart.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QImage>
#include <QKeyEvent>
#include <QTableWidget>
#include <benchmark/benchmark.h>

#include <ctime>
#include <malloc.h>
#include <charconv>
#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kRows = 1000000;

// Thread CPU time: the machine the figures come from is shared, and wall time there measures
// the neighbours as much as the code.
struct Clock
{
    using time_point = double;
    static double now()
    {
        timespec ts{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
        return ts.tv_sec * 1e3 + ts.tv_nsec / 1e6;
    }
};
double msSince(double t0)
{
    return Clock::now() - t0;
}

double residentMiB()
{
    // Heap pages freed by the benchmarks before stay resident and would be reused unseen.
    malloc_trim(0);
    QFile f(QStringLiteral("/proc/self/statm"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    return f.readAll().split(' ').value(1).toDouble() * 4096.0 / (1024.0 * 1024.0);
}

// "x<TAB>y<CR><LF>" rows, as a spreadsheet copies them.
const std::string& pasteText()
{
    static const std::string text = [] {
        std::string t;
        t.reserve(std::size_t(kRows) * 24);
        char buf[64];
        for (int i = 0; i < kRows; ++i) {
            const double x = i * 0.001, y = 200.0 * std::sin(i * 1e-4) + 210.0;
            auto r = std::to_chars(buf, buf + 32, x, std::chars_format::general, 10);
            *r.ptr++ = '\t';
            r = std::to_chars(r.ptr, buf + 64, y, std::chars_format::general, 10);
            t.append(buf, r.ptr);
            t.append("\r\n");
        }
        return t;
    }();
    return text;
}

// The bare parse: every separator found and every number read, nothing kept but a sum.
double fromCharsParse(const std::string& t)
{
    double sum = 0;
    const char* p = t.data();
    const char* e = p + t.size();
    while (p < e) {
        double v = 0;
        const auto r = std::from_chars(p, e, v);
        sum += v;
        p = r.ptr;
        while (p < e && (*p == '\t' || *p == '\r' || *p == '\n'))
            ++p;
        if (r.ec != std::errc())
            ++p;
    }
    return sum;
}

struct TableUnderTest
{
    TableUnderTest() : units(KW_UOM::MMNS), table(1, QStringLiteral("Big"), CKwTable::General)
    {
        dlg.reset(CKwTableDialog::NewFor(&table));
        dlg->SetTable(nullptr, &table, &units);
        dlg->Create();
    }
    void fill()
    {
        dlg->PasteToCell(std::string_view(pasteText()), dlg->GetRowCount(), 0, nullptr);
    }
    KW_UOM units;
    CKwTable table;
    std::unique_ptr<CKwTableDialog> dlg;
};

void BM_PasteMillionRowsVsFromChars(benchmark::State& state)
{
    // The list reads the clipboard as 8-bit text and pastes that.
    const std::string& text = pasteText();
    double pasteMs = 0, parseMs = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto t = std::make_unique<TableUnderTest>();
        state.ResumeTiming();
        auto t0 = Clock::now();
        t->dlg->PasteToCell(std::string_view(text), 0, 0, nullptr);
        pasteMs += msSince(t0);
        t0 = Clock::now();
        benchmark::DoNotOptimize(fromCharsParse(text));
        parseMs += msSince(t0);
        if (t->dlg->GetRowCount() != kRows)
            state.SkipWithError("rows lost");
        state.PauseTiming();
        t.reset();
        state.ResumeTiming();
    }
    state.counters["paste_ms"] = pasteMs / double(state.iterations());
    state.counters["from_chars_ms"] = parseMs / double(state.iterations());
    state.counters["ratio"] = pasteMs / parseMs;
}
// Several repetitions, judged by their median: the first pastes of a process also pay for
// first touching the view's and the heap's memory, which a user pays once.
BENCHMARK(BM_PasteMillionRowsVsFromChars)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Repetitions(5);

// What the user waits for on Ctrl+V: the clipboard read as text, the paste, and the first
// paint of the dialog with the new rows, against a bare parse of the same numbers, both
// measured in the same repetition.
void BM_UserCtrlVMillionRowsVsFromChars(benchmark::State& state)
{
    const std::string& text = pasteText();
    // Another program's copy: the clipboard holds the text before the user presses Ctrl+V.
    QApplication::clipboard()->setText(QString::fromLatin1(text.data(), qsizetype(text.size())));
    double userMs = 0, parseMs = 0, paintMs = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto t = std::make_unique<TableUnderTest>();
        t->dlg->resize(600, 500);
        t->dlg->show();
        QApplication::processEvents();
        t->dlg->GetList().SelectRow(0);
        t->dlg->GetList().setFocus();
        state.ResumeTiming();
        auto t0 = Clock::now();
        QKeyEvent ctrlV(QEvent::KeyPress, Qt::Key_V, Qt::ControlModifier);
        QApplication::sendEvent(&t->dlg->GetList(), &ctrlV);
        const double tk = Clock::now();
        t->dlg->repaint();
        paintMs += msSince(tk);
        userMs += msSince(t0);

        t0 = Clock::now();
        benchmark::DoNotOptimize(fromCharsParse(text));
        parseMs += msSince(t0);
        if (t->dlg->GetRowCount() != kRows)
            state.SkipWithError("rows lost");
        state.PauseTiming();
        t.reset();
        state.ResumeTiming();
    }
    state.counters["ctrl_v_ms"] = userMs / double(state.iterations());
    state.counters["paint_ms"] = paintMs / double(state.iterations());
    state.counters["from_chars_ms"] = parseMs / double(state.iterations());
    state.counters["ratio"] = userMs / parseMs;
}
BENCHMARK(BM_UserCtrlVMillionRowsVsFromChars)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Repetitions(5);

// X of every row read back: the sort must have sorted.
bool ascendingX(CKwTableDialog& dlg)
{
    const KwPointTableModel* m = dlg.GetList().Model();
    double prev = -std::numeric_limits<double>::infinity();
    for (int r = 0; r < dlg.GetRowCount(); ++r) {
        const double x = dlg.GetItemValue(r, 0);
        if (!(x >= prev))
            return false;
        prev = x;
    }
    return m->rows() == dlg.GetRowCount() + 1;
}

// Range 0: reverse order with every X ten times (a full sort and a compress to a tenth);
// range 1: a million distinct X, shuffled, so that nothing is dropped and every row moves.
void BM_SortAndCompressMillionRows(benchmark::State& state)
{
    const bool unique = state.range(0) == 1;
    std::string text;
    text.reserve(std::size_t(kRows) * 24);
    std::vector<int> order(kRows);
    for (int i = 0; i < kRows; ++i)
        order[std::size_t(i)] = kRows - i;
    if (unique) {
        unsigned seed = 12345;
        for (int i = kRows - 1; i > 0; --i) {
            seed = seed * 1103515245u + 12345u;
            std::swap(order[std::size_t(i)], order[std::size_t((seed >> 8) % unsigned(i + 1))]);
        }
    }
    char buf[64];
    for (const int i : order) {
        const double x = unique ? i * 0.001 : double((i / 10) * 10);
        auto r = std::to_chars(buf, buf + 32, x, std::chars_format::general, 10);
        *r.ptr++ = '\t';
        r = std::to_chars(r.ptr, buf + 64, i);
        text.append(buf, r.ptr);
        text.append("\r\n");
    }
    int after = 0;
    bool sorted = true;
    for (auto _ : state) {
        state.PauseTiming();
        auto t = std::make_unique<TableUnderTest>();
        t->dlg->PasteToCell(std::string_view(text), 0, 0, nullptr);
        state.ResumeTiming();
        t->dlg->SortAndCompressTable(1);
        state.PauseTiming();
        after = t->dlg->GetRowCount();
        sorted = sorted && ascendingX(*t->dlg);
        t.reset();
        state.ResumeTiming();
    }
    if (!sorted)
        state.SkipWithError("not sorted");
    if (after != (unique ? kRows : kRows / 10 + 1))
        state.SkipWithError("wrong number of rows kept");
    state.counters["rows_after"] = after;
}
BENCHMARK(BM_SortAndCompressMillionRows)
    ->ArgName("unique_x")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

// Opening a table dialog on a stored table of a million points, up to its first paint. The
// first opening of the process is reported apart: it also pays for first touching memory.
void BM_OpenDialogOnMillionPointTable(benchmark::State& state)
{
    KW_UOM units(KW_UOM::MMNS);
    CKwTable table(2, QStringLiteral("Stored"), CKwTable::TimeCurve);
    {
        auto* x = new CKwFunction;
        auto* y = new CKwFunction;
        x->Initialize();
        y->Initialize();
        x->SetSize(kRows);
        y->SetSize(kRows);
        x->SetUnitType(KwUnitKind::Time);
        y->SetUnitType(KwUnitKind::Dimensionless);
        for (int i = 0; i < kRows; ++i) {
            x->SetValue(i, i * 0.001);
            y->SetValue(i, 200.0 * std::sin(i * 1e-4) + 210.0);
        }
        table.SetFunctions(x, y);
    }
    static double firstMs = -1;
    double totalMs = 0, textMs = 0;
    for (auto _ : state) {
        const auto t0 = Clock::now();
        std::unique_ptr<CKwTableDialog> dlg(CKwTableDialog::NewFor(&table));
        dlg->SetTable(nullptr, &table, &units);
        dlg->Create();
        dlg->show();
        dlg->repaint();
        const double ms = msSince(t0);
        totalMs += ms;
        if (firstMs < 0)
            firstMs = ms;
        if (dlg->GetRowCount() != kRows)
            state.SkipWithError("rows lost");
        state.PauseTiming();
        // What idle time does after the paint, in slices: every row turned into text.
        const auto t1 = Clock::now();
        benchmark::DoNotOptimize(dlg->GetList().Model()->cellView(kRows - 1, 1));
        textMs += msSince(t1);
        dlg.reset();
        state.ResumeTiming();
    }
    state.counters["open_ms"] = totalMs / double(state.iterations());
    state.counters["first_open_ms"] = firstMs;
    state.counters["all_text_after_ms"] = textMs / double(state.iterations());
}
BENCHMARK(BM_OpenDialogOnMillionPointTable)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3)
    ->Repetitions(3);

void BM_UpdateListDataMillionRows(benchmark::State& state)
{
    TableUnderTest t;
    t.fill();
    CKwFunction* f = nullptr;
    for (auto _ : state)
        if (!t.dlg->UpdateListData(1, &f))
            state.SkipWithError("bad cell");
    state.counters["values"] = f ? f->GetSize() : 0;
    delete f;
}
BENCHMARK(BM_UpdateListDataMillionRows)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_CopyMillionRows(benchmark::State& state)
{
    TableUnderTest t;
    t.fill();
    t.dlg->GetList().SelectAllRows();
    for (auto _ : state)
        t.dlg->GetList().CopySelected();
    state.counters["clipboard_chars"] = double(QApplication::clipboard()->text().size());
}
BENCHMARK(BM_CopyMillionRows)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_MemoryMillionRowsVsTableWidget(benchmark::State& state)
{
    for (auto _ : state) {
        const double before = residentMiB();
        auto t = std::make_unique<TableUnderTest>();
        t->fill();
        const double ours = residentMiB() - before;
        const double store = double(t->dlg->GetList().Model()->memoryBytes()) / (1024.0 * 1024.0);
        const KwPointTableModel* m = t->dlg->GetList().Model();
        const double before2 = residentMiB();
        {
            QTableWidget w(kRows + 1, 2);
            for (int r = 0; r < kRows; ++r)
                for (int c = 0; c < 2; ++c)
                    w.setItem(r, c, new QTableWidgetItem(m->cellText(r, c)));
            const double widget = residentMiB() - before2;
            state.counters["ours_MiB"] = ours;
            state.counters["store_MiB"] = store;
            state.counters["tablewidget_MiB"] = widget;
            state.counters["widget_over_ours"] = widget / ours;
        }
    }
}
BENCHMARK(BM_MemoryMillionRowsVsTableWidget)->Unit(benchmark::kMillisecond)->Iterations(1);

void BM_OneRowChangesMillionRows(benchmark::State& state)
{
    TableUnderTest t;
    t.fill();
    auto& list = t.dlg->GetList();
    t.dlg->resize(600, 500);
    t.dlg->show();
    QApplication::processEvents();
    list.SelectRow(kRows / 2);
    double delMs = 0, editMs = 0, paintMs = 0;
    for (auto _ : state) {
        auto t0 = Clock::now();
        list.SelectRow(kRows / 2);
        list.DeleteSelectedRows();
        delMs += msSince(t0);
        t0 = Clock::now();
        if (!t.dlg->OnLeaveItem(kRows / 2, 1, QStringLiteral("123.5")))
            list.Model()->setCellText(kRows / 2, 1, QStringLiteral("123.5"));
        editMs += msSince(t0);
        t0 = Clock::now();
        list.viewport()->repaint();
        paintMs += msSince(t0);
    }
    const double n = double(state.iterations());
    state.counters["delete_ms"] = delMs / n;
    state.counters["edit_ms"] = editMs / n;
    state.counters["repaint_ms"] = paintMs / n;
}
BENCHMARK(BM_OneRowChangesMillionRows)->Unit(benchmark::kMillisecond)->Iterations(50);

// Range 0: a signal in time order; range 1: the same points in shuffled order (a table that
// was never sorted), which cannot be reduced in runs.
void BM_ChartMillionPoints(benchmark::State& state)
{
    KwChart chart;
    chart.resize(900, 560);
    std::vector<double> x(kRows), y(kRows);
    for (int i = 0; i < kRows; ++i) {
        x[std::size_t(i)] = i * 0.001;
        y[std::size_t(i)] = std::sin(i * 1e-3) + 0.1 * std::sin(i * 0.37);
    }
    if (state.range(0) == 1) {
        unsigned seed = 777;
        for (int i = kRows - 1; i > 0; --i) {
            seed = seed * 1103515245u + 12345u;
            const std::size_t j = (seed >> 8) % unsigned(i + 1);
            std::swap(x[std::size_t(i)], x[j]);
            std::swap(y[std::size_t(i)], y[j]);
        }
    }
    chart.AddSeries(QStringLiteral("signal"));
    chart.SetSeriesData(0, std::move(x), std::move(y));
    chart.SetAxisTitles(QStringLiteral("Time"), QStringLiteral("s"), QStringLiteral("Value"),
                        QString());
    QImage image(chart.size(), QImage::Format_ARGB32_Premultiplied);
    chart.render(&image); // settles the data range once
    for (auto _ : state)
        chart.render(&image);
    state.counters["segments"] = chart.LastSegmentCount();
}
BENCHMARK(BM_ChartMillionPoints)
    ->ArgName("shuffled")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(20);

} // namespace
