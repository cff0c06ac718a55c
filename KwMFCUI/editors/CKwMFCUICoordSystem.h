#pragma once
// The coordinate system editor: rectangular, cylindrical or spherical, its reference system,
// and its placement by origin and axes, by three points or at a picked point or vertex. Its
// logic half is CKwUICoordSystem.
#include "CKwMFCUIBase.h"
#include "CKwUICoordSystem.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwMFCNodeElemSelectionBox;
class KW_UOM;

namespace Ui {
class CKwMFCUICoordSystem;
}

class KWMFCUI_EXPORT CKwMFCUICoordSystem : public CKwMFCUIBase, public CKwUICoordSystem
{
    Q_OBJECT
public:
    CKwMFCUICoordSystem(CKwCoordinateSystem* system, CFMView* view, KW_UOM* units = nullptr,
                        QWidget* parent = nullptr);
    ~CKwMFCUICoordSystem() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const;

protected:
    bool OnInitDialog() override;
    void OnTypeLeaving(int oldDefinition) override;
    long OnEntitiesPicked(QList<CKwUIEntity*>* entities) override;

private:
    std::unique_ptr<Ui::CKwMFCUICoordSystem> m_ui;
};
