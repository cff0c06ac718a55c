#include "KW_UOM.h"

#include "CKwXMLUtils.h"
#include "KwNumbers.h"

#include <cmath>

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

// Labels as an engineer writes them (mm², °C, N·m). Typed values may carry either these or the
// plain keyboard forms (mm^2, C, N mm), which `KeyboardForm` derives.
const UnitRow kRows[] = {
    {KwUnitKind::Stress, {1, 1e-6, 1 / kPsi}, {0, 0, 0}, {"Pa", "MPa", "psi"}},
    {KwUnitKind::Force, {1, 1, 1 / kLbf}, {0, 0, 0}, {"N", "N", "lbf"}},
    {KwUnitKind::Moment, {1, 1e3, 1 / (kLbf * kIn)}, {0, 0, 0}, {"N·m", "N·mm", "lbf·in"}},
    {KwUnitKind::Pressure, {1, 1e-6, 1 / kPsi}, {0, 0, 0}, {"Pa", "MPa", "psi"}},
    {KwUnitKind::Length, {1, 1e3, 1 / kIn}, {0, 0, 0}, {"m", "mm", "in"}},
    {KwUnitKind::AreaMomentOfInertia, {1, 1e12, 1 / (kIn * kIn * kIn * kIn)}, {0, 0, 0},
     {"m⁴", "mm⁴", "in⁴"}},
    {KwUnitKind::Area, {1, 1e6, 1 / (kIn * kIn)}, {0, 0, 0}, {"m²", "mm²", "in²"}},
    {KwUnitKind::Volume, {1, 1e9, 1 / (kIn * kIn * kIn)}, {0, 0, 0}, {"m³", "mm³", "in³"}},
    {KwUnitKind::Mass, {1, 1e-3, 1 / kSlinch}, {0, 0, 0}, {"kg", "t", "lbf·s²/in"}},
    {KwUnitKind::Density, {1, 1e-12, (kIn * kIn * kIn) / kSlinch}, {0, 0, 0},
     {"kg/m³", "t/mm³", "lbf·s²/in⁴"}},
    // Internal kelvin; shown as kelvin, Celsius and Fahrenheit.
    {KwUnitKind::Temperature, {1, 1, 1.8}, {0, -273.15, -459.67}, {"K", "°C", "°F"}},
    {KwUnitKind::Time, {1, 1, 1}, {0, 0, 0}, {"s", "s", "s"}},
    {KwUnitKind::Frequency, {1, 1, 1}, {0, 0, 0}, {"Hz", "Hz", "Hz"}},
    {KwUnitKind::Velocity, {1, 1e3, 1 / kIn}, {0, 0, 0}, {"m/s", "mm/s", "in/s"}},
    {KwUnitKind::Acceleration, {1, 1e3, 1 / kIn}, {0, 0, 0}, {"m/s²", "mm/s²", "in/s²"}},
    {KwUnitKind::Energy, {1, 1e3, 1 / (kLbf * kIn)}, {0, 0, 0}, {"J", "mJ", "lbf·in"}},
    {KwUnitKind::Stiffness, {1, 1e-3, kIn / kLbf}, {0, 0, 0}, {"N/m", "N/mm", "lbf/in"}},
    // A quantity per kelvin is 1/1.8 of itself per degree Fahrenheit.
    {KwUnitKind::ThermalConductivity, {1, 1, 1 / (kLbf * 1.8)}, {0, 0, 0},
     {"W/(m·K)", "mW/(mm·°C)", "lbf/(s·°F)"}},
    {KwUnitKind::ThermalExpansion, {1, 1, 1 / 1.8}, {0, 0, 0}, {"1/K", "1/°C", "1/°F"}},
    {KwUnitKind::Angle, {180 / kPi, 180 / kPi, 180 / kPi}, {0, 0, 0}, {"°", "°", "°"}},
    {KwUnitKind::AngularVelocity, {1, 1, 1}, {0, 0, 0}, {"rad/s", "rad/s", "rad/s"}},
    {KwUnitKind::SpecificHeat, {1, 1e6, 1 / (kIn * kIn * 1.8)}, {0, 0, 0},
     {"J/(kg·K)", "mm²/(s²·°C)", "in²/(s²·°F)"}},
    {KwUnitKind::HeatFlux, {1, 1e-3, kIn / kLbf}, {0, 0, 0}, {"W/m²", "mW/mm²", "lbf/(in·s)"}},
    // W/(m² K) = N/(m s K); a temperature difference of 1 °C is one of 1 K.
    {KwUnitKind::ConvectionCoefficient, {1, 1e-3, kIn / (kLbf * 1.8)}, {0, 0, 0},
     {"W/(m²·K)", "mW/(mm²·°C)", "lbf/(in·s·°F)"}},
    {KwUnitKind::Power, {1, 1e3, 1 / (kLbf * kIn)}, {0, 0, 0}, {"W", "mW", "lbf·in/s"}},
    {KwUnitKind::AngularAcceleration, {1, 1, 1}, {0, 0, 0}, {"rad/s²", "rad/s²", "rad/s²"}},
    {KwUnitKind::Compliance, {1, 1e6, kPsi}, {0, 0, 0}, {"1/Pa", "1/MPa", "1/psi"}},
    {KwUnitKind::MassMomentOfInertia, {1, 1e3, 1 / (kSlinch * kIn * kIn)}, {0, 0, 0},
     {"kg·m²", "t·mm²", "lbf·s²·in"}},
};

QString label(const char* utf8) { return QString::fromUtf8(utf8); }

const UnitRow* findRow(int kind)
{
    for (const UnitRow& r : kRows)
        if (r.kind == kind)
            return &r;
    return nullptr;
}

} // namespace

QString KW_UOM::KeyboardForm(const QString& typographic)
{
    if (typographic == QString(QChar(0x00B0)))
        return QStringLiteral("deg");
    QString s = typographic;
    s.replace(QChar(0x00B2), QStringLiteral("^2"));
    s.replace(QChar(0x00B3), QStringLiteral("^3"));
    s.replace(QChar(0x2074), QStringLiteral("^4"));
    s.replace(QChar(0x00B7), QLatin1Char(' '));
    s.remove(QChar(0x00B0));
    return s;
}

KW_UOM::KW_UOM(System system) : m_system(system) {}

QString KW_UOM::GetSystemName(System system)
{
    switch (system) {
    case SI:
        return QStringLiteral("SI (m, N, Pa, kg, K)");
    case MMNS:
        return QString::fromUtf8("mm, N, MPa, t, °C");
    case IPS:
        return QString::fromUtf8("in, lbf, psi, °F");
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
    return r ? label(r->label[static_cast<int>(m_system)]) : QString();
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
        // The longest label that ends the text ("MPa" before "Pa"), in either its typographic
        // or its keyboard form; a label of another unit system is named back as shown.
        int bestSystem = -1;
        int bestLength = 0;
        for (int system = 0; system < 3; ++system) {
            const QString shown = label(r->label[system]);
            for (const QString& form : {shown, KeyboardForm(shown)}) {
                if (form.size() > bestLength && body.endsWith(form)) {
                    bestSystem = system;
                    bestLength = static_cast<int>(form.size());
                }
            }
        }
        if (bestSystem >= 0) {
            const QString number = body.left(body.size() - bestLength);
            // Only a number before the label makes it a unit: "1e5 N mm" is, "N mm" alone is
            // not.
            if (IsNumber(number)) {
                const QString wanted = label(r->label[static_cast<int>(m_system)]);
                const QString seen = label(r->label[bestSystem]);
                if (seen != wanted) {
                    if (unitSeen)
                        *unitSeen = seen;
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
