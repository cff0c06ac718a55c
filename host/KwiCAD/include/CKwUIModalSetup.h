#pragma once
// Logic of the modal setup editor: the number of modes, the optional frequency band and the
// normalisation of the mode shapes of one modal analysis.
#include "CKwFEUIBase.h"
#include "CKwModalSetup.h"

class CKwAnalysis;

class KWICAD_EXPORT CKwUIModalSetup : public CKwFEUIBase<CKwModalSetup>
{
public:
    enum Code { CodeModes = 1, CodeLower = 2, CodeUpper = 3 };
    enum Field { FieldUseBand = 1, FieldNormalization = 2 };

    CKwUIModalSetup();
    ~CKwUIModalSetup() override;

    // The analysis a new setup goes into on OK.
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void AddNewObjects() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

protected:
    std::unique_ptr<CKwModalSetup> CreateNewObject() override;

private:
    const KW_UOM* units() const;

    CKwAnalysis* m_analysis = nullptr;
    // Per code: why its text was refused (KwSetupReaders::Reason, 0 read).
    int m_modesStatus = 0;
    int m_lowerStatus = 0;
    int m_upperStatus = 0;
};
