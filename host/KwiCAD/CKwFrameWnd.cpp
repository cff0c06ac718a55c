#include "CKwFrameWnd.h"

#include <QMainWindow>
#include <QMenuBar>

CKwFrameWnd::CKwFrameWnd(QWidget* window) : m_window(window) {}

namespace {
// Disabling the frame itself would disable its dialogs too (they are its children), so only
// the frame's own working parts are switched.
void setFrameInputEnabled(QWidget* window, bool on)
{
    if (auto* mw = qobject_cast<QMainWindow*>(window)) {
        if (mw->centralWidget())
            mw->centralWidget()->setEnabled(on);
        if (mw->menuBar())
            mw->menuBar()->setEnabled(on);
    }
}
} // namespace

void CKwFrameWnd::BeginModalState()
{
    if (m_modalDepth++ == 0)
        setFrameInputEnabled(m_window, false);
}

void CKwFrameWnd::EndModalState()
{
    if (m_modalDepth == 0)
        return;
    if (--m_modalDepth == 0)
        setFrameInputEnabled(m_window, true);
}
