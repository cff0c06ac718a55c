#include "KwTableLookup.h"

#include "CKwFEModel.h"
#include "CKwTable.h"

namespace KwTableLookup {

namespace {
bool isUse(const CKwTable* t, int use)
{
    return (use == Time && t->GetTableType() == CKwTable::TimeCurve) ||
           (use == Temperature && t->GetTableType() == CKwTable::TemperatureTable) ||
           (use == Frequency && t->GetTableType() == CKwTable::FrequencyTable);
}
} // namespace

QList<Entry> List(const CKwFEModel* model, int use)
{
    QList<Entry> out;
    if (!model)
        return out;
    for (const CKwTable* t : model->m_tables)
        if (isUse(t, use))
            out.append({t->GetID(), t->GetName()});
    return out;
}

CKwTable* Find(const CKwFEModel* model, int id, int use)
{
    if (!model || id <= 0)
        return nullptr;
    for (CKwTable* t : model->m_tables)
        if (t->GetID() == id && isUse(t, use))
            return t;
    return nullptr;
}

bool Exists(const CKwFEModel* model, int id, int use) { return Find(model, id, use) != nullptr; }

int Add(CKwFEModel* model, int use, const QString& name)
{
    if (!model || (use != Time && use != Temperature && use != Frequency))
        return 0;
    const int id = CKwFEModel::NextId(model->m_tables);
    model->m_tables.append(new CKwTable(id, name, static_cast<CKwTable::TableType>(use)));
    return id;
}

bool Remove(CKwFEModel* model, int id)
{
    if (!model)
        return false;
    for (qsizetype i = 0; i < model->m_tables.size(); ++i) {
        if (model->m_tables[i]->GetID() == id) {
            delete model->m_tables.takeAt(i);
            return true;
        }
    }
    return false;
}

} // namespace KwTableLookup
