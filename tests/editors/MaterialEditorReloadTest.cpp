// The material editor after its edit copy is replaced or its type changes: a material read
// from a file shows everything it brings (type, rows, width, switches), the chooser of a
// library's materials, values of rows the type hides, and the advisories of a type change.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwDlgBase.h"
#include "CKwFEModel.h"
#include "CKwMFCUIMaterial.h"
#include "CKwMaterial.h"
#include "CKwMaterialBrowserDlg.h"
#include "CKwXMLUtils.h"
#include "KwControls.h"
#include "KwMaterialEditorSupport.h"
#include "KwMaterialKeys.h"
#include "KwTestSupport.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <gtest/gtest.h>

namespace K = KwMaterialKeys;

namespace {

const QString kMaterials = QStringLiteral(KW_MATERIALS_PARENT_DIR "/Materials");

class MaterialReload : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    CKwMFCUIMaterial* open(CKwMaterial* material, CKwAnalysis* analysis = nullptr)
    {
        DialogLaunchRequest r = host.Request(2);
        r.object = material;
        r.analysis = analysis;
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCUIMaterial*>(host.view->GetOpenDialog());
        EXPECT_NE(d, nullptr);
        return d;
    }
    // Loads `file` of the shipped database through "Load from Library...", choosing the
    // material named `name` when the file holds several.
    bool load(CKwMFCUIMaterial* d, const QString& file, const QString& name = {},
              int* offered = nullptr)
    {
        const auto chooser = [file](const QString& folder, const QString&, const QString&) {
            return QDir(folder).filePath(file);
        };
        const auto picker = [&](const QList<KwMaterialEntry>& entries) {
            if (offered)
                *offered = int(entries.size());
            for (int i = 0; i < entries.size(); ++i)
                if (entries[i].name == name)
                    return i;
            return -1;
        };
        return KwLoadMaterialFromDB(d, d, false, chooser, picker);
    }
    static QComboBox* typeCombo(QWidget* d) { return KwControl<QComboBox>(d, 1390); }
    static int scaled(QWidget* d, int px)
    {
        return qRound(px * d->screen()->logicalDotsPerInch() / 96.0);
    }
    kwtest::Host host;
};

