// Material files come from outside the program: any bytes must read or be refused whole.
#include "KwFuzzMaterialRead.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    return KwFuzzMaterialRead(KwMaterialDatabase::ReadXml, data, size);
}
