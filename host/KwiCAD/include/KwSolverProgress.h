#pragma once
// Reads the solver's console output a line at a time and turns it into the progress lines the
// status windows take: "subcase,increment,iteration,load %,displacement %,iteration %,residual,
// step type" (step type F for an increment, S for a retried, cut-back one). It also gathers the
// solver's own error messages, word for word.
#include "KwiCADExport.h"

#include <QString>
#include <QStringList>
#include <string_view>
#include <vector>

class KWICAD_EXPORT KwSolverProgress
{
public:
    // stepSubcases[i]: the subcase of step i + 1; stepPeriod: the time one step covers;
    // maxIterations: what an iteration count is measured against.
    KwSolverProgress(std::vector<int> stepSubcases = {}, double stepPeriod = 1.0,
                     int maxIterations = 16);

    // Takes one line of output; returns true when it moved the run on, and CurrentLine() then
    // holds the progress line to show.
    bool AddLine(std::string_view line);
    QString CurrentLine() const;

    int Step() const { return m_step; }
    int Subcase() const;
    int Increment() const { return m_increment; }
    int Iteration() const { return m_iteration; }
    int ConvergedIncrements() const { return m_converged; }
    double StepTime() const { return m_stepTime; }
    bool SubIncrement() const { return m_attempt > 1; }
    // The solver's error lines and the lines that explain them.
    const QStringList& Errors() const { return m_errors; }
    bool Finished() const { return m_finished; }

private:
    std::vector<int> m_stepSubcases;
    double m_period;
    int m_maxIterations;
    int m_step = 0;
    int m_increment = 0;
    int m_attempt = 1;
    int m_iteration = 0;
    int m_converged = 0;
    double m_stepTime = 0;
    double m_residual = 0;
    double m_dispIncrement = 0;
    double m_dispCorrection = 0;
    bool m_stepDone = false;
    bool m_finished = false;
    int m_errorLinesLeft = 0;
    QStringList m_errors;
};
