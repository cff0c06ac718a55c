#pragma once
// Factories of the kind table for the model editors that pick what they act on: concentrated
// masses (13), connectors (14), coordinate systems (28) and beam end releases (55).
#include "KwLaunchTable.h"

class CKwMFCDialog;

// Kind 13: object is the mass to edit (anything else edits a new one), analysis the one it is
// edited for.
CKwMFCDialog* KwMakeConMass(const KwLaunchArgs& a);
// Kind 55: object is the mesh whose releases are edited; without one, a new release on the
// view's mesh. Nothing opens without a mesh.
CKwMFCDialog* KwMakeEndRelease(const KwLaunchArgs& a);
// Kind 28: object is the coordinate system to edit (anything else edits a new one).
CKwMFCDialog* KwMakeCoordSystem(const KwLaunchArgs& a);
// Kind 14: object is the connector to edit (anything else edits a new one), analysis the one
// it is edited for.
CKwMFCDialog* KwMakeConnector(const KwLaunchArgs& a);
// Kind 27: object is the model to edit; without one, the view's model (none: nothing opens).
CKwMFCDialog* KwMakeFEModel(const KwLaunchArgs& a);
