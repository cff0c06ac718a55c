#pragma once
// The modal setup editor: how many modes a modal analysis looks for, optionally only inside a
// frequency band, and how their shapes are normalised. Its logic half is CKwUIModalSetup.
#include "CKwMFCUIBase.h"
#include "CKwUIModalSetup.h"
#include "KwMFCUIExport.h"

#include <memory>

class KW_UOM;

namespace Ui {
class CKwMFCUIModalSetup;
}

class KWMFCUI_EXPORT CKwMFCUIModalSetup : public CKwMFCUIBase, public CKwUIModalSetup
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7007;
    enum ControlId { kModes = 7710, kUseBand = 7712, kLower = 7713, kUpper = 7715,
                     kNormalizeMass = 7718 };

    // `setup` null: a new setup for `analysis`, which keeps it on OK.
    CKwMFCUIModalSetup(CKwModalSetup* setup, CKwAnalysis* analysis, CFMView* view,
                       KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIModalSetup() override;

    void OnObjectDataLoaded() override;

protected:
    bool OnInitDialog() override;

private:
    void syncBand();

    std::unique_ptr<Ui::CKwMFCUIModalSetup> m_ui;
};
