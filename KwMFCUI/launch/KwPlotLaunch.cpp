#include "KwPlotLaunch.h"

#include "CKwAnalysis.h"
#include "CKwMFCUIPlot.h"
#include "CKwMFCUISPCSummationForce.h"
#include "CKwMFCUIXYPlot.h"
#include "CKwSubCase.h"
#include "CKwPlot.h"

namespace {

CKwMFCDialog* open(CKwPlot* plot, CKwAnalysis* analysis, const KwLaunchArgs& a)
{
    auto* dlg = new CKwMFCUIPlot(plot, analysis, a.view, a.units);
    dlg->Create();
    return dlg;
}

} // namespace

CKwMFCDialog* KwMakePlot(const KwLaunchArgs& a)
{
    if (a.analysis)
        return open(nullptr, a.analysis, a);
    auto* context = static_cast<CKwFEBase*>(a.context);
    if (auto* plot = dynamic_cast<CKwPlot*>(context))
        return open(plot, plot->GetAnalysis(), a);
    if (auto* analysis = dynamic_cast<CKwAnalysis*>(context))
        return open(nullptr, analysis, a);
    return nullptr;
}

CKwMFCDialog* KwMakePlotQuietly(const KwLaunchArgs& a)
{
    return a.analysis ? open(nullptr, a.analysis, a) : nullptr;
}

CKwMFCDialog* KwMakeStoredPlot(const KwLaunchArgs& a)
{
    auto* plot = a.object ? dynamic_cast<CKwPlot*>(static_cast<CKwFEBase*>(a.object)) : nullptr;
    return plot ? open(plot, plot->GetAnalysis(), a) : nullptr;
}

CKwMFCDialog* KwMakeReactionSum(const KwLaunchArgs& a)
{
    if (!a.analysis)
        return nullptr;
    auto* subcase =
        a.object ? dynamic_cast<CKwSubCase*>(static_cast<CKwFEBase*>(a.object)) : nullptr;
    auto* dlg = new CKwMFCUISPCSummationForce(
        a.view, a.analysis, static_cast<const QList<CKwUIEntity*>*>(a.context), subcase,
        static_cast<int>(a.option), a.units);
    dlg->Create();
    return dlg;
}

CKwMFCDialog* KwMakeXYPlotEditor(const KwLaunchArgs& a)
{
    auto* dlg = new CKwMFCUIXYPlot(a.view, a.units);
    dlg->Create();
    return dlg;
}
