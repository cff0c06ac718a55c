// The model view's camera, its picking through the id buffer and what it paints of a result.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwSelectionHandler.h"
#include "CKwUIEntity.h"
#include "KwResultLegend.h"
#include "KwViewCamera.h"

#include <QColor>
#include <QImage>
#include <QMouseEvent>
#include <QTest>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace {

double dot(const KwVec3& a, const KwVec3& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }

TEST(ViewCamera, standardViewsPutTheAxesWhereAnEngineerExpectsThem)
{
    // Per view: the model directions that run right, up and towards the viewer on screen.
    struct Case
    {
        KwViewCamera::StandardView view;
        KwVec3 right, up, toViewer;
    };
    const double s2 = 1 / std::sqrt(2.0), s3 = 1 / std::sqrt(3.0), s6 = 1 / std::sqrt(6.0);
    const Case cases[] = {
        {KwViewCamera::Front, {1, 0, 0}, {0, 0, 1}, {0, -1, 0}},
        {KwViewCamera::Back, {-1, 0, 0}, {0, 0, 1}, {0, 1, 0}},
        {KwViewCamera::Left, {0, -1, 0}, {0, 0, 1}, {-1, 0, 0}},
        {KwViewCamera::Right, {0, 1, 0}, {0, 0, 1}, {1, 0, 0}},
        {KwViewCamera::Top, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}},
        {KwViewCamera::Bottom, {1, 0, 0}, {0, -1, 0}, {0, 0, -1}},
        {KwViewCamera::Isometric, {s2, s2, 0}, {-s6, s6, 2 * s6}, {s3, -s3, s3}},
    };
    for (const Case& c : cases) {
        KwViewCamera cam;
        cam.SetViewport(400, 300);
        cam.SetStandardView(c.view);
        cam.Fit({-1, -1, -1}, {1, 1, 1});
        const auto o = cam.Project(0, 0, 0);
        const auto r = cam.Project(c.right.x, c.right.y, c.right.z);
        const auto u = cam.Project(c.up.x, c.up.y, c.up.z);
        const auto t = cam.Project(c.toViewer.x, c.toViewer.y, c.toViewer.z);
        const double unit = cam.Scale();
        EXPECT_NEAR(r.x - o.x, unit, 1e-3 * unit) << c.view;
        EXPECT_NEAR(r.y - o.y, 0, 1e-3 * unit) << c.view;
        EXPECT_NEAR(o.y - u.y, unit, 1e-3 * unit) << c.view; // screen y runs down
        EXPECT_NEAR(u.x - o.x, 0, 1e-3 * unit) << c.view;
        EXPECT_NEAR(t.x, o.x, 1e-3 * unit) << c.view;
        EXPECT_NEAR(t.y, o.y, 1e-3 * unit) << c.view;
        EXPECT_NEAR(o.depth - t.depth, 1.0, 1e-6) << c.view; // nearer is smaller
    }
}

TEST(ViewCamera, fitFramesTheBoxAndZoomKeepsThePointUnderTheCursor)
{
    KwViewCamera cam;
    cam.SetViewport(800, 400);
    const KwVec3 lo{0, 0, 0}, hi{0.2, 0.05, 0.04};
    for (auto view : {KwViewCamera::Front, KwViewCamera::Top, KwViewCamera::Right,
                      KwViewCamera::Isometric}) {
        cam.SetStandardView(view);
        cam.Fit(lo, hi, 0.8);
        double minX = 1e9, maxX = -1e9, minY = 1e9, maxY = -1e9;
        for (int i = 0; i < 8; ++i) {
            const auto p = cam.Project(i & 1 ? hi.x : lo.x, i & 2 ? hi.y : lo.y, i & 4 ? hi.z : lo.z);
            minX = std::min(minX, double(p.x));
            maxX = std::max(maxX, double(p.x));
            minY = std::min(minY, double(p.y));
            maxY = std::max(maxY, double(p.y));
        }
        // Centred, inside, and filling 80 % of the side that limits it.
        EXPECT_NEAR((minX + maxX) / 2, 400, 0.5) << view;
        EXPECT_NEAR((minY + maxY) / 2, 200, 0.5) << view;
        EXPECT_GE(minX, 0);
        EXPECT_LE(maxX, 800);
        EXPECT_NEAR(std::max((maxX - minX) / 800, (maxY - minY) / 400), 0.8, 1e-3) << view;
    }
    // Zoom about a cursor: the model point under it stays, the scale follows the factor.
    const double scale = cam.Scale();
    const KwVec3 under = cam.Unproject(130, 70);
    cam.ZoomAbout(130, 70, 2.5);
    EXPECT_NEAR(cam.Scale(), 2.5 * scale, 1e-9 * scale);
    const auto back = cam.Project(under.x, under.y, under.z);
    EXPECT_NEAR(back.x, 130, 1e-3);
    EXPECT_NEAR(back.y, 70, 1e-3);
    // Nonsense factors change nothing.
    const unsigned rev = cam.Revision();
    cam.ZoomAbout(10, 10, 0);
    cam.ZoomAbout(10, 10, std::numeric_limits<double>::quiet_NaN());
    EXPECT_EQ(cam.Revision(), rev);
    // Turning keeps the axes orthonormal; panning moves every point by the drag.
    cam.Rotate(123, -47);
    EXPECT_NEAR(dot(cam.ToViewer(), cam.ToViewer()), 1, 1e-9);
    EXPECT_NEAR(dot(cam.ToViewer(), cam.Up()), 0, 1e-9);
    const auto before = cam.Project(0.1, 0.02, 0.03);
    cam.Pan(15, -8);
    const auto after = cam.Project(0.1, 0.02, 0.03);
    EXPECT_NEAR(after.x - before.x, 15, 1e-3);
    EXPECT_NEAR(after.y - before.y, -8, 1e-3);
}

