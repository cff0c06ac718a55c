#include "KwSolverJob.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"
#include "CKwXYPlotDlg.h"
#include "KW_UOM.h"
#include "KwHostText.h"
#include "KwMFCUIEntry.h"
#include "KwNumbers.h"
#include "KwSolverResults.h"

#include <QElapsedTimer>
#include <algorithm>
#include <cmath>
#include <QEventLoop>
#include <QFile>
#include <QStandardPaths>
#include <QTimer>

namespace {
constexpr const char* kJobName = "job";
}

KwSolverJob::KwSolverJob(CFMView* view, QObject* parent) : QObject(parent), m_view(view)
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    connect(&m_process, &QProcess::readyReadStandardOutput, this, &KwSolverJob::readOutput);
    connect(&m_process, &QProcess::finished, this, &KwSolverJob::onFinished);
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError e) {
        if (e == QProcess::FailedToStart && m_running)
            end(false, KwHostText("SolverNotStarted", "The solver could not be started: %1")
                           .arg(m_process.errorString()));
    });
}

KwSolverJob::~KwSolverJob()
{
    // The window outlives the run: it must not keep drawing from a curve that is gone.
    if (CKwXYPlotDlg* xy = CKwXYPlotDlg::GetXYPlotDlg(); xy && m_curve && xy->GetPlot() == m_curve.get())
        xy->SetPlot(nullptr);
    if (m_process.state() != QProcess::NotRunning) {
        m_process.disconnect(this);
        m_process.kill();
        m_process.waitForFinished(3000);
    }
    if (m_running && m_view)
        m_view->SetSolvraRunning(false);
}

QString KwSolverJob::SolverProgram()
{
    return QStandardPaths::findExecutable(QStringLiteral("ccx"));
}

bool KwSolverJob::Start(CKwFEModel* model, CKwAnalysis* analysis, const QString& title)
{
    m_succeeded = false;
    m_balance.clear();
    if (m_running || (m_view && m_view->IsSolvraRunning())) {
        m_message = KwHostText("StatusAlreadyRunning", "A solution is already running.");
        return false;
    }
    if (!model || !analysis) {
        m_message = KwHostText("SolverNoAnalysis", "There is no analysis to run.");
        return false;
    }
    const QString program = SolverProgram();
    if (program.isEmpty()) {
        m_message = KwHostText("SolverMissing",
                               "The solver program \"ccx\" was not found on the search path. "
                               "Install it (tools/setup.sh does) and run again.");
        return false;
    }
    m_deck = KwWriteSolverDeck(*model, *analysis);
    if (!m_deck.ok()) {
        m_message = m_deck.refusal;
        return false;
    }
    m_dir = std::make_unique<QTemporaryDir>();
    QFile deck(m_dir->filePath(QStringLiteral("%1.inp").arg(QLatin1String(kJobName))));
    if (!m_dir->isValid() || !deck.open(QIODevice::WriteOnly)
        || deck.write(m_deck.text.data(), qint64(m_deck.text.size())) != qint64(m_deck.text.size())) {
        m_message = KwHostText("SolverNoJobDir", "The solver's input could not be written: %1")
                        .arg(deck.errorString());
        return false;
    }
    deck.close();

    const bool transient = analysis->GetAnalysisTypeCode() == CKwAnalysis::NonlinearTransient;
    int maxIterations = 16;
    if (const CKwSubCase* first = analysis->GetSubCases().value(0))
        if (const CKwNonlinearSetup* s = first->GetNonlinearSetup())
            if (const int m = s->m_integers[CKwNonlinearSetup::IntMaxIterations];
                !IsMissingValue(m) && m > 0)
                maxIterations = m;
    m_progress = std::make_unique<KwSolverProgress>(
        m_deck.stepSubcases, m_deck.stepPeriod, maxIterations);
    m_analysis = analysis;
    m_pending.clear();
    m_tail.clear();
    m_stopped = false;
    m_linesSent = 0;
    m_running = true;
    m_statusId = transient ? 42u : 41u;
    if (m_view)
        m_view->SetSolvraRunning(true);
    const std::wstring t = title.toStdWString();
    CreateKwDialog(m_statusId);
    CallKwDialogFunction(m_statusId, 4, t.c_str(), 0, m_view, nullptr);

    startCurve();
    m_process.setWorkingDirectory(m_dir->path());
    // Line by line: the solver's output through a pipe is otherwise held back in blocks.
    const QString stdbuf = QStandardPaths::findExecutable(QStringLiteral("stdbuf"));
    const QStringList args{QStringLiteral("-i"), QLatin1String(kJobName)};
    if (!stdbuf.isEmpty())
        m_process.start(stdbuf, QStringList{QStringLiteral("-oL"), program} + args);
    else
        m_process.start(program, args);
    return true;
}

