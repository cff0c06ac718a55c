#pragma once
// The add-in object of the host. The dialogs reach it through the global TheApplication,
// which may be null in a process that set up no add-in.
#include "KwiCADExport.h"

#include <QString>
#include <functional>

class CFMView;

class KWICAD_EXPORT CKwiCKAddin
{
public:
    using CommandHandler =
        std::function<int(int command, int sub, const QString& text, int value, CFMView* view,
                          void* data)>;
    using HelpHandler = std::function<void(const QString& topic)>;

    CKwiCKAddin();
    virtual ~CKwiCKAddin();

    // Asks the add-in to bring its toolbars up to date (query mode 1: for an opening dialog).
    void ToolbarQueryDisplayBase(int queryMode);
    int GetToolbarQueryCount() const { return m_toolbarQueries; }
    int GetLastToolbarQueryMode() const { return m_lastQueryMode; }

    // The add-in's command handler; the host installs the handlers of its commands.
    int OnKwCommand(int command, int sub, const QString& text, int value, CFMView* view,
                    void* data);
    void SetCommandHandler(CommandHandler handler) { m_commands = std::move(handler); }

    bool IsExplicitEnabledInTechPreview() const { return m_explicitEnabled; }
    void SetExplicitEnabledInTechPreview(bool on);

    // Opens a help topic ("NLPARM", ...).
    void ShowHelp(const QString& topic);
    QString GetLastHelpTopic() const { return m_lastHelpTopic; }
    void SetHelpHandler(HelpHandler handler) { m_help = std::move(handler); }

private:
    int m_toolbarQueries = 0;
    int m_lastQueryMode = -1;
    bool m_explicitEnabled = false;
    QString m_lastHelpTopic;
    CommandHandler m_commands;
    HelpHandler m_help;
};

// The host's add-in object; null until the host creates one.
extern KWICAD_EXPORT CKwiCKAddin* TheApplication;
