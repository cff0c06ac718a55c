// The physical property editor through LaunchDialog kind 34: a new shell, editing and
// cancelling, refused thicknesses, the beam's section through the definition dialog, the
// shell's advanced options page, and every caption through the language service.
#include "CFMView.h"
#include "CKwDefineCrossSectionDlg.h"
#include "CKwFEModel.h"
#include "CKwMFCUIPhysicalProperty.h"
#include "CKwMaterial.h"
#include "CKwPhysicalProperty.h"
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwTestSupport.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <gtest/gtest.h>

namespace {

class PhysicalPropertyEditor : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    CKwMFCUIPhysicalProperty* open(CKwPhysicalProperty* property, unsigned option = 0)
    {
        DialogLaunchRequest r = host.Request(34);
        r.object = property;
        r.option = option;
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCUIPhysicalProperty*>(host.view->GetOpenDialog());
        EXPECT_NE(d, nullptr);
        return d;
    }
    CKwPhysicalProperty* shell() const { return host.model->m_properties[0]; }
    CKwPhysicalProperty* beam() const { return host.model->m_properties[1]; }
    static QLineEdit* edit(QWidget* d, int id) { return KwControl<QLineEdit>(d, id); }
    static void ok(QWidget* d) { KwControl<QPushButton>(d, 1)->click(); }
    kwtest::Host host;
};

TEST_F(PhysicalPropertyEditor, newShellTakesItsThicknessInTheLengthUnit)
{
    CKwMFCUIPhysicalProperty* d = open(nullptr, CKwPhysicalProperty::Shell);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(KwControl<QComboBox>(d, 1417)->currentIndex(), CKwPhysicalProperty::Shell);
    EXPECT_TRUE(KwFindControl(d, 7610)->isVisible());
    EXPECT_FALSE(KwFindControl(d, 7620)->isVisible());
    EXPECT_EQ(KwControl<QLabel>(d, 7611)->text(), "Thickness (mm):");
    edit(d, 273)->setText("Web 2.5");
    edit(d, 7612)->setText("2.5");
    KwControl<QComboBox>(d, 7601)->setCurrentIndex(1);
    ok(d);
    ASSERT_EQ(host.model->m_properties.size(), 3);
    const CKwPhysicalProperty* added = host.model->m_properties.last();
    EXPECT_EQ(added->GetName(), "Web 2.5");
    EXPECT_EQ(added->GetID(), 3);
    EXPECT_EQ(added->m_idealization, CKwPhysicalProperty::Shell);
    EXPECT_DOUBLE_EQ(added->m_thickness, 0.0025);
    EXPECT_EQ(added->m_materialId, host.model->m_materials[1]->GetID());
}

TEST_F(PhysicalPropertyEditor, editWritesOnOkAndCancelLeavesTheModel)
{
    CKwMFCUIPhysicalProperty* d = open(shell());
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(edit(d, 7612)->text(), "3");
    EXPECT_EQ(KwControl<QComboBox>(d, 7601)->currentIndex(), 1);
    edit(d, 7612)->setText("4");
    edit(d, 273)->setText("Cover plate 4 mm");
    KwControl<QPushButton>(d, 2)->click();
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    EXPECT_DOUBLE_EQ(shell()->m_thickness, 0.003);
    EXPECT_EQ(shell()->GetName(), "Cover plate 3 mm");

    d = open(shell());
    ASSERT_NE(d, nullptr);
    edit(d, 7612)->setText("4");
    KwControl<QComboBox>(d, 7601)->setCurrentIndex(0);
    ok(d);
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    EXPECT_DOUBLE_EQ(shell()->m_thickness, 0.004);
    EXPECT_EQ(shell()->m_materialId, host.model->m_materials[0]->GetID());
}

TEST_F(PhysicalPropertyEditor, badThicknessIsRefusedWithTheFieldMessage)
{
    CKwMFCUIPhysicalProperty* d = open(shell());
    ASSERT_NE(d, nullptr);
    for (const char* text : {"abc", "0", "-1", ""}) {
        edit(d, 7612)->setText(QString::fromLatin1(text));
        ok(d);
        EXPECT_TRUE(d->isVisible()) << text;
        EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("Thickness - \n '")) << text;
        EXPECT_DOUBLE_EQ(shell()->m_thickness, 0.003) << text;
    }
    // A solid needs no thickness: the same text is no obstacle once the type changes.
    KwControl<QComboBox>(d, 1417)->setCurrentIndex(CKwPhysicalProperty::Solid);
    ok(d);
    EXPECT_EQ(shell()->m_idealization, CKwPhysicalProperty::Solid);
}

