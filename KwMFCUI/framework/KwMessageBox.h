#pragma once
// Message boxes in the host's terms: style bits choose icon and buttons, the pressed button
// comes back as the platform's result code. Both mappings are plain functions so they can be
// checked without showing anything.
#include "KwMFCUIExport.h"

#include <QMessageBox>
#include <QString>

namespace KwMB {
// Style bits.
enum : unsigned {
    OK = 0x0, OKCANCEL = 0x1, ABORTRETRYIGNORE = 0x2, YESNOCANCEL = 0x3, YESNO = 0x4,
    RETRYCANCEL = 0x5, ICONERROR = 0x10, ICONQUESTION = 0x20, ICONWARNING = 0x30,
    ICONINFORMATION = 0x40,
};
// Result codes.
enum : int { IDOK = 1, IDCANCEL = 2, IDABORT = 3, IDRETRY = 4, IDIGNORE = 5, IDYES = 6,
             IDNO = 7, IDCLOSE = 8 };
} // namespace KwMB

// The product's display name: the caption of every message box of the module.
KWMFCUI_EXPORT QString KwProductDisplayName();

KWMFCUI_EXPORT QMessageBox::Icon KwStyleToIcon(unsigned style);
KWMFCUI_EXPORT QMessageBox::StandardButtons KwStyleToButtons(unsigned style);
// The result code of a pressed button (IDCANCEL for anything unknown, as closing the box).
KWMFCUI_EXPORT int KwButtonToResult(QMessageBox::StandardButton button);

// Marks a box's message as the host's words, not a text of the module.
KWMFCUI_EXPORT void KwMarkHostText(QMessageBox& box);

// Shows a message box owned by `owner` (may be null) and returns the result code. Buttons are
// captioned in the current language; `hostText` says the message is the host's own words.
KWMFCUI_EXPORT int KwMessageBoxW(QWidget* owner, const QString& text, const QString& caption,
                                 unsigned style, bool hostText = false);
// A box captioned with the product display name; `helpId` is kept for the host's help.
KWMFCUI_EXPORT int KwAfxMessageBox(const QString& text, unsigned style = KwMB::OK,
                                   unsigned helpId = 0, bool hostText = false);
