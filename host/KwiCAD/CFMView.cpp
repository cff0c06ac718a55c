#include "CFMView.h"

#include "CKwFEModel.h"
#include "CKwFrameWnd.h"
#include "CKwMeshModel.h"
#include "CKwPlot.h"
#include "CKwPickEvent.h"
#include "CKwSelectionHandler.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwViewPainter.h"

#include <algorithm>
#include <cmath>

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QWheelEvent>
#include <QToolButton>
#include <span>

// What the view keeps between frames: the camera, the scene worked out of the mesh, the pick
// buffers (valid while `pickKey` matches), the drag in progress and the animation.
struct KwViewState
{
    KwViewPainter painter;
    KwViewCamera camera;
    bool autoFit = true;
    bool fitPending = true;
    bool showMeshEdges = true;
    bool smooth = false;
    // Bumped by everything that moves what is drawn, other than the camera.
    unsigned stamp = 1;
    struct PickKey
    {
        unsigned camera = 0, stamp = 0;
        bool operator==(const PickKey&) const = default;
    } pickKey;
    bool pickValid = false;
    // Mouse: where a press started, the last position, whether it became a drag.
    QPointF pressAt, lastAt;
    Qt::MouseButton pressButton = Qt::NoButton;
    Qt::KeyboardModifiers pressModifiers;
    bool dragging = false;
    QTimer timer;
    int frame = 0;
};

CFMView::CFMView(CKwFEModel* model, QWidget* parent)
    : QWidget(parent), m_model(model), m_frame(std::make_unique<CKwFrameWnd>()),
      m_selection(std::make_unique<CKwSelectionHandler>()),
      m_view3d(std::make_unique<KwViewState>())
{
    setMinimumSize(320, 240);
    setFocusPolicy(Qt::ClickFocus);
    // The view paints every pixel itself.
    setAttribute(Qt::WA_OpaquePaintEvent);
    m_view3d->timer.setParent(this);
    connect(&m_view3d->timer, &QTimer::timeout, this, [this] {
        KwViewState& v = *m_view3d;
        const int frames = std::max(2, m_resultDisplay.frameCount);
        v.frame = (v.frame + 1) % frames;
        if (v.frame == 0 && !m_resultDisplay.loop)
            v.timer.stop();
        ++v.stamp;
        update();
    });
    // A new mesh: everything worked out of the old one goes.
    connect(this, &CFMView::meshReplaced, this, &CFMView::DropMeshCaches);
}

CFMView::~CFMView()
{
    delete m_resultToolbar.data();
    // Dialogs opened on the view are its child windows; they leave the view's dialog stack as
    // they go, so they must go while the view is still whole.
    const auto children = findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget* w : children)
        if (w->isWindow())
            delete w;
}

void CFMView::SetModel(CKwFEModel* model)
{
    m_model = model;
    DropMeshCaches();
}

void CFMView::AddOpenDialog(QWidget* dialog)
{
    if (!dialog)
        return;
    m_openDialogs.append(dialog);
    ++m_openCount;
    m_activeMark = true;
    Q_EMIT openDialogsChanged();
}

QWidget* CFMView::GetOpenDialog() const
{
    for (auto it = m_openDialogs.crbegin(); it != m_openDialogs.crend(); ++it)
        if (!it->isNull())
            return it->data();
    return nullptr;
}

QList<QWidget*> CFMView::GetOpenDialogs() const
{
    QList<QWidget*> out;
    for (const auto& p : m_openDialogs)
        if (!p.isNull())
            out.append(p.data());
    return out;
}

void CFMView::LeaveDialogStack(QWidget* dialog)
{
    // Windows destroyed without leaving (a crash of a dialog, a host shutdown) must not keep
    // the count up: drop dead entries first.
    m_openDialogs.removeIf([](const QPointer<QWidget>& p) { return p.isNull(); });
    if (dialog)
        m_openDialogs.removeOne(dialog);
    if (m_openCount > 0)
        --m_openCount;
    if (m_openCount == 0)
        m_activeMark = false;
    Q_EMIT openDialogsChanged();
}

