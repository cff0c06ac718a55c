// LaunchDialog through the real entry point: routing, view preparation and the special kinds.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMFCUIApp.h"
#include "CKwPlot.h"
#include "CKwMFCDialog.h"
#include "CKwUIBase.h"
#include "CKwiCKAddin.h"
#include "KwModuleWindows.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QDialog>
#include <QMessageBox>
#include <QTimer>
#include <gtest/gtest.h>

namespace {

const char* kNotAvailable = "Requested functionality is not available in the current version.";

class LaunchTest : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    kwtest::Host host;
};

// A host-side editor sitting on the view, as a kind-82 target.
class FakeEditor : public QWidget, public CKwUIBase
{
public:
    QString text;
    unsigned code1 = 0, code2 = 0;
    int calls = 0;
    void OnKwMessage(const QString& t, unsigned c1, unsigned c2) override
    {
        text = t;
        code1 = c1;
        code2 = c2;
        ++calls;
    }
};

} // namespace

TEST_F(LaunchTest, nullRequestDoesNothing)
{
    const auto rec = kwtest::AnswerModals([] { LaunchDialog(nullptr); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(host.addin->GetToolbarQueryCount(), 0);
}

class UnknownKindTest : public LaunchTest, public ::testing::WithParamInterface<unsigned>
{
};

TEST_P(UnknownKindTest, showsNotAvailableAndOpensNothing)
{
    DialogLaunchRequest r = host.Request(GetParam());
    const auto before = kwtest::VisibleTopLevels();
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    ASSERT_EQ(rec.boxTexts.size(), 1);
    EXPECT_EQ(rec.boxTexts.first(), QString::fromLatin1(kNotAvailable));
    EXPECT_EQ(rec.boxTitles.first(), CKwMFCUIApp::ProductDisplayName());
    EXPECT_EQ(kwtest::VisibleTopLevels(), before);
}

INSTANTIATE_TEST_SUITE_P(UnassignedAndOutOfRange, UnknownKindTest,
                         ::testing::Values(5u, 10u, 11u, 18u, 20u, 38u, 41u, 42u, 50u, 51u, 57u,
                                           62u, 67u, 69u, 71u, 75u, 81u, 84u, 90u, 91u, 1000u,
                                           0x7FFFFFFFu, 0xFFFFFFFFu));

TEST_F(LaunchTest, unknownKindWithoutViewStillAnswers)
{
    DialogLaunchRequest r{};
    r.kind = 90;
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.boxTexts, QStringList{QString::fromLatin1(kNotAvailable)});
}

TEST_F(LaunchTest, ignoredKindsOpenNothingAndSayNothing)
{
    for (unsigned kind : {19u, 40u}) {
        DialogLaunchRequest r = host.Request(kind);
        int dummySeries = 0;
        r.object = &dummySeries;
        const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
        EXPECT_EQ(rec.count(), 0) << "kind " << kind;
    }
    DialogLaunchRequest r = host.Request(47);
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0) << "kind 47 with no object";
}

TEST_F(LaunchTest, plotWithoutResultsSaysSoAndQuietVariantSaysNothing)
{
    CKwAnalysis* noResults = host.model->m_analyses.at(1);
    ASSERT_FALSE(noResults->HasResultSet());
    DialogLaunchRequest r = host.Request(7);
    r.analysis = noResults;
    auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.boxTexts, QStringList{QStringLiteral("No Valid Results are available.")});

    r.kind = 26;
    rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);

    // Without an analysis and without a context there is nothing to plot.
    r.kind = 7;
    r.analysis = nullptr;
    rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);
}

TEST_F(LaunchTest, statusMessageGoesToTheOpenEditor)
{
    FakeEditor editor;
    host.view->AddOpenDialog(&editor);
    const std::wstring text = L"Meshing finished";
    MessageRequest m{};
    m.text = text.c_str();
    m.buttons = 4711;
    m.code = 42;
    DialogLaunchRequest r = host.Request(82);
    r.object = &m;
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(editor.calls, 1);
    EXPECT_EQ(editor.text, QStringLiteral("Meshing finished"));
    EXPECT_EQ(editor.code1, 4711u);
    EXPECT_EQ(editor.code2, 42u);
    host.view->LeaveDialogStack(&editor);
}

TEST_F(LaunchTest, statusMessageWithoutEditorIsABox)
{
    const std::wstring text = L"Mesh has 12 warnings";
    MessageRequest m{};
    m.text = text.c_str();
    DialogLaunchRequest r = host.Request(82);
    r.object = &m;
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.boxTexts, QStringList{QStringLiteral("Mesh has 12 warnings")});
    EXPECT_EQ(rec.boxTitles.first(), CKwMFCUIApp::ProductDisplayName());
}

