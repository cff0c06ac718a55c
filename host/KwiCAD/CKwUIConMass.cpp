#include "CKwUIConMass.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwUIText.h"

#include <QSet>

using KwUIText::err;
using KwUIText::prop;

namespace {

constexpr KwNumberField kMass{CKwUIConMass::CodeMass, KwUnitKind::Mass, "ConMass", "LabelMass",
                              "Mass"};
constexpr KwNumberField kInertia[] = {
    {CKwUIConMass::CodeInertiaFirst + 0, KwUnitKind::MassMomentOfInertia, "ConMass",
     "LabelInertiaXX", "Ixx"},
    {CKwUIConMass::CodeInertiaFirst + 1, KwUnitKind::MassMomentOfInertia, "ConMass",
     "LabelInertiaYY", "Iyy"},
    {CKwUIConMass::CodeInertiaFirst + 2, KwUnitKind::MassMomentOfInertia, "ConMass",
     "LabelInertiaZZ", "Izz"},
};
constexpr KwNumberField kOffset[] = {
    {CKwUIConMass::CodeOffsetFirst + 0, KwUnitKind::Length, "ConMass", "LabelOffsetX",
     "Offset X"},
    {CKwUIConMass::CodeOffsetFirst + 1, KwUnitKind::Length, "ConMass", "LabelOffsetY",
     "Offset Y"},
    {CKwUIConMass::CodeOffsetFirst + 2, KwUnitKind::Length, "ConMass", "LabelOffsetZ",
     "Offset Z"},
};

QString selectedLabel()
{
    return prop("Constraints", "LabelSelectedEntities", "Selected Entities");
}

} // namespace

CKwUIConMass::CKwUIConMass() = default;
CKwUIConMass::~CKwUIConMass() = default;

CKwAnalysis* CKwUIConMass::GetAnalysis() const
{
    return AnalysisInContext(m_pSubCase, m_analysis, GetModel());
}

