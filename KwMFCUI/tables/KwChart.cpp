#include "KwChart.h"

#include "CKwNonlinearDialogBase.h"

#include <QFile>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <algorithm>
#include <cmath>
#include <limits>

namespace {

// Space between the plot's frame and the legend, and right of the legend.
constexpr int kLegendGap = 10;

const QColor kPalette[] = {QColor(0x1f, 0x5f, 0xbf), QColor(0xd0, 0x40, 0x20),
                           QColor(0x20, 0x90, 0x40), QColor(0x80, 0x40, 0xb0),
                           QColor(0xc0, 0x90, 0x00), QColor(0x20, 0x90, 0xa0)};

QString caption(const QString& title, const QString& unit)
{
    return unit.isEmpty() ? title : QStringLiteral("%1 (%2)").arg(title, unit);
}

bool isSorted(const std::vector<double>& x)
{
    for (std::size_t i = 1; i < x.size(); ++i)
        if (!(x[i - 1] <= x[i]))
            return false;
    return true;
}

// Indices [lo, hi) of the points of a series sorted by x that lie in [x0, x1], widened by one
// on each side so lines leave the plot at its edges.
void visibleSpan(const std::vector<double>& x, double x0, double x1, std::size_t* lo,
                 std::size_t* hi)
{
    auto a = std::lower_bound(x.begin(), x.end(), x0);
    auto b = std::upper_bound(a, x.end(), x1);
    *lo = std::size_t(a - x.begin());
    *hi = std::size_t(b - x.begin());
    if (*lo > 0)
        --*lo;
    if (*hi < x.size())
        ++*hi;
}

} // namespace

KwChart::KwChart(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setBackgroundRole(QPalette::Base);
}

int KwChart::AddSeries(const QString& name, QColor color)
{
    Series s;
    s.name = name;
    s.color = color.isValid() ? color : kPalette[m_series.size() % std::size(kPalette)];
    m_series.push_back(std::move(s));
    update();
    return int(m_series.size()) - 1;
}

void KwChart::SetSeriesData(int i, std::vector<double> x, std::vector<double> y)
{
    if (i < 0 || i >= SeriesCount())
        return;
    Series& s = m_series[std::size_t(i)];
    const std::size_t n = std::min(x.size(), y.size());
    x.resize(n);
    y.resize(n);
    s.x = std::move(x);
    s.y = std::move(y);
    s.sortedX = isSorted(s.x);
    m_rangeValid = false;
    update();
}

void KwChart::AppendPoint(int i, double x, double y)
{
    if (i < 0 || i >= SeriesCount())
        return;
    Series& s = m_series[std::size_t(i)];
    if (!s.x.empty() && !(s.x.back() <= x))
        s.sortedX = false;
    s.x.push_back(x);
    s.y.push_back(y);
    if (m_rangeValid && std::isfinite(x) && std::isfinite(y)) {
        if (m_range.isNull() && m_range.width() == 0 && m_range.height() == 0 &&
            m_range.topLeft() == QPointF())
            m_rangeValid = false;
        else
            m_range = m_range.united(QRectF(x, y, 0, 0)).normalized();
    }
    update();
}

void KwChart::SetSeriesMarkers(int i, bool on)
{
    if (i >= 0 && i < SeriesCount())
        m_series[std::size_t(i)].markers = on;
    update();
}

void KwChart::SetSeriesName(int i, const QString& name)
{
    if (i >= 0 && i < SeriesCount())
        m_series[std::size_t(i)].name = name;
    update();
}

void KwChart::ClearSeries()
{
    m_series.clear();
    m_rangeValid = false;
    m_readout.clear();
    update();
}

void KwChart::ClearPoints()
{
    for (Series& s : m_series) {
        s.x.clear();
        s.y.clear();
        s.sortedX = true;
    }
    m_rangeValid = false;
    m_readout.clear();
    update();
}

void KwChart::SetAxisTitles(const QString& xTitle, const QString& xUnit, const QString& yTitle,
                            const QString& yUnit)
{
    m_xTitle = xTitle;
    m_xUnit = xUnit;
    m_yTitle = yTitle;
    m_yUnit = yUnit;
    update();
}

