#include "CKwUIBase.h"

#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwSubCase.h"
#include "KwNumbers.h"
#include "KwUIText.h"

CKwUIBase::CKwUIBase() = default;
CKwUIBase::~CKwUIBase() = default;

void CKwUIBase::ReloadObjectData()
{
    LoadObjectData();
    OnObjectDataLoaded();
}

void CKwUIBase::OnKwMessage(const QString& text, unsigned, unsigned) { m_lastMessage = text; }

void CKwUIBase::ShowFieldError(const QString& label, const QString& message) const
{
    if (m_pView)
        m_pView->ShowBubbleToolTipError(QStringLiteral("%1 - \n '%2'").arg(label, message), 0);
}

int CKwUIBase::ValidateIdentity(const QString& name, int id, bool idTaken,
                                const IdentityTexts& texts) const
{
    using KwUIText::err;
    using KwUIText::prop;
    if (name.isEmpty()) {
        ShowFieldError(prop("General", "LabelName", "Name"),
                       err(texts.section, "NameRequired", texts.nameRequired));
        return 0;
    }
    if (IsMissingValue(id) || id <= 0) {
        ShowFieldError(prop("General", "LabelID", "ID"),
                       err("General", "PositiveIntegerRequired", "Enter a positive whole number."));
        return 0;
    }
    if (idTaken) {
        ShowFieldError(prop("General", "LabelID", "ID"),
                       err(texts.section, "DuplicateID", texts.duplicateId));
        return 0;
    }
    return 1;
}

CKwAnalysis* CKwUIBase::AnalysisInContext(const CKwSubCase* subcase, CKwAnalysis* chosen,
                                          const CKwFEModel* model)
{
    if (subcase && subcase->GetAnalysis())
        return subcase->GetAnalysis();
    if (chosen)
        return chosen;
    return model && !model->m_analyses.isEmpty() ? model->m_analyses.first() : nullptr;
}
