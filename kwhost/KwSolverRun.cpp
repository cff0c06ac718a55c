#include "KwSolverRun.h"

#include "CFMView.h"
#include "CKwXYPlotDlg.h"
#include "KW_UOM.h"
#include "KwHostText.h"
#include "KwMFCUIEntry.h"

#include <cmath>
#include <string>

namespace {
constexpr int kSubcases = 2;
constexpr int kIncrements = 20;
constexpr int kMaxIterations = 8;

// The result whose convergence is watched settles towards its limit as steps go on.
double resultAtStep(int step) { return 248.0 * (1.0 - 0.55 * std::exp(-step / 3.2)); }

// The watched displacement (metres) at a fraction of a subcase's load, stiffening a little
// less in the second subcase; and of a transient run at a time (seconds).
double staticDisplacement(int subcase, double fraction)
{
    return (subcase == 1 ? 0.0042 : 0.0061) * std::pow(fraction, 1.4);
}
double transientDisplacement(int subcase, double t)
{
    return (subcase == 1 ? 0.003 : 0.0045) * std::sin(3.1 * t) * std::exp(-0.4 * t);
}
constexpr double kTransientEnd = 2.0;
} // namespace

KwSolverRun::KwSolverRun(CFMView* view, QObject* parent) : QObject(parent), m_view(view)
{
    // A solver reports a few dozen lines a second.
    m_timer.setInterval(40);
    connect(&m_timer, &QTimer::timeout, this, &KwSolverRun::tick);
    m_units = L"MPa";
    m_points.resize(kSubcases * kIncrements);
    nameResult();
    m_series.units = m_units.c_str();
    m_series.points = m_points.data();
    m_series.capacity = int(m_points.size());
    m_series.count = 0;
}

KwSolverRun::~KwSolverRun()
{
    // The window outlives the run: it must not keep drawing from a plot that is gone.
    if (CKwXYPlotDlg* xy = CKwXYPlotDlg::GetXYPlotDlg(); xy && xy->GetPlot() == &m_plot)
        xy->SetPlot(nullptr);
}

void KwSolverRun::nameResult()
{
    // In the language of the moment: the plot shows the name as it is handed over.
    m_resultName = KwHostText("ResultMaxVonMises", "Max von Mises Stress").toStdWString();
    m_series.resultName = m_resultName.c_str();
}

bool KwSolverRun::Start(Kind kind, const QString& analysisName)
{
    if (IsRunning() || (m_view && m_view->IsSolvraRunning()))
        return false;
    nameResult();
    m_kind = kind;
    m_subcase = 1;
    m_increment = 1;
    m_iteration = 1;
    m_iterationsThisStep = 3;
    m_subIncrement = false;
    m_linesSent = 0;
    m_series.count = 0;
    m_running = true;
    if (m_view)
        m_view->SetSolvraRunning(true);
    const std::wstring title = analysisName.toStdWString();
    const std::uint32_t id = statusId();
    CreateKwDialog(id);
    CallKwDialogFunction(id, 4, title.c_str(), 0, m_view, nullptr);
    // A new run starts a new convergence history.
    CallKwDialogFunction(89, 10, L"", 0, m_view, &m_series);
    DialogLaunchRequest r{};
    r.kind = 89;
    r.view = m_view;
    r.keepResults = 1;
    LaunchDialog(&r);
    openXYPlot();
    m_timer.start();
    return true;
}

QString KwSolverRun::CurrentLine() const
{
    // subcase, increment (time step), iteration, load (time) %, displacement %, iteration %,
    // residual norm, step type
    const double fraction = double(m_increment) / kIncrements;
    const int loadPct = int(std::lround(fraction * 100));
    const int dispPct = int(std::lround(std::pow(fraction, 1.4) * 100));
    const int iterPct = int(std::lround(100.0 * m_iteration / m_iterationsThisStep));
    const double residual = 1e-2 * std::pow(0.08, m_iteration);
    return QStringLiteral("%1,%2,%3,%4,%5,%6,%7,%8")
        .arg(m_subcase)
        .arg(m_increment)
        .arg(m_iteration)
        .arg(loadPct)
        .arg(dispPct)
        .arg(iterPct)
        .arg(residual, 0, 'E', 2)
        .arg(m_subIncrement ? QLatin1Char('S') : QLatin1Char('F'));
}

