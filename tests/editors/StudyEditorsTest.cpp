// The impact, fatigue setup, optimization objective and design variable editors end to end:
// opened through LaunchDialog on the sample model, field rules as data (each bad input gets
// its field's message and writes nothing), values written in internal units, new entities,
// Cancel, and the requests that must open nothing without crashing.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwFatigueSetup.h"
#include "CKwFatigueSetupDialog.h"
#include "CKwImpactWizard.h"
#include "CKwMFCUIImpactAnalysis.h"
#include "CKwMFCUIOptimObjective.h"
#include "CKwMFCUIOptimVariable.h"
#include "CKwMaterial.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"
#include "CKwPhysicalProperty.h"
#include "CKwUIEntity.h"
#include "CKwXMLUtils.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwTestSupport.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTableView>
#include <QTest>
#include <QTreeWidget>
#include <functional>
#include <gtest/gtest.h>
#include <ostream>
#include <vector>

namespace {

// The sample model's analyses by position.
enum { kExplicit = 4, kFatigue = 5, kStudy = 6 };

CKwAnalysis* analysis(kwtest::Host& h, int i) { return h.model->m_analyses.at(i); }

// Opens `kind` as the demo host's tree does: the entity, and its study or analysis.
CKwMFCDialog* open(kwtest::Host& h, unsigned kind, void* object, CKwAnalysis* owner = nullptr)
{
    DialogLaunchRequest r = h.Request(kind);
    r.object = object;
    r.context = owner;
    r.analysis = owner;
    if (kind == 56)
        h.view->SetCurrentAnalysis(analysis(h, kFatigue));
    LaunchDialog(&r);
    return dynamic_cast<CKwMFCDialog*>(h.view->GetOpenDialog());
}

void setText(QWidget* d, int id, const QString& text) { KwControl<QLineEdit>(d, id)->setText(text); }
void press(QWidget* d, int id) { KwControl<QPushButton>(d, id)->click(); }

// A snapshot of everything the four editors may write, compared before and after.
struct Snapshot
{
    CKwImpactWizard impact;
    CKwFatigueSetup fatigue;
    QList<CKwOptimObjective> objectives;
    QList<CKwOptimVariable> variables;
    explicit Snapshot(kwtest::Host& h)
        : impact(*analysis(h, kExplicit)->GetImpactWizard()),
          fatigue(*analysis(h, kFatigue)->GetFatigueSetup())
    {
        for (const CKwOptimObjective* o : analysis(h, kStudy)->m_objectives)
            objectives.append(*o);
        for (const CKwOptimVariable* v : analysis(h, kStudy)->m_variables)
            variables.append(*v);
    }
    bool operator==(const Snapshot& o) const
    {
        return impact == o.impact && fatigue == o.fatigue && objectives == o.objectives &&
               variables == o.variables;
    }
};

// One bad input: the editor, the fields typed (control id, text; combo rows as "#row"), the
// label the message names and a piece of the message.
struct BadInput
{
    const char* what;
    unsigned kind;
    std::vector<std::pair<int, const char*>> fields;
    const char* label;
    const char* message;
};
void PrintTo(const BadInput& b, std::ostream* os) { *os << b.what; }

using I = CKwMFCUIImpactAnalysis;
using O = CKwMFCUIOptimObjective;
using V = CKwMFCUIOptimVariable;
using F = CKwFatigueSetupDialog;

const BadInput kBadInputs[] = {
    // impact
    {"impact: velocity no number", 33, {{I::IdVelocity, "fast"}}, "Initial Velocity",
     "'fast' is not a valid number. Enter a number in mm/s."},
    {"impact: velocity in another system's unit", 33, {{I::IdVelocity, "3 in/s"}},
     "Initial Velocity", "not a valid number"},
    {"impact: negative velocity", 33, {{I::IdVelocity, "-1"}}, "Initial Velocity",
     "Enter zero or a larger value."},
    {"impact: negative gravity", 33, {{I::IdAcceleration, "-9.81"}}, "Gravity Acceleration",
     "Enter zero or a larger value."},
    {"impact: zero duration", 33, {{I::IdDuration, "0"}}, "Duration",
     "Enter a value greater than zero."},
    {"impact: empty translation component", 33, {{I::IdTranslationY, " "}}, "Translation Y",
     "Enter a value."},
    {"impact: zero translation", 33,
     {{I::IdTranslationX, "0"}, {I::IdTranslationY, "0"}, {I::IdTranslationZ, "0"}},
     "Projectile Translation", "must not be zero"},
    {"impact: plane at no distance", 33, {{I::IdPlaneDistance, "0"}}, "Distance to Plane",
     "Enter a value greater than zero."},
    {"impact: empty name", 33, {{I::IdName, "  "}}, "Name", "Enter a name for the impact."},
    // objective
    {"objective: target goal without target", 16, {{O::IdGoal, "#2"}}, "Target",
     "Enter a value."},
    {"objective: negative target", 16, {{O::IdGoal, "#2"}, {O::IdTarget, "-2"}}, "Target",
     "Enter a value greater than zero."},
    {"objective: zero normalizing factor", 16, {{O::IdNormalization, "0"}}, "Normalizing Factor",
     "Enter a value greater than zero."},
    {"objective: normalizing factor no number", 16, {{O::IdNormalization, "1,5x"}},
     "Normalizing Factor", "'1,5x' is not a valid number."},
    {"objective: fractional mode", 16, {{O::IdResponse, "#4"}, {O::IdMode, "2.5"}}, "Mode",
     "Enter a whole number."},
    {"objective: mode zero", 16, {{O::IdResponse, "#4"}, {O::IdMode, "0"}}, "Mode",
     "Enter a value greater than zero."},
    {"objective: empty name", 16, {{O::IdName, ""}}, "Name", "Enter a name for the objective."},
    {"objective: ID zero", 16, {{O::IdID, "0"}}, "ID", ""},
    // variable
    {"variable: upper below lower", 17, {{V::IdLower, "4"}, {V::IdUpper, "2"}}, "Upper Bound",
     "The upper bound must be above the lower bound."},
    {"variable: bounds equal", 17, {{V::IdLower, "3"}, {V::IdUpper, "3"}}, "Upper Bound",
     "must be above the lower bound"},
    {"variable: initial below the range", 17, {{V::IdInitial, "0.5"}}, "Initial Value",
     "The initial value must lie between the bounds."},
    {"variable: initial above the range", 17, {{V::IdInitial, "7"}}, "Initial Value",
     "must lie between the bounds"},
    {"variable: zero step", 17, {{V::IdStep, "0"}}, "Step", "Enter a value greater than zero."},
    {"variable: negative step", 17, {{V::IdStep, "-0.5"}}, "Step",
     "Enter a value greater than zero."},
    {"variable: step wider than the range", 17, {{V::IdStep, "6"}}, "Step",
     "must not exceed the range"},
    {"variable: negative lower bound", 17, {{V::IdLower, "-1"}}, "Lower Bound",
     "Enter a value greater than zero."},
    {"variable: lower bound no number", 17, {{V::IdLower, "thin"}}, "Lower Bound",
     "'thin' is not a valid number. Enter a number in mm."},
    {"variable: empty upper bound", 17, {{V::IdUpper, ""}}, "Upper Bound", "Enter a value."},
    // fatigue setup
    {"fatigue: cycles no number", 56, {{F::IdCycles, "many"}}, "Load Cycles", "Enter a number."},
    {"fatigue: zero cycles", 56, {{F::IdCycles, "0"}}, "Load Cycles", "whole number of cycles"},
    {"fatigue: fractional cycles", 56, {{F::IdCycles, "10.5"}}, "Load Cycles",
     "whole number of cycles"},
    {"fatigue: ratio of one", 56, {{F::IdLoading, "#2"}, {F::IdRatio, "1"}}, "Stress Ratio",
     "must be below 1"},
    {"fatigue: ratio no number", 56, {{F::IdLoading, "#2"}, {F::IdRatio, "half"}},
     "Stress Ratio", "Enter a number."},
    {"fatigue: zero scale", 56, {{F::IdScale, "0"}}, "Scale Factor", "greater than zero"},
    {"fatigue: negative scale", 56, {{F::IdScale, "-2"}}, "Scale Factor", "greater than zero"},
};

class StudyEditors : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }
    void* entityFor(unsigned kind)
    {
        switch (kind) {
        case 33: return analysis(host, kExplicit)->GetImpactWizard();
        case 16: return analysis(host, kStudy)->m_objectives.first();
        case 17: return analysis(host, kStudy)->m_variables.first();
        default: return nullptr;
        }
    }
    CKwAnalysis* ownerFor(unsigned kind)
    {
        return analysis(host, kind == 33 ? kExplicit : kind == 56 ? kFatigue : kStudy);
    }
    kwtest::Host host;
};

