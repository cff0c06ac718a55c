#pragma once
// The balance of a static run: per subcase, the total load the deck applied against the total
// reaction the solver reports at the constrained nodes, per axis. They cancel in a sound run;
// a difference points at load that went nowhere (onto a constrained node, past an unconverged
// increment) or at a support that is missing.
#include "KwiCADExport.h"

#include <vector>

struct KwSolverDeck;
struct KwSolverResults;

struct KwLoadBalanceLine
{
    int subcaseId = 0;
    double applied[3] = {0, 0, 0};  // N
    double reaction[3] = {0, 0, 0}; // N; the negative of `applied` when balanced
    // The largest difference |applied + reaction| of an axis over the size of the applied
    // total (or of the reaction when nothing is applied).
    double difference = 0;
    bool checked = true; // false when the deck could not total its loads
    bool Warn() const { return checked && difference > kWarnAbove; }
    static constexpr double kWarnAbove = 1e-3;
};

// One line per static step of the deck that has results; none for other analyses.
KWICAD_EXPORT std::vector<KwLoadBalanceLine> KwCheckLoadBalance(const KwSolverDeck& deck,
                                                                const KwSolverResults& results);
