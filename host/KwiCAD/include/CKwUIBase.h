#pragma once
// Logic half shared by every entity editor: the view it works in, whether pick notifications
// are taken, and whether the model tree is refreshed after the editor ends. An editor dialog
// derives from this class as a virtual base, beside its entity logic.
#include "KwiCADExport.h"

#include <QString>

class CFMView;

class KWICAD_EXPORT CKwUIBase
{
public:
    CKwUIBase();
    virtual ~CKwUIBase();

    CFMView* GetView() const { return m_pView; }
    void SetView(CFMView* view) { m_pView = view; }
    int m_bNotificationsEnabled = 0;
    int m_bKeepOpen = 0;

    // A status message the host sends to the open editor (codes are the host's message ids).
    virtual void OnKwMessage(const QString& text, unsigned code, unsigned code2);
    QString GetLastMessage() const { return m_lastMessage; }

protected:
    CFMView* m_pView = nullptr;
    QString m_lastMessage;
};
