// The analysis-setup editors through LaunchDialog: subcase (kind 8), time step (29), modal
// setup (32) and nonlinear setup (52). Field rules per editor as data in one test body, then
// what each editor does beyond its fields: membership written back, new entities, the
// nonlinear parameters on the edit copy, rows of intervals, and requests with nothing to open.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMFCUIModalSetup.h"
#include "CKwMFCUINonlinearSetup.h"
#include "CKwMFCUISubcase.h"
#include "CKwMFCUITimeStep.h"
#include "CKwModalSetup.h"
#include "CKwNonlinearParametersDlg.h"
#include "CKwNonlinearSetup.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwTimeStep.h"
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QTableView>
#include <QTreeWidget>
#include <functional>
#include <gtest/gtest.h>

namespace {

// Sample model analyses by index.
enum { Linear = 0, NlStatic = 1, NlTransient = 2, Modal = 7 };

CKwAnalysis* analysis(CKwFEModel& m, int i) { return m.m_analyses.at(i); }
CKwSubCase* firstSubcase(CKwFEModel& m, int i) { return analysis(m, i)->GetSubCases().first(); }

void* objectOf(CKwFEModel& m, unsigned kind)
{
    switch (kind) {
    case 8: return static_cast<CKwFEBase*>(firstSubcase(m, Linear));
    case 29: return static_cast<CKwFEBase*>(analysis(m, NlTransient)->GetTimeStep());
    case 32: return static_cast<CKwFEBase*>(analysis(m, Modal)->GetModalSetup());
    default: return static_cast<CKwFEBase*>(firstSubcase(m, NlStatic)->GetNonlinearSetup());
    }
}

class SetupEditors : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    void TearDown() override { closeAll(); }

    void closeAll()
    {
        if (auto* d = dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog()))
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    CKwMFCDialog* open(unsigned kind, void* object, CKwAnalysis* a = nullptr)
    {
        DialogLaunchRequest r = host.Request(kind);
        r.object = object;
        r.analysis = a;
        LaunchDialog(&r);
        return dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog());
    }
    // OK as the user presses it; true when the editor closed.
    bool pressOk(CKwMFCDialog* d)
    {
        host.view->ClearBubbleRecord();
        KwControl<QAbstractButton>(d, 1)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return host.view->GetOpenDialog() == nullptr;
    }
    static void type(CKwMFCDialog* d, int ctrlId, const char* text)
    {
        KwControl<QLineEdit>(d, ctrlId)->setText(QString::fromUtf8(text));
    }
    static void cell(CKwMFCDialog* d, int row, int column, const char* text)
    {
        auto* t = dynamic_cast<CKwMFCUITimeStep*>(d);
        ASSERT_NE(t, nullptr);
        QAbstractItemModel* m = t->GetTable()->model();
        m->setData(m->index(row, column), QString::fromUtf8(text), Qt::EditRole);
    }

    kwtest::Host host;
};

// One field rule: the edit, the bubble OK shows ("" when OK is taken), and what the model
// holds afterwards (the old value when refused).
struct FieldCase
{
    const char* what;
    unsigned kind;
    std::function<void(CKwMFCDialog*)> edit;
    const char* bubble;
    std::function<bool(CKwFEModel&)> holds;
};

using Ed8 = CKwMFCUISubcase;
using Ed29 = CKwMFCUITimeStep;
using Ed32 = CKwMFCUIModalSetup;
using Ed52 = CKwMFCUINonlinearSetup;
using TS = CKwUITimeStep;

CKwModalSetup& modes(CKwFEModel& m) { return *analysis(m, Modal)->GetModalSetup(); }
CKwTimeStep& steps(CKwFEModel& m) { return *analysis(m, NlTransient)->GetTimeStep(); }
CKwNonlinearSetup& nlStatic(CKwFEModel& m) { return *firstSubcase(m, NlStatic)->GetNonlinearSetup(); }

const auto typeInto = [](int id, const char* text) {
    return [id, text](CKwMFCDialog* d) { KwControl<QLineEdit>(d, id)->setText(text); };
};
const auto inCell = [](int row, int column, const char* text) {
    return [row, column, text](CKwMFCDialog* d) {
        QAbstractItemModel* m = dynamic_cast<Ed29*>(d)->GetTable()->model();
        m->setData(m->index(row, column), QString::fromUtf8(text), Qt::EditRole);
    };
};

