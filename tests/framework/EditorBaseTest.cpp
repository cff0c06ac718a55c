// The editor base: picks, OK and Cancel through the logic, the refresh hook, control codes, the
// invalid-IDs warning and option-page notifications, on a small editor built for the purpose.
#include "CFMView.h"
#include "CKwColorSwatch.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMFCUIBase.h"
#include "CKwMsgDialog.h"
#include "CKwPickEvent.h"
#include "CKwSelectionHandler.h"
#include "CKwTreeManager.h"
#include "CKwUIEntity.h"
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwMethodLogger.h"
#include "KwOptionPage.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QComboBox>
#include <QFocusEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace {

// Logic that records what the dialog asks of it.
struct ProbeLogic : public virtual CKwUIBase
{
    long submitStatus = 0;
    long cancelStatus = 0;
    int upToDate = 1;
    QStringList calls;
    QList<CKwUIEntity*> selected, deselected;
    int notificationsDuringRefresh = -1;
    std::function<void()> duringRefresh;

    long OnSubmitUI() override { calls << "submit"; return submitStatus; }
    long OnCancelUI() override { calls << "cancel"; return cancelStatus; }
    void OnSelected(QList<CKwUIEntity*>* l) override { selected += *l; }
    void OnDeselected(QList<CKwUIEntity*>* l) override { deselected += *l; }
    int IsUpToDate() override { return upToDate; }
    void Refresh() override
    {
        notificationsDuringRefresh = m_bNotificationsEnabled;
        if (duringRefresh)
            duringRefresh();
        upToDate = 1;
        calls << "refresh";
    }
};

constexpr KwControlCode kProbeCodes[] = {
    {1, 10, KwCodeOp::Text | KwCodeOp::GetText | KwCodeOp::ToolTip}, {4, 11, KwCodeOp::Items},
    {13, 12, KwCodeOp::Items}, {14, 12, KwCodeOp::Select}, {18, 20, KwCodeOp::ToolTip},
    {21, 13, KwCodeOp::Color}};

class ProbeEditor : public CKwMFCUIBase, public ProbeLogic
{
public:
    explicit ProbeEditor(CFMView* view) : CKwMFCUIBase(9001, view)
    {
        auto* lay = new QVBoxLayout(this);
        auto add = [&](QWidget* w, int id) {
            KwSetControlId(w, id);
            lay->addWidget(w);
            return w;
        };
        add(new QLineEdit, 10);
        add(new QComboBox, 11);
        list = static_cast<QListWidget*>(add(new QListWidget, 12));
        list->setSelectionMode(QAbstractItemView::MultiSelection);
        add(new CKwColorSwatch, 13);
        geometry = static_cast<CKwMFCNodeElemSelectionBox*>(
            add(new CKwMFCNodeElemSelectionBox, 20));
        faces = static_cast<CKwMFCNodeElemSelectionBox*>(add(new CKwMFCNodeElemSelectionBox, 21));
        geometry->SetFilter(0x2 | 0x10); // vertices and edges
        faces->SetFilter(0x40);
        RegisterSelectionBox(geometry);
        RegisterSelectionBox(faces);
        SetControlCodes(kProbeCodes);
    }
    void OnAfterSubmit() override { calls << "after"; }
    long OnOptionChanged(int ctrlId, int value) override
    {
        option = {ctrlId, value};
        redrawSuspendedMeanwhile = GetFMView()->IsRedrawSuspended();
        return 7;
    }
    using CKwMFCUIBase::TargetOnClick;
    QListWidget* list;
    CKwMFCNodeElemSelectionBox* geometry;
    CKwMFCNodeElemSelectionBox* faces;
    std::pair<int, int> option{-1, -1};
    bool redrawSuspendedMeanwhile = false;
};

