#pragma once
// Logic of the concentrated mass editor: the picked point, vertex or body, the mass, its
// moments of inertia and offset in the display units, the checks (a positive mass, no negative
// inertia, no automatic mass in a part document) and the model's list of masses.
#include "CKwConMass.h"
#include "CKwFEUIBase.h"
#include "KwEditorNumbers.h"

class CKwAnalysis;
class CKwFEModel;
class KW_UOM;

class KWICAD_EXPORT CKwUIConMass : public CKwFEUIBase<CKwConMass>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeMass = 3, CodeInertiaFirst = 4, // 4..6
                CodeOffsetFirst = 7,                                           // 7..9
                CodeEntities = 18 };
    enum Field { FieldType = 3 };

    CKwUIConMass();
    ~CKwUIConMass() override;

    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override;
    // Values are shown in these units; without them in the view's, else SI.
    void SetUnits(const KW_UOM* units) { m_units = units; }

    // A model whose geometry holds a single body is a part document: there is no other body
    // an automatic mass could stand in for.
    static bool IsPartDocument(const CKwFEModel* model);
    // Whether a mass of `type` may sit on an entity of `kind` (CKwUIEntity::Kind).
    static bool Admits(int type, int kind);

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    int GetValue(int field, int& value) override;
    // A type change drops the picks the new type does not take.
    int SetValue(int field, int value) override;
    QList<CKwUIEntity*> GetSelectedEntities() const override;

protected:
    std::unique_ptr<CKwConMass> CreateNewObject() override;
    QList<CKwConMass*>* GetModelList() const override;

private:
    const KW_UOM* units() const;

    CKwAnalysis* m_analysis = nullptr;
    const KW_UOM* m_units = nullptr;
    KwNumberReader m_numbers;
};
