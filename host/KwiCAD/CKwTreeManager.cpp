#include "CKwTreeManager.h"

CKwTreeManager* CKwTreeManager::Instance()
{
    static CKwTreeManager manager;
    return &manager;
}

void CKwTreeManager::SetTreeRedraw(int on)
{
    CKwTreeManager* m = Instance();
    m->m_suspended = on == 0;
    if (!m->m_suspended && m->m_pending) {
        m->m_pending = false;
        Q_EMIT m->treeRefreshRequested();
    }
}

void CKwTreeManager::RefreshModelTree()
{
    CKwTreeManager* m = Instance();
    ++m->m_refreshes;
    if (m->m_suspended)
        m->m_pending = true;
    else
        Q_EMIT m->treeRefreshRequested();
}

bool CKwTreeManager::IsRedrawSuspended() { return Instance()->m_suspended; }

int CKwTreeManager::GetRefreshCount() { return Instance()->m_refreshes; }