void KwSolverJob::readOutput()
{
    m_pending += m_process.readAllStandardOutput();
    qsizetype nl;
    while ((nl = m_pending.indexOf('\n')) >= 0) {
        const QByteArray line = m_pending.left(nl);
        m_pending.remove(0, nl + 1);
        takeLine(std::string_view(line.constData(), std::size_t(line.size())));
    }
}

void KwSolverJob::takeLine(std::string_view line)
{
    if (!m_progress)
        return;
    const QString text = QString::fromUtf8(line.data(), qsizetype(line.size())).trimmed();
    if (!text.isEmpty()) {
        m_tail << text;
        if (m_tail.size() > 6)
            m_tail.removeFirst();
    }
    if (!m_progress->AddLine(line))
        return;
    growCurve();
    const std::wstring progress = m_progress->CurrentLine().toStdWString();
    CallKwDialogFunction(m_statusId, m_statusId == 42 ? 7u : 5u, progress.c_str(), 0, m_view,
                         nullptr);
    ++m_linesSent;
}

void KwSolverJob::onFinished(int exitCode, QProcess::ExitStatus status)
{
    if (!m_running)
        return;
    readOutput();
    if (!m_pending.isEmpty()) {
        const QByteArray rest = m_pending;
        m_pending.clear();
        takeLine(std::string_view(rest.constData(), std::size_t(rest.size())));
    }
    if (m_stopped) {
        end(false, KwHostText("SolverStopped", "The solution was stopped; no results were kept."));
        return;
    }
    const QStringList& errors = m_progress->Errors();
    if (status != QProcess::NormalExit || exitCode != 0 || !errors.isEmpty()) {
        const QString words = (errors.isEmpty() ? m_tail : errors).join(QLatin1Char('\n'));
        end(false, KwHostText("SolverFailed", "The solver stopped with an error:\n%1").arg(words));
        return;
    }
    QFile frd(m_dir->filePath(QStringLiteral("%1.frd").arg(QLatin1String(kJobName))));
    if (!frd.open(QIODevice::ReadOnly)) {
        end(false, KwHostText("SolverNoResults", "The solver wrote no results:\n%1")
                       .arg(m_tail.join(QLatin1Char('\n'))));
        return;
    }
    const QByteArray bytes = frd.readAll();
    auto results = std::make_shared<KwSolverResults>();
    QString error;
    if (!KwReadSolverResults(std::string_view(bytes.constData(), std::size_t(bytes.size())),
                             m_deck.stepSubcases, *results, error)
        || results->sets.empty()) {
        end(false, KwHostText("SolverBadResults", "The solver's results could not be read: %1")
                       .arg(error));
        return;
    }
    m_balance = KwCheckLoadBalance(m_deck, *results);
    m_analysis->SetSolverResults(std::move(results));
    growCurve();
    const bool live = m_liveCurve;
    end(true, KwHostText("StatusSolutionFinished", "Solution finished."));
    if (!live)
        showCurve();
}

void KwSolverJob::startCurve()
{
    m_liveCurve = false;
    m_frdRead = 0;
    const int type = m_analysis->GetAnalysisTypeCode();
    const bool transient = type == CKwAnalysis::NonlinearTransient;
    if (!transient && type != CKwAnalysis::NonlinearStatic)
        return;
    m_watchNode = 0;
    m_watchAxis = 2;
    if (const CKwSubCase* first = m_analysis->GetSubCases().value(0))
        if (const CKwNonlinearSetup* s = first->GetNonlinearSetup()) {
            const int node = s->m_integers[CKwNonlinearSetup::IntTerminationNode];
            if (!IsMissingValue(node) && node > 0)
                m_watchNode = node;
            if (s->m_componentIndex >= 1 && s->m_componentIndex <= 3)
                m_watchAxis = s->m_componentIndex - 1;
        }
    auto curve = std::make_unique<CKwXYPlot>(1, QStringLiteral("Solution history"));
    const QString time = KwHostText("AxisTime", "Time");
    const QString displacement = KwHostText("AxisDisplacement", "Displacement");
    curve->m_xTitle = transient ? time : displacement;
    curve->m_xUnitType = transient ? KwUnitKind::Time : KwUnitKind::Length;
    curve->m_yTitle = transient ? displacement : KwHostText("AxisLoadFactor", "Load factor");
    curve->m_yUnitType = transient ? KwUnitKind::Length : KwUnitKind::Dimensionless;
    for (int id : m_deck.stepSubcases)
        curve->AddSeries(KwHostText("SeriesSubcase", "Subcase %1").arg(id));
    if (CKwXYPlotDlg* xy = CKwXYPlotDlg::GetXYPlotDlg(); xy && m_curve && xy->GetPlot() == m_curve.get())
        xy->SetPlot(nullptr);
    m_curve = std::move(curve);
    m_liveCurve = true;
    DialogLaunchRequest req{};
    req.kind = 39;
    req.object = static_cast<CKwFEBase*>(m_curve.get());
    req.view = m_view;
    req.keepResults = 1;
    LaunchDialog(&req);
}

