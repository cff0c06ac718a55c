#pragma once
// The S-N curve of a material: cycles to failure against stress amplitude as a point table in
// the units of the analysis, drawn beside it on log-log axes with the endurance limit as a line,
// and where the curve comes from. OK checks every row (cycles above zero and strictly
// increasing, stresses above zero, two points at least) and the endurance limit (above zero,
// not above the curve's highest stress) and only then writes curve, limit and source into the
// material; the first problem is named and nothing is written. Cancel leaves the material.
#include "CKwMFCDialog.h"
#include "CKwNonlinearDialogBase.h"

#include <memory>
#include <vector>

class CKwMaterial;
class CKwTable;
class KwChart;
class QLineEdit;

class KWMFCUI_EXPORT CKwSNCurveDialog : public CKwMFCDialog, public CKwNonlinearDialogBase
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7450;
    enum ControlId {
        IDC_LIST = 7451,
        IDC_CHART = 7452,
        IDC_SORT = 7453,
        IDC_LABEL_ENDURANCE = 7454,
        IDC_ENDURANCE = 7455,
        IDC_LABEL_SOURCE = 7456,
        IDC_SOURCE = 7457,
        IDC_BUTTON_OK = 7458,
        IDC_BUTTON_CANCEL = 7459,
    };

    // What is wrong with an S-N curve, and in which row (-1 for the whole curve or the limit).
    enum Problem { NoProblem = 0, CyclesNotPositive, StressNotPositive, CyclesNotIncreasing,
                   TooFewPoints, EnduranceNotPositive, EnduranceAboveCurve };
    struct Check
    {
        Problem problem = NoProblem;
        int row = -1;
    };
    // The first problem of a curve (cycles, stresses) and an endurance limit (MissingDouble
    // when none is given), rows in order; any consistent units.
    static Check CheckCurve(const std::vector<double>& cycles, const std::vector<double>& stress,
                            double enduranceLimit);
    // The message of a problem in the current language (row counted from 1).
    static QString ProblemText(const Check& check);

    // `material` is edited (not owned; null edits nothing); `units` the units values are shown
    // and typed in.
    CKwSNCurveDialog(CKwMaterial* material, KW_UOM* units, CFMView* view = nullptr,
                     QWidget* parent = nullptr);
    ~CKwSNCurveDialog() override;

    void SetTextToCurrentLang() override;
    bool IsValidDataInput(const QString& text, int row, int col, int showMessage) override;
    void OnOK() override;
    // Checks everything and writes curve, limit and source into the material; false (the
    // material untouched) at the first problem.
    bool WriteBack();
    // The last message shown (empty after a successful WriteBack).
    QString GetLastMessage() const { return m_lastMessage; }
    KwChart* GetChart() const { return m_chart; }
    // Draws the rows that hold two positive numbers, and the endurance limit, again.
    void RefreshPlot();

protected:
    bool OnInitDialog() override;

private:
    void showMessage(const QString& text, int row);

    CKwMaterial* m_material;
    std::unique_ptr<CKwTable> m_table; // the rows' functions and units, filled from the material
    KwChart* m_chart;
    QLineEdit* m_endurance;
    QLineEdit* m_source;
    QString m_lastMessage;
};

// Opens the S-N curve dialog modal on a material; true when it ended with OK.
KWMFCUI_EXPORT bool KwEditSNCurve(QWidget* parent, CKwMaterial* material, KW_UOM* units,
                                  CFMView* view);
