// The load editor through LaunchDialog kind 0: heading rows, advisories per analysis, picks of
// entities and of a location, OK writing the model, the advanced part and the results file.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUILoad.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "CKwTreeManager.h"
#include "CKwUIEntity.h"
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwTableLookup.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QFocusEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <functional>
#include <gtest/gtest.h>
#include <map>

namespace {

class LoadEditor : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }

    CKwMFCUILoad* open(int analysis = 0, CKwLoad* load = nullptr)
    {
        DialogLaunchRequest r = host.Request(0);
        r.object = load;
        r.analysis = host.model->m_analyses.at(analysis);
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCUILoad*>(host.view->GetOpenDialog());
        EXPECT_NE(d, nullptr);
        return d;
    }
    void click(int kind, int id)
    {
        const QPointF at = host.view->ScreenPointOf(host.model->FindGeometry(kind, id));
        ASSERT_GE(at.x(), 0) << "not drawn";
        QTest::mouseClick(host.view.get(), Qt::LeftButton, Qt::NoModifier, at.toPoint());
    }
    static void choose(QWidget* d, int row) { KwControl<QComboBox>(d, 1417)->setCurrentIndex(row); }
    static int row(QWidget* d) { return KwControl<QComboBox>(d, 1417)->currentIndex(); }

    kwtest::Host host;
};

TEST_F(LoadEditor, headingsHandOnAndEachAnalysisAdvisesAgainstWhatItCannotTake)
{
    // The explicit analysis (4) row by row is the next test.
    const struct { int analysis, row, taken; QString bubble; } cases[] = {
        {2, 18, 19, "Enforced Motion Loads not supported in Nonlinear Transient Response analysis."},
        {0, 18, 19, ""},
        {0, 11, 11, "The load selected is not compatible with this analysis."},
        {0, 12, 13, ""},
        {0, 20, 21, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.row);
        CKwMFCUILoad* d = open(c.analysis);
        host.view->ClearBubbleRecord();
        choose(d, c.row);
        EXPECT_EQ(row(d), c.taken);
        EXPECT_EQ(d->GetEditObject()->m_type, CKwUILoad::TypeOfRow(c.taken));
        EXPECT_EQ(host.view->GetLastBubbleText(), c.bubble);
        d->OnCancel();
    }
}

TEST_F(LoadEditor, anExplicitAnalysisWarnsExactlyAboutTheLoadsItCannotTake)
{
    // Every row of the type list in the explicit dynamics analysis; a heading hands on.
    const QString notExplicit = QStringLiteral("%1 not supported in Explicit analyses.");
    const std::map<int, QString> warned = {
        {CKwLoad::Moment, notExplicit.arg("DropDownMoment")},
        {CKwLoad::RotationalForce, notExplicit.arg("Rotational Force")},
        {CKwLoad::DistributedLoad, notExplicit.arg("Distributed Load")},
        {CKwLoad::RemoteForce, notExplicit.arg("Remote Force")},
        {CKwLoad::BearingLoad, notExplicit.arg("Bearing Load")},
        {CKwLoad::HydrostaticLoad, notExplicit.arg("Hydrostatic Load")},
        {CKwLoad::FromOutput, "'From Output' load not supported in Explicit analyses."},
    };
    CKwMFCUILoad* d = open(4);
    for (int r = 0; r < CKwUILoad::GetTypeRowCount(); ++r) {
        SCOPED_TRACE(r);
        choose(d, r == 0 ? 1 : 0); // from another row, so that the combo reports the choice
        host.view->ClearBubbleRecord();
        choose(d, r);
        const int type = d->GetEditObject()->m_type;
        EXPECT_EQ(type, CKwUILoad::TypeOfRow(CKwUILoad::IsHeadingRow(r) ? r + 1 : r));
        const auto it = warned.find(type);
        EXPECT_EQ(host.view->GetLastBubbleText(), it == warned.end() ? QString() : it->second);
    }

    // Initial conditions: the accelerations only, and only in the explicit analysis.
    const struct { int analysis, subtype; QString bubble; } initial[] = {
        {4, CKwLoad::InitialVelocity, ""},
        {4, CKwLoad::InitialAngularVelocity, ""},
        {4, CKwLoad::InitialAcceleration,
         "Inital Acceleration not supported in Explicit Dynamics analysis."},
        {4, CKwLoad::InitialAngularAcceleration,
         "Inital Angular Acceleration not supported in Explicit Dynamics analysis."},
        {0, CKwLoad::InitialAcceleration, ""},
        {0, CKwLoad::InitialAngularAcceleration, ""},
    };
    d->OnCancel();
    for (const auto& c : initial) {
        SCOPED_TRACE(c.subtype);
        CKwMFCUILoad* e = open(c.analysis);
        choose(e, 21);
        host.view->ClearBubbleRecord();
        KwControl<QComboBox>(e, 7420)->setCurrentIndex(c.subtype);
        EXPECT_EQ(e->GetEditObject()->m_subtype, c.subtype);
        EXPECT_EQ(host.view->GetLastBubbleText(), c.bubble);
        e->OnCancel();
    }
}

