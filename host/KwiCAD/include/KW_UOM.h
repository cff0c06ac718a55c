#pragma once
// Unit system of the model. Values are stored internally in SI (metre, newton, pascal,
// kilogram, kelvin, second, radian); a unit system converts them to and from what the user
// sees. Unit kinds are small integers shared with the dialogs.
#include "KwiCADExport.h"

#include <QString>

namespace KwUnitKind {
enum : int {
    Dimensionless = -1,
    Stress = 1,
    Force = 2,
    Moment = 3,
    Pressure = 4,
    Length = 5,
    AreaMomentOfInertia = 6,
    Area = 7,
    Volume = 8,
    Mass = 9,
    Density = 10,
    Temperature = 11,
    Time = 12,
    Frequency = 13,
    Velocity = 14,
    Acceleration = 15,
    Energy = 16,
    Stiffness = 17,
    ThermalConductivity = 18,
    ThermalExpansion = 19,
    Angle = 20,
    AngularVelocity = 21,
    SpecificHeat = 22,
    HeatFlux = 23,
    ConvectionCoefficient = 24,
    Power = 25,
    AngularAcceleration = 26,
    // Strain per stress: the volumetric constants of hyperelastic materials.
    Compliance = 27,
    // Mass times length squared: the moments of inertia of a concentrated mass.
    MassMomentOfInertia = 28,
};
}

class KWICAD_EXPORT KW_UOM
{
public:
    enum System { SI = 0, MMNS = 1, IPS = 2 };

    explicit KW_UOM(System system = SI);
    System GetSystem() const { return m_system; }
    void SetSystem(System system) { m_system = system; }
    // Angles are shown in degrees unless the user asks for radians, in every system.
    void SetAngleInRadians(bool radians) { m_angleRadians = radians; }
    bool IsAngleInRadians() const { return m_angleRadians; }
    // "SI (m, N, Pa)" and so on.
    static QString GetSystemName(System system);

    // Internal (SI) value to the value shown in this system; unknown kinds pass unchanged.
    double GetDisplayValue(double internalValue, int unitKind) const;
    // Shown value back to the internal value.
    double ToInternalValue(double displayValue, int unitKind) const;
    // A typed number (no unit label) to its internal value. False when the text is no number or
    // its internal value is not finite or is the missing-value marker, which would read back as
    // unset: such a value is refused like a text that is no number.
    bool ReadInternalValue(const QString& text, int unitKind, double* internalValue) const;
    // Unit label of a kind in this system, as an engineer writes it ("mm", "MPa", "mm²", "°C",
    // "N·mm"); empty for dimensionless and unknown kinds.
    QString GetUnits(int unitKind) const;
    // The keyboard form of a unit label: superscripts as "^2", the middle dot as a blank, "°C"
    // as "C", the degree sign alone as "deg" ("mm²" to "mm^2"). Files are written with it.
    static QString KeyboardForm(const QString& label);
    // A message telling the user which unit a field expects.
    QString GetErrorMessageForUnit(int unitKind) const;
    // The message for a text a field of this kind cannot take, naming the text and the unit
    // expected (language section "Units").
    QString GetErrorMessageForUnit(const QString& text, int unitKind) const;
    // True for the kinds this class converts.
    static bool IsKnownKind(int unitKind);

    // How ParseQuantity read a field.
    enum ParseStatus { ParseOk = 0, ParseEmpty = 1, ParseNotNumber = 2, ParseWrongUnit = 3,
                       ParseOutOfRange = 4 };
    // Reads a typed quantity: a number, optionally followed by this system's unit label of the
    // kind ("12.5", "12.5 MPa" in mm-N-MPa). A label of another system ("3 lbf" here) is
    // ParseWrongUnit with that label in *unitSeen, so the user is told instead of the number
    // being taken in the wrong unit. A number whose internal value is not finite, or is exactly
    // MissingDouble, is ParseOutOfRange. Returns the internal value, or MissingDouble when the status is not
    // ParseOk.
    double ParseQuantity(const QString& text, int unitKind, int* status,
                         QString* unitSeen = nullptr) const;

private:
    // display = internal * scale + offset
    void factor(int unitKind, double* scale, double* offset) const;
    System m_system;
    bool m_angleRadians = false;
};
