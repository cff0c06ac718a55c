#pragma once
// Logic half shared by every entity editor: the view it works in, whether pick notifications
// are taken, and whether the model tree is refreshed after the editor ends. An editor dialog
// derives from this class as a virtual base, beside its entity logic, so both halves share one
// object: the logic drives the dialog through the UI callbacks (addressed by control code),
// the dialog forwards picks and the OK and Cancel actions to the logic.
#include "KwiCADExport.h"

#include <QList>
#include <QString>

class CFMView;
class CKwAnalysis;
class CKwFEModel;
class CKwSubCase;
class CKwUIEntity;

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

    // --- actions the dialog forwards; a non-zero status keeps the editor open ---
    virtual long OnSubmitUI() { return 0; }
    virtual long OnCancelUI() { return 0; }
    virtual void OnSelected(QList<CKwUIEntity*>* entities) {}
    virtual void OnDeselected(QList<CKwUIEntity*>* entities) {}
    // 0 when the entity changed underneath the editor and the controls need refilling.
    virtual int IsUpToDate() { return 1; }
    virtual void Refresh() {}

    // --- what every entity logic answers, so that one dialog base can serve them all ---
    // Fills the dialog's controls from the edit copy.
    virtual void LoadObjectData() {}
    // Runs after the edit copy was (re)loaded and the controls filled through the codes:
    // the dialog shows what has no code (bound controls, type panel, picked entities).
    virtual void OnObjectDataLoaded() {}
    // The one way back after the edit copy was replaced (opening, refresh, next, duplicate, a
    // material read from a file): fills the controls through the codes, then runs the
    // object-loaded hook, so what the dialog shows (type, panels, width, switches) is always
    // the edit copy's and never only the codes' part of it.
    void ReloadObjectData();
    // Shows (1) or hides (0) the entity's symbols in the view.
    virtual void Display(int on) {}
    // The entity's type and the row of the dialog's type list that shows it (-1: none).
    virtual int GetTypeFromSelection(int row) const { return row; }
    virtual int GetSelectionFromType(int type) const { return type; }
    // The entities the edit copy acts on, in pick order.
    virtual QList<CKwUIEntity*> GetSelectedEntities() const { return {}; }
    // The editor's title.
    virtual QString GetPageTitleString() const { return {}; }
    // The analysis the entity is edited for (null: none).
    virtual CKwAnalysis* GetAnalysis() const { return nullptr; }

    // --- UI callbacks: the dialog overrides them; each returns 1 when `code` names one of
    // its controls and 0 otherwise ---
    virtual int SetControlText(int code, const QString& text) { return 0; }
    virtual int GetControlText(int code, QString& text) { return 0; }
    // Replaces the items of a combo box or list box; a count of 0 or less empties it.
    virtual int SetControlItems(int code, int count, const QString* items) { return 0; }
    // Selects the given rows of a multiple-selection list; rows beyond the count are skipped.
    virtual int SelectControlItems(int code, int count, const int* indices) { return 0; }
    virtual int SetControlToolTip(int code, const QString& text) { return 0; }
    // `color` is 0x00BBGGRR.
    virtual int SetControlColor(int code, unsigned color) { return 0; }

    // --- list and value interface: the dialog hands over what has no control code ---
    // A list of row indices chosen in the dialog, e.g. the selected subcases.
    virtual void SetListValue(int code, const QList<int>& values) {}
    // Single fields of the edited entity by field number; 0 when the field is unknown.
    virtual int GetValue(int field, int& value) { return 0; }
    virtual int SetValue(int field, int value) { return 0; }

protected:
    // --- checks and messages every entity logic shares ---
    // The entity kind's own texts of the name and ID checks: the section of its messages and
    // the English defaults of its "NameRequired" and "DuplicateID" messages.
    struct IdentityTexts
    {
        const char* section;
        const char* nameRequired;
        const char* duplicateId;
    };
    // Shows a field's problem as the view's error bubble, "label - \n 'message'"; nothing
    // without a view.
    void ShowFieldError(const QString& label, const QString& message) const;
    // The name and ID checks, in this order: a name, an ID above zero, an ID no other entity of
    // the kind has (`idTaken`). 1 when all pass; otherwise 0 after the field's message.
    int ValidateIdentity(const QString& name, int id, bool idTaken,
                         const IdentityTexts& texts) const;
    // The analysis an editor works for: its subcase's, else the one chosen for it, else the
    // model's first; null when there is none.
    static CKwAnalysis* AnalysisInContext(const CKwSubCase* subcase, CKwAnalysis* chosen,
                                          const CKwFEModel* model);

    CFMView* m_pView = nullptr;
    QString m_lastMessage;
};
