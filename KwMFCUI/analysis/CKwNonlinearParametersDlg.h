#pragma once
// Iteration and convergence controls of a subcase's nonlinear setup, in a static and a
// transient variant chosen by the setup's analysis type. OK checks every field in a fixed
// order and writes the setup only when all of them pass.
#include "CKwMFCDialog.h"

#include <memory>

class CKwNonlinearSetup;
class QLabel;

namespace Ui {
class CKwNonlinearParametersDlg;
}

class KWMFCUI_EXPORT CKwNonlinearParametersDlg : public CKwMFCDialog
{
    Q_OBJECT
public:
    // The analysis type of a nonlinear transient analysis; every other type is static.
    static constexpr int kTransientAnalysisType = 13;

    // Control ids of the template.
    enum ControlId
    {
        IDC_METHOD = 1315,
        IDC_KSTEP = 1318,
        IDC_CHECK_MAXITER = 1319,
        IDC_MAXITER = 1320,
        IDC_MSTEP = 1322,
        IDC_ADJUST = 1325,
        IDC_RB = 1328,
        IDC_MAXR = 1330,
        IDC_CHECK_DISPLACEMENT = 1333,
        IDC_CHECK_WORK = 1334,
        IDC_CHECK_LOAD = 1335,
        IDC_MAXDIV = 1338,
        IDC_MAXUBIS = 1340,
        IDC_MAXLS = 1342,
        IDC_MAXBIS = 1345,
        IDC_UTOL = 1348,
        IDC_RTOLB = 1350,
        IDC_TDV = 1352,
        IDC_TDG = 1354,
        IDC_DISPLACEMENT_TOL = 1359,
        IDC_LOAD_TOL = 1360,
        IDC_WORK_TOL = 1361,
        IDC_TDC = 1362,
        IDC_LSTOL = 1365,
        IDC_FSTRESS = 1366,
        IDC_INITIAL_INCREMENT = 7179,
        IDC_MIN_INCREMENT = 7180,
        IDC_MAX_INCREMENT = 7181,
        IDC_BUTTON_OK = 7205,
        IDC_HELP_BUTTON = 7206,
        // The static text in front of a field carries the field's id plus this offset.
        kLabelIdOffset = 10000,
        IDC_GROUP_SETUP = 11400,
        IDC_GROUP_TERMINATION = 11401,
        IDC_GROUP_CONVDIV = 11402,
        IDC_GROUP_DYNAMIC = 11403,
        IDC_LABEL_CRITERIA = 11404,
    };

    // `setup` is not owned and may be null (nothing to edit; OK then writes nothing). Field
    // errors go to the view given with SetFMView (kind 53 passes the request's view), else to
    // a view the parent window holds, else into a message box.
    explicit CKwNonlinearParametersDlg(CKwNonlinearSetup* setup, QWidget* parent = nullptr);
    ~CKwNonlinearParametersDlg() override;

    CKwNonlinearSetup* GetSetup() const { return m_pSetup; }
    bool IsTransient() const { return m_nAnalysisType == kTransientAnalysisType; }

    // Enter lands here: it does nothing, so only the OK button closes the dialog.
    void OnOK() override;
    // The OK button: checks, writes the setup and closes, or shows the first error and stays.
    void OnButtonOK();
    // Checks the fields in order; on the first failure shows its message and returns false
    // with the setup untouched, otherwise writes all numbers into the setup at once.
    bool CheckParameters();

    void OnSelchangeMethod();
    void OnCheckMaxITER();
    void OnCheckDisplacement();
    void OnCheckLoad();
    void OnCheckWork();
    void OnBnClickedHelp();
    void SetControlNames();
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    void fillCombos();
    void fillFields();
    void enableFromCheck(int checkId, int editId);
    // Where field errors go: the dialog's view, else a view in the parent window, else a box.
    void showFieldError(const QString& message);

    std::unique_ptr<Ui::CKwNonlinearParametersDlg> m_ui;
    CKwNonlinearSetup* m_pSetup;
    int m_nAnalysisType;
};
