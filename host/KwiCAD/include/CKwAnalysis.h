#pragma once
// An analysis of the model: its type, its subcases and, after a solve, its result sets.
#include "CKwFEBase.h"

#include <QList>
#include <memory>

class CKwMeshModel;
class CKwModalSetup;
class CKwSubCase;
class CKwTimeStep;

class KWICAD_EXPORT CKwAnalysis : public CKwFEBase
{
public:
    // Analysis type codes of the model. The nonlinear ones (5, 13) are those the material
    // editor lets take nonlinear material data and PPFA.
    enum TypeCode { LinearStatic = 1, Modal = 2, NonlinearStatic = 5, NonlinearTransient = 13,
                    ResponseSpectrum = 20, ExplicitDynamics = 30, Fatigue = 40 };

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

    void SetMesh(const CKwMeshModel* mesh) { m_mesh = mesh; }
    // True when a node with this user id exists in the analysed mesh.
    bool IsValidUserId(int nodeId) const;

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
    bool m_explicit = false;
    QList<CKwSubCase*> m_subcases;
    QList<int> m_resultSubcases;
    const CKwMeshModel* m_mesh = nullptr;
    std::unique_ptr<CKwModalSetup> m_modalSetup;
    std::unique_ptr<CKwTimeStep> m_timeStep;
};
