#pragma once
// The constraint editor: picks faces, edges or vertices, sets the constraint type, degrees of
// freedom, temperature, subcases and display options. Its logic half is CKwUIRestraint, which
// fills and reads the controls through the control codes of this editor's table.
#include "CKwMFCUIBase.h"
#include "CKwUIRestraint.h"
#include "KwMFCUIExport.h"

#include <memory>

class CKwSubCase;
class CKwMFCNodeElemSelectionBox;
class KW_UOM;

namespace Ui {
class CKwMFCUIRestraint;
}

class KWMFCUI_EXPORT CKwMFCUIRestraint : public CKwMFCUIBase, public CKwUIRestraint
{
    Q_OBJECT
public:
    // Degree-of-freedom presets as masks over TX TY TZ RX RY RZ (bit 0 = TX).
    enum DofPreset : unsigned { PresetFree = 0x00, PresetFixed = 0x3F, PresetNoTranslation = 0x07,
                                PresetNoRotation = 0x38, SymmetryX = 0x31, SymmetryY = 0x2A,
                                SymmetryZ = 0x1C, AntiSymmetryX = 0x0E, AntiSymmetryY = 0x15,
                                AntiSymmetryZ = 0x23 };

    CKwMFCUIRestraint(CKwRestraint* restraint, CKwSubCase* subcase, int option, CFMView* view,
                      KW_UOM* units = nullptr, CKwAnalysis* analysis = nullptr,
                      QWidget* parent = nullptr);
    ~CKwMFCUIRestraint() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const;
    // The six toggles as a mask (bit 0 = TX).
    unsigned GetDofMask() const;
    unsigned GetColor() const;
    bool AreStructuralMembersShown() const;
    // The resource path of the "Hide Structural Members" toggle's current picture.
    QString GetHideMembersPicture() const;
    int GetOption() const { return m_option; }

    // A check-only update is skipped while "Fix Radial Direction" is clear.
    void UpdateObjectData(bool checkOnly) override;

protected:
    bool OnInitDialog() override;
    void OnTypeChanged(int type) override;

private:
    void applyDofMask(unsigned mask);
    void OnHideStructuralMembers(bool shown) override;

    std::unique_ptr<Ui::CKwMFCUIRestraint> m_ui;
    int m_option;
};