void KwSolverJob::growCurve()
{
    if (!m_liveCurve || !m_dir)
        return;
    QFile frd(m_dir->filePath(QStringLiteral("%1.frd").arg(QLatin1String(kJobName))));
    if (!frd.open(QIODevice::ReadOnly) || frd.size() <= m_frdRead || !frd.seek(m_frdRead))
        return;
    const QByteArray fresh = frd.readAll();
    // Only whole blocks: up to the end of the last block's closing line.
    qsizetype end = fresh.lastIndexOf("\n -3");
    while (end >= 0) {
        const qsizetype lineEnd = fresh.indexOf('\n', end + 1);
        if (lineEnd >= 0 && fresh.mid(end + 1, lineEnd - end - 1).trimmed() == "-3") {
            end = lineEnd + 1;
            break;
        }
        end = end > 0 ? fresh.lastIndexOf("\n -3", end - 1) : -1;
    }
    if (end <= 0)
        return;
    const std::string chunk = fresh.left(end).toStdString() + " 9999\n";
    KwSolverResults part;
    QString error;
    if (!KwReadSolverResults(chunk, m_deck.stepSubcases, part, error))
        return; // not a readable piece yet: taken with the next one
    m_frdRead += end;
    for (const KwResultSet& set : part.sets) {
        const KwNodalField& u = set.displacement;
        if (u.empty())
            continue;
        if (!m_watchNode || !u.Find(m_watchNode)) {
            double largest = -1;
            for (std::size_t i = 0; i < u.nodeIds.size(); ++i)
                for (int k = 0; k < 3; ++k)
                    if (std::abs(u.values[3 * i + std::size_t(k)]) > largest) {
                        largest = std::abs(u.values[3 * i + std::size_t(k)]);
                        m_watchNode = u.nodeIds[i];
                        m_watchAxis = k;
                    }
        }
        if (const double* d = u.Find(m_watchNode))
            addCurvePoint(set.step, set.value, d);
    }
}

void KwSolverJob::addCurvePoint(int step, double value, const double* u)
{
    const bool transient = m_analysis->GetAnalysisTypeCode() == CKwAnalysis::NonlinearTransient;
    KwXYPlotValue v{};
    v.series = std::max(0, std::min(step - 1, m_curve->GetSeriesCount() - 1));
    // Every step of a static run goes from no load to its full load in unit time.
    v.x = transient ? value : u[m_watchAxis];
    v.y = transient ? u[m_watchAxis] : value - (step - 1);
    // An open window adds the value to the plot it shows; a closed one takes nothing, and the
    // curve keeps it so that reopening the plot shows the whole history.
    const std::size_t before = m_curve->GetSeries(v.series).x.size();
    DialogLaunchRequest r{};
    r.kind = 40;
    r.object = &v;
    r.view = m_view;
    r.keepResults = 1;
    LaunchDialog(&r);
    if (m_curve->GetSeries(v.series).x.size() == before)
        m_curve->AddValue(v);
}

