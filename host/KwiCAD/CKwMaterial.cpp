#include "CKwMaterial.h"

#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <cmath>

namespace K = KwMaterialKeys;

namespace {

struct ExtraRow
{
    const char* key;
    int kind;
};

// File and value-interface spelling of the values outside the shared table.
constexpr ExtraRow kExtras[CKwMaterial::ExtraCount] = {
    {"A10", KwUnitKind::Stress},  {"A01", KwUnitKind::Stress},
    {"A20", KwUnitKind::Stress},  {"A11", KwUnitKind::Stress},
    {"A02", KwUnitKind::Stress},  {"A30", KwUnitKind::Stress},
    {"A21", KwUnitKind::Stress},  {"A12", KwUnitKind::Stress},
    {"A03", KwUnitKind::Stress},  {"SHIFT", KwUnitKind::Dimensionless},
    {"FPC", KwUnitKind::Stress},  {"CYM", KwUnitKind::Stress},
    {"SAS", KwUnitKind::Stress},  {"FAS", KwUnitKind::Stress},
    {"SSA", KwUnitKind::Stress},  {"FSA", KwUnitKind::Stress},
    {"EPSL", KwUnitKind::Dimensionless}, {"EM", KwUnitKind::Stress},
};

constexpr const char* kTypeNames[CKwMaterial::TypeCount] = {
    "Isotropic",    "Orthotropic2D", "Orthotropic3D", "Anisotropic3D", "Hyperelastic",
    "Nitinol",      "Viscoelastic",  "CrushableFoam", "Rigid",         "Concrete"};

constexpr const char* kCurveNames[CKwMaterial::CurveCount] = {
    "StressStrain", "SimpleTension", "EquibiaxialTension", "SimpleShear",
    "PureVolumetricCompression", "PureShear", "ConductivityVsTemperature"};

// Values that only make sense above zero: moduli, heat capacity.
bool mustBePositive(int i)
{
    switch (i) {
    case K::EX: case K::GXY: case K::E1: case K::E2: case K::E3: case K::G12: case K::G1Z:
    case K::G2Z: case K::C:
        return true;
    default:
        return false;
    }
}

// Values that may be zero but never below: density, conductivity, strengths, damping.
bool mustNotBeNegative(int i)
{
    switch (i) {
    case K::DENS: case K::KX: case K::K11: case K::K22: case K::K33: case K::SIGXT:
    case K::SIGXC: case K::SIGYLD: case K::SIGXY: case K::YLDPNT: case K::ET: case K::XT:
    case K::YT: case K::XC: case K::YC: case K::S: case K::ZT: case K::ZC: case K::S12:
    case K::S23: case K::S13: case K::GE: case K::COHS: case K::REFT: case K::NA: case K::ND:
        return true;
    default:
        return false;
    }
}

bool isPoisson(int i) { return i == K::NUXY || i == K::NUYZ || i == K::NUXZ; }

QString err(const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalErrorMessageItemText(
        QStringLiteral("Materials"), QString::fromLatin1(key), QString::fromUtf8(english));
}

// Magnitudes beyond this are not material data (and would collide with the missing sentinel).
constexpr double kLargest = 1e29;

} // namespace

CKwMaterial::CKwMaterial(int id, const QString& name) : CKwFEBase(id, name)
{
    ClearValues();
}

void CKwMaterial::ClearValues()
{
    m_values.fill(MissingDouble);
    m_extras.fill(MissingDouble);
    m_matrix.fill(MissingDouble);
    for (KwMaterialCurve& c : m_curves)
        c = KwMaterialCurve();
    m_snCurve = KwMaterialCurve();
    m_enduranceLimit = MissingDouble;
}

bool CKwMaterial::operator==(const CKwMaterial& o) const
{
    return GetID() == o.GetID() && GetName() == o.GetName() && m_type == o.m_type &&
           m_values == o.m_values && m_extras == o.m_extras && m_matrix == o.m_matrix &&
           m_curves == o.m_curves && m_hyperelasticModel == o.m_hyperelasticModel &&
           m_failureTheory == o.m_failureTheory && m_fatigueOn == o.m_fatigueOn &&
           m_ppfaOn == o.m_ppfaOn && m_description == o.m_description &&
           m_category == o.m_category && m_snCurve == o.m_snCurve &&
           m_enduranceLimit == o.m_enduranceLimit && m_snSource == o.m_snSource &&
           m_stressStrainTrue == o.m_stressStrainTrue;
}

