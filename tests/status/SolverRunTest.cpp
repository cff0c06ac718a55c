// The demo host's simulated solver run: the windows a host drives during a run move, and the
// run ends the way a host ends one.
#include "CFMView.h"
#include "CKwMFCUIMeshConvergencePlot.h"
#include "CNLstatusDialog.h"
#include "CTransientStatusDialog.h"
#include "CKwXYPlotDlg.h"
#include "KwChart.h"
#include "KwMFCUIEntry.h"
#include "KwControls.h"
#include "KwConvergenceChart.h"
#include "KwHostWindow.h"
#include "KwLangText.h"
#include "KwSolverRun.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QProgressBar>
#include <QPointer>
#include <QSignalSpy>
#include <vector>
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

TEST_P(SolverRun, xyPlotWindowGrowsStepByStepAndSurvivesBeingClosed)
{
    const bool transient = GetParam() == KwSolverRun::Kind::Transient;
    auto* host = new KwHostWindow();
    KwSolverRun* run = host->SolverRun();
    run->SetInterval(0);
    QSignalSpy done(run, &KwSolverRun::finished);
    ASSERT_TRUE(run->Start(GetParam(), QStringLiteral("Static 1")));
    QPointer<CKwXYPlotDlg> xy = CKwXYPlotDlg::GetXYPlotDlg();
    ASSERT_TRUE(xy);
    EXPECT_TRUE(xy->isVisible());
    EXPECT_EQ(xy->GetPlot(), &run->Plot());

    // The step fraction of every converged step, in the order the steps converge: the load
    // factor of a static run (Y), the time of a transient one (X, 2 s per subcase).
    auto stepValues = [&](const std::vector<double>& x, const std::vector<double>& y) {
        return transient ? x : y;
    };
    auto expected = [&](std::size_t n) {
        std::vector<double> v;
        for (std::size_t k = 1; k <= n; ++k)
            v.push_back(transient ? 0.1 * double(k) : 0.05 * double(k));
        return v;
    };
    const auto& first = run->Plot().GetSeries(0);
    while (first.x.size() < 8 && !done.count())
        QApplication::processEvents();
    const KwChart::Series& shown = xy->Chart()->GetSeries(0);
    ASSERT_EQ(shown.y.size(), first.y.size()) << "every value reached the window";
    const std::vector<double> got = stepValues(shown.x, shown.y);
    const std::vector<double> want = expected(got.size());
    for (std::size_t i = 0; i < got.size(); ++i)
        EXPECT_NEAR(got[i], want[i], 1e-12) << "step " << i + 1;
    if (!transient) {
        for (std::size_t i = 1; i < shown.x.size(); ++i)
            EXPECT_GT(shown.x[i], shown.x[i - 1]) << "displacement grows with the load";
    }

    // The user closes the window mid-run: later values must neither crash nor be lost.
    xy->close();
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(xy) << "a closed window goes";
    EXPECT_EQ(CKwXYPlotDlg::GetXYPlotDlg(), nullptr);
    ASSERT_TRUE(done.count() || done.wait(20000));
    for (int s = 0; s < 2; ++s) {
        const auto& series = run->Plot().GetSeries(s);
        ASSERT_EQ(series.x.size(), 20u) << "subcase " << s + 1;
        const std::vector<double> all = stepValues(series.x, series.y);
        const std::vector<double> allWant = expected(20);
        for (std::size_t i = 0; i < all.size(); ++i)
            EXPECT_NEAR(all[i], allWant[i], 1e-12) << "subcase " << s + 1 << " step " << i + 1;
    }

    // Opened again on the plot, the window shows the whole history; once the run is gone the
    // window lets go of its plot instead of drawing from freed memory.
    DialogLaunchRequest r{};
    r.kind = 39;
    r.object = static_cast<CKwFEBase*>(const_cast<CKwXYPlot*>(&run->Plot()));
    r.view = host->View();
    r.keepResults = 1;
    LaunchDialog(&r);
    xy = CKwXYPlotDlg::GetXYPlotDlg();
    ASSERT_TRUE(xy);
    EXPECT_EQ(xy->Chart()->GetSeries(1).x.size(), 20u);
    {
        KwSolverRun second(host->View());
        second.SetInterval(0);
        ASSERT_TRUE(second.Start(GetParam(), QStringLiteral("Static 2")));
        EXPECT_EQ(xy, CKwXYPlotDlg::GetXYPlotDlg()) << "one window for every run";
        EXPECT_EQ(xy->GetPlot(), &second.Plot());
        EXPECT_EQ(xy->Chart()->GetSeries(0).x.size(), 0u) << "a new run starts a new curve";
        second.Stop();
    }
    ASSERT_TRUE(xy);
    EXPECT_EQ(xy->GetPlot(), nullptr);
    KwXYPlotValue late{0, 1.0, 2.0};
    r = DialogLaunchRequest{};
    r.kind = 40;
    r.object = &late;
    LaunchDialog(&r);
    EXPECT_EQ(xy->Chart()->GetSeries(0).x.size(), 1u) << "a late value still lands";
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
