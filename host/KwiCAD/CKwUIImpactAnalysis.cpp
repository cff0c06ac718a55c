#include "CKwUIImpactAnalysis.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwUIEntity.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwStudyFields.h"
#include "KwUIText.h"

#include <QStringList>

using KwUIText::err;
using KwUIText::prop;
namespace F = KwStudyFields;
using I = CKwUIImpactAnalysis;

namespace {

// The number fields in the order they are read and checked: code, unit-label slot, unit kind,
// rule, label key and English label.
struct NumberField
{
    int code;
    int unit;
    int unitKind;
    unsigned rule;
    const char* key;
    const char* english;
};
constexpr NumberField kFields[] = {
    {I::CodeTranslationFirst + 0, I::UnitTranslation, KwUnitKind::Length, F::Required,
     "LabelTranslationX", "Translation X"},
    {I::CodeTranslationFirst + 1, I::UnitTranslation, KwUnitKind::Length, F::Required,
     "LabelTranslationY", "Translation Y"},
    {I::CodeTranslationFirst + 2, I::UnitTranslation, KwUnitKind::Length, F::Required,
     "LabelTranslationZ", "Translation Z"},
    {I::CodeVelocity, I::UnitVelocity, KwUnitKind::Velocity, F::NonNegative, "LabelVelocity",
     "Initial Velocity"},
    {I::CodeAcceleration, I::UnitAcceleration, KwUnitKind::Acceleration, F::NonNegative,
     "LabelAcceleration", "Gravity Acceleration"},
    {I::CodePlaneDistance, I::UnitPlane, KwUnitKind::Length, F::Positive, "LabelPlaneDistance",
     "Distance to Plane"},
    {I::CodeDuration, I::UnitDuration, KwUnitKind::Time, F::Positive, "LabelDuration",
     "Duration"},
};

double& valueOf(CKwImpactWizard& w, int code)
{
    switch (code) {
    case I::CodeVelocity: return w.m_velocity;
    case I::CodeAcceleration: return w.m_acceleration;
    case I::CodePlaneDistance: return w.m_planeDistance;
    case I::CodeDuration: return w.m_duration;
    default: return w.m_translation[static_cast<std::size_t>(code - I::CodeTranslationFirst)];
    }
}

} // namespace

CKwUIImpactAnalysis::CKwUIImpactAnalysis() : m_reader(std::make_unique<F::Reader>()) {}
CKwUIImpactAnalysis::~CKwUIImpactAnalysis() = default;