TEST_F(PhysicalPropertyEditor, beamSectionRoundTripsThroughTheDefinitionDialog)
{
    CKwMFCUIPhysicalProperty* d = open(beam());
    ASSERT_NE(d, nullptr);
    EXPECT_TRUE(KwFindControl(d, 7620)->isVisible());
    EXPECT_FALSE(KwFindControl(d, 7610)->isVisible());
    EXPECT_EQ(KwControl<QLabel>(d, 7624)->text(), "Box 20x20x2 (BOX)");

    // Cancel in the definition changes nothing.
    auto change = [](QWidget* w, bool accept) {
        auto* cs = dynamic_cast<CKwDefineCrossSectionDlg*>(w);
        ASSERT_NE(cs, nullptr);
        KwControl<QLineEdit>(cs, CKwDefineCrossSectionDlg::IDC_ENDA_DIM1)->setText("30");
        if (accept)
            cs->OnDefineCSOK();
    };
    kwtest::AnswerModals([&] { d->DefineCrossSection(); }, QMessageBox::Ok,
                         [&](QWidget* w) { change(w, false); });
    EXPECT_DOUBLE_EQ(d->GetEditObject()->m_dimA[0], 0.02);
    EXPECT_EQ(KwControl<QLabel>(d, 7624)->text(), "Box 20x20x2 (BOX)");

    kwtest::AnswerModals([&] { d->DefineCrossSection(); }, QMessageBox::Ok,
                         [&](QWidget* w) { change(w, true); });
    EXPECT_DOUBLE_EQ(d->GetEditObject()->m_dimA[0], 0.03);
    EXPECT_EQ(KwControl<QLabel>(d, 7624)->text(), "BOX") << "a 30 wide box is no 20x20x2";
    EXPECT_DOUBLE_EQ(beam()->m_dimA[0], 0.02) << "the model waits for the editor's OK";
    ok(d);
    EXPECT_DOUBLE_EQ(beam()->m_dimA[0], 0.03);
    // 30 x 20 box, walls 2: 600 - 26 * 16 mm^2.
    EXPECT_NEAR(beam()->m_sectionArea, 1.84e-4, 1e-12);
}

TEST_F(PhysicalPropertyEditor, pipeIsATubeAndAnInvalidSectionIsRefused)
{
    CKwMFCUIPhysicalProperty* d = open(beam());
    ASSERT_NE(d, nullptr);
    KwControl<QComboBox>(d, 7622)->setCurrentIndex(CKwPhysicalProperty::KindPipe);
    EXPECT_EQ(d->GetEditObject()->m_sectionShape, CKwPhysicalProperty::TUBE);
    // The name belonged to the box: the label names what the section is now.
    EXPECT_EQ(KwControl<QLabel>(d, 7624)->text(), "TUBE");
    ok(d);
    EXPECT_TRUE(d->isVisible()) << "a tube without dimensions is no section";
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("Cross Section - \n '"));
    EXPECT_EQ(beam()->m_sectionShape, CKwPhysicalProperty::BOX);
}

TEST_F(PhysicalPropertyEditor, advancedOptionsAreTakenAllOrNothing)
{
    CKwMFCUIPhysicalProperty* d = open(shell());
    ASSERT_NE(d, nullptr);
    bool refusedKeptOpen = false;
    const auto rec = kwtest::AnswerModals([&] { d->OpenShellAdvancedOptions(); }, QMessageBox::Ok,
                                          [&](QWidget* w) {
        auto* page = dynamic_cast<CKwMFCUIShellPropertyAdvancedOptions*>(w);
        ASSERT_NE(page, nullptr);
        EXPECT_EQ(KwControl<QLineEdit>(page, 7290)->text(), "0.8333333333");
        KwControl<QLineEdit>(page, 7286)->setText("1.5");
        KwControl<QLineEdit>(page, 7288)->setText("0");
        page->OnOK();
        refusedKeptOpen = page->isVisible();
        KwControl<QLineEdit>(page, 7288)->setText("1.2");
        page->OnOK();
    });
    EXPECT_TRUE(refusedKeptOpen);
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("Bending Stiffness Ratio - \n"));
    ASSERT_EQ(rec.dialogTitles, QStringList{"Advanced Options"});
    EXPECT_DOUBLE_EQ(d->GetEditObject()->m_shellOffset, 0.0015);
    EXPECT_DOUBLE_EQ(d->GetEditObject()->m_bendingRatio, 1.2);
    ok(d);
    EXPECT_DOUBLE_EQ(shell()->m_shellOffset, 0.0015);
    EXPECT_DOUBLE_EQ(shell()->m_bendingRatio, 1.2);
}

TEST_F(PhysicalPropertyEditor, everyCaptionPassesThroughTheLanguageService)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    CKwMFCUIPhysicalProperty* d = open(shell());
    ASSERT_NE(d, nullptr);
    QStringList bad;
    for (int t = 0; t < 3; ++t) {
        KwControl<QComboBox>(d, 1417)->setCurrentIndex(t);
        bad += kwtest::UntranslatedCaptions(d);
    }
    KwControl<QComboBox>(d, 1417)->setCurrentIndex(CKwPhysicalProperty::Shell);
    kwtest::AnswerModals([&] { d->OpenShellAdvancedOptions(); }, QMessageBox::Ok,
                         [&](QWidget* w) { bad += kwtest::UntranslatedCaptions(w); });
    bad.removeDuplicates();
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();

    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("de"));
    d->SetTextToCurrentLang();
    EXPECT_EQ(d->windowTitle(), "Physikalische Eigenschaft");
    EXPECT_EQ(KwControl<QComboBox>(d, 1417)->itemText(CKwPhysicalProperty::Shell), "Schale");
    EXPECT_EQ(KwControl<QLabel>(d, 7611)->text(), "Dicke (mm):");
    CKwXMLUtils::SetCurrentLanguage("en");
}

} // namespace
