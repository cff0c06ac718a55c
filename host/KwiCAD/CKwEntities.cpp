// Constructors of the small model entities (each class has its own header).
#include "CKwAnalysis.h"
#include "CKwFEBase.h"
#include "CKwLoad.h"
#include "CKwMeshModel.h"
#include "CKwModalSetup.h"
#include "CKwTimeStep.h"
#include "CKwNonlinearSetup.h"
#include "CKwPhysicalProperty.h"
#include "CKwPlot.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "KwSolverResults.h"
#include "CKwUIEntity.h"
#include "KwNumbers.h"

// The owned settings of particular analysis types (CKwStudyEntities.cpp).
void KwDeleteAnalysisSettings(CKwAnalysis& analysis);

#include <cmath>

CKwFEBase::CKwFEBase(int id, const QString& name) : m_id(id), m_name(name) {}
CKwFEBase::~CKwFEBase() = default;

CKwRestraint::CKwRestraint(int id, const QString& name)
    : CKwFEBase(id, name), m_temperature(MissingDouble)
{
}

CKwLoad::CKwLoad(int id, const QString& name)
    : CKwFEBase(id, name), m_magnitude(MissingDouble), m_ambientTemperature(MissingDouble),
      m_convectionCoefficient(MissingDouble), m_absorptivity(MissingDouble),
      m_emissivity(MissingDouble), m_location{MissingDouble, MissingDouble, MissingDouble}
{
}

bool CKwLoad::IsThermal() const
{
    return m_type == Temperature || m_type == HeatFlux || m_type == Convection ||
           m_type == Radiation || m_type == HeatPower;
}

QList<CKwUIEntity*> CKwLoad::GetEntitiesOfKind(int kind) const
{
    QList<CKwUIEntity*> out;
    for (CKwUIEntity* e : m_entities)
        if (e && e->GetKind() == kind)
            out.append(e);
    return out;
}

double CKwLoad::GetComponent(int axis) const
{
    if (axis < 0 || axis > 2 || IsMissingValue(m_magnitude))
        return MissingDouble;
    double length = 0;
    for (double d : m_direction) {
        if (IsMissingValue(d))
            return MissingDouble;
        length += d * d;
    }
    if (length <= 0)
        return MissingDouble;
    return m_magnitude * m_direction[static_cast<std::size_t>(axis)] / std::sqrt(length);
}

CKwNonlinearSetup::CKwNonlinearSetup(int id, const QString& name) : CKwFEBase(id, name)
{
    m_integers.fill(MissingInteger);
    m_reals.fill(MissingFloat);
}

CKwSubCase::CKwSubCase(int id, const QString& name, CKwAnalysis* analysis)
    : CKwFEBase(id, name), m_analysis(analysis)
{
}

CKwSubCase::~CKwSubCase() { delete m_setup; }

void CKwSubCase::SetNonlinearSetup(CKwNonlinearSetup* setup)
{
    if (setup == m_setup)
        return;
    delete m_setup;
    m_setup = setup;
    if (!m_setup)
        return;
    m_setup->SetSubCase(this);
    // A setup given to a subcase that already belongs to an analysis takes its type now;
    // otherwise AddSubCase sets it.
    if (m_analysis)
        m_setup->SetAnalysisType(m_analysis->GetAnalysisTypeCode());
}

CKwAnalysis::CKwAnalysis(int id, const QString& name, int typeCode)
    : CKwFEBase(id, name), m_typeCode(typeCode)
{
}

CKwAnalysis::~CKwAnalysis()
{
    qDeleteAll(m_subcases);
    KwDeleteAnalysisSettings(*this);
}

CKwSubCase* CKwAnalysis::AddSubCase(CKwSubCase* subcase)
{
    subcase->SetAnalysis(this);
    m_subcases.append(subcase);
    if (CKwNonlinearSetup* s = subcase->GetNonlinearSetup())
        s->SetAnalysisType(m_typeCode);
    return subcase;
}

void CKwAnalysis::AddResultSet(int subcaseId)
{
    if (!m_resultSubcases.contains(subcaseId))
        m_resultSubcases.append(subcaseId);
}

void CKwAnalysis::ClearResults()
{
    m_resultSubcases.clear();
    m_solverResults.reset();
}

void CKwAnalysis::SetSolverResults(std::shared_ptr<const KwSolverResults> results)
{
    ClearResults();
    m_solverResults = std::move(results);
    if (m_solverResults)
        for (const KwResultSet& set : m_solverResults->sets)
            if (set.subcaseId)
                AddResultSet(set.subcaseId);
}

CKwSubCase* CKwAnalysis::GetFirstValidSubcaseInAnalysisResults() const
{
    for (CKwSubCase* s : m_subcases)
        if (m_resultSubcases.contains(s->GetID()))
            return s;
    return nullptr;
}

bool CKwAnalysis::IsValidUserId(int nodeId) const { return m_mesh && m_mesh->HasNode(nodeId); }

CKwPlot::CKwPlot(int id, const QString& name, CKwAnalysis* analysis)
    : CKwFEBase(id, name), m_analysis(analysis)
{
}

void CKwPlot::TurnPlotDisplayOff()
{
    m_displayed = false;
    m_animating = false;
}

void CKwPlot::TurnPlotAnimateOff() { m_animating = false; }
