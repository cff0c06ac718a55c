// The constraint editor end to end: opened through LaunchDialog, picks made by clicking the
// view, OK writing the model, and the behaviour of its controls.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUIRestraint.h"
#include "CKwRestraint.h"
#include "CKwSelectionHandler.h"
#include "CKwSubCase.h"
#include "CKwTreeManager.h"
#include "CKwUIEntity.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "KwControls.h"
#include "KwCustomColors.h"
#include "KwLangText.h"
#include "KwTestSupport.h"

#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QSlider>
#include <QTest>
#include <QToolButton>
#include <gtest/gtest.h>

namespace {

class RestraintEditor : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }

    CKwMFCUIRestraint* open(CKwRestraint* restraint = nullptr)
    {
        DialogLaunchRequest r = host.Request(1);
        r.object = restraint;
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCUIRestraint*>(host.view->GetOpenDialog());
        EXPECT_NE(d, nullptr); // each test runs in its own process: a null ends only that test
        return d;
    }
    CKwUIEntity* geo(int kind, int id) { return host.model->FindGeometry(kind, id); }
    void click(CKwUIEntity* e, Qt::MouseButton button = Qt::LeftButton,
               Qt::KeyboardModifiers mods = Qt::NoModifier)
    {
        const QPointF at = host.view->ScreenPointOf(e);
        ASSERT_GE(at.x(), 0) << "not drawn";
        QTest::mouseClick(host.view.get(), button, mods, at.toPoint());
    }
    static QStringList lines(const QListWidget* l)
    {
        QStringList out;
        for (int i = 0; i < l->count(); ++i)
            out << l->item(i)->text();
        return out;
    }
    static void setText(QWidget* d, int id, const QString& t)
    {
        KwControl<QLineEdit>(d, id)->setText(t);
    }
    static void chooseType(QWidget* d, int row)
    {
        KwControl<QComboBox>(d, 1417)->setCurrentIndex(row);
    }
    static void press(QWidget* d, int id)
    {
        QTest::mouseClick(KwControl<QAbstractButton>(d, id), Qt::LeftButton);
    }

    kwtest::Host host;
};

TEST_F(RestraintEditor, opensOnTheExistingConstraintWithEveryFieldFilled)
{
    CKwRestraint* fixed = host.model->m_restraints.first();
    fixed->m_size = 4;
    fixed->m_density = 15;
    fixed->m_coordSystem = 2;
    fixed->m_color = 0x0000FF;
    CKwMFCUIRestraint* d = open(fixed);
    EXPECT_TRUE(d->isVisible());
    EXPECT_EQ(d->GetTemplateId(), 368u);
    EXPECT_EQ(d->GetLaunchKind(), 1u);
    EXPECT_EQ(d->windowTitle(), "Constraints");
    EXPECT_EQ(KwControl<QLineEdit>(d, 273)->text(), "Fixed end");
    EXPECT_EQ(KwControl<QLineEdit>(d, 274)->text(), "1");
    EXPECT_EQ(lines(d->GetSelectionBox()), QStringList{"Face 5 (Left)"});
    EXPECT_EQ(d->GetDofMask(), 0x3Fu);
    EXPECT_EQ(KwControl<QComboBox>(d, 1417)->currentIndex(), 0);
    EXPECT_EQ(KwControl<QComboBox>(d, 1487)->count(), 4); // the global three and "Bore axis"
    EXPECT_EQ(KwControl<QComboBox>(d, 1487)->currentIndex(), 2);
    EXPECT_EQ(KwControl<QSlider>(d, 1728)->value(), 4);
    auto* density = KwControl<QSlider>(d, 1730);
    EXPECT_EQ(std::make_tuple(density->value(), density->minimum(), density->maximum()),
              std::make_tuple(15, 1, 20));
    EXPECT_EQ(d->GetColor(), 0x0000FFu);
    EXPECT_EQ(d->GetSelectionBox()->GetFilter(), 33278u);
    EXPECT_EQ(d->GetSelectionBox()->GetOption(), 128);
    EXPECT_EQ(d->GetSelectionBox()->toolTip(), "Select face, edge, or vertex");
    open(); // a second launch while one is open is refused
    EXPECT_EQ(host.view->GetOpenDialogCount(), 1);
    EXPECT_EQ(host.view->GetOpenDialog(), d);
    auto* subcases = KwControl<QListWidget>(d, 1535);
    ASSERT_EQ(subcases->count(), 2);
    EXPECT_TRUE(subcases->item(0)->isSelected() && !subcases->item(1)->isSelected());
    for (const auto& [id, caption] : {std::pair{1530, "Temperature (°C):"},
                                      {7408, "Subcases:"},
                                      {7496, "Symmetry"},
                                      {1524, "X"},
                                      {7495, "AntiSymmetry"},
                                      {1419, "Name:"},
                                      {1498, "Selected Entities"}})
        EXPECT_EQ(KwGetControlText(d, id), caption) << id;
}

