// Test entry: a real QApplication on the offscreen platform, fixed DPI, English texts, and a
// failure on unexpected Qt warnings.
#include "CKwXMLUtils.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace {
QtMessageHandler g_previous = nullptr;
void failOnWarning(QtMsgType type, const QMessageLogContext& ctx, const QString& msg)
{
    if (type == QtWarningMsg || type == QtCriticalMsg) {
        // Platform noise of the offscreen plugin is not ours.
        if (msg.contains(QLatin1String("QFont")) || msg.contains(QLatin1String("propagateSizeHints")) ||
            msg.contains(QLatin1String("This plugin does not support")))
            return;
        ADD_FAILURE() << "Unexpected Qt warning: " << msg.toStdString();
    }
    if (g_previous)
        g_previous(type, ctx, msg);
}
} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    QApplication app(argc, argv);
    ::testing::InitGoogleTest(&argc, argv);
    kwtest::IsolateSettings();
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    g_previous = qInstallMessageHandler(failOnWarning);
    return RUN_ALL_TESTS();
}