class EditorBase : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    ProbeEditor* open()
    {
        auto* e = new ProbeEditor(host.view.get());
        e->Create();
        e->show();
        return e;
    }
    CKwUIEntity* geo(int kind, int id) { return host.model->FindGeometry(kind, id); }
    long send(ProbeEditor* e, int type, QList<CKwUIEntity*> list)
    {
        CKwPickEvent ev(type, list);
        QApplication::sendEvent(e, &ev);
        return ev.m_result;
    }
    static QStringList lines(const QListWidget* l)
    {
        QStringList out;
        for (int i = 0; i < l->count(); ++i)
            out << l->item(i)->text();
        return out;
    }
    kwtest::Host host;
};

TEST_F(EditorBase, picksBeforeTheEditorIsReadyAreIgnored)
{
    ProbeEditor e(host.view.get()); // constructed, never created: notifications off
    EXPECT_EQ(send(&e, KwViewEvent::Picked, {geo(CKwUIEntity::Edge, 1)}), 0);
    EXPECT_EQ(send(&e, KwViewEvent::Dropped, {geo(CKwUIEntity::Edge, 1)}), 0);
    EXPECT_TRUE(e.geometry->GetEntities().isEmpty());
    EXPECT_TRUE(e.selected.isEmpty());
}

TEST_F(EditorBase, samePickTwiceShowsOneLineButKeepsTwoEntries)
{
    ProbeEditor* e = open();
    CKwUIEntity* edge = geo(CKwUIEntity::Edge, 3);
    EXPECT_EQ(send(e, KwViewEvent::Picked, {edge, geo(CKwUIEntity::Vertex, 2)}), 1);
    EXPECT_EQ(send(e, KwViewEvent::Picked, {edge}), 1);
    EXPECT_EQ(lines(e->geometry), (QStringList{"Edge 3", "Vertex 2"}));
    EXPECT_EQ(e->geometry->GetEntities().size(), 3);
    EXPECT_EQ(e->selected.size(), 3);
    // The last line is the current one.
    EXPECT_EQ(e->geometry->currentRow(), 1);
    host.view->SetShowIDs(true); // the line text follows the view's id flag
    send(e, KwViewEvent::Picked, {geo(CKwUIEntity::Edge, 4)});
    EXPECT_EQ(lines(e->geometry).last(), "Edge 4 <4>");
}

TEST_F(EditorBase, picksGoToTheBoxThatAdmitsThemAndTheLogicHearsTheWholeList)
{
    ProbeEditor* e = open();
    CKwUIEntity* body = geo(CKwUIEntity::Body, 1);
    EXPECT_EQ(send(e, KwViewEvent::Picked, {geo(CKwUIEntity::Face, 2), body}), 1);
    EXPECT_EQ(lines(e->faces), QStringList{"Face 2 (Top)"});
    EXPECT_TRUE(e->geometry->GetEntities().isEmpty());
    // What no box shows is still the logic's to judge.
    EXPECT_EQ(e->selected, (QList<CKwUIEntity*>{geo(CKwUIEntity::Face, 2), body}));
}

TEST_F(EditorBase, singleSelectionBoxShowsOnlyTheLastPick)
{
    ProbeEditor* e = open();
    e->geometry->SetSingleSelection(true);
    send(e, KwViewEvent::Picked, {geo(CKwUIEntity::Edge, 1), geo(CKwUIEntity::Edge, 2)});
    send(e, KwViewEvent::Picked, {geo(CKwUIEntity::Vertex, 5)});
    EXPECT_EQ(lines(e->geometry), QStringList{"Vertex 5"});
    EXPECT_EQ(e->geometry->GetEntities().size(), 1);
}

TEST_F(EditorBase, dropsBoxDeleteAndClearAllLeaveTheBoxAndReachTheLogic)
{
    ProbeEditor* e = open();
    CKwUIEntity* a = geo(CKwUIEntity::Edge, 1);
    CKwUIEntity* b = geo(CKwUIEntity::Edge, 2);
    CKwUIEntity* v = geo(CKwUIEntity::Vertex, 1);
    send(e, KwViewEvent::Picked, {a, b, a, v});
    EXPECT_EQ(send(e, KwViewEvent::Dropped, {a}), 1);
    EXPECT_EQ(lines(e->geometry), (QStringList{"Edge 2", "Vertex 1"}));
    EXPECT_EQ(e->deselected, QList<CKwUIEntity*>{a});
    e->geometry->setCurrentRow(0, QItemSelectionModel::ClearAndSelect);
    e->geometry->DeleteSelected();
    EXPECT_EQ(e->deselected, (QList<CKwUIEntity*>{a, b}));
    e->geometry->ClearAll();
    EXPECT_EQ(e->deselected, (QList<CKwUIEntity*>{a, b, v}));
    EXPECT_EQ(e->geometry->count(), 0);
}

