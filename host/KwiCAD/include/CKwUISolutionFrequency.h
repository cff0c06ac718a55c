#pragma once
// Logic of the solution frequency editor: name and ID, and how the frequencies of a frequency
// response are chosen, one method at a time, each with its own fields: a list of discrete
// frequencies; a range in increments, evenly or logarithmically spaced; points clustered
// between the natural frequencies of a band; points spread around each natural frequency of
// a band. Only the chosen method's fields are checked and matter to the solver.
#include "CKwDynamicsSetup.h"
#include "CKwFEUIBase.h"
#include "KwSetupNumbers.h"

#include <QStringList>

class KWICAD_EXPORT CKwUISolutionFrequency : public CKwFEUIBase<CKwSolutionFrequency>
{
public:
    enum Code {
        CodeName = 1,
        CodeID = 2,
        CodeDiscrete = 3, // the list of discrete frequencies (items)
        CodeRangeStart = 10,
        CodeRangeEnd = 11,
        CodeRangeIncrements = 12,
        CodeClusterLow = 20,
        CodeClusterHigh = 21,
        CodeClusterPoints = 22,
        CodeClusterBias = 23,
        CodeSpreadLow = 30,
        CodeSpreadHigh = 31,
        CodeSpreadPercent = 32,
        CodeSpreadPoints = 33,
    };
    // Value interface: the method (the editor's type), the range's spacing.
    enum Field { FieldMethod = 4, FieldSpacing = 5 };

    CKwUISolutionFrequency();
    ~CKwUISolutionFrequency() override;

    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }
    const KW_UOM* GetUnits() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // The discrete frequencies as the list shows them, and the list's texts as typed: each
    // text a number in the display frequency unit; an empty row is skipped.
    QStringList GetDiscreteTexts() const;
    void SetDiscreteTexts(const QStringList& texts);

protected:
    std::unique_ptr<CKwSolutionFrequency> CreateNewObject() override;
    QList<CKwSolutionFrequency*>* GetModelList() const override;

private:
    bool validateDiscrete();
    bool validateBand(int lowCode, int highCode);

    CKwAnalysis* m_analysis = nullptr;
    KwSetupNumbers<CKwSolutionFrequency> m_numbers;
    // The first row of the typed list that is no number (-1: none).
    int m_badDiscreteRow = -1;
};
