#pragma once
// The engine of every dialog that edits a table of points (X, Y): the point list with its
// always-present blank edit row last, values formatted and parsed in the units of the
// analysis, sort and compress, the origin point, paste and copy of tab and line separated
// text, cell checks, and turning a column into a host function. A dialog derives from it
// beside its dialog base and calls these operations from its own handlers.
#include "CKwNonLinearEditList.h"
#include "KwMFCUIExport.h"

#include <QPointer>
#include <QString>
#include <string_view>

class CFMView;
class CKwFunction;
class KW_UOM;
class QDialog;
class QLabel;
class QLineEdit;
class QMenu;
class QWidget;

class KWMFCUI_EXPORT CKwNonlinearDialogBase
{
public:
    // Command ids of the list's context menu.
    enum MenuId : unsigned {
        ID_EDIT_CUT = 32801,
        ID_EDIT_COPY = 32802,
        ID_EDIT_PASTE = 32803,
        ID_EDIT_DELETE = 32804,
        ID_EDIT_SELECTALL = 32805,
    };

    CKwNonlinearDialogBase();
    virtual ~CKwNonlinearDialogBase();
    CKwNonlinearDialogBase(const CKwNonlinearDialogBase&) = delete;
    CKwNonlinearDialogBase& operator=(const CKwNonlinearDialogBase&) = delete;

    // --- overridable rules (base: everything allowed) ---
    virtual bool IsEditableItem(int row, int col);
    virtual bool IsDeleteableRow(int row);
    // Height = row height x (row count + 2) + header height, at most the maximum list height.
    virtual void ResizeList();
    virtual void SetTextToCurrentLang() {}
    virtual bool IsPasteableRow(int row);
    // `showMessage` non-zero: a rejection tells the user why. During a paste `text` may lend
    // the paste's own buffer: copy it (QString(text.data(), text.size())) to keep it.
    virtual bool IsValidDataInput(const QString& text, int row, int col, int showMessage);

    // --- setup and layout ---
    void SetFMView(CFMView* view) { m_pFMView = view; }
    void SetsubcaseUnits(KW_UOM* units) { m_pUnits = units; }
    CFMView* GetTableView() const { return m_pFMView; }
    KW_UOM* GetUnits() const { return m_pUnits; }
    void SetMaxSizeList();
    void BuildList();

    // --- rows ---
    void CreateEditRow();
    void Add(const QString& x, const QString& y);
    void InsertRow(int index, const QString& x, const QString& y);
    void AddOrigin();
    // First row whose two cells are numbers strictly within +-1e-10; empty cells never count.
    bool IsOriginInTable(int* row);
    void DeleteOriginFromTable();
    void SortAndCompressTable(int compress);
    int GetRowCount() const { return m_nRowCount; }
    // The dialogs' buttons: sort and compress, add the origin unless it is there, delete it.
    void OnSort() { SortAndCompressTable(1); }
    void OnAddOrigin();
    void OnDeleteOrigin();

    // --- values ---
    void LoadTableValues(int row, int col, int unitType, double value);
    void LoadTextBoxValues(QLineEdit* edit, int unitType, double value);
    double GetItemValue(int row, int col);
    double TableUpdateValue(int row, int col, int unitType);
    double TextBoxUpdateValue(QLineEdit* edit, int unitType);
    bool ValidateTableValue(int row, int col, int unitType);
    // Returns true when the text was rejected (the editor stays open).
    bool OnLeaveItem(int row, int col, const QString& text);
    // Builds *function from column `col`; false at the first bad cell (reported once).
    bool UpdateListData(int col, CKwFunction** function);

    // --- paste ---
    void PasteToCell(const QString& text, int row, int col, QString* first);
    // The same on 8-bit text (the clipboard's), without a detour through UTF-16.
    void PasteToCell(std::string_view text, int row, int col, QString* first);

    // --- labels ---
    void LoadHeaderLabel(int col, int unitType);
    void SetHeaderLabel(int col, int unitType, const QString& text);
    void LoadTextBoxLabels(QLabel* label, int unitType);
    void SetMenuItemText(unsigned id, QMenu* menu, const QString& text);

    // "%.10g" in display units with the exponent's leading zeros dropped (1e+7, 2e-5).
    static QString FormatValue(double displayValue);

    CKwNonLinearEditList& GetList() { return m_List; }
    CKwFunction* GetXFunction() const { return m_pXFunction; }
    CKwFunction* GetYFunction() const { return m_pYFunction; }

protected:
    // The dialog hands over copies of the functions it shows; the base owns them from here.
    void SetFunctions(CKwFunction* x, CKwFunction* y);
    // Fills the rows from the two functions (internal values shown in display units).
    void LoadFunctions();
    // Cut, Copy, Paste, Delete and Select All for the list, texts from `section`.
    QMenu* CreateEditMenu(QWidget* parent, const char* section);
    // A cell's text is empty or a number (blanks anywhere ignored) as the view checks it.
    bool IsNumberInput(const QString& text, int unitType) const;
    // Opens (or refreshes) a window beside `owner` that plots the rows that hold two numbers,
    // the axes captioned with the column heads. Kept in `window`; the close button closes it.
    void ShowCurveWindow(QWidget* owner, QPointer<QDialog>& window, const QString& title,
                         const QString& closeText);
    // Where a message about a cell goes: the view's bubble, else a message box.
    void ShowTableMessage(const QString& text) const;

    KW_UOM* m_pUnits = nullptr;
    int m_nRowCount = 0;
    int m_nMaxListHeight = 0;
    CKwNonLinearEditList m_List;
    CKwFunction* m_pXFunction = nullptr;
    CKwFunction* m_pYFunction = nullptr;
    CFMView* m_pFMView = nullptr;

private:
    friend class CKwNonLinearEditList;
    void addRow(int index, std::string_view x, std::string_view y);
    void formatInto(int row, int col, int unitType, double value);
};
