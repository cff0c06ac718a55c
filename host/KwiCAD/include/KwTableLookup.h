#pragma once
// The point tables a load may depend on, found among the model's tables. A load keeps a table
// by id only and asks here each time, so a table deleted meanwhile reads as missing instead of
// leaving a dangling pointer.
#include "KwiCADExport.h"

#include <QList>
#include <QString>

class CKwFEModel;
class CKwTable;

namespace KwTableLookup {

// What a table gives a load: values over time (a time curve) or over temperature (a
// temperature table); damping and spectra take values over frequency. The numbers are the
// table types of CKwTable.
enum Use { Time = 1, Temperature = 2, Frequency = 3 };

struct Entry
{
    int id = 0;
    QString name;
};

// The model's tables of one use, in the model's order.
KWICAD_EXPORT QList<Entry> List(const CKwFEModel* model, int use);
// The table with this id and use, or null.
KWICAD_EXPORT CKwTable* Find(const CKwFEModel* model, int id, int use);
// True when the model has a table with this id and use.
KWICAD_EXPORT bool Exists(const CKwFEModel* model, int id, int use);
// Adds an empty table of this use to the model and returns its id (the next free table id);
// 0 without a model or for an unknown use.
KWICAD_EXPORT int Add(CKwFEModel* model, int use, const QString& name);
// Deletes a table; loads that name it are left as they are and report it missing.
KWICAD_EXPORT bool Remove(CKwFEModel* model, int id);

} // namespace KwTableLookup
