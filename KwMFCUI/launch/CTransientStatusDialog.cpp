#include "CTransientStatusDialog.h"

#include "KwLangText.h"

CTransientStatusDialog::CTransientStatusDialog(QWidget* parent)
    : CNLstatusDialog(kTemplateId, parent)
{
}

QString CTransientStatusDialog::StatusTitle() const
{
    return KwPropText("NLStatus", "TransientTitle", "Transient Status");
}
