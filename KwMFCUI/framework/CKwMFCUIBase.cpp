#include "CKwMFCUIBase.h"

#include "CFMView.h"
#include "CKwColorSwatch.h"
#include "CKwFEModel.h"
#include "CKwMFCNodeElemSelectionBox.h"
#include "CKwMsgDialog.h"
#include "CKwPickEvent.h"
#include "CKwSelectionHandler.h"
#include "CKwTreeManager.h"
#include "CKwUIEntity.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"
#include "KwOptionPage.h"

#include <QComboBox>
#include <QListWidget>
#include <QSet>

CKwMFCUIBase::CKwMFCUIBase(unsigned templateId, CFMView* view, QWidget* parent)
    : CKwMFCDialog(templateId, view, parent)
{
    SetView(view);
}

CKwMFCUIBase::~CKwMFCUIBase() { releaseView(); }

// --- selection boxes ---

void CKwMFCUIBase::RegisterSelectionBox(CKwMFCNodeElemSelectionBox* box)
{
    if (!box || m_boxes.contains(box))
        return;
    m_boxes.append(box);
    connect(box, &CKwMFCNodeElemSelectionBox::entitiesDropped, this, &CKwMFCUIBase::boxDropped);
    connect(box, &CKwMFCNodeElemSelectionBox::entitiesRequested, this,
            &CKwMFCUIBase::boxRequested);
    connect(box, &CKwMFCNodeElemSelectionBox::pickMaskChanged, this,
            &CKwMFCUIBase::publishPickMask);
    QPointer<CFMView> view = GetFMView();
    box->SetGeometryProvider([view]() -> QList<CKwUIEntity*> {
        return view && view->GetModel() ? view->GetModel()->m_geometry : QList<CKwUIEntity*>();
    });
    if (!GetActiveSelectionBox())
        SetActiveSelectionBox(box);
}

void CKwMFCUIBase::SetActiveSelectionBox(CKwMFCNodeElemSelectionBox* box)
{
    for (const auto& b : std::as_const(m_boxes))
        if (b)
            b->SetActive(b == box);
    publishPickMask();
}

CKwMFCNodeElemSelectionBox* CKwMFCUIBase::GetActiveSelectionBox() const
{
    for (const auto& b : m_boxes)
        if (b && b->IsActive())
            return b.data();
    return nullptr;
}

CKwMFCNodeElemSelectionBox* CKwMFCUIBase::FindSelectionBoxFor(const CKwUIEntity* entity) const
{
    CKwMFCNodeElemSelectionBox* active = GetActiveSelectionBox();
    if (active && active->Accepts(entity))
        return active;
    for (const auto& b : m_boxes)
        if (b && b->Accepts(entity))
            return b.data();
    return nullptr;
}

void CKwMFCUIBase::publishPickMask()
{
    CFMView* view = GetFMView();
    if (!view || !view->GetSelectionHandler())
        return;
    CKwMFCNodeElemSelectionBox* active = GetActiveSelectionBox();
    if (view->GetSelectionHandler()->GetActiveDialog() == this)
        view->GetSelectionHandler()->SetFilter(active ? active->GetPickMask() : 0);
}

void CKwMFCUIBase::AddEntitiesToSelectionBox(QList<CKwUIEntity*>* entities, bool clearFirst)
{
    if (!entities)
        return;
    if (clearFirst)
        for (const auto& b : std::as_const(m_boxes))
            if (b)
                b->ResetContent();
    CFMView* view = GetFMView();
    const bool showIds = view && view->GetShowIDs();
    QList<CKwMFCNodeElemSelectionBox*> touched;
    QList<CKwUIEntity*> taken;
    taken.reserve(entities->size());
    for (CKwUIEntity* e : std::as_const(*entities)) {
        CKwMFCNodeElemSelectionBox* box = FindSelectionBoxFor(e);
        if (!box)
            continue;
        box->AddEntity(e, showIds);
        taken.append(e);
        if (!touched.contains(box))
            touched.append(box);
    }
    for (CKwMFCNodeElemSelectionBox* box : std::as_const(touched))
        box->FlushAdded();
    *entities = taken;
}

