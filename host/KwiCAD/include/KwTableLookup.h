#pragma once
// The point tables a load may depend on, found through the model. A load keeps a table by id
// only and asks here each time, so a table deleted meanwhile reads as missing instead of
// leaving a dangling pointer.
#include "KwiCADExport.h"

#include <QList>
#include <QString>

class CKwFEModel;

namespace KwTableLookup {

// What a table gives a load: values over time or over temperature.
enum Use { Time = 1, Temperature = 2 };

struct Entry
{
    int id = 0;
    QString name;
};

// The model's tables of one use, in the model's order.
KWICAD_EXPORT QList<Entry> List(const CKwFEModel* model, int use);
// True when the model has a table with this id and use.
KWICAD_EXPORT bool Exists(const CKwFEModel* model, int id, int use);
// Adds a table reference and returns its id (the next free id across all uses).
KWICAD_EXPORT int Add(CKwFEModel* model, int use, const QString& name);
// Forgets a table; loads that name it are left as they are.
KWICAD_EXPORT bool Remove(CKwFEModel* model, int id);

} // namespace KwTableLookup
