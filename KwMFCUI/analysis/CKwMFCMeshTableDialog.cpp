#include "CKwMFCMeshTableDialog.h"

#include "CKwMeshModel.h"
#include "CKwMeshTableModel.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMethodLogger.h"
#include "KwStyle.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <algorithm>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QVBoxLayout>

CKwMFCMeshTableDialog::CKwMFCMeshTableDialog(CKwMeshModel* mesh, CFMView* view, KW_UOM* units,
                                             QWidget* parent)
    : CKwMFCDialog(kTemplateId, view, parent), m_mesh(mesh), m_units(units)
{
    KW_LOG_METHOD("CKwMFCMeshTableDialog::CKwMFCMeshTableDialog");
    // The view learns of the window before it is built, so that a host asking for its open
    // dialogs while this one fills its table already finds it.
    EnterViewDialogStack();
    setModal(false);
    setSizeGripEnabled(true);

    m_showLabel = new QLabel(this);
    m_show = new QComboBox(this);
    KwSetControlId(m_show, IDC_MESHTABLE_SHOW);
    m_show->addItems({QString(), QString()});
    m_findLabel = new QLabel(this);
    m_find = new QLineEdit(this);
    KwSetControlId(m_find, IDC_MESHTABLE_FIND);
    m_find->setMaximumWidth(KwStyle::CharsWidth(m_find->fontMetrics(), KwStyle::NumberFieldChars));
    m_goTo = new QPushButton(this);
    KwSetControlId(m_goTo, IDC_MESHTABLE_GOTO);
    m_showLabel->setBuddy(m_show);
    m_findLabel->setBuddy(m_find);

    auto* grid = new QGridLayout;
    grid->addWidget(m_showLabel, 0, 0);
    grid->addWidget(m_show, 0, 1);
    grid->addWidget(m_findLabel, 1, 0);
    auto* findRow = new QHBoxLayout;
    findRow->addWidget(m_find);
    findRow->addWidget(m_goTo);
    findRow->addStretch(1);
    grid->addLayout(findRow, 1, 1);
    KwStyle::ApplyFormGrid(grid);

    m_model = new CKwMeshTableModel(mesh, view ? view->GetModel() : nullptr, units, this);
    m_table = new QTableView(this);
    KwSetControlId(m_table, IDC_MESHTABLE_LIST);
    // A million rows: fixed row heights and no per-row sizing, so that only painted rows cost
    // anything.
    m_table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_table->verticalHeader()->setDefaultSectionSize(m_table->fontMetrics().height() + 6);
    m_table->verticalHeader()->hide();
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setWordWrap(false);
    m_table->setModel(m_model);
    // No sort indicator before sorting is switched on: switching it on sorts by the indicated
    // column, and the table opens in mesh order.
    m_table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_table->setSortingEnabled(true);

    auto* copyAction = new QAction(this);
    copyAction->setShortcut(QKeySequence::Copy);
    copyAction->setShortcutContext(Qt::WidgetShortcut);
    m_table->addAction(copyAction);
    connect(copyAction, &QAction::triggered, this, &CKwMFCMeshTableDialog::CopySelection);

    m_count = new QLabel(this);
    KwSetControlId(m_count, IDC_MESHTABLE_COUNT);
    m_message = new QLabel(this);
    KwSetControlId(m_message, IDC_MESHTABLE_MESSAGE);
    m_message->setWordWrap(true);
    m_copy = new QPushButton(this);
    KwSetControlId(m_copy, IDC_MESHTABLE_COPY);
    m_close = new QPushButton(this);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_count);
    buttons->addStretch(1);
    buttons->addWidget(m_copy);
    buttons->addWidget(m_close);

    auto* top = new QVBoxLayout(this);
    top->addLayout(grid);
    top->addWidget(m_table, 1);
    top->addWidget(m_message);
    top->addLayout(buttons);

    connect(m_show, &QComboBox::currentIndexChanged, this, &CKwMFCMeshTableDialog::ShowContents);
    connect(m_goTo, &QPushButton::clicked, this, [this] { GoToId(m_find->text()); });
    connect(m_find, &QLineEdit::returnPressed, this, [this] { GoToId(m_find->text()); });
    connect(m_copy, &QPushButton::clicked, this, &CKwMFCMeshTableDialog::CopySelection);
    connect(m_close, &QPushButton::clicked, this, &CKwMFCMeshTableDialog::reject);
    m_message->hide();
    resize(560, 440);
}

CKwMFCMeshTableDialog::~CKwMFCMeshTableDialog() = default;

bool CKwMFCMeshTableDialog::OnInitDialog()
{
    const bool r = CKwMFCDialog::OnInitDialog();
    // The Go To button is the default only for the search field: Enter there searches.
    m_goTo->setAutoDefault(false);
    m_copy->setAutoDefault(false);
    m_close->setAutoDefault(false);
    return r;
}

