#include "CKwUIMeshQuality.h"

#include "CFMView.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwUIText.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

using Q = CKwMeshModel::QualityCheck;

using KwUIText::prop;

QString err(const char* key, const char* english)
{
    return KwUIText::err("MeshQuality", key, english);
}

// Family and measure caption of each check (the failed-elements window's column keys).
struct CheckText
{
    const char* familyKey;
    const char* family;
    const char* measureKey;
    const char* measure;
};
constexpr CheckText kCheckTexts[CKwMeshModel::QualityCheckCount] = {
    {"GroupQuadrilaterals", "Quadrilaterals", "LabelAspectRatio", "Aspect Ratio"},
    {"GroupQuadrilaterals", "Quadrilaterals", "LabelSkew", "Skew"},
    {"GroupQuadrilaterals", "Quadrilaterals", "LabelWarping", "Warping"},
    {"GroupQuadrilaterals", "Quadrilaterals", "LabelTaper", "Taper"},
    {"GroupQuadrilaterals", "Quadrilaterals", "LabelJacobian", "Jacobian"},
    {"GroupTriangles", "Triangles", "LabelAspectRatio", "Aspect Ratio"},
    {"GroupTriangles", "Triangles", "LabelSkew", "Skew"},
    {"GroupTriangles", "Triangles", "LabelJacobian", "Jacobian"},
    {"GroupTetrahedra", "Tetrahedra", "LabelAspectRatio", "Aspect Ratio"},
    {"GroupTetrahedra", "Tetrahedra", "LabelSkew", "Skew"},
    {"GroupTetrahedra", "Tetrahedra", "LabelJacobian", "Jacobian"},
    {"GroupHexahedra", "Hexahedra", "LabelAspectRatio", "Aspect Ratio"},
    {"GroupHexahedra", "Hexahedra", "LabelSkew", "Skew"},
    {"GroupHexahedra", "Hexahedra", "LabelWarping", "Warping"},
    {"GroupHexahedra", "Hexahedra", "LabelTaper", "Taper"},
    {"GroupHexahedra", "Hexahedra", "LabelJacobian", "Jacobian"},
    {"GroupWedges", "Wedges", "LabelAspectRatio", "Aspect Ratio"},
    {"GroupWedges", "Wedges", "LabelSkew", "Skew"},
    {"GroupWedges", "Wedges", "LabelWarping", "Warping"},
    {"GroupWedges", "Wedges", "LabelTaper", "Taper"},
    {"GroupWedges", "Wedges", "LabelJacobian", "Jacobian"},
    {"GroupPyramids", "Pyramids", "LabelAspectRatio", "Aspect Ratio"},
    {"GroupPyramids", "Pyramids", "LabelSkew", "Skew"},
    {"GroupPyramids", "Pyramids", "LabelWarping", "Warping"},
    {"GroupPyramids", "Pyramids", "LabelTaper", "Taper"},
    {"GroupPyramids", "Pyramids", "LabelJacobian", "Jacobian"},
};

// A limit is a float: its shortest text of at most ten digits that reads back as the same
// float, so that a typed 184220.5 shows as typed and 1e-7 does not show its float's tail.
QString limitText(float limit)
{
    const double v = static_cast<double>(limit);
    for (int digits = 6; digits < 10; ++digits) {
        const QString text = QString::asprintf("%.*g", digits, v);
        if (static_cast<float>(text.toDouble()) == limit)
            return text;
    }
    return QString::asprintf("%.10g", v);
}

} // namespace

CKwUIMeshQuality::CKwUIMeshQuality() = default;
CKwUIMeshQuality::~CKwUIMeshQuality() = default;

void CKwUIMeshQuality::OnCreate(CFMView* view, CKwMeshModel* mesh, CKwSubCase* subcase)
{
    SetView(view);
    m_pObject = mesh;
    m_pSubCase = subcase;
    m_edit = CreateNewObject();
    m_upToDate = true;
}

