#pragma once
// The settings a mesh is made with: element size, order, how each body is meshed. The mesh
// settings dialog edits them on the model's mesh; the host's mesher reads them for a run.
#include <map>

struct KwMeshSettings
{
    // Element size: a level on the fine-to-coarse scale (1 finest .. 10 coarsest) or, with
    // useLength, the typed length (m).
    int sizeLevel = 5;
    bool useLength = false;
    double elementLength = 0.01;
    bool parabolic = false;
    // How a body is meshed, by body id; a body not listed is meshed as the geometry says.
    enum BodyMesh { AsSolid = 0, AsShell = 1, AsBeam = 2 };
    std::map<int, int> bodyMesh;
    // Shared faces of touching bodies mesh with shared nodes.
    bool continuous = true;
    bool operator==(const KwMeshSettings&) const = default;
};
