// The material editor through LaunchDialog kind 2: rows per type, type change (width, kept
// values, advisories), OK writing the model, the hidden request on an open editor, the
// point-table hook and every caption through the language service.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwDlgBase.h"
#include "CKwFEModel.h"
#include "CKwMFCUIMaterial.h"
#include "CKwMaterialNonlinearDialog.h"
#include "CKwOrthotropic3DDlg.h"
#include "CKwTableDialog.h"
#include "CKwMaterial.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "KwControls.h"
#include "KW_UOM.h"
#include "KwMaterialKeys.h"
#include "KwNumbers.h"
#include "KwOrthotropicStiffness.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>

namespace K = KwMaterialKeys;

namespace {

class MaterialEditor : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    CKwMFCUIMaterial* open(CKwMaterial* material, int hidden = 0)
    {
        DialogLaunchRequest r = host.Request(2);
        r.object = material;
        r.createHidden = hidden;
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCUIMaterial*>(host.view->GetOpenDialog());
        EXPECT_NE(d, nullptr);
        return d;
    }
    static QComboBox* typeCombo(QWidget* d) { return KwControl<QComboBox>(d, 1390); }
    kwtest::Host host;
};

TEST_F(MaterialEditor, typeChangeShowsTheTypesRowsAndWidensOnlyForHyperelastic)
{
    CKwMFCUIMaterial* d = open(host.model->m_materials.first());
    ASSERT_NE(d, nullptr);
    EXPECT_TRUE(d->isVisible());
    QComboBox* type = typeCombo(d);
    ASSERT_EQ(type->count(), 7);
    EXPECT_EQ(type->itemText(6), "Viscoelastic");
    EXPECT_EQ(d->KeyValueText(K::EX), "200000");
    EXPECT_TRUE(d->IsKeyShown(K::EX));
    EXPECT_FALSE(d->IsKeyShown(K::E1));
    d->SetKeyValueText(K::EX, "210000");

    const QRect before = d->geometry();
    const int bubbles = host.view->GetBubbleCount();
    type->setCurrentIndex(CKwMaterial::Hyperelastic);
    EXPECT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Hyperelastic);
    EXPECT_TRUE(d->IsExtraShown(CKwMaterial::A10));
    EXPECT_FALSE(d->IsKeyShown(K::EX));
    const qreal scale = d->screen()->logicalDotsPerInch() / 96.0;
    EXPECT_EQ(d->geometry().width(), qRound(692 * scale));
    EXPECT_EQ(d->geometry().height(), before.height());
    EXPECT_EQ(d->geometry().topLeft(), before.topLeft());
    // The sample model's first analysis is linear: nonlinear-only material data waits.
    EXPECT_GT(host.view->GetBubbleCount(), bubbles);
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("Hyperelastic material will not"));

    type->setCurrentIndex(CKwMaterial::Orthotropic3D);
    EXPECT_EQ(d->geometry().width(), qRound(667 * scale));
    EXPECT_TRUE(d->IsKeyShown(K::E3));
    type->setCurrentIndex(CKwMaterial::Isotropic);
    EXPECT_EQ(d->KeyValueText(K::EX), "210000") << "values typed before a switch are kept";
}

TEST_F(MaterialEditor, okWritesTheModelAndANewMaterialIsAdded)
{
    CKwMaterial* alu = host.model->m_materials[1];
    CKwMFCUIMaterial* d = open(alu);
    ASSERT_NE(d, nullptr);
    d->SetKeyValueText(K::NUXY, "0.5");
    KwControl<QPushButton>(d, 1)->click();
    EXPECT_TRUE(d->isVisible());
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("Poisson's Ratio - \n"));
    EXPECT_DOUBLE_EQ(alu->GetValue("NUXY"), 0.33);
    d->SetKeyValueText(K::NUXY, "0.34");
    KwControl<QComboBox>(d, 1392)->setCurrentIndex(CKwMaterial::VonMisesStress);
    KwControl<QPushButton>(d, 1)->click();
    EXPECT_DOUBLE_EQ(alu->GetValue("NUXY"), 0.34);
    EXPECT_EQ(alu->m_failureTheory, CKwMaterial::VonMisesStress);
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);

    CKwMFCUIMaterial* fresh = open(nullptr);
    ASSERT_NE(fresh, nullptr);
    fresh->SetKeyValueText(K::EX, "110000");
    fresh->SetKeyValueText(K::NUXY, "0.3");
    KwControl<QPushButton>(fresh, 1)->click();
    ASSERT_EQ(host.model->m_materials.size(), 5);
    EXPECT_DOUBLE_EQ(host.model->m_materials.last()->GetValue("EX"), 1.1e11);
}

TEST_F(MaterialEditor, hiddenRequestOnAnOpenEditorSetsTheFailureTheoryAndRefreshes)
{
    CKwMFCUIMaterial* d = open(host.model->m_materials.first());
    ASSERT_NE(d, nullptr);
    d->SetKeyValueText(K::EX, "199000");
    DialogLaunchRequest r = host.Request(2);
    r.keepResults = 1;
    r.createHidden = 1;
    r.option = CKwMaterial::PrincipalStress;
    const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
    EXPECT_EQ(rec.count(), 0);
    EXPECT_EQ(host.view->GetOpenDialogs().size(), 1);
    EXPECT_EQ(KwControl<QComboBox>(d, 1392)->currentIndex(), CKwMaterial::PrincipalStress);
    EXPECT_EQ(d->KeyValueText(K::EX), "199000");
}

TEST_F(MaterialEditor, pointTableButtonsGoThroughTheHook)
{
    QList<int> curves;
    CKwMFCUIMaterial::SetPointTableHook([&](CKwMFCUIMaterial*, int c) { curves << c; });
    CKwMFCUIMaterial* d = open(host.model->m_materials.first());
    ASSERT_NE(d, nullptr);
    KwControl<QPushButton>(d, 1397)->click();
    KwControl<QPushButton>(d, 1398)->click();
    typeCombo(d)->setCurrentIndex(CKwMaterial::Hyperelastic);
    KwControl<QComboBox>(d, 1399)->setCurrentIndex(4);
    KwControl<QPushButton>(d, 1400)->click();
    CKwMFCUIMaterial::SetPointTableHook({});
    EXPECT_EQ(curves, (QList<int>{CKwMaterial::StressStrain, CKwMaterial::ConductivityVsTemperature,
                                  CKwMaterial::PureShear}));
}

