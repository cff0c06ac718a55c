#include "KwSetupFields.h"

#include "CKwFEModel.h"
#include "CKwFEUIBase.h"
#include "CKwFunction.h"
#include "CKwTable.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwTableLookup.h"
#include "KwUIText.h"

#include <cmath>

using KwUIText::err;
using KwUIText::prop;

namespace KwSetupFields {

namespace {
const KW_UOM& si()
{
    static const KW_UOM s(KW_UOM::SI);
    return s;
}
const KW_UOM& or_si(const KW_UOM* units) { return units ? *units : si(); }
} // namespace

QString Show(double internal, const KwNumberRule& rule, const KW_UOM* units)
{
    if (IsMissingValue(internal))
        return QString();
    if (rule.shownFactor != 1.0)
        return KwEntityLogic::FormatNumber(internal * rule.shownFactor);
    return KwEntityLogic::FormatShown(internal, rule.unitKind, &or_si(units));
}

bool Read(const QString& text, const KwNumberRule& rule, const KW_UOM* units, double* internal)
{
    const QString t = text.trimmed();
    if (t.isEmpty()) {
        *internal = MissingDouble;
        return true;
    }
    double v = MissingDouble;
    if (!or_si(units).ReadInternalValue(t, rule.unitKind, &v))
        return false;
    *internal = rule.shownFactor != 1.0 ? v / rule.shownFactor : v;
    return true;
}

QString Check(double v, const KwNumberRule& rule, const KW_UOM* units)
{
    if (IsMissingValue(v))
        return rule.flags & KwRange::Required
                   ? err("AnalysisSetup", "ValueRequired", "Enter a value.")
                   : QString();
    if ((rule.flags & KwRange::Whole) && v != std::floor(v))
        return err("AnalysisSetup", "WholeNumberRequired", "Enter a whole number.");
    const QString min = Show(rule.min, rule, units);
    if ((rule.flags & KwRange::AboveMin) ? !(v > rule.min) : v < rule.min)
        return KwEntityLogic::FillArgs(
            rule.flags & KwRange::AboveMin
                ? err("AnalysisSetup", "ValueAboveRequired", "Enter a value above %s.")
                : err("AnalysisSetup", "ValueAtLeastRequired", "Enter a value of at least %s."),
            {min});
    if ((rule.flags & KwRange::DampingRatio) && v > 1.0)
        return err("AnalysisSetup", "DampingOver100", "A damping ratio cannot be over 100 %.");
    if ((rule.flags & KwRange::HasMax) && v > rule.max)
        return KwEntityLogic::FillArgs(
            err("AnalysisSetup", "ValueAtMostRequired", "Enter a value of at most %s."),
            {Show(rule.max, rule, units)});
    return QString();
}

QString Label(const KwNumberRule& rule) { return prop(rule.section, rule.key, rule.label); }

QString TableDeletedMessage(int tableId)
{
    return KwEntityLogic::FillArgs(err("AnalysisSetup", "TableDeleted",
                                       "Table %s no longer exists; choose another table."),
                                   {QString::number(tableId)});
}

} // namespace KwSetupFields

namespace {
CKwTable* findTable(const CKwFEModel* model, int id)
{
    if (!model)
        return nullptr;
    for (CKwTable* t : model->m_tables)
        if (t->GetID() == id)
            return t;
    return nullptr;
}
void removeTable(CKwFEModel* model, int id)
{
    if (CKwTable* t = findTable(model, id)) {
        model->m_tables.removeOne(t);
        delete t;
    }
}
} // namespace

void KwTableEdits::Added(int id)
{
    if (id > 0 && !m_added.contains(id))
        m_added.append(id);
}

bool KwTableEdits::WasAdded(int id) const { return m_added.contains(id); }

void KwTableEdits::Keep(const CKwFEModel* model, int id)
{
    const CKwTable* t = findTable(model, id);
    if (!t || m_added.contains(id))
        return; // a table this editor added goes as a whole
    for (const Kept& k : std::as_const(m_kept))
        if (k.id == id)
            return; // the first state is the one to go back to
    m_kept.append({id, t->GetName(), t->GetXFunction()->Values(), t->GetYFunction()->Values(),
                   t->GetXFunction()->GetUnitType(), t->GetYFunction()->GetUnitType()});
}

void KwTableEdits::DropAdded(CKwFEModel* model, int id)
{
    if (!m_added.removeOne(id))
        return; // only what this editor added
    removeTable(model, id);
}

void KwTableEdits::Commit()
{
    m_added.clear();
    m_kept.clear();
}

void KwTableEdits::Undo(CKwFEModel* model)
{
    for (int id : std::as_const(m_added))
        removeTable(model, id);
    for (const Kept& k : std::as_const(m_kept)) {
        CKwTable* t = findTable(model, k.id);
        if (!t)
            continue; // deleted meanwhile: nothing to put back
        const auto column = [](const std::vector<double>& values, int unitType) {
            auto* f = new CKwFunction;
            for (double v : values)
                f->AddValue(v);
            f->SetUnitType(unitType);
            return f;
        };
        t->SetName(k.name);
        t->SetFunctions(column(k.x, k.xUnit), column(k.y, k.yUnit));
    }
    Commit();
}

QStringList KwTableChoice::Refill(const CKwFEModel* model, bool withNew)
{
    QStringList names;
    m_ids.clear();
    for (const KwTableLookup::Entry& t : KwTableLookup::List(model, KwTableLookup::Frequency)) {
        names << t.name;
        m_ids.append(t.id);
    }
    if (withNew) {
        names << prop("AnalysisSetup", "DropDownNewTable", "New Table");
        m_ids.append(-1);
    }
    return names;
}

int KwTableChoice::IdAt(int row) const { return row >= 0 && row < m_ids.size() ? m_ids[row] : 0; }

int KwTableChoice::RowOf(int id) const { return id > 0 ? int(m_ids.indexOf(id)) : -1; }

int KwTableChoice::AddTable(CKwFEModel* model)
{
    const int count = int(KwTableLookup::List(model, KwTableLookup::Frequency).size());
    const int id = KwTableLookup::Add(model, KwTableLookup::Frequency,
                                      prop("AnalysisSetup", "DropDownNewTable", "New Table") +
                                          QStringLiteral(" %1").arg(count + 1));
    m_edits.Added(id);
    return id;
}