class StudyBadInput : public StudyEditors, public ::testing::WithParamInterface<BadInput>
{};

TEST_P(StudyBadInput, namesTheFieldAndWritesNothing)
{
    const BadInput& b = GetParam();
    const Snapshot before(host);
    CKwMFCDialog* d = open(host, b.kind, entityFor(b.kind), ownerFor(b.kind));
    ASSERT_NE(d, nullptr);
    for (const auto& [id, text] : b.fields) {
        if (text[0] == '#')
            KwControl<QComboBox>(d, id)->setCurrentIndex(QString::fromLatin1(text + 1).toInt());
        else
            setText(d, id, QString::fromLatin1(text));
    }
    host.view->ClearBubbleRecord();
    press(d, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), d) << "the editor stays open";
    EXPECT_EQ(host.view->GetBubbleCount(), 1) << "one message, for the first bad field";
    const QString bubble = host.view->GetLastBubbleText();
    EXPECT_TRUE(bubble.startsWith(QString::fromLatin1(b.label) + " - \n '")) << bubble.toStdString();
    EXPECT_TRUE(bubble.contains(QString::fromLatin1(b.message))) << bubble.toStdString();
    EXPECT_TRUE(Snapshot(host) == before);
}

INSTANTIATE_TEST_SUITE_P(Rules, StudyBadInput, ::testing::ValuesIn(kBadInputs));