// Each table button opens its dialog on the edit copy's curve: Cancel changes nothing, OK
// changes the edit copy only, and the material's OK writes the model.
TEST_F(MaterialEditor, pointTablesEditTheEditCopyOnlyOnOk)
{
    struct Case
    {
        int button, experimental, curve;
        bool nonlinearDialog, temperatureDialog;
    };
    const Case cases[] = {
        {1397, -1, CKwMaterial::StressStrain, true, false},
        {1398, -1, CKwMaterial::ConductivityVsTemperature, false, true},
        {1400, 0, CKwMaterial::SimpleTension, false, false},
        {1400, 4, CKwMaterial::PureShear, false, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.curve);
        CKwMaterial* m = host.model->m_materials.first();
        m->SetCurve(c.curve, KwMaterialCurve{{0.0, 0.01}, {0.0, 2.0e8}});
        CKwMFCUIMaterial* d = open(m);
        ASSERT_NE(d, nullptr);
        if (c.experimental >= 0) {
            typeCombo(d)->setCurrentIndex(CKwMaterial::Hyperelastic);
            KwControl<QComboBox>(d, 1399)->setCurrentIndex(c.experimental);
            for (int e : {CKwMaterial::A10, CKwMaterial::A01})
                KwControl<QLineEdit>(d, CKwMFCUIMaterial::kExtraIdBase + e)->setText("1");
        }
        const auto press = [&](bool ok) {
            return kwtest::AnswerModals([&] { KwControl<QPushButton>(d, c.button)->click(); },
                                        QMessageBox::Ok, [&](QWidget* w) {
                auto* table = dynamic_cast<CKwNonlinearDialogBase*>(w);
                ASSERT_NE(table, nullptr);
                EXPECT_EQ(dynamic_cast<CKwMaterialNonlinearDialog*>(w) != nullptr, c.nonlinearDialog);
                EXPECT_EQ(dynamic_cast<CTemperatureDependence*>(w) != nullptr, c.temperatureDialog);
                EXPECT_EQ(table->GetRowCount(), 2);
                table->Add("0.02", "300");
                if (!ok)
                    return;
                if (auto* n = dynamic_cast<CKwMaterialNonlinearDialog*>(w))
                    n->OnOK();
                else
                    dynamic_cast<CKwTableDialog*>(w)->OnOK();
            });
        };
        EXPECT_EQ(press(false).dialogTitles.size(), 1);
        EXPECT_EQ(d->GetCurve(c.curve).Size(), 2) << "Cancel keeps the curve";
        EXPECT_EQ(press(true).dialogTitles.size(), 1);
        ASSERT_EQ(d->GetCurve(c.curve).Size(), 3);
        EXPECT_GT(d->GetCurve(c.curve).x[2], d->GetCurve(c.curve).x[1]);
        EXPECT_EQ(m->GetCurve(c.curve).Size(), 2) << "the model waits for the material's OK";
        KwControl<QPushButton>(d, 1)->click();
        EXPECT_EQ(m->GetCurve(c.curve).Size(), 3) << host.view->GetLastBubbleText().toStdString();
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    }
}

TEST_F(MaterialEditor, rigidAndConcreteAreOfferedWithExplicitAnalyses)
{
    host.addin->SetExplicitEnabledInTechPreview(true);
    CKwMFCUIMaterial* d = open(host.model->m_materials.first());
    ASSERT_NE(d, nullptr);
    ASSERT_EQ(typeCombo(d)->count(), 10);
    EXPECT_EQ(typeCombo(d)->itemText(8), "Rigid");
    EXPECT_EQ(typeCombo(d)->itemText(9), "Concrete");
    typeCombo(d)->setCurrentIndex(9);
    EXPECT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Concrete);
    EXPECT_TRUE(d->IsExtraShown(CKwMaterial::FPC));
    typeCombo(d)->setCurrentIndex(8);
    EXPECT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Rigid);
}

TEST_F(MaterialEditor, everyCaptionOfEveryTypePassesThroughTheLanguageService)
{
    host.addin->SetExplicitEnabledInTechPreview(true);
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    CKwMFCUIMaterial* d = open(host.model->m_materials.first());
    ASSERT_NE(d, nullptr);
    QStringList bad;
    ASSERT_EQ(typeCombo(d)->count(), 10);
    for (int t = 0; t < 10; ++t) {
        typeCombo(d)->setCurrentIndex(t);
        bad += kwtest::UntranslatedCaptions(d);
    }
    CKwXMLUtils::SetCurrentLanguage("en");
    bad.removeDuplicates();
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
}

// A stored rigid or concrete material keeps its type in the list while the list does not offer
// it (after the offered types), and OK without a change stores it as it was.
TEST_F(MaterialEditor, aStoredTypeTheListDoesNotOfferIsStillShown)
{
    struct Case
    {
        int type;
        bool explicitEnabled;
        int count, row;
        const char* text;
    };
    const Case cases[] = {
        {CKwMaterial::Rigid, false, 8, 7, "Rigid"},
        {CKwMaterial::Concrete, false, 8, 7, "Concrete"},
        {CKwMaterial::CrushableFoam, false, 8, 7, "Crushable Foam"},
        {CKwMaterial::Rigid, true, 10, 8, "Rigid"},
        {CKwMaterial::Concrete, true, 10, 9, "Concrete"},
        {CKwMaterial::Nitinol, false, 7, 5, "Nitinol"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text + std::string(c.explicitEnabled ? " offered" : " not offered"));
        host.addin->SetExplicitEnabledInTechPreview(c.explicitEnabled);
        CKwMaterial* m = host.model->m_materials.first();
        ASSERT_TRUE(m->SetMaterialType(c.type));
        CKwMFCUIMaterial* d = open(m);
        ASSERT_NE(d, nullptr);
        QComboBox* type = typeCombo(d);
        ASSERT_EQ(type->count(), c.count);
        EXPECT_EQ(type->currentIndex(), c.row);
        EXPECT_EQ(type->currentText(), c.text);
        EXPECT_EQ(type->itemText(6), "Viscoelastic");
        // Away and back through the list: the row still means the stored type.
        type->setCurrentIndex(CKwMaterial::Isotropic);
        EXPECT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Isotropic);
        type->setCurrentIndex(c.row);
        EXPECT_EQ(d->GetEditObject()->GetMaterialType(), c.type);
        KwControl<QPushButton>(d, 1)->click();
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr)
            << host.view->GetLastBubbleText().toStdString();
        EXPECT_EQ(m->GetMaterialType(), c.type);
    }
    // A material of an offered type sees the plain list.
    host.addin->SetExplicitEnabledInTechPreview(false);
    ASSERT_TRUE(host.model->m_materials[1]->SetMaterialType(CKwMaterial::Isotropic));
    CKwMFCUIMaterial* d = open(host.model->m_materials[1]);
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(typeCombo(d)->count(), 7);
}

