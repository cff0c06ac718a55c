#include "CKwMFCUIFEModel.h"

#include "CFMView.h"
#include "CKwConMass.h"
#include "CKwMFCUIConMass.h"
#include "CKwMFCUIPhysicalProperty.h"
#include "CKwMFCUISurfaceContact.h"
#include "CKwPhysicalProperty.h"
#include "CKwSurfaceContact.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwMessageBox.h"
#include "KwModelEditorForms.h"
#include "KwStyle.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

namespace {

using T = KwTextTarget;
using Ed = CKwMFCUIFEModel;

constexpr KwValueBinding kBindings[] = {
    {CKwUIFEModel::FieldAutoContact, Ed::kAutoCheck, KwBind::Check},
};

// A list's group and its three buttons.
#define KW_LIST_ROWS(list, key, english)                                                       \
    {Ed::kGroupFirst + 10 * (list), "FEModelEditor", key, english},                            \
        {Ed::kGroupFirst + 10 * (list) + Ed::EditOffset, "FEModelEditor", "ButtonEdit",        \
         "Edit..."},                                                                           \
        {Ed::kGroupFirst + 10 * (list) + Ed::NewOffset, "FEModelEditor", "ButtonNew", "New..."}, \
        {Ed::kGroupFirst + 10 * (list) + Ed::DeleteOffset, "FEModelEditor", "ButtonDelete",    \
         "Delete"}

constexpr KwTextRow kTexts[] = {
    KW_LIST_ROWS(0, "GroupConcentratedMasses", "Concentrated Masses"),
    KW_LIST_ROWS(1, "GroupIdealizations", "Idealizations"),
    KW_LIST_ROWS(2, "GroupSurfaceContacts", "Surface Contacts"),
    {Ed::kAutoGroup, "FEModelEditor", "GroupAutoContact", "Automatic Contact"},
    {Ed::kAutoCheck, "FEModelEditor", "CheckAutoContact", "Detect contacts automatically"},
    {Ed::kParametersButton, "FEModelEditor", "ButtonAutoContactParameters",
     "Auto Contact Parameters..."},
    {Ed::kAutoCheck, "FEModelEditor", "TooltipAutoContact",
     "The solver looks for faces of different parts that touch and joins them", T::ToolTip},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};
#undef KW_LIST_ROWS

constexpr KwTextRow kPageTexts[] = {
    {7941, "FEModelEditor", "LabelTolerance", "Tolerance", T::UnitLabel, KwTextLookup::Prop,
     KwUnitKind::Length},
    {7943, "FEModelEditor", "LabelContactKind", "Contact Type", true},
    {CKwMFCUIAutoContactParameters::kToleranceEdit, "FEModelEditor", "TooltipTolerance",
     "Faces closer than this count as touching", T::ToolTip},
    {CKwMFCUIAutoContactParameters::kKindCombo, "SurfaceContact", "DropDownBonded", "Bonded",
     T::Item},
    {CKwMFCUIAutoContactParameters::kKindCombo, "SurfaceContact", "DropDownSeparating",
     "Separating", T::Item},
    {CKwMFCUIAutoContactParameters::kKindCombo, "SurfaceContact", "DropDownSlidingNoSeparation",
     "Sliding without Separation", T::Item},
    {CKwMFCUIAutoContactParameters::kKindCombo, "SurfaceContact", "DropDownWelded", "Welded",
     T::Item},
    {CKwMFCUIAutoContactParameters::kKindCombo, "SurfaceContact", "DropDownOffsetBonded",
     "Offset Bonded", T::Item},
    {1, "General", "ButtonOk", "OK"},
    {2, "General", "ButtonCancel", "Cancel"},
};

// Rows a list shows without scrolling.
constexpr int kVisibleRows = 4;

} // namespace

// --- one list as a table ---

KwFEModelItemTable::KwFEModelItemTable(const CKwUIFEModel* logic, int list, QObject* parent)
    : QAbstractTableModel(parent), m_logic(logic), m_list(list)
{
}

int KwFEModelItemTable::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() || !m_logic ? 0 : m_logic->ItemCount(m_list);
}

