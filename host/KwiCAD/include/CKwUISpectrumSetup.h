#pragma once
// Logic of the spectrum setup editor: name and ID, the frequency table that holds the spectrum
// (chosen, edited or defined anew through the editor), what the spectrum gives (acceleration,
// velocity, displacement), the direction of excitation, how the modal responses combine, the
// damping ratio of the spectrum in per cent and a scale factor. A table deleted meanwhile is
// named in a field message and nothing is written.
#include "CKwDynamicsSetup.h"
#include "CKwFEUIBase.h"
#include "KwSetupNumbers.h"

class CKwTable;

class KWICAD_EXPORT CKwUISpectrumSetup : public CKwFEUIBase<CKwSpectrumSetup>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeTables = 3, CodeDamping = 4, CodeScale = 5 };
    // Value interface: the table's row, the spectrum kind, the direction, the combination.
    enum Field { FieldTable = 6, FieldKind = 7, FieldDirection = 8, FieldCombination = 9 };

    CKwUISpectrumSetup();
    ~CKwUISpectrumSetup() override;

    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }
    const KW_UOM* GetUnits() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    long OnSubmitUI() override;
    long OnCancelUI() override;

    void LoadTableItems();
    // The spectrum's table, null when it is not in the model (any more).
    CKwTable* GetSpectrumTable() const;
    // Before the table dialog writes into the spectrum's table: kept for cancel. False, with
    // the field message, when the table is gone.
    bool PrepareTableEdit();
    // A new empty frequency table; FinishNewTable keeps it as the spectrum or removes it.
    int AddSpectrumTable();
    void FinishNewTable(int id, bool keep);
    // The table list's row that stands for "New Table".
    bool IsNewTableRow(int row) const { return m_tables.IdAt(row) < 0; }

protected:
    std::unique_ptr<CKwSpectrumSetup> CreateNewObject() override;
    QList<CKwSpectrumSetup*>* GetModelList() const override;

private:
    void reportMissingTable();

    CKwAnalysis* m_analysis = nullptr;
    KwSetupNumbers<CKwSpectrumSetup> m_numbers;
    KwTableChoice m_tables;
};
