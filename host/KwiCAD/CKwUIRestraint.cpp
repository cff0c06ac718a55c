#include "CKwUIRestraint.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwSubCase.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwUIText.h"

#include <QStringList>
#include <vector>

using KwUIText::err;
using KwUIText::prop;

namespace {

// Combo row -> type code. The combo shows the common types first.
constexpr int kTypeOfRow[] = {CKwRestraint::Structural, CKwRestraint::Pin,
                              CKwRestraint::Frictionless, CKwRestraint::ResponseSpectrum,
                              CKwRestraint::Thermal, CKwRestraint::RigidExplicit};

} // namespace

CKwUIRestraint::CKwUIRestraint() = default;
CKwUIRestraint::~CKwUIRestraint() = default;

CKwAnalysis* CKwUIRestraint::GetAnalysis() const
{
    return AnalysisInContext(m_pSubCase, m_analysis, GetModel());
}

int CKwUIRestraint::GetTypeFromSelection(int index) const
{
    constexpr int n = static_cast<int>(std::size(kTypeOfRow));
    return index >= 0 && index < n ? kTypeOfRow[index] : -1;
}

int CKwUIRestraint::GetSelectionFromType(int type) const
{
    for (int i = 0; i < static_cast<int>(std::size(kTypeOfRow)); ++i)
        if (kTypeOfRow[i] == type)
            return i;
    return -1;
}

QList<CKwUIEntity*> CKwUIRestraint::GetSelectedEntities() const
{
    return GetEditObject() ? GetEditObject()->m_entities : QList<CKwUIEntity*>();
}

QList<CKwRestraint*>* CKwUIRestraint::GetModelList() const
{
    return GetModel() ? &GetModel()->m_restraints : nullptr;
}

std::unique_ptr<CKwRestraint> CKwUIRestraint::CreateNewObject()
{
    const int id = NextFreeID();
    auto r = std::make_unique<CKwRestraint>(id, QStringLiteral("Constraint %1").arg(id));
    r->m_dof.fill(true);
    r->m_subcaseIds = KwEntityLogic::NewEntitySubcaseIds(m_pSubCase, GetAnalysis());
    return r;
}

void CKwUIRestraint::LoadObjectData()
{
    CKwRestraint* r = GetEditObject();
    if (!r)
        return;
    LoadNameAndID(CodeName, CodeID);
    if (CKwFEModel* model = GetModel()) {
        // The built-in global systems are named in the user's language; systems the user
        // defined keep their own names.
        QStringList cs = model->m_coordinateSystems;
        static const char* const builtIn[][2] = {
            {"CoordSysGlobalRectangular", "Global Rectangular"},
            {"CoordSysGlobalCylindrical", "Global Cylindrical"},
            {"CoordSysGlobalSpherical", "Global Spherical"}};
        for (QString& name : cs)
            for (const auto& b : builtIn)
                if (name == QLatin1String(b[1]))
                    name = prop("General", b[0], b[1]);
        SetControlItems(CodeCoordSystems, static_cast<int>(cs.size()), cs.constData());
    }
    KwEntityLogic::FillSubcaseList(*this, GetAnalysis(), CodeSubcaseItems, CodeSubcaseSelection,
                                   r->m_subcaseIds);
    SetControlText(CodeTemperature,
                   KwEntityLogic::FormatShown(r->m_temperature, KwUnitKind::Temperature,
                                              m_pView ? m_pView->GetUnitHolder() : nullptr));
    SetControlColor(CodeColor, r->m_color);
    Display(1);
}

void CKwUIRestraint::UpdateObjectData(bool)
{
    CKwRestraint* r = GetEditObject();
    if (!r)
        return;
    QString text;
    UpdateNameAndID(CodeName, CodeID);
    if (GetControlText(CodeTemperature, text)) {
        const KW_UOM* units = m_pView ? m_pView->GetUnitHolder() : nullptr;
        r->m_temperature =
            CFMView::GetDoubleFromString(units, text, KwUnitKind::Temperature, units ? 1 : 0);
    }
}

int CKwUIRestraint::ValidateObjectData()
{
    CKwRestraint* r = GetEditObject();
    if (!r)
        return 0;
    if (!ValidateNameAndID({"Constraints", "Enter a name for the constraint.",
                            "Another constraint already uses this ID."}))
        return 0;
    if (r->m_entities.isEmpty()) {
        ShowFieldError(prop("Constraints", "LabelSelectedEntities", "Selected Entities"),
                       err("Constraints", "NoEntitiesSelected", "Select at least one entity."));
        return 0;
    }
    if (r->m_type == CKwRestraint::Thermal && IsMissingValue(r->m_temperature)) {
        ShowFieldError(prop("Constraints", "LabelThermalConstraint", "Temperature"),
                       err("Constraints", "TemperatureRequired", "Enter the temperature."));
        return 0;
    }
    if (!ValidateCoordSysForPinAndFrictionlessConstraint())
        return 0;
    if (r->m_subcaseIds.isEmpty()) {
        ShowFieldError(KwUIText::subcasesLabel(),
                       err("Constraints", "NoSubcaseSelected", "Add the constraint to a subcase."));
        return 0;
    }
    return 1;
}

