#include "KwSetupFactories.h"

#include "CKwAnalysis.h"
#include "CKwFEBase.h"
#include "CKwMFCUIModalSetup.h"
#include "CKwMFCUINonlinearSetup.h"
#include "CKwMFCUISubcase.h"
#include "CKwMFCUITimeStep.h"
#include "CKwModalSetup.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"
#include "CKwTimeStep.h"

namespace {

template <class E> E* entity(const KwLaunchArgs& a)
{
    return a.object ? dynamic_cast<E*>(static_cast<CKwFEBase*>(a.object)) : nullptr;
}

} // namespace

CKwMFCDialog* KwMakeSubcase(const KwLaunchArgs& a)
{
    auto* subcase = entity<CKwSubCase>(a);
    CKwAnalysis* analysis = a.analysis ? a.analysis : (subcase ? subcase->GetAnalysis() : nullptr);
    if (!subcase && !analysis)
        return nullptr;
    auto* dlg = new CKwMFCUISubcase(subcase, analysis, a.view, a.units);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeTimeStep(const KwLaunchArgs& a)
{
    auto* steps = entity<CKwTimeStep>(a);
    if (!steps && a.analysis)
        steps = a.analysis->GetTimeStep();
    if (!steps && !a.analysis)
        return nullptr;
    auto* dlg = new CKwMFCUITimeStep(steps, a.analysis, a.view, a.units);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeModalSetup(const KwLaunchArgs& a)
{
    auto* setup = entity<CKwModalSetup>(a);
    if (!setup && a.analysis)
        setup = a.analysis->GetModalSetup();
    if (!setup && !a.analysis)
        return nullptr;
    auto* dlg = new CKwMFCUIModalSetup(setup, a.analysis, a.view, a.units);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeNonlinearSetup(const KwLaunchArgs& a)
{
    auto* setup = entity<CKwNonlinearSetup>(a);
    if (!setup)
        if (auto* subcase = entity<CKwSubCase>(a))
            setup = subcase->GetNonlinearSetup();
    if (!setup)
        return nullptr;
    auto* dlg = new CKwMFCUINonlinearSetup(setup, a.view, a.units);
    dlg->Create();
    return dlg;
}
