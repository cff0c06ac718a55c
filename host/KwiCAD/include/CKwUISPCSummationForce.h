#pragma once
// Logic of the reaction sum: for a subcase with results, the sum of the reaction forces at the
// nodes of the picked constrained entities and their moment about an origin (typed, a picked
// vertex or node, or the centroid of the summed nodes). Nothing of the subcase is written; the
// sums are recomputed whenever the subcase, the entities or the origin change.
#include "CKwFEUIBase.h"
#include "CKwSubCase.h"
#include "KwReactionSum.h"

#include <QStringList>

struct KwResultSet;

class KWICAD_EXPORT CKwUISPCSummationForce : public CKwFEUIBase<CKwSubCase>
{
public:
    enum Code {
        CodeSubcases = 1, // items: the subcases with results
        CodeOriginX = 2,  // typed origin, display length
        CodeOriginY = 3,
        CodeOriginZ = 4,
        CodeForceX = 5, // sums, display force and moment
        CodeForceY = 6,
        CodeForceZ = 7,
        CodeMomentX = 8,
        CodeMomentY = 9,
        CodeMomentZ = 10,
        CodeNodes = 11, // what was summed, or why nothing was
    };
    // Value interface: the subcase's row, the origin (Origin).
    enum Field { FieldSubcase = 20, FieldOrigin = 21 };
    enum Origin { OriginTyped = 0, OriginPicked = 1, OriginCentroid = 2 };

    CKwUISPCSummationForce();
    ~CKwUISPCSummationForce() override;

    void SetAnalysis(CKwAnalysis* analysis) { m_analysis = analysis; }
    CKwAnalysis* GetAnalysis() const override { return m_analysis; }
    const KW_UOM* GetUnits() const;

    void LoadObjectData() override;
    void UpdateObjectData(bool checkOnly) override;
    int ValidateObjectData() override { return 1; }
    QString GetPageTitleString() const override;
    int GetValue(int field, int& value) override;
    int SetValue(int field, int value) override;
    // Closing writes nothing.
    long OnSubmitUI() override { return 0; }
    long OnCancelUI() override { return 0; }

    // The constrained entities summed and the entity the origin is taken from.
    void SetSummedEntities(const QList<CKwUIEntity*>& entities);
    const QList<CKwUIEntity*>& GetSummedEntities() const { return m_entities; }
    void SetOriginEntity(CKwUIEntity* entity);
    // The typed origin (m), as the dialog reads it from its fields.
    void SetTypedOrigin(const std::array<double, 3>& origin);
    QList<CKwUIEntity*> GetSelectedEntities() const override { return m_entities; }

    // The result set of the chosen subcase: the last of its step (its converged end).
    const KwResultSet* CurrentSet() const;
    // Recomputes the sums and shows them; false (fields emptied, the reason shown) when there
    // is nothing to sum or the typed origin is no point.
    bool Calculate();
    const KwReactionSum& GetSum() const { return m_sum; }

protected:
    std::unique_ptr<CKwSubCase> CreateNewObject() override;

private:
    QList<const CKwSubCase*> subcasesWithResults() const;
    void showSum(bool valid, const QString& note);

    CKwAnalysis* m_analysis = nullptr;
    int m_origin = OriginTyped;
    int m_row = 0;
    std::array<double, 3> m_typed{};
    QList<CKwUIEntity*> m_entities;
    CKwUIEntity* m_originEntity = nullptr;
    KwReactionSum m_sum;
};
