// Every window of the gallery, in English and in German, against the house look. A finding not
// listed below fails (a new fault); a listed one that no longer occurs fails too, so that the
// list only ever shrinks: remove the entry with the fix.
#include "CKwXMLUtils.h"
#include "KwGallery.h"
#include "KwHostWindow.h"
#include "KwStyleCheck.h"
#include "KwTestSupport.h"

#include <QMap>
#include <QSet>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

enum Lang : unsigned { En = 1, De = 2, Both = En | De };

struct Expected
{
    const char* picture;
    const char* finding; // "rule widget"
    unsigned langs;
};

// Findings a dialog may keep on purpose, per picture and language. Empty: every window follows
// the look; a new finding is a fault to fix, not an entry to add.
const Expected kExpected[] = {
    {"", "", 0},
};

QMap<QString, QSet<QString>> findingsIn(const char* lang)
{
    kwtest::IsolateSettings();
    CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(lang));
    QMap<QString, QSet<QString>> found;
    QTemporaryDir dir;
    {
        KwHostWindow host;
        KwRenderGallery(&host, dir.path(), [&](unsigned, QWidget* w, const QString& picture) {
            QSet<QString>& set = found[picture];
            for (const QString& k : KwStyleKeys(KwCheckStyle(w)))
                set.insert(k);
        });
    }
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    return found;
}

void compare(const char* lang, unsigned bit)
{
    const QMap<QString, QSet<QString>> found = findingsIn(lang);
    ASSERT_GE(found.size(), 30) << "the gallery photographed too few windows";
    QMap<QString, QSet<QString>> expected;
    for (const Expected& e : kExpected)
        if (e.langs & bit && *e.picture)
            expected[QString::fromLatin1(e.picture)].insert(QString::fromLatin1(e.finding));
    for (auto it = found.cbegin(); it != found.cend(); ++it)
        for (const QString& k : it.value())
            EXPECT_TRUE(expected.value(it.key()).contains(k))
                << lang << ": new finding {\"" << qPrintable(it.key()) << "\", \""
                << qPrintable(k) << "\"}";
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        EXPECT_TRUE(found.contains(it.key()))
            << lang << ": the gallery no longer shows " << qPrintable(it.key());
        for (const QString& k : it.value())
            EXPECT_TRUE(found.value(it.key()).contains(k))
                << lang << ": fixed, remove from the list: {\"" << qPrintable(it.key())
                << "\", \"" << qPrintable(k) << "\"}";
    }
}

} // namespace

TEST(GalleryStyle, englishFindingsAreTheListedOnes) { compare("en", En); }

TEST(GalleryStyle, germanFindingsAreTheListedOnes) { compare("de", De); }
