#pragma once
// The mesh convergence plot: one module-wide window that shows how a result value settles as
// the mesh is refined, one point per solution step. The host fills it through
// CallKwDialogFunction(89, ...) with the records of KwConvergenceData.h.
#include "CKwMFCDialog.h"
#include "KwConvergenceData.h"

#include <memory>

class KwConvergenceChart;

namespace Ui {
class CKwMFCUIMeshConvergencePlot;
}

class KWMFCUI_EXPORT CKwMFCUIMeshConvergencePlot : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7335;

    explicit CKwMFCUIMeshConvergencePlot(CFMView* view = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIMeshConvergencePlot() override;

    void SetTextToCurrentLang() override;

    // Function 3: `value` becomes the stored result value; `point` (may be null) is added.
    void AddPoint(int value, const KwConvergencePoint* point);
    // Function 9: the host's list replaces everything shown. A null list changes nothing.
    void ReplaceData(const KwConvergenceData* data);
    // Function 10: stored value 0, no points; the host's list (if given) is emptied too.
    void ClearData(KwConvergenceData* data);
    // Function 11.
    int GetResultValue() const { return m_nResultValue; }

    // Function 1: the window goes; the object stays until the host deletes it and keeps
    // taking calls (points, stored value), only without showing itself.
    void DestroyPlotWindow();
    bool IsPlotWindowDestroyed() const { return m_bWindowDestroyed; }
    // Launch kind 89 on a destroyed plot: the window is made again for the same object.
    void RecreateWindow();
    void ShowPlot();

    KwConvergenceChart* Chart() const;

protected:
    bool OnInitDialog() override;
    void reject() override;
    void closeEvent(QCloseEvent* event) override;

private:
    void updateLatest();

    std::unique_ptr<Ui::CKwMFCUIMeshConvergencePlot> m_ui;
    int m_nResultValue = 0;
    bool m_bWindowDestroyed = false;
};
