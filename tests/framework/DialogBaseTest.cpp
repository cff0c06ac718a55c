// The dialog base: placement in the per-user settings, the order of OK and Cancel, the view's
// dialog stack, holding the owner frame and the two-form toggle.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwFrameWnd.h"
#include "CKwMFCDialog.h"
#include "CKwSelectionHandler.h"
#include "KwMethodLogger.h"
#include "KwRegistry.h"
#include "KwTestSupport.h"

#include <QGuiApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QScreen>
#include <gtest/gtest.h>

namespace {

class PlainDialog : public CKwMFCDialog
{
public:
    PlainDialog(unsigned id, CFMView* view) : CKwMFCDialog(id, view)
    {
        // Placed by hand: the two-form toggle moves controls itself.
        label = new QLabel(QStringLiteral("label"), this);
        label->setGeometry(10, 10, 180, 20);
        extra = new QLabel(QStringLiteral("extra"), this);
        extra->setGeometry(10, 40, 180, 20);
        toggle = new QPushButton(QStringLiteral(">>"), this);
        toggle->setGeometry(10, 80, 60, 26);
        resize(200, 120);
    }
    using CKwMFCDialog::EnterViewDialogStack;
    using CKwMFCDialog::IsInViewDialogStack;
    QLabel* label;
    QLabel* extra;
    QPushButton* toggle;
};

class DialogBaseTest : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        CKwMethodLogger::ClearJournal();
    }
    kwtest::Host host;
};

QStringList entries(const QStringList& journal)
{
    QStringList out;
    for (const QString& l : journal)
        if (l.startsWith(QLatin1String("> ")))
            out << l.mid(2);
    return out;
}

} // namespace

TEST(RegistrySections, followTheTemplateTable)
{
    EXPECT_EQ(CKwMFCDialog::RegistrySectionFor(102), QStringLiteral("MeshTable Dialog Settings"));
    EXPECT_EQ(CKwMFCDialog::RegistrySectionFor(356), QStringLiteral("Component Dialog Settings"));
    EXPECT_EQ(CKwMFCDialog::RegistrySectionFor(364),
              QStringLiteral("Mat Orientation Dialog Settings"));
    EXPECT_EQ(CKwMFCDialog::RegistrySectionFor(1206), QStringLiteral("FEModel Dialog Settings"));
    for (unsigned other : {0u, 101u, 368u, 7322u, 0xFFFFFFFFu})
        EXPECT_EQ(CKwMFCDialog::RegistrySectionFor(other), QString()) << other;
}

