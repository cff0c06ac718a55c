#pragma once
// The solver's input deck written from the model for one analysis. Everything goes out in the
// model's own units (SI: N, m, Pa, kg, s), so no number is converted on the way.
//
// The demo model names geometry (faces, vertices, the body) rather than mesh entities; the
// writer finds the mesh nodes of a geometric entity from the solid mesh's bounding box (see
// KwGeometryNodes). Elements take the first property of their family (solid, shell, beam);
// solids without a solid property take the first material. Mesh pieces that share no node with
// any constrained piece are left out when the model has constraints (test tabs, loose parts).
#include "KwiCADExport.h"

#include <QString>
#include <QStringList>
#include <string>
#include <vector>

class CKwAnalysis;
class CKwFEModel;
class CKwMeshModel;
class CKwUIEntity;

struct KwSolverDeck
{
    // Empty when the deck was written; else why the solver cannot run this analysis.
    QString refusal;
    std::string text;
    // The subcase id of each step, in step order (modal analyses: one step).
    std::vector<int> stepSubcases;
    bool modal = false;
    int modes = 0;
    // The time one step covers: 1 for static steps (the load factor), the run's end time for
    // a transient one.
    double stepPeriod = 1.0;
    // What the deck leaves out and why, one line each (also written as comments).
    QStringList notes;
    bool ok() const { return refusal.isEmpty(); }
};

// Modes a modal analysis asks for when it has no modal setup.
inline constexpr int kKwDefaultModes = 10;
// A transient analysis without time steps or subcase stepping runs this long in this many
// steps.
inline constexpr double kKwDefaultTransientTime = 1.0;
inline constexpr int kKwDefaultTransientSteps = 20;

KWICAD_EXPORT KwSolverDeck KwWriteSolverDeck(const CKwFEModel& model,
                                            const CKwAnalysis& analysis);

// The mesh nodes (ids, ascending) of a picked entity: a node itself, an element's nodes, or the
// nodes on a face (1 bottom z-, 2 top z+, 3 front y-, 4 back y+, 5 left x-, 6 right x+), at a
// vertex (bit 0: x+, bit 1: y+, bit 2: z+ of vertex id - 1) or of the body of the solid mesh.
KWICAD_EXPORT std::vector<int> KwGeometryNodes(const CKwMeshModel& mesh,
                                               const CKwUIEntity& entity);
