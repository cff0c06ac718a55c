#include "KwTestSupport.h"

#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"
#include "KwRegistry.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QGroupBox>
#include <QLabel>
#include <QTemporaryDir>
#include <QTimer>

namespace kwtest {

void IsolateSettings()
{
    static QTemporaryDir dir;
    static int n = 0;
    KwSetRegistryFile(dir.filePath(QStringLiteral("settings-%1.ini").arg(++n)));
}

ModalRecord AnswerModals(const std::function<void()>& action, QMessageBox::StandardButton button,
                         const std::function<void(QWidget*)>& onDialog)
{
    ModalRecord rec;
    QTimer t;
    t.setInterval(5);
    QObject::connect(&t, &QTimer::timeout, [&] {
        QWidget* w = QApplication::activeModalWidget();
        if (!w)
            return;
        if (auto* box = qobject_cast<QMessageBox*>(w)) {
            rec.boxTexts << box->text();
            rec.boxTitles << box->windowTitle();
            QAbstractButton* b = box->button(button);
            if (b)
                b->click();
            else
                box->reject();
            return;
        }
        rec.dialogTitles << w->windowTitle();
        if (onDialog)
            onDialog(w);
        if (QApplication::activeModalWidget() == w)
            if (auto* d = qobject_cast<QDialog*>(w))
                d->reject();
    });
    t.start();
    action();
    t.stop();
    return rec;
}

QList<QWidget*> VisibleTopLevels()
{
    QList<QWidget*> out;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (w->isVisible())
            out << w;
    return out;
}

void CloseAllWindows()
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (!qobject_cast<QWidget*>(w->parent()))
            delete w;
    QApplication::processEvents();
}

QStringList UntranslatedCaptions(QWidget* root)
{
    QStringList bad;
    const QString pre = CKwXMLUtils::PseudoPrefix();
    auto check = [&](QWidget* w, const QString& text) {
        if (text.trimmed().isEmpty() || text.contains(pre))
            return;
        bad << QStringLiteral("%1 \"%2\"").arg(w->objectName(), text);
    };
    if (!root)
        return bad;
    check(root, root->windowTitle());
    for (QWidget* w : root->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(root) || w->property("kwData").toBool())
            continue;
        if (auto* l = qobject_cast<QLabel*>(w)) {
            if (l->pixmap().isNull())
                check(w, l->text());
        } else if (auto* b = qobject_cast<QAbstractButton*>(w)) {
            check(w, b->text());
        } else if (auto* g = qobject_cast<QGroupBox*>(w)) {
            check(w, g->title());
        }
    }
    return bad;
}

Host::Host()
    : model(CKwFEModel::CreateSampleModel()), units(std::make_unique<KW_UOM>(KW_UOM::MMNS)),
      addin(std::make_unique<CKwiCKAddin>()), view(std::make_unique<CFMView>(model.get()))
{
    TheApplication = addin.get();
    view->SetUnitHolder(units.get());
    view->resize(640, 480);
}

Host::~Host()
{
    // The view is a top-level window itself: it goes first, so that closing the remaining
    // windows does not delete it a second time.
    view.reset();
    CloseAllWindows();
    if (TheApplication == addin.get())
        TheApplication = nullptr;
}

DialogLaunchRequest Host::Request(unsigned kind) const
{
    DialogLaunchRequest r{};
    r.kind = kind;
    r.view = view.get();
    r.units = units.get();
    return r;
}

} // namespace kwtest
