#pragma once
// What a host hands to the convergence plot through the `data` pointer of
// CallKwDialogFunction(89, ...). The host owns every byte; the plot copies what it shows and
// keeps no pointer into the host's memory after the call returns.
//
//   function 3   data: const KwConvergencePoint*  one point to append (null: none)
//                value: stored as the plot's result value (answered by function 11)
//   function 9   data: const KwConvergenceData*   replaces the plot's points and captions
//   function 10  data: KwConvergenceData* or null  the plot is emptied; a given list gets
//                count 0 (its array and capacity stay the host's)
//
// Plain C layout, so that a host in any language can fill it.
#include <cstdint>

struct KwConvergencePoint
{
    std::int32_t step;  // solution step (mesh refinement pass), 1-based
    std::int32_t reserved;
    double value;       // result value of that step, in display units
};

struct KwConvergenceData
{
    const wchar_t* resultName; // what is plotted, e.g. "Max von Mises Stress"; may be null
    const wchar_t* units;      // its unit label, e.g. "MPa"; may be null
    KwConvergencePoint* points; // host-owned array of `capacity` points; may be null
    std::int32_t count;        // points in use (0..capacity)
    std::int32_t capacity;
};

static_assert(sizeof(KwConvergencePoint) == 16);
static_assert(sizeof(KwConvergenceData) == 32);
