#include "CKwDlgBase.h"

#include <QList>

namespace {
QList<CKwDlgBase*>& liveDialogs()
{
    static QList<CKwDlgBase*> list;
    return list;
}
} // namespace

CKwDlgBase::CKwDlgBase() { liveDialogs().append(this); }

CKwDlgBase::~CKwDlgBase() { liveDialogs().removeOne(this); }

void CKwDlgBase::RetranslateAll()
{
    // Copy: re-captioning must not be disturbed by a dialog that closes meanwhile.
    const QList<CKwDlgBase*> dialogs = liveDialogs();
    for (CKwDlgBase* d : dialogs)
        if (liveDialogs().contains(d))
            d->SetTextToCurrentLang();
}

int CKwDlgBase::LiveCount() { return static_cast<int>(liveDialogs().size()); }
