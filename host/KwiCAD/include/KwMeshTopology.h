#pragma once
// Neighbourhood questions about a mesh that the view, the solver deck and the mesh tools all
// ask: which faces of the solid elements form their skin, and how the faces of each solid
// family run.
#include "KwiCADExport.h"

#include <span>
#include <vector>

class CKwMeshModel;

// A face of a solid element on the skin of the solids: the element (index into the mesh's
// element order), the face's number within its element, and its corner nodes (indices into
// CKwMeshModel::Nodes()) in outward order: seen from outside they run counter-clockwise.
struct KwSkinFace
{
    int element = 0;
    int face = 0;
    int corners = 0;  // 3 or 4
    int node[4] = {-1, -1, -1, -1};
};

// The corner positions of the faces of a solid family (linear or parabolic type), outward
// for an element of positive volume; empty for a type that is no solid.
KWICAD_EXPORT std::span<const std::vector<int>> KwSolidFaceCorners(int type);

// Faces of solid elements that no other solid element shares, in element order.
KWICAD_EXPORT std::vector<KwSkinFace> KwSolidSkin(const CKwMeshModel& mesh);
