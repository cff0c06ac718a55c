// German texts that read wrong in the gallery once: each picture's widget shows the text a
// German user should read.
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwGallery.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QMap>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace {

// The texts of a window: every label's and button's text, and every combo box item.
QStringList textsOf(QWidget* w)
{
    QStringList texts;
    for (QLabel* l : w->findChildren<QLabel*>())
        texts << l->text();
    for (QAbstractButton* b : w->findChildren<QAbstractButton*>())
        texts << b->text();
    for (QComboBox* c : w->findChildren<QComboBox*>())
        for (int i = 0; i < c->count(); ++i)
            texts << c->itemText(i);
    return texts;
}

} // namespace

TEST(GermanTexts, theGalleryReadsRightInGerman)
{
    kwtest::IsolateSettings();
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    QMap<QString, QStringList> texts;
    QTemporaryDir dir;
    {
        KwHostWindow host;
        KwRenderGallery(&host, dir.path(), [&](unsigned, QWidget* w, const QString& picture) {
            texts[picture] = textsOf(w);
        });
    }
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));

    struct Case
    {
        const char* picture;
        const char* present; // a text the window shows
        const char* absent;  // a text it must not show (empty: none)
    };
    const Case cases[] = {
        // The built-in coordinate systems are named in German.
        {"kind01-constraint.png", "Global kartesisch", "Global Rectangular"},
        {"kind01-constraint.png", "Global zylindrisch", "Global Cylindrical"},
        // The end buttons read "%s A": the key's text must take the letter after it.
        {"CKwDefineCrossSectionDlg-5", "Ansicht Ende A", "Ende zeichnen A"},
        {"CKwDefineCrossSectionDlg-5", "Ansicht Ende B", "Ende zeichnen B"},
        // The rotation limit names its unit as the unit labels do, not in a word of its own.
        {"kind53-nonlinear-parameters.png", "Maximale inkrementelle Rotation (°):",
         "Maximale inkrementelle Rotation (Grad):"},
    };
    for (const Case& c : cases) {
        const QStringList shown = texts.value(QString::fromLatin1(c.picture));
        ASSERT_FALSE(shown.isEmpty()) << c.picture;
        EXPECT_TRUE(shown.contains(QString::fromUtf8(c.present)))
            << c.picture << ": " << c.present << " in " << qPrintable(shown.join(QLatin1String(" | ")));
        EXPECT_FALSE(shown.contains(QString::fromUtf8(c.absent))) << c.picture << ": " << c.absent;
    }
}
