#pragma once
// The concentrated mass editor: a point mass on a picked point or vertex with its mass,
// moments of inertia and offset, or an automatic mass standing in for a picked body. Its logic
// half is CKwUIConMass.
#include "CKwMFCUIBase.h"
#include "CKwUIConMass.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwMFCNodeElemSelectionBox;
class KW_UOM;

namespace Ui {
class CKwMFCUIConMass;
}

class KWMFCUI_EXPORT CKwMFCUIConMass : public CKwMFCUIBase, public CKwUIConMass
{
    Q_OBJECT
public:
    CKwMFCUIConMass(CKwConMass* mass, CFMView* view, KW_UOM* units = nullptr,
                    CKwAnalysis* analysis = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIConMass() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const;

protected:
    bool OnInitDialog() override;
    void OnTypeLeaving(int oldType) override;
    int OnTypeRowChosen(int row) override;
    void OnTypeChanged(int type) override;

private:
    std::unique_ptr<Ui::CKwMFCUIConMass> m_ui;
};
