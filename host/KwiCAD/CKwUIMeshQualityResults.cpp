#include "CKwUIMeshQualityResults.h"

#include "CFMView.h"
#include "KW_UOM.h"

#include <charconv>
#include <cmath>

using namespace KwMeshQuality;

namespace {

using QC = CKwMeshModel::QualityCheck;
constexpr QC kNone = CKwMeshModel::QualityCheckCount;

// Which parameter rules each measure of each family (rows: no family, then the families in
// KwMeshQuality::Family order; columns: aspect ratio, skew, warping, taper, Jacobian).
constexpr QC kRule[FamilyCount][MeasureCount] = {
    {kNone, kNone, kNone, kNone, kNone},
    {CKwMeshModel::TriaAspectRatio, CKwMeshModel::TriaSkew, kNone, kNone,
     CKwMeshModel::TriaJacobian},
    {CKwMeshModel::QuadAspectRatio, CKwMeshModel::QuadSkew, CKwMeshModel::QuadWarpage,
     CKwMeshModel::QuadTaper, CKwMeshModel::QuadJacobian},
    {CKwMeshModel::TetAspectRatio, CKwMeshModel::TetSkew, kNone, kNone,
     CKwMeshModel::TetJacobian},
    {CKwMeshModel::HexAspectRatio, CKwMeshModel::HexSkew, CKwMeshModel::HexWarpage,
     CKwMeshModel::HexTaper, CKwMeshModel::HexJacobian},
    {CKwMeshModel::WedgeAspectRatio, CKwMeshModel::WedgeSkew, CKwMeshModel::WedgeWarpage,
     CKwMeshModel::WedgeTaper, CKwMeshModel::WedgeJacobian},
    {CKwMeshModel::PyramidAspectRatio, CKwMeshModel::PyramidSkew, CKwMeshModel::PyramidWarpage,
     CKwMeshModel::PyramidTaper, CKwMeshModel::PyramidJacobian},
};

double angleScale(const KW_UOM* units)
{
    if (!units)
        return 180.0 / 3.14159265358979323846;
    return units->GetDisplayValue(1.0, KwUnitKind::Angle) -
           units->GetDisplayValue(0.0, KwUnitKind::Angle);
}

// The comparison itself, with the value already in the unit of its limit.
inline bool fails(int measure, double shown, double limit)
{
    if (std::isnan(shown))
        return false;
    if (std::isinf(shown))
        return true;
    return FailsBelow(measure) ? shown < limit : shown > limit;
}

} // namespace

CKwUIMeshQualityResults::CKwUIMeshQualityResults() = default;
CKwUIMeshQualityResults::~CKwUIMeshQualityResults() = default;

int CKwUIMeshQualityResults::FamilyOf(int elementType)
{
    // Parabolic elements belong to the family of their linear form: they are measured on
    // their corners.
    switch (CKwMeshModel::LinearType(elementType)) {
    case CKwMeshModel::Tri3: return Triangle;
    case CKwMeshModel::Quad4: return Quadrilateral;
    case CKwMeshModel::Tet4: return Tetrahedron;
    case CKwMeshModel::Hex8: return Hexahedron;
    case CKwMeshModel::Wedge6: return Wedge;
    case CKwMeshModel::Pyr5: return Pyramid;
    }
    return NoFamily;
}

CKwMeshModel::QualityCheck CKwUIMeshQualityResults::CheckFor(int family, int measure)
{
    if (family < 0 || family >= FamilyCount || measure < 0 || measure >= MeasureCount)
        return kNone;
    return kRule[family][measure];
}

double CKwUIMeshQualityResults::LimitValue(float limit)
{
    // The shortest decimal that reads back as the same float is the number that was typed.
    char buf[32];
    const auto w = std::to_chars(buf, buf + sizeof buf, limit);
    double v = static_cast<double>(limit);
    if (w.ec == std::errc())
        std::from_chars(buf, w.ptr, v);
    return v;
}

bool CKwUIMeshQualityResults::FailsCheck(const CKwMeshModel& mesh, const KW_UOM* units,
                                         int family, int measure, double value)
{
    const double shown = IsAngle(measure) && std::isfinite(value) ? value * angleScale(units)
                                                                  : value;
    return FailsShownValue(mesh, family, measure, shown);
}

bool CKwUIMeshQualityResults::FailsShownValue(const CKwMeshModel& mesh, int family,
                                              int measure, double shown)
{
    const QC check = CheckFor(family, measure);
    if (check == kNone || !mesh.GetQualityCheck(check))
        return false;
    return fails(measure, shown, LimitValue(mesh.GetQualityLimit(check)));
}

