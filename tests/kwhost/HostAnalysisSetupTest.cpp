// The demo host's tree opens the analysis settings: the existing ones under their analysis,
// and "(new ...)" items that create one for that analysis; a cancelled one changes nothing.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwDynamicsSetup.h"
#include "CKwFEModel.h"
#include "CKwFrameWnd.h"
#include "CKwMFCDialog.h"
#include "KwControls.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

QTreeWidgetItem* findItem(QTreeWidget* tree, const QString& text, int nth = 0)
{
    const auto hits = tree->findItems(text, Qt::MatchExactly | Qt::MatchRecursive);
    return hits.size() > nth ? hits[nth] : nullptr;
}

struct NewItem
{
    const char* text;
    qsizetype (*count)(const CKwFEModel&);
};

const NewItem kNewItems[] = {
    {"(new damping)", [](const CKwFEModel& m) { return m.m_dampings.size(); }},
    {"(new solution frequencies)",
     [](const CKwFEModel& m) { return m.m_solutionFrequencies.size(); }},
    {"(new spectrum setup)", [](const CKwFEModel& m) { return m.m_spectrumSetups.size(); }},
};

TEST(HostAnalysisSetup, newItemsCreateForTheirAnalysisAndCancelCreatesNothing)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    host.show();
    auto* tree = host.findChild<QTreeWidget*>();
    ASSERT_NE(tree, nullptr);
    for (const NewItem& n : kNewItems) {
        SCOPED_TRACE(n.text);
        const qsizetype before = n.count(*host.Model());
        // Cancelled: nothing is added.
        QTreeWidgetItem* item = findItem(tree, QString::fromLatin1(n.text));
        ASSERT_NE(item, nullptr);
        Q_EMIT tree->itemActivated(item, 0);
        auto* d = dynamic_cast<CKwMFCDialog*>(host.View()->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        KwControl<QPushButton>(d, 2)->click();
        EXPECT_EQ(n.count(*host.Model()), before);
        EXPECT_FALSE(host.View()->GetFrameWnd()->IsModalState());
        // Written on OK, for the analysis the item stands under, and listed in the tree.
        item = findItem(tree, QString::fromLatin1(n.text));
        ASSERT_NE(item, nullptr);
        Q_EMIT tree->itemActivated(item, 0);
        d = dynamic_cast<CKwMFCDialog*>(host.View()->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        KwControl<QLineEdit>(d, 273)->setText(QStringLiteral("Created %1").arg(n.text));
        KwControl<QPushButton>(d, 1)->click();
        ASSERT_EQ(n.count(*host.Model()), before + 1)
            << host.View()->GetLastBubbleText().toStdString();
        EXPECT_NE(findItem(tree, QStringLiteral("Created %1").arg(n.text)), nullptr);
    }
    const auto analysisOf = [&](int id) {
        for (CKwAnalysis* a : host.Model()->m_analyses)
            if (a->GetID() == id)
                return a->GetAnalysisTypeCode();
        return -1;
    };
    EXPECT_EQ(analysisOf(host.Model()->m_dampings.last()->m_analysisId),
              CKwAnalysis::FrequencyResponse);
    EXPECT_EQ(analysisOf(host.Model()->m_solutionFrequencies.last()->m_analysisId),
              CKwAnalysis::FrequencyResponse);
    EXPECT_EQ(analysisOf(host.Model()->m_spectrumSetups.last()->m_analysisId),
              CKwAnalysis::ResponseSpectrum);
}

} // namespace
