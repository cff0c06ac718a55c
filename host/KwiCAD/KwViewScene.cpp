#include "KwViewScene.h"

#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "KwMeshTopology.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <unordered_map>

namespace {

// Polygon faces (solid skin faces and shells) with their normals, for the edges between them.
struct Polygon
{
    int n[4];
    int corners;
    float normal[3];
};

void normalOf(const std::vector<CKwMeshModel::Node>& nodes, Polygon& p)
{
    auto at = [&](int k) { return &nodes[std::size_t(p.n[k])]; };
    // A quadrilateral's normal runs across its diagonals, a triangle's across two sides.
    const auto* a = at(0);
    const auto* b = at(1);
    const auto* c = at(2);
    const bool quad = p.corners == 4;
    const auto* d = quad ? at(3) : a;
    const double u[3] = {quad ? c->x - a->x : b->x - a->x, quad ? c->y - a->y : b->y - a->y,
                         quad ? c->z - a->z : b->z - a->z};
    const double v[3] = {quad ? d->x - b->x : c->x - a->x, quad ? d->y - b->y : c->y - a->y,
                         quad ? d->z - b->z : c->z - a->z};
    const double n[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                         u[0] * v[1] - u[1] * v[0]};
    const double l = std::sqrt(n[0] * n[0] + n[1] * n[1] + n[2] * n[2]);
    for (int k = 0; k < 3; ++k)
        p.normal[k] = l > 0 ? float(n[k] / l) : 0.f;
}

uint64_t edgeKey(int a, int b)
{
    if (a > b)
        std::swap(a, b);
    return (uint64_t(uint32_t(a)) << 32) | uint32_t(b);
}

struct TriKey
{
    int n[3];
    bool operator==(const TriKey& o) const
    {
        return n[0] == o.n[0] && n[1] == o.n[1] && n[2] == o.n[2];
    }
};
struct TriHash
{
    std::size_t operator()(const TriKey& k) const
    {
        return std::hash<uint64_t>()((uint64_t(uint32_t(k.n[0])) * 0x9E3779B97F4A7C15ull) ^
                                     (uint64_t(uint32_t(k.n[1])) << 21) ^ uint64_t(uint32_t(k.n[2])));
    }
};
TriKey triKey(int a, int b, int c)
{
    TriKey k{{a, b, c}};
    std::sort(k.n, k.n + 3);
    return k;
}

// Edges of a group of polygons: every edge once, and those where the faces meet at more than
// the feature angle, or that bound the group.
void edgesOf(const std::vector<Polygon>& polys, std::vector<KwViewScene::Edge>* all,
             std::vector<KwViewScene::Edge>* feature)
{
    struct Use
    {
        uint64_t key;
        int poly;
    };
    std::vector<Use> uses;
    for (std::size_t i = 0; i < polys.size(); ++i)
        for (int k = 0; k < polys[i].corners; ++k)
            uses.push_back({edgeKey(polys[i].n[k], polys[i].n[(k + 1) % polys[i].corners]), int(i)});
    std::sort(uses.begin(), uses.end(), [](const Use& a, const Use& b) { return a.key < b.key; });
    const float cosFeature = std::cos(30.0f * 3.14159265f / 180.0f);
    for (std::size_t i = 0; i < uses.size();) {
        std::size_t j = i + 1;
        while (j < uses.size() && uses[j].key == uses[i].key)
            ++j;
        const KwViewScene::Edge e{int(uses[i].key >> 32), int(uses[i].key & 0xffffffffu)};
        all->push_back(e);
        bool sharp = j - i != 2;
        if (!sharp) {
            const float* a = polys[std::size_t(uses[i].poly)].normal;
            const float* b = polys[std::size_t(uses[i + 1].poly)].normal;
            sharp = a[0] * b[0] + a[1] * b[1] + a[2] * b[2] < cosFeature;
        }
        if (sharp)
            feature->push_back(e);
        i = j;
    }
}

} // namespace

bool KwViewScene::Matches(const CKwMeshModel* m) const
{
    return m && m == mesh && m->Nodes().size() == nodeCount && m->ElementCount() == elementCount &&
           m->GeometryMeshes().size() == geometryCount;
}

