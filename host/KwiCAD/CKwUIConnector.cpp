#include "CKwUIConnector.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwUIText.h"

#include <QSet>
#include <QStringList>

using KwUIText::err;
using KwUIText::prop;
using C = CKwConnector;

namespace {

constexpr KwNumberField kArea{CKwUIConnector::CodeArea, KwUnitKind::Area, "Connector",
                              "LabelArea", "Area"};
constexpr KwNumberField kStiffness{CKwUIConnector::CodeStiffness, KwUnitKind::Stiffness,
                                   "Connector", "LabelAxialStiffness", "Axial Stiffness"};
constexpr KwNumberField kDiameter{CKwUIConnector::CodeDiameter, KwUnitKind::Length, "Connector",
                                  "LabelDiameter", "Diameter"};
constexpr KwNumberField kPreload{CKwUIConnector::CodePreload, KwUnitKind::Force, "Connector",
                                 "LabelPreload", "Preload"};
constexpr KwNumberField kHeadDiameter{CKwUIConnector::CodeHeadDiameter, KwUnitKind::Length,
                                      "Connector", "LabelHeadDiameter", "Head Diameter"};
constexpr KwNumberField kFriction{CKwUIConnector::CodeFriction, KwUnitKind::Dimensionless,
                                  "Connector", "LabelFrictionCoefficient",
                                  "Friction Coefficient"};

// Filter bits: vertices 0x2, points 0x4 (with 0x8 and 0x8000 as every point pick), edges 0x10,
// faces 0x40.
constexpr unsigned kPoints = 32782;
constexpr unsigned kEdges = 0x10;
constexpr unsigned kRigid = 33278;

QString endLabel(int end)
{
    return end == 1 ? prop("Connector", "LabelEnd1", "End 1") : prop("Connector", "LabelEnd2", "End 2");
}

} // namespace

CKwUIConnector::CKwUIConnector() = default;
CKwUIConnector::~CKwUIConnector() = default;

CKwAnalysis* CKwUIConnector::GetAnalysis() const
{
    return AnalysisInContext(m_pSubCase, m_analysis, GetModel());
}