// A material of another type read into a new material of an open editor: the editor shows
// its type, rows, width and switches, OK stores what is shown, and the list's types still
// work. Concrete is not offered without explicit analyses: it follows the offered types.
TEST_F(MaterialReload, aMaterialReadFromAFileShowsEverythingItBrings)
{
    qputenv("KW_DATA_DIR", KW_MATERIALS_PARENT_DIR);
    struct Case
    {
        const char* file;
        int type;
        const char* typeText;
        int shownKey;   // a key of the type's rows
        int hiddenKey;  // a key of the isotropic rows the type does not show
        int shownExtra; // -1: none
        int width;
        int rows;
    };
    const Case cases[] = {
        {"Natural Rubber, 50 Shore A.svrmat", CKwMaterial::Hyperelastic, "Hyperelastic", K::D1,
         K::EX, CKwMaterial::A10, 692, 7},
        {"Nitinol, superelastic.svrmat", CKwMaterial::Nitinol, "Nitinol", K::EX, K::SIGXT,
         CKwMaterial::EM, 667, 7},
        {"Carbon_Epoxy T300_5208, unidirectional.svrmat", CKwMaterial::Orthotropic3D,
         "Orthotropic 3D", K::E3, K::EX, -1, 667, 7},
        {"Concrete C30_37.svrmat", CKwMaterial::Concrete, "Concrete", K::EX, K::SIGXT,
         CKwMaterial::FPC, 667, 8},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.file);
        CKwMFCUIMaterial* d = open(nullptr);
        ASSERT_NE(d, nullptr);
        ASSERT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Isotropic);
        // Switches the file does not set: they must show the file's state afterwards.
        KwControl<QComboBox>(d, 1392)->setCurrentIndex(CKwMaterial::VonMisesStress);
        KwControl<QCheckBox>(d, 1393)->click();
        KwControl<QCheckBox>(d, 1394)->click();
        const QRect before = d->geometry();

        ASSERT_TRUE(load(d, QString::fromLatin1(c.file)));
        const CKwMaterial* edit = d->GetEditObject();
        EXPECT_EQ(edit->GetMaterialType(), c.type);
        EXPECT_EQ(typeCombo(d)->count(), c.rows);
        EXPECT_EQ(typeCombo(d)->currentText(), c.typeText);
        EXPECT_TRUE(d->IsKeyShown(c.shownKey));
        EXPECT_FALSE(d->IsKeyShown(c.hiddenKey));
        if (c.shownExtra >= 0) {
            EXPECT_TRUE(d->IsExtraShown(c.shownExtra));
        }
        EXPECT_EQ(d->geometry().width(), scaled(d, c.width));
        EXPECT_EQ(d->geometry().height(), before.height());
        EXPECT_EQ(KwControl<QComboBox>(d, 1392)->currentIndex(), edit->m_failureTheory);
        EXPECT_EQ(KwControl<QCheckBox>(d, 1393)->isChecked(), edit->m_fatigueOn);
        EXPECT_EQ(KwControl<QCheckBox>(d, 1394)->isChecked(), edit->m_ppfaOn);
        EXPECT_EQ(edit->m_failureTheory, CKwMaterial::FailureNone);
        const QString shown = d->KeyValueText(c.shownKey);
        EXPECT_EQ(shown, K::FormatValue(edit->GetValue(c.shownKey), K::UnitKind(c.shownKey),
                                        host.units.get()));
        EXPECT_FALSE(shown.isEmpty());

        // The shown type is a real choice: away to Isotropic and back.
        typeCombo(d)->setCurrentIndex(CKwMaterial::Isotropic);
        EXPECT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Isotropic);
        EXPECT_TRUE(d->IsKeyShown(K::EX));
        typeCombo(d)->setCurrentIndex(typeCombo(d)->findText(c.typeText));
        EXPECT_EQ(d->GetEditObject()->GetMaterialType(), c.type);

        const int before_count = int(host.model->m_materials.size());
        KwControl<QPushButton>(d, 1)->click();
        ASSERT_EQ(host.view->GetOpenDialog(), nullptr)
            << host.view->GetLastBubbleText().toStdString();
        ASSERT_EQ(int(host.model->m_materials.size()), before_count + 1);
        const CKwMaterial* saved = host.model->m_materials.last();
        EXPECT_EQ(saved->GetMaterialType(), c.type);
        EXPECT_EQ(saved->m_failureTheory, CKwMaterial::FailureNone);
        EXPECT_FALSE(saved->m_fatigueOn);
        EXPECT_EQ(K::FormatValue(saved->GetValue(c.shownKey), K::UnitKind(c.shownKey),
                                 host.units.get()),
                  shown);
    }
    qunsetenv("KW_DATA_DIR");
}

