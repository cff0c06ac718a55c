#pragma once
// The nonlinear setup editor: static or transient solution, large displacements, follower
// forces, increments (time steps with their increment) and output, and the button that opens
// the nonlinear parameters of the same setup. Its logic half is CKwUINonlinearSetup.
#include "CKwMFCUIBase.h"
#include "CKwUINonlinearSetup.h"
#include "KwMFCUIExport.h"

#include <memory>

class KW_UOM;

namespace Ui {
class CKwMFCUINonlinearSetup;
}

class KWMFCUI_EXPORT CKwMFCUINonlinearSetup : public CKwMFCUIBase, public CKwUINonlinearSetup
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7217;
    enum ControlId { kStatic = 7731, kTransient = 7732, kLargeDisplacement = 7733,
                     kFollowerForces = 7734, kIncrements = 7735, kTimeIncrement = 7737,
                     kOutputEvery = 7739, kParameters = 7741 };

    CKwMFCUINonlinearSetup(CKwNonlinearSetup* setup, CFMView* view, KW_UOM* units = nullptr,
                           QWidget* parent = nullptr);
    ~CKwMFCUINonlinearSetup() override;

    // "Nonlinear Parameters...": the parameters dialog on this editor's copy of the setup, so
    // that OK here writes them with the rest and Cancel drops them.
    void OnParameters();

    void OnObjectDataLoaded() override;
    void SetTextToCurrentLang() override;

protected:
    bool OnInitDialog() override;

private:
    void syncSolution();

    std::unique_ptr<Ui::CKwMFCUINonlinearSetup> m_ui;
};
