// The reference host's view (dialog stack, toolbar, bubbles) and model queries.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwDynamicsSetup.h"
#include "CKwModalSetup.h"
#include "CKwTimeStep.h"
#include "CKwFEModel.h"
#include "CKwOptimVariable.h"
#include "CKwPhysicalProperty.h"
#include "KwTableLookup.h"
#include "CKwMeshModel.h"
#include "CKwPlot.h"
#include "CKwSubCase.h"

#include <QLabel>
#include <gtest/gtest.h>

TEST(View, dialogStackCountsAndForgetsDeadDialogs)
{
    CFMView view;
    auto* a = new QWidget;
    QWidget b;
    view.AddOpenDialog(a);
    view.AddOpenDialog(&b);
    view.AddOpenDialog(nullptr);
    EXPECT_EQ(view.GetOpenDialogCount(), 2);
    EXPECT_EQ(view.GetOpenDialog(), &b);
    delete a;
    view.LeaveDialogStack(&b);
    EXPECT_EQ(view.GetOpenDialogCount(), 1);
    EXPECT_EQ(view.GetOpenDialog(), nullptr);
    view.LeaveDialogStack(nullptr);
    view.LeaveDialogStack(nullptr); // never below zero
    EXPECT_EQ(view.GetOpenDialogCount(), 0);
    EXPECT_FALSE(view.HasActiveDialogMark());
}

TEST(View, resultToolbarOnlyForADisplayedPlot)
{
    CFMView view;
    view.CreateResultToolbarIfPlotDispalyed();
    EXPECT_EQ(view.GetResultToolbar(), nullptr);
    CKwPlot plot(1, QStringLiteral("p"));
    view.SetActivePlot(&plot);
    view.CreateResultToolbarIfPlotDispalyed();
    EXPECT_EQ(view.GetResultToolbar(), nullptr);
    plot.TurnPlotDisplayOn();
    view.CreateResultToolbarIfPlotDispalyed();
    QWidget* tb = view.GetResultToolbar();
    ASSERT_NE(tb, nullptr);
    view.CreateResultToolbarIfPlotDispalyed();
    EXPECT_EQ(view.GetResultToolbar(), tb);
    EXPECT_TRUE(view.IsResultToolbar(view.GetOpenDialog()));
    view.DestroyResultToolbar();
    EXPECT_EQ(view.GetResultToolbar(), nullptr);
    EXPECT_EQ(view.GetOpenDialogCount(), 0);
}

TEST(View, bubblesAreShownAndRemembered)
{
    CFMView view;
    view.resize(400, 300);
    view.show();
    view.ShowBubbleToolTipWarning(QStringLiteral("careful"), 0);
    EXPECT_EQ(view.GetLastBubbleKind(), CFMView::BubbleWarning);
    view.ShowBubbleToolTipError(QStringLiteral("wrong"), 0);
    EXPECT_EQ(view.GetLastBubbleKind(), CFMView::BubbleError);
    EXPECT_EQ(view.GetLastBubbleText(), QStringLiteral("wrong"));
    EXPECT_EQ(view.GetBubbleCount(), 2);
    auto* bubble = view.findChild<QLabel*>(QStringLiteral("BubbleTip"));
    ASSERT_NE(bubble, nullptr);
    EXPECT_TRUE(bubble->isVisible());
    EXPECT_EQ(bubble->text(), QStringLiteral("wrong"));
}

