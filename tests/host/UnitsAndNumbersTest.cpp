// The reference host's unit systems and number parsing.
#include "CFMView.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <QString>
#include <cmath>
#include <gtest/gtest.h>

namespace {
const int kAllKinds[] = {KwUnitKind::Stress,   KwUnitKind::Force,
                         KwUnitKind::Moment,   KwUnitKind::Pressure,
                         KwUnitKind::Length,   KwUnitKind::AreaMomentOfInertia,
                         KwUnitKind::Area,     KwUnitKind::Volume,
                         KwUnitKind::Mass,     KwUnitKind::Density,
                         KwUnitKind::Temperature, KwUnitKind::Time,
                         KwUnitKind::Frequency, KwUnitKind::Velocity,
                         KwUnitKind::Acceleration, KwUnitKind::Energy,
                         KwUnitKind::Stiffness, KwUnitKind::ThermalConductivity,
                         KwUnitKind::ThermalExpansion, KwUnitKind::Angle,
                         KwUnitKind::AngularVelocity, KwUnitKind::SpecificHeat,
                         KwUnitKind::HeatFlux, KwUnitKind::ConvectionCoefficient,
                         KwUnitKind::Power, KwUnitKind::AngularAcceleration,
                         KwUnitKind::Compliance,
                         KwUnitKind::Dimensionless};
} // namespace

TEST(Units, knownValuesConvertCorrectly)
{
    const struct
    {
        KW_UOM::System system;
        int kind;
        double internal;
        double shown;
        const char* label;
    } cases[] = {
        {KW_UOM::MMNS, KwUnitKind::Length, 0.0254, 25.4, "mm"},
        {KW_UOM::IPS, KwUnitKind::Length, 0.0254, 1.0, "in"},
        {KW_UOM::MMNS, KwUnitKind::Stress, 2.0e11, 2.0e5, "MPa"},
        {KW_UOM::IPS, KwUnitKind::Stress, 6894.757293168, 1.0, "psi"},
        {KW_UOM::IPS, KwUnitKind::Force, 4.4482216152605, 1.0, "lbf"},
        {KW_UOM::MMNS, KwUnitKind::AreaMomentOfInertia, 1e-8, 1e4, "mm⁴"},
        {KW_UOM::MMNS, KwUnitKind::Area, 1e-4, 100.0, "mm²"},
        {KW_UOM::MMNS, KwUnitKind::Density, 7900.0, 7.9e-9, "t/mm³"},
        {KW_UOM::MMNS, KwUnitKind::Mass, 1000.0, 1.0, "t"},
        {KW_UOM::MMNS, KwUnitKind::Moment, 1.0, 1000.0, "N·mm"},
        {KW_UOM::IPS, KwUnitKind::Density, 1.0, 1.0 / 10686895.178201316, "lbf·s²/in⁴"},
        {KW_UOM::SI, KwUnitKind::ThermalConductivity, 50.0, 50.0, "W/(m·K)"},
        {KW_UOM::SI, KwUnitKind::Temperature, 300.0, 300.0, "K"},
        {KW_UOM::MMNS, KwUnitKind::Temperature, 273.15, 0.0, "°C"},
        {KW_UOM::IPS, KwUnitKind::Temperature, 273.15, 32.0, "°F"},
        {KW_UOM::IPS, KwUnitKind::Temperature, 373.15, 212.0, "°F"},
        {KW_UOM::SI, KwUnitKind::Angle, 3.14159265358979, 180.0, "°"},
        {KW_UOM::MMNS, KwUnitKind::Dimensionless, 0.3, 0.3, ""},
        // A compliance is the inverse of a stress: 1e-9 m^2/N is 1e-3 per MPa.
        {KW_UOM::MMNS, KwUnitKind::Compliance, 1e-9, 1e-3, "1/MPa"},
        {KW_UOM::IPS, KwUnitKind::Compliance, 1 / 6894.757293168, 1.0, "1/psi"},
    };
    for (const auto& c : cases) {
        KW_UOM u(c.system);
        EXPECT_NEAR(u.GetDisplayValue(c.internal, c.kind), c.shown, 1e-9 * std::abs(c.shown) + 1e-12)
            << c.label;
        EXPECT_NEAR(u.ToInternalValue(c.shown, c.kind), c.internal,
                    1e-9 * std::abs(c.internal) + 1e-12)
            << c.label;
        EXPECT_EQ(u.GetUnits(c.kind), QString::fromUtf8(c.label));
    }
}