TEST_F(LoadEditor, aHeadingThatHandsOnToTheStoredTypeWarnsAndChangesNothing)
{
    // A stored enforced velocity in the nonlinear transient analysis. Choosing the heading
    // above it is a real selection change (the combo leaves row 19), handed back to row 19.
    auto* stored = new CKwLoad(50, QStringLiteral("Shaker"));
    stored->m_type = CKwLoad::EnforcedMotion;
    stored->m_subtype = CKwLoad::EnforcedVelocity;
    stored->m_magnitude = 0.003;
    stored->m_direction = {0, 0, 1};
    host.model->m_loads.append(stored);
    CKwMFCUILoad* d = open(2, stored);
    ASSERT_EQ(row(d), 19);
    EXPECT_EQ(KwGetControlText(d, 7432), "3");
    KwControl<QLineEdit>(d, 7432)->setText("4");
    host.view->ClearBubbleRecord();
    choose(d, 18);
    EXPECT_EQ(row(d), 19);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              "Enforced Motion Loads not supported in Nonlinear Transient Response analysis.");
    EXPECT_EQ(KwControl<QComboBox>(d, 7420)->currentIndex(), CKwLoad::EnforcedVelocity);
    EXPECT_EQ(d->GetEditObject()->m_subtype, CKwLoad::EnforcedVelocity);
    EXPECT_EQ(KwGetControlText(d, 7432), "4");
    EXPECT_EQ(KwGetControlText(d, 7431), "Magnitude (mm/s):");
}

TEST_F(LoadEditor, magnitudesWaitForTheirQuantityAndANewLoadOpensWithTheGeneralPrompt)
{
    CKwMFCUILoad* d = open();
    const QString opening = QStringLiteral("Select face, edge, or vertex");
    EXPECT_EQ(d->GetSelectionBox()->toolTip(), opening);
    // The opening prompt outlives a language switch; the type's prompt takes over on a choice.
    d->SetTextToCurrentLang();
    EXPECT_EQ(d->GetSelectionBox()->toolTip(), opening);
    const struct { int row; const char* shows; const char* typed; const char* prompt; } steps[] = {
        {0, "", "1500", nullptr}, // the new force, as it opened
        {2, "", "25", "Select face, edge, or point"},      // moment
        {0, "1500", nullptr, "Select face, edge, or point"}, // force again
        {1, "", nullptr, "Select faces/surfaces"},          // pressure
        {4, "25", nullptr, "Select faces/surfaces"},        // torque: a moment again
    };
    for (const auto& s : steps) {
        SCOPED_TRACE(s.row);
        choose(d, s.row);
        EXPECT_EQ(KwGetControlText(d, 7432), s.shows);
        if (s.typed)
            KwControl<QLineEdit>(d, 7432)->setText(s.typed);
        EXPECT_EQ(d->GetSelectionBox()->toolTip(), s.prompt ? s.prompt : opening);
    }
    d->OnCancel();
    // A stored load opens with its type's prompt.
    d = open(0, host.model->m_loads.at(1));
    EXPECT_EQ(d->GetSelectionBox()->toolTip(), "Select faces/surfaces");
}