int KwFEModelItemTable::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant KwFEModelItemTable::data(const QModelIndex& index, int role) const
{
    if (!m_logic || !index.isValid() || role != Qt::DisplayRole)
        return {};
    return index.column() == 0 ? m_logic->ItemName(m_list, index.row())
                               : m_logic->ItemType(m_list, index.row());
}

QVariant KwFEModelItemTable::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QAbstractTableModel::headerData(section, orientation, role);
    return section == 0 ? KwPropText("General", "LabelName", "Name")
                        : KwPropText("General", "LabelType", "Type");
}

void KwFEModelItemTable::Reload()
{
    beginResetModel();
    endResetModel();
}

// --- the editor ---

CKwMFCUIFEModel::CKwMFCUIFEModel(CKwFEModel* model, CFMView* view, KW_UOM* units,
                                 QWidget* parent)
    : CKwMFCUIBase(kTemplateId, view, parent)
{
    QVBoxLayout* outer = KwForm::DialogLayout(this);
    const int tableWidth = KwStyle::CharsWidth(fontMetrics(), 4 * KwStyle::NumberFieldChars);
    for (int list = 0; list < ListCount; ++list) {
        QGridLayout* grid = nullptr;
        KwForm::Group(this, ControlId(list, GroupOffset), outer, &grid);
        auto* table = new QTableView(this);
        KwSetControlId(table, ControlId(list, TableOffset));
        table->setProperty("kwData", true);
        m_tables[list] = new KwFEModelItemTable(this, list, table);
        table->setModel(m_tables[list]);
        table->setSelectionBehavior(QAbstractItemView::SelectRows);
        table->setSelectionMode(QAbstractItemView::SingleSelection);
        table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        table->verticalHeader()->hide();
        table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        table->setWordWrap(false);
        // Names are shown whole; the type takes the rest.
        table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
        table->horizontalHeader()->setStretchLastSection(true);
        table->setFixedWidth(tableWidth);
        table->setFixedHeight(table->horizontalHeader()->sizeHint().height() +
                              kVisibleRows * table->verticalHeader()->defaultSectionSize() +
                              2 * table->frameWidth());
        m_views[list] = table;
        grid->addWidget(table, 0, 0, 4, 1);
        for (Offset o : {EditOffset, NewOffset, DeleteOffset})
            grid->addWidget(KwForm::Button(this, ControlId(list, o)), o - EditOffset, 1);
        grid->setRowStretch(3, 1);
        connect(KwControl<QPushButton>(this, ControlId(list, EditOffset)), &QPushButton::clicked,
                this, [this, list] { EditItem(list); });
        connect(KwControl<QPushButton>(this, ControlId(list, NewOffset)), &QPushButton::clicked,
                this, [this, list] { NewItem(list); });
        connect(KwControl<QPushButton>(this, ControlId(list, DeleteOffset)),
                &QPushButton::clicked, this, [this, list] { DeleteChosenItem(list); });
        connect(table, &QTableView::doubleClicked, this, [this, list] { EditItem(list); });
        connect(table->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                &CKwMFCUIFEModel::syncButtons);
    }
    QGridLayout* autoGrid = nullptr;
    KwForm::Group(this, kAutoGroup, outer, &autoGrid);
    autoGrid->addWidget(KwForm::Check(this, kAutoCheck), 0, 0);
    autoGrid->addWidget(KwForm::Button(this, kParametersButton), 0, 1, Qt::AlignRight);
    connect(KwControl<QPushButton>(this, kParametersButton), &QPushButton::clicked, this,
            &CKwMFCUIFEModel::OpenAutoContactParameters);
    KwForm::ButtonRow(this, outer);

    SetValueBindings(kBindings);
    SetTextTable(kTexts);
    SetUnitSystem(units);
    SetUnits(units);
    OnCreate(view, model);
}

CKwMFCUIFEModel::~CKwMFCUIFEModel()
{
    // An item editor still open edits the model on its own; it only loses its way back here.
    if (m_itemEditor)
        disconnect(m_itemEditor, nullptr, this, nullptr);
}

bool CKwMFCUIFEModel::OnInitDialog()
{
    const bool ok = CKwMFCUIBase::OnInitDialog();
    // Each list starts on its first item, so that Edit works at once.
    for (int list = 0; list < ListCount; ++list)
        SetCurrentRow(list, 0);
    return ok;
}

