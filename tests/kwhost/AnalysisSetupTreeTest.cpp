// The analysis setups in the demo host's tree: each entity opens its editor from under the
// analysis it belongs to, and "(new subcase)" adds to that analysis.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMFCDialog.h"
#include "CKwSubCase.h"
#include "KwControls.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

// The item with `text` directly under the analysis named `analysis`.
QTreeWidgetItem* under(QTreeWidget* tree, const QString& analysis, const QString& text)
{
    for (QTreeWidgetItem* a : tree->findItems(analysis, Qt::MatchExactly | Qt::MatchRecursive))
        for (int i = 0; i < a->childCount(); ++i) {
            if (a->child(i)->text(0) == text)
                return a->child(i);
            for (int j = 0; j < a->child(i)->childCount(); ++j)
                if (a->child(i)->child(j)->text(0) == text)
                    return a->child(i)->child(j);
        }
    return nullptr;
}

TEST(AnalysisSetupTree, eachSetupOpensFromUnderItsAnalysis)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    auto* tree = host.findChild<QTreeWidget*>();
    ASSERT_NE(tree, nullptr);
    const struct { const char* analysis; const char* item; unsigned templateId; } cases[] = {
        {"Modal", "Modal setup", 7007},
        {"Nonlinear Transient", "Time steps", 7008},
        {"Nonlinear Static", "Nonlinear setup", 7217},
        {"Nonlinear Transient", "Impact", 357},
        {"Linear Static", "(new subcase)", 357},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.item);
        QTreeWidgetItem* item = under(tree, c.analysis, c.item);
        ASSERT_NE(item, nullptr);
        Q_EMIT tree->itemActivated(item, 0);
        auto* d = dynamic_cast<CKwMFCDialog*>(host.View()->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(d->GetTemplateId(), c.templateId);
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    // A new subcase goes to the analysis it was asked under, and the tree shows it.
    CKwAnalysis* modal = host.Model()->m_analyses.at(7);
    Q_EMIT tree->itemActivated(under(tree, "Modal", "(new subcase)"), 0);
    auto* d = dynamic_cast<CKwMFCDialog*>(host.View()->GetOpenDialog());
    ASSERT_NE(d, nullptr);
    KwControl<QAbstractButton>(d, 1)->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(modal->GetSubCases().size(), 2);
    EXPECT_NE(under(tree, "Modal", modal->GetSubCases().at(1)->GetName()), nullptr);
    EXPECT_EQ(host.Model()->m_analyses.at(0)->GetSubCases().size(), 2);
}

} // namespace
