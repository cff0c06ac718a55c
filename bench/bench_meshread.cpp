// Reading the mesher's mesh file: a generated block of 50 x 50 x 67 cubes, six tetrahedra each
// (1,005,000 tetrahedra, 175,644 nodes), with the triangles of its six faces as the mesher
// writes them, read into the model's mesh with its classification. Target: 100 MB/s or more
// (counter "bytes_per_second").
#include "CKwMeshModel.h"
#include "KwGmshMesh.h"

#include <benchmark/benchmark.h>
#include <string>

namespace {

constexpr int kNx = 50, kNy = 50, kNz = 67;

int nodeId(int i, int j, int k) { return 1 + i + (kNx + 1) * (j + (kNy + 1) * k); }

void put(std::string& s, long long v) { s += std::to_string(v); }

const std::string& meshFile()
{
    static const std::string text = [] {
        std::string s = "$MeshFormat\n4.1 0 8\n$EndMeshFormat\n$Entities\n0 0 1 1\n"
                        "1 0 0 0 1 1 1 0 0\n"
                        "1 0 0 0 1 1 1 1 1 1 1\n$EndEntities\n";
        const long long nodes = (kNx + 1LL) * (kNy + 1) * (kNz + 1);
        s += "$Nodes\n1 " + std::to_string(nodes) + " 1 " + std::to_string(nodes) + "\n3 1 0 "
             + std::to_string(nodes) + "\n";
        for (long long n = 1; n <= nodes; ++n) {
            put(s, n);
            s += '\n';
        }
        char buf[96];
        for (int k = 0; k <= kNz; ++k)
            for (int j = 0; j <= kNy; ++j)
                for (int i = 0; i <= kNx; ++i) {
                    std::snprintf(buf, sizeof buf, "%.17g %.17g %.17g\n", i * 0.013, j * 0.011, k * 0.007);
                    s += buf;
                }
        s += "$EndNodes\n";
        // Six tetrahedra round the main diagonal of each cube; the skin as two triangles a
        // square.
        std::string tets, tris;
        long long tetCount = 0, triCount = 0, id = 0;
        for (int k = 0; k < kNz; ++k)
            for (int j = 0; j < kNy; ++j)
                for (int i = 0; i < kNx; ++i) {
                    const int c[8] = {nodeId(i, j, k), nodeId(i + 1, j, k), nodeId(i + 1, j + 1, k),
                                      nodeId(i, j + 1, k), nodeId(i, j, k + 1), nodeId(i + 1, j, k + 1),
                                      nodeId(i + 1, j + 1, k + 1), nodeId(i, j + 1, k + 1)};
                    const int t[6][4] = {{0, 1, 2, 6}, {0, 2, 3, 6}, {0, 3, 7, 6},
                                         {0, 7, 4, 6}, {0, 4, 5, 6}, {0, 5, 1, 6}};
                    for (const auto& q : t) {
                        put(tets, ++id);
                        for (int v : q) {
                            tets += ' ';
                            put(tets, c[v]);
                        }
                        tets += '\n';
                        ++tetCount;
                    }
                    if (k == 0) {
                        const int bottom[2][3] = {{c[0], c[2], c[1]}, {c[0], c[3], c[2]}};
                        for (const auto& f : bottom) {
                            tris += std::to_string(++id) + ' ' + std::to_string(f[0]) + ' '
                                    + std::to_string(f[1]) + ' ' + std::to_string(f[2]) + '\n';
                            ++triCount;
                        }
                    }
                }
        s += "$Elements\n2 " + std::to_string(tetCount + triCount) + " 1 " + std::to_string(id)
             + "\n2 1 2 " + std::to_string(triCount) + "\n" + tris + "3 1 4 "
             + std::to_string(tetCount) + "\n" + tets + "$EndElements\n";
        return s;
    }();
    return text;
}

void BM_ReadMeshFile(benchmark::State& state)
{
    const std::string& text = meshFile();
    std::size_t elements = 0;
    for (auto _ : state) {
        const KwGmshMesh r = KwReadGmshMesh(text);
        if (!r.ok())
            state.SkipWithError(r.error.toStdString().c_str());
        elements = r.mesh.ElementCount();
        benchmark::DoNotOptimize(elements);
    }
    state.counters["elements"] = double(elements);
    state.counters["MB"] = double(text.size()) / 1e6;
    state.SetBytesProcessed(std::int64_t(state.iterations()) * std::int64_t(text.size()));
}
BENCHMARK(BM_ReadMeshFile)->Unit(benchmark::kMillisecond)->MinTime(2.0);

} // namespace
