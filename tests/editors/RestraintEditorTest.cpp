// The constraint editor end to end: opened through LaunchDialog, picks made by clicking the
// view, OK writing the model, and the behaviour of its controls.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwColorSwatch.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUIRestraint.h"
#include "CKwPickEvent.h"
#include "CKwRestraint.h"
#include "CKwTreeManager.h"
#include "CKwUIEntity.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "CKwSelectionHandler.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwCustomColors.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QColorDialog>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
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
        return dynamic_cast<CKwMFCUIRestraint*>(host.view->GetOpenDialog());
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
    static void setText(QWidget* dlg, int id, const QString& text)
    {
        KwControl<QLineEdit>(dlg, id)->setText(text);
    }
    static void chooseType(CKwMFCUIRestraint* d, int row)
    {
        KwControl<QComboBox>(d, 1417)->setCurrentIndex(row);
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
    ASSERT_NE(d, nullptr);
    EXPECT_TRUE(d->isVisible());
    EXPECT_EQ(d->GetTemplateId(), 368u);
    EXPECT_EQ(d->GetLaunchKind(), 1u);
    EXPECT_EQ(d->windowTitle(), "Constraints");
    EXPECT_EQ(KwControl<QLineEdit>(d, 273)->text(), "Fixed end");
    EXPECT_EQ(KwControl<QLineEdit>(d, 274)->text(), "1");
    EXPECT_EQ(lines(d->GetSelectionBox()), QStringList{"Face 5 (Left)"});
    EXPECT_EQ(d->GetDofMask(), 0x3Fu);
    EXPECT_EQ(KwControl<QComboBox>(d, 1417)->currentIndex(), 0);
    EXPECT_EQ(KwControl<QComboBox>(d, 1487)->count(), 3);
    EXPECT_EQ(KwControl<QComboBox>(d, 1487)->currentIndex(), 2);
    EXPECT_EQ(KwControl<QSlider>(d, 1728)->value(), 4);
    EXPECT_EQ(KwControl<QSlider>(d, 1730)->value(), 15);
    EXPECT_EQ(KwControl<QSlider>(d, 1730)->minimum(), 1);
    EXPECT_EQ(KwControl<QSlider>(d, 1730)->maximum(), 20);
    EXPECT_EQ(d->GetColor(), 0x0000FFu);
    EXPECT_EQ(d->GetSelectionBox()->GetFilter(), 33278u);
    EXPECT_EQ(d->GetSelectionBox()->GetOption(), 128);
    EXPECT_EQ(d->GetSelectionBox()->toolTip(), "Select face, edge, or vertex");
    auto* subcases = KwControl<QListWidget>(d, 1535);
    ASSERT_EQ(subcases->count(), 2);
    EXPECT_TRUE(subcases->item(0)->isSelected());
    EXPECT_FALSE(subcases->item(1)->isSelected());
    EXPECT_EQ(KwGetControlText(d, 1530), "Temperature (C):");
    EXPECT_EQ(KwGetControlText(d, 7408), "Subcases:");
    EXPECT_EQ(KwGetControlText(d, 7496), "Symmetry");
    EXPECT_EQ(KwGetControlText(d, 1524), "X");
    EXPECT_EQ(KwGetControlText(d, 7495), "AntiSymmetry");
    EXPECT_EQ(KwGetControlText(d, 1419), "Name:");
    EXPECT_EQ(KwGetControlText(d, 1498), "Selected Entities");
}

TEST_F(RestraintEditor, secondLaunchWhileOneIsOpenIsRefused)
{
    CKwMFCUIRestraint* first = open();
    ASSERT_NE(first, nullptr);
    open();
    EXPECT_EQ(host.view->GetOpenDialogCount(), 1);
    EXPECT_EQ(host.view->GetOpenDialog(), first);
}