std::unique_ptr<CKwMeshModel> CKwUIMeshQuality::CreateNewObject()
{
    auto params = std::make_unique<CKwMeshModel>();
    if (m_pObject)
        copyParams(*m_pObject, *params);
    return params;
}

void CKwUIMeshQuality::copyParams(const CKwMeshModel& from, CKwMeshModel& to)
{
    for (int c = 0; c < CKwMeshModel::QualityCheckCount; ++c) {
        const auto check = static_cast<Q>(c);
        to.SetQualityCheck(check, from.GetQualityCheck(check));
        to.SetQualityLimit(check, from.GetQualityLimit(check));
    }
}

void CKwUIMeshQuality::UpdateEditObject()
{
    if (m_pObject && m_edit)
        copyParams(*m_pObject, *m_edit);
}

const KW_UOM* CKwUIMeshQuality::units() const
{
    if (m_units)
        return m_units;
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

// The measure a check limits, found through the family rules of the results logic.
static int measureOf(Q check)
{
    for (int f = 1; f < KwMeshQuality::FamilyCount; ++f)
        for (int m = 0; m < KwMeshQuality::MeasureCount; ++m)
            if (CKwUIMeshQualityResults::CheckFor(f, m) == check)
                return m;
    return -1;
}

int CKwUIMeshQuality::UnitKindOf(Q check)
{
    const int m = measureOf(check);
    return m >= 0 && KwMeshQuality::IsAngle(m) ? KwUnitKind::Angle : KwUnitKind::Dimensionless;
}

bool CKwUIMeshQuality::FailsBelow(Q check)
{
    const int m = measureOf(check);
    return m >= 0 && KwMeshQuality::FailsBelow(m);
}

QString CKwUIMeshQuality::FieldName(Q check)
{
    if (check < 0 || check >= CKwMeshModel::QualityCheckCount)
        return QString();
    const CheckText& t = kCheckTexts[check];
    return QStringLiteral("%1 (%2)").arg(prop("MeshQuality", t.measureKey, t.measure),
                                         prop("MeshQuality", t.familyKey, t.family));
}

QString CKwUIMeshQuality::GetPageTitleString() const
{
    return prop("MeshQuality", "TitleCheckMeshQuality", "Check Mesh Quality");
}

void CKwUIMeshQuality::LoadObjectData()
{
    const CKwMeshModel* p = GetEditObject();
    if (!p)
        return;
    const KW_UOM* u = units();
    for (int c = 0; c < CKwMeshModel::QualityCheckCount; ++c) {
        const auto check = static_cast<Q>(c);
        SetControlText(CodeLimitFirst + c, limitText(p->GetQualityLimit(check)));
        // Angle limits are numbers in the display angle unit; the label says which.
        SetControlText(CodeUnitFirst + c,
                       u ? u->GetUnits(UnitKindOf(check))
                         : (UnitKindOf(check) == KwUnitKind::Angle ? QString(QChar(0x00B0))
                                                                   : QString()));
        SetControlToolTip(CodeLimitFirst + c,
                          FailsBelow(check)
                              ? prop("MeshQuality", "ToolTipFailsBelow",
                                     "An element fails when its value is below this limit.")
                              : prop("MeshQuality", "ToolTipFailsAbove",
                                     "An element fails when its value is above this limit."));
    }
    std::fill(std::begin(m_readStatus), std::end(m_readStatus), 0);
}

void CKwUIMeshQuality::UpdateObjectData(bool)
{
    CKwMeshModel* p = GetEditObject();
    if (!p)
        return;
    const KW_UOM si;
    const KW_UOM* u = units() ? units() : &si;
    for (int c = 0; c < CKwMeshModel::QualityCheckCount; ++c) {
        const auto check = static_cast<Q>(c);
        m_readStatus[c] = 0;
        QString text;
        if (!GetControlText(CodeLimitFirst + c, text)
            || KwEntityLogic::ShowsUnchanged(text, limitText(p->GetQualityLimit(check))))
            continue;
        const int kind = UnitKindOf(check);
        int status = KW_UOM::ParseOk;
        const double internal = u->ParseQuantity(text, kind, &status);
        // The limit keeps the display unit's number: angles go back from radians.
        const double shown = status == KW_UOM::ParseOk ? u->GetDisplayValue(internal, kind) : 0.0;
        const bool fits = std::fabs(shown) <= std::numeric_limits<float>::max();
        if (status != KW_UOM::ParseOk)
            m_readStatus[c] = status;
        else if (!fits)
            m_readStatus[c] = KW_UOM::ParseOutOfRange;
        else if (shown < 0)
            m_readStatus[c] = BadNegative;
        else if (FailsBelow(check) && shown > 1.0)
            m_readStatus[c] = BadAboveOne;
        // Only a good limit reaches the edit copy; validation names a bad one's field.
        if (m_readStatus[c] == 0)
            p->SetQualityLimit(check, static_cast<float>(shown));
    }
}

int CKwUIMeshQuality::ValidateObjectData()
{
    const CKwMeshModel* p = GetEditObject();
    if (!p)
        return 0;
    const KW_UOM si;
    const KW_UOM* u = units() ? units() : &si;
    bool anyOn = false;
    for (int c = 0; c < CKwMeshModel::QualityCheckCount; ++c) {
        const auto check = static_cast<Q>(c);
        // A switched-off check's limit plays no part; it keeps its last good value.
        if (!p->GetQualityCheck(check))
            continue;
        anyOn = true;
        const int status = m_readStatus[c];
        if (status == BadNegative) {
            ShowFieldError(FieldName(check), err("LimitNegative", "Enter a limit of 0 or more."));
            return 0;
        }
        if (status == BadAboveOne) {
            ShowFieldError(FieldName(check),
                           err("JacobianLimitAboveOne",
                               "Enter a limit from 0 to 1: no element's Jacobian is above 1."));
            return 0;
        }
        if (status != 0) {
            const QString unit = u->GetUnits(UnitKindOf(check));
            ShowFieldError(FieldName(check),
                           unit.isEmpty() ? err("LimitNumberRequired", "Enter a number.")
                                          : err("LimitNumberRequiredUnit", "Enter a number in %s.")
                                                .replace(QStringLiteral("%s"), unit));
            return 0;
        }
    }
    if (!anyOn) {
        ShowFieldError(GetPageTitleString(),
                       err("NoCheckSelected", "Switch on at least one check."));
        return 0;
    }
    return 1;
}

CKwUIMeshQuality::RunStatus CKwUIMeshQuality::RunCheck()
{
    CKwMeshModel* mesh = GetObject();
    if (!mesh || !m_edit)
        return RunRefused;
    UpdateObjectData(false);
    if (!ValidateObjectData())
        return RunRefused;
    copyParams(*m_edit, *mesh);
    m_results.CheckMeshQuality(mesh, units());
    m_meshEmpty = m_results.GetCheckedElementCount() == 0;
    if (m_meshEmpty)
        ShowFieldError(
            GetPageTitleString(),
            err("MeshEmpty", "The mesh has no shell or solid elements to check."));
    return RunChecked;
}

long CKwUIMeshQuality::OnSubmitUI()
{
    if (RunCheck() != RunChecked)
        return 1;
    Display(0);
    return 0;
}

int CKwUIMeshQuality::GetValue(int field, int& value)
{
    const CKwMeshModel* p = GetEditObject();
    const int c = field - FieldCheckFirst;
    if (!p || c < 0 || c >= CKwMeshModel::QualityCheckCount)
        return 0;
    value = p->GetQualityCheck(static_cast<Q>(c)) ? 1 : 0;
    return 1;
}

int CKwUIMeshQuality::SetValue(int field, int value)
{
    CKwMeshModel* p = GetEditObject();
    const int c = field - FieldCheckFirst;
    if (!p || c < 0 || c >= CKwMeshModel::QualityCheckCount)
        return 0;
    p->SetQualityCheck(static_cast<Q>(c), value != 0);
    return 1;
}
