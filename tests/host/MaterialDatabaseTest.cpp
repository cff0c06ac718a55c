// The material database readers: the shipped database, bad files of every kind, dispatch by
// extension, the program's own formats written and read back, and the database folder.
#include "CKwMaterial.h"
#include "KwMaterialDatabase.h"
#include "KwMethodLogger.h"
#include "KwNumbers.h"
#include "KwRegistry.h"
#include "KwTestSupport.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace DB = KwMaterialDatabase;

namespace {

QString shippedFolder() { return QStringLiteral(KW_MATERIALS_SOURCE_DIR); }

TEST(MaterialDatabase, everyShippedFileReadsCleanlyAndTheLibraryAgrees)
{
    const QDir dir(shippedFolder());
    const QStringList files = dir.entryList({"*.svrmat"}, QDir::Files);
    ASSERT_GE(files.size(), 30);
    QStringList names;
    QSet<int> types;
    for (const QString& f : files) {
        const DB::ReadResult r = DB::ReadFile(dir.filePath(f));
        ASSERT_TRUE(r.ok) << f.toStdString() << ": " << r.error.toStdString();
        EXPECT_TRUE(r.warnings.isEmpty()) << f.toStdString() << ": " << r.warnings.join("; ").toStdString();
        ASSERT_EQ(r.materials.size(), 1);
        names << r.materials[0].GetName();
        types << r.materials[0].GetMaterialType();
    }
    for (int t : {CKwMaterial::Isotropic, CKwMaterial::Orthotropic2D, CKwMaterial::Orthotropic3D,
                  CKwMaterial::Hyperelastic, CKwMaterial::Nitinol})
        EXPECT_TRUE(types.contains(t)) << t;

    const DB::ReadResult lib = DB::ReadFile(dir.filePath("Engineering materials.kwimat"));
    ASSERT_TRUE(lib.ok) << lib.error.toStdString();
    QStringList libNames;
    for (const CKwMaterial& m : lib.materials)
        libNames << m.GetName();
    names.sort();
    libNames.sort();
    EXPECT_EQ(names, libNames);

    const DB::ReadResult steel = DB::ReadFile(dir.filePath("AISI 1020 Steel, cold rolled.svrmat"));
    ASSERT_TRUE(steel.ok);
    const CKwMaterial& m = steel.materials[0];
    EXPECT_DOUBLE_EQ(m.GetValue("EX"), 205e9);
    EXPECT_DOUBLE_EQ(m.GetValue("SIGXY"), 350e6);
    EXPECT_DOUBLE_EQ(m.GetValue("REFT"), 293.15);
    EXPECT_EQ(m.m_category, "Carbon steels");

    const DB::ReadResult cad = DB::ReadFile(dir.filePath("CAD library metals.sldmat"));
    ASSERT_TRUE(cad.ok) << cad.error.toStdString();
    EXPECT_GE(cad.materials.size(), 10);
    EXPECT_TRUE(cad.warnings.isEmpty());
    for (const CKwMaterial& c : cad.materials) {
        if (c.GetName() == "AISI 1020 Steel, cold rolled") { // its SIGYLD is the yield strength
            EXPECT_DOUBLE_EQ(c.GetValue("SIGXY"), m.GetValue("SIGXY"));
        }
    }
}

struct BadCase
{
    const char* name;
    const char* file;
    QByteArray data;
};

TEST(MaterialDatabase, badFilesAreRefusedWholeWithAReason)
{
    const QByteArray one = "<svrmat version='1'><material name='M' type='Isotropic'>";
    const QByteArray end = "</material></svrmat>";
    const auto prop = [](const char* k, const char* v, const char* u) {
        return QByteArray("<property key='") + k + "' value='" + v + "' unit='" + u + "'/>";
    };
    const BadCase cases[] = {
        {"empty", "a.svrmat", ""},
        {"blank", "a.kwimat", "  \n "},
        {"not xml", "a.svrmat", "EX = 2e11\nNUXY = 0.3\n"},
        {"binary", "a.xml", QByteArray("\x00\x01\xff\xfe", 4)},
        {"truncated", "a.svrmat", one + prop("EX", "2e11", "Pa")},
        {"unknown extension", "a.mat", one + end},
        {"wrong root", "a.svrmat", "<kwimat><material name='M'/></kwimat>"},
        {"other xml", "a.xml", "<html><body/></html>"},
        {"no material", "a.kwimat", "<kwimat version='1'/>"},
        {"two in one material file", "a.svrmat",
         "<svrmat><material name='A'/><material name='B'/></svrmat>"},
        {"newer version", "a.svrmat", "<svrmat version='2'><material name='A'/></svrmat>"},
        {"no name", "a.svrmat", "<svrmat><material/></svrmat>"},
        {"unknown type", "a.svrmat", "<svrmat><material name='A' type='Cheese'/></svrmat>"},
        {"not a number", "a.svrmat", one + prop("EX", "high", "Pa") + end},
        {"overflow", "a.svrmat", one + prop("EX", "1e400", "Pa") + end},
        {"absurd", "a.svrmat", one + prop("EX", "1e35", "Pa") + end},
        {"nan", "a.svrmat", one + prop("DENS", "nan", "kg/m3") + end},
        {"unknown unit", "a.svrmat", one + prop("EX", "200", "furlongs") + end},
        {"unit of another quantity", "a.svrmat", one + prop("DENS", "7.8", "GPa") + end},
        {"negative density", "a.svrmat", one + prop("DENS", "-7850", "kg/m3") + end},
        {"poisson 0.5", "a.svrmat", one + prop("NUXY", "0.5", "") + end},
        {"matrix size", "a.svrmat",
         "<svrmat><material name='A' type='Anisotropic3D'><matrix unit='Pa'>1 2 3</matrix>"
         "</material></svrmat>"},
        {"dtd", "a.svrmat",
         "<!DOCTYPE svrmat [<!ENTITY e 'x'>]><svrmat><material name='&e;'/></svrmat>"},
        {"cad library negative", "a.sldmat",
         "<materials><classification name='c'><material name='m'><physicalproperties>"
         "<EX value='-2e11'/></physicalproperties></material></classification></materials>"},
        {"cad library not a number", "a.SLDMAT",
         "<materials><material name='m'><physicalproperties><DENS value='heavy'/>"
         "</physicalproperties></material></materials>"},
        {"cad library truncated", "a.sldmat",
         "<materials><material name='m'><physicalproperties><DENS value='7800'/>"},
        {"huge", "a.kwimat",
         "<kwimat>" + QByteArray(DB::MaxFileBytes, ' ') + "<material name='A'/></kwimat>"},
    };
    QTemporaryDir dir;
    for (const BadCase& c : cases) {
        SCOPED_TRACE(c.name);
        QFile f(dir.filePath(c.file));
        ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
        f.write(c.data);
        f.close();
        const DB::ReadResult r = DB::ReadFile(f.fileName());
        EXPECT_FALSE(r.ok);
        EXPECT_FALSE(r.error.isEmpty());
        EXPECT_TRUE(r.materials.isEmpty());
    }
    const DB::ReadResult missing = DB::ReadFile(dir.filePath("gone.svrmat"));
    EXPECT_FALSE(missing.ok);
    EXPECT_FALSE(missing.error.isEmpty());
}

TEST(MaterialDatabase, unknownKeysAndMissingUnitsAreWarnedAboutAndRead)
{
    const DB::ReadResult r = DB::ReadSvrmat(
        "<svrmat><material name='M'><property key='EX' value='200e9'/>"
        "<property key='COLOUR' value='3' unit='-'/><property key='FANG' value='30'/>"
        "<property key='REFT' value='68' unit='F'/><property key='NUXY' value='0.3'/>"
        "<shader/><curve kind='StressStrain' yunit='MPa'><point x='0' y='0'/>"
        "<point x='0.01' y='250'/></curve></material></svrmat>");
    ASSERT_TRUE(r.ok) << r.error.toStdString();
    const CKwMaterial& m = r.materials[0];
    EXPECT_DOUBLE_EQ(m.GetValue("EX"), 200e9);
    EXPECT_NEAR(m.GetValue("FANG"), 0.5235987756, 1e-9); // the table's unit: degrees
    EXPECT_NEAR(m.GetValue("REFT"), 293.15, 1e-9);
    EXPECT_EQ(m.GetCurve(CKwMaterial::StressStrain).y, (std::vector<double>{0, 250e6}));
    // EX and FANG without units, the unknown key, the unknown element.
    EXPECT_EQ(r.warnings.size(), 4) << r.warnings.join("; ").toStdString();
}

TEST(MaterialDatabase, extensionsDispatchWithoutRegardToCase)
{
    using F = DB::Format;
    const std::pair<const char*, F> cases[] = {
        {"a.xml", F::Xml},        {"b.XML", F::Xml},       {"c.SvrMat", F::Svrmat},
        {"d.sldmat", F::Sldmat},  {"e.KWIMAT", F::Kwimat}, {"f.mat", F::Unknown},
        {"svrmat", F::Unknown},   {"g.svrmat.bak", F::Unknown}};
    for (const auto& [path, format] : cases)
        EXPECT_EQ(DB::FormatOfPath(path), format) << path;
    // An .xml file may hold any of the three documents.
    EXPECT_TRUE(DB::ReadXml("<svrmat><material name='A'/></svrmat>").ok);
    EXPECT_TRUE(DB::ReadXml("<kwimat><material name='A'/><material name='B'/></kwimat>").ok);
    const DB::ReadResult cad = DB::ReadXml(
        "<m:materials xmlns:m='urn:x'><m:classification name='c'><material name='m'>"
        "<physicalproperties><E1 value='1e11'/><E2 value='1e10'/><NUXY value='0.3'/>"
        "<G12 value='5e9'/><XYZ value='1'/></physicalproperties><shaders><a/></shaders>"
        "</material></m:classification></m:materials>");
    ASSERT_TRUE(cad.ok) << cad.error.toStdString();
    EXPECT_EQ(cad.materials[0].GetMaterialType(), CKwMaterial::Orthotropic2D);
    EXPECT_EQ(cad.materials[0].m_category, "c");
    EXPECT_EQ(cad.warnings.size(), 1);
}

TEST(MaterialDatabase, ownFormatsRoundTripEveryPart)
{
    CKwMaterial m(7, "Test <&> \"material\"");
    m.SetMaterialType(CKwMaterial::Anisotropic3D);
    m.m_category = "Tests";
    m.m_description = "line one\nline two";
    m.m_failureTheory = CKwMaterial::PrincipalStress;
    m.m_hyperelasticModel = CKwMaterial::Ogden;
    m.m_fatigueOn = true;
    m.SetValue("DENS", 1234.5);
    m.SetValue("FANG", 0.1);
    m.SetValue("REFT", 300.0);
    m.SetExtra(CKwMaterial::SHIFT, 1.0 / 3.0);
    for (int k = 0; k < CKwMaterial::MatrixSize; ++k)
        m.SetMatrix(k, 1e9 * (k + 1) / 7.0);
    m.SetCurve(CKwMaterial::ConductivityVsTemperature, {{273.15, 373.15}, {50.0, 48.5}});
    m.SetCurve(CKwMaterial::PureShear, {{0.0, 0.1}, {0.0, 1.0 / 3.0}});

    const DB::ReadResult one = DB::ReadSvrmat(DB::WriteSvrmat(m));
    ASSERT_TRUE(one.ok) << one.error.toStdString();
    CKwMaterial back = one.materials[0];
    back.SetID(7); // files do not carry model ids
    EXPECT_NEAR(back.GetValue("FANG"), 0.1, 1e-15);
    back.SetValue("FANG", 0.1);
    EXPECT_TRUE(back == m);

    CKwMaterial second(1, "Second");
    const DB::ReadResult lib = DB::ReadKwimat(DB::WriteKwimat({m, second}));
    ASSERT_TRUE(lib.ok);
    ASSERT_EQ(lib.materials.size(), 2);
    EXPECT_EQ(lib.materials[1].GetName(), "Second");
}

TEST(MaterialDatabase, folderComesFromTheSettingsOrTheDataFolderAndIsWrittenBack)
{
    kwtest::IsolateSettings();
    qputenv("KW_DATA_DIR", "/opt/kwdata");
    CKwMethodLogger::ClearJournal();
    const QString folder = DB::DatabaseFolder();
    qunsetenv("KW_DATA_DIR");
    EXPECT_EQ(QDir::fromNativeSeparators(folder), "/opt/kwdata/Materials");
    EXPECT_EQ(KwReadRegistryCurrentUser("Database Settings", "Materials Database Path", QString()),
              folder);
    EXPECT_TRUE(CKwMethodLogger::Journal().contains("> CKwMaterialDialog::LoadMaterialFromDB"));

    DB::RememberFolder("/home/me/mats");
    EXPECT_EQ(DB::DatabaseFolder(), "/home/me/mats");
}

} // namespace
