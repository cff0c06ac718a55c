// The reference host's language service and per-user settings.
#include "CKwDlgBase.h"
#include "CKwXMLUtils.h"
#include "KwRegistry.h"
#include "KwTestSupport.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {
class LanguageTest : public ::testing::Test
{
protected:
    void TearDown() override { CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en")); }
};

class CountingDialog : public CKwDlgBase
{
public:
    int calls = 0;
    void SetTextToCurrentLang() override { ++calls; }
};
} // namespace

TEST_F(LanguageTest, everyShippedLanguageLoads)
{
    for (const QString& code : CKwXMLUtils::GetAvailableLanguages()) {
        QString error;
        EXPECT_TRUE(CKwXMLUtils::SetCurrentLanguage(code, &error)) << qPrintable(error);
        EXPECT_EQ(CKwXMLUtils::GetCurrentLanguage(), code);
    }
}

TEST_F(LanguageTest, unknownLanguageKeepsTheCurrentOne)
{
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de"));
    QString error;
    for (const char* code : {"xx", "", "../de", "DE"}) {
        EXPECT_FALSE(CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(code), &error)) << code;
        EXPECT_FALSE(error.isEmpty());
        EXPECT_EQ(CKwXMLUtils::GetCurrentLanguage(), QStringLiteral("de"));
    }
}

TEST_F(LanguageTest, pseudoLanguageMarksEveryFamily)
{
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps"));
    const QString s = QStringLiteral("General");
    const QString k = QStringLiteral("LabelName");
    for (const QString& t : {CKwXMLUtils::GetInternationalPropPageItemText(s, k, QStringLiteral("Name")),
                             CKwXMLUtils::GetInternationalErrorMessageItemText(s, k, QStringLiteral("Name")),
                             CKwXMLUtils::GetInternationalTreeItemText(s, k, QStringLiteral("Name"))})
        EXPECT_EQ(t, CKwXMLUtils::PseudoPrefix() + QStringLiteral("Name") + CKwXMLUtils::PseudoSuffix());
}

TEST_F(LanguageTest, malformedDocumentsAreRefused)
{
    const char* bad[] = {"", "<", "<KwLanguage>", "<Other code='x'/>", "<KwLanguage code=''/>",
                         "<KwLanguage code='x'><Texts kind='PropPage'>", "\xff\xfe\x00<"};
    for (const char* xml : bad) {
        QString code;
        QString error;
        EXPECT_EQ(CKwXMLUtils::ParseLanguageDocument(QByteArray(xml), &code, &error), -1) << xml;
        EXPECT_FALSE(error.isEmpty());
    }
    // Unknown families and keyless texts are skipped, the rest is read.
    const QByteArray ok = "<KwLanguage code='fr'><Texts kind='Other'><Section name='A'>"
                          "<Text key='k'>x</Text></Section></Texts><Texts kind='PropPage'>"
                          "<Section name='General'><Text key='LabelName'>Nom</Text>"
                          "<Text>lost</Text></Section></Texts></KwLanguage>";
    QString code;
    EXPECT_EQ(CKwXMLUtils::ParseLanguageDocument(ok, &code, nullptr), 1);
    EXPECT_EQ(code, QStringLiteral("fr"));
}

TEST_F(LanguageTest, languageFileFromDiskTranslatesAndFallsBack)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("fr.xml"));
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("<KwLanguage code='fr'><Texts kind='ErrorMessage'><Section name='FMView'>"
            "<Text key='FunctionalityNotImplemented'>Pas disponible.</Text></Section>"
            "</Texts></KwLanguage>");
    f.close();
    ASSERT_TRUE(CKwXMLUtils::LoadLanguageFile(path));
    EXPECT_EQ(CKwXMLUtils::GetInternationalErrorMessageItemText(
                  QStringLiteral("FMView"), QStringLiteral("FunctionalityNotImplemented"),
                  QStringLiteral("x")),
              QStringLiteral("Pas disponible."));
    EXPECT_EQ(CKwXMLUtils::GetInternationalPropPageItemText(
                  QStringLiteral("FMView"), QStringLiteral("FunctionalityNotImplemented"),
                  QStringLiteral("default")),
              QStringLiteral("default"));
    EXPECT_FALSE(CKwXMLUtils::LoadLanguageFile(dir.filePath(QStringLiteral("missing.xml"))));
}