TEST_F(LaunchTest, messageKindsNeedAViewAndARecord)
{
    MessageRequest m{};
    m.result = 99;
    for (unsigned kind : {82u, 83u}) {
        DialogLaunchRequest noView{};
        noView.kind = kind;
        noView.object = &m;
        DialogLaunchRequest noRecord = host.Request(kind);
        DialogLaunchRequest nullText = host.Request(kind);
        MessageRequest empty{};
        nullText.object = &empty;
        auto rec = kwtest::AnswerModals([&] { LaunchDialog(&noView); });
        EXPECT_EQ(rec.count(), 0) << kind;
        rec = kwtest::AnswerModals([&] { LaunchDialog(&noRecord); });
        EXPECT_EQ(rec.count(), 0) << kind;
        rec = kwtest::AnswerModals([&] { LaunchDialog(&nullText); });
        EXPECT_EQ(rec.boxTexts, QStringList{QString()}) << kind;
    }
    EXPECT_EQ(m.result, 99u);
}

struct MessageBoxCase
{
    unsigned buttons;
    QMessageBox::StandardButton press;
    unsigned expectedResult;
    QMessageBox::StandardButtons expectedButtons;
};

class MessageBoxKindTest : public LaunchTest, public ::testing::WithParamInterface<MessageBoxCase>
{
};

TEST_P(MessageBoxKindTest, storesThePressedButton)
{
    const MessageBoxCase c = GetParam();
    const std::wstring text = L"Continue?";
    MessageRequest m{};
    m.text = text.c_str();
    m.buttons = c.buttons;
    m.icon = 1;
    m.result = 1234;
    DialogLaunchRequest r = host.Request(83);
    r.object = &m;
    QMessageBox::StandardButtons seen;
    QTimer probe;
    QObject::connect(&probe, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            seen = box->standardButtons();
    });
    probe.start(1);
    kwtest::AnswerModals([&] { LaunchDialog(&r); }, c.press);
    EXPECT_EQ(m.result, c.expectedResult);
    EXPECT_EQ(seen, c.expectedButtons);
}

INSTANTIATE_TEST_SUITE_P(
    ButtonsAndAnswers, MessageBoxKindTest,
    ::testing::Values(
        MessageBoxCase{0, QMessageBox::Ok, 0, QMessageBox::Ok},
        MessageBoxCase{1, QMessageBox::Yes, 5, QMessageBox::Yes | QMessageBox::No},
        MessageBoxCase{1, QMessageBox::No, 6, QMessageBox::Yes | QMessageBox::No},
        MessageBoxCase{2, QMessageBox::Ok, 0, QMessageBox::Ok | QMessageBox::Cancel},
        MessageBoxCase{2, QMessageBox::Cancel, 1, QMessageBox::Ok | QMessageBox::Cancel},
        MessageBoxCase{3, QMessageBox::Ok, 0, QMessageBox::Ok},
        MessageBoxCase{0xFFFFFFFF, QMessageBox::Ok, 0, QMessageBox::Ok}));

TEST_F(LaunchTest, messageBoxIconFollowsTheRecord)
{
    const struct
    {
        unsigned icon;
        QMessageBox::Icon expected;
    } cases[] = {{0, QMessageBox::Question},    {1, QMessageBox::Information},
                 {2, QMessageBox::Critical},    {3, QMessageBox::Warning},
                 {4, QMessageBox::Warning},     {5, QMessageBox::Information},
                 {0xFFFFFFFF, QMessageBox::Information}};
    for (const auto& c : cases) {
        const std::wstring text = L"x";
        MessageRequest m{};
        m.text = text.c_str();
        m.icon = c.icon;
        DialogLaunchRequest r = host.Request(83);
        r.object = &m;
        QMessageBox::Icon seen = QMessageBox::NoIcon;
        QString caption;
        QTimer probe;
        QObject::connect(&probe, &QTimer::timeout, [&] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                seen = box->icon();
                caption = box->windowTitle();
            }
        });
        probe.start(1);
        kwtest::AnswerModals([&] { LaunchDialog(&r); });
        EXPECT_EQ(seen, c.expected) << "icon " << c.icon;
        EXPECT_EQ(caption, CKwMFCUIApp::ProductDisplayName());
    }
}

TEST_F(LaunchTest, resultToolbarIsClosedUnlessResultsAreKept)
{
    host.view->SetActivePlot(host.model->m_plots.first());
    host.model->m_plots.first()->TurnPlotDisplayOn();
    host.view->CreateResultToolbarIfPlotDispalyed();
    ASSERT_TRUE(host.view->GetResultToolbar());

    DialogLaunchRequest keep = host.Request(19);
    keep.keepResults = 1;
    LaunchDialog(&keep);
    EXPECT_TRUE(host.view->GetResultToolbar());

    DialogLaunchRequest drop = host.Request(19);
    LaunchDialog(&drop);
    EXPECT_FALSE(host.view->GetResultToolbar());
    EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
}

