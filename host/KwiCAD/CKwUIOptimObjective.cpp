#include "CKwUIOptimObjective.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwStudyFields.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;
namespace F = KwStudyFields;

struct CKwUIOptimObjective::Readings
{
    F::Reader reader;
    double mode = MissingDouble;
};

CKwUIOptimObjective::CKwUIOptimObjective() : m_read(std::make_unique<Readings>()) {}
CKwUIOptimObjective::~CKwUIOptimObjective() = default;

const KW_UOM* CKwUIOptimObjective::units() const
{
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

QList<CKwOptimObjective*>* CKwUIOptimObjective::GetModelList() const
{
    return m_analysis ? &m_analysis->m_objectives : nullptr;
}

std::unique_ptr<CKwOptimObjective> CKwUIOptimObjective::CreateNewObject()
{
    const int id = NextFreeID();
    return std::make_unique<CKwOptimObjective>(
        id, prop("OptimObjective", "DefaultName", "Objective %1").replace("%1", QString::number(id)));
}

QString CKwUIOptimObjective::GetPageTitleString() const
{
    return prop("OptimObjective", "Title", "Optimization Objective");
}

void CKwUIOptimObjective::LoadObjectData()
{
    const CKwOptimObjective* o = GetEditObject();
    if (!o)
        return;
    LoadNameAndID(CodeName, CodeID);
    m_read->reader.Clear();
    m_read->mode = o->m_mode;
    SetControlText(CodeMode, QString::number(o->m_mode));
    const int kind = CKwOptimObjective::UnitKindOf(o->m_response);
    SetControlText(CodeTarget, KwEntityLogic::FormatShown(o->m_target, kind, units()));
    SetControlText(CodeNormalization,
                   KwEntityLogic::FormatShown(o->m_normalization, KwUnitKind::Dimensionless,
                                              units()));
    loadTargetUnit();
}

void CKwUIOptimObjective::loadTargetUnit()
{
    const CKwOptimObjective* o = GetEditObject();
    const KW_UOM* u = units();
    SetControlText(CodeTargetUnit,
                   o && u ? u->GetUnits(CKwOptimObjective::UnitKindOf(o->m_response)) : QString());
}

void CKwUIOptimObjective::UpdateObjectData(bool)
{
    CKwOptimObjective* o = GetEditObject();
    if (!o)
        return;
    UpdateNameAndID(CodeName, CodeID);
    F::Reader& r = m_read->reader;
    r.Read(*this, CodeMode, KwUnitKind::Dimensionless, nullptr, m_read->mode);
    if (!IsMissingValue(m_read->mode) && m_read->mode >= 1 && m_read->mode <= 1e6 &&
        m_read->mode == static_cast<int>(m_read->mode))
        o->m_mode = static_cast<int>(m_read->mode);
    r.Read(*this, CodeTarget, CKwOptimObjective::UnitKindOf(o->m_response), units(), o->m_target);
    r.Read(*this, CodeNormalization, KwUnitKind::Dimensionless, units(), o->m_normalization);
}

int CKwUIOptimObjective::ValidateObjectData()
{
    const CKwOptimObjective* o = GetEditObject();
    if (!o)
        return 0;
    if (!m_analysis) {
        ShowFieldError(prop("OptimObjective", "Title", "Optimization Objective"),
                       err("OptimObjective", "NoStudy",
                           "Select an optimization study for the objective."));
        return 0;
    }
    if (!ValidateNameAndID({"OptimObjective", "Enter a name for the objective.",
                            "Another objective of this study already uses this ID."}))
        return 0;
    const F::Reader& r = m_read->reader;
    QString problem;
    if (o->m_response == CKwOptimObjective::Frequency) {
        problem = r.Problem(CodeMode, KwUnitKind::Dimensionless, nullptr,
                            F::Positive | F::WholeNumber, m_read->mode);
        if (problem.isEmpty() && m_read->mode > 1e6)
            problem = F::WholeNumberText();
        if (!problem.isEmpty()) {
            ShowFieldError(prop("OptimObjective", "LabelMode", "Mode"), problem);
            return 0;
        }
    }
    if (o->m_goal == CKwOptimObjective::Target) {
        problem = r.Problem(CodeTarget, CKwOptimObjective::UnitKindOf(o->m_response), units(),
                            F::Positive, o->m_target);
        if (!problem.isEmpty()) {
            ShowFieldError(prop("OptimObjective", "LabelTarget", "Target"), problem);
            return 0;
        }
    }
    problem = r.Problem(CodeNormalization, KwUnitKind::Dimensionless, units(), F::Positive,
                        o->m_normalization);
    if (!problem.isEmpty()) {
        ShowFieldError(prop("OptimObjective", "LabelNormalization", "Normalizing Factor"),
                       problem);
        return 0;
    }
    return 1;
}

int CKwUIOptimObjective::GetValue(int field, int& value)
{
    const CKwOptimObjective* o = GetEditObject();
    if (!o)
        return 0;
    switch (field) {
    case FieldGoal: value = o->m_goal; return 1;
    case FieldResponse: value = o->m_response; return 1;
    default: return 0;
    }
}

int CKwUIOptimObjective::SetValue(int field, int value)
{
    CKwOptimObjective* o = GetEditObject();
    if (!o)
        return 0;
    switch (field) {
    case FieldGoal:
        if (value < CKwOptimObjective::Minimize || value > CKwOptimObjective::Target)
            return 0;
        o->m_goal = value;
        return 1;
    case FieldResponse:
        if (value < 0 || value >= CKwOptimObjective::ResponseCount || value == o->m_response)
            return value == o->m_response ? 1 : 0;
        // The target was entered for the old response; its number means nothing in the new
        // one's unit.
        o->m_response = value;
        o->m_target = MissingDouble;
        SetControlText(CodeTarget, QString());
        loadTargetUnit();
        return 1;
    default: return 0;
    }
}