bool CFMView::IsResultToolbar(const QWidget* w) const
{
    return w && w == m_resultToolbar.data();
}

void CFMView::DestroyResultToolbar()
{
    if (!m_resultToolbar)
        return;
    QWidget* tb = m_resultToolbar.data();
    m_openDialogs.removeOne(tb);
    if (m_openCount > 0)
        --m_openCount;
    if (m_openCount == 0)
        m_activeMark = false;
    delete tb;
    Q_EMIT openDialogsChanged();
}

void CFMView::CreateResultToolbarIfPlotDispalyed()
{
    if (m_resultToolbar || !m_activePlot || !m_activePlot->IsDisplayed())
        return;
    auto* tb = new QWidget(window(), Qt::Tool);
    tb->setObjectName(QStringLiteral("ResultToolbar"));
    tb->setWindowTitle(QStringLiteral("Results"));
    auto* lay = new QHBoxLayout(tb);
    lay->setContentsMargins(4, 4, 4, 4);
    for (const char* t : {"Contour", "Deformed", "Animate", "Probe"}) {
        auto* b = new QToolButton(tb);
        b->setText(QString::fromLatin1(t));
        lay->addWidget(b);
    }
    m_resultToolbar = tb;
    AddOpenDialog(tb);
    if (isVisible())
        tb->show();
}

void CFMView::ClearResultDisplay(CKwAnalysis* analysis)
{
    ++m_clearCount;
    m_lastCleared = analysis;
    m_resultDisplay.active = false;
    m_view3d->timer.stop();
    m_view3d->frame = 0;
    ++m_view3d->stamp;
    update();
}

void CFMView::SetSolvraRunning(bool running)
{
    if (m_solverRunning == running)
        return;
    m_solverRunning = running;
    Q_EMIT solverRunningChanged(running);
    update();
}

void CFMView::showBubble(const QString& text, BubbleKind kind)
{
    m_lastBubbleText = text;
    m_lastBubbleKind = kind;
    ++m_bubbleCount;
    if (!m_bubble) {
        m_bubble = new QLabel(this);
        m_bubble->setObjectName(QStringLiteral("BubbleTip"));
        m_bubble->setWordWrap(true);
        m_bubble->setMargin(8);
        m_bubble->setMaximumWidth(360);
    }
    const char* style = kind == BubbleError
                            ? "QLabel{background:#fde8e8;border:1px solid #c0392b;border-radius:6px;}"
                            : "QLabel{background:#fff6d5;border:1px solid #b7950b;border-radius:6px;}";
    m_bubble->setStyleSheet(QString::fromLatin1(style));
    m_bubble->setText(text);
    m_bubble->adjustSize();
    m_bubble->move(12, qMax(0, height() - m_bubble->height() - 12));
    m_bubble->show();
    m_bubble->raise();
    QPointer<QLabel> b = m_bubble;
    const int count = m_bubbleCount;
    QTimer::singleShot(6000, this, [this, b, count] {
        if (b && m_bubbleCount == count)
            b->hide();
    });
}

void CFMView::ShowBubbleToolTipError(const QString& text, int) { showBubble(text, BubbleError); }

void CFMView::ShowBubbleToolTipWarning(const QString& text, int)
{
    showBubble(text, BubbleWarning);
}

void CFMView::ClearBubbleRecord()
{
    m_lastBubbleText.clear();
    m_lastBubbleKind = BubbleNone;
    m_bubbleCount = 0;
    if (m_bubble)
        m_bubble->hide();
}

void CFMView::SetFrameWindow(QWidget* window) { m_frame->SetWindow(window); }

void CFMView::HideAllCoordinateSystem()
{
    m_coordSystemsShown = false;
    update();
}

void CFMView::ReDraw()
{
    ++m_redrawCount;
    if (!m_redrawSuspended)
        update();
}

int CFMView::GetIntegerFromString(const QString& text)
{
    bool ok = false;
    const int v = text.trimmed().toInt(&ok);
    return ok ? v : MissingInteger;
}

