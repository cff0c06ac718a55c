#pragma once
// The point list of a table dialog: a table view over the dialog's own cell store, with the
// keyboard of a spreadsheet column pair (Tab, Ctrl+V/C/X, Delete, Ctrl+Home/End), clipboard
// copy and paste as tab and line separated text, and an in-place editor opened by a click on
// a cell the owning dialog lets the user edit.
#include "KwMFCUIExport.h"
#include "KwPointTableModel.h"

#include <QTableView>
#include <vector>

class CKwCtrlListHeader;
class CKwNonlinearDialogBase;

class KWMFCUI_EXPORT CKwNonLinearEditList : public QTableView
{
    Q_OBJECT
public:
    explicit CKwNonLinearEditList(QWidget* parent = nullptr);
    ~CKwNonLinearEditList() override;

    void SetOwner(CKwNonlinearDialogBase* owner) { m_pOwner = owner; }
    CKwNonlinearDialogBase* GetOwner() const { return m_pOwner; }
    KwPointTableModel* Model() const { return m_model; }
    CKwCtrlListHeader* Header() const { return m_header; }

    // Selected row indices, ascending.
    std::vector<int> SelectedRows() const;
    int LowestSelectedRow() const; // -1 when none
    void SelectRow(int row, bool scroll = true);

    // Copies the selected rows (X, tab, Y; rows joined by CR LF, none after the last) to the
    // clipboard. Returns false when nothing is selected or there is no clipboard.
    bool CopySelected();
    // The text CopySelected would put on the clipboard.
    QByteArray SelectedText() const;
    // Reads the clipboard and pastes it from the lowest selected row.
    void PasteFromClipboard();
    // Deletes the selected rows the owner lets go; the edit row is never deleted.
    void DeleteSelectedRows();
    // Selects every real row (not the edit row).
    void SelectAllRows();
    // Ctrl+Home and Ctrl+End.
    void GoToFirstRow();
    void GoToEditRow();
    // Shifts every selected row one down (Tab).
    void MoveSelectionDown();
    // Opens the in-place editor on a cell when the owner lets it be edited.
    bool EditCell(int row, int col);

Q_SIGNALS:
    void contextMenuWanted(const QPoint& globalPos);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void commitData(QWidget* editor) override;
    void closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    KwPointTableModel* m_model;
    CKwCtrlListHeader* m_header;
    CKwNonlinearDialogBase* m_pOwner = nullptr;
    bool m_keepEditor = false;
    bool m_inCommit = false;
    QPersistentModelIndex m_editIndex;
};
