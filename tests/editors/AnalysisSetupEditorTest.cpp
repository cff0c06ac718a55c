// The damping, spectrum setup and solution frequency editors through LaunchDialog kinds 15,
// 30 and 31: refused fields per editor as one table, values that survive a plain OK, tables
// defined, edited and deleted meanwhile, the method pages and their option changes, the
// owner held by kinds 30 and 31 until any way of closing, and nothing given at all.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwDynamicsSetup.h"
#include "CKwFEModel.h"
#include "CKwFrameWnd.h"
#include "CKwFunction.h"
#include "CKwMFCUIDamping.h"
#include "CKwMFCUIFrequencyPages.h"
#include "CKwMFCUISolutionFrequency.h"
#include "CKwMFCUISpectrumSetup.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwTableLookup.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <gtest/gtest.h>

namespace {

class AnalysisSetupEditors : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }

    CKwMFCDialog* open(unsigned kind, void* object, int hidden = 0)
    {
        DialogLaunchRequest r = host.Request(kind);
        r.object = object;
        r.createHidden = hidden;
        LaunchDialog(&r);
        return dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog());
    }
    CKwDamping* damping() const { return host.model->m_dampings.first(); }
    CKwSpectrumSetup* spectrum() const { return host.model->m_spectrumSetups.first(); }
    CKwSolutionFrequency* frequencies() const { return host.model->m_solutionFrequencies.first(); }
    void* entity(unsigned kind) const
    {
        return kind == 15   ? static_cast<CKwFEBase*>(damping())
               : kind == 30 ? static_cast<CKwFEBase*>(spectrum())
                            : static_cast<CKwFEBase*>(frequencies());
    }
    bool frameHeld() const { return host.view->GetFrameWnd()->IsModalState(); }
    static QLineEdit* edit(QWidget* d, int id) { return KwControl<QLineEdit>(d, id); }
    static void click(QWidget* d, int id) { KwControl<QPushButton>(d, id)->click(); }

    kwtest::Host host;
};

// One refused field: the editor (kind), the method page to show first (kind 31), the field
// and what is typed, and a part of the message the view must show.
struct Refusal
{
    unsigned kind;
    int method;
    int ctrlId;
    const char* typed;
    const char* message;
};

const Refusal kRefusals[] = {
    {15, -1, 3612, "abc", "number"},
    {15, -1, 3612, "100.5", "over 100 %"},
    {15, -1, 3612, "-1", "at least 0"},
    {15, -1, 3614, "-0.5", "at least 0"},
    {15, -1, 3616, "1e", "number"},
    {15, -1, 274, "-3", "positive whole number"},
    {15, -1, 273, "  ", "Enter a name"},
    {30, -1, 7314, "150", "over 100 %"},
    {30, -1, 7314, "", "Enter a value"},
    {30, -1, 7316, "0", "above 0"},
    {30, -1, 7316, "x2", "number"},
    {31, CKwSolutionFrequency::Range, 7052, "-5", "at least 0"},
    {31, CKwSolutionFrequency::Range, 7054, "0.5", "above 1 (Start Frequency)"},
    {31, CKwSolutionFrequency::Range, 7056, "0", "at least 1"},
    {31, CKwSolutionFrequency::Range, 7056, "2.5", "whole number"},
    {31, CKwSolutionFrequency::Range, 7056, "ten", "number"},
    {31, CKwSolutionFrequency::Range, 7056, "5e12", "at most 100000"},
    {31, CKwSolutionFrequency::ClusterModes, 7062, "2000", "above 2000 (Lower Frequency)"},
    {31, CKwSolutionFrequency::ClusterModes, 7068, "0", "above 0"},
    {31, CKwSolutionFrequency::ClusterModes, 7066, "-2", "at least 1"},
    {31, CKwSolutionFrequency::SpreadAround, 7076, "120", "at most 100"},
    {31, CKwSolutionFrequency::SpreadAround, 7076, "0", "above 0"},
    {31, CKwSolutionFrequency::SpreadAround, 7074, "", "Enter a value"},
};

