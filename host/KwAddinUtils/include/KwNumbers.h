#pragma once
// Missing-value sentinels and number parsing shared by host and dialogs. An unset number in
// the model holds its type's sentinel; dialogs show it as an empty box.
#include "KwAddinUtilsExport.h"

#include <QString>
#include <limits>

inline constexpr double MissingDouble = -1.0e+30;
inline constexpr float MissingFloat = -1.0e+30f;
inline constexpr int MissingInteger = std::numeric_limits<int>::min() + 1;

inline bool IsMissingValue(double v) { return v == MissingDouble; }
inline bool IsMissingValue(float v) { return v == MissingFloat; }
inline bool IsMissingValue(int v) { return v == MissingInteger; }

// Like the C runtime's atof: reads the longest leading number (after blanks) in the C locale
// and ignores what follows; 0 when there is none.
KWADDINUTILS_EXPORT double KwAtof(const QString& text);
// True when the whole text (blanks around it allowed) is one finite decimal number, optionally
// with exponent. "1e3", " -2.5 ", ".5" are numbers; "", "1.2.3", "3x", "nan", "inf" are not.
KWADDINUTILS_EXPORT bool IsNumber(const QString& text);
// True when the whole text (blanks around it allowed) is an integer within int's range.
KWADDINUTILS_EXPORT bool IsInteger(const QString& text);
