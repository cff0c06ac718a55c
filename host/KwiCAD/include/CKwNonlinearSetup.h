#pragma once
// Iteration and convergence controls of one subcase's nonlinear solution. Every number may be
// missing (the host's sentinel), which means "solver default".
#include "CKwFEBase.h"

#include <array>

class CKwSubCase;

class KWICAD_EXPORT CKwNonlinearSetup : public CKwFEBase
{
public:
    // Slots of m_integers.
    enum IntegerSlot {
        IntStiffnessUpdateSteps = 0, // iterations (static) or time steps (transient)
        IntMaxIterations = 1,        // missing: AUTO
        IntMaxDivergence = 2,
        IntMaxUnbisecting = 3,
        IntMaxLineSearches = 4,
        IntMaxBisections = 5,
        IntSkipFactor = 6,           // transient: time step adjustment skip factor
        IntDominantPeriodSteps = 7,  // transient: steps to obtain the dominant period
        IntTerminationNode = 8,      // node whose displacement ends the run
        IntegerCount = 9
    };
    // Slots of m_reals.
    enum RealSlot {
        RealDisplacementTolerance = 0,
        RealLoadTolerance = 1,
        RealWorkTolerance = 2,
        RealFractionOfStress = 3,
        RealInitialIncrement = 4,    // static
        RealMinIncrement = 5,        // static
        RealMaxIncrement = 6,        // static
        RealLineSearchTolerance = 7,
        RealSteppingBounds = 8,      // transient
        RealMaxTimeRatio = 9,        // transient
        RealFilterTolerance = 10,    // transient
        RealMaxRotation = 11,        // degrees
        RealTerminationValue = 12,
        RealCount = 13
    };
    // Entries of m_convergence.
    enum ConvergenceFlag { ConvDisplacement = 0, ConvLoad = 1, ConvWork = 2 };

    CKwNonlinearSetup(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Nonlinear Setup"); }

    // The analysis type code of the owning analysis (13: nonlinear transient).
    int GetAnalysisType() const { return m_analysisType; }
    void SetAnalysisType(int type) { m_analysisType = type; }
    CKwSubCase* GetSubCase() const { return m_subcase; }
    void SetSubCase(CKwSubCase* subcase) { m_subcase = subcase; }

    int m_methodIndex = 0;    // index into the variant's stiffness update methods
    int m_componentIndex = 0; // 0 none, 1..6 TX..RZ, 7 MAXT, 8 MAXR
    std::array<bool, 3> m_convergence{};
    std::array<int, IntegerCount> m_integers;
    std::array<float, RealCount> m_reals;

    // The solution itself: geometric nonlinearity, loads that turn with the structure, and the
    // stepping. A static run applies the load in m_increments equal increments; a transient
    // one takes m_increments time steps of m_timeIncrement seconds. Results are written every
    // m_outputEvery increments.
    bool m_largeDisplacement = true;
    bool m_followerForces = false;
    int m_increments = 10;
    int m_outputEvery = 1;
    double m_timeIncrement = 0.001;
    bool IsTransient() const { return m_analysisType == 13; }

private:
    int m_analysisType = 0;
    CKwSubCase* m_subcase = nullptr;
};
