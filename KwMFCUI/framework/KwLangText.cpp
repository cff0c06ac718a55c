#include "KwLangText.h"

#include "CKwXMLUtils.h"
#include "KwControls.h"

#include "KW_UOM.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QHash>
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

QString KwRowText(const KwTextRow& row)
{
    switch (row.lookup) {
    case KwTextLookup::Tree: return KwTreeText(row.section, row.key, row.english);
    case KwTextLookup::Err: return KwErrText(row.section, row.key, row.english);
    case KwTextLookup::Prop: break;
    }
    return KwPropText(row.section, row.key, row.english);
}

void KwApplyTextTable(QWidget* root, std::span<const KwTextRow> rows, const KW_UOM* units)
{
    // Combo boxes refilled by this pass, with the row each had selected.
    QHash<QComboBox*, int> refilled;
    for (const KwTextRow& r : rows) {
        if (r.when && !r.when())
            continue;
        const QString t = KwRowText(r);
        switch (r.to.target) {
        case KwTextTarget::Caption: KwSetControlText(root, r.ctrlId, t); break;
        case KwTextTarget::Label: KwSetControlText(root, r.ctrlId, KwLabel(t)); break;
        case KwTextTarget::ToolTip:
            if (QWidget* w = KwFindControl(root, r.ctrlId))
                w->setToolTip(t);
            break;
        case KwTextTarget::UnitLabel: {
            const QString unit = units ? units->GetUnits(r.unitKind) : QString();
            KwSetControlText(root, r.ctrlId, QStringLiteral("%1 (%2):").arg(t, unit));
            break;
        }
        case KwTextTarget::Item:
            if (auto* combo = qobject_cast<QComboBox*>(KwFindControl(root, r.ctrlId))) {
                if (!refilled.contains(combo)) {
                    refilled.insert(combo, combo->currentIndex());
                    combo->blockSignals(true);
                    combo->clear();
                }
                combo->addItem(t);
            }
            break;
        }
    }
    for (auto it = refilled.cbegin(); it != refilled.cend(); ++it) {
        QComboBox* combo = it.key();
        combo->setCurrentIndex(it.value() < combo->count() ? it.value() : -1);
        combo->blockSignals(false);
    }
}
