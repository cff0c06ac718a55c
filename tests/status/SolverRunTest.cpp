// The demo host's simulated solver run: the windows a host drives during a run move, and the
// run ends the way a host ends one.
#include "CFMView.h"
#include "CKwMFCUIMeshConvergencePlot.h"
#include "CNLstatusDialog.h"
#include "CTransientStatusDialog.h"
#include "KwControls.h"
#include "KwConvergenceChart.h"
#include "KwHostWindow.h"
#include "KwLangText.h"
#include "KwSolverRun.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QProgressBar>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace {

template <class T> T* find()
{
    for (QWidget* w : QApplication::allWidgets())
        if (auto* t = qobject_cast<T*>(w))
            if (std::strcmp(t->metaObject()->className(), T::staticMetaObject.className()) == 0)
                return t;
    return nullptr;
}

class SolverRun : public ::testing::TestWithParam<KwSolverRun::Kind>
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        // Start as after a finished run: the first line shows the status window.
        CallKwDialogFunction(41, 5, L"", 0, nullptr, nullptr);
        CallKwDialogFunction(41, 2, L"", 0, nullptr, nullptr);
        for (unsigned id : {41u, 42u, 89u})
            DeleteKwDialog(id);
    }
    void TearDown() override
    {
        for (unsigned id : {41u, 42u, 89u})
            DeleteKwDialog(id);
        kwtest::CloseAllWindows();
    }
};

TEST_P(SolverRun, statusWindowAndPlotFollowTheRunWhichEndsAsAHostEndsIt)
{
    const bool transient = GetParam() == KwSolverRun::Kind::Transient;
    auto* host = new KwHostWindow();
    KwSolverRun* run = host->SolverRun();
    run->SetInterval(0);
    QSignalSpy done(run, &KwSolverRun::finished);
    ASSERT_TRUE(run->Start(GetParam(), QStringLiteral("Static 1")));
    EXPECT_TRUE(host->View()->IsSolvraRunning());
    EXPECT_FALSE(run->Start(GetParam(), QStringLiteral("again"))) << "one run at a time";

    // Let a dozen lines through and look at the windows mid-run.
    while (run->LinesSent() < 12)
        QApplication::processEvents();
    CNLstatusDialog* status = transient ? find<CTransientStatusDialog>()
                                        : find<CNLstatusDialog>();
    ASSERT_NE(status, nullptr);
    EXPECT_TRUE(status->isVisible());
    EXPECT_TRUE(status->windowTitle().endsWith(QStringLiteral(" - 'Static 1'")));
    auto* plot = find<CKwMFCUIMeshConvergencePlot>();
    ASSERT_NE(plot, nullptr);
    EXPECT_TRUE(plot->isVisible());
    const std::size_t midRunPoints = plot->Chart()->Points().size();
    EXPECT_GT(midRunPoints, 0u);
    EXPECT_GT(KwControl<QProgressBar>(status, 4121)->value(), 0);

    ASSERT_TRUE(done.wait(20000));
    EXPECT_FALSE(host->View()->IsSolvraRunning());
    EXPECT_FALSE(status->isVisible());
    EXPECT_EQ(KwGetControlText(status, 4101), QStringLiteral("1")) << "reset at the end";
    EXPECT_EQ(KwControl<QProgressBar>(status, 4121)->value(), 0);
    EXPECT_EQ(plot->Chart()->Points().size(), 40u);
    EXPECT_EQ(plot->GetResultValue(), 40);
    EXPECT_TRUE(plot->isVisible()) << "the plot stays for the user to read";
    delete host;
}

INSTANTIATE_TEST_SUITE_P(Kinds, SolverRun,
                         ::testing::Values(KwSolverRun::Kind::NonlinearStatic,
                                           KwSolverRun::Kind::Transient),
                         [](const auto& info) {
                             return info.param == KwSolverRun::Kind::Transient
                                        ? std::string("transient")
                                        : std::string("nonlinearStatic");
                         });

} // namespace
