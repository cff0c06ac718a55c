// The "Check Mesh Quality" editor through LaunchDialog kind 9: limits read and refused, the run
// writing the limits into the mesh and opening the failed-elements window with its findings.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMFCUIMeshQuality.h"
#include "CKwMeshQualityResultsDialog.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <gtest/gtest.h>

namespace {

using M = CKwMeshModel;
using Ed = CKwMFCUIMeshQuality;

class MeshQualityEditor : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    void TearDown() override { closeAll(); }

    // The editor and the results windows go; the host's frame and view stay.
    void closeAll()
    {
        if (auto* d = dynamic_cast<Ed*>(host.view->GetOpenDialog()))
            d->OnCancel();
        for (CKwMeshQualityResultsDialog* r : resultsWindows())
            delete r;
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    Ed* open()
    {
        DialogLaunchRequest r = host.Request(9);
        r.object = static_cast<CKwFEBase*>(host.model->m_mesh);
        LaunchDialog(&r);
        auto* d = dynamic_cast<Ed*>(host.view->GetOpenDialog());
        EXPECT_NE(d, nullptr);
        return d;
    }
    static QLineEdit* limit(Ed* d, int c) { return KwControl<QLineEdit>(d, Ed::LimitEditId(c)); }
    static QAbstractButton* box(Ed* d, int c)
    {
        return KwControl<QAbstractButton>(d, Ed::CheckBoxId(c));
    }
    static QList<CKwMeshQualityResultsDialog*> resultsWindows()
    {
        QList<CKwMeshQualityResultsDialog*> found;
        for (QWidget* w : QApplication::topLevelWidgets())
            if (auto* r = dynamic_cast<CKwMeshQualityResultsDialog*>(w); r && r->isVisible())
                found << r;
        return found;
    }

    kwtest::Host host;
};

TEST_F(MeshQualityEditor, limitsAreReadInTheirUnitOrRefusedWithTheFieldNamed)
{
    const QString quadAspect = "Aspect Ratio (Quadrilaterals) - \n '%1'";
    const struct { int check; QString text; bool allOff; QString bubble; float stored; } cases[] = {
        {M::QuadAspectRatio, "7.5", false, "", 7.5f},
        {M::TriaSkew, " 30 deg ", false, "", 30.0f},
        {M::TriaSkew, "35°", false, "", 35.0f},
        {M::QuadAspectRatio, "abc", false, quadAspect.arg("Enter a number."), 5.0f},
        {M::QuadAspectRatio, "", false, quadAspect.arg("Enter a number."), 5.0f},
        {M::QuadSkew, "4x", false, "Skew (Quadrilaterals) - \n 'Enter a number in °.'", 45.0f},
        {M::TetAspectRatio, "-0.5", false,
         "Aspect Ratio (Tetrahedra) - \n 'Enter a limit of 0 or more.'", 5.0f},
        {M::TriaJacobian, "1.5", false,
         "Jacobian (Triangles) - \n 'Enter a limit from 0 to 1: no element's Jacobian is above "
         "1.'", 0.6f},
        {M::HexWarpage, "12.5°", false, "", 12.5f},
        {M::PyramidTaper, "0.25", false, "", 0.25f},
        {M::WedgeSkew, "x", false, "Skew (Wedges) - \n 'Enter a number in °.'", 45.0f},
        {M::HexJacobian, "1.5", false,
         "Jacobian (Hexahedra) - \n 'Enter a limit from 0 to 1: no element's Jacobian is above "
         "1.'", 0.6f},
        {M::PyramidAspectRatio, "-1", false,
         "Aspect Ratio (Pyramids) - \n 'Enter a limit of 0 or more.'", 5.0f},
        {M::QuadTaper, "0", true,
         "Check Mesh Quality - \n 'Switch on at least one check.'", 0.5f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text.toStdString());
        host.model->m_mesh->ResetQualityParams();
        Ed* d = open();
        host.view->ClearBubbleRecord();
        limit(d, c.check)->setText(c.text);
        if (c.allOff)
            for (int i = 0; i < M::QualityCheckCount; ++i)
                box(d, i)->setChecked(false);
        d->OnRun();
        EXPECT_EQ(host.view->GetLastBubbleText(), c.bubble);
        EXPECT_FLOAT_EQ(host.model->m_mesh->GetQualityLimit(static_cast<M::QualityCheck>(c.check)),
                        c.stored);
        EXPECT_EQ(resultsWindows().size(), c.bubble.isEmpty() ? 1 : 0);
        closeAll();
    }
}

TEST_F(MeshQualityEditor, switchedOffChecksTakeNoInputAndTheirLimitIsNotJudged)
{
    Ed* d = open();
    box(d, M::QuadSkew)->setChecked(false);
    EXPECT_FALSE(limit(d, M::QuadSkew)->isEnabled());
    EXPECT_TRUE(limit(d, M::QuadWarpage)->isEnabled());
    limit(d, M::QuadSkew)->setText("nonsense");
    host.view->ClearBubbleRecord();
    d->OnRun();
    EXPECT_EQ(host.view->GetBubbleCount(), 0);
    EXPECT_FALSE(host.model->m_mesh->GetQualityCheck(M::QuadSkew));
    EXPECT_FLOAT_EQ(host.model->m_mesh->GetQualityLimit(M::QuadSkew), 45.0f);
}

TEST_F(MeshQualityEditor, runListsWhatTheResultsLogicFindsAndOkClosesTheEditor)
{
    Ed* d = open();
    EXPECT_EQ(KwGetControlText(d, Ed::UnitLabelId(M::QuadWarpage)), QStringLiteral("°"));
    EXPECT_EQ(KwGetControlText(d, Ed::UnitLabelId(M::QuadTaper)), "");
    EXPECT_EQ(KwGetControlText(d, Ed::UnitLabelId(M::HexSkew)), QStringLiteral("°"));
    EXPECT_EQ(KwGetControlText(d, Ed::UnitLabelId(M::WedgeWarpage)), QStringLiteral("°"));
    EXPECT_EQ(KwGetControlText(d, Ed::UnitLabelId(M::PyramidJacobian)), "");
    d->OnRun();
    ASSERT_EQ(resultsWindows().size(), 1);
    // The sample mesh with its starting limits: 22 of 222 elements fail.
    EXPECT_EQ(resultsWindows().first()->GetFailedElements().size(), 22u);
    EXPECT_EQ(resultsWindows().first()->GetCheckedElementCount(), 222u);
    // The stiffener's beams are reported, not passed over.
    EXPECT_EQ(resultsWindows().first()->GetUncheckedElementCount(), 8u);
    EXPECT_EQ(resultsWindows().first()->GetCoverageText(),
              "Beam elements, not checked (no quality measure applies to them): 8");
    EXPECT_EQ(host.view->GetOpenDialog(), d);

    // Fewer checks, fewer failures; the new window replaces the last one.
    for (int c = M::QuadAspectRatio; c <= M::QuadJacobian; ++c)
        box(d, c)->setChecked(false);
    CKwUIMeshQualityResults expected;
    CKwMeshModel params(*host.model->m_mesh);
    for (int c = M::QuadAspectRatio; c <= M::QuadJacobian; ++c)
        params.SetQualityCheck(static_cast<M::QualityCheck>(c), false);
    expected.CheckMeshQuality(&params, host.units.get());
    QTest::mouseClick(KwControl<QAbstractButton>(d, 1), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(resultsWindows().size(), 1);
    EXPECT_EQ(resultsWindows().first()->GetFailedElements().size(),
              expected.GetFailedElements().size());
    EXPECT_LT(expected.GetFailedElements().size(), 22u);
    EXPECT_FALSE(host.model->m_mesh->GetQualityCheck(M::QuadTaper));
    EXPECT_EQ(host.view->GetOpenDialogCount(), 0);
}

TEST_F(MeshQualityEditor, anglesInRadiansAndAnEmptyMesh)
{
    host.units->SetAngleInRadians(true);
    Ed* d = open();
    EXPECT_EQ(KwGetControlText(d, Ed::UnitLabelId(M::TetSkew)), "rad");
    limit(d, M::TetSkew)->setText("0.5");
    d->OnRun();
    EXPECT_FLOAT_EQ(host.model->m_mesh->GetQualityLimit(M::TetSkew), 0.5f);
    closeAll();

    host.model->m_mesh->Clear();
    d = open();
    host.view->ClearBubbleRecord();
    d->OnRun();
    EXPECT_EQ(host.view->GetLastBubbleText(),
              "Check Mesh Quality - \n 'The mesh has no shell or solid elements to check.'");
    EXPECT_TRUE(resultsWindows().isEmpty());
}

TEST_F(MeshQualityEditor, everyVisibleCaptionPassesThroughTheLanguageService)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    Ed* d = open();
    const QStringList bad = kwtest::UntranslatedCaptions(d);
    CKwXMLUtils::SetCurrentLanguage("en");
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
}

} // namespace