TEST_F(LoadEditor, okWritesThePickedLoadInInternalUnitsAndRefusesBadInput)
{
    CKwMFCUILoad* d = open();
    const qsizetype before = host.model->m_loads.size();
    const int refreshes = CKwTreeManager::GetRefreshCount();
    choose(d, 1); // pressure
    EXPECT_EQ(KwGetControlText(d, 7431), "Magnitude (MPa):");
    EXPECT_EQ(d->GetSelectionBox()->GetFilter(), 0x40u);
    click(CKwUIEntity::Face, 3);
    KwControl<QLineEdit>(d, 7432)->setText("abc");
    QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
    EXPECT_EQ(host.view->GetLastBubbleText(), "Magnitude (MPa) - \n 'Enter a number in MPa.'");
    EXPECT_EQ(host.model->m_loads.size(), before);
    EXPECT_EQ(host.view->GetOpenDialog(), d);

    KwControl<QLineEdit>(d, 7432)->setText("0.3");
    QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
    ASSERT_EQ(host.model->m_loads.size(), before + 1);
    const CKwLoad* added = host.model->m_loads.last();
    EXPECT_EQ(added->m_type, CKwLoad::Pressure);
    EXPECT_DOUBLE_EQ(added->m_magnitude, 3.0e5);
    EXPECT_EQ(added->m_entities,
              QList<CKwUIEntity*>{host.model->FindGeometry(CKwUIEntity::Face, 3)});
    EXPECT_EQ(CKwTreeManager::GetRefreshCount(), refreshes + 1);
    EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
}

TEST_F(LoadEditor, remoteForceTakesItsLocationFromTheLocationBox)
{
    CKwMFCUILoad* d = open();
    choose(d, 7);
    click(CKwUIEntity::Face, 3);
    QFocusEvent focus(QEvent::FocusIn);
    QApplication::sendEvent(d->GetLocationBox(), &focus);
    EXPECT_EQ(d->GetLocationBox()->toolTip(), "Select Point/Vertex for remote force location");
    host.view->SendPickEvent({host.model->FindGeometry(CKwUIEntity::Vertex, 2)}, false);
    host.view->SendPickEvent({host.model->FindGeometry(CKwUIEntity::Vertex, 3)}, false);
    EXPECT_EQ(d->GetLocationBox()->count(), 1);
    EXPECT_EQ(d->GetEditObject()->m_locationEntity,
              host.model->FindGeometry(CKwUIEntity::Vertex, 3));
    EXPECT_EQ(d->GetEditObject()->m_entities.size(), 1);
    KwControl<QAbstractButton>(d, 7451)->setChecked(true); // typed coordinates
    EXPECT_EQ(d->GetEditObject()->m_locationEntity, nullptr);
    EXPECT_FALSE(d->GetLocationBox()->isEnabled());
}

TEST_F(LoadEditor, remoteForceAndRotationalOriginTakeANodePickedInTheView)
{
    const struct { int row; QString prompt; } cases[] = {
        {7, "Select grid point for remote force location"},
        {5, "Select node for Axis origin"},
    };
    CKwUIEntity* node = host.model->FindGeometry(CKwUIEntity::Node, 81);
    ASSERT_NE(node, nullptr);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.row);
        CKwMFCUILoad* d = open();
        choose(d, c.row);
        KwControl<QAbstractButton>(d, 7450)->setChecked(true);
        QFocusEvent focus(QEvent::FocusIn);
        QApplication::sendEvent(d->GetLocationBox(), &focus);
        EXPECT_EQ(d->GetLocationBox()->GetFilter(), CKwUIEntity::FilterBitOf(CKwUIEntity::Node));
        EXPECT_EQ(d->GetLocationBox()->toolTip(), c.prompt);
        click(CKwUIEntity::Node, 81);
        EXPECT_EQ(d->GetEditObject()->m_locationEntity, node);
        EXPECT_EQ(d->GetLocationBox()->count(), 1);
        // A vertex is refused while the origin is taken by node.
        host.view->SendPickEvent({host.model->FindGeometry(CKwUIEntity::Vertex, 2)}, false);
        EXPECT_EQ(d->GetEditObject()->m_locationEntity, node);
        d->OnCancel();
    }
}

