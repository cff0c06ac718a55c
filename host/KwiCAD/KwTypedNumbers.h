#pragma once
// Reading the number fields of an edit copy: a field that still shows the stored value keeps
// it to the last bit, an emptied field unsets the value, and a text that is no number leaves
// the stored value alone and is remembered, so that the submit's validation can name the
// field. Internal to the host library.
#include "CKwFEUIBase.h"
#include "KW_UOM.h"
#include "KwNumbers.h"

#include <QString>

namespace KwTypedNumbers {

// SI without a view's unit system.
const KW_UOM& UnitsOf(const CFMView* view);

// The text a field shows for an internal value in the display unit of `unitKind`; empty when
// the value is unset.
QString Shown(double internal, int unitKind, const KW_UOM& units);

// Takes the field's text into `stored`. False (and `stored` untouched) for a text that is no
// number in the display unit.
bool Read(const QString& text, double& stored, int unitKind, const KW_UOM& units);

// The same for a whole number; an emptied field gives 0.
bool ReadCount(const QString& text, int& stored);

} // namespace KwTypedNumbers
