#include "CKwiCKAddin.h"

CKwiCKAddin* TheApplication = nullptr;

CKwiCKAddin::CKwiCKAddin() = default;

CKwiCKAddin::~CKwiCKAddin()
{
    if (TheApplication == this)
        TheApplication = nullptr;
}

void CKwiCKAddin::ToolbarQueryDisplayBase(int queryMode)
{
    ++m_toolbarQueries;
    m_lastQueryMode = queryMode;
}

int CKwiCKAddin::OnKwCommand(int command, int sub, const QString& text, int value, CFMView* view,
                             void* data)
{
    return m_commands ? m_commands(command, sub, text, value, view, data) : 0;
}

void CKwiCKAddin::SetExplicitEnabledInTechPreview(bool on) { m_explicitEnabled = on; }

void CKwiCKAddin::ShowHelp(const QString& topic)
{
    m_lastHelpTopic = topic;
    if (m_help)
        m_help(topic);
}
