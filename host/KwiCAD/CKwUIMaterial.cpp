#include "CKwUIMaterial.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwSubCase.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"
#include "KwMaterialDatabase.h"
#include "KwNumbers.h"
#include "KwUIText.h"

#include <QFileInfo>
#include <algorithm>

namespace K = KwMaterialKeys;

using KwUIText::err;
using KwUIText::prop;

namespace {

// The label of a value the logic reports on: a property key's label, an extra key itself
// (the extra values are labelled by their symbols), or the stiffness matrix caption.
QString labelOfKey(const QString& key)
{
    const int i = K::IndexOf(key);
    if (i >= 0)
        return K::Label(i);
    if (key == QLatin1String("Matrix"))
        return prop("Materials", "MaterialPropMatLabelName", "Material Property Matrix");
    return key;
}

int unitKindOfKey(const QString& key)
{
    const int i = K::IndexOf(key);
    if (i >= 0)
        return K::UnitKind(i);
    return CKwMaterial::ExtraUnitKind(CKwMaterial::ExtraIndexOf(key));
}

// Values a type cannot do without: elastic constants, or the constants of the hyperelastic
// model chosen.
QStringList requiredKeys(const CKwMaterial& m)
{
    switch (m.GetMaterialType()) {
    case CKwMaterial::Orthotropic2D:
        return {"E1", "E2", "NUXY", "G12"};
    case CKwMaterial::Orthotropic3D:
        return {"E1", "E2", "E3", "NUXY", "NUYZ", "NUXZ", "G12", "G1Z", "G2Z"};
    case CKwMaterial::Anisotropic3D:
        return {};
    case CKwMaterial::Hyperelastic:
        switch (m.m_hyperelasticModel) {
        case CKwMaterial::MooneyRivlin: return {"A10", "A01"};
        case CKwMaterial::Ogden: return {"MU1", "ALPHA1"};
        default: return {"A10"};
        }
    default:
        return {"EX", "NUXY"};
    }
}

} // namespace

CKwUIMaterial::CKwUIMaterial() = default;
CKwUIMaterial::~CKwUIMaterial() = default;

CKwAnalysis* CKwUIMaterial::GetAnalysis() const
{
    return AnalysisInContext(m_pSubCase, m_analysis, GetModel());
}