TEST_F(RestraintEditor, typeComboHasFiveItemsUnlessExplicitAnalysesAreEnabled)
{
    struct Case { bool addin; bool enabled; int items; };
    for (const Case c : {Case{true, false, 5}, Case{true, true, 6}, Case{false, false, 5}}) {
        SCOPED_TRACE(c.items);
        host.addin->SetExplicitEnabledInTechPreview(c.enabled);
        TheApplication = c.addin ? host.addin.get() : nullptr;
        CKwMFCUIRestraint d(nullptr, nullptr, 0, host.view.get());
        d.Create();
        auto* type = KwControl<QComboBox>(&d, 1417);
        EXPECT_EQ(type->count(), c.items);
        EXPECT_EQ(type->itemText(4), "Thermal");
        if (c.items == 6) {
            EXPECT_EQ(type->itemText(5), "Rigid(Explicit");
        }
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
    ASSERT_NE(d, nullptr);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.row);
        host.view->ClearBubbleRecord();
        chooseType(d, c.row);
        int stored = -1;
        d->GetValue(CKwUIRestraint::FieldType, stored);
        EXPECT_EQ(stored, c.type);
        EXPECT_EQ(d->GetSelectionBox()->GetFilter(), c.filter);
        EXPECT_EQ(host.view->GetSelectionHandler()->GetFilter(), c.filter);
        EXPECT_EQ(d->GetSelectionBox()->toolTip(), c.prompt);
        EXPECT_EQ(KwFindControl(d, 7116)->isVisibleTo(d), c.dof);
        EXPECT_EQ(KwFindControl(d, 7117)->isVisibleTo(d), c.thermal);
        EXPECT_EQ(KwFindControl(d, 7675)->isVisibleTo(d), c.pin);
        if (c.incompatible) {
            EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleWarning);
            EXPECT_EQ(host.view->GetLastBubbleText(),
                      "The constraint selected is not compatible with this analysis.");
        } else {
            EXPECT_EQ(host.view->GetBubbleCount(), 0);
        }
        // The choice stays: the combo shows the stored type.
        EXPECT_EQ(KwControl<QComboBox>(d, 1417)->currentIndex(), c.row);
    }
}

TEST_F(RestraintEditor, choosingTheStoredTypeDoesNothing)
{
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
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
    struct Case { int code; bool isExplicit; int row; const char* bubble; unsigned filter; };
    const Case cases[] = {
        {CKwAnalysis::ResponseSpectrum, false, 4,
         "The constraint selected is not compatible with this analysis.", 33278},
        {CKwAnalysis::ResponseSpectrum, false, 3, "", 32782},
        {CKwAnalysis::ExplicitDynamics, true, 4,
         "Thermal constraints not supported in Explicit Dynamics analysis.", 33278},
        {CKwAnalysis::ExplicitDynamics, true, 5, "", 4592},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.row);
        analysis->SetAnalysisTypeCode(c.code);
        CKwMFCUIRestraint* d = open();
        ASSERT_NE(d, nullptr);
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
    ASSERT_NE(d, nullptr);
    CKwUIEntity* front = geo(CKwUIEntity::Face, 3);
    CKwUIEntity* edge = geo(CKwUIEntity::Edge, 5);
    CKwUIEntity* vertex = geo(CKwUIEntity::Vertex, 1);
    click(front);
    click(edge);
    click(vertex);
    click(front);
    EXPECT_EQ(lines(d->GetSelectionBox()),
              (QStringList{"Face 3 (Front)", "Edge 5", "Vertex 1"}));
    EXPECT_EQ(d->GetSelectionBox()->GetEntities().size(), 4);
    EXPECT_EQ(d->GetEditObject()->m_entities,
              (QList<CKwUIEntity*>{front, edge, vertex}));
    EXPECT_EQ(host.view->GetHighlightedEntities().size(), 3);
    click(edge, Qt::RightButton);
    click(vertex, Qt::LeftButton, Qt::ControlModifier);
    EXPECT_EQ(lines(d->GetSelectionBox()), QStringList{"Face 3 (Front)"});
    EXPECT_EQ(d->GetEditObject()->m_entities, QList<CKwUIEntity*>{front});
}