const KW_UOM* CKwUIConnector::units() const
{
    if (m_units)
        return m_units;
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

unsigned CKwUIConnector::FilterOf(int type)
{
    switch (type) {
    case C::Bolt: return kEdges;
    case C::Rigid: return kRigid;
    default: return kPoints;
    }
}

bool CKwUIConnector::Admits(int type, int kind)
{
    switch (type) {
    case C::Bolt: return kind == CKwUIEntity::Edge; // the edges of the holes
    case C::Rigid:
        return kind == CKwUIEntity::Vertex || kind == CKwUIEntity::Point ||
               kind == CKwUIEntity::Edge || kind == CKwUIEntity::Face;
    default: return kind == CKwUIEntity::Vertex || kind == CKwUIEntity::Point;
    }
}

QList<CKwUIEntity*> CKwUIConnector::GetSelectedEntities() const
{
    const C* c = GetEditObject();
    return c ? c->m_end1 + c->m_end2 : QList<CKwUIEntity*>();
}

QList<C*>* CKwUIConnector::GetModelList() const
{
    return GetModel() ? &GetModel()->m_connectors : nullptr;
}

std::unique_ptr<C> CKwUIConnector::CreateNewObject()
{
    const int id = NextFreeID();
    auto c = std::make_unique<C>(id, QStringLiteral("Connector %1").arg(id));
    if (const CKwFEModel* model = GetModel(); model && !model->m_materials.isEmpty())
        c->m_materialId = model->m_materials.first()->GetID();
    return c;
}

void CKwUIConnector::LoadObjectData()
{
    C* c = GetEditObject();
    if (!c)
        return;
    LoadNameAndID(CodeName, CodeID);
    if (const CKwFEModel* model = GetModel()) {
        QStringList names;
        for (const CKwMaterial* m : model->m_materials)
            names << m->GetName();
        SetControlItems(CodeMaterialItems, static_cast<int>(names.size()), names.constData());
    }
    m_numbers.Begin(units());
    m_numbers.Load(*this, kArea, c->m_area);
    m_numbers.Load(*this, kStiffness, c->m_axialStiffness);
    m_numbers.Load(*this, kDiameter, c->m_diameter);
    m_numbers.Load(*this, kPreload, c->m_preload);
    m_numbers.Load(*this, kHeadDiameter, c->m_headDiameter);
    m_numbers.Load(*this, kFriction, c->m_friction);
    const QString prompt = c->m_type == C::Bolt
                               ? prop("Connector", "TooltipSelectHoleEdges", "Select the edges of a hole")
                           : c->m_type == C::Rigid
                               ? prop("Constraints", "TooltipSelectedEntities",
                                      "Select face, edge, or vertex")
                               : prop("Constraints", "TooltipSelectedEntitiesOnlyPointOrVertex",
                                      "Select point or vertex");
    SetControlToolTip(CodeEnd1, prompt);
    SetControlToolTip(CodeEnd2, prompt);
    Display(1);
}

void CKwUIConnector::UpdateObjectData(bool)
{
    C* c = GetEditObject();
    if (!c)
        return;
    UpdateNameAndID(CodeName, CodeID);
    m_numbers.Begin(units());
    m_numbers.Read(*this, kArea, &c->m_area);
    m_numbers.Read(*this, kStiffness, &c->m_axialStiffness);
    m_numbers.Read(*this, kDiameter, &c->m_diameter);
    m_numbers.Read(*this, kPreload, &c->m_preload);
    m_numbers.Read(*this, kHeadDiameter, &c->m_headDiameter);
    m_numbers.Read(*this, kFriction, &c->m_friction);
}

int CKwUIConnector::ValidateObjectData()
{
    C* c = GetEditObject();
    if (!c)
        return 0;
    if (!ValidateNameAndID({"Connector", "Enter a name for the connector.",
                            "Another connector already uses this ID."}))
        return 0;
    for (int end : {1, 2}) {
        const QList<CKwUIEntity*>& list = end == 1 ? c->m_end1 : c->m_end2;
        if (list.isEmpty()) {
            ShowFieldError(endLabel(end), err("Connector", "NoEndEntity",
                                              "Select what this end of the connector holds."));
            return 0;
        }
        for (const CKwUIEntity* e : list)
            if (!Admits(c->m_type, e->GetKind())) {
                ShowFieldError(endLabel(end),
                               err("Connector", "EntityKindRefused",
                                   "This kind of connector cannot hold that kind of entity."));
                return 0;
            }
    }
    for (const CKwUIEntity* e : c->m_end1)
        if (c->m_end2.contains(e)) {
            ShowFieldError(endLabel(2), err("Connector", "SameEntityBothEnds",
                                            "An entity cannot be at both ends of a connector."));
            return 0;
        }
    if (m_numbers.HasError()) {
        ShowFieldError(m_numbers.ErrorLabel(), m_numbers.ErrorMessage());
        return 0;
    }
    if (c->HasMaterial()) {
        bool known = false;
        if (const CKwFEModel* model = GetModel())
            for (const CKwMaterial* m : model->m_materials)
                known = known || m->GetID() == c->m_materialId;
        if (!known) {
            ShowFieldError(prop("General", "LabelMaterial", "Material"),
                           err("Connector", "MaterialRequired", "Choose a material."));
            return 0;
        }
    }
    // The section value of the kind must be a number above zero.
    const KwNumberField* needed = c->m_type == C::Rod || c->m_type == C::Cable ? &kArea
                                  : c->m_type == C::Spring                     ? &kStiffness
                                  : c->m_type == C::Bolt                       ? &kDiameter
                                                                               : nullptr;
    if (needed) {
        const double v = needed == &kArea        ? c->m_area
                         : needed == &kStiffness ? c->m_axialStiffness
                                                 : c->m_diameter;
        if (IsMissingValue(v) || !(v > 0)) {
            ShowFieldError(KwNumberReader::Label(*needed),
                           err("Connector", "ValueNotPositive", "Enter a value greater than zero."));
            return 0;
        }
    }
    if ((c->m_type == C::Bolt || c->m_type == C::Spring) &&
        (IsMissingValue(c->m_preload) || c->m_preload < 0)) {
        ShowFieldError(KwNumberReader::Label(kPreload),
                       err("Connector", "PreloadNegative", "Enter a preload of zero or more."));
        return 0;
    }
    if (c->m_type == C::Bolt) {
        if (!IsMissingValue(c->m_headDiameter) && !IsMissingValue(c->m_diameter) &&
            c->m_headDiameter <= c->m_diameter) {
            ShowFieldError(KwNumberReader::Label(kHeadDiameter),
                           err("Connector", "HeadNotWider",
                               "The head must be wider than the shank."));
            return 0;
        }
        if (IsMissingValue(c->m_friction) || c->m_friction < 0) {
            ShowFieldError(KwNumberReader::Label(kFriction),
                           err("Connector", "FrictionNegative",
                               "Enter a friction coefficient of zero or more."));
            return 0;
        }
    }
    return 1;
}

void CKwUIConnector::Display(int on)
{
    if (m_pView)
        m_pView->SetHighlightedEntities(on ? GetSelectedEntities() : QList<CKwUIEntity*>());
}

QString CKwUIConnector::GetPageTitleString() const
{
    return prop("Connector", "Title", "Connector");
}

void CKwUIConnector::OnSelected(QList<CKwUIEntity*>* entities)
{
    C* c = GetEditObject();
    if (!c || !entities)
        return;
    QList<CKwUIEntity*>& target = m_pickTarget == 2 ? c->m_end2 : c->m_end1;
    bool refused = false;
    // A set keeps a pick of many entities linear.
    QSet<CKwUIEntity*> held(target.cbegin(), target.cend());
    for (CKwUIEntity* e : *entities) {
        if (!e)
            continue;
        if (!Admits(c->m_type, e->GetKind()))
            refused = true;
        else if (!held.contains(e)) {
            held.insert(e);
            target.append(e);
        }
    }
    if (refused && m_pView)
        m_pView->ShowBubbleToolTipWarning(
            err("Connector", "EntityKindRefused",
                "This kind of connector cannot hold that kind of entity."),
            0);
    Display(1);
}

void CKwUIConnector::OnDeselected(QList<CKwUIEntity*>* entities)
{
    C* c = GetEditObject();
    if (!c || !entities)
        return;
    const QSet<CKwUIEntity*> dropped(entities->cbegin(), entities->cend());
    const auto isDropped = [&](CKwUIEntity* e) { return dropped.contains(e); };
    c->m_end1.removeIf(isDropped);
    c->m_end2.removeIf(isDropped);
    Display(1);
}

int CKwUIConnector::GetValue(int field, int& value)
{
    const C* c = GetEditObject();
    if (!c)
        return 0;
    switch (field) {
    case FieldType: value = c->m_type; return 1;
    case FieldTensionOnly: value = c->CarriesTensionOnly() ? 1 : 0; return 1;
    case FieldPickTarget: value = m_pickTarget; return 1;
    case FieldMaterial: {
        value = -1;
        if (const CKwFEModel* model = GetModel())
            for (int i = 0; i < model->m_materials.size(); ++i)
                if (model->m_materials.at(i)->GetID() == c->m_materialId)
                    value = i;
        return 1;
    }
    default: return 0;
    }
}

int CKwUIConnector::SetValue(int field, int value)
{
    C* c = GetEditObject();
    if (!c)
        return 0;
    switch (field) {
    case FieldType: {
        if (value < C::Rod || value > C::Rigid)
            return 0;
        if (value != c->m_type) {
            c->m_type = value;
            const auto refused = [value](const CKwUIEntity* e) { return !Admits(value, e->GetKind()); };
            c->m_end1.removeIf(refused);
            c->m_end2.removeIf(refused);
        }
        return 1;
    }
    case FieldTensionOnly:
        c->m_tensionOnly = value != 0;
        return 1;
    case FieldPickTarget:
        if (value != 1 && value != 2)
            return 0;
        m_pickTarget = value;
        return 1;
    case FieldMaterial: {
        const CKwFEModel* model = GetModel();
        if (!model || value < 0 || value >= model->m_materials.size())
            return 0;
        c->m_materialId = model->m_materials.at(value)->GetID();
        return 1;
    }
    default: return 0;
    }
}
