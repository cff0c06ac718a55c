#include "KW_UOM.h"

#include "CKwXMLUtils.h"
#include "KwNumbers.h"

#include <cmath>
#include <cstring>

namespace {

struct UnitRow
{
    int kind;
    // display = internal * scale + offset, per system SI, MMNS, IPS
    double scale[3];
    double offset[3];
    const char* label[3];
};

constexpr double kIn = 0.0254;       // m
constexpr double kLbf = 4.4482216152605; // N
constexpr double kPsi = kLbf / (kIn * kIn);
constexpr double kSlinch = kLbf / kIn; // lbf s^2 / in, in kg
constexpr double kPi = 3.14159265358979323846;

const UnitRow kRows[] = {
    {KwUnitKind::Stress, {1, 1e-6, 1 / kPsi}, {0, 0, 0}, {"Pa", "MPa", "psi"}},
    {KwUnitKind::Force, {1, 1, 1 / kLbf}, {0, 0, 0}, {"N", "N", "lbf"}},
    {KwUnitKind::Moment, {1, 1e3, 1 / (kLbf * kIn)}, {0, 0, 0}, {"N m", "N mm", "lbf in"}},
    {KwUnitKind::Pressure, {1, 1e-6, 1 / kPsi}, {0, 0, 0}, {"Pa", "MPa", "psi"}},
    {KwUnitKind::Length, {1, 1e3, 1 / kIn}, {0, 0, 0}, {"m", "mm", "in"}},
    {KwUnitKind::AreaMomentOfInertia, {1, 1e12, 1 / (kIn * kIn * kIn * kIn)}, {0, 0, 0},
     {"m^4", "mm^4", "in^4"}},
    {KwUnitKind::Area, {1, 1e6, 1 / (kIn * kIn)}, {0, 0, 0}, {"m^2", "mm^2", "in^2"}},
    {KwUnitKind::Volume, {1, 1e9, 1 / (kIn * kIn * kIn)}, {0, 0, 0}, {"m^3", "mm^3", "in^3"}},
    {KwUnitKind::Mass, {1, 1e-3, 1 / kSlinch}, {0, 0, 0}, {"kg", "t", "lbf s^2/in"}},
    {KwUnitKind::Density, {1, 1e-12, (kIn * kIn * kIn) / kSlinch}, {0, 0, 0},
     {"kg/m^3", "t/mm^3", "lbf s^2/in^4"}},
    // Internal kelvin; shown as kelvin, Celsius and Fahrenheit.
    {KwUnitKind::Temperature, {1, 1, 1.8}, {0, -273.15, -459.67}, {"K", "C", "F"}},
    {KwUnitKind::Time, {1, 1, 1}, {0, 0, 0}, {"s", "s", "s"}},
    {KwUnitKind::Frequency, {1, 1, 1}, {0, 0, 0}, {"Hz", "Hz", "Hz"}},
    {KwUnitKind::Velocity, {1, 1e3, 1 / kIn}, {0, 0, 0}, {"m/s", "mm/s", "in/s"}},
    {KwUnitKind::Acceleration, {1, 1e3, 1 / kIn}, {0, 0, 0}, {"m/s^2", "mm/s^2", "in/s^2"}},
    {KwUnitKind::Energy, {1, 1e3, 1 / (kLbf * kIn)}, {0, 0, 0}, {"J", "mJ", "lbf in"}},
    {KwUnitKind::Stiffness, {1, 1e-3, kIn / kLbf}, {0, 0, 0}, {"N/m", "N/mm", "lbf/in"}},
    // A quantity per kelvin is 1/1.8 of itself per degree Fahrenheit.
    {KwUnitKind::ThermalConductivity, {1, 1, 1 / (kLbf * 1.8)}, {0, 0, 0},
     {"W/(m K)", "mW/(mm C)", "lbf/(s F)"}},
    {KwUnitKind::ThermalExpansion, {1, 1, 1 / 1.8}, {0, 0, 0}, {"1/K", "1/C", "1/F"}},
    {KwUnitKind::Angle, {180 / kPi, 180 / kPi, 180 / kPi}, {0, 0, 0}, {"deg", "deg", "deg"}},
    {KwUnitKind::AngularVelocity, {1, 1, 1}, {0, 0, 0}, {"rad/s", "rad/s", "rad/s"}},
    {KwUnitKind::SpecificHeat, {1, 1e6, 1 / (kIn * kIn * 1.8)}, {0, 0, 0},
     {"J/(kg K)", "mm^2/(s^2 C)", "in^2/(s^2 F)"}},
    {KwUnitKind::HeatFlux, {1, 1e-3, kIn / kLbf}, {0, 0, 0}, {"W/m^2", "mW/mm^2", "lbf/(in s)"}},
    // W/(m^2 K) = N/(m s K); a temperature difference of 1 C is one of 1 K.
    {KwUnitKind::ConvectionCoefficient, {1, 1e-3, kIn / (kLbf * 1.8)}, {0, 0, 0},
     {"W/(m^2 K)", "mW/(mm^2 C)", "lbf/(in s F)"}},
    {KwUnitKind::Power, {1, 1e3, 1 / (kLbf * kIn)}, {0, 0, 0}, {"W", "mW", "lbf in/s"}},
    {KwUnitKind::AngularAcceleration, {1, 1, 1}, {0, 0, 0}, {"rad/s^2", "rad/s^2", "rad/s^2"}},
    {KwUnitKind::Compliance, {1, 1e6, kPsi}, {0, 0, 0}, {"1/Pa", "1/MPa", "1/psi"}},
    {KwUnitKind::MassMomentOfInertia, {1, 1e3, 1 / (kSlinch * kIn * kIn)}, {0, 0, 0},
     {"kg m^2", "t mm^2", "lbf s^2 in"}},
};

const UnitRow* findRow(int kind)
{
    for (const UnitRow& r : kRows)
        if (r.kind == kind)
            return &r;
    return nullptr;
}

} // namespace

