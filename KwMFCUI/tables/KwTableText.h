#pragma once
// Number text of the point tables on 8-bit cell text: trimming, the blank rule, and a fast
// read of plain decimal numbers. Text that is not a plain number goes to the host's parsers.
#include <charconv>
#include <string_view>

namespace KwTableText {

inline bool isBlank(char c) { return c == ' ' || c == '\t'; }

// Trimmed of blanks, CR, LF and FF at both ends.
inline std::string_view trimmed(std::string_view s)
{
    auto ws = [](char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n' || c == '\f'; };
    while (!s.empty() && ws(s.front()))
        s.remove_prefix(1);
    while (!s.empty() && ws(s.back()))
        s.remove_suffix(1);
    return s;
}

inline bool hasBlank(std::string_view s)
{
    for (char c : s)
        if (isBlank(c))
            return true;
    return false;
}

// Reads a plain decimal number ([+-]digits[.digits][e[+-]digits]) that is all of `s`. Returns
// false for anything else (empty, other characters, a locale comma, out of range), which the
// caller then hands to the host's own parsing.
inline bool plainNumber(std::string_view s, double* value)
{
    if (s.empty())
        return false;
    const char* b = s.data();
    const char* e = b + s.size();
    if (*b == '+') {
        ++b;
        if (b == e || *b == '-' || *b == '+')
            return false;
    }
    const char c = *b == '-' && b + 1 < e ? b[1] : *b;
    if (!((c >= '0' && c <= '9') || c == '.'))
        return false; // leaves "inf", "nan" and the like to the host
    const auto r = std::from_chars(b, e, *value, std::chars_format::general);
    return r.ec == std::errc() && r.ptr == e;
}

} // namespace KwTableText
