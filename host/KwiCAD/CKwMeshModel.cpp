#include "CKwMeshModel.h"

CKwMeshModel::CKwMeshModel(int id, const QString& name) : CKwFEBase(id, name) {}

void CKwMeshModel::AddNode(int id, double x, double y, double z)
{
    m_nodeIndex.insert(id, static_cast<int>(m_nodes.size()));
    m_nodes.push_back({id, x, y, z});
}

void CKwMeshModel::AddElement(int id, int type, std::vector<int> nodes)
{
    m_elementIndex.insert(id, static_cast<int>(m_elements.size()));
    m_elements.push_back({id, type, std::move(nodes)});
}

const CKwMeshModel::Node* CKwMeshModel::FindNode(int id) const
{
    const auto it = m_nodeIndex.constFind(id);
    return it == m_nodeIndex.constEnd() ? nullptr : &m_nodes[static_cast<std::size_t>(*it)];
}

void CKwMeshModel::Clear()
{
    m_nodes.clear();
    m_elements.clear();
    m_nodeIndex.clear();
    m_elementIndex.clear();
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
