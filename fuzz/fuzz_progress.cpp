// Progress lines come from the solver through the host: any text must split into fields, with
// every position a plain integer, and never read past the line.
#include "CNLstatusDialog.h"

#include <QString>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data),
                                            static_cast<qsizetype>(size));
    const KwProgressLine line = KwParseProgressLine(text);
    for (const QString& v : line.values)
        if (v.size() > text.size())
            __builtin_trap();
    if (line.stepType.size() > text.size())
        __builtin_trap();
    return 0;
}
