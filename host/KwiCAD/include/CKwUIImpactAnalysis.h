#pragma once
// Logic of the impact editor: the projectile's translation vector (X, Y, Z), its initial
// velocity and the gravity acceleration along that vector, the target (a face of the model,
// picked in the view or chosen from the list, or a rigid plane at a distance) and the
// duration of the event. The impact belongs to its explicit dynamics analysis.
#include "CKwFEUIBase.h"
#include "CKwImpactWizard.h"
#include "KwStudyFieldsFwd.h"

#include <memory>

class CKwAnalysis;
class CKwUIEntity;

class KWICAD_EXPORT CKwUIImpactAnalysis : public CKwFEUIBase<CKwImpactWizard>
{
public:
    enum Code { CodeName = 1, CodeTranslationFirst = 2, // 2..4: X, Y, Z
                CodeVelocity = 5, CodeAcceleration = 6, CodeFaces = 7, CodePlaneDistance = 8,
                CodeDuration = 9, CodeUnitFirst = 20 }; // unit labels: CodeUnitFirst + Unit
    enum Unit { UnitTranslation = 0, UnitVelocity = 1, UnitAcceleration = 2, UnitPlane = 3,
                UnitDuration = 4, UnitCount = 5 };
    enum Field { FieldTarget = 1, FieldFace = 2 };

    CKwUIImpactAnalysis();
    ~CKwUIImpactAnalysis() override;

    // The analysis the impact belongs to: an existing impact's owner, or the one a new impact
    // is written into.
    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }
    // The model's faces in the order of the face list.
    QList<CKwUIEntity*> TargetFaces() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    // A new impact becomes its analysis's impact (replacing an earlier one).
    void AddNewObjects() override;
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    // A face picked in the view becomes the target.
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    QList<CKwUIEntity*> GetSelectedEntities() const override;
    void Display(int on) override;

protected:
    std::unique_ptr<CKwImpactWizard> CreateNewObject() override;

private:
    const KW_UOM* units() const;
    CKwAnalysis* m_analysis = nullptr;
    std::unique_ptr<KwStudyFields::Reader> m_reader;
};
