#include "CKwMFCUIMeshConvergencePlot.h"

#include "KwConvergenceChart.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"
#include "ui_CKwMFCUIMeshConvergencePlot.h"

#include <QCloseEvent>
#include <QPushButton>
#include <algorithm>
#include <cwchar>

namespace {
// Host strings of the data record are bounded: a missing terminator must not run away.
QString hostText(const wchar_t* s)
{
    return s ? QString::fromWCharArray(s, qsizetype(wcsnlen(s, 256))) : QString();
}
} // namespace

CKwMFCUIMeshConvergencePlot::CKwMFCUIMeshConvergencePlot(CFMView* view, QWidget* parent)
    : CKwMFCDialog(kTemplateId, view, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIMeshConvergencePlot>())
{
    m_ui->setupUi(this);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    connect(m_ui->close, &QPushButton::clicked, this, &CKwMFCUIMeshConvergencePlot::reject);
}

CKwMFCUIMeshConvergencePlot::~CKwMFCUIMeshConvergencePlot() = default;

KwConvergenceChart* CKwMFCUIMeshConvergencePlot::Chart() const { return m_ui->chart; }

bool CKwMFCUIMeshConvergencePlot::OnInitDialog()
{
    KW_LOG_METHOD("CKwMFCUIMeshConvergencePlot::OnInitDialog");
    const bool ok = CKwMFCDialog::OnInitDialog();
    updateLatest();
    return ok;
}

void CKwMFCUIMeshConvergencePlot::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("MeshConvergencePlot", "Title", "Mesh Convergence"));
    m_ui->labelLatest->setText(
        KwLabel(KwPropText("MeshConvergencePlot", "LabelLatestValue", "Latest value")));
    m_ui->close->setText(KwPropText("General", "ButtonClose", "Close"));
    m_ui->chart->SetCaptions(
        KwPropText("MeshConvergencePlot", "AxisSolutionStep", "Solution Step"),
        KwPropText("MeshConvergencePlot", "AxisResultValue", "Result Value"),
        KwPropText("MeshConvergencePlot", "NoPoints", "No solution steps yet"));
    updateLatest();
}

void CKwMFCUIMeshConvergencePlot::updateLatest()
{
    const auto& pts = m_ui->chart->Points();
    if (pts.empty()) {
        m_ui->valueLatest->setText(QStringLiteral("-"));
        return;
    }
    // The latest step is the one with the highest number.
    const QString units = m_ui->chart->Units();
    QString text = QStringLiteral("%1").arg(pts.back().value, 0, 'g', 6);
    if (!units.isEmpty())
        text += QLatin1Char(' ') + units;
    m_ui->valueLatest->setText(text);
}

void CKwMFCUIMeshConvergencePlot::AddPoint(int value, const KwConvergencePoint* point)
{
    m_nResultValue = value;
    if (point)
        m_ui->chart->SetPoint(point->step, point->value);
    updateLatest();
}

void CKwMFCUIMeshConvergencePlot::ReplaceData(const KwConvergenceData* data)
{
    if (!data)
        return;
    std::vector<KwConvergenceChart::Point> points;
    // A count beyond the array's capacity (or a missing array) is a host fault: read only
    // what the record vouches for.
    const int n = data->points ? std::clamp(data->count, 0, std::max(0, data->capacity)) : 0;
    points.reserve(std::size_t(n));
    for (int i = 0; i < n; ++i)
        points.push_back({data->points[i].step, data->points[i].value});
    m_ui->chart->SetResult(hostText(data->resultName), hostText(data->units));
    m_ui->chart->SetPoints(std::move(points));
    updateLatest();
}

void CKwMFCUIMeshConvergencePlot::ClearData(KwConvergenceData* data)
{
    m_nResultValue = 0;
    m_ui->chart->Clear();
    if (data)
        data->count = 0;
    updateLatest();
}

void CKwMFCUIMeshConvergencePlot::DestroyPlotWindow()
{
    if (m_bWindowDestroyed)
        return;
    m_bWindowDestroyed = true;
    hide();
}

void CKwMFCUIMeshConvergencePlot::RecreateWindow()
{
    if (!m_bWindowDestroyed)
        return;
    m_bWindowDestroyed = false;
    SetTextToCurrentLang();
}

void CKwMFCUIMeshConvergencePlot::ShowPlot()
{
    if (m_bWindowDestroyed)
        return;
    show();
    KwBringWindowToTop(this);
}

void CKwMFCUIMeshConvergencePlot::reject()
{
    // The module keeps the plot for the next request; closing only puts it out of sight.
    hide();
}

void CKwMFCUIMeshConvergencePlot::closeEvent(QCloseEvent* event) { event->accept(); }
