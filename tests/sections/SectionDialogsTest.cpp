// The cross-section definition, its file, the section report and the section choice.
#include "CFMView.h"
#include "CKwDefineCrossSectionDlg.h"
#include "CKwPhysicalProperty.h"
#include "CKwSelectBeamSectionDialog.h"
#include "CKwXMLUtils.h"
#include "CSectionProp.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwNumbers.h"
#include "KwSectionLibrary.h"
#include "KwTestSupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDomDocument>
#include <QFileInfo>
#include <QFontMetricsF>
#include <QImage>
#include <QPainter>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTreeWidget>
#include <gtest/gtest.h>

namespace {

using Dlg = CKwDefineCrossSectionDlg;
using P = CKwPhysicalProperty;
constexpr double M = MissingDouble;

class SectionDialogsTest : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }

    P beam(int shape, std::array<double, 6> mm, int kind = P::KindBeam)
    {
        P p(5, QStringLiteral("Girder"));
        p.m_idealization = P::Beam;
        p.m_elementKind = kind;
        p.m_sectionShape = shape;
        for (int i = 0; i < 6; ++i)
            p.m_dimA[i] = mm[i] > 0 ? mm[i] / 1000 : M;
        return p;
    }
    Dlg* open(P* p, KW_UOM* units)
    {
        auto* d = new Dlg(p, units, host.view.get());
        d->Create();
        d->show();
        return d;
    }
    static QLineEdit* edit(Dlg* d, int id) { return KwControl<QLineEdit>(d, id); }

    kwtest::Host host;
    KW_UOM mm{KW_UOM::MMNS};
};

} // namespace

TEST(SectionShapeCheck, followsTheRulesOfEachShape)
{
    struct Case
    {
        int shape;
        std::array<double, 6> d;
        int expected;
    };
    const Case cases[] = {
        {P::ROD, {M}, 1},
        {P::ROD, {0}, 2},
        {P::ROD, {-3}, 0},                        // only the magnitude is tested
        {P::TUBE, {10, 0}, 2},                    // no solid tube
        {P::TUBE, {10, 10}, 3},
        {P::TUBE, {10, M}, 3},
        {P::I, {200, 100, 100, 8, 12, 12}, 0},
        {P::I, {24, 100, 100, 8, 12, 12}, 3},     // flanges fill the height: strict
        {P::I, {M, M, M, M, M, M}, 1},
        {P::I, {200, 100, 100, 8, 12, 1e-16}, 2},
        {P::HEXA, {M, M, 5}, 1},                  // DIM3 is not looked at for nothing-entered
        {P::HEXA, {2, 10, M}, 3},
        {P::HEXA, {5, 10, 8}, 3},                 // 2 DIM1 < DIM2 is strict
        {P::HEXA, {4, 10, 8}, 0},
        {P::BAR, {M, 5}, 0},                      // only DIM2 must be there
        {P::BAR, {5, M}, 3},
        {P::HAT1, {200, 60, 80, 4, 5}, 0},
        {P::HAT1, {200, 60, 80, 40, 5}, 3},
        {P::BOX1, {100, 200, 100, 100, 8, 9}, 3},
        {P::L, {100, 80, 10, 8}, 0},
        {P::L, {100, 80, 80, 8}, 3},
        {20, {1, 1, 1, 1, 1, 1}, 3},              // no such shape
    };
    for (const Case& c : cases)
        EXPECT_EQ(Dlg::ValidateShape(c.shape, c.d.data()), c.expected)
            << P::ShapeName(c.shape).toStdString() << " " << c.d[0];
}

TEST(SectionShapeCheck, formatsPropertiesByMagnitude)
{
    const std::pair<double, const char*> cases[] = {
        {0.0005, "5.000E-04"}, {0.001, "0.001"}, {10000, "10000.000"}, {10000.5, "1.000E+04"},
        {-3, "-3.000E+00"},    {0, "0.000E+00"}};
    for (const auto& [v, text] : cases)
        EXPECT_EQ(Dlg::FormatPropertyValue(v).toStdString(), text);
}

