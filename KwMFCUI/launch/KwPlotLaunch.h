#pragma once
// Factories of the plot editor's three launch kinds.
#include "KwLaunchTable.h"

// Kind 7: a new plot on the request's analysis; without one, the plot editor on `context`
// (a stored plot, or an analysis to make a new plot on).
CKwMFCDialog* KwMakePlot(const KwLaunchArgs& a);
// Kind 26: a new plot on the request's analysis (its check has made sure it has results).
CKwMFCDialog* KwMakePlotQuietly(const KwLaunchArgs& a);
// Kind 35: the stored plot in `object`; anything else opens nothing.
CKwMFCDialog* KwMakeStoredPlot(const KwLaunchArgs& a);
