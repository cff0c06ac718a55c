#include "KwMaterialKeys.h"

#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <array>

namespace {

struct Row
{
    const char* key;
    const char* label;
    const char* labelKey;
    const char* siUnit;
    int kind;
};

namespace U = KwUnitKind;

// Order is the table's order: the index is part of the editor's and the files' contract.
// Several keys share a label on purpose (D1-D5, MU1-MU3, ALPHA1-ALPHA3, A1-A6, the three
// Poisson's ratios); the label keys are the language files' spellings and stay as they are.
constexpr Row kRows[KwMaterialKeys::Count] = {
    {"EX", "Elastic Modulus", "LabelElasticModulus", "N/m2", U::Stress},
    {"NUXY", "Poisson's Ratio", "LabelPoissonRatio", "", U::Dimensionless},
    {"GXY", "Shear Modulus", "LabelShearModulus", "N/m2", U::Stress},
    {"DENS", "Mass Density", "LabelMassDensity", "kg/m3", U::Density},
    {"SIGXT", "Tensile Limit", "LabelTensileLimit", "N/m2", U::Stress},
    {"SIGXC", "Compressive Limit", "LabelCompressiveLimit", "N/m2", U::Stress},
    {"SIGYLD", "Shear Limit", "LabelShearLimit", "N/m2", U::Stress},
    {"ALPX", "Thermal Exp. Coeff.", "LabelThermalExpansionCoef", "/K", U::ThermalExpansion},
    {"KX", "Thermal Cond.", "LabelThermalConductivity", "W/m-K", U::ThermalConductivity},
    {"C", "Specific Heat", "LabelSpecificHeat", "J/kg-K", U::SpecificHeat},
    {"REFT", "Reference Temperature", "LabelReferenceTemperature", "K", U::Temperature},
    {"ET", "Tangent Modulus, Et", "LabelTangentModulus", "N/m2", U::Stress},
    {"YLDPNT", "Initial Yield Stress", "LabelInitialYieldStress", "N/m2", U::Stress},
    {"E1", "Longitudinal Modulus", "LabelLongitudinalModulus", "N/m2", U::Stress},
    {"E2", "Lateral Modulus", "LabelLateralModulus", "N/m2", U::Stress},
    {"G12", "In-Plane Shear Modulus", "LabelPlaneShearModulus", "N/m2", U::Stress},
    {"G1Z", "Longitudinal Transverse Shear Modulus", "LabelLongTransverseShearMod", "N/m2",
     U::Stress},
    {"G2Z", "Lateral Transverse Shear Modulus", "LabelLatTransverseShearMod", "N/m2",
     U::Stress},
    {"XT", "Longitudinal Tensile Failure Stress", "LabelLongTensileFailStress", "N/m2",
     U::Stress},
    {"YT", "Lateral Tensile Failure Stress", "LabelLatTensileFailStress", "N/m2", U::Stress},
    {"XC", "Longitudinal Compressive Failure Stress", "LabelLongCompressFailStress", "N/m2",
     U::Stress},
    {"YC", "Lateral Compressive Failure Stress", "LabelLatCompressFailStress", "N/m2",
     U::Stress},
    {"S", "Shear Failure Stress", "LabelShearFailStress", "N/m2", U::Stress},
    {"ALP1", "Longitudinal Thermal Exp. Coeff.", "LabelLongThermalExpansionCoef", "/K",
     U::ThermalExpansion},
    {"ALP2", "Lateral Thermal Exp. Coeff.", "LabelLatThermalExpansionCoef", "/K",
     U::ThermalExpansion},
    {"COHS", "2 * Cohesion", "Label2Cohesion", "N/m2", U::Stress},
    {"FANG", "Friction Angle", "LabelFrictionAngle", "Deg", U::Angle},
    {"GE", "Damping Coefficient", "LabelDampingCoefficient", "", U::Dimensionless},
    {"K11", "Thermal Conductivity 11", "LabelThermalConductivity11", "W/m-K",
     U::ThermalConductivity},
    {"K22", "Thermal Conductivity 22", "LabelThermalConductivity22", "W/m-K",
     U::ThermalConductivity},
    {"K33", "Thermal Conductivity 33", "LabelThermalConductivity33", "W/m-K",
     U::ThermalConductivity},
    {"K12", "Thermal Conductivity 12", "LabelThermalConductivity12", "W/m-K",
     U::ThermalConductivity},
    {"K13", "Thermal Conductivity 13", "LabelThermalConductivity13", "W/m-K",
     U::ThermalConductivity},
    {"K23", "Thermal Conductivity 23", "LabelThermalConductivity23", "W/m-K",
     U::ThermalConductivity},
    {"D1", "Volumetric Deformation Constants", "LabelVolumetricDeformationConstants", "m2/N",
     U::Compliance},
    {"D2", "Volumetric Deformation Constants", "LabelVolumetricDeformationConstants", "m2/N",
     U::Compliance},
    {"D3", "Volumetric Deformation Constants", "LabelVolumetricDeformationConstants", "m2/N",
     U::Compliance},
    {"D4", "Volumetric Deformation Constants", "LabelVolumetricDeformationConstants", "m2/N",
     U::Compliance},
    {"D5", "Volumetric Deformation Constants", "LabelVolumetricDeformationConstants", "m2/N",
     U::Compliance},
    {"NA", "Distortional Strain Energy Polynomial Order",
     "LabelDistortionalStrainEnergyPolinomialOrder", "", U::Dimensionless},
    {"ND", "Volumetric Strain Energy Polynomial Order",
     "LabelVolumetricStrainEnergyPolinomialOrder", "", U::Dimensionless},
    {"MU1", "Shear Modulus related to distortional deformation",
     "LabelShearModuliirelatedtodistortionaldeformation", "N/m2", U::Stress},
    {"MU2", "Shear Modulus related to distortional deformation",
     "LabelShearModuliirelatedtodistortionaldeformation", "N/m2", U::Stress},
    {"MU3", "Shear Modulus related to distortional deformation",
     "LabelShearModuliirelatedtodistortionaldeformation", "N/m2", U::Stress},
    {"ALPHA1", "Exponent related to distortional deformation",
     "LabelExponentrelatedtodistortionaldeformation", "", U::Dimensionless},
    {"ALPHA2", "Exponent related to distortional deformation",
     "LabelExponentrelatedtodistortionaldeformation", "", U::Dimensionless},
    {"ALPHA3", "Exponent related to distortional deformation",
     "LabelExponentrelatedtodistortionaldeformation", "", U::Dimensionless},
    {"A1", "Thermal expansion coefficient", "LabelThermalexpansioncoefficient", "/K",
     U::ThermalExpansion},
    {"A2", "Thermal expansion coefficient", "LabelThermalexpansioncoefficient", "/K",
     U::ThermalExpansion},
    {"A3", "Thermal expansion coefficient", "LabelThermalexpansioncoefficient", "/K",
     U::ThermalExpansion},
    {"A4", "Thermal expansion coefficient", "LabelThermalexpansioncoefficient", "/K",
     U::ThermalExpansion},
    {"A5", "Thermal expansion coefficient", "LabelThermalexpansioncoefficient", "/K",
     U::ThermalExpansion},
    {"A6", "Thermal expansion coefficient", "LabelThermalexpansioncoefficient", "/K",
     U::ThermalExpansion},
    {"E3", "Thickness Modulus", "LabelThicknessModulus", "N/m2", U::Stress},
    {"NUYZ", "Poisson's Ratio", "LabelPoissonRatio", "", U::Dimensionless},
    {"NUXZ", "Poisson's Ratio", "LabelPoissonRatio", "", U::Dimensionless},
    {"ALP3", "Thickness Thermal expansion coefficient",
     "LabelThicknessThermalexpansioncoefficient", "/K", U::ThermalExpansion},
    {"ZT", "Thickness Tensile Failure Stress", "LabelThicknessTensileFailureStress", "N/m2",
     U::Stress},
    {"ZC", "Thickness Compressive Failure Stress", "LabelThicknessCompressiveFailureStress",
     "N/m2", U::Stress},
    {"S12", "Longitudinal Shear Failure Stress", "LabelLongitudinalShearFailureStress", "N/m2",
     U::Stress},
    {"S23", "Lateral Shear Failure Stress", "LabelLateralShearFailureStress", "N/m2",
     U::Stress},
    {"S13", "Thickness Shear Failure Stress", "LabelThicknessShearFailureStress", "N/m2",
     U::Stress},
    {"F12", "Interaction Term in XY plane", "LabelInteractionTerminXYplane", "",
     U::Dimensionless},
    {"F23", "Interaction Term in YZ plane", "LabelInteractionTerminYZplane", "",
     U::Dimensionless},
    {"F13", "Interaction Term in ZX plane", "LabelInteractionTerminZXplane", "",
     U::Dimensionless},
    {"SIGXY", "Yield Limit", "LabelYieldLimit", "N/m2", U::Stress},
};

// The start-up lists as strings, built once when the library is loaded.
struct Table
{
    QStringList startup;
    std::array<QString, KwMaterialKeys::Count> keys, labels, labelKeys, units;
    Table()
    {
        startup << QStringLiteral("UVar") << QStringLiteral("IVar") << QStringLiteral("DVar")
                << QStringLiteral("EVar");
        for (int i = 0; i < KwMaterialKeys::Count; ++i) {
            keys[i] = QString::fromLatin1(kRows[i].key);
            labels[i] = QString::fromUtf8(kRows[i].label);
            labelKeys[i] = QString::fromLatin1(kRows[i].labelKey);
            units[i] = QString::fromLatin1(kRows[i].siUnit);
            startup << keys[i];
        }
    }
};

const Table& table()
{
    static const Table t;
    return t;
}

// Touch the table at load time so that it exists before the first dialog asks for it.
[[maybe_unused]] const Table& kBuiltAtLoad = table();

bool valid(int i) { return i >= 0 && i < KwMaterialKeys::Count; }

} // namespace

