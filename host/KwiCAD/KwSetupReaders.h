#pragma once
// Reading the fields of the analysis-setup editors: whole counts and quantities in the display
// unit, each with the reason a text is refused, and the message for that reason. Internal to
// the host library.
#include <QString>

class KW_UOM;

namespace KwSetupReaders {

// Why a field was refused (0: read).
enum Reason { Read = 0, NotWholeNumber, BelowOne, NotNumber, Negative, NotPositive };

// A whole number of at least `minimum`; blanks around it are allowed.
Reason ReadCount(const QString& text, int minimum, int* value);
// A quantity in the display unit of `unitKind` (SI without units); `positive` refuses zero
// too, otherwise only negative values are refused.
Reason ReadQuantity(const QString& text, int unitKind, const KW_UOM* units, bool positive,
                    double* internal);
// The field message of a refused field ("Enter a whole number of 1 or more.", "Enter a number
// in s.", ...) from the language section "AnalysisSetup".
QString Message(Reason reason, int unitKind, const KW_UOM* units);

} // namespace KwSetupReaders
