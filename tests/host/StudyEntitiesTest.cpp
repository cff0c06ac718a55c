// The settings entities of the impact, fatigue and optimization dialogs: the values a solver
// input takes from them, and what their analysis owns.
#include "CKwAnalysis.h"
#include "CKwFatigueSetup.h"
#include "CKwImpactWizard.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"
#include "CKwPhysicalProperty.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <gtest/gtest.h>

namespace {

TEST(StudyEntities, designVariablesVaryTheSizesAPropertyHas)
{
    CKwPhysicalProperty solid(1, QStringLiteral("solid"));
    CKwPhysicalProperty shell(2, QStringLiteral("shell"));
    shell.m_idealization = CKwPhysicalProperty::Shell;
    shell.m_thickness = 0.004;
    CKwPhysicalProperty box(3, QStringLiteral("box"));
    box.m_idealization = CKwPhysicalProperty::Beam;
    box.m_sectionShape = CKwPhysicalProperty::BOX;
    box.m_dimA = {0.02, 0.03, 0.002, 0.0025, 0, 0};
    box.m_dimB = {0.05, 0.05, 0.005, 0.005, 0, 0};
    struct Row
    {
        const CKwPhysicalProperty* property;
        int parameter;
        double expected; // MissingDouble: no such size
    };
    const Row rows[] = {
        {nullptr, 0, MissingDouble},  {&solid, 0, MissingDouble}, {&shell, 0, 0.004},
        {&shell, 1, MissingDouble},   {&shell, -1, MissingDouble}, {&box, 0, 0.02},
        {&box, 3, 0.0025},            {&box, 4, MissingDouble},
    };
    for (const Row& r : rows)
        EXPECT_EQ(CKwOptimVariable::CurrentValue(r.property, r.parameter), r.expected)
            << (r.property ? r.property->GetName().toStdString() : "null") << " " << r.parameter;
    EXPECT_EQ(CKwOptimVariable::ParameterCount(&solid), 0);
    EXPECT_EQ(CKwOptimVariable::ParameterCount(&shell), 1);
    EXPECT_EQ(CKwOptimVariable::ParameterCount(&box),
              CKwPhysicalProperty::ShapeDimensionCount(CKwPhysicalProperty::BOX));
}

TEST(StudyEntities, responsesAndLoadingsGiveTheirUnitsAndRatios)
{
    const std::pair<int, int> units[] = {
        {CKwOptimObjective::Mass, KwUnitKind::Mass},
        {CKwOptimObjective::Volume, KwUnitKind::Volume},
        {CKwOptimObjective::Displacement, KwUnitKind::Length},
        {CKwOptimObjective::Stress, KwUnitKind::Stress},
        {CKwOptimObjective::Frequency, KwUnitKind::Frequency},
        {CKwOptimObjective::ResponseCount, KwUnitKind::Dimensionless},
    };
    for (const auto& [response, kind] : units)
        EXPECT_EQ(CKwOptimObjective::UnitKindOf(response), kind) << response;

    CKwFatigueSetup s;
    s.m_ratio = 0.25;
    const std::pair<int, double> ratios[] = {{CKwFatigueSetup::FullyReversed, -1.0},
                                             {CKwFatigueSetup::ZeroBased, 0.0},
                                             {CKwFatigueSetup::CustomRatio, 0.25}};
    for (const auto& [loading, ratio] : ratios) {
        s.m_loading = loading;
        EXPECT_EQ(s.StressRatio(), ratio) << loading;
    }
}

TEST(StudyEntities, impactDirectionIgnoresMissingComponents)
{
    CKwImpactWizard w;
    w.m_translation = {0.03, MissingDouble, 0.04};
    EXPECT_DOUBLE_EQ(w.TranslationLength(), 0.05);
    w.m_translation = {0, 0, 0};
    EXPECT_EQ(w.TranslationLength(), 0.0);
}

TEST(StudyEntities, anAnalysisOwnsAndReplacesItsSettings)
{
    CKwAnalysis a(1, QStringLiteral("drop"), CKwAnalysis::ExplicitDynamics);
    auto* first = new CKwImpactWizard(1, QStringLiteral("first"));
    a.SetImpactWizard(first);
    a.SetImpactWizard(first); // the same one again is kept, not deleted
    EXPECT_EQ(a.GetImpactWizard()->GetName(), "first");
    a.SetImpactWizard(new CKwImpactWizard(2, QStringLiteral("second")));
    EXPECT_EQ(a.GetImpactWizard()->GetID(), 2);
    a.SetFatigueSetup(new CKwFatigueSetup());
    a.m_objectives.append(new CKwOptimObjective(1));
    a.m_variables.append(new CKwOptimVariable(1));
    // The analysis deletes them (the leak check of the sanitizer build sees a miss).
}

TEST(StudyEntities, copiesCompareEqualAndAnyFieldTellsThemApart)
{
    CKwOptimVariable v(1, QStringLiteral("t"));
    v.m_lower = 0.001;
    v.m_upper = 0.002;
    CKwOptimVariable w(v);
    EXPECT_TRUE(v == w);
    w.m_step = 0.0001;
    EXPECT_FALSE(v == w);
    CKwFatigueSetup s;
    CKwFatigueSetup t(s);
    t.m_history.append({10, 0, 1});
    EXPECT_FALSE(s == t);
    CKwOptimObjective o(1);
    CKwOptimObjective p(o);
    EXPECT_TRUE(IsMissingValue(o.m_target));
    p.m_mode = 3;
    EXPECT_FALSE(o == p);
}

} // namespace
