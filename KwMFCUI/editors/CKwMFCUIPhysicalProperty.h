#pragma once
// The physical property editor: name, ID, idealization (solid, shell or beam) with a panel per
// idealization, the material; a shell's thickness in the current length unit and its advanced
// options page; a beam's element kind and its cross section, defined in the cross-section
// dialog on a copy. Its logic half is CKwUIPhysicalProperty, which fills and reads the controls
// through this editor's control codes.
#include "CKwMFCDialog.h"
#include "CKwMFCUIBase.h"
#include "CKwUIPhysicalProperty.h"
#include "KwMFCUIExport.h"

#include <memory>

class KW_UOM;

namespace Ui {
class CKwMFCUIPhysicalProperty;
class CKwMFCUIShellPropertyAdvancedOptions;
}

class KWMFCUI_EXPORT CKwMFCUIPhysicalProperty : public CKwMFCUIBase, public CKwUIPhysicalProperty
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 367;

    // `option` 0..2 gives a new property its idealization; -1 (an existing property) or any
    // other value leaves it.
    CKwMFCUIPhysicalProperty(CFMView* view, CKwPhysicalProperty* property, KW_UOM* units,
                             int option = -1, QWidget* parent = nullptr);
    ~CKwMFCUIPhysicalProperty() override;

    // The cross-section definition on the edit copy (the dialog works on its own clone; only
    // its OK changes the edit copy). Returns the dialog's result.
    int DefineCrossSection();
    // The shell's advanced options page (modal). Returns its result.
    int OpenShellAdvancedOptions();

protected:
    bool OnInitDialog() override;

private:
    std::unique_ptr<Ui::CKwMFCUIPhysicalProperty> m_ui;
};

// The shell's advanced options: the reference surface's offset and the bending and transverse
// shear stiffness ratios. It reads its owner's edit copy and writes all three values back
// through the owner on OK, or none when one of them is refused.
class KWMFCUI_EXPORT CKwMFCUIShellPropertyAdvancedOptions : public CKwMFCDialog
{
    Q_OBJECT
public:
    static constexpr unsigned kTemplateId = 7284;

    CKwMFCUIShellPropertyAdvancedOptions(CKwUIPhysicalProperty* owner, CFMView* view,
                                         const KW_UOM* units, QWidget* parent = nullptr);
    ~CKwMFCUIShellPropertyAdvancedOptions() override;

    void SetTextToCurrentLang() override;
    void OnOK() override;

protected:
    bool OnInitDialog() override;

private:
    std::unique_ptr<Ui::CKwMFCUIShellPropertyAdvancedOptions> m_ui;
    CKwUIPhysicalProperty* m_owner;
    const KW_UOM* m_units;
};