QString KwChart::XAxisCaption() const { return caption(m_xTitle, m_xUnit); }
QString KwChart::YAxisCaption() const { return caption(m_yTitle, m_yUnit); }

QRectF KwChart::DataRange() const
{
    if (m_rangeValid)
        return m_range;
    double x0 = std::numeric_limits<double>::infinity(), x1 = -x0, y0 = x0, y1 = -x0;
    for (const Series& s : m_series)
        for (std::size_t i = 0; i < s.x.size(); ++i) {
            const double x = s.x[i], y = s.y[i];
            if (!std::isfinite(x) || !std::isfinite(y))
                continue;
            x0 = std::min(x0, x);
            x1 = std::max(x1, x);
            y0 = std::min(y0, y);
            y1 = std::max(y1, y);
        }
    m_range = x0 <= x1 ? QRectF(QPointF(x0, y0), QPointF(x1, y1)) : QRectF();
    m_rangeValid = x0 <= x1;
    return m_range;
}

QRectF KwChart::VisibleRange() const
{
    if (m_zoomed)
        return m_zoom;
    QRectF r = DataRange();
    if (!m_rangeValid)
        return QRectF(0, 0, 1, 1);
    // Values: a little room below the lowest point and more above the highest, so the top
    // of a curve stands clear of the frame. Steps: a small margin each side.
    auto widen = [](double& lo, double& hi, double below, double above) {
        if (hi - lo <= 0) {
            const double d = lo == 0 ? 1.0 : std::fabs(lo) * 0.1;
            lo -= d;
            hi += d;
        } else {
            const double span = hi - lo;
            lo -= span * below;
            hi += span * above;
        }
    };
    double x0 = r.left(), x1 = r.right(), y0 = r.top(), y1 = r.bottom();
    widen(x0, x1, 0.04, 0.04);
    widen(y0, y1, kFootroom, kHeadroom);
    return QRectF(QPointF(x0, y0), QPointF(x1, y1));
}

void KwChart::ZoomTo(const QRectF& range)
{
    const QRectF r = range.normalized();
    if (!(r.width() > 0) || !(r.height() > 0) || !std::isfinite(r.width()) ||
        !std::isfinite(r.height()))
        return;
    m_zoom = r;
    m_zoomed = true;
    update();
}

void KwChart::ResetZoom()
{
    m_zoomed = false;
    update();
}

bool KwChart::legendShown() const
{
    if (!m_legend)
        return false;
    for (const Series& s : m_series)
        if (!s.name.isEmpty())
            return true;
    return false;
}

int KwChart::legendWidth() const
{
    const QFontMetrics fm(font());
    int w = 0;
    for (const Series& s : m_series)
        w = qMax(w, fm.horizontalAdvance(s.name));
    // Swatch and padding; never more than a third of the widget, longer names are elided.
    return qMin(w + 40, qMax(60, width() / 3));
}

QRect KwChart::PlotRect() const
{
    const QFontMetrics fm(font());
    const int left = fm.horizontalAdvance(QStringLiteral("-0.000000e+00")) * 7 / 10 +
                     fm.height() + 10;
    const int bottom = 2 * fm.height() + 12;
    const int top = fm.height() + 8;
    const int right = legendShown() ? legendWidth() + 2 * kLegendGap : 14;
    return QRect(left, top, qMax(10, width() - left - right), qMax(10, height() - top - bottom));
}

QRect KwChart::LegendRect() const
{
    if (!legendShown())
        return QRect();
    const QFontMetrics fm(font());
    const QRect area = PlotRect();
    const int h = int(m_series.size()) * (fm.height() + 2) + 6;
    return QRect(area.right() + 1 + kLegendGap, area.top(), legendWidth(), h);
}

QPointF KwChart::PointPixel(int series, int index) const
{
    if (series < 0 || series >= SeriesCount())
        return {};
    const Series& s = m_series[std::size_t(series)];
    if (index < 0 || std::size_t(index) >= s.x.size())
        return {};
    return toPixel(s.x[std::size_t(index)], s.y[std::size_t(index)], VisibleRange(), PlotRect());
}

