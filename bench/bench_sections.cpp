// All 22 values of each of the twenty section shapes after one dimension changes, as the
// definition dialog recomputes them while the user types. The torsion constant is checked
// against a converged solution once per shape (counter "J_error_pct").
// BM_HostileXml: every XML reader of the project on the files that froze or crashed the
// document-model readers (149,000 nested elements in 1 MB, one element with 60,000
// attributes); each must be refused well within a second.
#include "CKwDefineCrossSectionDlg.h"
#include "CKwPhysicalProperty.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwMaterialDatabase.h"
#include "KwSectionSolver.h"

#include <QApplication>
#include <benchmark/benchmark.h>
#include <cmath>
#include <functional>

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

QByteArray hostile(int which, const QByteArray& open, const QByteArray& close)
{
    if (which == 2) {
        // The bounded pass's worst case: just under 1 MiB of elements at both bounds (32 deep
        // in all, 64 attributes each), read to the end.
        QByteArray e = "<x";
        for (int i = 0; i < 64; ++i)
            e += " a" + QByteArray::number(i) + "='1'";
        e += "/>";
        const QByteArray chain = QByteArray("<y>").repeated(26), unchain = QByteArray("</y>").repeated(26);
        QByteArray body;
        while (body.size() + chain.size() + e.size() < 1000000)
            body += e;
        return open + chain + body + unchain + close;
    }
    if (which == 0)
        return open + QByteArray("<x>").repeated(149000) + QByteArray("</x>").repeated(149000) +
               close;
    QByteArray e = "<x";
    for (int i = 0; i < 60000; ++i)
        e += " a" + QByteArray::number(i) + "=\"\"";
    return open + e + "/>" + close;
}

// range(0): reader (0 section file, 1 svrmat, 2 sldmat, 3 material xml, 4 language);
// range(1): 0 deep, 1 wide, 2 within both bounds. Counter "read" is 1 when the reader took the file (it must not).
void BM_HostileXml(benchmark::State& state)
{
    static KW_UOM units(KW_UOM::MMNS);
    static CKwPhysicalProperty property(1, QStringLiteral("Bench"));
    static CKwDefineCrossSectionDlg* dlg = [] {
        auto* d = new CKwDefineCrossSectionDlg(&property, &units, nullptr);
        d->Create();
        return d;
    }();
    namespace DB = KwMaterialDatabase;
    struct Reader
    {
        const char* name;
        QByteArray open, close;
        std::function<bool(const QByteArray&)> read;
    };
    const Reader readers[] = {
        {"section file", "<KwiWorks><Property>", "</Property></KwiWorks>",
         [](const QByteArray& b) { return dlg->LoadFromBytes(b); }},
        {"svrmat", "<svrmat>", "</svrmat>", [](const QByteArray& b) { return DB::ReadSvrmat(b).ok; }},
        {"sldmat", "<materials>", "</materials>",
         [](const QByteArray& b) { return DB::ReadSldmat(b).ok; }},
        {"material xml", "<kwimat>", "</kwimat>", [](const QByteArray& b) { return DB::ReadXml(b).ok; }},
        {"language", "<KwLanguage code='x'>", "</KwLanguage>",
         [](const QByteArray& b) {
             QString code, error;
             return CKwXMLUtils::ParseLanguageDocument(b, &code, &error) >= 0;
         }},
    };
    const Reader& r = readers[state.range(0)];
    const QByteArray file = hostile(static_cast<int>(state.range(1)), r.open, r.close);
    bool read = false;
    for (auto _ : state)
        read = r.read(file);
    state.counters["read"] = read ? 1 : 0;
    state.counters["bytes"] = static_cast<double>(file.size());
    static const char* const kinds[] = {", 149000 deep", ", 60000 attributes",
                                        ", 1 MB at the bounds"};
    state.SetLabel(std::string(r.name) + kinds[state.range(1)]);
}

} // namespace

BENCHMARK(BM_SectionAfterOneChange)->DenseRange(0, P::ShapeCount - 1)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_HostileXml)
    ->ArgsProduct({{0, 1, 2, 3, 4}, {0, 1, 2}})
    ->Unit(benchmark::kMillisecond);
