#pragma once
// Factories of the kind table for the mesh tools: mesh settings (kind 48), reverse normals
// (21) and reverse line element direction (22). Each opens on the mesh in object; without a
// mesh nothing opens.
#include "KwLaunchTable.h"

class CKwMFCDialog;

CKwMFCDialog* KwMakeMeshSettings(const KwLaunchArgs& a);
CKwMFCDialog* KwMakeReverseNormals(const KwLaunchArgs& a);
CKwMFCDialog* KwMakeReverseLineElementDirection(const KwLaunchArgs& a);
