#pragma once
// Logic of the "Check Mesh Quality" editor: the quality checks of the mesh, per element family
// (a flag and a limit each) as the editor's controls, validation of the limits, and the run that writes
// them into the mesh and measures it with the results logic. The edit copy holds the
// parameters only: the nodes and elements of the mesh are never copied.
#include "CKwFEUIBase.h"
#include "CKwMeshModel.h"
#include "CKwUIMeshQualityResults.h"

class KW_UOM;

class KWICAD_EXPORT CKwUIMeshQuality : public CKwFEUIBase<CKwMeshModel>
{
public:
    // Control codes: the limit edit of check c is CodeLimitFirst + c, its unit label
    // CodeUnitFirst + c (c as CKwMeshModel::QualityCheck).
    enum Code { CodeLimitFirst = 100, CodeUnitFirst = 200 };
    // Fields of the value interface: the flag of check c is FieldCheckFirst + c.
    enum Field { FieldCheckFirst = 1 };
    // What a run found: checked (the results are ready), refused (a message was shown).
    enum RunStatus { RunChecked = 0, RunRefused = 1 };

    CKwUIMeshQuality();
    ~CKwUIMeshQuality() override;

    // Hides the family's OnCreate: `mesh` is edited in place of a copy of it.
    void OnCreate(CFMView* view, CKwMeshModel* mesh, CKwSubCase* subcase);
    void SetUnits(const KW_UOM* units) { m_units = units; }

    // The unit kind of a check's limit: angles for skew and warping, none otherwise.
    static int UnitKindOf(CKwMeshModel::QualityCheck check);
    // Whether a check fails below its limit (the Jacobian) rather than above it.
    static bool FailsBelow(CKwMeshModel::QualityCheck check);
    // The language triple of a check's field, as messages name it ("Quadrilateral Skew").
    static QString FieldName(CKwMeshModel::QualityCheck check);

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override;
    void UpdateEditObject() override;
    void AddNewObjects() override {}
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;

    // OK: the limits go into the mesh and the check runs (RunCheck).
    long OnSubmitUI() override;
    // Reads and validates the controls, writes the parameters into the mesh and measures it.
    // The results are then in GetResults(); an empty mesh is reported with a message.
    RunStatus RunCheck();
    CKwUIMeshQualityResults& GetResults() { return m_results; }
    // True when the last run found no shell or solid element to measure.
    bool WasMeshEmpty() const { return m_meshEmpty; }

protected:
    std::unique_ptr<CKwMeshModel> CreateNewObject() override;

private:
    const KW_UOM* units() const;
    static void copyParams(const CKwMeshModel& from, CKwMeshModel& to);

    const KW_UOM* m_units = nullptr;
    CKwUIMeshQualityResults m_results;
    // Per check: 0 read, a KW_UOM parse status, or why a number was refused.
    enum { BadNegative = -1, BadAboveOne = -2 };
    int m_readStatus[CKwMeshModel::QualityCheckCount] = {};
    bool m_meshEmpty = false;
};