// A good edit per editor: typed in display units (mm-N-MPa-t), stored in SI.
struct GoodEdit
{
    const char* what;
    unsigned kind;
    std::vector<std::pair<int, const char*>> fields;
    std::function<std::vector<double>(kwtest::Host&)> stored;
    std::vector<double> expected;
};
void PrintTo(const GoodEdit& g, std::ostream* os) { *os << g.what; }

const GoodEdit kGoodEdits[] = {
    {"impact on a face",
     33,
     {{I::IdTranslationX, "10"}, {I::IdTranslationZ, "-20"}, {I::IdVelocity, "2500"},
      {I::IdAcceleration, "0"}, {I::IdDuration, "0.01"}, {I::IdTargetFace, "!"}, {I::IdFace, "#1"}},
     [](kwtest::Host& h) {
         const CKwImpactWizard* w = analysis(h, kExplicit)->GetImpactWizard();
         return std::vector<double>{w->m_translation[0], w->m_translation[1],
                                    w->m_translation[2], w->m_velocity,    w->m_acceleration,
                                    w->m_duration,       double(w->m_target), double(w->m_targetFaceId)};
     },
     {0.01, 0.0, -0.02, 2.5, 0.0, 0.01, CKwImpactWizard::TargetFace, 2}},
    {"objective with a stress target",
     16,
     {{O::IdGoal, "#2"}, {O::IdResponse, "#3"}, {O::IdTarget, "150"}, {O::IdNormalization, "2"}},
     [](kwtest::Host& h) {
         const CKwOptimObjective* o = analysis(h, kStudy)->m_objectives.first();
         return std::vector<double>{double(o->m_goal), double(o->m_response), o->m_target,
                                    o->m_normalization};
     },
     {CKwOptimObjective::Target, CKwOptimObjective::Stress, 150e6, 2.0}},
    {"variable with a narrower range",
     17,
     {{V::IdLower, "2"}, {V::IdUpper, "4"}, {V::IdInitial, "2.5"}, {V::IdStep, "0.25"}},
     [](kwtest::Host& h) {
         const CKwOptimVariable* v = analysis(h, kStudy)->m_variables.first();
         return std::vector<double>{v->m_lower, v->m_upper, v->m_initial, v->m_step};
     },
     {0.002, 0.004, 0.0025, 0.00025}},
    {"fatigue with a custom ratio",
     56,
     {{F::IdCycles, "500000"}, {F::IdLoading, "#2"}, {F::IdRatio, "-0.5"},
      {F::IdMeanStress, "#3"}, {F::IdMeasure, "#2"}, {F::IdScale, "1.25"}},
     [](kwtest::Host& h) {
         const CKwFatigueSetup* s = analysis(h, kFatigue)->GetFatigueSetup();
         return std::vector<double>{s->m_cycles, double(s->m_loading), s->m_ratio,
                                    double(s->m_meanStress), double(s->m_stressMeasure),
                                    s->m_scale};
     },
     {5e5, CKwFatigueSetup::CustomRatio, -0.5, CKwFatigueSetup::Soderberg,
      CKwFatigueSetup::MaxPrincipal, 1.25}},
};

