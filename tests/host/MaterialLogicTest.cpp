// The material key table and the material logic of the reference host, driven the way the
// editor drives it: through control codes and the value interface.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwUIMaterial.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"
#include "KwMaterialDatabase.h"
#include "KwNumbers.h"
#include "KwTestSupport.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace K = KwMaterialKeys;

namespace {

// A dialog reduced to its texts: every control the material editor can have exists unless
// removed from `present`.
struct DialogLogic : public CKwUIMaterial
{
    DialogLogic()
    {
        for (int c : {CodeName, CodeID, CodeDescription, CodeMatrixUnit})
            present.insert(c);
        for (int i = 0; i < K::Count; ++i)
            present << CodeValueFirst + i << CodeUnitFirst + i;
        for (int e = 0; e < CKwMaterial::ExtraCount; ++e)
            present << CodeExtraFirst + e << CodeExtraUnitFirst + e;
        for (int k = 0; k < CKwMaterial::MatrixSize; ++k)
            present << CodeMatrixFirst + k;
    }
    int SetControlText(int code, const QString& text) override
    {
        if (!present.contains(code))
            return 0;
        texts[code] = text;
        return 1;
    }
    int GetControlText(int code, QString& text) override
    {
        if (!present.contains(code))
            return 0;
        text = texts.value(code);
        return 1;
    }
    QString& value(const char* key) { return texts[CodeValueFirst + K::IndexOf(key)]; }
    QSet<int> present;
    QMap<int, QString> texts;
};

TEST(MaterialKeys, startupTableKeepsItsOrderLabelsAndSpellings)
{
    const QStringList& all = K::StartupKeys();
    ASSERT_EQ(all.size(), 70);
    EXPECT_EQ(all.mid(0, 5), (QStringList{"UVar", "IVar", "DVar", "EVar", "EX"}));
    EXPECT_EQ(all.last(), "SIGXY");
    for (int i = 0; i < K::Count; ++i) {
        EXPECT_EQ(K::IndexOf(all[i + 4]), i);
        EXPECT_EQ(K::Key(i), all[i + 4]);
    }
    EXPECT_EQ(K::IndexOf("UVar"), -1);
    EXPECT_EQ(K::IndexOf("ex"), -1);
    // Rows that share a label on purpose, and label keys spelled as the language files have them.
    for (int i : {K::D1, K::D5})
        EXPECT_EQ(K::LabelKey(i), "LabelVolumetricDeformationConstants");
    for (int i : {K::NUXY, K::NUYZ, K::NUXZ}) {
        EXPECT_EQ(K::DefaultLabel(i), "Poisson's Ratio");
        EXPECT_EQ(K::LabelKey(i), "LabelPoissonRatio");
    }
    EXPECT_EQ(K::LabelKey(K::NA), "LabelDistortionalStrainEnergyPolinomialOrder");
    EXPECT_EQ(K::LabelKey(K::MU2), "LabelShearModuliirelatedtodistortionaldeformation");
    EXPECT_EQ(K::DefaultLabel(K::COHS), "2 * Cohesion");
    EXPECT_EQ(K::SIUnit(K::DENS), "kg/m3");
    EXPECT_EQ(K::SIUnit(K::FANG), "Deg");
    EXPECT_TRUE(K::Key(66).isEmpty());
}

TEST(MaterialKeys, valuesShowWithTenDigitsInDisplayUnits)
{
    const KW_UOM mm(KW_UOM::MMNS);
    EXPECT_EQ(K::FormatValue(2.05e11, K::UnitKind(K::EX), &mm), "205000");
    EXPECT_EQ(K::FormatValue(0.123456789, K::UnitKind(K::NUXY), &mm), "0.123456789");
    EXPECT_EQ(K::FormatValue(293.15, K::UnitKind(K::REFT), &mm), "20");
    EXPECT_EQ(K::FormatValue(MissingDouble, K::UnitKind(K::EX), &mm), "");
    // Without a unit system: SI, angles in degrees as the table labels them.
    EXPECT_EQ(K::FormatValue(0.5235987756, K::UnitKind(K::FANG), nullptr), "30");
    EXPECT_EQ(K::UnitLabel(K::EX, &mm), "MPa");
    EXPECT_EQ(K::UnitLabel(K::EX, nullptr), "N/m2");
}

TEST(MaterialKeys, labelsGoThroughTheLanguageService)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage("qps"));
    const QString label = K::Label(K::EX);
    CKwXMLUtils::SetCurrentLanguage("en");
    EXPECT_TRUE(label.startsWith(CKwXMLUtils::PseudoPrefix())) << label.toStdString();
    EXPECT_EQ(K::Label(K::EX), "Elastic Modulus");
}

