#include "CKwMFCUIBase.h"

#include <algorithm>

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwColorSwatch.h"
#include "CKwHideMembersButton.h"
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

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QDebug>
#include <QListWidget>
#include <QScopedValueRollback>
#include <QSet>
#include <QScreen>
#include <QTimer>

CKwMFCUIBase::CKwMFCUIBase(unsigned templateId, CFMView* view, QWidget* parent)
    : CKwMFCDialog(templateId, view, parent)
{
    SetView(view);
}

CKwMFCUIBase::~CKwMFCUIBase()
{
    // The controls outlive the editor's logic while the widget tree is taken down; none of
    // their signals may reach this editor any more.
    for (QObject* child : findChildren<QObject*>())
        child->disconnect(this);
    releaseView();
}

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
    box->SetModelProvider([view]() -> CKwFEModel* { return view ? view->GetModel() : nullptr; });
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
        view->GetSelectionHandler()->SetFilter(active ? active->GetPickMask() : PickMaskWithoutBox());
}

void CKwMFCUIBase::AddEntitiesToSelectionBox(const QList<CKwUIEntity*>* entities,
                                              bool clearFirst)
{
    if (!entities)
        return;
    CFMView* view = GetFMView();
    const bool showIds = view && view->GetShowIDs();
    QList<CKwMFCNodeElemSelectionBox*> touched;
    for (CKwUIEntity* e : std::as_const(*entities)) {
        CKwMFCNodeElemSelectionBox* box = FindSelectionBoxFor(e);
        if (!box)
            continue;
        if (!touched.contains(box)) {
            if (clearFirst)
                box->ResetContent();
            touched.append(box);
        }
        box->AddEntity(e, showIds);
    }
    for (CKwMFCNodeElemSelectionBox* box : std::as_const(touched))
        box->FlushAdded();
}

