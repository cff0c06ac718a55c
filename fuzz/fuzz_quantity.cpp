// Typed quantities reach the load logic as any text: every kind in every system must answer a
// status, give a finite internal value exactly when it says the text was read, and name a
// foreign unit only when it refuses one.
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <QString>
#include <cmath>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data),
                                           static_cast<qsizetype>(size));
    for (KW_UOM::System system : {KW_UOM::SI, KW_UOM::MMNS, KW_UOM::IPS}) {
        const KW_UOM units(system);
        for (int kind = -1; kind <= KwUnitKind::AngularAcceleration; ++kind) {
            int status = -1;
            QString seen;
            const double v = units.ParseQuantity(text, kind, &status, &seen);
            if (status < KW_UOM::ParseOk || status > KW_UOM::ParseOutOfRange)
                __builtin_trap();
            if ((status == KW_UOM::ParseOk) != !IsMissingValue(v))
                __builtin_trap();
            if (status == KW_UOM::ParseOk && !std::isfinite(v))
                __builtin_trap();
            if ((status == KW_UOM::ParseWrongUnit) != !seen.isEmpty())
                __builtin_trap();
        }
    }
    return 0;
}
