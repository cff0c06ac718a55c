// A tiny host: a sample model on a view, then requests through the installed entry point.
// Exit code 0 when every request came back as a host expects.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "KW_UOM.h"
#include "KwMFCUIEntry.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    KW_UOM units(KW_UOM::MMNS);
    CFMView view(model.get());
    view.SetUnitHolder(&units);

    // An unknown kind answers with a message box; press its button as a user would.
    int boxes = 0;
    QTimer answer;
    QObject::connect(&answer, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            ++boxes;
            box->accept();
        }
    });
    answer.start(5);
    DialogLaunchRequest unknown{};
    unknown.kind = 90;
    unknown.view = &view;
    LaunchDialog(&unknown);
    answer.stop();

    // A constraint editor created hidden: one new top-level window, not shown.
    const QWidgetList before = QApplication::topLevelWidgets();
    DialogLaunchRequest edit{};
    edit.kind = 1;
    edit.view = &view;
    edit.createHidden = 1;
    LaunchDialog(&edit);
    int added = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (!before.contains(w)) {
            ++added;
            delete w;
        }

    std::printf("message boxes answered: %d, windows added: %d\n", boxes, added);
    return boxes == 1 && added == 1 ? 0 : 1;
}
