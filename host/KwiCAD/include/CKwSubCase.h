#pragma once
// A subcase of an analysis: a named set of loads and constraints, with an optional nonlinear
// setup.
#include "CKwFEBase.h"

class CKwAnalysis;
class CKwNonlinearSetup;

class KWICAD_EXPORT CKwSubCase : public CKwFEBase
{
public:
    CKwSubCase(int id = 0, const QString& name = QString(), CKwAnalysis* analysis = nullptr);
    ~CKwSubCase() override;
    QString GetTypeName() const override { return QStringLiteral("Subcase"); }
    CKwAnalysis* GetAnalysis() const { return m_analysis; }
    void SetAnalysis(CKwAnalysis* a) { m_analysis = a; }
    CKwNonlinearSetup* GetNonlinearSetup() const { return m_setup; }
    // Takes ownership.
    void SetNonlinearSetup(CKwNonlinearSetup* setup);

private:
    CKwAnalysis* m_analysis;
    CKwNonlinearSetup* m_setup = nullptr;
};