TEST_F(RestraintEditor, picksTheFilterRefusesAreNotTaken)
{
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
    chooseType(d, 1); // pin: faces only
    click(geo(CKwUIEntity::Face, 2));
    // The view does not offer an edge under a faces-only filter...
    CKwUIEntity* under = host.view->EntityAt(host.view->ScreenPointOf(geo(CKwUIEntity::Edge, 5)));
    EXPECT_NE(under, geo(CKwUIEntity::Edge, 5));
    EXPECT_TRUE(under == nullptr || under->GetKind() == CKwUIEntity::Face);
    // ...and an edge pushed at the editor anyway is refused.
    EXPECT_EQ(host.view->SendPickEvent({geo(CKwUIEntity::Edge, 5)}, false), 0);
    EXPECT_EQ(lines(d->GetSelectionBox()), QStringList{"Face 2 (Top)"});
    EXPECT_EQ(d->GetEditObject()->m_entities.size(), 1);
}

TEST_F(RestraintEditor, okCreatesANewConstraintAndTheTreeIsRefreshed)
{
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
    const int before = static_cast<int>(host.model->m_restraints.size());
    const int refreshes = CKwTreeManager::GetRefreshCount();
    click(geo(CKwUIEntity::Face, 3));
    setText(d, 273, "Clamp");
    QTest::mouseClick(KwControl<QToolButton>(d, 278), Qt::LeftButton);
    KwControl<QListWidget>(d, 1535)->item(1)->setSelected(true);
    QTest::mouseClick(KwControl<QPushButton>(d, 1), Qt::LeftButton);
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
    ASSERT_NE(d, nullptr);
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
    struct Case { const char* name; const char* id; const char* temp; int row; int pick;
                  const char* bubble; };
    const Case cases[] = {
        {"", "1", "", 0, 1, "Name - \n 'Enter a name for the constraint.'"},
        {"C", "abc", "", 0, 1, "ID - \n 'Enter a positive whole number.'"},
        {"C", "-3", "", 0, 1, "ID - \n 'Enter a positive whole number.'"},
        {"C", "1", "", 0, 1, "ID - \n 'Another constraint already uses this ID.'"},
        {"C", "5", "", 0, 0, "Selected Entities - \n 'Select at least one entity.'"},
        {"C", "5", "warm", 4, 1, "Temperature - \n 'Enter the temperature.'"},
        {"C", "5", "", 1, 2,
         "Selected Entities - \n 'Pin and frictionless constraints act on faces only.'"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.bubble);
        CKwMFCUIRestraint* d = open();
        ASSERT_NE(d, nullptr);
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
    ASSERT_NE(d, nullptr);
    setText(d, 273, "Changed");
    click(geo(CKwUIEntity::Face, 3));
    host.view->SetSolvraRunning(true);
    d->OnOK();
    EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
    EXPECT_EQ(fixed->GetName(), "Fixed end");
    EXPECT_EQ(fixed->m_entities.size(), 1);
    EXPECT_FALSE(d->IsWindowDestroyed());
    QTest::mouseClick(KwControl<QPushButton>(d, 2), Qt::LeftButton);
    EXPECT_TRUE(d->IsWindowDestroyed());
    EXPECT_EQ(fixed->GetName(), "Fixed end");
    EXPECT_EQ(fixed->m_entities.size(), 1);
}

TEST_F(RestraintEditor, presetsSetTheTogglesAndTogglesReachTheConstraint)
{
    struct Case { int ctrlId; unsigned mask; };
    const Case cases[] = {{276, 0x00}, {1532, 0x3F}, {278, 0x07}, {277, 0x38},
                          {1524, 0x31}, {1525, 0x2A}, {1526, 0x1C},
                          {1527, 0x0E}, {1528, 0x15}, {1529, 0x23}};
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.ctrlId);
        QTest::mouseClick(KwControl<QAbstractButton>(d, c.ctrlId), Qt::LeftButton);
        EXPECT_EQ(d->GetDofMask(), c.mask);
        for (int i = 0; i < 6; ++i) {
            int v = -1;
            d->GetValue(CKwUIRestraint::FieldDofFirst + i, v);
            EXPECT_EQ(v, static_cast<int>((c.mask >> i) & 1u));
        }
    }
    QTest::mouseClick(KwControl<QToolButton>(d, 283), Qt::LeftButton); // free RY of 0x23
    EXPECT_EQ(d->GetDofMask(), 0x33u);
    int ry = 0;
    d->GetValue(CKwUIRestraint::FieldDofFirst + 4, ry);
    EXPECT_EQ(ry, 1);
}

