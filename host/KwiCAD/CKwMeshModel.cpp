#include "CKwMeshModel.h"

#include "CKwUIEntity.h"
#include "KwMeshTopology.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

// Name and starting limit of each quality check; angles in degrees.
struct QualityParamRow
{
    const char* name;
    bool on;
    float limit;
};
constexpr QualityParamRow kQualityParams[CKwMeshModel::QualityCheckCount] = {
    {"Quad Aspect Ratio", true, 5.0f},
    {"Quad Skew", true, 45.0f},
    {"Quad Warpage", true, 10.0f},
    {"Quad Taper", true, 0.5f},
    {"Quad Jacobian", true, 0.6f},
    {"Tria Aspect Ratio", true, 5.0f},
    {"Tria Skew", true, 45.0f},
    {"Tria Jacobian", true, 0.6f},
    {"Tet Aspect Ratio", true, 5.0f},
    {"Tet Skew", true, 40.0f},
    {"Tet Jacobian", true, 0.3f},
};

long long entityKey(int kind, int id) { return (static_cast<long long>(kind) << 32) | unsigned(id); }

} // namespace

int CKwMeshModel::NodesPerElement(int type)
{
    switch (type) {
    case Beam2: return 2;
    case Tri3: return 3;
    case Quad4: return 4;
    case Tet4: return 4;
    case Hex8: return 8;
    case Pyr5: return 5;
    case Wedge6: return 6;
    case Beam3: return 3;
    case Tri6: return 6;
    case Quad8: return 8;
    case Pyr13: return 13;
    case Wedge15: return 15;
    case Hex20: return 20;
    case Tet10: return 10;
    }
    return 0;
}

int CKwMeshModel::LinearType(int type)
{
    switch (type) {
    case Beam2: case Beam3: return Beam2;
    case Tri3: case Tri6: return Tri3;
    case Quad4: case Quad8: return Quad4;
    case Tet4: case Tet10: return Tet4;
    case Pyr5: case Pyr13: return Pyr5;
    case Wedge6: case Wedge15: return Wedge6;
    case Hex8: case Hex20: return Hex8;
    }
    return 0;
}

bool CKwMeshModel::IsSolidType(int type)
{
    const int t = LinearType(type);
    return t == Tet4 || t == Pyr5 || t == Wedge6 || t == Hex8;
}

bool CKwMeshModel::IsShellType(int type)
{
    const int t = LinearType(type);
    return t == Tri3 || t == Quad4;
}

QString CKwMeshModel::QualityParamName(QualityCheck check)
{
    return check >= 0 && check < QualityCheckCount
               ? QString::fromLatin1(kQualityParams[check].name)
               : QString();
}

CKwMeshModel::CKwMeshModel(int id, const QString& name) : CKwFEBase(id, name)
{
    ResetQualityParams();
}

CKwMeshModel::~CKwMeshModel() = default;

CKwMeshModel::CKwMeshModel(const CKwMeshModel& other) : CKwFEBase(other)
{
    *this = other;
}

CKwMeshModel& CKwMeshModel::operator=(const CKwMeshModel& other)
{
    if (this == &other)
        return *this;
    CKwFEBase::operator=(other);
    m_nodes = other.m_nodes;
    m_nodeIndex = other.m_nodeIndex;
    m_elementIds = other.m_elementIds;
    m_elementTypes = other.m_elementTypes;
    m_offsets = other.m_offsets;
    m_connectivity = other.m_connectivity;
    m_elementIndex = other.m_elementIndex;
    std::copy(std::begin(other.m_checkOn), std::end(other.m_checkOn), m_checkOn);
    std::copy(std::begin(other.m_checkLimit), std::end(other.m_checkLimit), m_checkLimit);
    m_groups = other.m_groups;
    m_groupCounter = other.m_groupCounter;
    m_endReleases = other.m_endReleases;
    m_geometry = other.m_geometry;
    m_settings = other.m_settings;
    return *this;
}

