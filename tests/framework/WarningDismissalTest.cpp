// Dismissed advisories: the flag round-trips through the registry, values of the wrong kind read
// as not dismissed, the reset forgets every flag and nothing else, and the advisory box with
// its "Don't show again" keeps the choice only when it is not cancelled.
#include "CKwMaterialBrowserDlg.h"
#include "KwRegistry.h"
#include "KwTestSupport.h"
#include "KwWarningDismissal.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

const QString kSection = QString::fromLatin1(KwWarningMessagesSection);

// Runs `action`, answering each advisory box that appears: its check box set to `tick`, then
// `button` pressed. The texts of the boxes seen.
QStringList answerAdvisories(const std::function<void()>& action, bool tick,
                             QMessageBox::StandardButton button)
{
    QStringList seen;
    QTimer t;
    t.setInterval(5);
    QObject::connect(&t, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || !box->isVisible())
            return;
        seen << box->text();
        EXPECT_NE(box->checkBox(), nullptr);
        if (box->checkBox()) {
            EXPECT_EQ(box->checkBox()->text(), "Don't show again");
            box->checkBox()->setChecked(tick);
        }
        if (QAbstractButton* b = box->button(button))
            b->click();
        else
            box->reject();
    });
    t.start();
    action();
    return seen;
}

class WarningDismissal : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
};

} // namespace

TEST_F(WarningDismissal, storedValuesOfEveryKindReadSafely)
{
    struct Case
    {
        const char* stored; // nullptr: no entry
        bool dismissed;
    };
    const Case cases[] = {{nullptr, false}, {"1", true},    {"0", false},   {" 1 ", true},
                          {"7", true},      {"-1", true},   {"yes", false}, {"true", false},
                          {"1.5", false},   {"", false},    {"1e3", false}, {"0x1", false}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.stored ? c.stored : "(none)");
        KwRemoveRegistrySection(kSection);
        if (c.stored)
            KwWriteToRegistryCurrentUser(kSection, "Advice", QString::fromLatin1(c.stored));
        EXPECT_EQ(KwIsWarningDismissed("Advice"), c.dismissed);
    }
    // Round trip through the helper; an empty key is never a flag.
    EXPECT_TRUE(KwSetWarningDismissed("Advice", true));
    EXPECT_TRUE(KwIsWarningDismissed("Advice"));
    EXPECT_TRUE(KwSetWarningDismissed("Advice", false));
    EXPECT_FALSE(KwIsWarningDismissed("Advice"));
    EXPECT_FALSE(KwSetWarningDismissed(QString(), true));
    EXPECT_FALSE(KwIsWarningDismissed(QString()));
}

TEST_F(WarningDismissal, valuesTheSettingsFileHoldsAsListsOrGarbageAreNotDismissed)
{
    QTemporaryDir dir;
    const QString path = QDir(dir.path()).filePath("settings.ini");
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("[KwGeneralWarningMessages]\n"
            "List=1, 2\n"
            "Bytes=@ByteArray(\\x1)\n"
            "Point=@Point(1 2)\n"
            "Good=1\n");
    f.close();
    KwSetRegistryFile(path);
    for (const char* key : {"List", "Bytes", "Point"})
        EXPECT_FALSE(KwIsWarningDismissed(QString::fromLatin1(key))) << key;
    EXPECT_TRUE(KwIsWarningDismissed("Good"));
    kwtest::IsolateSettings();
}

TEST_F(WarningDismissal, resetForgetsEveryFlagAndNothingElse)
{
    for (const char* key : {"A", "B", "C"})
        KwSetWarningDismissed(QString::fromLatin1(key), true);
    KwWriteToRegistryCurrentUser("License", "Type", 2);
    EXPECT_EQ(KwResetWarningDismissals(), 3);
    for (const char* key : {"A", "B", "C"})
        EXPECT_FALSE(KwIsWarningDismissed(QString::fromLatin1(key)));
    EXPECT_EQ(KwReadRegistryCurrentUser("License", "Type", 0), 2);
    EXPECT_EQ(KwResetWarningDismissals(), 0);
}

TEST_F(WarningDismissal, theBoxKeepsTheTickUnlessCancelled)
{
    struct Case
    {
        const char* what;
        unsigned style;
        bool tick;
        QMessageBox::StandardButton button;
        int result;
        bool kept;
    };
    const Case cases[] = {
        {"ok, ticked", KwMB::OK, true, QMessageBox::Ok, KwMB::IDOK, true},
        {"ok, not ticked", KwMB::OK, false, QMessageBox::Ok, KwMB::IDOK, false},
        {"cancel, ticked", KwMB::OKCANCEL, true, QMessageBox::Cancel, KwMB::IDCANCEL, false},
        {"no, ticked", KwMB::YESNO, true, QMessageBox::No, KwMB::IDNO, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        KwResetWarningDismissals();
        int result = 0;
        const QStringList seen = answerAdvisories(
            [&] { result = KwAdvisoryBox(nullptr, "Advice", "Take care.", "Caption", c.style); },
            c.tick, c.button);
        EXPECT_EQ(seen, QStringList{"Take care."});
        EXPECT_EQ(result, c.result);
        EXPECT_EQ(KwIsWarningDismissed("Advice"), c.kept);
    }
    // Dismissed: nothing shows and the answer is OK.
    KwSetWarningDismissed("Advice", true);
    int result = 0;
    EXPECT_TRUE(answerAdvisories([&] { result = KwAdvisoryBox(nullptr, "Advice", "x", "y"); },
                                 false, QMessageBox::Ok)
                    .isEmpty());
    EXPECT_EQ(result, KwMB::IDOK);
}

TEST_F(WarningDismissal, theBrowsersAdvisoryAboutUnreadFilesCanBeDismissed)
{
    QTemporaryDir dir;
    QFile bad(QDir(dir.path()).filePath("broken.kwimat"));
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("<kwimat");
    bad.close();
    auto open = [&] {
        CKwMaterialBrowserDlg d;
        d.AddFolder(dir.path());
        d.Create();
        d.show();
        QApplication::processEvents();
    };
    const QStringList first = answerAdvisories(open, true, QMessageBox::Ok);
    ASSERT_EQ(first.size(), 1);
    EXPECT_TRUE(first[0].contains("broken.kwimat"));
    EXPECT_TRUE(KwIsWarningDismissed("MaterialLibraryUnreadFiles"));
    EXPECT_TRUE(answerAdvisories(open, false, QMessageBox::Ok).isEmpty());
    KwResetWarningDismissals();
    EXPECT_EQ(answerAdvisories(open, false, QMessageBox::Ok).size(), 1);
}
