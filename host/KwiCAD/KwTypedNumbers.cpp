#include "KwTypedNumbers.h"

namespace KwTypedNumbers {

const KW_UOM& UnitsOf(const CFMView* view)
{
    static const KW_UOM si(KW_UOM::SI);
    const KW_UOM* units = view ? view->GetUnitHolder() : nullptr;
    return units ? *units : si;
}

QString Shown(double internal, int unitKind, const KW_UOM& units)
{
    return KwEntityLogic::FormatShown(internal, unitKind, &units);
}

bool Read(const QString& text, double& stored, int unitKind, const KW_UOM& units)
{
    const QString t = text.trimmed();
    if (KwEntityLogic::ShowsUnchanged(t, Shown(stored, unitKind, units)))
        return true;
    if (t.isEmpty()) {
        stored = MissingDouble;
        return true;
    }
    double v = MissingDouble;
    if (!units.ReadInternalValue(t, unitKind, &v))
        return false;
    stored = v;
    return true;
}

bool ReadCount(const QString& text, int& stored)
{
    const QString t = text.trimmed();
    if (t.isEmpty()) {
        stored = 0;
        return true;
    }
    bool ok = false;
    const int v = t.toInt(&ok);
    if (!ok)
        return false;
    stored = v;
    return true;
}

} // namespace KwTypedNumbers
