#pragma once
// Logic of the material editor. It fills the dialog only through control codes (name, ID,
// description, one value edit and one unit label per property key, the extra values and the
// stiffness matrix cells) and takes the type and the sub-choices through the value interface.
// Values travel as text in the view's units ("%.5g") and are kept internally in SI. It
// validates with its own field messages, loads a material from a database file into the edit
// copy (all or nothing) and writes the material into the model on submit.
#include "CKwFEUIBase.h"
#include "CKwMaterial.h"

#include <vector>

class CKwAnalysis;
class KW_UOM;

class KWICAD_EXPORT CKwUIMaterial : public CKwFEUIBase<CKwMaterial>
{
public:
    // Control codes the logic addresses. A dialog without one of these controls refuses the
    // code, and the logic leaves that value alone.
    static constexpr int CodeName = 1, CodeID = 2, CodeDescription = 3;
    static constexpr int CodeValueFirst = 100;     // 100..165: value edit of property key 0..65
    static constexpr int CodeUnitFirst = 200;      // 200..265: unit label of property key 0..65
    static constexpr int CodeExtraFirst = 300;     // 300..: value edit of extra value 0..
    static constexpr int CodeExtraUnitFirst = 350; // 350..: unit label of an extra value
    static constexpr int CodeMatrixFirst = 400;    // 400..420: stiffness matrix, upper triangle
    static constexpr int CodeMatrixUnit = 430;     // unit of the matrix cells
    // Fields of the value interface.
    enum Field { FieldType = 3, FieldFailureTheory = 31, FieldHyperelasticModel = 32,
                 FieldFatigue = 33, FieldPPFA = 34 };

    CKwUIMaterial();
    ~CKwUIMaterial() override;

    // Whether the type list offers a type. Crushable foam, rigid and concrete materials are
    // used by explicit analyses only, so they are offered while explicit analyses are enabled
    // in the tech preview; every other type always.
    static bool IsTypeOffered(int type, bool explicitEnabled);
    // The types the type list shows, row by row: the offered ones in code order (explicit
    // analyses enabled or not as the add-in says), then the stored material's own type when it
    // is not offered, and that of a material read from a file, so that the list shows what is
    // stored or loaded.
    std::vector<int> GetListedTypes() const;
    int GetTypeFromSelection(int row) const override;
    int GetSelectionFromType(int type) const override;

    // The analysis the material is edited for (advisories, fatigue and PPFA messages).
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const;
    const KW_UOM* GetUnits() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;

    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // --- values by key (property keys and extra keys), on the edit copy ---
    // Internal value; MissingDouble when unset or for an unknown key.
    double GetPropertyValue(const QString& key) const;
    bool SetPropertyValue(const QString& key, double internalValue);
    // The value as the dialog shows it ("%.5g" in display units), empty when unset.
    QString GetPropertyText(const QString& key) const;
    // Takes a shown value; an empty text unsets it. False (nothing stored) for an unknown key
    // or a text that is not a number.
    bool SetPropertyText(const QString& key, const QString& text);

    // --- curves and tables of the edit copy (CKwMaterial::Curve) ---
    const KwMaterialCurve& GetCurve(int curve) const;
    void SetCurve(int curve, const KwMaterialCurve& data);

    // The setting a host passes with a hidden request to an open material editor.
    void SetFailureTheorySetting(unsigned option);

    // Reads a database file (dispatch on its extension) and, when it holds a sound material,
    // replaces the values of the edit copy with material `which` of the file, keeping the
    // edit copy's ID. On any failure the edit copy is left as it was, the reason is shown as a
    // bubble error in the view and returned in *error. Refills the controls on success.
    bool LoadMaterialFromFile(const QString& path, int which = 0, QString* error = nullptr);

protected:
    std::unique_ptr<CKwMaterial> CreateNewObject() override;
    QList<CKwMaterial*>* GetModelList() const override;

private:
    // The first control text that was not a number: its code and its text.
    int m_badCode = 0;
    QString m_badText;
    CKwAnalysis* m_analysis = nullptr;
    // The type of the material last read from a file; listed while the editor is open even
    // when the list does not offer it.
    int m_loadedType = -1;
};
