#include "CKwUISubcase.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwNonlinearSetup.h"
#include "CKwRestraint.h"
#include "CKwUILoad.h"
#include "KwUIText.h"

#include <algorithm>

using KwUIText::err;
using KwUIText::prop;

namespace {

QString restraintTypeName(int type)
{
    switch (type) {
    case CKwRestraint::Structural: return prop("Constraints", "DropDownStructural", "Structural");
    case CKwRestraint::Thermal: return prop("Constraints", "DropDownThermal", "Thermal");
    case CKwRestraint::ResponseSpectrum:
        return prop("Constraints", "DropDownResponseSpectrum", "Response Spectrum");
    case CKwRestraint::Pin: return prop("Constraints", "DropDownPin", "Pin");
    case CKwRestraint::Frictionless:
        return prop("Constraints", "DropDownFrictionless", "Frictionless");
    default: return prop("Constraints", "DropDownRigidExplicit", "Rigid(Explicit");
    }
}

template <class E> const E* findById(const QList<E*>& all, int id)
{
    for (const E* e : all)
        if (e->GetID() == id)
            return e;
    return nullptr;
}

} // namespace

CKwUISubcase::CKwUISubcase() = default;
CKwUISubcase::~CKwUISubcase() = default;

CKwAnalysis* CKwUISubcase::GetAnalysis() const
{
    if (m_analysis)
        return m_analysis;
    return GetObject() ? GetObject()->GetAnalysis() : nullptr;
}

QList<CKwSubCase*>* CKwUISubcase::GetModelList() const
{
    CKwAnalysis* a = GetAnalysis();
    return a ? &a->SubCaseList() : nullptr;
}

std::unique_ptr<CKwSubCase> CKwUISubcase::CreateNewObject()
{
    const int id = NextFreeID();
    CKwAnalysis* a = GetAnalysis();
    auto s = std::make_unique<CKwSubCase>(id, QStringLiteral("Subcase %1").arg(id), a);
    // A subcase of a nonlinear analysis is solved with a nonlinear setup of its own.
    if (a && (a->GetAnalysisTypeCode() == CKwAnalysis::NonlinearStatic ||
              a->GetAnalysisTypeCode() == CKwAnalysis::NonlinearTransient))
        s->SetNonlinearSetup(new CKwNonlinearSetup(id, s->GetName()));
    return s;
}

void CKwUISubcase::AddNewObjects()
{
    CKwAnalysis* a = GetAnalysis();
    if (!a || !m_edit)
        return;
    m_pObject = a->AddSubCase(new CKwSubCase(*m_edit));
}

void CKwUISubcase::UpdateEditObject()
{
    CKwFEUIBase<CKwSubCase>::UpdateEditObject();
    m_membersFor = nullptr;
}

QString CKwUISubcase::GetPageTitleString() const
{
    return prop("Subcase", "Title", "Subcase");
}

void CKwUISubcase::loadMembers()
{
    m_loadIds.clear();
    m_restraintIds.clear();
    m_membersFor = GetEditObject();
    const CKwFEModel* model = GetModel();
    // A new subcase starts empty; an existing one holds what names its ID.
    if (!model || !m_pObject)
        return;
    const int id = m_pObject->GetID();
    for (const CKwLoad* l : model->m_loads)
        if (l->m_subcaseIds.contains(id))
            m_loadIds.append(l->GetID());
    for (const CKwRestraint* r : model->m_restraints)
        if (r->m_subcaseIds.contains(id))
            m_restraintIds.append(r->GetID());
}

QList<CKwUISubcase::Member> CKwUISubcase::Members(Family family) const
{
    QList<Member> rows;
    const CKwFEModel* model = GetModel();
    for (int id : ids(family)) {
        Member m;
        m.id = id;
        if (family == Loads) {
            if (const CKwLoad* l = model ? findById(model->m_loads, id) : nullptr) {
                m.name = l->GetName();
                m.type = CKwUILoad::GetTypeName(l->m_type);
            } else {
                m.missing = true;
            }
        } else if (const CKwRestraint* r = model ? findById(model->m_restraints, id) : nullptr) {
            m.name = r->GetName();
            m.type = restraintTypeName(r->m_type);
        } else {
            m.missing = true;
        }
        if (m.missing) {
            m.name = prop("Subcase", "ItemMissingName", "ID %s").replace(QStringLiteral("%s"),
                                                                         QString::number(id));
            m.type = prop("Subcase", "ItemMissingType", "(deleted)");
        }
        rows.append(m);
    }
    return rows;
}

