// The material library browser: its filters (category, name, a property range typed in display
// units), the comparison of two materials, a file that is no library, and the hand-over of the
// chosen material to the material editor's logic.
#include "CKwMaterialBrowserDlg.h"
#include "CKwMaterialCompareDlg.h"
#include "CKwMFCUIMaterial.h"
#include "CKwSNCurveDialog.h"
#include "CKwUIMaterial.h"
#include "KwMFCUIEntry.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "CFMView.h"
#include "CKwFEModel.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMaterialEditorSupport.h"
#include "KwMaterialDatabase.h"
#include "KwMaterialKeys.h"
#include "KwTestSupport.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QLineEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>

namespace {

namespace K = KwMaterialKeys;
const QString kFolder = QStringLiteral(KW_MATERIALS_PARENT_DIR "/Materials");

CKwMaterial material(const char* name, int type, const char* category, double ex, double dens)
{
    CKwMaterial m(0, QString::fromUtf8(name));
    m.SetMaterialType(type);
    m.m_category = QString::fromLatin1(category);
    m.SetValue(K::EX, ex);
    if (dens > 0)
        m.SetValue(K::DENS, dens);
    return m;
}

QList<CKwMaterial> sample()
{
    return {material("Steel A", CKwMaterial::Isotropic, "Steels", 200e9, 7850),
            material("Steel B", CKwMaterial::Isotropic, "Steels", 210e9, 7800),
            material("Aluminium 6061", CKwMaterial::Isotropic, "Light alloys", 69e9, 2700),
            material("Rubber", CKwMaterial::Hyperelastic, "", 2e6, 0),
            material("Glass/Epoxy", CKwMaterial::Orthotropic2D, "Composites", 40e9, 2000)};
}

QStringList shownNames(const KwMaterialLibraryModel& m)
{
    QStringList out;
    for (int r = 0; r < m.ShownCount(); ++r)
        out << m.At(m.IndexOfShownRow(r)).material.GetName();
    return out;
}

class MaterialBrowser : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    void TearDown() override { CKwXMLUtils::SetCurrentLanguage("en"); }
};

} // namespace

