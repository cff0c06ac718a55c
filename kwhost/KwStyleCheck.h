#pragma once
// Looks at a dialog the way a careful reviewer does and lists what breaks the house look:
// labels and their colons, field columns, widgets cut off or lying on each other, texts that do
// not fit, table heads that do not fit, numbers not right-aligned in tables.
#include <QList>
#include <QString>
#include <QStringList>

class QWidget;

struct KwStyleFinding
{
    QString rule;   // one of the KwStyleRule names below
    QString widget; // which widget: its name, "#<control id>", or a path of class names
    QString detail; // what was seen, for a reader

    bool operator==(const KwStyleFinding& o) const { return rule == o.rule && widget == o.widget; }
};

namespace KwStyleRule {
// A label directly before a field (left of it on its row, or just above it) without ":".
inline const QString ColonMissing = QStringLiteral("colon-missing");
// A label ending with ":" that precedes no field.
inline const QString ColonMisplaced = QStringLiteral("colon-misplaced");
// Labelled fields of one group that start at different x positions.
inline const QString FieldColumns = QStringLiteral("field-columns");
// A widget reaching out of its parent.
inline const QString Clipped = QStringLiteral("clipped");
// Two sibling widgets lying on each other.
inline const QString Overlap = QStringLiteral("overlap");
// A caption, a button's text or a field's text wider than its widget, or elided.
inline const QString TextWider = QStringLiteral("text-wider");
// A table or tree head wider than its column.
inline const QString HeaderWider = QStringLiteral("header-wider");
// A column of numbers that is not right-aligned.
inline const QString NumberLeft = QStringLiteral("number-left");
} // namespace KwStyleRule

struct KwStyleOptions
{
    // Label texts whose colon (or its absence) is the system's own and stays as it is; "&"
    // marks are ignored when comparing.
    QStringList colonExceptions;
    // Item views whose numbers are left-aligned on purpose: by name (as findings name widgets)
    // or by a class they inherit.
    QStringList leftAlignedTables;
};

// The texts the system fixes with or without a colon, in every shipped language, and the point
// tables that are left-aligned on purpose.
KwStyleOptions KwDefaultStyleOptions();

// Every finding in `window` and its visible descendants, in a stable order (one finding per
// rule and widget).
QList<KwStyleFinding> KwCheckStyle(QWidget* window,
                                   const KwStyleOptions& options = KwDefaultStyleOptions());

// "rule widget" for each finding: the form test lists and reports use.
QStringList KwStyleKeys(const QList<KwStyleFinding>& findings);