bool CKwMeshModel::AddNode(int id, double x, double y, double z)
{
    if (m_nodeIndex.contains(id))
        return false;
    m_nodeIndex.insert(id, static_cast<int>(m_nodes.size()));
    m_nodes.push_back({id, x, y, z});
    return true;
}

const CKwMeshModel::Node* CKwMeshModel::FindNode(int id) const
{
    const auto it = m_nodeIndex.constFind(id);
    return it == m_nodeIndex.constEnd() ? nullptr : &m_nodes[static_cast<std::size_t>(*it)];
}

void CKwMeshModel::SetNodePosition(int id, double x, double y, double z)
{
    const int i = NodeIndex(id);
    if (i >= 0)
        m_nodes[static_cast<std::size_t>(i)] = {id, x, y, z};
}

bool CKwMeshModel::AddElement(int id, int type, std::span<const int> nodeIds)
{
    const int n = NodesPerElement(type);
    if (n == 0 || static_cast<int>(nodeIds.size()) != n || m_elementIndex.contains(id))
        return false;
    // The largest family (Hex20) has 20 nodes.
    int idx[20];
    for (int k = 0; k < n; ++k) {
        idx[k] = NodeIndex(nodeIds[static_cast<std::size_t>(k)]);
        if (idx[k] < 0)
            return false;
    }
    m_elementIndex.insert(id, static_cast<int>(m_elementIds.size()));
    m_elementIds.push_back(id);
    m_elementTypes.push_back(static_cast<unsigned char>(type));
    m_connectivity.insert(m_connectivity.end(), idx, idx + n);
    m_offsets.push_back(static_cast<int>(m_connectivity.size()));
    return true;
}

std::size_t CKwMeshModel::CountOfType(int type) const
{
    return static_cast<std::size_t>(
        std::count(m_elementTypes.begin(), m_elementTypes.end(), static_cast<unsigned char>(type)));
}

void CKwMeshModel::Reserve(std::size_t nodes, std::size_t elements, std::size_t connectivity)
{
    m_nodes.reserve(nodes);
    m_nodeIndex.reserve(static_cast<qsizetype>(nodes));
    m_elementIds.reserve(elements);
    m_elementTypes.reserve(elements);
    m_offsets.reserve(elements + 1);
    m_connectivity.reserve(connectivity);
    m_elementIndex.reserve(static_cast<qsizetype>(elements));
}

void CKwMeshModel::Clear()
{
    m_nodes.clear();
    m_nodeIndex.clear();
    m_elementIds.clear();
    m_elementTypes.clear();
    m_offsets.assign(1, 0);
    m_connectivity.clear();
    m_elementIndex.clear();
    m_groups.clear();
    m_endReleases.clear();
    m_geometry.clear();
}

bool CKwMeshModel::SetEndRelease(int elementId, EndRelease release)
{
    const int index = ElementIndex(elementId);
    if (index < 0 || ElementType(static_cast<std::size_t>(index)) != Beam2)
        return false;
    release.endA &= AllDofs;
    release.endB &= AllDofs;
    if (release == EndRelease{})
        m_endReleases.erase(elementId);
    else
        m_endReleases[elementId] = release;
    return true;
}

CKwMeshModel::EndRelease CKwMeshModel::GetEndRelease(int elementId) const
{
    const auto it = m_endReleases.find(elementId);
    return it == m_endReleases.end() ? EndRelease{} : it->second;
}

void CKwMeshModel::BuildBlock(int nx, int ny, int nz, double lx, double ly, double lz)
{
    Clear();
    auto nodeId = [&](int i, int j, int k) { return 1 + i + j * (nx + 1) + k * (nx + 1) * (ny + 1); };
    for (int k = 0; k <= nz; ++k)
        for (int j = 0; j <= ny; ++j)
            for (int i = 0; i <= nx; ++i)
                AddNode(nodeId(i, j, k), lx * i / nx, ly * j / ny, lz * k / nz);
    int e = 1;
    for (int k = 0; k < nz; ++k)
        for (int j = 0; j < ny; ++j)
            for (int i = 0; i < nx; ++i)
                AddElement(e++, Hex8,
                           {nodeId(i, j, k), nodeId(i + 1, j, k), nodeId(i + 1, j + 1, k),
                            nodeId(i, j + 1, k), nodeId(i, j, k + 1), nodeId(i + 1, j, k + 1),
                            nodeId(i + 1, j + 1, k + 1), nodeId(i, j + 1, k + 1)});
    ClassifyAsBox();
}