TEST_F(AnalysisSetupEditors, refusedFieldsNameTheFieldAndWriteNothing)
{
    for (const Refusal& r : kRefusals) {
        SCOPED_TRACE(QStringLiteral("kind %1, control %2, '%3'")
                         .arg(r.kind).arg(r.ctrlId).arg(QString::fromLatin1(r.typed))
                         .toStdString());
        CKwMFCDialog* d = open(r.kind, entity(r.kind));
        ASSERT_NE(d, nullptr);
        if (r.method >= 0)
            KwControl<QComboBox>(d, CKwMFCUISolutionFrequency::kMethodCombo)
                ->setCurrentIndex(r.method);
        // The stored entity as it was, to compare after the refusal.
        const CKwDamping dampingBefore = *damping();
        const CKwSpectrumSetup spectrumBefore = *spectrum();
        const CKwSolutionFrequency frequenciesBefore = *frequencies();
        ASSERT_NE(edit(d, r.ctrlId), nullptr);
        edit(d, r.ctrlId)->setText(QString::fromLatin1(r.typed));
        host.view->ClearBubbleRecord();
        click(d, 1);
        EXPECT_EQ(host.view->GetOpenDialog(), d) << "a refused OK keeps the editor open";
        EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
        EXPECT_TRUE(host.view->GetLastBubbleText().contains(QString::fromUtf8(r.message)))
            << host.view->GetLastBubbleText().toStdString();
        EXPECT_TRUE(host.view->GetLastBubbleText().contains(QStringLiteral(" - \n '")));
        EXPECT_EQ(damping()->m_structuralG, dampingBefore.m_structuralG);
        EXPECT_EQ(damping()->GetName(), dampingBefore.GetName());
        EXPECT_EQ(spectrum()->m_dampingRatio, spectrumBefore.m_dampingRatio);
        EXPECT_EQ(spectrum()->m_scaleFactor, spectrumBefore.m_scaleFactor);
        EXPECT_EQ(frequencies()->m_method, frequenciesBefore.m_method);
        EXPECT_EQ(frequencies()->m_rangeIncrements, frequenciesBefore.m_rangeIncrements);
        click(d, 2);
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(AnalysisSetupEditors, fieldsShowTheStoredValuesAndAPlainOkKeepsThem)
{
    damping()->m_beta = 1.0 / 3.0; // more digits than a field shows
    CKwMFCDialog* d = open(15, damping());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(edit(d, 3612)->text(), "4");
    EXPECT_EQ(edit(d, 3614)->text(), "0.5");
    EXPECT_EQ(edit(d, 3616)->text(), "0.3333333333");
    click(d, 1);
    EXPECT_EQ(damping()->m_beta, 1.0 / 3.0);
    EXPECT_DOUBLE_EQ(damping()->m_structuralG, 0.04);

    d = open(31, frequencies());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(edit(d, 7052)->text(), "1");
    EXPECT_EQ(edit(d, 7054)->text(), "500");
    EXPECT_EQ(edit(d, 7056)->text(), "50");
    EXPECT_EQ(KwControl<QComboBox>(d, 7058)->currentIndex(), CKwSolutionFrequency::Logarithmic);
    EXPECT_TRUE(KwFindControl(d, CKwMFCUIFrequencyRange::kTemplateId)->isVisible());
    EXPECT_FALSE(KwFindControl(d, CKwMFCUIDiscreteFrequency::kTemplateId)->isVisible());
    click(d, 1);
    EXPECT_EQ(frequencies()->m_rangeIncrements, 50);
    EXPECT_EQ(frequencies()->m_discrete, (QList<double>{10.0, 50.0, 120.0}));
}

TEST_F(AnalysisSetupEditors, newEntitiesBelongToTheRequestsAnalysisAndTakeTheNextId)
{
    CKwAnalysis* harmonic = host.model->m_analyses.last();
    ASSERT_EQ(harmonic->GetAnalysisTypeCode(), CKwAnalysis::FrequencyResponse);
    for (unsigned kind : {15u, 30u, 31u}) {
        SCOPED_TRACE(kind);
        DialogLaunchRequest r = host.Request(kind);
        r.object = nullptr;
        r.analysis = harmonic;
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(edit(d, 274)->text(), "2");
        edit(d, 273)->setText("Second");
        click(d, 1);
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr) << host.view->GetLastBubbleText().toStdString();
    }
    ASSERT_EQ(host.model->m_dampings.size(), 2);
    ASSERT_EQ(host.model->m_spectrumSetups.size(), 2);
    ASSERT_EQ(host.model->m_solutionFrequencies.size(), 2);
    EXPECT_EQ(host.model->m_dampings.last()->m_analysisId, harmonic->GetID());
    EXPECT_EQ(host.model->m_spectrumSetups.last()->GetName(), "Second");
    EXPECT_EQ(host.model->m_solutionFrequencies.last()->m_analysisId, harmonic->GetID());
}

TEST_F(AnalysisSetupEditors, aSpectrumTableDeletedMeanwhileIsNamedAndNothingIsWritten)
{
    auto* d = dynamic_cast<CKwMFCUISpectrumSetup*>(open(30, spectrum()));
    ASSERT_NE(d, nullptr);
    const int tableId = spectrum()->m_tableId;
    ASSERT_TRUE(KwTableLookup::Remove(host.model.get(), tableId));
    edit(d, 7314)->setText("2");
    click(d, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), d);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(
        QStringLiteral("Table %1 no longer exists").arg(tableId)));
    EXPECT_DOUBLE_EQ(spectrum()->m_dampingRatio, 0.05);
    // "Edit Table Data" opens nothing on the missing table and says so.
    host.view->ClearBubbleRecord();
    kwtest::ModalRecord seen = kwtest::AnswerModals([&] { d->EditTableData(); });
    EXPECT_EQ(seen.count(), 0);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(QStringLiteral("no longer exists")));
    click(d, 2);
}

