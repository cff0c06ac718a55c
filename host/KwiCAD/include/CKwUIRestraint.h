#pragma once
// Logic of the constraint editor: fills the dialog through control codes (name, ID,
// coordinate systems, subcases, temperature, colour), takes the type, degrees of freedom and
// display settings through the value interface, validates with its own messages and writes
// the constraint into the model.
#include "CKwFEUIBase.h"
#include "CKwRestraint.h"

class CKwAnalysis;

class KWICAD_EXPORT CKwUIRestraint : public CKwFEUIBase<CKwRestraint>
{
public:
    // Control codes the logic addresses.
    enum Code { CodeName = 1, CodeID = 2, CodeCoordSystems = 4, CodeTemperature = 11,
                CodeSubcaseItems = 13, CodeSubcaseSelection = 14, CodeEntities = 18,
                CodeColor = 21 };
    // Fields of the value interface.
    enum Field { FieldType = 3, FieldCoordSystem = 4, FieldDofFirst = 5, // 5..10: TX..RZ
                 FieldPinFirst = 11,                                     // 11..13
                 FieldSize = 15, FieldDensity = 16, FieldColor = 17 };

    CKwUIRestraint();
    ~CKwUIRestraint() override;

    // The analysis whose subcases are offered and whose type decides what is compatible.
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;

    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    void SetListValue(int code, const QList<int>& values) override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // The type combo lists the types in another order than their codes.
    int GetTypeFromSelection(int index) const override;
    int GetSelectionFromType(int type) const override;
    QList<CKwUIEntity*> GetSelectedEntities() const override;
    // Pin and frictionless constraints act on faces only.
    int ValidateCoordSysForPinAndFrictionlessConstraint();
    void UpdateConstraintEntities(QList<CKwUIEntity*>* entities);
    void UpdateListOfHiddenSolids();
    void DeleteRestraintDrawList();
    int GetDrawListResets() const { return m_drawListResets; }
    int GetDisplayCalls() const { return m_displayCalls; }

protected:
    std::unique_ptr<CKwRestraint> CreateNewObject() override;
    QList<CKwRestraint*>* GetModelList() const override;

private:
    CKwAnalysis* m_analysis = nullptr;
    int m_drawListResets = 0;
    int m_displayCalls = 0;
};
