#include "KwWarningDismissal.h"

#include "KwLangText.h"
#include "KwRegistry.h"

#include <QAbstractButton>
#include <QCheckBox>

namespace {
const QString kSection = QString::fromLatin1(KwWarningMessagesSection);
}

bool KwIsWarningDismissed(const QString& key)
{
    if (key.isEmpty())
        return false;
    // Read as text: a value written by another program or by hand may be anything.
    bool ok = false;
    const int v = KwReadRegistryCurrentUser(kSection, key, QString()).trimmed().toInt(&ok);
    return ok && v != 0;
}

bool KwSetWarningDismissed(const QString& key, bool dismissed)
{
    if (key.isEmpty())
        return false;
    return KwWriteToRegistryCurrentUser(kSection, key, dismissed ? 1 : 0);
}

int KwResetWarningDismissals() { return KwRemoveRegistrySection(kSection); }

int KwAdvisoryBox(QWidget* owner, const QString& key, const QString& text, const QString& caption,
                  unsigned style)
{
    if (KwIsWarningDismissed(key))
        return KwMB::IDOK;
    QMessageBox box(KwStyleToIcon(style), caption, text, KwStyleToButtons(style), owner);
    box.setObjectName(QStringLiteral("KwAdvisoryBox"));
    for (QAbstractButton* b : box.buttons())
        if (box.standardButton(b) == QMessageBox::Ok)
            b->setText(KwPropText("General", "ButtonOk", "OK"));
        else if (box.standardButton(b) == QMessageBox::Cancel)
            b->setText(KwPropText("General", "ButtonCancel", "Cancel"));
    auto* dontShow = new QCheckBox(KwPropText("General", "CheckDontShowAgain", "Don't show again"));
    box.setCheckBox(dontShow);
    if (box.standardButtons().testFlag(QMessageBox::Cancel))
        box.setEscapeButton(QMessageBox::Cancel);
    else if (box.standardButtons() == QMessageBox::Ok)
        box.setEscapeButton(QMessageBox::Ok);
    box.exec();
    QAbstractButton* clicked = box.clickedButton();
    const int result = clicked ? KwButtonToResult(box.standardButton(clicked)) : KwMB::IDCANCEL;
    if (dontShow->isChecked() && result != KwMB::IDCANCEL)
        KwSetWarningDismissed(key, true);
    return result;
}
