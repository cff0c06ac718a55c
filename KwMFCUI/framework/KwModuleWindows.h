#pragma once
// The module-wide windows that live outside any request: the XY-plot window (kinds 39, 40)
// and the convergence plot (kind 89 and dialog id 89). Each is null when it does not exist.
#include <QPointer>
#include <QWidget>

class CFMView;

// The open XY-plot window, as the dispatch needs it.
class CKwXYPlotLink
{
public:
    virtual ~CKwXYPlotLink() = default;
    virtual void AddValueAndUpdate(void* series) = 0;
};

// The material editor as the dispatch needs it for a hidden kind-2 request on an open editor.
class CKwMaterialEditorLink
{
public:
    virtual ~CKwMaterialEditorLink() = default;
    virtual void SetFailureTheorySetting(unsigned option) = 0;
    virtual void RefreshFromHost() = 0;
};

namespace KwModuleWindows {
CKwXYPlotLink* XYPlot();
void SetXYPlot(CKwXYPlotLink* window);
} // namespace KwModuleWindows
