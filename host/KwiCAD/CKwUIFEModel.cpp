#include "CKwUIFEModel.h"

#include "CKwAnalysis.h"
#include "CKwConMass.h"
#include "CKwElementDeletion.h"
#include "CKwFEModel.h"
#include "CKwMaterialOrient.h"
#include "CKwOptimVariable.h"
#include "CKwPhysicalProperty.h"
#include "CKwSurfaceContact.h"
#include "KwTypedNumbers.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;

namespace {

QString toleranceLabel()
{
    return prop("FEModelEditor", "LabelTolerance", "Tolerance");
}

QString kindLabel()
{
    return prop("FEModelEditor", "LabelContactKind", "Contact Type");
}

QString contactKindName(int kind)
{
    switch (kind) {
    case CKwSurfaceContact::Bonded: return prop("SurfaceContact", "DropDownBonded", "Bonded");
    case CKwSurfaceContact::Separating:
        return prop("SurfaceContact", "DropDownSeparating", "Separating");
    case CKwSurfaceContact::SlidingNoSeparation:
        return prop("SurfaceContact", "DropDownSlidingNoSeparation", "Sliding without Separation");
    case CKwSurfaceContact::Welded: return prop("SurfaceContact", "DropDownWelded", "Welded");
    case CKwSurfaceContact::OffsetBonded:
        return prop("SurfaceContact", "DropDownOffsetBonded", "Offset Bonded");
    default: return QString();
    }
}

QString idealizationName(int idealization)
{
    switch (idealization) {
    case CKwPhysicalProperty::Solid:
        return prop("PhysicalProperties", "DropDownSolid", "Solid");
    case CKwPhysicalProperty::Shell:
        return prop("PhysicalProperties", "DropDownShell", "Shell");
    case CKwPhysicalProperty::Beam: return prop("PhysicalProperties", "DropDownBeam", "Beam");
    default: return QString();
    }
}

template <class T> T* at(const QList<T*>& list, int row)
{
    return row >= 0 && row < list.size() ? list[row] : nullptr;
}

template <class T> bool take(QList<T*>& list, int row)
{
    if (row < 0 || row >= list.size())
        return false;
    delete list.takeAt(row);
    return true;
}

} // namespace

CKwUIFEModel::CKwUIFEModel() = default;
CKwUIFEModel::~CKwUIFEModel() = default;

void CKwUIFEModel::OnCreate(CFMView* view, CKwFEModel* model)
{
    SetView(view);
    m_model = model;
    m_edit = AutoContact();
    if (const CKwFEModel* m = GetFEModel())
        m_edit = {m->m_autoContact, m->m_autoContactTolerance, m->m_autoContactKind};
}

CKwFEModel* CKwUIFEModel::GetFEModel() const
{
    if (m_model)
        return m_model;
    return m_pView ? m_pView->GetModel() : nullptr;
}

const KW_UOM& CKwUIFEModel::units() const
{
    return m_units ? *m_units : KwTypedNumbers::UnitsOf(m_pView);
}

int CKwUIFEModel::ItemCount(int list) const
{
    const CKwFEModel* m = GetFEModel();
    if (!m)
        return 0;
    switch (list) {
    case Masses: return static_cast<int>(m->m_conMasses.size());
    case Idealizations: return static_cast<int>(m->m_properties.size());
    case Contacts: return static_cast<int>(m->m_surfaceContacts.size());
    default: return 0;
    }
}

CKwFEBase* CKwUIFEModel::Item(int list, int row) const
{
    const CKwFEModel* m = GetFEModel();
    if (!m)
        return nullptr;
    switch (list) {
    case Masses: return at(m->m_conMasses, row);
    case Idealizations: return at(m->m_properties, row);
    case Contacts: return at(m->m_surfaceContacts, row);
    default: return nullptr;
    }
}

QString CKwUIFEModel::ItemName(int list, int row) const
{
    const CKwFEBase* item = Item(list, row);
    return item ? item->GetName() : QString();
}

QString CKwUIFEModel::ItemType(int list, int row) const
{
    const CKwFEBase* item = Item(list, row);
    if (!item)
        return QString();
    if (list == Masses)
        return static_cast<const CKwConMass*>(item)->m_type == CKwConMass::Automatic
                   ? prop("ConMass", "DropDownAutomatic", "Automatic (from Body)")
                   : prop("ConMass", "DropDownPointMass", "Point Mass");
    if (list == Idealizations)
        return idealizationName(static_cast<const CKwPhysicalProperty*>(item)->m_idealization);
    return contactKindName(static_cast<const CKwSurfaceContact*>(item)->m_kind);
}

int CKwUIFEModel::RowOf(int list, const CKwFEBase* item) const
{
    if (!item)
        return -1;
    for (int row = 0; row < ItemCount(list); ++row)
        if (Item(list, row) == item)
            return row;
    return -1;
}

