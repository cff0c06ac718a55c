#pragma once
// Logic of the damping editor: name and ID, the structural damping G in per cent, Rayleigh
// ALPHA and BETA, and modal damping over frequency from a frequency table of the model. The
// tables it defines or edits through its editor go back to what they were when it is cancelled.
#include "CKwDynamicsSetup.h"
#include "CKwFEUIBase.h"
#include "KwSetupNumbers.h"

class CKwTable;

class KWICAD_EXPORT CKwUIDamping : public CKwFEUIBase<CKwDamping>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeStructuralG = 3, CodeAlpha = 4, CodeBeta = 5,
                CodeTables = 6 };
    // Value interface: modal damping on/off, the table's row in the table list.
    enum Field { FieldModal = 7, FieldTable = 8 };

    CKwUIDamping();
    ~CKwUIDamping() override;

    // The analysis a new damping belongs to.
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

    // The table list again (after a table was defined).
    void LoadTableItems();
    // The modal damping table, null when it is not in the model (any more).
    CKwTable* GetModalTable() const;
    // Before the table dialog writes into the modal table: kept for cancel. False, with the
    // field message, when the table is gone.
    bool PrepareTableEdit();
    // A new empty frequency table for the modal damping, kept as the damping's table when
    // `keep`, else removed again. Returns its id (0: none).
    int AddModalTable();
    void FinishNewTable(int id, bool keep);

protected:
    std::unique_ptr<CKwDamping> CreateNewObject() override;
    QList<CKwDamping*>* GetModelList() const override;

private:
    CKwAnalysis* m_analysis = nullptr;
    KwSetupNumbers<CKwDamping> m_numbers;
    KwTableChoice m_tables;
};
