#pragma once
// The chart of the convergence plot: the result value of each solution step as a line with
// markers, with a value axis, a step axis, their captions and the unit of the result. It is
// the library's chart with one series kept in step order.
#include "KwChart.h"
#include "KwMFCUIExport.h"

#include <QString>
#include <vector>

class KWMFCUI_EXPORT KwConvergenceChart : public KwChart
{
    Q_OBJECT
public:
    struct Point
    {
        int step;
        double value;
    };

    explicit KwConvergenceChart(QWidget* parent = nullptr);

    // Adds or, for a step already shown, replaces the value of one step. Points stay ordered
    // by step. Values that are not finite are not drawable and are left out.
    void SetPoint(int step, double value);
    void SetPoints(std::vector<Point> points);
    void Clear();
    const std::vector<Point>& Points() const { return m_points; }

    void SetResult(const QString& name, const QString& units);
    QString ResultName() const { return m_name; }
    QString Units() const { return m_units; }
    // Captions in the current language: the step axis, the value axis when no result name
    // is known, and the text of an empty chart.
    void SetCaptions(const QString& stepAxis, const QString& valueAxis, const QString& empty);

    QSize sizeHint() const override { return {480, 320}; }
    QSize minimumSizeHint() const override { return {260, 180}; }

private:
    // Hands the points and captions to the chart.
    void syncSeries();
    void syncCaptions();

    std::vector<Point> m_points;
    QString m_name;
    QString m_units;
    QString m_stepAxis;
    QString m_valueAxis;
    QString m_emptyText;
};