TEST_F(RestraintEditor, refreshAfterTheConstraintChangedUnderneathShowsItAgainEverywhere)
{
    CKwRestraint* fixed = host.model->m_restraints.first();
    CKwMFCUIRestraint* d = open(fixed);
    // The host changes the stored constraint while the editor is open.
    fixed->m_type = CKwRestraint::Pin;
    fixed->m_coordSystem = 1;
    fixed->m_dof = {true, false, true, false, false, true};
    fixed->m_pinFix = {false, true, false};
    fixed->m_size = 7;
    fixed->m_color = 0x00FF00;
    fixed->m_subcaseIds = {host.model->m_analyses.first()->GetSubCases().last()->GetID()};
    fixed->m_entities = {geo(CKwUIEntity::Face, 2), geo(CKwUIEntity::Face, 3)};
    d->MarkOutOfDate();
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(d, &activate);

    EXPECT_EQ(KwControl<QComboBox>(d, 1417)->currentIndex(), 1); // "Pin"
    EXPECT_EQ(KwControl<QComboBox>(d, 1487)->currentIndex(), 1);
    EXPECT_EQ(d->GetDofMask(), 0b100101u);
    EXPECT_FALSE(KwControl<QAbstractButton>(d, 7675)->isChecked());
    EXPECT_TRUE(KwControl<QAbstractButton>(d, 7676)->isChecked());
    EXPECT_EQ(KwControl<QSlider>(d, 1728)->value(), 7);
    EXPECT_EQ(d->GetColor(), 0x00FF00u);
    EXPECT_FALSE(KwFindControl(d, 7116)->isVisibleTo(d));
    EXPECT_TRUE(KwFindControl(d, 7676)->isVisibleTo(d));
    EXPECT_EQ(d->GetSelectionBox()->GetFilter(), 0x40u);
    EXPECT_EQ(d->GetSelectionBox()->toolTip(), "Select Faces");
    EXPECT_EQ(lines(d->GetSelectionBox()), (QStringList{"Face 2 (Top)", "Face 3 (Front)"}));
    auto* subcases = KwControl<QListWidget>(d, 1535);
    EXPECT_TRUE(!subcases->item(0)->isSelected() && subcases->item(1)->isSelected());
    // The refill was no user's doing: the edit copy is the stored constraint, not more.
    EXPECT_EQ(d->GetEditObject()->m_entities, fixed->m_entities);
    EXPECT_EQ(d->GetEditObject()->m_subcaseIds, fixed->m_subcaseIds);
    // A check-only update waits for "Fix Radial Direction"; a full one does not.
    KwControl<QLineEdit>(d, 273)->setText("Renamed");
    d->UpdateObjectData(true);
    EXPECT_EQ(d->GetEditObject()->GetName(), fixed->GetName());
    d->UpdateObjectData(false);
    EXPECT_EQ(d->GetEditObject()->GetName(), "Renamed");
}

