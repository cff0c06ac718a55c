#pragma once
// The demo host's simulated solver: a nonlinear static or transient run that reports its
// progress to the status windows a line at a time, as a solver's output is read, feeds the
// mesh convergence plot and the XY plot window (kind 39 opens it on the run's plot, kind 40
// hands it each converged step), and ends the way a host ends a run. It also answers the
// add-in's command 89 (fill the convergence plot that launch kind 89 opened).
#include "CKwXYPlot.h"
#include "KwConvergenceData.h"

#include <QObject>
#include <QString>
#include <QTimer>
#include <vector>

class CFMView;

class KwSolverRun : public QObject
{
    Q_OBJECT
public:
    enum class Kind { NonlinearStatic, Transient };

    explicit KwSolverRun(CFMView* view, QObject* parent = nullptr);
    ~KwSolverRun() override;

    // Starts a run unless one is going on; returns whether it started.
    bool Start(Kind kind, const QString& analysisName);
    // Stops a run early; the windows are put back as at a normal end.
    void Stop();
    bool IsRunning() const { return m_running; }
    Kind CurrentKind() const { return m_kind; }
    int LinesSent() const { return m_linesSent; }
    void SetInterval(int ms) { m_timer.setInterval(ms); }

    // The add-in's command 89: `sub` 3 fills the convergence plot for `object` (the analysis)
    // with the results known so far, or with the last run's when none runs.
    int OnConvergenceCommand(int sub, int value, CFMView* view, void* object);

    // The progress line of the current step (what the next tick sends).
    QString CurrentLine() const;

    // The run's XY plot: a nonlinear static run draws the load factor against the watched
    // displacement, a transient run the displacement against time; one series per subcase.
    // It holds every converged step, also those sent while the window was closed.
    const CKwXYPlot& Plot() const { return m_plot; }

Q_SIGNALS:
    void finished();

private:
    void tick();
    void finish();
    void addConvergencePoint();
    void openXYPlot();
    void feedXYPlot();
    void fillSampleSeries();
    // Names the watched result in the current language.
    void nameResult();
    std::uint32_t statusId() const { return m_kind == Kind::Transient ? 42u : 41u; }

    CFMView* m_view;
    QTimer m_timer;
    Kind m_kind = Kind::NonlinearStatic;
    int m_subcase = 1;
    int m_increment = 1;
    int m_iteration = 1;
    int m_iterationsThisStep = 3;
    bool m_subIncrement = false;
    int m_linesSent = 0;
    bool m_running = false;
    // The host's record of the convergence results, handed to the plot by address.
    std::vector<KwConvergencePoint> m_points;
    std::wstring m_resultName;
    std::wstring m_units;
    KwConvergenceData m_series{};
    CKwXYPlot m_plot{1, QStringLiteral("Solution history")};
};
