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
#include <QMainWindow>
#include <QPointer>
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
    // Deleting one window may delete others (dialogs parented to it): guard every pointer.
    QList<QPointer<QWidget>> windows;
    for (QWidget* w : QApplication::topLevelWidgets())
        windows << w;
    for (const QPointer<QWidget>& w : windows)
        if (w && !qobject_cast<QWidget*>(w->parent()))
            delete w.data();
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
    if (!root->property("kwDataTitle").toBool())
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
    : frame(std::make_unique<QMainWindow>()), model(CKwFEModel::CreateSampleModel()),
      units(std::make_unique<KW_UOM>(KW_UOM::MMNS)), addin(std::make_unique<CKwiCKAddin>()),
      view(std::make_unique<CFMView>(model.get(), frame.get()))
{
    TheApplication = addin.get();
    static_cast<QMainWindow*>(frame.get())->setCentralWidget(view.get());
    view->SetUnitHolder(units.get());
    view->SetFrameWindow(frame.get());
    frame->resize(640, 480);
    view->resize(640, 480); // picking tests aim at the drawn model without showing the frame
}

Host::~Host()
{
    // The view goes first (it takes the dialogs it owns with it), then its frame; the sweep
    // gets what is left.
    view.reset();
    frame.reset();
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
