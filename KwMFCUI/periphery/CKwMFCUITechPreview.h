#pragma once
// The tech preview switches: features that are not final yet, off unless the user turns them
// on. "Enable Explicit Analyses" decides what the add-in answers for explicit analyses.
#include "CKwMFCDialog.h"

#include <memory>

namespace Ui {
class CKwMFCUITechPreview;
}

class KWMFCUI_EXPORT CKwMFCUITechPreview : public CKwMFCDialog
{
    Q_OBJECT
public:
    explicit CKwMFCUITechPreview(CFMView* view = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUITechPreview() override;
    void SetTextToCurrentLang() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;

private:
    std::unique_ptr<Ui::CKwMFCUITechPreview> m_ui;
};