TEST(Model, sampleModelHasWhatTheDialogsOpenOn)
{
    std::unique_ptr<CKwFEModel> m(CKwFEModel::CreateSampleModel());
    EXPECT_EQ(m->m_materials.size(), 4);
    EXPECT_EQ(m->m_properties.size(), 2);
    EXPECT_EQ(m->m_restraints.size(), 1);
    EXPECT_EQ(m->m_loads.size(), 6);
    ASSERT_EQ(m->m_analyses.size(), 9);
    EXPECT_EQ(m->m_mesh->CountOfType(CKwMeshModel::Tet4), 192u);
    EXPECT_EQ(m->m_mesh->CountOfType(CKwMeshModel::Beam2), 8u);
    EXPECT_TRUE(m->m_mesh->HasNode(81));
    const CKwAnalysis* linear = m->m_analyses.at(0);
    ASSERT_NE(linear->GetFirstValidSubcaseInAnalysisResults(), nullptr);
    EXPECT_EQ(linear->GetFirstValidSubcaseInAnalysisResults()->GetID(), 1);
    for (int i = 1; i < int(m->m_analyses.size()); ++i) {
        const CKwAnalysis* a = m->m_analyses.at(i);
        EXPECT_FALSE(a->HasResultSet());
        EXPECT_EQ(a->GetFirstValidSubcaseInAnalysisResults(), nullptr);
        ASSERT_FALSE(a->GetSubCases().isEmpty());
        // Only the nonlinear analyses carry nonlinear setups.
        EXPECT_EQ(a->GetSubCases().first()->GetNonlinearSetup() != nullptr, i < 3);
    }
    EXPECT_EQ(m->m_analyses.at(3)->GetAnalysisTypeCode(), CKwAnalysis::ResponseSpectrum);
    EXPECT_TRUE(m->m_analyses.at(4)->IsExplicitAnalysis());
    // Fatigue data of materials waits for this one; no other analysis takes it.
    for (int i = 0; i < int(m->m_analyses.size()); ++i)
        EXPECT_EQ(m->m_analyses.at(i)->IsFatigueAnalysis(), i == 5) << i;
    // The drop test has its impact, the fatigue analysis its setup, the study an objective
    // and a variable on a property of the model; no other analysis holds any of them.
    for (int i = 0; i < int(m->m_analyses.size()); ++i) {
        const CKwAnalysis* a = m->m_analyses.at(i);
        EXPECT_EQ(a->GetImpactWizard() != nullptr, i == 4) << i;
        EXPECT_EQ(a->GetFatigueSetup() != nullptr, i == 5) << i;
        EXPECT_EQ(a->m_objectives.size() + a->m_variables.size(), i == 6 ? 2 : 0) << i;
    }
    const CKwOptimVariable* v = m->m_analyses.at(6)->m_variables.first();
    EXPECT_GT(CKwOptimVariable::ParameterCount(m->m_properties.at(0)), v->m_parameter);
    EXPECT_EQ(m->m_properties.at(0)->GetID(), v->m_propertyId);
    EXPECT_TRUE(v->m_lower <= v->m_initial && v->m_initial <= v->m_upper);
    // The frequency response holds its solution frequencies and damping; the response
    // spectrum its spectrum, on a frequency table of the model.
    const CKwAnalysis* harmonic = m->m_analyses.at(8);
    EXPECT_EQ(harmonic->GetAnalysisTypeCode(), CKwAnalysis::FrequencyResponse);
    ASSERT_EQ(m->m_solutionFrequencies.size(), 1);
    ASSERT_EQ(m->m_dampings.size(), 1);
    ASSERT_EQ(m->m_spectrumSetups.size(), 1);
    EXPECT_EQ(m->m_solutionFrequencies.first()->m_analysisId, harmonic->GetID());
    EXPECT_EQ(m->m_dampings.first()->m_analysisId, harmonic->GetID());
    EXPECT_EQ(m->m_spectrumSetups.first()->m_analysisId, m->m_analyses.at(3)->GetID());
    EXPECT_NE(KwTableLookup::Find(m.get(), m->m_spectrumSetups.first()->m_tableId,
                                  KwTableLookup::Frequency),
              nullptr);
    EXPECT_NE(KwTableLookup::Find(m.get(), m->m_dampings.first()->m_modalTableId,
                                  KwTableLookup::Frequency),
              nullptr);
    // The modal analysis holds its modal setup, the transient its time steps.
    EXPECT_EQ(m->m_analyses.at(7)->GetAnalysisTypeCode(), CKwAnalysis::Modal);
    EXPECT_NE(m->m_analyses.at(7)->GetModalSetup(), nullptr);
    EXPECT_NE(m->m_analyses.at(2)->GetTimeStep(), nullptr);
    EXPECT_TRUE(linear->IsValidUserId(1));
    EXPECT_TRUE(linear->IsValidUserId(81));
    EXPECT_FALSE(linear->IsValidUserId(82));
    EXPECT_FALSE(linear->IsValidUserId(0));
    EXPECT_FALSE(CKwAnalysis().IsValidUserId(1));
}
