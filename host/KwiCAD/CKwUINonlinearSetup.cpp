#include "CKwUINonlinearSetup.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwSubCase.h"
#include "KW_UOM.h"
#include "KwSetupReaders.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;
namespace F = KwSetupReaders;

CKwUINonlinearSetup::CKwUINonlinearSetup() = default;
CKwUINonlinearSetup::~CKwUINonlinearSetup() = default;

const KW_UOM* CKwUINonlinearSetup::units() const
{
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

CKwAnalysis* CKwUINonlinearSetup::GetAnalysis() const
{
    const CKwNonlinearSetup* s = GetObject();
    return s && s->GetSubCase() ? s->GetSubCase()->GetAnalysis() : nullptr;
}

bool CKwUINonlinearSetup::IsSolutionFixed() const
{
    const CKwAnalysis* a = GetAnalysis();
    return a && (a->GetAnalysisTypeCode() == CKwAnalysis::NonlinearStatic ||
                 a->GetAnalysisTypeCode() == CKwAnalysis::NonlinearTransient);
}

std::unique_ptr<CKwNonlinearSetup> CKwUINonlinearSetup::CreateNewObject()
{
    auto s = std::make_unique<CKwNonlinearSetup>(1, QString());
    s->SetAnalysisType(CKwAnalysis::NonlinearStatic);
    return s;
}

QString CKwUINonlinearSetup::GetPageTitleString() const
{
    return prop("NonlinearSetup", "Title", "Nonlinear Setup");
}

void CKwUINonlinearSetup::LoadObjectData()
{
    const CKwNonlinearSetup* s = GetEditObject();
    if (!s)
        return;
    SetControlText(CodeIncrements, QString::number(s->m_increments));
    SetControlText(CodeOutputEvery, QString::number(s->m_outputEvery));
    SetControlText(CodeTimeIncrement,
                   KwEntityLogic::FormatShown(s->m_timeIncrement, KwUnitKind::Time, units()));
    m_incrementsStatus = m_outputStatus = m_timeStatus = F::Read;
}

void CKwUINonlinearSetup::UpdateObjectData(bool)
{
    CKwNonlinearSetup* s = GetEditObject();
    if (!s)
        return;
    QString text;
    if (GetControlText(CodeIncrements, text))
        m_incrementsStatus = F::ReadCount(text, 1, &s->m_increments);
    if (GetControlText(CodeOutputEvery, text))
        m_outputStatus = F::ReadCount(text, 1, &s->m_outputEvery);
    m_timeStatus = F::Read;
    if (GetControlText(CodeTimeIncrement, text) &&
        !KwEntityLogic::ShowsUnchanged(
            text, KwEntityLogic::FormatShown(s->m_timeIncrement, KwUnitKind::Time, units())))
        m_timeStatus = F::ReadQuantity(text, KwUnitKind::Time, units(), true, &s->m_timeIncrement);
}

int CKwUINonlinearSetup::ValidateObjectData()
{
    const CKwNonlinearSetup* s = GetEditObject();
    if (!s)
        return 0;
    const QString increments =
        s->IsTransient() ? prop("NonlinearSetup", "LabelTimeSteps", "Number of Time Steps")
                         : prop("NonlinearSetup", "LabelIncrements", "Number of Increments");
    const QString output = prop("NonlinearSetup", "LabelOutputEvery", "Output Every");
    if (m_incrementsStatus != F::Read) {
        ShowFieldError(increments, F::Message(F::Reason(m_incrementsStatus),
                                              KwUnitKind::Dimensionless, units()));
        return 0;
    }
    if (m_outputStatus != F::Read) {
        ShowFieldError(output, F::Message(F::Reason(m_outputStatus), KwUnitKind::Dimensionless,
                                          units()));
        return 0;
    }
    if (s->m_outputEvery > s->m_increments) {
        ShowFieldError(output, err("NonlinearSetup", "OutputBeyondIncrements",
                                   "Enter an output interval no larger than the number of "
                                   "increments."));
        return 0;
    }
    // The time increment is a transient run's only.
    if (s->IsTransient() && m_timeStatus != F::Read) {
        ShowFieldError(prop("NonlinearSetup", "LabelTimeIncrement", "Time Increment"),
                       F::Message(F::Reason(m_timeStatus), KwUnitKind::Time, units()));
        return 0;
    }
    return 1;
}

int CKwUINonlinearSetup::GetValue(int field, int& value)
{
    const CKwNonlinearSetup* s = GetEditObject();
    if (!s)
        return 0;
    switch (field) {
    case FieldSolution: value = s->IsTransient() ? 1 : 0; return 1;
    case FieldLargeDisplacement: value = s->m_largeDisplacement ? 1 : 0; return 1;
    case FieldFollowerForces: value = s->m_followerForces ? 1 : 0; return 1;
    default: return 0;
    }
}

int CKwUINonlinearSetup::SetValue(int field, int value)
{
    CKwNonlinearSetup* s = GetEditObject();
    if (!s)
        return 0;
    switch (field) {
    case FieldSolution:
        if (IsSolutionFixed() || (value != 0 && value != 1))
            return 0;
        s->SetAnalysisType(value ? CKwAnalysis::NonlinearTransient : CKwAnalysis::NonlinearStatic);
        return 1;
    case FieldLargeDisplacement: s->m_largeDisplacement = value != 0; return 1;
    case FieldFollowerForces: s->m_followerForces = value != 0; return 1;
    default: return 0;
    }
}
