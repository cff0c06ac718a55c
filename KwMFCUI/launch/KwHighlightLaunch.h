#pragma once
// Factories of the kind table for the highlight editor (kinds 23, 24, 45, 46 and 47).
#include "KwLaunchTable.h"

class CKwMFCDialog;

// Kinds 23 (nodes) and 24 (elements): the mode may be switched and the list kept as a set;
// object, when it is a node or element set, is the set to edit; `extra`, when it is a mesh,
// the mesh whose IDs are highlighted (otherwise the view's).
CKwMFCDialog* KwMakeHighlight(const KwLaunchArgs& a);
// Kind 47: the set in object decides mode and list; anything but a set opens nothing.
CKwMFCDialog* KwMakeHighlightSet(const KwLaunchArgs& a);