// Nonlinear material data and PPFA wait for a nonlinear analysis: the sample model's nonlinear
// static and transient analyses take them, every other analysis brings the advisory.
TEST_F(MaterialEditor, nonlinearDataAndPPFAAdvisoriesFollowTheSampleAnalyses)
{
    const QString on = "PPFA Calculation has been turned ON for all analyses";
    const QString off = "PPFA Calculation has been turned OFF for all analyses";
    const QString later = "PPFA data will not be applicable until a Nonlinear analysis has "
                          "been selected.";
    const QList<CKwAnalysis*>& analyses = host.model->m_analyses;
    // Linear static, nonlinear static and transient, response spectrum, explicit, fatigue,
    // optimization, modal, frequency response.
    const bool nonlinear[] = {false, true, true, false, false, false, false, false, false};
    ASSERT_EQ(analyses.size(), std::ssize(nonlinear));
    for (int i = 0; i < std::ssize(nonlinear); ++i) {
        SCOPED_TRACE(analyses.at(i)->GetName().toStdString());
        // A new material: no thermal values, so explicit analyses add no thermal advisory.
        DialogLaunchRequest r = host.Request(2);
        r.analysis = analyses.at(i);
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCUIMaterial*>(host.view->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        auto* ppfa = KwControl<QCheckBox>(d, 1394);
        d->SetAdvisoryInterval(20);
        host.view->ClearBubbleRecord();
        ppfa->click();
        EXPECT_TRUE(d->GetEditObject()->m_ppfaOn);
        // The two messages are bubbles of their own, one after the other.
        EXPECT_EQ(host.view->GetLastBubbleText(), on);
        EXPECT_EQ(d->PendingAdvisories(), nonlinear[i] ? 0 : 1);
        EXPECT_TRUE(QTest::qWaitFor([&] { return d->PendingAdvisories() == 0; }, 2000));
        EXPECT_EQ(host.view->GetBubbleCount(), nonlinear[i] ? 1 : 2);
        EXPECT_EQ(host.view->GetLastBubbleText(), nonlinear[i] ? on : later);
        host.view->ClearBubbleRecord();
        ppfa->click();
        EXPECT_EQ(host.view->GetBubbleCount(), 1);
        EXPECT_EQ(host.view->GetLastBubbleText(), off);

        host.view->ClearBubbleRecord();
        typeCombo(d)->setCurrentIndex(CKwMaterial::Nitinol);
        const bool waits = host.view->GetLastBubbleText().startsWith(
            "Nitinol material will not be applicable until a Nonlinear analysis");
        EXPECT_EQ(waits, !nonlinear[i]) << host.view->GetLastBubbleText().toStdString();
        if (nonlinear[i]) {
            EXPECT_EQ(host.view->GetBubbleCount(), 0);
        }
        KwControl<QPushButton>(d, 2)->click();
    }
}

// Fatigue data waits for a fatigue analysis: switching it on says so unless the request
// names the sample model's fatigue analysis; switching it off says nothing. Without an
// analysis in the request the editor takes the model's first one.
TEST_F(MaterialEditor, fatigueAdvisoryOnlyWhenNoFatigueAnalysisIsSelected)
{
    const QString advisory = "Material fatigue data will not be applicable until a fatigue "
                             "analysis has been selected.";
    const QList<CKwAnalysis*> analyses = host.model->m_analyses;
    ASSERT_EQ(analyses.size(), 9);
    ASSERT_EQ(analyses.at(0)->GetAnalysisTypeCode(), CKwAnalysis::LinearStatic);
    ASSERT_TRUE(analyses.at(5)->IsFatigueAnalysis());
    struct Case
    {
        int analysis;    // index in the sample model; -1 none in the request
        bool modelEmpty; // the model has no analysis at all
        bool on;
        bool shown;
    };
    const Case cases[] = {
        {0, false, true, true},   {1, false, true, true},   {4, false, true, true},
        {5, false, true, false},  {0, false, false, false}, {5, false, false, false},
        {-1, false, true, true},  {-1, true, true, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.analysis) + (c.modelEmpty ? " empty" : "") +
                     (c.on ? " on" : " off"));
        host.model->m_analyses = c.modelEmpty ? QList<CKwAnalysis*>() : analyses;
        CKwMaterial* m = host.model->m_materials.first();
        m->m_fatigueOn = !c.on;
        DialogLaunchRequest r = host.Request(2);
        r.object = m;
        r.analysis = c.analysis >= 0 ? analyses.at(c.analysis) : nullptr;
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCUIMaterial*>(host.view->GetOpenDialog());
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(d->GetAnalysis(), c.analysis >= 0 ? analyses.at(c.analysis)
                                    : c.modelEmpty ? nullptr
                                                   : analyses.first());
        host.view->ClearBubbleRecord();
        KwControl<QCheckBox>(d, 1393)->click();
        EXPECT_EQ(d->GetEditObject()->m_fatigueOn, c.on);
        EXPECT_EQ(host.view->GetBubbleCount(), c.shown ? 1 : 0);
        if (c.shown) {
            EXPECT_EQ(host.view->GetLastBubbleText(), advisory);
        }
        KwControl<QPushButton>(d, 2)->click();
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    }
    host.model->m_analyses = analyses;
}

} // namespace

