// The demo host's unit switch: it waits while editors or point tables show values in the
// current units, so that nothing the user typed is read back in other units.
#include "CFMView.h"
#include "CKwMFCDialog.h"
#include "KW_UOM.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <gtest/gtest.h>

namespace {

QAction* optionAction(KwHostWindow& host, const QString& text)
{
    for (QMenu* menu : host.menuBar()->findChildren<QMenu*>())
        for (QAction* a : menu->actions())
            if (a->text() == text)
                return a;
    return nullptr;
}

TEST(HostUnits, switchWaitsWhileEditorsOrTablesAreOpen)
{
    struct Case
    {
        const char* name;
        bool opens;
        unsigned kind;
        int variant;
    };
    const Case cases[] = {{"nothing open", false, 0, 0},
                          {"material editor", true, 2, 0},
                          {"load editor", true, 0, 0},
                          {"time curve table", true, 36, 1}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        kwtest::IsolateSettings();
        KwHostWindow host;
        ASSERT_EQ(host.Units()->GetSystem(), KW_UOM::MMNS);
        const bool opens = c.opens;
        if (opens) {
            host.Launch(c.kind, false, c.variant);
            QApplication::processEvents();
            ASSERT_FALSE(kwtest::VisibleTopLevels().isEmpty());
        }
        QAction* ips = optionAction(host, KW_UOM::GetSystemName(KW_UOM::IPS));
        QAction* mmns = optionAction(host, KW_UOM::GetSystemName(KW_UOM::MMNS));
        QAction* radians = optionAction(host, QStringLiteral("Angles in radians"));
        ASSERT_TRUE(ips && mmns && radians);

        const kwtest::ModalRecord record = kwtest::AnswerModals([&] {
            ips->trigger();
            radians->trigger();
        });
        if (opens) {
            EXPECT_EQ(record.boxTexts.size(), 2);
            EXPECT_EQ(host.Units()->GetSystem(), KW_UOM::MMNS);
            EXPECT_FALSE(host.Units()->IsAngleInRadians());
            EXPECT_TRUE(mmns->isChecked());
            EXPECT_FALSE(ips->isChecked());
            EXPECT_FALSE(radians->isChecked());
            // Once they are closed the switch goes through.
            for (QWidget* w : kwtest::VisibleTopLevels())
                if (auto* d = dynamic_cast<CKwMFCDialog*>(w))
                    d->OnCancel();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            ASSERT_EQ(host.View()->GetOpenDialogCount(), 0);
        } else {
            EXPECT_EQ(record.count(), 0);
        }
        if (opens) {
            EXPECT_EQ(kwtest::AnswerModals([&] { ips->trigger(); }).count(), 0);
        }
        EXPECT_EQ(host.Units()->GetSystem(), KW_UOM::IPS);
        EXPECT_TRUE(ips->isChecked());
    }
}

} // namespace
