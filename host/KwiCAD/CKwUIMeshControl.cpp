#include "CKwUIMeshControl.h"

#include "CKwFEModel.h"
#include "CKwUIEntity.h"
#include "KwEntityPicks.h"
#include "KwTypedNumbers.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;

CKwUIMeshControl::CKwUIMeshControl() = default;
CKwUIMeshControl::~CKwUIMeshControl() = default;

bool CKwUIMeshControl::Admits(const CKwUIEntity* e)
{
    if (!e)
        return false;
    switch (e->GetKind()) {
    case CKwUIEntity::Vertex:
    case CKwUIEntity::Point:
    case CKwUIEntity::Edge:
    case CKwUIEntity::Face: return true;
    default: return false;
    }
}

QList<CKwMeshLocal*>* CKwUIMeshControl::GetModelList() const
{
    return GetModel() ? &GetModel()->m_meshControls : nullptr;
}

std::unique_ptr<CKwMeshLocal> CKwUIMeshControl::CreateNewObject()
{
    const int id = NextFreeID();
    return std::make_unique<CKwMeshLocal>(id, QStringLiteral("Mesh Control %1").arg(id));
}

QString CKwUIMeshControl::GetPageTitleString() const
{
    return prop("MeshControl", "Title", "Mesh Control");
}

QList<CKwUIEntity*> CKwUIMeshControl::GetSelectedEntities() const
{
    return GetEditObject() ? GetEditObject()->m_entities : QList<CKwUIEntity*>();
}

void CKwUIMeshControl::LoadObjectData()
{
    const CKwMeshLocal* c = GetEditObject();
    if (!c)
        return;
    LoadNameAndID(CodeName, CodeID);
    const KW_UOM& units = KwTypedNumbers::UnitsOf(m_pView);
    SetControlText(CodeSize, KwTypedNumbers::Shown(c->m_elementSize, KwUnitKind::Length, units));
    SetControlText(CodeCount, c->m_elementCount > 0 ? QString::number(c->m_elementCount)
                                                    : QString());
    m_badSize = m_badCount = false;
    Display(1);
}

void CKwUIMeshControl::UpdateObjectData(bool)
{
    CKwMeshLocal* c = GetEditObject();
    if (!c)
        return;
    UpdateNameAndID(CodeName, CodeID);
    QString text;
    if (GetControlText(CodeSize, text))
        m_badSize = !KwTypedNumbers::Read(text, c->m_elementSize, KwUnitKind::Length,
                                          KwTypedNumbers::UnitsOf(m_pView));
    if (GetControlText(CodeCount, text))
        m_badCount = !KwTypedNumbers::ReadCount(text, c->m_elementCount);
}

int CKwUIMeshControl::ValidateObjectData()
{
    const CKwMeshLocal* c = GetEditObject();
    if (!c)
        return 0;
    if (!ValidateNameAndID({"MeshControl", "Enter a name for the mesh control.",
                            "Another mesh control already uses this ID."}))
        return 0;
    const QString entities = prop("MeshControl", "LabelSelectedEntities", "Selected Entities");
    if (c->m_entities.isEmpty()) {
        ShowFieldError(entities, err("MeshControl", "NoEntitiesSelected",
                                     "Select at least one vertex, edge or face."));
        return 0;
    }
    const QString size = prop("MeshControl", "LabelElementSize", "Element Size");
    const QString count = prop("MeshControl", "LabelNumberOfElements", "Number of Elements");
    const KW_UOM& units = KwTypedNumbers::UnitsOf(m_pView);
    if (m_badSize) {
        ShowFieldError(size, units.GetErrorMessageForUnit(KwUnitKind::Length));
        return 0;
    }
    if (m_badCount) {
        ShowFieldError(count, err("MeshControl", "CountNotWhole",
                                  "Enter a whole number of elements."));
        return 0;
    }
    const bool hasSize = !IsMissingValue(c->m_elementSize);
    if (!hasSize && c->m_elementCount == 0) {
        ShowFieldError(size, err("MeshControl", "NoSizeOrCount",
                                 "Enter an element size or a number of elements."));
        return 0;
    }
    if (hasSize && !(c->m_elementSize > 0)) {
        ShowFieldError(size, err("MeshControl", "SizeNotPositive",
                                 "The element size must be greater than zero."));
        return 0;
    }
    if (c->m_elementCount < 0) {
        ShowFieldError(count, err("MeshControl", "CountNotPositive",
                                  "The number of elements must be at least 1."));
        return 0;
    }
    if (c->m_elementCount > 0)
        for (const CKwUIEntity* e : c->m_entities)
            if (e->GetKind() != CKwUIEntity::Edge) {
                ShowFieldError(count, err("MeshControl", "CountNeedsEdges",
                                          "A number of elements applies to edges only."));
                return 0;
            }
    return 1;
}

void CKwUIMeshControl::Display(int on)
{
    if (m_pView)
        m_pView->SetHighlightedEntities(on && GetEditObject() ? GetEditObject()->m_entities
                                                              : QList<CKwUIEntity*>());
}

void CKwUIMeshControl::OnSelected(QList<CKwUIEntity*>* entities)
{
    CKwMeshLocal* c = GetEditObject();
    if (!c || !entities)
        return;
    KwEntityPicks::Append(c->m_entities, *entities, &Admits);
    Display(1);
}

void CKwUIMeshControl::OnDeselected(QList<CKwUIEntity*>* entities)
{
    CKwMeshLocal* c = GetEditObject();
    if (!c || !entities)
        return;
    KwEntityPicks::Remove(c->m_entities, *entities);
    Display(1);
}
