#pragma once
// Reads a mesh written by the external mesher in its ASCII format 4.1 into a CKwMeshModel, with
// the classification of the mesh onto the geometry it was made from (every point, curve,
// surface and volume with its nodes, facets and structural elements).
//
// Which elements are structural: the solids of the volumes, the shells of the surfaces that
// bound no volume (a surface part), the beams of the curves that bound no surface (a line part).
// Elements on the boundary of a higher entity only describe that boundary (facets, nodes).
// Nodes keep the file's numbers; the structural elements are numbered 1, 2, 3... in file order.
//
// Geometry ids: points, curves and surfaces keep the mesher's tags as vertex, edge and face ids.
// A body is what a volume, a free surface or a free curve belongs to: its physical group when it
// has one (the group's name is the body's name), else its own tag. The boundary entities belong
// to the first body (volumes first) whose closure holds them.
#include "CKwMeshModel.h"
#include "KwiCADExport.h"

#include <QString>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

struct KWICAD_EXPORT KwGmshEntity
{
    int kind = 0;  // CKwUIEntity::Kind: Vertex, Edge, Face, Body
    int id = 0;
    int body = 0;
    QString bodyName; // empty when the body has no physical name
    // Bounding box of the entity as the mesher reports it (a body: of its parts).
    double lo[3] = {0, 0, 0};
    double hi[3] = {0, 0, 0};
    // The readable name: "Face 12 (Bracket)", "Edge 3 (Body 2)", a body "Bracket".
    QString Label() const;
};

struct KwGmshMesh
{
    // Empty when the file was read; else "Line N: why" (and the mesh is left empty).
    QString error;
    CKwMeshModel mesh;
    std::vector<KwGmshEntity> entities; // bodies, faces, edges, vertices in that order
    bool ok() const { return error.isEmpty(); }
};

// Reads the text of a mesh file. Never throws; malformed or truncated input gives an error
// naming the line where reading stopped.
KWICAD_EXPORT KwGmshMesh KwReadGmshMesh(std::string_view text);

// The edges whose middle nodes follow the corners of a parabolic element, in our node order
// (the solver deck's): pairs of corner positions, one pair per middle node. Empty for a linear
// or unknown type. Tet10: 01 12 20 03 13 23; Hex20: the bottom ring, the top ring, then the
// uprights; Wedge15: bottom ring, top ring, uprights; Pyr13: the base ring, then the edges to
// the apex; Tri6 and Quad8 round the ring; Beam3: the middle.
KWICAD_EXPORT std::span<const std::pair<int, int>> KwMidsideEdges(int type);