TEST_F(DialogBaseTest, okAndCancelBothSaveThePosition)
{
    for (bool ok : {true, false}) {
        auto* d = new PlainDialog(364, host.view.get());
        d->Create();
        d->show();
        d->move(ok ? 111 : 222, ok ? 77 : 88);
        if (ok)
            d->OnOK();
        else
            d->OnCancel();
        EXPECT_EQ(KwReadRegistryCurrentUser(QStringLiteral("Mat Orientation Dialog Settings"),
                                            QStringLiteral("PosX"), -1),
                  ok ? 111 : 222);
        EXPECT_EQ(KwReadRegistryCurrentUser(QStringLiteral("Mat Orientation Dialog Settings"),
                                            QStringLiteral("PosY"), -1),
                  ok ? 77 : 88);
        EXPECT_TRUE(d->IsWindowDestroyed());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(DialogBaseTest, restoresThePositionKeepingTheSize)
{
    KwWriteToRegistryCurrentUser(QStringLiteral("FEModel Dialog Settings"),
                                 QStringLiteral("PosX"), 40);
    KwWriteToRegistryCurrentUser(QStringLiteral("FEModel Dialog Settings"),
                                 QStringLiteral("PosY"), 30);
    PlainDialog d(1206, nullptr);
    const QSize size = d.size();
    d.Create();
    EXPECT_EQ(d.pos(), QPoint(40, 30));
    EXPECT_EQ(d.size(), size);
}

TEST_F(DialogBaseTest, unknownTemplatesShareOneRememberedPosition)
{
    auto* a = new PlainDialog(368, nullptr);
    a->Create();
    a->show();
    a->move(90, 60);
    a->OnCancel();
    PlainDialog b(7322, nullptr);
    b.Create();
    EXPECT_EQ(b.pos(), QPoint(90, 60));
}

TEST_F(DialogBaseTest, positionOffEveryScreenMovesToTheNearestScreenCorner)
{
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    const struct
    {
        int x, y;
    } cases[] = {{screen.right() + 5000, screen.top() + 10},
                 {-9000, -9000},
                 {screen.left() + 10, screen.bottom() + 4000}};
    for (const auto& c : cases) {
        KwWriteToRegistryCurrentUser(QString(), QStringLiteral("PosX"), c.x);
        KwWriteToRegistryCurrentUser(QString(), QStringLiteral("PosY"), c.y);
        PlainDialog d(500, nullptr);
        const QSize size = d.size();
        d.Create();
        EXPECT_EQ(d.pos(), screen.topLeft()) << c.x << "," << c.y;
        EXPECT_EQ(d.size(), size);
    }
}

TEST_F(DialogBaseTest, garbledOrMissingSettingsReadAsZero)
{
    for (const char* garbage : {"abc", "", "12px", "1e3", "99999999999999999999"}) {
        KwWriteToRegistryCurrentUser(QString(), QStringLiteral("PosX"),
                                     QString::fromLatin1(garbage));
        KwWriteToRegistryCurrentUser(QString(), QStringLiteral("PosY"),
                                     QString::fromLatin1(garbage));
        PlainDialog d(500, nullptr);
        d.Create();
        EXPECT_EQ(d.pos(), QGuiApplication::primaryScreen()->geometry().topLeft()) << garbage;
    }
    kwtest::IsolateSettings();
    PlainDialog fresh(500, nullptr);
    fresh.Create();
    EXPECT_EQ(fresh.pos(), QPoint(0, 0));
}

TEST_F(DialogBaseTest, okWhileTheSolverRunsIsRefusedWithTheBubble)
{
    auto* d = new PlainDialog(368, host.view.get());
    d->Create();
    d->show();
    host.view->SetSolvraRunning(true);
    d->OnOK();
    EXPECT_FALSE(d->IsWindowDestroyed());
    EXPECT_TRUE(d->isVisible());
    EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("Changes to the FEA model are not allowed while the Solvra "
                             "Solution is running."));
    EXPECT_FALSE(KwRegistryHasEntry(QString(), QStringLiteral("PosX")));
    // Cancel is never refused.
    d->OnCancel();
    EXPECT_TRUE(d->IsWindowDestroyed());
    host.view->SetSolvraRunning(false);
}

TEST_F(DialogBaseTest, okAndCancelRunInTheirOwnOrder)
{
    auto* d = new PlainDialog(368, host.view.get());
    d->Create();
    d->OnOK();
    EXPECT_EQ(entries(CKwMethodLogger::Journal()),
              (QStringList{QStringLiteral("CKwMFCDialog::OnOK"),
                           QStringLiteral("CKwMFCDialog::SaveToRegistry"),
                           QStringLiteral("CKwMFCDialog::EndModal")}));
    CKwMethodLogger::ClearJournal();
    auto* c = new PlainDialog(368, host.view.get());
    c->Create();
    c->OnCancel();
    EXPECT_EQ(entries(CKwMethodLogger::Journal()),
              (QStringList{QStringLiteral("CKwMFCDialog::OnCancel"),
                           QStringLiteral("CKwMFCDialog::EndModal"),
                           QStringLiteral("CKwMFCDialog::SaveToRegistry")}));
}

TEST_F(DialogBaseTest, stayOpenKeepsTheWindowButSavesThePosition)
{
    auto* d = new PlainDialog(368, host.view.get());
    d->Create();
    d->show();
    d->SetStayOpen(1);
    d->move(15, 25);
    d->OnOK();
    d->OnCancel();
    EXPECT_FALSE(d->IsWindowDestroyed());
    EXPECT_EQ(KwReadRegistryCurrentUser(QString(), QStringLiteral("PosX"), -1), 15);
    d->SetStayOpen(0);
    d->OnCancel();
    EXPECT_TRUE(d->IsWindowDestroyed());
}

TEST_F(DialogBaseTest, leavingTheStackReactivatesTheDialogBelow)
{
    auto* below = new PlainDialog(368, host.view.get());
    below->Create();
    below->EnterViewDialogStack();
    below->hide();
    auto* top = new PlainDialog(370, host.view.get());
    top->Create();
    top->EnterViewDialogStack();
    ASSERT_EQ(host.view->GetOpenDialogCount(), 2);
    EXPECT_TRUE(host.view->HasActiveDialogMark());

    top->OnCancel();
    EXPECT_EQ(host.view->GetOpenDialogCount(), 1);
    EXPECT_EQ(host.view->GetOpenDialog(), below);
    EXPECT_EQ(host.view->GetSelectionHandler()->GetActiveDialog(), below);
    EXPECT_TRUE(below->isVisible());
    EXPECT_TRUE(host.view->HasActiveDialogMark());

    below->OnOK();
    EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
    EXPECT_FALSE(host.view->HasActiveDialogMark());
}

TEST_F(DialogBaseTest, resultToolbarComesBackWhenTheDialogEnds)
{
    host.view->SetActivePlot(host.model->m_plots.first());
    auto* d = new PlainDialog(368, host.view.get());
    d->Create();
    d->OnCancel();
    EXPECT_TRUE(host.view->GetResultToolbar());
}

TEST_F(DialogBaseTest, heldOwnerIsReleasedByEndModal)
{
    QMainWindow frame;
    frame.setCentralWidget(new QWidget);
    host.view->SetFrameWindow(&frame);
    auto* d = new PlainDialog(7302, host.view.get());
    d->Create();
    d->HoldOwner();
    EXPECT_TRUE(d->IsOwnerHeld());
    EXPECT_TRUE(host.view->GetFrameWnd()->IsModalState());
    EXPECT_FALSE(frame.centralWidget()->isEnabled());
    d->OnCancel();
    EXPECT_FALSE(d->IsOwnerHeld());
    EXPECT_FALSE(host.view->GetFrameWnd()->IsModalState());
    EXPECT_TRUE(frame.centralWidget()->isEnabled());
}

TEST_F(DialogBaseTest, formToggleHidesAndRestoresAndReportsItsRectangle)
{
    PlainDialog d(368, nullptr);
    d.Create();
    d.show();
    d.SetFormToggle({{d.label, QRect(5, 5, 100, 20), QRect(5, 5, 180, 20)}}, d.toggle,
                    QSize(200, 60), QSize(260, 160));
    QRect stored;
    ASSERT_TRUE(d.GetWindowRectangle(0, &stored));
    EXPECT_FALSE(d.GetWindowRectangle(1, &stored));

    EXPECT_EQ(d.ToggleForm(), 1);
    EXPECT_EQ(d.size(), QSize(260, 160));
    QRect current;
    d.GetWindowRectangle(0, &current);
    EXPECT_EQ(current, d.frameGeometry());

    EXPECT_EQ(d.ToggleForm(), 0);
    EXPECT_FALSE(d.extra->isVisible());
    EXPECT_TRUE(d.label->isVisible());
    EXPECT_TRUE(d.toggle->isVisible());
    EXPECT_EQ(d.label->geometry(), QRect(5, 5, 100, 20));
    d.GetWindowRectangle(0, &current);
    EXPECT_NE(current, d.frameGeometry());

    EXPECT_EQ(d.ToggleForm(), 1);
    EXPECT_TRUE(d.extra->isVisible());
}

TEST_F(DialogBaseTest, destroyedWhileOnTheStackStillLeavesIt)
{
    auto* d = new PlainDialog(368, host.view.get());
    d->Create();
    d->EnterViewDialogStack();
    delete d;
    EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
}

TEST_F(DialogBaseTest, viewMayGoAwayBeforeTheDialog)
{
    auto* d = new PlainDialog(368, host.view.get());
    d->Create();
    d->EnterViewDialogStack();
    host.view.reset();
    d->OnOK();
    EXPECT_TRUE(d->IsWindowDestroyed());
}
