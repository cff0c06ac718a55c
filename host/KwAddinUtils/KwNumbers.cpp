#include "KwNumbers.h"

#include <QByteArray>
#include <QLocale>
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace {

// The decimal separator of the user's locale when it is not the point (a comma in German),
// else 0. Numbers are read with either, so text typed or pasted in the user's own notation
// reads the same as text in the C notation.
char localeSeparator()
{
    const QString dp = QLocale().decimalPoint();
    return (dp.size() == 1 && dp[0] != QLatin1Char('.') && dp[0].unicode() < 128)
               ? char(dp[0].unicode())
               : 0;
}

// Scans a decimal number at `p`; returns the end, or `p` when none. `alt` (if not 0) is
// accepted as decimal separator besides the point.
const char* scanNumber(const char* p, char alt = 0)
{
    const char* s = p;
    if (*s == '+' || *s == '-')
        ++s;
    const char* digits = s;
    while (*s >= '0' && *s <= '9')
        ++s;
    bool any = s != digits;
    if (*s == '.' || (alt && *s == alt)) {
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

// The number in C notation, whatever LC_NUMERIC says (strtod would follow it); out-of-range
// values become infinite or zero as strtod makes them.
double parseC(const QByteArray& num)
{
    const char* b = num.constData();
    const char* e = b + num.size();
    if (*b == '+')
        ++b;
    double v = 0;
    const auto r = std::from_chars(b, e, v);
    if (r.ec == std::errc::result_out_of_range) {
        const bool neg = *b == '-';
        // Overflow when the exponent is positive, underflow otherwise.
        const char* ex = std::find_if(b, e, [](char c) { return c == 'e' || c == 'E'; });
        const bool big = ex == e || ex[1] != '-';
        v = big ? std::numeric_limits<double>::infinity() : 0.0;
        return neg ? -v : v;
    }
    return v;
}

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

} // namespace

double KwAtof(const QString& text)
{
    const QByteArray b = text.toLatin1();
    const char* p = b.constData();
    while (isBlank(*p))
        ++p;
    const char* end = scanNumber(p, localeSeparator());
    if (end == p)
        return 0.0;
    QByteArray num(p, static_cast<int>(end - p));
    if (const char alt = localeSeparator())
        num.replace(alt, '.');
    return parseC(num);
}

bool IsNumber(const QString& text)
{
    const QByteArray b = text.toLatin1();
    const char* p = b.constData();
    while (isBlank(*p))
        ++p;
    const char alt = localeSeparator();
    const char* end = scanNumber(p, alt);
    if (end == p)
        return false;
    const char* q = end;
    while (isBlank(*q))
        ++q;
    if (*q != '\0' || q != b.constData() + b.size())
        return false;
    QByteArray num(p, static_cast<int>(end - p));
    if (alt)
        num.replace(alt, '.');
    const double v = parseC(num);
    return std::isfinite(v);
}

bool IsInteger(const QString& text)
{
    bool ok = false;
    text.trimmed().toInt(&ok);
    return ok;
}
