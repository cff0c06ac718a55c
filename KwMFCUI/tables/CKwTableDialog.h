#pragma once
// The table dialog: the points of a host table (X, Y) in the units of the analysis, with the
// table's name, ID and type, sort and compress, the origin point, the list's clipboard and a
// plot of the curve. It works on copies: OK turns each column into a host function in its
// units and hands them to the table, or names the first bad cell and stays open; Cancel
// leaves the table as it was. Modeless through Create (LaunchDialog kind 36), modal through
// SetTable and DoModal (the load editor's "Edit Table Data").
#include "CKwMFCDialog.h"
#include "CKwNonlinearDialogBase.h"

class CKwFEModel;
class CKwMaterial;
class CKwTable;
class QLabel;
class QLineEdit;
class QPushButton;

class KWMFCUI_EXPORT CKwTableDialog : public CKwMFCDialog, public CKwNonlinearDialogBase
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7400;
    enum ControlId {
        IDC_LABEL_NAME = 7401,
        IDC_NAME = 7402,
        IDC_LABEL_ID = 7403,
        IDC_ID = 7404,
        IDC_LABEL_TYPE = 7405,
        IDC_TYPE = 7406,
        IDC_LIST = 7407,
        IDC_SORT = 7408,
        IDC_ADD_ORIGIN = 7409,
        IDC_DELETE_ORIGIN = 7410,
        IDC_SHOW_XY_PLOT = 7411,
        IDC_BUTTON_OK = 7412,
        IDC_BUTTON_CANCEL = 7413,
    };

    explicit CKwTableDialog(QWidget* parent = nullptr);
    ~CKwTableDialog() override;

    // The dialog of the table's kind: the temperature, time and frequency tables get their own
    // heads and rules, every other table this one.
    static CKwTableDialog* NewFor(CKwTable* table, QWidget* parent = nullptr);
    // The dialog of the table's type over `parent`, run modal on the table: what an editor's
    // "Edit Table Data" and "Define New Table" open. The dialog's result code.
    static int RunModal(QWidget* parent, CFMView* view, CKwTable* table, KW_UOM* units);
    // RunModal on the model's table of this id (one an editor has just added for "Define New
    // Table"); true when the user kept it with OK, false also when no table has the id.
    static bool RunOnAddedTable(QWidget* parent, CFMView* view, CKwFEModel* model, int tableId,
                                KW_UOM* units);

    // The table to edit (not owned; null edits nothing and OK writes nothing), the view for
    // messages and the units the values are shown in. Call before DoModal or Create.
    void SetTable(CFMView* view, CKwTable* table, KW_UOM* units, CKwMaterial* material = nullptr);
    using CKwMFCDialog::Create;
    // Kind 36: SetTable, then the modeless window.
    bool Create(CFMView* view, CKwTable* table, KW_UOM* units, CKwMaterial* material = nullptr);
    CKwTable* GetTable() const { return m_pTable; }

    void SetTextToCurrentLang() override;
    bool IsValidDataInput(const QString& text, int row, int col, int showMessage) override;

    // OK: checks every cell, writes the table and closes; the first bad cell keeps it open.
    void OnOK() override;
    // Writes the points and the name into the table; false (table untouched) at a bad cell.
    bool WriteBack();
    // "Show XY Plot" captions its window with the dialog's title and the name being typed.
    QString CurvePlotTitle() const override;

protected:
    // The texts that differ between the table kinds.
    struct Texts
    {
        const char* section;
        const char* titleKey;
        const char* title;
        const char* columnXKey;
        const char* columnX;
        const char* columnYKey;
        const char* columnY;
    };
    virtual Texts DialogTexts() const;
    // X values below zero are refused when set (time and frequency).
    bool m_bNonNegativeX = false;
    const char* m_negativeXKey = "NegativeX";
    const char* m_negativeX = "The value cannot be negative.";

    bool OnInitDialog() override;

private:
    void showContextMenu(const QPoint& globalPos);

    CKwTable* m_pTable = nullptr;
    CKwMaterial* m_pMaterial = nullptr;
    QLineEdit* m_name;
    QLabel* m_id;
    QLabel* m_type;
};

// Temperature dependence of a value: X is the temperature.
class KWMFCUI_EXPORT CTemperatureDependence : public CKwTableDialog
{
    Q_OBJECT
public:
    explicit CTemperatureDependence(QWidget* parent = nullptr) : CKwTableDialog(parent) {}

protected:
    Texts DialogTexts() const override;
};

// Time dependence (a time curve): X is the time, never negative.
class KWMFCUI_EXPORT CTimeDependence : public CKwTableDialog
{
    Q_OBJECT
public:
    explicit CTimeDependence(QWidget* parent = nullptr);

protected:
    Texts DialogTexts() const override;
};

// Frequency dependence: X is the frequency, never negative.
class KWMFCUI_EXPORT CFrequencyDependence : public CKwTableDialog
{
    Q_OBJECT
public:
    explicit CFrequencyDependence(QWidget* parent = nullptr);

protected:
    Texts DialogTexts() const override;
};