TEST_F(AnalysisSetupEditors, aModalDampingTableOver100PercentOrDeletedIsRefused)
{
    CKwTable* table = KwTableLookup::Find(host.model.get(), damping()->m_modalTableId,
                                          KwTableLookup::Frequency);
    ASSERT_NE(table, nullptr);
    table->AddPoint(2000.0, 1.5);
    CKwMFCDialog* d = open(15, damping());
    ASSERT_NE(d, nullptr);
    EXPECT_TRUE(KwControl<QCheckBox>(d, 3621)->isChecked());
    edit(d, 3612)->setText("6");
    click(d, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), d);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(QStringLiteral("over 100 %")));
    EXPECT_DOUBLE_EQ(damping()->m_structuralG, 0.04);
    KwTableLookup::Remove(host.model.get(), table->GetID());
    click(d, 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(QStringLiteral("no longer exists")));
    EXPECT_DOUBLE_EQ(damping()->m_structuralG, 0.04);
    // Without modal damping the missing table does not matter.
    KwControl<QCheckBox>(d, 3621)->setChecked(false);
    click(d, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    EXPECT_DOUBLE_EQ(damping()->m_structuralG, 0.06);
    EXPECT_FALSE(damping()->m_modal);
}

TEST_F(AnalysisSetupEditors, tablesDefinedOrEditedFromAnEditorGoBackOnCancel)
{
    const qsizetype tablesBefore = host.model->m_tables.size();
    auto* d = dynamic_cast<CKwMFCUISpectrumSetup*>(open(30, spectrum()));
    ASSERT_NE(d, nullptr);
    // A new table whose table dialog is cancelled is dropped again; the spectrum keeps its
    // table.
    const int tableId = spectrum()->m_tableId;
    EXPECT_EQ(kwtest::AnswerModals([&] { EXPECT_EQ(d->DefineNewTable(), 0); }).count(), 1);
    EXPECT_EQ(host.model->m_tables.size(), tablesBefore);
    EXPECT_EQ(d->GetEditObject()->m_tableId, tableId);
    // Editing the existing spectrum table and then cancelling the editor restores it.
    CKwTable* table = d->GetSpectrumTable();
    ASSERT_NE(table, nullptr);
    const std::vector<double> y = table->GetYFunction()->Values();
    kwtest::AnswerModals([&] { d->EditTableData(); });
    table->AddPoint(200.0, 1.0); // as if the table dialog had written a point
    click(d, 2);
    EXPECT_EQ(table->GetYFunction()->Values(), y);
}

