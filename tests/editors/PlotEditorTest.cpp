// The result dialogs through LaunchDialog: the plot editor (kinds 7, 26, 35) on an analysis with results on the
// sample mesh: what it shows at once, each page control's change as one option change and
// one redraw with the display it asks for, the result and unit of the lists, OK keeping the
// plot (active, displayed, with the result toolbar) and reopening it as it was, and the
// checks of a fixed range and a factor; the reaction sum (kind 4) following picks and origin;
// the XY plot editor (kind 25) making histories and a path curve of picked nodes.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMFCUIPlot.h"
#include "CKwMFCUIPlotPages.h"
#include "CKwMFCUISPCSummationForce.h"
#include "CKwMFCUIXYPlot.h"
#include "CKwXYPlot.h"
#include "CKwXYPlotDlg.h"
#include "CKwUIEntity.h"
#include "KwSolverDeck.h"
#include "CKwMeshModel.h"
#include "CKwPickEvent.h"
#include "CKwPlot.h"
#include "CKwSubCase.h"
#include "KwControls.h"
#include "KW_UOM.h"
#include "KwOptionPage.h"
#include "KwSolverResults.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QLineEdit>
#include <QSlider>
#include <QSpinBox>
#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>

namespace {

// Records the option changes that reach the editor.
class OptionSpy : public QObject
{
public:
    QList<std::pair<int, int>> seen;
    bool eventFilter(QObject*, QEvent* e) override
    {
        if (e->type() == static_cast<QEvent::Type>(KwViewEvent::OptionChanged))
            if (auto* o = dynamic_cast<CKwOptionChangedEvent*>(e))
                seen.append({o->CtrlId(), o->Value()});
        return false;
    }
};

class PlotEditor : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        analysis = host.model->m_analyses.first();
        // Results on every node of the sample mesh: a uniaxial stress growing along x (1 MPa
        // per mm), the block bending down along x, a reaction at the nodes of x = 0.
        auto results = std::make_shared<KwSolverResults>();
        KwResultSet set;
        set.step = 1;
        set.subcaseId = analysis->GetSubCases().first()->GetID();
        set.increment = 1;
        set.stress.components = 6;
        set.displacement.components = 3;
        set.reaction.components = 3;
        for (const CKwMeshModel::Node& n : host.model->m_mesh->Nodes()) {
            set.stress.nodeIds.push_back(n.id);
            set.stress.values.insert(set.stress.values.end(), {n.x * 1e9 + 1e6, 0, 0, 0, 0, 0});
            set.displacement.nodeIds.push_back(n.id);
            set.displacement.values.insert(set.displacement.values.end(), {0, 0, -n.x * 0.01});
            if (std::abs(n.x) < 1e-12) {
                set.reaction.nodeIds.push_back(n.id);
                set.reaction.values.insert(set.reaction.values.end(), {0, 0, 5});
            }
        }
        set.value = 0.5;
        KwResultSet later = set;
        later.increment = 2;
        later.value = 1.0;
        results->sets = {set, later};
        analysis->SetSolverResults(results);
    }
    void TearDown() override
    {
        if (auto* d = dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog()))
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    CKwMFCUIPlot* open(unsigned kind, void* object = nullptr)
    {
        DialogLaunchRequest r = host.Request(kind);
        r.analysis = kind == 35 ? nullptr : analysis;
        r.object = object;
        kwtest::AnswerModals([&] { LaunchDialog(&r); });
        return dynamic_cast<CKwMFCUIPlot*>(host.view->GetOpenDialog());
    }
    const KwResultDisplay& shown() const { return host.view->GetResultDisplay(); }

    kwtest::Host host;
    CKwAnalysis* analysis = nullptr;
};

using PlotEditorXY = PlotEditor;