class StudyGoodEdit : public StudyEditors, public ::testing::WithParamInterface<GoodEdit>
{};

TEST_P(StudyGoodEdit, okWritesInternalUnitsAndCancelWritesNothing)
{
    const GoodEdit& g = GetParam();
    for (const bool ok : {false, true}) {
        const std::vector<double> before = g.stored(host);
        CKwMFCDialog* d = open(host, g.kind, entityFor(g.kind), ownerFor(g.kind));
        ASSERT_NE(d, nullptr);
        for (const auto& [id, text] : g.fields) {
            if (text[0] == '#')
                KwControl<QComboBox>(d, id)->setCurrentIndex(QString::fromLatin1(text + 1).toInt());
            else if (text[0] == '!')
                KwControl<QRadioButton>(d, id)->click();
            else
                setText(d, id, QString::fromLatin1(text));
        }
        press(d, ok ? 1 : 2);
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr) << host.view->GetLastBubbleText().toStdString();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        const std::vector<double> after = g.stored(host);
        if (!ok) {
            EXPECT_EQ(after, before) << "Cancel";
            continue;
        }
        ASSERT_EQ(after.size(), g.expected.size());
        for (std::size_t i = 0; i < after.size(); ++i)
            EXPECT_NEAR(after[i], g.expected[i], 1e-9 * std::max(1.0, std::abs(g.expected[i])))
                << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Edits, StudyGoodEdit, ::testing::ValuesIn(kGoodEdits));

TEST_F(StudyEditors, newObjectiveAndVariableJoinTheirStudyWithTheNextId)
{
    CKwAnalysis* study = analysis(host, kStudy);
    for (const unsigned kind : {16u, 17u}) {
        CKwMFCDialog* d = open(host, kind, nullptr, study);
        ASSERT_NE(d, nullptr);
        EXPECT_EQ(KwControl<QLineEdit>(d, kind == 16 ? int(O::IdID) : int(V::IdID))->text(), "2");
        press(d, 1);
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr) << host.view->GetLastBubbleText().toStdString();
    }
    ASSERT_EQ(study->m_objectives.size(), 2);
    ASSERT_EQ(study->m_variables.size(), 2);
    EXPECT_EQ(study->m_objectives[1]->GetName(), "Objective 2");
    // A new variable starts on the first shell, around its thickness (3 mm).
    const CKwOptimVariable* v = study->m_variables[1];
    EXPECT_EQ(v->m_propertyId, 1);
    EXPECT_DOUBLE_EQ(v->m_initial, 0.003);
    EXPECT_LT(v->m_lower, v->m_initial);
    EXPECT_GT(v->m_upper, v->m_initial);
}