TEST_F(SectionDialogsTest, offersTheShapesOfTheElementKind)
{
    for (int kind : {P::KindBar, P::KindBeam, P::KindPipe}) {
        P p = beam(P::I, {200, 100, 100, 8, 12, 12}, kind);
        Dlg* d = open(&p, &mm);
        auto* shapes = KwControl<QComboBox>(d, Dlg::IDC_COMBO_SHAPE);
        if (kind == P::KindPipe) {
            ASSERT_EQ(shapes->count(), 1);
            EXPECT_EQ(shapes->currentText(), QStringLiteral("TUBE"));
            EXPECT_EQ(d->GetWorkingCopy()->m_sectionShape, P::TUBE);
        } else {
            EXPECT_EQ(shapes->count(), kind == P::KindBeam ? 20 : 19);
            EXPECT_EQ(shapes->itemText(shapes->count() - 1),
                      kind == P::KindBeam ? QStringLiteral("L") : QStringLiteral("HAT1"));
            EXPECT_EQ(shapes->currentText(), QStringLiteral("I"));
        }
        EXPECT_EQ(KwFindControl(d, Dlg::IDC_CHECK_TAPERED)->isEnabled(), kind == P::KindBeam);
        delete d;
    }
}

TEST_F(SectionDialogsTest, enablesDimensionsTaperAndReferencePoint)
{
    P p = beam(P::HEXA, {20, 100, 80});
    Dlg* d = open(&p, &mm);
    EXPECT_EQ(edit(d, Dlg::IDC_ENDA_DIM1)->text(), QStringLiteral("20"));
    EXPECT_TRUE(edit(d, Dlg::IDC_ENDA_DIM1 + 2)->isEnabled());
    EXPECT_FALSE(edit(d, Dlg::IDC_ENDA_DIM1 + 3)->isEnabled());
    EXPECT_TRUE(edit(d, Dlg::IDC_ENDA_DIM1 + 4)->text().isEmpty());
    EXPECT_FALSE(edit(d, Dlg::IDC_ENDB_DIM1)->isEnabled());
    EXPECT_FALSE(KwFindControl(d, Dlg::IDC_DRAW_ENDB)->isEnabled());
    EXPECT_FALSE(KwFindControl(d, Dlg::IDC_COMBO_REFPOINT)->isEnabled());
    KwControl<QCheckBox>(d, Dlg::IDC_CHECK_TAPERED)->click();
    EXPECT_TRUE(edit(d, Dlg::IDC_ENDB_DIM1 + 3)->isEnabled()); // DIM3 of End B
    EXPECT_TRUE(KwFindControl(d, Dlg::IDC_DRAW_ENDB)->isEnabled());
    EXPECT_EQ(d->GetWorkingCopy()->m_tapered, 1);
    delete d;
    P m = beam(P::I, {200, 100, 100, 8, 12, 12});
    m.m_sectionMode = 2;
    d = open(&m, &mm);
    EXPECT_TRUE(KwFindControl(d, Dlg::IDC_COMBO_REFPOINT)->isEnabled());
    EXPECT_FALSE(KwFindControl(d, Dlg::IDC_CHECK_TAPERED)->isEnabled());
    delete d;
}

