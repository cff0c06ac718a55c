// Material files come from outside the program: any bytes must read or be refused whole.
#include "KwMaterialDatabase.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto r = KwMaterialDatabase::ReadSldmat(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    // A refusal says why and keeps nothing; whatever is accepted is sound material data.
    if (r.ok != r.error.isEmpty() || (!r.ok && !r.materials.isEmpty()) ||
        (r.ok && r.materials.isEmpty()))
        __builtin_trap();
    for (const CKwMaterial& m : r.materials)
        if (m.CheckValues().problem != CKwMaterial::NoProblem)
            __builtin_trap();
    return 0;
}
