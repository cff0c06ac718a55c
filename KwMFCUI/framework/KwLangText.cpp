#include "KwLangText.h"

#include "CKwXMLUtils.h"
#include "KwControls.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QWidget>

QString KwPropText(const char* section, const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalPropPageItemText(
        QString::fromLatin1(section), QString::fromLatin1(key), QString::fromUtf8(english));
}

QString KwErrText(const char* section, const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalErrorMessageItemText(
        QString::fromLatin1(section), QString::fromLatin1(key), QString::fromUtf8(english));
}

QString KwTreeText(const char* section, const char* key, const char* english)
{
    return CKwXMLUtils::GetInternationalTreeItemText(
        QString::fromLatin1(section), QString::fromLatin1(key), QString::fromUtf8(english));
}

QString KwLabel(const QString& text) { return text + QLatin1Char(':'); }

QString KwTitleWithName(const QString& title, const QString& name)
{
    return QStringLiteral("%1 - '%2'").arg(title, name);
}

QString KwFieldMessage(const QString& label, const QString& message)
{
    return QStringLiteral("%1 - \n '%2'").arg(label, message);
}

bool KwSetControlText(QWidget* root, int ctrlId, const QString& text)
{
    QWidget* w = KwFindControl(root, ctrlId);
    if (!w)
        return false;
    if (auto* l = qobject_cast<QLabel*>(w))
        l->setText(text);
    else if (auto* b = qobject_cast<QAbstractButton*>(w))
        b->setText(text);
    else if (auto* g = qobject_cast<QGroupBox*>(w))
        g->setTitle(text);
    else if (auto* e = qobject_cast<QLineEdit*>(w))
        e->setText(text);
    else if (auto* p = qobject_cast<QPlainTextEdit*>(w))
        p->setPlainText(text);
    else
        w->setWindowTitle(text);
    return true;
}

QString KwGetControlText(QWidget* root, int ctrlId)
{
    QWidget* w = KwFindControl(root, ctrlId);
    if (!w)
        return QString();
    if (auto* l = qobject_cast<QLabel*>(w))
        return l->text();
    if (auto* b = qobject_cast<QAbstractButton*>(w))
        return b->text();
    if (auto* g = qobject_cast<QGroupBox*>(w))
        return g->title();
    if (auto* e = qobject_cast<QLineEdit*>(w))
        return e->text();
    if (auto* p = qobject_cast<QPlainTextEdit*>(w))
        return p->toPlainText();
    return w->windowTitle();
}