// A view on a model of its own at a fixed size.
struct ViewFixture
{
    std::unique_ptr<CKwFEModel> model{CKwFEModel::CreateSampleModel()};
    CFMView view{model.get()};
    ViewFixture() { view.resize(800, 560); }
    void filter(unsigned mask) { view.GetSelectionHandler()->SetFilter(mask); }
};

// Every geometry entity the view shows is picked at the point the view gives for it, under a
// filter of its own kind and under the geometry editors' wide mask; a hidden one is not.
void expectEveryShownEntityPicksBack(ViewFixture& f, const char* what)
{
    int shown[4] = {0, 0, 0, 0}, hidden[4] = {0, 0, 0, 0};
    for (CKwUIEntity* e : f.model->m_geometry) {
        if (e->GetKind() > CKwUIEntity::Face)
            continue;
        const QPointF at = f.view.ScreenPointOf(e);
        if (at.x() < 0) {
            ++hidden[e->GetKind()];
            continue;
        }
        ++shown[e->GetKind()];
        f.filter(e->FilterBit());
        EXPECT_EQ(f.view.EntityAt(at), e) << what << " " << e->GetLabel().toStdString();
        f.filter(e->FilterBit() | CKwUIEntity::FilterBitOf(CKwUIEntity::Face));
        EXPECT_EQ(f.view.EntityAt(at), e) << what << " " << e->GetLabel().toStdString();
    }
    // A box seen from a corner shows three faces, nine edges and up to seven vertices (a
    // test tab may stand in front of one; hidden edges show a pixel or two at the corners
    // they share with visible ones).
    EXPECT_EQ(shown[CKwUIEntity::Face], 3) << what;
    EXPECT_EQ(hidden[CKwUIEntity::Face], 3) << what;
    EXPECT_GE(shown[CKwUIEntity::Edge], 9) << what;
    EXPECT_GE(shown[CKwUIEntity::Vertex], 6) << what;
    EXPECT_LE(shown[CKwUIEntity::Vertex], 7) << what;
}

TEST(ViewPicking, everyVisibleGeometryEntityIsPickedWhereTheViewDrawsIt)
{
    ViewFixture f;
    expectEveryShownEntityPicksBack(f, "sample, isometric");
    // Another corner, another set in sight.
    f.view.Camera().SetOrientation({-1, 1, 1}, {0, 0, 1});
    expectEveryShownEntityPicksBack(f, "sample, from behind");
    // A new mesh with the same classification: the view notices and picks on it.
    f.model->m_mesh->BuildBlock(5, 3, 2, 0.3, 0.1, 0.08);
    f.model->m_mesh->ClassifyAsBox();
    f.view.NotifyMeshReplaced();
    expectEveryShownEntityPicksBack(f, "block 5x3x2");
}

