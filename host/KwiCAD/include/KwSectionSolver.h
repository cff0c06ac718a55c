#pragma once
// Section values of a polygonal beam section. Area, centroid, second moments, product and the
// principal angle are exact integrals over the polygons. The torsion constant, the shear centre,
// the shear factors and the warping constant come from finite elements (six-node triangles) on
// a triangulation of the section: the Saint-Venant warping function and the two shear functions
// (Poisson's ratio 0) are solved with one factorised Laplacian.
#include "KwSectionTypes.h"
#include "KwiCADExport.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

using KwLoop = std::vector<Kw::Point>;

struct KwSectionMesh
{
    std::vector<Kw::Point> nodes;
    std::vector<std::array<int, 3>> triangles;
};

// Exact polygon integrals; coordinates as given (not centroidal) except where named.
struct KwPolygonIntegrals
{
    double area = 0;
    double cx = 0, cy = 0;       // centroid
    double ixx = 0, iyy = 0, ixy = 0; // centroidal: integrals of x^2, y^2, x*y
};

struct KwSectionResult
{
    KwPolygonIntegrals exact;
    double principalAngle = 0; // radians, from the x axis to the axis of the larger moment
    double torsion = 0;        // J
    double shearFactorX = 0;   // shear area over area, shear along x
    double shearFactorY = 0;
    double shearCenterX = 0, shearCenterY = 0; // absolute
    double warping = 0;        // Cw about the shear centre
    int nodes = 0;
    int elements = 0;
};

// Loops in any orientation; the one of largest area is the outer boundary, the others holes.
// Returns false for loops that are not simple closed polygons, holes outside the outer loop,
// crossing loops, or a section of no area.
// The axis-aligned box around every point of the loops (inverted, x0 > x1, when there is none).
struct KwLoopBounds
{
    double x0 = HUGE_VAL, x1 = -HUGE_VAL, y0 = HUGE_VAL, y1 = -HUGE_VAL;
    double Extent() const { return std::max(x1 - x0, y1 - y0); }
};
KWICAD_EXPORT KwLoopBounds KwBoundsOfLoops(const std::vector<KwLoop>& loops);

KWICAD_EXPORT bool KwCheckSectionLoops(const std::vector<KwLoop>& loops);
KWICAD_EXPORT bool KwIntegratePolygons(const std::vector<KwLoop>& loops, KwPolygonIntegrals& out);
// Triangulates the section: rectilinear sections on a graded grid, any other by ear clipping
// with hole bridges, refined until about `targetTriangles` triangles.
KWICAD_EXPORT bool KwMeshSection(const std::vector<KwLoop>& loops, int targetTriangles,
                                 KwSectionMesh& mesh);
// All values. targetTriangles sets the mesh density (the default keeps the torsion constant of
// the library shapes within a fraction of a percent of its converged value).
KWICAD_EXPORT bool KwSolveSection(const std::vector<KwLoop>& loops, KwSectionResult& out,
                                  int targetTriangles = 400);
