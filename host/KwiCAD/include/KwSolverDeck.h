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

// What one entity becomes in the solver's input: one row per quantity, the value as the
// model keeps it (SI) and the text the deck carries for it.
struct KwDeckRow
{
    enum Family { Material = 0, Property, Constraint, Load, Contact, Mass, Connector,
                  FamilyCount };
    int family = Material;
    int subcaseId = 0;       // constraints and loads: the subcase of their step; else 0
    QString entity;          // the entity's name
    std::string keyword;     // the deck keyword it goes out under ("*ELASTIC")
    const char* quantityKey = ""; // language key of the quantity ("QuantityModulus")
    const char* quantity = "";    // its English name
    int unitKind = -1;       // KwUnitKind of `value`; -1 when the row has no unit
    double value = 0;        // in the model's (SI) units; unused when `hasValue` is false
    bool hasValue = false;
    std::string text;        // what the deck carries for it
};

// Per step: the total load the deck applies and what the solver's reactions need to balance
// it. The solver reports at a constrained node the internal force, which includes any load
// applied there; the part of the load that lands on constrained degrees of freedom is kept
// so that it can be taken out again.
struct KwStepLoadBalance
{
    int subcaseId = 0;
    double applied[3] = {0, 0, 0};          // total applied force per axis (N)
    double appliedAtSupports[3] = {0, 0, 0}; // of it, on the constrained degrees of freedom
    std::vector<int> constrained[3];         // node ids constrained along each axis
    // False when the step holds a node of a shell or beam, where the solver reports only part
    // of the reaction, or carries a weight the deck cannot total: no balance then.
    bool complete = true;
};

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
    // The unit system every number of the deck is in.
    QString unitSystem = QStringLiteral("N, m, kg, s, Pa");
    // What each entity becomes in the deck, in family order as written.
    std::vector<KwDeckRow> rows;
    // One per static step (none for modal and frequency-response runs).
    std::vector<KwStepLoadBalance> balances;
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