double CKwMaterial::GetValue(const QString& key) const
{
    const int i = K::IndexOf(key);
    if (i >= 0)
        return m_values[i];
    const int e = ExtraIndexOf(key);
    return e >= 0 ? m_extras[e] : MissingDouble;
}

bool CKwMaterial::SetValue(const QString& key, double value)
{
    const int i = K::IndexOf(key);
    if (i >= 0) {
        m_values[i] = value;
        return true;
    }
    const int e = ExtraIndexOf(key);
    if (e < 0)
        return false;
    m_extras[e] = value;
    return true;
}

bool CKwMaterial::IsKnownKey(const QString& key)
{
    return K::IndexOf(key) >= 0 || ExtraIndexOf(key) >= 0;
}

double CKwMaterial::GetValue(int i) const
{
    return i >= 0 && i < K::Count ? m_values[i] : MissingDouble;
}

void CKwMaterial::SetValue(int i, double value)
{
    if (i >= 0 && i < K::Count)
        m_values[i] = value;
}

double CKwMaterial::GetExtra(int e) const
{
    return e >= 0 && e < ExtraCount ? m_extras[e] : MissingDouble;
}

void CKwMaterial::SetExtra(int e, double value)
{
    if (e >= 0 && e < ExtraCount)
        m_extras[e] = value;
}

QString CKwMaterial::ExtraKey(int e)
{
    return e >= 0 && e < ExtraCount ? QString::fromLatin1(kExtras[e].key) : QString();
}

int CKwMaterial::ExtraIndexOf(const QString& key)
{
    for (int e = 0; e < ExtraCount; ++e)
        if (key == QLatin1String(kExtras[e].key))
            return e;
    return -1;
}

int CKwMaterial::ExtraUnitKind(int e)
{
    return e >= 0 && e < ExtraCount ? kExtras[e].kind : KwUnitKind::Dimensionless;
}

bool CKwMaterial::SetMaterialType(int type)
{
    if (type < 0 || type >= TypeCount)
        return false;
    m_type = type;
    return true;
}

QString CKwMaterial::TypeName(int type)
{
    return type >= 0 && type < TypeCount ? QString::fromLatin1(kTypeNames[type]) : QString();
}

int CKwMaterial::TypeFromName(const QString& name)
{
    for (int t = 0; t < TypeCount; ++t)
        if (name.compare(QLatin1String(kTypeNames[t]), Qt::CaseInsensitive) == 0)
            return t;
    return -1;
}

std::vector<int> CKwMaterial::KeysForType(int type)
{
    switch (type) {
    case Isotropic:
        return {K::EX, K::NUXY, K::GXY, K::DENS, K::SIGXT, K::SIGXC, K::SIGYLD, K::SIGXY,
                K::ET, K::YLDPNT, K::COHS, K::FANG, K::ALPX, K::KX, K::C, K::REFT, K::GE};
    case Orthotropic2D:
        return {K::E1, K::E2, K::NUXY, K::G12, K::G1Z, K::G2Z, K::DENS, K::XT, K::YT, K::XC,
                K::YC, K::S, K::F12, K::ALP1, K::ALP2, K::K11, K::K22, K::C, K::REFT, K::GE};
    case Orthotropic3D:
        return {K::E1,  K::E2,  K::E3,  K::NUXY, K::NUYZ, K::NUXZ, K::G12, K::G1Z, K::G2Z,
                K::DENS, K::XT, K::YT,  K::ZT,   K::XC,   K::YC,   K::ZC,  K::S12, K::S23,
                K::S13, K::F12, K::F23, K::F13,  K::ALP1, K::ALP2, K::ALP3, K::K11, K::K22,
                K::K33, K::C,   K::REFT, K::GE};
    case Anisotropic3D:
        return {K::DENS, K::A1,  K::A2,  K::A3,  K::A4, K::A5,   K::A6,   K::K11, K::K22,
                K::K33,  K::K12, K::K13, K::K23, K::C,  K::REFT, K::GE};
    case Hyperelastic:
        return {K::DENS, K::D1,  K::D2,  K::D3,     K::D4,     K::D5,     K::NA, K::ND,
                K::MU1,  K::MU2, K::MU3, K::ALPHA1, K::ALPHA2, K::ALPHA3, K::ALPX};
    case Nitinol:
        return {K::EX, K::NUXY, K::DENS, K::ALPX, K::KX, K::C};
    case Viscoelastic:
        return {K::EX, K::NUXY, K::GXY, K::DENS, K::ALPX, K::KX, K::C};
    case CrushableFoam:
    case Rigid:
        return {K::EX, K::NUXY, K::DENS};
    case Concrete:
        return {K::EX, K::NUXY, K::DENS, K::ALPX};
    default:
        return {};
    }
}

