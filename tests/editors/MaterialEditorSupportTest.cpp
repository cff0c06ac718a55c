// The material editor's own rules apart from its window: type list, advisories and loading
// from the database folder into the logic.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "CKwUIMaterial.h"
#include "KwMaterialDatabase.h"
#include "KwMaterialEditorSupport.h"
#include "KwRegistry.h"
#include "KwTestSupport.h"

#include <QDir>
#include <gtest/gtest.h>

namespace {

TEST(MaterialEditorSupport, typeListEndsWithViscoelasticUnlessExplicitIsEnabled)
{
    const auto texts = [](const QList<KwMaterialTypeItem>& items) {
        QStringList t;
        for (const auto& i : items)
            t << i.text;
        return t;
    };
    const auto seven = KwMaterialTypeItems(false);
    ASSERT_EQ(seven.size(), 7);
    EXPECT_EQ(texts(seven).last(), "Viscoelastic");
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(seven[i].type, i);
    EXPECT_EQ(texts(KwMaterialTypeItems(true)).last(), "Crushable Foam");
    const auto all = KwMaterialTypeItems(false, true, true);
    EXPECT_EQ(texts(all).mid(7), (QStringList{"Rigid", "Concrete"}));
    EXPECT_EQ(all[7].type, CKwMaterial::Rigid);
    EXPECT_EQ(KwMaterialDialogWidth(CKwMaterial::Hyperelastic), 692);
    EXPECT_EQ(KwMaterialDialogWidth(CKwMaterial::Nitinol), 667);
}

TEST(MaterialEditorSupport, advisoriesFollowTheAnalysis)
{
    CKwAnalysis linear(1, "Static", CKwAnalysis::LinearStatic);
    CKwAnalysis nonlinear(2, "NL", CKwAnalysis::NonlinearTransient);
    CKwAnalysis code5(3, "Five", 5), code18(4, "Eighteen", 18), code19(5, "Nineteen", 19);
    CKwAnalysis expl(6, "Explicit", CKwAnalysis::ExplicitDynamics);
    CKwMaterial thermal;
    thermal.SetValue("KX", 50.0);
    struct Case
    {
        int type;
        const CKwAnalysis* analysis;
        const CKwMaterial* material;
        QStringList expected;
    };
    const QString later = " material will not be applicable until a Nonlinear analysis has "
                          "been selected.";
    const Case cases[] = {
        {CKwMaterial::Isotropic, &linear, &thermal, {}},
        {CKwMaterial::Hyperelastic, &linear, nullptr, {"Hyperelastic" + later}},
        {CKwMaterial::Viscoelastic, &code19, nullptr, {"Viscoelastic" + later}},
        {CKwMaterial::Nitinol, &nonlinear, nullptr, {}},
        {CKwMaterial::Nitinol, &code5, nullptr, {}},
        {CKwMaterial::Nitinol, &code18, nullptr, {}},
        {CKwMaterial::Nitinol, nullptr, nullptr, {}},
        {CKwMaterial::Orthotropic3D, &expl, nullptr,
         {"Orthotropic 3D materials not supported in Explicit analyses."}},
        {CKwMaterial::CrushableFoam, &linear, nullptr,
         {"Crushable Foam Material data will not be applicable until an Explicit analysis has "
          "been selected."}},
        {CKwMaterial::CrushableFoam, &expl, nullptr, {}},
        {CKwMaterial::Rigid, nullptr, nullptr,
         {"Rigid Material data will not be applicable until a Explicit analysis has been "
          "selected."}},
        {CKwMaterial::Isotropic, &expl, &thermal,
         {"Thermal material properties not supported in Explicit analyses."}},
    };
    for (const Case& c : cases)
        EXPECT_EQ(KwMaterialTypeAdvisories(c.type, c.analysis, c.material), c.expected)
            << c.type << " " << (c.analysis ? c.analysis->GetAnalysisTypeCode() : -1);
}

TEST(MaterialEditorSupport, loadingFromTheDatabaseUsesAndRemembersTheFolder)
{
    kwtest::IsolateSettings();
    kwtest::Host host;
    qputenv("KW_DATA_DIR", KW_MATERIALS_PARENT_DIR);
    CKwUIMaterial logic;
    logic.OnCreate(host.view.get(), host.model->m_materials.first(), nullptr);
    QString seenFolder, seenFilter, seenExt;
    const auto pick = [&](const QString& file) {
        return [&, file](const QString& folder, const QString& filter, const QString& ext) {
            seenFolder = folder;
            seenFilter = filter;
            seenExt = ext;
            return file.isEmpty() ? QString() : QDir(folder).filePath(file);
        };
    };
    EXPECT_FALSE(KwLoadMaterialFromDB(nullptr, &logic, true, pick(QString())));
    EXPECT_EQ(QDir::fromNativeSeparators(seenFolder),
              QStringLiteral(KW_MATERIALS_PARENT_DIR "/Materials"));
    EXPECT_EQ(seenExt, "svrmat");
    EXPECT_FALSE(seenFilter.contains("sldmat"));
    EXPECT_EQ(logic.GetEditObject()->GetName(), "Steel AISI 1020");

    ASSERT_TRUE(KwLoadMaterialFromDB(nullptr, &logic, false,
                                     pick("Titanium Ti-6Al-4V, annealed.svrmat")));
    qunsetenv("KW_DATA_DIR");
    EXPECT_EQ(seenExt, "xml");
    EXPECT_TRUE(seenFilter.contains("(*.sldmat)|*.sldmat|"));
    EXPECT_EQ(logic.GetEditObject()->GetName(), "Titanium Ti-6Al-4V, annealed");
    EXPECT_EQ(logic.GetEditObject()->GetID(), 1);
    EXPECT_FALSE(KwLoadMaterialFromDB(nullptr, &logic, false, pick("../CMakeLists.txt")));
    EXPECT_EQ(logic.GetEditObject()->GetName(), "Titanium Ti-6Al-4V, annealed");
    EXPECT_EQ(QDir::fromNativeSeparators(
                  KwReadRegistryCurrentUser("Database Settings", "Materials Database Path", "")),
              QDir::cleanPath(KW_MATERIALS_PARENT_DIR));
}

} // namespace