TEST_F(EditorBase, okSubmitsRunsTheHookRefreshesTheTreeAndCloses)
{
    ProbeEditor* e = open();
    QPointer<ProbeEditor> alive = e;
    int refreshes = 0;
    bool suspendedAtRefresh = false;
    auto c = QObject::connect(CKwTreeManager::Instance(), &CKwTreeManager::treeRefreshRequested,
                              [&] {
                                  ++refreshes;
                                  suspendedAtRefresh = CKwTreeManager::IsRedrawSuspended();
                              });
    e->OnOK();
    QObject::disconnect(c);
    EXPECT_EQ(e->calls, (QStringList{"submit", "after"}));
    EXPECT_EQ(refreshes, 1);
    EXPECT_FALSE(suspendedAtRefresh);
    EXPECT_FALSE(CKwTreeManager::IsRedrawSuspended());
    EXPECT_TRUE(e->IsWindowDestroyed());
    EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
    EXPECT_EQ(host.view->GetSelectionHandler()->GetActiveDialog(), nullptr);
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(alive.isNull());
}

TEST_F(EditorBase, refusedSubmitOrKeepOpenFlagSkipTheTreeRefresh)
{
    for (const bool refused : {true, false}) {
        SCOPED_TRACE(refused ? "refused" : "keep open");
        ProbeEditor* e = open();
        e->submitStatus = refused ? 1 : 0;
        e->m_bKeepOpen = refused ? 0 : 1;
        const int before = CKwTreeManager::GetRefreshCount();
        e->OnOK();
        EXPECT_EQ(CKwTreeManager::GetRefreshCount(), before);
        EXPECT_FALSE(CKwTreeManager::IsRedrawSuspended());
        EXPECT_EQ(e->IsWindowDestroyed(), !refused);
        if (refused) { // no hook, and the editor stays open
            EXPECT_EQ(e->calls, QStringList{"submit"});
            EXPECT_EQ(e->GetStayOpen(), 1);
            EXPECT_TRUE(e->isVisible());
        }
    }
}

TEST_F(EditorBase, okWhileTheSolverRunsIsRefusedButCancelCloses)
{
    ProbeEditor* e = open();
    host.view->SetSolvraRunning(true);
    e->OnOK();
    EXPECT_TRUE(e->calls.isEmpty());
    EXPECT_FALSE(e->IsWindowDestroyed());
    EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              "Changes to the FEA model are not allowed while the Solvra Solution is running.");
    CKwMethodLogger::ClearJournal();
    e->OnCancel();
    EXPECT_EQ(e->calls, QStringList{"cancel"});
    EXPECT_TRUE(e->IsWindowDestroyed());
    EXPECT_TRUE(CKwMethodLogger::Journal().contains("> CKwMFCUIBase::OnCancel"));
}

TEST_F(EditorBase, refreshHookRefillsWithPickNotificationsOff)
{
    ProbeEditor* e = open();
    long pickDuringRefresh = -1;
    e->duringRefresh = [&] { pickDuringRefresh = send(e, KwViewEvent::Picked,
                                                      {geo(CKwUIEntity::Edge, 1)}); };
    QEvent activate(QEvent::WindowActivate);
    QApplication::sendEvent(e, &activate);
    EXPECT_TRUE(e->calls.isEmpty()); // up to date: nothing to do
    e->upToDate = 0;
    QApplication::sendEvent(e, &activate);
    EXPECT_EQ(e->calls, QStringList{"refresh"});
    EXPECT_EQ(e->notificationsDuringRefresh, 0);
    EXPECT_EQ(pickDuringRefresh, 0);
    EXPECT_EQ(e->m_bNotificationsEnabled, 1);
}

