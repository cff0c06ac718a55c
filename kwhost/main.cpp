// kwhost: the demo host of the dialog library. With a display it opens the main window on the
// built-in sample model; without one (or with --gallery DIR) it renders every dialog to PNG.
#include "CKwXMLUtils.h"
#include "KwGallery.h"
#include "KwHostWindow.h"
#include "KwSampleAssembly.h"
#include "KwRegistry.h"
#include "KwStyleCheck.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QGuiApplication>
#include <cstdio>

namespace {

QtMessageHandler g_nextHandler = nullptr;

// The offscreen platform says, once per window, that it cannot do what only a window system
// can (size hints, for one), and that a headless session has no runtime folder. Neither
// tells a gallery reader anything; every other message goes through as it is.
void quietOffscreenNoise(QtMsgType type, const QMessageLogContext& ctx, const QString& msg)
{
    if (type == QtWarningMsg &&
        (msg.startsWith(QLatin1String("This plugin does not support")) ||
         msg.startsWith(QLatin1String("QStandardPaths: XDG_RUNTIME_DIR not set"))))
        return;
    if (g_nextHandler)
        g_nextHandler(type, ctx, msg);
    else
        std::fprintf(stderr, "%s\n", qPrintable(qFormatLogMessage(type, ctx, msg)));
}

// Without a display the demo host draws on one full-HD desktop at 96 dpi, so that its
// windows open as tall as on an engineer's screen (the headless platform's own screen is
// smaller). The platform reads the screen from a small JSON file.
QByteArray fullHdOffscreenPlatform()
{
    const QString path = QDir::temp().filePath(QStringLiteral("kwhost-offscreen-screen.json"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return "offscreen";
    file.write(R"({"screens": [{"name": "kwhost", "x": 0, "y": 0, "width": 1920, "height": 1080,)"
               R"( "logicalDpi": 96, "logicalBaseDpi": 96, "dpr": 1}]})");
    return "offscreen:configfile=" + QFile::encodeName(path);
}

void quietenOffscreenPlatform()
{
    if (!g_nextHandler)
        g_nextHandler = qInstallMessageHandler(quietOffscreenNoise);
}

} // namespace

int main(int argc, char** argv)
{
    const bool haveDisplay = qEnvironmentVariableIsSet("DISPLAY") ||
                             qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                             qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (!haveDisplay) {
        qputenv("QT_QPA_PLATFORM", fullHdOffscreenPlatform());
        quietenOffscreenPlatform();
    }
    QApplication app(argc, argv);
    QApplication::setApplicationName(QStringLiteral("kwhost"));

    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Demo host of the KwMFCUI dialog library"));
    parser.addHelpOption();
    QCommandLineOption gallery(QStringLiteral("gallery"),
                               QStringLiteral("Render every dialog to PNG files in <dir>."),
                               QStringLiteral("dir"));
    QCommandLineOption lang(QStringLiteral("lang"),
                            QStringLiteral("Language: en, de or qps (pseudo)."),
                            QStringLiteral("code"));
    QCommandLineOption settings(QStringLiteral("settings"),
                                QStringLiteral("Keep per-user settings in this INI file."),
                                QStringLiteral("file"));
    parser.addOptions({gallery, lang, settings});
    parser.process(app);

    if (parser.isSet(settings))
        KwSetRegistryFile(parser.value(settings));
    CKwXMLUtils::ApplyLanguageSetting();
    if (parser.isSet(lang)) {
        QString error;
        if (!CKwXMLUtils::SetCurrentLanguage(parser.value(lang), &error)) {
            std::fprintf(stderr, "kwhost: %s\n", qPrintable(error));
            return 2;
        }
    }

    // The sample assembly meshed by the external mesher; without one, the built-in block.
    QString why;
    CKwFEModel* assembly = KwSampleAssembly(&why);
    if (!assembly)
        std::fprintf(stderr, "kwhost: %s Showing the built-in block model instead.\n", qPrintable(why));
    KwHostWindow window(nullptr, assembly);
    const bool galleryMode = parser.isSet(gallery) || !haveDisplay;
    if (galleryMode) {
        if (QGuiApplication::platformName() == QLatin1String("offscreen"))
            quietenOffscreenPlatform();
        const QString dir = parser.isSet(gallery) ? parser.value(gallery)
                                                  : QStringLiteral("gallery");
        if (!parser.isSet(settings)) // the gallery must not move the user's own dialogs
            KwSetRegistryFile(QDir(dir).filePath(QStringLiteral("gallery-settings.ini")));
        if (!haveDisplay && !parser.isSet(gallery))
            std::printf("kwhost: no display; rendering the dialog gallery instead\n");
        // Every picture's window is also checked against the house look; the findings go to a
        // file next to the pictures for whoever works on a dialog.
        QStringList findings;
        const KwGalleryResult r =
            KwRenderGallery(&window, dir, [&](unsigned, QWidget* w, const QString& picture) {
                for (const KwStyleFinding& f : KwCheckStyle(w))
                    findings << QStringLiteral("%1  %2 %3  (%4)")
                                    .arg(picture, f.rule, f.widget, f.detail);
            });
        QFile report(QDir(dir).filePath(QStringLiteral("style-findings.txt")));
        if (report.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
            report.write((findings.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8());
        std::printf("kwhost: %lld pictures (%s) in %s\n",
                    static_cast<long long>(r.written.size()),
                    qPrintable(CKwXMLUtils::GetLanguageDisplayName(
                        CKwXMLUtils::GetCurrentLanguage())),
                    qPrintable(QDir(dir).absolutePath()));
        if (!r.unavailable.isEmpty())
            std::printf("kwhost: %lld dialog kinds open nothing in this build; see %s\n",
                        static_cast<long long>(r.unavailable.size()),
                        qPrintable(QDir(dir).filePath(
                            QString::fromLatin1(kKwGalleryUnavailableFile))));
        return 0;
    }
    window.show();
    return app.exec();
}
