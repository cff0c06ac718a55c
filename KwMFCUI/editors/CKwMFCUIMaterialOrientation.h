#pragma once
// The material orientation editor: picks the faces of shell elements and sets the direction
// of the material's first axis from a picked straight edge or from a vector. Its logic half
// is CKwUIMaterialOrientation.
#include "CKwMFCUIBase.h"
#include "CKwUIMaterialOrientation.h"
#include "KwMFCUIExport.h"

class CKwMFCNodeElemSelectionBox;

class KWMFCUI_EXPORT CKwMFCUIMaterialOrientation : public CKwMFCUIBase,
                                                   public CKwUIMaterialOrientation
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 364;
    static constexpr unsigned kFacesFilter = 0x40;
    // The secondary geometry's list takes edges and faces; only a straight edge passes OK.
    static constexpr unsigned kEdgeFilter = 0x50;

    // `property`: the shell property a new orientation is made for (may be null).
    CKwMFCUIMaterialOrientation(CFMView* view, CKwPhysicalProperty* property,
                                CKwMaterialOrient* orientation, KW_UOM* units = nullptr,
                                QWidget* parent = nullptr);
    ~CKwMFCUIMaterialOrientation() override;

    CKwMFCNodeElemSelectionBox* GetFacesBox() const { return m_faces; }
    CKwMFCNodeElemSelectionBox* GetEdgeBox() const { return m_edge; }
    void OnObjectDataLoaded() override;

protected:
    bool OnInitDialog() override;
    long OnEntitiesPicked(QList<CKwUIEntity*>* entities) override;
    long OnEntitiesDropped(QList<CKwUIEntity*>* entities) override;

private:
    void showMethod();
    void followActiveBox();

    CKwMFCNodeElemSelectionBox* m_faces = nullptr;
    CKwMFCNodeElemSelectionBox* m_edge = nullptr;
    QWidget* m_edgePanel = nullptr;
    QWidget* m_vectorPanel = nullptr;
};
