// The chart every plot draws with, and the XY plot window the host drives through kinds 39
// and 40.
#include "CFMView.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "CKwXMLUtils.h"
#include "CKwXYPlot.h"
#include "CKwXYPlotDlg.h"
#include "KW_UOM.h"
#include "KwChart.h"
#include "KwMFCUIEntry.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QImage>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <limits>

#include <cmath>

namespace {

TEST(Chart, aMillionPointsDrawAsAFewSegmentsPerPixelColumn)
{
    KwChart chart;
    chart.resize(600, 400);
    std::vector<double> x(1000000), y(1000000);
    for (std::size_t i = 0; i < x.size(); ++i) {
        x[i] = double(i);
        y[i] = std::sin(double(i) * 0.01);
    }
    y[500000] = 50; // one spike must survive the reduction as the column's maximum
    // The same curve with a gap wider than many pixel columns: those columns draw nothing.
    std::vector<double> gx = x, gy = y;
    for (std::size_t i = 700000; i < 800000; ++i)
        gy[i] = std::numeric_limits<double>::quiet_NaN();
    chart.AddSeries(QStringLiteral("s"));
    chart.SetSeriesData(0, std::move(x), std::move(y));
    QImage img(chart.size(), QImage::Format_ARGB32_Premultiplied);
    chart.render(&img);
    const int whole = chart.LastSegmentCount();
    EXPECT_GT(whole, chart.width());
    EXPECT_LT(whole, 2 * chart.width() + 8);
    EXPECT_DOUBLE_EQ(chart.DataRange().bottom(), 50.0);
    chart.SetSeriesData(0, std::move(gx), std::move(gy));
    chart.render(&img);
    EXPECT_LT(chart.LastSegmentCount(), whole - chart.width() / 20);
    EXPECT_GT(chart.LastSegmentCount(), whole / 2);
    EXPECT_DOUBLE_EQ(chart.DataRange().bottom(), 50.0);

    // Zoomed in far enough, every point is drawn as it is.
    chart.ZoomTo(QRectF(QPointF(1000, -2), QPointF(1100, 2)));
    chart.render(&img);
    EXPECT_LE(chart.LastSegmentCount(), 103);
    chart.ResetZoom();
    EXPECT_FALSE(chart.IsZoomed());
}

TEST(Chart, ticksAreRoundAndCoverTheRange)
{
    const struct
    {
        double lo, hi;
        int wanted;
        double first, step;
    } cases[] = {{0, 1, 5, 0, 0.2}, {-3.3, 7.1, 5, -2, 2}, {1e6, 1.0045e6, 4, 1e6, 1000},
                 {0.00012, 0.00019, 3, 0.00012, 0.00002}};
    for (const auto& c : cases) {
        const std::vector<double> t = KwChart::Ticks(c.lo, c.hi, c.wanted);
        ASSERT_GE(t.size(), 2u) << c.lo;
        EXPECT_NEAR(t[0], c.first, c.step * 1e-9) << c.lo;
        EXPECT_NEAR(t[1] - t[0], c.step, c.step * 1e-9) << c.lo;
        EXPECT_LE(t.back(), c.hi + c.step * 1e-9);
    }
    EXPECT_TRUE(KwChart::Ticks(1, 1, 5).empty());
    EXPECT_TRUE(KwChart::Ticks(0, NAN, 5).empty());
}

TEST(Chart, readoutZoomByDragAndExports)
{
    KwChart chart;
    chart.resize(500, 350);
    chart.AddSeries(QStringLiteral("a, b"));
    chart.SetSeriesData(0, {0, 1, 2}, {0, 10, 5});
    chart.SetAxisTitles(QStringLiteral("Time"), QStringLiteral("s"), QStringLiteral("F"),
                        QString());
    EXPECT_EQ(chart.XAxisCaption(), QStringLiteral("Time (s)"));
    chart.show();
    int s = -1, i = -1;
    // Somewhere on the widget the middle point is under the cursor.
    bool found = false;
    for (int px = 0; px < chart.width() && !found; px += 2)
        for (int py = 0; py < chart.height() && !found; py += 2)
            found = chart.PointAt(QPointF(px, py), &s, &i) && i == 1;
    EXPECT_TRUE(found);
    QTest::mousePress(&chart, Qt::LeftButton, {}, QPoint(150, 100));
    QTest::mouseMove(&chart, QPoint(300, 200));
    QTest::mouseRelease(&chart, Qt::LeftButton, {}, QPoint(300, 200));
    EXPECT_TRUE(chart.IsZoomed());
    QTest::mouseDClick(&chart, Qt::LeftButton, {}, QPoint(200, 150));
    EXPECT_FALSE(chart.IsZoomed());

    EXPECT_EQ(chart.CsvText(), QByteArray("series,x,y\n\"a, b\",0,0\n\"a, b\",1,10\n\"a, b\",2,5\n"));
    QTemporaryDir dir;
    EXPECT_TRUE(chart.ExportPng(dir.filePath(QStringLiteral("c.png"))));
    EXPECT_FALSE(QImage(dir.filePath(QStringLiteral("c.png"))).isNull());
    EXPECT_TRUE(chart.ExportCsv(dir.filePath(QStringLiteral("c.csv"))));
}

TEST(XYPlotWindow, oneWindowFedByKind40InDisplayUnits)
{
    kwtest::Host host;
    CKwXYPlot plot(1, QStringLiteral("History"));
    plot.m_xUnitType = KwUnitKind::Time;
    plot.m_yUnitType = KwUnitKind::Length;
    plot.AddSeries(QStringLiteral("Node 1"));

    DialogLaunchRequest r = host.Request(40);
    KwXYPlotValue v{0, 1.0, 0.002};
    r.object = &v;
    LaunchDialog(&r); // no window: nothing happens
    EXPECT_EQ(CKwXYPlotDlg::GetXYPlotDlg(), nullptr);
    EXPECT_EQ(plot.GetSeries(0).x.size(), 0u);

    r = host.Request(39);
    r.object = static_cast<CKwFEBase*>(&plot);
    LaunchDialog(&r);
    LaunchDialog(&r);
    CKwXYPlotDlg* dlg = CKwXYPlotDlg::GetXYPlotDlg();
    ASSERT_NE(dlg, nullptr);
    int windows = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        windows += w->isVisible() && qobject_cast<CKwXYPlotDlg*>(w) != nullptr;
    EXPECT_EQ(windows, 1);

    r = host.Request(40);
    r.object = &v;
    LaunchDialog(&r);
    KwXYPlotValue second{2, 2.0, 0.004}; // a series index past the end adds series
    r.object = &second;
    LaunchDialog(&r);
    EXPECT_EQ(plot.GetSeriesCount(), 3);
    ASSERT_EQ(dlg->Chart()->SeriesCount(), 3);
    ASSERT_EQ(dlg->Chart()->GetSeries(0).y.size(), 1u);
    const double shown = dlg->Chart()->GetSeries(0).y[0];
    EXPECT_DOUBLE_EQ(shown, host.units->GetDisplayValue(0.002, KwUnitKind::Length));
    EXPECT_TRUE(dlg->Chart()->YAxisCaption().contains(host.units->GetUnits(KwUnitKind::Length)));

    dlg->OnCancel();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(CKwXYPlotDlg::GetXYPlotDlg(), nullptr);
}


TEST(Chart, legendLiesBesideTheCurvesWithHeadroomAboveTheTopPoint)
{
    // Curves that reach every corner of the plot, the top right one (where a legend inside
    // the plot would sit) first of all.
    std::vector<double> rise, riseY, dense, denseY;
    for (int i = 0; i <= 40; ++i) {
        rise.push_back(i);
        riseY.push_back(i * i);
    }
    for (int i = 0; i < 5000; ++i) {
        dense.push_back(i);
        denseY.push_back(std::sin(i * 0.01) * 100 + i * 0.02);
    }
    const struct
    {
        const char* name;
        QSize size;
        std::vector<QString> series;
        const std::vector<double>* x;
        const std::vector<double>* y;
    } cases[] = {
        {"rising to the top right", {520, 340}, {QStringLiteral("Node 12")}, &rise, &riseY},
        {"two series", {640, 420}, {QStringLiteral("Subcase 1"), QStringLiteral("Subcase 2")},
         &dense, &denseY},
        {"long name, narrow chart",
         {300, 200},
         {QStringLiteral("Verschiebung am Knoten 40 in Richtung Z der Teilstruktur")},
         &rise,
         &riseY},
        {"flat line", {400, 300}, {QStringLiteral("constant")}, &rise, nullptr},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        KwChart chart;
        chart.resize(c.size);
        for (std::size_t k = 0; k < c.series.size(); ++k) {
            chart.AddSeries(c.series[k]);
            std::vector<double> y = c.y ? *c.y : std::vector<double>(c.x->size(), 3.0);
            for (double& v : y)
                v *= double(k + 1) * 0.5;
            chart.SetSeriesData(int(k), *c.x, std::move(y));
        }
        QImage img(chart.size(), QImage::Format_ARGB32_Premultiplied);
        chart.render(&img);
        const QRect legend = chart.LegendRect();
        const QRect area = chart.PlotRect();
        ASSERT_FALSE(legend.isEmpty());
        EXPECT_TRUE(chart.rect().contains(legend)) << "the legend is cut off";
        double top = area.bottom();
        for (int k = 0; k < chart.SeriesCount(); ++k)
            for (std::size_t i = 0; i < chart.GetSeries(k).x.size(); ++i) {
                const QPointF px = chart.PointPixel(k, int(i));
                ASSERT_FALSE(legend.adjusted(-2, -2, 2, 2).contains(px.toPoint()))
                    << "series " << k << " point " << i;
                top = std::min(top, px.y());
            }
        // The highest point stands clear of the frame by a share of the plot's height.
        EXPECT_GE(top - area.top(), 0.08 * area.height());
        EXPECT_GT(top - area.top(), 8.0);
    }

    // Without a legend (or without names to show) the plot takes the width back.
    KwChart chart;
    chart.resize(500, 300);
    chart.AddSeries(QStringLiteral("a"));
    const int withLegend = chart.PlotRect().width();
    chart.SetLegendVisible(false);
    EXPECT_TRUE(chart.LegendRect().isEmpty());
    EXPECT_GT(chart.PlotRect().width(), withLegend);
    chart.SetLegendVisible(true);
    chart.SetSeriesName(0, QString());
    EXPECT_TRUE(chart.LegendRect().isEmpty());
}

TEST(Chart, axisTitlesOfEveryPlotComeFromTheLanguageService)
{
    kwtest::Host host;
    const auto restore = qScopeGuard(
        [] { CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en")); });
    const QString pre = CKwXMLUtils::PseudoPrefix();
    const struct
    {
        const char* language;
        QString x, y; // a piece each axis caption must contain
    } cases[] = {
        {"qps", pre, pre},
        {"de", QStringLiteral("Zeit"), QStringLiteral("Faktor")},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.language);
        CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(c.language));
        // The point-table chart behind "Show XY Plot".
        KW_UOM units;
        CKwTable table(3, QStringLiteral("T"), CKwTable::TimeCurve);
        table.AddPoint(0, 0);
        table.AddPoint(1, 2);
        std::unique_ptr<CKwTableDialog> dlg(CKwTableDialog::NewFor(&table));
        dlg->SetTable(host.view.get(), &table, &units);
        dlg->Create();
        dlg->OnShowXYPlot();
        KwChart* chart = dlg->PlotChart();
        ASSERT_NE(chart, nullptr);
        EXPECT_TRUE(chart->XAxisCaption().contains(c.x)) << chart->XAxisCaption().toStdString();
        EXPECT_TRUE(chart->YAxisCaption().contains(c.y)) << chart->YAxisCaption().toStdString();
    }

    // The XY plot window: a host's English axis names are translated, names given in the
    // user's language already (marked once in the pseudo-language) stay, unknown ones too.
    const struct
    {
        const char* language;
        QString xGiven, yGiven;
        QString x, y;
    } xy[] = {
        {"de", QStringLiteral("Time"), QStringLiteral("Displacement"), QStringLiteral("Zeit"),
         QStringLiteral("Verschiebung")},
        {"de", QStringLiteral("Zeit"), QStringLiteral("Hub"), QStringLiteral("Zeit"),
         QStringLiteral("Hub")},
        {"qps", QStringLiteral("Time"), pre + QStringLiteral("Time~]"), pre + QStringLiteral("Time~]"),
         pre + QStringLiteral("Time~]")},
        {"de", QString(), QString(), QStringLiteral("X"), QStringLiteral("Y")},
    };
    for (const auto& c : xy) {
        SCOPED_TRACE(c.language + (" " + c.xGiven.toStdString()));
        CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(c.language));
        CKwXYPlot plot(1, QStringLiteral("History"));
        plot.m_xTitle = c.xGiven;
        plot.m_yTitle = c.yGiven;
        plot.m_xUnitType = KwUnitKind::Time;
        plot.m_yUnitType = KwUnitKind::Length;
        KW_UOM si;
        auto* dlg = new CKwXYPlotDlg;
        ASSERT_TRUE(dlg->Create(&plot, &si));
        EXPECT_EQ(dlg->Chart()->XAxisCaption(),
                  QStringLiteral("%1 (%2)").arg(c.x, si.GetUnits(KwUnitKind::Time)));
        EXPECT_EQ(dlg->Chart()->YAxisCaption(),
                  QStringLiteral("%1 (%2)").arg(c.y, si.GetUnits(KwUnitKind::Length)));
        delete dlg;
    }
}

} // namespace
