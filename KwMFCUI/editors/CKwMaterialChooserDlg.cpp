#include "CKwMaterialChooserDlg.h"

#include "KwControls.h"
#include "KwLangText.h"
#include "KwMaterialEditorSupport.h"
#include "KwMessageBox.h"

#include <QAbstractTableModel>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

namespace {
enum Column { ColumnName, ColumnType, ColumnCount };
}

// The file's materials, one row each in file order: name and type in the current language.
class KwMaterialListModel : public QAbstractTableModel
{
public:
    KwMaterialListModel(const QList<KwMaterialEntry>& materials, QObject* parent)
        : QAbstractTableModel(parent), m_materials(materials)
    {
        relabel();
    }
    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : int(m_materials.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : ColumnCount;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (!index.isValid() || index.row() >= rowCount() ||
            (role != Qt::DisplayRole && role != Qt::ToolTipRole))
            return {};
        return index.column() == ColumnName ? m_materials[index.row()].name
                                            : m_typeTexts[index.row()];
    }
    QVariant headerData(int section, Qt::Orientation o, int role) const override
    {
        if (o != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        return section == ColumnName ? KwPropText("General", "LabelName", "Name")
                                     : KwPropText("General", "LabelType", "Type");
    }
    void relabel()
    {
        m_typeTexts.clear();
        for (const KwMaterialEntry& m : m_materials)
            m_typeTexts << KwMaterialTypeText(m.type);
        if (rowCount() > 0)
            emit dataChanged(index(0, ColumnType), index(rowCount() - 1, ColumnType));
        emit headerDataChanged(Qt::Horizontal, 0, ColumnCount - 1);
    }

private:
    QList<KwMaterialEntry> m_materials;
    QStringList m_typeTexts;
};

CKwMaterialChooserDlg::CKwMaterialChooserDlg(const QList<KwMaterialEntry>& materials,
                                             const QString& fileName, QWidget* parent)
    : CKwMFCDialog(kTemplateId, nullptr, parent), m_fileName(fileName)
{
    auto* layout = new QVBoxLayout(this);
    m_fileLabel = new QLabel(this);
    m_fileLabel->setProperty("kwData", true);
    layout->addWidget(m_fileLabel);
    auto* searchRow = new QHBoxLayout;
    m_searchLabel = new QLabel(this);
    m_search = new QLineEdit(this);
    m_search->setClearButtonEnabled(true);
    m_searchLabel->setBuddy(m_search);
    searchRow->addWidget(m_searchLabel);
    searchRow->addWidget(m_search, 1);
    layout->addLayout(searchRow);

    m_model = new KwMaterialListModel(materials, this);
    m_filter = new QSortFilterProxyModel(this);
    m_filter->setSourceModel(m_model);
    m_filter->setFilterCaseSensitivity(Qt::CaseInsensitive);
    m_filter->setFilterKeyColumn(-1); // name or type
    m_list = new QTableView(this);
    m_list->setModel(m_filter);
    m_list->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setSortingEnabled(false);
    m_list->verticalHeader()->hide();
    m_list->setWordWrap(false);
    m_list->horizontalHeader()->setSectionResizeMode(ColumnName, QHeaderView::Stretch);
    m_list->horizontalHeader()->setSectionResizeMode(ColumnType, QHeaderView::ResizeToContents);
    m_list->setMinimumSize(460, 260);
    layout->addWidget(m_list, 1);

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* ok = buttons->addButton(QStringLiteral("OK"), QDialogButtonBox::AcceptRole);
    QPushButton* cancel = buttons->addButton(QStringLiteral("Cancel"), QDialogButtonBox::RejectRole);
    KwSetControlId(ok, 1);
    KwSetControlId(cancel, 2);
    ok->setDefault(true);
    layout->addWidget(buttons);
    connect(ok, &QPushButton::clicked, this, [this] { OnOK(); });
    connect(cancel, &QPushButton::clicked, this, [this] { OnCancel(); });
    connect(m_search, &QLineEdit::textChanged, this, &CKwMaterialChooserDlg::SetSearchText);
    connect(m_list, &QTableView::doubleClicked, this, [this] { OnOK(); });
    // Typing narrows the list; the arrows move through what is left.
    m_search->installEventFilter(this);
}

CKwMaterialChooserDlg::~CKwMaterialChooserDlg() = default;

bool CKwMaterialChooserDlg::OnInitDialog()
{
    SetTextToCurrentLang();
    keepAChoice();
    SizeAndPlace();
    m_search->setFocus();
    return true;
}

void CKwMaterialChooserDlg::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("Materials", "TitleChooseMaterial", "Choose a Material"));
    m_searchLabel->setText(KwLabel(KwPropText("Materials", "LabelSearchMaterials", "Search")));
    m_search->setPlaceholderText(
        KwPropText("Materials", "PromptSearchMaterials", "Part of a name or type"));
    m_fileLabel->setText(m_fileName);
    if (auto* ok = KwControl<QPushButton>(this, 1))
        ok->setText(KwPropText("General", "ButtonOk", "OK"));
    if (auto* cancel = KwControl<QPushButton>(this, 2))
        cancel->setText(KwPropText("General", "ButtonCancel", "Cancel"));
    m_model->relabel();
}

bool CKwMaterialChooserDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            const QModelIndexList rows = m_list->selectionModel()->selectedRows();
            const int row = rows.isEmpty() ? -1 : rows.first().row();
            ChooseShownRow(std::clamp(row + (key == Qt::Key_Up ? -1 : 1), 0,
                                      std::max(0, m_filter->rowCount() - 1)));
            return true;
        }
    }
    return CKwMFCDialog::eventFilter(watched, event);
}

void CKwMaterialChooserDlg::SetSearchText(const QString& text)
{
    if (m_search->text() != text)
        m_search->setText(text); // comes back here through textChanged
    m_filter->setFilterFixedString(text.trimmed());
    keepAChoice();
}

int CKwMaterialChooserDlg::ShownCount() const { return m_filter->rowCount(); }

bool CKwMaterialChooserDlg::ChooseShownRow(int row)
{
    if (row < 0 || row >= m_filter->rowCount())
        return false;
    m_list->selectRow(row);
    m_list->scrollTo(m_filter->index(row, ColumnName));
    return true;
}

void CKwMaterialChooserDlg::keepAChoice()
{
    // A shown row stays chosen; when the search hid it, the first row that is left is.
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    if (rows.isEmpty() || !rows.first().isValid())
        ChooseShownRow(0);
    if (auto* ok = KwControl<QPushButton>(this, 1))
        ok->setEnabled(m_filter->rowCount() > 0);
}

int CKwMaterialChooserDlg::GetChosen() const
{
    const QModelIndexList rows = m_list->selectionModel()->selectedRows();
    if (rows.isEmpty())
        return -1;
    return m_filter->mapToSource(rows.first()).row();
}

void CKwMaterialChooserDlg::OnOK()
{
    m_chosen = GetChosen();
    if (m_chosen < 0)
        return; // nothing is shown to choose: the dialog stays
    CKwMFCDialog::OnOK();
}

int KwChooseMaterial(QWidget* parent, const QList<KwMaterialEntry>& materials,
                     const QString& fileName)
{
    CKwMaterialChooserDlg dlg(materials, fileName, parent);
    return dlg.DoModal() == KwMB::IDOK ? dlg.GetChosen() : -1;
}
