#include "CFMView.h"

#include "CKwFEModel.h"
#include "CKwFrameWnd.h"
#include "CKwMeshModel.h"
#include "CKwPlot.h"
#include "CKwSelectionHandler.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QPainterPath>
#include <QTimer>
#include <QToolButton>

CFMView::CFMView(CKwFEModel* model, QWidget* parent)
    : QWidget(parent), m_model(model), m_frame(std::make_unique<CKwFrameWnd>()),
      m_selection(std::make_unique<CKwSelectionHandler>())
{
    setMinimumSize(320, 240);
    setAutoFillBackground(true);
}

CFMView::~CFMView()
{
    delete m_resultToolbar.data();
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
    return (convert && units) ? units->ToInternalValue(v, unitType) : v;
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
    if (!m_model || !m_model->m_mesh) {
        p.drawText(rect(), Qt::AlignCenter, tr("No model"));
        return;
    }
    // Isometric projection of the mesh's element edges.
    const auto& nodes = m_model->m_mesh->Nodes();
    double minX = 1e300, maxX = -1e300, minY = 1e300, maxY = -1e300;
    auto project = [](const CKwMeshModel::Node& n) {
        return QPointF(n.x - 0.6 * n.y, -n.z - 0.35 * n.y);
    };
    for (const auto& n : nodes) {
        const QPointF q = project(n);
        minX = qMin(minX, q.x());
        maxX = qMax(maxX, q.x());
        minY = qMin(minY, q.y());
        maxY = qMax(maxY, q.y());
    }
    const double w = qMax(1e-9, maxX - minX);
    const double h = qMax(1e-9, maxY - minY);
    const double s = 0.75 * qMin(width() / w, height() / h);
    const QPointF off((width() - s * w) / 2 - s * minX, (height() - s * h) / 2 - s * minY);
    p.setPen(QPen(QColor(0x2c, 0x3e, 0x50), 1));
    p.setBrush(QColor(0x9c, 0xb8, 0xd3, 120));
    static const int kEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                      {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
    for (const auto& e : m_model->m_mesh->Elements()) {
        if (e.nodes.size() != 8)
            continue;
        for (const auto& ed : kEdges) {
            const auto* a = m_model->m_mesh->FindNode(e.nodes[static_cast<std::size_t>(ed[0])]);
            const auto* b = m_model->m_mesh->FindNode(e.nodes[static_cast<std::size_t>(ed[1])]);
            if (a && b)
                p.drawLine(off + s * project(*a), off + s * project(*b));
        }
    }
    if (m_solverRunning) {
        p.setPen(QColor(0xc0, 0x39, 0x2b));
        p.drawText(rect().adjusted(8, 8, -8, -8), Qt::AlignTop | Qt::AlignRight,
                   tr("Solver running"));
    }
}
