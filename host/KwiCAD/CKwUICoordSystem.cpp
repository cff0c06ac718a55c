#include "CKwUICoordSystem.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwUIText.h"

#include <QStringList>
#include <algorithm>

using KwUIText::err;
using KwUIText::prop;
using CS = CKwCoordinateSystem;
using U = CKwUICoordSystem;

namespace {

constexpr KwNumberField number(int code, int unitKind, const char* key, const char* english)
{
    return {code, unitKind, "CoordinateSystem", key, english};
}
constexpr int kLen = KwUnitKind::Length;
constexpr int kDir = KwUnitKind::Dimensionless;

constexpr KwNumberField kOrigin[] = {number(U::CodeOriginFirst + 0, kLen, "LabelOriginX", "Origin X"),
                                     number(U::CodeOriginFirst + 1, kLen, "LabelOriginY", "Origin Y"),
                                     number(U::CodeOriginFirst + 2, kLen, "LabelOriginZ", "Origin Z")};
constexpr KwNumberField kZAxis[] = {number(U::CodeZAxisFirst + 0, kDir, "LabelZAxisX", "Z Axis X"),
                                    number(U::CodeZAxisFirst + 1, kDir, "LabelZAxisY", "Z Axis Y"),
                                    number(U::CodeZAxisFirst + 2, kDir, "LabelZAxisZ", "Z Axis Z")};
constexpr KwNumberField kXAxis[] = {number(U::CodeXAxisFirst + 0, kDir, "LabelXAxisX", "X Axis X"),
                                    number(U::CodeXAxisFirst + 1, kDir, "LabelXAxisY", "X Axis Y"),
                                    number(U::CodeXAxisFirst + 2, kDir, "LabelXAxisZ", "X Axis Z")};
constexpr KwNumberField kPoints[3][3] = {
    {number(U::CodePointFirst + 0, kLen, "LabelPointOriginX", "Origin X"),
     number(U::CodePointFirst + 1, kLen, "LabelPointOriginY", "Origin Y"),
     number(U::CodePointFirst + 2, kLen, "LabelPointOriginZ", "Origin Z")},
    {number(U::CodePointFirst + 3, kLen, "LabelPointOnXX", "Point on X Axis X"),
     number(U::CodePointFirst + 4, kLen, "LabelPointOnXY", "Point on X Axis Y"),
     number(U::CodePointFirst + 5, kLen, "LabelPointOnXZ", "Point on X Axis Z")},
    {number(U::CodePointFirst + 6, kLen, "LabelPointInXYX", "Point in XY Plane X"),
     number(U::CodePointFirst + 7, kLen, "LabelPointInXYY", "Point in XY Plane Y"),
     number(U::CodePointFirst + 8, kLen, "LabelPointInXYZ", "Point in XY Plane Z")},
};

// The built-in systems are named in the user's language; the others by their own names.
QString shownName(const QString& name)
{
    static const char* const builtIn[][2] = {{"CoordSysGlobalRectangular", "Global Rectangular"},
                                             {"CoordSysGlobalCylindrical", "Global Cylindrical"},
                                             {"CoordSysGlobalSpherical", "Global Spherical"}};
    for (const auto& b : builtIn)
        if (name == QLatin1String(b[1]))
            return prop("General", b[0], b[1]);
    return name;
}

QString pickedLabel() { return prop("CoordinateSystem", "LabelPointOrVertex", "Point or Vertex"); }

} // namespace

CKwUICoordSystem::CKwUICoordSystem() = default;
CKwUICoordSystem::~CKwUICoordSystem() = default;

