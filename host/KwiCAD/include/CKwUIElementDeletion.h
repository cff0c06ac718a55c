#pragma once
// Logic of the element deletion editor: the explicit analysis it belongs to, and per physical
// property of the model the deletion criteria (equivalent plastic strain, maximum principal
// stress in the display stress unit, time in the display time unit), each switched on or off.
// The dialog shows one property at a time; changing the property keeps what was typed for
// the one before.
#include "CKwElementDeletion.h"
#include "CKwFEUIBase.h"

class KWICAD_EXPORT CKwUIElementDeletion : public CKwFEUIBase<CKwElementDeletion>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeProperties = 4, CodeAnalysis = 5,
                CodeLimitFirst = 6 }; // 6..8: the limits in criterion order
    enum Field { FieldProperty = 3, FieldOnFirst = 4 }; // 4..6: the criteria's switches

    CKwUIElementDeletion();
    ~CKwUIElementDeletion() override;

    // The analysis a new deletion belongs to (null: the model's first explicit one).
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override;
    static int UnitKindOf(int criterion);

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    int GetPropertyRow() const { return m_row; }

protected:
    std::unique_ptr<CKwElementDeletion> CreateNewObject() override;
    QList<CKwElementDeletion*>* GetModelList() const override;

private:
    int propertyIdAt(int row) const;
    CKwElementDeletion::PropertyCriteria& current();
    void loadLimits();

    CKwAnalysis* m_analysis = nullptr;
    int m_row = 0;
    int m_badProperty = 0; // the property whose limit text is no number (0: none)
    int m_badCriterion = -1;
};