const FieldCase kFieldCases[] = {
    // Modal setup: 12 modes in the band 1 to 2000 Hz.
    {"modes not a number", 32, typeInto(Ed32::kModes, "abc"),
     "Number of Modes - \n 'Enter a whole number.'",
     [](CKwFEModel& m) { return modes(m).m_modeCount == 12; }},
    {"modes negative", 32, typeInto(Ed32::kModes, "-3"),
     "Number of Modes - \n 'Enter a whole number of 1 or more.'",
     [](CKwFEModel& m) { return modes(m).m_modeCount == 12; }},
    {"modes zero", 32, typeInto(Ed32::kModes, "0"),
     "Number of Modes - \n 'Enter a whole number of 1 or more.'",
     [](CKwFEModel& m) { return modes(m).m_modeCount == 12; }},
    {"modes taken", 32, typeInto(Ed32::kModes, " 20 "), "",
     [](CKwFEModel& m) { return modes(m).m_modeCount == 20; }},
    {"band in the wrong order", 32, typeInto(Ed32::kUpper, "0.5"),
     "Upper Frequency - \n 'Enter an upper frequency above the lower frequency.'",
     [](CKwFEModel& m) { return modes(m).m_upperFrequency == 2000.0; }},
    {"band of zero width", 32, typeInto(Ed32::kUpper, "1"),
     "Upper Frequency - \n 'Enter an upper frequency above the lower frequency.'",
     [](CKwFEModel& m) { return modes(m).m_upperFrequency == 2000.0; }},
    {"lower limit negative", 32, typeInto(Ed32::kLower, "-5"),
     "Lower Frequency - \n 'Enter a value of 0 or more.'",
     [](CKwFEModel& m) { return modes(m).m_lowerFrequency == 1.0; }},
    {"lower limit not a number", 32, typeInto(Ed32::kLower, "low"),
     "Lower Frequency - \n 'Enter a number in Hz.'",
     [](CKwFEModel& m) { return modes(m).m_lowerFrequency == 1.0; }},
    {"upper limit emptied", 32, typeInto(Ed32::kUpper, ""),
     "Upper Frequency - \n 'Enter the upper frequency.'",
     [](CKwFEModel& m) { return modes(m).m_upperFrequency == 2000.0; }},
    {"band switched off is not judged", 32,
     [](CKwMFCDialog* d) {
         KwControl<QAbstractButton>(d, Ed32::kUseBand)->setChecked(false);
         KwControl<QLineEdit>(d, Ed32::kUpper)->setText("junk");
     },
     "", [](CKwFEModel& m) { return !modes(m).m_useBand && modes(m).m_upperFrequency == 2000.0; }},
    {"band limits taken with their unit", 32, typeInto(Ed32::kUpper, "350 Hz"), "",
     [](CKwFEModel& m) { return modes(m).m_upperFrequency == 350.0; }},
    // Time steps: 200 x 0.1 ms, output every 5; 300 x 0.5 ms, output every 10.
    {"steps zero", 29, inCell(0, TS::ColSteps, "0"),
     "Number of Steps (Interval 1) - \n 'Enter a whole number of 1 or more.'",
     [](CKwFEModel& m) { return steps(m).m_intervals.at(0).steps == 200; }},
    {"steps negative", 29, inCell(1, TS::ColSteps, "-4"),
     "Number of Steps (Interval 2) - \n 'Enter a whole number of 1 or more.'",
     [](CKwFEModel& m) { return steps(m).m_intervals.at(1).steps == 300; }},
    {"increment zero", 29, inCell(1, TS::ColIncrement, "0"),
     "Time Increment (Interval 2) - \n 'Enter a value greater than 0.'",
     [](CKwFEModel& m) { return steps(m).m_intervals.at(1).increment == 5e-4; }},
    {"increment negative", 29, inCell(0, TS::ColIncrement, "-1e-3"),
     "Time Increment (Interval 1) - \n 'Enter a value greater than 0.'",
     [](CKwFEModel& m) { return steps(m).m_intervals.at(0).increment == 1e-4; }},
    {"increment not a number", 29, inCell(0, TS::ColIncrement, "fast"),
     "Time Increment (Interval 1) - \n 'Enter a number in s.'",
     [](CKwFEModel& m) { return steps(m).m_intervals.at(0).increment == 1e-4; }},
    {"output beyond the steps", 29, inCell(0, TS::ColOutputEvery, "201"),
     "Output Every (Interval 1) - \n 'Enter an output interval no larger than the number of "
     "steps.'",
     [](CKwFEModel& m) { return steps(m).m_intervals.at(0).outputEvery == 5; }},
    {"steps taken", 29, inCell(1, TS::ColSteps, "400"), "",
     [](CKwFEModel& m) { return steps(m).m_intervals.at(1).steps == 400; }},
    // Nonlinear setup (static): 20 increments, output every 2.
    {"increments not a number", 52, typeInto(Ed52::kIncrements, "ten"),
     "Number of Increments - \n 'Enter a whole number.'",
     [](CKwFEModel& m) { return nlStatic(m).m_increments == 20; }},
    {"increments negative", 52, typeInto(Ed52::kIncrements, "-2"),
     "Number of Increments - \n 'Enter a whole number of 1 or more.'",
     [](CKwFEModel& m) { return nlStatic(m).m_increments == 20; }},
    {"output beyond the increments", 52, typeInto(Ed52::kOutputEvery, "21"),
     "Output Every - \n 'Enter an output interval no larger than the number of increments.'",
     [](CKwFEModel& m) { return nlStatic(m).m_outputEvery == 2; }},
    {"a static run does not judge the time increment", 52,
     typeInto(Ed52::kTimeIncrement, "junk"), "",
     [](CKwFEModel& m) { return nlStatic(m).m_timeIncrement == 0.001; }},
    {"increments taken", 52, typeInto(Ed52::kIncrements, "40"), "",
     [](CKwFEModel& m) { return nlStatic(m).m_increments == 40; }},
    // Subcase 1 of the linear analysis; subcase 2 exists.
    {"subcase without a name", 8, typeInto(Ed8::kName, "  "),
     "Name - \n 'Enter a name for the subcase.'",
     [](CKwFEModel& m) { return firstSubcase(m, Linear)->GetName() == "Subcase 1"; }},
    {"subcase ID taken", 8, typeInto(Ed8::kID, "2"),
     "ID - \n 'Another subcase of this analysis already uses this ID.'",
     [](CKwFEModel& m) { return firstSubcase(m, Linear)->GetID() == 1; }},
    {"subcase ID not a number", 8, typeInto(Ed8::kID, "one"),
     "ID - \n 'Enter a positive whole number.'",
     [](CKwFEModel& m) { return firstSubcase(m, Linear)->GetID() == 1; }},
    {"subcase renamed", 8, typeInto(Ed8::kName, "Service load"), "",
     [](CKwFEModel& m) { return firstSubcase(m, Linear)->GetName() == "Service load"; }},
};