TEST_F(StudyEditors, anIdAnotherObjectiveOfTheStudyHasIsRefused)
{
    CKwAnalysis* study = analysis(host, kStudy);
    study->m_objectives.append(new CKwOptimObjective(2, QStringLiteral("Stiffest")));
    CKwMFCDialog* d = open(host, 16, study->m_objectives.first(), study);
    ASSERT_NE(d, nullptr);
    setText(d, O::IdID, "2");
    press(d, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), d);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("already uses this ID"));
    EXPECT_EQ(study->m_objectives.first()->GetID(), 1);
}

TEST_F(StudyEditors, newImpactBecomesTheAnalysisImpact)
{
    CKwAnalysis* drop = analysis(host, kExplicit);
    drop->SetImpactWizard(nullptr);
    CKwMFCDialog* d = open(host, 33, nullptr, drop);
    ASSERT_NE(d, nullptr);
    setText(d, I::IdName, "Side impact");
    press(d, 1);
    ASSERT_NE(drop->GetImpactWizard(), nullptr);
    EXPECT_EQ(drop->GetImpactWizard()->GetName(), "Side impact");
    // Without an explicit analysis OK explains and writes nothing.
    CKwMFCDialog* orphan = open(host, 33, nullptr, analysis(host, kFatigue));
    ASSERT_NE(orphan, nullptr);
    press(orphan, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), orphan);
    EXPECT_TRUE(host.view->GetLastBubbleText().contains("explicit dynamics analysis"));
    EXPECT_EQ(analysis(host, kFatigue)->GetImpactWizard(), nullptr);
}

TEST_F(StudyEditors, aFacePickedInTheViewBecomesTheImpactTarget)
{
    auto* d = dynamic_cast<CKwMFCUIImpactAnalysis*>(
        open(host, 33, analysis(host, kExplicit)->GetImpactWizard(), analysis(host, kExplicit)));
    ASSERT_NE(d, nullptr);
    EXPECT_FALSE(KwControl<QComboBox>(d, I::IdFace)->isEnabled());
    CKwUIEntity* face = host.model->FindGeometry(CKwUIEntity::Face, 3);
    const QPointF at = host.view->ScreenPointOf(face);
    ASSERT_GE(at.x(), 0);
    QTest::mouseClick(host.view.get(), Qt::LeftButton, Qt::NoModifier, at.toPoint());
    EXPECT_TRUE(KwControl<QRadioButton>(d, I::IdTargetFace)->isChecked());
    EXPECT_TRUE(KwControl<QComboBox>(d, I::IdFace)->isEnabled());
    EXPECT_EQ(KwControl<QComboBox>(d, I::IdFace)->currentText(), face->GetLabel());
    press(d, 1);
    EXPECT_EQ(analysis(host, kExplicit)->GetImpactWizard()->m_targetFaceId, 3);
}

TEST_F(StudyEditors, objectiveTargetFollowsTheResponseUnit)
{
    CKwMFCDialog* d = open(host, 16, analysis(host, kStudy)->m_objectives.first(),
                           analysis(host, kStudy));
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(KwGetControlText(d, O::IdTargetUnit), "t");
    KwControl<QComboBox>(d, O::IdGoal)->setCurrentIndex(CKwOptimObjective::Target);
    EXPECT_TRUE(KwControl<QLineEdit>(d, O::IdTarget)->isEnabled());
    setText(d, O::IdTarget, "0.5");
    // A target typed for a mass means nothing as a frequency: it is cleared with the unit.
    KwControl<QComboBox>(d, O::IdResponse)->setCurrentIndex(CKwOptimObjective::Frequency);
    EXPECT_EQ(KwGetControlText(d, O::IdTargetUnit), "Hz");
    EXPECT_EQ(KwControl<QLineEdit>(d, O::IdTarget)->text(), "");
    EXPECT_TRUE(KwControl<QLineEdit>(d, O::IdMode)->isEnabled());
}

