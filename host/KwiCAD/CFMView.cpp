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

#include <cmath>

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QToolButton>
#include <span>

CFMView::CFMView(CKwFEModel* model, QWidget* parent)
    : QWidget(parent), m_model(model), m_frame(std::make_unique<CKwFrameWnd>()),
      m_selection(std::make_unique<CKwSelectionHandler>())
{
    setMinimumSize(320, 240);
    setFocusPolicy(Qt::ClickFocus);
    setAutoFillBackground(true);
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
    update();
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

// The block part as the view draws it: its eight corners on screen and their depth along the
// viewing direction (smaller is nearer).
struct BlockOnScreen
{
    bool valid = false;
    QPointF corner[8];
    double depth[8] = {};
    double scale = 1;
    QPointF offset;
};

// Corner order of a hexahedron: bottom ring 0-3, top ring 4-7.
const int kBlockEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
// Bottom, Top, Front, Back, Left, Right, as the sample model numbers its faces.
const int kBlockFaces[6][4] = {{0, 1, 2, 3}, {4, 5, 6, 7}, {0, 1, 5, 4},
                               {3, 2, 6, 7}, {0, 3, 7, 4}, {1, 2, 6, 5}};
// Faces turned towards the viewer: top, front and left.
const bool kFaceVisible[6] = {false, true, true, false, true, false};

QPointF project(double x, double y, double z) { return QPointF(x - 0.6 * y, -z - 0.35 * y); }
double depthOf(double x, double y, double z) { return 0.6 * x + y - 0.35 * z; }

BlockOnScreen blockOnScreen(const CKwFEModel* model, QSize size)
{
    BlockOnScreen b;
    if (!model || !model->m_mesh || model->m_mesh->Nodes().empty())
        return b;
    const CKwMeshModel& mesh = *model->m_mesh;
    // The part is the box of the solid elements; shells and beams may stand out of it, and
    // the view fits all of them.
    double lo[3] = {1e300, 1e300, 1e300}, hi[3] = {-1e300, -1e300, -1e300};
    auto grow = [&](const CKwMeshModel::Node& n) {
        const double c[3] = {n.x, n.y, n.z};
        for (int k = 0; k < 3; ++k) {
            lo[k] = qMin(lo[k], c[k]);
            hi[k] = qMax(hi[k], c[k]);
        }
    };
    for (std::size_t e = 0; e < mesh.ElementCount(); ++e)
        if (mesh.ElementType(e) == CKwMeshModel::Tet4 || mesh.ElementType(e) == CKwMeshModel::Hex8)
            for (int i : mesh.ElementNodes(e))
                grow(mesh.Nodes()[static_cast<std::size_t>(i)]);
    if (lo[0] > hi[0])
        for (const auto& n : mesh.Nodes())
            grow(n);
    double minX = 1e300, maxX = -1e300, minY = 1e300, maxY = -1e300;
    for (const auto& n : mesh.Nodes()) {
        const QPointF q = project(n.x, n.y, n.z);
        minX = qMin(minX, q.x());
        maxX = qMax(maxX, q.x());
        minY = qMin(minY, q.y());
        maxY = qMax(maxY, q.y());
    }
    const double w = qMax(1e-9, maxX - minX);
    const double h = qMax(1e-9, maxY - minY);
    b.scale = 0.75 * qMin(size.width() / w, size.height() / h);
    b.offset = QPointF((size.width() - b.scale * w) / 2 - b.scale * minX,
                       (size.height() - b.scale * h) / 2 - b.scale * minY);
    for (int i = 0; i < 8; ++i) {
        const double x = (i == 1 || i == 2 || i == 5 || i == 6) ? hi[0] : lo[0];
        const double y = (i == 2 || i == 3 || i == 6 || i == 7) ? hi[1] : lo[1];
        const double z = i >= 4 ? hi[2] : lo[2];
        b.corner[i] = b.offset + b.scale * project(x, y, z);
        b.depth[i] = depthOf(x, y, z);
    }
    b.valid = true;
    return b;
}

QPolygonF facePolygon(const BlockOnScreen& b, int face)
{
    QPolygonF poly;
    for (int c : kBlockFaces[face])
        poly << b.corner[c];
    return poly;
}

double distanceToSegment(QPointF p, QPointF a, QPointF c)
{
    const QPointF d = c - a;
    const double len2 = d.x() * d.x() + d.y() * d.y();
    double t = len2 > 0 ? ((p.x() - a.x()) * d.x() + (p.y() - a.y()) * d.y()) / len2 : 0;
    t = qBound(0.0, t, 1.0);
    const QPointF q = a + t * d - p;
    return std::sqrt(q.x() * q.x() + q.y() * q.y());
}

// Faces of an element as node positions in its connectivity (up to six faces of up to four
// nodes); beams have none.
struct ElementFaces
{
    int count = 0;
    int size[6] = {};
    int node[6][4] = {};
};

ElementFaces facesOf(int type)
{
    ElementFaces f;
    auto add = [&f](std::initializer_list<int> nodes) {
        int k = 0;
        for (int n : nodes)
            f.node[f.count][k++] = n;
        f.size[f.count++] = k;
    };
    switch (type) {
    case CKwMeshModel::Tri3: add({0, 1, 2}); break;
    case CKwMeshModel::Quad4: add({0, 1, 2, 3}); break;
    case CKwMeshModel::Tet4: add({0, 1, 2}); add({0, 1, 3}); add({1, 2, 3}); add({0, 2, 3}); break;
    case CKwMeshModel::Hex8:
        for (const auto& face : kBlockFaces)
            add({face[0], face[1], face[2], face[3]});
        break;
    default: break;
    }
    return f;
}

// Element edges as pairs of positions in the connectivity.
std::span<const int> edgesOf(int type)
{
    static const int beam[] = {0, 1};
    static const int tri[] = {0, 1, 1, 2, 2, 0};
    static const int quad[] = {0, 1, 1, 2, 2, 3, 3, 0};
    static const int tet[] = {0, 1, 1, 2, 2, 0, 0, 3, 1, 3, 2, 3};
    static const int hex[] = {0, 1, 1, 2, 2, 3, 3, 0, 4, 5, 5, 6, 6, 7, 7, 4, 0, 4, 1, 5, 2, 6, 3, 7};
    switch (type) {
    case CKwMeshModel::Beam2: return beam;
    case CKwMeshModel::Tri3: return tri;
    case CKwMeshModel::Quad4: return quad;
    case CKwMeshModel::Tet4: return tet;
    case CKwMeshModel::Hex8: return hex;
    }
    return {};
}

const unsigned kNodeBit = CKwUIEntity::FilterBitOf(CKwUIEntity::Node);
const unsigned kElementBit = CKwUIEntity::FilterBitOf(CKwUIEntity::Element);

bool isSolid(int type) { return type == CKwMeshModel::Tet4 || type == CKwMeshModel::Hex8; }

// Every node of the mesh where the view draws it, with its depth.
void projectNodes(const CKwMeshModel& mesh, const BlockOnScreen& b, std::vector<QPointF>* pos,
                  std::vector<double>* depth)
{
    pos->resize(mesh.Nodes().size());
    depth->resize(mesh.Nodes().size());
    for (std::size_t i = 0; i < mesh.Nodes().size(); ++i) {
        const auto& n = mesh.Nodes()[i];
        (*pos)[i] = b.offset + b.scale * project(n.x, n.y, n.z);
        (*depth)[i] = depthOf(n.x, n.y, n.z);
    }
}

} // namespace

