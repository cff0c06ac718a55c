#pragma once
// Draws a frame of the model view (the picture and the pick buffers) from the cached scene,
// the camera and what the view is asked to show.
#include "KwRenderer.h"
#include "KwResultLegend.h"
#include "KwViewCamera.h"
#include "KwViewDisplay.h"
#include "KwViewScene.h"

#include <QImage>
#include <cstdint>
#include <vector>

class CKwFEModel;
class QPainter;

struct KwViewFrame
{
    const CKwFEModel* model = nullptr;
    const KwResultDisplay* result = nullptr;
    const KwDirectionDisplay* direction = nullptr;
    bool showMeshEdges = true;
    bool smooth = false;
    bool solidsHidden = false;
    bool membersHidden = false;
    bool showNodes = false;
    bool showSymbols = true;
    // Per element / node index: drawn marked (quality failures, a highlight dialog's set).
    std::vector<char> markedElements, markedNodes;
    // Per element / node / scene face, edge and vertex index: the open editor's selection.
    std::vector<char> pickedElements, pickedNodes, pickedFaces, pickedEdges, pickedVertices;
    bool pickedBody = false;
    // The deformation actually drawn: the display's scale times the animation's phase.
    double deformFactor = 0;
};

class KwViewPainter
{
public:
    KwViewScene scene;
    KwRaster picture;
    // Surfaces and beams with their ids (tri index + 1, beams BeamTag | index), and the
    // geometry edges (edge index + 1) over the same depth.
    KwRaster pick;
    KwRaster pickEdges;
    static constexpr uint32_t BeamTag = 0x40000000u;
    // The depth tolerance the pick buffers were drawn with.
    float pickBias = 0;

    // Node positions of the last projection (screen x, y, depth), per node index; only the
    // scene's surface nodes are filled.
    std::vector<float> sx, sy, sz, clip;
    // The model positions drawn (deformed) for the surface nodes.
    std::vector<double> wx, wy, wz;

    // Renders the frame at the camera's viewport times `supersample` and returns the picture
    // at the camera's viewport (legend, triad and symbols painted on it).
    QImage Render(const KwViewFrame& frame, const KwViewCamera& camera, int supersample);
    // Renders the pick buffers at the camera's viewport.
    void RenderPick(const KwViewFrame& frame, const KwViewCamera& camera);

    // Depth tolerance of lines on their surfaces at this camera (model units).
    double LineBias(const KwViewCamera& camera) const;
    // True when the node at index n (projected by the last RenderPick) is not hidden.
    bool NodeVisible(int n) const;

private:
    void positions(const KwViewFrame& frame);
    void project(const KwViewFrame& frame, const KwViewCamera& camera);
    KwRasterVertex vertex(int n) const;
    void drawSurfaces(const KwViewFrame& frame, const KwViewCamera& camera, KwRaster& r,
                      bool forPick, float ss);
    void drawLinesAndMarks(const KwViewFrame& frame, const KwViewCamera& camera, KwRaster& r,
                           float ss);
    void paintOverlay(const KwViewFrame& frame, const KwViewCamera& camera, QPainter& p);
    void paintSymbols(const KwViewFrame& frame, const KwViewCamera& camera, QPainter& p, int ss);
};
