#include "CKwXYPlotDlg.h"

#include "CKwXMLUtils.h"
#include "CKwXYPlot.h"
#include "KW_UOM.h"
#include "KwChart.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"

#include <QFileDialog>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

CKwXYPlotDlg* CKwXYPlotDlg::m_XYPlotDlg = nullptr;

namespace {
constexpr const char* kSection = "XYPlotDlg";

// An axis title as the user reads it. A host names its axes in English or already in the
// user's language; the common English names are looked up (section "XYPlotAxes", the name as
// key), anything else stays as given. A name that went through the language service already
// is not looked up twice. A missing name falls back to the axis letter.
QString axisTitle(const QString& given, const char* letter)
{
    if (given.trimmed().isEmpty())
        return KwPropText("XYPlotAxes", letter, letter);
    if (given.contains(CKwXMLUtils::PseudoPrefix()))
        return given;
    return CKwXMLUtils::GetInternationalPropPageItemText(QStringLiteral("XYPlotAxes"), given,
                                                         given);
}
} // namespace

CKwXYPlotDlg::CKwXYPlotDlg(QWidget* parent) : CKwMFCDialog(kTemplateId, nullptr, parent)
{
    m_chart = new KwChart(this);
    KwSetControlId(m_chart, IDC_CHART);
    auto* buttons = new QHBoxLayout;
    for (int id : {IDC_RESET_ZOOM, IDC_EXPORT_PNG, IDC_EXPORT_CSV}) {
        auto* b = new QPushButton(this);
        b->setAutoDefault(false);
        KwSetControlId(b, id);
        buttons->addWidget(b);
    }
    buttons->addStretch(1);
    auto* close = new QPushButton(this);
    close->setAutoDefault(false);
    KwSetControlId(close, IDC_BUTTON_CLOSE);
    buttons->addWidget(close);
    auto* lay = new QVBoxLayout(this);
    lay->addWidget(m_chart, 1);
    lay->addLayout(buttons);
    resize(640, 440);

    connect(KwControl<QPushButton>(this, IDC_RESET_ZOOM), &QPushButton::clicked, m_chart,
            &KwChart::ResetZoom);
    connect(KwControl<QPushButton>(this, IDC_EXPORT_PNG), &QPushButton::clicked, this,
            &CKwXYPlotDlg::OnExportPng);
    connect(KwControl<QPushButton>(this, IDC_EXPORT_CSV), &QPushButton::clicked, this,
            &CKwXYPlotDlg::OnExportCsv);
    connect(close, &QPushButton::clicked, this, [this] { OnCancel(); });
}

CKwXYPlotDlg::~CKwXYPlotDlg()
{
    if (m_XYPlotDlg == this) {
        m_XYPlotDlg = nullptr;
        KwModuleWindows::SetXYPlot(nullptr);
    }
}

bool CKwXYPlotDlg::Create(CKwXYPlot* plot, KW_UOM* units)
{
    KW_LOG_METHOD("CKwXYPlotDlg::Create");
    m_XYPlotDlg = this;
    KwModuleWindows::SetXYPlot(this);
    m_pPlot = plot;
    m_pUnits = units;
    const bool ok = CKwMFCDialog::Create();
    // A window closed by the user goes for good, so the next kind 39 builds a fresh one.
    setAttribute(Qt::WA_DeleteOnClose, false);
    return ok;
}

void CKwXYPlotDlg::SetPlot(CKwXYPlot* plot, KW_UOM* units)
{
    m_pPlot = plot;
    m_pUnits = units;
    reload();
    SetTextToCurrentLang();
}

bool CKwXYPlotDlg::OnInitDialog()
{
    reload();
    return CKwMFCDialog::OnInitDialog();
}

double CKwXYPlotDlg::display(double v, int unitType) const
{
    return (m_pUnits && unitType != -1) ? m_pUnits->GetDisplayValue(v, unitType) : v;
}

void CKwXYPlotDlg::reload()
{
    m_chart->ClearSeries();
    if (!m_pPlot)
        return;
    for (int i = 0; i < m_pPlot->GetSeriesCount(); ++i) {
        const CKwXYPlot::Series& s = m_pPlot->GetSeries(i);
        const int at = m_chart->AddSeries(s.name);
        std::vector<double> x(s.x), y(s.y);
        for (double& v : x)
            v = display(v, m_pPlot->m_xUnitType);
        for (double& v : y)
            v = display(v, m_pPlot->m_yUnitType);
        m_chart->SetSeriesData(at, std::move(x), std::move(y));
    }
    m_chart->ResetZoom();
}

void CKwXYPlotDlg::AddValueAndUpdate(void* series)
{
    const auto* v = static_cast<const KwXYPlotValue*>(series);
    if (!v || v->series < 0)
        return;
    if (m_pPlot && !m_pPlot->AddValue(*v))
        return;
    if (!m_pPlot && v->series > 4096)
        return;
    while (m_chart->SeriesCount() <= v->series)
        m_chart->AddSeries(m_pPlot && m_chart->SeriesCount() < m_pPlot->GetSeriesCount()
                               ? m_pPlot->GetSeries(m_chart->SeriesCount()).name
                               : QStringLiteral("%1").arg(m_chart->SeriesCount() + 1));
    m_chart->AppendPoint(v->series, display(v->x, m_pPlot ? m_pPlot->m_xUnitType : -1),
                         display(v->y, m_pPlot ? m_pPlot->m_yUnitType : -1));
}

void CKwXYPlotDlg::SetTextToCurrentLang()
{
    const QString title = KwPropText(kSection, "Title", "XY Plot");
    setWindowTitle(m_pPlot ? KwTitleWithName(title, m_pPlot->GetName()) : title);
    KwSetControlText(this, IDC_RESET_ZOOM, KwPropText(kSection, "ButtonResetZoom", "Reset Zoom"));
    KwSetControlText(this, IDC_EXPORT_PNG,
                     KwPropText(kSection, "ButtonExportPicture", "Export Picture..."));
    KwSetControlText(this, IDC_EXPORT_CSV,
                     KwPropText(kSection, "ButtonExportData", "Export Data..."));
    KwSetControlText(this, IDC_BUTTON_CLOSE, KwPropText("General", "ButtonClose", "Close"));
    m_chart->SetEmptyText(KwPropText(kSection, "NoValues", "No values yet."));
    if (m_pPlot) {
        const KW_UOM si;
        const KW_UOM* u = m_pUnits ? m_pUnits : &si;
        m_chart->SetAxisTitles(axisTitle(m_pPlot->m_xTitle, "X"),
                               u->GetUnits(m_pPlot->m_xUnitType),
                               axisTitle(m_pPlot->m_yTitle, "Y"),
                               u->GetUnits(m_pPlot->m_yUnitType));
    } else {
        m_chart->SetAxisTitles(axisTitle(QString(), "X"), QString(), axisTitle(QString(), "Y"),
                               QString());
    }
}

void CKwXYPlotDlg::OnExportPng()
{
    const QString path = QFileDialog::getSaveFileName(
        this, KwPropText(kSection, "ButtonExportPicture", "Export Picture..."), QString(),
        QStringLiteral("PNG (*.png)"));
    if (!path.isEmpty())
        m_chart->ExportPng(path);
}

void CKwXYPlotDlg::OnExportCsv()
{
    const QString path = QFileDialog::getSaveFileName(
        this, KwPropText(kSection, "ButtonExportData", "Export Data..."), QString(),
        QStringLiteral("CSV (*.csv)"));
    if (!path.isEmpty())
        m_chart->ExportCsv(path);
}