class MaterialLogic : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    kwtest::Host host;
};

TEST_F(MaterialLogic, fillsControlsInDisplayUnitsAndReadsThemBack)
{
    DialogLogic logic;
    CKwMaterial* steel = host.model->m_materials.first();
    logic.OnCreate(host.view.get(), steel, nullptr);
    logic.LoadObjectData();
    EXPECT_EQ(logic.value("EX"), "200000"); // MPa in the host's mm-N-MPa system
    EXPECT_EQ(logic.value("DENS"), "7.9e-09");
    EXPECT_EQ(logic.texts[CKwUIMaterial::CodeUnitFirst + K::EX], "MPa");
    EXPECT_EQ(logic.value("GXY"), "");

    logic.value("EX") = "210000";
    logic.value("GXY") = " 81000 ";
    logic.value("DENS") = "";
    logic.present.remove(CKwUIMaterial::CodeValueFirst + K::KX); // a panel without it
    logic.UpdateObjectData(false);
    const CKwMaterial* m = logic.GetEditObject();
    EXPECT_DOUBLE_EQ(m->GetValue("EX"), 2.1e11);
    EXPECT_DOUBLE_EQ(m->GetValue("GXY"), 8.1e10);
    EXPECT_TRUE(IsMissingValue(m->GetValue("DENS")));
    EXPECT_DOUBLE_EQ(m->GetValue("KX"), 51.9);
    EXPECT_DOUBLE_EQ(steel->GetValue("EX"), 2.0e11) << "the model changes only on submit";

    EXPECT_EQ(logic.GetPropertyText("SIGXY"), "350");
    EXPECT_TRUE(logic.SetPropertyText("A10", "0.3"));
    EXPECT_DOUBLE_EQ(logic.GetPropertyValue("A10"), 3e5);
    EXPECT_FALSE(logic.SetPropertyText("A10", "x"));
    EXPECT_FALSE(logic.SetPropertyText("NOPE", "1"));
}

TEST_F(MaterialLogic, validationNamesTheFieldAndRefusesWhatCannotBeAMaterial)
{
    struct Case
    {
        int type;
        const char* key;
        const char* text;
        const char* expected; // message start, or nullptr when valid
    };
    const Case cases[] = {
        {CKwMaterial::Isotropic, "NUXY", "0.3", nullptr},
        {CKwMaterial::Isotropic, "NUXY", "0.5", "Poisson's Ratio - \n 'Poisson's ratio must be"},
        {CKwMaterial::Nitinol, "NUXY", "0.62", "Poisson's Ratio - \n"},
        {CKwMaterial::Isotropic, "NUXY", "-1", "Poisson's Ratio - \n 'Poisson's ratio must be greater"},
        {CKwMaterial::Isotropic, "DENS", "-7.8e-9", "Mass Density - \n 'The value cannot be negative"},
        {CKwMaterial::Isotropic, "EX", "0", "Elastic Modulus - \n 'Enter a value greater"},
        {CKwMaterial::Isotropic, "EX", "", "Elastic Modulus - \n 'A value is required"},
        {CKwMaterial::Isotropic, "KX", "12,5", "Thermal Cond. - \n 'Enter a number"},
        {CKwMaterial::Isotropic, "EX", "1e400", "Elastic Modulus - \n 'Enter a number"},
        {CKwMaterial::Isotropic, "EX", "1e40", "Elastic Modulus - \n 'The value is too large"},
        // -1e24 MPa is the missing-value marker inside: refused, never stored as "unset".
        {CKwMaterial::Isotropic, "SIGXT", "-1e24", "Tensile Limit - \n 'Enter a number"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.key) + "=" + c.text);
        DialogLogic logic;
        const CKwMaterial before = *host.model->m_materials.first();
        logic.OnCreate(host.view.get(), host.model->m_materials.first(), nullptr);
        logic.LoadObjectData();
        logic.SetValue(CKwUIMaterial::FieldType, c.type);
        logic.value(c.key) = c.text;
        host.view->ClearBubbleRecord();
        const long status = logic.OnSubmitUI();
        if (!c.expected) {
            EXPECT_EQ(status, 0);
            EXPECT_EQ(host.view->GetBubbleCount(), 0);
            continue;
        }
        EXPECT_NE(status, 0);
        EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
        EXPECT_TRUE(host.view->GetLastBubbleText().startsWith(c.expected))
            << host.view->GetLastBubbleText().toStdString();
        EXPECT_TRUE(*host.model->m_materials.first() == before);
    }
    // A Poisson's ratio near 0.5 is sound for an orthotropic material's transverse plane.
    DialogLogic ortho;
    ortho.OnCreate(host.view.get(), nullptr, nullptr);
    ortho.SetValue(CKwUIMaterial::FieldType, CKwMaterial::Orthotropic3D);
    for (const char* k : {"E1", "E2", "E3", "G12", "G1Z", "G2Z"})
        ortho.SetPropertyText(k, "10000");
    for (const char* k : {"NUXY", "NUXZ"})
        ortho.SetPropertyText(k, "0.3");
    ortho.SetPropertyText("NUYZ", "0.52");
    ortho.LoadObjectData();
    EXPECT_EQ(ortho.OnSubmitUI(), 0) << host.view->GetLastBubbleText().toStdString();
}

