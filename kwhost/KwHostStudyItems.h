#pragma once
// The model tree's items for the settings of particular analysis types: an explicit
// analysis's impact, a fatigue analysis's setup, an optimization study's objectives and
// design variables (each with an item that makes a new one).
#include "CKwAnalysis.h"
#include "CKwImpactWizard.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"
#include "KwHostText.h"

#include <QTreeWidgetItem>

// `add(parent, text, kind, object, named)` makes an item that opens `kind` on `object`. The
// fatigue setup item and the new impact, objective and variable items carry the analysis
// itself: the window makes it current (56) or passes it as the impact's analysis (33) or the
// study (16, 17).
template <class Add> void addStudyItems(QTreeWidgetItem* parent, CKwAnalysis* a, Add add)
{
    if (a->IsExplicitAnalysis()) {
        if (CKwImpactWizard* impact = a->GetImpactWizard())
            add(parent, impact->GetName(), 33, impact, true);
        else
            add(parent, KwHostTreeText("TreeNewImpact", "(new impact)"), 33,
                static_cast<CKwFEBase*>(a), false);
    }
    if (a->IsFatigueAnalysis())
        add(parent, KwHostTreeText("TreeFatigueSetup", "Fatigue setup"), 56,
            static_cast<CKwFEBase*>(a), false);
    if (a->GetAnalysisTypeCode() != CKwAnalysis::Optimization)
        return;
    add(parent, KwHostTreeText("TreeNewObjective", "(new objective)"), 16,
        static_cast<CKwFEBase*>(a), false);
    for (CKwOptimObjective* o : a->m_objectives)
        add(parent, o->GetName(), 16, static_cast<CKwFEBase*>(o), true);
    add(parent, KwHostTreeText("TreeNewVariable", "(new variable)"), 17,
        static_cast<CKwFEBase*>(a), false);
    for (CKwOptimVariable* v : a->m_variables)
        add(parent, v->GetName(), 17, static_cast<CKwFEBase*>(v), true);
}
