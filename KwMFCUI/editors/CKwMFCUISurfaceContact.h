#pragma once
// The surface contact editor: master and slave entities picked into two lists (a click into a
// list makes it the target of picks), the contact kind, friction for separating contacts, and
// the contact parameters page. Its logic half is CKwUISurfaceContact.
#include "CKwMFCDialog.h"
#include "CKwMFCUIBase.h"
#include "CKwUISurfaceContact.h"
#include "KwMFCUIExport.h"

class CKwMFCNodeElemSelectionBox;

class KWMFCUI_EXPORT CKwMFCUISurfaceContact : public CKwMFCUIBase, public CKwUISurfaceContact
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 360;
    // Faces and edges on both sides.
    static constexpr unsigned kFilter = 0x50;
    static constexpr int kKindCombo = 7762;
    static constexpr int kParametersButton = 7769;

    // `option`: the kind a new contact starts with.
    CKwMFCUISurfaceContact(CFMView* view, CKwSurfaceContact* contact, CKwAnalysis* analysis,
                           int option, KW_UOM* units = nullptr, QWidget* parent = nullptr);
    ~CKwMFCUISurfaceContact() override;

    CKwMFCNodeElemSelectionBox* GetBox(Side side) const { return side == Master ? m_master : m_slave; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }
    void OnObjectDataLoaded() override;
    // The contact parameters page (modal); its OK writes into the edit copy.
    int OpenContactParameters();

protected:
    bool OnInitDialog() override;
    long OnEntitiesPicked(QList<CKwUIEntity*>* entities) override;
    long OnEntitiesDropped(QList<CKwUIEntity*>* entities) override;

private:
    void syncFriction();
    void followActiveBox();

    CKwMFCNodeElemSelectionBox* m_master = nullptr;
    CKwMFCNodeElemSelectionBox* m_slave = nullptr;
    CKwAnalysis* m_analysis = nullptr;
};

// The contact parameters of a surface contact: penetration tolerance, stiffness factor and
// search distance, taken all together or not at all.
class KWMFCUI_EXPORT CKwMFCUIContactParameters : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7239;
    static constexpr int kEditFirst = 7782; // 7782, 7784, 7786

    CKwMFCUIContactParameters(CKwUISurfaceContact* owner, CFMView* view, const KW_UOM* units,
                              QWidget* parent = nullptr);
    ~CKwMFCUIContactParameters() override;

    void SetTextToCurrentLang() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;

private:
    CKwUISurfaceContact* m_owner;
    const KW_UOM* m_units;
};
