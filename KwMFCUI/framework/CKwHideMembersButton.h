#pragma once
// The "Hide Structural Members" toggle of the editors: two states, each with a picture for
// enabled and disabled use and a tool tip; a click flips the state and reports it once.
#include "KwEditorTables.h"
#include "KwMFCUIExport.h"

#include <QToolButton>

class KWMFCUI_EXPORT CKwHideMembersButton : public QToolButton
{
    Q_OBJECT
public:
    explicit CKwHideMembersButton(QWidget* parent = nullptr);

    // The tool tips of the two states: while members are shown, and once they are hidden.
    void SetToolTips(const KwPrompt& whileShown, const KwPrompt& whileHidden);
    bool AreMembersShown() const { return m_shown; }
    // Sets the state without reporting it (filling, not the user's doing).
    void SetMembersShown(bool shown);
    // The resource path of the current picture.
    QString GetPicture() const;
    // Looks the tool tip up again (a language switch).
    void Retranslate();

Q_SIGNALS:
    void membersShownChanged(bool shown);

private:
    void apply();

    bool m_shown = true;
    KwPrompt m_tipShown{"Loads", "ToolTipHideStructuralMember", "Hide all bodies"};
    KwPrompt m_tipHidden{"Loads", "ToolTipHideStructuralMember", "Show all bodies"};
};
