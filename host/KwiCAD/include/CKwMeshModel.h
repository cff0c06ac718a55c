#pragma once
// The mesh of the model: nodes with coordinates, elements by their nodes in one flat
// connectivity array (no allocation per element), the mesh quality parameters, and the element
// groups the user gathered. Picked nodes and elements are handed out as CKwUIEntity objects
// the mesh owns, made the first time one is asked for.
#include "CKwFEBase.h"
#include "KwMeshSettings.h"

#include <QHash>
#include <QString>
#include <memory>
#include <map>
#include <span>
#include <unordered_map>
#include <vector>

class CKwUIEntity;

class KWICAD_EXPORT CKwMeshModel : public CKwFEBase
{
public:
    struct Node { int id; double x, y, z; };
    // Element families in linear and parabolic order. Node order: corners first (as the
    // linear element has them), then the mid-side nodes edge by edge.
    enum ElementType : int {
        Beam2 = 2, Tri3 = 3, Quad4 = 4, Pyr5 = 5, Wedge6 = 6, Hex8 = 8, Tet4 = 10,
        Beam3 = 12, Tri6 = 13, Quad8 = 14, Pyr13 = 15, Wedge15 = 16, Hex20 = 18, Tet10 = 20
    };
    static int NodesPerElement(int type);
    // The linear element of a family (Tet10 -> Tet4; a linear type gives itself), 0 if unknown.
    static int LinearType(int type);
    // Corner nodes: the node count of the linear type.
    static int CornerCount(int type) { return NodesPerElement(LinearType(type)); }
    static bool IsParabolic(int type) { return type != LinearType(type) && LinearType(type) != 0; }
    static bool IsSolidType(int type);
    static bool IsShellType(int type);
    static bool IsBeamType(int type) { return LinearType(type) == Beam2; }

    // The checks of the mesh quality parameters, each with an on/off flag and a limit.
    enum QualityCheck : int {
        QuadAspectRatio, QuadSkew, QuadWarpage, QuadTaper, QuadJacobian,
        TriaAspectRatio, TriaSkew, TriaJacobian,
        TetAspectRatio, TetSkew, TetJacobian,
        HexAspectRatio, HexSkew, HexWarpage, HexTaper, HexJacobian,
        WedgeAspectRatio, WedgeSkew, WedgeWarpage, WedgeTaper, WedgeJacobian,
        PyramidAspectRatio, PyramidSkew, PyramidWarpage, PyramidTaper, PyramidJacobian,
        QualityCheckCount
    };
    // "Quad Aspect Ratio", "Tria Skew", ...; the flag's name adds " Check".
    static QString QualityParamName(QualityCheck check);

    struct ElementGroup
    {
        int id = 0;
        QString name;
        std::vector<int> elementIds;
    };

    CKwMeshModel(int id = 0, const QString& name = QString());
    ~CKwMeshModel() override;
    // Copies nodes, elements, parameters and groups; picked-entity objects stay with their
    // mesh, so pointers a dialog holds never dangle.
    CKwMeshModel(const CKwMeshModel& other);
    CKwMeshModel& operator=(const CKwMeshModel& other);
    QString GetTypeName() const override { return QStringLiteral("Mesh"); }

    // --- nodes ---
    // False when the id is already used.
    bool AddNode(int id, double x, double y, double z);
    bool HasNode(int id) const { return m_nodeIndex.contains(id); }
    const Node* FindNode(int id) const;
    // Index into Nodes(), or -1.
    int NodeIndex(int id) const { return m_nodeIndex.value(id, -1); }
    const std::vector<Node>& Nodes() const { return m_nodes; }
    void SetNodePosition(int id, double x, double y, double z);

    // --- elements ---
    // Takes the element when its id is free, its node count suits its type and every node
    // exists; returns false and changes nothing otherwise.
    bool AddElement(int id, int type, std::span<const int> nodeIds);
    bool AddElement(int id, int type, std::initializer_list<int> nodeIds)
    {
        return AddElement(id, type, std::span<const int>(nodeIds.begin(), nodeIds.size()));
    }
    bool HasElement(int id) const { return m_elementIndex.contains(id); }
    // Index of an element, or -1.
    int ElementIndex(int id) const { return m_elementIndex.value(id, -1); }
    std::size_t ElementCount() const { return m_elementIds.size(); }
    int ElementID(std::size_t index) const { return m_elementIds[index]; }
    int ElementType(std::size_t index) const { return m_elementTypes[index]; }
    // The element's nodes as indices into Nodes().
    std::span<const int> ElementNodes(std::size_t index) const
    {
        return {m_connectivity.data() + m_offsets[index],
                static_cast<std::size_t>(m_offsets[index + 1] - m_offsets[index])};
    }
    std::size_t CountOfType(int type) const;
    void Reserve(std::size_t nodes, std::size_t elements, std::size_t connectivity);
    void Clear();

    // A structured block of hexahedra: nx*ny*nz elements over the given box.
    void BuildBlock(int nx, int ny, int nz, double lx, double ly, double lz);
    // The sample bracket: a 0.2 x 0.05 x 0.04 block of tetrahedra (node ids as BuildBlock's
    // 8 x 2 x 2 grid) with one inner node pulled up, a cover of quadrilaterals and triangles
    // on its top, beams along its top back edge, and a row of test tabs just above the top,
    // each tab failing one quality check.
    void BuildSampleBracket();

