// The S-N curve: its rules (table-driven), the dialog writing curve, endurance limit and source
// only when every rule holds, the values in the units shown, and the log-log plot.
#include "CFMView.h"
#include "CKwMaterial.h"
#include "CKwSNCurveDialog.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwChart.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>
#include <cmath>

namespace {

using D = CKwSNCurveDialog;

CKwMaterial steel()
{
    CKwMaterial m(1, QStringLiteral("Steel"));
    m.m_snCurve = {{1e3, 1e4, 1e5, 1e6}, {3.78e8, 3.07e8, 2.5e8, 2.1e8}};
    m.m_enduranceLimit = 2.1e8;
    m.m_snSource = QStringLiteral("handbook");
    return m;
}

} // namespace

TEST(SNCurve, rulesNameTheFirstProblemAndItsRow)
{
    const double none = MissingDouble;
    struct Case
    {
        const char* what;
        std::vector<double> cycles, stress;
        double limit;
        D::Problem problem;
        int row;
    };
    const Case cases[] = {
        {"sound", {1e3, 1e6}, {400, 200}, 150, D::NoProblem, -1},
        {"sound without limit", {1e3, 1e6}, {400, 200}, none, D::NoProblem, -1},
        {"limit at the top", {1e3, 1e6}, {400, 200}, 400, D::NoProblem, -1},
        {"zero cycles", {0, 1e6}, {400, 200}, none, D::CyclesNotPositive, 0},
        {"negative cycles", {1e3, -1e6}, {400, 200}, none, D::CyclesNotPositive, 1},
        {"equal cycles", {1e3, 1e4, 1e4}, {400, 300, 250}, none, D::CyclesNotIncreasing, 2},
        {"falling cycles", {1e4, 1e3}, {400, 300}, none, D::CyclesNotIncreasing, 1},
        {"zero stress", {1e3, 1e6}, {400, 0}, none, D::StressNotPositive, 1},
        {"negative stress first", {1e3, 1e6}, {-400, 200}, none, D::StressNotPositive, 0},
        {"not a number", {1e3, std::nan("")}, {400, 200}, none, D::CyclesNotPositive, 1},
        {"one point", {1e3}, {400}, none, D::TooFewPoints, -1},
        {"no point", {}, {}, none, D::TooFewPoints, -1},
        {"zero limit", {1e3, 1e6}, {400, 200}, 0, D::EnduranceNotPositive, -1},
        {"negative limit", {1e3, 1e6}, {400, 200}, -5, D::EnduranceNotPositive, -1},
        {"limit above the curve", {1e3, 1e6}, {400, 200}, 401, D::EnduranceAboveCurve, -1},
        {"row problems come first", {1e3, 1e3}, {400, 200}, -5, D::CyclesNotIncreasing, 1},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        const D::Check check = D::CheckCurve(c.cycles, c.stress, c.limit);
        EXPECT_EQ(check.problem, c.problem);
        EXPECT_EQ(check.row, c.row);
        if (c.problem != D::NoProblem) {
            EXPECT_FALSE(D::ProblemText(check).isEmpty());
        }
    }
    EXPECT_EQ(D::ProblemText({D::CyclesNotIncreasing, 2}),
              "Row 3: the cycles must increase from row to row (Sort orders them).");
}

