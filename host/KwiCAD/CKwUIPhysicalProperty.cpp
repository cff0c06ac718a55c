#include "CKwUIPhysicalProperty.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwUIText.h"

#include <QStringList>
#include <array>

using KwUIText::err;
using KwUIText::prop;

namespace {

const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}

QString formatValue(double internal, int kind, const KW_UOM& units)
{
    return KwEntityLogic::FormatShown(internal, kind, &units);
}

} // namespace

CKwUIPhysicalProperty::CKwUIPhysicalProperty() = default;
CKwUIPhysicalProperty::~CKwUIPhysicalProperty() = default;

const KW_UOM* CKwUIPhysicalProperty::GetUnits() const
{
    const KW_UOM* units = m_pView ? m_pView->GetUnitHolder() : nullptr;
    return units ? units : &si();
}

QList<CKwPhysicalProperty*>* CKwUIPhysicalProperty::GetModelList() const
{
    return GetModel() ? &GetModel()->m_properties : nullptr;
}

std::unique_ptr<CKwPhysicalProperty> CKwUIPhysicalProperty::CreateNewObject()
{
    CKwFEModel* model = GetModel();
    const int id = NextFreeID();
    auto p = std::make_unique<CKwPhysicalProperty>(id, QStringLiteral("Property %1").arg(id));
    if (model && !model->m_materials.isEmpty())
        p->m_materialId = model->m_materials.first()->GetID();
    return p;
}

QString CKwUIPhysicalProperty::GetSectionText() const
{
    const CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return QString();
    QString shape;
    p->GetSectionName(shape);
    if (p->m_sectionName.isEmpty())
        return shape;
    return QStringLiteral("%1 (%2)").arg(p->m_sectionName, shape);
}

void CKwUIPhysicalProperty::LoadObjectData()
{
    const CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return;
    LoadNameAndID(CodeName, CodeID);
    QStringList names;
    if (CKwFEModel* model = GetModel())
        for (const CKwMaterial* m : model->m_materials)
            names << m->GetName();
    SetControlItems(CodeMaterials, static_cast<int>(names.size()), names.constData());
    SetControlText(CodeThickness, formatValue(p->m_thickness, KwUnitKind::Length, *GetUnits()));
    SetControlText(CodeSection, GetSectionText());
    m_named = sectionOf(*p);
    m_badThickness = false;
}

CKwUIPhysicalProperty::NamedSection CKwUIPhysicalProperty::sectionOf(const CKwPhysicalProperty& p)
{
    return {p.m_sectionShape, p.m_dimA, p.m_dimB, p.m_tapered};
}

void CKwUIPhysicalProperty::dropStaleSectionName()
{
    CKwPhysicalProperty* p = GetEditObject();
    if (p && !(sectionOf(*p) == m_named))
        p->m_sectionName.clear();
}

void CKwUIPhysicalProperty::UpdateObjectData(bool)
{
    CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return;
    QString text;
    UpdateNameAndID(CodeName, CodeID);
    if (GetControlText(CodeThickness, text)) {
        text = text.trimmed();
        if (KwEntityLogic::ShowsUnchanged(
                text, formatValue(p->m_thickness, KwUnitKind::Length, *GetUnits())))
            return;
        // A text that is no number leaves the thickness as it was and is refused on submit.
        double v = MissingDouble;
        m_badThickness =
            !text.isEmpty() && !GetUnits()->ReadInternalValue(text, KwUnitKind::Length, &v);
        if (!m_badThickness)
            p->m_thickness = v;
    }
}

int CKwUIPhysicalProperty::ValidateObjectData()
{
    CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return 0;
    if (!ValidateNameAndID({"PhysicalProperties", "Enter a name for the property.",
                            "Another property already uses this ID."}))
        return 0;
    if (GetModel()) {
        int row = -1;
        GetValue(FieldMaterial, row);
        if (row < 0) {
            ShowFieldError(prop("PhysicalProperties", "LabelMaterial", "Material"),
                           err("PhysicalProperties", "MaterialRequired", "Choose a material."));
            return 0;
        }
    }
    if (p->m_idealization == CKwPhysicalProperty::Shell) {
        const QString label = prop("PhysicalProperties", "LabelThickness", "Thickness");
        if (m_badThickness) {
            ShowFieldError(label, GetUnits()->GetErrorMessageForUnit(KwUnitKind::Length));
            return 0;
        }
        if (IsMissingValue(p->m_thickness) || !(p->m_thickness > 0)) {
            ShowFieldError(label, err("PhysicalProperties", "PositiveThicknessRequired",
                                      "Enter a thickness above zero."));
            return 0;
        }
    }
    if (p->m_idealization == CKwPhysicalProperty::Beam) {
        const QString label = prop("PhysicalProperties", "LabelCrossSection", "Cross Section");
        if (p->m_elementKind == CKwPhysicalProperty::KindBar &&
            p->m_sectionShape == CKwPhysicalProperty::L) {
            ShowFieldError(label, err("PhysicalProperties", "LSectionNotSupported",
                                      "L section not supported for bar elements"));
            return 0;
        }
        std::array<double, KwSectionValue::Count> values{};
        if (!p->ComputeSectionProperties(1, values.data())) {
            ShowFieldError(label, err("PhysicalProperties", "SectionRequired",
                                      "Define a valid cross section for the beam."));
            return 0;
        }
        p->m_sectionArea = values[KwSectionValue::Area];
    }
    return 1;
}