void CKwMFCUIBase::SetupSelectionBox(CKwMFCNodeElemSelectionBox* box, unsigned filter,
                                     int option)
{
    if (!box)
        return;
    box->SetFilter(filter);
    RegisterSelectionBox(box);
    box->SetOption(option);
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

long CKwMFCUIBase::PickKeepingWhatTheLogicTakes(QList<CKwUIEntity*>* entities,
                                                CKwMFCNodeElemSelectionBox* box)
{
    const long handled = CKwMFCUIBase::OnEntitiesPicked(entities);
    if (!entities || !box)
        return handled;
    const QList<CKwUIEntity*> picked = GetSelectedEntities();
    const QSet<CKwUIEntity*> taken(picked.cbegin(), picked.cend());
    QList<CKwUIEntity*> refused;
    for (CKwUIEntity* e : std::as_const(*entities))
        if (e && !taken.contains(e))
            refused.append(e);
    if (!refused.isEmpty())
        box->RemoveEntities(refused);
    return handled;
}

long CKwMFCUIBase::OnEntitiesPicked(QList<CKwUIEntity*>* entities)
{
    if (!m_bNotificationsEnabled || !entities)
        return 0;
    const QScopedValueRollback<bool> inPick(m_inPick, true);
    AddEntitiesToSelectionBox(entities);
    OnSelected(entities);
    return 1;
}

long CKwMFCUIBase::OnEntitiesDropped(QList<CKwUIEntity*>* entities)
{
    if (!m_bNotificationsEnabled || !entities)
        return 0;
    const QScopedValueRollback<bool> inPick(m_inPick, true);
    for (const auto& b : std::as_const(m_boxes))
        if (b)
            b->RemoveEntities(*entities);
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
    // A refresh waits while a pick is being handled: the pick handlers are never re-entered.
    if (IsWindowDestroyed() || m_inPick)
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
    connectBindings();
    if (auto* list = KwControl<QListWidget>(this, m_subcaseListId))
        connect(list, &QListWidget::itemSelectionChanged, this, &CKwMFCUIBase::HandOverSubcases);
    for (int id : {1, 2})
        if (auto* b = KwControl<QAbstractButton>(this, id))
            connect(b, &QAbstractButton::clicked, this,
                    [this, id] { id == 1 ? OnOK() : OnCancel(); });
    // Texts first: combo boxes get their items before the stored values choose rows in them.
    // The window is sized only once the type's panel is in place, so it opens at its final
    // size and the layout is computed once.
    SetTextToCurrentLang();
    ReloadObjectData();
    SizeAndPlace();
    // While an editor is open the view takes no second one, and its picks come here.
    EnterViewDialogStack();
    if (CFMView* view = GetFMView())
        if (CKwSelectionHandler* h = view->GetSelectionHandler())
            h->ActivateDialog(this);
    publishPickMask();
    m_bNotificationsEnabled = 1;
    return true;
}

// --- tables ---

void CKwMFCUIBase::connectBindings()
{
    for (const KwValueBinding& b : m_bindings) {
        QWidget* w = KwFindControl(this, b.ctrlId);
        const int field = b.field;
        bool wired = false;
        switch (b.kind) {
        case KwBind::ComboIndex:
            if (auto* c = qobject_cast<QComboBox*>(w)) {
                connect(c, &QComboBox::currentIndexChanged, this,
                        [this, field](int row) { SetValue(field, row); });
                wired = true;
            }
            break;
        case KwBind::TypeCombo:
            if (auto* c = qobject_cast<QComboBox*>(w)) {
                m_typeField = field;
                m_typeComboId = b.ctrlId;
                connect(c, &QComboBox::currentIndexChanged, this, &CKwMFCUIBase::onTypeRow);
                wired = true;
            }
            break;
        case KwBind::Check:
            if (auto* c = qobject_cast<QAbstractButton*>(w)) {
                connect(c, &QAbstractButton::toggled, this,
                        [this, field](bool on) { SetValue(field, on ? 1 : 0); });
                wired = true;
            }
            break;
        case KwBind::Slider:
            if (auto* c = qobject_cast<QAbstractSlider*>(w)) {
                connect(c, &QAbstractSlider::valueChanged, this,
                        [this, field](int v) { SetValue(field, v); });
                wired = true;
            }
            break;
        case KwBind::Color:
            if (auto* c = qobject_cast<CKwColorSwatch*>(w)) {
                connect(c, &CKwColorSwatch::colorChosen, this,
                        [this, field](unsigned c) { SetValue(field, static_cast<int>(c)); });
                wired = true;
            }
            break;
        case KwBind::RadioGroup:
            for (int i = 0; i < b.count; ++i)
                if (auto* c = KwControl<QAbstractButton>(this, b.ctrlId + i)) {
                    connect(c, &QAbstractButton::toggled, this, [this, field, i](bool on) {
                        if (on)
                            SetValue(field, i);
                    });
                    wired = true;
                }
            break;
        }
#ifndef NDEBUG
        if (!wired)
            qDebug("%s: value binding of field %d names no suitable control %d",
                   metaObject()->className(), field, b.ctrlId);
#else
        Q_UNUSED(wired);
#endif
    }
}

void CKwMFCUIBase::FillBoundControls()
{
    for (const KwValueBinding& b : m_bindings) {
        int v = 0;
        if (!GetValue(b.field, v))
            continue;
        QWidget* w = b.kind == KwBind::RadioGroup ? nullptr : KwFindControl(this, b.ctrlId);
        const QSignalBlocker block(w);
        switch (b.kind) {
        case KwBind::ComboIndex:
            if (auto* c = qobject_cast<QComboBox*>(w))
                c->setCurrentIndex(v < c->count() ? v : -1);
            break;
        case KwBind::TypeCombo:
            if (auto* c = qobject_cast<QComboBox*>(w)) {
                const int row = GetSelectionFromType(v);
                c->setCurrentIndex(row < c->count() ? row : -1);
            }
            break;
        case KwBind::Check:
            if (auto* c = qobject_cast<QAbstractButton*>(w))
                c->setChecked(v != 0);
            break;
        case KwBind::Slider:
            if (auto* c = qobject_cast<QAbstractSlider*>(w))
                c->setValue(v);
            break;
        case KwBind::Color:
            if (auto* c = qobject_cast<CKwColorSwatch*>(w))
                c->SetColor(static_cast<unsigned>(v));
            break;
        case KwBind::RadioGroup:
            for (int i = 0; i < b.count; ++i)
                if (auto* c = KwControl<QAbstractButton>(this, b.ctrlId + i)) {
                    const QSignalBlocker blockRadio(c);
                    c->setChecked(i == v);
                }
            break;
        }
    }
}

void CKwMFCUIBase::SelectTypeFromEntity()
{
    auto* combo = KwControl<QComboBox>(this, m_typeComboId);
    int type = -1;
    if (!combo || !GetValue(m_typeField, type))
        return;
    const QSignalBlocker block(combo);
    const int row = GetSelectionFromType(type);
    combo->setCurrentIndex(row < combo->count() ? row : -1);
}

const KwTypePanel* CKwMFCUIBase::panelFor(int type) const
{
    for (const KwTypePanel& row : m_panels)
        if (row.type == type)
            return &row;
    return nullptr;
}

void CKwMFCUIBase::installPrompt(const KwTypePanel& row)
{
    const bool useExplicit = row.explicitPrompt.key && IsExplicitAnalysis();
    const KwPrompt& p = useExplicit ? row.explicitPrompt : row.prompt;
    if (p.key)
        SetControlToolTip(m_promptCode, KwPropText(p.section, p.key, p.english));
}

void CKwMFCUIBase::ApplyTypePanel(int type)
{
    const KwTypePanel* row = panelFor(type);
    if (!row)
        return;
    // Every panel control of the table is hidden but those of this type.
    for (const KwTypePanel& other : m_panels)
        for (int id : other.panels)
            if (id != 0)
                if (QWidget* w = KwFindControl(this, id))
                    w->setVisible(false);
    for (int id : row->panels)
        if (id != 0)
            if (QWidget* w = KwFindControl(this, id))
                w->setVisible(true);
    if (row->flags & KwPanelFlag::HideCoordSystems)
        if (CFMView* view = GetFMView())
            view->HideAllCoordinateSystem();
    if (row->flags & KwPanelFlag::Refill)
        FillBoundControls();
    if (CKwMFCNodeElemSelectionBox* box = m_boxes.isEmpty() ? nullptr : m_boxes.first().data()) {
        const bool useExplicit = row->explicitFilter != 0 && IsExplicitAnalysis();
        box->SetFilter(useExplicit ? row->explicitFilter : row->filter);
        publishPickMask();
    }
    installPrompt(*row);
    HandOverSubcases();
}

void CKwMFCUIBase::onTypeRow(int row)
{
    const int taken = OnTypeRowChosen(row);
    if (taken != row) {
        auto* combo = KwControl<QComboBox>(this, m_typeComboId);
        const QSignalBlocker block(combo);
        if (combo)
            combo->setCurrentIndex(taken);
    }
    const int type = GetTypeFromSelection(taken);
    int stored = -1;
    GetValue(m_typeField, stored);
    if (type < 0 || type == stored)
        return;
    OnTypeLeaving(stored);
    SetValue(m_typeField, type);
    ApplyTypePanel(type);
    ApplyTypeWidth(type);
    Display(1);
    OnTypeChanged(type);
}

void CKwMFCUIBase::HandOverSubcases()
{
    auto* list = KwControl<QListWidget>(this, m_subcaseListId);
    if (!list)
        return;
    QList<int> rows;
    for (int i = 0; i < list->count(); ++i)
        if (list->item(i)->isSelected())
            rows << i;
    SetListValue(m_subcaseCode, rows);
}

void CKwMFCUIBase::refillSelectionBoxes()
{
    for (const auto& b : std::as_const(m_boxes))
        if (b)
            b->ResetContent();
    const QList<CKwUIEntity*> entities = GetSelectedEntities();
    AddEntitiesToSelectionBox(&entities);
}

void CKwMFCUIBase::OnObjectDataLoaded()
{
    FillBoundControls();
    int type = -1;
    if (!m_panels.empty() && GetValue(m_typeField, type))
        ApplyTypePanel(type);
    // After the filter: the boxes show what the type's filter admits.
    refillSelectionBoxes();
}

void CKwMFCUIBase::SetTextToCurrentLang()
{
    const QString title = GetPageTitleString();
    if (!title.isEmpty())
        setWindowTitle(title);
    KwApplyTextTable(this, m_texts, GetUnitSystem());
    for (CKwHideMembersButton* b : findChildren<CKwHideMembersButton*>())
        b->Retranslate();
    SelectTypeFromEntity();
    int type = -1;
    if (GetValue(m_typeField, type))
        if (const KwTypePanel* row = panelFor(type))
            installPrompt(*row);
}

bool CKwMFCUIBase::UpdateGateAllows(bool checkOnly) const
{
    const auto* gate = KwControl<QAbstractButton>(this, m_updateGateId);
    return !(checkOnly && gate && !gate->isChecked());
}

KW_UOM* CKwMFCUIBase::GetUnitSystem() const
{
    if (m_units)
        return m_units;
    CFMView* view = GetFMView();
    return view ? view->GetUnitHolder() : nullptr;
}

bool CKwMFCUIBase::IsExplicitAnalysis() const
{
    const CKwAnalysis* a = GetAnalysis();
    return a && a->IsExplicitAnalysis();
}

void CKwMFCUIBase::ShowAdvisory(const char* section, const char* key, const char* english)
{
    ShowAdvisories({KwErrText(section, key, english)});
}

void CKwMFCUIBase::ShowAdvisories(const QStringList& texts)
{
    if (!GetFMView())
        return;
    if (!m_advisoryTimer) {
        m_advisoryTimer = new QTimer(this);
        m_advisoryTimer->setSingleShot(true);
        m_advisoryTimer->setTimerType(Qt::PreciseTimer);
        connect(m_advisoryTimer, &QTimer::timeout, this, &CKwMFCUIBase::showNextAdvisory);
    }
    // What still waits was about the user's previous choice; this one speaks now.
    m_advisoryTimer->stop();
    m_advisories = texts;
    showNextAdvisory();
}

void CKwMFCUIBase::showNextAdvisory()
{
    CFMView* view = GetFMView();
    if (m_advisories.isEmpty() || !view)
        return;
    view->ShowBubbleToolTipWarning(m_advisories.takeFirst(), 0);
    m_advisoryTimer->start(m_advisoryInterval);
}

QStringList CKwMFCUIBase::FileDialogFilters(const QString& pipeFilter)
{
    const QStringList parts = pipeFilter.split(QLatin1Char('|'));
    QStringList filters;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString name = parts[i].trimmed();
        const QString patterns = parts[i + 1].trimmed();
        if (name.isEmpty() || patterns.isEmpty())
            continue;
        // The dialog reads the patterns from the parentheses; a name that shows none gets them.
        const QString spaced = QString(patterns).replace(QLatin1Char(';'), QLatin1Char(' '));
        filters << (name.contains(QLatin1Char('(')) ? name
                                                    : QStringLiteral("%1 (%2)").arg(name, spaced));
    }
    return filters;
}

