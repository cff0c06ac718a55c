#include "CKwModalSetup.h"
#include "CKwTimeStep.h"

double CKwTimeStep::EndTime(int row) const
{
    double t = 0.0;
    for (int i = 0; i <= row && i < m_intervals.size(); ++i)
        t += m_intervals.at(i).steps * m_intervals.at(i).increment;
    return t;
}

long long CKwTimeStep::TotalSteps() const
{
    long long n = 0;
    for (const Interval& i : m_intervals)
        n += i.steps;
    return n;
}

#include "CKwAnalysis.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"

void CKwAnalysis::SetModalSetup(CKwModalSetup* setup)
{
    if (setup != m_modalSetup.get())
        m_modalSetup.reset(setup);
}

void CKwAnalysis::SetTimeStep(CKwTimeStep* steps)
{
    if (steps != m_timeStep.get())
        m_timeStep.reset(steps);
}

CKwSubCase::CKwSubCase(const CKwSubCase& other)
    : CKwFEBase(other), m_thermal(other.m_thermal), m_analysis(other.m_analysis)
{
    if (other.m_setup) {
        m_setup = new CKwNonlinearSetup(*other.m_setup);
        m_setup->SetSubCase(this);
    }
}

CKwSubCase& CKwSubCase::operator=(const CKwSubCase& other)
{
    if (this == &other)
        return *this;
    CKwFEBase::operator=(other);
    m_thermal = other.m_thermal;
    m_analysis = other.m_analysis;
    if (!other.m_setup) {
        SetNonlinearSetup(nullptr);
    } else if (m_setup) {
        *m_setup = *other.m_setup;
        m_setup->SetSubCase(this);
    } else {
        SetNonlinearSetup(new CKwNonlinearSetup(*other.m_setup));
    }
    return *this;
}
