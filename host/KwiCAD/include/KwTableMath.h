#pragma once
// Point-array helpers of the host model library used by every table: sorting X and Y together
// and dropping points whose X repeats.
#include "KwiCADExport.h"

// Sorts x[lo..hi] ascending and moves y[i] with x[i]. The sort is stable: points with equal X
// keep the order they had, so a compress after it keeps the first one entered.
KWICAD_EXPORT void qsort_double_two_arrays(double* x, double* y, int lo, int hi);

// On arrays sorted by X: keeps the first point, then every point whose X is more than `tol`
// above the X of the last point kept; the others are dropped. The kept points move to the
// front in order and *n becomes their count. Comparing with the last kept point (not with the
// previous one) means a run of points each within tol of the next cannot creep on forever.
KWICAD_EXPORT void compress_double_two_arrays_tol(double* x, int* n, double* y, double tol);
