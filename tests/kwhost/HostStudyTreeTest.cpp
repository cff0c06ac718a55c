// The demo host's tree reaches the impact, fatigue setup, objective and variable dialogs:
// each item opens its kind on what it lists, "Fatigue setup" makes its analysis current first,
// and the "(new ...)" items create in their own study or analysis.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwFatigueSetupDialog.h"
#include "CKwImpactWizard.h"
#include "CKwMFCUIImpactAnalysis.h"
#include "CKwMFCUIOptimObjective.h"
#include "CKwMFCUIOptimVariable.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"
#include "KwControls.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

QTreeWidgetItem* item(KwHostWindow& host, const QString& text)
{
    auto* tree = host.findChild<QTreeWidget*>();
    const auto found = tree ? tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive)
                            : QList<QTreeWidgetItem*>();
    return found.size() == 1 ? found.first() : nullptr;
}

void activate(KwHostWindow& host, const QString& text)
{
    QTreeWidgetItem* it = item(host, text);
    ASSERT_NE(it, nullptr) << text.toStdString();
    Q_EMIT host.findChild<QTreeWidget*>()->itemActivated(it, 0);
}

void closeOpenDialog(KwHostWindow& host, int button)
{
    if (QWidget* d = host.View()->GetOpenDialog())
        KwControl<QPushButton>(d, button)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

TEST(HostStudyTree, eachItemOpensItsDialogOnWhatItLists)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    const QList<CKwAnalysis*>& analyses = host.Model()->m_analyses;
    CKwAnalysis* drop = analyses.at(4);
    CKwAnalysis* fatigue = analyses.at(5);
    CKwAnalysis* study = analyses.at(6);
    ASSERT_EQ(study->GetAnalysisTypeCode(), CKwAnalysis::Optimization);
    EXPECT_NE(item(host, QStringLiteral("Optimization")), nullptr) << "the study's type name";

    activate(host, drop->GetImpactWizard()->GetName());
    auto* impact = dynamic_cast<CKwMFCUIImpactAnalysis*>(host.View()->GetOpenDialog());
    ASSERT_NE(impact, nullptr);
    EXPECT_EQ(impact->GetObject(), drop->GetImpactWizard());
    EXPECT_EQ(impact->GetAnalysis(), drop);
    closeOpenDialog(host, 2);

    ASSERT_NE(host.CurrentAnalysis(), fatigue);
    activate(host, QStringLiteral("Fatigue setup"));
    EXPECT_EQ(host.CurrentAnalysis(), fatigue);
    auto* setup = dynamic_cast<CKwFatigueSetupDialog*>(host.View()->GetOpenDialog());
    ASSERT_NE(setup, nullptr);
    EXPECT_EQ(setup->GetAnalysis(), fatigue);
    closeOpenDialog(host, 2);

    activate(host, study->m_objectives.first()->GetName());
    auto* objective = dynamic_cast<CKwMFCUIOptimObjective*>(host.View()->GetOpenDialog());
    ASSERT_NE(objective, nullptr);
    EXPECT_EQ(objective->GetObject(), study->m_objectives.first());
    closeOpenDialog(host, 2);

    activate(host, study->m_variables.first()->GetName());
    auto* variable = dynamic_cast<CKwMFCUIOptimVariable*>(host.View()->GetOpenDialog());
    ASSERT_NE(variable, nullptr);
    EXPECT_EQ(variable->GetObject(), study->m_variables.first());
    closeOpenDialog(host, 2);
}

TEST(HostStudyTree, newItemsCreateInTheirStudyOrAnalysis)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    CKwAnalysis* drop = host.Model()->m_analyses.at(4);
    CKwAnalysis* study = host.Model()->m_analyses.at(6);
    for (const char* text : {"(new objective)", "(new variable)"}) {
        activate(host, QString::fromLatin1(text));
        auto* d = dynamic_cast<CKwMFCDialog*>(host.View()->GetOpenDialog());
        ASSERT_NE(d, nullptr) << text;
        closeOpenDialog(host, 1);
        EXPECT_EQ(host.View()->GetOpenDialog(), nullptr)
            << qPrintable(host.View()->GetLastBubbleText());
    }
    EXPECT_EQ(study->m_objectives.size(), 2);
    EXPECT_EQ(study->m_variables.size(), 2);
    // Without its impact the explicit analysis offers a new one, which OK gives it.
    drop->SetImpactWizard(nullptr);
    host.RebuildTree();
    activate(host, QStringLiteral("(new impact)"));
    ASSERT_NE(host.View()->GetOpenDialog(), nullptr);
    closeOpenDialog(host, 1);
    EXPECT_NE(drop->GetImpactWizard(), nullptr);
}

} // namespace
