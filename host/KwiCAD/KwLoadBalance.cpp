#include "KwLoadBalance.h"

#include "KwSolverDeck.h"
#include "KwSolverResults.h"

#include <algorithm>
#include <cmath>

std::vector<KwLoadBalanceLine> KwCheckLoadBalance(const KwSolverDeck& deck,
                                                  const KwSolverResults& results)
{
    std::vector<KwLoadBalanceLine> lines;
    for (std::size_t i = 0; i < deck.balances.size(); ++i) {
        const KwStepLoadBalance& b = deck.balances[i];
        const KwResultSet* set = results.LastOfStep(int(i) + 1);
        if (!set)
            continue;
        KwLoadBalanceLine line;
        line.subcaseId = b.subcaseId;
        line.checked = b.complete && !set->reaction.empty();
        double appliedSize = 0, reactionSize = 0;
        for (int a = 0; a < 3; ++a) {
            // The solver's force at a constrained node holds the load applied there too.
            double sum = -b.appliedAtSupports[a];
            for (int id : b.constrained[a])
                if (const double* f = set->reaction.Find(id))
                    sum += f[a];
            line.applied[a] = b.applied[a];
            line.reaction[a] = sum;
            appliedSize += b.applied[a] * b.applied[a];
            reactionSize += sum * sum;
        }
        const double scale = std::sqrt(appliedSize > 0 ? appliedSize : reactionSize);
        double worst = 0;
        for (int a = 0; a < 3; ++a)
            worst = std::max(worst, std::abs(line.applied[a] + line.reaction[a]));
        line.difference = scale > 0 ? worst / scale : 0;
        lines.push_back(line);
    }
    return lines;
}
