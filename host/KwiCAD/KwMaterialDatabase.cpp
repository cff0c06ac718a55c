#include "KwMaterialDatabase.h"

#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwBoundedXml.h"
#include "KwMethodLogger.h"
#include "KwNumbers.h"
#include "KwRegistry.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <cmath>

namespace K = KwMaterialKeys;
namespace DB = KwMaterialDatabase;

namespace {

constexpr double kLargest = 1e29;
constexpr double kPsi = 4.4482216152605 / (0.0254 * 0.0254);
constexpr double kPi = 3.14159265358979323846;

struct UnitRow
{
    int kind;
    const char* unit;
    double scale;  // internal = shown * scale + offset
    double offset;
};

// The units a file may give values in, per quantity.
const UnitRow kUnits[] = {
    {KwUnitKind::Stress, "Pa", 1, 0},         {KwUnitKind::Stress, "N/m2", 1, 0},
    {KwUnitKind::Stress, "N/m^2", 1, 0},      {KwUnitKind::Stress, "kPa", 1e3, 0},
    {KwUnitKind::Stress, "MPa", 1e6, 0},      {KwUnitKind::Stress, "N/mm2", 1e6, 0},
    {KwUnitKind::Stress, "N/mm^2", 1e6, 0},   {KwUnitKind::Stress, "GPa", 1e9, 0},
    {KwUnitKind::Stress, "psi", kPsi, 0},     {KwUnitKind::Stress, "ksi", 1e3 * kPsi, 0},
    {KwUnitKind::Stress, "Msi", 1e6 * kPsi, 0},
    {KwUnitKind::Density, "kg/m3", 1, 0},     {KwUnitKind::Density, "kg/m^3", 1, 0},
    {KwUnitKind::Density, "g/cm3", 1e3, 0},   {KwUnitKind::Density, "g/cm^3", 1e3, 0},
    {KwUnitKind::Density, "t/mm3", 1e12, 0},  {KwUnitKind::Density, "lb/in3", 27679.9047, 0},
    {KwUnitKind::Density, "lb/ft3", 16.01846337, 0},
    {KwUnitKind::ThermalExpansion, "/K", 1, 0}, {KwUnitKind::ThermalExpansion, "1/K", 1, 0},
    {KwUnitKind::ThermalExpansion, "/C", 1, 0}, {KwUnitKind::ThermalExpansion, "1/C", 1, 0},
    {KwUnitKind::ThermalExpansion, "/F", 1.8, 0}, {KwUnitKind::ThermalExpansion, "1/F", 1.8, 0},
    {KwUnitKind::ThermalConductivity, "W/m-K", 1, 0},
    {KwUnitKind::ThermalConductivity, "W/(m K)", 1, 0},
    {KwUnitKind::ThermalConductivity, "W/(m.K)", 1, 0},
    {KwUnitKind::ThermalConductivity, "BTU/hr-ft-F", 1.730735, 0},
    {KwUnitKind::SpecificHeat, "J/kg-K", 1, 0}, {KwUnitKind::SpecificHeat, "J/(kg K)", 1, 0},
    {KwUnitKind::SpecificHeat, "kJ/kg-K", 1e3, 0},
    {KwUnitKind::SpecificHeat, "BTU/lb-F", 4186.8, 0},
    {KwUnitKind::Temperature, "K", 1, 0},     {KwUnitKind::Temperature, "C", 1, 273.15},
    {KwUnitKind::Temperature, "F", 5.0 / 9.0, 459.67 * 5.0 / 9.0},
    {KwUnitKind::Angle, "Deg", kPi / 180, 0}, {KwUnitKind::Angle, "deg", kPi / 180, 0},
    {KwUnitKind::Angle, "rad", 1, 0},
    {KwUnitKind::Compliance, "m2/N", 1, 0},   {KwUnitKind::Compliance, "m^2/N", 1, 0},
    {KwUnitKind::Compliance, "1/Pa", 1, 0},   {KwUnitKind::Compliance, "1/MPa", 1e-6, 0},
    {KwUnitKind::Compliance, "mm2/N", 1e-6, 0}, {KwUnitKind::Compliance, "mm^2/N", 1e-6, 0},
    {KwUnitKind::Compliance, "1/psi", 1 / kPsi, 0},
    {KwUnitKind::Dimensionless, "", 1, 0},    {KwUnitKind::Dimensionless, "-", 1, 0},
};

QString err(const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalErrorMessageItemText(
        QStringLiteral("MaterialDatabase"), QString::fromLatin1(key), QString::fromUtf8(english));
}

// Why the bounded reader refused a document, in the material database's words.
QString refusalError(KwBoundedXmlReader::Refusal r)
{
    switch (r) {
    case KwBoundedXmlReader::TooLarge:
        return err("FileTooLarge", "The file is too large to be a material file.");
    case KwBoundedXmlReader::DocumentType:
        return err("DtdNotAccepted", "Document type declarations are not accepted.");
    case KwBoundedXmlReader::TooDeep:
        return err("NestedTooDeep", "The file nests its elements more than %1 deep.")
            .arg(KwBoundedXmlReader::MaxDepth);
    case KwBoundedXmlReader::TooManyAttributes:
        return err("TooManyAttributes", "An element of the file has more than %1 attributes.")
            .arg(KwBoundedXmlReader::MaxAttributes);
    case KwBoundedXmlReader::NotRefused: break;
    }
    return QString();
}

DB::ReadResult fail(const QString& why)
{
    DB::ReadResult r;
    r.error = why;
    return r;
}

constexpr const char* kFailureNames[] = {"None", "VonMises", "Principal"};
constexpr const char* kModelNames[] = {"NeoHookean", "MooneyRivlin", "Yeoh", "Ogden",
                                       "Polynomial"};
constexpr const char* kCurveNames[] = {"StressStrain", "SimpleTension", "EquibiaxialTension",
                                       "SimpleShear", "PureVolumetricCompression", "PureShear",
                                       "ConductivityVsTemperature"};

int indexOfName(const char* const* names, int n, const QString& name)
{
    for (int i = 0; i < n; ++i)
        if (name.compare(QLatin1String(names[i]), Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

// Unit kinds of a curve's X and Y columns.
void curveKinds(int curve, int* xKind, int* yKind)
{
    if (curve == CKwMaterial::ConductivityVsTemperature) {
        *xKind = KwUnitKind::Temperature;
        *yKind = KwUnitKind::ThermalConductivity;
    } else {
        *xKind = KwUnitKind::Dimensionless;
        *yKind = KwUnitKind::Stress;
    }
}

// The SI label a value without a unit is taken in: the key table's label for property keys,
// the SI system's label for the others.
QString defaultUnit(int propertyIndex, int kind)
{
    if (propertyIndex >= 0)
        return K::SIUnit(propertyIndex);
    return KW_UOM::KeyboardForm(KW_UOM(KW_UOM::SI).GetUnits(kind));
}

// Reads the program's own documents (root svrmat or kwimat) with one shared grammar.
class OwnReader
{
public:
    OwnReader(const QByteArray& data, DB::ReadResult* result)
        : m_bounded(data, DB::MaxFileBytes), m_xml(m_bounded.stream()), m_r(result)
    {
    }

    // Reads up to the root element; false with an error when it is not one of ours.
    bool readRoot(QString* root)
    {
        if (m_bounded.refusal() != KwBoundedXmlReader::NotRefused)
            return error(refusalError(m_bounded.refusal()));
        while (!m_xml.atEnd()) {
            const auto t = m_xml.readNext();
            if (t == QXmlStreamReader::DTD)
                return error(err("DtdNotAccepted", "Document type declarations are not accepted."));
            if (t == QXmlStreamReader::StartElement) {
                *root = m_xml.name().toString();
                const QString version = m_xml.attributes().value(QLatin1String("version")).toString();
                if (!version.isEmpty() && version != QLatin1String("1"))
                    return error(err("UnknownVersion", "The file was written in a newer format (version %1).")
                                     .arg(version.left(20)));
                return true;
            }
        }
        return xmlError();
    }

    // Reads the materials below the root; at most `limit` of them.
    bool readMaterials(int limit)
    {
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() != QLatin1String("material")) {
                m_r->warnings << QStringLiteral("Skipped element <%1>").arg(m_xml.name().toString().left(40));
                m_xml.skipCurrentElement();
                continue;
            }
            if (m_r->materials.size() >= limit)
                return error(limit == 1 ? err("OneMaterialOnly", "A material file holds one material.")
                                        : err("TooManyMaterials", "The file holds too many materials."));
            CKwMaterial m;
            if (!readMaterial(&m))
                return false;
            m_r->materials.append(m);
        }
        if (m_xml.hasError())
            return xmlError();
        // Anything after the root's end (a second root, garbage) is an error too.
        while (!m_xml.atEnd())
            m_xml.readNext();
        if (m_xml.hasError())
            return xmlError();
        if (m_r->materials.isEmpty())
            return error(err("NoMaterials", "The file holds no material."));
        return true;
    }

private:
    bool error(const QString& why)
    {
        m_r->error = why;
        return false;
    }
    bool xmlError()
    {
        if (!m_xml.hasError())
            return error(err("NoMaterials", "The file holds no material."));
        return error(err("NotXml", "The file is not a readable XML document (line %1: %2).")
                         .arg(m_xml.lineNumber())
                         .arg(m_xml.errorString().left(200)));
    }

    // A number with its unit, converted to SI. Missing units fall back to the key's SI unit
    // with a warning; unknown units and non-numbers refuse the file.
    bool number(const QString& text, const QString* unit, int propertyIndex, int kind,
                const QString& what, double* out)
    {
        if (!IsNumber(text))
            return error(err("NotANumber", "%1: '%2' is not a number.").arg(what, text.left(40)));
        QString u;
        if (unit) {
            u = *unit;
        } else {
            u = defaultUnit(propertyIndex, kind);
            if (kind != KwUnitKind::Dimensionless)
                m_r->warnings << QStringLiteral("%1: no unit, taken as %2").arg(what, u);
        }
        double v = 0;
        bool ok = DB::ToInternal(KwAtof(text), u, kind, &v);
        if (!ok && propertyIndex >= 0 && kind == KwUnitKind::Dimensionless &&
            u == K::SIUnit(propertyIndex))
            ok = DB::ToInternal(KwAtof(text), QString(), kind, &v);
        if (!ok)
            return error(err("UnknownUnit", "%1: unknown unit '%2'.").arg(what, u.left(40)));
        if (!std::isfinite(v) || std::fabs(v) > kLargest)
            return error(err("AbsurdNumber", "%1: %2 is not a plausible value.").arg(what, text.left(40)));
        *out = v;
        return true;
    }

    bool readMaterial(CKwMaterial* m)
    {
        const QXmlStreamAttributes a = m_xml.attributes();
        const QString name = a.value(QLatin1String("name")).toString().trimmed();
        if (name.isEmpty())
            return error(err("MaterialWithoutName", "A material has no name."));
        m->SetName(name.left(200));
        m->m_category = a.value(QLatin1String("category")).toString().left(200);
        const QString type = a.value(QLatin1String("type")).toString();
        if (!type.isEmpty()) {
            const int t = CKwMaterial::TypeFromName(type);
            if (t < 0)
                return error(err("UnknownType", "Unknown material type '%1'.").arg(type.left(40)));
            m->SetMaterialType(t);
        }
        while (m_xml.readNextStartElement()) {
            const QStringView tag = m_xml.name();
            bool ok = true;
            if (tag == QLatin1String("property"))
                ok = readProperty(m);
            else if (tag == QLatin1String("description"))
                m->m_description = m_xml.readElementText().left(4000);
            else if (tag == QLatin1String("options"))
                ok = readOptions(m);
            else if (tag == QLatin1String("matrix"))
                ok = readMatrix(m);
            else if (tag == QLatin1String("curve"))
                ok = readCurve(m);
            else {
                m_r->warnings << QStringLiteral("%1: skipped element <%2>").arg(name, tag.toString().left(40));
                m_xml.skipCurrentElement();
            }
            if (!ok)
                return false;
        }
        if (m_xml.hasError())
            return xmlError();
        const CKwMaterial::Check c = m->CheckValues();
        if (c.problem != CKwMaterial::NoProblem)
            return error(QStringLiteral("%1: %2 - %3").arg(name, c.key, CKwMaterial::ProblemText(c.problem)));
        return true;
    }

    bool readProperty(CKwMaterial* m)
    {
        const QXmlStreamAttributes a = m_xml.attributes();
        const QString key = a.value(QLatin1String("key")).toString();
        const QString value = a.value(QLatin1String("value")).toString();
        const bool hasUnit = a.hasAttribute(QLatin1String("unit"));
        const QString unit = a.value(QLatin1String("unit")).toString();
        m_xml.skipCurrentElement();
        const int i = K::IndexOf(key);
        const int e = CKwMaterial::ExtraIndexOf(key);
        if (i < 0 && e < 0) {
            m_r->warnings << QStringLiteral("%1: unknown key '%2' ignored").arg(m->GetName(), key.left(40));
            return true;
        }
        const int kind = i >= 0 ? K::UnitKind(i) : CKwMaterial::ExtraUnitKind(e);
        double v = 0;
        if (!number(value, hasUnit ? &unit : nullptr, i, kind, m->GetName() + QLatin1Char(' ') + key, &v))
            return false;
        m->SetValue(key, v);
        return true;
    }

    bool readOptions(CKwMaterial* m)
    {
        const QXmlStreamAttributes a = m_xml.attributes();
        m_xml.skipCurrentElement();
        const auto pick = [&](const char* attr, const char* const* names, int n, int* out) {
            const QString v = a.value(QLatin1String(attr)).toString();
            if (v.isEmpty())
                return true;
            const int k = indexOfName(names, n, v);
            if (k < 0)
                return error(err("UnknownOption", "Unknown value '%1' of %2.").arg(v.left(40), QLatin1String(attr)));
            *out = k;
            return true;
        };
        if (!pick("failureTheory", kFailureNames, 3, &m->m_failureTheory) ||
            !pick("hyperelasticModel", kModelNames, 5, &m->m_hyperelasticModel))
            return false;
        m->m_fatigueOn = a.value(QLatin1String("fatigue")) == QLatin1String("1");
        m->m_ppfaOn = a.value(QLatin1String("ppfa")) == QLatin1String("1");
        return true;
    }

    bool readMatrix(CKwMaterial* m)
    {
        const QXmlStreamAttributes a = m_xml.attributes();
        const bool hasUnit = a.hasAttribute(QLatin1String("unit"));
        const QString unit = a.value(QLatin1String("unit")).toString();
        const QString text = m_xml.readElementText();
        if (m_xml.hasError())
            return xmlError();
        const QStringList parts = text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (parts.size() != CKwMaterial::MatrixSize)
            return error(err("MatrixSize", "The stiffness matrix needs 21 values (upper triangle)."));
        for (int k = 0; k < CKwMaterial::MatrixSize; ++k) {
            double v = 0;
            if (!number(parts[k], hasUnit ? &unit : nullptr, -1, KwUnitKind::Stress,
                        m->GetName() + QStringLiteral(" matrix"), &v))
                return false;
            m->SetMatrix(k, v);
        }
        return true;
    }

    bool readCurve(CKwMaterial* m)
    {
        const QXmlStreamAttributes a = m_xml.attributes();
        const QString kindName = a.value(QLatin1String("kind")).toString();
        const int curve = indexOfName(kCurveNames, CKwMaterial::CurveCount, kindName);
        if (curve < 0) {
            m_r->warnings << QStringLiteral("%1: unknown curve '%2' ignored").arg(m->GetName(), kindName.left(40));
            m_xml.skipCurrentElement();
            return true;
        }
        int xKind = 0, yKind = 0;
        curveKinds(curve, &xKind, &yKind);
        const bool hasX = a.hasAttribute(QLatin1String("xunit"));
        const bool hasY = a.hasAttribute(QLatin1String("yunit"));
        const QString xUnit = a.value(QLatin1String("xunit")).toString();
        const QString yUnit = a.value(QLatin1String("yunit")).toString();
        KwMaterialCurve c;
        const QString what = m->GetName() + QLatin1Char(' ') + kindName;
        while (m_xml.readNextStartElement()) {
            if (m_xml.name() != QLatin1String("point")) {
                m_xml.skipCurrentElement();
                continue;
            }
            if (c.Size() >= DB::MaxCurvePoints)
                return error(err("TooManyPoints", "A table holds too many points."));
            const QXmlStreamAttributes p = m_xml.attributes();
            m_xml.skipCurrentElement();
            double x = 0, y = 0;
            if (!number(p.value(QLatin1String("x")).toString(), hasX ? &xUnit : nullptr, -1, xKind, what, &x) ||
                !number(p.value(QLatin1String("y")).toString(), hasY ? &yUnit : nullptr, -1, yKind, what, &y))
                return false;
            c.x.push_back(x);
            c.y.push_back(y);
        }
        if (m_xml.hasError())
            return xmlError();
        m->SetCurve(curve, c);
        return true;
    }

    KwBoundedXmlReader m_bounded;
    QXmlStreamReader& m_xml;
    DB::ReadResult* m_r;
};

DB::ReadResult readOwn(const QByteArray& data, const char* wantedRoot, int limit)
{
    if (data.size() > DB::MaxFileBytes)
        return fail(err("FileTooLarge", "The file is too large to be a material file."));
    if (data.trimmed().isEmpty())
        return fail(err("FileEmpty", "The file is empty."));
    DB::ReadResult r;
    OwnReader reader(data, &r);
    QString root;
    if (!reader.readRoot(&root))
        return r;
    if (root != QLatin1String(wantedRoot)) {
        r.error = err("WrongRoot", "The file is not a %1 document (its root is <%2>).")
                      .arg(QLatin1String(wantedRoot), root.left(40));
        return r;
    }
    if (!reader.readMaterials(limit)) {
        r.materials.clear();
        return r;
    }
    r.ok = true;
    return r;
}

// The first element's local name, or empty when there is none.
QString rootName(const QByteArray& data)
{
    KwBoundedXmlReader bounded(data, DB::MaxFileBytes);
    QXmlStreamReader& xml = bounded.stream();
    while (!xml.atEnd())
        if (xml.readNext() == QXmlStreamReader::StartElement)
            return xml.name().toString();
    return QString();
}

void writeMaterial(QXmlStreamWriter& w, const CKwMaterial& m)
{
    const auto num = [](double v) { return QString::number(v, 'g', 17); };
    w.writeStartElement(QStringLiteral("material"));
    w.writeAttribute(QStringLiteral("name"), m.GetName());
    w.writeAttribute(QStringLiteral("type"), CKwMaterial::TypeName(m.GetMaterialType()));
    if (!m.m_category.isEmpty())
        w.writeAttribute(QStringLiteral("category"), m.m_category);
    if (!m.m_description.isEmpty())
        w.writeTextElement(QStringLiteral("description"), m.m_description);
    const KW_UOM si(KW_UOM::SI);
    for (int i = 0; i < K::Count; ++i) {
        const double v = m.GetValue(i);
        if (IsMissingValue(v))
            continue;
        w.writeStartElement(QStringLiteral("property"));
        w.writeAttribute(QStringLiteral("key"), K::Key(i));
        // Angles are kept in radians but written in the table's unit (degrees).
        const bool angle = K::UnitKind(i) == KwUnitKind::Angle;
        w.writeAttribute(QStringLiteral("value"), num(angle ? v * 180 / kPi : v));
        w.writeAttribute(QStringLiteral("unit"), K::SIUnit(i));
        w.writeEndElement();
    }
    for (int e = 0; e < CKwMaterial::ExtraCount; ++e) {
        const double v = m.GetExtra(e);
        if (IsMissingValue(v))
            continue;
        w.writeStartElement(QStringLiteral("property"));
        w.writeAttribute(QStringLiteral("key"), CKwMaterial::ExtraKey(e));
        w.writeAttribute(QStringLiteral("value"), num(v));
        w.writeAttribute(QStringLiteral("unit"),
                         KW_UOM::KeyboardForm(si.GetUnits(CKwMaterial::ExtraUnitKind(e))));
        w.writeEndElement();
    }
    w.writeStartElement(QStringLiteral("options"));
    w.writeAttribute(QStringLiteral("failureTheory"), QLatin1String(kFailureNames[m.m_failureTheory]));
    w.writeAttribute(QStringLiteral("hyperelasticModel"), QLatin1String(kModelNames[m.m_hyperelasticModel]));
    w.writeAttribute(QStringLiteral("fatigue"), m.m_fatigueOn ? QStringLiteral("1") : QStringLiteral("0"));
    w.writeAttribute(QStringLiteral("ppfa"), m.m_ppfaOn ? QStringLiteral("1") : QStringLiteral("0"));
    w.writeEndElement();
    bool anyMatrix = false;
    for (int k = 0; k < CKwMaterial::MatrixSize; ++k)
        anyMatrix = anyMatrix || !IsMissingValue(m.GetMatrix(k));
    if (anyMatrix) {
        QStringList parts;
        for (int k = 0; k < CKwMaterial::MatrixSize; ++k)
            parts << num(IsMissingValue(m.GetMatrix(k)) ? 0.0 : m.GetMatrix(k));
        w.writeStartElement(QStringLiteral("matrix"));
        w.writeAttribute(QStringLiteral("unit"), QStringLiteral("Pa"));
        w.writeCharacters(parts.join(QLatin1Char(' ')));
        w.writeEndElement();
    }
    for (int c = 0; c < CKwMaterial::CurveCount; ++c) {
        const KwMaterialCurve& cv = m.GetCurve(c);
        if (cv.IsEmpty())
            continue;
        int xKind = 0, yKind = 0;
        curveKinds(c, &xKind, &yKind);
        w.writeStartElement(QStringLiteral("curve"));
        w.writeAttribute(QStringLiteral("kind"), QLatin1String(kCurveNames[c]));
        w.writeAttribute(QStringLiteral("xunit"), KW_UOM::KeyboardForm(si.GetUnits(xKind)));
        w.writeAttribute(QStringLiteral("yunit"), KW_UOM::KeyboardForm(si.GetUnits(yKind)));
        for (int k = 0; k < cv.Size(); ++k) {
            w.writeEmptyElement(QStringLiteral("point"));
            w.writeAttribute(QStringLiteral("x"), num(cv.x[k]));
            w.writeAttribute(QStringLiteral("y"), num(cv.y[k]));
        }
        w.writeEndElement();
    }
    w.writeEndElement();
}

QByteArray writeOwn(const char* root, const QList<CKwMaterial>& materials)
{
    QByteArray out;
    QXmlStreamWriter w(&out);
    w.setAutoFormatting(true);
    w.setAutoFormattingIndent(2);
    w.writeStartDocument();
    w.writeStartElement(QLatin1String(root));
    w.writeAttribute(QStringLiteral("version"), QStringLiteral("1"));
    for (const CKwMaterial& m : materials)
        writeMaterial(w, m);
    w.writeEndElement();
    w.writeEndDocument();
    return out;
}

} // namespace

namespace KwMaterialDatabase {

Format FormatOfPath(const QString& path)
{
    const QString ext = QFileInfo(path).suffix();
    static const struct { const char* ext; Format format; } order[] = {
        {"xml", Format::Xml}, {"svrmat", Format::Svrmat}, {"sldmat", Format::Sldmat},
        {"kwimat", Format::Kwimat}};
    for (const auto& o : order)
        if (ext.compare(QLatin1String(o.ext), Qt::CaseInsensitive) == 0)
            return o.format;
    return Format::Unknown;
}

bool ToInternal(double value, const QString& unit, int kind, double* out)
{
    // A file may write a label as it is shown ("W/(m·K)", "°C") or as typed ("W/(m K)", "C").
    const QString u = KW_UOM::KeyboardForm(unit.trimmed());
    // Pressure is given like stress.
    const int k = kind == KwUnitKind::Pressure ? KwUnitKind::Stress : kind;
    for (const UnitRow& r : kUnits) {
        if (r.kind == k && u == QLatin1String(r.unit)) {
            *out = value * r.scale + r.offset;
            return true;
        }
    }
    return false;
}

ReadResult ReadSvrmat(const QByteArray& data) { return readOwn(data, "svrmat", 1); }

ReadResult ReadKwimat(const QByteArray& data) { return readOwn(data, "kwimat", MaxMaterials); }

ReadResult ReadSldmat(const QByteArray& data)
{
    if (data.size() > MaxFileBytes)
        return fail(err("FileTooLarge", "The file is too large to be a material file."));
    if (data.trimmed().isEmpty())
        return fail(err("FileEmpty", "The file is empty."));
    ReadResult r;
    KwBoundedXmlReader bounded(data, MaxFileBytes);
    if (bounded.refusal() != KwBoundedXmlReader::NotRefused)
        return fail(refusalError(bounded.refusal()));
    QXmlStreamReader& xml = bounded.stream();
    // Values of this format are SI without units. Its yield strength is called SIGYLD, which
    // is the shear limit here; the yield limit here is SIGXY.
    const auto keyOf = [](QStringView name) {
        return name == QLatin1String("SIGYLD") ? QStringLiteral("SIGXY") : name.toString();
    };
    bool sawRoot = false;
    QString category;
    CKwMaterial current;
    bool inMaterial = false, inProperties = false;
    while (!xml.atEnd()) {
        const auto t = xml.readNext();
        if (t == QXmlStreamReader::DTD)
            return fail(err("DtdNotAccepted", "Document type declarations are not accepted."));
        if (t == QXmlStreamReader::StartElement) {
            const QStringView name = xml.name();
            if (!sawRoot) {
                if (name != QLatin1String("materials"))
                    return fail(err("WrongRoot", "The file is not a %1 document (its root is <%2>).")
                                    .arg(QStringLiteral("materials"), name.toString().left(40)));
                sawRoot = true;
            } else if (name == QLatin1String("classification")) {
                category = xml.attributes().value(QLatin1String("name")).toString().left(200);
            } else if (name == QLatin1String("material")) {
                if (r.materials.size() >= MaxMaterials)
                    return fail(err("TooManyMaterials", "The file holds too many materials."));
                current = CKwMaterial();
                current.SetName(xml.attributes().value(QLatin1String("name")).toString().trimmed().left(200));
                current.m_description = xml.attributes().value(QLatin1String("description")).toString().left(4000);
                current.m_category = category;
                if (current.GetName().isEmpty())
                    return fail(err("MaterialWithoutName", "A material has no name."));
                inMaterial = true;
            } else if (name == QLatin1String("physicalproperties") && inMaterial) {
                inProperties = true;
            } else if (inProperties) {
                const QString key = keyOf(name);
                const QString text = xml.attributes().value(QLatin1String("value")).toString();
                if (!CKwMaterial::IsKnownKey(key)) {
                    r.warnings << QStringLiteral("%1: unknown key '%2' ignored").arg(current.GetName(), key.left(40));
                } else if (!IsNumber(text)) {
                    return fail(err("NotANumber", "%1: '%2' is not a number.")
                                    .arg(current.GetName() + QLatin1Char(' ') + key, text.left(40)));
                } else {
                    const double v = KwAtof(text);
                    if (!std::isfinite(v) || std::fabs(v) > kLargest)
                        return fail(err("AbsurdNumber", "%1: %2 is not a plausible value.")
                                        .arg(current.GetName() + QLatin1Char(' ') + key, text.left(40)));
                    current.SetValue(key, v);
                }
                xml.skipCurrentElement();
            } else if (inMaterial) {
                // Shaders, cross-hatch patterns, appearance: nothing a material here keeps.
                xml.skipCurrentElement();
            }
        } else if (t == QXmlStreamReader::EndElement) {
            const QStringView name = xml.name();
            if (name == QLatin1String("physicalproperties")) {
                inProperties = false;
            } else if (name == QLatin1String("material") && inMaterial) {
                inMaterial = false;
                // An elastic modulus means isotropic; directional moduli without it orthotropic.
                if (IsMissingValue(current.GetValue(K::EX)) && !IsMissingValue(current.GetValue(K::E1)))
                    current.SetMaterialType(IsMissingValue(current.GetValue(K::E3))
                                                ? CKwMaterial::Orthotropic2D
                                                : CKwMaterial::Orthotropic3D);
                const CKwMaterial::Check c = current.CheckValues();
                if (c.problem != CKwMaterial::NoProblem)
                    return fail(QStringLiteral("%1: %2 - %3")
                                    .arg(current.GetName(), c.key, CKwMaterial::ProblemText(c.problem)));
                r.materials.append(current);
            }
        }
    }
    if (xml.hasError())
        return fail(err("NotXml", "The file is not a readable XML document (line %1: %2).")
                        .arg(xml.lineNumber())
                        .arg(xml.errorString().left(200)));
    if (r.materials.isEmpty())
        return fail(err("NoMaterials", "The file holds no material."));
    r.ok = true;
    return r;
}

ReadResult ReadXml(const QByteArray& data)
{
    if (data.size() > MaxFileBytes)
        return fail(err("FileTooLarge", "The file is too large to be a material file."));
    const KwBoundedXmlReader::Refusal refused = KwBoundedXmlReader::Check(data, MaxFileBytes);
    if (refused != KwBoundedXmlReader::NotRefused)
        return fail(refusalError(refused));
    const QString root = rootName(data);
    if (root == QLatin1String("svrmat"))
        return ReadSvrmat(data);
    if (root == QLatin1String("kwimat"))
        return ReadKwimat(data);
    if (root == QLatin1String("materials"))
        return ReadSldmat(data);
    if (data.trimmed().isEmpty())
        return fail(err("FileEmpty", "The file is empty."));
    if (root.isEmpty())
        return fail(err("NotXml", "The file is not a readable XML document (line %1: %2).")
                        .arg(1)
                        .arg(QStringLiteral("no element")));
    return fail(err("UnknownDocument", "The XML file is not a material file (its root is <%1>).")
                    .arg(root.left(40)));
}

ReadResult ReadFile(const QString& path)
{
    const Format format = FormatOfPath(path);
    if (format == Format::Unknown)
        return fail(err("UnknownExtension", "Material files end in .xml, .svrmat, .sldmat or .kwimat."));
    QFile f(path);
    if (!f.exists())
        return fail(err("FileMissing", "The file does not exist."));
    if (f.size() > MaxFileBytes)
        return fail(err("FileTooLarge", "The file is too large to be a material file."));
    if (!f.open(QIODevice::ReadOnly))
        return fail(err("FileUnreadable", "The file cannot be read."));
    const QByteArray data = f.read(MaxFileBytes + 1);
    switch (format) {
    case Format::Xml: return ReadXml(data);
    case Format::Svrmat: return ReadSvrmat(data);
    case Format::Sldmat: return ReadSldmat(data);
    case Format::Kwimat: return ReadKwimat(data);
    case Format::Unknown: break;
    }
    return fail(QString());
}

QByteArray WriteSvrmat(const CKwMaterial& material) { return writeOwn("svrmat", {material}); }

QByteArray WriteKwimat(const QList<CKwMaterial>& materials) { return writeOwn("kwimat", materials); }

QString BaseDataFolder()
{
    const QString env = qEnvironmentVariable("KW_DATA_DIR");
    if (!env.isEmpty())
        return QDir::cleanPath(env);
    return QCoreApplication::instance() ? QCoreApplication::applicationDirPath()
                                        : QDir::currentPath();
}

QString DatabaseFolder()
{
    KW_LOG_METHOD(CallerTag);
    const QString section = QLatin1String(SettingsSection);
    const QString entry = QLatin1String(SettingsEntry);
    QString folder = KwReadRegistryCurrentUser(section, entry, QString());
    if (folder.trimmed().isEmpty()) {
        folder = QDir::toNativeSeparators(BaseDataFolder() + QStringLiteral("/Materials"));
        KwWriteToRegistryCurrentUser(section, entry, folder);
    }
    return folder;
}

void RememberFolder(const QString& folder)
{
    KW_LOG_METHOD(CallerTag);
    KwWriteToRegistryCurrentUser(QLatin1String(SettingsSection), QLatin1String(SettingsEntry),
                                 folder);
}

} // namespace KwMaterialDatabase
