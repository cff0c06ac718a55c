#pragma once
// Dialog half shared by every entity editor. It shares the logic base CKwUIBase (virtually)
// with the editor's entity logic, keeps the editor's selection boxes with one active, takes
// the view's pick events, runs OK and Cancel through the logic, and implements the logic's UI
// callbacks once over the editor's control-code table.
#include "CKwMFCDialog.h"
#include "CKwUIBase.h"
#include "KwMFCUIExport.h"

#include <QList>
#include <QPointer>
#include <span>

class CKwMFCNodeElemSelectionBox;
class CKwUIEntity;

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
    // Adds the entities to their boxes (optionally emptying the boxes first). Entities no box
    // admits are taken out of the list, so that the logic is told only what was taken.
    void AddEntitiesToSelectionBox(QList<CKwUIEntity*>* entities, bool clearFirst = false);
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

protected:
    bool OnInitDialog() override;
    bool event(QEvent* event) override;

    void SetControlCodes(std::span<const KwControlCode> table) { m_codes = table; }
    QWidget* ControlForCode(int code, unsigned op) const;

    // Handlers of the view's events; editors may override them. Each returns the result given
    // back to the view.
    virtual long OnEntitiesPicked(QList<CKwUIEntity*>* entities);
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

    std::span<const KwControlCode> m_codes;
    QList<QPointer<CKwMFCNodeElemSelectionBox>> m_boxes;
};