TEST_F(LaunchTest, anotherOpenDialogRefusesTheRequestSilently)
{
    QWidget other;
    host.view->AddOpenDialog(&other);
    DialogLaunchRequest r = host.Request(90); // would otherwise say "not available"
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(host.addin->GetToolbarQueryCount(), 0);
    EXPECT_EQ(host.view->GetClearResultDisplayCount(), 0);

    // With results kept the open dialog does not stand in the way.
    r.keepResults = 1;
    const auto rec2 = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec2.boxTexts.size(), 1);
    host.view->LeaveDialogStack(&other);
}

TEST_F(LaunchTest, resultDisplayIsClearedExceptForPlotsAndWhileSolving)
{
    CKwPlot* plot = host.model->m_plots.first();
    host.view->SetActivePlot(plot);
    const struct
    {
        unsigned kind;
        bool solving;
        bool cleared;
    } cases[] = {{19, false, true}, {19, true, false}, {7, false, false}, {86, false, false}};
    for (const auto& c : cases) {
        plot->TurnPlotDisplayOn();
        plot->TurnPlotAnimateOn();
        host.view->SetSolvraRunning(c.solving);
        const int before = host.view->GetClearResultDisplayCount();
        DialogLaunchRequest r = host.Request(c.kind);
        r.analysis = host.model->m_analyses.first();
        kwtest::AnswerModals([&] { LaunchDialog(&r); });
        EXPECT_EQ(host.view->GetClearResultDisplayCount() - before, c.cleared ? 1 : 0)
            << "kind " << c.kind;
        EXPECT_EQ(plot->IsDisplayed(), !c.cleared) << "kind " << c.kind;
        EXPECT_EQ(plot->IsAnimating(), !c.cleared) << "kind " << c.kind;
        if (c.cleared) {
            EXPECT_EQ(host.view->GetLastClearedAnalysis(), r.analysis);
        }
    }
    host.view->SetSolvraRunning(false);
}

TEST_F(LaunchTest, addInIsAskedForItsToolbarsAndMayBeAbsent)
{
    DialogLaunchRequest r = host.Request(19);
    LaunchDialog(&r);
    EXPECT_EQ(host.addin->GetToolbarQueryCount(), 1);
    EXPECT_EQ(host.addin->GetLastToolbarQueryMode(), 1);

    TheApplication = nullptr;
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);
    TheApplication = host.addin.get();
}

TEST_F(LaunchTest, modalKindsReturnOnlyAfterClosing)
{
    for (unsigned kind : {44u, 87u}) {
        DialogLaunchRequest r = host.Request(kind);
        unsigned launchKind = 0;
        const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); }, QMessageBox::Ok,
                                              [&](QWidget* w) {
                                                  if (auto* d = dynamic_cast<CKwMFCDialog*>(w))
                                                      launchKind = d->GetLaunchKind();
                                              });
        EXPECT_EQ(rec.dialogTitles.size(), 1) << kind;
        EXPECT_EQ(launchKind, kind);
        EXPECT_TRUE(kwtest::VisibleTopLevels().isEmpty()) << kind;
    }
}

namespace {
// An open material editor as the dispatch sees it.
class FakeMaterialEditor : public QWidget, public CKwMaterialEditorLink
{
public:
    unsigned failureTheory = 0;
    int refreshes = 0;
    void SetFailureTheorySetting(unsigned option) override { failureTheory = option; }
    void RefreshFromHost() override { ++refreshes; }
};
} // namespace

TEST_F(LaunchTest, hiddenMaterialRequestRefreshesTheOpenMaterialEditor)
{
    FakeMaterialEditor editor;
    host.view->AddOpenDialog(&editor);
    DialogLaunchRequest r = host.Request(2);
    r.keepResults = 1; // otherwise the open editor refuses the request outright
    r.createHidden = 1;
    r.option = 3;
    const auto before = kwtest::VisibleTopLevels();
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(editor.refreshes, 1);
    EXPECT_EQ(editor.failureTheory, 3u);
    EXPECT_EQ(kwtest::VisibleTopLevels(), before);

    // With the editor closed the request goes on to open a new one.
    host.view->LeaveDialogStack(&editor);
    const auto rec2 = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(editor.refreshes, 1);
    EXPECT_LE(rec2.boxTexts.size(), 1); // "not available" where the editor is not built
}
