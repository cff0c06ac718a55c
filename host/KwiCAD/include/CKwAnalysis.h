#pragma once
// An analysis of the model: its type, its subcases and, after a solve, its result sets.
#include "CKwFEBase.h"

#include <QList>
#include <memory>

class CKwMeshModel;
class CKwModalSetup;
class CKwSubCase;
struct KWICAD_EXPORT KwSolverResults;
class CKwImpactWizard;
class CKwFatigueSetup;
class CKwOptimObjective;
class CKwOptimVariable;
class CKwTimeStep;

class KWICAD_EXPORT CKwAnalysis : public CKwFEBase
{
public:
    // Analysis type codes of the model. The nonlinear ones (5, 13) are those the material
    // editor lets take nonlinear material data and PPFA.
    enum TypeCode { LinearStatic = 1, Modal = 2, NonlinearStatic = 5, NonlinearTransient = 13,
                    ResponseSpectrum = 20, ExplicitDynamics = 30, Fatigue = 40,
                    Optimization = 50 };
    // The steady-state response to harmonic loads over a set of frequencies.
    static constexpr int FrequencyResponse = 21;

    CKwAnalysis(int id = 0, const QString& name = QString(), int typeCode = LinearStatic);
    ~CKwAnalysis() override;
    QString GetTypeName() const override { return QStringLiteral("Analysis"); }

    int GetAnalysisTypeCode() const { return m_typeCode; }
    void SetAnalysisTypeCode(int code) { m_typeCode = code; }
    bool IsExplicitAnalysis() const { return m_explicit || m_typeCode == ExplicitDynamics; }
    void SetExplicit(bool on) { m_explicit = on; }
    // Fatigue data of materials is used by fatigue analyses only.
    bool IsFatigueAnalysis() const { return m_typeCode == Fatigue; }

    // Takes ownership.
    CKwSubCase* AddSubCase(CKwSubCase* subcase);
    const QList<CKwSubCase*>& GetSubCases() const { return m_subcases; }

    // Result sets are recorded per subcase id.
    bool HasResultSet() const { return !m_resultSubcases.isEmpty(); }
    void AddResultSet(int subcaseId);
    void ClearResults();
    // The first subcase that has results, or nullptr.
    CKwSubCase* GetFirstValidSubcaseInAnalysisResults() const;

    // The values of the last solver run (nullptr before one); setting them records a result
    // set for every subcase they hold, clearing them clears the sets.
    const KwSolverResults* GetSolverResults() const { return m_solverResults.get(); }
    void SetSolverResults(std::shared_ptr<const KwSolverResults> results);

    void SetMesh(const CKwMeshModel* mesh) { m_mesh = mesh; }
    // True when a node with this user id exists in the analysed mesh.
    bool IsValidUserId(int nodeId) const;

    // Settings of particular analysis types, owned by the analysis: the impact event of an
    // explicit analysis, the fatigue setup of a fatigue analysis (null while there is none),
    // and the objectives and design variables of an optimization study. The setters take
    // ownership and delete what they replace.
    CKwImpactWizard* GetImpactWizard() const { return m_impact; }
    void SetImpactWizard(CKwImpactWizard* impact);
    CKwFatigueSetup* GetFatigueSetup() const { return m_fatigueSetup; }
    void SetFatigueSetup(CKwFatigueSetup* setup);
    QList<CKwOptimObjective*> m_objectives;
    QList<CKwOptimVariable*> m_variables;
    // The modal setup of a modal analysis and the time stepping of a transient one; null until
    // given. The setters take ownership and delete what they replace.
    CKwModalSetup* GetModalSetup() const { return m_modalSetup.get(); }
    void SetModalSetup(CKwModalSetup* setup);
    CKwTimeStep* GetTimeStep() const { return m_timeStep.get(); }
    void SetTimeStep(CKwTimeStep* steps);
    // The subcases, for the subcase editor that adds new ones.
    QList<CKwSubCase*>& SubCaseList() { return m_subcases; }

private:
    int m_typeCode;
    CKwImpactWizard* m_impact = nullptr;
    CKwFatigueSetup* m_fatigueSetup = nullptr;
    bool m_explicit = false;
    QList<CKwSubCase*> m_subcases;
    QList<int> m_resultSubcases;
    const CKwMeshModel* m_mesh = nullptr;
    std::shared_ptr<const KwSolverResults> m_solverResults;
    std::unique_ptr<CKwModalSetup> m_modalSetup;
    std::unique_ptr<CKwTimeStep> m_timeStep;
};
