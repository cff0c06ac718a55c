#include "CKwUISurfaceContact.h"

#include "CKwFEModel.h"
#include "CKwUIEntity.h"
#include "KwEntityPicks.h"
#include "KwTypedNumbers.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;
using C = CKwSurfaceContact;

namespace {

double& parameter(C& c, int which)
{
    return which == CKwUISurfaceContact::PenetrationTolerance ? c.m_penetrationTolerance
           : which == CKwUISurfaceContact::StiffnessFactor    ? c.m_stiffnessFactor
                                                               : c.m_searchDistance;
}

} // namespace

CKwUISurfaceContact::CKwUISurfaceContact() = default;
CKwUISurfaceContact::~CKwUISurfaceContact() = default;

bool CKwUISurfaceContact::Admits(const CKwUIEntity* e)
{
    return e && (e->GetKind() == CKwUIEntity::Face || e->GetKind() == CKwUIEntity::Edge);
}

QList<CKwSurfaceContact*>* CKwUISurfaceContact::GetModelList() const
{
    return GetModel() ? &GetModel()->m_surfaceContacts : nullptr;
}

std::unique_ptr<CKwSurfaceContact> CKwUISurfaceContact::CreateNewObject()
{
    const int id = NextFreeID();
    auto c = std::make_unique<C>(id, QStringLiteral("Surface Contact %1").arg(id));
    if (m_initialKind >= 0 && m_initialKind < C::KindCount)
        c->m_kind = m_initialKind;
    return c;
}

QString CKwUISurfaceContact::GetPageTitleString() const
{
    return prop("SurfaceContact", "Title", "Surface Contact");
}

const QList<CKwUIEntity*>& CKwUISurfaceContact::GetSideEntities(Side side) const
{
    static const QList<CKwUIEntity*> none;
    const C* c = GetEditObject();
    return !c ? none : side == Master ? c->m_master : c->m_slave;
}

QList<CKwUIEntity*> CKwUISurfaceContact::GetSelectedEntities() const
{
    return GetSideEntities(Master) + GetSideEntities(Slave);
}

bool CKwUISurfaceContact::TakesFriction() const
{
    return GetEditObject() && GetEditObject()->m_kind == C::Separating;
}

int CKwUISurfaceContact::ParameterUnitKind(int which)
{
    return which == StiffnessFactor ? KwUnitKind::Dimensionless : KwUnitKind::Length;
}

QString CKwUISurfaceContact::GetParameterText(int which) const
{
    C* c = GetEditObject();
    if (!c || which < 0 || which >= ParameterCount)
        return QString();
    return KwTypedNumbers::Shown(parameter(*c, which), ParameterUnitKind(which),
                                 KwTypedNumbers::UnitsOf(m_pView));
}

bool CKwUISurfaceContact::SetParameterTexts(const QString (&texts)[ParameterCount],
                                            int* badIndex, QString* why)
{
    C* c = GetEditObject();
    if (!c)
        return false;
    const KW_UOM& units = KwTypedNumbers::UnitsOf(m_pView);
    double values[ParameterCount];
    for (int i = 0; i < ParameterCount; ++i) {
        values[i] = parameter(*c, i);
        QString problem;
        if (!KwTypedNumbers::Read(texts[i], values[i], ParameterUnitKind(i), units))
            problem = units.GetErrorMessageForUnit(ParameterUnitKind(i));
        else if (IsMissingValue(values[i]))
            problem = err("SurfaceContact", "ParameterRequired", "Enter a value.");
        else if (i == StiffnessFactor ? !(values[i] > 0) : !(values[i] >= 0))
            problem = i == StiffnessFactor
                          ? err("SurfaceContact", "StiffnessNotPositive",
                                "The stiffness factor must be greater than zero.")
                          : err("SurfaceContact", "DistanceNegative",
                                "The value must not be negative.");
        if (!problem.isEmpty()) {
            if (badIndex)
                *badIndex = i;
            if (why)
                *why = problem;
            return false;
        }
    }
    for (int i = 0; i < ParameterCount; ++i)
        parameter(*c, i) = values[i];
    return true;
}

