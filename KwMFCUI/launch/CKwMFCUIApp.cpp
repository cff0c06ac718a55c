#include "CKwMFCUIApp.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFrameWnd.h"
#include "CKwMFCDialog.h"
#include "CKwPlot.h"
#include "CKwUIBase.h"
#include "CKwiCKAddin.h"
#include "KwLangText.h"
#include "KwLaunchTable.h"
#include "KwMFCUIEntry.h"
#include "KwMessageBox.h"
#include "KwMethodLogger.h"
#include "KwModuleWindows.h"

#include <QApplication>
#include <QCoreApplication>
#include <new>

static void kwInitModuleResources() { Q_INIT_RESOURCE(kwmfcui); }

namespace {

void runInitInstance() { CKwMFCUIApp::Instance().InitInstance(); }

QString requestText(const MessageRequest* m)
{
    return (m && m->text) ? QString::fromWCharArray(m->text) : QString();
}

// Style bits of a kind-83 box from the record's icon and button codes.
unsigned messageStyle(const MessageRequest& m)
{
    unsigned style = 0;
    switch (m.icon) {
    case 0: style |= KwMB::ICONQUESTION; break;
    case 2: style |= KwMB::ICONERROR; break;
    case 3:
    case 4: style |= KwMB::ICONWARNING; break;
    default: style |= KwMB::ICONINFORMATION; break;
    }
    switch (m.buttons) {
    case 1: style |= KwMB::YESNO; break;
    case 2: style |= KwMB::OKCANCEL; break;
    default: style |= KwMB::OK; break;
    }
    return style;
}

void showNotAvailable()
{
    KwAfxMessageBox(KwErrText("FMView", "FunctionalityNotImplemented",
                              "Requested functionality is not available in the current version."),
                    KwMB::OK);
}

// Kind 82: a status message for the open editor, or a plain box when there is none.
void deliverStatusMessage(CFMView* view, const MessageRequest* m)
{
    if (!view || !m)
        return;
    const QString text = requestText(m);
    if (auto* editor = dynamic_cast<CKwUIBase*>(view->GetOpenDialog())) {
        editor->OnKwMessage(text, m->buttons, m->code);
        return;
    }
    KwAfxMessageBox(text, KwMB::OK, m->buttons, true);
}

// Kind 83: a message box whose pressed button goes back into the record.
void runMessageBox(CFMView* view, MessageRequest* m)
{
    if (!view || !m)
        return;
    QWidget* owner = view->GetOpenDialog();
    if (!owner && view->GetFrameWnd())
        owner = view->GetFrameWnd()->GetSafeHwnd();
    const int pressed = KwMessageBoxW(owner, requestText(m), CKwMFCUIApp::ProductDisplayName(),
                                      messageStyle(*m), true);
    m->result = static_cast<std::uint32_t>(pressed - 1);
}

// Step common to every kind that opens something: clear away the result toolbar (or refuse
// when another dialog is open), switch result display off, and tell the add-in.
bool prepareView(const DialogLaunchRequest& r)
{
    CFMView* view = r.view;
    if (view) {
        if (QWidget* open = view->GetOpenDialog()) {
            if (view->IsResultToolbar(open)) {
                if (r.keepResults == 0)
                    view->DestroyResultToolbar();
            } else if (r.keepResults == 0) {
                return false;
            }
        }
        if (!view->IsSolvraRunning() && r.kind != 7 && r.kind != 86) {
            view->ClearResultDisplay(r.analysis);
            if (CKwPlot* plot = view->GetActivePlot()) {
                plot->TurnPlotDisplayOff();
                plot->TurnPlotAnimateOff();
            }
        }
    }
    if (TheApplication)
        TheApplication->ToolbarQueryDisplayBase(1);
    return true;
}

bool hasResults(const CKwAnalysis* a)
{
    return a->HasResultSet() || a->GetFirstValidSubcaseInAnalysisResults() != nullptr;
}

CKwMFCDialog* construct(const KwLaunchEntry& e, const KwLaunchArgs& args)
{
    try {
        return e.factory(args);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
}

void commonEnding(CKwMFCDialog* dlg, const DialogLaunchRequest& r)
{
    if (!dlg)
        return;
    dlg->SetLaunchKind(r.kind);
    if (dlg->GetCloseAtOnce()) {
        dlg->DestroyWindow();
        return;
    }
    if (r.createHidden == 0)
        dlg->show();
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(runInitInstance)

CKwMFCUIApp& CKwMFCUIApp::Instance()
{
    static CKwMFCUIApp app;
    return app;
}

QString CKwMFCUIApp::ProductDisplayName() { return KwProductDisplayName(); }

bool CKwMFCUIApp::InitInstance()
{
    if (m_initialised)
        return true;
    m_initialised = true;
    // Templates, bitmaps and icons are the module's own resources; the host's are never
    // consulted. The module's name lives here only: the host application's name and
    // organisation are left as the host set them.
    kwInitModuleResources();
    // No ActiveX container exists on this platform; the module's dialogs embed nothing foreign.
    return true;
}

KwModuleScope::KwModuleScope() : m_usable(qobject_cast<QApplication*>(QCoreApplication::instance()))
{
    if (m_usable)
        CKwMFCUIApp::Instance().InitInstance();
}

void CKwMFCUIApp::LaunchDialog(DialogLaunchRequest* request)
{
    KW_LOG_METHOD("CKwMFCUIApp::LaunchDialog");
    if (!request)
        return;
    const DialogLaunchRequest& r = *request;
    KwLaunchArgs args{r.kind,     r.option,  r.object,
                      r.view,     r.analysis, r.context,
                      r.extra,    nullptr,   r.createHidden != 0};
    args.units = (r.view && r.view->GetUnitHolder()) ? r.view->GetUnitHolder() : r.units;

    if (r.kind == 82) {
        deliverStatusMessage(r.view, static_cast<const MessageRequest*>(r.object));
        return;
    }
    if (r.kind == 83) {
        runMessageBox(r.view, static_cast<MessageRequest*>(r.object));
        return;
    }
    if (!prepareView(r))
        return;

    const KwLaunchEntry* entry = KwFindLaunchEntry(r.kind);
    if (entry && entry->how == KwLaunchHow::Ignored)
        return;

    switch (r.kind) {
    case 2:
        if (r.createHidden != 0 && r.view) {
            if (auto* mat = dynamic_cast<CKwMaterialEditorLink*>(r.view->GetOpenDialog())) {
                mat->SetFailureTheorySetting(r.option);
                mat->RefreshFromHost();
                return;
            }
        }
        break;
    case 7:
        if (r.analysis) {
            if (!hasResults(r.analysis)) {
                KwAfxMessageBox(KwErrText("PlotTemplate", "NoValidResults",
                                          "No Valid Results are available."),
                                KwMB::OK);
                return;
            }
        } else if (!r.context) {
            return;
        }
        break;
    case 26:
        if (!r.analysis || !hasResults(r.analysis))
            return;
        break;
    case 40:
        if (CKwXYPlotLink* xy = KwModuleWindows::XYPlot())
            xy->AddValueAndUpdate(r.object);
        return;
    case 47:
        if (!r.object)
            return;
        break;
    default:
        break;
    }

    if (!entry || !entry->factory) {
        showNotAvailable();
        return;
    }

    switch (entry->how) {
    case KwLaunchHow::Modal: {
        CKwMFCDialog* dlg = construct(*entry, args);
        if (!dlg)
            return;
        dlg->SetLaunchKind(r.kind);
        dlg->DoModal();
        delete dlg;
        return;
    }
    case KwLaunchHow::ModelessHoldOwner: {
        CKwMFCDialog* dlg = construct(*entry, args);
        if (!dlg)
            return;
        dlg->show();
        dlg->HoldOwner();
        return;
    }
    case KwLaunchHow::Special: {
        // Kinds whose window is a module-wide singleton: the factory creates or reuses it and
        // performs the hand-over itself; nothing of the common ending applies.
        construct(*entry, args);
        return;
    }
    case KwLaunchHow::Modeless:
    case KwLaunchHow::Ignored:
        commonEnding(construct(*entry, args), r);
        return;
    }
}
