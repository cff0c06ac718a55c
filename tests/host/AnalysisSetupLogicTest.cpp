// The analysis-setup logics without a dialog: number fields as rows (shown, read, checked), the
// value interfaces, the table choice and the table edits that cancel undoes, over a fake UI
// that keeps the texts the logic sets.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwDynamicsSetup.h"
#include "CKwFEModel.h"
#include "CKwFunction.h"
#include "CKwTable.h"
#include "CKwUIDamping.h"
#include "CKwUISolutionFrequency.h"
#include "CKwUISpectrumSetup.h"
#include "KW_UOM.h"
#include "KwNumbers.h"
#include "KwSetupFields.h"
#include "KwTableLookup.h"
#include "KwTestSupport.h"

#include <QMap>
#include <gtest/gtest.h>

namespace {

// Control texts kept by code, as a dialog would show them.
template <class Logic> struct WithTexts : public Logic
{
    int SetControlText(int code, const QString& text) override
    {
        texts[code] = text;
        return 1;
    }
    int GetControlText(int code, QString& text) override
    {
        if (!texts.contains(code))
            return 0;
        text = texts[code];
        return 1;
    }
    int SetControlItems(int code, int count, const QString* items) override
    {
        QStringList list;
        for (int i = 0; i < count; ++i)
            list << items[i];
        this->items[code] = list;
        return 1;
    }
    QMap<int, QString> texts;
    QMap<int, QStringList> items;
};

struct RuleCase
{
    KwNumberRule rule;
    double value;
    const char* refusal; // part of the message, or "" when the value is taken
};

namespace R = KwRange;
constexpr int kNone = KwUnitKind::Dimensionless;

const RuleCase kRuleCases[] = {
    {{1, "S", "K", "L", kNone, 1.0, 0, 0.0}, MissingDouble, ""},
    {{1, "S", "K", "L", kNone, 1.0, R::Required, 0.0}, MissingDouble, "Enter a value."},
    {{1, "S", "K", "L", kNone, 1.0, 0, 0.0}, 0.0, ""},
    {{1, "S", "K", "L", kNone, 1.0, R::AboveMin, 0.0}, 0.0, "above 0"},
    {{1, "S", "K", "L", kNone, 1.0, 0, 1.0}, 0.5, "at least 1"},
    {{1, "S", "K", "L", kNone, 1.0, R::Whole, 1.0}, 2.5, "whole number"},
    {{1, "S", "K", "L", kNone, 1.0, R::Whole | R::HasMax, 1.0, 10.0}, 11.0, "at most 10"},
    {{1, "S", "K", "L", kNone, 100.0, R::DampingRatio, 0.0}, 1.0, ""},
    {{1, "S", "K", "L", kNone, 100.0, R::DampingRatio, 0.0}, 1.0000001, "over 100 %"},
    {{1, "S", "K", "L", kNone, 100.0, R::HasMax | R::AboveMin, 0.0, 1.0}, 1.5, "at most 100"},
    {{1, "S", "K", "L", KwUnitKind::Length, 1.0, 0, 0.001}, 0.0005, "at least 1"},
};

TEST(SetupFields, eachRuleTakesOrRefusesItsValues)
{
    const KW_UOM mm(KW_UOM::MMNS);
    for (const RuleCase& c : kRuleCases) {
        SCOPED_TRACE(QStringLiteral("%1 flags %2").arg(c.value).arg(c.rule.flags).toStdString());
        const QString why = KwSetupFields::Check(c.value, c.rule, &mm);
        if (*c.refusal == '\0')
            EXPECT_TRUE(why.isEmpty()) << why.toStdString();
        else
            EXPECT_TRUE(why.contains(QString::fromUtf8(c.refusal))) << why.toStdString();
    }
}

TEST(SetupFields, percentAndUnitFieldsShowAndReadInTheirDisplayForm)
{
    const KW_UOM mm(KW_UOM::MMNS);
    const KwNumberRule percent{1, "S", "K", "L", kNone, 100.0, 0, 0.0};
    const KwNumberRule length{2, "S", "K", "L", KwUnitKind::Length, 1.0, 0, 0.0};
    EXPECT_EQ(KwSetupFields::Show(0.04, percent, &mm), "4");
    EXPECT_EQ(KwSetupFields::Show(0.25, length, &mm), "250");
    EXPECT_EQ(KwSetupFields::Show(MissingDouble, length, &mm), "");
    double v = 0;
    ASSERT_TRUE(KwSetupFields::Read(" 5 ", percent, &mm, &v));
    EXPECT_DOUBLE_EQ(v, 0.05);
    ASSERT_TRUE(KwSetupFields::Read("12.5", length, &mm, &v));
    EXPECT_DOUBLE_EQ(v, 0.0125);
    ASSERT_TRUE(KwSetupFields::Read("", length, &mm, &v));
    EXPECT_TRUE(IsMissingValue(v));
    v = 7;
    EXPECT_FALSE(KwSetupFields::Read("5%", percent, &mm, &v));
    EXPECT_FALSE(KwSetupFields::Read("1e999", length, &mm, &v));
    EXPECT_EQ(v, 7) << "a refused text leaves the value";
}

TEST(SetupLogic, aFieldLeftAsShownKeepsItsValueAndABadOneKeepsTheStoredValue)
{
    kwtest::Host host;
    WithTexts<CKwUIDamping> logic;
    CKwDamping* stored = host.model->m_dampings.first();
    stored->m_beta = 1.0 / 3.0;
    logic.OnCreate(host.view.get(), stored, nullptr);
    logic.LoadObjectData();
    EXPECT_EQ(logic.texts[CKwUIDamping::CodeBeta], "0.3333333333");
    logic.texts[CKwUIDamping::CodeAlpha] = "abc";
    logic.texts[CKwUIDamping::CodeStructuralG] = "";
    logic.UpdateObjectData(false);
    EXPECT_EQ(logic.GetEditObject()->m_beta, 1.0 / 3.0);
    EXPECT_DOUBLE_EQ(logic.GetEditObject()->m_alpha, 0.5);
    EXPECT_TRUE(IsMissingValue(logic.GetEditObject()->m_structuralG));
    EXPECT_EQ(logic.ValidateObjectData(), 0);
    // The bad ALPHA is named, not the empty (optional) G.
    EXPECT_TRUE(host.view->GetLastBubbleText().startsWith("ALPHA"))
        << host.view->GetLastBubbleText().toStdString();
    logic.texts[CKwUIDamping::CodeAlpha] = "0.75";
    logic.UpdateObjectData(false);
    EXPECT_EQ(logic.ValidateObjectData(), 1);
    EXPECT_EQ(logic.OnSubmitUI(), 0);
    EXPECT_DOUBLE_EQ(stored->m_alpha, 0.75);
    EXPECT_TRUE(IsMissingValue(stored->m_structuralG));
}

TEST(SetupLogic, valueInterfacesRefuseRowsAndCodesTheyDoNotKnow)
{
    kwtest::Host host;
    WithTexts<CKwUISpectrumSetup> spectrum;
    spectrum.OnCreate(host.view.get(), host.model->m_spectrumSetups.first(), nullptr);
    spectrum.LoadObjectData();
    const QStringList rows = spectrum.items[CKwUISpectrumSetup::CodeTables];
    ASSERT_GE(rows.size(), 3);
    EXPECT_EQ(rows.last(), "New Table");
    EXPECT_TRUE(spectrum.IsNewTableRow(int(rows.size()) - 1));
    const int before = spectrum.GetEditObject()->m_tableId;
    struct Refused
    {
        int field;
        int value;
    };
    for (const Refused& r : {Refused{CKwUISpectrumSetup::FieldTable, int(rows.size()) - 1},
                             Refused{CKwUISpectrumSetup::FieldTable, 99},
                             Refused{CKwUISpectrumSetup::FieldKind, 3},
                             Refused{CKwUISpectrumSetup::FieldDirection, -1},
                             Refused{CKwUISpectrumSetup::FieldCombination, 4},
                             Refused{42, 0}})
        EXPECT_EQ(spectrum.SetValue(r.field, r.value), 0) << r.field << " " << r.value;
    EXPECT_EQ(spectrum.GetEditObject()->m_tableId, before);
    int row = -2;
    ASSERT_EQ(spectrum.GetValue(CKwUISpectrumSetup::FieldTable, row), 1);
    EXPECT_EQ(KwTableLookup::List(host.model.get(), KwTableLookup::Frequency)[row].id, before);

    WithTexts<CKwUISolutionFrequency> frequencies;
    frequencies.OnCreate(host.view.get(), nullptr, nullptr);
    for (int bad : {-1, int(CKwSolutionFrequency::MethodCount)})
        EXPECT_EQ(frequencies.SetValue(CKwUISolutionFrequency::FieldMethod, bad), 0);
    EXPECT_EQ(frequencies.SetValue(CKwUISolutionFrequency::FieldSpacing, 2), 0);
    EXPECT_EQ(frequencies.SetValue(CKwUISolutionFrequency::FieldMethod,
                                   CKwSolutionFrequency::SpreadAround),
              1);
    EXPECT_EQ(frequencies.GetEditObject()->m_method, CKwSolutionFrequency::SpreadAround);
}

TEST(SetupLogic, theDiscreteListKeepsUnchangedRowsAndNamesTheFirstBadOne)
{
    kwtest::Host host;
    WithTexts<CKwUISolutionFrequency> logic;
    CKwSolutionFrequency* stored = host.model->m_solutionFrequencies.first();
    stored->m_discrete = {10.0, 1.0 / 7.0};
    stored->m_method = CKwSolutionFrequency::Discrete;
    logic.OnCreate(host.view.get(), stored, nullptr);
    const QStringList shown = logic.GetDiscreteTexts();
    ASSERT_EQ(shown, (QStringList{"10", "0.1428571429"}));
    logic.SetDiscreteTexts({"12", shown[1], "  ", "30"});
    EXPECT_EQ(logic.GetEditObject()->m_discrete, (QList<double>{12.0, 1.0 / 7.0, 30.0}));
    logic.SetDiscreteTexts({"12", "x", "-4"});
    EXPECT_EQ(logic.GetEditObject()->m_discrete.size(), 3) << "a bad row changes nothing";
    EXPECT_EQ(logic.ValidateObjectData(), 0);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("Row 2"));
    logic.SetDiscreteTexts({"12", "-4"});
    EXPECT_EQ(logic.ValidateObjectData(), 0);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("Row 2"));
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("below zero"));
    logic.SetDiscreteTexts({});
    EXPECT_EQ(logic.ValidateObjectData(), 0);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("at least one frequency"));
}

