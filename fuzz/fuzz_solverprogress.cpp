// The solver's console output, read line by line into status-window progress lines: any text
// must be taken without a crash, and every line it gives must be one the status windows read
// as eight fields with positions from 0 to 100.
#include "CNLstatusDialog.h"
#include "KwSolverProgress.h"

#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    KwSolverProgress progress({1, 2}, 1.0, 8);
    std::size_t pos = 0;
    while (pos <= text.size()) {
        std::size_t end = text.find('\n', pos);
        if (end == std::string_view::npos)
            end = text.size();
        if (progress.AddLine(text.substr(pos, end - pos))) {
            const QString line = progress.CurrentLine();
            if (line.count(QLatin1Char(',')) != 7)
                __builtin_trap();
            const KwProgressLine parsed = KwParseProgressLine(line);
            for (int p : parsed.positions)
                if (p < 0 || p > 100)
                    __builtin_trap();
            if (parsed.stepType != QLatin1String("F") && parsed.stepType != QLatin1String("S"))
                __builtin_trap();
        }
        pos = end + 1;
    }
    return 0;
}
