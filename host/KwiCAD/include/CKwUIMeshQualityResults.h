#pragma once
// Results logic of a mesh quality check: measures the shells and solids of a mesh (parabolic
// ones on their corners), counts the elements no measure applies to (beams), keeps the
// elements that fail an active check (one flat record each),
// and gathers them into an element group or highlights them in the view. The failed-elements
// window is built on top of it.
#include "CKwMeshModel.h"
#include "KwMeshQuality.h"
#include "KwiCADExport.h"

#include <QString>
#include <vector>

class CFMView;
class KW_UOM;

class KWICAD_EXPORT CKwUIMeshQualityResults
{
public:
    // One failed element: the five measures as measured (NaN where a measure does not apply;
    // angles in radians), its id and family.
    struct FailedElement
    {
        double value[KwMeshQuality::MeasureCount];
        int id;
        unsigned char family;
    };

    CKwUIMeshQualityResults();
    virtual ~CKwUIMeshQualityResults();

    // Measures every shell and solid element and keeps those that fail an active check.
    // Angles are compared in the display angle unit of `units` (degrees without units).
    void CheckMeshQuality(const CKwMeshModel* mesh, const KW_UOM* units);
    // Takes over another check's results (the window shows a check run elsewhere).
    void TakeResults(CKwUIMeshQualityResults& other);
    const std::vector<FailedElement>& GetFailedElements() const { return m_failed; }
    std::size_t GetCheckedElementCount() const { return m_checked; }
    // Of the checked elements, the parabolic ones (measured on their corner nodes).
    std::size_t GetParabolicElementCount() const { return m_parabolic; }
    // Elements of no family the check measures (beams): not checked, counted.
    std::size_t GetUncheckedElementCount() const { return m_unchecked; }

    // The parameter that rules a measure of a family, or QualityCheckCount when none does.
    static CKwMeshModel::QualityCheck CheckFor(int family, int measure);
    // Whether a value fails its check: the check is on, and the value (converted to the
    // display angle unit for angles) is above the limit, or below it for the Jacobian.
    // Equal passes. A value that could not be measured (infinite) fails an active check; NaN
    // (not applicable) never fails.
    static bool FailsCheck(const CKwMeshModel& mesh, const KW_UOM* units, int family,
                           int measure, double value);
    // The same rule for a value already in the unit of its limit (the number a cell shows).
    static bool FailsShownValue(const CKwMeshModel& mesh, int family, int measure,
                                double shown);
    // A limit as the number it stands for: the shortest decimal that is stored as this float
    // (0.6f stands for 0.6, not for 0.60000002384). Every comparison uses it, so a measured
    // 0.6 passes a limit of 0.6 whether it is read from the cell or compared as measured.
    static double LimitValue(float limit);
    static int FamilyOf(int elementType);

    // --- element groups ---
    // The number the next group's default name carries (Group1, Group2, ...).
    int GetGroupCounter() const;
    // Settings the window hands over on OK. Returns true when they differ from the pending
    // ones (the pending group then has to be built afresh).
    bool SetPendingGroup(bool create, const QString& name);
    bool IsGroupPending() const { return m_pendingCreate; }
    QString GetPendingGroupName() const { return m_pendingName; }
    // Forgets the group built for the current settings.
    void ResetPendingGroup() { m_builtGroupId = 0; }
    int GetBuiltGroupId() const { return m_builtGroupId; }
    enum GroupStatus { GroupNone = 0, GroupBuilt = 1, GroupNameEmpty = -1, GroupNameUsed = -2,
                       GroupNothingFailed = -3 };
    // Builds the pending group from the failed elements, once per settings; nothing is built
    // when the settings ask for no group or the name is empty or taken.
    GroupStatus BuildGroups(CKwMeshModel* mesh);

    // Shows the failed elements highlighted in the view.
    void HighlightFailedElements(CFMView* view) const;

protected:
    const CKwMeshModel* m_pCheckedMesh = nullptr;

private:
    std::vector<FailedElement> m_failed;
    std::size_t m_checked = 0;
    std::size_t m_parabolic = 0;
    std::size_t m_unchecked = 0;
    bool m_pendingCreate = false;
    QString m_pendingName;
    int m_builtGroupId = 0;
};