void CFMView::HideBodies(unsigned bodyTypes, int hide)
{
    if (hide)
        m_hiddenBodies |= bodyTypes;
    else
        m_hiddenBodies &= ~bodyTypes;
    update();
}

void CFMView::SetHighlightedEntities(const QList<CKwUIEntity*>& entities)
{
    m_highlighted = entities;
    update();
}

CKwUIEntity* CFMView::EntityAt(const QPointF& pos) const
{
    const BlockOnScreen b = blockOnScreen(m_model, size());
    if (!b.valid)
        return nullptr;
    const unsigned filter = m_selection->GetFilter();
    auto admitted = [&](CKwUIEntity::Kind kind, int id) -> CKwUIEntity* {
        CKwUIEntity* e = m_model->FindGeometry(kind, id);
        return e && (e->FilterBit() & filter) ? e : nullptr;
    };
    // Nearest to the viewer wins among the candidates of one kind.
    CKwUIEntity* best = nullptr;
    double bestDepth = 1e300;
    for (int i = 0; i < 8; ++i) {
        const QPointF d = b.corner[i] - pos;
        if (d.x() * d.x() + d.y() * d.y() <= 49.0 && b.depth[i] < bestDepth)
            if (CKwUIEntity* e = admitted(CKwUIEntity::Vertex, i + 1)) {
                best = e;
                bestDepth = b.depth[i];
            }
    }
    if (best)
        return best;
    CKwMeshModel& mesh = *m_model->m_mesh;
    std::vector<QPointF> npos;
    std::vector<double> ndepth;
    if (filter & (kNodeBit | kElementBit))
        projectNodes(mesh, b, &npos, &ndepth);
    if (filter & kNodeBit) {
        int nearest = -1;
        for (std::size_t i = 0; i < npos.size(); ++i) {
            const QPointF d = npos[i] - pos;
            if (d.x() * d.x() + d.y() * d.y() <= 36.0 && ndepth[i] < bestDepth) {
                nearest = static_cast<int>(i);
                bestDepth = ndepth[i];
            }
        }
        if (nearest >= 0)
            return mesh.NodeEntity(mesh.Nodes()[static_cast<std::size_t>(nearest)].id);
    }
    for (int i = 0; i < 12; ++i) {
        const int a = kBlockEdges[i][0], c = kBlockEdges[i][1];
        const double depth = (b.depth[a] + b.depth[c]) / 2;
        if (distanceToSegment(pos, b.corner[a], b.corner[c]) <= 4.0 && depth < bestDepth)
            if (CKwUIEntity* e = admitted(CKwUIEntity::Edge, i + 1)) {
                best = e;
                bestDepth = depth;
            }
    }
    if (best)
        return best;
    if (filter & kElementBit) {
        // Beams by their line, the others by the faces they show; nearest to the viewer wins.
        int hit = -1;
        for (std::size_t e = 0; e < mesh.ElementCount(); ++e) {
            const int type = mesh.ElementType(e);
            if ((isSolid(type) && (m_hiddenBodies & BodySolids)) ||
                (type == CKwMeshModel::Beam2 && (m_hiddenBodies & BodyStructuralMembers)))
                continue;
            const auto conn = mesh.ElementNodes(e);
            double depth = 0;
            for (int n : conn)
                depth += ndepth[static_cast<std::size_t>(n)];
            depth /= static_cast<double>(conn.size());
            if (depth >= bestDepth)
                continue;
            bool inside = false;
            if (type == CKwMeshModel::Beam2) {
                inside = distanceToSegment(pos, npos[static_cast<std::size_t>(conn[0])],
                                           npos[static_cast<std::size_t>(conn[1])]) <= 4.0;
            } else {
                const ElementFaces faces = facesOf(type);
                for (int f = 0; f < faces.count && !inside; ++f) {
                    QPolygonF poly;
                    for (int k = 0; k < faces.size[f]; ++k)
                        poly << npos[static_cast<std::size_t>(conn[faces.node[f][k]])];
                    inside = poly.containsPoint(pos, Qt::OddEvenFill);
                }
            }
            if (inside) {
                hit = static_cast<int>(e);
                bestDepth = depth;
            }
        }
        if (hit >= 0)
            return mesh.ElementEntity(mesh.ElementID(static_cast<std::size_t>(hit)));
    }
    bool onPart = false;
    for (int f = 0; f < 6; ++f) {
        if (!kFaceVisible[f] || !facePolygon(b, f).containsPoint(pos, Qt::OddEvenFill))
            continue;
        onPart = true;
        if (CKwUIEntity* e = admitted(CKwUIEntity::Face, f + 1))
            return e;
    }
    if (onPart)
        for (CKwUIEntity* e : m_model->m_geometry)
            if (e->GetKind() == CKwUIEntity::Body && (e->FilterBit() & filter))
                return e;
    return nullptr;
}

