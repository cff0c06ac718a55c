// The solver's text result file: any bytes must give either complete result sets (every node
// with all its components, finite equivalent stresses) or an error and no sets.
#include "KwSolverResults.h"

#include <cmath>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    KwSolverResults results;
    QString error;
    const bool ok = KwReadSolverResults(text, {1, 2, 3}, results, error);
    if (!ok && (!results.sets.empty() || error.isEmpty()))
        __builtin_trap();
    for (const KwResultSet& s : results.sets)
        for (const KwNodalField* f : {&s.displacement, &s.reaction, &s.stress, &s.vonMises,
                                      &s.principal}) {
            if (f->values.size() != f->nodeIds.size() * std::size_t(f->components))
                __builtin_trap();
            for (double v : f->values)
                if (!std::isfinite(v))
                    __builtin_trap();
        }
    return 0;
}
