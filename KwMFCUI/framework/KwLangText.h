#pragma once
// Language-text helpers every dialog uses: lookups by (section, key, English default), the
// label and caption formats, and setting a control's text by its id.
#include "KwMFCUIExport.h"

#include <QString>

class QWidget;

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

// One row of a dialog's label table.
struct KwTextRow
{
    int ctrlId;
    const char* section;
    const char* key;
    const char* english;
    bool label; // true: ":" appended
};

// Applies a dialog's label table in order.
template <std::size_t N>
void KwApplyTextTable(QWidget* root, const KwTextRow (&rows)[N])
{
    for (const KwTextRow& r : rows) {
        const QString t = KwPropText(r.section, r.key, r.english);
        KwSetControlText(root, r.ctrlId, r.label ? KwLabel(t) : t);
    }
}
