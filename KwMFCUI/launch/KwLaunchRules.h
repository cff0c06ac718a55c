#pragma once
// The particular rules of single dialog kinds, named so that the kind table can list them in
// the rows they belong to: the conditions a kind sets before it opens (the check column) and
// the kinds that answer a request without a window of their own (the factory column).
#include "KwLaunchTable.h"

namespace KwLaunchRules {

// Checks: true lets the request go on to the factory.

// Kind 7: an analysis must have results ("No Valid Results are available." otherwise);
// without an analysis the plot opens on the context, so there must be one.
bool NeedsValidResults(const KwLaunchArgs& a);
// Kind 26: an analysis with results; nothing is said when there is none.
bool NeedsResultsQuietly(const KwLaunchArgs& a);
// Kind 47: the node/element set to highlight.
bool NeedsObject(const KwLaunchArgs& a);
// Kind 2: a hidden request while a material editor is open refreshes that editor (it gets
// the failure-theory setting from `option`) instead of opening a second one.
bool UnlessOpenMaterialEditorTakesIt(const KwLaunchArgs& a);

// Answers without a window of their own; each returns nullptr.

// Kind 40: a value for the open XY-plot window; ignored when none is open.
CKwMFCDialog* AddToOpenXYPlot(const KwLaunchArgs& a);
// Kind 82: a status message for the editor open on the view, or a plain box without one.
CKwMFCDialog* DeliverStatusMessage(const KwLaunchArgs& a);
// Kind 83: a message box whose pressed button goes back into the record.
CKwMFCDialog* RunMessageBox(const KwLaunchArgs& a);

} // namespace KwLaunchRules