TEST_F(MaterialLogic, submitAddsOrRewritesTheMaterialAndCancelLeavesTheModel)
{
    DialogLogic fresh;
    fresh.OnCreate(host.view.get(), nullptr, nullptr);
    EXPECT_EQ(fresh.GetEditObject()->GetID(), 5);
    fresh.LoadObjectData();
    fresh.texts[CKwUIMaterial::CodeName] = "Bronze";
    fresh.value("EX") = "110000";
    fresh.value("NUXY") = "0.34";
    EXPECT_EQ(fresh.OnSubmitUI(), 0);
    ASSERT_EQ(host.model->m_materials.size(), 5);
    EXPECT_EQ(host.model->m_materials.last()->GetName(), "Bronze");
    EXPECT_DOUBLE_EQ(host.model->m_materials.last()->GetValue("EX"), 1.1e11);

    DialogLogic edit;
    CKwMaterial* alu = host.model->m_materials[1];
    edit.OnCreate(host.view.get(), alu, nullptr);
    edit.LoadObjectData();
    edit.value("EX") = "70000";
    edit.SetValue(CKwUIMaterial::FieldFailureTheory, CKwMaterial::VonMisesStress);
    EXPECT_EQ(edit.OnCancelUI(), 0);
    EXPECT_DOUBLE_EQ(alu->GetValue("EX"), 6.9e10);
    EXPECT_EQ(alu->m_failureTheory, CKwMaterial::FailureNone);
    edit.LoadObjectData();
    edit.value("EX") = "70000";
    EXPECT_EQ(edit.OnSubmitUI(), 0);
    EXPECT_DOUBLE_EQ(alu->GetValue("EX"), 7e10);
    EXPECT_EQ(host.model->m_materials.size(), 5);

    int v = -1;
    EXPECT_EQ(edit.SetValue(CKwUIMaterial::FieldType, CKwMaterial::TypeCount), 0);
    EXPECT_EQ(edit.SetValue(CKwUIMaterial::FieldHyperelasticModel, 5), 0);
    EXPECT_EQ(edit.GetValue(99, v), 0);
    edit.SetFailureTheorySetting(2);
    EXPECT_EQ(edit.GetValue(CKwUIMaterial::FieldFailureTheory, v), 1);
    EXPECT_EQ(v, CKwMaterial::PrincipalStress);
    edit.SetFailureTheorySetting(7);
    EXPECT_EQ(edit.GetEditObject()->m_failureTheory, CKwMaterial::PrincipalStress);
}

