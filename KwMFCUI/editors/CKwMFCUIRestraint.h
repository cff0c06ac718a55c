#pragma once
// The constraint editor: picks faces, edges or vertices, sets the constraint type, degrees of
// freedom, temperature, subcases and display options. Its logic half is CKwUIRestraint, which
// fills and reads the controls through the control codes of this editor's table.
#include "CKwMFCUIBase.h"
#include "CKwUIRestraint.h"
#include "KwMFCUIExport.h"

#include <array>
#include <memory>

class CKwSubCase;
class CKwMFCNodeElemSelectionBox;
class KW_UOM;
class QToolButton;

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

    void SetTextToCurrentLang() override;

    CKwMFCNodeElemSelectionBox* GetSelectionBox() const;
    // The six toggles as a mask (bit 0 = TX).
    unsigned GetDofMask() const;
    unsigned GetColor() const;
    bool AreStructuralMembersShown() const { return m_bMembersShown; }
    // The resource path of the "Hide Structural Members" toggle's current picture.
    QString GetHideMembersPicture() const { return m_membersPicture; }
    int GetOption() const { return m_option; }

protected:
    bool OnInitDialog() override;

private:
    void fillTypeCombo();
    void selectTypeFromEntity();
    void OnTypeSelChange(int row);
    void switchPanels(int type);
    void handOverSubcases();
    void showDof();
    void applyDofMask(unsigned mask);
    void OnHideStructuralMembers();
    void applyMembersState();
    void OnColorClicked();
    QString temperatureLabel() const;

    std::unique_ptr<Ui::CKwMFCUIRestraint> m_ui;
    std::array<QToolButton*, 6> m_dofToggles{};
    KW_UOM* m_units;
    int m_option;
    bool m_bMembersShown = true;
    QString m_membersPicture;
};