TEST_F(AnalysisSetupEditors, pagesReportTheirChangesToTheEditor)
{
    auto* d = dynamic_cast<CKwMFCUISolutionFrequency*>(open(31, frequencies()));
    ASSERT_NE(d, nullptr);
    auto* method = KwControl<QComboBox>(d, CKwMFCUISolutionFrequency::kMethodCombo);
    method->setCurrentIndex(CKwSolutionFrequency::Discrete);
    EXPECT_TRUE(d->GetPage(CKwSolutionFrequency::Discrete)->isVisible());
    EXPECT_FALSE(d->GetPage(CKwSolutionFrequency::Range)->isVisible());
    KwFrequencyListModel* list = d->GetDiscretePage()->Model();
    ASSERT_EQ(list->Texts(), (QStringList{"10", "50", "120"}));
    // A cell edited and a row deleted reach the edit copy at once, not only on OK.
    list->setData(list->index(1, 0), "75", Qt::EditRole);
    EXPECT_EQ(d->GetEditObject()->m_discrete, (QList<double>{10.0, 75.0, 120.0}));
    list->RemoveRows({0});
    EXPECT_EQ(d->GetEditObject()->m_discrete, (QList<double>{75.0, 120.0}));
    // The spacing combo of the range page, as the user picks it.
    KwControl<QComboBox>(d, 7058)->setCurrentIndex(0);
    emit KwControl<QComboBox>(d, 7058)->activated(0);
    EXPECT_EQ(d->GetEditObject()->m_rangeSpacing, CKwSolutionFrequency::Linear);
    // A bad row is named on OK and nothing is written.
    list->setData(list->index(0, 0), "fast", Qt::EditRole);
    click(d, 1);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(QStringLiteral("Row 1")));
    EXPECT_EQ(frequencies()->m_method, CKwSolutionFrequency::Range);
    list->setData(list->index(0, 0), "80", Qt::EditRole);
    click(d, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    EXPECT_EQ(frequencies()->m_method, CKwSolutionFrequency::Discrete);
    EXPECT_EQ(frequencies()->m_discrete, (QList<double>{80.0, 120.0}));
    EXPECT_EQ(frequencies()->m_rangeSpacing, CKwSolutionFrequency::Linear);
}

