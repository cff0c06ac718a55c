// A tiny host: a sample model on a view, and a hidden constraint editor opened through the
// installed entry point; then the impact editor built directly from its exported class.
// Exit code 0 when exactly the one window came up and the impact editor showed its impact.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwImpactWizard.h"
#include "CKwMFCUIImpactAnalysis.h"
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

    // The impact editor as a host builds it: on the explicit analysis's impact.
    CKwAnalysis* drop = nullptr;
    for (CKwAnalysis* a : model->m_analyses)
        if (a->GetImpactWizard())
            drop = a;
    bool impactShown = false;
    if (drop) {
        auto* dlg = new CKwMFCUIImpactAnalysis(drop->GetImpactWizard(), drop, &view, &units);
        dlg->Create();
        impactShown = dlg->GetTemplateId() == 7036 && dlg->GetObject() == drop->GetImpactWizard() &&
                      *dlg->GetEditObject() == *drop->GetImpactWizard();
        dlg->DestroyWindow();
    }
    std::printf("impact editor built directly: %s\n", impactShown ? "yes" : "no");
    return added == 1 && shown == 0 && impactShown ? 0 : 1;
}