TEST_F(EditorBase, controlCodesReachTheirControlsAndUnknownCodesAreRefused)
{
    ProbeEditor* e = open();
    const QString items[] = {"A", "B", "C"};
    QString text;
    EXPECT_EQ(e->SetControlText(1, "abc"), 1);
    EXPECT_EQ(e->GetControlText(1, text), 1);
    EXPECT_EQ(text, "abc");
    EXPECT_EQ(e->SetControlItems(4, 3, items), 1);
    EXPECT_EQ(KwControl<QComboBox>(e, 11)->count(), 3);
    EXPECT_EQ(e->SetControlItems(4, 0, items), 1);
    EXPECT_EQ(KwControl<QComboBox>(e, 11)->count(), 0);
    EXPECT_EQ(e->SetControlItems(13, 3, items), 1);
    const int rows[] = {2, 3, -1, 0, 99};
    EXPECT_EQ(e->SelectControlItems(14, 5, rows), 1);
    QList<int> selected;
    for (int i = 0; i < e->list->count(); ++i)
        if (e->list->item(i)->isSelected())
            selected << i;
    EXPECT_EQ(selected, (QList<int>{0, 2}));
    EXPECT_EQ(e->SetControlColor(21, 0x0000FF), 1);
    EXPECT_EQ(KwControl<CKwColorSwatch>(e, 13)->GetColor(), 0x0000FFu);
    EXPECT_EQ(e->SetControlToolTip(18, "Pick edges"), 1);
    EXPECT_EQ(e->geometry->toolTip(), "Pick edges");

    // Codes not in the table, and codes used for an operation they do not take.
    for (int code : {0, 2, 3, 99, -5}) {
        SCOPED_TRACE(code);
        EXPECT_EQ(e->SetControlText(code, "x"), 0);
        EXPECT_EQ(e->GetControlText(code, text), 0);
        EXPECT_EQ(e->SetControlItems(code, 3, items), 0);
        EXPECT_EQ(e->SelectControlItems(code, 1, rows), 0);
        EXPECT_EQ(e->SetControlToolTip(code, "x"), 0);
        EXPECT_EQ(e->SetControlColor(code, 0), 0);
    }
    EXPECT_EQ(e->SetControlColor(1, 0), 0);
    EXPECT_EQ(e->SetControlItems(1, 3, items), 0);
    EXPECT_EQ(e->SelectControlItems(4, 1, rows), 0);
    EXPECT_EQ(e->SetControlText(21, "x"), 0);
    // A count with no array leaves the control empty rather than reading nothing.
    EXPECT_EQ(e->SetControlItems(13, 5, nullptr), 1);
    EXPECT_EQ(e->list->count(), 0);
}

TEST_F(EditorBase, typedIdsThatDoNotExistAreListedInTheWarning)
{
    ProbeEditor* e = open();
    QStringList listed;
    QString title, label;
    const auto rec = kwtest::AnswerModals(
        [&] { EXPECT_EQ(e->AddEntitiesByID(CKwUIEntity::Face, {3, 99, 7, 1, 42}), 3); },
        QMessageBox::Ok, [&](QWidget* w) {
            if (auto* msg = qobject_cast<CKwMsgDialog*>(w)) {
                listed = msg->GetListedIDs();
                title = msg->windowTitle();
                label = KwControl<QLabel>(msg, 1051)->text();
            }
        });
    EXPECT_EQ(rec.dialogTitles, QStringList{"Warning"});
    EXPECT_EQ(listed, (QStringList{"99", "7", "42"}));
    EXPECT_EQ(label, "The following entity IDs do not exist and were removed:");
    EXPECT_EQ(lines(e->faces), (QStringList{"Face 3 (Front)", "Face 1 (Bottom)"}));
    // All IDs valid: no warning.
    const auto none = kwtest::AnswerModals([&] { e->AddEntitiesByID(CKwUIEntity::Face, {2}); });
    EXPECT_EQ(none.count(), 0);
}