TEST_F(RestraintEditor, typeComboHasFiveItemsUnlessExplicitAnalysesAreEnabled)
{
    struct Case { bool addin, enabled; int items; };
    for (const Case c : {Case{true, false, 5}, Case{true, true, 6}, Case{false, false, 5}}) {
        SCOPED_TRACE(testing::Message() << c.addin << c.enabled);
        host.addin->SetExplicitEnabledInTechPreview(c.enabled);
        TheApplication = c.addin ? host.addin.get() : nullptr;
        CKwMFCUIRestraint d(nullptr, nullptr, 0, host.view.get());
        d.Create();
        auto* type = KwControl<QComboBox>(&d, 1417);
        EXPECT_EQ(type->count(), c.items);
        EXPECT_EQ(type->itemText(4), "Thermal");
        EXPECT_EQ(type->itemText(5), c.items == 6 ? "Rigid(Explicit" : "");
        d.OnCancel();
    }
    TheApplication = host.addin.get();
}

TEST_F(RestraintEditor, typeChangeSwitchesPanelsFiltersPromptsAndWarnings)
{
    struct Case
    {
        int row, type;
        unsigned filter;
        const char* prompt;
        bool dof, thermal, pin, incompatible;
    };
    const Case cases[] = {
        {1, 3, 0x40, "Select Faces", false, false, true, false},
        {2, 4, 0x40, "Select Faces", false, false, false, false},
        {3, 2, 32782, "Select point or vertex", true, false, false, true},
        {4, 1, 33278, "Select face, edge, or vertex", false, true, false, false},
        {5, 5, 33278, "Select face, edge, or vertex", true, false, false, true},
        {0, 0, 33278, "Select face, edge, or vertex", true, false, false, false},
    };
    host.addin->SetExplicitEnabledInTechPreview(true);
    CKwMFCUIRestraint* d = open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.row);
        host.view->ClearBubbleRecord();
        chooseType(d, c.row);
        int stored = -1;
        EXPECT_EQ((d->GetValue(CKwUIRestraint::FieldType, stored), stored), c.type);
        EXPECT_EQ(d->GetSelectionBox()->GetFilter(), c.filter);
        EXPECT_EQ(host.view->GetSelectionHandler()->GetFilter(), c.filter);
        EXPECT_EQ(d->GetSelectionBox()->toolTip(), c.prompt);
        EXPECT_EQ(KwFindControl(d, 7116)->isVisibleTo(d), c.dof);
        EXPECT_EQ(KwFindControl(d, 7117)->isVisibleTo(d), c.thermal);
        EXPECT_EQ(KwFindControl(d, 7675)->isVisibleTo(d), c.pin);
        EXPECT_EQ(host.view->GetBubbleCount(), c.incompatible ? 1 : 0);
        if (c.incompatible) {
            EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleWarning);
        }
        EXPECT_EQ(host.view->GetLastBubbleText(),
                  c.incompatible ? "The constraint selected is not compatible with this analysis."
                                 : "");
        // The choice stays: the combo shows the stored type.
        EXPECT_EQ(KwControl<QComboBox>(d, 1417)->currentIndex(), c.row);
    }
}

TEST_F(RestraintEditor, editorBelowGetsItsPickFilterBackWhenTheOneAboveCloses)
{
    CKwMFCUIRestraint* below = open();
    chooseType(below, 1); // pin: faces only
    DialogLaunchRequest r = host.Request(1);
    r.keepResults = 1; // lets a second editor open over the first
    LaunchDialog(&r);
    auto* above = dynamic_cast<CKwMFCUIRestraint*>(host.view->GetOpenDialog());
    ASSERT_TRUE(above && above != below);
    EXPECT_EQ(host.view->GetSelectionHandler()->GetFilter(), 33278u);
    above->OnCancel();
    EXPECT_EQ(host.view->GetSelectionHandler()->GetActiveDialog(), below);
    EXPECT_EQ(host.view->GetSelectionHandler()->GetFilter(), 0x40u);
}

