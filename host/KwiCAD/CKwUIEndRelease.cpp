#include "CKwUIEndRelease.h"

#include "CFMView.h"
#include "CKwUIEntity.h"
#include "KwUIText.h"

#include <QSet>
#include <QStringList>
#include <algorithm>

using KwUIText::err;
using KwUIText::prop;

namespace {

bool isBeam(const CKwMeshModel* mesh, const CKwUIEntity* e)
{
    if (!mesh || !e || e->GetKind() != CKwUIEntity::Element)
        return false;
    const int index = mesh->ElementIndex(e->GetID());
    return index >= 0 && mesh->ElementType(static_cast<std::size_t>(index)) == CKwMeshModel::Beam2;
}

unsigned char& maskOf(CKwMeshModel::EndRelease& r, int field)
{
    return field < CKwUIEndRelease::FieldEndBFirst ? r.endA : r.endB;
}

unsigned char bitOf(int field)
{
    const int dof = field < CKwUIEndRelease::FieldEndBFirst
                        ? field - CKwUIEndRelease::FieldEndAFirst
                        : field - CKwUIEndRelease::FieldEndBFirst;
    return static_cast<unsigned char>(1u << dof);
}

bool isReleaseField(int field)
{
    return field >= CKwUIEndRelease::FieldEndAFirst && field < CKwUIEndRelease::FieldEndBFirst + 6;
}

} // namespace

CKwUIEndRelease::CKwUIEndRelease() = default;
CKwUIEndRelease::~CKwUIEndRelease() = default;

void CKwUIEndRelease::OnCreate(CFMView* view, CKwMeshModel* mesh, bool editExisting)
{
    SetView(view);
    m_pObject = mesh;
    m_pSubCase = nullptr;
    m_editExisting = editExisting;
    m_edit = CreateNewObject();
    m_upToDate = true;
    UpdateEditObject();
}

std::unique_ptr<CKwMeshModel> CKwUIEndRelease::CreateNewObject()
{
    return std::make_unique<CKwMeshModel>();
}

void CKwUIEndRelease::UpdateEditObject()
{
    m_picked.clear();
    m_releases.clear();
    m_current.clear();
    m_loadedIds.clear();
    m_warnedMechanism.clear();
    if (!m_pObject || !m_editExisting)
        return;
    for (const auto& [id, release] : m_pObject->EndReleases())
        if (CKwUIEntity* e = m_pObject->ElementEntity(id)) {
            m_picked.append(e);
            m_releases[id] = release;
            m_loadedIds.append(id);
        }
    if (!m_picked.isEmpty())
        m_forNewPicks = m_releases.begin()->second;
}

void CKwUIEndRelease::LoadObjectData()
{
    SetControlToolTip(CodeEntities, prop("EndRelease", "TooltipSelectBeamElements",
                                         "Select beam elements"));
    Display(1);
}

QList<int> CKwUIEndRelease::pickedIds() const
{
    QList<int> ids;
    ids.reserve(m_picked.size());
    for (const CKwUIEntity* e : m_picked)
        ids.append(e->GetID());
    return ids;
}

QList<int> CKwUIEndRelease::currentIds() const
{
    QList<int> ids;
    for (int id : m_current)
        if (m_releases.count(id))
            ids.append(id);
    return ids.isEmpty() ? pickedIds() : ids;
}

CKwUIEndRelease::Release CKwUIEndRelease::GetRelease(int elementId) const
{
    const auto it = m_releases.find(elementId);
    return it == m_releases.end() ? Release{} : it->second;
}

QList<int> CKwUIEndRelease::MechanismElements() const
{
    QList<int> ids;
    for (const CKwUIEntity* e : m_picked) {
        const Release r = GetRelease(e->GetID());
        if (r.endA == CKwMeshModel::AllDofs && r.endB == CKwMeshModel::AllDofs)
            ids.append(e->GetID());
    }
    return ids;
}

void CKwUIEndRelease::SetListValue(int code, const QList<int>& values)
{
    if (code == CodeCurrent)
        m_current = values;
}