TEST_F(MaterialBrowser, filtersByTypeCategoryNameAndRangeTogether)
{
    KwMaterialLibraryModel model;
    ASSERT_EQ(model.AddMaterials("a.kwimat", sample()), 5);
    // A second file bringing a name already listed adds only what is new.
    EXPECT_EQ(model.AddMaterials("b.kwimat", {material("STEEL a", 0, "", 1, 1),
                                              material("Brass", 0, "Copper alloys", 100e9, 8500)}),
              1);
    EXPECT_EQ(model.At(5).file, "b.kwimat");
    EXPECT_EQ(model.At(5).position, 1);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    struct Case
    {
        const char* what;
        KwMaterialFilter filter;
        QStringList expected;
    };
    const Case cases[] = {
        {"nothing", {}, {"Steel A", "Steel B", "Aluminium 6061", "Rubber", "Glass/Epoxy", "Brass"}},
        {"type", {CKwMaterial::Isotropic, {}, {}, -1, nan, nan}, {"Steel A", "Steel B", "Aluminium 6061", "Brass"}},
        {"category", {CKwMaterial::Isotropic, "Steels", {}, -1, nan, nan}, {"Steel A", "Steel B"}},
        {"name any case, blanks", {-1, {}, "  sTeEl ", -1, nan, nan}, {"Steel A", "Steel B"}},
        {"name inside", {-1, {}, "/epo", -1, nan, nan}, {"Glass/Epoxy"}},
        {"range both sides", {-1, {}, {}, K::EX, 100e9, 205e9}, {"Steel A", "Brass"}},
        {"range bounds count", {-1, {}, {}, K::EX, 200e9, 210e9}, {"Steel A", "Steel B"}},
        {"range open above", {-1, {}, {}, K::DENS, 7800, nan}, {"Steel A", "Steel B", "Brass"}},
        {"missing value is out", {-1, {}, {}, K::DENS, nan, 2500}, {"Glass/Epoxy"}},
        {"range without bounds", {-1, {}, {}, K::DENS, nan, nan},
         {"Steel A", "Steel B", "Aluminium 6061", "Rubber", "Glass/Epoxy", "Brass"}},
        {"all together", {CKwMaterial::Isotropic, "Steels", "b", K::EX, 205e9, nan}, {"Steel B"}},
        {"category of another type", {CKwMaterial::Hyperelastic, "Steels", {}, -1, nan, nan}, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        model.SetFilter(c.filter);
        EXPECT_EQ(shownNames(model), c.expected);
        EXPECT_EQ(model.rowCount(), c.expected.size());
    }
    // Categories per type, in code order; a material without one counts under its type only.
    const auto categories = model.Categories();
    ASSERT_EQ(categories.size(), 3u);
    EXPECT_EQ(categories[0].first, CKwMaterial::Isotropic);
    EXPECT_EQ(categories[0].second, (QStringList{"Steels", "Light alloys", "Copper alloys"}));
    EXPECT_EQ(categories[2].first, CKwMaterial::Hyperelastic);
    EXPECT_TRUE(categories[2].second.isEmpty());
}

TEST_F(MaterialBrowser, theShippedLibraryIsListedOnceAndTheTreeNarrowsIt)
{
    CKwMaterialBrowserDlg d;
    ASSERT_TRUE(d.AddFolder(kFolder));
    d.Create();
    // The library, the single files and the CAD library bring the same 42 materials.
    EXPECT_EQ(d.GetModel()->TotalCount(), 42);
    EXPECT_EQ(d.ShownCount(), 42);
    ASSERT_TRUE(d.SelectCategory(CKwMaterial::Isotropic, "Stainless steels"));
    EXPECT_EQ(d.ShownCount(), 6);
    ASSERT_TRUE(d.SelectCategory(CKwMaterial::Hyperelastic));
    EXPECT_EQ(shownNames(*d.GetModel()), QStringList{"Natural Rubber, 50 Shore A"});
    EXPECT_FALSE(d.SelectCategory(CKwMaterial::Hyperelastic, "Steels"));
    ASSERT_TRUE(d.SelectCategory(-1));
    d.SetSearchText("aluminium");
    EXPECT_EQ(d.ShownCount(), 7);
    EXPECT_EQ(KwGetControlText(&d, CKwMaterialBrowserDlg::IDC_COUNT), "7 of 42 materials");
    // The chosen row follows the filter: the first row left when the choice was hidden.
    EXPECT_EQ(d.GetChosenMaterial()->material.GetName(), "Aluminium 1100-O");
    ASSERT_TRUE(d.ChooseShownRow(3));
    d.SetSearchText("6061");
    EXPECT_EQ(d.GetChosenMaterial()->material.GetName(), "Aluminium 6061-T6");
    d.SetSearchText("no such material");
    EXPECT_EQ(d.GetChosen(), -1);
    EXPECT_FALSE(KwControl<QPushButton>(&d, 1)->isEnabled());
}

TEST_F(MaterialBrowser, theRangeIsTypedInTheUnitsShownAndBadInputChangesNothing)
{
    KW_UOM mm(KW_UOM::MMNS); // stresses in MPa, densities in t/mm^3
    CKwMaterialBrowserDlg d(&mm);
    ASSERT_TRUE(d.AddFolder(kFolder));
    d.Create();
    EXPECT_EQ(KwGetControlText(&d, CKwMaterialBrowserDlg::IDC_MINIMUM_UNIT), mm.GetUnits(K::UnitKind(K::EX)));
    // Steels and irons near 200 GPa: 190000 to 215000 MPa.
    ASSERT_TRUE(d.SetRange(K::EX, "190000", "215000"));
    const QStringList stiff = shownNames(*d.GetModel());
    EXPECT_TRUE(stiff.contains("ASTM A36 Steel"));
    EXPECT_FALSE(stiff.contains("Aluminium 6061-T6"));
    EXPECT_FALSE(stiff.contains("PTFE"));
    const int stiffCount = d.ShownCount();
    // The value column shows the range's property in the same units.
    const QModelIndex first = d.GetModel()->index(0, KwMaterialLibraryModel::ColValue);
    const double shown = first.data().toString().toDouble();
    EXPECT_GE(shown, 190000);
    EXPECT_LE(shown, 215000);
    EXPECT_TRUE(d.GetModel()->headerData(KwMaterialLibraryModel::ColValue, Qt::Horizontal, Qt::DisplayRole)
                    .toString()
                    .contains(mm.GetUnits(K::UnitKind(K::EX))));
    struct Bad
    {
        const char* minimum;
        const char* maximum;
        const char* message;
    };
    const Bad bad[] = {{"abc", "", "Minimum"},
                       {"", "2e5x", "Maximum"},
                       {"300000", "100000", "The minimum must not lie above the maximum."}};
    for (const Bad& b : bad) {
        SCOPED_TRACE(b.minimum);
        EXPECT_FALSE(d.SetRange(K::EX, b.minimum, b.maximum));
        EXPECT_TRUE(d.GetLastMessage().contains(QString::fromLatin1(b.message)))
            << d.GetLastMessage().toStdString();
        EXPECT_EQ(d.ShownCount(), stiffCount);
    }
    // One side open: light materials below 3000 kg/m^3 in t/mm^3.
    ASSERT_TRUE(d.SetRange(K::DENS, "", "3e-9"));
    const QStringList light = shownNames(*d.GetModel());
    EXPECT_TRUE(light.contains("Aluminium 6061-T6"));
    EXPECT_TRUE(light.contains("PTFE"));
    EXPECT_FALSE(light.contains("ASTM A36 Steel"));
}

TEST_F(MaterialBrowser, compareListsBothValuesInUnitsAndMarksTheDifferences)
{
    CKwMaterial a = material("Steel A", CKwMaterial::Isotropic, "Steels", 200e9, 7850);
    CKwMaterial b = material("Steel B", CKwMaterial::Isotropic, "Steels", 210e9, 7850);
    a.SetValue(K::NUXY, 0.29);
    b.SetValue(K::NUXY, 0.29 * (1 + 1e-15)); // read back from other units: the same
    b.SetValue(K::SIGXT, 400e6);             // only the second has it
    KW_UOM mm(KW_UOM::MMNS);
    CKwMaterialCompareDlg d(a, b, &mm);
    d.Create();
    KwMaterialCompareModel* m = d.GetModel();
    struct Row
    {
        QString property;
        QString first, second, unit;
        bool differs;
    };
    QList<Row> rows;
    for (int r = 0; r < m->rowCount(); ++r) {
        auto cell = [&](int c) { return m->index(r, c).data().toString(); };
        rows.append({cell(0), cell(1), cell(2), cell(3), m->RowAt(r).differs});
    }
    ASSERT_EQ(rows.size(), 6); // type, category, EX, NUXY, DENS, SIGXT
    EXPECT_FALSE(rows[0].differs);
    EXPECT_EQ(rows[2].property, "Elastic Modulus (EX)");
    EXPECT_EQ(rows[2].first, "200000");
    EXPECT_EQ(rows[2].second, "210000");
    EXPECT_EQ(rows[2].unit, mm.GetUnits(K::UnitKind(K::EX)));
    EXPECT_TRUE(rows[2].differs);
    EXPECT_FALSE(rows[3].differs);
    EXPECT_FALSE(rows[4].differs);
    EXPECT_EQ(rows[5].first, "");
    EXPECT_EQ(rows[5].second, "400");
    EXPECT_TRUE(rows[5].differs);
    EXPECT_TRUE(m->index(2, 1).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_FALSE(m->index(3, 1).data(Qt::FontRole).value<QFont>().bold());
    EXPECT_EQ(m->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "Steel A");
    EXPECT_EQ(KwGetControlText(&d, CKwMaterialCompareDlg::IDC_SUMMARY), "2 values differ (marked)");
    KwControl<QCheckBox>(&d, CKwMaterialCompareDlg::IDC_DIFFERENCES_ONLY)->click();
    EXPECT_EQ(m->rowCount(), 2);

    // From the browser: Compare needs exactly two selected materials.
    CKwMaterialBrowserDlg browser;
    browser.GetModel()->AddMaterials("x.kwimat", {a, b});
    browser.Create();
    ASSERT_TRUE(browser.ChooseShownRow(0));
    EXPECT_FALSE(KwControl<QPushButton>(&browser, CKwMaterialBrowserDlg::IDC_COMPARE)->isEnabled());
    EXPECT_FALSE(browser.Compare());
    ASSERT_TRUE(browser.SelectShownRows(0, 1));
    EXPECT_TRUE(KwControl<QPushButton>(&browser, CKwMaterialBrowserDlg::IDC_COMPARE)->isEnabled());
    const auto rec = kwtest::AnswerModals([&] { EXPECT_TRUE(browser.Compare()); });
    EXPECT_EQ(rec.dialogTitles, QStringList{"Compare Materials"});
}

TEST_F(MaterialBrowser, aFileThatIsNoLibraryIsRefusedWithItsMessage)
{
    QTemporaryDir dir;
    const QString notes = QDir(dir.path()).filePath("notes.kwimat");
    QFile f(notes);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write("these are no materials");
    f.close();
    CKwMaterialBrowserDlg d;
    ASSERT_TRUE(d.AddFolder(kFolder));
    d.Create();
    d.SetFileChooser([&] { return notes; });
    const auto rec = kwtest::AnswerModals([&] { d.OpenLibrary(); });
    ASSERT_EQ(rec.boxTexts.size(), 1);
    EXPECT_TRUE(rec.boxTexts[0].startsWith("'notes.kwimat' is not a material library: "))
        << rec.boxTexts[0].toStdString();
    EXPECT_EQ(d.GetModel()->TotalCount(), 42);
    // A library file is added with its materials.
    QFile lib(QDir(dir.path()).filePath("mine.kwimat"));
    ASSERT_TRUE(lib.open(QIODevice::WriteOnly));
    CKwMaterial own = material("House Steel", CKwMaterial::Isotropic, "House", 205e9, 7900);
    own.SetValue(K::NUXY, 0.3);
    lib.write(KwMaterialDatabase::WriteKwimat({own}));
    lib.close();
    d.SetFileChooser([&] { return lib.fileName(); });
    EXPECT_EQ(kwtest::AnswerModals([&] { d.OpenLibrary(); }).count(), 0);
    EXPECT_EQ(d.GetModel()->TotalCount(), 43);
    EXPECT_TRUE(d.SelectCategory(CKwMaterial::Isotropic, "House"));
    EXPECT_EQ(d.ShownCount(), 1);
}

TEST_F(MaterialBrowser, okHandsTheChosenMaterialToTheEditorsLogicCancelHandsNone)
{
    kwtest::Host host;
    qputenv("KW_DATA_DIR", KW_MATERIALS_PARENT_DIR);
    CKwUIMaterial logic;
    logic.OnCreate(host.view.get(), host.model->m_materials.first(), nullptr);
    const int id = logic.GetEditObject()->GetID();
    const QString before = logic.GetEditObject()->GetName();
    bool loaded = true;
    kwtest::AnswerModals([&] { loaded = KwBrowseMaterialLibrary(nullptr, &logic, host.units.get()); });
    EXPECT_FALSE(loaded);
    EXPECT_EQ(logic.GetEditObject()->GetName(), before);
    const auto rec = kwtest::AnswerModals(
        [&] { loaded = KwBrowseMaterialLibrary(nullptr, &logic, host.units.get()); },
        QMessageBox::Ok, [](QWidget* w) {
            auto* b = qobject_cast<CKwMaterialBrowserDlg*>(w);
            ASSERT_NE(b, nullptr);
            b->SetSearchText("rubber");
            KwControl<QPushButton>(b, 1)->click();
        });
    qunsetenv("KW_DATA_DIR");
    EXPECT_EQ(rec.dialogTitles, QStringList{"Material Library"});
    EXPECT_TRUE(loaded);
    EXPECT_EQ(logic.GetEditObject()->GetName(), "Natural Rubber, 50 Shore A");
    EXPECT_EQ(logic.GetEditObject()->GetMaterialType(), CKwMaterial::Hyperelastic);
    EXPECT_EQ(logic.GetEditObject()->GetID(), id);
}

// The material editor's "S-N Curve..." opens the curve on its edit copy; the model waits for
// the editor's OK.
TEST_F(MaterialBrowser, theMaterialEditorOpensTheSNCurveOfItsEditCopy)
{
    kwtest::Host host;
    CKwMaterial* steel = host.model->m_materials.first();
    ASSERT_FALSE(steel->m_snCurve.IsEmpty());
    DialogLaunchRequest r = host.Request(2);
    r.object = steel;
    LaunchDialog(&r);
    auto* d = dynamic_cast<CKwMFCUIMaterial*>(host.view->GetOpenDialog());
    ASSERT_NE(d, nullptr);
    const auto rec = kwtest::AnswerModals([&] { KwControl<QPushButton>(d, 1402)->click(); },
                                          QMessageBox::Ok, [](QWidget* w) {
                                              auto* sn = qobject_cast<CKwSNCurveDialog*>(w);
                                              ASSERT_NE(sn, nullptr);
                                              KwControl<QLineEdit>(sn, CKwSNCurveDialog::IDC_SOURCE)
                                                  ->setText("edited");
                                              sn->OnOK();
                                          });
    EXPECT_EQ(rec.dialogTitles, QStringList{"S-N Curve - 'Steel AISI 1020'"});
    EXPECT_EQ(d->GetEditObject()->m_snSource, "edited");
    EXPECT_NE(steel->m_snSource, "edited");
    d->OnOK();
    EXPECT_EQ(host.model->m_materials.first()->m_snSource, "edited");
}

TEST_F(MaterialBrowser, everyCaptionIsTranslated)
{
    CKwMaterialBrowserDlg d;
    d.AddFolder(kFolder);
    d.Create();
    ASSERT_TRUE(d.SelectShownRows(0, 1));
    CKwMaterialCompareDlg c(d.GetModel()->At(0).material, d.GetModel()->At(1).material, nullptr);
    c.Create();
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("de"));
    d.SetTextToCurrentLang();
    c.SetTextToCurrentLang();
    EXPECT_EQ(d.windowTitle(), "Werkstoffbibliothek");
    EXPECT_EQ(c.windowTitle(), "Werkstoffe vergleichen");
    EXPECT_EQ(d.GetModel()->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "Typ");
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    for (CKwMFCDialog* w : {static_cast<CKwMFCDialog*>(&d), static_cast<CKwMFCDialog*>(&c)}) {
        w->show();
        w->SetTextToCurrentLang();
        const QStringList bad = kwtest::UntranslatedCaptions(w);
        EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
    }
}
