#include "KwConvergenceChart.h"

#include <algorithm>
#include <cmath>

namespace {

// Values a chart axis can span without overflowing its arithmetic.
bool drawable(double v) { return std::isfinite(v) && std::abs(v) <= 1e300; }

} // namespace

KwConvergenceChart::KwConvergenceChart(QWidget* parent) : KwChart(parent)
{
    setProperty("kwData", true);
    AddSeries(QString());
    SetSeriesMarkers(0, true);
    SetLegendVisible(false);
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
    syncSeries();
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
    syncSeries();
}

void KwConvergenceChart::Clear()
{
    m_points.clear();
    syncSeries();
}

void KwConvergenceChart::SetResult(const QString& name, const QString& units)
{
    m_name = name;
    m_units = units;
    syncCaptions();
}

void KwConvergenceChart::SetCaptions(const QString& stepAxis, const QString& valueAxis,
                                     const QString& empty)
{
    m_stepAxis = stepAxis;
    m_valueAxis = valueAxis;
    m_emptyText = empty;
    syncCaptions();
}

void KwConvergenceChart::syncSeries()
{
    std::vector<double> x, y;
    x.reserve(m_points.size());
    y.reserve(m_points.size());
    for (const Point& p : m_points) {
        x.push_back(p.step);
        y.push_back(p.value);
    }
    SetSeriesData(0, std::move(x), std::move(y));
}

void KwConvergenceChart::syncCaptions()
{
    SetAxisTitles(m_stepAxis, QString(), m_name.isEmpty() ? m_valueAxis : m_name, m_units);
    SetSeriesName(0, m_name.isEmpty() ? m_valueAxis : m_name);
    SetEmptyText(m_emptyText);
}