TEST(ViewPicking, aHiddenFaceIsNotPickedAndTheFilterDecides)
{
    ViewFixture f;
    CKwMeshModel& mesh = *f.model->m_mesh;
    const unsigned kFace = CKwUIEntity::FilterBitOf(CKwUIEntity::Face);
    // The middle of the left face (turned away) lies under the front or top face.
    const auto* left = mesh.FindGeometryMesh(CKwUIEntity::Face, 5);
    ASSERT_NE(left, nullptr);
    double c[3] = {0, 0, 0};
    for (int id : left->nodeIds)
        for (int k = 0; k < 3; ++k)
            c[k] += (&mesh.FindNode(id)->x)[k] / double(left->nodeIds.size());
    f.filter(kFace);
    f.view.RenderFrame(); // frames the model
    const auto q = f.view.Camera().Project(c[0], c[1], c[2]);
    CKwUIEntity* under = f.view.EntityAt(QPointF(q.x, q.y));
    ASSERT_NE(under, nullptr);
    EXPECT_NE(under->GetID(), 5);
    // The same point under other filters.
    const QPointF front = f.view.ScreenPointOf(f.model->FindGeometry(CKwUIEntity::Face, 3));
    ASSERT_GE(front.x(), 0);
    struct Case
    {
        unsigned filter;
        CKwUIEntity::Kind kind; // expected kind, Point for none
    };
    const Case cases[] = {
        {kFace, CKwUIEntity::Face},
        {CKwUIEntity::FilterBitOf(CKwUIEntity::Edge), CKwUIEntity::Point},
        {CKwUIEntity::FilterBitOf(CKwUIEntity::Vertex), CKwUIEntity::Point},
        {CKwUIEntity::FilterBitOf(CKwUIEntity::Body), CKwUIEntity::Body},
        {CKwUIEntity::FilterBitOf(CKwUIEntity::Element), CKwUIEntity::Element},
        {0, CKwUIEntity::Point},
    };
    for (const Case& k : cases) {
        f.filter(k.filter);
        CKwUIEntity* e = f.view.EntityAt(front);
        if (k.kind == CKwUIEntity::Point)
            EXPECT_EQ(e, nullptr) << std::hex << k.filter;
        else
            EXPECT_TRUE(e && e->GetKind() == k.kind) << std::hex << k.filter;
    }
    // The element under the front face's point is a solid whose skin face is there.
    f.filter(CKwUIEntity::FilterBitOf(CKwUIEntity::Element));
    CKwUIEntity* element = f.view.EntityAt(front);
    ASSERT_NE(element, nullptr);
    EXPECT_TRUE(CKwMeshModel::IsSolidType(mesh.ElementType(std::size_t(mesh.ElementIndex(element->GetID())))));
    EXPECT_EQ(f.view.EntityAt(f.view.ScreenPointOf(element)), element);
    // Background is nothing.
    EXPECT_EQ(f.view.EntityAt(QPointF(3, 3)), nullptr);
    EXPECT_EQ(f.view.EntityAt(QPointF(-50, 1e6)), nullptr);
}

TEST(ViewPicking, nodesArePickedWhereTheyAreDrawnAndFollowTheDeformation)
{
    ViewFixture f;
    CKwMeshModel& mesh = *f.model->m_mesh;
    const unsigned kNode = CKwUIEntity::FilterBitOf(CKwUIEntity::Node);
    f.filter(kNode);
    f.view.SetStandardView(KwViewCamera::Front);
    // A node on the front face (y = 0) is in sight, its twin on the back face (y = ly) is not.
    const CKwMeshModel::Node* frontNode = nullptr;
    const CKwMeshModel::Node* backNode = nullptr;
    for (const auto& n : mesh.Nodes()) {
        if (std::abs(n.x - 0.1) < 1e-9 && std::abs(n.z - 0.02) < 1e-9) {
            if (std::abs(n.y) < 1e-9)
                frontNode = &n;
            if (std::abs(n.y - 0.05) < 1e-9)
                backNode = &n;
        }
    }
    ASSERT_TRUE(frontNode && backNode);
    CKwUIEntity* fe = mesh.NodeEntity(frontNode->id);
    CKwUIEntity* be = mesh.NodeEntity(backNode->id);
    const QPointF at = f.view.ScreenPointOf(fe);
    ASSERT_GE(at.x(), 0);
    EXPECT_EQ(f.view.EntityAt(at), fe);
    EXPECT_LT(f.view.ScreenPointOf(be).x(), 0);
    // Lifted by a deformation, the node is drawn and picked higher up.
    KwResultDisplay d;
    d.active = true;
    d.displacement.assign(3 * mesh.Nodes().size(), 0.f);
    for (std::size_t i = 0; i < mesh.Nodes().size(); ++i)
        d.displacement[3 * i + 2] = 0.001f;
    d.deformScale = 2;
    f.view.SetResultDisplay(d);
    const QPointF lifted = f.view.ScreenPointOf(fe);
    EXPECT_NEAR(at.y() - lifted.y(), 0.002 * f.view.Camera().Scale(), 1.0);
    EXPECT_EQ(f.view.EntityAt(lifted), fe);
    EXPECT_FALSE(f.view.IsAnimating());
    // Animated, the view steps its frames; a cleared display stops.
    d.animate = true;
    f.view.SetResultDisplay(d);
    EXPECT_TRUE(f.view.IsAnimating());
    f.view.ClearResultDisplay(nullptr);
    EXPECT_FALSE(f.view.IsAnimating());
}

