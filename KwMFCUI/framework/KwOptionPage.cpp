#include "KwOptionPage.h"

#include "CFMView.h"
#include "CKwPickEvent.h"

#include <QCoreApplication>
#include <QWidget>

CKwOptionChangedEvent::CKwOptionChangedEvent(int ctrlId, int value)
    : QEvent(static_cast<QEvent::Type>(KwViewEvent::OptionChanged)), m_ctrlId(ctrlId),
      m_value(value)
{
}

CKwOptionPageGuard::CKwOptionPageGuard(CFMView* view) : m_view(view)
{
    if (m_view)
        m_view->SetRedrawSuspended(true);
}

CKwOptionPageGuard::~CKwOptionPageGuard()
{
    if (!m_view)
        return;
    m_view->SetRedrawSuspended(false);
    m_view->ReDraw();
}

long KwNotifyOptionChanged(QWidget* page, CFMView* view, int ctrlId, int value)
{
    QWidget* holder = page ? page->parentWidget() : nullptr;
    QWidget* editor = holder ? holder->parentWidget() : nullptr;
    if (!editor)
        return 0;
    CKwOptionPageGuard guard(view);
    CKwOptionChangedEvent ev(ctrlId, value);
    QCoreApplication::sendEvent(editor, &ev);
    return ev.m_result;
}
