// The demo host's View menu: each standard view turns the model view and frames the model;
// the drawing switches reach the view.
#include "CFMView.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"
#include "KwViewCamera.h"

#include <QMenu>
#include <QMenuBar>
#include <gtest/gtest.h>

namespace {

QAction* viewAction(KwHostWindow& host, const QString& startsWith)
{
    for (QMenu* menu : host.menuBar()->findChildren<QMenu*>())
        for (QAction* a : menu->actions())
            if (a->text().startsWith(startsWith))
                return a;
    return nullptr;
}

TEST(HostViewMenu, standardViewsTurnTheViewAndTheSwitchesReachIt)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    struct Case
    {
        const char* text;
        KwVec3 toViewer;
    };
    const Case cases[] = {{"Front", {0, -1, 0}}, {"Back", {0, 1, 0}}, {"Left", {-1, 0, 0}},
                          {"Right", {1, 0, 0}},  {"Top", {0, 0, 1}},  {"Bottom", {0, 0, -1}}};
    CFMView* view = host.View();
    for (const Case& c : cases) {
        QAction* a = viewAction(host, QString::fromLatin1(c.text));
        ASSERT_NE(a, nullptr) << c.text;
        view->Camera().Rotate(40, 25); // somewhere else first
        a->trigger();
        view->RenderFrame();
        const KwVec3 t = view->Camera().ToViewer();
        EXPECT_NEAR(t.x, c.toViewer.x, 1e-9) << c.text;
        EXPECT_NEAR(t.y, c.toViewer.y, 1e-9) << c.text;
        EXPECT_NEAR(t.z, c.toViewer.z, 1e-9) << c.text;
    }
    // Fit all after a zoom frames the model again at the scale it had.
    const double framed = view->Camera().Scale();
    view->Camera().ZoomAbout(10, 10, 3);
    viewAction(host, QStringLiteral("Fit all"))->trigger();
    view->RenderFrame();
    EXPECT_NEAR(view->Camera().Scale(), framed, 1e-9 * framed);
    QAction* edges = viewAction(host, QStringLiteral("Show element edges"));
    QAction* smooth = viewAction(host, QStringLiteral("Smooth shading"));
    ASSERT_TRUE(edges && smooth);
    EXPECT_TRUE(view->GetShowMeshEdges());
    edges->trigger();
    EXPECT_FALSE(view->GetShowMeshEdges());
    smooth->trigger();
    EXPECT_TRUE(view->GetSmoothShading());
}

} // namespace
