#include "KwQualitySamples.h"

#include "CKwMeshModel.h"
#include "KwMeshQuality.h"

#include <array>
#include <vector>

namespace {

using M = CKwMeshModel;
using namespace KwMeshQuality;
using P = std::array<double, 3>;

constexpr KwQualitySample kSamples[] = {
    {1, M::Hex8, "good", -1},
    {2, M::Hex20, "sheared", Skew},
    {3, M::Hex8, "tapered", Taper},
    {4, M::Hex8, "warped", Warping},
    {5, M::Hex8, "long", AspectRatio},
    {6, M::Hex8, "inside out", Jacobian},
    {7, M::Wedge6, "good", -1},
    {8, M::Wedge15, "long", AspectRatio},
    {9, M::Wedge6, "sheared", Skew},
    {10, M::Pyr5, "good", -1},
    {11, M::Pyr13, "flat", Jacobian},
    {12, M::Pyr5, "leaning", Skew},
    {13, M::Beam2, "beam", -1},
};

// Corners of each sample in unit size; the builder scales and places them.
std::vector<P> corners(int index)
{
    const double h3 = 0.8660254037844386; // height of the unit equilateral triangle
    auto hex = [](double lx, double top, double shift, double lift, double height) {
        // Bottom unit square (lx long), top square `top` wide centred over it, moved by
        // `shift` along X, its third corner raised by `lift`.
        const double o = (1 - top) / 2;
        return std::vector<P>{{0, 0, 0},
                              {lx, 0, 0},
                              {lx, 1, 0},
                              {0, 1, 0},
                              {o * lx + shift, o, height},
                              {(1 - o) * lx + shift, o, height},
                              {(1 - o) * lx + shift, 1 - o, height + lift},
                              {o * lx + shift, 1 - o, height}};
    };
    auto wedge = [h3](double height, double shift) {
        return std::vector<P>{{0, 0, 0},          {1, 0, 0},          {0.5, h3, 0},
                              {shift, 0, height}, {1 + shift, 0, height}, {0.5 + shift, h3, height}};
    };
    auto pyramid = [](double x, double y, double z) {
        return std::vector<P>{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {x, y, z}};
    };
    switch (index) {
    case 0: return hex(1, 1, 0, 0, 1);
    case 1: return hex(1, 1, 1.5, 0, 1);
    case 2: return hex(1, 0.2, 0, 0, 1);
    case 3: return hex(1, 1, 0, 0.5, 1);
    case 4: return hex(6, 1, 0, 0, 1);
    case 5: return hex(1, 1, 0, 0, -1);
    case 6: return wedge(1, 0);
    case 7: return wedge(6, 0);
    case 8: return wedge(1, 1.5);
    case 9: return pyramid(0.5, 0.5, 0.7071067811865476);
    case 10: return pyramid(0.5, 0.5, 0.1);
    case 11: return pyramid(2.5, 2.5, 1);
    default: return {{0, 0, 0}, {1, 0, 0}};
    }
}

// Pairs of corners that carry a mid-side node, edge by edge (bottom, top, then the edges
// between them).
std::vector<std::array<int, 2>> edges(int linearType)
{
    switch (linearType) {
    case M::Hex8:
        return {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
    case M::Wedge6: return {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}};
    case M::Pyr5: return {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}};
    default: return {};
    }
}

} // namespace

int KwBuildSolidQualitySamples(CKwMeshModel& mesh, const KwQualitySample** samples)
{
    mesh.Clear();
    constexpr double size = 0.2, gap = 1.0;
    int node = 1;
    const int count = static_cast<int>(std::size(kSamples));
    for (int i = 0; i < count; ++i) {
        const KwQualitySample& s = kSamples[i];
        std::vector<P> p = corners(i);
        if (M::IsParabolic(s.type))
            for (const auto& [a, b] : edges(M::LinearType(s.type)))
                p.push_back({(p[a][0] + p[b][0]) / 2, (p[a][1] + p[b][1]) / 2,
                             (p[a][2] + p[b][2]) / 2});
        std::vector<int> ids;
        for (const P& q : p) {
            mesh.AddNode(node, gap * i + size * q[0], size * q[1], size * q[2]);
            ids.push_back(node++);
        }
        mesh.AddElement(s.elementId, s.type, std::span<const int>(ids));
    }
    if (samples)
        *samples = kSamples;
    return count;
}