const KW_UOM* CKwUICoordSystem::units() const
{
    if (m_units)
        return m_units;
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

bool CKwUICoordSystem::PositionOf(const CKwFEModel* model, const CKwUIEntity* entity, CS::Vec* at)
{
    if (!model || !model->m_mesh || !entity || !at)
        return false;
    const CKwMeshModel& mesh = *model->m_mesh;
    if (entity->GetKind() == CKwUIEntity::Node) {
        const CKwMeshModel::Node* n = mesh.FindNode(entity->GetID());
        if (n)
            *at = {n->x, n->y, n->z};
        return n != nullptr;
    }
    if (entity->GetKind() != CKwUIEntity::Vertex || entity->GetID() < 1 || entity->GetID() > 8)
        return false;
    // The part is the box of the solid elements; vertex i + 1 is its corner i, counted round
    // the bottom and then round the top.
    double lo[3] = {1e300, 1e300, 1e300}, hi[3] = {-1e300, -1e300, -1e300};
    for (std::size_t e = 0; e < mesh.ElementCount(); ++e)
        if (mesh.ElementType(e) == CKwMeshModel::Tet4 || mesh.ElementType(e) == CKwMeshModel::Hex8)
            for (int i : mesh.ElementNodes(e)) {
                const CKwMeshModel::Node& n = mesh.Nodes()[static_cast<std::size_t>(i)];
                const double c[3] = {n.x, n.y, n.z};
                for (int k = 0; k < 3; ++k) {
                    lo[k] = std::min(lo[k], c[k]);
                    hi[k] = std::max(hi[k], c[k]);
                }
            }
    if (lo[0] > hi[0])
        return false;
    const int i = entity->GetID() - 1;
    *at = {(i == 1 || i == 2 || i == 5 || i == 6) ? hi[0] : lo[0],
           (i == 2 || i == 3 || i == 6 || i == 7) ? hi[1] : lo[1], i >= 4 ? hi[2] : lo[2]};
    return true;
}

QList<CKwUIEntity*> CKwUICoordSystem::GetSelectedEntities() const
{
    const CS* c = GetEditObject();
    return c && c->m_pickedPoint ? QList<CKwUIEntity*>{c->m_pickedPoint} : QList<CKwUIEntity*>();
}

QList<CS*>* CKwUICoordSystem::GetModelList() const
{
    return GetModel() ? &GetModel()->m_coordSystems : nullptr;
}

std::unique_ptr<CS> CKwUICoordSystem::CreateNewObject()
{
    const int id = NextFreeID();
    return std::make_unique<CS>(id, QStringLiteral("Coordinate System %1").arg(id));
}

void CKwUICoordSystem::LoadObjectData()
{
    CS* c = GetEditObject();
    if (!c)
        return;
    LoadNameAndID(CodeName, CodeID);
    if (const CKwFEModel* model = GetModel()) {
        QStringList names;
        for (const QString& n : model->m_coordinateSystems)
            names << shownName(n);
        SetControlItems(CodeReferenceItems, static_cast<int>(names.size()), names.constData());
    }
    m_numbers.Begin(units());
    for (int k = 0; k < 3; ++k) {
        const auto i = static_cast<std::size_t>(k);
        m_numbers.Load(*this, kOrigin[k], c->m_origin[i]);
        m_numbers.Load(*this, kZAxis[k], c->m_zAxis[i]);
        m_numbers.Load(*this, kXAxis[k], c->m_xAxis[i]);
        for (int p = 0; p < 3; ++p)
            m_numbers.Load(*this, kPoints[p][k], c->m_points[static_cast<std::size_t>(p)][i]);
    }
    SetControlToolTip(CodeEntities, prop("CoordinateSystem", "LabelSelectPoint",
                                         "Select a point or a vertex"));
    Display(1);
}

void CKwUICoordSystem::UpdateObjectData(bool)
{
    CS* c = GetEditObject();
    if (!c)
        return;
    UpdateNameAndID(CodeName, CodeID);
    m_numbers.Begin(units());
    // Only the fields of the definition in use are read: the others are not shown.
    for (int k = 0; k < 3; ++k) {
        const auto i = static_cast<std::size_t>(k);
        if (c->m_definition == CS::OriginAndAxes) {
            m_numbers.Read(*this, kOrigin[k], &c->m_origin[i]);
            m_numbers.Read(*this, kZAxis[k], &c->m_zAxis[i]);
            m_numbers.Read(*this, kXAxis[k], &c->m_xAxis[i]);
        } else if (c->m_definition == CS::ThreePoints) {
            for (int p = 0; p < 3; ++p)
                m_numbers.Read(*this, kPoints[p][k], &c->m_points[static_cast<std::size_t>(p)][i]);
        }
    }
}

int CKwUICoordSystem::ValidateObjectData()
{
    CS* c = GetEditObject();
    if (!c)
        return 0;
    if (!ValidateNameAndID({"CoordinateSystem", "Enter a name for the coordinate system.",
                            "Another coordinate system already uses this ID."}))
        return 0;
    if (const CKwFEModel* model = GetModel()) {
        const QString own = m_pObject ? m_pObject->GetName() : QString();
        for (const QString& n : model->m_coordinateSystems)
            if (n != own && n.compare(c->GetName(), Qt::CaseInsensitive) == 0) {
                ShowFieldError(prop("General", "LabelName", "Name"),
                               err("CoordinateSystem", "DuplicateName",
                                   "Another coordinate system already has this name."));
                return 0;
            }
        if (m_pObject && c->m_reference >= 0 && c->m_reference < model->m_coordinateSystems.size() &&
            model->m_coordinateSystems.at(c->m_reference) == m_pObject->GetName()) {
            ShowFieldError(prop("CoordinateSystem", "LabelReference", "Reference"),
                           err("CoordinateSystem", "OwnReference",
                               "A coordinate system cannot be its own reference."));
            return 0;
        }
    }
    if (m_numbers.HasError()) {
        ShowFieldError(m_numbers.ErrorLabel(), m_numbers.ErrorMessage());
        return 0;
    }
    // A field left empty has no value a system could be placed by.
    const auto missing = [&](const KwNumberField (&fields)[3], const CS::Vec& v) {
        for (int k = 0; k < 3; ++k)
            if (IsMissingValue(v[static_cast<std::size_t>(k)])) {
                ShowFieldError(KwNumberReader::Label(fields[k]),
                               err("CoordinateSystem", "ValueRequired", "Enter a number."));
                return true;
            }
        return false;
    };
    if (c->m_definition == CS::OriginAndAxes &&
        (missing(kOrigin, c->m_origin) || missing(kZAxis, c->m_zAxis) || missing(kXAxis, c->m_xAxis)))
        return 0;
    if (c->m_definition == CS::ThreePoints)
        for (int p = 0; p < 3; ++p)
            if (missing(kPoints[p], c->m_points[static_cast<std::size_t>(p)]))
                return 0;
    switch (c->ComputeAxes(nullptr, nullptr, nullptr, nullptr)) {
    case CS::Fine: return 1;
    case CS::ZeroDirection: {
        const bool zZero = c->m_zAxis == CS::Vec{0, 0, 0};
        ShowFieldError(prop("CoordinateSystem", zZero ? "LabelZAxis" : "LabelXAxis",
                            zZero ? "Z Axis" : "X Axis"),
                       err("CoordinateSystem", "ZeroDirection",
                           "A direction of zero length cannot define an axis."));
        return 0;
    }
    case CS::ParallelAxes:
        ShowFieldError(prop("CoordinateSystem", "LabelXAxis", "X Axis"),
                       err("CoordinateSystem", "ParallelAxes",
                           "The X axis must not lie along the Z axis."));
        return 0;
    case CS::CollinearPoints:
        ShowFieldError(prop("CoordinateSystem", "LabelPointInXYPlane", "Point in XY Plane"),
                       err("CoordinateSystem", "CollinearPoints",
                           "The three points lie on one line and define no plane."));
        return 0;
    case CS::NoPoint:
        ShowFieldError(pickedLabel(),
                       err("CoordinateSystem", "NoPointSelected", "Select a point or a vertex."));
        return 0;
    }
    return 0;
}

long CKwUICoordSystem::OnSubmitUI()
{
    const QString oldName = m_pObject ? m_pObject->GetName() : QString();
    const long status = CKwFEUIBase<CS>::OnSubmitUI();
    CKwFEModel* model = GetModel();
    if (status != 0 || !model || !m_pObject)
        return status;
    // The other editors offer the system by its name.
    const qsizetype at = oldName.isEmpty() ? -1 : model->m_coordinateSystems.indexOf(oldName);
    if (at >= 0)
        model->m_coordinateSystems[at] = m_pObject->GetName();
    else
        model->m_coordinateSystems.append(m_pObject->GetName());
    return status;
}

void CKwUICoordSystem::Display(int on)
{
    if (m_pView)
        m_pView->SetHighlightedEntities(on ? GetSelectedEntities() : QList<CKwUIEntity*>());
}

QString CKwUICoordSystem::GetPageTitleString() const
{
    return prop("CoordinateSystem", "Title", "Coordinate System");
}

void CKwUICoordSystem::OnSelected(QList<CKwUIEntity*>* entities)
{
    CS* c = GetEditObject();
    if (!c || !entities)
        return;
    bool refused = false;
    for (CKwUIEntity* e : *entities) {
        CS::Vec at{};
        if (!e)
            continue;
        const bool pointKind = e->GetKind() == CKwUIEntity::Vertex || e->GetKind() == CKwUIEntity::Point;
        if (c->m_definition != CS::PickedPoint || !pointKind || !PositionOf(GetModel(), e, &at)) {
            refused = true;
            continue;
        }
        c->m_pickedPoint = e;
        c->m_pickedPosition = at;
    }
    if (refused && m_pView)
        m_pView->ShowBubbleToolTipWarning(
            err("CoordinateSystem", "PickRefused",
                "A coordinate system is placed at a picked point or vertex only when it is "
                "defined by one."),
            0);
    Display(1);
}

void CKwUICoordSystem::OnDeselected(QList<CKwUIEntity*>* entities)
{
    CS* c = GetEditObject();
    if (!c || !entities)
        return;
    if (entities->contains(c->m_pickedPoint))
        c->m_pickedPoint = nullptr;
    Display(1);
}

int CKwUICoordSystem::GetValue(int field, int& value)
{
    const CS* c = GetEditObject();
    if (!c)
        return 0;
    switch (field) {
    case FieldDefinition: value = c->m_definition; return 1;
    case FieldType: value = c->m_type; return 1;
    case FieldReference: value = c->m_reference; return 1;
    default: return 0;
    }
}

int CKwUICoordSystem::SetValue(int field, int value)
{
    CS* c = GetEditObject();
    if (!c)
        return 0;
    switch (field) {
    case FieldDefinition:
        if (value < CS::OriginAndAxes || value > CS::PickedPoint)
            return 0;
        c->m_definition = value;
        return 1;
    case FieldType:
        if (value < CS::Rectangular || value > CS::Spherical)
            return 0;
        c->m_type = value;
        return 1;
    case FieldReference:
        if (value < 0)
            return 0;
        c->m_reference = value;
        return 1;
    default: return 0;
    }
}