// --- quality parameters ---

void CKwMeshModel::ResetQualityParams()
{
    for (int c = 0; c < QualityCheckCount; ++c) {
        m_checkOn[c] = kQualityParams[c].on;
        m_checkLimit[c] = kQualityParams[c].limit;
    }
}

bool CKwMeshModel::GetQualityParam(const QString& name, float* value) const
{
    for (int c = 0; c < QualityCheckCount; ++c) {
        const QString base = QString::fromLatin1(kQualityParams[c].name);
        if (name == base) {
            *value = m_checkLimit[c];
            return true;
        }
        if (name == base + QStringLiteral(" Check")) {
            *value = m_checkOn[c] ? 1.0f : 0.0f;
            return true;
        }
    }
    return false;
}

bool CKwMeshModel::SetQualityParam(const QString& name, float value)
{
    for (int c = 0; c < QualityCheckCount; ++c) {
        const QString base = QString::fromLatin1(kQualityParams[c].name);
        if (name == base) {
            m_checkLimit[c] = value;
            return true;
        }
        if (name == base + QStringLiteral(" Check")) {
            m_checkOn[c] = value != 0.0f;
            return true;
        }
    }
    return false;
}

// --- groups ---

const CKwMeshModel::ElementGroup* CKwMeshModel::FindGroup(const QString& name) const
{
    for (const ElementGroup& g : m_groups)
        if (g.name == name)
            return &g;
    return nullptr;
}

int CKwMeshModel::AddElementGroup(const QString& name, std::span<const int> elementIds)
{
    if (name.trimmed().isEmpty() || FindGroup(name))
        return 0;
    ElementGroup g;
    g.name = name;
    g.elementIds.reserve(elementIds.size());
    for (int id : elementIds)
        if (HasElement(id))
            g.elementIds.push_back(id);
    if (g.elementIds.empty())
        return 0;
    int next = 0;
    for (const ElementGroup& other : m_groups)
        next = std::max(next, other.id);
    g.id = next + 1;
    m_groups.push_back(std::move(g));
    ++m_groupCounter;
    return m_groups.back().id;
}

bool CKwMeshModel::RemoveElementGroup(int groupId)
{
    const auto it = std::find_if(m_groups.begin(), m_groups.end(),
                                 [groupId](const ElementGroup& g) { return g.id == groupId; });
    if (it == m_groups.end())
        return false;
    m_groups.erase(it);
    return true;
}

// --- picking ---

CKwUIEntity* CKwMeshModel::NodeEntity(int id)
{
    if (!HasNode(id))
        return nullptr;
    auto& slot = m_entities[entityKey(CKwUIEntity::Node, id)];
    if (!slot)
        slot = std::make_unique<CKwUIEntity>(CKwUIEntity::Node, id,
                                             QStringLiteral("Node %1").arg(id));
    return slot.get();
}

CKwUIEntity* CKwMeshModel::ElementEntity(int id)
{
    if (!HasElement(id))
        return nullptr;
    auto& slot = m_entities[entityKey(CKwUIEntity::Element, id)];
    if (!slot)
        slot = std::make_unique<CKwUIEntity>(CKwUIEntity::Element, id,
                                             QStringLiteral("Element %1").arg(id));
    return slot.get();
}

