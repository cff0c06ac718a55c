#include "KwNumbers.h"

#include <QByteArray>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

// Scans a decimal number at `p` in the C locale; returns the end, or `p` when none.
const char* scanNumber(const char* p)
{
    const char* s = p;
    if (*s == '+' || *s == '-')
        ++s;
    const char* digits = s;
    while (*s >= '0' && *s <= '9')
        ++s;
    bool any = s != digits;
    if (*s == '.') {
        ++s;
        const char* frac = s;
        while (*s >= '0' && *s <= '9')
            ++s;
        any = any || s != frac;
    }
    if (!any)
        return p;
    if (*s == 'e' || *s == 'E') {
        const char* e = s + 1;
        if (*e == '+' || *e == '-')
            ++e;
        const char* ed = e;
        while (*e >= '0' && *e <= '9')
            ++e;
        if (e != ed)
            s = e;
    }
    return s;
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

} // namespace

double KwAtof(const QString& text)
{
    const QByteArray b = text.toLatin1();
    const char* p = b.constData();
    while (isBlank(*p))
        ++p;
    const char* end = scanNumber(p);
    if (end == p)
        return 0.0;
    const QByteArray num(p, static_cast<int>(end - p));
    return std::strtod(num.constData(), nullptr);
}

bool IsNumber(const QString& text)
{
    const QByteArray b = text.toLatin1();
    const char* p = b.constData();
    while (isBlank(*p))
        ++p;
    const char* end = scanNumber(p);
    if (end == p)
        return false;
    const char* q = end;
    while (isBlank(*q))
        ++q;
    if (*q != '\0' || q != b.constData() + b.size())
        return false;
    const double v = std::strtod(QByteArray(p, static_cast<int>(end - p)).constData(), nullptr);
    return std::isfinite(v);
}

bool IsInteger(const QString& text)
{
    bool ok = false;
    text.trimmed().toInt(&ok);
    return ok;
}
