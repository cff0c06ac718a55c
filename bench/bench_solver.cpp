// The demo host's side of a solver run on a generated block of 100 x 100 x 99 hexahedra
// (1,030,301 nodes): writing the input deck and reading a result file with displacement,
// nodal force and stress for every node. Target: 100 MB/s or more each (counter
// "bytes_per_second"). Also: the memory of that result set (counter "MB", from the containers'
// sizes; target under 300 MB), and the demo's own time around a real solver run of the sample
// model (deck, starting the program, reading the results) against the solver's time (counter
// "overhead_pct"; target under 10).
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwUIEntity.h"
#include "KwSolverDeck.h"
#include "KwSolverResults.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <memory>
#include <string>

namespace {

constexpr int kNx = 100, kNy = 100, kNz = 99;

CKwFEModel* blockModel()
{
    static CKwFEModel* m = [] {
        auto* model = new CKwFEModel(1, QStringLiteral("Block"));
        for (int f = 1; f <= 6; ++f)
            model->m_geometry.append(new CKwUIEntity(CKwUIEntity::Face, f, QString()));
        model->m_mesh = new CKwMeshModel(1, QStringLiteral("Mesh"));
        model->m_mesh->BuildBlock(kNx, kNy, kNz, 1.0, 1.0, 1.0);
        auto* steel = new CKwMaterial(1, QStringLiteral("Steel"));
        steel->SetValue("EX", 2.1e11);
        steel->SetValue("NUXY", 0.3);
        model->m_materials = {steel};
        auto* fixed = new CKwRestraint(1, QStringLiteral("Fixed"));
        fixed->m_dof.fill(true);
        fixed->m_entities = {model->FindGeometry(CKwUIEntity::Face, 5)};
        model->m_restraints = {fixed};
        auto* load = new CKwLoad(1, QStringLiteral("Pressure"));
        load->m_type = CKwLoad::Pressure;
        load->m_magnitude = 1e6;
        load->m_entities = {model->FindGeometry(CKwUIEntity::Face, 6)};
        load->m_subcaseIds = {1};
        model->m_loads = {load};
        auto* a = new CKwAnalysis(1, QStringLiteral("Static"), CKwAnalysis::LinearStatic);
        a->AddSubCase(new CKwSubCase(1, QStringLiteral("Subcase 1")));
        model->m_analyses = {a};
        return model;
    }();
    return m;
}

void BM_WriteDeck(benchmark::State& state)
{
    CKwFEModel* m = blockModel();
    std::size_t bytes = 0;
    for (auto _ : state) {
        const KwSolverDeck deck = KwWriteSolverDeck(*m, *m->m_analyses.first());
        if (!deck.ok())
            state.SkipWithError("deck refused");
        bytes += deck.text.size();
        benchmark::DoNotOptimize(deck.text.data());
    }
    state.SetBytesProcessed(std::int64_t(bytes));
}
BENCHMARK(BM_WriteDeck)->Unit(benchmark::kMillisecond)->Iterations(3);

// A result file as the solver writes it, for every node of the block.
const std::string& resultFile()
{
    static const std::string text = [] {
        const std::size_t nodes = std::size_t(kNx + 1) * (kNy + 1) * (kNz + 1);
        std::string f;
        f.reserve(nodes * 220);
        f += "    1PSTEP                         1           1           1\n";
        char line[160];
        const auto block = [&](const char* name, int comps, const char* compNames[]) {
            std::snprintf(line, sizeof line,
                          "  100CL  101 1.000000000%12zu                     0    1           1\n",
                          nodes);
            f += line;
            f += std::string(" -4  ") + name + "\n";
            for (int c = 0; c < comps; ++c)
                f += std::string(" -5  ") + compNames[c] + "          1    2    1    0\n";
            for (std::size_t n = 1; n <= nodes; ++n) {
                int at = std::snprintf(line, sizeof line, " -1%10zu", n);
                for (int c = 0; c < comps; ++c)
                    at += std::snprintf(line + at, sizeof line - std::size_t(at), "%12.5E",
                                        -1.23456e-3 * double(n % 977) + c);
                f.append(line, std::size_t(at));
                f += '\n';
            }
            f += " -3\n";
        };
        const char* disp[] = {"D1", "D2", "D3"};
        const char* forc[] = {"F1", "F2", "F3"};
        const char* stress[] = {"SXX", "SYY", "SZZ", "SXY", "SYZ", "SZX"};
        block("DISP        4    1", 3, disp);
        block("FORC        4    1", 3, forc);
        block("STRESS      6    1", 6, stress);
        f += " 9999\n";
        return f;
    }();
    return text;
}

void BM_ReadResults(benchmark::State& state)
{
    const std::string& text = resultFile();
    for (auto _ : state) {
        KwSolverResults r;
        QString error;
        if (!KwReadSolverResults(text, {1}, r, error))
            state.SkipWithError(error.toStdString().c_str());
        benchmark::DoNotOptimize(r.sets.data());
    }
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(text.size()));
}
BENCHMARK(BM_ReadResults)->Unit(benchmark::kMillisecond)->Iterations(3);