TEST(ViewPicking, aSectionRemovesWhatLiesBeyondItsPlane)
{
    ViewFixture f;
    CKwUIEntity* right = f.model->FindGeometry(CKwUIEntity::Face, 6);
    ASSERT_GE(f.view.ScreenPointOf(right).x(), 0);
    KwResultDisplay d;
    d.active = true;
    d.sectionOn = true;
    d.sectionPoint[0] = 0.1;
    f.view.SetResultDisplay(d);
    EXPECT_LT(f.view.ScreenPointOf(right).x(), 0);
    EXPECT_GE(f.view.ScreenPointOf(f.model->FindGeometry(CKwUIEntity::Face, 3)).x(), 0);
}

TEST(ViewPicking, hiddenSolidsLeaveTheirFacesUnpickedAndTheShellsPickable)
{
    ViewFixture f;
    const unsigned kFace = CKwUIEntity::FilterBitOf(CKwUIEntity::Face);
    const unsigned kElem = CKwUIEntity::FilterBitOf(CKwUIEntity::Element);
    CKwUIEntity* front = f.model->FindGeometry(CKwUIEntity::Face, 3);
    const QPointF at = f.view.ScreenPointOf(front);
    ASSERT_GE(at.x(), 0);
    CKwUIEntity* cover = f.model->m_mesh->ElementEntity(1001); // a shell on the top face
    const QPointF onCover = f.view.ScreenPointOf(cover);
    ASSERT_GE(onCover.x(), 0);
    f.view.HideBodies(CFMView::BodySolids, 1);
    f.filter(kFace);
    EXPECT_EQ(f.view.EntityAt(at), nullptr);
    EXPECT_LT(f.view.ScreenPointOf(front).x(), 0);
    f.filter(kElem);
    EXPECT_EQ(f.view.EntityAt(f.view.ScreenPointOf(cover)), cover);
    f.view.HideBodies(CFMView::BodySolids, 0);
    f.filter(kFace);
    EXPECT_EQ(f.view.EntityAt(at), front);
}

TEST(ViewRender, shellsShowTheirFrontColourWhileNormalsAreShown)
{
    ViewFixture f;
    CKwUIEntity* cover = f.model->m_mesh->ElementEntity(1001); // normal up: its front is seen
    const QPointF at = f.view.ScreenPointOf(cover);
    ASSERT_GE(at.x(), 0);
    KwDirectionDisplay d;
    d.showNormals = true;
    d.showNormalVectors = false;
    d.frontColor = QColor(0, 200, 0);
    d.backColor = QColor(200, 0, 200);
    f.view.SetDirectionDisplay(d);
    const QColor seen(f.view.RenderFrame().pixel(at.toPoint()));
    EXPECT_NEAR(seen.hsvHue(), 120, 8);
    // Seen from below, the same shell shows its back colour (the solid hidden).
    f.view.HideBodies(CFMView::BodySolids, 1);
    f.view.SetStandardView(KwViewCamera::Bottom);
    const QPointF below = f.view.ScreenPointOf(cover);
    ASSERT_GE(below.x(), 0);
    const QColor back(f.view.RenderFrame().pixel(below.toPoint()));
    EXPECT_NEAR(back.hsvHue(), 300, 8);
}

