// Language files come from outside the program: any bytes must parse or be refused cleanly.
#include "CKwXMLUtils.h"

#include <QByteArray>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    QString code;
    QString error;
    const int n = CKwXMLUtils::ParseLanguageDocument(
        QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)), &code,
        &error);
    if (n < 0 && error.isEmpty())
        __builtin_trap(); // a refusal always says why
    return 0;
}
