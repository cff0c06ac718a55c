// The mesher's mesh file: any bytes give either a mesh whose elements, nodes and
// classification agree with each other, or an error naming a line and nothing read.
#include "CKwMeshModel.h"
#include "KwGmshMesh.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const KwGmshMesh r = KwReadGmshMesh(text);
    const CKwMeshModel& mesh = r.mesh;
    if (!r.ok()) {
        if (mesh.ElementCount() || !mesh.Nodes().empty() || !r.entities.empty()
            || !mesh.GeometryMeshes().empty() || !r.error.startsWith(QLatin1String("Line ")))
            __builtin_trap();
        return 0;
    }
    for (std::size_t e = 0; e < mesh.ElementCount(); ++e) {
        const auto nodes = mesh.ElementNodes(e);
        if (int(nodes.size()) != CKwMeshModel::NodesPerElement(mesh.ElementType(e)))
            __builtin_trap();
        for (int i : nodes)
            if (i < 0 || std::size_t(i) >= mesh.Nodes().size())
                __builtin_trap();
    }
    for (const CKwMeshModel::GeometryMesh& g : mesh.GeometryMeshes()) {
        for (int id : g.nodeIds)
            if (!mesh.HasNode(id))
                __builtin_trap();
        for (int id : g.facets)
            if (!mesh.HasNode(id))
                __builtin_trap();
        for (int id : g.elementIds)
            if (!mesh.HasElement(id))
                __builtin_trap();
    }
    return 0;
}