QTableView* CKwMFCUIFEModel::GetTable(int list) const
{
    return list >= 0 && list < ListCount ? m_views[list] : nullptr;
}

int CKwMFCUIFEModel::CurrentRow(int list) const
{
    const QTableView* t = GetTable(list);
    if (!t || !t->selectionModel())
        return -1;
    const QModelIndexList rows = t->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void CKwMFCUIFEModel::SetCurrentRow(int list, int row)
{
    QTableView* t = GetTable(list);
    if (!t)
        return;
    if (row < 0 || row >= ItemCount(list))
        t->clearSelection();
    else
        t->selectRow(row);
    syncButtons();
}

void CKwMFCUIFEModel::syncButtons()
{
    // One item editor at a time: while it is open the lists are what it may change.
    const bool free = m_itemEditor.isNull() && GetFEModel() != nullptr;
    for (int list = 0; list < ListCount; ++list) {
        const bool chosen = CurrentRow(list) >= 0;
        KwControl<QPushButton>(this, ControlId(list, EditOffset))->setEnabled(free && chosen);
        KwControl<QPushButton>(this, ControlId(list, NewOffset))->setEnabled(free);
        KwControl<QPushButton>(this, ControlId(list, DeleteOffset))->setEnabled(free && chosen);
        m_views[list]->setEnabled(free);
    }
    for (int id : {1, 2, kParametersButton, kAutoCheck})
        if (QWidget* w = KwFindControl(this, id))
            w->setEnabled(m_itemEditor.isNull());
}

void CKwMFCUIFEModel::RefreshLists()
{
    for (int list = 0; list < ListCount; ++list) {
        CKwFEBase* chosen = Item(list, CurrentRow(list));
        m_tables[list]->Reload();
        SetCurrentRow(list, RowOf(list, chosen));
    }
    syncButtons();
}

CKwMFCDialog* CKwMFCUIFEModel::openItemEditor(int list, CKwFEBase* item)
{
    if (m_itemEditor || !GetFEModel() || list < 0 || list >= ListCount)
        return nullptr;
    CFMView* view = GetFMView();
    KW_UOM* units = GetUnitSystem();
    CKwMFCDialog* dlg = nullptr;
    switch (list) {
    case Masses:
        dlg = new CKwMFCUIConMass(static_cast<CKwConMass*>(item), view, units);
        break;
    case Idealizations: {
        auto* property = static_cast<CKwPhysicalProperty*>(item);
        dlg = new CKwMFCUIPhysicalProperty(view, property, units,
                                           property ? -1 : CKwPhysicalProperty::Solid);
        break;
    }
    default:
        dlg = new CKwMFCUISurfaceContact(view, static_cast<CKwSurfaceContact*>(item), nullptr,
                                         GetAutoContact().kind, units);
        break;
    }
    m_itemEditor = dlg;
    m_itemEditorList = list;
    m_itemsAtOpen.clear();
    for (int row = 0; row < ItemCount(list); ++row)
        m_itemsAtOpen.append(Item(list, row));
    // The editor ends by hiding and deleting itself; either way the lists follow.
    connect(dlg, &QObject::destroyed, this, &CKwMFCUIFEModel::itemEditorClosed);
    dlg->Create();
    dlg->show();
    syncButtons();
    return dlg;
}

void CKwMFCUIFEModel::itemEditorClosed()
{
    const int list = m_itemEditorList;
    m_itemEditor.clear();
    m_itemEditorList = -1;
    RefreshLists();
    // An item the editor added becomes the chosen one.
    for (int row = 0; list >= 0 && row < ItemCount(list); ++row)
        if (!m_itemsAtOpen.contains(Item(list, row))) {
            SetCurrentRow(list, row);
            break;
        }
    m_itemsAtOpen.clear();
}

void CKwMFCUIFEModel::OnReactivatedByView()
{
    CKwMFCUIBase::OnReactivatedByView();
    RefreshLists();
}

CKwMFCDialog* CKwMFCUIFEModel::EditItem(int list)
{
    CKwFEBase* item = Item(list, CurrentRow(list));
    return item ? openItemEditor(list, item) : nullptr;
}

CKwMFCDialog* CKwMFCUIFEModel::NewItem(int list) { return openItemEditor(list, nullptr); }

bool CKwMFCUIFEModel::DeleteChosenItem(int list)
{
    const int row = CurrentRow(list);
    const CKwFEBase* item = Item(list, row);
    if (!item || m_itemEditor)
        return false;
    if (const QString refusal = DeleteRefusal(list, row); !refusal.isEmpty()) {
        KwAfxMessageBox(refusal, KwMB::OK | KwMB::ICONWARNING);
        return false;
    }
    const QString question = KwErrText("FEModelEditor", "ConfirmDelete", "Delete %s?")
                                 .replace(QStringLiteral("%s"), item->GetName());
    if (KwAfxMessageBox(question, KwMB::YESNO | KwMB::ICONQUESTION) != KwMB::IDYES)
        return false;
    const bool deleted = DeleteItem(list, row);
    m_tables[list]->Reload();
    SetCurrentRow(list, qMin(row, ItemCount(list) - 1));
    if (deleted)
        if (CFMView* v = GetFMView())
            v->update();
    return deleted;
}

int CKwMFCUIFEModel::OpenAutoContactParameters()
{
    if (!GetFEModel())
        return KwMB::IDCANCEL;
    CKwMFCUIAutoContactParameters page(this, GetFMView(), GetUnitSystem(), this);
    return page.DoModal();
}

// --- the automatic contact parameters ---

CKwMFCUIAutoContactParameters::CKwMFCUIAutoContactParameters(CKwUIFEModel* owner,
                                                             CFMView* view,
                                                             const KW_UOM* units,
                                                             QWidget* parent)
    : CKwMFCDialog(kTemplateId, view, parent), m_owner(owner), m_units(units)
{
    QVBoxLayout* outer = KwForm::DialogLayout(this);
    QGridLayout* grid = KwForm::FormGrid(outer);
    KwForm::Row(grid, KwForm::Label(this, 7941), KwForm::NumberEdit(this, kToleranceEdit));
    KwForm::Row(grid, KwForm::Label(this, 7943), KwForm::Combo(this, kKindCombo));
    KwForm::ButtonRow(this, outer);
    connect(KwControl<QPushButton>(this, 1), &QPushButton::clicked, this,
            &CKwMFCUIAutoContactParameters::OnOK);
    connect(KwControl<QPushButton>(this, 2), &QPushButton::clicked, this,
            &CKwMFCDialog::OnCancel);
}

CKwMFCUIAutoContactParameters::~CKwMFCUIAutoContactParameters() = default;

bool CKwMFCUIAutoContactParameters::OnInitDialog()
{
    const bool ok = CKwMFCDialog::OnInitDialog();
    KwControl<QLineEdit>(this, kToleranceEdit)
        ->setText(m_owner ? m_owner->GetToleranceText() : QString());
    KwControl<QComboBox>(this, kKindCombo)
        ->setCurrentIndex(m_owner ? m_owner->GetAutoContact().kind : 0);
    KwControl<QPushButton>(this, 1)->setEnabled(m_owner != nullptr);
    return ok;
}

void CKwMFCUIAutoContactParameters::SetTextToCurrentLang()
{
    setWindowTitle(
        KwPropText("FEModelEditor", "TitleAutoContactParameters", "Auto Contact Parameters"));
    KwApplyTextTable(this, kPageTexts, m_units);
}

void CKwMFCUIAutoContactParameters::OnOK()
{
    if (!m_owner)
        return;
    int bad = 0;
    QString why;
    if (!m_owner->SetAutoContactParameters(KwControl<QLineEdit>(this, kToleranceEdit)->text(),
                                           KwControl<QComboBox>(this, kKindCombo)->currentIndex(),
                                           &bad, &why)) {
        QString label = KwControl<QLabel>(this, bad == 0 ? 7941 : 7943)->text();
        label.chop(1); // the label's ":"
        const QString text = KwFieldMessage(label, why);
        if (CFMView* v = GetFMView())
            v->ShowBubbleToolTipError(text, 0);
        else
            KwAfxMessageBox(text, KwMB::OK | KwMB::ICONERROR);
        QWidget* field = KwFindControl(this, bad == 0 ? kToleranceEdit : kKindCombo);
        field->setFocus();
        if (auto* edit = qobject_cast<QLineEdit*>(field))
            edit->selectAll();
        return;
    }
    CKwMFCDialog::OnOK();
}
