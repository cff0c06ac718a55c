#pragma once
// The mesh of the model: nodes with coordinates, elements by their nodes in one flat
// connectivity array (no allocation per element), the mesh quality parameters, and the element
// groups the user gathered. Picked nodes and elements are handed out as CKwUIEntity objects
// the mesh owns, made the first time one is asked for.
#include "CKwFEBase.h"

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
    // The value is the element's node count, except for the tetrahedron.
    enum ElementType : int { Beam2 = 2, Tri3 = 3, Quad4 = 4, Hex8 = 8, Tet4 = 10 };
    static int NodesPerElement(int type);

    // The checks of the mesh quality parameters, each with an on/off flag and a limit.
    enum QualityCheck : int {
        QuadAspectRatio, QuadSkew, QuadWarpage, QuadTaper, QuadJacobian,
        TriaAspectRatio, TriaSkew, TriaJacobian,
        TetAspectRatio, TetSkew, TetJacobian,
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
};
