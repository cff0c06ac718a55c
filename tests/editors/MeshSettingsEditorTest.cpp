// The "Mesh Settings" editor through LaunchDialog kind 48: the size by level or length with its
// field rules, order, bodies and continuous meshing stored on the mesh by OK, nothing stored by
// Cancel or a refused field, and Run asking the view for a new mesh only when it stored.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMFCUIMeshModel2.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwMeshBodyTableModel.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QLineEdit>
#include <QSignalSpy>
#include <QSlider>
#include <QTableView>
#include <gtest/gtest.h>

namespace {

using Ed = CKwMFCUIMeshModel2;

class MeshSettingsEditor : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    void TearDown() override
    {
        if (auto* d = dynamic_cast<Ed*>(host.view->GetOpenDialog()))
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    Ed* open()
    {
        DialogLaunchRequest r = host.Request(48);
        r.object = static_cast<CKwFEBase*>(host.model->m_mesh);
        LaunchDialog(&r);
        return dynamic_cast<Ed*>(host.view->GetOpenDialog());
    }
    CKwMeshModel& mesh() { return *host.model->m_mesh; }
    static QAbstractButton* button(Ed* d, int id) { return KwControl<QAbstractButton>(d, id); }

    kwtest::Host host; // units: mm-N-MPa-t
};

TEST_F(MeshSettingsEditor, opensOnlyOnAMeshAndShowsItsSettings)
{
    DialogLaunchRequest r = host.Request(48);
    LaunchDialog(&r);
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);

    KwMeshSettings s;
    s.sizeLevel = 3;
    s.useLength = true;
    s.elementLength = 0.0025;
    s.parabolic = true;
    s.continuous = false;
    mesh().SetSettings(s);
    Ed* d = open();
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->GetTemplateId(), 7201u);
    EXPECT_EQ(d->GetLaunchKind(), 48u);
    EXPECT_EQ(KwControl<QSlider>(d, Ed::LevelSlider)->value(), 3);
    EXPECT_EQ(KwControl<QLineEdit>(d, Ed::LengthEdit)->text(), "2.5"); // mm
    EXPECT_TRUE(button(d, 7204)->isChecked());
    EXPECT_TRUE(button(d, 7212)->isChecked());
    EXPECT_FALSE(button(d, 7220)->isChecked());
    // Only the way the size is given takes input.
    EXPECT_TRUE(KwFindControl(d, Ed::LengthEdit)->isEnabled());
    EXPECT_FALSE(KwFindControl(d, Ed::LevelSlider)->isEnabled());
    button(d, 7203)->click();
    EXPECT_FALSE(KwFindControl(d, Ed::LengthEdit)->isEnabled());
    EXPECT_TRUE(KwFindControl(d, Ed::LevelSlider)->isEnabled());
}

