// The checks every entity logic makes first (a name, an ID above zero, an ID no other entity of
// the kind has), the name and ID controls and the analysis an editor works for, run through
// each of the four entity logics of the reference host.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwSubCase.h"
#include "CKwUILoad.h"
#include "CKwUIMaterial.h"
#include "CKwUIPhysicalProperty.h"
#include "CKwUIRestraint.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwTestSupport.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace {

struct RestraintKind
{
    using Entity = CKwRestraint;
    using Logic = CKwUIRestraint;
    static QList<CKwRestraint*>& list(CKwFEModel& m) { return m.m_restraints; }
    static constexpr const char* noun = "constraint";
};
struct LoadKind
{
    using Entity = CKwLoad;
    using Logic = CKwUILoad;
    static QList<CKwLoad*>& list(CKwFEModel& m) { return m.m_loads; }
    static constexpr const char* noun = "load";
};
struct MaterialKind
{
    using Entity = CKwMaterial;
    using Logic = CKwUIMaterial;
    static QList<CKwMaterial*>& list(CKwFEModel& m) { return m.m_materials; }
    static constexpr const char* noun = "material";
};
struct PropertyKind
{
    using Entity = CKwPhysicalProperty;
    using Logic = CKwUIPhysicalProperty;
    static QList<CKwPhysicalProperty*>& list(CKwFEModel& m) { return m.m_properties; }
    static constexpr const char* noun = "property";
};

// A logic whose dialog has only the name and ID edits; every other control is refused, so the
// rest of the edit copy stays as it was loaded.
template <class Logic> struct NameAndIdDialog : public Logic
{
    int SetControlText(int code, const QString& text) override
    {
        if (code != Logic::CodeName && code != Logic::CodeID)
            return 0;
        texts[code] = text;
        return 1;
    }
    int GetControlText(int code, QString& text) override
    {
        const auto it = texts.find(code);
        if (it == texts.end())
            return 0;
        text = it->second;
        return 1;
    }
    std::map<int, QString> texts;
};

template <class Kind> class EntityIdentity : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        // Two entities of the kind at least, so that one can collide with the other.
        auto& all = Kind::list(*host.model);
        ASSERT_FALSE(all.isEmpty());
        if (all.size() < 2) {
            auto* second = new typename Kind::Entity(*all.first());
            second->SetID(CKwFEModel::NextId(all));
            second->SetName(QStringLiteral("Second"));
            all.append(second);
        }
    }
    kwtest::Host host;
};

using Kinds = ::testing::Types<RestraintKind, LoadKind, MaterialKind, PropertyKind>;
TYPED_TEST_SUITE(EntityIdentity, Kinds);

TYPED_TEST(EntityIdentity, nameAndIdChecksComeFirstAndKeepTheModelAsItWas)
{
    auto& all = TypeParam::list(*this->host.model);
    const QString own = QString::number(all[0]->GetID());
    const QString other = QString::number(all[1]->GetID());
    const std::string noun = TypeParam::noun;
    const std::string nameRequired = "Name - \n 'Enter a name for the " + noun + ".'";
    const std::string positive = "ID - \n 'Enter a positive whole number.'";
    const std::string taken = "ID - \n 'Another " + noun + " already uses this ID.'";
    struct Case
    {
        QString name;
        QString id;
        std::string expected; // the whole bubble; empty: the entity is written
    };
    const Case cases[] = {
        {"", own, nameRequired},
        {"   ", own, nameRequired},
        {"\t", "0", nameRequired}, // the name is checked before the ID
        {"", other, nameRequired},
        {"Renamed", "0", positive},
        {"Renamed", "-3", positive},
        {"Renamed", "", positive},
        {"Renamed", "12a", positive},
        {"Renamed", "-1", positive},
        {"Renamed", other, taken},
        {"Renamed", " " + other + " ", taken},
        {"  Renamed  ", own, ""}, // its own ID is no collision
    };
    const qsizetype count = all.size();
    for (const Case& c : cases) {
        SCOPED_TRACE("name '" + c.name.toStdString() + "' id '" + c.id.toStdString() + "'");
        NameAndIdDialog<typename TypeParam::Logic> logic;
        logic.OnCreate(this->host.view.get(), all[0], nullptr);
        logic.LoadObjectData();
        const QString storedName = all[0]->GetName();
        const int storedId = all[0]->GetID();
        logic.texts[TypeParam::Logic::CodeName] = c.name;
        logic.texts[TypeParam::Logic::CodeID] = c.id;
        this->host.view->ClearBubbleRecord();
        const long status = logic.OnSubmitUI();
        if (c.expected.empty()) {
            EXPECT_EQ(status, 0) << this->host.view->GetLastBubbleText().toStdString();
            EXPECT_EQ(this->host.view->GetBubbleCount(), 0);
            EXPECT_EQ(all[0]->GetName(), "Renamed");
            EXPECT_EQ(all.size(), count) << "an edit adds nothing";
            continue;
        }
        EXPECT_NE(status, 0);
        EXPECT_EQ(this->host.view->GetBubbleCount(), 1);
        EXPECT_EQ(this->host.view->GetLastBubbleKind(), CFMView::BubbleError);
        EXPECT_EQ(this->host.view->GetLastBubbleText().toStdString(), c.expected);
        EXPECT_EQ(all[0]->GetName(), storedName);
        EXPECT_EQ(all[0]->GetID(), storedId);
    }
}