double CFMView::GetDoubleFromString(const KW_UOM* units, const QString& text, int unitType,
                                    int convert)
{
    if (!IsNumber(text))
        return MissingDouble;
    const double v = KwAtof(text);
    const double r = (convert && units) ? units->ToInternalValue(v, unitType) : v;
    // A value that overflows in the conversion (1e300 t/mm³ in kg/m³) is no value; one that
    // lands on the marker would read back as unset, so it is refused the same way.
    return std::isfinite(r) ? r : MissingDouble;
}

bool CFMView::IsValidNumberString(const QString& text, int unitType)
{
    if (!IsNumber(text))
        return false;
    // Lengths become section values up to their sixth power (the warping constant), in any
    // unit we show them in: beyond this no section of that size has representable values.
    if (unitType == KwUnitKind::Length)
        return std::fabs(KwAtof(text)) <= LargestLength;
    return true;
}

namespace {

const unsigned kNodeBit = CKwUIEntity::FilterBitOf(CKwUIEntity::Node);
const unsigned kElementBit = CKwUIEntity::FilterBitOf(CKwUIEntity::Element);
const unsigned kVertexBit = CKwUIEntity::FilterBitOf(CKwUIEntity::Vertex);
const unsigned kEdgeBit = CKwUIEntity::FilterBitOf(CKwUIEntity::Edge);
const unsigned kFaceBit = CKwUIEntity::FilterBitOf(CKwUIEntity::Face);
const unsigned kBodyBit = CKwUIEntity::FilterBitOf(CKwUIEntity::Body);

// Pick radii in pixels: vertices and nodes are small targets, edges thin ones.
constexpr double kVertexRadius = 7.0;
constexpr double kNodeRadius = 6.0;
constexpr int kEdgeRadius = 4;

const QPointF kNowhere(-1, -1);

// The pixel of a set that lies deepest inside it (farthest from any pixel outside), as a
// point to click: a chamfer distance over the set's bounding box.
template <class InSet>
QPointF deepestPixel(int width, int height, InSet inSet)
{
    int x0 = width, y0 = height, x1 = -1, y1 = -1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (inSet(x, y)) {
                x0 = std::min(x0, x);
                x1 = std::max(x1, x);
                y0 = std::min(y0, y);
                y1 = std::max(y1, y);
            }
    if (x1 < 0)
        return kNowhere;
    const int w = x1 - x0 + 3, h = y1 - y0 + 3; // a frame of outside pixels around the box
    std::vector<int> d(std::size_t(w) * std::size_t(h), 0);
    auto at = [&](int x, int y) -> int& { return d[std::size_t(y) * std::size_t(w) + std::size_t(x)]; };
    for (int y = 1; y < h - 1; ++y)
        for (int x = 1; x < w - 1; ++x)
            at(x, y) = inSet(x0 + x - 1, y0 + y - 1) ? 1 << 20 : 0;
    for (int y = 1; y < h - 1; ++y)
        for (int x = 1; x < w - 1; ++x)
            if (at(x, y))
                at(x, y) = std::min({at(x, y), at(x - 1, y) + 3, at(x, y - 1) + 3,
                                     at(x - 1, y - 1) + 4, at(x + 1, y - 1) + 4});
    int best = 0, bx = -1, by = -1;
    for (int y = h - 2; y >= 1; --y)
        for (int x = w - 2; x >= 1; --x)
            if (at(x, y)) {
                at(x, y) = std::min({at(x, y), at(x + 1, y) + 3, at(x, y + 1) + 3,
                                     at(x + 1, y + 1) + 4, at(x - 1, y + 1) + 4});
                if (at(x, y) >= best) {
                    best = at(x, y);
                    bx = x;
                    by = y;
                }
            }
    return bx < 0 ? kNowhere : QPointF(x0 + bx - 1 + 0.5, y0 + by - 1 + 0.5);
}

} // namespace

KwViewCamera& CFMView::Camera() { return m_view3d->camera; }
const KwViewCamera& CFMView::Camera() const { return m_view3d->camera; }

bool CFMView::GetShowMeshEdges() const { return m_view3d->showMeshEdges; }
void CFMView::SetShowMeshEdges(bool on)
{
    m_view3d->showMeshEdges = on;
    update();
}