void CKwUISurfaceContact::LoadObjectData()
{
    const C* c = GetEditObject();
    if (!c)
        return;
    LoadNameAndID(CodeName, CodeID);
    SetControlText(CodeFriction, KwEntityLogic::FormatNumber(c->m_friction));
    SetControlToolTip(CodeMaster, prop("SurfaceContact", "TooltipMaster",
                                       "Select the master faces or edges"));
    SetControlToolTip(CodeSlave, prop("SurfaceContact", "TooltipSlave",
                                      "Select the slave faces or edges"));
    m_badFriction = false;
    Display(1);
}

void CKwUISurfaceContact::UpdateObjectData(bool)
{
    C* c = GetEditObject();
    if (!c)
        return;
    UpdateNameAndID(CodeName, CodeID);
    QString text;
    if (GetControlText(CodeFriction, text)) {
        double f = c->m_friction;
        m_badFriction = !KwTypedNumbers::Read(text, f, KwUnitKind::Dimensionless,
                                              KwTypedNumbers::UnitsOf(m_pView));
        if (!m_badFriction)
            c->m_friction = IsMissingValue(f) ? 0.0 : f;
    }
}

int CKwUISurfaceContact::ValidateObjectData()
{
    const C* c = GetEditObject();
    if (!c)
        return 0;
    if (!ValidateNameAndID({"SurfaceContact", "Enter a name for the contact.",
                            "Another contact already uses this ID."}))
        return 0;
    const QString master = prop("SurfaceContact", "LabelMaster", "Master Entities");
    const QString slave = prop("SurfaceContact", "LabelSlave", "Slave Entities");
    if (c->m_master.isEmpty()) {
        ShowFieldError(master, err("SurfaceContact", "NoMasterEntity",
                                   "Select at least one master entity."));
        return 0;
    }
    if (c->m_slave.isEmpty()) {
        ShowFieldError(slave, err("SurfaceContact", "NoSlaveEntity",
                                  "Select at least one slave entity."));
        return 0;
    }
    for (const CKwUIEntity* e : c->m_slave)
        if (c->m_master.contains(e)) {
            ShowFieldError(slave, KwEntityLogic::FillArgs(
                                      err("SurfaceContact", "SameEntityBothSides",
                                          "%s is on both sides of the contact."),
                                      {e->GetLabel()}));
            return 0;
        }
    if (TakesFriction()) {
        const QString friction = prop("SurfaceContact", "LabelFriction", "Friction Coefficient");
        if (m_badFriction) {
            ShowFieldError(friction, err("SurfaceContact", "FrictionNotNumber",
                                         "Enter a number."));
            return 0;
        }
        if (!(c->m_friction >= 0)) {
            ShowFieldError(friction, err("SurfaceContact", "FrictionNegative",
                                         "The friction coefficient must not be negative."));
            return 0;
        }
    }
    return 1;
}

void CKwUISurfaceContact::Display(int on)
{
    if (m_pView)
        m_pView->SetHighlightedEntities(on ? GetSelectedEntities() : QList<CKwUIEntity*>());
}

int CKwUISurfaceContact::GetValue(int field, int& value)
{
    const C* c = GetEditObject();
    if (!c || field != FieldKind)
        return 0;
    value = c->m_kind;
    return 1;
}

int CKwUISurfaceContact::SetValue(int field, int value)
{
    C* c = GetEditObject();
    if (!c || field != FieldKind || value < 0 || value >= C::KindCount)
        return 0;
    c->m_kind = value;
    return 1;
}

void CKwUISurfaceContact::OnSelected(QList<CKwUIEntity*>* entities)
{
    C* c = GetEditObject();
    if (!c || !entities)
        return;
    QList<CKwUIEntity*>& side = m_side == Master ? c->m_master : c->m_slave;
    KwEntityPicks::Append(side, *entities, &Admits);
    Display(1);
}

void CKwUISurfaceContact::OnDeselected(QList<CKwUIEntity*>* entities)
{
    C* c = GetEditObject();
    if (!c || !entities)
        return;
    QList<CKwUIEntity*>& side = m_side == Master ? c->m_master : c->m_slave;
    KwEntityPicks::Remove(side, *entities);
    Display(1);
}