void CKwMFCUIBase::ConnectHideMembersButton(CKwHideMembersButton* button)
{
    if (button)
        connect(button, &CKwHideMembersButton::membersShownChanged, this,
                [this](bool shown) { OnHideStructuralMembers(shown); });
}

void CKwMFCUIBase::OnHideStructuralMembers(bool shown)
{
    if (CFMView* view = GetFMView())
        view->HideBodies(CFMView::BodyStructuralMembers | CFMView::BodySolids, shown ? 0 : 1);
    update();
}

void CKwMFCUIBase::TargetOnClick(CKwMFCNodeElemSelectionBox* box, std::function<bool()> accept)
{
    if (!box)
        return;
    m_clickTargets.append({box, std::move(accept)});
    box->installEventFilter(this);
}

bool CKwMFCUIBase::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn)
        for (const auto& [box, accept] : std::as_const(m_clickTargets))
            if (box && box == watched && (!accept || accept()))
                SetActiveSelectionBox(box);
    return CKwMFCDialog::eventFilter(watched, event);
}

void CKwMFCUIBase::ApplyTypeWidth(int type)
{
    const int width = WidthForType(type);
    if (width <= 0)
        return;
    // Pixels at 96 dpi, scaled for the screen's density; left, top and height stay.
    const QScreen* s = screen();
    const qreal scale = s ? s->logicalDotsPerInch() / 96.0 : 1.0;
    const QRect g = geometry();
    // A type's width never cuts what the dialog holds: a longer text (German buttons) widens it.
    const int least = layout() ? layout()->totalMinimumSize().width() : 0;
    setGeometry(g.left(), g.top(), std::max(qRound(width * scale), least), g.height());
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