std::vector<int> CKwMaterial::ExtrasForType(int type)
{
    switch (type) {
    case Hyperelastic:
        return {A10, A01, A20, A11, A02, A30, A21, A12, A03};
    case Nitinol:
        return {EM, SigmaStartAM, SigmaFinishAM, SigmaStartMA, SigmaFinishMA, EpsilonL};
    case Viscoelastic:
        return {SHIFT};
    case Concrete:
        return {FPC, CYM};
    default:
        return {};
    }
}

bool CKwMaterial::UsesIsotropicElasticity(int type)
{
    return type == Isotropic || type == Nitinol || type == Viscoelastic ||
           type == CrushableFoam || type == Rigid || type == Concrete;
}

const KwMaterialCurve& CKwMaterial::GetCurve(int curve) const
{
    static const KwMaterialCurve none;
    return curve >= 0 && curve < CurveCount ? m_curves[curve] : none;
}

void CKwMaterial::SetCurve(int curve, const KwMaterialCurve& data)
{
    if (curve >= 0 && curve < CurveCount && data.x.size() == data.y.size())
        m_curves[curve] = data;
}

double CKwMaterial::GetMatrix(int i) const
{
    return i >= 0 && i < MatrixSize ? m_matrix[i] : MissingDouble;
}

void CKwMaterial::SetMatrix(int i, double value)
{
    if (i >= 0 && i < MatrixSize)
        m_matrix[i] = value;
}

CKwMaterial::Check CKwMaterial::CheckValues() const
{
    const auto sound = [](double v) {
        return IsMissingValue(v) || (std::isfinite(v) && std::fabs(v) <= kLargest);
    };
    for (int i : KeysForType(m_type)) {
        const double v = m_values[i];
        if (!sound(v))
            return {std::isfinite(v) ? OutOfRange : NotFinite, K::Key(i)};
        if (IsMissingValue(v))
            continue;
        if (isPoisson(i)) {
            // An isotropic solid with nu >= 0.5 has no finite bulk modulus.
            if (UsesIsotropicElasticity(m_type) && v >= 0.5)
                return {PoissonTooLarge, K::Key(i)};
            if (v <= -1.0)
                return {PoissonTooSmall, K::Key(i)};
        }
        if (mustBePositive(i) && v <= 0)
            return {NotPositive, K::Key(i)};
        if (mustNotBeNegative(i) && v < 0)
            return {Negative, K::Key(i)};
    }
    for (int e : ExtrasForType(m_type))
        if (!sound(m_extras[e]))
            return {std::isfinite(m_extras[e]) ? OutOfRange : NotFinite, ExtraKey(e)};
    for (double v : m_matrix)
        if (!sound(v))
            return {std::isfinite(v) ? OutOfRange : NotFinite, QStringLiteral("Matrix")};
    for (int c = 0; c < CurveCount; ++c) {
        const KwMaterialCurve& cv = m_curves[c];
        if (cv.x.size() != cv.y.size())
            return {BadCurve, QString::fromLatin1(kCurveNames[c])};
        for (std::size_t k = 0; k < cv.x.size(); ++k)
            if (!std::isfinite(cv.x[k]) || !std::isfinite(cv.y[k]) ||
                std::fabs(cv.x[k]) > kLargest || std::fabs(cv.y[k]) > kLargest)
                return {BadCurve, QString::fromLatin1(kCurveNames[c])};
    }
    return {};
}

QString CKwMaterial::ProblemText(Problem problem)
{
    switch (problem) {
    case NoProblem: return QString();
    case NotFinite: return err("ValueNotANumber", "The value is not a number.");
    case PoissonTooLarge:
        return err("PoissonRatioIsotropic",
                   "Poisson's ratio must be less than 0.5 for this material.");
    case PoissonTooSmall:
        return err("PoissonRatioTooSmall", "Poisson's ratio must be greater than -1.");
    case Negative: return err("NegativeValue", "The value cannot be negative.");
    case NotPositive: return err("PositiveValueRequired", "Enter a value greater than zero.");
    case OutOfRange: return err("ValueOutOfRange", "The value is too large to be material data.");
    case BadCurve: return err("InvalidTable", "The table holds values that are not numbers.");
    }
    return QString();
}

