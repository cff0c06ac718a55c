#include "KwSetupReaders.h"

#include "KW_UOM.h"
#include "KwUIText.h"

#include <cmath>

namespace KwSetupReaders {

Reason ReadCount(const QString& text, int minimum, int* value)
{
    bool ok = false;
    const int n = text.trimmed().toInt(&ok);
    if (!ok)
        return NotWholeNumber;
    if (n < minimum)
        return minimum > 0 ? BelowOne : Negative;
    *value = n;
    return Read;
}

Reason ReadQuantity(const QString& text, int unitKind, const KW_UOM* units, bool positive,
                    double* internal)
{
    const KW_UOM si;
    int status = KW_UOM::ParseOk;
    const double v = (units ? units : &si)->ParseQuantity(text, unitKind, &status);
    if (status != KW_UOM::ParseOk || !std::isfinite(v))
        return NotNumber;
    if (v < 0)
        return positive ? NotPositive : Negative;
    if (positive && v == 0)
        return NotPositive;
    *internal = v;
    return Read;
}

QString Message(Reason reason, int unitKind, const KW_UOM* units)
{
    using KwUIText::err;
    const QString unit = units ? units->GetUnits(unitKind) : QString();
    switch (reason) {
    case NotWholeNumber: return err("AnalysisSetup", "WholeNumberRequired", "Enter a whole number.");
    case BelowOne:
        return err("AnalysisSetup", "CountAtLeastOne", "Enter a whole number of 1 or more.");
    case NotNumber:
        return unit.isEmpty()
                   ? err("AnalysisSetup", "NumberRequired", "Enter a number.")
                   : err("AnalysisSetup", "NumberRequiredUnit", "Enter a number in %s.")
                         .replace(QStringLiteral("%s"), unit);
    case Negative: return err("AnalysisSetup", "NotNegative", "Enter a value of 0 or more.");
    case NotPositive:
        return err("AnalysisSetup", "PositiveRequired", "Enter a value greater than 0.");
    case Read: break;
    }
    return QString();
}

} // namespace KwSetupReaders