// The hyperelastic constants stand in a grid, Aij at row i and column j; the model chosen
// enables the constants it is built from, and the cells keep the values' own codes.
TEST_F(MaterialEditor, hyperelasticConstantsFormAGridEnabledByTheModel)
{
    CKwMaterial* rubber = host.model->m_materials.at(3);
    ASSERT_EQ(rubber->GetMaterialType(), CKwMaterial::Hyperelastic);
    CKwMFCUIMaterial* d = open(rubber);
    ASSERT_NE(d, nullptr);
    QApplication::processEvents();
    // "Define..." always has a data function to open: the list opens on the first.
    EXPECT_EQ(KwControl<QComboBox>(d, 1399)->currentIndex(), 0);
    const auto cell = [&](int extra) {
        return KwControl<QLineEdit>(d, CKwMFCUIMaterial::kExtraIdBase + extra);
    };
    for (int e = CKwMaterial::A10; e <= CKwMaterial::A03; ++e) {
        ASSERT_NE(cell(e), nullptr) << e;
        EXPECT_TRUE(d->IsExtraShown(e)) << e;
        // Nothing squeezed: every cell has at least the height it asks for.
        EXPECT_GE(cell(e)->height(), cell(e)->minimumSizeHint().height()) << e;
    }
    // Aij sits below A(i-1)j and right of Ai(j-1).
    EXPECT_LT(cell(CKwMaterial::A01)->y(), cell(CKwMaterial::A11)->y());
    EXPECT_LT(cell(CKwMaterial::A10)->x(), cell(CKwMaterial::A11)->x());
    EXPECT_EQ(cell(CKwMaterial::A10)->x(), cell(CKwMaterial::A12)->x() - 2 *
              (cell(CKwMaterial::A11)->x() - cell(CKwMaterial::A10)->x()));
    EXPECT_EQ(cell(CKwMaterial::A10)->text(), "0.28");
    EXPECT_EQ(cell(CKwMaterial::A01)->text(), "0.07");

    auto* model = KwControl<QComboBox>(d, 1391);
    const struct { int model; std::vector<int> enabled; } cases[] = {
        {CKwMaterial::NeoHookean, {CKwMaterial::A10}},
        {CKwMaterial::MooneyRivlin, {CKwMaterial::A10, CKwMaterial::A01}},
        {CKwMaterial::Yeoh, {CKwMaterial::A10, CKwMaterial::A20, CKwMaterial::A30}},
        {CKwMaterial::Ogden, {}},
        {CKwMaterial::Polynomial, {0, 1, 2, 3, 4, 5, 6, 7, 8}},
    };
    for (const auto& c : cases) {
        model->setCurrentIndex(c.model);
        for (int e = CKwMaterial::A10; e <= CKwMaterial::A03; ++e)
            EXPECT_EQ(cell(e)->isEnabled(),
                      std::find(c.enabled.begin(), c.enabled.end(), e) != c.enabled.end())
                << "model " << c.model << " extra " << e;
    }

    // A typed constant reaches the material on OK, in internal units.
    cell(CKwMaterial::A20)->setText("0.01");
    d->OnOK();
    EXPECT_DOUBLE_EQ(rubber->GetExtra(CKwMaterial::A20), 1.0e4);
    EXPECT_EQ(rubber->m_hyperelasticModel, CKwMaterial::Polynomial);
}

// The values are typed in the table as a user types them: a click on a value opens its editor,
// and OK takes what was typed whether or not the editor was closed first.
TEST_F(MaterialEditor, valuesAreTypedInTheTableAndTakenByOk)
{
    CKwMaterial* steel = host.model->m_materials.first();
    for (const bool closeFirst : {true, false}) {
        SCOPED_TRACE(closeFirst ? "Enter, then OK" : "OK with the editor open");
        CKwMFCUIMaterial* d = open(steel);
        ASSERT_NE(d, nullptr);
        QTableView* table = d->GetValueTable();
        ASSERT_NE(table, nullptr);
        // Rows are the keys of the type under their headings; only the value column takes
        // typing, and a heading takes neither typing nor the cursor.
        const QAbstractItemModel* m = table->model();
        ASSERT_GT(m->rowCount(), 5);
        EXPECT_EQ(m->index(0, 0).data().toString(), "Stiffness");
        EXPECT_EQ(m->flags(m->index(0, 0)), Qt::NoItemFlags);
        EXPECT_EQ(table->columnSpan(0, 0), m->columnCount());
        EXPECT_EQ(m->index(1, 0).data().toString(), "EX");
        EXPECT_FALSE(m->flags(m->index(1, 1)) & Qt::ItemIsEditable);
        EXPECT_TRUE(m->flags(m->index(1, 2)) & Qt::ItemIsEditable);
        EXPECT_EQ(m->index(1, 3).data().toString(), "MPa");

        const QRect cell = table->visualRect(m->index(1, 2));
        QTest::mouseClick(table->viewport(), Qt::LeftButton, {}, cell.center());
        auto* editor = table->viewport()->findChild<QLineEdit*>();
        ASSERT_NE(editor, nullptr);
        // The editor opens with the whole value selected: typing replaces it.
        EXPECT_EQ(editor->selectedText(), QString(closeFirst ? "200000" : "205000"));
        QTest::keyClicks(editor, closeFirst ? "205000" : "190000");
        if (closeFirst)
            QTest::keyClick(editor, Qt::Key_Return);
        KwControl<QPushButton>(d, 1)->click();
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
        EXPECT_DOUBLE_EQ(steel->GetValue("EX"), closeFirst ? 2.05e11 : 1.9e11);
    }
}

