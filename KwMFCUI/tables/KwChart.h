#pragma once
// The one chart of the library: several series of (x, y) points with a legend, axis titles
// with units, readable ticks, zoom with the mouse (drag a box; double-click or right-click
// resets), a readout of the point under the cursor, and export as PNG or CSV. A series draws
// what the pixels can show: per pixel column its lowest and highest point, so a million points
// cost a pass over the data and a few thousand line segments.
#include "KwMFCUIExport.h"

#include <QColor>
#include <QRectF>
#include <QString>
#include <QWidget>
#include <vector>

class KWMFCUI_EXPORT KwChart : public QWidget
{
    Q_OBJECT
public:
    struct Series
    {
        QString name;
        QColor color;
        std::vector<double> x;
        std::vector<double> y;
        bool markers = false; // a small square on every point while few are shown
        bool sortedX = true;  // kept up to date on every change; lets zoom skip hidden points
    };

    explicit KwChart(QWidget* parent = nullptr);

    int AddSeries(const QString& name, QColor color = QColor());
    int SeriesCount() const { return int(m_series.size()); }
    const Series& GetSeries(int i) const { return m_series[std::size_t(i)]; }
    void SetSeriesData(int i, std::vector<double> x, std::vector<double> y);
    void AppendPoint(int i, double x, double y);
    void SetSeriesMarkers(int i, bool on);
    void SetSeriesName(int i, const QString& name);
    void ClearSeries(); // removes every series
    void ClearPoints(); // keeps the series, drops their points

    // Axis captions; a unit shows as "Title (unit)".
    void SetAxisTitles(const QString& xTitle, const QString& xUnit, const QString& yTitle,
                       const QString& yUnit);
    QString XAxisCaption() const;
    QString YAxisCaption() const;
    void SetEmptyText(const QString& text) { m_emptyText = text; update(); }
    void SetLegendVisible(bool on) { m_legend = on; update(); }

    // The data range of every point (finite ones), or an empty rectangle.
    QRectF DataRange() const;
    // What is shown: the zoom box, or the data range with a margin.
    QRectF VisibleRange() const;
    void ZoomTo(const QRectF& range);
    void ResetZoom();
    bool IsZoomed() const { return m_zoomed; }

    // The point nearest to a widget position within a few pixels; false when none.
    bool PointAt(const QPointF& pos, int* series, int* index) const;
    QString ReadoutText() const { return m_readout; }

    bool ExportPng(const QString& path);
    // "series,x,y" and one line per point, series after series; numbers as "%.10g".
    bool ExportCsv(const QString& path) const;
    QByteArray CsvText() const;

    // Nice tick values covering [lo, hi] with about `wanted` steps.
    static std::vector<double> Ticks(double lo, double hi, int wanted);
    static QString TickText(double v, double step);

    // Line segments drawn by the last paint (for measuring the reduction).
    int LastSegmentCount() const { return m_lastSegments; }

    // The plotting area inside the widget (room left for ticks, captions and the legend).
    QRect PlotRect() const;
    // Where the legend is drawn: right of the plotting area, so it never lies on a curve;
    // empty when there is no legend to show.
    QRect LegendRect() const;
    // The pixel a point is drawn at in the current view.
    QPointF PointPixel(int series, int index) const;
    // Share of the shown value span left free above the highest point (and, smaller, below
    // the lowest), so the top of a curve never touches the frame.
    static constexpr double kHeadroom = 0.1;
    static constexpr double kFootroom = 0.04;

    // Logarithmic axes: the caller hands the chart log10 of its values on such an axis, and
    // the chart puts its ticks on whole decades and writes them, and the readout, as the values
    // they stand for (3 reads "1000"). A span shorter than two decades keeps round ticks.
    void SetDecadeAxes(bool x, bool y);
    bool IsDecadeAxis(Qt::Orientation o) const { return o == Qt::Horizontal ? m_decadeX : m_decadeY; }
    // The text of a tick at log10 value `v` on a decade axis.
    static QString DecadeText(double v);

    QSize sizeHint() const override { return {520, 340}; }
    QSize minimumSizeHint() const override { return {260, 180}; }

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    bool legendShown() const;
    int legendWidth() const;
    QPointF toPixel(double x, double y, const QRectF& range, const QRect& area) const;
    void drawSeries(QPainter& p, const Series& s, const QRectF& range, const QRect& area);
    void updateReadout(const QPointF& pos);

    std::vector<Series> m_series;
    QString m_xTitle, m_xUnit, m_yTitle, m_yUnit;
    QString m_emptyText;
    bool m_legend = true;
    bool m_zoomed = false;
    QRectF m_zoom;
    bool m_dragging = false;
    QPoint m_dragFrom, m_dragTo;
    QString m_readout;
    int m_lastSegments = 0;
    mutable bool m_rangeValid = false;
    mutable QRectF m_range;
    bool m_decadeX = false;
    bool m_decadeY = false;
};
