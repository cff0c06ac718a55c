#pragma once
// An XY plot of the host: a title, two axes with captions and units, and series of points the
// solver adds to while it runs.
#include "CKwFEBase.h"

#include <QList>
#include <vector>

// One value the host hands the open XY-plot window (LaunchDialog kind 40 points at it).
struct KwXYPlotValue
{
    int series; // index into the plot's series; a new index past the end adds a series
    double x;
    double y;
};

class KWICAD_EXPORT CKwXYPlot : public CKwFEBase
{
public:
    struct Series
    {
        QString name;
        std::vector<double> x;
        std::vector<double> y;
    };

    CKwXYPlot(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("XY Plot"); }

    QString m_xTitle;
    int m_xUnitType = -1;
    QString m_yTitle;
    int m_yUnitType = -1;

    int GetSeriesCount() const { return static_cast<int>(m_series.size()); }
    const Series& GetSeries(int i) const { return m_series[i]; }
    int AddSeries(const QString& name);
    // Appends a point; an index past the end adds series named "Series n" up to it. A negative
    // index is refused (false).
    bool AddValue(const KwXYPlotValue& value);
    void ClearValues();

private:
    QList<Series> m_series;
};