void KwSolverRun::tick()
{
    const std::wstring line = CurrentLine().toStdWString();
    const std::uint32_t function = m_kind == Kind::Transient ? 7u : 5u;
    CallKwDialogFunction(statusId(), function, line.c_str(), 0, m_view, nullptr);
    ++m_linesSent;

    if (++m_iteration <= m_iterationsThisStep)
        return;
    // The step converged.
    addConvergencePoint();
    feedXYPlot();
    m_iteration = 1;
    // Every seventh step needs a cut-back: its next part runs as a sub-increment.
    const int stepNo = (m_subcase - 1) * kIncrements + m_increment;
    m_subIncrement = stepNo % 7 == 0;
    m_iterationsThisStep = 2 + (stepNo * 5) % (kMaxIterations - 2);
    if (++m_increment <= kIncrements)
        return;
    m_increment = 1;
    if (++m_subcase <= kSubcases)
        return;
    finish();
}

void KwSolverRun::addConvergencePoint()
{
    const int step = (m_subcase - 1) * kIncrements + m_increment;
    if (m_series.count >= m_series.capacity)
        return;
    KwConvergencePoint& p = m_points[std::size_t(m_series.count++)];
    p.step = step;
    p.reserved = 0;
    p.value = resultAtStep(step);
    CallKwDialogFunction(89, 3, L"", step, m_view, &p);
}

void KwSolverRun::openXYPlot()
{
    const bool transient = m_kind == Kind::Transient;
    m_plot.ClearValues();
    const QString time = KwHostText("AxisTime", "Time");
    const QString displacement = KwHostText("AxisDisplacement", "Displacement");
    m_plot.m_xTitle = transient ? time : displacement;
    m_plot.m_xUnitType = transient ? KwUnitKind::Time : KwUnitKind::Length;
    m_plot.m_yTitle = transient ? displacement : KwHostText("AxisLoadFactor", "Load factor");
    m_plot.m_yUnitType = transient ? KwUnitKind::Length : KwUnitKind::Dimensionless;
    for (int s = m_plot.GetSeriesCount(); s < kSubcases; ++s)
        m_plot.AddSeries(KwHostText("SeriesSubcase", "Subcase %1").arg(s + 1));
    DialogLaunchRequest r{};
    r.kind = 39;
    r.object = static_cast<CKwFEBase*>(&m_plot);
    r.view = m_view;
    r.keepResults = 1;
    LaunchDialog(&r);
}

void KwSolverRun::feedXYPlot()
{
    const double fraction = double(m_increment) / kIncrements;
    KwXYPlotValue v{};
    v.series = m_subcase - 1;
    if (m_kind == Kind::Transient) {
        v.x = fraction * kTransientEnd;
        v.y = transientDisplacement(m_subcase, v.x);
    } else {
        v.x = staticDisplacement(m_subcase, fraction);
        v.y = fraction;
    }
    // An open window adds the value to the plot it shows; a closed one takes nothing, and the
    // host keeps the value itself so that reopening the plot shows the whole history.
    const std::size_t before = m_plot.GetSeries(v.series).x.size();
    DialogLaunchRequest r{};
    r.kind = 40;
    r.object = &v;
    r.view = m_view;
    r.keepResults = 1;
    LaunchDialog(&r);
    if (m_plot.GetSeries(v.series).x.size() == before)
        m_plot.AddValue(v);
}

void KwSolverRun::Stop()
{
    if (IsRunning())
        finish();
}

void KwSolverRun::finish()
{
    m_timer.stop();
    m_running = false;
    const std::uint32_t id = statusId();
    CallKwDialogFunction(id, 2, L"", 0, m_view, nullptr);
    CallKwDialogFunction(id, 3, L"", 0, m_view, nullptr);
    if (m_view)
        m_view->SetSolvraRunning(false);
    Q_EMIT finished();
}

void KwSolverRun::fillSampleSeries()
{
    m_series.count = 0;
    for (int step = 1; step <= 12 && m_series.count < m_series.capacity; ++step) {
        KwConvergencePoint& p = m_points[std::size_t(m_series.count++)];
        p.step = step;
        p.reserved = 0;
        p.value = resultAtStep(step);
    }
}

int KwSolverRun::OnConvergenceCommand(int sub, int, CFMView* view, void*)
{
    if (sub != 3)
        return 0;
    // Before any run the model's last known results stand in: a settled history.
    if (m_series.count == 0 && !IsRunning())
        fillSampleSeries();
    CallKwDialogFunction(89, 9, L"", 0, view ? view : m_view, &m_series);
    return 1;
}