QString CKwUIPhysicalProperty::GetPageTitleString() const
{
    return prop("PhysicalProperties", "Title", "Physical Property");
}

int CKwUIPhysicalProperty::GetValue(int field, int& value)
{
    const CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return 0;
    switch (field) {
    case FieldType: value = p->m_idealization; return 1;
    case FieldElementKind: value = p->m_elementKind; return 1;
    case FieldMaterial: {
        value = -1;
        if (CKwFEModel* model = GetModel())
            for (int i = 0; i < model->m_materials.size(); ++i)
                if (model->m_materials[i]->GetID() == p->m_materialId)
                    value = i;
        return 1;
    }
    default: return 0;
    }
}

int CKwUIPhysicalProperty::SetValue(int field, int value)
{
    CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return 0;
    switch (field) {
    case FieldType:
        if (value < CKwPhysicalProperty::Solid || value > CKwPhysicalProperty::Beam)
            return 0;
        p->m_idealization = value;
        return 1;
    case FieldElementKind:
        if (value < CKwPhysicalProperty::KindBar || value > CKwPhysicalProperty::KindPipe)
            return 0;
        p->m_elementKind = value;
        // A pipe is a tube; the dimensions of another shape mean nothing for it.
        if (value == CKwPhysicalProperty::KindPipe &&
            p->m_sectionShape != CKwPhysicalProperty::TUBE) {
            p->m_sectionShape = CKwPhysicalProperty::TUBE;
            p->m_dimA.fill(MissingDouble);
            p->m_dimB.fill(MissingDouble);
            p->m_tapered = 0;
        }
        dropStaleSectionName();
        SetControlText(CodeSection, GetSectionText());
        return 1;
    case FieldMaterial: {
        CKwFEModel* model = GetModel();
        if (!model || value < 0 || value >= model->m_materials.size())
            return 0;
        p->m_materialId = model->m_materials[value]->GetID();
        return 1;
    }
    default: return 0;
    }
}

void CKwUIPhysicalProperty::OnSectionDefined()
{
    CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return;
    std::array<double, KwSectionValue::Count> values{};
    p->m_sectionArea =
        p->ComputeSectionProperties(1, values.data()) ? values[KwSectionValue::Area] : MissingDouble;
    dropStaleSectionName();
    SetControlText(CodeSection, GetSectionText());
}

int CKwUIPhysicalProperty::ShellOptionUnitKind(int which)
{
    return which == ShellOffset ? KwUnitKind::Length : KwUnitKind::Dimensionless;
}

QString CKwUIPhysicalProperty::GetShellOptionText(int which) const
{
    const CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return QString();
    switch (which) {
    case ShellOffset: return formatValue(p->m_shellOffset, KwUnitKind::Length, *GetUnits());
    case ShellBendingRatio: return KwEntityLogic::FormatNumber(p->m_bendingRatio);
    case ShellShearRatio: return KwEntityLogic::FormatNumber(p->m_shearRatio);
    default: return QString();
    }
}

bool CKwUIPhysicalProperty::SetShellOptionTexts(const QString (&texts)[ShellOptionCount],
                                                int* badIndex, QString* why)
{
    CKwPhysicalProperty* p = GetEditObject();
    if (!p)
        return false;
    double values[ShellOptionCount] = {};
    for (int i = 0; i < ShellOptionCount; ++i) {
        const QString t = texts[i].trimmed();
        QString problem;
        if (KwEntityLogic::ShowsUnchanged(t, GetShellOptionText(i)))
            values[i] = i == ShellOffset ? p->m_shellOffset
                      : i == ShellBendingRatio ? p->m_bendingRatio : p->m_shearRatio;
        else if (!GetUnits()->ReadInternalValue(t, ShellOptionUnitKind(i), &values[i]))
            problem = GetUnits()->GetErrorMessageForUnit(ShellOptionUnitKind(i));
        if (problem.isEmpty() && i != ShellOffset && !(values[i] > 0))
            problem = err("PhysicalProperties", "PositiveRatioRequired",
                          "Enter a ratio above zero.");
        if (!problem.isEmpty()) {
            if (badIndex)
                *badIndex = i;
            if (why)
                *why = problem;
            return false;
        }
    }
    p->m_shellOffset = values[ShellOffset];
    p->m_bendingRatio = values[ShellBendingRatio];
    p->m_shearRatio = values[ShellShearRatio];
    return true;
}