bool CFMView::GetSmoothShading() const { return m_view3d->smooth; }
void CFMView::SetSmoothShading(bool on)
{
    m_view3d->smooth = on;
    update();
}

int CFMView::GetAnimationFrame() const { return m_view3d->timer.isActive() ? m_view3d->frame : 0; }
bool CFMView::IsAnimating() const { return m_view3d->timer.isActive(); }

void CFMView::DropMeshCaches()
{
    m_view3d->painter.scene = KwViewScene();
    m_view3d->pickValid = false;
    m_view3d->autoFit = m_view3d->fitPending = true;
    ++m_view3d->stamp;
    update();
}

// The scene of the current mesh and a camera that suits the view's size; false without a
// mesh to draw.
static bool prepare(const CKwFEModel* model, const QSize& size, KwViewState& v)
{
    if (!model || !model->m_mesh || model->m_mesh->Nodes().empty())
        return false;
    KwViewScene& scene = v.painter.scene;
    if (!scene.Matches(model->m_mesh)) {
        scene.Build(*model->m_mesh);
        v.pickValid = false;
        v.autoFit = v.fitPending = true;
    }
    if (v.camera.Width() != size.width() || v.camera.Height() != size.height()) {
        v.camera.SetViewport(size.width(), size.height());
        v.fitPending = v.fitPending || v.autoFit;
    }
    if (v.fitPending) {
        v.camera.Fit(scene.lo, scene.hi);
        v.fitPending = false;
    }
    return true;
}

void CFMView::FitAll()
{
    m_view3d->autoFit = m_view3d->fitPending = true;
    update();
}

void CFMView::SetStandardView(int view)
{
    m_view3d->camera.SetStandardView(KwViewCamera::StandardView(
        std::clamp(view, int(KwViewCamera::Front), int(KwViewCamera::Isometric))));
    FitAll();
}

// Everything a frame draws besides the camera, from the view's state.
static KwViewFrame frameOf(const CFMView& view, const KwViewState& v)
{
    KwViewFrame f;
    const CKwFEModel* model = view.GetModel();
    const KwViewScene& scene = v.painter.scene;
    const CKwMeshModel& mesh = *model->m_mesh;
    f.model = model;
    f.result = &view.GetResultDisplay();
    f.direction = &view.GetDirectionDisplay();
    f.showMeshEdges = v.showMeshEdges;
    f.smooth = v.smooth;
    f.solidsHidden = view.AreBodiesHidden(CFMView::BodySolids);
    f.membersHidden = view.AreBodiesHidden(CFMView::BodyStructuralMembers);
    f.showNodes = (view.GetSelectionHandler()->GetFilter() & kNodeBit) != 0;
    const KwResultDisplay& r = view.GetResultDisplay();
    f.showSymbols = !r.active || r.showLoadsAndConstraints;
    if (r.active && !r.displacement.empty()) {
        f.deformFactor = r.deformScale;
        if (v.timer.isActive())
            f.deformFactor *= std::sin(M_PI * v.frame / std::max(2, r.frameCount));
    }
    auto mark = [](std::vector<char>& set, std::size_t size, int index) {
        if (index < 0)
            return;
        if (set.empty())
            set.assign(size, 0);
        set[std::size_t(index)] = 1;
    };
    for (int id : view.GetHighlightedMesh(CFMView::HighlightElements))
        mark(f.markedElements, mesh.ElementCount(), mesh.ElementIndex(id));
    for (int id : view.GetHighlightedMesh(CFMView::HighlightNodes))
        mark(f.markedNodes, mesh.Nodes().size(), mesh.NodeIndex(id));
    const auto& geometry = mesh.GeometryMeshes();
    auto indexOf = [&](const std::vector<int>& list, int id) {
        for (std::size_t i = 0; i < list.size(); ++i)
            if (geometry[std::size_t(list[i])].id == id)
                return int(i);
        return -1;
    };
    for (const CKwUIEntity* e : view.GetHighlightedEntities()) {
        if (!e)
            continue;
        switch (e->GetKind()) {
        case CKwUIEntity::Face:
            mark(f.pickedFaces, scene.faceGeometry.size(), indexOf(scene.faceGeometry, e->GetID()));
            break;
        case CKwUIEntity::Edge:
            mark(f.pickedEdges, scene.edgeGeometry.size(), indexOf(scene.edgeGeometry, e->GetID()));
            break;
        case CKwUIEntity::Vertex:
            for (std::size_t i = 0; i < scene.vertices.size(); ++i)
                if (geometry[std::size_t(scene.vertices[i].geometry)].id == e->GetID())
                    mark(f.pickedVertices, scene.vertices.size(), int(i));
            break;
        case CKwUIEntity::Body: f.pickedBody = true; break;
        case CKwUIEntity::Node:
            mark(f.pickedNodes, mesh.Nodes().size(), mesh.NodeIndex(e->GetID()));
            break;
        case CKwUIEntity::Element:
            mark(f.pickedElements, mesh.ElementCount(), mesh.ElementIndex(e->GetID()));
            break;
        default: break;
        }
    }
    return f;
}

