#pragma once
// Logic of the physical property editor: fills the dialog through control codes (name, ID,
// materials, shell thickness in the display length unit, the beam's section name), takes the
// idealization, material and element kind through the value interface, keeps the shell's
// advanced values and the beam's section on the edit copy, validates with its own field
// messages and writes the property into the model on submit.
#include "CKwFEUIBase.h"
#include "CKwPhysicalProperty.h"

#include <array>

class KW_UOM;

class KWICAD_EXPORT CKwUIPhysicalProperty : public CKwFEUIBase<CKwPhysicalProperty>
{
public:
    // Control codes the logic addresses.
    enum Code { CodeName = 1, CodeID = 2, CodeMaterials = 4, CodeThickness = 5, CodeSection = 6 };
    // Fields of the value interface: the idealization (combo row = code), the material (row
    // of the model's material list), the element kind of a line idealization.
    enum Field { FieldType = 3, FieldMaterial = 4, FieldElementKind = 5 };
    // The shell's advanced values.
    enum ShellOption { ShellOffset = 0, ShellBendingRatio = 1, ShellShearRatio = 2,
                       ShellOptionCount = 3 };

    CKwUIPhysicalProperty();
    ~CKwUIPhysicalProperty() override;

    const KW_UOM* GetUnits() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;

    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // The section as the editor shows it: the section's name and its shape ("BOX"), or the
    // shape alone.
    QString GetSectionText() const;
    // The edit copy's section was redefined: its area follows, the section text is refilled,
    // and a section name that no longer describes the section (another shape or other
    // dimensions than it was loaded with) is dropped.
    void OnSectionDefined();

    // A shell option as its edit shows it ("%.10g", the offset in the display length unit).
    QString GetShellOptionText(int which) const;
    static int ShellOptionUnitKind(int which);
    // Takes all three texts or none: false, with the first bad one and why, when a text is
    // not a number or out of range (ratios above zero).
    bool SetShellOptionTexts(const QString (&texts)[ShellOptionCount], int* badIndex = nullptr,
                             QString* why = nullptr);

protected:
    std::unique_ptr<CKwPhysicalProperty> CreateNewObject() override;
    QList<CKwPhysicalProperty*>* GetModelList() const override;

private:
    // The section the name was loaded with.
    struct NamedSection
    {
        int shape = -1;
        std::array<double, 6> a{}, b{};
        int tapered = 0;
        bool operator==(const NamedSection&) const = default;
    };
    static NamedSection sectionOf(const CKwPhysicalProperty& p);
    void dropStaleSectionName();

    bool m_badThickness = false;
    NamedSection m_named;
};