QPointF KwChart::toPixel(double x, double y, const QRectF& range, const QRect& area) const
{
    const double px = area.left() + (x - range.left()) / range.width() * area.width();
    const double py = area.bottom() - (y - range.top()) / range.height() * area.height();
    return {px, py};
}

std::vector<double> KwChart::Ticks(double lo, double hi, int wanted)
{
    std::vector<double> ticks;
    if (!(hi > lo) || !std::isfinite(lo) || !std::isfinite(hi) || wanted < 1)
        return ticks;
    const double raw = (hi - lo) / wanted;
    const double mag = std::pow(10.0, std::floor(std::log10(raw)));
    // The round step (1, 2 or 5 times a power of ten) nearest to the wanted one.
    double step = mag;
    for (double f : {2.0, 5.0, 10.0})
        if (std::fabs(std::log(f * mag / raw)) < std::fabs(std::log(step / raw)))
            step = f * mag;
    const double first = std::ceil(lo / step) * step;
    for (int i = 0; i < 1000; ++i) {
        const double v = first + i * step;
        if (v > hi + step * 1e-9)
            break;
        ticks.push_back(std::fabs(v) < step * 1e-9 ? 0.0 : v);
    }
    return ticks;
}

void KwChart::SetDecadeAxes(bool x, bool y)
{
    m_decadeX = x;
    m_decadeY = y;
    update();
}

QString KwChart::DecadeText(double v)
{
    const double value = std::pow(10.0, v);
    // Whole decades far from one read as powers of ten, the others as plain numbers.
    if (v == std::round(v) && (v >= 5 || v <= -4))
        return QStringLiteral("1e%1").arg(int(std::round(v)));
    return CKwNonlinearDialogBase::FormatValue(QString::number(value, 'g', 6).toDouble());
}

QString KwChart::TickText(double v, double step)
{
    if (v == 0)
        return QStringLiteral("0");
    const double a = std::fabs(v);
    if (a >= 1e6 || a < 1e-4 || step < 1e-6)
        return CKwNonlinearDialogBase::FormatValue(QString::number(v, 'g', 6).toDouble());
    const int decimals = step >= 1 ? 0 : int(std::ceil(-std::log10(step) - 1e-9));
    return QString::number(v, 'f', qMin(decimals, 8));
}

