#pragma once
// Option pages inside an editor never touch the model: they report each change of one of their
// controls to the owning editor (event 33003) inside a redraw guard, so the view redraws once.
#include "KwMFCUIExport.h"

#include <QEvent>

class CFMView;
class QWidget;

class KWMFCUI_EXPORT CKwOptionChangedEvent : public QEvent
{
public:
    CKwOptionChangedEvent(int ctrlId, int value);
    int CtrlId() const { return m_ctrlId; }
    int Value() const { return m_value; }
    long m_result = 0;

private:
    int m_ctrlId;
    int m_value;
};

// Suspends the view's redraw for its lifetime and redraws once at its end.
class KWMFCUI_EXPORT CKwOptionPageGuard
{
public:
    explicit CKwOptionPageGuard(CFMView* view);
    ~CKwOptionPageGuard();
    CKwOptionPageGuard(const CKwOptionPageGuard&) = delete;
    CKwOptionPageGuard& operator=(const CKwOptionPageGuard&) = delete;

private:
    CFMView* m_view;
};

// Tells the editor that owns `page` (the parent of the page's parent) that control `ctrlId`
// now holds `value` (a check state, a combo index, a slider position, or 0). Returns the
// editor's result, 0 when the page has no owner.
KWMFCUI_EXPORT long KwNotifyOptionChanged(QWidget* page, CFMView* view, int ctrlId, int value);
