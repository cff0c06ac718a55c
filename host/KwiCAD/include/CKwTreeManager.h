#pragma once
// The host's model-tree manager: editors suspend its redraw while they write the model and ask
// for a refresh afterwards; the host's tree listens to the signal.
#include "KwiCADExport.h"

#include <QObject>

class KWICAD_EXPORT CKwTreeManager : public QObject
{
    Q_OBJECT
public:
    static CKwTreeManager* Instance();
    // 0 suspends redraw, 1 resumes it; a refresh asked for meanwhile is delivered on resume.
    static void SetTreeRedraw(int on);
    static void RefreshModelTree();
    static bool IsRedrawSuspended();
    static int GetRefreshCount();

Q_SIGNALS:
    void treeRefreshRequested();

private:
    CKwTreeManager() = default;
    int m_refreshes = 0;
    bool m_suspended = false;
    bool m_pending = false;
};
