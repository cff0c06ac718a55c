#pragma once
// The solution frequency editor: name and ID, the method that chooses the frequencies of a
// frequency response, and the method's page (discrete frequencies, a range, points clustered
// between modes, points spread around modes). The pages report their changes as option
// changes; this editor applies them through its logic half, CKwUISolutionFrequency.
#include "CKwMFCUIBase.h"
#include "CKwUISolutionFrequency.h"
#include "KwMFCUIExport.h"

#include <array>
#include <memory>

class CKwFrequencyPage;
class CKwMFCUIDiscreteFrequency;
class KW_UOM;

namespace Ui {
class CKwMFCUISolutionFrequency;
}

class KWMFCUI_EXPORT CKwMFCUISolutionFrequency : public CKwMFCUIBase,
                                                 public CKwUISolutionFrequency
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7015;
    static constexpr int kMethodCombo = 7021;

    // A null entity edits new solution frequencies, which belong to `analysis`.
    CKwMFCUISolutionFrequency(CKwSolutionFrequency* frequencies, CFMView* view, KW_UOM* units,
                              CKwAnalysis* analysis = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUISolutionFrequency() override;

    // The page of a method (CKwSolutionFrequency::Method).
    CKwFrequencyPage* GetPage(int method) const;
    CKwMFCUIDiscreteFrequency* GetDiscretePage() const;

    int SetControlItems(int code, int count, const QString* items) override;
    void SetTextToCurrentLang() override;
    void OnOK() override;

protected:
    long OnOptionChanged(int ctrlId, int value) override;

private:
    std::unique_ptr<Ui::CKwMFCUISolutionFrequency> m_ui;
    std::array<CKwFrequencyPage*, CKwSolutionFrequency::MethodCount> m_pages{};
};