int CKwMFCUIBase::AddEntitiesByID(int kind, const QList<int>& ids)
{
    CFMView* view = GetFMView();
    CKwFEModel* model = view ? view->GetModel() : nullptr;
    QList<CKwUIEntity*> found;
    QList<int> missing;
    for (int id : ids) {
        CKwUIEntity* e = model ? model->FindGeometry(kind, id) : nullptr;
        if (e)
            found.append(e);
        else
            missing.append(id);
    }
    if (!found.isEmpty())
        OnEntitiesPicked(&found);
    if (!missing.isEmpty())
        ShowInvalidEntityIDsWarning(missing);
    return static_cast<int>(missing.size());
}

void CKwMFCUIBase::ShowInvalidEntityIDsWarning(const QList<int>& ids)
{
    CKwMsgDialog dlg(ids, this);
    dlg.DoModal();
}

void CKwMFCUIBase::boxDropped(const QList<CKwUIEntity*>& entities)
{
    QList<CKwUIEntity*> list = entities;
    OnDeselected(&list);
}

void CKwMFCUIBase::boxRequested(const QList<CKwUIEntity*>& entities)
{
    QList<CKwUIEntity*> list = entities;
    OnEntitiesPicked(&list);
}

// --- view events ---

long CKwMFCUIBase::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    if (!m_bNotificationsEnabled || !entities)
        return 0;
    AddEntitiesToSelectionBox(entities);
    if (entities->isEmpty())
        return 0;
    OnSelected(entities);
    return 1;
}

long CKwMFCUIBase::OnEntitiesDropped(QList<CKwUIEntity*>* entities)
{
    if (!m_bNotificationsEnabled || !entities)
        return 0;
    QList<CKwUIEntity*> removed;
    for (const auto& b : std::as_const(m_boxes))
        if (b)
            removed += b->RemoveEntities(*entities);
    if (removed.isEmpty())
        return 0;
    OnDeselected(entities);
    return 1;
}

long CKwMFCUIBase::OnViewSelectionReset(QList<CKwUIEntity*>*) { return 0; }

long CKwMFCUIBase::OnOptionChanged(int, int) { return 0; }

bool CKwMFCUIBase::event(QEvent* e)
{
    switch (static_cast<int>(e->type())) {
    case KwViewEvent::Picked:
    case KwViewEvent::Dropped:
    case KwViewEvent::Reset: {
        auto* pick = dynamic_cast<CKwPickEvent*>(e);
        if (!pick)
            return CKwMFCDialog::event(e);
        if (static_cast<int>(e->type()) == KwViewEvent::Picked)
            pick->m_result = OnEntitiesPicked(pick->Entities());
        else if (static_cast<int>(e->type()) == KwViewEvent::Dropped)
            pick->m_result = OnEntitiesDropped(pick->Entities());
        else
            pick->m_result = m_bNotificationsEnabled ? OnViewSelectionReset(pick->Entities()) : 0;
        return true;
    }
    case KwViewEvent::OptionChanged:
        if (auto* opt = dynamic_cast<CKwOptionChangedEvent*>(e)) {
            opt->m_result = OnOptionChanged(opt->CtrlId(), opt->Value());
            return true;
        }
        return CKwMFCDialog::event(e);
    case QEvent::WindowActivate: {
        const bool r = CKwMFCDialog::event(e);
        OnRefreshHook();
        return r;
    }
    default:
        return CKwMFCDialog::event(e);
    }
}

void CKwMFCUIBase::OnRefreshHook()
{
    if (IsWindowDestroyed())
        return;
    if (IsUpToDate() == 0) {
        // The refresh refills the controls; it must not come back as picks.
        m_bNotificationsEnabled = 0;
        Refresh();
        m_bNotificationsEnabled = 1;
    }
}

// --- UI callbacks ---

QWidget* CKwMFCUIBase::ControlForCode(int code, unsigned op) const
{
    for (const KwControlCode& row : m_codes)
        if (row.code == code && (row.ops & op))
            return KwFindControl(this, row.ctrlId);
    return nullptr;
}

int CKwMFCUIBase::SetControlText(int code, const QString& text)
{
    QWidget* w = ControlForCode(code, KwCodeOp::Text);
    if (!w)
        return 0;
    KwSetControlText(const_cast<CKwMFCUIBase*>(this), w->property(kKwCtrlIdProperty).toInt(),
                     text);
    return 1;
}

