#include "KwMeshTopology.h"

#include "CKwMeshModel.h"

#include <algorithm>
#include <array>
#include <climits>
#include <numeric>

namespace {

const std::vector<int> kTetFaces[] = {{0, 2, 1}, {0, 1, 3}, {1, 2, 3}, {0, 3, 2}};
const std::vector<int> kPyrFaces[] = {{0, 3, 2, 1}, {0, 1, 4}, {1, 2, 4}, {2, 3, 4}, {3, 0, 4}};
const std::vector<int> kWedgeFaces[] = {{0, 2, 1}, {3, 4, 5}, {0, 1, 4, 3}, {1, 2, 5, 4},
                                        {2, 0, 3, 5}};
const std::vector<int> kHexFaces[] = {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4},
                                      {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}};

} // namespace

std::span<const std::vector<int>> KwSolidFaceCorners(int type)
{
    switch (CKwMeshModel::LinearType(type)) {
    case CKwMeshModel::Tet4: return kTetFaces;
    case CKwMeshModel::Pyr5: return kPyrFaces;
    case CKwMeshModel::Wedge6: return kWedgeFaces;
    case CKwMeshModel::Hex8: return kHexFaces;
    default: return {};
    }
}

std::vector<KwSkinFace> KwSolidSkin(const CKwMeshModel& mesh)
{
    // Every solid face once with its sorted corners as key; a key met twice is shared. Sorting
    // one flat array keeps this linear in memory for meshes of millions of elements.
    std::vector<KwSkinFace> faces;
    for (std::size_t e = 0; e < mesh.ElementCount(); ++e) {
        const auto corners = KwSolidFaceCorners(mesh.ElementType(e));
        if (corners.empty())
            continue;
        const auto conn = mesh.ElementNodes(e);
        for (std::size_t f = 0; f < corners.size(); ++f) {
            KwSkinFace s;
            s.element = static_cast<int>(e);
            s.face = static_cast<int>(f);
            s.corners = static_cast<int>(corners[f].size());
            for (int k = 0; k < s.corners; ++k)
                s.node[k] = conn[static_cast<std::size_t>(corners[f][static_cast<std::size_t>(k)])];
            faces.push_back(s);
        }
    }
    using Key = std::array<int, 4>;
    auto keyOf = [&](const KwSkinFace& s) {
        // A triangle's missing fourth corner sorts last and never meets a real node.
        Key k = {s.node[0], s.node[1], s.node[2], s.corners == 4 ? s.node[3] : INT_MAX};
        std::sort(k.begin(), k.end());
        return k;
    };
    std::vector<Key> keys(faces.size());
    for (std::size_t i = 0; i < faces.size(); ++i)
        keys[i] = keyOf(faces[i]);
    std::vector<int> order(faces.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return keys[std::size_t(a)] < keys[std::size_t(b)]; });
    std::vector<char> shared(faces.size(), 0);
    for (std::size_t i = 0; i + 1 < order.size(); ++i)
        if (keys[std::size_t(order[i])] == keys[std::size_t(order[i + 1])])
            shared[std::size_t(order[i])] = shared[std::size_t(order[i + 1])] = 1;
    std::vector<KwSkinFace> skin;
    for (std::size_t i = 0; i < faces.size(); ++i)
        if (!shared[i])
            skin.push_back(faces[i]);
    return skin;
}