void CKwMeshModel::BuildSampleBracket()
{
    Clear();
    constexpr int nx = 8, ny = 2, nz = 2;
    constexpr double lx = 0.2, ly = 0.05, lz = 0.04;
    auto nodeId = [](int i, int j, int k) { return 1 + i + j * (nx + 1) + k * (nx + 1) * (ny + 1); };
    for (int k = 0; k <= nz; ++k)
        for (int j = 0; j <= ny; ++j)
            for (int i = 0; i <= nx; ++i)
                AddNode(nodeId(i, j, k), lx * i / nx, ly * j / ny, lz * k / nz);
    // A badly placed inner node: the tetrahedra around it flatten.
    SetNodePosition(nodeId(4, 1, 1), 0.1, 0.025, 0.037);

    // Six tetrahedra per cell along its main diagonal, each turned to a positive volume.
    int e = 1;
    const int perms[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
    for (int k = 0; k < nz; ++k)
        for (int j = 0; j < ny; ++j)
            for (int i = 0; i < nx; ++i)
                for (const auto& perm : perms) {
                    int c[3] = {i, j, k};
                    int ids[4];
                    ids[0] = nodeId(c[0], c[1], c[2]);
                    for (int s = 0; s < 3; ++s) {
                        ++c[perm[s]];
                        ids[s + 1] = nodeId(c[0], c[1], c[2]);
                    }
                    const bool odd = perm[0] == 0 ? perm[1] == 2 : perm[0] == 1 ? perm[1] == 0
                                                                                : perm[1] == 1;
                    if (odd)
                        std::swap(ids[1], ids[2]);
                    AddElement(e++, Tet4, {ids[0], ids[1], ids[2], ids[3]});
                }

    // Cover on the top: quadrilaterals on the first half, triangles on the second.
    e = 1001;
    for (int j = 0; j < ny; ++j)
        for (int i = 0; i < nx; ++i) {
            const int a = nodeId(i, j, nz), b = nodeId(i + 1, j, nz);
            const int c = nodeId(i + 1, j + 1, nz), d = nodeId(i, j + 1, nz);
            if (i < nx / 2) {
                AddElement(e++, Quad4, {a, b, c, d});
            } else {
                AddElement(e++, Tri3, {a, b, c});
                AddElement(e++, Tri3, {a, c, d});
            }
        }
    // Stiffener along the top back edge.
    e = 2001;
    for (int i = 0; i < nx; ++i)
        AddElement(e++, Beam2, {nodeId(i, ny, nz), nodeId(i + 1, ny, nz)});

    // Test tabs in a row a little above the top, within the block's length (so that the view
    // frames the part as before): each one fails one check (the dart and the sliver several).
    struct Tab
    {
        int type;
        double p[4][3];
    };
    const Tab tabs[] = {
        {Quad4, {{0, 0, 0}, {0.008, 0, 0}, {0.008, 0.05, 0}, {0, 0.05, 0}}},         // long
        {Quad4, {{0, 0, 0}, {0.02, 0, 0}, {0.045, 0.02, 0}, {0.025, 0.02, 0}}},      // skewed
        {Quad4, {{0, 0, 0}, {0.025, 0, 0}, {0.025, 0.025, -0.006}, {0, 0.025, 0}}},  // warped
        {Quad4, {{0, 0, 0}, {0.025, 0, 0}, {0.0155, 0.025, 0}, {0.0095, 0.025, 0}}}, // tapered
        {Quad4, {{0, 0, 0}, {0.025, 0, 0}, {0.00875, 0.00875, 0}, {0, 0.025, 0}}},   // dart
        {Tri3, {{0, 0, 0}, {0.025, 0, 0}, {0.0125, 0.0015, 0}, {}}},                 // sliver
    };
    int node = 5001;
    e = 3001;
    double x0 = 0.004;
    for (const Tab& t : tabs) {
        const int n = NodesPerElement(t.type);
        int ids[4];
        double width = 0;
        for (int k = 0; k < n; ++k) {
            ids[k] = node++;
            AddNode(ids[k], x0 + t.p[k][0], t.p[k][1], lz + 0.02 + t.p[k][2]);
            width = std::max(width, t.p[k][0]);
        }
        AddElement(e++, t.type, std::span<const int>(ids, static_cast<std::size_t>(n)));
        x0 += width + 0.008;
    }
    ClassifyAsBox();
}

// --- the geometry the mesh lies on ---

void CKwMeshModel::SetGeometryMeshes(std::vector<GeometryMesh> entities)
{
    m_geometry = std::move(entities);
}

const CKwMeshModel::GeometryMesh* CKwMeshModel::FindGeometryMesh(int kind, int id) const
{
    for (const GeometryMesh& g : m_geometry)
        if (g.kind == kind && g.id == id)
            return &g;
    return nullptr;
}

void CKwMeshModel::ClassifyAsBox()
{
    m_geometry.clear();
    // The box is the extent of the solids' nodes.
    double lo[3] = {1e300, 1e300, 1e300}, hi[3] = {-1e300, -1e300, -1e300};
    std::vector<char> solidNode(m_nodes.size(), 0);
    for (std::size_t e = 0; e < ElementCount(); ++e)
        if (IsSolidType(ElementType(e)))
            for (int i : ElementNodes(e))
                solidNode[std::size_t(i)] = 1;
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        if (!solidNode[i])
            continue;
        const double p[3] = {m_nodes[i].x, m_nodes[i].y, m_nodes[i].z};
        for (int a = 0; a < 3; ++a) {
            lo[a] = std::min(lo[a], p[a]);
            hi[a] = std::max(hi[a], p[a]);
        }
    }
    if (lo[0] > hi[0])
        return;
    double size = 0;
    for (int a = 0; a < 3; ++a)
        size = std::max(size, hi[a] - lo[a]);
    const double tol = 1e-6 * std::max(size, 1e-12);
    // Sides: axis and whether on the high end, for faces 1-6.
    const int faceAxis[6] = {2, 2, 1, 1, 0, 0};
    const bool faceHigh[6] = {false, true, false, true, false, true};
    auto inBox = [&](const Node& n) {
        const double p[3] = {n.x, n.y, n.z};
        for (int a = 0; a < 3; ++a)
            if (p[a] < lo[a] - tol || p[a] > hi[a] + tol)
                return false;
        return true;
    };
    auto onSide = [&](const Node& n, int f) {
        const double p[3] = {n.x, n.y, n.z};
        const int a = faceAxis[f];
        return inBox(n) && std::abs(p[a] - (faceHigh[f] ? hi[a] : lo[a])) <= tol;
    };
    // Corner c: bottom ring 0-3 counter-clockwise from (lo, lo), top ring 4-7.
    auto cornerHigh = [](int c, int a) {
        if (a == 0)
            return c % 4 == 1 || c % 4 == 2;
        if (a == 1)
            return c % 4 == 2 || c % 4 == 3;
        return c >= 4;
    };
    // A box edge lies on the two sides that hold both of its corners.
    const int edgeCorners[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                    {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
    auto sideHolds = [&](int f, int c) { return cornerHigh(c, faceAxis[f]) == faceHigh[f]; };
    std::vector<std::array<int, 2>> edgeSides(12);
    for (int ed = 0; ed < 12; ++ed) {
        int k = 0;
        for (int f = 0; f < 6 && k < 2; ++f)
            if (sideHolds(f, edgeCorners[ed][0]) && sideHolds(f, edgeCorners[ed][1]))
                edgeSides[std::size_t(ed)][std::size_t(k++)] = f;
    }

    std::vector<GeometryMesh> faces(6), edges(12), vertices(8);
    GeometryMesh body;
    body.kind = CKwUIEntity::Body;
    body.id = 1;
    for (int f = 0; f < 6; ++f) {
        faces[std::size_t(f)].kind = CKwUIEntity::Face;
        faces[std::size_t(f)].id = f + 1;
    }
    for (int ed = 0; ed < 12; ++ed) {
        edges[std::size_t(ed)].kind = CKwUIEntity::Edge;
        edges[std::size_t(ed)].id = ed + 1;
    }
    for (int c = 0; c < 8; ++c) {
        vertices[std::size_t(c)].kind = CKwUIEntity::Vertex;
        vertices[std::size_t(c)].id = c + 1;
    }
    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        if (!solidNode[i])
            continue;
        const Node& n = m_nodes[i];
        body.nodeIds.push_back(n.id);
        bool side[6];
        for (int f = 0; f < 6; ++f) {
            side[f] = onSide(n, f);
            if (side[f])
                faces[std::size_t(f)].nodeIds.push_back(n.id);
        }
        for (int ed = 0; ed < 12; ++ed)
            if (side[edgeSides[std::size_t(ed)][0]] && side[edgeSides[std::size_t(ed)][1]])
                edges[std::size_t(ed)].nodeIds.push_back(n.id);
        for (int c = 0; c < 8; ++c) {
            bool at = true;
            for (int a = 0; a < 3; ++a) {
                const double p[3] = {n.x, n.y, n.z};
                at = at && std::abs(p[a] - (cornerHigh(c, a) ? hi[a] : lo[a])) <= tol;
            }
            if (at)
                vertices[std::size_t(c)].nodeIds.push_back(n.id);
        }
    }
    // Skin triangles onto the side all their corners lie on.
    for (const KwSkinFace& s : KwSolidSkin(*this)) {
        for (int f = 0; f < 6; ++f) {
            bool all = true;
            for (int k = 0; k < s.corners && all; ++k)
                all = onSide(m_nodes[std::size_t(s.node[k])], f);
            if (!all)
                continue;
            auto& facets = faces[std::size_t(f)].facets;
            for (int t = 0; t + 2 < s.corners; ++t)
                for (int k : {0, t + 1, t + 2})
                    facets.push_back(m_nodes[std::size_t(s.node[k])].id);
            break;
        }
    }
    // Edge segments: the edge's nodes in order along it.
    for (int ed = 0; ed < 12; ++ed) {
        auto& g = edges[std::size_t(ed)];
        const int c0 = edgeCorners[ed][0], c1 = edgeCorners[ed][1];
        int axis = 0;
        for (int a = 0; a < 3; ++a)
            if (cornerHigh(c0, a) != cornerHigh(c1, a))
                axis = a;
        std::vector<std::pair<double, int>> along;
        for (int id : g.nodeIds) {
            const Node& n = *FindNode(id);
            const double p[3] = {n.x, n.y, n.z};
            along.emplace_back(p[axis], id);
        }
        std::sort(along.begin(), along.end());
        for (std::size_t k = 0; k + 1 < along.size(); ++k) {
            g.facets.push_back(along[k].second);
            g.facets.push_back(along[k + 1].second);
        }
    }
    // Structural elements: solids to the body, shells to the side they lie on, beams to the
    // edge they lie on.
    for (std::size_t e = 0; e < ElementCount(); ++e) {
        const int type = ElementType(e);
        const auto conn = ElementNodes(e);
        if (IsSolidType(type)) {
            body.elementIds.push_back(ElementID(e));
            continue;
        }
        auto allOn = [&](auto&& pred) {
            for (int i : conn)
                if (!pred(m_nodes[std::size_t(i)]))
                    return false;
            return true;
        };
        if (IsShellType(type)) {
            for (int f = 0; f < 6; ++f)
                if (allOn([&](const Node& n) { return onSide(n, f); })) {
                    faces[std::size_t(f)].elementIds.push_back(ElementID(e));
                    break;
                }
        } else if (IsBeamType(type)) {
            for (int ed = 0; ed < 12; ++ed)
                if (allOn([&](const Node& n) {
                        return onSide(n, edgeSides[std::size_t(ed)][0])
                               && onSide(n, edgeSides[std::size_t(ed)][1]);
                    })) {
                    edges[std::size_t(ed)].elementIds.push_back(ElementID(e));
                    break;
                }
        }
    }
    auto finish = [](GeometryMesh& g) {
        std::sort(g.nodeIds.begin(), g.nodeIds.end());
        std::sort(g.elementIds.begin(), g.elementIds.end());
    };
    finish(body);
    m_geometry.push_back(std::move(body));
    for (auto* list : {&faces, &edges, &vertices})
        for (GeometryMesh& g : *list) {
            finish(g);
            m_geometry.push_back(std::move(g));
        }
}