TEST(ResultLegend, rangeFollowsTheValuesOrTheFixedRange)
{
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    const CKwMeshModel& mesh = *model->m_mesh;
    KwResultDisplay d;
    double lo = 0, hi = 0;
    EXPECT_FALSE(KwResultRange(d, &lo, &hi));
    double zmin = 1e9, zmax = -1e9;
    for (const auto& n : mesh.Nodes()) {
        d.nodalValues.push_back(float(n.z));
        zmin = std::min(zmin, n.z);
        zmax = std::max(zmax, n.z);
    }
    d.nodalValues[3] = std::numeric_limits<float>::quiet_NaN(); // no value: left out
    d.nodalValues[4] = std::numeric_limits<float>::infinity();
    ASSERT_TRUE(KwResultRange(d, &lo, &hi));
    EXPECT_FLOAT_EQ(float(lo), float(zmin));
    EXPECT_FLOAT_EQ(float(hi), float(zmax));
    d.fixedRange = true;
    d.rangeMin = -1;
    d.rangeMax = 2;
    ASSERT_TRUE(KwResultRange(d, &lo, &hi));
    EXPECT_EQ(lo, -1);
    EXPECT_EQ(hi, 2);
    d.rangeMax = -5; // a reversed fixed range falls back to the values
    ASSERT_TRUE(KwResultRange(d, &lo, &hi));
    EXPECT_FLOAT_EQ(float(hi), float(zmax));
    KwResultDisplay e;
    e.elementValues = {3.f, -2.f, 7.f};
    ASSERT_TRUE(KwResultRange(e, &lo, &hi));
    EXPECT_EQ(lo, -2);
    EXPECT_EQ(hi, 7);
    e.contour = KwResultDisplay::ContourBanded;
    e.bands = 7;
    EXPECT_EQ(KwResultColours(e).size(), 7u);
    e.contour = KwResultDisplay::ContourSmooth;
    EXPECT_EQ(KwResultColours(e).size(), 256u);
}

// Index of the legend colour nearest to a pixel, the pixel's light taken out by comparing hues.
int nearestBand(QRgb pixel, const std::vector<QRgb>& colours)
{
    const QColor p(pixel);
    int best = -1;
    double bestD = 1e9;
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const QColor c(colours[i]);
        double dh = std::abs(p.hsvHueF() - c.hsvHueF());
        dh = std::min(dh, 1 - dh);
        if (dh < bestD) {
            bestD = dh;
            best = int(i);
        }
    }
    return best;
}

TEST(ViewRender, aContourPaintsTheLowestColourAtTheLowestNodeAndTheHighestAtTheTop)
{
    ViewFixture f;
    const CKwMeshModel& mesh = *f.model->m_mesh;
    f.view.SetStandardView(KwViewCamera::Front);
    KwResultDisplay d;
    d.active = true;
    d.contour = KwResultDisplay::ContourBanded;
    d.bands = 6;
    d.showMeshEdges = false;
    for (const auto& n : mesh.Nodes())
        d.nodalValues.push_back(float(n.z));
    f.view.SetResultDisplay(d);
    const QImage image = f.view.RenderFrame();
    ASSERT_EQ(image.size(), f.view.size());
    const auto colours = KwResultColours(d);
    // Just above the bottom of the front face and just below its top (z 0 and 0.04 of 0.06).
    const auto low = f.view.Camera().Project(0.1, 0, 0.002);
    const auto high = f.view.Camera().Project(0.01, 0, 0.038);
    EXPECT_EQ(nearestBand(image.pixel(int(low.x), int(low.y)), colours), 0);
    // 0.038 of 0.06 lies in the fourth of six bands.
    EXPECT_EQ(nearestBand(image.pixel(int(high.x), int(high.y)), colours), 3);
    // Without a result the part is grey, not coloured.
    f.view.ClearResultDisplay(nullptr);
    const QColor plain(f.view.RenderFrame().pixel(int(low.x), int(low.y)));
    EXPECT_LT(plain.hsvSaturationF(), 0.25);
}

TEST(ViewMouse, aDragTurnsTheModelAndAClickDoesNot)
{
    ViewFixture f;
    f.view.RenderFrame();
    const KwVec3 before = f.view.Camera().ToViewer();
    QTest::mouseClick(&f.view, Qt::LeftButton, {}, QPoint(400, 280));
    EXPECT_NEAR(dot(f.view.Camera().ToViewer(), before), 1, 1e-12);
    QTest::mousePress(&f.view, Qt::LeftButton, {}, QPoint(400, 280));
    QMouseEvent move(QEvent::MouseMove, QPointF(460, 300), f.view.mapToGlobal(QPointF(460, 300)),
                     Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&f.view, &move);
    QTest::mouseRelease(&f.view, Qt::LeftButton, {}, QPoint(460, 300));
    EXPECT_LT(dot(f.view.Camera().ToViewer(), before), 0.99);
    // The wheel zooms in about the cursor.
    const double scale = f.view.Camera().Scale();
    QWheelEvent wheel(QPointF(200, 100), f.view.mapToGlobal(QPointF(200, 100)), QPoint(),
                      QPoint(0, 120), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&f.view, &wheel);
    EXPECT_NEAR(f.view.Camera().Scale(), 1.2 * scale, 1e-9 * scale);
}

} // namespace
