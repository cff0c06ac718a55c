#pragma once
// Language-text helpers every dialog uses: lookups by (section, key, English default), the
// label and caption formats, and setting a control's text by its id.
#include "KwMFCUIExport.h"

#include <QString>
#include <span>

class QWidget;
class KW_UOM;

// Caption, label or button text in the current language.
KWMFCUI_EXPORT QString KwPropText(const char* section, const char* key, const char* english);
// Message text in the current language.
KWMFCUI_EXPORT QString KwErrText(const char* section, const char* key, const char* english);
// Tree item text in the current language.
KWMFCUI_EXPORT QString KwTreeText(const char* section, const char* key, const char* english);
// "%s:" — how every field label ends.
KWMFCUI_EXPORT QString KwLabel(const QString& text);
// "%s - '%s'" — a title that names the object shown.
KWMFCUI_EXPORT QString KwTitleWithName(const QString& title, const QString& name);
// "%s - \n '%s'" — a message about one field, from its label and the message text.
KWMFCUI_EXPORT QString KwFieldMessage(const QString& label, const QString& message);

// Sets the visible text of the control with this id under `root` (labels, buttons, group
// boxes, check boxes, edits). A missing id is skipped. Returns whether a control was found.
KWMFCUI_EXPORT bool KwSetControlText(QWidget* root, int ctrlId, const QString& text);
// The visible text of the control with this id, or an empty string.
KWMFCUI_EXPORT QString KwGetControlText(QWidget* root, int ctrlId);

// Where a text row's text goes.
enum class KwTextTarget : unsigned char {
    Caption,   // the control's visible text as it stands (static, button, group, check box)
    Label,     // the same, followed by ":"
    ToolTip,   // the control's tool tip
    UnitLabel, // "%s (%s):" with the unit label of the row's unit kind
    Item,      // one item appended to a combo box; the box is emptied before its first item
};

// How a text row's text is looked up.
enum class KwTextLookup : unsigned char { Prop, Tree, Err };

// Where a row goes; a plain bool (true: ":" appended) reads as Label or Caption, so short
// tables can stay short.
struct KwTextTo
{
    KwTextTarget target;
    constexpr KwTextTo(KwTextTarget t) : target(t) {}
    constexpr KwTextTo(bool label) : target(label ? KwTextTarget::Label : KwTextTarget::Caption) {}
};

// One row of a dialog's text table. `when`, if given, decides whether the row applies now
// (an item offered only while a feature is switched on).
struct KwTextRow
{
    int ctrlId;
    const char* section;
    const char* key;
    const char* english;
    KwTextTo to = KwTextTarget::Caption;
    KwTextLookup lookup = KwTextLookup::Prop;
    int unitKind = 0;
    bool (*when)() = nullptr;
};

// The row's text in the current language, before it is placed.
KWMFCUI_EXPORT QString KwRowText(const KwTextRow& row);

// Applies a dialog's text table in order. Unit labels take their unit from `units` (none:
// an empty unit). Combo boxes filled by Item rows keep their current row where it still
// exists and send no change signals.
KWMFCUI_EXPORT void KwApplyTextTable(QWidget* root, std::span<const KwTextRow> rows,
                                     const KW_UOM* units = nullptr);
