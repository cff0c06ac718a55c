// ID lists reach the highlight editor as any text: every input must read or be refused with
// its item, name no more IDs than a list may, read back the same from its canonical text, and
// split against a mesh into ascending unique IDs without a repeat among the missing ones.
#include "KwIdRanges.h"

#include <QSet>
#include <QString>
#include <algorithm>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace KwIdRanges;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data),
                                           static_cast<qsizetype>(size));
    const Parsed p = Parse(text);
    if (p.status != Ok) {
        if (!p.ranges.empty() || p.count != 0 || !Format(p).isEmpty())
            __builtin_trap();
        return 0;
    }
    if (p.count > kMaxIds || (p.all && !p.ranges.empty()))
        __builtin_trap();
    long long count = 0;
    for (const Range& r : p.ranges) {
        if (r.from < 1 || r.to < r.from || r.step < 1)
            __builtin_trap();
        count += r.Count();
    }
    if (count != p.count)
        __builtin_trap();
    const Parsed again = Parse(Format(p));
    if (again.status != Ok || again.ranges != p.ranges || again.all != p.all)
        __builtin_trap();
    // Expanding is bounded by the count; keep the fuzzer fast on large lists.
    if (p.count > 200000)
        return 0;
    const Resolved r = Resolve(p, [](int id) { return id % 3 != 0; }, {1, 2, 4});
    if (!std::is_sorted(r.ids.begin(), r.ids.end()) ||
        std::adjacent_find(r.ids.begin(), r.ids.end()) != r.ids.end())
        __builtin_trap();
    QSet<int> seen;
    for (int id : r.missing) {
        if (id % 3 != 0 || seen.contains(id))
            __builtin_trap();
        seen.insert(id);
    }
    return 0;
}
