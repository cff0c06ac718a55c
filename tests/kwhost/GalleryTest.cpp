// The demo host's gallery opens every dialog the library has: each picture must be a real
// image, each title a real caption, and in the pseudo-language every caption must be marked.
#include "CKwXMLUtils.h"
#include "KwGallery.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QImage>
#include <QTemporaryDir>
#include <gtest/gtest.h>

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
}

TEST(Gallery, pseudoLanguageReachesEveryCaptionOfEveryDialog)
{
    kwtest::IsolateSettings();
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps"));
    QTemporaryDir dir;
    int inspected = 0;
    {
        KwHostWindow host;
        KwRenderGallery(&host, dir.path(), [&](unsigned kind, QWidget* w) {
            ++inspected;
            EXPECT_EQ(kwtest::UntranslatedCaptions(w), QStringList()) << "kind " << kind;
        });
    }
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    EXPECT_GE(inspected, 3);
}