// The value table shows exactly the keys of each type, each under the heading of its group
// (the orthotropic allowables under their card names), headings and labels through the
// language service; the hyperelastic volumetric constants show in the current units.
TEST_F(MaterialEditor, valueTableGroupsEveryKeyOfEveryTypeUnderItsHeading)
{
    host.addin->SetExplicitEnabledInTechPreview(true);
    CKwMFCUIMaterial* d = open(host.model->m_materials.first());
    ASSERT_NE(d, nullptr);
    const QAbstractItemModel* m = d->GetValueTable()->model();
    const struct
    {
        int key;
        const char* heading; // for the types that show the key
    } groups[] = {
        {K::EX, "Stiffness"},      {K::DENS, "Stiffness"},       {K::D1, "Stiffness"},
        {K::SIGXT, "Allowables"},  {K::YLDPNT, "Allowables"},    {K::ALPX, "Thermal Expansion"},
        {K::A4, "Thermal Expansion"}, {K::KX, "Thermal"},        {K::K23, "Thermal"},
        {K::REFT, "Thermal"},
    };
    for (int t = 0; t < typeCombo(d)->count(); ++t) {
        SCOPED_TRACE(t);
        typeCombo(d)->setCurrentIndex(t);
        std::vector<int> shown;
        QMap<int, QString> headingOf;
        QString heading;
        bool keyUnderHeading = true;
        for (int r = 0; r < m->rowCount(); ++r) {
            const QString first = m->index(r, 0).data().toString();
            if (m->flags(m->index(r, 0)) == Qt::NoItemFlags) {
                // No heading stands without a key under it.
                EXPECT_TRUE(keyUnderHeading) << "empty group " << heading.toStdString();
                heading = first;
                keyUnderHeading = false;
                continue;
            }
            EXPECT_FALSE(heading.isEmpty()) << "a key before the first heading";
            keyUnderHeading = true;
            const int key = K::IndexOf(first);
            shown.push_back(key);
            headingOf[key] = heading;
        }
        EXPECT_TRUE(keyUnderHeading);
        std::vector<int> expected = CKwMaterial::KeysForType(t);
        std::sort(expected.begin(), expected.end());
        std::sort(shown.begin(), shown.end());
        EXPECT_EQ(shown, expected);
        for (const auto& g : groups) {
            if (headingOf.contains(g.key)) {
                EXPECT_EQ(headingOf[g.key], QString(g.heading)) << K::Key(g.key).toStdString();
            }
        }
        if (t == CKwMaterial::Orthotropic2D) {
            EXPECT_EQ(headingOf.value(K::XT), "MATL8");
        }
        if (t == CKwMaterial::Orthotropic3D) {
            EXPECT_EQ(headingOf.value(K::S13), "MATL12");
        }
    }

    // D1 of the sample rubber is 1e-9 m^2/N: 1e-3 per MPa in the model's units.
    d->OnCancel();
    CKwMFCUIMaterial* rubber = open(host.model->m_materials.at(3));
    ASSERT_NE(rubber, nullptr);
    ASSERT_EQ(rubber->GetEditObject()->GetMaterialType(), CKwMaterial::Hyperelastic);
    EXPECT_EQ(rubber->KeyValueText(K::D1), "0.001");
    const QAbstractItemModel* rm = rubber->GetValueTable()->model();
    for (int r = 0; r < rm->rowCount(); ++r) {
        if (rm->index(r, 0).data().toString() == "D1") {
            EXPECT_EQ(rm->index(r, 3).data().toString(), "1/MPa");
        }
    }
    rubber->OnCancel();

    // In the pseudo-language every heading and label of the table is marked.
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    d = open(host.model->m_materials.first());
    ASSERT_NE(d, nullptr);
    const QAbstractItemModel* qm = d->GetValueTable()->model();
    for (int t = 0; t < typeCombo(d)->count(); ++t) {
        typeCombo(d)->setCurrentIndex(t);
        for (int r = 0; r < qm->rowCount(); ++r) {
            const bool isHeading = qm->flags(qm->index(r, 0)) == Qt::NoItemFlags;
            const QString text = qm->index(r, isHeading ? 0 : 1).data().toString();
            EXPECT_TRUE(text.contains(CKwXMLUtils::PseudoPrefix())) << text.toStdString();
        }
    }
    CKwXMLUtils::SetCurrentLanguage("en");
}

namespace {

// Controls outside the value table that the layout gave less height than they need.
QStringList squeezedControls(QWidget* dialog, const QWidget* table)
{
    QStringList out;
    for (QWidget* w : dialog->findChildren<QWidget*>()) {
        if (!w->isVisibleTo(dialog) || w == table || table->isAncestorOf(w))
            continue;
        if (!qobject_cast<QLineEdit*>(w) && !qobject_cast<QComboBox*>(w) &&
            !qobject_cast<QAbstractButton*>(w) && !qobject_cast<QLabel*>(w))
            continue;
        if (w->height() < w->minimumSizeHint().height())
            out << QStringLiteral("%1 %2 (%3 < %4)")
                       .arg(w->metaObject()->className(), w->objectName())
                       .arg(w->height())
                       .arg(w->minimumSizeHint().height());
    }
    return out;
}

} // namespace

// A type change keeps the height, so whatever type the editor opens with, it opens tall enough
// for every type's panels (hyperelastic group, stiffness matrix, extra values, table buttons):
// nothing is squeezed and the value table keeps at least its own minimum. The value table
// opens on its first row, and the extra values never need scrolling.
TEST_F(MaterialEditor, everyTypeFindsRoomForItsPanelsInTheHeightTheEditorOpensWith)
{
    host.addin->SetExplicitEnabledInTechPreview(true);
    int opened = -1;
    for (int start = 0; start < CKwMaterial::TypeCount; ++start) {
        CKwMaterial material(9, QStringLiteral("Sample"));
        ASSERT_TRUE(material.SetMaterialType(start));
        CKwMFCUIMaterial* d = open(&material);
        ASSERT_NE(d, nullptr);
        QApplication::processEvents();
        QTableView* table = d->GetValueTable();
        EXPECT_EQ(table->verticalScrollBar()->value(), 0) << start;
        EXPECT_EQ(table->rowAt(0), 0) << start;
        if (opened < 0)
            opened = d->height();
        EXPECT_EQ(d->height(), opened) << "opened as type " << start;
        auto* list = d->findChild<QScrollArea*>(QStringLiteral("scroll"));
        ASSERT_NE(list, nullptr);
        for (int type = 0; type < CKwMaterial::TypeCount; ++type) {
            typeCombo(d)->setCurrentIndex(type);
            QApplication::processEvents();
            ASSERT_EQ(d->GetEditObject()->GetMaterialType(), type);
            EXPECT_EQ(d->height(), opened);
            EXPECT_EQ(squeezedControls(d, table), QStringList())
                << "opened as " << start << ", now " << type;
            EXPECT_GE(table->height(), table->minimumHeight())
                << "opened as " << start << ", now " << type;
            if (list->isVisible()) {
                EXPECT_EQ(list->verticalScrollBar()->maximum(), 0) << type;
            }
        }
        KwControl<QPushButton>(d, 2)->click();
    }
}

