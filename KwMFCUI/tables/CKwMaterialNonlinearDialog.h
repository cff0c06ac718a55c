#pragma once
// The stress-strain curve of a nonlinear material: strain and stress pairs in the units of the
// analysis, numbers only and never negative. The origin row belongs to the "Add Origin" and
// "Remove Origin" buttons: it cannot be typed over, pasted over or deleted in the list. OK
// sorts and compresses the curve, needs two points at least, and writes the curve's two
// functions into the table it was given; Cancel leaves the table alone.
#include "CKwMFCDialog.h"
#include "CKwNonlinearDialogBase.h"

class CKwTable;
class QLabel;
class QLineEdit;

class KWMFCUI_EXPORT CKwMaterialNonlinearDialog : public CKwMFCDialog, public CKwNonlinearDialogBase
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7420;
    enum ControlId {
        IDC_LIST = 7421,
        IDC_LABEL_STRAIN = 7422,
        IDC_STRAIN = 7423,
        IDC_LABEL_STRESS = 7424,
        IDC_STRESS = 7425,
        IDC_ADD_POINT = 7426,
        IDC_SORT = 7427,
        IDC_ADD_ORIGIN = 7428,
        IDC_DELETE_ORIGIN = 7429,
        IDC_SHOW_XY_PLOT = 7430,
        IDC_BUTTON_OK = 7431,
        IDC_BUTTON_CANCEL = 7432,
        IDC_TRUE_VALUES = 7433,
    };

    // `curve` holds the strain (X) and stress (Y) functions; not owned, null edits nothing.
    // `materialName` goes into the caption.
    CKwMaterialNonlinearDialog(CKwTable* curve, KW_UOM* units, CFMView* view = nullptr,
                               const QString& materialName = QString(), QWidget* parent = nullptr);
    ~CKwMaterialNonlinearDialog() override;

    void SetTextToCurrentLang() override;
    bool IsEditableItem(int row, int col) override;
    bool IsDeleteableRow(int row) override;
    bool IsPasteableRow(int row) override;
    bool IsValidDataInput(const QString& text, int row, int col, int showMessage) override;

    void OnOK() override;
    bool WriteBack();
    // Adds the point typed in the strain and stress boxes as a row.
    bool OnAddPoint();
    // Converts the rows from engineering to true values: true stress = s (1 + e), true
    // strain = ln(1 + e). Once only: the curve then holds true values (and OK says so to its
    // table).
    bool OnTrueValues();
    bool HoldsTrueValues() const { return m_true; }
    // With the material's elastic modulus, OK also checks the plastic curve the solver will
    // get from the points (from zero plastic strain at yield, increasing) and names the point
    // where it fails.
    void SetElasticModulus(double modulus) { m_modulus = modulus; }

protected:
    bool OnInitDialog() override;

private:
    bool isOriginRow(int row);

    CKwTable* m_pCurve;
    QString m_materialName;
    QLineEdit* m_strain;
    QLineEdit* m_stress;
    bool m_true = false;
    double m_modulus = 0;
    // Checks every row and moves them into the functions, sorted; false with a message.
    bool takeRows();
};