// Each row: how the size is given, the length typed, whether OK stores, the bubble, the length
// stored (m).
TEST_F(MeshSettingsEditor, lengthFieldRulesDecideWhetherOkStores)
{
    const QString label = QStringLiteral("Element Size - \n '%1'");
    const struct
    {
        bool byLength;
        QString text;
        bool stores;
        QString bubble;
        double stored;
    } cases[] = {
        {true, "4", true, "", 0.004},
        {true, " 2.5 mm ", true, "", 0.0025},
        {true, "1.5e1", true, "", 0.015},
        {true, "abc", false, label.arg("Enter a number in mm."), 0.01},
        {true, "", false, label.arg("Enter an element size."), 0.01},
        {true, "0", false, label.arg("The element size must be greater than zero."), 0.01},
        {true, "-3", false, label.arg("The element size must be greater than zero."), 0.01},
        {true, "4 kg", false, label.arg("Enter a number in mm."), 0.01},
        // While the slider decides, a bad length is not looked at and the stored one stays.
        {false, "abc", true, "", 0.01},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text.toStdString());
        mesh().SetSettings(KwMeshSettings{});
        host.view->ClearBubbleRecord();
        Ed* d = open();
        ASSERT_NE(d, nullptr);
        button(d, c.byLength ? 7204 : 7203)->click();
        KwControl<QLineEdit>(d, Ed::LengthEdit)->setText(c.text);
        d->OnOK();
        EXPECT_EQ(host.view->GetOpenDialog() == nullptr, c.stores);
        EXPECT_EQ(host.view->GetLastBubbleText(), c.bubble);
        EXPECT_EQ(mesh().GetSettings().useLength, c.stores && c.byLength);
        EXPECT_NEAR(mesh().GetSettings().elementLength, c.stored, 1e-12);
        if (!c.stores)
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(MeshSettingsEditor, okStoresEveryChoiceAndCancelNone)
{
    host.model->m_geometry.append(new CKwUIEntity(CKwUIEntity::Body, 2, "Cover"));
    for (bool ok : {false, true}) {
        SCOPED_TRACE(ok ? "OK" : "Cancel");
        mesh().SetSettings(KwMeshSettings{});
        Ed* d = open();
        ASSERT_NE(d, nullptr);
        KwControl<QSlider>(d, Ed::LevelSlider)->setValue(8);
        button(d, 7212)->click();
        button(d, 7220)->click();
        KwMeshBodyTableModel* bodies = d->GetBodyModel();
        ASSERT_EQ(bodies->rowCount(), 2);
        EXPECT_EQ(bodies->index(1, 0).data().toString(), "Cover");
        EXPECT_EQ(bodies->index(1, 1).data().toString(), "As Modelled");
        EXPECT_TRUE(bodies->setData(bodies->index(1, 1), KwMeshSettings::AsShell));
        EXPECT_FALSE(bodies->setData(bodies->index(0, 1), 7)); // no such kind
        EXPECT_FALSE(bodies->setData(bodies->index(0, 0), KwMeshSettings::AsBeam));
        EXPECT_EQ(bodies->index(1, 1).data().toString(), "Shell");
        if (ok)
            d->OnOK();
        else
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        KwMeshSettings expected;
        if (ok) {
            expected.sizeLevel = 8;
            expected.parabolic = true;
            expected.continuous = false;
            expected.bodyMesh = {{2, KwMeshSettings::AsShell}};
        }
        EXPECT_EQ(mesh().GetSettings(), expected);
    }
}

TEST_F(MeshSettingsEditor, runStoresClosesAndAsksForANewMeshUnlessRefused)
{
    QSignalSpy remesh(host.view.get(), &CFMView::remeshRequested);
    // While the solver runs nothing is stored and nothing asked.
    host.view->SetSolvraRunning(true);
    Ed* d = open();
    ASSERT_NE(d, nullptr);
    KwControl<QSlider>(d, Ed::LevelSlider)->setValue(2);
    d->OnRun();
    EXPECT_EQ(remesh.count(), 0);
    EXPECT_EQ(host.view->GetOpenDialog(), d);
    EXPECT_EQ(mesh().GetSettings().sizeLevel, 5);
    EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
    host.view->SetSolvraRunning(false);
    // A refused field keeps the editor open and asks nothing.
    button(d, 7204)->click();
    KwControl<QLineEdit>(d, Ed::LengthEdit)->setText("x");
    d->OnRun();
    EXPECT_EQ(remesh.count(), 0);
    EXPECT_EQ(host.view->GetOpenDialog(), d);
    // A good one is stored before the request, and the editor is gone when it arrives.
    KwControl<QLineEdit>(d, Ed::LengthEdit)->setText("3");
    int openAtRequest = -1;
    QObject::connect(host.view.get(), &CFMView::remeshRequested, host.view.get(),
                     [&] { openAtRequest = host.view->GetOpenDialogCount(); });
    d->OnRun();
    EXPECT_EQ(remesh.count(), 1);
    EXPECT_EQ(openAtRequest, 0);
    EXPECT_TRUE(mesh().GetSettings().useLength);
    EXPECT_DOUBLE_EQ(mesh().GetSettings().elementLength, 0.003);
    EXPECT_EQ(mesh().GetSettings().sizeLevel, 2);
}

} // namespace
