#include "KwReactionSum.h"

#include "CKwMeshModel.h"
#include "KwSolverResults.h"

#include <algorithm>
#include <cmath>

KwReactionSum KwSumReactions(const KwResultSet& set, const CKwMeshModel& mesh,
                             std::vector<int> nodeIds, const std::array<double, 3>& origin,
                             bool aboutCentroid)
{
    std::sort(nodeIds.begin(), nodeIds.end());
    nodeIds.erase(std::unique(nodeIds.begin(), nodeIds.end()), nodeIds.end());
    struct Carried
    {
        std::array<double, 3> at;
        const double* f;
    };
    std::vector<Carried> carried;
    KwReactionSum sum;
    for (int id : nodeIds) {
        const CKwMeshModel::Node* n = mesh.FindNode(id);
        const double* f = set.reaction.components >= 3 ? set.reaction.Find(id) : nullptr;
        if (!n || !f)
            continue;
        carried.push_back({{n->x, n->y, n->z}, f});
        for (int k = 0; k < 3; ++k) {
            sum.force[k] += f[k];
            sum.centroid[k] += carried.back().at[k];
        }
    }
    sum.nodes = int(carried.size());
    if (sum.nodes > 0)
        for (double& c : sum.centroid)
            c /= sum.nodes;
    sum.origin = aboutCentroid ? sum.centroid : origin;
    // What the terms could add up to at most: a sum far below it is what cancelled out, and
    // its last bits are round-off, not a force or moment anyone put there.
    double forceScale = 0, momentScale = 0;
    for (const Carried& c : carried) {
        const double r[3] = {c.at[0] - sum.origin[0], c.at[1] - sum.origin[1],
                             c.at[2] - sum.origin[2]};
        sum.moment[0] += r[1] * c.f[2] - r[2] * c.f[1];
        sum.moment[1] += r[2] * c.f[0] - r[0] * c.f[2];
        sum.moment[2] += r[0] * c.f[1] - r[1] * c.f[0];
        const double f = std::abs(c.f[0]) + std::abs(c.f[1]) + std::abs(c.f[2]);
        forceScale += f;
        momentScale += f * (std::abs(r[0]) + std::abs(r[1]) + std::abs(r[2]));
    }
    for (double& v : sum.force)
        v = std::abs(v) < 1e-12 * forceScale ? 0.0 : v;
    for (double& v : sum.moment)
        v = std::abs(v) < 1e-12 * momentScale ? 0.0 : v;
    return sum;
}
