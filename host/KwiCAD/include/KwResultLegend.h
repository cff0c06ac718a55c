#pragma once
// The colours of a result display and the values they span, shared by the view's drawing and
// its legend.
#include "KwViewDisplay.h"
#include "KwiCADExport.h"

#include <QColor>
#include <vector>

// The value range a result display's colours span (its fixed range, else the finite values'
// minimum and maximum: nodal values, or element values when there are none); false when there
// is nothing to colour.
KWICAD_EXPORT bool KwResultRange(const KwResultDisplay& display, double* lo, double* hi);
// The colours of a display's legend, lowest value first: `bands` colours for a banded contour,
// a fine ramp of 256 for a smooth one.
KWICAD_EXPORT std::vector<QRgb> KwResultColours(const KwResultDisplay& display);
