#include "CKwUIElementDeletion.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwPhysicalProperty.h"
#include "KwTypedNumbers.h"
#include "KwUIText.h"

#include <algorithm>

using KwUIText::err;
using KwUIText::prop;
using D = CKwElementDeletion;

namespace {

QString criterionLabel(int c)
{
    switch (c) {
    case D::PlasticStrain:
        return prop("ElementDeletion", "CheckboxPlasticStrain", "Equivalent Plastic Strain");
    case D::PrincipalStress:
        return prop("ElementDeletion", "CheckboxPrincipalStress", "Maximum Principal Stress");
    default: return prop("ElementDeletion", "CheckboxTime", "Deletion Time");
    }
}

bool isEmpty(const D::PropertyCriteria& c)
{
    for (int i = 0; i < D::CriterionCount; ++i)
        if (c.on[i] || !IsMissingValue(c.limit[i]))
            return false;
    return true;
}

} // namespace

CKwUIElementDeletion::CKwUIElementDeletion() = default;
CKwUIElementDeletion::~CKwUIElementDeletion() = default;

int CKwUIElementDeletion::UnitKindOf(int criterion)
{
    return criterion == D::PrincipalStress ? KwUnitKind::Stress
           : criterion == D::Time          ? KwUnitKind::Time
                                           : KwUnitKind::Dimensionless;
}

CKwAnalysis* CKwUIElementDeletion::GetAnalysis() const
{
    const CKwFEModel* model = GetModel();
    const D* d = GetEditObject();
    if (model && d && d->m_analysisId > 0)
        for (CKwAnalysis* a : model->m_analyses)
            if (a->GetID() == d->m_analysisId)
                return a;
    if (m_analysis)
        return m_analysis;
    if (model)
        for (CKwAnalysis* a : model->m_analyses)
            if (a->IsExplicitAnalysis())
                return a;
    return nullptr;
}

QList<CKwElementDeletion*>* CKwUIElementDeletion::GetModelList() const
{
    return GetModel() ? &GetModel()->m_elementDeletions : nullptr;
}

std::unique_ptr<CKwElementDeletion> CKwUIElementDeletion::CreateNewObject()
{
    const int id = NextFreeID();
    auto d = std::make_unique<D>(id, QStringLiteral("Element Deletion %1").arg(id));
    // The id is taken from the analysis before the edit copy exists.
    if (CKwAnalysis* a = m_analysis)
        d->m_analysisId = a->GetID();
    else if (const CKwFEModel* model = GetModel())
        for (const CKwAnalysis* x : model->m_analyses)
            if (x->IsExplicitAnalysis()) {
                d->m_analysisId = x->GetID();
                break;
            }
    return d;
}

QString CKwUIElementDeletion::GetPageTitleString() const
{
    return prop("ElementDeletion", "Title", "Element Deletion");
}

int CKwUIElementDeletion::propertyIdAt(int row) const
{
    const CKwFEModel* model = GetModel();
    return model && row >= 0 && row < model->m_properties.size()
               ? model->m_properties.at(row)->GetID()
               : 0;
}

D::PropertyCriteria& CKwUIElementDeletion::current()
{
    D* d = GetEditObject();
    const int id = propertyIdAt(m_row);
    if (D::PropertyCriteria* c = d->Find(id))
        return *c;
    D::PropertyCriteria fresh;
    fresh.propertyId = id;
    d->m_criteria.append(fresh);
    return d->m_criteria.last();
}

void CKwUIElementDeletion::loadLimits()
{
    const D* d = GetEditObject();
    const D::PropertyCriteria* c = const_cast<D*>(d)->Find(propertyIdAt(m_row));
    const KW_UOM& units = KwTypedNumbers::UnitsOf(m_pView);
    for (int i = 0; i < D::CriterionCount; ++i)
        SetControlText(CodeLimitFirst + i,
                       c ? KwTypedNumbers::Shown(c->limit[i], UnitKindOf(i), units) : QString());
}

void CKwUIElementDeletion::LoadObjectData()
{
    const D* d = GetEditObject();
    if (!d)
        return;
    LoadNameAndID(CodeName, CodeID);
    QStringList names;
    m_row = 0;
    if (const CKwFEModel* model = GetModel()) {
        for (const CKwPhysicalProperty* p : model->m_properties)
            names << p->GetName();
        // The first property that has criteria is shown first.
        for (int r = 0; r < names.size(); ++r)
            if (const D::PropertyCriteria* c = const_cast<D*>(d)->Find(propertyIdAt(r));
                c && !isEmpty(*c)) {
                m_row = r;
                break;
            }
    }
    SetControlItems(CodeProperties, static_cast<int>(names.size()), names.constData());
    const CKwAnalysis* a = GetAnalysis();
    SetControlText(CodeAnalysis, a ? a->GetName() : QString());
    m_badProperty = 0;
    m_badCriterion = -1;
    loadLimits();
}