QImage CFMView::RenderFrame()
{
    KwViewState& v = *m_view3d;
    const QSize s = size().expandedTo(QSize(1, 1));
    if (!prepare(m_model, s, v)) {
        QImage empty(s, QImage::Format_RGB32);
        empty.fill(QColor(0xe8, 0xee, 0xf5));
        QPainter p(&empty);
        p.drawText(empty.rect(), Qt::AlignCenter, tr("No model"));
        return empty;
    }
    // Supersampled for smooth edges while the skin is small enough to stay interactive.
    const int ss = v.painter.scene.tris.size() < 400000 ? 2 : 1;
    QImage image = v.painter.Render(frameOf(*this, v), v.camera, ss);
    if (m_solverRunning) {
        QPainter p(&image);
        p.setPen(QColor(0xc0, 0x39, 0x2b));
        p.drawText(image.rect().adjusted(8, 8, -8, -8), Qt::AlignTop | Qt::AlignRight,
                   tr("Solver running"));
    }
    return image;
}

void CFMView::paintEvent(QPaintEvent*)
{
    // Animation runs while the display asks for it and a deformation is there to animate.
    const bool wantAnimation = m_resultDisplay.active && m_resultDisplay.animate &&
                               !m_resultDisplay.displacement.empty() &&
                               m_resultDisplay.deformScale != 0;
    if (!wantAnimation && m_view3d->timer.isActive())
        m_view3d->timer.stop();
    QPainter p(this);
    p.drawImage(0, 0, RenderFrame());
}

// The pick buffers for the current camera and state; false without a model.
static bool pickBuffers(const CFMView& view, KwViewState& v)
{
    if (!prepare(view.GetModel(), view.size().expandedTo(QSize(1, 1)), v))
        return false;
    const KwViewState::PickKey key{v.camera.Revision(), v.stamp};
    if (!v.pickValid || !(v.pickKey == key)) {
        v.painter.RenderPick(frameOf(view, v), v.camera);
        v.pickKey = key;
        v.pickValid = true;
    }
    return true;
}

