#include "KwHighlightLaunch.h"

#include "CKwGroup.h"
#include "CKwMFCUIHighlightNodeElem.h"
#include "CKwMeshModel.h"

namespace {

// Kinds 45 and 46 open the reverse mode of 23 and 24, with the mode fixed and no set made.
struct KindRule
{
    unsigned kind;
    int mode;
    int flag;
    bool takesObject;
};
constexpr KindRule kRules[] = {
    {23, CKwGroup::Nodes, 1, true},
    {24, CKwGroup::Elements, 1, true},
    {45, CKwGroup::Elements, 0, false},
    {46, CKwGroup::Nodes, 0, false},
};

CKwMeshModel* meshOf(void* extra)
{
    return extra ? dynamic_cast<CKwMeshModel*>(static_cast<CKwFEBase*>(extra)) : nullptr;
}

} // namespace

CKwMFCDialog* KwMakeHighlight(const KwLaunchArgs& a)
{
    for (const KindRule& r : kRules) {
        if (r.kind != a.kind)
            continue;
        CKwGroup* set = r.takesObject && a.object
                            ? dynamic_cast<CKwGroup*>(static_cast<CKwFEBase*>(a.object))
                            : nullptr;
        auto* dlg = new CKwMFCUIHighlightNodeElem(r.mode, meshOf(a.extra), set, r.flag, a.view);
        dlg->Create();
        return dlg;
    }
    return nullptr;
}

CKwMFCDialog* KwMakeHighlightSet(const KwLaunchArgs& a)
{
    auto* set = a.object ? dynamic_cast<CKwGroup*>(static_cast<CKwFEBase*>(a.object)) : nullptr;
    if (!set)
        return nullptr;
    auto* dlg = new CKwMFCUIHighlightNodeElem(set->m_mode, nullptr, set, 0, a.view);
    dlg->Create();
    return dlg;
}
