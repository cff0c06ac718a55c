#include "KwModuleWindows.h"

namespace {
CKwXYPlotLink*& xyPlot()
{
    static CKwXYPlotLink* p = nullptr;
    return p;
}
} // namespace

CKwXYPlotLink* KwModuleWindows::XYPlot() { return xyPlot(); }
void KwModuleWindows::SetXYPlot(CKwXYPlotLink* window) { xyPlot() = window; }
