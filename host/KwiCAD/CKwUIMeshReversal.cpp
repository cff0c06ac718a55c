#include "CKwUIMeshReversal.h"

#include "CFMView.h"
#include "CKwUIEntity.h"
#include "KwUIText.h"

#include <QSet>
#include <algorithm>

using KwUIText::err;
using KwUIText::prop;

namespace {

// Colours travel as 0x00BBGGRR.
int colorRef(const QColor& c) { return c.red() | (c.green() << 8) | (c.blue() << 16); }
QColor fromColorRef(int v) { return QColor(v & 0xFF, (v >> 8) & 0xFF, (v >> 16) & 0xFF); }

double sizeOfStep(int step) { return static_cast<double>(step) / CKwUIMeshReversal::kSizeStandard; }
int stepOfSize(double size)
{
    const int step = static_cast<int>(size * CKwUIMeshReversal::kSizeStandard + 0.5);
    return std::clamp(step, CKwUIMeshReversal::kSizeMin, CKwUIMeshReversal::kSizeMax);
}

} // namespace

CKwUIMeshReversal::CKwUIMeshReversal(Family family) : m_family(family) {}
CKwUIMeshReversal::~CKwUIMeshReversal() = default;

void CKwUIMeshReversal::OnCreate(CFMView* view, CKwMeshModel* mesh, CKwSubCase* subcase)
{
    SetView(view);
    m_pObject = mesh;
    m_pSubCase = subcase;
    m_edit = CreateNewObject();
    m_upToDate = true;
    // The view's last options are the start, so a second opening shows what the first left.
    if (view)
        m_display = view->GetDirectionDisplay();
    m_display.showNormals = m_family == Shells;
    m_display.showBeamDirections = m_family == Beams;
}

std::unique_ptr<CKwMeshModel> CKwUIMeshReversal::CreateNewObject()
{
    return std::make_unique<CKwMeshModel>();
}

void CKwUIMeshReversal::UpdateEditObject() { m_picked.clear(); }

QString CKwUIMeshReversal::GetPageTitleString() const
{
    return m_family == Shells
               ? prop("ReverseNormals", "Title", "Reverse Normals")
               : prop("ReverseLineElementDirection", "Title", "Reverse Line Element Direction");
}

void CKwUIMeshReversal::LoadObjectData()
{
    SetControlToolTip(CodeEntities,
                      m_family == Shells
                          ? prop("ReverseNormals", "TooltipSelectShells",
                                 "Select faces with shell elements, or shell elements")
                          : prop("ReverseLineElementDirection", "TooltipSelectBeams",
                                 "Select edges with beam elements, or beam elements"));
    Display(1);
}

bool CKwUIMeshReversal::isFamilyType(int type) const
{
    return m_family == Shells ? CKwMeshModel::IsShellType(type) : CKwMeshModel::IsBeamType(type);
}

std::vector<int> CKwUIMeshReversal::elementsOf(const CKwUIEntity* e) const
{
    std::vector<int> ids;
    if (!m_pObject || !e)
        return ids;
    if (e->GetKind() == CKwUIEntity::Element) {
        const int index = m_pObject->ElementIndex(e->GetID());
        if (index >= 0 && isFamilyType(m_pObject->ElementType(static_cast<std::size_t>(index))))
            ids.push_back(e->GetID());
        return ids;
    }
    const int geometry = m_family == Shells ? CKwUIEntity::Face : CKwUIEntity::Edge;
    if (e->GetKind() != geometry)
        return ids;
    if (const CKwMeshModel::GeometryMesh* g = m_pObject->FindGeometryMesh(geometry, e->GetID()))
        for (int id : g->elementIds) {
            const int index = m_pObject->ElementIndex(id);
            if (index >= 0 && isFamilyType(m_pObject->ElementType(static_cast<std::size_t>(index))))
                ids.push_back(id);
        }
    return ids;
}

std::vector<int> CKwUIMeshReversal::ElementsToReverse() const
{
    std::vector<int> ids;
    for (const CKwUIEntity* e : m_picked) {
        const std::vector<int> of = elementsOf(e);
        ids.insert(ids.end(), of.begin(), of.end());
    }
    std::sort(ids.begin(), ids.end());
    ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
    return ids;
}

