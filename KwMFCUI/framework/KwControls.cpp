#include "KwControls.h"

#include <QGuiApplication>
#include <QVariant>

QWidget* KwFindControl(const QWidget* root, int id)
{
    if (!root)
        return nullptr;
    const QList<QWidget*> children = root->findChildren<QWidget*>();
    for (QWidget* w : children) {
        const QVariant v = w->property(kKwCtrlIdProperty);
        if (v.isValid() && v.toInt() == id)
            return w;
    }
    return nullptr;
}

void KwSetControlId(QWidget* w, int id)
{
    if (w)
        w->setProperty(kKwCtrlIdProperty, id);
}

void KwBringWindowToTop(QWidget* w)
{
    if (!w || QGuiApplication::platformName() == QLatin1String("offscreen"))
        return;
    w->raise();
}
