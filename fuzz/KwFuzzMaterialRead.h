#pragma once
// What every material-file reader promises for any bytes: a refusal says why and keeps
// nothing; whatever is accepted is sound material data (`most` caps how many materials one
// file may hold, 0 for no cap).
#include "KwMaterialDatabase.h"

#include <cstdint>

template <class Read>
int KwFuzzMaterialRead(Read read, const std::uint8_t* data, std::size_t size, qsizetype most = 0)
{
    const auto r =
        read(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    if (r.ok != r.error.isEmpty() || (!r.ok && !r.materials.isEmpty()) ||
        (r.ok && r.materials.isEmpty()) || (most > 0 && r.materials.size() > most))
        __builtin_trap();
    for (const CKwMaterial& m : r.materials)
        if (m.CheckValues().problem != CKwMaterial::NoProblem)
            __builtin_trap();
    return 0;
}