// Units show whole in every unit system (the widest, "mm^2/(s^2 C)", is the specific heat in
// mm-N-s); the extra values line up with the table's value column, and a value labelled by its
// symbol shows the symbol once.
TEST_F(MaterialEditor, unitsShowWholeAndExtraValuesLineUpWithTheTable)
{
    host.addin->SetExplicitEnabledInTechPreview(true);
    for (KW_UOM::System system : {KW_UOM::SI, KW_UOM::MMNS, KW_UOM::IPS}) {
        SCOPED_TRACE(KW_UOM::GetSystemName(system).toStdString());
        host.units->SetSystem(system);
        CKwMaterial material(9, QStringLiteral("Sample"));
        material.SetMaterialType(CKwMaterial::Nitinol);
        CKwMFCUIMaterial* d = open(&material);
        ASSERT_NE(d, nullptr);
        QApplication::processEvents();
        QTableView* table = d->GetValueTable();
        const int margin = table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr,
                                                       table) + 1;
        const int unitColumn = table->columnWidth(3);
        for (int key = 0; key < K::Count; ++key) {
            const QString unit = K::UnitLabel(key, host.units.get());
            EXPECT_LE(table->fontMetrics().horizontalAdvance(unit) + 2 * margin, unitColumn)
                << K::Key(key).toStdString() << " " << unit.toStdString();
        }
        const int valueX =
            table->viewport()->mapTo(d, QPoint(table->columnViewportPosition(2), 0)).x();
        for (int e : CKwMaterial::ExtrasForType(CKwMaterial::Nitinol)) {
            auto* edit = KwControl<QLineEdit>(d, CKwMFCUIMaterial::kExtraIdBase + e);
            ASSERT_NE(edit, nullptr) << e;
            EXPECT_EQ(edit->mapTo(d, QPoint(0, 0)).x(), valueX) << e;
            EXPECT_EQ(edit->width(), table->columnWidth(2)) << e;
        }
        KwControl<QPushButton>(d, 2)->click();
    }
    host.units->SetSystem(KW_UOM::MMNS);
    CKwMaterial concrete(9, QStringLiteral("Sample"));
    concrete.SetMaterialType(CKwMaterial::Concrete);
    CKwMFCUIMaterial* d = open(&concrete);
    ASSERT_NE(d, nullptr);
    QStringList texts;
    for (QLabel* l : d->findChild<QScrollArea*>(QStringLiteral("scroll"))->findChildren<QLabel*>())
        if (l->isVisibleTo(d) && !l->text().isEmpty())
            texts << l->text();
    texts.sort();
    EXPECT_EQ(texts.join(QLatin1Char(' ')), "CYM: FPC: MPa MPa");
}

// Orthotropic 3D materials open the 3D orthotropic definition on the edit copy: it shows what
// was typed in the table, its OK writes the copy (the table follows), its Cancel leaves it, and
// the model waits for the editor's own OK.
TEST_F(MaterialEditor, orthotropic3DDefinitionWorksOnTheEditCopy)
{
    CKwMaterial* carbon = host.model->m_materials.at(2);
    ASSERT_EQ(carbon->GetMaterialType(), CKwMaterial::Orthotropic3D);
    CKwMFCUIMaterial* d = open(carbon);
    ASSERT_NE(d, nullptr);
    auto* button = KwControl<QPushButton>(d, 1401);
    ASSERT_NE(button, nullptr);
    EXPECT_TRUE(button->isVisible());
    EXPECT_EQ(button->text(), "3D Orthotropic Definition...");
    d->SetKeyValueText(K::E1, "190000");
    for (const bool ok : {false, true}) {
        SCOPED_TRACE(ok ? "OK" : "Cancel");
        QString shownE1;
        const kwtest::ModalRecord seen = kwtest::AnswerModals(
            [&] { button->click(); }, QMessageBox::Ok, [&](QWidget* w) {
                auto* definition = dynamic_cast<CKwOrthotropic3DDlg*>(w);
                ASSERT_NE(definition, nullptr);
                shownE1 = definition->Edit(0)->text();
                definition->Edit(1)->setText("11000"); // E2
                if (ok)
                    definition->OnOK();
            });
        EXPECT_EQ(seen.dialogTitles, QStringList{"3D Orthotropic Material Definition"});
        EXPECT_EQ(shownE1, "190000");
        EXPECT_EQ(d->KeyValueText(K::E2), ok ? "11000" : "10300");
        EXPECT_DOUBLE_EQ(carbon->GetValue("E2"), 1.03e10);
    }
    EXPECT_EQ(d->KeyValueText(K::E1), "190000");
    KwControl<QPushButton>(d, 1)->click();
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    EXPECT_DOUBLE_EQ(carbon->GetValue("E2"), 1.1e10);
    EXPECT_DOUBLE_EQ(carbon->GetValue("E1"), 1.9e11);

    // Only Orthotropic 3D has it.
    CKwMFCUIMaterial* steel = open(host.model->m_materials.first());
    ASSERT_NE(steel, nullptr);
    EXPECT_FALSE(KwControl<QPushButton>(steel, 1401)->isVisible());
    typeCombo(steel)->setCurrentIndex(CKwMaterial::Orthotropic3D);
    EXPECT_TRUE(KwControl<QPushButton>(steel, 1401)->isVisible());
}

