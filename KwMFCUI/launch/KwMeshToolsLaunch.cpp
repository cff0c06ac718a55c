#include "KwMeshToolsLaunch.h"

#include "CKwMFCUIMeshModel2.h"
#include "CKwMFCUIReverseLineElementDirection.h"
#include "CKwMFCUIReverseNormals.h"
#include "CKwMeshModel.h"

namespace {

CKwMeshModel* meshOf(void* object)
{
    return object ? dynamic_cast<CKwMeshModel*>(static_cast<CKwFEBase*>(object)) : nullptr;
}

} // namespace

CKwMFCDialog* KwMakeMeshSettings(const KwLaunchArgs& a)
{
    CKwMeshModel* mesh = meshOf(a.object);
    if (!mesh)
        return nullptr;
    auto* dlg = new CKwMFCUIMeshModel2(a.view, mesh);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeReverseNormals(const KwLaunchArgs& a)
{
    CKwMeshModel* mesh = meshOf(a.object);
    if (!mesh)
        return nullptr;
    auto* dlg = new CKwMFCUIReverseNormals(a.view, mesh);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeReverseLineElementDirection(const KwLaunchArgs& a)
{
    CKwMeshModel* mesh = meshOf(a.object);
    if (!mesh)
        return nullptr;
    auto* dlg = new CKwMFCUIReverseLineElementDirection(a.view, mesh);
    dlg->Create();
    return dlg;
}