TEST_F(MaterialLogic, loadingFromAFileIsAllOrNothing)
{
    QTemporaryDir dir;
    const auto write = [&](const char* name, const QByteArray& data) {
        QFile f(dir.filePath(name));
        f.open(QIODevice::WriteOnly);
        f.write(data);
        return f.fileName();
    };
    DialogLogic logic;
    logic.OnCreate(host.view.get(), host.model->m_materials.first(), nullptr);
    logic.LoadObjectData();
    const CKwMaterial before = *logic.GetEditObject();

    QString why;
    const QString bad = write("bad.svrmat",
                              "<svrmat><material name='x'><property key='EX' value='2e11' "
                              "unit='Pa'/><property key='DENS' value='-1' unit='kg/m3'/>"
                              "</material></svrmat>");
    EXPECT_FALSE(logic.LoadMaterialFromFile(bad, 0, &why));
    EXPECT_FALSE(why.isEmpty());
    EXPECT_TRUE(*logic.GetEditObject() == before);
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("bad.svrmat - \n"));
    EXPECT_FALSE(logic.LoadMaterialFromFile(dir.filePath("none.svrmat")));
    EXPECT_FALSE(logic.LoadMaterialFromFile(write("x.txt", "<svrmat/>")));
    EXPECT_TRUE(*logic.GetEditObject() == before);

    const QString good = write("Lib.KWIMAT",
                               "<kwimat version='1'><material name='A' type='Isotropic'>"
                               "<property key='EX' value='100' unit='GPa'/></material>"
                               "<material name='B' type='Hyperelastic'><property key='A10' "
                               "value='0.5' unit='MPa'/><options hyperelasticModel='Yeoh'/>"
                               "</material></kwimat>");
    EXPECT_FALSE(logic.LoadMaterialFromFile(good, 2));
    ASSERT_TRUE(logic.LoadMaterialFromFile(good, 1));
    const CKwMaterial* m = logic.GetEditObject();
    EXPECT_EQ(m->GetID(), before.GetID());
    EXPECT_EQ(m->GetName(), "B");
    EXPECT_EQ(m->GetMaterialType(), CKwMaterial::Hyperelastic);
    EXPECT_EQ(m->m_hyperelasticModel, CKwMaterial::Yeoh);
    EXPECT_TRUE(IsMissingValue(m->GetValue("EX")));
    EXPECT_EQ(logic.texts[CKwUIMaterial::CodeExtraFirst + int(CKwMaterial::A10)], "0.5");
}

// Rows of the type list and type codes: the offered types in code order, then a stored rigid or
// concrete type that is not offered; an edited (not yet stored) type changes nothing.
TEST_F(MaterialLogic, typeListRowsFollowTheOfferedTypesAndTheStoredOne)
{
    struct Case
    {
        int stored; // -1: a new material
        bool explicitEnabled;
        std::vector<int> listed;
    };
    const std::vector<int> seven = {0, 1, 2, 3, 4, 5, 6};
    const std::vector<int> ten = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    const Case cases[] = {
        {-1, false, seven},
        {CKwMaterial::Isotropic, false, seven},
        {CKwMaterial::Rigid, false, {0, 1, 2, 3, 4, 5, 6, 8}},
        {CKwMaterial::Concrete, false, {0, 1, 2, 3, 4, 5, 6, 9}},
        {CKwMaterial::Rigid, true, ten},
        {-1, true, ten},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(std::to_string(c.stored) + (c.explicitEnabled ? " explicit" : ""));
        host.addin->SetExplicitEnabledInTechPreview(c.explicitEnabled);
        CKwMaterial* m = host.model->m_materials.first();
        if (c.stored >= 0) {
            ASSERT_TRUE(m->SetMaterialType(c.stored));
        }
        DialogLogic logic;
        logic.OnCreate(host.view.get(), c.stored >= 0 ? m : nullptr, nullptr);
        // The edit copy's type is not what decides the list.
        logic.SetValue(CKwUIMaterial::FieldType, CKwMaterial::Concrete);
        EXPECT_EQ(logic.GetListedTypes(), c.listed);
        const int rows = static_cast<int>(c.listed.size());
        for (int row = 0; row < rows; ++row) {
            EXPECT_EQ(logic.GetTypeFromSelection(row), c.listed[row]);
            EXPECT_EQ(logic.GetSelectionFromType(c.listed[row]), row);
        }
        EXPECT_EQ(logic.GetTypeFromSelection(rows), -1);
        EXPECT_EQ(logic.GetTypeFromSelection(-1), -1);
        EXPECT_EQ(logic.GetSelectionFromType(CKwMaterial::TypeCount), -1);
    }
}

} // namespace
