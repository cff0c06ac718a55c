// Every kind 0..89 through LaunchDialog with the request the demo host sends for it: a dialog
// that opens is built on the template its row of the kind table names. The dispatch reports
// a disagreement under the "kw.launch" category; this walk turns each report into a failure.
#include "CKwFEModel.h"
#include "CKwMFCDialog.h"
#include "KwHostKinds.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QPointer>
#include <gtest/gtest.h>

namespace {

QStringList g_reports;
QtMessageHandler g_previous = nullptr;

void collectLaunchReports(QtMsgType type, const QMessageLogContext& ctx, const QString& msg)
{
    if (ctx.category && qstrcmp(ctx.category, "kw.launch") == 0) {
        g_reports << msg;
        return;
    }
    g_previous(type, ctx, msg);
}

} // namespace

TEST(LaunchTemplates, everyDialogIsBuiltOnTheTemplateItsRowNames)
{
    kwtest::IsolateSettings();
    kwtest::Host host;
    g_reports.clear();
    g_previous = qInstallMessageHandler(collectLaunchReports);
    int opened = 0;
    for (unsigned kind = 0; kind <= 89; ++kind) {
        SCOPED_TRACE(kind);
        const QList<QWidget*> before = QApplication::topLevelWidgets();
        DialogLaunchRequest r =
            KwMakeRequest(kind, host.model.get(), host.view.get(), host.units.get());
        r.createHidden = 1;
        kwtest::AnswerModals([&] { LaunchDialog(&r); }, QMessageBox::Ok, [&](QWidget* w) {
            opened += dynamic_cast<CKwMFCDialog*>(w) != nullptr;
        });
        // Whatever stayed open goes before the next kind: an open editor would refuse it.
        for (QWidget* w : QApplication::topLevelWidgets())
            if (!before.contains(w) && dynamic_cast<CKwMFCDialog*>(w)) {
                ++opened;
                delete w;
            }
    }
    qInstallMessageHandler(g_previous);
    EXPECT_TRUE(g_reports.isEmpty()) << g_reports.join('\n').toStdString();
    EXPECT_GE(opened, 6) << "the walk must reach the dialogs this build has";
}
