#include "KwStudyFields.h"

#include "CKwFEUIBase.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwUIText.h"

#include <cmath>

namespace KwStudyFields {

namespace {
const KW_UOM& unitsOrSI(const KW_UOM* units)
{
    static const KW_UOM si(KW_UOM::SI);
    return units ? *units : si;
}
} // namespace

void Reader::Read(CKwUIBase& ui, int code, int unitKind, const KW_UOM* units, double& value)
{
    m_bad.remove(code);
    QString text;
    if (!ui.GetControlText(code, text))
        return;
    if (KwEntityLogic::ShowsUnchanged(text, KwEntityLogic::FormatShown(value, unitKind, units)))
        return;
    int status = KW_UOM::ParseOk;
    const double read = unitsOrSI(units).ParseQuantity(text, unitKind, &status);
    if (status == KW_UOM::ParseEmpty)
        value = MissingDouble;
    else if (status == KW_UOM::ParseOk)
        value = read;
    else
        m_bad.insert(code, text.trimmed());
}

QString Reader::Problem(int code, int unitKind, const KW_UOM* units, unsigned rule,
                        double value) const
{
    if (const auto it = m_bad.constFind(code); it != m_bad.constEnd())
        return unitsOrSI(units).GetErrorMessageForUnit(*it, unitKind);
    if (IsMissingValue(value))
        return (rule & Required) ? EnterValueText() : QString();
    if ((rule & Positive & ~Required) && !(value > 0.0))
        return PositiveText();
    if ((rule & NonNegative & ~Required) && !(value >= 0.0))
        return NonNegativeText();
    if ((rule & WholeNumber) && value != std::floor(value))
        return WholeNumberText();
    return QString();
}

QString EnterValueText()
{
    return KwUIText::err("AnalysisSetup", "EnterValue", "Enter a value.");
}
QString PositiveText()
{
    return KwUIText::err("AnalysisSetup", "MustBePositive", "Enter a value greater than zero.");
}
QString NonNegativeText()
{
    return KwUIText::err("AnalysisSetup", "MustNotBeNegative", "Enter zero or a larger value.");
}
QString WholeNumberText()
{
    return KwUIText::err("AnalysisSetup", "WholeNumber", "Enter a whole number.");
}

} // namespace KwStudyFields
