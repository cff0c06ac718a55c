#include "CKwUISolutionFrequency.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;

namespace {

using F = CKwSolutionFrequency;
using U = CKwUISolutionFrequency;
namespace R = KwRange;
constexpr int kHz = KwUnitKind::Frequency;
constexpr const char* kSec = "SolutionFrequency";

// Every method's fields; the method a code belongs to is its tens (1 range, 2 cluster, 3
// spread).
const KwNumberSlot<F> kSlots[] = {
    {{U::CodeRangeStart, kSec, "LabelStartFrequency", "Start Frequency", kHz, 1.0, R::Required,
      0.0},
     &F::m_rangeStart},
    {{U::CodeRangeEnd, kSec, "LabelEndFrequency", "End Frequency", kHz, 1.0,
      R::Required | R::AboveMin, 0.0},
     &F::m_rangeEnd},
    {{U::CodeRangeIncrements, kSec, "LabelIncrements", "Number of Increments",
      KwUnitKind::Dimensionless, 1.0, R::Required | R::Whole | R::HasMax, 1.0, 100000.0},
     nullptr, &F::m_rangeIncrements},
    {{U::CodeClusterLow, kSec, "LabelLowerFrequency", "Lower Frequency", kHz, 1.0, R::Required,
      0.0},
     &F::m_clusterLow},
    {{U::CodeClusterHigh, kSec, "LabelUpperFrequency", "Upper Frequency", kHz, 1.0,
      R::Required | R::AboveMin, 0.0},
     &F::m_clusterHigh},
    {{U::CodeClusterPoints, kSec, "LabelPointsPerGap", "Points between Modes",
      KwUnitKind::Dimensionless, 1.0, R::Required | R::Whole | R::HasMax, 1.0, 1000.0},
     nullptr, &F::m_clusterPoints},
    {{U::CodeClusterBias, kSec, "LabelClusterBias", "Cluster Bias", KwUnitKind::Dimensionless,
      1.0, R::Required | R::AboveMin, 0.0},
     &F::m_clusterBias},
    {{U::CodeSpreadLow, kSec, "LabelLowerFrequency", "Lower Frequency", kHz, 1.0, R::Required,
      0.0},
     &F::m_spreadLow},
    {{U::CodeSpreadHigh, kSec, "LabelUpperFrequency", "Upper Frequency", kHz, 1.0,
      R::Required | R::AboveMin, 0.0},
     &F::m_spreadHigh},
    {{U::CodeSpreadPercent, kSec, "LabelSpread", "Spread", KwUnitKind::Dimensionless, 100.0,
      R::Required | R::AboveMin | R::HasMax, 0.0, 1.0},
     &F::m_spreadFraction},
    {{U::CodeSpreadPoints, kSec, "LabelPointsPerMode", "Points per Mode",
      KwUnitKind::Dimensionless, 1.0, R::Required | R::Whole | R::HasMax, 1.0, 1000.0},
     nullptr, &F::m_spreadPoints},
};

int methodOfCode(int code) { return code / 10; }

const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}

} // namespace

CKwUISolutionFrequency::CKwUISolutionFrequency() : m_numbers(kSlots) {}
CKwUISolutionFrequency::~CKwUISolutionFrequency() = default;

const KW_UOM* CKwUISolutionFrequency::GetUnits() const
{
    const KW_UOM* units = m_pView ? m_pView->GetUnitHolder() : nullptr;
    return units ? units : &si();
}

QList<CKwSolutionFrequency*>* CKwUISolutionFrequency::GetModelList() const
{
    return GetModel() ? &GetModel()->m_solutionFrequencies : nullptr;
}

std::unique_ptr<CKwSolutionFrequency> CKwUISolutionFrequency::CreateNewObject()
{
    const int id = NextFreeID();
    auto f = std::make_unique<CKwSolutionFrequency>(
        id, QStringLiteral("Solution Frequencies %1").arg(id));
    f->m_analysisId = m_analysis ? m_analysis->GetID() : 0;
    return f;
}

QStringList CKwUISolutionFrequency::GetDiscreteTexts() const
{
    QStringList texts;
    if (const CKwSolutionFrequency* f = GetEditObject())
        for (double v : f->m_discrete)
            texts << KwEntityLogic::FormatShown(v, kHz, GetUnits());
    return texts;
}

void CKwUISolutionFrequency::SetDiscreteTexts(const QStringList& texts)
{
    CKwSolutionFrequency* f = GetEditObject();
    if (!f)
        return;
    const QStringList shown = GetDiscreteTexts();
    QList<double> values;
    m_badDiscreteRow = -1;
    for (int row = 0; row < texts.size(); ++row) {
        const QString t = texts[row].trimmed();
        if (t.isEmpty())
            continue;
        // A row left as it was filled keeps its stored value exactly.
        if (row < shown.size() && row < f->m_discrete.size() &&
            KwEntityLogic::ShowsUnchanged(t, shown[row])) {
            values.append(f->m_discrete[row]);
            continue;
        }
        double v = MissingDouble;
        if (!GetUnits()->ReadInternalValue(t, kHz, &v)) {
            m_badDiscreteRow = row;
            return; // the list stays as it was; submit names the row
        }
        values.append(v);
    }
    f->m_discrete = values;
}

