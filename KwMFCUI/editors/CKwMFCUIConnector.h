#pragma once
// The connector editor: rod, cable, spring, bolt or rigid link between the entities picked for
// its two ends, with the material and section values of its kind and its preload; the advanced
// values (tension only, bolt head diameter, friction under the head) are shown or hidden by the
// " >> " / " << " button. Its logic half is CKwUIConnector.
#include "CKwMFCUIBase.h"
#include "CKwUIConnector.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwMFCNodeElemSelectionBox;
class KW_UOM;

namespace Ui {
class CKwMFCUIConnector;
}

class KWMFCUI_EXPORT CKwMFCUIConnector : public CKwMFCUIBase, public CKwUIConnector
{
    Q_OBJECT
public:
    CKwMFCUIConnector(CKwConnector* connector, CFMView* view, KW_UOM* units = nullptr,
                      CKwAnalysis* analysis = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIConnector() override;

    CKwMFCNodeElemSelectionBox* GetEndBox(int end) const;
    bool IsAdvancedShown() const;
    void ToggleAdvancedOptions();
    void OnObjectDataLoaded() override;

protected:
    bool OnInitDialog() override;
    void OnTypeLeaving(int oldType) override;
    void OnTypeChanged(int type) override;
    long OnEntitiesPicked(QList<CKwUIEntity*>* entities) override;

private:
    void refillEnds();

    std::unique_ptr<Ui::CKwMFCUIConnector> m_ui;
};