void KwChart::drawSeries(QPainter& p, const Series& s, const QRectF& range, const QRect& area)
{
    const std::size_t n = s.x.size();
    if (!n)
        return;
    std::size_t lo = 0, hi = n;
    if (s.sortedX)
        visibleSpan(s.x, range.left(), range.right(), &lo, &hi);
    if (hi <= lo)
        return;
    p.setPen(QPen(s.color, 1.5));
    const int w = area.width();
    if (hi - lo <= std::size_t(2 * w)) {
        // Few points: every point as it is, smoothed.
        p.setRenderHint(QPainter::Antialiasing, true);
        QPolygonF line;
        line.reserve(qsizetype(hi - lo));
        std::vector<QPointF> marks;
        for (std::size_t i = lo; i < hi; ++i) {
            if (!std::isfinite(s.x[i]) || !std::isfinite(s.y[i])) {
                // A gap: draw what came before and start again.
                if (line.size() > 1)
                    p.drawPolyline(line);
                m_lastSegments += int(qMax<qsizetype>(0, line.size() - 1));
                line.clear();
                continue;
            }
            const QPointF pt = toPixel(s.x[i], s.y[i], range, area);
            line << pt;
            if (s.markers)
                marks.push_back(pt);
        }
        if (line.size() > 1)
            p.drawPolyline(line);
        else if (line.size() == 1)
            marks.push_back(line.front());
        m_lastSegments += int(qMax<qsizetype>(0, line.size() - 1));
        if (marks.size() <= 400)
            for (const QPointF& m : marks)
                p.fillRect(QRectF(m.x() - 2.5, m.y() - 2.5, 5, 5), s.color);
        return;
    }
    // Many points: the lowest and highest point of every pixel column, joined column to
    // column by the last point of one and the first of the next.
    p.setRenderHint(QPainter::Antialiasing, false);
    struct Column
    {
        double min, max, first, last;
        bool used;
    };
    std::vector<Column> cols(std::size_t(w) + 2, Column{0, 0, 0, 0, false});
    const double scale = w / range.width();
    const double x0 = range.left();
    const auto columnOf = [&](double x) {
        const double c = std::floor((x - x0) * scale) + 1;
        return std::size_t(c < 0 ? 0 : (c > w + 1 ? w + 1 : c));
    };
    const auto take = [](Column& col, double y) {
        if (!col.used) {
            col = Column{y, y, y, y, true};
        } else {
            col.min = y < col.min ? y : col.min;
            col.max = y > col.max ? y : col.max;
            col.last = y;
        }
    };
    if (s.sortedX) {
        // Ascending x: the points of a column follow one another, so each column is one run
        // found by comparing x with the column's right edge, and its y values are reduced
        // in a tight loop rather than placed point by point.
        std::size_t i = lo;
        while (i < hi) {
            const double x = s.x[i];
            if (!std::isfinite(x)) {
                ++i;
                continue;
            }
            const std::size_t c = columnOf(x);
            const double edge = c > std::size_t(w) ? std::numeric_limits<double>::infinity()
                                                   : x0 + double(c) / scale;
            std::size_t j = i + 1;
            while (j < hi && s.x[j] < edge)
                ++j;
            Column& col = cols[c];
            for (std::size_t k = i; k < j; ++k)
                if (std::isfinite(s.y[k]))
                    take(col, s.y[k]);
            i = j;
        }
    } else {
        for (std::size_t i = lo; i < hi; ++i) {
            const double x = s.x[i], y = s.y[i];
            if (std::isfinite(x) && std::isfinite(y))
                take(cols[columnOf(x)], y);
        }
    }
    const double yScale = area.height() / range.height();
    auto py = [&](double y) { return area.bottom() - (y - range.top()) * yScale; };
    std::vector<QLineF> lines;
    lines.reserve(cols.size() * 2);
    bool have = false;
    double prevX = 0, prevY = 0;
    for (std::size_t c = 0; c < cols.size(); ++c) {
        const Column& col = cols[c];
        if (!col.used)
            continue;
        const double px = area.left() + double(c) - 0.5;
        if (have)
            lines.emplace_back(prevX, prevY, px, py(col.first));
        lines.emplace_back(px, py(col.min), px, py(col.max));
        have = true;
        prevX = px;
        prevY = py(col.last);
    }
    p.drawLines(lines.data(), int(lines.size()));
    m_lastSegments += int(lines.size());
}