// A library lets the user choose among its materials by name and type; declining leaves the
// edit copy as it was; a file of one material is read without asking.
TEST_F(MaterialReload, aLibraryAsksWhichMaterialAndCancelChangesNothing)
{
    qputenv("KW_DATA_DIR", KW_MATERIALS_PARENT_DIR);
    CKwMFCUIMaterial* d = open(host.model->m_materials.first());
    ASSERT_NE(d, nullptr);
    const QString name = d->GetEditObject()->GetName();
    int offered = 0;
    EXPECT_FALSE(load(d, "Engineering materials.kwimat", "no such material", &offered));
    EXPECT_EQ(offered, 42); // every material of the shipped database
    EXPECT_EQ(d->GetEditObject()->GetName(), name);
    EXPECT_EQ(typeCombo(d)->currentText(), "Isotropic");

    ASSERT_TRUE(load(d, "Engineering materials.kwimat", "Natural Rubber, 50 Shore A"));
    EXPECT_EQ(d->GetEditObject()->GetName(), "Natural Rubber, 50 Shore A");
    EXPECT_EQ(typeCombo(d)->currentText(), "Hyperelastic");
    EXPECT_EQ(d->GetEditObject()->GetID(), host.model->m_materials.first()->GetID());

    offered = 0;
    ASSERT_TRUE(load(d, "PTFE.svrmat", {}, &offered));
    EXPECT_EQ(offered, 0);
    EXPECT_EQ(d->GetEditObject()->GetName(), "PTFE");

    // Without a picker the library browser opens on the file: the search narrows it, OK takes
    // the chosen row.
    const auto chooser = [](const QString& folder, const QString&, const QString&) {
        return QDir(folder).filePath("Engineering materials.kwimat");
    };
    bool loaded = false;
    const auto rec = kwtest::AnswerModals(
        [&] { loaded = KwLoadMaterialFromDB(d, d, false, chooser); }, QMessageBox::Ok,
        [](QWidget* w) {
            auto* c = qobject_cast<CKwMaterialBrowserDlg*>(w);
            ASSERT_NE(c, nullptr);
            EXPECT_EQ(c->GetModel()->TotalCount(), 42);
            c->SetSearchText("nitinol");
            KwControl<QPushButton>(c, 1)->click();
        });
    EXPECT_EQ(rec.dialogTitles, QStringList{"Material Library"});
    EXPECT_TRUE(loaded);
    EXPECT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Nitinol);
    // The browser rejected (Cancel, Escape) loads nothing.
    const auto declined = kwtest::AnswerModals(
        [&] { loaded = KwLoadMaterialFromDB(d, d, false, chooser); });
    EXPECT_EQ(declined.dialogTitles.size(), 1);
    EXPECT_FALSE(loaded);
    EXPECT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Nitinol);
    qunsetenv("KW_DATA_DIR");
}

// Only the rows the type shows are read on OK: a text that is no number in a row the type
// hides neither blocks the OK nor reaches the model, which keeps its value there.
TEST_F(MaterialReload, aHiddenRowNeitherBlocksOkNorReachesTheModel)
{
    CKwMaterial* steel = host.model->m_materials.first();
    const double stored = steel->GetValue(K::SIGXT);
    CKwMFCUIMaterial* d = open(steel);
    ASSERT_NE(d, nullptr);
    d->SetKeyValueText(K::SIGXT, "abc");
    typeCombo(d)->setCurrentIndex(CKwMaterial::Orthotropic2D);
    EXPECT_FALSE(d->IsKeyShown(K::SIGXT));
    for (const auto& [key, text] : {std::pair{int(K::E1), "140000"}, {int(K::E2), "10000"},
                                    {int(K::NUXY), "0.3"}, {int(K::G12), "5000"}})
        d->SetKeyValueText(key, text);
    KwControl<QPushButton>(d, 1)->click();
    ASSERT_EQ(host.view->GetOpenDialog(), nullptr) << host.view->GetLastBubbleText().toStdString();
    EXPECT_EQ(steel->GetMaterialType(), CKwMaterial::Orthotropic2D);
    EXPECT_DOUBLE_EQ(steel->GetValue(K::SIGXT), stored);
    EXPECT_DOUBLE_EQ(steel->GetValue(K::E1), 1.4e11);

    // Shown again, the row is read again: the bad text blocks the OK with its own label.
    CKwMFCUIMaterial* again = open(steel);
    ASSERT_NE(again, nullptr);
    again->SetKeyValueText(K::XT, "abc");
    KwControl<QPushButton>(again, 1)->click();
    EXPECT_NE(host.view->GetOpenDialog(), nullptr);
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("Longitudinal Tensile Failure Stress"))
        << host.view->GetLastBubbleText().toStdString();
}

