#include "KwLaunchStudies.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwFatigueSetupDialog.h"
#include "CKwMFCUIImpactAnalysis.h"
#include "CKwMFCUIOptimObjective.h"
#include "CKwMFCUIOptimVariable.h"
#include "KwLangText.h"
#include "KwMessageBox.h"

namespace KwLaunchStudies {

namespace {

CKwFEModel* modelOf(const KwLaunchArgs& a) { return a.view ? a.view->GetModel() : nullptr; }

template <class T> T* entityOf(void* object)
{
    return object ? dynamic_cast<T*>(static_cast<CKwFEBase*>(object)) : nullptr;
}

// The study an objective or variable belongs to (see the header).
template <class T>
CKwAnalysis* studyOf(const KwLaunchArgs& a, const T* entity,
                     QList<T*> CKwAnalysis::*list)
{
    if (auto* study = entityOf<CKwAnalysis>(a.context))
        return study;
    if (const CKwFEModel* m = modelOf(a); m && entity)
        for (CKwAnalysis* s : m->m_analyses)
            if ((s->*list).contains(const_cast<T*>(entity)))
                return s;
    return a.analysis && a.analysis->GetAnalysisTypeCode() == CKwAnalysis::Optimization
               ? a.analysis
               : nullptr;
}

} // namespace

CKwMFCDialog* MakeOptimObjective(const KwLaunchArgs& a)
{
    auto* objective = entityOf<CKwOptimObjective>(a.object);
    auto* dlg = new CKwMFCUIOptimObjective(
        objective, studyOf(a, objective, &CKwAnalysis::m_objectives), a.view, a.units);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* MakeOptimVariable(const KwLaunchArgs& a)
{
    auto* variable = entityOf<CKwOptimVariable>(a.object);
    auto* dlg = new CKwMFCUIOptimVariable(
        variable, studyOf(a, variable, &CKwAnalysis::m_variables), a.view, a.units);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* MakeImpactAnalysis(const KwLaunchArgs& a)
{
    auto* impact = entityOf<CKwImpactWizard>(a.object);
    CKwAnalysis* owner = nullptr;
    if (const CKwFEModel* m = modelOf(a); m && impact)
        for (CKwAnalysis* s : m->m_analyses)
            if (s->GetImpactWizard() == impact)
                owner = s;
    auto* dlg = new CKwMFCUIImpactAnalysis(impact, owner ? owner : a.analysis, a.view, a.units);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* MakeFatigueSetup(const KwLaunchArgs& a)
{
    CKwAnalysis* fatigue = CKwFatigueSetupDialog::CurrentFatigueAnalysis(a.view);
    if (!fatigue) {
        KwAfxMessageBox(KwErrText("FatigueSetup", "NoFatigueAnalysis",
                                  "No fatigue analysis is selected. Make a fatigue analysis "
                                  "the current analysis first."),
                        KwMB::OK | KwMB::ICONINFORMATION);
        return nullptr;
    }
    auto* dlg = new CKwFatigueSetupDialog(fatigue, a.view, a.units);
    dlg->Create();
    return dlg;
}

} // namespace KwLaunchStudies