    // --- quality parameters ("Quality Params") ---
    bool GetQualityCheck(QualityCheck check) const { return m_checkOn[check]; }
    float GetQualityLimit(QualityCheck check) const { return m_checkLimit[check]; }
    void SetQualityCheck(QualityCheck check, bool on) { m_checkOn[check] = on; }
    void SetQualityLimit(QualityCheck check, float limit) { m_checkLimit[check] = limit; }
    // By name: "Quad Skew" is the limit, "Quad Skew Check" the flag (0 or 1). False for an
    // unknown name.
    bool GetQualityParam(const QString& name, float* value) const;
    bool SetQualityParam(const QString& name, float value);
    // Limits a new mesh starts with; angles in degrees.
    void ResetQualityParams();

    // --- element groups ---
    const std::vector<ElementGroup>& Groups() const { return m_groups; }
    const ElementGroup* FindGroup(const QString& name) const;
    // Adds a group of the given elements (unknown ids are left out); returns its id, or 0 when
    // the name is empty or already used or no element is left.
    int AddElementGroup(const QString& name, std::span<const int> elementIds);
    bool RemoveElementGroup(int groupId);
    // Numbers default group names; goes up by one with every group added.
    int GetGroupCounter() const { return m_groupCounter; }

    // --- beam end releases ---
    // The degrees of freedom a beam element leaves free at its end A (first node) and end B,
    // each a mask over TX TY TZ RX RY RZ (bit 0 = TX).
    struct EndRelease
    {
        unsigned char endA = 0;
        unsigned char endB = 0;
        bool operator==(const EndRelease&) const = default;
    };
    static constexpr unsigned char AllDofs = 0x3F;
    // Sets the release of a beam element; a release of nothing removes it. False (and nothing
    // changed) for an element that does not exist or is no beam.
    bool SetEndRelease(int elementId, EndRelease release);
    EndRelease GetEndRelease(int elementId) const;
    const std::map<int, EndRelease>& EndReleases() const { return m_endReleases; }
    void ClearEndReleases() { m_endReleases.clear(); }

    // --- settings the mesh is (re)made with ---
    const KwMeshSettings& GetSettings() const { return m_settings; }
    void SetSettings(const KwMeshSettings& settings) { m_settings = settings; }

    // --- the geometry the mesh lies on ---
    // What of the mesh belongs to one geometry entity (kind as CKwUIEntity::Kind: vertex,
    // edge, face, body). A face's nodes include those on its edges and vertices; its facets
    // are the skin triangles on it (three node ids each, outward for solids; quadrilateral
    // element faces come as two triangles); an edge's facets are its segments (two node ids
    // each); a vertex has its one node. Elements are the structural elements on the entity:
    // shells on a face, beams on an edge, the solids of a body.
    struct GeometryMesh
    {
        int kind = 0;
        int id = 0;
        int body = 1;
        std::vector<int> nodeIds;   // sorted
        std::vector<int> facets;
        std::vector<int> elementIds; // sorted
    };
    // Replaces the whole classification (the mesher hands it over with a new mesh).
    void SetGeometryMeshes(std::vector<GeometryMesh> entities);
    const std::vector<GeometryMesh>& GeometryMeshes() const { return m_geometry; }
    // Null when the entity has no mesh on it (or the mesh carries no classification).
    const GeometryMesh* FindGeometryMesh(int kind, int id) const;
    // Classifies the solids as one box-shaped body: faces 1-6 (bottom, top, front, back,
    // left, right: z low, z high, y low, y high, x low, x high), edges 1-12 and vertices 1-8
    // as the corners run: bottom ring 1-4 counter-clockwise from (xlo, ylo), top ring 5-8
    // above them; edges 1-4 the bottom ring, 5-8 the top ring, 9-12 the uprights from
    // vertices 1-4. Shells and beams lying on a face or edge are classified onto it.
    void ClassifyAsBox();

    // --- picking ---
    // The pickable object of a node or element; null for an unknown id.
    CKwUIEntity* NodeEntity(int id);
    CKwUIEntity* ElementEntity(int id);

private:
    std::vector<Node> m_nodes;
    QHash<int, int> m_nodeIndex;
    std::vector<int> m_elementIds;
    std::vector<unsigned char> m_elementTypes;
    std::vector<int> m_offsets{0};
    std::vector<int> m_connectivity;
    QHash<int, int> m_elementIndex;
    bool m_checkOn[QualityCheckCount] = {};
    float m_checkLimit[QualityCheckCount] = {};
    std::vector<ElementGroup> m_groups;
    int m_groupCounter = 1;
    std::unordered_map<long long, std::unique_ptr<CKwUIEntity>> m_entities;
    std::map<int, EndRelease> m_endReleases;
    std::vector<GeometryMesh> m_geometry;
    KwMeshSettings m_settings;

public:
    // --- reversing shells and beams ---
    // The node order of a shell or beam turned round, as positions into the element's node
    // list: a shell keeps its first corner and runs its corners the other way (its normal
    // flips), a beam swaps its ends; mid-side nodes follow their edges. Empty for a type that
    // cannot be reversed this way (solids, unknown types).
    static std::span<const int> ReversedOrder(int type);
    // Turns one shell or beam element round in place (a beam's end releases swap ends A and B
    // with it). False, and nothing changed, for an unknown id or an element of another family.
    bool ReverseElement(int id);
};
