#include "CKwMFCUIGroupSelection.h"

#include "CKwFEModel.h"
#include "CKwGroup.h"
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "KwLangText.h"
#include "KwStyle.h"
#include "ui_CKwMFCUIGroupSelection.h"

#include <QHeaderView>
#include <QScrollBar>

QList<KwModelGroup> KwModelGroups(const CKwFEModel* model)
{
    QList<KwModelGroup> groups;
    if (!model)
        return groups;
    if (const CKwMeshModel* mesh = model->m_mesh)
        for (const CKwMeshModel::ElementGroup& g : mesh->Groups())
            groups.append({g.name, KwPropText("IncludeGroups", "TypeElementGroup", "Element Group"),
                           KwModelGroup::Elements, &g.elementIds});
    for (const CKwGroup* set : model->m_idSets) {
        if (!set)
            continue;
        const bool nodes = set->m_mode == CKwGroup::Nodes;
        groups.append({set->GetName(),
                       nodes ? KwPropText("IncludeGroups", "TypeNodeSet", "Node Set")
                             : KwPropText("IncludeGroups", "TypeElementSet", "Element Set"),
                       nodes ? KwModelGroup::Nodes : KwModelGroup::Elements, &set->m_ids});
    }
    return groups;
}

// --- the table ---

namespace {
enum Column { ColumnName, ColumnType, ColumnCount, Columns };
}

KwGroupTableModel::KwGroupTableModel(QList<KwModelGroup> groups, unsigned filter, QObject* parent)
    : QAbstractTableModel(parent), m_groups(std::move(groups)), m_filter(filter),
      m_checked(static_cast<std::size_t>(m_groups.size()), 0)
{
}

int KwGroupTableModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_groups.size());
}

int KwGroupTableModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : Columns;
}

bool KwGroupTableModel::Takes(int row) const
{
    if (row < 0 || row >= m_groups.size())
        return false;
    const auto kind = m_groups.at(row).members == KwModelGroup::Nodes ? CKwUIEntity::Node
                                                                      : CKwUIEntity::Element;
    return (CKwUIEntity::FilterBitOf(kind) & m_filter) != 0;
}

QVariant KwGroupTableModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid() || index.row() >= m_groups.size())
        return {};
    const KwModelGroup& g = m_groups.at(index.row());
    if (role == Qt::DisplayRole) {
        switch (index.column()) {
        case ColumnName: return g.name;
        case ColumnType: return g.typeName;
        case ColumnCount: return QString::number(g.ids ? g.ids->size() : 0);
        default: return {};
        }
    }
    if (role == Qt::CheckStateRole && index.column() == ColumnName)
        return m_checked[static_cast<std::size_t>(index.row())] ? Qt::Checked : Qt::Unchecked;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(index.column() == ColumnCount ? KwStyle::NumberAlignment
                                                                 : KwStyle::TextAlignment);
    return {};
}

bool KwGroupTableModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (role != Qt::CheckStateRole || !index.isValid() || index.column() != ColumnName ||
        !Takes(index.row()))
        return false;
    m_checked[static_cast<std::size_t>(index.row())] =
        value.toInt() == Qt::Checked ? 1 : 0;
    Q_EMIT dataChanged(index, index, {Qt::CheckStateRole});
    return true;
}

Qt::ItemFlags KwGroupTableModel::flags(const QModelIndex& index) const
{
    if (!index.isValid() || !Takes(index.row()))
        return Qt::NoItemFlags; // shown greyed: this list does not take its members
    Qt::ItemFlags f = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    return index.column() == ColumnName ? f | Qt::ItemIsUserCheckable : f;
}

QVariant KwGroupTableModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (role != Qt::DisplayRole || orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    switch (section) {
    case ColumnName: return KwPropText("IncludeGroups", "ColumnGroup", "Group");
    case ColumnType: return KwPropText("IncludeGroups", "ColumnType", "Type");
    case ColumnCount: return KwPropText("IncludeGroups", "ColumnMembers", "Members");
    default: return {};
    }
}

QList<int> KwGroupTableModel::Checked() const
{
    QList<int> rows;
    for (std::size_t i = 0; i < m_checked.size(); ++i)
        if (m_checked[i])
            rows.append(static_cast<int>(i));
    return rows;
}

// --- the dialog ---

CKwMFCUIGroupSelection::CKwMFCUIGroupSelection(const CKwFEModel* model, unsigned filter,
                                               QWidget* parent)
    : CKwMFCDialog(kTemplateId, nullptr, parent),
      m_ui(std::make_unique<Ui::CKwMFCUIGroupSelection>())
{
    m_ui->setupUi(this);
    m_table = new KwGroupTableModel(KwModelGroups(model), filter, this);
    m_ui->groups->setModel(m_table);
    m_ui->groups->verticalHeader()->hide();
    m_ui->groups->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_ui->groups->horizontalHeader()->setStretchLastSection(true);
    // The columns are sized to fit the table (OnInitDialog); the last one takes the rest.
    m_ui->groups->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_ui->note->setMaximumWidth(KwStyle::CharsWidth(fontMetrics(), 56));
    connect(m_ui->ok, &QPushButton::clicked, this, &CKwMFCUIGroupSelection::OnOK);
    connect(m_ui->cancel, &QPushButton::clicked, this, &CKwMFCUIGroupSelection::OnCancel);
}

CKwMFCUIGroupSelection::~CKwMFCUIGroupSelection() = default;

bool CKwMFCUIGroupSelection::OnInitDialog()
{
    const QFontMetrics fm = fontMetrics();
    m_ui->groups->setColumnWidth(ColumnName, KwStyle::CharsWidth(fm, 20));
    m_ui->groups->setColumnWidth(ColumnType, KwStyle::CharsWidth(fm, 14));
    KwStyle::FitHeaders(m_ui->groups);
    // Room for every column with the last one's head, without a horizontal scroll bar.
    int width = 2 * m_ui->groups->frameWidth() + m_ui->groups->verticalScrollBar()->sizeHint().width();
    for (int c = 0; c < Columns - 1; ++c)
        width += m_ui->groups->columnWidth(c);
    width += KwStyle::CharsWidth(fm, 14);
    m_ui->groups->setMinimumWidth(width);
    return CKwMFCDialog::OnInitDialog();
}

void CKwMFCUIGroupSelection::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("IncludeGroups", "Title", "Include Groups"));
    m_ui->label->setText(KwLabel(KwPropText("IncludeGroups", "LabelGroups", "Groups")));
    m_ui->note->setText(KwPropText("IncludeGroups", "LabelNote",
                                   "The members of the checked groups are added to the list. "
                                   "Groups of nodes cannot go into a list of elements, nor "
                                   "groups of elements into a list of nodes."));
    m_ui->ok->setText(KwPropText("General", "ButtonOk", "OK"));
    m_ui->cancel->setText(KwPropText("General", "ButtonCancel", "Cancel"));
}

void CKwMFCUIGroupSelection::OnOK()
{
    m_chosen = m_table->Checked();
    CKwMFCDialog::OnOK();
}