// The hyperelastic constants that share a label tell themselves apart in their tool tips,
// which come from the language service like every caption.
TEST_F(MaterialEditor, hyperelasticConstantsTellThemselvesApartInToolTips)
{
    const auto tips = [&](CKwMFCUIMaterial* d) {
        QMap<QString, QString> out;
        const QAbstractItemModel* m = d->GetValueTable()->model();
        for (int row = 0; row < m->rowCount(); ++row)
            out.insert(m->index(row, 0).data().toString(),
                       m->index(row, 2).data(Qt::ToolTipRole).toString());
        out.insert("A10", KwControl<QLineEdit>(d, CKwMFCUIMaterial::kExtraIdBase +
                                                      CKwMaterial::A10)->toolTip());
        return out;
    };
    CKwMaterial* rubber = host.model->m_materials.at(3);
    CKwMFCUIMaterial* d = open(rubber);
    ASSERT_NE(d, nullptr);
    const QMap<QString, QString> english = tips(d);
    EXPECT_EQ(english.value("NA"), "Strain energy polynomial order: Distortional");
    EXPECT_EQ(english.value("ND"), "Strain energy polynomial order: Volumetric");
    for (const char* key : {"MU1", "MU2", "MU3"})
        EXPECT_EQ(english.value(key), "Shear moduli related to distortional deformation") << key;
    for (const char* key : {"ALPHA1", "ALPHA2", "ALPHA3"})
        EXPECT_EQ(english.value(key), "Exponent related to distortional deformation") << key;
    EXPECT_EQ(english.value("A10"), "A10");

    // An open editor follows a change of language as a host announces it.
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    CKwDlgBase::RetranslateAll();
    const QMap<QString, QString> pseudo = tips(d);
    CKwXMLUtils::SetCurrentLanguage("en");
    for (const char* key : {"NA", "ND", "MU1", "ALPHA3", "A10"})
        EXPECT_TRUE(pseudo.value(key).contains(CKwXMLUtils::PseudoPrefix()))
            << key << " " << pseudo.value(key).toStdString();
}

namespace {

// The computed stiffness of an Orthotropic 3D editor: its cells row by row (upper triangle),
// joined so that a failure shows them.
QString orthoCells(QWidget* d)
{
    QStringList out;
    for (int k = 0; k < CKwMaterial::MatrixSize; ++k) {
        auto* cell = KwControl<QLineEdit>(d, CKwMFCUIMaterial::kOrthoCellIdBase + k);
        out << (cell ? cell->text() : QStringLiteral("<none>"));
    }
    return out.join(QLatin1Char(' '));
}

// The cells the editor should show for constants, in the host's units.
QString expectedCells(const KwOrthotropicConstants& k, const KW_UOM* units)
{
    const KwOrthotropicStiffness s = KwOrthotropicStiffness::From(k);
    static const KW_UOM si(KW_UOM::SI);
    QStringList out;
    for (int r = 0; r < 6; ++r)
        for (int c = r; c < 6; ++c)
            out << (s.status == KwOrthotropicStiffness::Ok
                        ? QString::asprintf("%.5g", (units ? units : &si)
                                                        ->GetDisplayValue(s.At(r, c),
                                                                          KwUnitKind::Stress))
                        : QString());
    return out.join(QLatin1Char(' '));
}

// The same, where the cells come from constants rounded for display: each within `relative`.
void expectCellsNear(QWidget* d, const KwOrthotropicConstants& k, const KW_UOM* units,
                     double relative)
{
    const QStringList shown = orthoCells(d).split(QLatin1Char(' '));
    const QStringList exact = expectedCells(k, units).split(QLatin1Char(' '));
    ASSERT_EQ(shown.size(), exact.size());
    for (qsizetype c = 0; c < shown.size(); ++c)
        EXPECT_NEAR(shown[c].toDouble(), exact[c].toDouble(),
                    relative * std::fabs(exact[c].toDouble()))
            << c;
}

// Types a value into the table the way the user does: the cell's editor, then Return.
void typeInTable(CKwMFCUIMaterial* d, int key, const QString& text)
{
    QTableView* table = d->GetValueTable();
    auto* model = table->model();
    int row = -1;
    for (int r = 0; r < model->rowCount(); ++r)
        if (model->index(r, 0).data().toString() == K::Key(key))
            row = r;
    ASSERT_GE(row, 0) << K::Key(key).toStdString();
    const QModelIndex index = model->index(row, 2);
    // The table opens its editor as the cell becomes current.
    table->setCurrentIndex(index);
    QLineEdit* editor = nullptr;
    for (QLineEdit* e : table->viewport()->findChildren<QLineEdit*>())
        if (!e->isHidden())
            editor = e;
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
}

} // namespace

