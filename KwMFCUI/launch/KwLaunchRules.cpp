#include "KwLaunchRules.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFrameWnd.h"
#include "CKwMFCUIApp.h"
#include "CKwUIBase.h"
#include "KwLangText.h"
#include "KwMFCUIEntry.h"
#include "KwMessageBox.h"
#include "KwModuleWindows.h"

namespace {

bool hasResults(const CKwAnalysis* a)
{
    return a->HasResultSet() || a->GetFirstValidSubcaseInAnalysisResults() != nullptr;
}

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

} // namespace

bool KwLaunchRules::NeedsValidResults(const KwLaunchArgs& a)
{
    if (!a.analysis)
        return a.context != nullptr;
    if (hasResults(a.analysis))
        return true;
    KwAfxMessageBox(KwErrText("PlotTemplate", "NoValidResults", "No Valid Results are available."),
                    KwMB::OK);
    return false;
}

bool KwLaunchRules::NeedsResultsQuietly(const KwLaunchArgs& a)
{
    return a.analysis && hasResults(a.analysis);
}

bool KwLaunchRules::NeedsObject(const KwLaunchArgs& a) { return a.object != nullptr; }

bool KwLaunchRules::UnlessOpenMaterialEditorTakesIt(const KwLaunchArgs& a)
{
    if (!a.createHidden || !a.view)
        return true;
    auto* editor = dynamic_cast<CKwMaterialEditorLink*>(a.view->GetOpenDialog());
    if (!editor)
        return true;
    editor->SetFailureTheorySetting(a.option);
    editor->RefreshFromHost();
    return false;
}

CKwMFCDialog* KwLaunchRules::AddToOpenXYPlot(const KwLaunchArgs& a)
{
    if (CKwXYPlotLink* xy = KwModuleWindows::XYPlot())
        xy->AddValueAndUpdate(a.object);
    return nullptr;
}

CKwMFCDialog* KwLaunchRules::DeliverStatusMessage(const KwLaunchArgs& a)
{
    const auto* m = static_cast<const MessageRequest*>(a.object);
    if (!a.view || !m)
        return nullptr;
    const QString text = requestText(m);
    if (auto* editor = dynamic_cast<CKwUIBase*>(a.view->GetOpenDialog()))
        editor->OnKwMessage(text, m->buttons, m->code);
    else
        KwAfxMessageBox(text, KwMB::OK, m->buttons, true);
    return nullptr;
}

CKwMFCDialog* KwLaunchRules::RunMessageBox(const KwLaunchArgs& a)
{
    auto* m = static_cast<MessageRequest*>(a.object);
    if (!a.view || !m)
        return nullptr;
    QWidget* owner = a.view->GetOpenDialog();
    if (!owner && a.view->GetFrameWnd())
        owner = a.view->GetFrameWnd()->GetSafeHwnd();
    const int pressed = KwMessageBoxW(owner, requestText(m), CKwMFCUIApp::ProductDisplayName(),
                                      messageStyle(*m), true);
    m->result = static_cast<std::uint32_t>(pressed - 1);
    return nullptr;
}