TEST_F(LoadEditor, tableButtonsOpenTheTableDialogAndANewTableStaysOnlyOnOk)
{
    CKwLoad* pressure = host.model->m_loads.at(1);
    CKwMFCUILoad* d = open(0, pressure);
    auto* edit = KwControl<QAbstractButton>(d, 7483);
    ASSERT_TRUE(edit->isEnabled());
    QString title;
    CKwTable* shown = nullptr;
    kwtest::AnswerModals([&] { edit->click(); }, QMessageBox::Ok, [&](QWidget* w) {
        title = w->windowTitle();
        if (auto* t = dynamic_cast<CKwTableDialog*>(w))
            shown = t->GetTable();
    });
    EXPECT_EQ(shown, KwTableLookup::Find(host.model.get(), 2, KwTableLookup::Time));
    EXPECT_FALSE(title.isEmpty());

    // "Define New Table" and the combo's "New Table": Cancel removes the table, OK keeps it.
    const qsizetype tables = host.model->m_tables.size();
    auto* combo = KwControl<QComboBox>(d, 7482);
    const struct { std::function<void()> open; bool ok; } cases[] = {
        {[&] { KwControl<QAbstractButton>(d, 7484)->click(); }, false},
        {[&] { combo->setCurrentIndex(combo->count() - 1); }, false},
        {[&] { combo->setCurrentIndex(combo->count() - 1); }, true},
    };
    for (const auto& c : cases) {
        CKwTable* created = nullptr;
        int createdType = -1;
        kwtest::AnswerModals(c.open, QMessageBox::Ok, [&](QWidget* w) {
            auto* t = dynamic_cast<CKwTableDialog*>(w);
            ASSERT_NE(t, nullptr);
            created = t->GetTable();
            // Read while the table surely lives: Cancel deletes it.
            createdType = created ? created->GetTableType() : -1;
            if (c.ok)
                t->OnOK();
        });
        ASSERT_NE(created, nullptr);
        EXPECT_EQ(createdType, CKwTable::TimeCurve);
        EXPECT_EQ(host.model->m_tables.size(), tables + (c.ok ? 1 : 0));
        EXPECT_EQ(host.model->m_tables.contains(created), c.ok);
    }
    const int newId = host.model->m_tables.last()->GetID();
    EXPECT_EQ(d->GetEditObject()->m_timeTableId, newId);
    EXPECT_EQ(combo->currentText(), host.model->m_tables.last()->GetName());
    EXPECT_EQ(combo->count(), 4); // two curves, the new one, "New Table"

    // Deleted while the editor is open: reported, and no dialog opens.
    ASSERT_TRUE(KwTableLookup::Remove(host.model.get(), newId));
    host.view->ClearBubbleRecord();
    const kwtest::ModalRecord rec = kwtest::AnswerModals([&] { EXPECT_FALSE(d->EditTableData(KwTableLookup::Time)); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QString("Time Dependence - \n 'Table %1 no longer exists; choose another table.'")
                  .arg(newId));
    EXPECT_FALSE(edit->isEnabled());

    // A table kept with OK in its dialog leaves the model again when the load editor is
    // cancelled, and stays when the load is written; so do the edits of an existing table.
    for (bool okEditor : {false, true}) {
        SCOPED_TRACE(okEditor);
        d->OnCancel();
        const qsizetype count = host.model->m_tables.size();
        CKwTable* ramp = KwTableLookup::Find(host.model.get(), 2, KwTableLookup::Time);
        ASSERT_NE(ramp, nullptr);
        const QString rampName = ramp->GetName();
        d = open(0, pressure);
        combo = KwControl<QComboBox>(d, 7482);
        kwtest::AnswerModals([&] { KwControl<QAbstractButton>(d, 7484)->click(); },
                             QMessageBox::Ok, [](QWidget* w) {
                                 if (auto* t = dynamic_cast<CKwTableDialog*>(w))
                                     t->OnOK();
                             });
        ASSERT_EQ(host.model->m_tables.size(), count + 1);
        const int made = host.model->m_tables.last()->GetID();
        // "Edit Table Data" on the ramp the load had: renamed, written with OK.
        combo->setCurrentIndex(d->GetRowOfTable(KwTableLookup::Time, 2));
        kwtest::AnswerModals([&] { EXPECT_TRUE(d->EditTableData(KwTableLookup::Time)); },
                             QMessageBox::Ok, [](QWidget* w) {
                                 auto* t = dynamic_cast<CKwTableDialog*>(w);
                                 ASSERT_NE(t, nullptr);
                                 KwControl<QLineEdit>(t, CKwTableDialog::IDC_NAME)
                                     ->setText(QStringLiteral("Steeper ramp"));
                                 t->OnOK();
                             });
        ASSERT_EQ(ramp->GetName(), "Steeper ramp");
        if (okEditor)
            QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
        else
            d->OnCancel();
        EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
        EXPECT_EQ(host.model->m_tables.size(), count + (okEditor ? 1 : 0));
        EXPECT_EQ(KwTableLookup::Exists(host.model.get(), made, KwTableLookup::Time), okEditor);
        EXPECT_EQ(ramp->GetName(), okEditor ? QString("Steeper ramp") : rampName);
        d = open(0, pressure);
    }
}

TEST_F(LoadEditor, advancedPartToggleAndResultsFileDialog)
{
    CKwMFCUILoad* d = open();
    // The editor opens in the long form of the dialog's two-form toggle.
    EXPECT_EQ(KwGetControlText(d, 7479), " <<");
    EXPECT_EQ(d->GetFormFlag(), 1);
    // It opens at its final size: the layout settling afterwards changes nothing.
    const int longHeight = d->height();
    QApplication::processEvents();
    EXPECT_EQ(d->height(), longHeight);
    QRect reported;
    ASSERT_TRUE(d->GetWindowRectangle(0, &reported));
    EXPECT_EQ(reported, d->frameGeometry());

    // " <<": the advanced part goes, the dialog shrinks to what is left; the editing part,
    // OK, Cancel and the toggle itself stay usable.
    QTest::mouseClick(KwControl<QPushButton>(d, 7479), Qt::LeftButton);
    EXPECT_FALSE(d->IsAdvancedShown());
    EXPECT_EQ(d->GetFormFlag(), 0);
    EXPECT_EQ(KwGetControlText(d, 7479), " >>");
    EXPECT_LT(d->height(), longHeight);
    for (int id : {1, 2, 7479, 1417, 7432})
        EXPECT_TRUE(KwFindControl(d, id)->isVisible()) << id;
    // While short, the window rectangle asked for is the long one kept from before.
    ASSERT_TRUE(d->GetWindowRectangle(0, &reported));
    EXPECT_EQ(reported.height(), d->frameGeometry().height() + longHeight - d->height());
    EXPECT_EQ(reported.topLeft(), d->frameGeometry().topLeft());

    // " >>" brings back exactly what was hidden, at the old size, values untouched.
    QTest::mouseClick(KwControl<QPushButton>(d, 7479), Qt::LeftButton);
    EXPECT_TRUE(d->IsAdvancedShown());
    EXPECT_EQ(d->GetFormFlag(), 1);
    EXPECT_EQ(KwGetControlText(d, 7479), " <<");
    EXPECT_EQ(d->height(), longHeight);
    EXPECT_TRUE(KwFindControl(d, 1734)->isVisible());

    choose(d, 10);
    QStringList filters;
    QString suffix;
    kwtest::AnswerModals([&] { d->BrowseResultsFile(); }, QMessageBox::Ok, [&](QWidget* w) {
        if (auto* f = qobject_cast<QFileDialog*>(w)) {
            filters = f->nameFilters();
            suffix = f->defaultSuffix();
        }
    });
    EXPECT_EQ(filters, (QStringList{"FNO Binary Results Files (*.fno)",
                                    "CFD Study Results Files (*.cfdst)"}));
    EXPECT_EQ(suffix, "fno");
}

TEST_F(LoadEditor, everyVisibleCaptionPassesThroughTheLanguageService)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    CKwMFCUILoad* d = open(0, host.model->m_loads.first());
    QStringList bad = kwtest::UntranslatedCaptions(d);
    for (int r : {5, 7, 9, 10, 15, 16, 19}) { // rotational, remote, hydrostatic, file, thermal
        choose(d, r);
        bad += kwtest::UntranslatedCaptions(d);
    }
    auto* type = KwControl<QComboBox>(d, 1417);
    for (int i = 0; i < type->count(); ++i)
        if (!type->itemText(i).contains(CKwXMLUtils::PseudoPrefix()))
            bad << type->itemText(i);
    CKwXMLUtils::SetCurrentLanguage("en");
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
}

} // namespace
