// Progress lines into the nonlinear status window through the host's remote call, with the
// window shown and the event loop turning as a host's would between lines.
#include "KwMFCUIEntry.h"

#include <QApplication>
#include <QFile>
#include <benchmark/benchmark.h>

#include <string>
#include <vector>

namespace {

std::vector<std::wstring> sampleLines()
{
    std::vector<std::wstring> lines;
    for (int i = 0; i < 1024; ++i) {
        const int inc = i % 50 + 1;
        lines.push_back(std::to_wstring(i / 50 + 1) + L"," + std::to_wstring(inc) + L"," +
                        std::to_wstring(i % 7 + 1) + L"," + std::to_wstring(inc * 2) + L"," +
                        std::to_wstring((inc * 3) % 101) + L"," + std::to_wstring(i % 101) +
                        L",1.25E-04," + (i % 9 == 0 ? L"S" : L"F"));
    }
    return lines;
}

// Resident set size in KiB (0 where the system does not tell).
double residentKiB()
{
    QFile f(QStringLiteral("/proc/self/statm"));
    if (!f.open(QIODevice::ReadOnly))
        return 0;
    const QList<QByteArray> fields = f.readAll().split(' ');
    return fields.size() > 1 ? fields[1].toDouble() * 4.0 : 0;
}

void openShownWindow()
{
    DeleteKwDialog(41);
    CreateKwDialog(41);
    CallKwDialogFunction(41, 3, L"", 1, nullptr, nullptr);
    QApplication::processEvents();
}

void BM_ProgressLine(benchmark::State& state)
{
    const auto lines = sampleLines();
    openShownWindow();
    // The host's event loop turns every `range(0)` lines (0: never during the measure).
    const std::size_t every = std::size_t(state.range(0));
    std::size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            CallKwDialogFunction(41, 5, lines[i++ & 1023].c_str(), 0, nullptr, nullptr));
        if (every && i % every == 0)
            QApplication::processEvents();
    }
    state.SetItemsProcessed(std::int64_t(state.iterations()));
    CallKwDialogFunction(41, 2, L"", 0, nullptr, nullptr);
}
BENCHMARK(BM_ProgressLine)->Arg(0)->Arg(256);

// A long run: memory must stay where it was once the window has settled.
void BM_MillionLinesMemory(benchmark::State& state)
{
    const auto lines = sampleLines();
    openShownWindow();
    // Settle the glyph caches and the backing store with the same traffic first.
    for (int i = 0; i < 50000; ++i) {
        CallKwDialogFunction(41, 5, lines[std::size_t(i) & 1023].c_str(), 0, nullptr, nullptr);
        if ((i & 255) == 0)
            QApplication::processEvents();
    }
    QApplication::processEvents();
    const double before = residentKiB();
    for (auto _ : state) {
        for (int i = 0; i < 1000000; ++i) {
            CallKwDialogFunction(41, 5, lines[std::size_t(i) & 1023].c_str(), 0, nullptr,
                                 nullptr);
            if ((i & 255) == 0)
                QApplication::processEvents();
        }
    }
    QApplication::processEvents();
    const double after = residentKiB();
    state.SetItemsProcessed(std::int64_t(state.iterations()) * 1000000);
    state.counters["rss_before_KiB"] = before;
    state.counters["rss_after_KiB"] = after;
    state.counters["rss_growth_KiB"] = after - before;
    CallKwDialogFunction(41, 2, L"", 0, nullptr, nullptr);
}
BENCHMARK(BM_MillionLinesMemory)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    DeleteKwDialog(41);
    DeleteKwDialog(42);
    DeleteKwDialog(89);
    return 0;
}
