// About box and tech preview: their texts, and the explicit-analysis switch.
#include "CFMView.h"
#include "CKwAboutDlg.h"
#include "CKwDlgBase.h"
#include "CKwMFCUIApp.h"
#include "CKwMFCUITechPreview.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "KwTestSupport.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>

namespace {
class PeripheryTest : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    void TearDown() override { CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en")); }
    kwtest::Host host;
};

QCheckBox* explicitSwitch(QWidget* w) { return w->findChild<QCheckBox*>(QStringLiteral("enableExplicit")); }
} // namespace

TEST_F(PeripheryTest, everyCaptionPassesThroughTheLanguageService)
{
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps"));
    kwtest::AnswerModals(
        [&] {
            for (unsigned kind : {44u, 87u}) {
                DialogLaunchRequest r = host.Request(kind);
                LaunchDialog(&r);
            }
        },
        QMessageBox::Ok, [](QWidget* w) {
            EXPECT_EQ(kwtest::UntranslatedCaptions(w), QStringList()) << qPrintable(w->objectName());
        });
}

TEST_F(PeripheryTest, aboutBoxNamesProductVersionAndQt)
{
    DialogLaunchRequest r{};
    r.kind = 44; // the about box needs neither view nor model
    QString title;
    QStringList data;
    kwtest::AnswerModals([&] { LaunchDialog(&r); }, QMessageBox::Ok, [&](QWidget* w) {
        title = w->windowTitle();
        for (QLabel* l : w->findChildren<QLabel*>())
            if (l->property("kwData").toBool())
                data << l->text();
    });
    EXPECT_TRUE(title.contains(CKwMFCUIApp::ProductDisplayName()));
    EXPECT_TRUE(data.contains(QString::fromLatin1(qVersion())));
    EXPECT_TRUE(data.contains(CKwAboutDlg::BuildText()));
    EXPECT_EQ(data.size(), 4); // product, version, build, Qt
}

TEST_F(PeripheryTest, techPreviewSwitchSetsWhatTheAddInAnswers)
{
    const struct
    {
        bool initially;
        bool toggle;
        bool ok;
        bool expected;
    } cases[] = {{false, true, true, true},
                 {false, true, false, false},
                 {true, true, true, false},
                 {true, false, true, true}};
    for (const auto& c : cases) {
        host.addin->SetExplicitEnabledInTechPreview(c.initially);
        DialogLaunchRequest r = host.Request(87);
        kwtest::AnswerModals([&] { LaunchDialog(&r); }, QMessageBox::Ok, [&](QWidget* w) {
            QCheckBox* box = explicitSwitch(w);
            ASSERT_NE(box, nullptr);
            EXPECT_EQ(box->isChecked(), c.initially);
            if (c.toggle)
                box->click();
            auto* button = w->findChild<QPushButton*>(c.ok ? QStringLiteral("ok")
                                                           : QStringLiteral("cancel"));
            button->click();
        });
        EXPECT_EQ(host.addin->IsExplicitEnabledInTechPreview(), c.expected);
    }
}

TEST_F(PeripheryTest, techPreviewRefusesOkWhileTheSolverRuns)
{
    host.view->SetSolvraRunning(true);
    DialogLaunchRequest r = host.Request(87);
    bool stayedOpen = false;
    kwtest::AnswerModals([&] { LaunchDialog(&r); }, QMessageBox::Ok, [&](QWidget* w) {
        explicitSwitch(w)->click();
        w->findChild<QPushButton*>(QStringLiteral("ok"))->click();
        stayedOpen = w->isVisible();
    });
    EXPECT_TRUE(stayedOpen);
    EXPECT_FALSE(host.addin->IsExplicitEnabledInTechPreview());
    EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
    host.view->SetSolvraRunning(false);
}

TEST_F(PeripheryTest, techPreviewWithoutAddInCannotBeSwitched)
{
    TheApplication = nullptr;
    CKwMFCUITechPreview dlg(nullptr);
    kwtest::AnswerModals([&] { dlg.DoModal(); }, QMessageBox::Ok, [&](QWidget* w) {
        EXPECT_FALSE(explicitSwitch(w)->isEnabled());
        w->findChild<QPushButton*>(QStringLiteral("ok"))->click();
    });
    TheApplication = host.addin.get();
}

TEST_F(PeripheryTest, openDialogFollowsALanguageSwitch)
{
    CKwMFCUITechPreview dlg(host.view.get());
    kwtest::AnswerModals([&] { dlg.DoModal(); }, QMessageBox::Ok, [&](QWidget* w) {
        EXPECT_EQ(w->windowTitle(), QStringLiteral("Tech Preview"));
        CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de"));
        CKwDlgBase::RetranslateAll();
        EXPECT_EQ(w->windowTitle(), QStringLiteral("Technische Vorschau"));
        EXPECT_EQ(explicitSwitch(w)->text(), QStringLiteral("Explizite Analysen aktivieren"));
    });
}