TEST_F(LanguageTest, switchingNotifiesAndRetranslatesOpenDialogs)
{
    int notified = 0;
    const int h = CKwXMLUtils::AddLanguageChangedListener([&] {
        ++notified;
        CKwDlgBase::RetranslateAll();
    });
    CountingDialog a;
    CountingDialog b;
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de"));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("xx"));
    CKwXMLUtils::RemoveLanguageChangedListener(h);
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    EXPECT_EQ(notified, 1);
    EXPECT_EQ(a.calls, 1);
    EXPECT_EQ(b.calls, 1);
}

TEST_F(LanguageTest, languageSettingChoosesTheLanguage)
{
    kwtest::IsolateSettings();
    KwWriteToRegistryCurrentUser(CKwXMLUtils::LanguageSettingSection(),
                                 CKwXMLUtils::LanguageSettingEntry(), QStringLiteral("de"));
    CKwXMLUtils::ApplyLanguageSetting();
    EXPECT_EQ(CKwXMLUtils::GetCurrentLanguage(), QStringLiteral("de"));
    KwWriteToRegistryCurrentUser(CKwXMLUtils::LanguageSettingSection(),
                                 CKwXMLUtils::LanguageSettingEntry(), QStringLiteral("zz"));
    CKwXMLUtils::ApplyLanguageSetting();
    EXPECT_EQ(CKwXMLUtils::GetCurrentLanguage(), QStringLiteral("en"));
}

TEST(Settings, readsDefaultsForMissingOrGarbledEntries)
{
    kwtest::IsolateSettings();
    EXPECT_EQ(KwReadRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("E"), 17), 17);
    KwWriteToRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("E"), QStringLiteral("x1"));
    EXPECT_EQ(KwReadRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("E"), 17), 17);
    KwWriteToRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("E"), -250);
    EXPECT_EQ(KwReadRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("E"), 17), -250);
    // Sections and subkeys keep entries apart; the empty section is a section of its own.
    KwWriteToRegistryCurrentUser(QString(), QStringLiteral("E"), 1);
    KwWriteToRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("E"), 2, QStringLiteral("K"));
    EXPECT_EQ(KwReadRegistryCurrentUser(QString(), QStringLiteral("E"), 0), 1);
    EXPECT_EQ(KwReadRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("E"), 0,
                                        QStringLiteral("K")),
              2);
    EXPECT_EQ(KwReadRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("E"), 0), -250);
}

// Writes are kept in memory and reach the file on flush, on redirection, and at the event loop's
// next turn; whatever path they take, another reader of the file sees every entry.
TEST(Settings, writesReachTheFileOnFlushRedirectAndEventLoop)
{
    QTemporaryDir dir;
    const QString first = dir.filePath(QStringLiteral("first.ini"));
    const QString second = dir.filePath(QStringLiteral("second.ini"));
    const auto onDisk = [](const QString& file, const QString& key) {
        return QSettings(file, QSettings::IniFormat).value(key).toString();
    };

    KwSetRegistryFile(first);
    KwWriteToRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("A"), 1);
    ASSERT_TRUE(KwFlushRegistry());
    EXPECT_EQ(onDisk(first, QStringLiteral("S/A")), QStringLiteral("1"));

    KwWriteToRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("B"), QStringLiteral("two"));
    KwSetRegistryFile(second);
    EXPECT_EQ(onDisk(first, QStringLiteral("S/B")), QStringLiteral("two"));
    // The new file starts empty: nothing of the old one leaks over.
    EXPECT_EQ(KwReadRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("A"), -1), -1);
    EXPECT_EQ(KwRegistryFile(), second);

    KwWriteToRegistryCurrentUser(QStringLiteral("S"), QStringLiteral("C"), 3);
    QCoreApplication::processEvents();
    EXPECT_EQ(onDisk(second, QStringLiteral("S/C")), QStringLiteral("3"));
    kwtest::IsolateSettings();
}