const KW_UOM* CKwUIImpactAnalysis::units() const
{
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

QList<CKwUIEntity*> CKwUIImpactAnalysis::TargetFaces() const
{
    QList<CKwUIEntity*> out;
    if (const CKwFEModel* m = GetModel())
        for (CKwUIEntity* e : m->m_geometry)
            if (e && e->GetKind() == CKwUIEntity::Face)
                out.append(e);
    return out;
}

std::unique_ptr<CKwImpactWizard> CKwUIImpactAnalysis::CreateNewObject()
{
    return std::make_unique<CKwImpactWizard>(1, prop("ImpactAnalysis", "DefaultName", "Impact"));
}

QString CKwUIImpactAnalysis::GetPageTitleString() const
{
    return prop("ImpactAnalysis", "Title", "Impact Analysis");
}

void CKwUIImpactAnalysis::LoadObjectData()
{
    CKwImpactWizard* w = GetEditObject();
    if (!w)
        return;
    m_reader->Clear();
    SetControlText(CodeName, w->GetName());
    QStringList faces;
    for (const CKwUIEntity* f : TargetFaces())
        faces << f->GetLabel();
    SetControlItems(CodeFaces, static_cast<int>(faces.size()), faces.constData());
    const KW_UOM* u = units();
    for (const NumberField& f : kFields) {
        SetControlText(f.code, KwEntityLogic::FormatShown(valueOf(*w, f.code), f.unitKind, u));
        SetControlText(CodeUnitFirst + f.unit, u ? u->GetUnits(f.unitKind) : QString());
    }
    Display(1);
}

void CKwUIImpactAnalysis::UpdateObjectData(bool)
{
    CKwImpactWizard* w = GetEditObject();
    if (!w)
        return;
    QString name;
    if (GetControlText(CodeName, name))
        w->SetName(name.trimmed());
    for (const NumberField& f : kFields)
        m_reader->Read(*this, f.code, f.unitKind, units(), valueOf(*w, f.code));
}

int CKwUIImpactAnalysis::ValidateObjectData()
{
    CKwImpactWizard* w = GetEditObject();
    if (!w)
        return 0;
    if (!m_analysis || !m_analysis->IsExplicitAnalysis()) {
        ShowFieldError(GetPageTitleString(),
                       err("ImpactAnalysis", "NoExplicitAnalysis",
                           "An impact belongs to an explicit dynamics analysis. Select one."));
        return 0;
    }
    if (w->GetName().isEmpty()) {
        ShowFieldError(prop("General", "LabelName", "Name"),
                       err("ImpactAnalysis", "NameRequired", "Enter a name for the impact."));
        return 0;
    }
    for (const NumberField& f : kFields) {
        if (f.code == CodePlaneDistance && w->m_target != CKwImpactWizard::TargetRigidPlane)
            continue;
        const QString problem =
            m_reader->Problem(f.code, f.unitKind, units(), f.rule, valueOf(*w, f.code));
        if (!problem.isEmpty()) {
            ShowFieldError(prop("ImpactAnalysis", f.key, f.english), problem);
            return 0;
        }
        if (f.code == CodeTranslationFirst + 2 && !(w->TranslationLength() > 0.0)) {
            ShowFieldError(prop("ImpactAnalysis", "GroupTranslation", "Projectile Translation"),
                           err("ImpactAnalysis", "ZeroTranslation",
                               "The translation vector must not be zero: it gives the "
                               "direction of the impact."));
            return 0;
        }
    }
    if (w->m_target == CKwImpactWizard::TargetFace) {
        bool found = false;
        for (const CKwUIEntity* f : TargetFaces())
            found = found || f->GetID() == w->m_targetFaceId;
        if (!found) {
            ShowFieldError(prop("ImpactAnalysis", "LabelTargetFace", "Target Face"),
                           err("ImpactAnalysis", "NoTargetFace",
                               "Pick the face the projectile hits."));
            return 0;
        }
    }
    return 1;
}

void CKwUIImpactAnalysis::AddNewObjects()
{
    if (!m_analysis || !m_edit)
        return;
    auto* added = new CKwImpactWizard(*m_edit);
    m_analysis->SetImpactWizard(added);
    m_pObject = added;
}

int CKwUIImpactAnalysis::GetValue(int field, int& value)
{
    const CKwImpactWizard* w = GetEditObject();
    if (!w)
        return 0;
    switch (field) {
    case FieldTarget: value = w->m_target; return 1;
    case FieldFace: {
        const QList<CKwUIEntity*> faces = TargetFaces();
        value = -1;
        for (int i = 0; i < faces.size(); ++i)
            if (faces[i]->GetID() == w->m_targetFaceId)
                value = i;
        return 1;
    }
    default: return 0;
    }
}

int CKwUIImpactAnalysis::SetValue(int field, int value)
{
    CKwImpactWizard* w = GetEditObject();
    if (!w)
        return 0;
    switch (field) {
    case FieldTarget:
        if (value != CKwImpactWizard::TargetFace && value != CKwImpactWizard::TargetRigidPlane)
            return 0;
        w->m_target = value;
        Display(1);
        return 1;
    case FieldFace: {
        const QList<CKwUIEntity*> faces = TargetFaces();
        if (value < 0 || value >= faces.size())
            return 0;
        w->m_targetFaceId = faces[value]->GetID();
        Display(1);
        return 1;
    }
    default: return 0;
    }
}

void CKwUIImpactAnalysis::OnSelected(QList<CKwUIEntity*>* entities)
{
    CKwImpactWizard* w = GetEditObject();
    if (!w || !entities)
        return;
    for (const CKwUIEntity* e : *entities)
        if (e && e->GetKind() == CKwUIEntity::Face && TargetFaces().contains(e)) {
            w->m_target = CKwImpactWizard::TargetFace;
            w->m_targetFaceId = e->GetID();
            break;
        }
    Display(1);
}

QList<CKwUIEntity*> CKwUIImpactAnalysis::GetSelectedEntities() const
{
    const CKwImpactWizard* w = GetEditObject();
    if (w && w->m_target == CKwImpactWizard::TargetFace)
        for (CKwUIEntity* f : TargetFaces())
            if (f->GetID() == w->m_targetFaceId)
                return {f};
    return {};
}

void CKwUIImpactAnalysis::Display(int on)
{
    if (m_pView)
        m_pView->SetHighlightedEntities(on ? GetSelectedEntities() : QList<CKwUIEntity*>());
}
