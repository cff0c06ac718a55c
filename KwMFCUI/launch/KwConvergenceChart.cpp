#include "KwConvergenceChart.h"

#include <QPainter>
#include <QPainterPath>
#include <algorithm>
#include <cmath>

namespace {

// A step of 1, 2 or 5 times a power of ten that cuts `span` into about `wanted` parts.
double niceStep(double span, int wanted)
{
    if (!(span > 0) || !std::isfinite(span))
        return 1.0;
    const double raw = span / std::max(1, wanted);
    const double power = std::pow(10.0, std::floor(std::log10(raw)));
    const double f = raw / power;
    const double m = f <= 1.0 ? 1.0 : f <= 2.0 ? 2.0 : f <= 5.0 ? 5.0 : 10.0;
    return m * power;
}

QString tickText(double v, double step)
{
    if (std::abs(v) < step * 1e-9)
        v = 0.0;
    const double a = std::abs(v);
    if (a != 0.0 && (a >= 1e6 || a < 1e-3))
        return QString::number(v, 'E', 2);
    return QString::number(v, 'g', 6);
}

// Values a chart axis can span without overflowing its arithmetic.
bool drawable(double v) { return std::isfinite(v) && std::abs(v) <= 1e300; }

} // namespace

KwConvergenceChart::KwConvergenceChart(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setProperty("kwData", true);
}

void KwConvergenceChart::SetPoint(int step, double value)
{
    if (!drawable(value))
        return;
    auto it = std::lower_bound(m_points.begin(), m_points.end(), step,
                               [](const Point& p, int s) { return p.step < s; });
    if (it != m_points.end() && it->step == step)
        it->value = value;
    else
        m_points.insert(it, Point{step, value});
    update();
}

void KwConvergenceChart::SetPoints(std::vector<Point> points)
{
    points.erase(std::remove_if(points.begin(), points.end(),
                                [](const Point& p) { return !drawable(p.value); }),
                 points.end());
    std::stable_sort(points.begin(), points.end(),
                     [](const Point& a, const Point& b) { return a.step < b.step; });
    // One value per step: the last one given wins, as with SetPoint.
    std::vector<Point> unique;
    for (const Point& p : points) {
        if (!unique.empty() && unique.back().step == p.step)
            unique.back() = p;
        else
            unique.push_back(p);
    }
    m_points = std::move(unique);
    update();
}

void KwConvergenceChart::Clear()
{
    m_points.clear();
    update();
}

void KwConvergenceChart::SetResult(const QString& name, const QString& units)
{
    m_name = name;
    m_units = units;
    update();
}

void KwConvergenceChart::SetCaptions(const QString& stepAxis, const QString& valueAxis,
                                     const QString& empty)
{
    m_stepAxis = stepAxis;
    m_valueAxis = valueAxis;
    m_emptyText = empty;
    update();
}

QString KwConvergenceChart::valueAxisCaption() const
{
    const QString name = m_name.isEmpty() ? m_valueAxis : m_name;
    return m_units.isEmpty() ? name : QStringLiteral("%1 [%2]").arg(name, m_units);
}

void KwConvergenceChart::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.setRenderHint(QPainter::Antialiasing);
    p.fillRect(rect(), palette().base());
    const QFontMetrics fm = p.fontMetrics();
    const QColor ink = palette().color(QPalette::Text);

    // Value range with a little room above and below; a flat series gets a band around it.
    double lo = 0.0, hi = 1.0;
    qint64 firstStep = 1, lastStep = 1;
    if (!m_points.empty()) {
        lo = hi = m_points.front().value;
        for (const Point& pt : m_points) {
            lo = std::min(lo, pt.value);
            hi = std::max(hi, pt.value);
        }
        firstStep = m_points.front().step;
        lastStep = m_points.back().step;
    }
    if (hi - lo <= std::abs(hi) * 1e-12) {
        const double pad = hi == 0.0 ? 1.0 : std::abs(hi) * 0.1;
        lo -= pad;
        hi += pad;
    }
    const double yStep = niceStep(hi - lo, 5);
    lo = std::floor(lo / yStep) * yStep;
    hi = std::ceil(hi / yStep) * yStep;
    const int yTicks = int(std::clamp(std::round((hi - lo) / yStep), 1.0, 50.0));
    if (lastStep <= firstStep)
        lastStep = firstStep + 1;
    const qint64 xStep = std::max<qint64>(1, qint64(niceStep(double(lastStep - firstStep), 8)));
    const qint64 xTicks = std::min<qint64>(50, (lastStep - firstStep) / xStep);

    // Room for the tick texts on the left and the captions around the plot area.
    int tickWidth = 0;
    for (int i = 0; i <= yTicks; ++i)
        tickWidth = std::max(tickWidth, fm.horizontalAdvance(tickText(lo + i * yStep, yStep)));
    const int line = fm.height();
    const QRect area = rect().adjusted(line + tickWidth + 14, line / 2 + 6, -16,
                                       -(2 * line + 12));
    if (area.width() < 20 || area.height() < 20)
        return;

    auto xOf = [&](double step) {
        return area.left() + (step - double(firstStep)) / double(lastStep - firstStep) * area.width();
    };
    auto yOf = [&](double v) { return area.bottom() - (v - lo) / (hi - lo) * area.height(); };

    // Grid and ticks.
    QColor grid = ink;
    grid.setAlpha(40);
    p.setPen(ink);
    for (int i = 0; i <= yTicks; ++i) {
        const double v = lo + i * yStep;
        const double y = yOf(v);
        p.setPen(grid);
        p.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
        p.setPen(ink);
        const QString t = tickText(v, yStep);
        p.drawText(QRectF(area.left() - tickWidth - 8, y - line / 2.0, tickWidth + 2, line),
                   Qt::AlignRight | Qt::AlignVCenter, t);
    }
    for (qint64 i = 0; i <= xTicks; ++i) {
        const qint64 s = firstStep + i * xStep;
        const double x = xOf(s);
        p.setPen(grid);
        p.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
        p.setPen(ink);
        p.drawText(QRectF(x - 40, area.bottom() + 4, 80, line), Qt::AlignHCenter | Qt::AlignTop,
                   QString::number(s));
    }

    // Axes.
    p.setPen(QPen(ink, 1.2));
    p.drawLine(area.bottomLeft(), area.bottomRight());
    p.drawLine(area.bottomLeft(), area.topLeft());

    // Captions: the step axis below, the value axis turned along the left edge.
    p.drawText(QRect(area.left(), area.bottom() + line + 8, area.width(), line),
               Qt::AlignHCenter | Qt::AlignTop, m_stepAxis);
    p.save();
    p.translate(2, area.center().y());
    p.rotate(-90);
    p.drawText(QRect(-area.height() / 2, 0, area.height(), line), Qt::AlignCenter,
               fm.elidedText(valueAxisCaption(), Qt::ElideRight, area.height()));
    p.restore();

    if (m_points.empty()) {
        p.setPen(grid.darker(300));
        p.drawText(area, Qt::AlignCenter, m_emptyText);
        return;
    }

    // The series.
    const QColor series(0x1f, 0x5f, 0xbf);
    QPainterPath path;
    for (std::size_t i = 0; i < m_points.size(); ++i) {
        const QPointF pt(xOf(m_points[i].step), yOf(m_points[i].value));
        if (i == 0)
            path.moveTo(pt);
        else
            path.lineTo(pt);
    }
    p.setPen(QPen(series, 2));
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
    p.setBrush(palette().base());
    for (const Point& pt : m_points)
        p.drawEllipse(QPointF(xOf(pt.step), yOf(pt.value)), 3.5, 3.5);
}
