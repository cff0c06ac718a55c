// The licence type dialog: the kept type is marked and chosen on opening, OK keeps a new choice,
// Cancel keeps the old one, and a kept value that is no type reads as the default.
#include "CKwLicenseTypeDlg.h"
#include "CKwXMLUtils.h"
#include "KwLangText.h"
#include "KwRegistry.h"
#include "KwTestSupport.h"

#include <QRadioButton>
#include <gtest/gtest.h>
#include <memory>

namespace {
QString radioText(CKwLicenseTypeDlg& d, int type)
{
    return KwGetControlText(&d, CKwLicenseTypeDlg::IDC_RADIO_FIRST + type);
}
} // namespace

TEST(LicenseType, okKeepsTheChoiceCancelKeepsTheOldOneBadValuesReadAsStandard)
{
    kwtest::IsolateSettings();
    const struct
    {
        const char* stored; // what the registry holds before ("" for nothing)
        int expected;       // what the dialog opens with
    } kept[] = {{"", CKwLicenseTypeDlg::Standard},
                {"2", CKwLicenseTypeDlg::Professional},
                {"0", CKwLicenseTypeDlg::Evaluation},
                {"7", CKwLicenseTypeDlg::Standard},
                {"-1", CKwLicenseTypeDlg::Standard},
                {"network", CKwLicenseTypeDlg::Standard}};
    for (const auto& k : kept) {
        SCOPED_TRACE(k.stored);
        KwWriteToRegistryCurrentUser(QStringLiteral("License"), QStringLiteral("Type"),
                                     QString::fromLatin1(k.stored));
        CKwLicenseTypeDlg d;
        d.Create();
        EXPECT_EQ(d.GetChosenType(), k.expected);
        EXPECT_TRUE(radioText(d, k.expected).endsWith(QStringLiteral(" (in use)")));
        for (int t = 0; t < CKwLicenseTypeDlg::TypeCount; ++t) {
            if (t != k.expected) {
                EXPECT_FALSE(radioText(d, t).contains(QStringLiteral("(in use)"))) << t;
            }
        }
        d.DestroyWindow();
    }

    // Cancel: nothing kept.
    KwWriteToRegistryCurrentUser(QStringLiteral("License"), QStringLiteral("Type"), 1);
    {
        auto d = std::make_unique<CKwLicenseTypeDlg>();
        d->Create();
        d->SetChosenType(CKwLicenseTypeDlg::Network);
        d->OnCancel();
    }
    EXPECT_EQ(CKwLicenseTypeDlg::GetStoredType(), CKwLicenseTypeDlg::Standard);
    // OK: the choice is kept and marked on the next opening.
    {
        auto d = std::make_unique<CKwLicenseTypeDlg>();
        d->Create();
        d->SetChosenType(CKwLicenseTypeDlg::Network);
        d->OnOK();
    }
    EXPECT_EQ(CKwLicenseTypeDlg::GetStoredType(), CKwLicenseTypeDlg::Network);
    CKwLicenseTypeDlg again;
    again.Create();
    EXPECT_TRUE(radioText(again, CKwLicenseTypeDlg::Network).endsWith(QStringLiteral(" (in use)")));
    again.DestroyWindow();
}

TEST(LicenseType, theServerShownIsTheKeptOneOrTheLocalLicence)
{
    kwtest::IsolateSettings();
    {
        CKwLicenseTypeDlg d;
        d.Create();
        EXPECT_EQ(KwGetControlText(&d, CKwLicenseTypeDlg::IDC_SERVER),
                  QStringLiteral("None (local license)"));
        d.DestroyWindow();
    }
    KwWriteToRegistryCurrentUser(QStringLiteral("License"), QStringLiteral("LicenseServer"),
                                 QStringLiteral("  27000@licence.example  "));
    CKwLicenseTypeDlg d;
    d.Create();
    EXPECT_EQ(KwGetControlText(&d, CKwLicenseTypeDlg::IDC_SERVER),
              QStringLiteral("27000@licence.example"));
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    d.SetTextToCurrentLang();
    EXPECT_EQ(d.windowTitle(), QStringLiteral("Lizenztyp"));
    EXPECT_EQ(KwGetControlText(&d, CKwLicenseTypeDlg::IDC_LABEL_SERVER),
              QStringLiteral("Lizenzserver:"));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    d.DestroyWindow();
}
