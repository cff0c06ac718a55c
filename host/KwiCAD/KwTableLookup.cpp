#include "KwTableLookup.h"

#include "CKwFEModel.h"

namespace KwTableLookup {

QList<Entry> List(const CKwFEModel* model, int use)
{
    QList<Entry> out;
    if (!model)
        return out;
    for (const CKwFEModel::TableRef& t : model->m_tableRefs)
        if (t.use == use)
            out.append({t.id, t.name});
    return out;
}

bool Exists(const CKwFEModel* model, int id, int use)
{
    if (!model || id <= 0)
        return false;
    for (const CKwFEModel::TableRef& t : model->m_tableRefs)
        if (t.id == id && t.use == use)
            return true;
    return false;
}

int Add(CKwFEModel* model, int use, const QString& name)
{
    if (!model)
        return 0;
    int id = 0;
    for (const CKwFEModel::TableRef& t : model->m_tableRefs)
        id = t.id > id ? t.id : id;
    model->m_tableRefs.append({id + 1, use, name});
    return id + 1;
}

bool Remove(CKwFEModel* model, int id)
{
    if (!model)
        return false;
    for (qsizetype i = 0; i < model->m_tableRefs.size(); ++i) {
        if (model->m_tableRefs[i].id == id) {
            model->m_tableRefs.removeAt(i);
            return true;
        }
    }
    return false;
}

} // namespace KwTableLookup
