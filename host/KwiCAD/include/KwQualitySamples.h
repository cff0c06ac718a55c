#pragma once
// A row of solid elements for looking at the quality check of hexahedra, wedges and pyramids:
// per family one good element and elements that each fail one check (some of them parabolic),
// and one beam the check does not measure. The gallery shows the failed-elements window on it.
#include "KwiCADExport.h"

class CKwMeshModel;

struct KwQualitySample
{
    int elementId;
    int type;
    const char* shape; // what is wrong with it, or "good"
    int failsMeasure;  // KwMeshQuality::Measure it fails, -1 for none
};

// Replaces the mesh's nodes and elements by the samples (element ids from 1, a metre apart
// along X, each about 0.2 m). Returns the number of samples; `samples` lists them in order.
KWICAD_EXPORT int KwBuildSolidQualitySamples(CKwMeshModel& mesh,
                                             const KwQualitySample** samples = nullptr);