TEST(SNCurve, okWritesEverythingOrNothing)
{
    kwtest::Host host;
    KW_UOM mm(KW_UOM::MMNS); // stresses in MPa
    struct Case
    {
        const char* what;
        KwMaterialCurve curve; // internal
        const char* limit;     // as typed, MPa
        const char* message;   // part of the message; empty when OK passes
    };
    const Case cases[] = {
        {"sound", {{1e3, 1e6}, {4e8, 2e8}}, "150", ""},
        {"limit left empty", {{1e3, 1e6}, {4e8, 2e8}}, "", ""},
        {"falling cycles", {{1e6, 1e3}, {2e8, 4e8}}, "150", "Row 2: the cycles must increase"},
        {"zero stress", {{1e3, 1e6}, {4e8, 0}}, "", "Row 2: the stress must be greater than zero."},
        {"one point", {{1e3}, {4e8}}, "", "two points at least"},
        {"limit above", {{1e3, 1e6}, {4e8, 2e8}}, "500", "above the highest stress"},
        {"limit no number", {{1e3, 1e6}, {4e8, 2e8}}, "lots", "Endurance Limit"},
        {"limit zero", {{1e3, 1e6}, {4e8, 2e8}}, "0", "greater than zero, or empty"},
        {"missing stress", {{1e3, 1e6}, {4e8, MissingDouble}}, "", "Row 2 has no stress."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        CKwMaterial m = steel();
        m.m_snCurve = c.curve;
        const CKwMaterial before = m;
        D d(&m, &mm, host.view.get());
        d.Create();
        KwControl<QLineEdit>(&d, D::IDC_ENDURANCE)->setText(QString::fromLatin1(c.limit));
        KwControl<QLineEdit>(&d, D::IDC_SOURCE)->setText(QStringLiteral("  test report 7 "));
        const bool ok = d.WriteBack();
        EXPECT_EQ(ok, *c.message == 0) << d.GetLastMessage().toStdString();
        if (!ok) {
            EXPECT_TRUE(d.GetLastMessage().contains(QString::fromLatin1(c.message)))
                << d.GetLastMessage().toStdString();
            EXPECT_TRUE(m == before); // nothing half written
            continue;
        }
        EXPECT_EQ(m.m_snCurve, c.curve);
        EXPECT_EQ(m.m_enduranceLimit, *c.limit ? 1.5e8 : MissingDouble);
        EXPECT_EQ(m.m_snSource, "test report 7");
    }
}

TEST(SNCurve, showsTheMaterialsCurveInUnitsAndPlotsItLogLog)
{
    kwtest::Host host;
    KW_UOM mm(KW_UOM::MMNS);
    CKwMaterial m = steel();
    D d(&m, &mm, host.view.get());
    d.Create();
    EXPECT_EQ(d.windowTitle(), "S-N Curve - 'Steel'");
    EXPECT_EQ(d.GetList().Model()->cellText(0, 0), "1000");
    EXPECT_EQ(d.GetList().Model()->cellText(3, 1), "210");
    EXPECT_EQ(KwControl<QLineEdit>(&d, D::IDC_ENDURANCE)->text(), "210");
    EXPECT_EQ(KwControl<QLineEdit>(&d, D::IDC_SOURCE)->text(), "handbook");
    KwChart* chart = d.GetChart();
    ASSERT_EQ(chart->SeriesCount(), 2);
    EXPECT_TRUE(chart->IsDecadeAxis(Qt::Horizontal));
    EXPECT_TRUE(chart->IsDecadeAxis(Qt::Vertical));
    const KwChart::Series& curve = chart->GetSeries(0);
    ASSERT_EQ(curve.x.size(), 4u);
    EXPECT_DOUBLE_EQ(curve.x[0], 3);
    EXPECT_DOUBLE_EQ(curve.x[3], 6);
    EXPECT_NEAR(curve.y[3], std::log10(210.0), 1e-12);
    // The endurance limit is a line over the curve's cycles; it follows what is typed.
    const KwChart::Series& limit = chart->GetSeries(1);
    ASSERT_EQ(limit.x.size(), 2u);
    EXPECT_DOUBLE_EQ(limit.x[1], 6);
    KwControl<QLineEdit>(&d, D::IDC_ENDURANCE)->setText("100");
    EXPECT_DOUBLE_EQ(chart->GetSeries(1).y[0], 2);
    KwControl<QLineEdit>(&d, D::IDC_ENDURANCE)->clear();
    EXPECT_TRUE(chart->GetSeries(1).x.empty());
    // Cancel leaves the material as it was.
    const CKwMaterial before = m;
    KwControl<QLineEdit>(&d, D::IDC_SOURCE)->setText("changed");
    KwControl<QPushButton>(&d, D::IDC_BUTTON_CANCEL)->click();
    EXPECT_TRUE(m == before);

    // Decade ticks read as the values they stand for.
    struct Tick
    {
        double v;
        const char* text;
    };
    for (const Tick& t : {Tick{3, "1000"}, Tick{6, "1e6"}, Tick{std::log10(200.0), "200"},
                          Tick{-5, "1e-5"}, Tick{0, "1"}})
        EXPECT_EQ(KwChart::DecadeText(t.v), t.text) << t.v;
}

TEST(SNCurve, everyCaptionIsTranslated)
{
    CKwMaterial m = steel();
    D d(&m, nullptr);
    d.Create();
    d.show();
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("de"));
    d.SetTextToCurrentLang();
    EXPECT_EQ(d.windowTitle(), "Wöhlerlinie - 'Steel'");
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    d.SetTextToCurrentLang();
    const QStringList bad = kwtest::UntranslatedCaptions(&d);
    CKwXMLUtils::SetCurrentLanguage("en");
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
}