void CKwUIMeshQualityResults::CheckMeshQuality(const CKwMeshModel* mesh, const KW_UOM* units)
{
    m_failed.clear();
    m_checked = 0;
    m_parabolic = 0;
    m_unchecked = 0;
    m_pCheckedMesh = mesh;
    m_builtGroupId = 0;
    if (!mesh)
        return;
    // The rules as flat arrays: whether each measure is checked, its limit, its unit scale.
    bool on[FamilyCount][MeasureCount] = {};
    double limit[FamilyCount][MeasureCount] = {};
    const double aScale = angleScale(units);
    for (int f = 1; f < FamilyCount; ++f)
        for (int m = 0; m < MeasureCount; ++m)
            if (kRule[f][m] != kNone) {
                on[f][m] = mesh->GetQualityCheck(kRule[f][m]);
                limit[f][m] = LimitValue(mesh->GetQualityLimit(kRule[f][m]));
            }
    const auto& nodes = mesh->Nodes();
    const std::size_t n = mesh->ElementCount();
    double out[MeasureCount];
    const double* pts[8];
    for (std::size_t i = 0; i < n; ++i) {
        const int type = mesh->ElementType(i);
        const int family = FamilyOf(type);
        if (family == NoFamily) {
            ++m_unchecked;
            continue;
        }
        ++m_checked;
        // The corners come first in every element's nodes; mid-side nodes play no part.
        const auto conn = mesh->ElementNodes(i);
        const std::size_t corners = static_cast<std::size_t>(CKwMeshModel::CornerCount(type));
        if (corners < conn.size())
            ++m_parabolic;
        for (std::size_t k = 0; k < corners && k < conn.size(); ++k)
            pts[k] = &nodes[static_cast<std::size_t>(conn[k])].x;
        MeasureFamily(family, pts, out);
        bool failed = false;
        for (int m = 0; m < MeasureCount && !failed; ++m)
            if (on[family][m]) {
                const double v = IsAngle(m) && std::isfinite(out[m]) ? out[m] * aScale : out[m];
                failed = fails(m, v, limit[family][m]);
            }
        if (!failed)
            continue;
        FailedElement row;
        row.id = mesh->ElementID(i);
        row.family = static_cast<unsigned char>(family);
        for (int m = 0; m < MeasureCount; ++m)
            row.value[m] = out[m];
        m_failed.push_back(row);
    }
}

void CKwUIMeshQualityResults::TakeResults(CKwUIMeshQualityResults& other)
{
    m_failed.swap(other.m_failed);
    m_checked = other.m_checked;
    m_parabolic = other.m_parabolic;
    m_unchecked = other.m_unchecked;
    m_pCheckedMesh = other.m_pCheckedMesh;
    m_builtGroupId = 0;
}

int CKwUIMeshQualityResults::GetGroupCounter() const
{
    return m_pCheckedMesh ? m_pCheckedMesh->GetGroupCounter() : 1;
}

bool CKwUIMeshQualityResults::SetPendingGroup(bool create, const QString& name)
{
    const bool changed = create != m_pendingCreate || name != m_pendingName;
    m_pendingCreate = create;
    m_pendingName = name;
    return changed;
}

CKwUIMeshQualityResults::GroupStatus CKwUIMeshQualityResults::BuildGroups(CKwMeshModel* mesh)
{
    if (!m_pendingCreate || !mesh || m_builtGroupId != 0)
        return m_builtGroupId != 0 ? GroupBuilt : GroupNone;
    const QString name = m_pendingName.trimmed();
    if (name.isEmpty())
        return GroupNameEmpty;
    if (mesh->FindGroup(name))
        return GroupNameUsed;
    if (m_failed.empty())
        return GroupNothingFailed;
    std::vector<int> ids;
    ids.reserve(m_failed.size());
    for (const FailedElement& f : m_failed)
        ids.push_back(f.id);
    m_builtGroupId = mesh->AddElementGroup(name, ids);
    return m_builtGroupId != 0 ? GroupBuilt : GroupNothingFailed;
}

void CKwUIMeshQualityResults::HighlightFailedElements(CFMView* view) const
{
    if (!view)
        return;
    std::vector<int> ids;
    ids.reserve(m_failed.size());
    for (const FailedElement& f : m_failed)
        ids.push_back(f.id);
    view->SetHighlightedMesh(CFMView::HighlightElements, std::move(ids));
}
