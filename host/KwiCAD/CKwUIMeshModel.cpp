#include "CKwUIMeshModel.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwUIEntity.h"
#include "KwTypedNumbers.h"
#include "KwUIText.h"

#include <algorithm>
#include <cmath>

using KwUIText::err;
using KwUIText::prop;

CKwUIMeshModel::CKwUIMeshModel() = default;
CKwUIMeshModel::~CKwUIMeshModel() = default;

void CKwUIMeshModel::OnCreate(CFMView* view, CKwMeshModel* mesh, CKwSubCase* subcase)
{
    SetView(view);
    m_pObject = mesh;
    m_pSubCase = subcase;
    m_edit = CreateNewObject();
    m_upToDate = true;
}

std::unique_ptr<CKwMeshModel> CKwUIMeshModel::CreateNewObject()
{
    auto settings = std::make_unique<CKwMeshModel>();
    if (m_pObject)
        settings->SetSettings(m_pObject->GetSettings());
    return settings;
}

void CKwUIMeshModel::UpdateEditObject()
{
    if (m_pObject && m_edit)
        m_edit->SetSettings(m_pObject->GetSettings());
    m_badLength = false;
}

const KwMeshSettings& CKwUIMeshModel::GetEditSettings() const
{
    static const KwMeshSettings none;
    return m_edit ? m_edit->GetSettings() : none;
}

QString CKwUIMeshModel::GetPageTitleString() const
{
    return prop("MeshSettings", "Title", "Mesh Settings");
}

void CKwUIMeshModel::LoadObjectData()
{
    if (!m_edit)
        return;
    const KW_UOM& units = KwTypedNumbers::UnitsOf(m_pView);
    SetControlText(CodeLength, KwTypedNumbers::Shown(GetEditSettings().elementLength,
                                                     KwUnitKind::Length, units));
    SetControlText(CodeBodyCount, QString::number(GetBodies().size()));
    m_badLength = false;
}

void CKwUIMeshModel::UpdateObjectData(bool)
{
    if (!m_edit)
        return;
    KwMeshSettings s = m_edit->GetSettings();
    QString text;
    m_badLength = false;
    if (!GetControlText(CodeLength, text))
        return;
    const KW_UOM& units = KwTypedNumbers::UnitsOf(m_pView);
    // A field left as shown keeps the stored length to the last bit.
    if (KwEntityLogic::ShowsUnchanged(text.trimmed(), KwTypedNumbers::Shown(
                                                          s.elementLength, KwUnitKind::Length, units)))
        return;
    int status = KW_UOM::ParseOk;
    const double length = units.ParseQuantity(text, KwUnitKind::Length, &status);
    if (status == KW_UOM::ParseEmpty)
        s.elementLength = MissingDouble;
    else if (status == KW_UOM::ParseOk)
        s.elementLength = length;
    else
        m_badLength = true;
    m_edit->SetSettings(s);
}

int CKwUIMeshModel::ValidateObjectData()
{
    if (!m_pObject) {
        ShowFieldError(GetPageTitleString(), err("MeshSettings", "NoMesh", "The model has no mesh."));
        return 0;
    }
    const KwMeshSettings& s = GetEditSettings();
    // A length typed while the slider decides plays no part.
    if (!s.useLength)
        return 1;
    const QString label = prop("MeshSettings", "LabelElementLength", "Element Size");
    if (m_badLength) {
        ShowFieldError(label,
                       KwTypedNumbers::UnitsOf(m_pView).GetErrorMessageForUnit(KwUnitKind::Length));
        return 0;
    }
    if (IsMissingValue(s.elementLength)) {
        ShowFieldError(label, err("MeshSettings", "LengthRequired", "Enter an element size."));
        return 0;
    }
    if (!(s.elementLength > 0) || !std::isfinite(s.elementLength)) {
        ShowFieldError(label, err("MeshSettings", "LengthNotPositive",
                                  "The element size must be greater than zero."));
        return 0;
    }
    return 1;
}

long CKwUIMeshModel::OnSubmitUI()
{
    if (!m_edit)
        return 1;
    UpdateObjectData(false);
    if (!ValidateObjectData())
        return 1;
    KwMeshSettings s = m_edit->GetSettings();
    // Only what the user can see is kept: bodies no longer in the model drop out.
    const QList<Body> bodies = GetBodies();
    for (auto it = s.bodyMesh.begin(); it != s.bodyMesh.end();) {
        const bool known = std::any_of(bodies.cbegin(), bodies.cend(),
                                       [&](const Body& b) { return b.id == it->first; });
        it = known ? std::next(it) : s.bodyMesh.erase(it);
    }
    m_pObject->SetSettings(s);
    return 0;
}

int CKwUIMeshModel::GetValue(int field, int& value)
{
    if (!m_edit)
        return 0;
    const KwMeshSettings& s = GetEditSettings();
    switch (field) {
    case FieldSizeLevel: value = s.sizeLevel; return 1;
    case FieldSizeMode: value = s.useLength ? SizeByLength : SizeByLevel; return 1;
    case FieldOrder: value = s.parabolic ? OrderParabolic : OrderLinear; return 1;
    case FieldContinuous: value = s.continuous ? 1 : 0; return 1;
    default: return 0;
    }
}

int CKwUIMeshModel::SetValue(int field, int value)
{
    if (!m_edit)
        return 0;
    KwMeshSettings s = m_edit->GetSettings();
    switch (field) {
    case FieldSizeLevel:
        if (value < kFinestLevel || value > kCoarsestLevel)
            return 0;
        s.sizeLevel = value;
        break;
    case FieldSizeMode: s.useLength = value == SizeByLength; break;
    case FieldOrder: s.parabolic = value == OrderParabolic; break;
    case FieldContinuous: s.continuous = value != 0; break;
    default: return 0;
    }
    m_edit->SetSettings(s);
    return 1;
}

QList<CKwUIMeshModel::Body> CKwUIMeshModel::GetBodies() const
{
    QList<Body> bodies;
    if (const CKwFEModel* model = GetModel())
        for (const CKwUIEntity* e : model->m_geometry)
            if (e && e->GetKind() == CKwUIEntity::Body)
                bodies.append({e->GetID(), e->GetDisplayText(false)});
    return bodies;
}

int CKwUIMeshModel::GetBodyMesh(int bodyId) const
{
    const auto& map = GetEditSettings().bodyMesh;
    const auto it = map.find(bodyId);
    return it == map.end() ? FromGeometry : it->second;
}

bool CKwUIMeshModel::SetBodyMesh(int bodyId, int kind)
{
    if (!m_edit || kind < FromGeometry || kind > KwMeshSettings::AsBeam)
        return false;
    KwMeshSettings s = m_edit->GetSettings();
    if (kind == FromGeometry)
        s.bodyMesh.erase(bodyId);
    else
        s.bodyMesh[bodyId] = kind;
    m_edit->SetSettings(s);
    return true;
}

QStringList CKwUIMeshModel::BodyMeshNames()
{
    return {prop("MeshSettings", "DropDownFromGeometry", "As Modelled"),
            prop("MeshSettings", "DropDownSolid", "Solid"),
            prop("MeshSettings", "DropDownShell", "Shell"),
            prop("MeshSettings", "DropDownBeam", "Beam")};
}
