#pragma once
// Factories of the result dialogs: the plot editor's three launch kinds, the reaction sum and
// the XY plot editor.
#include "KwLaunchTable.h"

// Kind 7: a new plot on the request's analysis; without one, the plot editor on `context`
// (a stored plot, or an analysis to make a new plot on).
CKwMFCDialog* KwMakePlot(const KwLaunchArgs& a);
// Kind 26: a new plot on the request's analysis (its check has made sure it has results).
CKwMFCDialog* KwMakePlotQuietly(const KwLaunchArgs& a);
// Kind 35: the stored plot in `object`; anything else opens nothing.
CKwMFCDialog* KwMakeStoredPlot(const KwLaunchArgs& a);
// Kind 4: the reaction sum over the request's analysis; `object` the subcase to start on (null:
// the first with results), `context` the entities summed from the start (a
// QList<CKwUIEntity*>, may be null), `option` the origin (typed, picked, centroid).
CKwMFCDialog* KwMakeReactionSum(const KwLaunchArgs& a);
// Kind 25: a new XY plot of the view's results.
CKwMFCDialog* KwMakeXYPlotEditor(const KwLaunchArgs& a);