TEST(SetupLogic, logarithmicSpacingNeedsAStartAboveZero)
{
    kwtest::Host host;
    WithTexts<CKwUISolutionFrequency> logic;
    logic.OnCreate(host.view.get(), host.model->m_solutionFrequencies.first(), nullptr);
    logic.LoadObjectData();
    logic.texts[CKwUISolutionFrequency::CodeRangeStart] = "0";
    logic.UpdateObjectData(false);
    EXPECT_EQ(logic.ValidateObjectData(), 0);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("Logarithmic"));
    logic.SetValue(CKwUISolutionFrequency::FieldSpacing, CKwSolutionFrequency::Linear);
    EXPECT_EQ(logic.ValidateObjectData(), 1);
}

TEST(TableEdits, cancelRemovesAddedTablesAndRestoresEditedOnes)
{
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    const qsizetype count = model->m_tables.size();
    CKwTable* edited = KwTableLookup::Find(model.get(), 4, KwTableLookup::Frequency);
    ASSERT_NE(edited, nullptr);
    const std::vector<double> y = edited->GetYFunction()->Values();
    const QString name = edited->GetName();

    KwTableChoice choice;
    KwTableEdits& edits = choice.Edits();
    const int added = choice.AddTable(model.get());
    ASSERT_GT(added, 0);
    EXPECT_EQ(model->m_tables.size(), count + 1);
    EXPECT_TRUE(edits.WasAdded(added));
    edits.Keep(model.get(), 4);
    edited->AddPoint(5000.0, 0.1);
    edited->SetName("changed");
    edits.Keep(model.get(), 4); // the first state is the one that counts
    edits.Keep(model.get(), added); // an added table goes as a whole
    edits.Undo(model.get());
    EXPECT_EQ(model->m_tables.size(), count);
    EXPECT_EQ(edited->GetYFunction()->Values(), y);
    EXPECT_EQ(edited->GetName(), name);

    // After a commit the edits belong to the model; a kept table deleted meanwhile is skipped.
    const int kept = choice.AddTable(model.get());
    edits.Commit();
    edits.Undo(model.get());
    EXPECT_NE(KwTableLookup::Find(model.get(), kept, KwTableLookup::Frequency), nullptr);
    edits.Keep(model.get(), kept);
    ASSERT_TRUE(KwTableLookup::Remove(model.get(), kept));
    edits.Undo(model.get());
    EXPECT_EQ(model->m_tables.size(), count);
}

