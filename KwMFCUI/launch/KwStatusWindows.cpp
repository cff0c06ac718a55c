#include "KwStatusWindows.h"

#include "CKwMFCUIMeshConvergencePlot.h"
#include "CNLstatusDialog.h"
#include "CTransientStatusDialog.h"
#include "KwMethodLogger.h"

#include <QPointer>
#include <cwchar>

namespace {

// The module's singletons. Guarded pointers: a window that something else deleted (the host
// closing every window it finds, its parent going away) reads as absent, never as stale.
struct Singletons
{
    QPointer<CNLstatusDialog> nonlinear;
    QPointer<CTransientStatusDialog> transient;
    QPointer<CKwMFCUIMeshConvergencePlot> plot;
    // Whether the first progress line since the last reset has been shown. One record for
    // both status windows: only a reset of a running window clears it, so a host that never
    // resets sees its status windows come up once per session, never again on their own.
    bool titleSet = false;
};

Singletons& windows()
{
    static Singletons s;
    return s;
}

// Marks a window as the module's own, so that hosts and tools that close every dialog they
// opened leave it alone.
void markSingleton(QWidget* w) { w->setProperty("kwSingleton", true); }

template <class T> void replaceStatusWindow(QPointer<T>& slot)
{
    // A second create replaces the window; the old one must not linger unowned.
    delete slot.data();
    auto* dlg = new T();
    markSingleton(dlg);
    dlg->Create();
    slot = dlg;
}

void createPlot(CFMView* view)
{
    Singletons& s = windows();
    delete s.plot.data();
    auto* plot = new CKwMFCUIMeshConvergencePlot(view);
    markSingleton(plot);
    plot->Create();
    s.plot = plot;
}

// The line of a remote call: the host's text, read no further than a progress line can be
// long, so that an unterminated or huge text costs nothing.
QString callText(const wchar_t* text)
{
    if (!text)
        return QString();
    const std::size_t n = wcsnlen(text, CNLstatusDialog::kProgressLineMax);
    return QString::fromWCharArray(text, qsizetype(n));
}

// Functions 1..8 of a status window; `line` and `lineWithTemperature` are its progress-line
// function numbers (5 and 6 nonlinear, 7 and 8 transient).
std::int32_t callStatus(CNLstatusDialog* dlg, bool& titleSet, std::uint32_t function,
                        std::uint32_t line, std::uint32_t lineWithTemperature,
                        const wchar_t* text, std::int32_t value)
{
    // A window destroyed by function 1 is still the module's object: every call reaches it.
    if (!dlg)
        return 0;
    switch (function) {
    case 1:
        dlg->DestroyStatusWindow();
        break;
    case 2:
        if (dlg->IsRunning()) {
            dlg->ResetStatus();
            titleSet = false;
        }
        break;
    case 3:
        dlg->ShowStatus(value);
        break;
    case 4:
        dlg->SetTitleString(callText(text));
        break;
    default:
        if (function == line || function == lineWithTemperature) {
            dlg->ProgressLine(callText(text), titleSet);
            if (function == lineWithTemperature)
                dlg->SetTemperatureLabel();
        }
        break;
    }
    return 0;
}

std::int32_t callPlot(CKwMFCUIMeshConvergencePlot* plot, std::uint32_t function,
                      std::int32_t value, void* data)
{
    if (!plot)
        return 0;
    switch (function) {
    case 1:
        plot->DestroyPlotWindow();
        return 0;
    case 3:
        plot->AddPoint(value, static_cast<const KwConvergencePoint*>(data));
        return 0;
    case 9:
        plot->ReplaceData(static_cast<const KwConvergenceData*>(data));
        return 0;
    case 10:
        plot->ClearData(static_cast<KwConvergenceData*>(data));
        return 0;
    case 11:
        return plot->GetResultValue();
    default:
        return 0;
    }
}

} // namespace

void KwStatusWindows::Create(std::uint32_t id)
{
    KW_LOG_METHOD("CreateKwDialog");
    Singletons& s = windows();
    if (id == 41)
        replaceStatusWindow(s.nonlinear);
    else if (id == 42)
        replaceStatusWindow(s.transient);
}

void KwStatusWindows::Delete(std::uint32_t id)
{
    KW_LOG_METHOD("DeleteKwDialog");
    Singletons& s = windows();
    switch (id) {
    case 41: delete s.nonlinear.data(); break;
    case 42: delete s.transient.data(); break;
    case 89: delete s.plot.data(); break;
    default: break;
    }
}

std::int32_t KwStatusWindows::Call(std::uint32_t id, std::uint32_t function,
                                   const wchar_t* text, std::int32_t value, CFMView* view,
                                   void* data)
{
    Singletons& s = windows();
    // Whatever is addressed, the windows a run needs exist afterwards.
    if (!s.nonlinear)
        replaceStatusWindow(s.nonlinear);
    if (!s.transient)
        replaceStatusWindow(s.transient);
    if (!s.plot && function != 1)
        createPlot(view);

    switch (id) {
    case 41:
        return callStatus(s.nonlinear, s.titleSet, function, 5, 6, text, value);
    case 42:
        return callStatus(s.transient, s.titleSet, function, 7, 8, text, value);
    case 89:
        return callPlot(s.plot, function, value, data);
    default:
        return 0;
    }
}

CKwMFCUIMeshConvergencePlot* KwStatusWindows::ConvergencePlotFor(CFMView* view)
{
    Singletons& s = windows();
    if (!s.plot)
        createPlot(view);
    else if (s.plot->IsPlotWindowDestroyed())
        s.plot->RecreateWindow(); // same object: its value and points stay
    return s.plot;
}
