// The settings entities of particular analysis types: the impact event, the fatigue setup and
// the objectives and design variables of an optimization study.
#include "CKwAnalysis.h"
#include "CKwFatigueSetup.h"
#include "CKwImpactWizard.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"
#include "CKwPhysicalProperty.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <cmath>

void KwDeleteAnalysisSettings(CKwAnalysis& analysis)
{
    analysis.SetImpactWizard(nullptr);
    analysis.SetFatigueSetup(nullptr);
    qDeleteAll(analysis.m_objectives);
    analysis.m_objectives.clear();
    qDeleteAll(analysis.m_variables);
    analysis.m_variables.clear();
}

void CKwAnalysis::SetImpactWizard(CKwImpactWizard* impact)
{
    if (impact == m_impact)
        return;
    delete m_impact;
    m_impact = impact;
}

void CKwAnalysis::SetFatigueSetup(CKwFatigueSetup* setup)
{
    if (setup == m_fatigueSetup)
        return;
    delete m_fatigueSetup;
    m_fatigueSetup = setup;
}

// --- impact ---

CKwImpactWizard::CKwImpactWizard(int id, const QString& name) : CKwFEBase(id, name) {}
CKwImpactWizard::~CKwImpactWizard() = default;

bool CKwImpactWizard::operator==(const CKwImpactWizard& o) const
{
    return GetID() == o.GetID() && GetName() == o.GetName() &&
           m_translation == o.m_translation && m_velocity == o.m_velocity &&
           m_acceleration == o.m_acceleration && m_target == o.m_target &&
           m_targetFaceId == o.m_targetFaceId && m_planeDistance == o.m_planeDistance &&
           m_duration == o.m_duration;
}

double CKwImpactWizard::TranslationLength() const
{
    double sum = 0.0;
    for (double c : m_translation)
        if (!IsMissingValue(c))
            sum += c * c;
    return std::sqrt(sum);
}

// --- fatigue ---

CKwFatigueSetup::CKwFatigueSetup(int id, const QString& name) : CKwFEBase(id, name) {}
CKwFatigueSetup::~CKwFatigueSetup() = default;

bool CKwFatigueSetup::operator==(const CKwFatigueSetup& o) const
{
    return GetID() == o.GetID() && GetName() == o.GetName() && m_cycles == o.m_cycles &&
           m_loading == o.m_loading && m_ratio == o.m_ratio && m_history == o.m_history &&
           m_meanStress == o.m_meanStress && m_stressMeasure == o.m_stressMeasure &&
           m_scale == o.m_scale;
}

double CKwFatigueSetup::StressRatio() const
{
    switch (m_loading) {
    case FullyReversed: return -1.0;
    case ZeroBased: return 0.0;
    default: return m_ratio;
    }
}

// --- optimization ---

CKwOptimObjective::CKwOptimObjective(int id, const QString& name)
    : CKwFEBase(id, name), m_target(MissingDouble)
{
}
CKwOptimObjective::~CKwOptimObjective() = default;

bool CKwOptimObjective::operator==(const CKwOptimObjective& o) const
{
    return GetID() == o.GetID() && GetName() == o.GetName() && m_goal == o.m_goal &&
           m_response == o.m_response && m_mode == o.m_mode && m_target == o.m_target &&
           m_normalization == o.m_normalization;
}

int CKwOptimObjective::UnitKindOf(int response)
{
    switch (response) {
    case Mass: return KwUnitKind::Mass;
    case Volume: return KwUnitKind::Volume;
    case Displacement: return KwUnitKind::Length;
    case Stress: return KwUnitKind::Stress;
    case Frequency: return KwUnitKind::Frequency;
    default: return KwUnitKind::Dimensionless;
    }
}

CKwOptimVariable::CKwOptimVariable(int id, const QString& name)
    : CKwFEBase(id, name), m_lower(MissingDouble), m_upper(MissingDouble),
      m_initial(MissingDouble), m_step(MissingDouble)
{
}
CKwOptimVariable::~CKwOptimVariable() = default;

bool CKwOptimVariable::operator==(const CKwOptimVariable& o) const
{
    return GetID() == o.GetID() && GetName() == o.GetName() && m_propertyId == o.m_propertyId &&
           m_parameter == o.m_parameter && m_lower == o.m_lower && m_upper == o.m_upper &&
           m_initial == o.m_initial && m_step == o.m_step;
}

int CKwOptimVariable::ParameterCount(const CKwPhysicalProperty* p)
{
    if (!p)
        return 0;
    if (p->m_idealization == CKwPhysicalProperty::Shell)
        return 1;
    if (p->m_idealization == CKwPhysicalProperty::Beam)
        return CKwPhysicalProperty::ShapeDimensionCount(p->m_sectionShape);
    return 0;
}

double CKwOptimVariable::CurrentValue(const CKwPhysicalProperty* p, int parameter)
{
    if (parameter < 0 || parameter >= ParameterCount(p))
        return MissingDouble;
    if (p->m_idealization == CKwPhysicalProperty::Shell)
        return p->m_thickness;
    return p->GetDimensions(1)[parameter];
}
