// The demo host's current analysis: chosen in the Analysis menu or by activating an analysis
// in the tree, it is the analysis the entity editors open for, while the kinds that show
// results keep the analysis with results.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMFCUIMaterial.h"
#include "KwControls.h"
#include "KwHostKinds.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

QAction* currentAnalysisAction(KwHostWindow& host, const QString& name)
{
    for (QMenu* menu : host.menuBar()->findChildren<QMenu*>())
        if (menu->title() == QLatin1String("Current analysis"))
            for (QAction* a : menu->actions())
                if (a->text() == name)
                    return a;
    return nullptr;
}

// The fatigue switch of a material editor opened as the Editors menu opens it: whether it
// warns that the data waits for a fatigue analysis.
bool fatigueSwitchWarns(KwHostWindow& host)
{
    host.Launch(2);
    auto* d = dynamic_cast<CKwMFCUIMaterial*>(host.View()->GetOpenDialog());
    EXPECT_NE(d, nullptr);
    if (!d)
        return false;
    EXPECT_EQ(d->GetAnalysis(), host.CurrentAnalysis());
    host.View()->ClearBubbleRecord();
    KwControl<QCheckBox>(d, 1393)->click();
    const bool warned = host.View()->GetBubbleCount() > 0;
    KwControl<QPushButton>(d, 2)->click();
    return warned;
}

TEST(HostCurrentAnalysis, menuAndTreeChooseTheAnalysisTheMaterialEditorOpensFor)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    const QList<CKwAnalysis*>& analyses = host.Model()->m_analyses;
    ASSERT_EQ(analyses.size(), 9);
    EXPECT_EQ(host.CurrentAnalysis(), analyses.first());
    // Every analysis of the model is offered; the first is checked.
    for (CKwAnalysis* a : analyses) {
        QAction* item = currentAnalysisAction(host, a->GetName());
        ASSERT_NE(item, nullptr) << a->GetName().toStdString();
        EXPECT_EQ(item->isChecked(), a == analyses.first());
    }
    EXPECT_TRUE(fatigueSwitchWarns(host));

    CKwAnalysis* fatigue = analyses.at(5);
    ASSERT_TRUE(fatigue->IsFatigueAnalysis());
    currentAnalysisAction(host, fatigue->GetName())->trigger();
    EXPECT_EQ(host.CurrentAnalysis(), fatigue);
    EXPECT_FALSE(fatigueSwitchWarns(host));

    // Activating an analysis in the tree makes it current and marks it there.
    auto* tree = host.findChild<QTreeWidget*>();
    ASSERT_NE(tree, nullptr);
    const auto items = tree->findItems(analyses.first()->GetName(),
                                       Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(items.size(), 1);
    Q_EMIT tree->itemActivated(items.first(), 0);
    EXPECT_EQ(host.CurrentAnalysis(), analyses.first());
    EXPECT_TRUE(currentAnalysisAction(host, analyses.first()->GetName())->isChecked());
    EXPECT_TRUE(items.first()->font(0).bold());
    EXPECT_FALSE(tree->findItems(fatigue->GetName(), Qt::MatchExactly | Qt::MatchRecursive)
                     .first()
                     ->font(0)
                     .bold());
    EXPECT_TRUE(fatigueSwitchWarns(host));
}

TEST(HostCurrentAnalysis, editorsTakeTheCurrentAnalysisResultsKeepTheOneWithResults)
{
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    CKwAnalysis* withResults = model->m_analyses.first();
    ASSERT_TRUE(withResults->HasResultSet());
    CKwAnalysis* explicitDyn = model->m_analyses.at(4);
    struct Case
    {
        unsigned kind;
        CKwAnalysis* current;
        CKwAnalysis* expected;
    };
    const Case cases[] = {
        {0, explicitDyn, explicitDyn}, {1, explicitDyn, explicitDyn},
        {2, explicitDyn, explicitDyn}, {2, nullptr, withResults},
        {7, explicitDyn, withResults}, {8, explicitDyn, withResults},
    };
    for (const Case& c : cases) {
        const DialogLaunchRequest r =
            KwMakeRequest(c.kind, model.get(), nullptr, nullptr, false, 0, c.current);
        EXPECT_EQ(r.analysis, c.expected) << c.kind;
    }
}

} // namespace
