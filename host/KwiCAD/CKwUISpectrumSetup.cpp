#include "CKwUISpectrumSetup.h"

#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwTable.h"
#include "KwTableLookup.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;

namespace {

using S = CKwSpectrumSetup;
using U = CKwUISpectrumSetup;
namespace R = KwRange;

const KwNumberSlot<S> kSlots[] = {
    {{U::CodeDamping, "SpectrumSetup", "LabelDampingRatio", "Damping Ratio",
      KwUnitKind::Dimensionless, 100.0, R::Required | R::DampingRatio, 0.0},
     &S::m_dampingRatio},
    {{U::CodeScale, "SpectrumSetup", "LabelScaleFactor", "Scale Factor", KwUnitKind::Dimensionless,
      1.0, R::Required | R::AboveMin, 0.0},
     &S::m_scaleFactor},
};

const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}

} // namespace

CKwUISpectrumSetup::CKwUISpectrumSetup() : m_numbers(kSlots) {}
CKwUISpectrumSetup::~CKwUISpectrumSetup() = default;

const KW_UOM* CKwUISpectrumSetup::GetUnits() const
{
    const KW_UOM* units = m_pView ? m_pView->GetUnitHolder() : nullptr;
    return units ? units : &si();
}

QList<CKwSpectrumSetup*>* CKwUISpectrumSetup::GetModelList() const
{
    return GetModel() ? &GetModel()->m_spectrumSetups : nullptr;
}

std::unique_ptr<CKwSpectrumSetup> CKwUISpectrumSetup::CreateNewObject()
{
    const int id = NextFreeID();
    auto s = std::make_unique<CKwSpectrumSetup>(id, QStringLiteral("Spectrum %1").arg(id));
    s->m_analysisId = m_analysis ? m_analysis->GetID() : 0;
    // The first frequency table is the likeliest spectrum.
    const QList<KwTableLookup::Entry> tables =
        KwTableLookup::List(GetModel(), KwTableLookup::Frequency);
    if (!tables.isEmpty())
        s->m_tableId = tables.last().id;
    return s;
}

void CKwUISpectrumSetup::LoadObjectData()
{
    const CKwSpectrumSetup* s = GetEditObject();
    if (!s)
        return;
    LoadNameAndID(CodeName, CodeID);
    m_numbers.Load(*this, *s, GetUnits());
    LoadTableItems();
}

void CKwUISpectrumSetup::LoadTableItems()
{
    const QStringList names = m_tables.Refill(GetModel(), true);
    SetControlItems(CodeTables, int(names.size()), names.constData());
}

void CKwUISpectrumSetup::UpdateObjectData(bool)
{
    CKwSpectrumSetup* s = GetEditObject();
    if (!s)
        return;
    UpdateNameAndID(CodeName, CodeID);
    m_numbers.Update(*this, *s, GetUnits());
}

void CKwUISpectrumSetup::reportMissingTable()
{
    const CKwSpectrumSetup* s = GetEditObject();
    ShowFieldError(prop("SpectrumSetup", "LabelSpectrumTable", "Spectrum Table"),
                   s && s->m_tableId > 0 ? KwSetupFields::TableDeletedMessage(s->m_tableId)
                                         : err("AnalysisSetup", "TableRequired",
                                               "Choose a table."));
}

int CKwUISpectrumSetup::ValidateObjectData()
{
    CKwSpectrumSetup* s = GetEditObject();
    if (!s)
        return 0;
    if (!ValidateNameAndID({"SpectrumSetup", "Enter a name for the spectrum.",
                            "Another spectrum already uses this ID."}))
        return 0;
    const CKwTable* t = GetSpectrumTable();
    if (!t) {
        reportMissingTable();
        return 0;
    }
    if (t->GetPointCount() < 2) {
        ShowFieldError(prop("SpectrumSetup", "LabelSpectrumTable", "Spectrum Table"),
                       err("SpectrumSetup", "SpectrumTooShort",
                           "A spectrum needs at least two points."));
        return 0;
    }
    QString label, why;
    if (m_numbers.FirstProblem(*s, GetUnits(), {}, &label, &why)) {
        ShowFieldError(label, why);
        return 0;
    }
    return 1;
}

QString CKwUISpectrumSetup::GetPageTitleString() const
{
    return prop("SpectrumSetup", "Title", "Spectrum Setup");
}

int CKwUISpectrumSetup::GetValue(int field, int& value)
{
    const CKwSpectrumSetup* s = GetEditObject();
    if (!s)
        return 0;
    switch (field) {
    case FieldTable: value = m_tables.RowOf(s->m_tableId); return 1;
    case FieldKind: value = s->m_kind; return 1;
    case FieldDirection: value = s->m_direction; return 1;
    case FieldCombination: value = s->m_combination; return 1;
    default: return 0;
    }
}

int CKwUISpectrumSetup::SetValue(int field, int value)
{
    CKwSpectrumSetup* s = GetEditObject();
    if (!s)
        return 0;
    const auto within = [value](int last) { return value >= 0 && value <= last; };
    switch (field) {
    case FieldTable: {
        const int id = m_tables.IdAt(value);
        if (id <= 0)
            return 0; // "New Table" is the editor's to handle
        s->m_tableId = id;
        return 1;
    }
    case FieldKind:
        if (!within(CKwSpectrumSetup::Displacement))
            return 0;
        s->m_kind = value;
        return 1;
    case FieldDirection:
        if (!within(CKwSpectrumSetup::Z))
            return 0;
        s->m_direction = value;
        return 1;
    case FieldCombination:
        if (!within(CKwSpectrumSetup::NRL))
            return 0;
        s->m_combination = value;
        return 1;
    default: return 0;
    }
}

CKwTable* CKwUISpectrumSetup::GetSpectrumTable() const
{
    const CKwSpectrumSetup* s = GetEditObject();
    return s ? KwTableLookup::Find(GetModel(), s->m_tableId, KwTableLookup::Frequency) : nullptr;
}

bool CKwUISpectrumSetup::PrepareTableEdit()
{
    const CKwSpectrumSetup* s = GetEditObject();
    if (!s)
        return false;
    if (!GetSpectrumTable()) {
        reportMissingTable();
        LoadTableItems();
        return false;
    }
    m_tables.Edits().Keep(GetModel(), s->m_tableId);
    return true;
}

int CKwUISpectrumSetup::AddSpectrumTable()
{
    return GetEditObject() && GetModel() ? m_tables.AddTable(GetModel()) : 0;
}

void CKwUISpectrumSetup::FinishNewTable(int id, bool keep)
{
    CKwSpectrumSetup* s = GetEditObject();
    if (!keep || !s)
        m_tables.Edits().DropAdded(GetModel(), id);
    LoadTableItems();
    if (keep && s && id > 0)
        s->m_tableId = id;
}

long CKwUISpectrumSetup::OnSubmitUI()
{
    const long status = CKwFEUIBase<CKwSpectrumSetup>::OnSubmitUI();
    if (status == 0)
        m_tables.Edits().Commit();
    return status;
}

long CKwUISpectrumSetup::OnCancelUI()
{
    m_tables.Edits().Undo(GetModel());
    return CKwFEUIBase<CKwSpectrumSetup>::OnCancelUI();
}