CKwUIEndRelease::Release CKwUIEndRelease::shownRelease() const
{
    const QList<int> ids = currentIds();
    return ids.isEmpty() ? m_forNewPicks : GetRelease(ids.first());
}

int CKwUIEndRelease::GetValue(int field, int& value)
{
    if (!isReleaseField(field))
        return 0;
    Release r = shownRelease();
    value = (maskOf(r, field) & bitOf(field)) ? 1 : 0;
    return 1;
}

int CKwUIEndRelease::SetValue(int field, int value)
{
    if (!isReleaseField(field))
        return 0;
    const auto apply = [&](Release& r) {
        if (value)
            maskOf(r, field) |= bitOf(field);
        else
            maskOf(r, field) &= static_cast<unsigned char>(~bitOf(field));
    };
    const QList<int> ids = currentIds();
    for (int id : ids)
        apply(m_releases[id]);
    if (ids.isEmpty())
        apply(m_forNewPicks);
    return 1;
}

void CKwUIEndRelease::OnSelected(QList<CKwUIEntity*>* entities)
{
    if (!entities)
        return;
    bool refused = false;
    // A new pick starts with what the checks show.
    const Release start = shownRelease();
    for (CKwUIEntity* e : *entities) {
        if (!e)
            continue;
        if (!isBeam(m_pObject, e)) {
            refused = true;
            continue;
        }
        // The releases are keyed by element: they tell at once whether it is listed.
        if (!m_releases.emplace(e->GetID(), start).second)
            continue;
        m_picked.append(e);
    }
    if (refused && m_pView)
        m_pView->ShowBubbleToolTipWarning(
            err("EndRelease", "BeamElementsOnly", "End releases act on beam elements only."), 0);
    Display(1);
}

void CKwUIEndRelease::OnDeselected(QList<CKwUIEntity*>* entities)
{
    if (!entities)
        return;
    const QSet<CKwUIEntity*> dropped(entities->cbegin(), entities->cend());
    m_picked.removeIf([&](CKwUIEntity* e) {
        if (!dropped.contains(e))
            return false;
        m_releases.erase(e->GetID());
        return true;
    });
    Display(1);
}

int CKwUIEndRelease::ValidateObjectData()
{
    if (!m_pObject) {
        ShowFieldError(prop("EndRelease", "LabelBeamElements", "Beam Elements"),
                       err("EndRelease", "NoMesh", "The model has no mesh."));
        return 0;
    }
    // Opened on a mesh, an empty list removes every release; a new release needs elements.
    if (m_picked.isEmpty() && !m_editExisting) {
        ShowFieldError(prop("EndRelease", "LabelBeamElements", "Beam Elements"),
                       err("EndRelease", "NoElementsSelected", "Select at least one beam element."));
        return 0;
    }
    const QList<int> mechanism = MechanismElements();
    if (!mechanism.isEmpty() && mechanism != m_warnedMechanism) {
        m_warnedMechanism = mechanism;
        QStringList ids;
        for (int id : mechanism)
            ids << QString::number(id);
        if (m_pView)
            m_pView->ShowBubbleToolTipWarning(
                KwEntityLogic::FillArgs(
                    err("EndRelease", "Mechanism",
                        "Element %s is free in all six degrees of freedom at both ends: a "
                        "mechanism. Press OK again to keep it."),
                    {ids.join(QStringLiteral(", "))}),
                0);
        return 0;
    }
    return 1;
}

long CKwUIEndRelease::OnSubmitUI()
{
    if (!ValidateObjectData())
        return 1;
    // Releases of elements the user took out of the list go; each picked one is written.
    for (int id : m_loadedIds)
        if (!m_releases.count(id))
            m_pObject->SetEndRelease(id, {});
    for (const auto& [id, release] : m_releases)
        m_pObject->SetEndRelease(id, release);
    m_loadedIds = pickedIds();
    Display(0);
    return 0;
}

void CKwUIEndRelease::Display(int on)
{
    if (m_pView)
        m_pView->SetHighlightedEntities(on ? m_picked : QList<CKwUIEntity*>());
}

QString CKwUIEndRelease::GetPageTitleString() const
{
    return prop("EndRelease", "Title", "End Release");
}