std::size_t fieldBytes(const KwNodalField& f)
{
    return f.nodeIds.capacity() * sizeof(int) + f.values.capacity() * sizeof(double);
}

// What a 1,030,301-node result set with displacement, nodal force and stress (and the
// equivalent and principal stresses the reader derives) holds in memory.
void BM_ResultSetMemory(benchmark::State& state)
{
    const std::string& text = resultFile();
    std::size_t bytes = 0;
    for (auto _ : state) {
        KwSolverResults r;
        QString error;
        if (!KwReadSolverResults(text, {1}, r, error) || r.sets.size() != 1)
            state.SkipWithError("results not read");
        const KwResultSet& set = r.sets.front();
        bytes = sizeof(KwResultSet);
        for (const KwNodalField* f : {&set.displacement, &set.displacementImaginary, &set.reaction,
                                      &set.stress, &set.vonMises, &set.principal, &set.strain})
            bytes += fieldBytes(*f);
    }
    state.counters["MB"] = double(bytes) / (1024.0 * 1024.0);
    state.counters["nodes"] = double(std::size_t(kNx + 1) * (kNy + 1) * (kNz + 1));
}
BENCHMARK(BM_ResultSetMemory)->Unit(benchmark::kMillisecond)->Iterations(1);

// A real run of the sample model's analysis of the given type as "Run analysis" makes it:
// the deck written, the solver program started in a job folder, its result file read. The
// demo's part is the deck, the start (timed on a program that does nothing, started the same
// way) and the reading; the solver's part its run less that start.
void BM_SampleRunOverhead(benchmark::State& state)
{
    const QString ccx = QStandardPaths::findExecutable(QStringLiteral("ccx"));
    if (ccx.isEmpty()) {
        state.SkipWithError("the solver program ccx is not installed");
        for (auto _ : state) {
        }
        return;
    }
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    const CKwAnalysis* analysis = nullptr;
    for (const CKwAnalysis* a : model->m_analyses)
        if (a->GetAnalysisTypeCode() == int(state.range(0)) && !analysis)
            analysis = a;
    double deckMs = 0, startMs = 0, solverMs = 0, readMs = 0;
    for (auto _ : state) {
        QElapsedTimer t;
        t.start();
        const KwSolverDeck deck = KwWriteSolverDeck(*model, *analysis);
        QTemporaryDir dir;
        QFile in(QDir(dir.path()).filePath(QStringLiteral("job.inp")));
        if (!deck.ok() || !in.open(QIODevice::WriteOnly)) {
            state.SkipWithError("deck refused");
            break;
        }
        in.write(deck.text.data(), qint64(deck.text.size()));
        in.close();
        deckMs += double(t.nsecsElapsed()) / 1e6;

        QProcess nothing;
        t.restart();
        nothing.start(QStringLiteral("/bin/true"), {});
        nothing.waitForFinished(10000);
        startMs += double(t.nsecsElapsed()) / 1e6;

        QProcess solver;
        solver.setWorkingDirectory(dir.path());
        solver.setProcessChannelMode(QProcess::MergedChannels);
        t.restart();
        solver.start(ccx, {QStringLiteral("-i"), QStringLiteral("job")});
        while (solver.state() != QProcess::NotRunning) {
            solver.waitForReadyRead(100);
            solver.readAll(); // the job reads its output as it comes
        }
        const double runMs = double(t.nsecsElapsed()) / 1e6;
        solverMs += runMs;

        t.restart();
        QFile frd(QDir(dir.path()).filePath(QStringLiteral("job.frd")));
        KwSolverResults r;
        QString error;
        if (!frd.open(QIODevice::ReadOnly)) {
            state.SkipWithError("no result file");
            break;
        }
        const QByteArray bytes = frd.readAll();
        if (!KwReadSolverResults(std::string_view(bytes.constData(), std::size_t(bytes.size())),
                                 deck.stepSubcases, r, error))
            state.SkipWithError(error.toStdString().c_str());
        readMs += double(t.nsecsElapsed()) / 1e6;
    }
    const double n = double(state.iterations());
    solverMs -= startMs; // the solver's own time: its run less what any start costs
    state.counters["deck_ms"] = deckMs / n;
    state.counters["start_ms"] = startMs / n;
    state.counters["read_ms"] = readMs / n;
    state.counters["solver_ms"] = solverMs / n;
    state.counters["overhead_pct"] = 100.0 * (deckMs + startMs + readMs) / solverMs;
}
BENCHMARK(BM_SampleRunOverhead)
    ->Arg(CKwAnalysis::LinearStatic)
    ->Arg(CKwAnalysis::NonlinearStatic)
    ->Arg(CKwAnalysis::Modal)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

} // namespace