// Orthotropic 3D shows the stiffness of its constants in the matrix grid, read-only: it follows
// the constants as they are typed, defined in the 3D orthotropic definition, loaded or shown in
// other units, and nothing of it reaches the material.
TEST_F(MaterialEditor, orthotropic3DShowsTheStiffnessOfItsConstantsReadOnly)
{
    CKwMaterial* carbon = host.model->m_materials.at(2);
    ASSERT_EQ(carbon->GetMaterialType(), CKwMaterial::Orthotropic3D);
    KwOrthotropicConstants k = KwOrthotropicConstants::Of(*carbon);
    CKwMFCUIMaterial* d = open(carbon);
    ASSERT_NE(d, nullptr);
    QApplication::processEvents();
    auto* group = KwControl<QGroupBox>(d, CKwMFCUIMaterial::kOrthoMatrixId);
    ASSERT_NE(group, nullptr);
    EXPECT_TRUE(group->isVisible());
    EXPECT_EQ(group->title(), "Material Property Matrix");
    EXPECT_FALSE(KwControl<QWidget>(d, 1372)->isVisible()); // the anisotropic one
    for (int c = 0; c < CKwMaterial::MatrixSize; ++c) {
        auto* cell = KwControl<QLineEdit>(d, CKwMFCUIMaterial::kOrthoCellIdBase + c);
        ASSERT_NE(cell, nullptr);
        EXPECT_TRUE(cell->isReadOnly()) << c;
        EXPECT_TRUE(cell->isVisible()) << c;
    }
    auto* note = KwControl<QLabel>(d, CKwMFCUIMaterial::kOrthoNoteId);
    ASSERT_NE(note, nullptr);
    EXPECT_FALSE(note->isVisible());
    EXPECT_EQ(KwControl<QLabel>(d, CKwMFCUIMaterial::kOrthoHeadIdBase + 6)->text(), "MPa");
    const QStringList cells = orthoCells(d).split(QLatin1Char(' '));
    EXPECT_EQ(orthoCells(d), expectedCells(k, host.units.get()));
    EXPECT_EQ(cells[0], "1.8422e+05"); // C11 in MPa
    EXPECT_EQ(cells[3], "0");          // no coupling of stretch and shear

    // Typed in the table.
    typeInTable(d, K::E1, "200000");
    k.e1 = 2e11;
    EXPECT_EQ(d->KeyValueText(K::E1), "200000");
    EXPECT_EQ(orthoCells(d), expectedCells(k, host.units.get()));
    EXPECT_NE(orthoCells(d).section(QLatin1Char(' '), 0, 0), cells[0]);

    // Missing, not a number, or not admissible: no matrix; only the last says why.
    const struct
    {
        int key;
        const char* text;
        bool note;
    } broken[] = {{K::NUYZ, "", false}, {K::NUYZ, "half", false}, {K::NUYZ, "1.2", true},
                  {K::G2Z, "-3000", true}, {K::E3, "", false}};
    for (const auto& b : broken) {
        SCOPED_TRACE(b.text);
        const QString before = d->KeyValueText(b.key);
        d->SetKeyValueText(b.key, QString::fromLatin1(b.text));
        EXPECT_EQ(orthoCells(d).trimmed(), QString());
        EXPECT_EQ(note->isVisible(), b.note);
        d->SetKeyValueText(b.key, before);
        EXPECT_EQ(orthoCells(d), expectedCells(k, host.units.get()));
        EXPECT_FALSE(note->isVisible());
    }

    // Through the 3D orthotropic definition.
    kwtest::AnswerModals([&] { KwControl<QPushButton>(d, 1401)->click(); }, QMessageBox::Ok,
                         [&](QWidget* w) {
                             auto* definition = dynamic_cast<CKwOrthotropic3DDlg*>(w);
                             ASSERT_NE(definition, nullptr);
                             definition->Edit(1)->setText("12000"); // E2
                             definition->OnOK();
                         });
    k.e2 = 1.2e10;
    EXPECT_EQ(orthoCells(d), expectedCells(k, host.units.get()));

    // In other units, once the editor shows them.
    host.units->SetSystem(KW_UOM::IPS);
    d->LoadObjectData();
    EXPECT_EQ(KwControl<QLabel>(d, CKwMFCUIMaterial::kOrthoHeadIdBase + 6)->text(), "psi");
    // The table shows the constants in psi to five digits, and the cells are computed from
    // what it shows.
    expectCellsNear(d, k, host.units.get(), 1e-4);
    EXPECT_NE(orthoCells(d).section(QLatin1Char(' '), 0, 0),
              expectedCells(k, nullptr).section(QLatin1Char(' '), 0, 0));
    host.units->SetSystem(KW_UOM::MMNS);
    d->LoadObjectData();

    // Loaded from the database: the file's constants.
    CKwMaterial loaded;
    ASSERT_TRUE(d->LoadMaterialFromFile(
        QStringLiteral(KW_MATERIALS_PARENT_DIR
                       "/Materials/Carbon_Epoxy T300_5208, unidirectional.svrmat")));
    const KwOrthotropicConstants fromFile = KwOrthotropicConstants::Of(*d->GetEditObject());
    EXPECT_NE(fromFile.e1, k.e1);
    EXPECT_EQ(orthoCells(d), expectedCells(fromFile, host.units.get()));

    // The anisotropic matrix stays as it is: editable, and the one the material keeps.
    typeCombo(d)->setCurrentIndex(CKwMaterial::Anisotropic3D);
    EXPECT_FALSE(group->isVisible());
    auto* first = KwControl<QLineEdit>(d, CKwMFCUIMaterial::kMatrixIdBase);
    ASSERT_NE(first, nullptr);
    EXPECT_TRUE(first->isVisible());
    EXPECT_FALSE(first->isReadOnly());
    EXPECT_EQ(first->text(), QString());
    typeCombo(d)->setCurrentIndex(CKwMaterial::Orthotropic3D);
    EXPECT_TRUE(group->isVisible());
    EXPECT_EQ(orthoCells(d), expectedCells(fromFile, host.units.get()));

    // OK keeps the constants; no matrix entry is written.
    KwControl<QPushButton>(d, 1)->click();
    ASSERT_EQ(host.view->GetOpenDialog(), nullptr);
    EXPECT_EQ(carbon->GetValue("E1"), fromFile.e1);
    for (int c = 0; c < CKwMaterial::MatrixSize; ++c)
        EXPECT_TRUE(IsMissingValue(carbon->GetMatrix(c))) << c;
}

// The line that tells why the grid is empty speaks the language and fits the group.
TEST_F(MaterialEditor, theNoMatrixLineIsTranslatedAndFits)
{
    CKwMaterial material(9, QStringLiteral("Sample"));
    material.SetMaterialType(CKwMaterial::Orthotropic3D);
    for (const auto& [key, value] :
         {std::pair{"E1", 1e9}, {"E2", 1e9}, {"E3", 1e9}, {"NUXY", 0.5}, {"NUYZ", 0.5},
          {"NUXZ", 0.5}, {"G12", 1e8}, {"G1Z", 1e8}, {"G2Z", 1e8}})
        material.SetValue(QString::fromLatin1(key), value);
    const struct
    {
        const char* language;
        const char* starts;
    } cases[] = {{"en", "No matrix"}, {"de", "Keine Matrix"}, {"qps", ""}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.language);
        ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(c.language)));
        CKwMFCUIMaterial* d = open(&material);
        ASSERT_NE(d, nullptr);
        QApplication::processEvents();
        auto* note = KwControl<QLabel>(d, CKwMFCUIMaterial::kOrthoNoteId);
        ASSERT_NE(note, nullptr);
        EXPECT_TRUE(note->isVisible());
        if (*c.starts)
            EXPECT_TRUE(note->text().startsWith(QString::fromUtf8(c.starts)))
                << note->text().toStdString();
        else
            EXPECT_EQ(kwtest::UntranslatedCaptions(d), QStringList());
        EXPECT_GE(note->width(), note->sizeHint().width());
        EXPECT_LE(note->geometry().right(), note->parentWidget()->contentsRect().right());
        KwControl<QPushButton>(d, 2)->click();
    }
    CKwXMLUtils::SetCurrentLanguage("en");
}