TEST_F(EditorBase, warningKindListsTheGivenIdsInOrder)
{
    const QList<int> ids = {12, 5, 12000};
    QStringList listed;
    DialogLaunchRequest r = host.Request(70);
    r.object = const_cast<QList<int>*>(&ids);
    kwtest::AnswerModals([&] { LaunchDialog(&r); }, QMessageBox::Ok, [&](QWidget* w) {
        if (auto* msg = qobject_cast<CKwMsgDialog*>(w))
            listed = msg->GetListedIDs();
    });
    EXPECT_EQ(listed, (QStringList{"12", "5", "12000"}));
    r.object = nullptr;
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.dialogTitles, QStringList{"Warning"});
}

TEST_F(EditorBase, optionPageChangeReachesTheEditorInsideOneRedraw)
{
    ProbeEditor* e = open();
    auto* holder = new QWidget(e);
    auto* page = new QWidget(holder);
    const int redraws = host.view->GetRedrawCount();
    EXPECT_EQ(KwNotifyOptionChanged(page, host.view.get(), 1205, 3), 7);
    EXPECT_EQ(e->option, std::make_pair(1205, 3));
    EXPECT_TRUE(e->redrawSuspendedMeanwhile);
    EXPECT_FALSE(host.view->IsRedrawSuspended());
    EXPECT_EQ(host.view->GetRedrawCount(), redraws + 1);
    // A page without an owner goes nowhere.
    QWidget orphan;
    EXPECT_EQ(KwNotifyOptionChanged(&orphan, host.view.get(), 1, 1), 0);
}

TEST_F(EditorBase, warningTemplateIsFullyTranslated)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    QStringList bad = {"not run"};
    kwtest::AnswerModals([&] {
        CKwMsgDialog dlg({1, 2});
        dlg.DoModal();
    }, QMessageBox::Ok, [&](QWidget* w) { bad = kwtest::UntranslatedCaptions(w); });
    CKwXMLUtils::SetCurrentLanguage("en");
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
}

// Filters kept as "name|pattern|" pairs become the file dialog's names with their patterns;
// a pair without its pattern or name is dropped, a name that shows its patterns is kept.
TEST(EditorBaseFilters, pipeFiltersBecomeTheFileDialogsForm)
{
    struct Case
    {
        const char* pipe;
        QStringList expected;
    };
    const Case cases[] = {
        {"Material Files (*.svrmat)|*.svrmat|", {"Material Files (*.svrmat)"}},
        {"Libraries|*.kwimat;*.xml|CAD|*.sldmat|", {"Libraries (*.kwimat *.xml)", "CAD (*.sldmat)"}},
        {"FNO (*.fno)|*.fno|CFD (*.cfdst)|*.cfdst", {"FNO (*.fno)", "CFD (*.cfdst)"}},
        {"No pattern||Name only", {}},
        {"|*.a|Good|*.b|", {"Good (*.b)"}},
        {"", {}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(CKwMFCUIBase::FileDialogFilters(QString::fromLatin1(c.pipe)), c.expected)
            << c.pipe;
}

// Clicking into a selection box makes it the target of picks, unless its check refuses.
TEST_F(EditorBase, clickingIntoABoxMakesItTheTargetOfPicks)
{
    ProbeEditor* e = open();
    bool facesTakePicks = false;
    e->TargetOnClick(e->geometry);
    e->TargetOnClick(e->faces, [&] { return facesTakePicks; });
    ASSERT_EQ(e->GetActiveSelectionBox(), e->geometry);
    const auto click = [](QWidget* box) {
        QFocusEvent focus(QEvent::FocusIn, Qt::MouseFocusReason);
        QApplication::sendEvent(box, &focus);
    };
    click(e->faces);
    EXPECT_EQ(e->GetActiveSelectionBox(), e->geometry) << "the check refused";
    facesTakePicks = true;
    click(e->faces);
    EXPECT_EQ(e->GetActiveSelectionBox(), e->faces);
    click(e->geometry);
    EXPECT_EQ(e->GetActiveSelectionBox(), e->geometry);
    e->DestroyWindow();
}

} // namespace
