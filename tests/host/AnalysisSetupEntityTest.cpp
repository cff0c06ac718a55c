// The analysis-setup entities: a subcase copied and assigned with its nonlinear setup (an
// editor's copy and its write-back), and the end times of time-step intervals.
#include "CKwAnalysis.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"
#include "CKwTimeStep.h"

#include <gtest/gtest.h>

namespace {

TEST(AnalysisSetupEntities, aSubcaseCopyOwnsItsOwnSetupAndAssignmentKeepsTheTarget)
{
    CKwAnalysis analysis(1, "Nonlinear", CKwAnalysis::NonlinearTransient);
    auto* stored = analysis.AddSubCase(new CKwSubCase(1, "Impact"));
    stored->SetNonlinearSetup(new CKwNonlinearSetup(1, "Impact"));
    CKwNonlinearSetup* setup = stored->GetNonlinearSetup();
    EXPECT_TRUE(setup->IsTransient());

    CKwSubCase copy(*stored);
    ASSERT_NE(copy.GetNonlinearSetup(), nullptr);
    EXPECT_NE(copy.GetNonlinearSetup(), setup);
    EXPECT_EQ(copy.GetNonlinearSetup()->GetSubCase(), &copy);
    EXPECT_EQ(copy.GetAnalysis(), &analysis);
    copy.GetNonlinearSetup()->m_increments = 77;
    copy.m_thermal = true;
    copy.SetName("Renamed");

    // Written back: the stored subcase keeps its setup object and takes the values.
    *stored = copy;
    EXPECT_EQ(stored->GetNonlinearSetup(), setup);
    EXPECT_EQ(setup->GetSubCase(), stored);
    EXPECT_EQ(setup->m_increments, 77);
    EXPECT_TRUE(stored->m_thermal);
    EXPECT_EQ(stored->GetName(), "Renamed");

    // A copy without a setup takes it away; one with a setup gives the target one again.
    CKwSubCase bare(2, "Bare", &analysis);
    CKwSubCase withSetup(*stored);
    *stored = bare;
    EXPECT_EQ(stored->GetNonlinearSetup(), nullptr);
    *stored = withSetup;
    ASSERT_NE(stored->GetNonlinearSetup(), nullptr);
    EXPECT_NE(stored->GetNonlinearSetup(), withSetup.GetNonlinearSetup());
    EXPECT_EQ(stored->GetNonlinearSetup()->m_increments, 77);
    EXPECT_TRUE(stored->GetNonlinearSetup()->IsTransient());
    const CKwSubCase& same = *stored;
    *stored = same;
    EXPECT_NE(stored->GetNonlinearSetup(), nullptr);
}

TEST(AnalysisSetupEntities, endTimesAddUpTheIntervals)
{
    CKwTimeStep t;
    EXPECT_EQ(t.TotalTime(), 0.0);
    EXPECT_EQ(t.TotalSteps(), 0);
    t.m_intervals = {{10, 0.5, 1}, {4, 0.25, 2}, {1, 3.0, 1}};
    const struct { int row; double end; } cases[] = {{-1, 0.0}, {0, 5.0}, {1, 6.0}, {2, 9.0},
                                                     {7, 9.0}};
    for (const auto& c : cases)
        EXPECT_DOUBLE_EQ(t.EndTime(c.row), c.end) << c.row;
    EXPECT_DOUBLE_EQ(t.TotalTime(), 9.0);
    EXPECT_EQ(t.TotalSteps(), 15);
}

} // namespace