TEST_F(RestraintEditor, hideStructuralMembersAlternatesPictureVisibilityAndTip)
{
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
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
    ASSERT_NE(d, nullptr);
    QColor seeded;
    kwtest::AnswerModals([&] { QTest::mouseClick(KwControl<QPushButton>(d, 1734),
                                                 Qt::LeftButton); },
                         QMessageBox::Ok, [&](QWidget* w) {
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
    kwtest::AnswerModals([&] { QTest::mouseClick(KwControl<QPushButton>(d, 1734),
                                                 Qt::LeftButton); },
                         QMessageBox::Ok, [&](QWidget*) {
                             QColorDialog::setCustomColor(6, QColor(0, 0, 255));
                         });
    EXPECT_EQ(d->GetColor(), 0x0000FFu);
    EXPECT_EQ(LoadCustomColors()[6], 0x00FF0000u);
    d->OnOK();
    EXPECT_EQ(host.model->m_restraints.first()->m_color, 0x0000FFu);
}

TEST_F(RestraintEditor, contextMenuOffersWhatTheFilterAllowsAndDropsReachTheConstraint)
{
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
    auto menuTexts = [&] {
        std::unique_ptr<QMenu> m(d->GetSelectionBox()->CreateContextMenu(d));
        QStringList t;
        for (QAction* a : m->actions())
            if (!a->isSeparator())
                t << a->text();
        return t;
    };
    EXPECT_EQ(menuTexts(), (QStringList{"Select faces", "Chain Faces", "Select edges",
                                        "Select vertices", "Select All",
                                        "Select All Sketch Segments", "Include Group", "Delete",
                                        "Clear All"}));
    chooseType(d, 2); // frictionless: faces only
    EXPECT_EQ(menuTexts(), (QStringList{"Select faces", "Chain Faces", "Select All", "Delete",
                                        "Clear All"}));
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
}

TEST_F(RestraintEditor, statusMessageOfTheHostReachesTheOpenEditor)
{
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
    const std::wstring text = L"Mesh updated";
    MessageRequest m{};
    m.text = text.c_str();
    DialogLaunchRequest r = host.Request(82);
    r.object = &m;
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(d->GetLastMessage(), "Mesh updated");
}

TEST_F(RestraintEditor, pickModeNarrowsWhatTheViewOffers)
{
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
    std::unique_ptr<QMenu> m(d->GetSelectionBox()->CreateContextMenu(d));
    for (QAction* a : m->actions())
        if (a->text() == "Select edges")
            a->trigger();
    EXPECT_EQ(host.view->GetSelectionHandler()->GetFilter(), 0x10u);
    EXPECT_EQ(host.view->EntityAt(host.view->ScreenPointOf(geo(CKwUIEntity::Face, 3))), nullptr);
}

TEST_F(RestraintEditor, subcaseSelectionIsHandedToTheLogic)
{
    CKwMFCUIRestraint* d = open();
    ASSERT_NE(d, nullptr);
    auto* list = KwControl<QListWidget>(d, 1535);
    list->item(0)->setSelected(false);
    list->item(1)->setSelected(true);
    EXPECT_EQ(d->GetEditObject()->m_subcaseIds, QList<int>{2});
    list->clearSelection();
    EXPECT_TRUE(d->GetEditObject()->m_subcaseIds.isEmpty());
}

TEST_F(RestraintEditor, everyVisibleCaptionPassesThroughTheLanguageService)
{
    host.addin->SetExplicitEnabledInTechPreview(true);
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    CKwMFCUIRestraint* d = open(host.model->m_restraints.first());
    QStringList bad = {"no dialog"};
    if (d) {
        bad = kwtest::UntranslatedCaptions(d);
        for (int row : {1, 4}) { // the pin and thermal panels
            chooseType(d, row);
            bad += kwtest::UntranslatedCaptions(d);
        }
        for (int i = 0; i < KwControl<QComboBox>(d, 1417)->count(); ++i)
            if (!KwControl<QComboBox>(d, 1417)->itemText(i).contains(CKwXMLUtils::PseudoPrefix()))
                bad << KwControl<QComboBox>(d, 1417)->itemText(i);
    }
    CKwXMLUtils::SetCurrentLanguage("en");
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
}

} // namespace
