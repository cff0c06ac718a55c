#pragma once
// Iteration and convergence controls of one subcase's nonlinear solution. Every number may be
// missing (the host's sentinel), which means "solver default".
#include "CKwFEBase.h"

#include <array>

class CKwSubCase;

class KWICAD_EXPORT CKwNonlinearSetup : public CKwFEBase
{
public:
    CKwNonlinearSetup(int id = 0, const QString& name = QString());
    QString GetTypeName() const override { return QStringLiteral("Nonlinear Setup"); }

    // The analysis type code of the owning analysis (13: nonlinear transient).
    int GetAnalysisType() const { return m_analysisType; }
    void SetAnalysisType(int type) { m_analysisType = type; }
    CKwSubCase* GetSubCase() const { return m_subcase; }
    void SetSubCase(CKwSubCase* subcase) { m_subcase = subcase; }

    int m_methodIndex = 0;
    int m_componentIndex = 0;
    std::array<bool, 3> m_convergence{}; // displacement, load, work
    std::array<int, 9> m_integers;
    std::array<float, 13> m_reals;

private:
    int m_analysisType = 0;
    CKwSubCase* m_subcase = nullptr;
};
