#include "KwEditorNumbers.h"

#include "CKwFEUIBase.h"
#include "CKwUIBase.h"
#include "KwNumbers.h"
#include "KwUIText.h"

QString KwNumberReader::Label(const KwNumberField& field)
{
    return KwUIText::prop(field.section, field.key, field.english);
}

void KwNumberReader::Begin(const KW_UOM* units)
{
    m_units = units;
    m_bad = nullptr;
    m_badText.clear();
}

QString KwNumberReader::Shown(const KwNumberField& field, double value) const
{
    return KwEntityLogic::FormatShown(value, field.unitKind, m_units);
}

bool KwNumberReader::Load(CKwUIBase& ui, const KwNumberField& field, double value) const
{
    return ui.SetControlText(field.code, Shown(field, value)) != 0;
}

void KwNumberReader::Read(CKwUIBase& ui, const KwNumberField& field, double* target)
{
    QString text;
    if (!target || !ui.GetControlText(field.code, text) ||
        KwEntityLogic::ShowsUnchanged(text, Shown(field, *target)))
        return;
    int status = KW_UOM::ParseOk;
    const double v = units()->ParseQuantity(text, field.unitKind, &status);
    if (status == KW_UOM::ParseOk)
        *target = v;
    else if (status == KW_UOM::ParseEmpty)
        *target = MissingDouble;
    else if (!m_bad) {
        m_bad = &field;
        m_badText = text.trimmed();
    }
}

QString KwNumberReader::ErrorLabel() const
{
    return m_bad ? Label(*m_bad) : QString();
}

QString KwNumberReader::ErrorMessage() const
{
    return m_bad ? units()->GetErrorMessageForUnit(m_badText, m_bad->unitKind) : QString();
}