namespace KwMaterialKeys {

const QStringList& StartupKeys() { return table().startup; }
QString Key(int i) { return valid(i) ? table().keys[i] : QString(); }
QString DefaultLabel(int i) { return valid(i) ? table().labels[i] : QString(); }
QString LabelKey(int i) { return valid(i) ? table().labelKeys[i] : QString(); }
QString SIUnit(int i) { return valid(i) ? table().units[i] : QString(); }
int UnitKind(int i) { return valid(i) ? kRows[i].kind : KwUnitKind::Dimensionless; }

int IndexOf(const QString& key)
{
    const auto& keys = table().keys;
    for (int i = 0; i < Count; ++i)
        if (keys[i] == key)
            return i;
    return -1;
}

QString Label(int i)
{
    if (!valid(i))
        return QString();
    return CKwXMLUtils::GetInternationalPropPageItemText(QStringLiteral("Materials"),
                                                         table().labelKeys[i],
                                                         table().labels[i]);
}

QString UnitLabel(int i, const KW_UOM* units)
{
    if (!valid(i))
        return QString();
    const int kind = kRows[i].kind;
    if (units && kind != KwUnitKind::Dimensionless && KW_UOM::IsKnownKind(kind))
        return units->GetUnits(kind);
    return table().units[i];
}

QString FormatValue(double value, int unitKind, const KW_UOM* units)
{
    if (IsMissingValue(value))
        return QString();
    // Without a unit system the value is shown in SI (angles in degrees, as labelled).
    static const KW_UOM si(KW_UOM::SI);
    const double shown = (units ? units : &si)->GetDisplayValue(value, unitKind);
    return QString::asprintf(ValueFormat, shown);
}

} // namespace KwMaterialKeys