TEST_F(SectionDialogsTest, okWritesOnlyAValidSection)
{
    P p = beam(P::I, {200, 100, 100, 8, 12, 12});
    QPointer<Dlg> d = open(&p, &mm);
    // Flanges as thick as the beam is high: refused, property untouched.
    edit(d, Dlg::IDC_ENDA_DIM1 + 4)->setText(QStringLiteral("100"));
    edit(d, Dlg::IDC_ENDA_DIM1 + 5)->setText(QStringLiteral("100"));
    auto rec = kwtest::AnswerModals([&] { d->OnDefineCSOK(); });
    ASSERT_EQ(rec.boxTexts.size(), 1);
    EXPECT_EQ(rec.boxTexts[0], QStringLiteral("Invalid Shape! Adjust the dimensions so a valid "
                                              "cross section can be created."));
    EXPECT_DOUBLE_EQ(p.m_dimA[4], 0.012);
    // Not a number: the unit's message in a bubble, nothing else.
    edit(d, Dlg::IDC_ENDA_DIM1 + 4)->setText(QStringLiteral("12x"));
    host.view->ClearBubbleRecord();
    rec = kwtest::AnswerModals([&] { d->OnDefineCSOK(); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("'12x' is not a valid number. Enter a number in mm."));
    // A length whose section values could not be represented is refused the same way.
    edit(d, Dlg::IDC_ENDA_DIM1 + 4)->setText(QStringLiteral("1e16"));
    rec = kwtest::AnswerModals([&] { d->OnDefineCSOK(); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(host.view->GetLastBubbleText(), mm.GetErrorMessageForUnit(QStringLiteral("1e16"), KwUnitKind::Length));
    EXPECT_DOUBLE_EQ(p.m_dimA[4], 0.012);
    // A tapered beam with an invalid End B is refused too.
    edit(d, Dlg::IDC_ENDA_DIM1 + 4)->setText(QStringLiteral("12"));
    edit(d, Dlg::IDC_ENDA_DIM1 + 5)->setText(QStringLiteral("14"));
    KwControl<QCheckBox>(d, Dlg::IDC_CHECK_TAPERED)->click();
    rec = kwtest::AnswerModals([&] { d->OnDefineCSOK(); });
    EXPECT_EQ(rec.boxTexts.size(), 1);
    KwControl<QCheckBox>(d, Dlg::IDC_CHECK_TAPERED)->click();
    rec = kwtest::AnswerModals([&] { d->OnDefineCSOK(); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_DOUBLE_EQ(p.m_dimA[5], 0.014);
    EXPECT_EQ(p.m_tapered, 0);
}

TEST_F(SectionDialogsTest, showsValuesOfTheShownEndAndTurnsOnlyValidSections)
{
    P p = beam(P::BAR, {20, 40});
    Dlg* d = open(&p, &mm);
    d->DrawCrossSection(1);
    EXPECT_EQ(edit(d, Dlg::IDC_PROP_ENDA_FIRST)->text(), QStringLiteral("800.000"));
    EXPECT_EQ(edit(d, Dlg::IDC_PROP_ENDA_FIRST + 1)->text(), QStringLiteral("1.067E+05"));
    d->OnBnClickedDefineCSMoveAnticlockwise();
    EXPECT_EQ(d->GetWorkingCopy()->m_rotationSteps, 1);
    EXPECT_EQ(edit(d, Dlg::IDC_PROP_ENDA_FIRST + 1)->text(), QStringLiteral("2.667E+04"));
    edit(d, Dlg::IDC_ENDA_DIM1 + 1)->setText(QStringLiteral("0"));
    d->UpdateDimensions();
    d->OnBnClickedDefineCSMoveClockWise();
    EXPECT_EQ(d->GetWorkingCopy()->m_rotationSteps, 1);
    d->DrawCrossSection(1);
    EXPECT_TRUE(edit(d, Dlg::IDC_PROP_ENDA_FIRST)->text().isEmpty());
    EXPECT_EQ(p.m_rotationSteps, 0); // the caller's property waits for OK
    delete d;
}

TEST_F(SectionDialogsTest, savesTheDocumentOfATaperedSection)
{
    P p = beam(P::I, {200, 100, 100, 8, 12, 12});
    p.m_tapered = 1;
    p.m_dimB = {0.15, 0.1, 0.1, 0.008, 0.012, 0.012};
    Dlg* d = open(&p, &mm);
    QDomDocument doc;
    ASSERT_TRUE(doc.setContent(d->SaveToBytes()));
    EXPECT_TRUE(d->SaveToBytes().startsWith("<?xml"));
    const QDomElement root = doc.documentElement();
    EXPECT_EQ(root.tagName(), QStringLiteral("KwiWorks"));
    const QDomElement prop = root.firstChildElement();
    EXPECT_EQ(prop.tagName(), QStringLiteral("Property"));
    EXPECT_EQ(prop.attribute(QStringLiteral("Name")), QStringLiteral("Girder"));
    QStringList rows;
    for (QDomElement e = prop.firstChildElement(); !e.isNull(); e = e.nextSiblingElement()) {
        ASSERT_EQ(e.attributes().count(), 1);
        const QDomAttr a = e.attributes().item(0).toAttr();
        rows << e.tagName() + QLatin1Char(' ') + a.name() + QLatin1Char('=') + a.value();
    }
    EXPECT_EQ(rows, QStringList({"Section Shape=I", "EndA DIM1=200", "EndA DIM2=100",
                                 "EndA DIM3=100", "EndA DIM4=8", "EndA DIM5=12", "EndA DIM6=12",
                                 "EndB DIM1=150", "EndB DIM2=100", "EndB DIM3=100",
                                 "EndB DIM4=8", "EndB DIM5=12", "EndB DIM6=12"}));
    delete d;
}

TEST_F(SectionDialogsTest, loadsNumbersAsTheDisplayUnitAndRefusesBadFiles)
{
    P saved = beam(P::TUBE, {30, 25});
    Dlg* d = open(&saved, &mm);
    const QByteArray file = d->SaveToBytes();
    EXPECT_FALSE(file.contains("EndB"));
    delete d;

    KW_UOM inches(KW_UOM::IPS);
    P target = beam(P::I, {200, 100, 100, 8, 12, 12});
    d = open(&target, &inches);
    ASSERT_TRUE(d->LoadFromBytes(file));
    EXPECT_EQ(d->GetWorkingCopy()->m_sectionShape, P::TUBE);
    EXPECT_EQ(edit(d, Dlg::IDC_ENDA_DIM1)->text(), QStringLiteral("30")); // now inches
    EXPECT_NEAR(d->GetWorkingCopy()->m_dimA[0], 30 * 0.0254, 1e-12);

    const QByteArray bad[] = {
        "",
        "<KwiWorks><Property",
        "<KwiWorks/>",
        "<?xml version='1.0'?><!DOCTYPE r [<!ENTITY a 'aaaaaaaaaa'><!ENTITY b '&a;&a;&a;&a;'>]>"
        "<KwiWorks><Property><Section Shape='BAR'/><EndA DIM1='&b;'/></Property></KwiWorks>",
        "<?xml version='1.0'?><!DOCTYPE r [<!ENTITY x SYSTEM 'file:///etc/passwd'>]>"
        "<KwiWorks><Property><Section Shape='&x;'/></Property></KwiWorks>",
    };
    for (const QByteArray& b : bad) {
        EXPECT_FALSE(d->LoadFromBytes(b)) << b.constData();
        EXPECT_EQ(d->GetWorkingCopy()->m_sectionShape, P::TUBE);
    }
    // Unknown elements and attributes are ignored.
    EXPECT_TRUE(d->LoadFromBytes("<KwiWorks><Property><Extra DIM1='7'/><EndA DIM2='2' X='1'/>"
                                 "</Property></KwiWorks>"));
    EXPECT_EQ(edit(d, Dlg::IDC_ENDA_DIM1)->text(), QStringLiteral("30"));
    EXPECT_EQ(edit(d, Dlg::IDC_ENDA_DIM1 + 1)->text(), QStringLiteral("2"));
    delete d;

    // An L section into a bar property is refused with the message.
    P bar = beam(P::BAR, {20, 40}, P::KindBar);
    d = open(&bar, &mm);
    const auto rec = kwtest::AnswerModals([&] {
        d->LoadFromBytes("<KwiWorks><Property Name='x'><Section Shape='L'/></Property></KwiWorks>");
    });
    EXPECT_EQ(rec.boxTexts, QStringList({"L section not supported for bar elements"}));
    EXPECT_EQ(d->GetWorkingCopy()->m_sectionShape, P::BAR);
    delete d;
}

TEST_F(SectionDialogsTest, savesAndLoadsThroughTheFileButtons)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("section"));
    P p = beam(P::Z, {92, 8, 176, 200});
    Dlg* d = open(&p, &mm);
    d->SetFileChooser([&](bool) { return path; });
    d->OnBnClickedSave();
    delete d;
    P q = beam(P::ROD, {10});
    d = open(&q, &mm);
    d->SetFileChooser([&](bool) { return path + QStringLiteral(".xml"); });
    d->OnBnClickedLoad();
    EXPECT_EQ(d->GetWorkingCopy()->m_sectionShape, P::Z);
    EXPECT_NEAR(d->GetWorkingCopy()->m_dimA[3], 0.2, 1e-12);
    delete d;
}

TEST_F(SectionDialogsTest, reportsInBothFormsWithinItsLimits)
{
    double v[KwSectionValue::Count] = {};
    v[0] = 1e-3;
    v[9] = 0.25;
    v[10] = 0.1 + 1e-15; // the pierce point within rounding
    v[14] = 0.3;
    const QString general = CSectionProp::BuildReport(v, 0.25, 0.1, mm, 0);
    EXPECT_TRUE(general.startsWith(QStringLiteral("Cross Section Area (A):\t\t1000 (mm²)\r\n")))
        << general.toStdString();
    EXPECT_TRUE(general.contains(QStringLiteral("Centroid offset from pierce point in Z:\t0 (mm)\r\n")));
    EXPECT_TRUE(general.contains(QStringLiteral("Centroid offset from pierce point in Y:\t0 (mm)\r\n")));
    EXPECT_TRUE(general.contains(QStringLiteral("Z coordinate of stress recovery pt C (Cz):\t50 (mm)\r\n")));
    EXPECT_TRUE(general.contains(QStringLiteral("Moment of inertia about Yn (I2):\t\t")));
    EXPECT_TRUE(general.contains(QStringLiteral("Shear factor in Z (Kz):\t\t\t0\r\n")));
    EXPECT_EQ(general.count(QStringLiteral("\r\n")), 22);
    // The warping coefficient is shown in the length unit to the sixth power, without a unit
    // in its line; the tool tip names the unit. 2e-8 m⁶ is 2e10 mm⁶.
    v[13] = 2e-8;
    EXPECT_TRUE(CSectionProp::BuildReport(v, 0.25, 0.1, mm, 0)
                    .contains(QStringLiteral("Warping coefficient (Cw):\t\t2e+10\r\n")));
    EXPECT_EQ(CSectionProp::WarpingUnit(mm), QStringLiteral("Warping coefficient (Cw) in mm⁶"));
    v[0] = 0.1;
    v[1] = 0.005;
    const QString pipe = CSectionProp::BuildReport(v, 0, 0, mm, CSectionProp::kPipeForm);
    EXPECT_EQ(pipe, QStringLiteral("Outer Diameter (D):\t\t100 (mm)\r\nWall Thickness (t):\t\t5 (mm)\r\n"));
    // Long translated labels cannot overflow the report.
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps")));
    for (int i = 0; i < 22; ++i)
        v[i] = -1.234567e-300;
    EXPECT_LE(CSectionProp::BuildReport(v, 0, 0, mm, 0).size(), CSectionProp::kMaxReportChars - 1);
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

// The report goes into its edit as built, tabs and all; tab stops lay it out. One button
// closes the dialog.
TEST_F(SectionDialogsTest, reportShowsItsTextUnchangedAndCloses)
{
    double v[KwSectionValue::Count] = {};
    for (int i = 0; i < 22; ++i)
        v[i] = 0.001 * (i + 1);
    for (int form : {0, int(CSectionProp::kPipeForm)}) {
        auto* d = new CSectionProp(nullptr, {}, v, 0, 0, 0, &mm, 0, form);
        d->Create();
        d->show();
        auto* edit = KwControl<QPlainTextEdit>(d, CSectionProp::IDC_REPORT);
        ASSERT_NE(edit, nullptr);
        QString report = d->GetReport();
        EXPECT_TRUE(report.contains(QStringLiteral("\t\t")));
        EXPECT_EQ(edit->toPlainText(), report.replace(QStringLiteral("\r\n"), QStringLiteral("\n")));
        EXPECT_GE(edit->tabStopDistance(), 4 * QFontMetricsF(edit->font()).averageCharWidth());
        auto* close = KwControl<QPushButton>(d, CSectionProp::IDC_CLOSE);
        ASSERT_NE(close, nullptr);
        EXPECT_EQ(close->text(), QStringLiteral("Close"));
        close->click();
        EXPECT_FALSE(d->isVisible());
        delete d;
    }
}

// End B follows the tapered flag as a whole (label, edits, Draw End B); section mode 2 and the
// shape's count then keep edits from input. Both property columns are headed, and a tapered
// definition fills both.
TEST_F(SectionDialogsTest, endBFollowsTheTaperedFlag)
{
    struct Case
    {
        int mode, tapered;
        bool drawB, editB;
    };
    const Case cases[] = {{0, 0, false, false}, {0, 1, true, true}, {2, 1, true, false},
                          {2, 0, false, false}};
    for (const Case& c : cases) {
        P p = beam(P::BAR, {20, 40});
        p.m_sectionMode = c.mode;
        p.m_tapered = c.tapered;
        p.m_dimB = {0.01, 0.03, M, M, M, M};
        Dlg* d = open(&p, &mm);
        SCOPED_TRACE(std::to_string(c.mode) + " " + std::to_string(c.tapered));
        EXPECT_EQ(KwFindControl(d, Dlg::IDC_DRAW_ENDB)->isEnabled(), c.drawB);
        EXPECT_EQ(KwFindControl(d, Dlg::IDC_LABEL_ENDB)->isEnabled(), c.drawB);
        EXPECT_EQ(edit(d, Dlg::IDC_ENDB_DIM1)->isEnabled(), c.editB);
        EXPECT_FALSE(edit(d, Dlg::IDC_ENDB_DIM1 + 3)->isEnabled()); // DIM3: BAR has two
        EXPECT_EQ(KwGetControlText(d, Dlg::IDC_LABEL_PROP_ENDA), QStringLiteral("End A"));
        EXPECT_EQ(KwGetControlText(d, Dlg::IDC_LABEL_PROP_ENDB), QStringLiteral("End B"));
        // End B's area (10 x 30 mm) stands beside End A's when tapered.
        EXPECT_EQ(edit(d, Dlg::IDC_PROP_ENDB_FIRST)->text(),
                  c.drawB ? QStringLiteral("300.000") : QString());
        delete d;
    }
    // Toggling the box and loading a tapered file switch End B as a whole.
    P p = beam(P::I, {200, 100, 100, 8, 12, 12});
    Dlg* d = open(&p, &mm);
    auto* box = KwControl<QCheckBox>(d, Dlg::IDC_CHECK_TAPERED);
    box->click();
    EXPECT_TRUE(KwFindControl(d, Dlg::IDC_DRAW_ENDB)->isEnabled());
    EXPECT_TRUE(edit(d, Dlg::IDC_ENDB_DIM1 + 5)->isEnabled()); // DIM6 of End B
    box->click();
    EXPECT_FALSE(KwFindControl(d, Dlg::IDC_DRAW_ENDB)->isEnabled());
    EXPECT_FALSE(KwFindControl(d, Dlg::IDC_LABEL_ENDB)->isEnabled());
    EXPECT_TRUE(edit(d, Dlg::IDC_PROP_ENDB_FIRST)->text().isEmpty());
    ASSERT_TRUE(d->LoadFromBytes("<KwiWorks><Property><Section Shape='BAR'/><EndA DIM1='20'/>"
                                 "<EndA DIM2='40'/><EndB DIM1='10'/><EndB DIM2='30'/>"
                                 "</Property></KwiWorks>"));
    EXPECT_TRUE(KwFindControl(d, Dlg::IDC_DRAW_ENDB)->isEnabled());
    EXPECT_EQ(edit(d, Dlg::IDC_PROP_ENDB_FIRST)->text(), QStringLiteral("300.000"));
    delete d;
}

TEST_F(SectionDialogsTest, aFailedSaveSaysSoAndKeepsTheOldFile)
{
    QTemporaryDir dir;
    P p = beam(P::BAR, {20, 40});
    Dlg* d = open(&p, &mm);
    const QString missing = dir.filePath(QStringLiteral("no/such/folder/section.xml"));
    d->SetFileChooser([&](bool) { return missing; });
    auto rec = kwtest::AnswerModals([&] { d->OnBnClickedSave(); });
    ASSERT_EQ(rec.boxTexts.size(), 1);
    EXPECT_TRUE(rec.boxTexts[0].startsWith(QStringLiteral("The section could not be saved to ")));
    EXPECT_TRUE(rec.boxTexts[0].contains(QStringLiteral("section.xml")));
    // A good save says nothing.
    const QString path = dir.filePath(QStringLiteral("section.xml"));
    d->SetFileChooser([&](bool) { return path; });
    rec = kwtest::AnswerModals([&] { d->OnBnClickedSave(); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_TRUE(QFileInfo::exists(path));
    delete d;
}

// The drawing: the section's box fitted with one scale and a 5 % margin on the governing side
// and centred on the other; circles with a tenth of the area as margin; "Invalid Shape!" in
// the current language and nothing blue for a section that is none.
TEST_F(SectionDialogsTest, drawsToScaleCentredOrSaysInvalid)
{
    auto draw = [&](P& p, QSize size) {
        Dlg* d = open(&p, &mm);
        QImage img(size, QImage::Format_RGB32);
        QPainter painter(&img);
        d->DrawCrossSection(1, &painter, QRect(QPoint(0, 0), size));
        painter.end();
        delete d;
        return img;
    };
    // Bounding box of the pixels that are clearly blue, and the count of dark ones.
    struct Ink
    {
        QRect blue;
        int dark = 0;
    };
    auto ink = [](const QImage& img) {
        Ink r;
        int x0 = img.width(), y0 = img.height(), x1 = -1, y1 = -1;
        for (int y = 0; y < img.height(); ++y)
            for (int x = 0; x < img.width(); ++x) {
                const QColor c = img.pixelColor(x, y);
                if (c.blue() > 150 && c.red() < 100 && c.green() < 100) {
                    x0 = std::min(x0, x);
                    x1 = std::max(x1, x);
                    y0 = std::min(y0, y);
                    y1 = std::max(y1, y);
                }
                if (c.red() < 80 && c.green() < 80 && c.blue() < 80)
                    ++r.dark;
            }
        if (x1 >= 0)
            r.blue = QRect(QPoint(x0, y0), QPoint(x1, y1));
        return r;
    };
    struct Case
    {
        int shape;
        std::array<double, 6> mm;
        QSize area;
        QRectF expected; // where the outline's box lands
    };
    const Case cases[] = {
        // 100 x 50 in 400 x 400: width governs, 380 wide, 190 high, centred.
        {P::BAR, {100, 50}, {400, 400}, {10, 105, 380, 190}},
        // 50 x 100 in 400 x 300: height governs, 285 high, 142.5 wide, centred.
        {P::BAR, {50, 100}, {400, 300}, {128.75, 7.5, 142.5, 285}},
        // Diameter 20 in 400 x 300: 270 across, centred.
        {P::ROD, {10}, {400, 300}, {65, 15, 270, 270}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(P::ShapeName(c.shape).toStdString());
        P p = beam(c.shape, c.mm);
        const Ink i = ink(draw(p, c.area));
        ASSERT_FALSE(i.blue.isNull());
        EXPECT_NEAR(i.blue.left(), c.expected.left(), 3);
        EXPECT_NEAR(i.blue.right(), c.expected.right(), 3);
        EXPECT_NEAR(i.blue.top(), c.expected.top(), 3);
        EXPECT_NEAR(i.blue.bottom(), c.expected.bottom(), 3);
    }
    P invalid = beam(P::I, {200, 100, 100, 8, 120, 100});
    const Ink english = ink(draw(invalid, {400, 300}));
    EXPECT_TRUE(english.blue.isNull());
    EXPECT_GT(english.dark, 20);
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps")));
    const Ink pseudo = ink(draw(invalid, {400, 300}));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    EXPECT_GT(pseudo.dark, english.dark) << "the text is the language's";
}

TEST_F(SectionDialogsTest, selectionGroupsByFirstOccurrenceAndCountsInTheGroup)
{
    auto* d = new CKwSelectBeamSectionDialog({"a", "b", "c", "d", "e"},
                                             {"L", "I", "L", "NOSUCH", "I"});
    d->Create();
    QTreeWidget* t = d->GetTree();
    ASSERT_EQ(t->topLevelItemCount(), 2);
    EXPECT_EQ(t->topLevelItem(0)->text(0), QStringLiteral("L"));
    EXPECT_EQ(t->topLevelItem(1)->text(0), QStringLiteral("I"));
    d->OnOK();
    EXPECT_EQ(d->GetSelectedPosition(), -1);
    auto* d2 = new CKwSelectBeamSectionDialog({"a", "b", "c"}, {"L", "I", "L"});
    d2->Create();
    d2->GetTree()->setCurrentItem(d2->GetTree()->topLevelItem(0)->child(1));
    d2->OnOK();
    EXPECT_EQ(d2->GetSelectedShape(), QStringLiteral("L"));
    EXPECT_EQ(d2->GetSelectedPosition(), 1);
    // The demo host applies what was picked.
    P p = beam(P::ROD, {10});
    ASSERT_TRUE(KwApplyStandardSection(&p, QStringLiteral("I"), 1));
    EXPECT_EQ(p.m_sectionShape, P::I);
    EXPECT_DOUBLE_EQ(p.m_dimA[0], 0.2);
    EXPECT_FALSE(KwApplyStandardSection(&p, QStringLiteral("I"), 99));
}

TEST_F(SectionDialogsTest, everyVisibleCaptionIsTranslated)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps")));
    P p = beam(P::I, {200, 100, 100, 8, 12, 12});
    Dlg* d = open(&p, &mm);
    EXPECT_EQ(kwtest::UntranslatedCaptions(d), QStringList());
    delete d;
    double v[KwSectionValue::Count] = {};
    auto* r = new CSectionProp(nullptr, {}, v, 0, 0, 0, &mm, 0, 0);
    r->Create();
    r->show();
    EXPECT_EQ(kwtest::UntranslatedCaptions(r), QStringList());
    delete r;
    auto* s = new CKwSelectBeamSectionDialog({"a"}, {"I"});
    s->Create();
    s->show();
    EXPECT_EQ(kwtest::UntranslatedCaptions(s), QStringList());
    delete s;
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST_F(SectionDialogsTest, speaksGerman)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    P p = beam(P::I, {200, 100, 100, 8, 12, 12});
    Dlg* d = open(&p, &mm);
    EXPECT_EQ(d->windowTitle(), QStringLiteral("Querschnittsdefinition"));
    EXPECT_EQ(KwGetControlText(d, Dlg::IDC_CHECK_TAPERED), QStringLiteral("Verjüngter Balken"));
    EXPECT_EQ(KwGetControlText(d, Dlg::IDC_DRAW_ENDA), QStringLiteral("Ansicht Ende A"));
    // The bad-number bubble names the text and the unit in the current language.
    edit(d, Dlg::IDC_ENDA_DIM1)->setText(QStringLiteral("abc"));
    host.view->ClearBubbleRecord();
    const auto rec = kwtest::AnswerModals([&] { d->OnDefineCSOK(); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("'abc' ist keine gültige Zahl. Geben Sie eine Zahl in mm ein."));
    delete d;
    double v[KwSectionValue::Count] = {};
    const QString r = CSectionProp::BuildReport(v, 0, 0, mm, 0);
    // Both moment lines carry the one key's text.
    EXPECT_EQ(r.count(QStringLiteral("Flächenträgheitsmoment um Zn")), 2);
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}