TEST_F(AnalysisSetupEditors, heldOwnerIsReleasedByEveryWayOfClosing)
{
    enum Way { Ok, Cancel, CloseButton, Escape, Destroy, Delete };
    for (unsigned kind : {30u, 31u}) {
        for (Way way : {Ok, Cancel, CloseButton, Escape, Destroy, Delete}) {
            SCOPED_TRACE(QStringLiteral("kind %1, way %2").arg(kind).arg(int(way)).toStdString());
            // Shown whatever createHidden says, and the owner held.
            CKwMFCDialog* d = open(kind, entity(kind), 1);
            ASSERT_NE(d, nullptr);
            EXPECT_TRUE(d->isVisible());
            EXPECT_TRUE(frameHeld());
            switch (way) {
            case Ok: click(d, 1); break;
            case Cancel: click(d, 2); break;
            case CloseButton: d->close(); break;
            case Escape: {
                QKeyEvent esc(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
                QApplication::sendEvent(d, &esc);
                break;
            }
            case Destroy: d->DestroyWindow(); break;
            case Delete: delete d; break;
            }
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            EXPECT_FALSE(frameHeld());
        }
    }
}

TEST_F(AnalysisSetupEditors, nothingGivenOpensANewEntityWithoutAModel)
{
    for (unsigned kind : {15u, 30u, 31u}) {
        SCOPED_TRACE(kind);
        DialogLaunchRequest r{};
        r.kind = kind;
        LaunchDialog(&r); // no view, no analysis, no object
        QApplication::processEvents();
        int opened = 0;
        for (QWidget* w : kwtest::VisibleTopLevels())
            if (auto* d = dynamic_cast<CKwMFCDialog*>(w)) {
                ++opened;
                EXPECT_EQ(edit(d, 274)->text(), "1");
                click(d, 1); // no model to write into: refused or closed, never a crash
                if (d->isVisible())
                    click(d, 2);
            }
        EXPECT_EQ(opened, 1);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(AnalysisSetupEditors, aNewModalTableIsChosenAndAnEmptyOneRefusedThenCancelDropsIt)
{
    const qsizetype tablesBefore = host.model->m_tables.size();
    auto* d = dynamic_cast<CKwMFCUIDamping*>(open(15, damping()));
    ASSERT_NE(d, nullptr);
    // The table dialog ends with OK on its empty list: the new table is kept and chosen.
    int newId = 0;
    kwtest::AnswerModals([&] { newId = d->DefineNewTable(); }, QMessageBox::Ok,
                         [](QWidget* w) {
                             if (auto* t = dynamic_cast<CKwTableDialog*>(w))
                                 t->OnOK();
                         });
    ASSERT_GT(newId, 0);
    EXPECT_EQ(host.model->m_tables.size(), tablesBefore + 1);
    EXPECT_EQ(d->GetEditObject()->m_modalTableId, newId);
    EXPECT_TRUE(KwControl<QCheckBox>(d, 3621)->isChecked());
    EXPECT_EQ(KwControl<QComboBox>(d, 3623)->currentText(),
              KwTableLookup::Find(host.model.get(), newId, KwTableLookup::Frequency)->GetName());
    click(d, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), d);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(QStringLiteral("no points")));
    EXPECT_EQ(damping()->m_modalTableId, 4);
    click(d, 2);
    EXPECT_EQ(host.model->m_tables.size(), tablesBefore);
}

TEST_F(AnalysisSetupEditors, theSpectrumListsNewTableLastAndComesBackToItsTable)
{
    auto* d = dynamic_cast<CKwMFCUISpectrumSetup*>(open(30, spectrum()));
    ASSERT_NE(d, nullptr);
    auto* tables = KwControl<QComboBox>(d, 7304);
    const QString chosen = tables->currentText();
    EXPECT_EQ(tables->itemText(tables->count() - 1), QStringLiteral("New Table"));
    // Choosing "New Table" opens the table dialog; cancelled, the list shows the table again.
    const kwtest::ModalRecord seen =
        kwtest::AnswerModals([&] { tables->setCurrentIndex(tables->count() - 1); });
    EXPECT_EQ(seen.dialogTitles.size(), 1);
    EXPECT_EQ(tables->currentText(), chosen);
    // Another frequency table chosen in the list is the spectrum's on OK.
    const int other = tables->findText(QStringLiteral("Damping vs frequency"));
    ASSERT_GE(other, 0);
    tables->setCurrentIndex(other);
    click(d, 1);
    EXPECT_EQ(spectrum()->m_tableId, 4);
}

TEST_F(AnalysisSetupEditors, labelsCarryTheirUnitsAndEveryCaptionIsTranslated)
{
    CKwMFCDialog* d = open(15, damping());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(KwControl<QLabel>(d, 3615)->text(), "BETA, Stiffness Proportional (s):");
    EXPECT_EQ(KwControl<QLabel>(d, 3611)->text(), "Structural Damping G (%):");
    click(d, 2);
    auto* f = dynamic_cast<CKwMFCUISolutionFrequency*>(open(31, frequencies()));
    ASSERT_NE(f, nullptr);
    EXPECT_EQ(KwControl<QLabel>(f, 7051)->text(), "Start Frequency (Hz):");
    EXPECT_EQ(f->GetDiscretePage()->Model()->headerData(0, Qt::Horizontal, Qt::DisplayRole),
              "Frequency (Hz)");
    click(f, 2);

    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    QStringList bad;
    for (unsigned kind : {15u, 30u, 31u}) {
        CKwMFCDialog* e = open(kind, entity(kind));
        ASSERT_NE(e, nullptr);
        if (kind == 31)
            for (int m = 0; m < CKwSolutionFrequency::MethodCount; ++m) {
                KwControl<QComboBox>(e, CKwMFCUISolutionFrequency::kMethodCombo)
                    ->setCurrentIndex(m);
                bad += kwtest::UntranslatedCaptions(e);
            }
        else
            bad += kwtest::UntranslatedCaptions(e);
        click(e, 2);
    }
    CKwXMLUtils::SetCurrentLanguage("en");
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
}

} // namespace
