#pragma once
// The host's frame window as the dialogs see it: a window to own message boxes, and a modal
// state that a dialog may hold while it is open.
#include "KwiCADExport.h"

#include <QPointer>
#include <QWidget>

class KWICAD_EXPORT CKwFrameWnd
{
public:
    explicit CKwFrameWnd(QWidget* window = nullptr);
    QWidget* GetSafeHwnd() const { return m_window.data(); }
    void SetWindow(QWidget* window) { m_window = window; }
    // Blocks user input to the frame's own controls (menus, view) but not to its dialogs.
    void BeginModalState();
    void EndModalState();
    bool IsModalState() const { return m_modalDepth > 0; }

private:
    QPointer<QWidget> m_window;
    int m_modalDepth = 0;
};