// A host of its own per case (one host at a time: a host closes every window when it goes).
TEST(SetupEditorFields, eachFieldRuleShowsItsMessageAndWritesNothingOnRefusal)
{
    kwtest::IsolateSettings();
    for (const FieldCase& c : kFieldCases) {
        SCOPED_TRACE(c.what);
        kwtest::Host fresh;
        DialogLaunchRequest r = fresh.Request(c.kind);
        r.object = objectOf(*fresh.model, c.kind);
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCDialog*>(fresh.view->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        c.edit(d);
        fresh.view->ClearBubbleRecord();
        KwControl<QAbstractButton>(d, 1)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(fresh.view->GetLastBubbleText(), QString::fromUtf8(c.bubble));
        EXPECT_EQ(fresh.view->GetOpenDialog() == nullptr, *c.bubble == '\0');
        EXPECT_TRUE(c.holds(*fresh.model));
        if (auto* still = dynamic_cast<CKwMFCDialog*>(fresh.view->GetOpenDialog()))
            still->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

QList<int> subcasesOf(const CKwFEModel& m, int loadId)
{
    for (const CKwLoad* l : m.m_loads)
        if (l->GetID() == loadId)
            return l->m_subcaseIds;
    return {-1};
}

TEST_F(SetupEditors, subcaseMembershipIsWrittenToTheLoadsAndConstraintsOnOkOnly)
{
    CKwFEModel& m = *host.model;
    auto* d = dynamic_cast<Ed8*>(open(8, objectOf(m, 8)));
    ASSERT_NE(d, nullptr);
    // Loads 1, 2, 3, 5, 6 are in subcase 1; 4 (convection) is in subcase 2.
    EXPECT_EQ(d->GetList(CKwUISubcase::Loads)->topLevelItemCount(), 5);
    EXPECT_EQ(d->GetList(CKwUISubcase::Loads)->topLevelItem(0)->text(1), "Force");
    EXPECT_EQ(d->GetChoices(CKwUISubcase::Loads)->count(), 1);
    d->GetList(CKwUISubcase::Loads)->topLevelItem(0)->setSelected(true);
    d->OnRemove(CKwUISubcase::Loads);
    EXPECT_EQ(d->GetList(CKwUISubcase::Loads)->topLevelItemCount(), 4);
    EXPECT_EQ(d->GetChoices(CKwUISubcase::Loads)->count(), 2);
    d->GetChoices(CKwUISubcase::Loads)->setCurrentIndex(1); // the convection
    d->OnAdd(CKwUISubcase::Loads);
    EXPECT_EQ(d->GetList(CKwUISubcase::Loads)->topLevelItem(4)->text(0), "Air cooling");
    d->GetList(CKwUISubcase::Constraints)->topLevelItem(0)->setSelected(true);
    d->OnRemove(CKwUISubcase::Constraints);
    type(d, Ed8::kID, "7");

    // Cancel leaves the model as it was.
    d->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(subcasesOf(m, 1), QList<int>{1});
    EXPECT_EQ(subcasesOf(m, 4), QList<int>{2});
    EXPECT_EQ(m.m_restraints.first()->m_subcaseIds, QList<int>{1});

    d = dynamic_cast<Ed8*>(open(8, objectOf(m, 8)));
    d->GetList(CKwUISubcase::Loads)->topLevelItem(0)->setSelected(true);
    d->OnRemove(CKwUISubcase::Loads);
    d->GetChoices(CKwUISubcase::Loads)->setCurrentIndex(1);
    d->OnAdd(CKwUISubcase::Loads);
    d->GetList(CKwUISubcase::Constraints)->topLevelItem(0)->setSelected(true);
    d->OnRemove(CKwUISubcase::Constraints);
    type(d, Ed8::kID, "7");
    ASSERT_TRUE(pressOk(d)) << qPrintable(host.view->GetLastBubbleText());
    EXPECT_EQ(firstSubcase(m, Linear)->GetID(), 7);
    EXPECT_EQ(subcasesOf(m, 1), QList<int>{});
    EXPECT_EQ(subcasesOf(m, 2), QList<int>{7});
    EXPECT_EQ(subcasesOf(m, 4), (QList<int>{2, 7}));
    EXPECT_TRUE(m.m_restraints.first()->m_subcaseIds.isEmpty());
}

TEST_F(SetupEditors, aLoadDeletedWhileTheSubcaseIsOpenIsShownMissingAndNotWrittenBack)
{
    CKwFEModel& m = *host.model;
    auto* d = dynamic_cast<Ed8*>(open(8, objectOf(m, 8)));
    ASSERT_NE(d, nullptr);
    CKwLoad* force = m.m_loads.takeFirst();
    delete force;
    d->OnMembersChanged();
    QTreeWidget* list = d->GetList(CKwUISubcase::Loads);
    ASSERT_EQ(list->topLevelItemCount(), 5);
    EXPECT_EQ(list->topLevelItem(0)->text(0), "ID 1");
    EXPECT_EQ(list->topLevelItem(0)->text(1), "(deleted)");
    type(d, Ed8::kName, "Renamed");
    EXPECT_FALSE(pressOk(d));
    EXPECT_EQ(host.view->GetLastBubbleText(),
              "Loads - \n 'A load of this subcase no longer exists (ID 1): remove it from the "
              "list.'");
    EXPECT_EQ(firstSubcase(m, Linear)->GetName(), "Subcase 1");
    // Removing the missing row lets the rest through.
    list->topLevelItem(0)->setSelected(true);
    d->OnRemove(CKwUISubcase::Loads);
    EXPECT_TRUE(pressOk(d));
    EXPECT_EQ(firstSubcase(m, Linear)->GetName(), "Renamed");
    EXPECT_EQ(subcasesOf(m, 2), QList<int>{1});
}

TEST_F(SetupEditors, newEntitiesGoToTheAnalysisOfTheRequest)
{
    CKwFEModel& m = *host.model;
    // A new subcase of the nonlinear static analysis comes with a static nonlinear setup.
    CKwMFCDialog* d = open(8, nullptr, analysis(m, NlStatic));
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(KwControl<QLineEdit>(d, Ed8::kID)->text(), "2");
    EXPECT_TRUE(KwControl<QAbstractButton>(d, Ed8::kParameters)->isEnabled());
    ASSERT_TRUE(pressOk(d));
    ASSERT_EQ(analysis(m, NlStatic)->GetSubCases().size(), 2);
    CKwSubCase* added = analysis(m, NlStatic)->GetSubCases().at(1);
    EXPECT_EQ(added->GetName(), "Subcase 2");
    EXPECT_EQ(added->GetAnalysis(), analysis(m, NlStatic));
    ASSERT_NE(added->GetNonlinearSetup(), nullptr);
    EXPECT_EQ(added->GetNonlinearSetup()->GetSubCase(), added);
    EXPECT_FALSE(added->GetNonlinearSetup()->IsTransient());

    // The linear analysis has neither a modal setup nor time steps: both are made new.
    d = open(32, nullptr, analysis(m, Linear));
    ASSERT_NE(d, nullptr);
    type(d, Ed32::kModes, "6");
    ASSERT_TRUE(pressOk(d));
    ASSERT_NE(analysis(m, Linear)->GetModalSetup(), nullptr);
    EXPECT_EQ(analysis(m, Linear)->GetModalSetup()->m_modeCount, 6);
    d = open(29, nullptr, analysis(m, Linear));
    ASSERT_NE(d, nullptr);
    ASSERT_TRUE(pressOk(d));
    ASSERT_NE(analysis(m, Linear)->GetTimeStep(), nullptr);
    EXPECT_EQ(analysis(m, Linear)->GetTimeStep()->m_intervals.size(), 1);

    // Cancel on a new one adds nothing.
    d = open(8, nullptr, analysis(m, Modal));
    ASSERT_NE(d, nullptr);
    d->OnCancel();
    EXPECT_EQ(analysis(m, Modal)->GetSubCases().size(), 1);
}

TEST_F(SetupEditors, requestsWithNothingToEditOpenNothingAndNoViewDoesNotCrash)
{
    CKwRestraint* notASetup = host.model->m_restraints.first();
    const struct { unsigned kind; void* object; } nothing[] = {
        {8, nullptr}, {29, nullptr}, {32, nullptr}, {52, nullptr},
        {52, static_cast<CKwFEBase*>(notASetup)}, {32, static_cast<CKwFEBase*>(notASetup)},
        {29, static_cast<CKwFEBase*>(notASetup)},
    };
    for (const auto& c : nothing) {
        SCOPED_TRACE(c.kind);
        open(c.kind, c.object);
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
        EXPECT_TRUE(kwtest::VisibleTopLevels().isEmpty());
    }
    // Without a view an editor still opens on its object; OK and Cancel work without one.
    for (unsigned kind : {8u, 29u, 32u, 52u}) {
        SCOPED_TRACE(kind);
        DialogLaunchRequest r = host.Request(kind);
        r.view = nullptr;
        r.object = objectOf(*host.model, kind);
        LaunchDialog(&r);
        const QList<QWidget*> shown = kwtest::VisibleTopLevels();
        ASSERT_EQ(shown.size(), 1);
        auto* d = dynamic_cast<CKwMFCDialog*>(shown.first());
        ASSERT_NE(d, nullptr);
        KwControl<QAbstractButton>(d, 1)->click();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        for (QWidget* w : kwtest::VisibleTopLevels())
            if (auto* still = dynamic_cast<CKwMFCDialog*>(w))
                still->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    // A subcase opened without its analysis finds it through the subcase itself.
    CKwMFCDialog* d = open(8, objectOf(*host.model, 8), nullptr);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(dynamic_cast<Ed8*>(d)->GetAnalysis(), analysis(*host.model, Linear));
}

TEST_F(SetupEditors, nonlinearParametersOpenOnTheEditCopySoCancelDropsThem)
{
    CKwFEModel& m = *host.model;
    for (unsigned kind : {8u, 52u}) {
        SCOPED_TRACE(kind);
        CKwNonlinearSetup* stored = firstSubcase(m, NlTransient)->GetNonlinearSetup();
        void* object = kind == 8 ? static_cast<CKwFEBase*>(firstSubcase(m, NlTransient))
                                 : static_cast<CKwFEBase*>(stored);
        const int button = kind == 8 ? int(Ed8::kParameters) : int(Ed52::kParameters);
        CKwMFCDialog* d = open(kind, object);
        ASSERT_NE(d, nullptr);
        const int before = stored->m_integers[CKwNonlinearSetup::IntMaxDivergence];
        CKwNonlinearSetup* edited = nullptr;
        bool transient = false;
        const kwtest::ModalRecord seen = kwtest::AnswerModals(
            [&] { KwControl<QAbstractButton>(d, button)->click(); },
            QMessageBox::Ok, [&](QWidget* w) {
                auto* p = dynamic_cast<CKwNonlinearParametersDlg*>(w);
                ASSERT_NE(p, nullptr);
                edited = p->GetSetup();
                transient = p->IsTransient();
                edited->m_integers[CKwNonlinearSetup::IntMaxDivergence] = before + 4;
            });
        EXPECT_EQ(seen.dialogTitles.size(), 1);
        ASSERT_NE(edited, nullptr);
        EXPECT_NE(edited, stored);
        EXPECT_TRUE(transient);
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        EXPECT_EQ(stored->m_integers[CKwNonlinearSetup::IntMaxDivergence], before);
        // With OK the same change reaches the stored setup, which stays the same object.
        d = open(kind, object);
        kwtest::AnswerModals(
            [&] { KwControl<QAbstractButton>(d, button)->click(); },
            QMessageBox::Ok, [&](QWidget* w) {
                dynamic_cast<CKwNonlinearParametersDlg*>(w)
                    ->GetSetup()
                    ->m_integers[CKwNonlinearSetup::IntMaxDivergence] = before + 4;
            });
        ASSERT_TRUE(pressOk(d)) << qPrintable(host.view->GetLastBubbleText());
        EXPECT_EQ(firstSubcase(m, NlTransient)->GetNonlinearSetup(), stored);
        EXPECT_EQ(stored->m_integers[CKwNonlinearSetup::IntMaxDivergence], before + 4);
        stored->m_integers[CKwNonlinearSetup::IntMaxDivergence] = before;
    }
}

TEST_F(SetupEditors, theAnalysisDecidesStaticOrTransientOfItsSetups)
{
    CKwMFCDialog* d = open(52, objectOf(*host.model, 52));
    ASSERT_NE(d, nullptr);
    auto* transient = KwControl<QAbstractButton>(d, Ed52::kTransient);
    EXPECT_FALSE(transient->isEnabled());
    EXPECT_FALSE(KwControl<QLineEdit>(d, Ed52::kTimeIncrement)->isVisible());
    EXPECT_EQ(dynamic_cast<Ed52*>(d)->SetValue(CKwUINonlinearSetup::FieldSolution, 1), 0);
    closeAll();

    // A setup of its own switches, and the time increment comes with a transient run.
    CKwNonlinearSetup own(9, "Loose");
    own.SetAnalysisType(CKwAnalysis::NonlinearStatic);
    d = open(52, static_cast<CKwFEBase*>(&own));
    ASSERT_NE(d, nullptr);
    transient = KwControl<QAbstractButton>(d, Ed52::kTransient);
    EXPECT_TRUE(transient->isEnabled());
    transient->click();
    EXPECT_TRUE(KwControl<QLineEdit>(d, Ed52::kTimeIncrement)->isVisible());
    EXPECT_EQ(KwGetControlText(d, 7736), "Number of Time Steps:");
    type(d, Ed52::kTimeIncrement, "0");
    EXPECT_FALSE(pressOk(d));
    EXPECT_EQ(host.view->GetLastBubbleText(),
              "Time Increment - \n 'Enter a value greater than 0.'");
    type(d, Ed52::kTimeIncrement, "2e-5");
    EXPECT_TRUE(pressOk(d));
    EXPECT_TRUE(own.IsTransient());
    EXPECT_EQ(own.m_timeIncrement, 2e-5);
}

TEST_F(SetupEditors, intervalsAreAddedAndRemovedWithTheirEndTimesAndTotals)
{
    CKwFEModel& m = *host.model;
    auto* d = dynamic_cast<Ed29*>(open(29, objectOf(m, 29)));
    ASSERT_NE(d, nullptr);
    QAbstractItemModel* t = d->GetTable()->model();
    const auto at = [&](int row, int column) {
        return t->data(t->index(row, column)).toString();
    };
    EXPECT_EQ(at(0, TS::ColEndTime), "0.02");
    EXPECT_EQ(at(1, TS::ColEndTime), "0.17");
    EXPECT_EQ(KwGetControlText(d, Ed29::kTotalTime), "0.17 s");
    EXPECT_EQ(KwGetControlText(d, Ed29::kTotalSteps), "500");
    EXPECT_EQ(t->headerData(TS::ColEndTime, Qt::Horizontal).toString(), "End Time (s)");
    EXPECT_FALSE(t->flags(t->index(0, TS::ColEndTime)) & Qt::ItemIsEditable);
    EXPECT_EQ(t->data(t->index(0, TS::ColEndTime), Qt::TextAlignmentRole).value<Qt::Alignment>(),
              Qt::AlignRight | Qt::AlignVCenter);

    // A bad cell blanks its end time and those after it, and the totals.
    cell(d, 0, TS::ColIncrement, "x");
    EXPECT_EQ(at(0, TS::ColEndTime), "");
    EXPECT_EQ(at(1, TS::ColEndTime), "");
    EXPECT_EQ(KwGetControlText(d, Ed29::kTotalTime), "");
    cell(d, 0, TS::ColIncrement, "2e-4");
    EXPECT_EQ(at(1, TS::ColEndTime), "0.19");

    // Add after the first row: a copy of it; remove the last.
    d->GetTable()->setCurrentIndex(t->index(0, 0));
    d->OnAddRow();
    ASSERT_EQ(t->rowCount(), 3);
    EXPECT_EQ(at(1, TS::ColSteps), "200");
    EXPECT_EQ(at(2, TS::ColEndTime), "0.23");
    d->GetTable()->setCurrentIndex(t->index(2, 0));
    d->OnRemoveRow();
    ASSERT_EQ(t->rowCount(), 2);
    EXPECT_EQ(KwGetControlText(d, Ed29::kTotalSteps), "400");
    ASSERT_TRUE(pressOk(d));
    ASSERT_EQ(steps(m).m_intervals.size(), 2);
    EXPECT_EQ(steps(m).m_intervals.at(1), (CKwTimeStep::Interval{200, 2e-4, 5}));

    // Every row removed: OK asks for one.
    d = dynamic_cast<Ed29*>(open(29, objectOf(m, 29)));
    d->OnRemoveRow();
    d->OnRemoveRow();
    d->OnRemoveRow(); // nothing left to remove
    EXPECT_FALSE(pressOk(d));
    EXPECT_EQ(host.view->GetLastBubbleText(), "Time Step - \n 'Add at least one time interval.'");
    EXPECT_EQ(steps(m).m_intervals.size(), 2);
}

TEST_F(SetupEditors, everyVisibleCaptionPassesThroughTheLanguageService)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    for (unsigned kind : {8u, 29u, 32u, 52u}) {
        SCOPED_TRACE(kind);
        CKwMFCDialog* d = open(kind, objectOf(*host.model, kind));
        ASSERT_NE(d, nullptr);
        const QStringList bad = kwtest::UntranslatedCaptions(d);
        EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
        closeAll();
    }
    CKwXMLUtils::SetCurrentLanguage("en");
}

} // namespace
