#pragma once
// Number fields of the analysis-setup logics: reading a field's text into an internal value
// (a field the user left alone keeps the stored value exactly; a text that is no number is
// remembered, not stored) and the rule a value must pass, with the message of the first
// failure. Internal to the host library.
#include <QHash>
#include <QString>

class CKwUIBase;
class KW_UOM;

namespace KwStudyFields {

enum Rule : unsigned {
    Optional = 0,
    Required = 1,               // a value must be entered
    Positive = 2 | Required,    // above zero
    NonNegative = 4 | Required, // zero or more
    WholeNumber = 8,            // no fraction
};

class Reader
{
public:
    // Forgets the texts that were no numbers.
    void Clear() { m_bad.clear(); }
    // Reads the text of control code `code` into `value` (internal, from the units of
    // `unitKind`; without units SI). An empty field makes the value missing.
    void Read(CKwUIBase& ui, int code, int unitKind, const KW_UOM* units, double& value);
    // Empty when the field's last reading and `value` pass `rule`; else what is wrong.
    QString Problem(int code, int unitKind, const KW_UOM* units, unsigned rule,
                    double value) const;

private:
    QHash<int, QString> m_bad;
};

// The message texts of the rules (section "AnalysisSetup").
QString EnterValueText();
QString PositiveText();
QString NonNegativeText();
QString WholeNumberText();

} // namespace KwStudyFields