TEST(Units, everyKindRoundTripsInEverySystem)
{
    for (KW_UOM::System s : {KW_UOM::SI, KW_UOM::MMNS, KW_UOM::IPS}) {
        KW_UOM u(s);
        for (int kind : kAllKinds) {
            EXPECT_TRUE(KW_UOM::IsKnownKind(kind));
            for (double v : {-123.456, 0.0, 1e-6, 987654.321}) {
                const double back = u.ToInternalValue(u.GetDisplayValue(v, kind), kind);
                EXPECT_NEAR(back, v, 1e-9 * std::abs(v) + 1e-9) << "system " << s << " kind " << kind;
            }
            if (kind != KwUnitKind::Dimensionless) {
                EXPECT_FALSE(u.GetUnits(kind).isEmpty()) << kind;
            }
        }
    }
}

TEST(Units, unknownKindsPassUnchanged)
{
    KW_UOM u(KW_UOM::IPS);
    for (int kind : {0, 99, -7, 1000000}) {
        EXPECT_FALSE(KW_UOM::IsKnownKind(kind));
        EXPECT_EQ(u.GetDisplayValue(12.5, kind), 12.5);
        EXPECT_EQ(u.ToInternalValue(12.5, kind), 12.5);
        EXPECT_TRUE(u.GetUnits(kind).isEmpty());
    }
    EXPECT_EQ(u.GetErrorMessageForUnit(KwUnitKind::Length), QStringLiteral("Enter a number in in."));
    EXPECT_EQ(u.GetErrorMessageForUnit(99), QStringLiteral("Enter a number."));
}

TEST(Numbers, isNumberAcceptsWholeFiniteDecimalsOnly)
{
    const struct
    {
        const char* text;
        bool number;
    } cases[] = {{"1", true},        {" -2.5 ", true},  {".5", true},      {"5.", true},
                 {"1e3", true},      {"1E-3", true},    {"+7", true},      {"\t42\n", true},
                 {"", false},        {"   ", false},    {"1.2.3", false},  {"3x", false},
                 {"x3", false},      {"nan", false},    {"inf", false},    {"-inf", false},
                 {"1e", false},      {"e5", false},     {".", false},      {"-", false},
                 {"1 2", false},     {"1e999", false},  {"0x10", false},   {"1,5", false}};
    for (const auto& c : cases)
        EXPECT_EQ(IsNumber(QString::fromLatin1(c.text)), c.number) << '"' << c.text << '"';
}

TEST(Numbers, atofReadsTheLeadingNumber)
{
    const struct
    {
        const char* text;
        double value;
    } cases[] = {{"12.5abc", 12.5}, {"  -3e2x", -300.0}, {"abc", 0.0}, {"", 0.0},
                 {"1e", 1.0},       {".25", 0.25},       {"7,5", 7.0}};
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(KwAtof(QString::fromLatin1(c.text)), c.value) << c.text;
}

TEST(Numbers, viewParsesFieldsIntoValuesOrMissing)
{
    EXPECT_EQ(CFMView::GetIntegerFromString(QStringLiteral(" 42 ")), 42);
    EXPECT_EQ(CFMView::GetIntegerFromString(QStringLiteral("-7")), -7);
    for (const char* bad : {"", "4.5", "12a", "99999999999", "nan"})
        EXPECT_TRUE(IsMissingValue(CFMView::GetIntegerFromString(QString::fromLatin1(bad)))) << bad;

    KW_UOM mm(KW_UOM::MMNS);
    EXPECT_DOUBLE_EQ(CFMView::GetDoubleFromString(&mm, QStringLiteral("25.4"),
                                                  KwUnitKind::Length, 0),
                     25.4);
    EXPECT_NEAR(CFMView::GetDoubleFromString(&mm, QStringLiteral("25.4"), KwUnitKind::Length, 1),
                0.0254, 1e-15);
    EXPECT_DOUBLE_EQ(CFMView::GetDoubleFromString(nullptr, QStringLiteral("3"),
                                                  KwUnitKind::Length, 1),
                     3.0);
    EXPECT_TRUE(IsMissingValue(
        CFMView::GetDoubleFromString(&mm, QStringLiteral("inf"), KwUnitKind::Length, 0)));
    // Finite as typed, infinite once converted: no value, never infinity in the model.
    EXPECT_TRUE(IsMissingValue(
        CFMView::GetDoubleFromString(&mm, QStringLiteral("1e300"), KwUnitKind::Density, 1)));
    EXPECT_TRUE(IsMissingValue(
        CFMView::GetDoubleFromString(&mm, QStringLiteral("-1e303"), KwUnitKind::Stress, 1)));
    EXPECT_DOUBLE_EQ(
        CFMView::GetDoubleFromString(&mm, QStringLiteral("1e300"), KwUnitKind::Density, 0), 1e300);
}

