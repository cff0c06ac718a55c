#include "CKwUIModalSetup.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "KW_UOM.h"
#include "KwSetupReaders.h"
#include "KwUIText.h"

using KwUIText::err;
using KwUIText::prop;
namespace F = KwSetupReaders;

CKwUIModalSetup::CKwUIModalSetup() = default;
CKwUIModalSetup::~CKwUIModalSetup() = default;

const KW_UOM* CKwUIModalSetup::units() const
{
    return m_pView ? m_pView->GetUnitHolder() : nullptr;
}

std::unique_ptr<CKwModalSetup> CKwUIModalSetup::CreateNewObject()
{
    return std::make_unique<CKwModalSetup>();
}

void CKwUIModalSetup::AddNewObjects()
{
    // A setup belongs to its analysis; without one there is nowhere to keep it.
    if (!m_analysis || !m_edit)
        return;
    m_analysis->SetModalSetup(new CKwModalSetup(*m_edit));
    m_pObject = m_analysis->GetModalSetup();
}

QString CKwUIModalSetup::GetPageTitleString() const
{
    return prop("ModalSetup", "Title", "Modal Setup");
}

void CKwUIModalSetup::LoadObjectData()
{
    const CKwModalSetup* s = GetEditObject();
    if (!s)
        return;
    SetControlText(CodeModes, QString::number(s->m_modeCount));
    SetControlText(CodeLower,
                   KwEntityLogic::FormatShown(s->m_lowerFrequency, KwUnitKind::Frequency, units()));
    SetControlText(CodeUpper,
                   KwEntityLogic::FormatShown(s->m_upperFrequency, KwUnitKind::Frequency, units()));
    m_modesStatus = m_lowerStatus = m_upperStatus = F::Read;
}

void CKwUIModalSetup::UpdateObjectData(bool)
{
    CKwModalSetup* s = GetEditObject();
    if (!s)
        return;
    QString text;
    if (GetControlText(CodeModes, text))
        m_modesStatus = F::ReadCount(text, 1, &s->m_modeCount);
    // An empty limit stays missing; a typed one must read.
    const auto readLimit = [&](int code, double& value, int& status) {
        status = F::Read;
        if (!GetControlText(code, text) ||
            KwEntityLogic::ShowsUnchanged(
                text, KwEntityLogic::FormatShown(value, KwUnitKind::Frequency, units())))
            return;
        if (text.trimmed().isEmpty()) {
            value = MissingDouble;
            return;
        }
        status = F::ReadQuantity(text, KwUnitKind::Frequency, units(), false, &value);
    };
    readLimit(CodeLower, s->m_lowerFrequency, m_lowerStatus);
    readLimit(CodeUpper, s->m_upperFrequency, m_upperStatus);
}

int CKwUIModalSetup::ValidateObjectData()
{
    const CKwModalSetup* s = GetEditObject();
    if (!s)
        return 0;
    const auto label = [](const char* key, const char* english) {
        return prop("ModalSetup", key, english);
    };
    if (m_modesStatus != F::Read) {
        ShowFieldError(label("LabelModeCount", "Number of Modes"),
                       F::Message(F::Reason(m_modesStatus), KwUnitKind::Dimensionless, units()));
        return 0;
    }
    // The limits count only while the band is switched on.
    if (!s->m_useBand)
        return 1;
    const QString lower = label("LabelLowerFrequency", "Lower Frequency");
    const QString upper = label("LabelUpperFrequency", "Upper Frequency");
    if (m_lowerStatus != F::Read) {
        ShowFieldError(lower, F::Message(F::Reason(m_lowerStatus), KwUnitKind::Frequency, units()));
        return 0;
    }
    if (m_upperStatus != F::Read) {
        ShowFieldError(upper, F::Message(F::Reason(m_upperStatus), KwUnitKind::Frequency, units()));
        return 0;
    }
    if (IsMissingValue(s->m_lowerFrequency)) {
        ShowFieldError(lower, err("ModalSetup", "LowerRequired", "Enter the lower frequency."));
        return 0;
    }
    if (IsMissingValue(s->m_upperFrequency)) {
        ShowFieldError(upper, err("ModalSetup", "UpperRequired", "Enter the upper frequency."));
        return 0;
    }
    if (s->m_upperFrequency <= s->m_lowerFrequency) {
        ShowFieldError(upper, err("ModalSetup", "BandOrder",
                                  "Enter an upper frequency above the lower frequency."));
        return 0;
    }
    return 1;
}

int CKwUIModalSetup::GetValue(int field, int& value)
{
    const CKwModalSetup* s = GetEditObject();
    if (!s)
        return 0;
    switch (field) {
    case FieldUseBand: value = s->m_useBand ? 1 : 0; return 1;
    case FieldNormalization: value = s->m_normalization; return 1;
    default: return 0;
    }
}

int CKwUIModalSetup::SetValue(int field, int value)
{
    CKwModalSetup* s = GetEditObject();
    if (!s)
        return 0;
    switch (field) {
    case FieldUseBand: s->m_useBand = value != 0; return 1;
    case FieldNormalization:
        if (value != CKwModalSetup::NormalizeMass && value != CKwModalSetup::NormalizeMaxDisplacement)
            return 0;
        s->m_normalization = value;
        return 1;
    default: return 0;
    }
}