// What each request of the result kinds opens: a new plot, the stored plot, or nothing.
TEST_F(PlotEditor, launchRulesOfTheResultKinds)
{
    CKwPlot* stored = host.model->m_plots.first();
    CKwAnalysis* unsolved = host.model->m_analyses.at(1);
    enum Opens { Nothing, NewPlot, StoredPlot, ReactionSum, XYPlot };
    const struct
    {
        const char* request;
        unsigned kind;
        CKwAnalysis* analysis;
        void* context;
        void* object;
        Opens opens;
    } cases[] = {
        {"7 on an analysis", 7, analysis, nullptr, nullptr, NewPlot},
        {"7 on a plot as context", 7, nullptr, static_cast<CKwFEBase*>(stored), nullptr, StoredPlot},
        {"7 on an analysis as context", 7, nullptr, static_cast<CKwFEBase*>(analysis), nullptr,
         NewPlot},
        {"7 on nothing", 7, nullptr, nullptr, nullptr, Nothing},
        {"26 on an analysis", 26, analysis, nullptr, nullptr, NewPlot},
        {"26 without results", 26, unsolved, nullptr, nullptr, Nothing},
        {"35 on a plot", 35, nullptr, nullptr, static_cast<CKwFEBase*>(stored), StoredPlot},
        {"35 on no plot", 35, nullptr, nullptr, nullptr, Nothing},
        {"4 on an analysis", 4, analysis, nullptr, nullptr, ReactionSum},
        {"4 without an analysis", 4, nullptr, nullptr, nullptr, Nothing},
        {"25", 25, nullptr, nullptr, nullptr, XYPlot},
    };
    for (const auto& c : cases) {
        DialogLaunchRequest r = host.Request(c.kind);
        r.analysis = c.analysis;
        r.context = c.context;
        r.object = c.object;
        const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
        EXPECT_EQ(rec.count(), 0) << c.request;
        QWidget* open = host.view->GetOpenDialog();
        auto* plot = dynamic_cast<CKwMFCUIPlot*>(open);
        switch (c.opens) {
        case Nothing: EXPECT_EQ(open, nullptr) << c.request; break;
        case NewPlot:
            ASSERT_NE(plot, nullptr) << c.request;
            EXPECT_EQ(plot->GetObject(), nullptr) << c.request;
            EXPECT_EQ(plot->GetEditObject()->GetAnalysis(), analysis) << c.request;
            break;
        case StoredPlot:
            ASSERT_NE(plot, nullptr) << c.request;
            EXPECT_EQ(plot->GetObject(), stored) << c.request;
            break;
        case ReactionSum:
            EXPECT_NE(dynamic_cast<CKwMFCUISPCSummationForce*>(open), nullptr) << c.request;
            break;
        case XYPlot: EXPECT_NE(dynamic_cast<CKwMFCUIXYPlot*>(open), nullptr) << c.request; break;
        }
        if (auto* d = dynamic_cast<CKwMFCDialog*>(open))
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

TEST_F(PlotEditor, opensOnTheFirstResultAndShowsItAtOnce)
{
    CKwMFCUIPlot* d = open(7);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->GetTemplateId(), 358u);
    EXPECT_TRUE(shown().active);
    EXPECT_EQ(shown().title, QStringLiteral("Von Mises Stress"));
    EXPECT_EQ(shown().unitLabel, QStringLiteral("MPa"));
    // The legend spans the field: 1 MPa at x = 0 to 1 + 200 MPa at the far end (0.2 m).
    EXPECT_NEAR(shown().rangeMin, 1.0, 1e-6);
    EXPECT_NEAR(shown().rangeMax, 201.0, 1e-3);
    EXPECT_EQ(KwControl<QComboBox>(d, 3582)->count(), 2);
    EXPECT_EQ(KwControl<QComboBox>(d, 3584)->count(), KwPlotResult::Count);
    // The automatic range is shown in the range fields, in the result's unit.
    EXPECT_EQ(KwControl<QLineEdit>(d, 12058)->text(), QStringLiteral("1"));
    EXPECT_EQ(KwGetControlText(d, 12057), QStringLiteral("Minimum (MPa):"));
}

TEST_F(PlotEditor, eachPageChangeIsOneOptionChangeAndOneRedraw)
{
    CKwMFCUIPlot* d = open(7);
    ASSERT_NE(d, nullptr);
    OptionSpy spy;
    d->installEventFilter(&spy);
    using Check = std::function<bool(const KwResultDisplay&)>;
    // What the user does to a control (a click, a combo row, a position) and what the view
    // then shows.
    const struct
    {
        int page;
        int ctrlId;
        int value;
        Check shows;
    } cases[] = {
        {CKwMFCUIPlot::PageContour, 12053, 1,
         [](const KwResultDisplay& s) { return s.contour == KwResultDisplay::ContourSmooth; }},
        {CKwMFCUIPlot::PageContour, 12055, 5, [](const KwResultDisplay& s) { return s.bands == 5; }},
        {CKwMFCUIPlot::PageContour, 12062, 2,
         [](const KwResultDisplay& s) { return s.colorMap == KwResultDisplay::Thermal; }},
        {CKwMFCUIPlot::PageContour, 12064, 1,
         [](const KwResultDisplay& s) { return s.nodalValues.empty() && !s.elementValues.empty(); }},
        {CKwMFCUIPlot::PageContour, 12051, 0,
         [](const KwResultDisplay& s) { return s.contour == KwResultDisplay::ContourNone; }},
        {CKwMFCUIPlot::PageDeformed, 72223, KwPlotSettings::ScaleActual,
         [](const KwResultDisplay& s) { return s.deformScale == 1.0; }},
        {CKwMFCUIPlot::PageDeformed, 72226, 0,
         [](const KwResultDisplay& s) { return !s.showUndeformedOutline; }},
        {CKwMFCUIPlot::PageDeformed, 72221, 0,
         [](const KwResultDisplay& s) { return s.displacement.empty(); }},
        {CKwMFCUIPlot::PageSection, 3631, 1, [](const KwResultDisplay& s) { return s.sectionOn; }},
        {CKwMFCUIPlot::PageSection, 3633, 2,
         [](const KwResultDisplay& s) { return s.sectionNormal[2] == 1.0; }},
        {CKwMFCUIPlot::PageSection, 3635, 0,
         [](const KwResultDisplay& s) { return std::abs(s.sectionPoint[2]) < 1e-12; }},
        {CKwMFCUIPlot::PageVectors, 3621, 1, [](const KwResultDisplay& s) { return !s.vectors.empty(); }},
        {CKwMFCUIPlot::PageVectors, 3625, 30,
         [](const KwResultDisplay& s) { return s.vectorSize == 3.0; }},
        {CKwMFCUIPlot::PageAnimation, 72241, 1, [](const KwResultDisplay& s) { return s.animate; }},
        {CKwMFCUIPlot::PageAnimation, 72243, 24,
         [](const KwResultDisplay& s) { return s.frameCount == 24; }},
        {CKwMFCUIPlot::PageVisibility, 72261, 0,
         [](const KwResultDisplay& s) { return !s.showMeshEdges; }},
        {CKwMFCUIPlot::PageVisibility, 72262, 1,
         [](const KwResultDisplay& s) { return s.showLoadsAndConstraints; }},
    };
    for (const auto& c : cases) {
        d->ShowPage(c.page);
        QWidget* w = KwFindControl(d->GetPage(c.page), c.ctrlId);
        ASSERT_NE(w, nullptr) << c.ctrlId;
        spy.seen.clear();
        const int redraws = host.view->GetRedrawCount();
        if (auto* b = qobject_cast<QAbstractButton*>(w)) {
            ASSERT_NE(b->isChecked(), c.value != 0) << c.ctrlId;
            b->click();
        } else if (auto* combo = qobject_cast<QComboBox*>(w)) {
            combo->setCurrentIndex(c.value);
            Q_EMIT combo->activated(c.value);
        } else if (auto* spin = qobject_cast<QSpinBox*>(w)) {
            spin->setValue(c.value);
        } else if (auto* slider = qobject_cast<QSlider*>(w)) {
            slider->setValue(c.value);
        }
        ASSERT_EQ(spy.seen.size(), 1) << c.ctrlId;
        EXPECT_EQ(spy.seen.first(), std::make_pair(c.ctrlId, c.value));
        EXPECT_EQ(host.view->GetRedrawCount() - redraws, 1) << c.ctrlId;
        EXPECT_FALSE(host.view->IsRedrawSuspended());
        EXPECT_TRUE(c.shows(shown())) << c.ctrlId;
    }
    // The part view hides the view's bodies.
    d->ShowPage(CKwMFCUIPlot::PagePartView);
    KwControl<QAbstractButton>(d, 72232)->click();
    EXPECT_TRUE(host.view->AreBodiesHidden(CFMView::BodySolids));
    EXPECT_FALSE(host.view->AreBodiesHidden(CFMView::BodyStructuralMembers));
    d->removeEventFilter(&spy);
}

TEST_F(PlotEditor, resultAndComponentChooseTitleUnitAndValues)
{
    CKwMFCUIPlot* d = open(7);
    ASSERT_NE(d, nullptr);
    auto* result = KwControl<QComboBox>(d, 3584);
    auto* component = KwControl<QComboBox>(d, 3586);
    const int redraws = host.view->GetRedrawCount();
    result->setCurrentIndex(KwPlotResult::Displacement);
    EXPECT_EQ(host.view->GetRedrawCount() - redraws, 1);
    EXPECT_EQ(component->count(), 4);
    EXPECT_EQ(shown().unitLabel, QStringLiteral("mm"));
    EXPECT_EQ(shown().title, QStringLiteral("Displacement - Magnitude"));
    EXPECT_NEAR(shown().rangeMax, 2.0, 1e-4); // 0.2 m x 0.01, in mm
    EXPECT_EQ(KwGetControlText(d, 12059), QStringLiteral("Maximum (mm):"));
    component->setCurrentIndex(3); // Z: downwards
    EXPECT_NEAR(shown().rangeMin, -2.0, 1e-4);
    EXPECT_NEAR(shown().rangeMax, 0.0, 1e-9);
    result->setCurrentIndex(KwPlotResult::Reaction);
    EXPECT_EQ(shown().unitLabel, QStringLiteral("N"));
    EXPECT_NEAR(shown().rangeMax, 5.0, 1e-9);
}

TEST_F(PlotEditor, okKeepsThePlotDisplayedAndKind35ReopensItAsItWas)
{
    const int plotsBefore = int(host.model->m_plots.size());
    CKwMFCUIPlot* d = open(7);
    ASSERT_NE(d, nullptr);
    d->ShowPage(CKwMFCUIPlot::PageContour);
    KwControl<QSpinBox>(d, 12055)->setValue(6);
    d->ShowPage(CKwMFCUIPlot::PageDeformed);
    auto* scale = KwControl<QComboBox>(d, 72223);
    scale->setCurrentIndex(KwPlotSettings::ScaleFactor);
    Q_EMIT scale->activated(KwPlotSettings::ScaleFactor);
    auto* factor = KwControl<QLineEdit>(d, 72225);
    EXPECT_TRUE(factor->isEnabled());
    factor->setText(QStringLiteral("40"));
    factor->setModified(true);
    Q_EMIT factor->editingFinished();
    EXPECT_DOUBLE_EQ(shown().deformScale, 40.0);
    KwControl<QComboBox>(d, 3582)->setCurrentIndex(1);
    d->OnOK();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    ASSERT_EQ(int(host.model->m_plots.size()), plotsBefore + 1);
    CKwPlot* plot = host.model->m_plots.last();
    EXPECT_EQ(plot->GetAnalysis(), analysis);
    EXPECT_TRUE(plot->IsDisplayed());
    EXPECT_EQ(host.view->GetActivePlot(), plot);
    EXPECT_NE(host.view->GetResultToolbar(), nullptr);
    EXPECT_TRUE(shown().active);
    EXPECT_EQ(plot->m_settings.bands, 6);
    EXPECT_EQ(plot->m_settings.resultSet, 1);

    // Reopened from the tree: the stored settings are on the pages.
    CKwMFCUIPlot* again = open(35, static_cast<CKwFEBase*>(plot));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(KwControl<QSpinBox>(again, 12055)->value(), 6);
    EXPECT_EQ(KwControl<QComboBox>(again, 72223)->currentIndex(), KwPlotSettings::ScaleFactor);
    EXPECT_EQ(KwControl<QLineEdit>(again, 72225)->text(), QStringLiteral("40"));
    EXPECT_EQ(KwControl<QComboBox>(again, 3582)->currentIndex(), 1);
    EXPECT_DOUBLE_EQ(shown().deformScale, 40.0);
    // Kind 35 on something that is no plot opens nothing.
    again->OnCancel();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(open(35, static_cast<CKwFEBase*>(analysis)), nullptr);
}

TEST_F(PlotEditor, refusesAReversedRangeAndAFactorOfZero)
{
    CKwMFCUIPlot* d = open(26);
    ASSERT_NE(d, nullptr);
    const int plotsBefore = int(host.model->m_plots.size());
    auto* automatic = KwControl<QAbstractButton>(d, 12056);
    automatic->click();
    // Switching the range to fixed starts from the field's own range.
    EXPECT_TRUE(shown().fixedRange);
    EXPECT_NEAR(shown().rangeMax, 201.0, 1e-3);
    auto* low = KwControl<QLineEdit>(d, 12058);
    low->setText(QStringLiteral("500"));
    low->setModified(true);
    Q_EMIT low->editingFinished();
    d->OnOK();
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("Minimum - \n 'The minimum must be below the maximum.'"));
    EXPECT_EQ(int(host.model->m_plots.size()), plotsBefore);
    low->setText(QStringLiteral("5"));
    auto* scale = KwControl<QComboBox>(d, 72223);
    scale->setCurrentIndex(KwPlotSettings::ScaleFactor);
    Q_EMIT scale->activated(KwPlotSettings::ScaleFactor);
    KwControl<QLineEdit>(d, 72225)->setText(QStringLiteral("0"));
    d->OnOK();
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("Factor - \n 'Enter a factor above zero.'"));
    EXPECT_EQ(int(host.model->m_plots.size()), plotsBefore);
}