void CKwUISolutionFrequency::LoadObjectData()
{
    const CKwSolutionFrequency* f = GetEditObject();
    if (!f)
        return;
    LoadNameAndID(CodeName, CodeID);
    m_numbers.Load(*this, *f, GetUnits());
    const QStringList texts = GetDiscreteTexts();
    SetControlItems(CodeDiscrete, int(texts.size()), texts.constData());
    m_badDiscreteRow = -1;
}

void CKwUISolutionFrequency::UpdateObjectData(bool)
{
    CKwSolutionFrequency* f = GetEditObject();
    if (!f)
        return;
    UpdateNameAndID(CodeName, CodeID);
    m_numbers.Update(*this, *f, GetUnits());
}

bool CKwUISolutionFrequency::validateDiscrete()
{
    const CKwSolutionFrequency* f = GetEditObject();
    const QString label = prop(kSec, "LabelFrequencies", "Frequencies");
    if (m_badDiscreteRow >= 0) {
        ShowFieldError(label, KwEntityLogic::FillArgs(
                                  err(kSec, "RowNotNumber", "Row %s: %s"),
                                  {QString::number(m_badDiscreteRow + 1),
                                   GetUnits()->GetErrorMessageForUnit(kHz)}));
        return false;
    }
    if (f->m_discrete.isEmpty()) {
        ShowFieldError(label, err(kSec, "FrequencyRequired", "Enter at least one frequency."));
        return false;
    }
    for (int row = 0; row < f->m_discrete.size(); ++row)
        if (f->m_discrete[row] < 0) {
            ShowFieldError(label, KwEntityLogic::FillArgs(
                                      err(kSec, "RowNotNumber", "Row %s: %s"),
                                      {QString::number(row + 1),
                                       err(kSec, "NegativeFrequency",
                                           "A frequency cannot be below zero.")}));
            return false;
        }
    return true;
}

// The band's upper limit must lie above its lower one.
bool CKwUISolutionFrequency::validateBand(int lowCode, int highCode)
{
    const CKwSolutionFrequency* f = GetEditObject();
    const auto* low = m_numbers.SlotOf(lowCode);
    const auto* high = m_numbers.SlotOf(highCode);
    if (KwSetupNumbers<F>::Get(*f, *high) > KwSetupNumbers<F>::Get(*f, *low))
        return true;
    ShowFieldError(KwSetupFields::Label(high->rule),
                   KwEntityLogic::FillArgs(
                       err(kSec, "LimitsOrder", "Enter a value above %s (%s)."),
                       {KwSetupFields::Show(KwSetupNumbers<F>::Get(*f, *low), low->rule,
                                            GetUnits()),
                        KwSetupFields::Label(low->rule)}));
    return false;
}

int CKwUISolutionFrequency::ValidateObjectData()
{
    CKwSolutionFrequency* f = GetEditObject();
    if (!f)
        return 0;
    if (!ValidateNameAndID({kSec, "Enter a name for the solution frequencies.",
                            "Other solution frequencies already use this ID."}))
        return 0;
    if (f->m_method == CKwSolutionFrequency::Discrete)
        return validateDiscrete() ? 1 : 0;
    QString label, why;
    const int method = f->m_method;
    if (m_numbers.FirstProblem(*f, GetUnits(),
                               [method](int code) { return methodOfCode(code) == method; },
                               &label, &why)) {
        ShowFieldError(label, why);
        return 0;
    }
    switch (method) {
    case CKwSolutionFrequency::Range:
        if (!validateBand(CodeRangeStart, CodeRangeEnd))
            return 0;
        if (f->m_rangeSpacing == CKwSolutionFrequency::Logarithmic && !(f->m_rangeStart > 0)) {
            ShowFieldError(prop(kSec, "LabelStartFrequency", "Start Frequency"),
                           err(kSec, "LogNeedsPositiveStart",
                               "Logarithmic spacing needs a start frequency above zero."));
            return 0;
        }
        return 1;
    case CKwSolutionFrequency::ClusterModes:
        return validateBand(CodeClusterLow, CodeClusterHigh) ? 1 : 0;
    case CKwSolutionFrequency::SpreadAround:
        return validateBand(CodeSpreadLow, CodeSpreadHigh) ? 1 : 0;
    default: return 0;
    }
}

QString CKwUISolutionFrequency::GetPageTitleString() const
{
    return prop(kSec, "Title", "Solution Frequencies");
}

int CKwUISolutionFrequency::GetValue(int field, int& value)
{
    const CKwSolutionFrequency* f = GetEditObject();
    if (!f)
        return 0;
    switch (field) {
    case FieldMethod: value = f->m_method; return 1;
    case FieldSpacing: value = f->m_rangeSpacing; return 1;
    default: return 0;
    }
}

int CKwUISolutionFrequency::SetValue(int field, int value)
{
    CKwSolutionFrequency* f = GetEditObject();
    if (!f)
        return 0;
    switch (field) {
    case FieldMethod:
        if (value < 0 || value >= CKwSolutionFrequency::MethodCount)
            return 0;
        f->m_method = value;
        return 1;
    case FieldSpacing:
        if (value != CKwSolutionFrequency::Linear && value != CKwSolutionFrequency::Logarithmic)
            return 0;
        f->m_rangeSpacing = value;
        return 1;
    default: return 0;
    }
}
