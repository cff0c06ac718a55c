#include "CKwUIDamping.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwFunction.h"
#include "CKwTable.h"
#include "KwTableLookup.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;

namespace {

using D = CKwDamping;
using U = CKwUIDamping;
namespace R = KwRange;

// G and the Rayleigh factors: none of them below zero, G a damping ratio; empty means none.
const KwNumberSlot<D> kSlots[] = {
    {{U::CodeStructuralG, "Damping", "LabelStructuralDamping", "Structural Damping G",
      KwUnitKind::Dimensionless, 100.0, R::DampingRatio, 0.0},
     &D::m_structuralG},
    {{U::CodeAlpha, "Damping", "LabelAlpha", "ALPHA, Mass Proportional", KwUnitKind::Frequency,
      1.0, 0, 0.0},
     &D::m_alpha},
    {{U::CodeBeta, "Damping", "LabelBeta", "BETA, Stiffness Proportional", KwUnitKind::Time,
      1.0, 0, 0.0},
     &D::m_beta},
};

const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}

} // namespace

CKwUIDamping::CKwUIDamping() : m_numbers(kSlots) {}
CKwUIDamping::~CKwUIDamping() = default;

const KW_UOM* CKwUIDamping::GetUnits() const
{
    const KW_UOM* units = m_pView ? m_pView->GetUnitHolder() : nullptr;
    return units ? units : &si();
}

QList<CKwDamping*>* CKwUIDamping::GetModelList() const
{
    return GetModel() ? &GetModel()->m_dampings : nullptr;
}

std::unique_ptr<CKwDamping> CKwUIDamping::CreateNewObject()
{
    const int id = NextFreeID();
    auto d = std::make_unique<CKwDamping>(id, QStringLiteral("Damping %1").arg(id));
    d->m_analysisId = m_analysis ? m_analysis->GetID() : 0;
    return d;
}

void CKwUIDamping::LoadObjectData()
{
    const CKwDamping* d = GetEditObject();
    if (!d)
        return;
    LoadNameAndID(CodeName, CodeID);
    m_numbers.Load(*this, *d, GetUnits());
    LoadTableItems();
}

void CKwUIDamping::LoadTableItems()
{
    const QStringList names = m_tables.Refill(GetModel(), false);
    SetControlItems(CodeTables, int(names.size()), names.constData());
}

void CKwUIDamping::UpdateObjectData(bool)
{
    CKwDamping* d = GetEditObject();
    if (!d)
        return;
    UpdateNameAndID(CodeName, CodeID);
    m_numbers.Update(*this, *d, GetUnits());
}

int CKwUIDamping::ValidateObjectData()
{
    CKwDamping* d = GetEditObject();
    if (!d)
        return 0;
    if (!ValidateNameAndID({"Damping", "Enter a name for the damping.",
                            "Another damping already uses this ID."}))
        return 0;
    QString label, why;
    if (m_numbers.FirstProblem(*d, GetUnits(), {}, &label, &why)) {
        ShowFieldError(label, why);
        return 0;
    }
    if (!d->m_modal)
        return 1;
    label = prop("Damping", "CheckModalDamping", "Modal Damping from Table");
    const CKwTable* t = GetModalTable();
    if (!t) {
        ShowFieldError(label, d->m_modalTableId > 0
                                  ? KwSetupFields::TableDeletedMessage(d->m_modalTableId)
                                  : err("AnalysisSetup", "TableRequired", "Choose a table."));
        return 0;
    }
    if (t->GetPointCount() < 1) {
        ShowFieldError(label, err("AnalysisSetup", "TableEmpty", "The table has no points."));
        return 0;
    }
    // Each point's value is a critical damping ratio.
    for (double ratio : t->GetYFunction()->Values()) {
        const QString problem = ratio < 0
                                    ? err("AnalysisSetup", "NegativeDampingInTable",
                                          "A damping ratio in the table is below zero.")
                                : ratio > 1.0
                                    ? err("AnalysisSetup", "DampingOver100",
                                          "A damping ratio cannot be over 100 %.")
                                    : QString();
        if (!problem.isEmpty()) {
            ShowFieldError(label, problem);
            return 0;
        }
    }
    return 1;
}

QString CKwUIDamping::GetPageTitleString() const { return prop("Damping", "Title", "Damping"); }

int CKwUIDamping::GetValue(int field, int& value)
{
    const CKwDamping* d = GetEditObject();
    if (!d)
        return 0;
    switch (field) {
    case FieldModal: value = d->m_modal ? 1 : 0; return 1;
    case FieldTable: value = m_tables.RowOf(d->m_modalTableId); return 1;
    default: return 0;
    }
}

int CKwUIDamping::SetValue(int field, int value)
{
    CKwDamping* d = GetEditObject();
    if (!d)
        return 0;
    switch (field) {
    case FieldModal: d->m_modal = value != 0; return 1;
    case FieldTable: {
        const int id = m_tables.IdAt(value);
        if (id <= 0)
            return 0;
        d->m_modalTableId = id;
        return 1;
    }
    default: return 0;
    }
}

CKwTable* CKwUIDamping::GetModalTable() const
{
    const CKwDamping* d = GetEditObject();
    return d ? KwTableLookup::Find(GetModel(), d->m_modalTableId, KwTableLookup::Frequency)
             : nullptr;
}

bool CKwUIDamping::PrepareTableEdit()
{
    const CKwDamping* d = GetEditObject();
    if (!d)
        return false;
    if (!GetModalTable()) {
        ShowFieldError(prop("Damping", "CheckModalDamping", "Modal Damping from Table"),
                       d->m_modalTableId > 0
                           ? KwSetupFields::TableDeletedMessage(d->m_modalTableId)
                           : err("AnalysisSetup", "TableRequired", "Choose a table."));
        LoadTableItems();
        return false;
    }
    m_tables.Edits().Keep(GetModel(), d->m_modalTableId);
    return true;
}

int CKwUIDamping::AddModalTable()
{
    return GetEditObject() && GetModel() ? m_tables.AddTable(GetModel()) : 0;
}

void CKwUIDamping::FinishNewTable(int id, bool keep)
{
    CKwDamping* d = GetEditObject();
    if (!keep || !d)
        m_tables.Edits().DropAdded(GetModel(), id);
    LoadTableItems();
    if (keep && d && id > 0) {
        d->m_modalTableId = id;
        d->m_modal = true;
    }
}

long CKwUIDamping::OnSubmitUI()
{
    const long status = CKwFEUIBase<CKwDamping>::OnSubmitUI();
    if (status == 0)
        m_tables.Edits().Commit();
    return status;
}

long CKwUIDamping::OnCancelUI()
{
    m_tables.Edits().Undo(GetModel());
    return CKwFEUIBase<CKwDamping>::OnCancelUI();
}
