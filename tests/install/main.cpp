// A tiny host: a sample model on a view, and a hidden constraint editor opened through the
// installed entry point. Exit code 0 when exactly that one window came up.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "KW_UOM.h"
#include "KwMFCUIEntry.h"

#include <QApplication>
#include <cstdio>
#include <memory>

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    KW_UOM units(KW_UOM::MMNS);
    CFMView view(model.get());
    view.SetUnitHolder(&units);

    const QWidgetList before = QApplication::topLevelWidgets();
    DialogLaunchRequest request{};
    request.kind = 1;
    request.view = &view;
    request.createHidden = 1;
    LaunchDialog(&request);
    int added = 0, shown = 0;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (!before.contains(w)) {
            ++added;
            shown += w->isVisible();
            delete w;
        }
    std::printf("windows added: %d, shown: %d\n", added, shown);
    return added == 1 && shown == 0 ? 0 : 1;
}