CKwUIEntity* CFMView::EntityAt(const QPointF& pos) const
{
    KwViewState& v = *m_view3d;
    if (!pickBuffers(*this, v))
        return nullptr;
    const unsigned filter = m_selection->GetFilter();
    const KwViewPainter& pt = v.painter;
    const KwViewScene& scene = pt.scene;
    CKwMeshModel& mesh = *m_model->m_mesh;
    const auto& geometry = mesh.GeometryMeshes();
    auto admitted = [&](CKwUIEntity::Kind kind, int id) -> CKwUIEntity* {
        CKwUIEntity* e = m_model->FindGeometry(kind, id);
        return e && (e->FilterBit() & filter) ? e : nullptr;
    };
    auto distance2 = [&](int n) {
        const double dx = pt.sx[std::size_t(n)] - pos.x(), dy = pt.sy[std::size_t(n)] - pos.y();
        return dx * dx + dy * dy;
    };
    // Vertices, then nodes: the nearest visible one within reach.
    if (filter & kVertexBit) {
        CKwUIEntity* best = nullptr;
        double bestD = kVertexRadius * kVertexRadius;
        for (const auto& vx : scene.vertices) {
            const double d = distance2(vx.node);
            if (d <= bestD && pt.NodeVisible(vx.node))
                if (CKwUIEntity* e = admitted(CKwUIEntity::Vertex, geometry[std::size_t(vx.geometry)].id)) {
                    best = e;
                    bestD = d;
                }
        }
        if (best)
            return best;
    }
    if (filter & kNodeBit) {
        int best = -1;
        double bestD = kNodeRadius * kNodeRadius;
        for (int n : scene.surfaceNodes) {
            const double d = distance2(n);
            if (d <= bestD && pt.NodeVisible(n)) {
                best = n;
                bestD = d;
            }
        }
        if (best >= 0)
            return mesh.NodeEntity(mesh.Nodes()[std::size_t(best)].id);
    }
    const int px = int(std::floor(pos.x())), py = int(std::floor(pos.y()));
    if (filter & kEdgeBit) {
        int bestEdge = -1, bestD = kEdgeRadius * kEdgeRadius + 1;
        for (int dy = -kEdgeRadius; dy <= kEdgeRadius; ++dy)
            for (int dx = -kEdgeRadius; dx <= kEdgeRadius; ++dx) {
                if (!pt.pickEdges.Inside(px + dx, py + dy) || dx * dx + dy * dy >= bestD)
                    continue;
                const uint32_t id = pt.pickEdges.IdAt(px + dx, py + dy);
                if (id == 0)
                    continue;
                const int g = scene.edgeGeometry[id - 1];
                if (admitted(CKwUIEntity::Edge, geometry[std::size_t(g)].id)) {
                    bestEdge = g;
                    bestD = dx * dx + dy * dy;
                }
            }
        if (bestEdge >= 0)
            return admitted(CKwUIEntity::Edge, geometry[std::size_t(bestEdge)].id);
    }
    if (!pt.pick.Inside(px, py))
        return nullptr;
    const uint32_t id = pt.pick.IdAt(px, py);
    if (id == 0)
        return nullptr;
    const bool beam = (id & KwViewPainter::BeamTag) != 0;
    const std::size_t index = beam ? std::size_t(id & ~KwViewPainter::BeamTag) : std::size_t(id - 1);
    if (filter & kElementBit) {
        const int e = beam ? scene.beams[index].element : scene.tris[index].element;
        return mesh.ElementEntity(mesh.ElementID(std::size_t(e)));
    }
    if (beam)
        return nullptr;
    const KwViewScene::Tri& tri = scene.tris[index];
    if ((filter & kFaceBit) && tri.face >= 0)
        if (CKwUIEntity* e = admitted(CKwUIEntity::Face,
                                      geometry[std::size_t(scene.faceGeometry[std::size_t(tri.face)])].id))
            return e;
    if ((filter & kBodyBit) && tri.solid) {
        const int body = tri.face >= 0 ? geometry[std::size_t(scene.faceGeometry[std::size_t(tri.face)])].body : 1;
        if (CKwUIEntity* e = admitted(CKwUIEntity::Body, body))
            return e;
        for (CKwUIEntity* e : m_model->m_geometry)
            if (e->GetKind() == CKwUIEntity::Body && (e->FilterBit() & filter))
                return e;
    }
    return nullptr;
}