// A typed number whose internal value is exactly the missing-value marker would be stored as
// "unset" while the field said it was read; one that overflows would store infinity. Both are
// refused as out of range, in every kind and system.
TEST(Units, parseRefusesValuesLandingOnTheMarkerOrBeyondTheFiniteRange)
{
    const struct
    {
        KW_UOM::System system;
        int kind;
        const char* text;
        int status;
    } cases[] = {
        // -1e24 MPa is -1e30 Pa: the marker itself.
        {KW_UOM::MMNS, KwUnitKind::Stress, "-1e24", KW_UOM::ParseOutOfRange},
        {KW_UOM::MMNS, KwUnitKind::Pressure, "-1e24 MPa", KW_UOM::ParseOutOfRange},
        {KW_UOM::SI, KwUnitKind::Force, "-1e30", KW_UOM::ParseOutOfRange},
        {KW_UOM::SI, KwUnitKind::Dimensionless, "-1e30", KW_UOM::ParseOutOfRange},
        // Next to the marker is an ordinary value.
        {KW_UOM::MMNS, KwUnitKind::Stress, "-1.0000001e24", KW_UOM::ParseOk},
        {KW_UOM::SI, KwUnitKind::Force, "1e30", KW_UOM::ParseOk},
        // Finite as typed, infinite inside.
        {KW_UOM::MMNS, KwUnitKind::Density, "1e300", KW_UOM::ParseOutOfRange},
        {KW_UOM::MMNS, KwUnitKind::Stress, "-1e303 MPa", KW_UOM::ParseOutOfRange},
        {KW_UOM::IPS, KwUnitKind::Mass, "1e305", KW_UOM::ParseOk},
        {KW_UOM::IPS, KwUnitKind::Mass, "1.1e306", KW_UOM::ParseOutOfRange},
    };
    for (const auto& c : cases) {
        int status = -1;
        const double v =
            KW_UOM(c.system).ParseQuantity(QString::fromLatin1(c.text), c.kind, &status);
        EXPECT_EQ(status, c.status) << c.text << " kind " << c.kind;
        EXPECT_EQ(IsMissingValue(v), c.status != KW_UOM::ParseOk) << c.text;
        // The editors' reader of plain numbers draws the same line (a unit label is no number).
        double read = 0;
        EXPECT_EQ(KW_UOM(c.system).ReadInternalValue(QString::fromLatin1(c.text), c.kind, &read),
                  c.status == KW_UOM::ParseOk)
            << c.text;
        if (c.status == KW_UOM::ParseOk) {
            EXPECT_EQ(read, v) << c.text;
        }
    }

    // Every kind in every system: the text that shows the marker never reads as a value that
    // is the marker.
    int landed = 0;
    for (KW_UOM::System s : {KW_UOM::SI, KW_UOM::MMNS, KW_UOM::IPS}) {
        const KW_UOM u(s);
        for (int kind : kAllKinds) {
            const double shown = u.GetDisplayValue(MissingDouble, kind);
            for (const QString& text : {QString::number(shown, 'g', 17),
                                        QString::number(shown, 'g', 17) + QStringLiteral("  ") + u.GetUnits(kind)}) {
                if (IsMissingValue(u.ToInternalValue(KwAtof(text), kind)))
                    ++landed;
                int status = -1;
                const double v = u.ParseQuantity(text, kind, &status);
                EXPECT_EQ(status == KW_UOM::ParseOk, !IsMissingValue(v))
                    << qPrintable(text) << " system " << s << " kind " << kind;
                EXPECT_TRUE(std::isfinite(v));
            }
        }
    }
    // The sweep above is only worth something if the marker's own text reads back onto it.
    EXPECT_GT(landed, 20);
}