KW_UOM::KW_UOM(System system) : m_system(system) {}

QString KW_UOM::GetSystemName(System system)
{
    switch (system) {
    case SI:
        return QStringLiteral("SI (m, N, Pa, kg, K)");
    case MMNS:
        return QStringLiteral("mm, N, MPa, t, C");
    case IPS:
        return QStringLiteral("in, lbf, psi, F");
    }
    return QString();
}

bool KW_UOM::IsKnownKind(int unitKind)
{
    return unitKind == KwUnitKind::Dimensionless || findRow(unitKind) != nullptr;
}

void KW_UOM::factor(int unitKind, double* scale, double* offset) const
{
    *scale = 1.0;
    *offset = 0.0;
    const UnitRow* r = findRow(unitKind);
    if (!r)
        return;
    const int s = static_cast<int>(m_system);
    *scale = r->scale[s];
    *offset = r->offset[s];
    if (unitKind == KwUnitKind::Angle && m_angleRadians)
        *scale = 1.0;
}

double KW_UOM::GetDisplayValue(double internalValue, int unitKind) const
{
    double scale = 1.0;
    double offset = 0.0;
    factor(unitKind, &scale, &offset);
    return internalValue * scale + offset;
}

double KW_UOM::ToInternalValue(double displayValue, int unitKind) const
{
    double scale = 1.0;
    double offset = 0.0;
    factor(unitKind, &scale, &offset);
    return (displayValue - offset) / scale;
}

bool KW_UOM::ReadInternalValue(const QString& text, int unitKind, double* internalValue) const
{
    if (!IsNumber(text))
        return false;
    const double v = ToInternalValue(KwAtof(text), unitKind);
    if (!std::isfinite(v) || IsMissingValue(v))
        return false;
    if (internalValue)
        *internalValue = v;
    return true;
}

QString KW_UOM::GetUnits(int unitKind) const
{
    const UnitRow* r = findRow(unitKind);
    if (unitKind == KwUnitKind::Angle && m_angleRadians)
        return QStringLiteral("rad");
    return r ? QString::fromLatin1(r->label[static_cast<int>(m_system)]) : QString();
}

QString KW_UOM::GetErrorMessageForUnit(int unitKind) const
{
    const QString units = GetUnits(unitKind);
    if (units.isEmpty())
        return QStringLiteral("Enter a number.");
    return QStringLiteral("Enter a number in %1.").arg(units);
}

QString KW_UOM::GetErrorMessageForUnit(const QString& text, int unitKind) const
{
    const QString units = GetUnits(unitKind);
    QString shown = text.left(40);
    if (shown.size() < text.size())
        shown += QStringLiteral("...");
    if (units.isEmpty())
        return CKwXMLUtils::GetInternationalErrorMessageItemText(
                   QStringLiteral("Units"), QStringLiteral("InvalidNumber"),
                   QStringLiteral("'%1' is not a valid number. Enter a number."))
            .arg(shown);
    return CKwXMLUtils::GetInternationalErrorMessageItemText(
               QStringLiteral("Units"), QStringLiteral("InvalidNumberInUnit"),
               QStringLiteral("'%1' is not a valid number. Enter a number in %2."))
        .arg(shown, units);
}

double KW_UOM::ParseQuantity(const QString& text, int unitKind, int* status,
                             QString* unitSeen) const
{
    int dummy = 0;
    int& st = status ? *status : dummy;
    QString body = text.trimmed();
    if (body.isEmpty()) {
        st = ParseEmpty;
        return MissingDouble;
    }
    if (const UnitRow* r = findRow(unitKind)) {
        // The longest label that ends the text: "MPa" before "Pa".
        const char* best = nullptr;
        for (const char* candidate : r->label) {
            const QString label = QString::fromLatin1(candidate);
            if (body.endsWith(label) &&
                (!best || label.size() > static_cast<int>(std::strlen(best))))
                best = candidate;
        }
        if (best) {
            const QString label = QString::fromLatin1(best);
            const QString number = body.left(body.size() - label.size());
            // Only a number before the label makes it a unit: "1e5 N mm" is, "N mm" alone is
            // not.
            if (IsNumber(number)) {
                if (label != QString::fromLatin1(r->label[static_cast<int>(m_system)])) {
                    if (unitSeen)
                        *unitSeen = label;
                    st = ParseWrongUnit;
                    return MissingDouble;
                }
                body = number;
            }
        }
    }
    if (!IsNumber(body)) {
        st = ParseNotNumber;
        return MissingDouble;
    }
    const double v = ToInternalValue(KwAtof(body), unitKind);
    // A value that lands exactly on the missing-value marker would read back as "unset" (in
    // mm-N-MPa, -1e24 MPa is -1e30 Pa), so it is refused like one that overflows.
    if (!std::isfinite(v) || IsMissingValue(v)) {
        st = ParseOutOfRange;
        return MissingDouble;
    }
    st = ParseOk;
    return v;
}
