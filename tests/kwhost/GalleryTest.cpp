// The demo host's gallery opens every dialog the library has: each picture must be a real
// image, each title a real caption, and in the pseudo-language every caption must be marked,
// the host's own window, menus, tree, status bar and plots included.
#include "CKwXMLUtils.h"
#include "CKwXYPlot.h"
#include "CKwXYPlotDlg.h"
#include "KwGallery.h"
#include "KwHostWindow.h"
#include "KwSolverRun.h"
#include "KwTestSupport.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QSet>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <functional>
#include <gtest/gtest.h>
#include <tuple>

namespace {

// Menu entries that do not carry the pseudo-language's marks. Entries of an action group that
// carry no unit system are names, not texts of the host: each language is named in itself and
// the current-analysis entries name the model's analyses.
QStringList unmarkedMenuEntries(KwHostWindow& host)
{
    QStringList bad;
    const QString pre = CKwXMLUtils::PseudoPrefix();
    std::function<void(const QList<QAction*>&)> walk = [&](const QList<QAction*>& actions) {
        for (QAction* a : actions) {
            if (a->isSeparator())
                continue;
            const bool name = a->actionGroup() && a->data().typeId() != QMetaType::Int;
            if (!name && !a->text().contains(pre))
                bad << a->text();
            if (a->menu())
                walk(a->menu()->actions());
        }
    };
    walk(host.menuBar()->actions());
    return bad;
}

QStringList unmarkedTreeItems(KwHostWindow& host)
{
    QStringList bad;
    auto* tree = host.findChild<QTreeWidget*>();
    if (!tree)
        return {QStringLiteral("(no tree)")};
    if (!tree->headerItem()->text(0).contains(CKwXMLUtils::PseudoPrefix()))
        bad << tree->headerItem()->text(0);
    for (QTreeWidgetItemIterator it(tree); *it; ++it)
        if (!(*it)->data(0, KwHostWindow::NameRole).toBool() &&
            !(*it)->text(0).contains(CKwXMLUtils::PseudoPrefix()))
            bad << (*it)->text(0);
    return bad;
}

} // namespace

TEST(Gallery, rendersEveryDialogWithRealCaptions)
{
    kwtest::IsolateSettings();
    QTemporaryDir dir;
    KwGalleryResult r;
    {
        KwHostWindow host;
        r = KwRenderGallery(&host, dir.path());
    }
    ASSERT_GE(r.written.size(), 3); // the host window and at least the about and preview boxes
    for (const QString& f : r.written) {
        const QImage img(f);
        EXPECT_FALSE(img.isNull()) << qPrintable(f);
        EXPECT_GT(img.width(), 100) << qPrintable(f);
    }
    for (const QString& t : r.titles) {
        EXPECT_FALSE(t.trimmed().isEmpty());
        EXPECT_NE(t, QStringLiteral("Dialog"));
    }
    for (const QString& f : r.written) {
        const QString base = QFileInfo(f).completeBaseName();
        EXPECT_FALSE(base.contains(QLatin1String("--")) || base.endsWith(QLatin1Char('-')))
            << qPrintable(base);
    }
    // The kinds that opened nothing are listed in a file, not on the console.
    QFile list(QDir(dir.path()).filePath(QString::fromLatin1(kKwGalleryUnavailableFile)));
    if (r.unavailable.isEmpty()) {
        EXPECT_FALSE(list.exists());
    } else {
        ASSERT_TRUE(list.open(QIODevice::ReadOnly));
        EXPECT_EQ(QString::fromUtf8(list.readAll()).trimmed().split(QLatin1Char('\n')),
                  r.unavailable);
    }
}

TEST(Gallery, pseudoLanguageReachesEveryCaptionOfEveryDialog)
{
    kwtest::IsolateSettings();
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps"));
    QTemporaryDir dir;
    int inspected = 0;
    {
        KwHostWindow host;
        KwRenderGallery(&host, dir.path(), [&](unsigned kind, QWidget* w, const QString&) {
            ++inspected;
            EXPECT_EQ(kwtest::UntranslatedCaptions(w), QStringList()) << "kind " << kind;
        });
    }
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    EXPECT_GE(inspected, 3);
}

