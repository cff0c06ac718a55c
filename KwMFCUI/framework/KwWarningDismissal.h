#pragma once
// Advisories the user may silence. An advisory that offers "Don't show again" keeps that choice
// per user under the registry section "KwGeneralWarningMessages", one entry per advisory (its
// key, 1 when dismissed). Every such advisory goes through KwAdvisoryBox, so the flags and the
// check box behave alike everywhere, and the display preferences can forget them all at once.
#include "KwMFCUIExport.h"
#include "KwMessageBox.h"

#include <QString>

class QWidget;

inline constexpr const char* KwWarningMessagesSection = "KwGeneralWarningMessages";

// Whether the advisory `key` was dismissed. Only a whole number other than 0 counts; a value
// of another kind (text, a list, a number with a fraction) reads as not dismissed.
KWMFCUI_EXPORT bool KwIsWarningDismissed(const QString& key);
// Keeps (or drops) the dismissal of one advisory; false when the registry could not be written.
KWMFCUI_EXPORT bool KwSetWarningDismissed(const QString& key, bool dismissed);
// Forgets every dismissal, so each advisory shows again; the number forgotten.
KWMFCUI_EXPORT int KwResetWarningDismissals();

// Shows an advisory with a "Don't show again" check box over `owner`, unless it was dismissed:
// then nothing shows and the result is IDOK. A ticked box is kept when the user answers with
// anything but Cancel (or Escape on a box that offers Cancel). The box's result code otherwise.
KWMFCUI_EXPORT int KwAdvisoryBox(QWidget* owner, const QString& key, const QString& text,
                                 const QString& caption,
                                 unsigned style = KwMB::OK | KwMB::ICONINFORMATION);