const KW_UOM* CKwUIMaterial::GetUnits() const
{
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

QList<CKwMaterial*>* CKwUIMaterial::GetModelList() const
{
    return GetModel() ? &GetModel()->m_materials : nullptr;
}

std::unique_ptr<CKwMaterial> CKwUIMaterial::CreateNewObject()
{
    const int id = NextFreeID();
    auto m = std::make_unique<CKwMaterial>(id, QStringLiteral("Material %1").arg(id));
    // Room temperature is the reference most data sheets are given at.
    m->SetValue(K::REFT, 293.15);
    return m;
}

void CKwUIMaterial::LoadObjectData()
{
    const CKwMaterial* m = GetEditObject();
    if (!m)
        return;
    const KW_UOM* units = GetUnits();
    LoadNameAndID(CodeName, CodeID);
    SetControlText(CodeDescription, m->m_description);
    for (int i = 0; i < K::Count; ++i) {
        SetControlText(CodeValueFirst + i, K::FormatValue(m->GetValue(i), K::UnitKind(i), units));
        SetControlText(CodeUnitFirst + i, K::UnitLabel(i, units));
    }
    static const KW_UOM si(KW_UOM::SI);
    for (int e = 0; e < CKwMaterial::ExtraCount; ++e) {
        const int kind = CKwMaterial::ExtraUnitKind(e);
        SetControlText(CodeExtraFirst + e, K::FormatValue(m->GetExtra(e), kind, units));
        SetControlText(CodeExtraUnitFirst + e, (units ? units : &si)->GetUnits(kind));
    }
    for (int k = 0; k < CKwMaterial::MatrixSize; ++k)
        SetControlText(CodeMatrixFirst + k,
                       K::FormatValue(m->GetMatrix(k), KwUnitKind::Stress, units));
    SetControlText(CodeMatrixUnit, (units ? units : &si)->GetUnits(KwUnitKind::Stress));
}

void CKwUIMaterial::UpdateObjectData(bool)
{
    CKwMaterial* m = GetEditObject();
    if (!m)
        return;
    const KW_UOM* units = GetUnits();
    m_badCode = 0;
    m_badText.clear();
    // Reads one value control; a text that is no number is remembered and leaves the value.
    const auto take = [&](int code, int kind, double* out) {
        QString text;
        if (!GetControlText(code, text))
            return;
        text = text.trimmed();
        if (KwEntityLogic::ShowsUnchanged(text, K::FormatValue(*out, kind, units)))
            return;
        if (text.isEmpty()) {
            *out = MissingDouble;
            return;
        }
        // Without a unit system values are shown in SI (angles in degrees).
        static const KW_UOM si(KW_UOM::SI);
        if (!(units ? units : &si)->ReadInternalValue(text, kind, out) && m_badCode == 0) {
            m_badCode = code;
            m_badText = text;
        }
    };
    QString text;
    UpdateNameAndID(CodeName, CodeID);
    if (GetControlText(CodeDescription, text))
        m->m_description = text;
    // Only what the material's type shows is read: a value of another type's row is out of
    // the user's sight, so it keeps what the edit copy holds and cannot block the OK.
    const int type = m->GetMaterialType();
    for (int i : CKwMaterial::KeysForType(type)) {
        double v = m->GetValue(i);
        take(CodeValueFirst + i, K::UnitKind(i), &v);
        m->SetValue(i, v);
    }
    for (int e : CKwMaterial::ExtrasForType(type)) {
        double v = m->GetExtra(e);
        take(CodeExtraFirst + e, CKwMaterial::ExtraUnitKind(e), &v);
        m->SetExtra(e, v);
    }
    if (type != CKwMaterial::Anisotropic3D)
        return;
    for (int k = 0; k < CKwMaterial::MatrixSize; ++k) {
        double v = m->GetMatrix(k);
        take(CodeMatrixFirst + k, KwUnitKind::Stress, &v);
        m->SetMatrix(k, v);
    }
}

int CKwUIMaterial::ValidateObjectData()
{
    const CKwMaterial* m = GetEditObject();
    if (!m)
        return 0;
    if (!ValidateNameAndID({"Materials", "Enter a name for the material.",
                            "Another material already uses this ID."}))
        return 0;
    if (m_badCode != 0) {
        QString label;
        int kind = KwUnitKind::Dimensionless;
        if (m_badCode >= CodeValueFirst && m_badCode < CodeValueFirst + K::Count) {
            label = K::Label(m_badCode - CodeValueFirst);
            kind = K::UnitKind(m_badCode - CodeValueFirst);
        } else if (m_badCode >= CodeExtraFirst &&
                   m_badCode < CodeExtraFirst + int(CKwMaterial::ExtraCount)) {
            label = CKwMaterial::ExtraKey(m_badCode - CodeExtraFirst);
            kind = CKwMaterial::ExtraUnitKind(m_badCode - CodeExtraFirst);
        } else {
            label = labelOfKey(QStringLiteral("Matrix"));
            kind = KwUnitKind::Stress;
        }
        const KW_UOM* units = GetUnits();
        ShowFieldError(label, units ? units->GetErrorMessageForUnit(kind)
                                    : err("General", "NumberRequired", "Enter a number."));
        return 0;
    }
    for (const QString& key : requiredKeys(*m)) {
        if (IsMissingValue(m->GetValue(key))) {
            ShowFieldError(labelOfKey(key), err("Materials", "ValueRequired",
                                                "A value is required for this material."));
            return 0;
        }
    }
    const CKwMaterial::Check check = m->CheckValues();
    if (check.problem != CKwMaterial::NoProblem) {
        ShowFieldError(labelOfKey(check.key), CKwMaterial::ProblemText(check.problem));
        return 0;
    }
    return 1;
}

QString CKwUIMaterial::GetPageTitleString() const
{
    return prop("Materials", "Title", "Material");
}

int CKwUIMaterial::GetValue(int field, int& value)
{
    const CKwMaterial* m = GetEditObject();
    if (!m)
        return 0;
    switch (field) {
    case FieldType: value = m->GetMaterialType(); return 1;
    case FieldFailureTheory: value = m->m_failureTheory; return 1;
    case FieldHyperelasticModel: value = m->m_hyperelasticModel; return 1;
    case FieldFatigue: value = m->m_fatigueOn ? 1 : 0; return 1;
    case FieldPPFA: value = m->m_ppfaOn ? 1 : 0; return 1;
    default: return 0;
    }
}

int CKwUIMaterial::SetValue(int field, int value)
{
    CKwMaterial* m = GetEditObject();
    if (!m)
        return 0;
    switch (field) {
    case FieldType: return m->SetMaterialType(value) ? 1 : 0;
    case FieldFailureTheory:
        if (value < 0 || value >= CKwMaterial::FailureTheoryCount)
            return 0;
        m->m_failureTheory = value;
        return 1;
    case FieldHyperelasticModel:
        if (value < 0 || value >= CKwMaterial::HyperelasticModelCount)
            return 0;
        m->m_hyperelasticModel = value;
        return 1;
    case FieldFatigue: m->m_fatigueOn = value != 0; return 1;
    case FieldPPFA: m->m_ppfaOn = value != 0; return 1;
    default: return 0;
    }
}

double CKwUIMaterial::GetPropertyValue(const QString& key) const
{
    const CKwMaterial* m = GetEditObject();
    return m ? m->GetValue(key) : MissingDouble;
}

bool CKwUIMaterial::SetPropertyValue(const QString& key, double value)
{
    CKwMaterial* m = GetEditObject();
    return m && m->SetValue(key, value);
}

QString CKwUIMaterial::GetPropertyText(const QString& key) const
{
    if (!CKwMaterial::IsKnownKey(key))
        return QString();
    return K::FormatValue(GetPropertyValue(key), unitKindOfKey(key), GetUnits());
}

bool CKwUIMaterial::SetPropertyText(const QString& key, const QString& text)
{
    if (!CKwMaterial::IsKnownKey(key))
        return false;
    const QString t = text.trimmed();
    if (t.isEmpty())
        return SetPropertyValue(key, MissingDouble);
    static const KW_UOM si(KW_UOM::SI);
    const KW_UOM* units = GetUnits();
    double v = 0;
    if (!(units ? units : &si)->ReadInternalValue(t, unitKindOfKey(key), &v))
        return false;
    return SetPropertyValue(key, v);
}

bool CKwUIMaterial::IsTypeOffered(int type, bool explicitEnabled)
{
    if (type < 0 || type >= CKwMaterial::TypeCount)
        return false;
    return type < CKwMaterial::CrushableFoam || explicitEnabled;
}

std::vector<int> CKwUIMaterial::GetListedTypes() const
{
    const bool explicitEnabled = TheApplication && TheApplication->IsExplicitEnabledInTechPreview();
    std::vector<int> types;
    for (int t = 0; t < CKwMaterial::TypeCount; ++t)
        if (IsTypeOffered(t, explicitEnabled))
            types.push_back(t);
    // Crushable foam, rigid and concrete come and go with the tech preview; a material stored
    // with one of them keeps showing it, and so does one read from a file into the editor.
    for (const int t : {GetObject() ? GetObject()->GetMaterialType() : -1, m_loadedType}) {
        if (t >= 0 && !IsTypeOffered(t, explicitEnabled) &&
            std::find(types.begin(), types.end(), t) == types.end())
            types.push_back(t);
    }
    return types;
}

int CKwUIMaterial::GetTypeFromSelection(int row) const
{
    const std::vector<int> types = GetListedTypes();
    return row >= 0 && row < int(types.size()) ? types[row] : -1;
}

int CKwUIMaterial::GetSelectionFromType(int type) const
{
    const std::vector<int> types = GetListedTypes();
    for (int row = 0; row < int(types.size()); ++row)
        if (types[row] == type)
            return row;
    return -1;
}

const KwMaterialCurve& CKwUIMaterial::GetCurve(int curve) const
{
    static const KwMaterialCurve none;
    return GetEditObject() ? GetEditObject()->GetCurve(curve) : none;
}

void CKwUIMaterial::SetCurve(int curve, const KwMaterialCurve& data)
{
    if (CKwMaterial* m = GetEditObject())
        m->SetCurve(curve, data);
}

void CKwUIMaterial::SetFailureTheorySetting(unsigned option)
{
    if (option < static_cast<unsigned>(CKwMaterial::FailureTheoryCount))
        SetValue(FieldFailureTheory, static_cast<int>(option));
}

bool CKwUIMaterial::LoadMaterialFromFile(const QString& path, int which, QString* error)
{
    CKwMaterial* m = GetEditObject();
    KwMaterialDatabase::ReadResult r = KwMaterialDatabase::ReadFile(path);
    QString why = r.error;
    if (r.ok && (which < 0 || which >= r.materials.size()))
        why = err("Materials", "MaterialNotInFile", "The file holds no such material.");
    if (!m && why.isEmpty())
        why = err("Materials", "NothingToLoadInto", "There is no material to load into.");
    if (!why.isEmpty()) {
        ShowFieldError(QFileInfo(path).fileName(), why);
        if (error)
            *error = why;
        return false;
    }
    auto loaded = std::make_unique<CKwMaterial>(r.materials[which]);
    loaded->SetID(m->GetID());
    m_badCode = 0;
    m_loadedType = loaded->GetMaterialType();
    // A material of another type brings other rows, width and switches: the whole dialog
    // follows, not only the values the codes fill.
    ReplaceEditObject(std::move(loaded));
    return true;
}