TEST_F(PlotEditor, reactionSumFollowsPicksAndItsOrigin)
{
    DialogLaunchRequest r = host.Request(4);
    r.analysis = analysis;
    r.option = CKwUISPCSummationForce::OriginTyped;
    kwtest::AnswerModals([&] { LaunchDialog(&r); });
    auto* d = dynamic_cast<CKwMFCUISPCSummationForce*>(host.view->GetOpenDialog());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->GetTemplateId(), 1203u);
    EXPECT_TRUE(KwControl<QLineEdit>(d, 12049)->text().isEmpty()); // nothing picked yet

    // The fixed end (face 5, x = 0) carries 5 N up at each node of the sample's reactions.
    CKwUIEntity* face = host.model->FindGeometry(CKwUIEntity::Face, 5);
    ASSERT_NE(face, nullptr);
    double count = 0, sumY = 0;
    for (int id : KwGeometryNodes(*host.model->m_mesh, *face)) {
        const CKwMeshModel::Node* n = host.model->m_mesh->FindNode(id);
        if (n && std::abs(n->x) < 1e-12) {
            ++count;
            sumY += n->y;
        }
    }
    ASSERT_GT(count, 0);
    host.view->SendPickEvent({face}, false);
    EXPECT_EQ(d->GetSummedEntities().size(), 1);
    EXPECT_EQ(KwControl<QLineEdit>(d, 12049)->text(), QString::number(5 * count));
    // About the typed origin (0, 0, 0): Mx = sum of y F, in N·mm.
    EXPECT_NEAR(KwControl<QLineEdit>(d, 12051)->text().toDouble(), 5 * sumY * 1000, 1e-6);
    KwControl<QAbstractButton>(d, 12038)->click(); // about the centroid: none
    EXPECT_NEAR(KwControl<QLineEdit>(d, 12051)->text().toDouble(), 0.0, 1e-6);
    // A picked origin without a pick says what is missing.
    KwControl<QAbstractButton>(d, 12037)->click();
    EXPECT_TRUE(KwControl<QLineEdit>(d, 12049)->text().isEmpty());
    EXPECT_EQ(KwGetControlText(d, 12054),
              QStringLiteral("Pick the vertex or node the moment is taken about."));
    // Dropping the face empties the sum again.
    KwControl<QAbstractButton>(d, 12036)->click();
    host.view->SendPickEvent({face}, true);
    EXPECT_TRUE(d->GetSummedEntities().isEmpty());
    EXPECT_TRUE(KwControl<QLineEdit>(d, 12049)->text().isEmpty());
}

