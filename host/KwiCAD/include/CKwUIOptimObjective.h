#pragma once
// Logic of the optimization objective editor: name, ID, goal, response (with the mode of a
// frequency), the target of a target goal in the response's unit, and the normalizing factor.
// The objectives are kept by their optimization study.
#include "CKwFEUIBase.h"
#include "CKwOptimObjective.h"
#include "KwStudyFieldsFwd.h"

#include <memory>

class CKwAnalysis;

class KWICAD_EXPORT CKwUIOptimObjective : public CKwFEUIBase<CKwOptimObjective>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeMode = 3, CodeTarget = 4, CodeTargetUnit = 5,
                CodeNormalization = 6 };
    enum Field { FieldGoal = 1, FieldResponse = 2 };

    CKwUIOptimObjective();
    ~CKwUIOptimObjective() override;

    // The optimization study the objective belongs to; without one nothing can be written.
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

protected:
    std::unique_ptr<CKwOptimObjective> CreateNewObject() override;
    QList<CKwOptimObjective*>* GetModelList() const override;

private:
    const KW_UOM* units() const;
    void loadTargetUnit();
    CKwAnalysis* m_analysis = nullptr;
    struct Readings;
    std::unique_ptr<Readings> m_read;
};
