#pragma once
// Factories of the analysis-setup editors for the kind table.
#include "KwLaunchTable.h"

// Kind 8: object is the subcase to edit; analysis the one it belongs to (null: the subcase's
// own). Without a subcase a new one is made for the analysis; with neither nothing opens.
CKwMFCDialog* KwMakeSubcase(const KwLaunchArgs& a);
// Kind 29: object is the time stepping to edit; without one, the analysis's (a new one when it
// has none). Nothing opens with neither.
CKwMFCDialog* KwMakeTimeStep(const KwLaunchArgs& a);
// Kind 32: object is the modal setup to edit; without one, as kind 29 with the analysis's.
CKwMFCDialog* KwMakeModalSetup(const KwLaunchArgs& a);
// Kind 52: object is the nonlinear setup, or a subcase whose setup is edited; a setup always
// belongs to a subcase, so anything else opens nothing.
CKwMFCDialog* KwMakeNonlinearSetup(const KwLaunchArgs& a);
