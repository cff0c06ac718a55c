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
    // A copy holds a copy of the setup; assigning keeps this subcase's setup object (a dialog
    // may be open on it) and copies the other's values into it.
    CKwSubCase(const CKwSubCase& other);
    CKwSubCase& operator=(const CKwSubCase& other);
    QString GetTypeName() const override { return QStringLiteral("Subcase"); }
    CKwAnalysis* GetAnalysis() const { return m_analysis; }
    void SetAnalysis(CKwAnalysis* a) { m_analysis = a; }
    CKwNonlinearSetup* GetNonlinearSetup() const { return m_setup; }
    // Takes ownership.
    void SetNonlinearSetup(CKwNonlinearSetup* setup);

    // A heat-transfer subcase: its loads and constraints are thermal ones.
    bool m_thermal = false;

private:
    CKwAnalysis* m_analysis;
    CKwNonlinearSetup* m_setup = nullptr;
};
