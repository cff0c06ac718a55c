#include "CKwMFCUIApp.h"

#include "CFMView.h"
#include "CKwMFCDialog.h"
#include "CKwPlot.h"
#include "CKwiCKAddin.h"
#include "KwLangText.h"
#include "KwLaunchTable.h"
#include "KwMFCUIEntry.h"
#include "KwMessageBox.h"
#include "KwMethodLogger.h"

#include <QApplication>
#include <QCoreApplication>
#include <QLoggingCategory>
#include <iterator>
#include <new>

static void kwInitModuleResources() { Q_INIT_RESOURCE(kwmfcui); }

namespace {

void runInitInstance() { CKwMFCUIApp::Instance().InitInstance(); }

Q_LOGGING_CATEGORY(lcLaunch, "kw.launch")

void showNotAvailable()
{
    KwAfxMessageBox(KwErrText("FMView", "FunctionalityNotImplemented",
                              "Requested functionality is not available in the current version."),
                    KwMB::OK);
}

// Common to every kind that opens something: clear away the result toolbar (or refuse when
// another dialog is open), switch the result display off unless the kind shows results, and
// tell the add-in.
bool prepareView(const KwLaunchEntry& e, const DialogLaunchRequest& r)
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
        if (!view->IsSolvraRunning() && !e.keepsResultDisplay) {
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

// The row's factory, or the "not available" message for a dialog this build does not have.
// The dialog it returns must be built on the row's template: the row names the template the
// window's place is kept under, and the two must not drift apart.
CKwMFCDialog* build(const KwLaunchEntry& e, const KwLaunchArgs& args)
{
    if (!e.factory) {
        showNotAvailable();
        return nullptr;
    }
    CKwMFCDialog* dlg = nullptr;
    try {
        dlg = e.factory(args);
    } catch (const std::bad_alloc&) {
        return nullptr;
    }
    if (dlg && dlg->GetTemplateId() != e.templateId) {
        qCCritical(lcLaunch, "kind %u: the table names template %u, %s is built on %u", e.kind,
                   e.templateId, e.className, dlg->GetTemplateId());
        Q_ASSERT_X(false, "LaunchDialog", "kind table and dialog disagree on the template");
    }
    return dlg;
}

// The ways a row opens, in the order of KwLaunchHow.

void openModeless(const KwLaunchEntry& e, const KwLaunchArgs& a)
{
    CKwMFCDialog* dlg = build(e, a);
    if (!dlg)
        return;
    dlg->SetLaunchKind(a.kind);
    if (dlg->GetCloseAtOnce()) {
        dlg->DestroyWindow();
        return;
    }
    if (!a.createHidden)
        dlg->show();
}

void openHoldingOwner(const KwLaunchEntry& e, const KwLaunchArgs& a)
{
    if (CKwMFCDialog* dlg = build(e, a)) {
        dlg->show();
        dlg->HoldOwner();
    }
}

void openModal(const KwLaunchEntry& e, const KwLaunchArgs& a)
{
    if (CKwMFCDialog* dlg = build(e, a)) {
        dlg->SetLaunchKind(a.kind);
        dlg->DoModal();
        delete dlg;
    }
}

void ignore(const KwLaunchEntry&, const KwLaunchArgs&) {}

void openByFactory(const KwLaunchEntry& e, const KwLaunchArgs& a) { build(e, a); }

struct LaunchWay
{
    bool preparesView;
    void (*open)(const KwLaunchEntry&, const KwLaunchArgs&);
};

constexpr LaunchWay kWays[] = {
    {true, openModeless},      // Modeless
    {true, openHoldingOwner},  // ModelessHoldOwner
    {true, openModal},         // Modal
    {true, ignore},            // Ignored
    {true, openByFactory},     // Special
    {false, openByFactory},    // Message
};
static_assert(std::size(kWays) == std::size_t(KwLaunchHow::Message) + 1);

// Kinds outside the table: the view is prepared as for any kind, then "not available".
const KwLaunchEntry kUnknownKind{0, "", 0, KwLaunchHow::Modeless, nullptr};

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

    const KwLaunchEntry* found = KwFindLaunchEntry(r.kind);
    const KwLaunchEntry& entry = found ? *found : kUnknownKind;
    const LaunchWay& way = kWays[std::size_t(entry.how)];
    if (way.preparesView && !prepareView(entry, r))
        return;
    if (entry.check && !entry.check(args))
        return;
    way.open(entry, args);
}
