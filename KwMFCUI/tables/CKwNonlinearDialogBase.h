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
class KwChart;
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
    // The same on 8-bit text, without a detour through UTF-16.
    void PasteToCell(std::string_view text, int row, int col, QString* first);

    // --- labels ---
    void LoadHeaderLabel(int col, int unitType);
    void SetHeaderLabel(int col, int unitType, const QString& text);
    void LoadTextBoxLabels(QLabel* label, int unitType);
    void SetMenuItemText(unsigned id, QMenu* menu, const QString& text);

    // "%.10g" in display units with the exponent's leading zeros dropped (1e+7, 2e-5).
    static QString FormatValue(double displayValue);

    // "Show XY Plot": opens (or refreshes) a window beside the dialog that plots the rows that
    // hold two numbers, the axes captioned with the column heads; its button closes it.
    void OnShowXYPlot();
    // The window "Show XY Plot" opened (null before), and its chart.
    QDialog* PlotWindow() const;
    KwChart* PlotChart() const;

    CKwNonLinearEditList& GetList() { return m_List; }
    CKwFunction* GetXFunction() const { return m_pXFunction; }
    CKwFunction* GetYFunction() const { return m_pYFunction; }

protected:
    // The dialog hands over copies of the functions it shows; the base owns them from here.
    void SetFunctions(CKwFunction* x, CKwFunction* y);
    // A function without values in the unit type of `f` (or `unitType` without one): what a
    // dialog keeps of the functions it shows, since the rows hold the values and OK builds
    // new functions from them.
    static CKwFunction* UnitsOf(const CKwFunction* f, int unitType);
    // Fills the rows from the two functions (internal values shown in display units): those
    // given, or the dialog's own.
    void LoadFunctions();
    void LoadFunctions(const CKwFunction* x, const CKwFunction* y);
    // Cut, Copy, Paste, Delete and Select All for the list, texts from `section`.
    QMenu* CreateEditMenu(QWidget* parent, const char* section);
    // How a cell's text reads, the one way that the checks of typed and pasted text, OK and
    // the plot all read it: every blank dropped (not only those at the ends), then nothing, a
    // number (in display units, through `value`) or something that is no number.
    enum class CellRead { Empty, Number, NotANumber };
    static CellRead ReadCell(std::string_view utf8, int unitType, double* value);
    static CellRead ReadCell(const QString& text, int unitType, double* value);
    // The check of a typed or pasted text: empty or a number, and with `nonNegative` not below
    // zero, both judged on the value that OK will read. A text that is no number is reported
    // here (when `showMessage`); a negative one is left to the caller's own words.
    enum class CellInput { Accepted, NotANumber, Negative };
    CellInput CheckCellInput(const QString& text, int unitType, bool nonNegative,
                             int showMessage) const;
    // Removes the real rows whose two cells are blank (the rows that clicking into the edit row
    // and away leaves behind), so that OK never hands them to the host. Returns how many went.
    int DropBlankRows();
    // The caption of the "Show XY Plot" window: the dialog's own title unless a dialog says
    // otherwise.
    virtual QString CurvePlotTitle() const;
    QPointer<QDialog> m_plotWindow;
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
    // The paste on 8-bit or UTF-16 text, one pass either way.
    template <class Ch>
    void pasteText(std::basic_string_view<Ch> text, int row, int col, QString* first);
    void formatInto(int row, int col, int unitType, double value);
};
