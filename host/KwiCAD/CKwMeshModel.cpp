#include "CKwMeshModel.h"

#include "CKwUIEntity.h"

#include <algorithm>

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
    }
    return 0;
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
    int idx[8];
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
}