void CKwUIElementDeletion::UpdateObjectData(bool)
{
    D* d = GetEditObject();
    if (!d)
        return;
    UpdateNameAndID(CodeName, CodeID);
    if (propertyIdAt(m_row) != 0) {
        D::PropertyCriteria& c = current();
        const KW_UOM& units = KwTypedNumbers::UnitsOf(m_pView);
        if (m_badProperty == c.propertyId)
            m_badProperty = 0, m_badCriterion = -1;
        QString text;
        for (int i = 0; i < D::CriterionCount; ++i)
            if (GetControlText(CodeLimitFirst + i, text) &&
                !KwTypedNumbers::Read(text, c.limit[i], UnitKindOf(i), units) &&
                m_badProperty == 0) {
                m_badProperty = c.propertyId;
                m_badCriterion = i;
            }
    }
    // Properties left without criteria are not written.
    d->m_criteria.erase(std::remove_if(d->m_criteria.begin(), d->m_criteria.end(), isEmpty),
                        d->m_criteria.end());
}

int CKwUIElementDeletion::ValidateObjectData()
{
    const D* d = GetEditObject();
    if (!d)
        return 0;
    if (!ValidateNameAndID({"ElementDeletion", "Enter a name for the element deletion.",
                            "Another element deletion already uses this ID."}))
        return 0;
    const CKwAnalysis* a = GetAnalysis();
    if (!a || !a->IsExplicitAnalysis()) {
        ShowFieldError(prop("ElementDeletion", "LabelAnalysis", "Analysis"),
                       err("ElementDeletion", "ExplicitOnly",
                           "Element deletion applies to explicit analyses only."));
        return 0;
    }
    const CKwFEModel* model = GetModel();
    const auto nameOf = [model](int propertyId) {
        if (model)
            for (const CKwPhysicalProperty* p : model->m_properties)
                if (p->GetID() == propertyId)
                    return p->GetName();
        return QString::number(propertyId);
    };
    if (m_badProperty != 0) {
        ShowFieldError(KwEntityLogic::FillArgs(QStringLiteral("%s, %s"),
                                               {nameOf(m_badProperty),
                                                criterionLabel(m_badCriterion)}),
                       KwTypedNumbers::UnitsOf(m_pView).GetErrorMessageForUnit(
                           UnitKindOf(m_badCriterion)));
        return 0;
    }
    bool any = false;
    for (const D::PropertyCriteria& c : d->m_criteria)
        for (int i = 0; i < D::CriterionCount; ++i) {
            if (!c.on[i])
                continue;
            any = true;
            if (IsMissingValue(c.limit[i]) || !(c.limit[i] > 0)) {
                ShowFieldError(KwEntityLogic::FillArgs(QStringLiteral("%s, %s"),
                                                       {nameOf(c.propertyId), criterionLabel(i)}),
                               err("ElementDeletion", "LimitNotPositive",
                                   "Enter a limit greater than zero."));
                return 0;
            }
        }
    if (!any) {
        ShowFieldError(prop("ElementDeletion", "GroupCriteria", "Deletion Criteria"),
                       err("ElementDeletion", "NoDeletionCriterion",
                           "Switch on at least one criterion."));
        return 0;
    }
    return 1;
}

int CKwUIElementDeletion::GetValue(int field, int& value)
{
    D* d = GetEditObject();
    if (!d)
        return 0;
    if (field == FieldProperty) {
        value = m_row;
        return 1;
    }
    if (field >= FieldOnFirst && field < FieldOnFirst + int(D::CriterionCount)) {
        const D::PropertyCriteria* c = d->Find(propertyIdAt(m_row));
        value = c && c->on[field - FieldOnFirst] ? 1 : 0;
        return 1;
    }
    return 0;
}

int CKwUIElementDeletion::SetValue(int field, int value)
{
    D* d = GetEditObject();
    if (!d)
        return 0;
    if (field == FieldProperty) {
        if (propertyIdAt(value) == 0)
            return 0;
        // What was typed for the property shown so far stays with it.
        UpdateObjectData(false);
        m_row = value;
        loadLimits();
        return 1;
    }
    if (field >= FieldOnFirst && field < FieldOnFirst + int(D::CriterionCount) &&
        propertyIdAt(m_row) != 0) {
        current().on[field - FieldOnFirst] = value != 0;
        return 1;
    }
    return 0;
}