QPointF CFMView::ScreenPointOf(const CKwUIEntity* entity) const
{
    const BlockOnScreen b = blockOnScreen(m_model, size());
    if (!b.valid || !entity)
        return QPointF(-1, -1);
    const int id = entity->GetID();
    switch (entity->GetKind()) {
    case CKwUIEntity::Vertex:
        return id >= 1 && id <= 8 ? b.corner[id - 1] : QPointF(-1, -1);
    case CKwUIEntity::Edge:
        return id >= 1 && id <= 12
                   ? (b.corner[kBlockEdges[id - 1][0]] + b.corner[kBlockEdges[id - 1][1]]) / 2
                   : QPointF(-1, -1);
    case CKwUIEntity::Face: {
        if (id < 1 || id > 6 || !kFaceVisible[id - 1])
            return QPointF(-1, -1);
        QPointF c;
        for (int k : kBlockFaces[id - 1])
            c += b.corner[k];
        // Off the centre diagonal a little, clear of the other faces' edges.
        return c / 4;
    }
    case CKwUIEntity::Body: {
        QPointF c;
        for (int k : kBlockFaces[2])
            c += b.corner[k];
        return c / 4;
    }
    case CKwUIEntity::Node: {
        const auto* n = m_model->m_mesh->FindNode(id);
        return n ? b.offset + b.scale * project(n->x, n->y, n->z) : QPointF(-1, -1);
    }
    case CKwUIEntity::Element: {
        const CKwMeshModel& mesh = *m_model->m_mesh;
        const int e = mesh.ElementIndex(id);
        if (e < 0)
            return QPointF(-1, -1);
        const auto conn = mesh.ElementNodes(static_cast<std::size_t>(e));
        QPointF c;
        for (int i : conn) {
            const auto& n = mesh.Nodes()[static_cast<std::size_t>(i)];
            c += b.offset + b.scale * project(n.x, n.y, n.z);
        }
        return c / static_cast<double>(conn.size());
    }
    default:
        return QPointF(-1, -1);
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
    CKwUIEntity* e = EntityAt(event->position());
    if (!e) {
        QWidget::mousePressEvent(event);
        return;
    }
    const bool drop = event->button() == Qt::RightButton ||
                      (event->modifiers() & Qt::ControlModifier);
    SendPickEvent({e}, drop);
    event->accept();
}

void CFMView::keyPressEvent(QKeyEvent* event)
{
    if (event->key() != Qt::Key_Escape) {
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

void CFMView::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rect(), QColor(0xf4, 0xf6, 0xf8));
    QLinearGradient g(0, 0, 0, height());
    g.setColorAt(0, QColor(0xe8, 0xee, 0xf5));
    g.setColorAt(1, QColor(0xc9, 0xd6, 0xe3));
    p.fillRect(rect(), g);
    const BlockOnScreen b = blockOnScreen(m_model, size());
    if (!b.valid) {
        p.drawText(rect(), Qt::AlignCenter, tr("No model"));
        return;
    }
    // Isometric projection of the mesh's element edges: solids thin, shells a little
    // stronger, beams thick. Hidden solids leave their outline, hidden members nothing.
    const CKwMeshModel& mesh = *m_model->m_mesh;
    std::vector<QPointF> npos;
    std::vector<double> ndepth;
    projectNodes(mesh, b, &npos, &ndepth);
    const bool solidsHidden = (m_hiddenBodies & BodySolids) != 0;
    const bool membersHidden = (m_hiddenBodies & BodyStructuralMembers) != 0;
    auto shown = [&](int type) {
        return !(isSolid(type) && solidsHidden) &&
               !(type == CKwMeshModel::Beam2 && membersHidden);
    };
    auto nodeAt = [&](std::span<const int> conn, int k) {
        return npos[static_cast<std::size_t>(conn[static_cast<std::size_t>(k)])];
    };
    const QPen solidPen(QColor(0x2c, 0x3e, 0x50), 1);
    const QPen shellPen(QColor(0x1a, 0x5a, 0x8a), 1.4);
    const QPen beamPen(QColor(0x6c, 0x34, 0x83), 3);
    for (std::size_t e = 0; e < mesh.ElementCount(); ++e) {
        const int type = mesh.ElementType(e);
        if (!shown(type))
            continue;
        p.setPen(isSolid(type) ? solidPen : type == CKwMeshModel::Beam2 ? beamPen : shellPen);
        const auto conn = mesh.ElementNodes(e);
        const auto edges = edgesOf(type);
        for (std::size_t k = 0; k + 1 < edges.size(); k += 2)
            p.drawLine(nodeAt(conn, edges[k]), nodeAt(conn, edges[k + 1]));
    }
    if (solidsHidden) {
        p.setPen(QPen(QColor(0x7f, 0x8c, 0x8d), 1, Qt::DashLine));
        for (const auto& ed : kBlockEdges)
            p.drawLine(b.corner[ed[0]], b.corner[ed[1]]);
    }
    // Nodes are drawn while the active box picks them.
    if (m_selection->GetFilter() & kNodeBit) {
        p.setPen(Qt::NoPen);
        p.setBrush(QColor(0x2c, 0x3e, 0x50));
        for (const QPointF& q : npos)
            p.drawEllipse(q, 1.8, 1.8);
    }
    // Highlighted elements and nodes (a quality check's failures, a host's set).
    const QColor mark(0xd3, 0x54, 0x00);
    if (!m_meshHighlight[1].empty()) {
        QColor fill = mark;
        fill.setAlpha(110);
        for (int id : m_meshHighlight[1]) {
            const int e = mesh.ElementIndex(id);
            if (e < 0 || !shown(mesh.ElementType(static_cast<std::size_t>(e))))
                continue;
            const int type = mesh.ElementType(static_cast<std::size_t>(e));
            const auto conn = mesh.ElementNodes(static_cast<std::size_t>(e));
            if (type == CKwMeshModel::Beam2) {
                p.setPen(QPen(mark, 5));
                p.drawLine(nodeAt(conn, 0), nodeAt(conn, 1));
                continue;
            }
            p.setPen(QPen(mark, 1.5));
            p.setBrush(fill);
            const ElementFaces faces = facesOf(type);
            for (int f = 0; f < faces.count; ++f) {
                QPolygonF poly;
                for (int k = 0; k < faces.size[f]; ++k)
                    poly << nodeAt(conn, faces.node[f][k]);
                p.drawPolygon(poly);
            }
        }
    }
    if (!m_meshHighlight[0].empty()) {
        p.setPen(Qt::NoPen);
        p.setBrush(mark);
        for (int id : m_meshHighlight[0]) {
            const int i = mesh.NodeIndex(id);
            if (i >= 0)
                p.drawEllipse(npos[static_cast<std::size_t>(i)], 4, 4);
        }
    }
    // The open editor's selection.
    const QColor pick(0xe6, 0x7e, 0x22);
    for (const CKwUIEntity* e : std::as_const(m_highlighted)) {
        const int id = e ? e->GetID() : 0;
        if (!e)
            continue;
        if (e->GetKind() == CKwUIEntity::Face && id >= 1 && id <= 6) {
            p.setPen(Qt::NoPen);
            QColor fill = pick;
            fill.setAlpha(kFaceVisible[id - 1] ? 140 : 60);
            p.setBrush(fill);
            p.drawPolygon(facePolygon(b, id - 1));
        } else if (e->GetKind() == CKwUIEntity::Edge && id >= 1 && id <= 12) {
            p.setPen(QPen(pick, 4));
            p.drawLine(b.corner[kBlockEdges[id - 1][0]], b.corner[kBlockEdges[id - 1][1]]);
        } else if (e->GetKind() == CKwUIEntity::Node || e->GetKind() == CKwUIEntity::Element) {
            const QPointF at = ScreenPointOf(e);
            p.setPen(QPen(pick, 2));
            p.setBrush(Qt::NoBrush);
            if (at.x() >= 0)
                p.drawEllipse(at, 6, 6);
        } else if (e->GetKind() == CKwUIEntity::Vertex && id >= 1 && id <= 8) {
            p.setPen(Qt::NoPen);
            p.setBrush(pick);
            p.drawEllipse(b.corner[id - 1], 5, 5);
        }
    }
    if (m_solverRunning) {
        p.setPen(QColor(0xc0, 0x39, 0x2b));
        p.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignTop | Qt::AlignRight,
                   tr("Solver running"));
    }
}