void CKwUIMeshReversal::OnSelected(QList<CKwUIEntity*>* entities)
{
    if (!entities)
        return;
    bool refused = false;
    // A set of what is picked keeps a group of many elements linear.
    QSet<CKwUIEntity*> picked(m_picked.cbegin(), m_picked.cend());
    for (CKwUIEntity* e : std::as_const(*entities)) {
        if (!e || picked.contains(e))
            continue;
        if (elementsOf(e).empty()) {
            refused = true;
            continue;
        }
        picked.insert(e);
        m_picked.append(e);
    }
    if (refused && m_pView)
        m_pView->ShowBubbleToolTipWarning(
            m_family == Shells
                ? err("ReverseNormals", "ShellsOnly",
                      "Normals are reversed on faces with shell elements and on shell elements "
                      "only.")
                : err("ReverseLineElementDirection", "BeamsOnly",
                      "Directions are reversed on edges with beam elements and on beam elements "
                      "only."),
            0);
    Display(1);
}

void CKwUIMeshReversal::OnDeselected(QList<CKwUIEntity*>* entities)
{
    if (!entities)
        return;
    const QSet<CKwUIEntity*> dropped(entities->cbegin(), entities->cend());
    m_picked.removeIf([&](CKwUIEntity* e) { return dropped.contains(e); });
    Display(1);
}

int CKwUIMeshReversal::ValidateObjectData()
{
    const QString label = prop("ReverseNormals", "LabelSelectedEntities", "Selected Entities");
    if (!m_pObject) {
        ShowFieldError(label, err("ReverseNormals", "NoMesh", "The model has no mesh."));
        return 0;
    }
    if (ElementsToReverse().empty()) {
        ShowFieldError(label, m_family == Shells
                                  ? err("ReverseNormals", "NothingSelected",
                                        "Select at least one face with shells or one shell "
                                        "element.")
                                  : err("ReverseLineElementDirection", "NothingSelected",
                                        "Select at least one edge with beams or one beam "
                                        "element."));
        return 0;
    }
    return 1;
}

long CKwUIMeshReversal::OnSubmitUI()
{
    if (!ValidateObjectData())
        return 1;
    for (int id : ElementsToReverse())
        m_pObject->ReverseElement(id);
    m_picked.clear();
    Display(0);
    return 0;
}

long CKwUIMeshReversal::OnCancelUI()
{
    Display(0);
    UpdateEditObject();
    return 0;
}

void CKwUIMeshReversal::showDirections(bool on)
{
    if (!m_pView)
        return;
    KwDirectionDisplay shown = m_display;
    if (!on) {
        shown.showNormals = false;
        shown.showBeamDirections = false;
    }
    m_pView->SetDirectionDisplay(shown);
}

void CKwUIMeshReversal::Display(int on)
{
    if (!m_pView)
        return;
    m_pView->SetHighlightedEntities(on ? m_picked : QList<CKwUIEntity*>());
    showDirections(on != 0);
    m_pView->ReDraw();
}

int CKwUIMeshReversal::GetValue(int field, int& value)
{
    const bool shells = m_family == Shells;
    switch (field) {
    case FieldShow: value = (shells ? m_display.showNormals : m_display.showBeamDirections); return 1;
    case FieldFrontColor: if (!shells) return 0; value = colorRef(m_display.frontColor); return 1;
    case FieldBackColor: if (!shells) return 0; value = colorRef(m_display.backColor); return 1;
    case FieldShowVectors: if (!shells) return 0; value = m_display.showNormalVectors; return 1;
    case FieldSize:
        value = stepOfSize(shells ? m_display.normalSize : m_display.arrowSize);
        return 1;
    case FieldVectorColor:
        value = colorRef(shells ? m_display.normalColor : m_display.arrowColor);
        return 1;
    default: return 0;
    }
}

int CKwUIMeshReversal::SetValue(int field, int value)
{
    const bool shells = m_family == Shells;
    switch (field) {
    case FieldShow: (shells ? m_display.showNormals : m_display.showBeamDirections) = value != 0; break;
    case FieldFrontColor: if (!shells) return 0; m_display.frontColor = fromColorRef(value); break;
    case FieldBackColor: if (!shells) return 0; m_display.backColor = fromColorRef(value); break;
    case FieldShowVectors: if (!shells) return 0; m_display.showNormalVectors = value != 0; break;
    case FieldSize:
        if (value < kSizeMin || value > kSizeMax)
            return 0;
        (shells ? m_display.normalSize : m_display.arrowSize) = sizeOfStep(value);
        break;
    case FieldVectorColor:
        (shells ? m_display.normalColor : m_display.arrowColor) = fromColorRef(value);
        break;
    default: return 0;
    }
    showDirections(true);
    if (m_pView)
        m_pView->ReDraw();
    return 1;
}