void KwChart::paintEvent(QPaintEvent*)
{
    QPainter p(this);
    p.fillRect(rect(), palette().color(QPalette::Base));
    const QRect area = PlotRect();
    const QRectF range = VisibleRange();
    const QFontMetrics fm(font());
    const QColor text = palette().color(QPalette::Text);
    m_lastSegments = 0;

    // Grid and ticks.
    p.setPen(QPen(QColor(0xd8, 0xd8, 0xd8), 1));
    // On a decade axis the ticks are the whole decades within the range; over a shorter span
    // 1, 2 and 5 times a decade, and then every digit, until two ticks fit.
    auto ticks = [](bool decades, double lo, double hi, int wanted) {
        std::vector<double> t;
        if (!decades || !std::isfinite(lo) || !std::isfinite(hi) || !(hi > lo) || hi - lo > 60)
            return Ticks(lo, hi, wanted);
        static const std::vector<double> kMantissas[] = {
            {1}, {1, 2, 5}, {1, 2, 3, 4, 5, 6, 7, 8, 9}};
        for (const std::vector<double>& mantissas : kMantissas) {
            t.clear();
            for (double d = std::floor(lo); d <= std::ceil(hi); d += 1)
                for (double m : mantissas) {
                    const double v = d + std::log10(m);
                    if (v >= lo - 1e-12 && v <= hi + 1e-12)
                        t.push_back(v);
                }
            if (t.size() >= 2)
                return t;
        }
        return Ticks(lo, hi, wanted);
    };
    const std::vector<double> xt =
        ticks(m_decadeX, range.left(), range.right(), qMax(2, area.width() / 90));
    const std::vector<double> yt =
        ticks(m_decadeY, range.top(), range.bottom(), qMax(2, area.height() / 45));
    for (double v : xt) {
        const double x = toPixel(v, 0, range, area).x();
        p.drawLine(QPointF(x, area.top()), QPointF(x, area.bottom()));
    }
    for (double v : yt) {
        const double y = toPixel(0, v, range, area).y();
        p.drawLine(QPointF(area.left(), y), QPointF(area.right(), y));
    }
    p.setPen(text);
    const double xStep = xt.size() > 1 ? xt[1] - xt[0] : 1;
    const double yStep = yt.size() > 1 ? yt[1] - yt[0] : 1;
    for (double v : xt) {
        const double x = toPixel(v, 0, range, area).x();
        const QString t = m_decadeX ? DecadeText(v) : TickText(v, xStep);
        p.drawText(QRectF(x - 60, area.bottom() + 3, 120, fm.height()), Qt::AlignHCenter, t);
    }
    for (double v : yt) {
        const double y = toPixel(0, v, range, area).y();
        const QString t = m_decadeY ? DecadeText(v) : TickText(v, yStep);
        p.drawText(QRectF(0, y - fm.height() / 2.0, area.left() - 5, fm.height()),
                   Qt::AlignRight | Qt::AlignVCenter, t);
    }
    // Axis captions.
    p.drawText(QRect(area.left(), height() - fm.height() - 4, area.width(), fm.height()),
               Qt::AlignHCenter, XAxisCaption());
    p.save();
    p.translate(fm.height() / 2.0 + 2, area.center().y());
    p.rotate(-90);
    p.drawText(QRectF(-area.height() / 2.0, -fm.height() / 2.0, area.height(), fm.height()),
               Qt::AlignHCenter, YAxisCaption());
    p.restore();

    // Series, clipped to the plotting area.
    bool anyPoint = false;
    p.save();
    p.setClipRect(area.adjusted(-1, -1, 1, 1));
    p.setRenderHint(QPainter::Antialiasing, false);
    for (const Series& s : m_series) {
        anyPoint = anyPoint || !s.x.empty();
        drawSeries(p, s, range, area);
    }
    p.restore();
    p.setPen(QPen(text, 1));
    p.drawRect(area);
    if (!anyPoint && !m_emptyText.isEmpty())
        p.drawText(area, Qt::AlignCenter | Qt::TextWordWrap, m_emptyText);

    // Legend, right of the plot.
    const QRect box = LegendRect();
    if (!box.isEmpty()) {
        p.fillRect(box, palette().color(QPalette::Base));
        p.drawRect(box);
        int y = box.top() + 4;
        const int textWidth = box.width() - 34;
        for (const Series& s : m_series) {
            p.fillRect(QRect(box.left() + 6, y + fm.height() / 2 - 2, 16, 4), s.color);
            p.drawText(QRect(box.left() + 28, y, textWidth, fm.height()), Qt::AlignLeft,
                       fm.elidedText(s.name, Qt::ElideRight, textWidth));
            y += fm.height() + 2;
        }
    }
    // Readout of the point under the cursor, top left above the plot.
    if (!m_readout.isEmpty())
        p.drawText(QRect(area.left(), 2, area.width(), fm.height()), Qt::AlignLeft, m_readout);
    // The zoom box being dragged.
    if (m_dragging) {
        p.setPen(QPen(text, 1, Qt::DashLine));
        p.drawRect(QRect(m_dragFrom, m_dragTo).normalized());
    }
}

bool KwChart::PointAt(const QPointF& pos, int* series, int* index) const
{
    const QRect area = PlotRect();
    if (!area.adjusted(-4, -4, 4, 4).contains(pos.toPoint()))
        return false;
    const QRectF range = VisibleRange();
    const double tol = 6;
    double best = tol * tol;
    bool found = false;
    const double dx = tol / area.width() * range.width();
    const double cx = range.left() + (pos.x() - area.left()) / area.width() * range.width();
    for (int si = 0; si < SeriesCount(); ++si) {
        const Series& s = m_series[std::size_t(si)];
        std::size_t lo = 0, hi = s.x.size();
        if (s.sortedX) {
            lo = std::size_t(std::lower_bound(s.x.begin(), s.x.end(), cx - dx) - s.x.begin());
            hi = std::size_t(std::upper_bound(s.x.begin(), s.x.end(), cx + dx) - s.x.begin());
        }
        for (std::size_t i = lo; i < hi; ++i) {
            if (!std::isfinite(s.x[i]) || !std::isfinite(s.y[i]))
                continue;
            const QPointF pt = toPixel(s.x[i], s.y[i], range, area);
            const double d = (pt.x() - pos.x()) * (pt.x() - pos.x()) +
                             (pt.y() - pos.y()) * (pt.y() - pos.y());
            if (d <= best) {
                best = d;
                found = true;
                if (series)
                    *series = si;
                if (index)
                    *index = int(i);
            }
        }
    }
    return found;
}

