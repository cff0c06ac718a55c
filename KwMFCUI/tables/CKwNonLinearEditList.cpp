#include "CKwNonLinearEditList.h"

#include "CKwCtrlListHeader.h"
#include "CKwNonlinearDialogBase.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMimeData>
#include <QStyledItemDelegate>
#include <algorithm>

namespace {

// The in-place editor: a line edit whose whole text is selected when it opens, so typing
// replaces the value.
class CellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem&,
                          const QModelIndex&) const override
    {
        auto* e = new QLineEdit(parent);
        e->setFrame(false);
        return e;
    }
    void setEditorData(QWidget* editor, const QModelIndex& index) const override
    {
        if (auto* e = qobject_cast<QLineEdit*>(editor)) {
            e->setText(index.data(Qt::EditRole).toString());
            e->selectAll();
        }
    }
    // The list writes accepted text itself (after the owner has seen it).
    void setModelData(QWidget*, QAbstractItemModel*, const QModelIndex&) const override {}
};

} // namespace

CKwNonLinearEditList::CKwNonLinearEditList(QWidget* parent)
    : QTableView(parent), m_model(new KwPointTableModel(2, this)),
      m_header(new CKwCtrlListHeader(this))
{
    setHorizontalHeader(m_header);
    setModel(m_model);
    setItemDelegate(new CellDelegate(this));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    setShowGrid(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Rows of one height: the header then keeps no per-row state, which is what lets a
    // million rows scroll and change in constant time.
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    m_header->setSectionResizeMode(QHeaderView::Interactive);
}

CKwNonLinearEditList::~CKwNonLinearEditList() = default;

std::vector<int> CKwNonLinearEditList::SelectedRows() const
{
    std::vector<int> rows;
    if (!selectionModel())
        return rows;
    const QItemSelection sel = selectionModel()->selection();
    for (const QItemSelectionRange& r : sel)
        for (int i = r.top(); i <= r.bottom(); ++i)
            rows.push_back(i);
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    return rows;
}

int CKwNonLinearEditList::LowestSelectedRow() const
{
    int low = -1;
    if (!selectionModel())
        return low;
    for (const QItemSelectionRange& r : selectionModel()->selection())
        if (low < 0 || r.top() < low)
            low = r.top();
    return low;
}

void CKwNonLinearEditList::SelectRow(int row, bool scroll)
{
    if (row < 0 || row >= m_model->rows())
        return;
    const QModelIndex i = m_model->index(row, 0);
    selectionModel()->setCurrentIndex(i, QItemSelectionModel::ClearAndSelect |
                                             QItemSelectionModel::Rows);
    if (scroll)
        scrollTo(i);
}

QByteArray CKwNonLinearEditList::SelectedText() const
{
    const std::vector<int> rows = SelectedRows();
    QByteArray out;
    if (rows.empty())
        return out;
    std::size_t bytes = 0;
    for (int r : rows)
        bytes += m_model->cellView(r, 0).size() + m_model->cellView(r, 1).size() + 3;
    out.reserve(qsizetype(bytes));
    bool firstRow = true;
    for (int r : rows) {
        if (!firstRow)
            out.append("\r\n", 2);
        firstRow = false;
        const std::string_view x = m_model->cellView(r, 0), y = m_model->cellView(r, 1);
        out.append(x.data(), qsizetype(x.size()));
        out.append('\t');
        out.append(y.data(), qsizetype(y.size()));
    }
    return out;
}

bool CKwNonLinearEditList::CopySelected()
{
    QClipboard* cb = QGuiApplication::clipboard();
    if (!cb)
        return false;
    const QByteArray text = SelectedText();
    if (text.isEmpty() && SelectedRows().empty())
        return false;
    cb->setText(QString::fromUtf8(text));
    return true;
}

void CKwNonLinearEditList::PasteFromClipboard()
{
    if (!m_pOwner)
        return;
    QClipboard* cb = QGuiApplication::clipboard();
    const QMimeData* md = cb ? cb->mimeData() : nullptr;
    if (!md || !md->hasText())
        return;
    const int row = LowestSelectedRow();
    if (row < 0)
        return;
    // The clipboard's text is pasted as it comes, without a converted copy (a fresh block of
    // the size of a large paste cost more in page faults than the rest of the paste).
    const QString text = md->text();
    if (text.isEmpty())
        return;
    QString first;
    m_pOwner->PasteToCell(text, row, 0, &first);
}

void CKwNonLinearEditList::DeleteSelectedRows()
{
    const std::vector<int> rows = SelectedRows();
    if (rows.empty())
        return;
    const int realRows = m_pOwner ? m_pOwner->m_nRowCount : m_model->rows() - 1;
    std::vector<int> gone;
    // From the last row to the first, as the owner's rule may depend on what is below.
    for (auto it = rows.rbegin(); it != rows.rend(); ++it)
        if (*it < realRows && (!m_pOwner || m_pOwner->IsDeleteableRow(*it)))
            gone.push_back(*it);
    std::reverse(gone.begin(), gone.end());
    m_model->removeRowsAt(gone);
    if (m_pOwner) {
        m_pOwner->m_nRowCount -= int(gone.size());
        m_pOwner->ResizeList();
    }
    if (rows.size() == 1)
        SelectRow(std::min(rows.front(), m_model->rows() - 1));
}

void CKwNonLinearEditList::SelectAllRows()
{
    const int realRows = m_pOwner ? m_pOwner->m_nRowCount : m_model->rows() - 1;
    if (realRows <= 0) {
        clearSelection();
        return;
    }
    const QItemSelection all(m_model->index(0, 0), m_model->index(realRows - 1, 1));
    selectionModel()->select(all, QItemSelectionModel::ClearAndSelect);
    scrollTo(m_model->index(realRows - 1, 0));
}

void CKwNonLinearEditList::GoToFirstRow()
{
    SelectRow(0);
}

void CKwNonLinearEditList::GoToEditRow()
{
    SelectRow(m_pOwner ? m_pOwner->m_nRowCount : m_model->rows() - 1);
}

void CKwNonLinearEditList::MoveSelectionDown()
{
    const std::vector<int> rows = SelectedRows();
    if (rows.empty())
        return;
    QItemSelection moved;
    int focus = -1;
    for (int r : rows)
        if (r + 1 < m_model->rows()) {
            moved.select(m_model->index(r + 1, 0), m_model->index(r + 1, 1));
            focus = r + 1;
        }
    selectionModel()->select(moved, QItemSelectionModel::ClearAndSelect);
    if (focus >= 0) {
        selectionModel()->setCurrentIndex(m_model->index(focus, 0), QItemSelectionModel::NoUpdate);
        scrollTo(m_model->index(focus, 0));
    }
}

bool CKwNonLinearEditList::EditCell(int row, int col)
{
    if (!m_pOwner || row < 0 || row >= m_model->rows() || col < 0 || col >= m_model->columns())
        return false;
    if (!m_pOwner->IsEditableItem(row, col))
        return false;
    const QModelIndex i = m_model->index(row, col);
    scrollTo(i);
    selectionModel()->setCurrentIndex(i, QItemSelectionModel::NoUpdate);
    m_editIndex = i;
    edit(i);
    return state() == EditingState;
}

void CKwNonLinearEditList::keyPressEvent(QKeyEvent* e)
{
    const bool ctrl = e->modifiers() & Qt::ControlModifier;
    switch (e->key()) {
    case Qt::Key_Tab:
        if (!ctrl) {
            MoveSelectionDown();
            e->accept();
            return;
        }
        break;
    case Qt::Key_V:
        if (ctrl) {
            PasteFromClipboard();
            e->accept();
            return;
        }
        break;
    // The view's own Ctrl+C would put the current cell over the rows just copied, so copy
    // and cut end here.
    case Qt::Key_C:
        if (ctrl) {
            CopySelected();
            e->accept();
            return;
        }
        break;
    case Qt::Key_X:
        if (ctrl) {
            CopySelected();
            DeleteSelectedRows();
            e->accept();
            return;
        }
        break;
    case Qt::Key_Delete:
        DeleteSelectedRows();
        e->accept();
        return;
    case Qt::Key_Home:
        if (ctrl) {
            GoToFirstRow();
            e->accept();
            return;
        }
        break;
    case Qt::Key_End:
        if (ctrl) {
            GoToEditRow();
            e->accept();
            return;
        }
        break;
    default:
        break;
    }
    QTableView::keyPressEvent(e);
}

void CKwNonLinearEditList::mousePressEvent(QMouseEvent* e)
{
    if (!hasFocus())
        setFocus(Qt::MouseFocusReason);
    QTableView::mousePressEvent(e);
    if (e->button() != Qt::LeftButton ||
        (e->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)))
        return;
    const QModelIndex i = indexAt(e->position().toPoint());
    if (i.isValid())
        EditCell(i.row(), i.column());
}

void CKwNonLinearEditList::contextMenuEvent(QContextMenuEvent* e)
{
    Q_EMIT contextMenuWanted(e->globalPos());
    e->accept();
}

void CKwNonLinearEditList::commitData(QWidget* editor)
{
    auto* le = qobject_cast<QLineEdit*>(editor);
    const QModelIndex i = m_editIndex;
    if (!le || !i.isValid() || !m_pOwner || m_inCommit)
        return;
    m_inCommit = true;
    const int row = i.row(), col = i.column();
    const QString text = le->text();
    const bool rejected = m_pOwner->OnLeaveItem(row, col, text);
    if (rejected)
        m_keepEditor = true;
    else
        m_model->setCellText(row, col, text);
    m_inCommit = false;
}

void CKwNonLinearEditList::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint)
{
    if (m_keepEditor) {
        m_keepEditor = false;
        if (editor && editor->isActiveWindow())
            editor->setFocus();
        return;
    }
    QTableView::closeEditor(editor, hint);
}
