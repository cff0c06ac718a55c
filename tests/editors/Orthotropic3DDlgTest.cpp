// The 3D orthotropic definition on its own: values in display units, all-or-nothing OK, and
// every caption through the language service (German texts present for every label).
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "CKwOrthotropic3DDlg.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwMessageBox.h"
#include "KwMaterialKeys.h"
#include "KwNumbers.h"
#include "KwTestSupport.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <gtest/gtest.h>

namespace K = KwMaterialKeys;

namespace {

class Orthotropic3D : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        material.SetMaterialType(CKwMaterial::Orthotropic3D);
        material.SetValue("E1", 181e9);
        material.SetValue("NUYZ", 0.49);
        material.SetValue("XT", 1.5e9);
    }
    // Runs the dialog, lets `edit` change it while open, presses OK; returns the result.
    int run(const std::function<void(CKwOrthotropic3DDlg&)>& edit)
    {
        CKwOrthotropic3DDlg dlg(&material, nullptr, host.view.get());
        int result = -1;
        QTimer::singleShot(0, [&] {
            edit(dlg);
            KwControl<QPushButton>(&dlg, 1)->click();
            if (dlg.isVisible())
                dlg.OnCancel();
        });
        result = dlg.DoModal();
        return result;
    }
    static int row(int key)
    {
        const auto& rows = CKwOrthotropic3DDlg::Rows();
        return static_cast<int>(std::find(rows.begin(), rows.end(), key) - rows.begin());
    }
    kwtest::Host host;
    CKwMaterial material{1, "Carbon/Epoxy"};
};

TEST_F(Orthotropic3D, showsAndTakesValuesInTheViewsUnits)
{
    ASSERT_EQ(CKwOrthotropic3DDlg::Rows().size(), 24u);
    const int status = run([&](CKwOrthotropic3DDlg& d) {
        EXPECT_EQ(d.Edit(row(K::E1))->text(), "181000"); // MPa
        EXPECT_EQ(d.Edit(row(K::NUYZ))->text(), "0.49");
        EXPECT_EQ(d.Edit(row(K::E2))->text(), "");
        EXPECT_EQ(KwControl<QLabel>(&d, CKwOrthotropic3DDlg::kUnitIdBase + row(K::XT))->text(),
                  "MPa");
        d.Edit(row(K::E2))->setText(" 10300 ");
        d.Edit(row(K::XT))->setText("");
        d.Edit(row(K::ALP1))->setText("2e-8");
    });
    EXPECT_EQ(status, KwMB::IDOK);
    EXPECT_DOUBLE_EQ(material.GetValue("E2"), 10.3e9);
    EXPECT_TRUE(IsMissingValue(material.GetValue("XT")));
    EXPECT_DOUBLE_EQ(material.GetValue("ALP1"), 2e-8);
}

TEST_F(Orthotropic3D, aBadValueKeepsTheDialogOpenAndTheMaterialUnchanged)
{
    struct Case
    {
        int key;
        const char* text;
        const char* message;
    };
    const Case cases[] = {
        {K::E3, "ten", "Thickness Modulus - \n 'Enter a number"},
        {K::G12, "-5", "In-Plane Shear Modulus - \n 'Enter a value greater than zero"},
        {K::NUXZ, "-1.5", "Poisson's Ratio - \n 'Poisson's ratio must be greater than -1"},
        {K::ZC, "-3", "Thickness Compressive Failure Stress - \n 'The value cannot be negative"},
    };
    const CKwMaterial before = material;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        bool stayedOpen = false;
        host.view->ClearBubbleRecord();
        run([&](CKwOrthotropic3DDlg& d) {
            d.Edit(row(K::E2))->setText("9000"); // a good change that must not be written
            d.Edit(row(c.key))->setText(c.text);
            KwControl<QPushButton>(&d, 1)->click();
            stayedOpen = d.isVisible();
        });
        EXPECT_TRUE(stayedOpen);
        EXPECT_TRUE(host.view->GetLastBubbleText().startsWith(c.message))
            << host.view->GetLastBubbleText().toStdString();
        EXPECT_TRUE(material == before);
    }
}

// The two groups on the left keep their values in line whatever their labels' lengths, in
// either language.
TEST_F(Orthotropic3D, stiffnessAndExpansionValuesLineUp)
{
    for (const char* language : {"en", "de"}) {
        ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(language)));
        QRect stiffness, expansion;
        run([&](CKwOrthotropic3DDlg& d) {
            QLineEdit* e1 = d.Edit(row(K::E1));
            QLineEdit* alp1 = d.Edit(row(K::ALP1));
            stiffness = QRect(e1->mapTo(&d, QPoint(0, 0)), e1->size());
            expansion = QRect(alp1->mapTo(&d, QPoint(0, 0)), alp1->size());
        });
        EXPECT_EQ(stiffness.left(), expansion.left()) << language;
        EXPECT_EQ(stiffness.width(), expansion.width()) << language;
    }
    CKwXMLUtils::SetCurrentLanguage("en");
}

TEST_F(Orthotropic3D, everyCaptionIsTranslated)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    QStringList bad;
    run([&](CKwOrthotropic3DDlg& d) { bad = kwtest::UntranslatedCaptions(&d); });
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("de"));
    QStringList english;
    run([&](CKwOrthotropic3DDlg& d) {
        for (std::size_t r = 0; r < CKwOrthotropic3DDlg::Rows().size(); ++r) {
            const int key = CKwOrthotropic3DDlg::Rows()[r];
            const QString shown =
                KwControl<QLabel>(&d, CKwOrthotropic3DDlg::kLabelIdBase + int(r))->text();
            if (shown.startsWith(K::DefaultLabel(key)))
                english << shown;
        }
        if (d.windowTitle() == "3D Orthotropic Material Definition")
            english << d.windowTitle();
    });
    CKwXMLUtils::SetCurrentLanguage("en");
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
    EXPECT_TRUE(english.isEmpty()) << english.join(", ").toStdString();
}

} // namespace
