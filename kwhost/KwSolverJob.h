#pragma once
// A real solver run of one analysis: writes the input deck into a temporary job directory,
// starts the solver as a separate program, feeds its console output line by line to the
// status windows (the same calls a host makes), and on success reads the result file into the
// analysis. A refused, missing, failed or stopped run leaves the model as it was and reports
// why, in the solver's own words where it gave any.
#include "CKwXYPlot.h"
#include "KwLoadBalance.h"
#include "KwSolverDeck.h"
#include "KwSolverProgress.h"

#include <QObject>
#include <QProcess>
#include <QString>
#include <QTemporaryDir>
#include <memory>
#include <vector>

class CFMView;
class CKwAnalysis;
class CKwFEModel;
class KW_UOM;

class KwSolverJob : public QObject
{
    Q_OBJECT
public:
    explicit KwSolverJob(CFMView* view, QObject* parent = nullptr);
    ~KwSolverJob() override;

    // The solver program found on the search path, or an empty string.
    static QString SolverProgram();

    // Starts a run of `analysis`; false (with Message() saying why) when it cannot start.
    bool Start(CKwFEModel* model, CKwAnalysis* analysis, const QString& title);
    // Ends a run early: the solver is killed and nothing of it reaches the model.
    void Stop();
    bool IsRunning() const { return m_running; }
    // Runs the event loop until the run ends or `msecs` pass; true when it ended.
    bool Wait(int msecs);

    bool Succeeded() const { return m_succeeded; }
    // After a run (or a refusal): what happened, for the user.
    QString Message() const { return m_message; }
    int ProgressLinesSent() const { return m_linesSent; }
    const KwSolverDeck& Deck() const { return m_deck; }
    // The status window the run drives: 42 for a transient run, 41 otherwise.
    std::uint32_t StatusId() const { return m_statusId; }
    // During and after a nonlinear static or transient run: the load factor against the
    // watched displacement, or the displacement against time, one series per subcase, as the
    // XY plot window shows it. It grows an increment at a time while the solver writes its
    // result file. Null before such a run.
    const CKwXYPlot* Curve() const { return m_curve.get(); }
    // After a static run: applied load against reactions per subcase.
    const std::vector<KwLoadBalanceLine>& Balance() const { return m_balance; }
    // The balance as the user reads it, in `units` (SI when null); empty without lines.
    static QString BalanceText(const std::vector<KwLoadBalanceLine>& lines, const KW_UOM* units);

Q_SIGNALS:
    void finished(bool succeeded);

private:
    void readOutput();
    void takeLine(std::string_view line);
    void onFinished(int exitCode, QProcess::ExitStatus status);
    void end(bool succeeded, const QString& message);
    void showCurve();
    // Opens the XY plot window on an empty curve at the start of a nonlinear run.
    void startCurve();
    // Reads the result blocks the solver has completed since the last call and adds the
    // watched displacement of each new output time to the curve (through the window).
    void growCurve();
    void addCurvePoint(int step, double value, const double* u);

    CFMView* m_view;
    QProcess m_process;
    std::unique_ptr<QTemporaryDir> m_dir;
    std::unique_ptr<KwSolverProgress> m_progress;
    KwSolverDeck m_deck;
    std::unique_ptr<CKwXYPlot> m_curve;
    std::vector<KwLoadBalanceLine> m_balance;
    qint64 m_frdRead = 0;   // bytes of the result file taken into the curve
    int m_watchNode = 0;    // 0: the largest displacement of the first output decides
    int m_watchAxis = 2;
    bool m_liveCurve = false;
    CKwAnalysis* m_analysis = nullptr;
    QByteArray m_pending;
    QStringList m_tail; // the last lines of output, for a failure without an error line
    bool m_running = false;
    bool m_stopped = false;
    bool m_succeeded = false;
    QString m_message;
    int m_linesSent = 0;
    std::uint32_t m_statusId = 41;
};