void KwChart::updateReadout(const QPointF& pos)
{
    int s = -1, i = -1;
    QString r;
    if (PointAt(pos, &s, &i)) {
        const Series& se = m_series[std::size_t(s)];
        r = QStringLiteral("%1: %2 = %3, %4 = %5")
                .arg(se.name, m_xTitle.isEmpty() ? QStringLiteral("x") : m_xTitle,
                     CKwNonlinearDialogBase::FormatValue(
                         m_decadeX ? std::pow(10.0, se.x[std::size_t(i)]) : se.x[std::size_t(i)]),
                     m_yTitle.isEmpty() ? QStringLiteral("y") : m_yTitle,
                     CKwNonlinearDialogBase::FormatValue(
                         m_decadeY ? std::pow(10.0, se.y[std::size_t(i)]) : se.y[std::size_t(i)]));
    }
    if (r != m_readout) {
        m_readout = r;
        update();
    }
}

void KwChart::mousePressEvent(QMouseEvent* e)
{
    if (e->button() == Qt::RightButton) {
        ResetZoom();
        return;
    }
    if (e->button() == Qt::LeftButton && PlotRect().contains(e->position().toPoint())) {
        m_dragging = true;
        m_dragFrom = m_dragTo = e->position().toPoint();
    }
}

void KwChart::mouseMoveEvent(QMouseEvent* e)
{
    if (m_dragging) {
        m_dragTo = e->position().toPoint();
        update();
    }
    updateReadout(e->position());
}

void KwChart::mouseReleaseEvent(QMouseEvent* e)
{
    if (!m_dragging || e->button() != Qt::LeftButton)
        return;
    m_dragging = false;
    const QRect box = QRect(m_dragFrom, e->position().toPoint()).normalized();
    update();
    if (box.width() < 4 || box.height() < 4)
        return;
    const QRect area = PlotRect();
    const QRectF range = VisibleRange();
    auto toData = [&](QPointF pt) {
        return QPointF(range.left() + (pt.x() - area.left()) / area.width() * range.width(),
                       range.top() + (area.bottom() - pt.y()) / area.height() * range.height());
    };
    ZoomTo(QRectF(toData(box.bottomLeft()), toData(box.topRight())));
}

void KwChart::mouseDoubleClickEvent(QMouseEvent*)
{
    ResetZoom();
}

void KwChart::leaveEvent(QEvent*)
{
    if (!m_readout.isEmpty()) {
        m_readout.clear();
        update();
    }
}

bool KwChart::ExportPng(const QString& path)
{
    return grab().save(path, "PNG");
}

QByteArray KwChart::CsvText() const
{
    QByteArray out("series,x,y\n");
    for (const Series& s : m_series) {
        QString name = s.name;
        if (name.contains(QLatin1Char(',')) || name.contains(QLatin1Char('"')) ||
            name.contains(QLatin1Char('\n'))) {
            name.replace(QLatin1String("\""), QLatin1String("\"\""));
            name = QLatin1Char('"') + name + QLatin1Char('"');
        }
        const QByteArray n = name.toUtf8();
        for (std::size_t i = 0; i < s.x.size(); ++i) {
            out += n;
            out += ',';
            out += CKwNonlinearDialogBase::FormatValue(s.x[i]).toLatin1();
            out += ',';
            out += CKwNonlinearDialogBase::FormatValue(s.y[i]).toLatin1();
            out += '\n';
        }
    }
    return out;
}

bool KwChart::ExportCsv(const QString& path) const
{
    QFile f(path);
    if (!f.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    return f.write(CsvText()) >= 0;
}
