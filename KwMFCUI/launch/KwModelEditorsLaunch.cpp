#include "KwModelEditorsLaunch.h"

#include "CKwConMass.h"
#include "CKwFEBase.h"
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwCoordinateSystem.h"
#include "CKwConnector.h"
#include "CKwMFCUIConMass.h"
#include "CKwMFCUIConnector.h"
#include "CKwMFCUICoordSystem.h"
#include "CKwMFCUIEndRelease.h"
#include "CKwMFCUIFEModel.h"
#include "CKwMeshModel.h"

namespace {

// The host hands entities over as CKwFEBase pointers; anything else (or nothing) is null.
template <class T> T* entityOf(const KwLaunchArgs& a)
{
    return a.object ? dynamic_cast<T*>(static_cast<CKwFEBase*>(a.object)) : nullptr;
}

} // namespace

CKwMFCDialog* KwMakeConMass(const KwLaunchArgs& a)
{
    auto* dlg = new CKwMFCUIConMass(entityOf<CKwConMass>(a), a.view, a.units, a.analysis);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeConnector(const KwLaunchArgs& a)
{
    auto* dlg = new CKwMFCUIConnector(entityOf<CKwConnector>(a), a.view, a.units, a.analysis);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeEndRelease(const KwLaunchArgs& a)
{
    CKwMeshModel* mesh = entityOf<CKwMeshModel>(a);
    const bool existing = mesh != nullptr;
    if (!mesh && a.view && a.view->GetModel())
        mesh = a.view->GetModel()->m_mesh;
    if (!mesh)
        return nullptr;
    auto* dlg = new CKwMFCUIEndRelease(mesh, existing, a.view);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeCoordSystem(const KwLaunchArgs& a)
{
    auto* dlg = new CKwMFCUICoordSystem(entityOf<CKwCoordinateSystem>(a), a.view, a.units);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeFEModel(const KwLaunchArgs& a)
{
    CKwFEModel* model = entityOf<CKwFEModel>(a);
    if (!model && a.view)
        model = a.view->GetModel();
    if (!model)
        return nullptr;
    auto* dlg = new CKwMFCUIFEModel(model, a.view, a.units);
    dlg->Create();
    return dlg;
}