const KW_UOM* CKwUIConMass::units() const
{
    if (m_units)
        return m_units;
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

bool CKwUIConMass::IsPartDocument(const CKwFEModel* model)
{
    if (!model)
        return true;
    int bodies = 0;
    for (const CKwUIEntity* e : model->m_geometry)
        bodies += e && e->GetKind() == CKwUIEntity::Body ? 1 : 0;
    return bodies <= 1;
}

bool CKwUIConMass::Admits(int type, int kind)
{
    if (type == CKwConMass::Automatic)
        return kind == CKwUIEntity::Body;
    return kind == CKwUIEntity::Vertex || kind == CKwUIEntity::Point;
}

QList<CKwUIEntity*> CKwUIConMass::GetSelectedEntities() const
{
    return GetEditObject() ? GetEditObject()->m_entities : QList<CKwUIEntity*>();
}

QList<CKwConMass*>* CKwUIConMass::GetModelList() const
{
    return GetModel() ? &GetModel()->m_conMasses : nullptr;
}

std::unique_ptr<CKwConMass> CKwUIConMass::CreateNewObject()
{
    const int id = NextFreeID();
    return std::make_unique<CKwConMass>(id, QStringLiteral("Concentrated Mass %1").arg(id));
}

void CKwUIConMass::LoadObjectData()
{
    CKwConMass* m = GetEditObject();
    if (!m)
        return;
    LoadNameAndID(CodeName, CodeID);
    m_numbers.Begin(units());
    m_numbers.Load(*this, kMass, m->m_mass);
    for (int i = 0; i < 3; ++i) {
        m_numbers.Load(*this, kInertia[i], m->m_inertia[static_cast<std::size_t>(i)]);
        m_numbers.Load(*this, kOffset[i], m->m_offset[static_cast<std::size_t>(i)]);
    }
    Display(1);
}

void CKwUIConMass::UpdateObjectData(bool)
{
    CKwConMass* m = GetEditObject();
    if (!m)
        return;
    UpdateNameAndID(CodeName, CodeID);
    m_numbers.Begin(units());
    m_numbers.Read(*this, kMass, &m->m_mass);
    for (int i = 0; i < 3; ++i) {
        m_numbers.Read(*this, kInertia[i], &m->m_inertia[static_cast<std::size_t>(i)]);
        m_numbers.Read(*this, kOffset[i], &m->m_offset[static_cast<std::size_t>(i)]);
    }
}

int CKwUIConMass::ValidateObjectData()
{
    CKwConMass* m = GetEditObject();
    if (!m)
        return 0;
    if (!ValidateNameAndID({"ConMass", "Enter a name for the concentrated mass.",
                            "Another concentrated mass already uses this ID."}))
        return 0;
    if (m->m_entities.isEmpty()) {
        ShowFieldError(selectedLabel(),
                       err("ConMass", "NoEntitiesSelected",
                           m->m_type == CKwConMass::Automatic
                               ? "Select the body the mass stands in for."
                               : "Select the point or vertex the mass sits on."));
        return 0;
    }
    for (const CKwUIEntity* e : m->m_entities)
        if (!Admits(m->m_type, e->GetKind())) {
            ShowFieldError(selectedLabel(), err("ConMass", "EntityKindRefused",
                                                "A point mass sits on points and vertices, an "
                                                "automatic mass on bodies."));
            return 0;
        }
    if (m->m_type == CKwConMass::Automatic) {
        if (IsPartDocument(GetModel())) {
            ShowFieldError(prop("General", "LabelType", "Type"),
                           err("ConMass", "ConmassNotSupportedForPart",
                               "Automatic concentrated mass is not supported in part documents."));
            return 0;
        }
        return 1; // mass and inertias come from the body
    }
    if (m_numbers.HasError()) {
        ShowFieldError(m_numbers.ErrorLabel(), m_numbers.ErrorMessage());
        return 0;
    }
    if (IsMissingValue(m->m_mass) || !(m->m_mass > 0)) {
        ShowFieldError(KwNumberReader::Label(kMass),
                       IsMissingValue(m->m_mass)
                           ? err("ConMass", "MassRequired", "Enter the mass.")
                           : err("ConMass", "MassNotPositive",
                                 "The mass must be greater than zero."));
        return 0;
    }
    for (int i = 0; i < 3; ++i) {
        const double v = m->m_inertia[static_cast<std::size_t>(i)];
        if (IsMissingValue(v) || v < 0) {
            ShowFieldError(KwNumberReader::Label(kInertia[i]),
                           err("ConMass", "InertiaNegative",
                               "Enter a moment of inertia of zero or more."));
            return 0;
        }
    }
    for (int i = 0; i < 3; ++i)
        if (IsMissingValue(m->m_offset[static_cast<std::size_t>(i)])) {
            ShowFieldError(KwNumberReader::Label(kOffset[i]),
                           err("ConMass", "OffsetRequired", "Enter the offset."));
            return 0;
        }
    return 1;
}

void CKwUIConMass::Display(int on)
{
    if (m_pView)
        m_pView->SetHighlightedEntities(on && GetEditObject() ? GetEditObject()->m_entities
                                                              : QList<CKwUIEntity*>());
}

QString CKwUIConMass::GetPageTitleString() const
{
    return prop("ConMass", "Title", "Concentrated Masses");
}

void CKwUIConMass::OnSelected(QList<CKwUIEntity*>* entities)
{
    CKwConMass* m = GetEditObject();
    if (!m || !entities)
        return;
    bool refused = false;
    // A set keeps a pick of many entities linear.
    QSet<CKwUIEntity*> held(m->m_entities.cbegin(), m->m_entities.cend());
    for (CKwUIEntity* e : *entities) {
        if (!e)
            continue;
        if (!Admits(m->m_type, e->GetKind()))
            refused = true;
        else if (!held.contains(e)) {
            held.insert(e);
            m->m_entities.append(e);
        }
    }
    if (refused && m_pView)
        m_pView->ShowBubbleToolTipWarning(
            m->m_type == CKwConMass::Automatic
                ? err("ConMass", "BodiesOnly", "An automatic mass takes bodies only.")
                : err("ConMass", "PointsOnly", "A point mass takes points and vertices only."),
            0);
    Display(1);
}

void CKwUIConMass::OnDeselected(QList<CKwUIEntity*>* entities)
{
    CKwConMass* m = GetEditObject();
    if (!m || !entities)
        return;
    const QSet<CKwUIEntity*> dropped(entities->cbegin(), entities->cend());
    m->m_entities.removeIf([&](CKwUIEntity* e) { return dropped.contains(e); });
    Display(1);
}

int CKwUIConMass::GetValue(int field, int& value)
{
    const CKwConMass* m = GetEditObject();
    if (!m || field != FieldType)
        return 0;
    value = m->m_type;
    return 1;
}

int CKwUIConMass::SetValue(int field, int value)
{
    CKwConMass* m = GetEditObject();
    if (!m || field != FieldType || (value != CKwConMass::PointMass &&
                                     value != CKwConMass::Automatic))
        return 0;
    if (value != m->m_type) {
        m->m_type = value;
        m->m_entities.removeIf([value](const CKwUIEntity* e) { return !Admits(value, e->GetKind()); });
    }
    return 1;
}