QString CKwUIFEModel::DeleteRefusal(int list, int row) const
{
    const CKwFEModel* m = GetFEModel();
    const CKwFEBase* item = Item(list, row);
    if (!m || !item || list != Idealizations)
        return QString();
    // Others name a property by its id; deleting it would leave them naming nothing.
    const int id = item->GetID();
    bool used = false;
    for (const CKwMaterialOrient* o : m->m_materialOrients)
        used = used || (o && o->m_propertyId == id);
    for (const CKwElementDeletion* d : m->m_elementDeletions)
        if (d)
            for (const CKwElementDeletion::PropertyCriteria& c : d->m_criteria)
                used = used || c.propertyId == id;
    for (const CKwAnalysis* a : m->m_analyses)
        if (a)
            for (const CKwOptimVariable* v : a->m_variables)
                used = used || (v && v->m_propertyId == id);
    if (!used)
        return QString();
    return KwEntityLogic::FillArgs(
        err("FEModelEditor", "PropertyInUse",
            "%s is still used by a material orientation, an element deletion or a design "
            "variable."),
        {item->GetName()});
}

bool CKwUIFEModel::DeleteItem(int list, int row)
{
    CKwFEModel* m = GetFEModel();
    if (!m || !DeleteRefusal(list, row).isEmpty())
        return false;
    switch (list) {
    case Masses: return take(m->m_conMasses, row);
    case Idealizations: return take(m->m_properties, row);
    case Contacts: return take(m->m_surfaceContacts, row);
    default: return false;
    }
}

QString CKwUIFEModel::GetToleranceText() const
{
    return KwTypedNumbers::Shown(m_edit.tolerance, KwUnitKind::Length, units());
}

bool CKwUIFEModel::SetAutoContactParameters(const QString& tolerance, int kind, int* badField,
                                            QString* why)
{
    double value = m_edit.tolerance;
    QString problem;
    int field = 0;
    if (!KwTypedNumbers::Read(tolerance, value, KwUnitKind::Length, units()))
        problem = units().GetErrorMessageForUnit(KwUnitKind::Length);
    else if (IsMissingValue(value))
        problem = err("FEModelEditor", "ToleranceRequired", "Enter the contact tolerance.");
    else if (!(value > 0))
        problem = err("FEModelEditor", "ToleranceNotPositive",
                      "The contact tolerance must be greater than zero.");
    else if (kind < 0 || kind >= CKwSurfaceContact::KindCount) {
        field = 1;
        problem = err("FEModelEditor", "ContactKindRequired", "Choose the contact type.");
    }
    if (!problem.isEmpty()) {
        if (badField)
            *badField = field;
        if (why)
            *why = problem;
        return false;
    }
    m_edit.tolerance = value;
    m_edit.kind = kind;
    return true;
}

int CKwUIFEModel::ValidateObjectData()
{
    if (!m_edit.on)
        return 1;
    // The page checks what it takes; a model read from elsewhere may still hold bad values.
    if (IsMissingValue(m_edit.tolerance) || !(m_edit.tolerance > 0)) {
        ShowFieldError(toleranceLabel(),
                       err("FEModelEditor", "ToleranceNotPositive",
                           "The contact tolerance must be greater than zero."));
        return 0;
    }
    if (m_edit.kind < 0 || m_edit.kind >= CKwSurfaceContact::KindCount) {
        ShowFieldError(kindLabel(),
                       err("FEModelEditor", "ContactKindRequired", "Choose the contact type."));
        return 0;
    }
    return 1;
}

long CKwUIFEModel::OnSubmitUI()
{
    CKwFEModel* m = GetFEModel();
    if (!m)
        return 0;
    if (!ValidateObjectData())
        return 1;
    m->m_autoContact = m_edit.on;
    m->m_autoContactTolerance = m_edit.tolerance;
    m->m_autoContactKind = m_edit.kind;
    return 0;
}

long CKwUIFEModel::OnCancelUI()
{
    if (const CKwFEModel* m = GetFEModel())
        m_edit = {m->m_autoContact, m->m_autoContactTolerance, m->m_autoContactKind};
    return 0;
}

QString CKwUIFEModel::GetPageTitleString() const
{
    return prop("FEModelEditor", "Title", "FE Model");
}

int CKwUIFEModel::GetValue(int field, int& value)
{
    if (field == FieldAutoContact)
        value = m_edit.on ? 1 : 0;
    else if (field == FieldAutoContactKind)
        value = m_edit.kind;
    else
        return 0;
    return 1;
}

int CKwUIFEModel::SetValue(int field, int value)
{
    if (field == FieldAutoContact)
        m_edit.on = value != 0;
    else if (field == FieldAutoContactKind && value >= 0 && value < CKwSurfaceContact::KindCount)
        m_edit.kind = value;
    else
        return 0;
    return 1;
}
