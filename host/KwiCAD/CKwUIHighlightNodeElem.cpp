#include "CKwUIHighlightNodeElem.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "KwUIText.h"

namespace {

using KwUIText::prop;

QString err(const char* key, const char* english)
{
    return KwUIText::err("HighlightEntities", key, english);
}

} // namespace

CKwUIHighlightNodeElem::CKwUIHighlightNodeElem() = default;
CKwUIHighlightNodeElem::~CKwUIHighlightNodeElem() = default;

void CKwUIHighlightNodeElem::OnCreate(CFMView* view, int mode, CKwMeshModel* mesh, CKwGroup* set,
                                      bool mayMakeGroup)
{
    m_mesh = mesh;
    m_startMode = mode == CKwGroup::Nodes ? CKwGroup::Nodes : CKwGroup::Elements;
    m_mayMakeGroup = mayMakeGroup;
    // Before the base makes a new edit copy, which takes the mode.
    SetView(view);
    CKwFEUIBase<CKwGroup>::OnCreate(view, set, nullptr);
}

CKwMeshModel* CKwUIHighlightNodeElem::GetMesh() const
{
    if (m_mesh)
        return m_mesh;
    const CKwFEModel* model = GetModel();
    return model ? model->m_mesh : nullptr;
}

std::unique_ptr<CKwGroup> CKwUIHighlightNodeElem::CreateNewObject()
{
    const int id = NextFreeID();
    auto set = std::make_unique<CKwGroup>(
        id, prop("HighlightEntities", "DefaultGroupName", "Group%s")
                .replace(QStringLiteral("%s"), QString::number(id)));
    set->m_mode = m_startMode;
    return set;
}

QList<CKwGroup*>* CKwUIHighlightNodeElem::GetModelList() const
{
    CKwFEModel* model = GetModel();
    return model ? &model->m_idSets : nullptr;
}

void CKwUIHighlightNodeElem::UpdateEditObject()
{
    if (m_pObject)
        *m_edit = *m_pObject;
}

QString CKwUIHighlightNodeElem::GetPageTitleString() const
{
    return prop("HighlightEntities", "TitleHighlight", "Highlight");
}

QString CKwUIHighlightNodeElem::ListLabel() const
{
    return m_edit && m_edit->m_mode == CKwGroup::Nodes
               ? prop("HighlightEntities", "LabelNodeIDs", "Node IDs")
               : prop("HighlightEntities", "LabelElementIDs", "Element IDs");
}

QString CKwUIHighlightNodeElem::ListMessage(const KwIdRanges::Parsed& parsed)
{
    using namespace KwIdRanges;
    QString text;
    switch (parsed.status) {
    case Ok: return {};
    case Empty:
        return err("ListEmpty", "Enter IDs, ranges such as 1-100 or 300-310 by 5, or ALL.");
    case BadText: text = err("ListBadItem", "Not an ID or a range: %s"); break;
    case BadNumber:
        text = err("ListBadNumber", "IDs are whole numbers from 1 to 2147483647: %s");
        break;
    case Reversed: text = err("ListReversed", "The range ends below its start: %s"); break;
    case ZeroStep: text = err("ListZeroStep", "The step of a range is 1 or more: %s"); break;
    case TooMany:
        text = err("ListTooMany", "The list names more than 5000000 IDs: %s");
        break;
    case AllMixed: text = err("ListAllMixed", "ALL stands alone in the list: %s"); break;
    }
    return KwEntityLogic::FillArgs(text, {parsed.item});
}

void CKwUIHighlightNodeElem::LoadObjectData()
{
    if (!m_edit)
        return;
    SetControlText(CodeIdList, m_edit->m_idList);
    SetControlText(CodeGroupName, m_edit->GetName());
    loadSummary();
}

void CKwUIHighlightNodeElem::loadSummary()
{
    QString text;
    if (m_highlighted) {
        const bool nodes = m_edit->m_mode == CKwGroup::Nodes;
        text = (nodes ? prop("HighlightEntities", "SummaryNodes", "%s nodes highlighted")
                      : prop("HighlightEntities", "SummaryElements", "%s elements highlighted"))
                   .replace(QStringLiteral("%s"), QString::number(m_edit->m_ids.size()));
    }
    SetControlText(CodeSummary, text);
}

void CKwUIHighlightNodeElem::UpdateObjectData(bool)
{
    if (!m_edit)
        return;
    QString text;
    if (GetControlText(CodeIdList, text))
        m_edit->m_idList = text.trimmed();
    if (GetControlText(CodeGroupName, text))
        m_edit->SetName(text.trimmed());
}