TEST(Gallery, pseudoLanguageReachesTheHostWindowItsMenusTreeAndPlots)
{
    kwtest::IsolateSettings();
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps"));
    {
        KwHostWindow host;
        const QString pre = CKwXMLUtils::PseudoPrefix();
        EXPECT_TRUE(host.windowTitle().contains(pre)) << qPrintable(host.windowTitle());
        EXPECT_TRUE(host.statusBar()->currentMessage().contains(pre));
        EXPECT_EQ(unmarkedMenuEntries(host), QStringList());
        EXPECT_EQ(unmarkedTreeItems(host), QStringList());
        // The solver run's own plot: axis titles and series names.
        ASSERT_TRUE(host.SolverRun()->Start(KwSolverRun::Kind::NonlinearStatic,
                                            QStringLiteral("Static Analysis 1")));
        CKwXYPlotDlg* xy = CKwXYPlotDlg::GetXYPlotDlg();
        ASSERT_NE(xy, nullptr);
        ASSERT_NE(xy->GetPlot(), nullptr);
        EXPECT_TRUE(xy->GetPlot()->m_xTitle.contains(pre));
        EXPECT_TRUE(xy->GetPlot()->m_yTitle.contains(pre));
        EXPECT_TRUE(xy->GetPlot()->GetSeries(0).name.contains(pre));
        host.SolverRun()->Stop();
    }
    kwtest::CloseAllWindows();
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST(Gallery, aSwitchOfLanguageRecaptionsTheHostWindow)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    auto* tree = host.findChild<QTreeWidget*>();
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(host.menuBar()->actions().first()->text(), QStringLiteral("&File"));
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    EXPECT_EQ(host.menuBar()->actions().first()->text(), QStringLiteral("&Datei"));
    EXPECT_EQ(tree->headerItem()->text(0), QStringLiteral("Modell"));
    EXPECT_FALSE(tree->findItems(QStringLiteral("(neue Last)"),
                                 Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    EXPECT_FALSE(tree->findItems(QStringLiteral("(new load)"),
                                 Qt::MatchExactly | Qt::MatchRecursive).isEmpty());
}

// Alt+letter opens each menu of the menu bar: every menu has an access key and no two share
// one, in each language.
TEST(Gallery, everyMenuOfTheMenuBarHasItsOwnAccessKey)
{
    kwtest::IsolateSettings();
    KwHostWindow host;
    for (const char* lang : {"en", "de"}) {
        ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(lang)));
        QStringList keys;
        for (QAction* a : host.menuBar()->actions()) {
            const QString text = a->text();
            const qsizetype amp = text.indexOf(QLatin1Char('&'));
            ASSERT_TRUE(amp >= 0 && amp + 1 < text.size()) << lang << ": " << qPrintable(text);
            keys << text.mid(amp + 1, 1).toLower();
        }
        EXPECT_GE(keys.size(), 7) << lang;
        EXPECT_EQ(QSet<QString>(keys.cbegin(), keys.cend()).size(), keys.size())
            << lang << ": " << qPrintable(keys.join(QLatin1Char(' ')));
    }
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST(Gallery, theStatusBarNamesTheButtonThatAnsweredAMessageBox)
{
    kwtest::IsolateSettings();
    struct Case
    {
        const char* lang;
        QMessageBox::StandardButton button;
        const char* message;
    };
    const Case cases[] = {
        {"en", QMessageBox::Yes, "Message box answered: Yes"},
        {"en", QMessageBox::No, "Message box answered: No"},
        {"de", QMessageBox::No, "Meldung beantwortet: Nein"},
    };
    for (const Case& c : cases) {
        CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(c.lang));
        KwHostWindow host;
        kwtest::AnswerModals([&] { host.Launch(83); }, c.button);
        EXPECT_EQ(host.statusBar()->currentMessage().toStdString(), c.message) << c.lang;
    }
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST(Gallery, fileNamesHaveOneDashBetweenWords)
{
    const std::tuple<unsigned, const char*, int, const char*> names[] = {
        {0, "Load (remote force)...", 0, "kind00-load-remote-force.png"},
        {0, " <<Load--short form>> ", 1, "kind00-load-short-form-2.png"},
        {36, "Table...", 0, "kind36-table.png"},
        {44, "...", 0, "kind44.png"},
    };
    for (const auto& [kind, title, index, file] : names)
        EXPECT_EQ(KwGalleryFileName(kind, QString::fromLatin1(title), index),
                  QString::fromLatin1(file));
}