TEST_F(RestraintEditor, choosingTheStoredTypeDoesNothing)
{
    CKwMFCUIRestraint* d = open();
    // The entity already holds the pin type while the combo still shows Structural.
    d->SetValue(CKwUIRestraint::FieldType, CKwRestraint::Pin);
    const int displays = d->GetDisplayCalls();
    chooseType(d, 1);
    EXPECT_FALSE(KwFindControl(d, 7675)->isVisibleTo(d));
    EXPECT_EQ(d->GetSelectionBox()->GetFilter(), 33278u);
    EXPECT_EQ(d->GetDisplayCalls(), displays);
    EXPECT_EQ(host.view->GetBubbleCount(), 0);
}

TEST_F(RestraintEditor, analysisDecidesWhichTypesAreAdvisedAgainst)
{
    host.addin->SetExplicitEnabledInTechPreview(true);
    CKwAnalysis* analysis = host.model->m_analyses.first();
    const struct { int code, row; const char* bubble; unsigned filter; } cases[] = {
        {CKwAnalysis::ResponseSpectrum, 4,
         "The constraint selected is not compatible with this analysis.", 33278},
        {CKwAnalysis::ResponseSpectrum, 3, "", 32782},
        {CKwAnalysis::ExplicitDynamics, 4,
         "Thermal constraints not supported in Explicit Dynamics analysis.", 33278},
        {CKwAnalysis::ExplicitDynamics, 5, "", 4592},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.row);
        analysis->SetAnalysisTypeCode(c.code);
        CKwMFCUIRestraint* d = open();
        host.view->ClearBubbleRecord();
        chooseType(d, c.row);
        EXPECT_EQ(host.view->GetLastBubbleText(), QString::fromLatin1(c.bubble));
        EXPECT_EQ(d->GetSelectionBox()->GetFilter(), c.filter);
        if (c.filter == 4592) {
            EXPECT_EQ(d->GetSelectionBox()->toolTip(), "Select body, face or edge");
        }
        d->OnCancel();
    }
}