void CKwMFCMeshTableDialog::SetTextToCurrentLang()
{
    setWindowTitle(KwPropText("MeshTable", "TitleMeshTable", "Mesh Table"));
    m_showLabel->setText(KwLabel(KwPropText("MeshTable", "LabelShow", "Show")));
    m_show->setItemText(0, KwPropText("MeshTable", "DropDownNodes", "Nodes"));
    m_show->setItemText(1, KwPropText("MeshTable", "DropDownElements", "Elements"));
    m_findLabel->setText(KwLabel(KwPropText("MeshTable", "LabelGoToId", "Go to ID")));
    m_goTo->setText(KwPropText("MeshTable", "ButtonGoTo", "Go To"));
    m_copy->setText(KwPropText("MeshTable", "ButtonCopy", "Copy"));
    m_close->setText(KwPropText("General", "ButtonClose", "Close"));
    m_find->setToolTip(KwPropText("MeshTable", "TooltipGoToId",
                                  "The ID of a node or element to scroll to"));
    if (const QList<QAction*> actions = m_table->actions(); !actions.isEmpty())
        actions.first()->setText(m_copy->text());
    m_model->RetranslateTexts();
    updateCount();
    if (!m_message->isHidden() && !m_lastFindText.isNull())
        GoToId(m_lastFindText);
    KwStyle::FitHeaders(m_table);
}

void CKwMFCMeshTableDialog::OnUnitsChanged()
{
    m_model->RetranslateTexts();
    KwStyle::FitHeaders(m_table);
}

void CKwMFCMeshTableDialog::updateCount()
{
    const bool nodes = m_model->GetContents() == CKwMeshTableModel::Nodes;
    const QString what = nodes ? KwPropText("MeshTable", "LabelNodeCount", "Nodes: %1")
                               : KwPropText("MeshTable", "LabelElementCount", "Elements: %1");
    m_count->setText(what.arg(m_model->rowCount()));
}

void CKwMFCMeshTableDialog::ShowContents(int contents)
{
    const auto c = contents == 1 ? CKwMeshTableModel::Elements : CKwMeshTableModel::Nodes;
    if (m_show->currentIndex() != int(c))
        m_show->setCurrentIndex(int(c)); // comes back here through the signal
    m_model->SetContents(c);
    m_table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    m_message->hide();
    m_lastFindText = QString();
    updateCount();
    KwStyle::FitHeaders(m_table);
    fitColumnsToRows();
}

void CKwMFCMeshTableDialog::fitColumnsToRows()
{
    // The widths the texts of the first and last hundred rows need: ids mostly grow through
    // the mesh, so these hold the widest numbers, and a million rows cost no more than two
    // hundred. A column never takes more than half the table.
    const int rows = m_model->rowCount();
    const int columns = m_model->columnCount();
    const QFontMetrics fm(m_table->font());
    QHeaderView* header = m_table->horizontalHeader();
    const int limit = std::max(m_table->viewport()->width() / 2, KwStyle::CharsWidth(fm, 24));
    for (int c = 0; c + 1 < columns; ++c) {
        int needed = 0;
        for (int r = 0; r < rows; r = (r == 99 && rows > 200) ? rows - 100 : r + 1)
            needed = std::max(needed,
                              fm.horizontalAdvance(m_model->index(r, c).data().toString()));
        needed += 2 * KwStyle::CellPadding;
        if (header->sectionSize(c) < needed)
            header->resizeSection(c, std::min(needed, limit));
    }
}

CKwMFCMeshTableDialog::FindStatus CKwMFCMeshTableDialog::GoToId(const QString& text)
{
    m_lastFindText = text;
    bool ok = false;
    const int id = text.trimmed().toInt(&ok);
    const int row = ok ? m_model->RowOfId(id) : -1;
    const bool nodes = m_model->GetContents() == CKwMeshTableModel::Nodes;
    if (row < 0) {
        m_lastFind = ok ? NotInMesh : NotANumber;
        const QString message =
            !ok ? KwErrText("MeshTable", "IdNotANumber", "Type the ID as a whole number.")
            : nodes ? KwErrText("MeshTable", "NodeIdMissing", "The mesh has no node of this ID.")
                    : KwErrText("MeshTable", "ElementIdMissing",
                                "The mesh has no element of this ID.");
        m_message->setText(
            KwFieldMessage(KwStyle::FieldLabel(KwPropText("MeshTable", "LabelGoToId", "Go to ID")),
                           message + QStringLiteral(" ") + text.trimmed()));
        m_message->show();
        return m_lastFind;
    }
    m_lastFind = Found;
    m_message->hide();
    const QModelIndex index = m_model->index(row, 0);
    m_table->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_table->scrollTo(index, QAbstractItemView::PositionAtCenter);
    return Found;
}

QString CKwMFCMeshTableDialog::GetMessageText() const
{
    return m_message->isHidden() ? QString() : m_message->text();
}

std::vector<int> CKwMFCMeshTableDialog::selectedRows() const
{
    // The rows of the selection's ranges, marked once each: asking row by row after Ctrl+A on
    // a million rows would cost a lookup per row.
    std::vector<int> rows;
    const int count = m_model->rowCount();
    const QItemSelectionModel* sel = m_table->selectionModel();
    if (!sel || sel->selection().isEmpty())
        return rows;
    std::vector<unsigned char> marked(static_cast<std::size_t>(count), 0);
    for (const QItemSelectionRange& range : sel->selection())
        for (int r = std::max(range.top(), 0); r <= range.bottom() && r < count; ++r)
            marked[static_cast<std::size_t>(r)] = 1;
    for (int r = 0; r < count; ++r)
        if (marked[static_cast<std::size_t>(r)])
            rows.push_back(r);
    return rows;
}

QString CKwMFCMeshTableDialog::SelectedText() const
{
    return m_model->CopyText(selectedRows());
}

void CKwMFCMeshTableDialog::CopySelection()
{
    QApplication::clipboard()->setText(SelectedText());
}