QPointF CFMView::ScreenPointOf(const CKwUIEntity* entity) const
{
    KwViewState& v = *m_view3d;
    if (!entity || !pickBuffers(*this, v))
        return kNowhere;
    const KwViewPainter& pt = v.painter;
    const KwViewScene& scene = pt.scene;
    const CKwMeshModel& mesh = *m_model->m_mesh;
    const auto& geometry = mesh.GeometryMeshes();
    const int id = entity->GetID();
    const int w = pt.pick.Width(), h = pt.pick.Height();
    auto nodePoint = [&](int n) {
        return n >= 0 && pt.NodeVisible(n) ? QPointF(pt.sx[std::size_t(n)], pt.sy[std::size_t(n)])
                                           : kNowhere;
    };
    auto triAt = [&](int x, int y) -> const KwViewScene::Tri* {
        const uint32_t i = pt.pick.IdAt(x, y);
        return i == 0 || (i & KwViewPainter::BeamTag) ? nullptr : &scene.tris[i - 1];
    };
    switch (entity->GetKind()) {
    case CKwUIEntity::Vertex:
        for (const auto& vx : scene.vertices)
            if (geometry[std::size_t(vx.geometry)].id == id)
                return nodePoint(vx.node);
        return kNowhere;
    case CKwUIEntity::Node: return nodePoint(mesh.NodeIndex(id));
    case CKwUIEntity::Edge: {
        int edge = -1;
        for (std::size_t i = 0; i < scene.edgeGeometry.size(); ++i)
            if (geometry[std::size_t(scene.edgeGeometry[i])].id == id)
                edge = int(i);
        if (edge < 0)
            return kNowhere;
        // The visible pixel of the edge nearest the middle of its visible part.
        double cx = 0, cy = 0;
        int count = 0;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                if (pt.pickEdges.IdAt(x, y) == uint32_t(edge) + 1) {
                    cx += x;
                    cy += y;
                    ++count;
                }
        if (count == 0)
            return kNowhere;
        cx /= count;
        cy /= count;
        QPointF best = kNowhere;
        double bestD = 1e300;
        for (int y = 0; y < h; ++y)
            for (int x = 0; x < w; ++x)
                if (pt.pickEdges.IdAt(x, y) == uint32_t(edge) + 1) {
                    const double d = (x - cx) * (x - cx) + (y - cy) * (y - cy);
                    if (d < bestD) {
                        bestD = d;
                        best = QPointF(x + 0.5, y + 0.5);
                    }
                }
        return best;
    }
    case CKwUIEntity::Face: {
        int face = -1;
        for (std::size_t i = 0; i < scene.faceGeometry.size(); ++i)
            if (geometry[std::size_t(scene.faceGeometry[i])].id == id)
                face = int(i);
        if (face < 0)
            return kNowhere;
        return deepestPixel(w, h, [&](int x, int y) {
            const KwViewScene::Tri* t = triAt(x, y);
            return t && t->face == face;
        });
    }
    case CKwUIEntity::Body:
        return deepestPixel(w, h, [&](int x, int y) {
            const KwViewScene::Tri* t = triAt(x, y);
            return t && t->solid;
        });
    case CKwUIEntity::Element: {
        const int e = mesh.ElementIndex(id);
        if (e < 0)
            return kNowhere;
        return deepestPixel(w, h, [&](int x, int y) {
            const uint32_t i = pt.pick.IdAt(x, y);
            if (i == 0)
                return false;
            if (i & KwViewPainter::BeamTag)
                return scene.beams[i & ~KwViewPainter::BeamTag].element == e;
            return scene.tris[i - 1].element == e;
        });
    }
    default: return kNowhere;
    }
}

long CFMView::SendPickEvent(const QList<CKwUIEntity*>& entities, bool drop)
{
    QWidget* target = m_selection->GetActiveDialog();
    if (!target)
        target = GetOpenDialog();
    if (!target || entities.isEmpty())
        return 0;
    CKwPickEvent ev(drop ? KwViewEvent::Dropped : KwViewEvent::Picked, entities);
    QCoreApplication::sendEvent(target, &ev);
    return ev.m_result;
}

void CFMView::HideBodies(unsigned bodyTypes, int hide)
{
    if (hide)
        m_hiddenBodies |= bodyTypes;
    else
        m_hiddenBodies &= ~bodyTypes;
    ++m_view3d->stamp;
    update();
}

void CFMView::SetHighlightedEntities(const QList<CKwUIEntity*>& entities)
{
    m_highlighted = entities;
    update();
}

void CFMView::SetHighlightedMesh(MeshHighlight kind, std::vector<int> ids)
{
    m_meshHighlight[kind == HighlightNodes ? 0 : 1] = std::move(ids);
    update();
}

void CFMView::ClearMeshHighlight()
{
    m_meshHighlight[0].clear();
    m_meshHighlight[1].clear();
    update();
}

