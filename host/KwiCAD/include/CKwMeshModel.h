#pragma once
// The mesh of the model: nodes with coordinates and elements by their node ids, stored flat.
#include "CKwFEBase.h"

#include <QHash>
#include <vector>

class KWICAD_EXPORT CKwMeshModel : public CKwFEBase
{
public:
    struct Node { int id; double x, y, z; };
    struct Element { int id; int type; std::vector<int> nodes; };
    enum ElementType { Hex8 = 8, Quad4 = 4, Beam2 = 2 };

    CKwMeshModel(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Mesh"); }

    void AddNode(int id, double x, double y, double z);
    void AddElement(int id, int type, std::vector<int> nodes);
    bool HasNode(int id) const { return m_nodeIndex.contains(id); }
    bool HasElement(int id) const { return m_elementIndex.contains(id); }
    const Node* FindNode(int id) const;
    const std::vector<Node>& Nodes() const { return m_nodes; }
    const std::vector<Element>& Elements() const { return m_elements; }
    void Clear();

    // A structured block of hexahedra: nx*ny*nz elements over the given box.
    void BuildBlock(int nx, int ny, int nz, double lx, double ly, double lz);

private:
    std::vector<Node> m_nodes;
    std::vector<Element> m_elements;
    QHash<int, int> m_nodeIndex;
    QHash<int, int> m_elementIndex;
};