int CKwUIRestraint::ValidateCoordSysForPinAndFrictionlessConstraint()
{
    CKwRestraint* r = GetEditObject();
    if (!r || (r->m_type != CKwRestraint::Pin && r->m_type != CKwRestraint::Frictionless))
        return 1;
    for (const CKwUIEntity* e : r->m_entities) {
        if (e->GetKind() != CKwUIEntity::Face) {
            ShowFieldError(prop("Constraints", "LabelSelectedEntities", "Selected Entities"),
                           err("Constraints", "FacesOnly",
                               "Pin and frictionless constraints act on faces only."));
            return 0;
        }
    }
    return 1;
}

void CKwUIRestraint::Display(int on)
{
    ++m_displayCalls;
    if (!m_pView)
        return;
    m_pView->SetHighlightedEntities(on && GetEditObject() ? GetEditObject()->m_entities
                                                          : QList<CKwUIEntity*>());
}

QString CKwUIRestraint::GetPageTitleString() const
{
    return prop("Constraints", "Title", "Constraints");
}

void CKwUIRestraint::OnSelected(QList<CKwUIEntity*>* entities)
{
    UpdateConstraintEntities(entities);
}

void CKwUIRestraint::OnDeselected(QList<CKwUIEntity*>* entities)
{
    CKwRestraint* r = GetEditObject();
    if (!r || !entities)
        return;
    for (CKwUIEntity* e : *entities)
        r->m_entities.removeAll(e);
    Display(1);
}

void CKwUIRestraint::UpdateConstraintEntities(QList<CKwUIEntity*>* entities)
{
    CKwRestraint* r = GetEditObject();
    if (!r || !entities)
        return;
    // What a constraint of this type can act on; the view's filter normally sees to it, but
    // a pick reported by other means is judged here too.
    const auto admitted = [type = r->m_type](const CKwUIEntity* e) {
        switch (type) {
        case CKwRestraint::Pin:
        case CKwRestraint::Frictionless: return e->GetKind() == CKwUIEntity::Face;
        case CKwRestraint::ResponseSpectrum:
            return e->GetKind() == CKwUIEntity::Vertex || e->GetKind() == CKwUIEntity::Point;
        default: return true;
        }
    };
    for (CKwUIEntity* e : *entities)
        if (e && admitted(e) && !r->m_entities.contains(e))
            r->m_entities.append(e);
    Display(1);
}

void CKwUIRestraint::UpdateListOfHiddenSolids()
{
    if (m_pView)
        m_pView->ReDraw();
}

void CKwUIRestraint::DeleteRestraintDrawList()
{
    ++m_drawListResets;
    if (m_pView)
        m_pView->ReDraw();
}

void CKwUIRestraint::SetListValue(int code, const QList<int>& values)
{
    CKwRestraint* r = GetEditObject();
    if (code == CodeSubcaseSelection && r && GetAnalysis())
        r->m_subcaseIds = KwEntityLogic::SubcaseIdsOfRows(GetAnalysis(), values);
}

int CKwUIRestraint::GetValue(int field, int& value)
{
    const CKwRestraint* r = GetEditObject();
    if (!r)
        return 0;
    if (field >= FieldDofFirst && field < FieldDofFirst + 6) {
        value = r->m_dof[static_cast<std::size_t>(field - FieldDofFirst)] ? 1 : 0;
        return 1;
    }
    if (field >= FieldPinFirst && field < FieldPinFirst + 3) {
        value = r->m_pinFix[static_cast<std::size_t>(field - FieldPinFirst)] ? 1 : 0;
        return 1;
    }
    switch (field) {
    case FieldType: value = r->m_type; return 1;
    case FieldCoordSystem: value = r->m_coordSystem; return 1;
    case FieldSize: value = r->m_size; return 1;
    case FieldDensity: value = r->m_density; return 1;
    case FieldColor: value = static_cast<int>(r->m_color); return 1;
    default: return 0;
    }
}

int CKwUIRestraint::SetValue(int field, int value)
{
    CKwRestraint* r = GetEditObject();
    if (!r)
        return 0;
    if (field >= FieldDofFirst && field < FieldDofFirst + 6) {
        r->m_dof[static_cast<std::size_t>(field - FieldDofFirst)] = value != 0;
        return 1;
    }
    if (field >= FieldPinFirst && field < FieldPinFirst + 3) {
        r->m_pinFix[static_cast<std::size_t>(field - FieldPinFirst)] = value != 0;
        return 1;
    }
    switch (field) {
    case FieldType:
        if (value < CKwRestraint::Structural || value > CKwRestraint::RigidExplicit)
            return 0;
        r->m_type = value;
        return 1;
    case FieldCoordSystem: r->m_coordSystem = value; return 1;
    case FieldSize: r->m_size = value; return 1;
    case FieldDensity: r->m_density = value; return 1;
    case FieldColor: r->m_color = static_cast<unsigned>(value) & 0x00FFFFFFu; return 1;
    default: return 0;
    }
}