int CKwMFCUIBase::GetControlText(int code, QString& text)
{
    QWidget* w = ControlForCode(code, KwCodeOp::GetText);
    if (!w)
        return 0;
    text = KwGetControlText(this, w->property(kKwCtrlIdProperty).toInt());
    return 1;
}

int CKwMFCUIBase::SetControlItems(int code, int count, const QString* items)
{
    QWidget* w = ControlForCode(code, KwCodeOp::Items);
    if (!w)
        return 0;
    QStringList list;
    if (items)
        for (int i = 0; i < count; ++i)
            list << items[i];
    // Filling is the logic's doing, not the user's: no change handlers run.
    const bool blocked = w->blockSignals(true);
    if (auto* combo = qobject_cast<QComboBox*>(w)) {
        combo->clear();
        combo->addItems(list);
    } else if (auto* lb = qobject_cast<QListWidget*>(w)) {
        lb->clear();
        lb->addItems(list);
    }
    w->blockSignals(blocked);
    return 1;
}

int CKwMFCUIBase::SelectControlItems(int code, int count, const int* indices)
{
    QWidget* w = ControlForCode(code, KwCodeOp::Select);
    if (!w)
        return 0;
    auto* lb = qobject_cast<QListWidget*>(w);
    if (!lb || !indices)
        return 1;
    const bool blocked = lb->blockSignals(true);
    for (int i = 0; i < count; ++i) {
        const int row = indices[i];
        if (row >= 0 && row < lb->count())
            lb->item(row)->setSelected(true);
    }
    lb->blockSignals(blocked);
    return 1;
}

int CKwMFCUIBase::SetControlToolTip(int code, const QString& text)
{
    QWidget* w = ControlForCode(code, KwCodeOp::ToolTip);
    if (!w)
        return 0;
    if (auto* box = qobject_cast<CKwMFCNodeElemSelectionBox*>(w))
        box->SetPrompt(text);
    else
        w->setToolTip(text);
    return 1;
}

int CKwMFCUIBase::SetControlColor(int code, unsigned color)
{
    auto* swatch = qobject_cast<CKwColorSwatch*>(ControlForCode(code, KwCodeOp::Color));
    if (!swatch)
        return 0;
    swatch->SetColor(color);
    return 1;
}

// --- lifecycle ---

bool CKwMFCUIBase::OnInitDialog()
{
    const bool r = CKwMFCDialog::OnInitDialog();
    // While an editor is open the view takes no second one, and its picks come here.
    EnterViewDialogStack();
    if (CFMView* view = GetFMView())
        if (CKwSelectionHandler* h = view->GetSelectionHandler())
            h->ActivateDialog(this);
    publishPickMask();
    m_bNotificationsEnabled = 1;
    return r;
}

void CKwMFCUIBase::OnReactivatedByView() { publishPickMask(); }

void CKwMFCUIBase::releaseView()
{
    CFMView* view = GetFMView();
    if (!view || !view->GetSelectionHandler())
        return;
    CKwSelectionHandler* h = view->GetSelectionHandler();
    if (h->GetActiveDialog() == this) {
        h->ActivateDialog(nullptr);
        h->SetFilter(0);
    }
}

void CKwMFCUIBase::OnOK()
{
    KW_LOG_METHOD("CKwMFCUIBase::OnOK");
    if (RefuseWhileSolving())
        return;
    CKwTreeManager::SetTreeRedraw(0);
    SetStayOpen(0);
    const long status = OnSubmitUI();
    SetStayOpen(status != 0 ? 1 : 0);
    if (status != 0)
        show();
    else
        OnAfterSubmit();
    if (status == 0 && m_bKeepOpen == 0)
        CKwTreeManager::RefreshModelTree();
    CKwTreeManager::SetTreeRedraw(1);
    CKwMFCDialog::OnOK();
    if (IsWindowDestroyed())
        releaseView();
}

void CKwMFCUIBase::OnCancel()
{
    KW_LOG_METHOD("CKwMFCUIBase::OnCancel");
    SetStayOpen(0);
    const long status = OnCancelUI();
    SetStayOpen(status != 0 ? 1 : 0);
    if (status == 0 && m_bKeepOpen == 0)
        CKwTreeManager::RefreshModelTree();
    CKwMFCDialog::OnCancel();
    if (IsWindowDestroyed())
        releaseView();
}