TEST_F(StudyEditors, variableOnABeamOffersItsSectionDimensions)
{
    CKwMFCDialog* d = open(host, 17, analysis(host, kStudy)->m_variables.first(),
                           analysis(host, kStudy));
    ASSERT_NE(d, nullptr);
    auto* property = KwControl<QComboBox>(d, V::IdProperty);
    auto* size = KwControl<QComboBox>(d, V::IdParameter);
    EXPECT_EQ(size->count(), 1) << "a shell has its thickness";
    property->setCurrentIndex(1); // the box beam
    const CKwPhysicalProperty* beam = host.model->m_properties.at(1);
    EXPECT_EQ(size->count(), CKwPhysicalProperty::ShapeDimensionCount(beam->m_sectionShape));
    size->setCurrentIndex(1);
    // The initial value starts from the dimension's present size (mm).
    EXPECT_EQ(KwControl<QLineEdit>(d, V::IdInitial)->text().toDouble(),
              beam->GetDimensions(1)[1] * 1000);
}

TEST_F(StudyEditors, fatigueHistoryBlocksAreCheckedRowByRow)
{
    auto* d = dynamic_cast<CKwFatigueSetupDialog*>(open(host, 56, nullptr));
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(d->GetAnalysis(), analysis(host, kFatigue));
    KwControl<QComboBox>(d, F::IdLoading)->setCurrentIndex(CKwFatigueSetup::LoadHistory);
    KwFatigueHistoryModel* m = d->GetHistoryModel();
    ASSERT_EQ(m->rowCount(), 1) << "a history starts with a block";
    press(d, F::IdAddRow);
    struct Row
    {
        const char* cycles;
        const char* min;
        const char* max;
        const char* message; // null: accepted
    };
    const Row rows[] = {{"1000", "0", "x", "Enter a number in every cell."},
                        {"0", "0", "1", "whole number from 1"},
                        {"10", "1", "1", "must be above its minimum"},
                        {"10", "-0.5", "1", nullptr}};
    const CKwFatigueSetup before = *analysis(host, kFatigue)->GetFatigueSetup();
    for (const Row& r : rows) {
        m->setData(m->index(1, 0), r.cycles, Qt::EditRole);
        m->setData(m->index(1, 1), r.min, Qt::EditRole);
        m->setData(m->index(1, 2), r.max, Qt::EditRole);
        if (r.message) {
            press(d, 1);
            EXPECT_TRUE(d->GetLastMessage().startsWith("Load History - \n '"));
            EXPECT_TRUE(d->GetLastMessage().contains(r.message)) << d->GetLastMessage().toStdString();
            EXPECT_TRUE(*analysis(host, kFatigue)->GetFatigueSetup() == before);
        }
    }
    press(d, 1);
    const CKwFatigueSetup* s = analysis(host, kFatigue)->GetFatigueSetup();
    ASSERT_EQ(s->m_history.size(), 2);
    EXPECT_EQ(s->m_history[1], (CKwFatigueSetup::Block{10, -0.5, 1}));
    EXPECT_EQ(s->m_loading, CKwFatigueSetup::LoadHistory);
}

TEST_F(StudyEditors, fatigueSetupListsWhichMaterialsBringACurve)
{
    host.model->m_materials.first()->m_fatigueOn = true;
    host.model->m_materials[2]->m_fatigueOn = true; // on, but no S-N curve
    CKwMFCDialog* d = open(host, 56, nullptr);
    ASSERT_NE(d, nullptr);
    auto* curves = KwControl<QTreeWidget>(d, F::IdCurves);
    ASSERT_EQ(curves->topLevelItemCount(), host.model->m_materials.size());
    // The sample steel brings its S-N curve: its points and endurance limit in the units shown.
    EXPECT_EQ(curves->topLevelItem(0)->text(1),
              QStringLiteral("S-N curve, 4 points, endurance limit %1")
                  .arg(host.units->GetDisplayValue(2.1e8, KwUnitKind::Stress)) +
                  QLatin1Char(' ') + host.units->GetUnits(KwUnitKind::Stress));
    EXPECT_EQ(curves->topLevelItem(1)->text(1), "None");
    EXPECT_EQ(curves->topLevelItem(2)->text(1), "From material");
}

