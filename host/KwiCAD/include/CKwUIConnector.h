#pragma once
// Logic of the connector editor: the connector kind, the entities of its two ends (a pick goes
// to the end that is the pick target), the material and section values of the kind, preload
// and the advanced values, in the display units; the checks (both ends, no entity at both ends,
// kinds of pick the connector takes, a section value above zero, a material for the kinds made
// of one) and the model's list of connectors.
#include "CKwConnector.h"
#include "CKwFEUIBase.h"
#include "KwEditorNumbers.h"

class CKwAnalysis;
class KW_UOM;

class KWICAD_EXPORT CKwUIConnector : public CKwFEUIBase<CKwConnector>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeArea = 3, CodeStiffness = 4, CodeDiameter = 5,
                CodePreload = 6, CodeHeadDiameter = 7, CodeFriction = 8, CodeMaterialItems = 9,
                CodeEnd1 = 18, CodeEnd2 = 19 };
    enum Field { FieldType = 3, FieldMaterial = 4, FieldTensionOnly = 5, FieldPickTarget = 6 };

    CKwUIConnector();
    ~CKwUIConnector() override;

    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override;
    void SetUnits(const KW_UOM* units) { m_units = units; }

    // Whether an end of a connector of `type` may be an entity of `kind` (CKwUIEntity::Kind).
    static bool Admits(int type, int kind);
    // The pick filter of a connector type's ends.
    static unsigned FilterOf(int type);
    // Which end (1 or 2) the next pick goes to.
    int GetPickTarget() const { return m_pickTarget; }

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    // Both ends, end 1 first.
    QList<CKwUIEntity*> GetSelectedEntities() const override;

protected:
    std::unique_ptr<CKwConnector> CreateNewObject() override;
    QList<CKwConnector*>* GetModelList() const override;

private:
    const KW_UOM* units() const;

    CKwAnalysis* m_analysis = nullptr;
    const KW_UOM* m_units = nullptr;
    KwNumberReader m_numbers;
    int m_pickTarget = 1;
};