TEST_F(PlotEditorXY, historiesPerNodeAndACurveAlongThePath)
{
    const auto openXY = [&] {
        DialogLaunchRequest r = host.Request(25);
        kwtest::AnswerModals([&] { LaunchDialog(&r); });
        return dynamic_cast<CKwMFCUIXYPlot*>(host.view->GetOpenDialog());
    };
    // The nodes on the block's edge at y = 0, z = 0, by x.
    QList<const CKwMeshModel::Node*> edge;
    for (const CKwMeshModel::Node& n : host.model->m_mesh->Nodes())
        if (std::abs(n.y) < 1e-12 && std::abs(n.z) < 1e-12 &&
            (std::abs(n.x) < 1e-12 || std::abs(n.x - 0.1) < 1e-12 || std::abs(n.x - 0.2) < 1e-12))
            edge.append(&n);
    ASSERT_EQ(edge.size(), 3);
    std::sort(edge.begin(), edge.end(), [](auto* a, auto* b) { return a->x < b->x; });
    const int plotsBefore = int(host.model->m_xyPlots.size());

    CKwMFCUIXYPlot* d = openXY();
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->GetTemplateId(), 7014u);
    EXPECT_EQ(KwControl<QComboBox>(d, 70142)->count(), 1); // the one analysis with results
    d->OnOK(); // nothing picked
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("Nodes - \n 'Pick the nodes or vertices to plot.'"));
    host.view->SendPickEvent({host.model->m_mesh->NodeEntity(edge[2]->id),
                              host.model->m_mesh->NodeEntity(edge[0]->id)},
                             false);
    KwControl<QComboBox>(d, 70144)->setCurrentIndex(KwPlotResult::Displacement);
    KwControl<QComboBox>(d, 70146)->setCurrentIndex(3); // Z
    d->OnOK();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(int(host.model->m_xyPlots.size()), plotsBefore + 1);
    CKwXYPlot* history = host.model->m_xyPlots.last();
    ASSERT_EQ(history->GetSeriesCount(), 2);
    EXPECT_EQ(history->m_xUnitType, KwUnitKind::Time);
    EXPECT_EQ(history->m_yUnitType, KwUnitKind::Length);
    const auto& tip = history->GetSeries(0);
    ASSERT_EQ(tip.x.size(), 2u);
    EXPECT_DOUBLE_EQ(tip.x[0], 0.5);
    EXPECT_DOUBLE_EQ(tip.x[1], 1.0);
    EXPECT_NEAR(tip.y[1], -0.002, 1e-12);
    EXPECT_NEAR(history->GetSeries(1).y[0], 0.0, 1e-12);
    ASSERT_NE(CKwXYPlotDlg::GetXYPlotDlg(), nullptr);
    EXPECT_EQ(CKwXYPlotDlg::GetXYPlotDlg()->GetPlot(), history);
    CKwXYPlotDlg::GetXYPlotDlg()->close();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    d = openXY();
    ASSERT_NE(d, nullptr);
    QList<CKwUIEntity*> path;
    for (const CKwMeshModel::Node* n : edge)
        path.append(host.model->m_mesh->NodeEntity(n->id));
    host.view->SendPickEvent(path, false);
    KwControl<QComboBox>(d, 70144)->setCurrentIndex(KwPlotResult::VonMises);
    KwControl<QComboBox>(d, 70148)->setCurrentIndex(CKwUIXYPlot::AxisPath);
    EXPECT_TRUE(KwControl<QComboBox>(d, 70150)->isEnabled());
    d->OnOK();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    CKwXYPlot* along = host.model->m_xyPlots.last();
    ASSERT_EQ(along->GetSeriesCount(), 1);
    EXPECT_EQ(along->m_xUnitType, KwUnitKind::Length);
    const auto& curve = along->GetSeries(0);
    ASSERT_EQ(curve.x.size(), 3u);
    EXPECT_NEAR(curve.x[1], 0.1, 1e-12);
    EXPECT_NEAR(curve.x[2], 0.2, 1e-12);
    // Von Mises along the edge: 1 MPa + 1 MPa per mm.
    EXPECT_NEAR(curve.y[2], 201e6, 1.0);
    if (CKwXYPlotDlg* w = CKwXYPlotDlg::GetXYPlotDlg())
        w->close();
}

} // namespace