TEST(TableEdits, theChoiceListsFrequencyTablesOnlyAndForgetsDeletedOnes)
{
    std::unique_ptr<CKwFEModel> model(CKwFEModel::CreateSampleModel());
    KwTableChoice choice;
    const QStringList names = choice.Refill(model.get(), false);
    const QList<KwTableLookup::Entry> frequency =
        KwTableLookup::List(model.get(), KwTableLookup::Frequency);
    ASSERT_EQ(names.size(), frequency.size());
    for (int row = 0; row < names.size(); ++row) {
        EXPECT_EQ(choice.IdAt(row), frequency[row].id);
        EXPECT_EQ(choice.RowOf(frequency[row].id), row);
    }
    EXPECT_EQ(choice.RowOf(2), -1) << "a time curve is no frequency table";
    EXPECT_EQ(choice.IdAt(int(names.size())), 0);
    EXPECT_EQ(choice.IdAt(-1), 0);
    KwTableLookup::Remove(model.get(), frequency.first().id);
    choice.Refill(model.get(), true);
    EXPECT_EQ(choice.RowOf(frequency.first().id), -1);
    EXPECT_EQ(choice.IdAt(int(frequency.size()) - 1), -1) << "the last row is New Table";
    EXPECT_EQ(choice.Refill(nullptr, false), QStringList());
}

} // namespace
