#pragma once
// Logic of the design variable editor: name, ID, the property and which of its sizes varies
// (a shell's thickness or a beam section's dimension), the lower and upper bounds, the initial
// value and the step, all lengths. The variables are kept by their optimization study.
#include "CKwFEUIBase.h"
#include "CKwOptimVariable.h"
#include "KwStudyFieldsFwd.h"

#include <QStringList>
#include <memory>

class CKwAnalysis;
class CKwPhysicalProperty;

class KWICAD_EXPORT CKwUIOptimVariable : public CKwFEUIBase<CKwOptimVariable>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeProperties = 3, CodeParameters = 4,
                CodeLower = 5, CodeUpper = 6, CodeInitial = 7, CodeStep = 8, CodeUnitFirst = 10 };
    // The four length fields' unit labels are CodeUnitFirst + 0..3.
    enum Field { FieldProperty = 1, FieldParameter = 2 };

    CKwUIOptimVariable();
    ~CKwUIOptimVariable() override;

    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }

    // The properties offered (shells and beams of the model), in the order of the list.
    QList<CKwPhysicalProperty*> CandidateProperties() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

protected:
    std::unique_ptr<CKwOptimVariable> CreateNewObject() override;
    QList<CKwOptimVariable*>* GetModelList() const override;

private:
    const KW_UOM* units() const;
    CKwPhysicalProperty* property() const;
    void loadParameters();
    // A fresh choice of size starts from the property's current value.
    void seedFromProperty();

    CKwAnalysis* m_analysis = nullptr;
    std::unique_ptr<KwStudyFields::Reader> m_reader;
};
