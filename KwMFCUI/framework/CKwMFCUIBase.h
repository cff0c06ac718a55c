#pragma once
// Dialog half shared by every entity editor. It shares the logic base CKwUIBase (virtually)
// with the editor's entity logic, keeps the editor's selection boxes with one active, takes
// the view's pick events, runs OK and Cancel through the logic, and implements the logic's UI
// callbacks once over the editor's control-code table. An editor declares its tables (control
// codes, texts, value bindings, type panels); the base connects the controls once and refills
// them the same way whenever the logic has (re)loaded its edit copy.
#include "CKwMFCDialog.h"
#include "CKwUIBase.h"
#include "KwEditorTables.h"
#include "KwLangText.h"
#include "KwMFCUIExport.h"

#include <QList>
#include <QPointer>
#include <QStringList>
#include <functional>
#include <span>

class CKwHideMembersButton;
class CKwMFCNodeElemSelectionBox;
class QTimer;
class CKwUIEntity;
class KW_UOM;

// Which UI callbacks a control code accepts.
namespace KwCodeOp {
enum : unsigned { Text = 0x1, GetText = 0x2, Items = 0x4, Select = 0x8, ToolTip = 0x10,
                  Color = 0x20 };
}

// One row of an editor's control-code table: the logic's code, the template control, and the
// callbacks the code accepts.
struct KwControlCode
{
    int code;
    int ctrlId;
    unsigned ops;
};

class KWMFCUI_EXPORT CKwMFCUIBase : public CKwMFCDialog, public virtual CKwUIBase
{
    Q_OBJECT
public:
    CKwMFCUIBase(unsigned templateId, CFMView* view, QWidget* parent = nullptr);
    ~CKwMFCUIBase() override;

    // --- selection boxes ---
    // Registers a box so that picks in the view reach it; the first box becomes active.
    void RegisterSelectionBox(CKwMFCNodeElemSelectionBox* box);
    void SetActiveSelectionBox(CKwMFCNodeElemSelectionBox* box);
    CKwMFCNodeElemSelectionBox* GetActiveSelectionBox() const;
    // The active box when it admits the entity, else the first registered box that does.
    CKwMFCNodeElemSelectionBox* FindSelectionBoxFor(const CKwUIEntity* entity) const;
    // Adds the entities to the boxes that admit them; with `clearFirst` each box that receives
    // entities is emptied before its first one. Entities no box admits are skipped. The list
    // itself is left as it was.
    void AddEntitiesToSelectionBox(const QList<CKwUIEntity*>* entities, bool clearFirst = false);
    // Takes entities by their IDs as if picked; IDs that name no entity of that kind are
    // listed in the warning. Returns how many IDs were missing.
    int AddEntitiesByID(int kind, const QList<int>& ids);
    // The invalid entity IDs warning (modal).
    void ShowInvalidEntityIDsWarning(const QList<int>& ids);

    // --- UI callbacks, over the control-code table ---
    int SetControlText(int code, const QString& text) override;
    int GetControlText(int code, QString& text) override;
    int SetControlItems(int code, int count, const QString* items) override;
    int SelectControlItems(int code, int count, const int* indices) override;
    int SetControlToolTip(int code, const QString& text) override;
    int SetControlColor(int code, unsigned color) override;

    void OnOK() override;
    void OnCancel() override;

    // Title and text table in the current language. Runs again on a language switch and
    // changes nothing in the edit copy.
    void SetTextToCurrentLang() override;
    // The common path after every (re)load of the edit copy: bound controls, type panel with
    // its filter and prompt, then the selection boxes from the logic's entities.
    void OnObjectDataLoaded() override;

    // The unit system labels and values are shown in: the one given, else the view's.
    KW_UOM* GetUnitSystem() const;
    void SetUnitSystem(KW_UOM* units) { m_units = units; }
    bool IsExplicitAnalysis() const;

    // Bubble warnings in the view, each its own bubble: the first at once, each next one when
    // its predecessor has had its time, so none hides another. A later call (the user's next
    // choice) drops what still waits of an earlier one and speaks at once.
    void ShowAdvisories(const QStringList& texts);
    int PendingAdvisories() const { return static_cast<int>(m_advisories.size()); }
    // How long each bubble stands before the next is shown (milliseconds).
    void SetAdvisoryInterval(int ms) { m_advisoryInterval = ms; }

    // A file filter kept as "name|pattern|name|pattern|" in the file dialog's form: the names,
    // each with its patterns in parentheses. A name without its pattern is dropped.
    static QStringList FileDialogFilters(const QString& pipeFilter);

protected:
    bool OnInitDialog() override;
    bool event(QEvent* event) override;