void KwSolverJob::showCurve()
{
    const int type = m_analysis->GetAnalysisTypeCode();
    const bool transient = type == CKwAnalysis::NonlinearTransient;
    const KwSolverResults* r = m_analysis->GetSolverResults();
    if ((!transient && type != CKwAnalysis::NonlinearStatic) || !r || r->sets.empty())
        return;
    // The watched displacement: the setup's termination node and component, else the largest
    // displacement component at the end of the run.
    int node = 0, axis = 2;
    if (const CKwSubCase* first = m_analysis->GetSubCases().value(0))
        if (const CKwNonlinearSetup* s = first->GetNonlinearSetup()) {
            node = s->m_integers[CKwNonlinearSetup::IntTerminationNode];
            if (s->m_componentIndex >= 1 && s->m_componentIndex <= 3)
                axis = s->m_componentIndex - 1;
        }
    const KwNodalField& end = r->sets.back().displacement;
    if (IsMissingValue(node) || !end.Find(node)) {
        double largest = -1;
        for (std::size_t i = 0; i < end.nodeIds.size(); ++i)
            for (int k = 0; k < 3; ++k)
                if (std::abs(end.values[3 * i + std::size_t(k)]) > largest) {
                    largest = std::abs(end.values[3 * i + std::size_t(k)]);
                    node = end.nodeIds[i];
                    axis = k;
                }
    }
    auto curve = std::make_unique<CKwXYPlot>(1, QStringLiteral("Solution history"));
    const QString time = KwHostText("AxisTime", "Time");
    const QString displacement = KwHostText("AxisDisplacement", "Displacement");
    curve->m_xTitle = transient ? time : displacement;
    curve->m_xUnitType = transient ? KwUnitKind::Time : KwUnitKind::Length;
    curve->m_yTitle = transient ? displacement : KwHostText("AxisLoadFactor", "Load factor");
    curve->m_yUnitType = transient ? KwUnitKind::Length : KwUnitKind::Dimensionless;
    std::vector<int> steps;
    for (const KwResultSet& set : r->sets) {
        const double* u = set.displacement.Find(node);
        if (!u)
            continue;
        auto it = std::find(steps.begin(), steps.end(), set.step);
        if (it == steps.end()) {
            steps.push_back(set.step);
            curve->AddSeries(KwHostText("SeriesSubcase", "Subcase %1").arg(set.subcaseId));
            it = steps.end() - 1;
        }
        const int series = int(it - steps.begin());
        // Every step of a static run goes from no load to its full load in unit time.
        if (transient)
            curve->AddValue({series, set.value, u[axis]});
        else
            curve->AddValue({series, u[axis], set.value - (set.step - 1)});
    }
    if (CKwXYPlotDlg* xy = CKwXYPlotDlg::GetXYPlotDlg(); xy && m_curve && xy->GetPlot() == m_curve.get())
        xy->SetPlot(nullptr);
    m_curve = std::move(curve);
    DialogLaunchRequest req{};
    req.kind = 39;
    req.object = static_cast<CKwFEBase*>(m_curve.get());
    req.view = m_view;
    req.keepResults = 1;
    LaunchDialog(&req);
}

void KwSolverJob::end(bool succeeded, const QString& message)
{
    m_running = false;
    m_succeeded = succeeded;
    m_message = message;
    // The windows are put back as a host does at the end of a run.
    CallKwDialogFunction(m_statusId, 2, L"", 0, m_view, nullptr);
    CallKwDialogFunction(m_statusId, 3, L"", 0, m_view, nullptr);
    if (m_view)
        m_view->SetSolvraRunning(false);
    m_progress.reset();
    m_dir.reset();
    Q_EMIT finished(succeeded);
}

void KwSolverJob::Stop()
{
    if (!m_running || m_process.state() == QProcess::NotRunning)
        return;
    m_stopped = true;
    m_process.kill();
}

bool KwSolverJob::Wait(int msecs)
{
    if (!m_running)
        return true;
    QEventLoop loop;
    QTimer timeout;
    timeout.setSingleShot(true);
    connect(&timeout, &QTimer::timeout, &loop, &QEventLoop::quit);
    connect(this, &KwSolverJob::finished, &loop, &QEventLoop::quit);
    timeout.start(msecs);
    loop.exec();
    return !m_running;
}

QString KwSolverJob::BalanceText(const std::vector<KwLoadBalanceLine>& lines, const KW_UOM* units)
{
    if (lines.empty())
        return {};
    const KW_UOM si;
    const KW_UOM& u = units ? *units : si;
    const QString unit = u.GetUnits(KwUnitKind::Force);
    const auto triple = [&](const double* v) {
        QStringList parts;
        for (int a = 0; a < 3; ++a)
            parts << QStringLiteral("%1 %2 %3")
                         .arg(QChar(u'X' + a))
                         .arg(QString::number(u.GetDisplayValue(v[a], KwUnitKind::Force), 'g', 6))
                         .arg(unit);
        return parts.join(QStringLiteral(", "));
    };
    QStringList text{KwHostText("BalanceTitle", "Applied load against reactions:")};
    for (const KwLoadBalanceLine& l : lines) {
        text << KwHostText("BalanceSubcase", "Subcase %1").arg(l.subcaseId);
        if (!l.checked) {
            text << KwHostText("BalanceNotChecked",
                               "  not checked: shells or beams are held at a constraint, where the "
                               "solver reports only part of the reaction");
            continue;
        }
        text << KwHostText("BalanceApplied", "  applied: %1").arg(triple(l.applied));
        text << KwHostText("BalanceReaction", "  reactions: %1").arg(triple(l.reaction));
        const QString percent = QString::number(100.0 * l.difference, 'g', 3);
        text << (l.Warn() ? KwHostText("BalanceWarn",
                                       "  Warning: they differ by %1 %, more than 0.1 %.")
                                .arg(percent)
                          : KwHostText("BalanceOk", "  balanced within %1 %.").arg(percent));
    }
    return text.join(QLatin1Char('\n'));
}
