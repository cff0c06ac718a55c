#pragma once
// The mesh control editor: picks vertices, points, edges or faces and sets the local element
// size or the number of elements along the picked edges. Its logic half is CKwUIMeshControl.
#include "CKwMFCUIBase.h"
#include "CKwUIMeshControl.h"
#include "KwMFCUIExport.h"

class CKwMFCNodeElemSelectionBox;

class KWMFCUI_EXPORT CKwMFCUIMeshControl : public CKwMFCUIBase, public CKwUIMeshControl
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 359;
    // What the box admits: vertices, edges and faces (points with the vertices).
    static constexpr unsigned kFilter = 33278;

    // `picked`, when given, are the entities the user picked before opening: a new control
    // starts with those it can act on.
    CKwMFCUIMeshControl(CFMView* view, const QList<CKwUIEntity*>* picked, CKwMeshLocal* control,
                        KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUIMeshControl() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const { return m_box; }

protected:
    bool OnInitDialog() override;

private:
    CKwMFCNodeElemSelectionBox* m_box = nullptr;
};
