#pragma once
// Number fields of the analysis-setup logics as data: each row names its control code, its
// label, its unit kind and the range it accepts; reading, showing and checking are written
// once here. And the table edits such a logic makes from its editor (tables defined anew or
// edited through the table dialog), undone when the editor is cancelled.
#include "KwiCADExport.h"

#include <QList>
#include <QMap>
#include <QString>
#include <QStringList>
#include <vector>

class CKwFEModel;
class KW_UOM;

namespace KwRange {
enum : unsigned {
    Required = 0x1,     // an empty field is refused
    AboveMin = 0x2,     // the value must be above `min` (else: at least `min`)
    Whole = 0x4,        // a whole number (with HasMax: the maximum refuses what no int holds)
    HasMax = 0x8,       // at most `max`
    DampingRatio = 0x10 // at most 100 %, with the damping message
};
}

struct KwNumberRule
{
    int code;           // the control code of the field
    const char* section;
    const char* key;    // label key and English label, as the messages name the field
    const char* label;
    int unitKind;       // KwUnitKind; Dimensionless for plain numbers and per cent
    double shownFactor; // 100 when the field shows a fraction in per cent, else 1
    unsigned flags;
    double min;         // internal value
    double max = 0.0;
};

namespace KwSetupFields {
// The field's text for an internal value ("%.10g" in the display unit, per cent scaled);
// empty for a missing value.
KWICAD_EXPORT QString Show(double internal, const KwNumberRule& rule, const KW_UOM* units);
// Reads a typed text: true with the internal value (MissingDouble for an empty text), false
// for a text that is no number.
KWICAD_EXPORT bool Read(const QString& text, const KwNumberRule& rule, const KW_UOM* units,
                        double* internal);
// Why the rule refuses the value (empty when it accepts it).
KWICAD_EXPORT QString Check(double internal, const KwNumberRule& rule, const KW_UOM* units);
// The field's label as messages name it.
KWICAD_EXPORT QString Label(const KwNumberRule& rule);
// "Table %s no longer exists; choose another table."
KWICAD_EXPORT QString TableDeletedMessage(int tableId);
} // namespace KwSetupFields

// Tables a logic added to the model or changed in it, put back as they were on cancel.
class KWICAD_EXPORT KwTableEdits
{
public:
    // A table the editor created: removed again on cancel.
    void Added(int id);
    // A table about to be edited: its first state is kept for cancel.
    void Keep(const CKwFEModel* model, int id);
    // A table the editor created and then dropped at once (its dialog was cancelled).
    void DropAdded(CKwFEModel* model, int id);
    bool WasAdded(int id) const;
    // The edits belong to the model now.
    void Commit();
    // Every added table removed, every kept one restored (tables deleted meanwhile skipped).
    void Undo(CKwFEModel* model);

private:
    struct Kept
    {
        int id;
        QString name;
        std::vector<double> x, y;
        int xUnit, yUnit;
    };
    QList<int> m_added;
    QList<Kept> m_kept;
};

// The choice of a frequency table in a combo box: the model's frequency tables in order and,
// when asked, a last row "New Table". Rows and table ids are kept together so that a table
// deleted meanwhile reads as no row instead of another table.
class KWICAD_EXPORT KwTableChoice
{
public:
    // The names of the model's frequency tables (and "New Table" last when `withNew`).
    QStringList Refill(const CKwFEModel* model, bool withNew);
    // The table id of a row; -1 for "New Table", 0 for no row.
    int IdAt(int row) const;
    // The row of a table id, -1 when the id is not listed.
    int RowOf(int id) const;

    // Edits of tables made from the editor, for cancel.
    KwTableEdits& Edits() { return m_edits; }
    // Adds an empty frequency table named "New Table n" and records it; 0 without a model.
    int AddTable(CKwFEModel* model);

private:
    QList<int> m_ids;
    KwTableEdits m_edits;
};

// Number fields of an entity E: each rule with the member it reads and writes (a real, or a
// whole number for counts).
template <class E> struct KwNumberSlot
{
    KwNumberRule rule;
    double E::*real = nullptr;
    int E::*whole = nullptr;
};
