#pragma once
// What the model view draws of a mesh, worked out once per mesh: the skin of the solids and
// the shells as triangles (each knowing its element and the geometry face it lies on), the
// element edges and feature edges on them, the beams, the geometry edges as segments and the
// geometry vertices. Building this walks every element (a million hexahedra take about a
// second), so the view keeps it until the mesh is replaced; a frame only projects the nodes
// listed here.
#include "KwViewCamera.h"

#include <array>
#include <cstddef>
#include <vector>

class CKwMeshModel;

struct KwViewScene
{
    // The mesh this was built from and the counts it had, to notice a different mesh.
    const CKwMeshModel* mesh = nullptr;
    std::size_t nodeCount = 0, elementCount = 0, geometryCount = 0;

    struct Tri
    {
        int n[3];     // node indices
        int element;  // element index
        int face;     // index into faceGeometry, or -1
        bool solid;   // on the skin of a solid (else a shell)
    };
    std::vector<Tri> tris;
    using Edge = std::array<int, 2>; // node indices
    std::vector<Edge> meshEdges;
    std::vector<Edge> featureEdges;
    // Feature edges of the solids alone (drawn when the solids are hidden).
    std::vector<Edge> solidFeatureEdges;
    struct Beam
    {
        int n[2];
        int element;
    };
    std::vector<Beam> beams;
    // Nodes that are drawn (skin, shells, beams), ascending.
    std::vector<int> surfaceNodes;
    // Unit normal per node (outward for solids), from the faces around it; zero off the skin.
    std::vector<float> nodeNormal;

    // Geometry: indices into mesh->GeometryMeshes().
    std::vector<int> faceGeometry;
    struct Segment
    {
        int n[2];
        int edge; // index into edgeGeometry
    };
    std::vector<Segment> segments;
    std::vector<int> edgeGeometry;
    struct Vertex
    {
        int node;
        int geometry;
    };
    std::vector<Vertex> vertices;

    KwVec3 lo, hi;        // box of all nodes
    double elementSize = 0; // mean length of a mesh edge

    // True when this scene was built from `mesh` as it is now.
    bool Matches(const CKwMeshModel* m) const;
    void Build(const CKwMeshModel& m);
};
