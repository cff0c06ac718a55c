// The view's rasteriser on its own (coverage, depth, clipping, colour tables, lines, ids), and
// the view with models and displays that do not fit together.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwSelectionHandler.h"
#include "CKwUIEntity.h"
#include "KwRenderer.h"
#include "KwViewCamera.h"

#include <QColor>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <memory>

namespace {

KwRasterVertex at(float x, float y, float z, QRgb c = qRgb(200, 100, 50), float clip = -1)
{
    KwRasterVertex v;
    v.x = x;
    v.y = y;
    v.z = z;
    v.a[0] = float(qRed(c));
    v.a[1] = float(qGreen(c));
    v.a[2] = float(qBlue(c));
    v.clip = clip;
    return v;
}

const QRgb kBack = qRgb(0, 0, 0);

int countColour(const KwRaster& r, QRgb c)
{
    int n = 0;
    for (int y = 0; y < r.Height(); ++y)
        for (int x = 0; x < r.Width(); ++x)
            n += r.Image().pixel(x, y) == (c | 0xff000000u) ? 1 : 0;
    return n;
}

TEST(Raster, twoTrianglesOfASquareCoverItWithoutGapsOrSpill)
{
    // Squares at whole and at odd positions, split along either diagonal.
    struct Case
    {
        float x0, y0, size;
        bool otherDiagonal;
    };
    const Case cases[] = {{2, 2, 10, false}, {2, 2, 10, true}, {3.5f, 1.5f, 7, false},
                          {0.25f, 4.75f, 12, true}};
    for (const Case& c : cases) {
        KwRaster r;
        r.Resize(24, 24);
        r.Clear(kBack, kBack);
        const QRgb fill = qRgb(10, 200, 30);
        const KwRasterVertex a = at(c.x0, c.y0, 1, fill), b = at(c.x0 + c.size, c.y0, 1, fill),
                             d = at(c.x0 + c.size, c.y0 + c.size, 1, fill),
                             e = at(c.x0, c.y0 + c.size, 1, fill);
        if (c.otherDiagonal) {
            r.FillTriangle(a, b, e);
            r.FillTriangle(b, d, e);
        } else {
            r.FillTriangle(a, b, d);
            r.FillTriangle(a, d, e);
        }
        // Every pixel whose centre lies inside is covered; none beyond the square's border.
        int inside = 0;
        for (int y = 0; y < 24; ++y)
            for (int x = 0; x < 24; ++x) {
                const float cx = float(x) + 0.5f, cy = float(y) + 0.5f;
                const bool in = cx > c.x0 && cx < c.x0 + c.size && cy > c.y0 && cy < c.y0 + c.size;
                const bool out = cx < c.x0 - 0.01f || cx > c.x0 + c.size + 0.01f ||
                                 cy < c.y0 - 0.01f || cy > c.y0 + c.size + 0.01f;
                const bool filled = r.Image().pixel(x, y) == (fill | 0xff000000u);
                if (in) {
                    EXPECT_TRUE(filled) << x << "," << y;
                    ++inside;
                }
                if (out) {
                    EXPECT_FALSE(filled) << x << "," << y;
                }
            }
        EXPECT_GT(inside, 0);
    }
}

TEST(Raster, theNearerSurfaceWinsInEitherDrawingOrderAndIdsFollowIt)
{
    for (bool nearFirst : {true, false}) {
        KwRaster pick;
        pick.Resize(16, 16, false);
        pick.SetWriteIds(true);
        pick.Clear(0, 0);
        KwRaster picture;
        picture.Resize(16, 16);
        picture.Clear(kBack, kBack);
        const QRgb nearC = qRgb(255, 0, 0), farC = qRgb(0, 0, 255);
        auto drawNear = [&] {
            picture.FillTriangle(at(0, 0, 1, nearC), at(16, 0, 1, nearC), at(0, 16, 1, nearC));
            pick.FillTriangle(at(0, 0, 1), at(16, 0, 1), at(0, 16, 1), 7);
        };
        auto drawFar = [&] {
            picture.FillTriangle(at(0, 0, 5, farC), at(16, 0, 5, farC), at(16, 16, 5, farC));
            pick.FillTriangle(at(0, 0, 5), at(16, 0, 5), at(16, 16, 5), 9);
        };
        if (nearFirst) {
            drawNear();
            drawFar();
        } else {
            drawFar();
            drawNear();
        }
        // (4, 2) lies in both; (14, 10) only in the far one.
        EXPECT_EQ(picture.Image().pixel(4, 2), nearC | 0xff000000u) << nearFirst;
        EXPECT_EQ(pick.IdAt(4, 2), 7u) << nearFirst;
        EXPECT_FLOAT_EQ(pick.DepthAt(4, 2), 1.f);
        EXPECT_EQ(picture.Image().pixel(14, 10), farC | 0xff000000u) << nearFirst;
        EXPECT_EQ(pick.IdAt(14, 10), 9u) << nearFirst;
        EXPECT_EQ(pick.IdAt(1, 15), 0u); // in neither
    }
}

TEST(Raster, clippingDropsThePositiveSideAndLinesWinOnlyWithTheirBias)
{
    KwRaster r;
    r.Resize(20, 20);
    r.SetClipping(true);
    r.Clear(kBack, kBack);
    const QRgb c = qRgb(0, 255, 0);
    // Clip distance from -10 at x = 0 to +10 at x = 20: the right half goes.
    r.FillTriangle(at(0, 0, 1, c, -10), at(20, 0, 1, c, 10), at(0, 20, 1, c, -10));
    r.FillTriangle(at(20, 0, 1, c, 10), at(20, 20, 1, c, 10), at(0, 20, 1, c, -10));
    EXPECT_EQ(r.Image().pixel(5, 10), c | 0xff000000u);
    EXPECT_EQ(r.Image().pixel(15, 10), kBack | 0xff000000u);
    r.SetClipping(false);
    // A line a little behind the surface: hidden without bias, drawn with enough of it.
    const QRgb line = qRgb(255, 255, 255);
    r.DrawLine(at(1, 3, 1.05f), at(9, 3, 1.05f), line, 1, 0);
    EXPECT_EQ(countColour(r, line), 0);
    r.DrawLine(at(1, 5, 1.05f), at(9, 5, 1.05f), line, 1, 0.1f);
    EXPECT_EQ(countColour(r, line), 9);
    // A wide line covers its width, and half of it beyond either end.
    r.DrawLine(at(1, 12, 0), at(9, 12, 0), line, 3, 0);
    EXPECT_EQ(countColour(r, line), 9 + 11 * 3);
}

TEST(Raster, aColourTableBandsTheValuesAndGreysTheMissingOnes)
{
    KwRaster r;
    r.Resize(40, 4);
    r.Clear(kBack, kBack);
    const std::vector<QRgb> table = {qRgb(0, 0, 255), qRgb(0, 255, 0), qRgb(255, 0, 0),
                                     qRgb(255, 255, 0)};
    r.SetShading(KwRaster::ShadeTable);
    r.SetColourTable(table);
    r.SetNoValueColour(qRgb(128, 128, 128));
    auto value = [](float x, float y, float t) {
        KwRasterVertex v = at(x, y, 1);
        v.a[0] = t;
        v.a[1] = 1.f; // full light
        return v;
    };
    // t runs 0..1 from left to right: four bands of ten pixels.
    r.FillTriangle(value(0, 0, 0), value(40, 0, 1), value(0, 4, 0));
    r.FillTriangle(value(40, 0, 1), value(40, 4, 1), value(0, 4, 0));
    for (int band = 0; band < 4; ++band)
        EXPECT_EQ(r.Image().pixel(band * 10 + 5, 2), table[std::size_t(band)] | 0xff000000u) << band;
    r.FillTriangle(value(0, 0, -1), value(10, 0, -1), value(0, 4, -1));
    EXPECT_EQ(r.Image().pixel(1, 1), qRgb(128, 128, 128) | 0xff000000u);
}

TEST(Raster, halvingAveragesFourPixelsAndBadCornersDrawNothing)
{
    KwRaster r;
    r.Resize(4, 2);
    r.Clear(kBack, kBack);
    const QRgb white = qRgb(255, 255, 255);
    r.DrawDot(0.5f, 0.5f, 0, 0.1f, white, 0); // one of the four pixels of the first block
    const QImage half = r.Halved();
    ASSERT_EQ(half.size(), QSize(2, 1));
    EXPECT_EQ(qRed(half.pixel(0, 0)), 63);
    EXPECT_EQ(qRed(half.pixel(1, 0)), 0);
    // Corners far away, at infinity or not numbers: nothing drawn, nothing broken.
    const float inf = std::numeric_limits<float>::infinity();
    const float nan = std::numeric_limits<float>::quiet_NaN();
    KwRaster s;
    s.Resize(8, 8);
    s.Clear(kBack, kBack);
    s.FillTriangle(at(nan, 0, 1), at(4, 4, 1), at(0, 4, 1));
    s.FillTriangle(at(-1e30f, -1e30f, 1), at(1e30f, -1e30f, 1), at(0, 1e30f, 1));
    s.DrawLine(at(0, 0, 1), at(inf, 3, 1), white, 2, 0);
    s.DrawLine(at(nan, 0, 1), at(3, 3, 1), white, 2, 0);
    s.DrawLine(at(-1e9f, -1e9f, 1), at(1e9f, 1e9f, 1), white, 1, 0);
    s.DrawDot(-100, -100, 0, 5, white, 0);
    SUCCEED();
}

TEST(ViewCamera, scaledCameraDoublesEveryPointAndUnprojectInvertsProject)
{
    KwViewCamera cam;
    cam.SetViewport(300, 200);
    cam.SetStandardView(KwViewCamera::Isometric);
    cam.Fit({0, 0, 0}, {2, 1, 1});
    cam.Pan(13, -4);
    cam.Rotate(20, 30);
    const KwViewCamera twice = cam.Scaled(2);
    for (const KwVec3& p : {KwVec3{0, 0, 0}, KwVec3{2, 1, 1}, KwVec3{0.3, 0.9, -0.2}}) {
        const auto a = cam.Project(p.x, p.y, p.z);
        const auto b = twice.Project(p.x, p.y, p.z);
        EXPECT_NEAR(b.x, 2 * a.x, 1e-3);
        EXPECT_NEAR(b.y, 2 * a.y, 1e-3);
        EXPECT_NEAR(b.depth, a.depth, 1e-6);
        // Back from the screen onto the plane through the centre, then along the view line.
        const KwVec3 q = cam.Unproject(a.x, a.y);
        const auto c = cam.Project(q.x, q.y, q.z);
        EXPECT_NEAR(c.x, a.x, 1e-3);
        EXPECT_NEAR(c.y, a.y, 1e-3);
    }
}

TEST(View, modelsWithoutMeshOrWithDisplaysThatDoNotFitDrawAndPickSafely)
{
    // No model, a model without a mesh, a mesh without elements.
    {
        CFMView view;
        view.resize(400, 300);
        EXPECT_EQ(view.RenderFrame().size(), QSize(400, 300));
        EXPECT_EQ(view.EntityAt(QPointF(100, 75)), nullptr);
    }
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    CKwMeshModel* mesh = model->m_mesh;
    model->m_mesh = nullptr;
    {
        CFMView view(model.get());
        view.resize(400, 300);
        EXPECT_EQ(view.RenderFrame().size(), QSize(400, 300));
        EXPECT_EQ(view.ScreenPointOf(model->FindGeometry(CKwUIEntity::Face, 2)).x(), -1);
    }
    model->m_mesh = mesh;
    CFMView view(model.get());
    view.resize(400, 300);
    view.GetSelectionHandler()->SetFilter(0xffffffffu);
    // A result display whose arrays are shorter than the mesh: the plain model is drawn.
    KwResultDisplay d;
    d.active = true;
    d.contour = KwResultDisplay::ContourBanded;
    d.nodalValues = {1.f, 2.f};
    d.displacement = {0.f, 0.f, 1.f};
    d.deformScale = 1e30;
    d.vectors = {1.f};
    d.sectionOn = true;
    d.sectionNormal[0] = d.sectionNormal[1] = d.sectionNormal[2] = 0; // no direction
    d.bands = -3;
    view.SetResultDisplay(d);
    EXPECT_EQ(view.RenderFrame().size(), QSize(400, 300));
    CKwUIEntity* top = model->FindGeometry(CKwUIEntity::Face, 2);
    view.GetSelectionHandler()->SetFilter(top->FilterBit());
    EXPECT_EQ(view.EntityAt(view.ScreenPointOf(top)), top);
    // Every value missing: nothing to colour, still a picture.
    d.nodalValues.assign(mesh->Nodes().size(), std::numeric_limits<float>::quiet_NaN());
    view.SetResultDisplay(d);
    EXPECT_EQ(view.RenderFrame().size(), QSize(400, 300));
    // The mesh emptied under the view.
    mesh->Clear();
    view.NotifyMeshReplaced();
    EXPECT_EQ(view.EntityAt(QPointF(200, 150)), nullptr);
    EXPECT_EQ(view.RenderFrame().size(), QSize(400, 300));
}

TEST(View, parabolicElementsAreDrawnAndPickedOnTheirCorners)
{
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    CKwMeshModel& mesh = *model->m_mesh;
    mesh.Clear();
    // One quadratic tetrahedron: corners, then the mid-side nodes of edges 01 12 20 03 13 23.
    const double p[4][3] = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    for (int i = 0; i < 4; ++i)
        mesh.AddNode(i + 1, p[i][0], p[i][1], p[i][2]);
    const int edges[6][2] = {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}};
    for (int k = 0; k < 6; ++k) {
        const auto& a = p[edges[k][0]];
        const auto& b = p[edges[k][1]];
        mesh.AddNode(5 + k, (a[0] + b[0]) / 2, (a[1] + b[1]) / 2, (a[2] + b[2]) / 2);
    }
    ASSERT_TRUE(mesh.AddElement(1, CKwMeshModel::Tet10, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
    mesh.ClassifyAsBox();
    CFMView view(model.get());
    view.resize(400, 300);
    view.NotifyMeshReplaced();
    view.GetSelectionHandler()->SetFilter(CKwUIEntity::FilterBitOf(CKwUIEntity::Element));
    CKwUIEntity* tet = mesh.ElementEntity(1);
    const QPointF centre = view.ScreenPointOf(tet);
    ASSERT_GE(centre.x(), 0);
    EXPECT_EQ(view.EntityAt(centre), tet);
}

} // namespace