    // --- the editor's tables (static storage; registered in the constructor) ---
    void SetControlCodes(std::span<const KwControlCode> table) { m_codes = table; }
    void SetTextTable(std::span<const KwTextRow> table) { m_texts = table; }
    void SetValueBindings(std::span<const KwValueBinding> table) { m_bindings = table; }
    // Type panels; the prompt of the current type goes to the control of `promptCode`.
    void SetTypePanels(std::span<const KwTypePanel> table, int promptCode)
    {
        m_panels = table;
        m_promptCode = promptCode;
    }
    // A multiple-selection list whose chosen rows go to the logic under `code` after every
    // selection change and every panel switch.
    void SetSubcaseList(int ctrlId, int code)
    {
        m_subcaseListId = ctrlId;
        m_subcaseCode = code;
    }
    // The check box that gates check-only updates of the edit copy (0: none).
    void SetUpdateGate(int ctrlId) { m_updateGateId = ctrlId; }
    // False when `checkOnly` is set and the gate box is clear: the update is skipped.
    bool UpdateGateAllows(bool checkOnly) const;

    QWidget* ControlForCode(int code, unsigned op) const;
    // Filter, option and registration of a selection box in one call.
    void SetupSelectionBox(CKwMFCNodeElemSelectionBox* box, unsigned filter, int option);

    // Fills every bound control from the logic's value interface, sending no change signals.
    void FillBoundControls();
    // Shows the panel of `type` with its filter and prompt, then hands the subcases over.
    void ApplyTypePanel(int type);
    // Selects the type combo's row of the stored type.
    void SelectTypeFromEntity();
    // Hands the rows chosen in the subcase list to the logic.
    void HandOverSubcases();
    // A bubble warning in the view from a language triple, queued like ShowAdvisories.
    void ShowAdvisory(const char* section, const char* key, const char* english);

    // "Hide Structural Members": the button's clicks hide or show the view's structural members
    // and solids through OnHideStructuralMembers.
    void ConnectHideMembersButton(CKwHideMembersButton* button);
    virtual void OnHideStructuralMembers(bool shown);
    // Clicking into `box` makes it the target of picks; `accept`, when given, may refuse.
    void TargetOnClick(CKwMFCNodeElemSelectionBox* box, std::function<bool()> accept = {});
    bool eventFilter(QObject* watched, QEvent* event) override;
    // The dialog's width for a type, in pixels at 96 dpi (0: the width stays). A type change
    // and every reload set it, keeping the dialog's left, top and height.
    virtual int WidthForType(int type) const { return 0; }
    void ApplyTypeWidth(int type);

    // A type combo row was chosen; returns the row to take instead (a heading row hands on
    // to the row below it). The base then maps it to a type code.
    virtual int OnTypeRowChosen(int row) { return row; }
    // Another type was chosen; the edit copy still holds `oldType` and its panel still shows:
    // what the user typed there is taken into the edit copy here.
    virtual void OnTypeLeaving(int oldType) {}
    // The type changed and its panel is shown: the editor's advisories.
    virtual void OnTypeChanged(int type) {}
    // What the view picks for an editor while none of its selection boxes is active (an editor
    // that takes its picks without a box says so here); nothing by default.
    virtual unsigned PickMaskWithoutBox() const { return 0; }

    // Handlers of the view's events; editors may override them. Each returns the result given
    // back to the view.
    virtual long OnEntitiesPicked(QList<CKwUIEntity*>* entities);
    // OnEntitiesPicked, then takes back out of `box` what the logic did not keep among its
    // selected entities (a logic that refuses a pick says why itself): for editors whose
    // logic judges picks the box's filter cannot tell apart.
    long PickKeepingWhatTheLogicTakes(QList<CKwUIEntity*>* entities,
                                      CKwMFCNodeElemSelectionBox* box);
    virtual long OnEntitiesDropped(QList<CKwUIEntity*>* entities);
    virtual long OnViewSelectionReset(QList<CKwUIEntity*>* entities);
    // An option page of this editor changed a control.
    virtual long OnOptionChanged(int ctrlId, int value);
    // Picks come back to this editor: the view filters by its active box again.
    void OnReactivatedByView() override;
    // Runs after a submit that closes the editor.
    virtual void OnAfterSubmit() {}
    // Runs each time the editor window becomes active, after the framework's own handling:
    // refills the controls when the logic reports that the entity changed underneath.
    virtual void OnRefreshHook();

private:
    void boxDropped(const QList<CKwUIEntity*>& entities);
    void boxRequested(const QList<CKwUIEntity*>& entities);
    void publishPickMask();
    void releaseView();
    void connectBindings();
    void onTypeRow(int row);
    void refillSelectionBoxes();
    const KwTypePanel* panelFor(int type) const;
    void installPrompt(const KwTypePanel& row);

    std::span<const KwControlCode> m_codes;
    std::span<const KwTextRow> m_texts;
    std::span<const KwValueBinding> m_bindings;
    std::span<const KwTypePanel> m_panels;
    int m_promptCode = 0;
    int m_typeField = -1;
    int m_typeComboId = 0;
    int m_subcaseListId = 0;
    int m_subcaseCode = 0;
    int m_updateGateId = 0;
    bool m_inPick = false;
    KW_UOM* m_units = nullptr;
    QList<QPointer<CKwMFCNodeElemSelectionBox>> m_boxes;
    QList<std::pair<QPointer<CKwMFCNodeElemSelectionBox>, std::function<bool()>>> m_clickTargets;
    QStringList m_advisories;
    QTimer* m_advisoryTimer = nullptr;
    int m_advisoryInterval = 4000;
    void showNextAdvisory();
};