TEST_F(RestraintEditor, clickingTheViewPicksAndDropsGeometry)
{
    CKwMFCUIRestraint* d = open();
    CKwUIEntity* front = geo(CKwUIEntity::Face, 3);
    CKwUIEntity* edge = geo(CKwUIEntity::Edge, 5);
    CKwUIEntity* vertex = geo(CKwUIEntity::Vertex, 1);
    for (CKwUIEntity* e : {front, edge, vertex, front})
        click(e);
    EXPECT_EQ(lines(d->GetSelectionBox()), (QStringList{"Face 3 (Front)", "Edge 5", "Vertex 1"}));
    EXPECT_EQ(d->GetSelectionBox()->GetEntities().size(), 4);
    EXPECT_EQ(d->GetEditObject()->m_entities, (QList<CKwUIEntity*>{front, edge, vertex}));
    EXPECT_EQ(host.view->GetHighlightedEntities().size(), 3);
    click(edge, Qt::RightButton);
    click(vertex, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(lines(d->GetSelectionBox()), QStringList{"Face 3 (Front)"});
    EXPECT_EQ(d->GetEditObject()->m_entities, QList<CKwUIEntity*>{front});
}

TEST_F(RestraintEditor, picksTheFilterRefusesAreNotTaken)
{
    CKwMFCUIRestraint* d = open();
    chooseType(d, 1); // pin: faces only
    click(geo(CKwUIEntity::Face, 2));
    // The view does not offer an edge under a faces-only filter...
    CKwUIEntity* under = host.view->EntityAt(host.view->ScreenPointOf(geo(CKwUIEntity::Edge, 5)));
    EXPECT_NE(under, geo(CKwUIEntity::Edge, 5));
    EXPECT_TRUE(under == nullptr || under->GetKind() == CKwUIEntity::Face);
    // ...and the logic refuses an edge pushed at the editor anyway.
    host.view->SendPickEvent({geo(CKwUIEntity::Edge, 5)}, false);
    EXPECT_EQ(lines(d->GetSelectionBox()), QStringList{"Face 2 (Top)"});
    EXPECT_EQ(d->GetEditObject()->m_entities.size(), 1);
}

TEST_F(RestraintEditor, okCreatesANewConstraintAndTheTreeIsRefreshed)
{
    CKwMFCUIRestraint* d = open();
    const int before = static_cast<int>(host.model->m_restraints.size());
    const int refreshes = CKwTreeManager::GetRefreshCount();
    click(geo(CKwUIEntity::Face, 3));
    setText(d, 273, "Clamp");
    press(d, 278);
    auto* subcases = KwControl<QListWidget>(d, 1535);
    subcases->clearSelection(); // the selection reaches the edited constraint as it changes
    EXPECT_TRUE(d->GetEditObject()->m_subcaseIds.isEmpty());
    subcases->item(1)->setSelected(true);
    EXPECT_EQ(d->GetEditObject()->m_subcaseIds, QList<int>{2});
    subcases->item(0)->setSelected(true);
    press(d, 1);
    ASSERT_EQ(host.model->m_restraints.size(), before + 1);
    const CKwRestraint* added = host.model->m_restraints.last();
    EXPECT_EQ(added->GetName(), "Clamp");
    EXPECT_EQ(added->GetID(), 2);
    EXPECT_EQ(added->m_entities, QList<CKwUIEntity*>{geo(CKwUIEntity::Face, 3)});
    EXPECT_EQ(added->m_dof, (std::array<bool, 6>{true, true, true, false, false, false}));
    EXPECT_EQ(added->m_subcaseIds, (QList<int>{1, 2}));
    EXPECT_EQ(CKwTreeManager::GetRefreshCount(), refreshes + 1);
    EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
    EXPECT_TRUE(host.view->GetHighlightedEntities().isEmpty());
}

TEST_F(RestraintEditor, reopeningEditsTheSameConstraintInPlace)
{
    CKwRestraint* fixed = host.model->m_restraints.first();
    CKwMFCUIRestraint* d = open(fixed);
    setText(d, 273, "Wall");
    setText(d, 274, "7");
    chooseType(d, 4);
    setText(d, 1531, "100");
    d->OnOK();
    ASSERT_EQ(host.model->m_restraints.size(), 1);
    EXPECT_EQ(fixed->GetName(), "Wall");
    EXPECT_EQ(fixed->GetID(), 7);
    EXPECT_EQ(fixed->m_type, CKwRestraint::Thermal);
    EXPECT_NEAR(fixed->m_temperature, 373.15, 1e-9); // shown in degrees C
}

TEST_F(RestraintEditor, badInputIsRefusedAndNothingIsWritten)
{
    // pick: 0 nothing, 1 a face, 2 an edge
    const struct { const char *name, *id, *temp; int row, pick; const char* bubble; } cases[] = {
        {"", "1", "", 0, 1, "Name - \n 'Enter a name for the constraint.'"},
        {"C", "abc", "", 0, 1, "ID - \n 'Enter a positive whole number.'"},
        {"C", "-3", "", 0, 1, "ID - \n 'Enter a positive whole number.'"},
        {"C", "1", "", 0, 1, "ID - \n 'Another constraint already uses this ID.'"},
        {"C", "5", "", 0, 0, "Selected Entities - \n 'Select at least one entity.'"},
        {"C", "5", "warm", 4, 1, "Temperature - \n 'Enter the temperature.'"},
        {"C", "5", "", 1, 2,
         "Selected Entities - \n 'Pin and frictionless constraints act on faces only.'"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.bubble);
        CKwMFCUIRestraint* d = open();
        if (c.pick)
            click(c.pick == 1 ? geo(CKwUIEntity::Face, 2) : geo(CKwUIEntity::Edge, 1));
        chooseType(d, c.row);
        setText(d, 273, c.name);
        setText(d, 274, c.id);
        setText(d, 1531, c.temp);
        host.view->ClearBubbleRecord();
        d->OnOK();
        EXPECT_EQ(host.view->GetLastBubbleText(), c.bubble);
        EXPECT_EQ(host.model->m_restraints.size(), 1);
        EXPECT_FALSE(d->IsWindowDestroyed());
        d->OnCancel();
        EXPECT_TRUE(d->IsWindowDestroyed());
    }
}

TEST_F(RestraintEditor, okWhileTheSolverRunsChangesNothingAndCancelStillCloses)
{
    CKwRestraint* fixed = host.model->m_restraints.first();
    CKwMFCUIRestraint* d = open(fixed);
    setText(d, 273, "Changed");
    click(geo(CKwUIEntity::Face, 3));
    host.view->SetSolvraRunning(true);
    d->OnOK();
    EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
    EXPECT_FALSE(d->IsWindowDestroyed());
    press(d, 2);
    EXPECT_TRUE(d->IsWindowDestroyed());
    // Neither the refused OK nor Cancel wrote the name or the pick into the model.
    EXPECT_EQ(fixed->GetName(), "Fixed end");
    EXPECT_EQ(fixed->m_entities.size(), 1);
}

TEST_F(RestraintEditor, presetsSetTheTogglesAndTogglesReachTheConstraint)
{
    struct Case { int ctrlId; unsigned mask; };
    const Case cases[] = {{276, 0x00},  {1532, 0x3F}, {278, 0x07},  {277, 0x38},  {1524, 0x31},
                          {1525, 0x2A}, {1526, 0x1C}, {1527, 0x0E}, {1528, 0x15}, {1529, 0x23}};
    CKwMFCUIRestraint* d = open();
    for (const Case& c : cases) {
        SCOPED_TRACE(c.ctrlId);
        press(d, c.ctrlId);
        EXPECT_EQ(d->GetDofMask(), c.mask);
        unsigned stored = 0;
        for (int i = 0, v = 0; i < 6; ++i)
            stored |= (d->GetValue(CKwUIRestraint::FieldDofFirst + i, v), v == 1 ? 1u : 0u) << i;
        EXPECT_EQ(stored, c.mask);
    }
    press(d, 283); // free RY of 0x23
    EXPECT_EQ(d->GetDofMask(), 0x33u);
    int ry = 0;
    EXPECT_EQ((d->GetValue(CKwUIRestraint::FieldDofFirst + 4, ry), ry), 1);
}

TEST_F(RestraintEditor, hideStructuralMembersAlternatesPictureVisibilityAndTip)
{
    CKwMFCUIRestraint* d = open();
    auto* toggle = KwControl<QToolButton>(d, 7170);
    EXPECT_TRUE(d->AreStructuralMembersShown());
    EXPECT_TRUE(d->GetHideMembersPicture().contains("7474"));
    EXPECT_EQ(toggle->toolTip(), "Hide all bodies");
    for (int i = 1; i <= 3; ++i) {
        SCOPED_TRACE(i);
        const int resets = d->GetDrawListResets();
        QTest::mouseClick(toggle, Qt::LeftButton);
        const bool shown = i % 2 == 0;
        EXPECT_EQ(d->AreStructuralMembersShown(), shown);
        EXPECT_TRUE(d->GetHideMembersPicture().contains(shown ? "7474" : "7472"));
        EXPECT_EQ(toggle->toolTip(), shown ? "Hide all bodies" : "Show all bodies");
        EXPECT_EQ(host.view->AreBodiesHidden(CFMView::BodyStructuralMembers), !shown);
        EXPECT_EQ(host.view->AreBodiesHidden(CFMView::BodySolids), !shown);
        EXPECT_EQ(d->GetDrawListResets(), resets + 1);
    }
}

TEST_F(RestraintEditor, colourChooserIsSeededWithAndKeepsTheCustomColours)
{
    KwCustomColors saved = LoadCustomColors();
    saved[0] = 0x00123456;
    SaveCustomColors(saved);
    CKwMFCUIRestraint* d = open(host.model->m_restraints.first());
    QColor seeded;
    kwtest::AnswerModals([&] { press(d, 1734); }, QMessageBox::Ok,
                         [&](QWidget* w) {
                             auto* dlg = qobject_cast<QColorDialog*>(w);
                             ASSERT_NE(dlg, nullptr);
                             seeded = QColorDialog::customColor(0);
                             QColorDialog::setCustomColor(5, QColor(0, 128, 0));
                             dlg->setCurrentColor(QColor(255, 0, 0));
                             dlg->accept();
                         });
    EXPECT_EQ(seeded, QColor(0x56, 0x34, 0x12));
    EXPECT_EQ(d->GetColor(), 0x0000FFu); // red as 0x00BBGGRR
    EXPECT_EQ(LoadCustomColors()[5], 0x00008000u);
    // Cancelling the chooser keeps the colour but still keeps the custom colours.
    kwtest::AnswerModals([&] { press(d, 1734); }, QMessageBox::Ok,
                         [&](QWidget*) { QColorDialog::setCustomColor(6, QColor(0, 0, 255)); });
    EXPECT_EQ(d->GetColor(), 0x0000FFu);
    EXPECT_EQ(LoadCustomColors()[6], 0x00FF0000u);
    d->OnOK();
    EXPECT_EQ(host.model->m_restraints.first()->m_color, 0x0000FFu);
}

TEST_F(RestraintEditor, contextMenuOffersWhatTheFilterAllowsAndDropsReachTheConstraint)
{
    CKwMFCUIRestraint* d = open();
    // The menu's texts, after triggering the entry named `trigger` if there is one.
    auto menuTexts = [&](const QString& trigger = {}) {
        std::unique_ptr<QMenu> m(d->GetSelectionBox()->CreateContextMenu(d));
        QStringList t;
        for (QAction* a : m->actions())
            if (!a->isSeparator())
                t << a->text();
        for (QAction* a : m->actions())
            if (a->text() == trigger)
                a->trigger();
        return t;
    };
    EXPECT_EQ(
        menuTexts(),
        (QStringList{"Select faces", "Chain Faces", "Select edges", "Select vertices", "Select All",
                     "Select All Sketch Segments", "Include Group", "Delete", "Clear All"}));
    chooseType(d, 2); // frictionless: faces only
    EXPECT_EQ(menuTexts(),
              (QStringList{"Select faces", "Chain Faces", "Select All", "Delete", "Clear All"}));
    chooseType(d, 0);
    d->GetSelectionBox()->SelectAll();
    EXPECT_EQ(d->GetSelectionBox()->count(), 6 + 12 + 8);
    EXPECT_EQ(d->GetEditObject()->m_entities.size(), 26);
    // The Delete key drops the selected line's entity.
    d->GetSelectionBox()->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
    QTest::keyClick(d->GetSelectionBox(), Qt::Key_Delete);
    EXPECT_EQ(d->GetEditObject()->m_entities.size(), 25);
    EXPECT_EQ(d->GetSelectionBox()->count(), 25);
    d->GetSelectionBox()->ClearAll();
    EXPECT_TRUE(d->GetEditObject()->m_entities.isEmpty());
    menuTexts("Select edges"); // the pick mode narrows what the view offers
    EXPECT_EQ(host.view->GetSelectionHandler()->GetFilter(), 0x10u);
    EXPECT_EQ(host.view->EntityAt(host.view->ScreenPointOf(geo(CKwUIEntity::Face, 3))), nullptr);
}

TEST_F(RestraintEditor, statusMessageOfTheHostReachesTheOpenEditor)
{
    CKwMFCUIRestraint* d = open();
    MessageRequest m{};
    m.text = L"Mesh updated";
    DialogLaunchRequest r = host.Request(82);
    r.object = &m;
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(d->GetLastMessage(), "Mesh updated");
}

TEST_F(RestraintEditor, everyVisibleCaptionPassesThroughTheLanguageService)
{
    host.addin->SetExplicitEnabledInTechPreview(true);
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    CKwMFCUIRestraint* d = open(host.model->m_restraints.first());
    QStringList bad = kwtest::UntranslatedCaptions(d);
    for (int row : {1, 4}) { // the pin and thermal panels
        chooseType(d, row);
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
