// The demo host's side of a solver run on a generated block of 100 x 100 x 99 hexahedra
// (1,030,301 nodes): writing the input deck and reading a result file with displacement,
// nodal force and stress for every node. Target: 100 MB/s or more each (counter
// "bytes_per_second").
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

#include <benchmark/benchmark.h>
#include <cstdio>
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

} // namespace
