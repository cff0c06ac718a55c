#pragma once
// "Reverse Line Element Direction": beam directions as arrows; picked edges with beams, or beam elements, are turned round on OK (end releases swap ends with their beams). Cancel leaves the mesh as it was. Its logic half is CKwUIReverseLineElementDirection.
#include "CKwMFCUIBase.h"
#include "CKwUIReverseLineElementDirection.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwMFCNodeElemSelectionBox;

namespace Ui {
class CKwMFCUIReverseLineElementDirection;
}

class KWMFCUI_EXPORT CKwMFCUIReverseLineElementDirection : public CKwMFCUIBase, public CKwUIReverseLineElementDirection
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7042;
    // Faces (or edges), elements and groups of elements.
    static constexpr unsigned kFilter = 0x8210;

    CKwMFCUIReverseLineElementDirection(CFMView* view, CKwMeshModel* mesh, QWidget* parent = nullptr);
    ~CKwMFCUIReverseLineElementDirection() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const;

protected:
    bool OnInitDialog() override;
    // The list shows only what the logic took: other elements and geometry are dropped again.
    long OnEntitiesPicked(QList<CKwUIEntity*>* entities) override;

private:
    std::unique_ptr<Ui::CKwMFCUIReverseLineElementDirection> m_ui;
};
