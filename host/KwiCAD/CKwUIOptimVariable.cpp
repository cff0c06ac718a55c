#include "CKwUIOptimVariable.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwPhysicalProperty.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwStudyFields.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;
namespace F = KwStudyFields;

namespace {
constexpr int kLength = KwUnitKind::Length;
} // namespace

CKwUIOptimVariable::CKwUIOptimVariable() : m_reader(std::make_unique<F::Reader>()) {}
CKwUIOptimVariable::~CKwUIOptimVariable() = default;

const KW_UOM* CKwUIOptimVariable::units() const
{
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

QList<CKwOptimVariable*>* CKwUIOptimVariable::GetModelList() const
{
    return m_analysis ? &m_analysis->m_variables : nullptr;
}

QList<CKwPhysicalProperty*> CKwUIOptimVariable::CandidateProperties() const
{
    QList<CKwPhysicalProperty*> out;
    if (const CKwFEModel* m = GetModel())
        for (CKwPhysicalProperty* p : m->m_properties)
            if (CKwOptimVariable::ParameterCount(p) > 0)
                out.append(p);
    return out;
}

CKwPhysicalProperty* CKwUIOptimVariable::property() const
{
    const CKwOptimVariable* v = GetEditObject();
    for (CKwPhysicalProperty* p : CandidateProperties())
        if (v && p->GetID() == v->m_propertyId)
            return p;
    return nullptr;
}

std::unique_ptr<CKwOptimVariable> CKwUIOptimVariable::CreateNewObject()
{
    const int id = NextFreeID();
    auto v = std::make_unique<CKwOptimVariable>(
        id, prop("OptimVariable", "DefaultName", "Variable %1").replace("%1", QString::number(id)));
    const QList<CKwPhysicalProperty*> candidates = CandidateProperties();
    if (!candidates.isEmpty()) {
        v->m_propertyId = candidates.first()->GetID();
        const double now = CKwOptimVariable::CurrentValue(candidates.first(), 0);
        v->m_initial = now;
        if (!IsMissingValue(now) && now > 0) {
            // A range around today's size, a twentieth of it per step.
            v->m_lower = now / 2;
            v->m_upper = now * 2;
            v->m_step = now / 20;
        }
    }
    return v;
}

QString CKwUIOptimVariable::GetPageTitleString() const
{
    return prop("OptimVariable", "Title", "Optimization Variable");
}

void CKwUIOptimVariable::LoadObjectData()
{
    const CKwOptimVariable* v = GetEditObject();
    if (!v)
        return;
    LoadNameAndID(CodeName, CodeID);
    m_reader->Clear();
    QStringList names;
    for (const CKwPhysicalProperty* p : CandidateProperties())
        names << p->GetName();
    SetControlItems(CodeProperties, static_cast<int>(names.size()), names.constData());
    loadParameters();
    const KW_UOM* u = units();
    SetControlText(CodeLower, KwEntityLogic::FormatShown(v->m_lower, kLength, u));
    SetControlText(CodeUpper, KwEntityLogic::FormatShown(v->m_upper, kLength, u));
    SetControlText(CodeInitial, KwEntityLogic::FormatShown(v->m_initial, kLength, u));
    SetControlText(CodeStep, KwEntityLogic::FormatShown(v->m_step, kLength, u));
    for (int i = 0; i < 4; ++i)
        SetControlText(CodeUnitFirst + i, u ? u->GetUnits(kLength) : QString());
}

void CKwUIOptimVariable::loadParameters()
{
    const CKwPhysicalProperty* p = property();
    QStringList items;
    if (p && p->m_idealization == CKwPhysicalProperty::Shell)
        items << prop("OptimVariable", "DropDownThickness", "Thickness");
    else
        for (int i = 0; i < CKwOptimVariable::ParameterCount(p); ++i)
            items << prop("OptimVariable", "DropDownDimension", "Dimension %1")
                         .replace("%1", QString::number(i + 1));
    SetControlItems(CodeParameters, static_cast<int>(items.size()), items.constData());
}

void CKwUIOptimVariable::seedFromProperty()
{
    CKwOptimVariable* v = GetEditObject();
    const double now = CKwOptimVariable::CurrentValue(property(), v->m_parameter);
    if (IsMissingValue(now))
        return;
    v->m_initial = now;
    SetControlText(CodeInitial, KwEntityLogic::FormatShown(now, kLength, units()));
}

void CKwUIOptimVariable::UpdateObjectData(bool)
{
    CKwOptimVariable* v = GetEditObject();
    if (!v)
        return;
    UpdateNameAndID(CodeName, CodeID);
    const KW_UOM* u = units();
    m_reader->Read(*this, CodeLower, kLength, u, v->m_lower);
    m_reader->Read(*this, CodeUpper, kLength, u, v->m_upper);
    m_reader->Read(*this, CodeInitial, kLength, u, v->m_initial);
    m_reader->Read(*this, CodeStep, kLength, u, v->m_step);
}

int CKwUIOptimVariable::ValidateObjectData()
{
    const CKwOptimVariable* v = GetEditObject();
    if (!v)
        return 0;
    if (!m_analysis) {
        ShowFieldError(GetPageTitleString(),
                       err("OptimVariable", "NoStudy",
                           "Select an optimization study for the variable."));
        return 0;
    }
    if (!ValidateNameAndID({"OptimVariable", "Enter a name for the variable.",
                            "Another variable of this study already uses this ID."}))
        return 0;
    const CKwPhysicalProperty* p = property();
    if (!p || v->m_parameter < 0 || v->m_parameter >= CKwOptimVariable::ParameterCount(p)) {
        ShowFieldError(prop("OptimVariable", "LabelProperty", "Property"),
                       err("OptimVariable", "NoProperty",
                           "Select a shell or beam property and the size to vary."));
        return 0;
    }
    const KW_UOM* u = units();
    struct Check
    {
        int code;
        const char* key;
        const char* english;
        double value;
    };
    const Check checks[] = {{CodeLower, "LabelLower", "Lower Bound", v->m_lower},
                            {CodeUpper, "LabelUpper", "Upper Bound", v->m_upper},
                            {CodeInitial, "LabelInitial", "Initial Value", v->m_initial},
                            {CodeStep, "LabelStep", "Step", v->m_step}};
    for (const Check& c : checks) {
        const QString problem = m_reader->Problem(c.code, kLength, u, F::Positive, c.value);
        if (!problem.isEmpty()) {
            ShowFieldError(prop("OptimVariable", c.key, c.english), problem);
            return 0;
        }
    }
    if (!(v->m_upper > v->m_lower)) {
        ShowFieldError(prop("OptimVariable", "LabelUpper", "Upper Bound"),
                       err("OptimVariable", "UpperBelowLower",
                           "The upper bound must be above the lower bound."));
        return 0;
    }
    if (v->m_initial < v->m_lower || v->m_initial > v->m_upper) {
        ShowFieldError(prop("OptimVariable", "LabelInitial", "Initial Value"),
                       err("OptimVariable", "InitialOutside",
                           "The initial value must lie between the bounds."));
        return 0;
    }
    if (v->m_step > v->m_upper - v->m_lower) {
        ShowFieldError(prop("OptimVariable", "LabelStep", "Step"),
                       err("OptimVariable", "StepTooLarge",
                           "The step must not exceed the range between the bounds."));
        return 0;
    }
    return 1;
}

int CKwUIOptimVariable::GetValue(int field, int& value)
{
    const CKwOptimVariable* v = GetEditObject();
    if (!v)
        return 0;
    switch (field) {
    case FieldProperty: {
        const QList<CKwPhysicalProperty*> all = CandidateProperties();
        value = -1;
        for (int i = 0; i < all.size(); ++i)
            if (all[i]->GetID() == v->m_propertyId)
                value = i;
        return 1;
    }
    case FieldParameter: value = v->m_parameter; return 1;
    default: return 0;
    }
}

int CKwUIOptimVariable::SetValue(int field, int value)
{
    CKwOptimVariable* v = GetEditObject();
    if (!v)
        return 0;
    switch (field) {
    case FieldProperty: {
        const QList<CKwPhysicalProperty*> all = CandidateProperties();
        if (value < 0 || value >= all.size())
            return 0;
        if (all[value]->GetID() == v->m_propertyId)
            return 1;
        v->m_propertyId = all[value]->GetID();
        v->m_parameter = 0;
        loadParameters();
        seedFromProperty();
        return 1;
    }
    case FieldParameter:
        if (value < 0 || value >= CKwOptimVariable::ParameterCount(property()))
            return 0;
        if (value != v->m_parameter) {
            v->m_parameter = value;
            seedFromProperty();
        }
        return 1;
    default: return 0;
    }
}
