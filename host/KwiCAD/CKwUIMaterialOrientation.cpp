#include "CKwUIMaterialOrientation.h"

#include "CKwFEModel.h"
#include "CKwPhysicalProperty.h"
#include "CKwUIEntity.h"
#include "KwEntityPicks.h"
#include "KwTypedNumbers.h"
#include "KwUIText.h"

#include <cmath>

using KwUIText::err;
using KwUIText::prop;

namespace {
constexpr int kVectorCodes[3] = {CKwUIMaterialOrientation::CodeVectorX,
                                 CKwUIMaterialOrientation::CodeVectorY,
                                 CKwUIMaterialOrientation::CodeVectorZ};
}

CKwUIMaterialOrientation::CKwUIMaterialOrientation() = default;
CKwUIMaterialOrientation::~CKwUIMaterialOrientation() = default;

QList<CKwMaterialOrient*>* CKwUIMaterialOrientation::GetModelList() const
{
    return GetModel() ? &GetModel()->m_materialOrients : nullptr;
}

std::unique_ptr<CKwMaterialOrient> CKwUIMaterialOrientation::CreateNewObject()
{
    const int id = NextFreeID();
    auto o = std::make_unique<CKwMaterialOrient>(id,
                                                 QStringLiteral("Material Orientation %1").arg(id));
    o->m_propertyId = m_property ? m_property->GetID() : 0;
    return o;
}

QString CKwUIMaterialOrientation::GetPageTitleString() const
{
    return prop("MaterialOrientation", "Title", "Material Orientation");
}

bool CKwUIMaterialOrientation::HasShellMesh(const CKwUIEntity* face) const
{
    const CKwFEModel* model = GetModel();
    return face && model && face->GetKind() == CKwUIEntity::Face &&
           model->m_shellFaceIds.contains(face->GetID());
}

QList<CKwUIEntity*> CKwUIMaterialOrientation::GetSelectedEntities() const
{
    const CKwMaterialOrient* o = GetEditObject();
    if (!o)
        return {};
    QList<CKwUIEntity*> all = o->m_faces;
    if (o->m_edge && o->m_method == CKwMaterialOrient::FromEdge)
        all.append(o->m_edge);
    return all;
}

void CKwUIMaterialOrientation::LoadObjectData()
{
    const CKwMaterialOrient* o = GetEditObject();
    if (!o)
        return;
    LoadNameAndID(CodeName, CodeID);
    for (int i = 0; i < 3; ++i)
        SetControlText(kVectorCodes[i], KwEntityLogic::FormatNumber(o->m_vector[i]));
    m_badComponent = -1;
    Display(1);
}

void CKwUIMaterialOrientation::UpdateObjectData(bool)
{
    CKwMaterialOrient* o = GetEditObject();
    if (!o)
        return;
    UpdateNameAndID(CodeName, CodeID);
    m_badComponent = -1;
    const KW_UOM& units = KwTypedNumbers::UnitsOf(m_pView);
    QString text;
    for (int i = 0; i < 3; ++i) {
        if (!GetControlText(kVectorCodes[i], text))
            continue;
        // An emptied component is zero: the direction lies in the other two.
        double v = o->m_vector[static_cast<std::size_t>(i)];
        if (!KwTypedNumbers::Read(text, v, KwUnitKind::Dimensionless, units)) {
            if (m_badComponent < 0)
                m_badComponent = i;
            continue;
        }
        o->m_vector[static_cast<std::size_t>(i)] = IsMissingValue(v) ? 0.0 : v;
    }
}