void CFMView::SetResultDisplay(const KwResultDisplay& display)
{
    m_resultDisplay = display;
    KwViewState& v = *m_view3d;
    ++v.stamp;
    const bool animate = display.active && display.animate && !display.displacement.empty() &&
                         display.deformScale != 0;
    if (animate) {
        v.timer.setInterval(1000 / std::clamp(display.framesPerSecond, 1, 60));
        if (!v.timer.isActive()) {
            v.frame = 0;
            v.timer.start();
        }
    } else {
        v.timer.stop();
        v.frame = 0;
    }
    update();
}

void CFMView::SetDirectionDisplay(const KwDirectionDisplay& display)
{
    m_directionDisplay = display;
    update();
}

void CFMView::mousePressEvent(QMouseEvent* event)
{
    setFocus(Qt::MouseFocusReason);
    KwViewState& v = *m_view3d;
    v.pressAt = v.lastAt = event->position();
    v.pressButton = event->button();
    v.pressModifiers = event->modifiers();
    v.dragging = false;
    event->accept();
}

void CFMView::mouseMoveEvent(QMouseEvent* event)
{
    KwViewState& v = *m_view3d;
    const Qt::MouseButtons buttons = event->buttons();
    if (!(buttons & (Qt::LeftButton | Qt::MiddleButton))) {
        QWidget::mouseMoveEvent(event);
        return;
    }
    const QPointF d = event->position() - v.lastAt;
    if (!v.dragging && (event->position() - v.pressAt).manhattanLength() < 4)
        return;
    v.dragging = true;
    v.lastAt = event->position();
    v.autoFit = false;
    const bool pan = (buttons & Qt::MiddleButton) || (event->modifiers() & Qt::ShiftModifier);
    if (pan)
        v.camera.Pan(d.x(), d.y());
    else
        v.camera.Rotate(d.x(), d.y());
    update();
    event->accept();
}

void CFMView::mouseReleaseEvent(QMouseEvent* event)
{
    KwViewState& v = *m_view3d;
    const bool click = !v.dragging && event->button() == v.pressButton;
    v.dragging = false;
    v.pressButton = Qt::NoButton;
    if (!click || event->button() == Qt::MiddleButton) {
        event->accept();
        return;
    }
    // A click without a drag picks (left) or drops (right, Ctrl+left).
    CKwUIEntity* e = EntityAt(event->position());
    if (!e) {
        QWidget::mouseReleaseEvent(event);
        return;
    }
    const bool drop = event->button() == Qt::RightButton ||
                      (event->modifiers() & Qt::ControlModifier);
    SendPickEvent({e}, drop);
    event->accept();
}

void CFMView::wheelEvent(QWheelEvent* event)
{
    const int steps = event->angleDelta().y();
    if (steps == 0 || !prepare(m_model, size(), *m_view3d)) {
        QWidget::wheelEvent(event);
        return;
    }
    m_view3d->autoFit = false;
    // One notch (120) zooms by a fifth, about the point under the cursor.
    m_view3d->camera.ZoomAbout(event->position().x(), event->position().y(),
                               std::pow(1.2, steps / 120.0));
    update();
    event->accept();
}

void CFMView::keyPressEvent(QKeyEvent* event)
{
    // Standard views: 1 front, 2 back, 3 left, 4 right, 5 top, 6 bottom, 0 isometric; F fits.
    const int key = event->key();
    if (key >= Qt::Key_0 && key <= Qt::Key_6 && !(event->modifiers() & Qt::ControlModifier)) {
        static const KwViewCamera::StandardView views[] = {
            KwViewCamera::Isometric, KwViewCamera::Front, KwViewCamera::Back, KwViewCamera::Left,
            KwViewCamera::Right,     KwViewCamera::Top,   KwViewCamera::Bottom};
        SetStandardView(views[key - Qt::Key_0]);
        return;
    }
    if (key == Qt::Key_F) {
        FitAll();
        return;
    }
    if (key != Qt::Key_Escape) {
        QWidget::keyPressEvent(event);
        return;
    }
    QWidget* target = m_selection->GetActiveDialog();
    if (!target)
        target = GetOpenDialog();
    if (target) {
        CKwPickEvent ev(KwViewEvent::Reset, {});
        QCoreApplication::sendEvent(target, &ev);
    }
}
