#pragma once
// The house look every dialog shares: one set of margins and spacings, how numbers are written
// and aligned, how labels end and how units and axis titles are put together. A dialog takes
// its numbers from here instead of choosing its own, so that all of them look like one product.
#include "KwMFCUIExport.h"

#include <QString>
#include <Qt>

class QAbstractItemView;
class QFontMetrics;
class QGridLayout;
class QLayout;
class QLineEdit;
class QWidget;

namespace KwStyle {

// Margins and spacing, in pixels.
inline constexpr int DialogMargin = 11;  // between a dialog's edge and its contents
inline constexpr int GroupMargin = 9;    // between a group box's frame and its contents
inline constexpr int RowSpacing = 6;     // between two rows of label and field
inline constexpr int ColumnSpacing = 8;  // between a label and its field, a field and its unit
inline constexpr int GroupSpacing = 10;  // between two groups, and above the button row
inline constexpr int ButtonSpacing = 6;  // between two buttons of a button row

// Widths, in average characters of the dialog's font.
inline constexpr int NumberFieldChars = 12; // a number field: "%.10g" of most values fits
inline constexpr int TripleFieldChars = 9;  // each field of an X, Y, Z triple
inline constexpr int SwatchChars = 6;       // a colour swatch

// The extra room a header or cell needs besides its text (both sides together).
inline constexpr int CellPadding = 12;

// Editable values: "%.10g", so that 200000 reads "200000" and a typed value survives being
// shown again. An empty text for values that are not numbers (NaN, infinities).
KWMFCUI_EXPORT QString EditableNumber(double value);
// Computed values shown with a fixed format: "%0.3f" and "%0.3E". Empty for NaN and infinities.
KWMFCUI_EXPORT QString FixedNumber(double value);
KWMFCUI_EXPORT QString ScientificNumber(double value);

// "Text:" for a label that precedes a field; a text that already ends with ":" keeps it, and
// blanks before the colon are dropped.
KWMFCUI_EXPORT QString FieldLabel(const QString& text);
// "Title (unit)" for axis titles and column heads; the title alone when the unit is empty.
KWMFCUI_EXPORT QString WithUnit(const QString& title, const QString& unit);

// How numbers sit in a table cell or a list: right, vertically centred.
inline constexpr Qt::Alignment NumberAlignment = Qt::AlignRight | Qt::AlignVCenter;
// How texts sit in a table cell.
inline constexpr Qt::Alignment TextAlignment = Qt::AlignLeft | Qt::AlignVCenter;

// The pixel width of `chars` average characters of a font, as fields are sized.
KWMFCUI_EXPORT int CharsWidth(const QFontMetrics& metrics, int chars);

// Gives a dialog's top layout its margins and spacing.
KWMFCUI_EXPORT void ApplyDialogLayout(QLayout* layout);
// Gives a group box's layout its margins and spacing.
KWMFCUI_EXPORT void ApplyGroupLayout(QLayout* layout);
// A grid of label (column 0) and field (column 1, and further columns for units): labels
// right of nothing, fields in one column that takes the spare width.
KWMFCUI_EXPORT void ApplyFormGrid(QGridLayout* grid);

// Gives every layout of a dialog the house margins and spacings: the dialog's own layout
// `ApplyDialogLayout`, a group box's `ApplyGroupLayout`, grids their column and row spacing,
// rows and columns of widgets the row spacing. Layouts nested in another keep no margin of
// their own; a panel's layout (a plain widget that is shown instead of another) keeps its
// margins. Every dialog runs it once before its first showing.
KWMFCUI_EXPORT void ApplyHouseLayout(QWidget* dialog);

// Labels the three fields of a direction or coordinate triple "X", "Y" and "Z": each letter
// sits at the start of its field, inside it, so the triple keeps the width of its column.
// The letters come from the language service (section "General"); a dialog calls it again
// when its language changes.
KWMFCUI_EXPORT void LabelTriple(QLineEdit* x, QLineEdit* y, QLineEdit* z);

// Widens the columns of a table or tree so that every header text fits (in the view's current
// language), never narrowing a column, and lets the last column take the rest of the width.
KWMFCUI_EXPORT void FitHeaders(QAbstractItemView* view);

} // namespace KwStyle