int CKwUIMaterialOrientation::ValidateObjectData()
{
    const CKwMaterialOrient* o = GetEditObject();
    if (!o)
        return 0;
    if (!ValidateNameAndID({"MaterialOrientation", "Enter a name for the material orientation.",
                            "Another material orientation already uses this ID."}))
        return 0;
    const QString faces = prop("MaterialOrientation", "LabelFaces", "Faces");
    if (o->m_faces.isEmpty()) {
        ShowFieldError(faces, err("MaterialOrientation", "NoFaceSelected",
                                  "Select at least one face of shell elements."));
        return 0;
    }
    for (const CKwUIEntity* f : o->m_faces)
        if (!HasShellMesh(f)) {
            ShowFieldError(faces, KwEntityLogic::FillArgs(
                                      err("MaterialOrientation", "MeshNotDefined",
                                          "%s carries no 2D mesh. Mesh it with shell elements "
                                          "first."),
                                      {f->GetLabel()}));
            return 0;
        }
    if (o->m_method == CKwMaterialOrient::FromEdge) {
        const QString edge = prop("MaterialOrientation", "LabelEdge", "Straight Edge");
        if (!o->m_edge) {
            ShowFieldError(edge, err("MaterialOrientation", "NoEdgeSelected",
                                     "Select a straight edge for the direction."));
            return 0;
        }
        if (o->m_edge->GetKind() != CKwUIEntity::Edge || o->m_edge->IsCurved()) {
            ShowFieldError(edge, err("MaterialOrientation", "SecondaryGeometryError",
                                     "The secondary geometry must be a straight line."));
            return 0;
        }
        return 1;
    }
    static const char* const axes[] = {"X", "Y", "Z"};
    if (m_badComponent >= 0) {
        ShowFieldError(QString::fromLatin1(axes[m_badComponent]),
                       err("MaterialOrientation", "ComponentNotNumber", "Enter a number."));
        return 0;
    }
    const auto& v = o->m_vector;
    if (!(std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]) > 1e-12)) {
        ShowFieldError(prop("MaterialOrientation", "GroupVector", "Vector"),
                       err("MaterialOrientation", "ZeroLengthVector",
                           "The direction has zero length."));
        return 0;
    }
    return 1;
}

void CKwUIMaterialOrientation::Display(int on)
{
    if (m_pView)
        m_pView->SetHighlightedEntities(on ? GetSelectedEntities() : QList<CKwUIEntity*>());
}

int CKwUIMaterialOrientation::GetValue(int field, int& value)
{
    const CKwMaterialOrient* o = GetEditObject();
    if (!o || field != FieldMethod)
        return 0;
    value = o->m_method;
    return 1;
}

int CKwUIMaterialOrientation::SetValue(int field, int value)
{
    CKwMaterialOrient* o = GetEditObject();
    if (!o || field != FieldMethod ||
        (value != CKwMaterialOrient::FromEdge && value != CKwMaterialOrient::FromVector))
        return 0;
    o->m_method = value;
    return 1;
}

void CKwUIMaterialOrientation::OnSelected(QList<CKwUIEntity*>* entities)
{
    CKwMaterialOrient* o = GetEditObject();
    if (!o || !entities)
        return;
    const auto isFace = [](const CKwUIEntity* e) { return e->GetKind() == CKwUIEntity::Face; };
    if (m_target == Faces)
        KwEntityPicks::Append(o->m_faces, *entities, isFace);
    // The last edge picked (or, for the secondary geometry, the last edge or face) is the
    // secondary geometry.
    if (o->m_method == CKwMaterialOrient::FromEdge)
        for (CKwUIEntity* e : *entities)
            if (e && (e->GetKind() == CKwUIEntity::Edge || (m_target == Secondary && isFace(e))))
                o->m_edge = e;
    Display(1);
}

void CKwUIMaterialOrientation::OnDeselected(QList<CKwUIEntity*>* entities)
{
    CKwMaterialOrient* o = GetEditObject();
    if (!o || !entities)
        return;
    if (m_target == Faces)
        KwEntityPicks::Remove(o->m_faces, *entities);
    if (m_target == Secondary && entities->contains(o->m_edge))
        o->m_edge = nullptr;
    Display(1);
}