// Open and OK on values with more digits than a field shows: the setup keeps them exactly.
TEST_F(StudyEditors, fatigueOkOnUntouchedFieldsKeepsEveryValue)
{
    CKwFatigueSetup* s = analysis(host, kFatigue)->GetFatigueSetup();
    s->m_cycles = 123456789012.0;
    s->m_loading = CKwFatigueSetup::CustomRatio;
    s->m_ratio = -0.12345678901234;
    s->m_scale = 1.00000000003;
    const CKwFatigueSetup before = *s;
    CKwMFCDialog* d = open(host, 56, nullptr);
    ASSERT_NE(d, nullptr);
    press(d, 1);
    EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    EXPECT_TRUE(*s == before);
}

// In German every caption of the four dialogs comes from the language files.
TEST_F(StudyEditors, germanCaptions)
{
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de"));
    const struct
    {
        unsigned kind;
        int ctrlId;
        const char* caption;
    } rows[] = {{33, 7864, "Anfangsgeschwindigkeit:"}, {33, 7875, "Starre Ebene"},
                {16, 7814, "Normierungsfaktor:"},      {17, 7829, "Untergrenze:"},
                {56, 7914, "Mittelspannungskorrektur:"}, {56, 7903, "Belastung"}};
    for (const auto& r : rows) {
        CKwMFCDialog* d = open(host, r.kind, entityFor(r.kind), ownerFor(r.kind));
        ASSERT_NE(d, nullptr) << r.kind;
        EXPECT_EQ(KwGetControlText(d, r.ctrlId), QString::fromUtf8(r.caption)) << r.ctrlId;
        press(d, 2);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

// Requests that open nothing, or open without what they need, never crash.
TEST_F(StudyEditors, missingViewAnalysisOrObjectOpensNothingOrRefusesOk)
{
    // Kind 56 without a current fatigue analysis: a message, no window.
    for (CKwAnalysis* current : {static_cast<CKwAnalysis*>(nullptr), analysis(host, 0)}) {
        host.view->SetCurrentAnalysis(current);
        DialogLaunchRequest r = host.Request(56);
        const kwtest::ModalRecord rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
        EXPECT_EQ(rec.boxTexts, QStringList{"No fatigue analysis is selected. Make a fatigue "
                                            "analysis the current analysis first."});
        EXPECT_EQ(host.view->GetOpenDialog(), nullptr);
    }
    // No view at all.
    for (const unsigned kind : {16u, 17u, 33u, 56u}) {
        DialogLaunchRequest r{};
        r.kind = kind;
        kwtest::AnswerModals([&] { LaunchDialog(&r); });
    }
    // Objective and variable without a study: open, but OK writes nothing.
    for (const unsigned kind : {16u, 17u}) {
        DialogLaunchRequest r = host.Request(kind);
        r.object = nullptr;
        r.context = nullptr;
        r.analysis = nullptr;
        LaunchDialog(&r);
        auto* d = dynamic_cast<CKwMFCDialog*>(host.view->GetOpenDialog());
        ASSERT_NE(d, nullptr) << kind;
        press(d, 1);
        EXPECT_EQ(host.view->GetOpenDialog(), d);
        EXPECT_TRUE(host.view->GetLastBubbleText().contains("optimization study"));
        press(d, 2);
    }
    // An object of another family is no objective: a new one is edited instead.
    CKwMFCDialog* d = open(host, 16, host.model->m_materials.first(), analysis(host, kStudy));
    ASSERT_NE(d, nullptr);
    EXPECT_EQ(KwControl<QLineEdit>(d, O::IdID)->text(), "2");
}

// The fatigue analysis leaves the model while its setup dialog is open: OK closes, writes
// nowhere and does not touch the deleted analysis.
TEST_F(StudyEditors, fatigueAnalysisDeletedMeanwhileIsNotWritten)
{
    CKwMFCDialog* d = open(host, 56, nullptr);
    ASSERT_NE(d, nullptr);
    CKwAnalysis* fatigue = analysis(host, kFatigue);
    host.model->m_analyses.removeAll(fatigue);
    host.view->SetCurrentAnalysis(nullptr);
    setText(d, F::IdCycles, "42");
    press(d, 1);
    EXPECT_EQ(fatigue->GetFatigueSetup()->m_cycles, 2e6);
    delete fatigue;
}

} // namespace