QList<CKwUISubcase::Member> CKwUISubcase::Candidates(Family family) const
{
    QList<Member> rows;
    const CKwFEModel* model = GetModel();
    if (!model)
        return rows;
    if (family == Loads) {
        for (const CKwLoad* l : model->m_loads)
            if (!m_loadIds.contains(l->GetID()))
                rows.append({l->GetID(), l->GetName(), CKwUILoad::GetTypeName(l->m_type)});
    } else {
        for (const CKwRestraint* r : model->m_restraints)
            if (!m_restraintIds.contains(r->GetID()))
                rows.append({r->GetID(), r->GetName(), restraintTypeName(r->m_type)});
    }
    return rows;
}

bool CKwUISubcase::AddMember(Family family, int id)
{
    const CKwFEModel* model = GetModel();
    const bool exists = model && (family == Loads ? findById(model->m_loads, id) != nullptr
                                                  : findById(model->m_restraints, id) != nullptr);
    if (!exists || ids(family).contains(id))
        return false;
    ids(family).append(id);
    OnMembersChanged();
    return true;
}

bool CKwUISubcase::RemoveMember(Family family, int id)
{
    if (!ids(family).removeOne(id))
        return false;
    OnMembersChanged();
    return true;
}

void CKwUISubcase::LoadObjectData()
{
    const CKwSubCase* s = GetEditObject();
    if (!s)
        return;
    if (m_membersFor != s)
        loadMembers();
    LoadNameAndID(CodeName, CodeID);
    OnMembersChanged();
}

void CKwUISubcase::UpdateObjectData(bool)
{
    if (GetEditObject())
        UpdateNameAndID(CodeName, CodeID);
}

int CKwUISubcase::ValidateObjectData()
{
    if (!GetEditObject())
        return 0;
    if (!ValidateNameAndID({"Subcase", "Enter a name for the subcase.",
                            "Another subcase of this analysis already uses this ID."}))
        return 0;
    // A member deleted meanwhile is not written back silently: the user removes it.
    const struct { Family family; const char* labelKey; const char* label; const char* key;
                   const char* message; } lists[] = {
        {Loads, "LabelLoads", "Loads", "MissingLoad",
         "A load of this subcase no longer exists (%s): remove it from the list."},
        {Constraints, "LabelConstraints", "Constraints", "MissingConstraint",
         "A constraint of this subcase no longer exists (%s): remove it from the list."},
    };
    for (const auto& l : lists)
        for (const Member& m : Members(l.family))
            if (m.missing) {
                ShowFieldError(prop("Subcase", l.labelKey, l.label),
                               err("Subcase", l.key, l.message)
                                   .replace(QStringLiteral("%s"), m.name));
                return 0;
            }
    return 1;
}

long CKwUISubcase::OnSubmitUI()
{
    const int oldId = m_pObject ? m_pObject->GetID() : 0;
    const long status = CKwFEUIBase<CKwSubCase>::OnSubmitUI();
    if (status == 0 && m_pObject)
        writeMembers(oldId, m_pObject->GetID());
    return status;
}

// Each load and constraint names the subcase under its new ID exactly when it is a member.
void CKwUISubcase::writeMembers(int oldId, int newId) const
{
    CKwFEModel* model = GetModel();
    if (!model)
        return;
    const auto update = [&](QList<int>& subcaseIds, bool member) {
        if (oldId > 0)
            subcaseIds.removeAll(oldId);
        subcaseIds.removeAll(newId);
        if (member) {
            subcaseIds.append(newId);
            std::sort(subcaseIds.begin(), subcaseIds.end());
        }
    };
    for (CKwLoad* l : model->m_loads)
        update(l->m_subcaseIds, m_loadIds.contains(l->GetID()));
    for (CKwRestraint* r : model->m_restraints)
        update(r->m_subcaseIds, m_restraintIds.contains(r->GetID()));
}

int CKwUISubcase::GetValue(int field, int& value)
{
    const CKwSubCase* s = GetEditObject();
    if (!s || field != FieldThermal)
        return 0;
    value = s->m_thermal ? 1 : 0;
    return 1;
}

int CKwUISubcase::SetValue(int field, int value)
{
    CKwSubCase* s = GetEditObject();
    if (!s || field != FieldThermal)
        return 0;
    s->m_thermal = value != 0;
    return 1;
}
