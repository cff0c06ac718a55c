#pragma once
// Logic of the coordinate system editor: type, reference system, the definition (origin and
// axes, three points, or a picked point or vertex) with its coordinates in the display units,
// the checks (a direction of zero length, X along Z, three points on one line, a system as its
// own reference, a name another system has) and the model's list of systems, whose names the
// other editors offer.
#include "CKwCoordinateSystem.h"
#include "CKwFEUIBase.h"
#include "KwEditorNumbers.h"

class CKwFEModel;
class KW_UOM;

class KWICAD_EXPORT CKwUICoordSystem : public CKwFEUIBase<CKwCoordinateSystem>
{
public:
    enum Code { CodeName = 1, CodeID = 2, CodeOriginFirst = 3, CodeZAxisFirst = 6,
                CodeXAxisFirst = 9, CodeEntities = 18, CodeReferenceItems = 19,
                CodePointFirst = 22 }; // point p, coordinate k: CodePointFirst + 3 p + k
    // The definition drives the panels; type and reference are combo rows.
    enum Field { FieldDefinition = 3, FieldType = 4, FieldReference = 5 };

    CKwUICoordSystem();
    ~CKwUICoordSystem() override;

    void SetUnits(const KW_UOM* units) { m_units = units; }
    // Where a vertex (a corner of the part's solid mesh) or a mesh node lies; false for other
    // entities.
    static bool PositionOf(const CKwFEModel* model, const CKwUIEntity* entity,
                           CKwCoordinateSystem::Vec* at);

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    long OnSubmitUI() override;
    void Display(int on) override;
    QString GetPageTitleString() const override;
    void OnSelected(QList<CKwUIEntity*>* entities) override;
    void OnDeselected(QList<CKwUIEntity*>* entities) override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    QList<CKwUIEntity*> GetSelectedEntities() const override;

protected:
    std::unique_ptr<CKwCoordinateSystem> CreateNewObject() override;
    QList<CKwCoordinateSystem*>* GetModelList() const override;

private:
    const KW_UOM* units() const;

    const KW_UOM* m_units = nullptr;
    KwNumberReader m_numbers;
};
