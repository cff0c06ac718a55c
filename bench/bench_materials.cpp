// The material library browser narrowing 10,000 materials as the user types: each keystroke
// into the search line (the filter over the whole list, the list view's reset) and the
// repaint of the visible rows. The target is one frame, 16 ms, per keystroke.
#include "CKwMaterialBrowserDlg.h"
#include "KwMaterialKeys.h"

#include <QApplication>
#include <QLineEdit>
#include <QTableView>
#include <algorithm>
#include <benchmark/benchmark.h>

#include <ctime>

namespace {

constexpr int kMaterials = 10000;

double threadMs()
{
    timespec ts{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &ts);
    return ts.tv_sec * 1e3 + ts.tv_nsec / 1e6;
}

// Ten thousand materials in twenty categories of four types, named as libraries name them.
QList<CKwMaterial> library()
{
    static const char* const kinds[] = {"Steel", "Aluminium", "Titanium", "Copper", "Brass",
                                        "Polycarbonate", "Nylon", "Epoxy", "Rubber", "Iron"};
    QList<CKwMaterial> out;
    out.reserve(kMaterials);
    for (int i = 0; i < kMaterials; ++i) {
        CKwMaterial m(i + 1, QStringLiteral("%1 %2-T%3, grade %4")
                                 .arg(QString::fromLatin1(kinds[i % 10]))
                                 .arg(1000 + i)
                                 .arg(i % 9)
                                 .arg(i % 97));
        m.SetMaterialType(i % 4 == 3 ? CKwMaterial::Orthotropic2D : CKwMaterial::Isotropic);
        m.m_category = QStringLiteral("Category %1").arg(i % 20);
        m.SetValue(KwMaterialKeys::EX, 1e9 + 1e6 * i);
        m.SetValue(KwMaterialKeys::DENS, 1000 + i % 7000);
        out.append(m);
    }
    return out;
}

// One keystroke: a letter typed into (or taken from) the search line, the list repainted.
void BM_BrowserFilterAsTyped(benchmark::State& state)
{
    CKwMaterialBrowserDlg d;
    d.GetModel()->AddMaterials(QStringLiteral("bench.kwimat"), library());
    d.Create();
    d.resize(900, 600);
    d.show();
    QApplication::processEvents();
    if (state.range(0) == 1) // with a property range set as well
        d.SetRange(KwMaterialKeys::EX, QStringLiteral("2e9"), QStringLiteral("8e9"));
    auto* search = d.findChild<QLineEdit*>();
    const QString word = QStringLiteral("alumin");
    std::vector<double> times;
    int step = 0;
    for (auto _ : state) {
        // Type the word letter by letter, then take it back letter by letter.
        const int n = int(word.size());
        const int len = step % (2 * n) < n ? step % (2 * n) + 1 : 2 * n - step % (2 * n) - 1;
        ++step;
        const double t0 = threadMs();
        search->setText(word.left(len));
        d.GetList()->viewport()->repaint();
        times.push_back(threadMs() - t0);
        benchmark::DoNotOptimize(d.ShownCount());
    }
    std::sort(times.begin(), times.end());
    state.counters["median_ms"] = times[times.size() / 2];
    state.counters["max_ms"] = times.back();
    state.counters["shown"] = d.ShownCount();
}
BENCHMARK(BM_BrowserFilterAsTyped)
    ->ArgName("range")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(60);

} // namespace
