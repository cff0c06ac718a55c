// The colour swatch reads as a swatch: its tool tip names the colour in the current language,
// and it paints a framed patch on a button face rather than one flat fill.
#include "CKwColorSwatch.h"
#include "CKwXMLUtils.h"
#include "KwTestSupport.h"

#include <QCoreApplication>
#include <QHelpEvent>
#include <QImage>
#include <gtest/gtest.h>

TEST(ColorSwatch, namesTheColourInTheCurrentLanguage)
{
    kwtest::IsolateSettings();
    struct Case
    {
        unsigned colorRef; // 0x00BBGGRR
        const char* english;
        const char* german;
    };
    const Case cases[] = {
        {0x000000FF, "Red", "Rot"},
        {0x00FF0000, "Blue", "Blau"},
        {0x00008000, "Dark Green", "Dunkelgrün"},
        {0x00FFFFFF, "White", "Weiß"},
        {0x000080FF, "Orange", "Orange"},
        // No name: the code, red first although the value keeps red lowest.
        {0x00336699, "#996633", "#996633"},
        {0xFF0000FE, "#FE0000", "#FE0000"}, // the unused top byte plays no part
    };
    for (const char* lang : {"en", "de"}) {
        ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(lang)));
        for (const Case& c : cases) {
            const QString want = QString::fromUtf8(lang[0] == 'e' ? c.english : c.german);
            EXPECT_EQ(CKwColorSwatch::ColorName(c.colorRef), want) << lang << " " << c.colorRef;
            CKwColorSwatch swatch;
            swatch.SetColor(c.colorRef);
            EXPECT_EQ(swatch.toolTip(), want) << lang << " " << c.colorRef;
        }
    }
    // A swatch made in one language names its colour in the next when the tip shows.
    CKwColorSwatch swatch;
    swatch.SetColor(0x000000FF);
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    QHelpEvent tip(QEvent::ToolTip, QPoint(5, 5), QPoint(5, 5));
    QCoreApplication::sendEvent(&swatch, &tip);
    EXPECT_EQ(swatch.toolTip(), "Rot");
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST(ColorSwatch, paintsAFramedPatchOnAButtonFace)
{
    kwtest::IsolateSettings();
    for (unsigned colorRef : {0x000000FFu, 0x00FFFFFFu, 0x00808080u}) {
        CKwColorSwatch swatch;
        swatch.SetColor(colorRef);
        swatch.resize(60, 24);
        const QImage image = swatch.grab().toImage();
        const QColor colour = CKwColorSwatch::ToQColor(colorRef);
        const int cx = image.width() / 2;
        const int cy = image.height() / 2;
        EXPECT_EQ(image.pixelColor(cx, cy).rgb(), colour.rgb()) << colorRef;
        // The patch is drawn inside a dark line, and the button face shows around it.
        int x = cx;
        while (x > 0 && image.pixelColor(x, cy).rgb() == colour.rgb())
            --x;
        EXPECT_GT(x, 1) << "the colour reaches the edge: a flat fill, " << colorRef;
        EXPECT_EQ(image.pixelColor(x, cy).rgb(), swatch.palette().color(QPalette::Shadow).rgb())
            << "no frame line, " << colorRef;
        EXPECT_NE(image.pixelColor(1, cy).rgb(), colour.rgb()) << colorRef;
    }
}