int CKwUIHighlightNodeElem::ValidateObjectData()
{
    if (!m_edit)
        return 0;
    const KwIdRanges::Parsed parsed = KwIdRanges::Parse(m_edit->m_idList);
    if (parsed.status != KwIdRanges::Ok) {
        ShowFieldError(ListLabel(), ListMessage(parsed));
        return 0;
    }
    if (!GetMesh()) {
        ShowFieldError(GetPageTitleString(), err("NoMesh", "The model has no mesh."));
        return 0;
    }
    return 1;
}

int CKwUIHighlightNodeElem::validateGroupName() const
{
    const QString label = prop("HighlightEntities", "LabelGroupName", "Group Name");
    if (m_edit->GetName().isEmpty()) {
        ShowFieldError(label, err("GroupNameRequired", "Enter a name for the group."));
        return 0;
    }
    if (const QList<CKwGroup*>* all = GetModelList())
        for (const CKwGroup* other : *all)
            if (other != m_pObject && other->GetName() == m_edit->GetName()) {
                ShowFieldError(label, err("GroupNameUsed", "A group of this name exists."));
                return 0;
            }
    return 1;
}

bool CKwUIHighlightNodeElem::Highlight()
{
    if (!m_edit)
        return false;
    UpdateObjectData(false);
    if (!ValidateObjectData())
        return false;
    const KwIdRanges::Parsed parsed = KwIdRanges::Parse(m_edit->m_idList);
    CKwMeshModel* mesh = GetMesh();
    const bool nodes = m_edit->m_mode == CKwGroup::Nodes;
    std::vector<int> all;
    if (parsed.all) {
        if (nodes) {
            all.reserve(mesh->Nodes().size());
            for (const CKwMeshModel::Node& n : mesh->Nodes())
                all.push_back(n.id);
        } else {
            all.reserve(mesh->ElementCount());
            for (std::size_t i = 0; i < mesh->ElementCount(); ++i)
                all.push_back(mesh->ElementID(i));
        }
    }
    KwIdRanges::Resolved found =
        nodes ? KwIdRanges::Resolve(parsed, [mesh](int id) { return mesh->HasNode(id); }, all)
              : KwIdRanges::Resolve(parsed, [mesh](int id) { return mesh->HasElement(id); }, all);
    m_missingCount = found.missingCount;
    m_edit->m_idList = KwIdRanges::Format(parsed);
    m_edit->m_ids = std::move(found.ids);
    m_highlighted = true;
    if (m_pView) {
        // The view shows what this list found, of one kind only.
        m_pView->ClearMeshHighlight();
        m_pView->SetHighlightedMesh(nodes ? CFMView::HighlightNodes : CFMView::HighlightElements,
                                    m_edit->m_ids);
    }
    SetControlText(CodeIdList, m_edit->m_idList);
    loadSummary();
    if (!found.missing.isEmpty())
        ShowMissingIds(found.missing);
    return true;
}

long CKwUIHighlightNodeElem::OnSubmitUI()
{
    if (!m_edit)
        return 1;
    UpdateObjectData(false);
    // The name is checked before anything is highlighted, so a refused OK changes nothing.
    const bool keep = m_pObject || (m_mayMakeGroup && m_createGroup);
    if (keep && !validateGroupName())
        return 1;
    if (!Highlight())
        return 1;
    if (!keep)
        return 0;
    if (m_edit->m_ids.empty()) {
        ShowFieldError(ListLabel(), err("GroupEmpty", "No ID of the list is in the mesh."));
        return 1;
    }
    if (m_pObject)
        *m_pObject = *m_edit;
    else
        AddNewObjects();
    return 0;
}

int CKwUIHighlightNodeElem::GetValue(int field, int& value)
{
    if (!m_edit)
        return 0;
    switch (field) {
    case FieldMode: value = m_edit->m_mode; return 1;
    case FieldCreateGroup: value = m_createGroup ? 1 : 0; return 1;
    default: return 0;
    }
}

int CKwUIHighlightNodeElem::SetValue(int field, int value)
{
    if (!m_edit)
        return 0;
    switch (field) {
    case FieldMode:
        // The mode of a fixed-mode editor and of an existing set stays as it is.
        if (!m_mayMakeGroup || m_pObject)
            return 0;
        if (value != CKwGroup::Nodes && value != CKwGroup::Elements)
            return 0;
        if (value != m_edit->m_mode) {
            m_edit->m_mode = value;
            m_edit->m_ids.clear();
            m_highlighted = false;
            loadSummary();
        }
        return 1;
    case FieldCreateGroup:
        if (!m_mayMakeGroup)
            return 0;
        m_createGroup = value != 0;
        return 1;
    default: return 0;
    }
}
