#pragma once
// Number fields of the model editors' logics: a control code, the unit kind its value is shown
// in and the field's label. The reader fills such a field in the display unit, takes it back
// only when the user changed its text, and keeps the first field whose text it cannot take,
// so that validation can name that field and stop there.
#include "KW_UOM.h"
#include "KwiCADExport.h"

#include <QString>

class CKwUIBase;

struct KwNumberField
{
    int code;
    int unitKind;
    const char* section;
    const char* key;
    const char* english;
};

class KWICAD_EXPORT KwNumberReader
{
public:
    // The label of a field in the current language.
    static QString Label(const KwNumberField& field);

    // Starts a read of the dialog in `units` (SI without units); forgets an earlier bad field.
    void Begin(const KW_UOM* units);
    // The value as the field shows it (empty when missing).
    QString Shown(const KwNumberField& field, double value) const;
    // Fills the field's control; false when the dialog has no such control.
    bool Load(CKwUIBase& ui, const KwNumberField& field, double value) const;
    // Takes the field's text into *target unless it still shows *target. An empty text is the
    // missing value; a text that is no number of the field's kind leaves *target as it was and
    // is remembered when it is the first bad one.
    void Read(CKwUIBase& ui, const KwNumberField& field, double* target);

    bool HasError() const { return m_bad != nullptr; }
    const KwNumberField* BadField() const { return m_bad; }
    // The bad field's label and the message that says what it takes.
    QString ErrorLabel() const;
    QString ErrorMessage() const;

private:
    const KW_UOM* units() const { return m_units ? m_units : &m_si; }

    const KW_UOM* m_units = nullptr;
    KW_UOM m_si;
    const KwNumberField* m_bad = nullptr;
    QString m_badText;
};
