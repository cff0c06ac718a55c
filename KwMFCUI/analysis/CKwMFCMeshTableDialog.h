#pragma once
// "Mesh Table": the nodes or the elements of a mesh on one table, sortable by any column,
// with "Go to ID" to find a row and Copy for the selected rows. Modeless; it stands in the
// view's list of open dialogs from its construction until it closes.
#include "CKwMFCDialog.h"
#include "KwMFCUIExport.h"

#include <vector>

class CKwMeshModel;
class CKwMeshTableModel;
class KW_UOM;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

class KWMFCUI_EXPORT CKwMFCMeshTableDialog : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 102;
    enum ControlId
    {
        IDC_MESHTABLE_SHOW = 10201,
        IDC_MESHTABLE_FIND = 10202,
        IDC_MESHTABLE_GOTO = 10203,
        IDC_MESHTABLE_LIST = 10204,
        IDC_MESHTABLE_MESSAGE = 10205,
        IDC_MESHTABLE_COPY = 10206,
        IDC_MESHTABLE_COUNT = 10207,
    };
    // What a search for an ID found.
    enum FindStatus { Found = 0, NotANumber = 1, NotInMesh = 2 };

    // `mesh` may be empty; a null mesh shows an empty table. `units` null shows SI.
    CKwMFCMeshTableDialog(CKwMeshModel* mesh, CFMView* view, KW_UOM* units,
                          QWidget* parent = nullptr);
    ~CKwMFCMeshTableDialog() override;

    void SetTextToCurrentLang() override;
    // Heads and numbers again after the unit system changed.
    void OnUnitsChanged();
    // Shows the nodes (0) or the elements (1).
    void ShowContents(int contents);
    // Selects and scrolls to the row of the typed ID; otherwise says why below the table.
    FindStatus GoToId(const QString& text);
    // The selected rows (all rows when none is selected) as the clipboard gets them.
    QString SelectedText() const;
    void CopySelection();

    CKwMeshTableModel* TableModel() const { return m_model; }
    QTableView* TableView() const { return m_table; }
    QString GetMessageText() const;

protected:
    bool OnInitDialog() override;

private:
    void updateCount();
    void fitColumnsToRows();
    std::vector<int> selectedRows() const;

    CKwMeshModel* m_mesh;
    KW_UOM* m_units;
    CKwMeshTableModel* m_model = nullptr;
    QLabel* m_showLabel = nullptr;
    QComboBox* m_show = nullptr;
    QLabel* m_findLabel = nullptr;
    QLineEdit* m_find = nullptr;
    QPushButton* m_goTo = nullptr;
    QTableView* m_table = nullptr;
    QLabel* m_count = nullptr;
    QLabel* m_message = nullptr;
    QPushButton* m_copy = nullptr;
    QPushButton* m_close = nullptr;
    FindStatus m_lastFind = Found;
    QString m_lastFindText;
};
