#pragma once
// The sum of the reaction forces at a set of nodes and their moment about an origin: what the
// constrained entities of a model carry in one result set.
#include "KwiCADExport.h"

#include <array>
#include <vector>

class CKwMeshModel;
struct KwResultSet;

struct KwReactionSum
{
    std::array<double, 3> force{};    // N
    std::array<double, 3> moment{};   // N·m about `origin`
    std::array<double, 3> origin{};   // m
    std::array<double, 3> centroid{}; // mean position of the nodes that carry a reaction
    int nodes = 0;                    // nodes summed (those the set has a reaction for)
};

// Sums the reactions of `nodeIds` (duplicates count once) about `origin`; with `aboutCentroid`
// the moment is taken about the centroid of the summed nodes instead. A component that cancels
// to within 1e-12 of what its terms add up to in magnitude is round-off and reads 0.
KWICAD_EXPORT KwReactionSum KwSumReactions(const KwResultSet& set, const CKwMeshModel& mesh,
                                           std::vector<int> nodeIds,
                                           const std::array<double, 3>& origin,
                                           bool aboutCentroid);