TYPED_TEST(EntityIdentity, aNewEntityGetsAFreeIdAndMayNotTakeAnExistingOne)
{
    auto& all = TypeParam::list(*this->host.model);
    const qsizetype before = all.size();
    NameAndIdDialog<typename TypeParam::Logic> logic;
    logic.OnCreate(this->host.view.get(), nullptr, nullptr);
    logic.LoadObjectData();
    // The controls show the new entity's name and the next free ID.
    const int next = CKwFEModel::NextId(all);
    EXPECT_EQ(logic.texts[TypeParam::Logic::CodeID], QString::number(next));
    EXPECT_FALSE(logic.texts[TypeParam::Logic::CodeName].trimmed().isEmpty());

    for (const typename TypeParam::Entity* existing : all) {
        logic.texts[TypeParam::Logic::CodeID] = QString::number(existing->GetID());
        this->host.view->ClearBubbleRecord();
        EXPECT_NE(logic.OnSubmitUI(), 0);
        EXPECT_EQ(this->host.view->GetLastBubbleText().toStdString(),
                  "ID - \n 'Another " + std::string(TypeParam::noun) + " already uses this ID.'");
    }
    EXPECT_EQ(all.size(), before);
    // The free ID passes the identity checks: whatever the kind asks next, it is not the ID.
    logic.texts[TypeParam::Logic::CodeID] = QString::number(next);
    this->host.view->ClearBubbleRecord();
    logic.OnSubmitUI();
    EXPECT_FALSE(this->host.view->GetLastBubbleText().startsWith("ID - "))
        << this->host.view->GetLastBubbleText().toStdString();
    EXPECT_FALSE(this->host.view->GetLastBubbleText().startsWith("Name - "));
}

// The editors that work for an analysis take their subcase's, else the one chosen for them,
// else the model's first.
template <class Logic> void expectAnalysisInContext(kwtest::Host& host)
{
    SCOPED_TRACE(typeid(Logic).name());
    ASSERT_GE(host.model->m_analyses.size(), 2);
    CKwAnalysis* first = host.model->m_analyses[0];
    CKwAnalysis* second = host.model->m_analyses[1];
    ASSERT_FALSE(second->GetSubCases().isEmpty());
    {
        Logic logic;
        logic.OnCreate(host.view.get(), nullptr, nullptr);
        EXPECT_EQ(logic.GetAnalysis(), first);
        CKwAnalysis chosen(9, QStringLiteral("Chosen"));
        logic.SetAnalysis(&chosen);
        EXPECT_EQ(logic.GetAnalysis(), &chosen);
    }
    {
        Logic logic;
        logic.OnCreate(host.view.get(), nullptr, second->GetSubCases().first());
        CKwAnalysis chosen(9, QStringLiteral("Chosen"));
        logic.SetAnalysis(&chosen);
        EXPECT_EQ(logic.GetAnalysis(), second) << "the subcase's analysis comes first";
    }
    {
        Logic logic;
        logic.OnCreate(nullptr, nullptr, nullptr);
        EXPECT_EQ(logic.GetAnalysis(), nullptr) << "no model, nothing chosen";
    }
}

TEST(EntityAnalysis, subcaseThenChosenThenTheModelsFirst)
{
    kwtest::IsolateSettings();
    kwtest::Host host;
    expectAnalysisInContext<CKwUIRestraint>(host);
    expectAnalysisInContext<CKwUILoad>(host);
    expectAnalysisInContext<CKwUIMaterial>(host);
}

// The helpers the entity logics share for subcases and texts.
TEST(EntityLogicHelpers, subcaseRowsAndTexts)
{
    kwtest::IsolateSettings();
    kwtest::Host host;
    CKwAnalysis* a = host.model->m_analyses[1];
    const QList<CKwSubCase*>& subcases = a->GetSubCases();
    ASSERT_FALSE(subcases.isEmpty());
    const int first = subcases.first()->GetID();
    const int last = subcases.last()->GetID();
    const int n = static_cast<int>(subcases.size());
    const struct { QList<int> rows; QList<int> ids; } rows[] = {
        {{}, {}},
        {{0}, {first}},
        {{n - 1, 0}, {last, first}}, // in the order given
        {{-1, n, 0}, {first}},       // rows out of range are skipped
    };
    for (const auto& r : rows)
        EXPECT_EQ(KwEntityLogic::SubcaseIdsOfRows(a, r.rows), r.ids);
    EXPECT_EQ(KwEntityLogic::SubcaseIdsOfRows(nullptr, {0}), QList<int>{});

    // A new entity goes to its subcase, else to the analysis's first; else to none.
    EXPECT_EQ(KwEntityLogic::NewEntitySubcaseIds(subcases.last(), a), QList<int>{last});
    EXPECT_EQ(KwEntityLogic::NewEntitySubcaseIds(nullptr, a), QList<int>{first});
    CKwAnalysis empty(9, QStringLiteral("Empty"));
    EXPECT_EQ(KwEntityLogic::NewEntitySubcaseIds(nullptr, &empty), QList<int>{});

    const struct { const char* text; std::initializer_list<QString> args; const char* filled; }
        texts[] = {
            {"%s cannot carry %s.", {"Edge 1", "this"}, "Edge 1 cannot carry this."},
            {"Table %s is gone.", {"%s", "2"}, "Table %s is gone."}, // never filled twice
            {"from %s to %s", {"0"}, "from 0 to %s"},
            {"no place", {"x"}, "no place"},
        };
    for (const auto& t : texts)
        EXPECT_EQ(KwEntityLogic::FillArgs(QString::fromLatin1(t.text), t.args),
                  QString::fromLatin1(t.filled));
    // Shown values: nothing for a missing one, else display units.
    const KW_UOM mm(KW_UOM::MMNS);
    EXPECT_EQ(KwEntityLogic::FormatShown(MissingDouble, KwUnitKind::Length, &mm), QString());
    EXPECT_EQ(KwEntityLogic::FormatShown(0.0125, KwUnitKind::Length, &mm), "12.5");
}

} // namespace