void KwViewScene::Build(const CKwMeshModel& m)
{
    *this = KwViewScene();
    mesh = &m;
    nodeCount = m.Nodes().size();
    elementCount = m.ElementCount();
    geometryCount = m.GeometryMeshes().size();
    const auto& nodes = m.Nodes();

    lo = {1e300, 1e300, 1e300};
    hi = {-1e300, -1e300, -1e300};
    for (const auto& n : nodes) {
        lo = {std::min(lo.x, n.x), std::min(lo.y, n.y), std::min(lo.z, n.z)};
        hi = {std::max(hi.x, n.x), std::max(hi.y, n.y), std::max(hi.z, n.z)};
    }
    if (nodes.empty())
        lo = hi = {0, 0, 0};

    // Geometry faces by their skin triangles, and the shells each face carries.
    const auto& geometry = m.GeometryMeshes();
    std::unordered_map<TriKey, int, TriHash> faceOfTri;
    std::unordered_map<int, int> faceOfShell; // element id -> face
    for (std::size_t g = 0; g < geometry.size(); ++g) {
        const auto& gm = geometry[g];
        if (gm.kind == CKwUIEntity::Face) {
            const int f = int(faceGeometry.size());
            faceGeometry.push_back(int(g));
            for (std::size_t k = 0; k + 2 < gm.facets.size(); k += 3) {
                const int a = m.NodeIndex(gm.facets[k]), b = m.NodeIndex(gm.facets[k + 1]),
                          c = m.NodeIndex(gm.facets[k + 2]);
                if (a >= 0 && b >= 0 && c >= 0)
                    faceOfTri.emplace(triKey(a, b, c), f);
            }
            for (int id : gm.elementIds)
                faceOfShell.emplace(id, f);
        } else if (gm.kind == CKwUIEntity::Edge) {
            const int ed = int(edgeGeometry.size());
            edgeGeometry.push_back(int(g));
            for (std::size_t k = 0; k + 1 < gm.facets.size(); k += 2) {
                const int a = m.NodeIndex(gm.facets[k]), b = m.NodeIndex(gm.facets[k + 1]);
                if (a >= 0 && b >= 0)
                    segments.push_back({{a, b}, ed});
            }
        } else if (gm.kind == CKwUIEntity::Vertex && !gm.nodeIds.empty()) {
            const int n = m.NodeIndex(gm.nodeIds.front());
            if (n >= 0)
                vertices.push_back({n, int(g)});
        }
    }
    auto faceOf = [&](int a, int b, int c) {
        if (faceOfTri.empty())
            return -1;
        const auto it = faceOfTri.find(triKey(a, b, c));
        return it == faceOfTri.end() ? -1 : it->second;
    };

    std::vector<Polygon> solidPolys, shellPolys;
    for (const KwSkinFace& s : KwSolidSkin(m)) {
        Polygon p{{s.node[0], s.node[1], s.node[2], s.node[3]}, s.corners, {}};
        normalOf(nodes, p);
        solidPolys.push_back(p);
        if (s.corners == 4) {
            // The classification may split a quadrilateral along either diagonal.
            int f = faceOf(s.node[0], s.node[1], s.node[2]);
            if (f < 0)
                f = faceOf(s.node[0], s.node[1], s.node[3]);
            if (f < 0)
                f = faceOf(s.node[1], s.node[2], s.node[3]);
            tris.push_back({{s.node[0], s.node[1], s.node[2]}, s.element, f, true});
            tris.push_back({{s.node[0], s.node[2], s.node[3]}, s.element, f, true});
        } else {
            tris.push_back({{s.node[0], s.node[1], s.node[2]}, s.element,
                            faceOf(s.node[0], s.node[1], s.node[2]), true});
        }
    }
    for (std::size_t e = 0; e < m.ElementCount(); ++e) {
        const int type = m.ElementType(e);
        const auto conn = m.ElementNodes(e);
        if (CKwMeshModel::IsShellType(type)) {
            const int corners = CKwMeshModel::CornerCount(type);
            const auto it = faceOfShell.find(m.ElementID(e));
            const int f = it == faceOfShell.end() ? -1 : it->second;
            Polygon p{{conn[0], conn[1], conn[2], corners == 4 ? conn[3] : -1}, corners, {}};
            normalOf(nodes, p);
            shellPolys.push_back(p);
            tris.push_back({{conn[0], conn[1], conn[2]}, int(e), f, false});
            if (corners == 4)
                tris.push_back({{conn[0], conn[2], conn[3]}, int(e), f, false});
        } else if (CKwMeshModel::IsBeamType(type) && conn.size() >= 2) {
            beams.push_back({{conn[0], conn[1]}, int(e)});
        }
    }

    std::vector<Edge> solidEdges, shellEdges, shellFeature;
    edgesOf(solidPolys, &solidEdges, &solidFeatureEdges);
    edgesOf(shellPolys, &shellEdges, &shellFeature);
    meshEdges = solidEdges;
    meshEdges.insert(meshEdges.end(), shellEdges.begin(), shellEdges.end());
    featureEdges = solidFeatureEdges;
    featureEdges.insert(featureEdges.end(), shellFeature.begin(), shellFeature.end());

    double total = 0;
    for (const Edge& ed : meshEdges) {
        const auto& a = nodes[std::size_t(ed[0])];
        const auto& b = nodes[std::size_t(ed[1])];
        total += std::sqrt((a.x - b.x) * (a.x - b.x) + (a.y - b.y) * (a.y - b.y) + (a.z - b.z) * (a.z - b.z));
    }
    elementSize = meshEdges.empty() ? 0 : total / double(meshEdges.size());

    // Node normals: the area-free mean of the face normals around a node.
    nodeNormal.assign(3 * nodes.size(), 0.f);
    std::vector<char> drawn(nodes.size(), 0);
    for (const auto* group : {&solidPolys, &shellPolys})
        for (const Polygon& p : *group)
            for (int k = 0; k < p.corners; ++k) {
                const std::size_t n = std::size_t(p.n[k]);
                drawn[n] = 1;
                for (int a = 0; a < 3; ++a)
                    nodeNormal[3 * n + std::size_t(a)] += p.normal[a];
            }
    for (std::size_t n = 0; n < nodes.size(); ++n) {
        float* v = &nodeNormal[3 * n];
        const float l = std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
        if (l > 0)
            for (int a = 0; a < 3; ++a)
                v[a] /= l;
    }
    for (const Beam& b : beams)
        drawn[std::size_t(b.n[0])] = drawn[std::size_t(b.n[1])] = 1;
    for (std::size_t n = 0; n < nodes.size(); ++n)
        if (drawn[n])
            surfaceNodes.push_back(int(n));
}
