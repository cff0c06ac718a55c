#pragma once
// Factories of the kind table for the impact (33), fatigue setup (56), optimization objective
// (16) and design variable (17) dialogs.
#include "KwLaunchTable.h"

class CKwMFCDialog;

namespace KwLaunchStudies {
// Kind 16: object is the objective to edit (anything else: a new one), context its study
// (else the study holding the object, else the request's analysis when it is a study).
CKwMFCDialog* MakeOptimObjective(const KwLaunchArgs& a);
// Kind 17: as kind 16 for a design variable.
CKwMFCDialog* MakeOptimVariable(const KwLaunchArgs& a);
// Kind 33: object is the impact to edit (anything else: a new one for the request's
// analysis); the analysis is the one holding the impact, else the request's.
CKwMFCDialog* MakeImpactAnalysis(const KwLaunchArgs& a);
// Kind 56: nothing from the request but the view: the view's current fatigue analysis. Without
// one the user is told so and nothing opens.
CKwMFCDialog* MakeFatigueSetup(const KwLaunchArgs& a);
} // namespace KwLaunchStudies
