// Material files come from outside the program: any bytes must read or be refused whole.
#include "KwMaterialDatabase.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto r = KwMaterialDatabase::ReadSvrmat(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    // A refusal says why and keeps nothing; an accepted file holds exactly one sound material.
    if (r.ok != r.error.isEmpty() || (!r.ok && !r.materials.isEmpty()) ||
        (r.ok && r.materials.size() != 1))
        __builtin_trap();
    if (r.ok && r.materials[0].CheckValues().problem != CKwMaterial::NoProblem)
        __builtin_trap();
    return 0;
}
