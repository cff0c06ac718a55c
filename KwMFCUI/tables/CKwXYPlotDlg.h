#pragma once
// The XY plot window: one module-wide window that shows a host XY plot (its series, axis
// captions and units) and takes values while a solver runs. LaunchDialog kind 39 opens it on
// a plot (reusing the open one), kind 40 hands it one KwXYPlotValue.
#include "CKwMFCDialog.h"
#include "KwModuleWindows.h"

class CKwXYPlot;
class KW_UOM;
class KwChart;

class KWMFCUI_EXPORT CKwXYPlotDlg : public CKwMFCDialog, public CKwXYPlotLink
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7440;
    enum ControlId {
        IDC_CHART = 7441,
        IDC_RESET_ZOOM = 7442,
        IDC_EXPORT_PNG = 7443,
        IDC_EXPORT_CSV = 7444,
        IDC_BUTTON_CLOSE = 7445,
    };

    explicit CKwXYPlotDlg(QWidget* parent = nullptr);
    ~CKwXYPlotDlg() override;

    // The open window, or null.
    static CKwXYPlotDlg* GetXYPlotDlg() { return m_XYPlotDlg; }
    static CKwXYPlotDlg* m_XYPlotDlg;

    using CKwMFCDialog::Create;
    // Shows `plot` (not owned; may be null for an empty window); registers the window as the
    // module's one XY plot.
    bool Create(CKwXYPlot* plot, KW_UOM* units = nullptr);
    // Another plot in the same window.
    void SetPlot(CKwXYPlot* plot, KW_UOM* units = nullptr);
    CKwXYPlot* GetPlot() const { return m_pPlot; }

    // Kind 40: `series` points at a KwXYPlotValue; the value joins the plot and the chart.
    void AddValueAndUpdate(void* series) override;

    void SetTextToCurrentLang() override;
    KwChart* Chart() const { return m_chart; }
    void OnExportPng();
    void OnExportCsv();

protected:
    bool OnInitDialog() override;

private:
    void reload();
    // The plot keeps internal values; the chart shows them in the window's units.
    double display(double v, int unitType) const;

    KwChart* m_chart;
    CKwXYPlot* m_pPlot = nullptr;
    KW_UOM* m_pUnits = nullptr;
};