// Choosing the stored type again is a real selection change of the list (it showed another
// row without telling anyone): nothing happens, no advisory, no width change.
TEST_F(MaterialReload, reselectingTheStoredTypeChangesNothing)
{
    CKwMaterial* rubber = host.model->m_materials.at(3);
    ASSERT_EQ(rubber->GetMaterialType(), CKwMaterial::Hyperelastic);
    CKwMFCUIMaterial* d = open(rubber, host.model->m_analyses.first());
    ASSERT_NE(d, nullptr);
    QComboBox* type = typeCombo(d);
    const QRect before = d->geometry();
    {
        const QSignalBlocker quiet(type);
        type->setCurrentIndex(CKwMaterial::Isotropic);
    }
    const int bubbles = host.view->GetBubbleCount();
    QSignalSpy changed(type, &QComboBox::currentIndexChanged);
    type->setCurrentIndex(CKwMaterial::Hyperelastic);
    ASSERT_EQ(changed.count(), 1) << "the list must really report the choice";
    EXPECT_EQ(host.view->GetBubbleCount(), bubbles);
    EXPECT_EQ(d->PendingAdvisories(), 0);
    EXPECT_EQ(d->geometry(), before);
    EXPECT_EQ(d->GetEditObject()->GetMaterialType(), CKwMaterial::Hyperelastic);
}

// The advisories of a type change, each its own bubble in turn: the type's own first, the
// thermal one only for thermal values typed or stored in rows the new type shows, and only in
// an explicit analysis.
TEST_F(MaterialReload, typeChangeAdvisoriesComeOneAfterAnother)
{
    const QString nitinolLater = "Nitinol material will not be applicable until a Nonlinear "
                                 "analysis has been selected.";
    const QString thermal = "Thermal material properties not supported in Explicit analyses.";
    CKwAnalysis* linear = host.model->m_analyses.at(0);
    CKwAnalysis* explicitDyn = host.model->m_analyses.at(4);
    ASSERT_TRUE(explicitDyn->IsExplicitAnalysis());
    struct Case
    {
        const char* name;
        CKwAnalysis* analysis;
        int typedKey; // -1: nothing typed
        int to;
        QStringList expected;
    };
    const Case cases[] = {
        {"typed conductivity, explicit", explicitDyn, K::KX, CKwMaterial::Nitinol,
         {nitinolLater, thermal}},
        {"nothing thermal, explicit", explicitDyn, -1, CKwMaterial::Nitinol, {nitinolLater}},
        {"typed conductivity, linear", linear, K::KX, CKwMaterial::Nitinol, {nitinolLater}},
        {"typed specific heat, explicit", explicitDyn, K::C, CKwMaterial::Orthotropic2D,
         {thermal}},
        {"conductivity the new type hides", explicitDyn, K::KX, CKwMaterial::Orthotropic2D, {}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CKwMFCUIMaterial* d = open(nullptr, c.analysis);
        ASSERT_NE(d, nullptr);
        d->SetAdvisoryInterval(60);
        if (c.typedKey >= 0)
            d->SetKeyValueText(c.typedKey, "50");
        host.view->ClearBubbleRecord();
        typeCombo(d)->setCurrentIndex(c.to);
        for (int i = 0; i < c.expected.size(); ++i) {
            // One bubble at a time, the next only when its turn comes.
            EXPECT_EQ(host.view->GetBubbleCount(), i + 1);
            EXPECT_EQ(host.view->GetLastBubbleText(), c.expected[i]);
            EXPECT_EQ(d->PendingAdvisories(), c.expected.size() - i - 1);
            if (i + 1 < c.expected.size()) {
                EXPECT_TRUE(QTest::qWaitFor([&] { return host.view->GetBubbleCount() > i + 1; },
                                            2000));
            }
        }
        QTest::qWait(100);
        EXPECT_EQ(host.view->GetBubbleCount(), c.expected.size());
        KwControl<QPushButton>(d, 2)->click();
    }
}

} // namespace
