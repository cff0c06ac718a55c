// Analysis > Solver Input Preview: each entity's values as the model holds them in the user's
// units and as the deck carries them in its own, stated, unit system.
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwMaterial.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwDeckPreview.h"
#include "KwHostWindow.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTabWidget>
#include <gtest/gtest.h>

namespace {

CKwAnalysis* firstOfType(KwHostWindow& host, int type)
{
    for (CKwAnalysis* a : host.Model()->m_analyses)
        if (a->GetAnalysisTypeCode() == type)
            return a;
    return nullptr;
}

int rowOf(const KwDeckRowModel& m, const QString& entity, const QString& quantity)
{
    for (int r = 0; r < m.rowCount(); ++r)
        if (m.index(r, KwDeckRowModel::Entity).data().toString() == entity
            && m.index(r, KwDeckRowModel::Quantity).data().toString() == quantity)
            return r;
    return -1;
}

TEST(DeckPreview, valuesShowInTheUsersUnitsAndAsTheDeckCarriesThem)
{
    struct Case
    {
        KW_UOM::System system;
        const char* modulus; // the first material's elastic modulus as the user reads it
    };
    const Case cases[] = {{KW_UOM::SI, "2e+11 Pa"},
                          {KW_UOM::MMNS, "200000 MPa"},
                          {KW_UOM::IPS, "29007547.55 psi"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(int(c.system));
        kwtest::IsolateSettings();
        KwHostWindow host;
        host.Units()->SetSystem(c.system);
        CKwAnalysis* a = firstOfType(host, CKwAnalysis::LinearStatic);
        ASSERT_NE(a, nullptr);
        host.SetCurrentAnalysis(a);
        KwDeckPreview* preview = host.OpenDeckPreview();
        ASSERT_NE(preview, nullptr);
        const KwSolverDeck& deck = preview->Deck();
        ASSERT_TRUE(deck.ok()) << deck.refusal.toStdString();
        // A table per family and the list of what is left out.
        EXPECT_EQ(preview->Tabs()->count(), KwDeckRow::FamilyCount + 1);
        // The unit system is stated where the user reads it.
        bool stated = false;
        for (QLineEdit* e : preview->findChildren<QLineEdit*>())
            stated = stated || e->text() == QStringLiteral("N, m, kg, s, Pa");
        EXPECT_TRUE(stated);

        const KwDeckRowModel& materials = *preview->FamilyModel(KwDeckRow::Material);
        const QString steel = host.Model()->m_materials.first()->GetName();
        const int e = rowOf(materials, steel, QStringLiteral("Elastic modulus"));
        ASSERT_GE(e, 0);
        EXPECT_EQ(materials.index(e, KwDeckRowModel::ModelValue).data().toString(),
                  QString::fromLatin1(c.modulus));
        EXPECT_EQ(materials.index(e, KwDeckRowModel::DeckValue).data().toString(),
                  QStringLiteral("200000000000 Pa"));
        EXPECT_EQ(materials.index(e, KwDeckRowModel::Keyword).data().toString(),
                  QStringLiteral("*ELASTIC"));
        // Every material and property number shown is one the deck carries under its keyword.
        for (const KwDeckRow& r : deck.rows) {
            if ((r.family != KwDeckRow::Material && r.family != KwDeckRow::Property) || !r.hasValue)
                continue;
            const std::size_t at = deck.text.find(r.keyword);
            ASSERT_NE(at, std::string::npos) << r.keyword;
            EXPECT_NE(deck.text.find(r.text, at), std::string::npos) << r.keyword << " " << r.text;
        }
        // Loads and constraints are listed per subcase; the sample's first load case has both.
        const KwDeckRowModel& loads = *preview->FamilyModel(KwDeckRow::Load);
        const KwDeckRowModel& constraints = *preview->FamilyModel(KwDeckRow::Constraint);
        ASSERT_GT(loads.rowCount(), 0);
        ASSERT_GT(constraints.rowCount(), 0);
        EXPECT_EQ(loads.index(0, KwDeckRowModel::Subcase).data().toInt(), deck.stepSubcases.front());
        preview->close();
        QApplication::processEvents();
    }
}

TEST(DeckPreview, analysisTheSolverCannotRunSaysWhyInTheUsersLanguage)
{
    kwtest::IsolateSettings();
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de"));
    struct Back
    {
        ~Back() { CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en")); }
    } back;
    KwHostWindow host;
    CKwAnalysis* fatigue = firstOfType(host, CKwAnalysis::Fatigue);
    ASSERT_NE(fatigue, nullptr);
    host.SetCurrentAnalysis(fatigue);
    // Reached from the Analysis menu.
    QAction* action = nullptr;
    for (QMenu* menu : host.menuBar()->findChildren<QMenu*>())
        for (QAction* a : menu->actions())
            if (a->text() == QStringLiteral("Vorschau der Solvereingabe..."))
                action = a;
    ASSERT_NE(action, nullptr);
    action->trigger();
    QApplication::processEvents();
    KwDeckPreview* preview = host.findChild<KwDeckPreview*>();
    ASSERT_NE(preview, nullptr);
    EXPECT_EQ(preview->windowTitle(), QStringLiteral("Vorschau der Solvereingabe"));
    auto* why = preview->findChild<QLabel*>(QStringLiteral("PreviewRefusal"));
    ASSERT_NE(why, nullptr);
    EXPECT_TRUE(why->text().contains(QStringLiteral("fatigue life evaluation")))
        << why->text().toStdString();
    EXPECT_TRUE(why->text().startsWith(QStringLiteral("Der Solver kann")));
}

} // namespace
