// The nonlinear parameters dialog on the sample model's two setups: what it shows, what it
// lets through, what it refuses and with which message, and what it writes.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwNonlinearParametersDlg.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "KwControls.h"
#include "KwLangText.h"
#include "KwMessageBox.h"
#include "KwNumbers.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <map>

namespace {

using Dlg = CKwNonlinearParametersDlg;
using NL = CKwNonlinearSetup;
using enum Dlg::ControlId;
using enum NL::IntegerSlot;
using enum NL::RealSlot;

enum Variant
{
    Static,
    Transient
};
const char* variantName(Variant v) { return v == Static ? "static" : "transient"; }

using SetupState = std::tuple<int, int, std::array<bool, 3>, std::array<int, NL::IntegerCount>,
                              std::array<float, NL::RealCount>>;
SetupState stateOf(const NL* s)
{
    return {s->m_methodIndex, s->m_componentIndex, s->m_convergence, s->m_integers, s->m_reals};
}
void restore(NL* s, const SetupState& st)
{
    std::tie(s->m_methodIndex, s->m_componentIndex, s->m_convergence, s->m_integers, s->m_reals) =
        st;
}

// Where each field is kept in the setup: true for the reals, and the slot.
// clang-format off
const std::map<int, std::pair<bool, int>> kSlots = {
    {IDC_KSTEP, {false, IntStiffnessUpdateSteps}}, {IDC_MAXITER, {false, IntMaxIterations}},
    {IDC_MAXDIV, {false, IntMaxDivergence}},       {IDC_MAXUBIS, {false, IntMaxUnbisecting}},
    {IDC_MAXLS, {false, IntMaxLineSearches}},      {IDC_MAXBIS, {false, IntMaxBisections}},
    {IDC_ADJUST, {false, IntSkipFactor}},          {IDC_MSTEP, {false, IntDominantPeriodSteps}},
    {IDC_TDG, {false, IntTerminationNode}},        {IDC_DISPLACEMENT_TOL, {true, RealDisplacementTolerance}},
    {IDC_LOAD_TOL, {true, RealLoadTolerance}},     {IDC_WORK_TOL, {true, RealWorkTolerance}},
    {IDC_FSTRESS, {true, RealFractionOfStress}},   {IDC_INITIAL_INCREMENT, {true, RealInitialIncrement}},
    {IDC_MIN_INCREMENT, {true, RealMinIncrement}}, {IDC_MAX_INCREMENT, {true, RealMaxIncrement}},
    {IDC_LSTOL, {true, RealLineSearchTolerance}},  {IDC_RB, {true, RealSteppingBounds}},
    {IDC_MAXR, {true, RealMaxTimeRatio}},          {IDC_UTOL, {true, RealFilterTolerance}},
    {IDC_RTOLB, {true, RealMaxRotation}},          {IDC_TDV, {true, RealTerminationValue}}};
// clang-format on

// The label control of a field: check boxes label their own tolerance and count.
int labelControlOf(int field)
{
    static const std::map<int, int> special = {{IDC_MAXITER, IDC_CHECK_MAXITER},
                                               {IDC_DISPLACEMENT_TOL, IDC_CHECK_DISPLACEMENT},
                                               {IDC_LOAD_TOL, IDC_CHECK_LOAD},
                                               {IDC_WORK_TOL, IDC_CHECK_WORK},
                                               {IDC_TDG, IDC_MSTEP + Dlg::kLabelIdOffset}};
    const auto it = special.find(field);
    return it != special.end() ? it->second : field + Dlg::kLabelIdOffset;
}

class NonlinearParametersDlgTest : public ::testing::Test
{
protected:
    void SetUp() override { kwtest::IsolateSettings(); }

    NL* setup(Variant v) const
    {
        const int type =
            v == Static ? CKwAnalysis::NonlinearStatic : CKwAnalysis::NonlinearTransient;
        for (CKwAnalysis* a : host.model->m_analyses)
            if (a->GetAnalysisTypeCode() == type)
                return a->GetSubCases().first()->GetNonlinearSetup();
        return nullptr;
    }

    // A modeless dialog on the setup, with the host view for its messages.
    Dlg* open(Variant v)
    {
        auto* d = new Dlg(setup(v));
        d->SetFMView(host.view.get());
        d->Create();
        d->show();
        return d;
    }

    static QLineEdit* edit(Dlg* d, int id) { return KwControl<QLineEdit>(d, id); }
    static void set(Dlg* d, int id, const QString& text) { edit(d, id)->setText(text); }
    static QString text(Dlg* d, int id) { return KwGetControlText(d, id); }
    static void pressOk(Dlg* d) { KwControl<QPushButton>(d, IDC_BUTTON_OK)->click(); }
    static void choose(Dlg* d, int combo, int row)
    {
        KwControl<QComboBox>(d, combo)->setCurrentIndex(row);
    }
    static void toggle(Dlg* d, int box) { KwControl<QCheckBox>(d, box)->click(); }
    std::string lastBubble() const { return host.view->GetLastBubbleText().toStdString(); }

    kwtest::Host host;
};

// ---------------------------------------------------------------------------------------------
// Bounds: both sides of every bound, in the variant where the field is checked, plus fields
// the other variant never checks whatever they hold.

constexpr double kMissing = -1.0e30;
constexpr double kRefused = 1.0e31; // refused: the setup is left as it was

struct BoundCase
{
    Variant variant;
    int field;
    // What is typed, and what the setup holds after OK (or kRefused).
    std::vector<std::pair<const char*, double>> entries;
};

// clang-format off
const BoundCase kBoundCases[] = {
    {Static, IDC_KSTEP, {{"1", 1}, {"0", kRefused}}},
    {Transient, IDC_KSTEP, {{"1", 1}, {"0", kRefused}}},
    {Static, IDC_MAXITER, {{"1", 1}, {"0", kRefused}}}, {Static, IDC_MAXDIV, {{"1", 1}}},
    {Transient, IDC_MAXDIV, {{"0", kRefused}}}, {Static, IDC_MAXUBIS, {{"1", 1}}},
    {Transient, IDC_MAXUBIS, {{"0", kRefused}}}, {Static, IDC_MAXLS, {{"0", 0}}},
    {Transient, IDC_MAXLS, {{"-1", kRefused}}}, {Static, IDC_MAXBIS, {{"1", 1}}},
    {Transient, IDC_MAXBIS, {{"0", kRefused}}},
    {Transient, IDC_ADJUST, {{"0", 0}, {"-1", kRefused}}},
    {Transient, IDC_MSTEP, {{"9", kRefused}, {"10", 10}, {"200", 200}}},
    {Transient, IDC_MSTEP, {{"201", kRefused}, {"", kMissing}}},
    {Static, IDC_TDG, {{"1", 1}, {"81", 81}, {"82", kRefused}, {"", kMissing}}},
    {Transient, IDC_TDG, {{"0", kRefused}}},
    {Static, IDC_DISPLACEMENT_TOL, {{"1e-9", 1e-9}, {"0", kRefused}}},
    {Static, IDC_LOAD_TOL, {{"-0.001", kRefused}}},
    {Transient, IDC_WORK_TOL, {{"0", kRefused}, {"2.5", 2.5}}},
    {Static, IDC_FSTRESS, {{"0", kRefused}, {"0.000001", 0.000001}}},
    {Transient, IDC_FSTRESS, {{"0.999", 0.999}, {"1", kRefused}}},
    {Static, IDC_INITIAL_INCREMENT, {{"0", kRefused}, {"0.25", 0.25}}},
    {Static, IDC_MIN_INCREMENT, {{"1", kRefused}, {"0.999", 0.999}}},
    {Static, IDC_MAX_INCREMENT, {{"1.0", kRefused}, {"0.75", 0.75}}},
    {Static, IDC_LSTOL, {{"0.01", kRefused}, {"0.0101", 0.0101}}},
    {Transient, IDC_LSTOL, {{"0.9", 0.9}, {"0.9001", kRefused}}},
    // The messages of RB, MAXR and RTOLB state other bounds (0.0 <=, 1.0 <, > 2.0) than
    // the ones enforced.
    {Transient, IDC_RB, {{"0.0999", kRefused}, {"0.1", 0.1}, {"1", 1}, {"1.001", kRefused}}},
    {Transient, IDC_MAXR, {{"0.999", kRefused}, {"1", 1}, {"32", 32}, {"32.01", kRefused}}},
    {Static, IDC_RTOLB, {{"0", kRefused}, {"0.5", 0.5}}},
    {Transient, IDC_RTOLB, {{"2", kRefused}, {"2.001", 2.001}}},
    {Transient, IDC_UTOL, {{"0.001", kRefused}, {"0.0011", 0.0011}, {"1", 1}, {"1.0001", kRefused}}},
    {Static, IDC_TDV, {{"-5", -5}, {"x", kRefused}}},
    // Plain number forms, and boxes holding only blanks, which count as empty.
    {Static, IDC_MAXDIV, {{"+7", 7}, {"007", 7}, {"   ", kMissing}}},
    {Static, IDC_FSTRESS, {{".5", 0.5}, {"5E-1", 0.5}}},
    {Static, IDC_TDV, {{"-1e3", -1000}, {"\t", kMissing}}},
    // Never checked in the other variant, and then not kept.
    {Static, IDC_MSTEP, {{"5", kMissing}}}, {Static, IDC_ADJUST, {{"-3", kMissing}}},
    {Static, IDC_RB, {{"junk", kMissing}}}, {Static, IDC_MAXR, {{"0", kMissing}}},
    {Static, IDC_UTOL, {{"5", kMissing}}}, {Transient, IDC_INITIAL_INCREMENT, {{"7", kMissing}}},
    {Transient, IDC_MIN_INCREMENT, {{"junk", kMissing}}},
    {Transient, IDC_MAX_INCREMENT, {{"-1", kMissing}}},
    // The transient setup names no node, so its termination value is never read.
    {Transient, IDC_TDV, {{"junk", kMissing}}},
};
// clang-format on

TEST_F(NonlinearParametersDlgTest, checksBothSidesOfEveryBound)
{
    for (const auto& [variant, field, entries] : kBoundCases)
        for (const auto& [entry, stored] : entries) {
            SCOPED_TRACE(testing::Message() << variantName(variant) << " field " << field
                                            << " text \"" << entry << "\"");
            NL* s = setup(variant);
            const SetupState before = stateOf(s);
            QPointer<Dlg> d = open(variant);
            set(d, field, QString::fromLatin1(entry));
            host.view->ClearBubbleRecord();
            pressOk(d);
            const auto [real, slot] = kSlots.at(field);
            if (stored == kRefused) {
                EXPECT_EQ(host.view->GetBubbleCount(), 1);
                EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
                ASSERT_TRUE(d && d->isVisible());
                EXPECT_TRUE(host.view->GetLastBubbleText().startsWith(
                    text(d, labelControlOf(field)) + QStringLiteral(" - \n")))
                    << lastBubble();
                EXPECT_EQ(stateOf(s), before);
            } else {
                EXPECT_EQ(host.view->GetBubbleCount(), 0) << lastBubble();
                EXPECT_FALSE(d && d->isVisible());
                if (stored == kMissing)
                    EXPECT_TRUE(real ? IsMissingValue(s->m_reals[slot])
                                     : IsMissingValue(s->m_integers[slot]));
                else if (real)
                    EXPECT_EQ(s->m_reals[slot], static_cast<float>(stored));
                else
                    EXPECT_EQ(s->m_integers[slot], static_cast<int>(stored));
            }
            delete d.data();
            restore(s, before);
        }
}

// ---------------------------------------------------------------------------------------------
// Exact messages, one per format and wording.

TEST_F(NonlinearParametersDlgTest, showsTheExactMessageOfEachFormat)
{
    const char* const range = "'Invalid Input: The entered value should be: ";
    const struct { Variant variant; int field; const char* text; QString message; } cases[] = {
        {Static, IDC_KSTEP, "0",
         QString("Iterations before stiffness update: - \n 'Invalid Input. "
                 "The entered value should be > 0'")},
        {Static, IDC_MAXLS, "-1",
         QString("Maximum line searches for an iteration: - \n 'Invalid "
                 "Input: The entered value should be >= 0'")},
        {Transient, IDC_MSTEP, "201",
         QString("Steps to obtain dominant period: - \n ") + range + "10 <= value <= 200 ' "},
        {Static, IDC_TDG, "82",
         "Steps to obtain dominant period: - \n Please enter a valid node ID."},
        {Static, IDC_DISPLACEMENT_TOL, "0",
         "Displacement - \n 'Invalid Input. The entered value should be > 0'"},
        {Static, IDC_FSTRESS, "1",
         QString("Fraction of effective stress: - \n ") + range + "0.0 < value < 1.0 '"},
        {Static, IDC_LSTOL, "0.01",
         QString("Line search tolerance: - \n ") + range + "0.01 < value <= 0.9 '"},
        {Transient, IDC_RB, "0.05",
         QString("Bounds for stepping function: - \n ") + range + "0.0 <= value <= 1.0 '"},
        {Transient, IDC_MAXR, "33",
         QString("Maximum ratio of incremental time to time step: - \n ") + range +
             "1.0 < value < 32.0 '"},
        {Transient, IDC_UTOL, "0.001",
         QString("Tolerance on displacement to filter time step: - \n ") + range +
             "0.001 < value <= 1.0 '"},
        {Static, IDC_RTOLB, "0",
         QString("Maximum incremental rotation (Degree): - \n ") + range + "> 2.0 '"},
        {Static, IDC_TDV, "1.2.3", "Terminate on displacement value: - \n 'ERROR'"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << variantName(c.variant) << " field " << c.field);
        Dlg* d = open(c.variant);
        set(d, c.field, QString::fromLatin1(c.text));
        pressOk(d);
        EXPECT_EQ(lastBubble(), c.message.toStdString());
        delete d;
    }
}

// ---------------------------------------------------------------------------------------------
// Bad input of every sort, on an integer, a real and the node field.

TEST_F(NonlinearParametersDlgTest, refusesBadInputAndLeavesTheSetupUntouched)
{
    // clang-format off
    const std::pair<int, std::vector<const char*>> bad[] = {
        {IDC_MAXDIV, {"abc", "5x", "x5", "2.5", "1e3", "2147483648", "-2147483649", "nan", "inf",
                      " 5", "5 ", "0x10", "+", "5,0"}},
        {IDC_FSTRESS, {"abc", "0.5x", "0.5.1", "NaN", "inf", "-inf", "Infinity", "1e999", " 0.5",
                       "0.5 ", "0,5", ".", "1e", "0x0.8p0",
                       "1e-50"}}, // zero in single precision
        {IDC_RTOLB, {"1e39"}},    // beyond single precision
        {IDC_TDG, {"999", "-3", "81.0", "n81", " 81", "4294967377"}}, // 81 beyond 32 bits
        {IDC_TDV, {"nan", "-1e30", "1e39"}}, // -1e30 is the missing sentinel itself
    };
    // clang-format on
    NL* s = setup(Static);
    const SetupState before = stateOf(s);
    for (const auto& [field, texts] : bad)
        for (const char* t : texts) {
            SCOPED_TRACE(testing::Message() << "field " << field << " text \"" << t << "\"");
            Dlg* d = open(Static);
            // Changes elsewhere in the dialog must not leak into the setup either.
            choose(d, IDC_METHOD, 3);
            choose(d, IDC_TDC, 8);
            toggle(d, IDC_CHECK_WORK);
            set(d, field, QString::fromLatin1(t));
            host.view->ClearBubbleRecord();
            pressOk(d);
            EXPECT_EQ(host.view->GetBubbleCount(), 1);
            EXPECT_TRUE(host.view->GetLastBubbleText().startsWith(text(d, labelControlOf(field))));
            EXPECT_TRUE(d->isVisible());
            EXPECT_EQ(stateOf(s), before);
            delete d;
        }
}

// ---------------------------------------------------------------------------------------------
// Order: with every field wrong, each OK reports the next field in order once the previous one
// is put right.

struct OrderStep
{
    int field;
    const char* fix;
    const char* marker; // a piece of the message that tells its format apart
};

TEST_F(NonlinearParametersDlgTest, reportsFieldsInCheckOrder)
{
    // clang-format off
    const std::vector<OrderStep> staticSteps = {
        {IDC_KSTEP, "3", "> 0"}, {IDC_MAXITER, "3", "> 0"}, {IDC_MAXDIV, "3", "> 0"},
        {IDC_MAXUBIS, "3", "> 0"}, {IDC_MAXLS, "3", ">= 0"}, {IDC_MAXBIS, "3", "> 0"},
        {IDC_TDG, "5", "valid node"}, {IDC_DISPLACEMENT_TOL, "0.1", "> 0"},
        {IDC_LOAD_TOL, "0.1", "> 0"}, {IDC_WORK_TOL, "0.1", "> 0"},
        {IDC_FSTRESS, "0.1", "0.0 < value < 1.0"},
        {IDC_INITIAL_INCREMENT, "0.1", "0.0 < value < 1.0"},
        {IDC_MIN_INCREMENT, "0.1", "0.0 < value < 1.0"},
        {IDC_MAX_INCREMENT, "0.1", "0.0 < value < 1.0"}, {IDC_LSTOL, "0.1", "0.01 < value"},
        {IDC_RTOLB, "0.1", "> 2.0"}, {IDC_TDV, "0.1", "ERROR"}
    };
    const std::vector<OrderStep> transientSteps = {
        {IDC_KSTEP, "3", "> 0"}, {IDC_MAXITER, "3", "> 0"}, {IDC_MAXDIV, "3", "> 0"},
        {IDC_MAXUBIS, "3", "> 0"}, {IDC_MAXLS, "3", ">= 0"}, {IDC_MAXBIS, "3", "> 0"},
        {IDC_ADJUST, "3", ">= 0"}, {IDC_MSTEP, "30", "10 <= value <= 200"},
        {IDC_TDG, "5", "valid node"}, {IDC_DISPLACEMENT_TOL, "0.1", "> 0"},
        {IDC_LOAD_TOL, "0.1", "> 0"}, {IDC_WORK_TOL, "0.1", "> 0"},
        {IDC_FSTRESS, "0.1", "0.0 < value < 1.0"}, {IDC_LSTOL, "0.1", "0.01 < value"},
        {IDC_RB, "0.5", "0.0 <= value <= 1.0"}, {IDC_MAXR, "4", "1.0 < value < 32.0"},
        {IDC_UTOL, "0.5", "0.001 < value"}, {IDC_RTOLB, "3", "> 2.0"}, {IDC_TDV, "0.1", "ERROR"}
    };
    // clang-format on
    for (Variant v : {Static, Transient}) {
        SCOPED_TRACE(variantName(v));
        Dlg* d = open(v);
        if (v == Static) {
            toggle(d, IDC_CHECK_WORK); // all three tolerances checked
        } else {
            choose(d, IDC_METHOD, 0);
            toggle(d, IDC_CHECK_MAXITER);
            toggle(d, IDC_CHECK_LOAD);
        }
        for (QLineEdit* e : d->findChildren<QLineEdit*>())
            e->setText(QStringLiteral("-1"));
        set(d, IDC_TDV, QStringLiteral("x"));
        for (const OrderStep& s : v == Static ? staticSteps : transientSteps) {
            SCOPED_TRACE(testing::Message() << "field " << s.field);
            host.view->ClearBubbleRecord();
            pressOk(d);
            ASSERT_EQ(host.view->GetBubbleCount(), 1);
            const QString msg = host.view->GetLastBubbleText();
            EXPECT_TRUE(msg.startsWith(text(d, labelControlOf(s.field)) + " - \n")) << lastBubble();
            EXPECT_TRUE(msg.contains(QString::fromLatin1(s.marker))) << lastBubble();
            set(d, s.field, QString::fromLatin1(s.fix));
        }
        host.view->ClearBubbleRecord();
        pressOk(d);
        EXPECT_EQ(host.view->GetBubbleCount(), 0) << lastBubble();
        delete d;
    }
}

TEST_F(NonlinearParametersDlgTest, transientAutoMethodSkipsStepCountAndSteppingFields)
{
    NL* s = setup(Transient);
    Dlg* d = open(Transient);
    choose(d, IDC_METHOD, 2); // AUTO
    for (int id : {IDC_KSTEP, IDC_ADJUST, IDC_MSTEP, IDC_RB})
        set(d, id, QStringLiteral("-1"));
    pressOk(d);
    EXPECT_EQ(host.view->GetBubbleCount(), 0) << lastBubble();
    EXPECT_EQ(s->m_methodIndex, 2);
    EXPECT_TRUE(IsMissingValue(s->m_integers[IntStiffnessUpdateSteps]));
    EXPECT_TRUE(IsMissingValue(s->m_integers[IntDominantPeriodSteps]));
    EXPECT_TRUE(IsMissingValue(s->m_reals[RealSteppingBounds]));
}

// ---------------------------------------------------------------------------------------------
// Writing back and filling in.

TEST_F(NonlinearParametersDlgTest, writesTheWholeSetupOnSuccess)
{
    NL* s = setup(Static);
    QPointer<Dlg> d = open(Static);
    // clang-format off
    const std::pair<int, const char*> entries[] = {
        {IDC_KSTEP, "11"}, {IDC_MAXITER, "12"}, {IDC_MAXDIV, "13"}, {IDC_MAXUBIS, "14"},
        {IDC_MAXLS, "0"}, {IDC_MAXBIS, "16"}, {IDC_TDG, "17"}, {IDC_LOAD_TOL, "0.125"},
        {IDC_FSTRESS, "0.3"}, {IDC_INITIAL_INCREMENT, "0.4"}, {IDC_MIN_INCREMENT, "0.05"},
        {IDC_MAX_INCREMENT, "0.6"}, {IDC_LSTOL, "0.7"}, {IDC_RTOLB, "45"}, {IDC_TDV, "-0.02"},
        {IDC_DISPLACEMENT_TOL, "0.5"}};
    // clang-format on
    for (const auto& [id, t] : entries)
        set(d, id, QString::fromLatin1(t));
    choose(d, IDC_METHOD, 3);
    choose(d, IDC_TDC, 8);
    toggle(d, IDC_CHECK_DISPLACEMENT); // off: its value goes
    pressOk(d);
    ASSERT_EQ(host.view->GetBubbleCount(), 0) << lastBubble();
    EXPECT_EQ(s->m_methodIndex, 3);
    EXPECT_EQ(s->m_componentIndex, 8);
    EXPECT_EQ(s->m_convergence, (std::array<bool, 3>{false, true, false}));
    EXPECT_EQ(s->m_integers, (std::array<int, NL::IntegerCount>{
                                 11, 12, 13, 14, 0, 16, MissingInteger, MissingInteger, 17}));
    EXPECT_EQ(s->m_reals, (std::array<float, NL::RealCount>{
                              MissingFloat, 0.125f, MissingFloat, 0.3f, 0.4f, 0.05f, 0.6f, 0.7f,
                              MissingFloat, MissingFloat, MissingFloat, 45.0f, -0.02f}));
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(d.isNull()) << "a modeless dialog goes away after OK";
}

TEST_F(NonlinearParametersDlgTest, fillsFieldsFromTheSetup)
{
    NL* s = setup(Static);
    s->m_reals[RealMaxRotation] = 1234567.0f;
    s->m_reals[RealDisplacementTolerance] = 1e-4f;
    s->m_integers[IntMaxBisections] = MissingInteger;
    s->m_componentIndex = 42; // out of range: shown blank
    Dlg* d = open(Static);
    EXPECT_EQ(text(d, IDC_RTOLB), QStringLiteral("1.23457e+06"));
    EXPECT_EQ(text(d, IDC_DISPLACEMENT_TOL), QStringLiteral("0.0001"));
    EXPECT_EQ(text(d, IDC_MAXBIS), QString());
    EXPECT_EQ(text(d, IDC_KSTEP), QStringLiteral("5"));
    EXPECT_EQ(text(d, IDC_TDG), QStringLiteral("81"));
    EXPECT_EQ(KwControl<QComboBox>(d, IDC_METHOD)->currentText(), QStringLiteral("AUTO"));
    EXPECT_EQ(KwControl<QComboBox>(d, IDC_TDC)->currentIndex(), 0);
}

// ---------------------------------------------------------------------------------------------
// What each variant shows, and the enabling rules.

QStringList itemsOf(const QComboBox* combo)
{
    QStringList out;
    for (int i = 0; i < combo->count(); ++i)
        out << combo->itemText(i);
    return out;
}

TEST_F(NonlinearParametersDlgTest, showsOnlyTheControlsOfItsVariant)
{
    for (Variant v : {Static, Transient}) {
        SCOPED_TRACE(variantName(v));
        Dlg* d = open(v);
        const bool transient = v == Transient;
        EXPECT_EQ(d->IsTransient(), transient);
        for (int id : {IDC_MSTEP, IDC_ADJUST, IDC_RB, IDC_MAXR, IDC_UTOL, IDC_GROUP_DYNAMIC})
            EXPECT_EQ(KwFindControl(d, id)->isVisibleTo(d), transient) << id;
        for (int id : {IDC_INITIAL_INCREMENT, IDC_MIN_INCREMENT, IDC_MAX_INCREMENT})
            for (int c : {id, id + Dlg::kLabelIdOffset})
                EXPECT_EQ(KwFindControl(d, c)->isVisibleTo(d), !transient) << c;
        EXPECT_EQ(itemsOf(KwControl<QComboBox>(d, IDC_METHOD)),
                  (transient ? QStringList{"", "ADAPT", "AUTO", "TSTEP"}
                             : QStringList{"", "AUTO", "ITER", "SEMI"}));
        EXPECT_EQ(itemsOf(KwControl<QComboBox>(d, IDC_TDC)),
                  (QStringList{"", "TX", "TY", "TZ", "RX", "RY", "RZ", "MAXT", "MAXR"}));
        EXPECT_EQ(d->windowTitle(), transient ? "Nonlinear transient parameters - 'Impact'"
                                              : "Nonlinear static parameters - 'Loading'");
        EXPECT_EQ(text(d, IDC_KSTEP + Dlg::kLabelIdOffset),
                  transient ? "Time steps before stiffness update:"
                            : "Iterations before stiffness update:");
        delete d;
    }
}

TEST_F(NonlinearParametersDlgTest, methodDecidesWhichStepFieldsAreEnabled)
{
    const struct { Variant v; int method; bool kstep, stepping; } cases[] = {
        {Transient, 0, true, true},  {Transient, 1, true, true}, {Transient, 2, false, false},
        {Transient, 3, true, false}, {Static, 0, true, false},   {Static, 1, true, false},
        {Static, 2, true, false},    {Static, 3, true, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << variantName(c.v) << " method " << c.method);
        Dlg* d = open(c.v);
        choose(d, IDC_METHOD, c.method == 0 ? 1 : 0); // make sure the selection changes
        choose(d, IDC_METHOD, c.method);
        EXPECT_EQ(edit(d, IDC_KSTEP)->isEnabled(), c.kstep);
        if (c.v == Transient) {
            for (int id : {IDC_MSTEP, IDC_ADJUST, IDC_RB})
                EXPECT_EQ(edit(d, id)->isEnabled(), c.stepping) << id;
            for (int id : {IDC_MAXR, IDC_UTOL})
                EXPECT_TRUE(edit(d, id)->isEnabled()) << id;
        }
        delete d;
    }
    // A setup stored with AUTO opens with the step fields already off.
    setup(Transient)->m_methodIndex = 2;
    Dlg* d = open(Transient);
    EXPECT_FALSE(edit(d, IDC_KSTEP)->isEnabled());
    EXPECT_FALSE(edit(d, IDC_MSTEP)->isEnabled());
}

TEST_F(NonlinearParametersDlgTest, convergenceBoxesEnableTheirTolerances)
{
    Dlg* d = open(Transient); // displacement on, load off, work on
    const std::pair<int, int> pairs[] = {{IDC_CHECK_DISPLACEMENT, IDC_DISPLACEMENT_TOL},
                                         {IDC_CHECK_LOAD, IDC_LOAD_TOL},
                                         {IDC_CHECK_WORK, IDC_WORK_TOL}};
    for (const auto& [check, tol] : pairs) {
        auto* box = KwControl<QCheckBox>(d, check);
        const bool on = box->isChecked();
        EXPECT_EQ(edit(d, tol)->isEnabled(), on) << check;
        box->click();
        EXPECT_EQ(edit(d, tol)->isEnabled(), !on) << check;
    }
}

TEST_F(NonlinearParametersDlgTest, maximumIterationsBoxSwitchesBetweenValueAndAuto)
{
    NL* s = setup(Transient); // maximum iterations missing: AUTO
    QPointer<Dlg> d = open(Transient);
    QLineEdit* e = edit(d, IDC_MAXITER);
    EXPECT_FALSE(KwControl<QCheckBox>(d, IDC_CHECK_MAXITER)->isChecked());
    EXPECT_FALSE(e->isEnabled());
    EXPECT_EQ(e->text(), QStringLiteral("AUTO"));
    toggle(d, IDC_CHECK_MAXITER);
    EXPECT_TRUE(e->isEnabled());
    EXPECT_EQ(e->text(), QString());
    e->setText(QStringLiteral("0")); // would fail, but is not read once cleared
    toggle(d, IDC_CHECK_MAXITER);
    EXPECT_FALSE(e->isEnabled());
    EXPECT_EQ(e->text(), QStringLiteral("AUTO"));
    s->m_integers[IntMaxIterations] = 99;
    pressOk(d);
    EXPECT_EQ(host.view->GetBubbleCount(), 0) << lastBubble();
    EXPECT_TRUE(IsMissingValue(s->m_integers[IntMaxIterations]));

    Dlg* st = open(Static); // 25 stored
    EXPECT_TRUE(KwControl<QCheckBox>(st, IDC_CHECK_MAXITER)->isChecked());
    EXPECT_TRUE(edit(st, IDC_MAXITER)->isEnabled());
    EXPECT_EQ(edit(st, IDC_MAXITER)->text(), QStringLiteral("25"));
}

// ---------------------------------------------------------------------------------------------
// Keys, buttons, help, hosts.

TEST_F(NonlinearParametersDlgTest, enterDoesNotCloseButEscapeCancels)
{
    NL* s = setup(Static);
    const SetupState before = stateOf(s);
    QPointer<Dlg> d = open(Static);
    set(d, IDC_MAXDIV, QStringLiteral("9"));
    for (QWidget* target : {static_cast<QWidget*>(edit(d, IDC_MAXDIV)),
                            static_cast<QWidget*>(KwFindControl(d, IDC_BUTTON_OK)),
                            static_cast<QWidget*>(d.data())}) {
        target->setFocus();
        QTest::keyClick(target, Qt::Key_Return);
        QTest::keyClick(target, Qt::Key_Enter);
        ASSERT_TRUE(d && d->isVisible());
    }
    EXPECT_EQ(stateOf(s), before);
    QTest::keyClick(d.data(), Qt::Key_Escape);
    EXPECT_FALSE(d && d->isVisible());
    EXPECT_EQ(stateOf(s), before);
}

TEST_F(NonlinearParametersDlgTest, helpOpensTheVariantsTopic)
{
    for (Variant v : {Static, Transient}) {
        Dlg* d = open(v);
        KwControl<QPushButton>(d, IDC_HELP_BUTTON)->click();
        EXPECT_EQ(host.addin->GetLastHelpTopic(), v == Static ? "NLPARM" : "TSTEPNL");
        delete d;
    }
    TheApplication = nullptr; // a process without an add-in: nothing happens
    KwControl<QPushButton>(open(Static), IDC_HELP_BUTTON)->click();
    TheApplication = host.addin.get();
}

TEST_F(NonlinearParametersDlgTest, runsModallyForAHost)
{
    NL* s = setup(Static);
    Dlg dlg(s);
    dlg.SetFMView(host.view.get());
    int bubblesWhileOpen = -1;
    QTimer::singleShot(0, &dlg, [&] {
        set(&dlg, IDC_MAXDIV, QStringLiteral("0"));
        pressOk(&dlg); // refused: stays open
        bubblesWhileOpen = dlg.isVisible() ? host.view->GetBubbleCount() : -1;
        set(&dlg, IDC_MAXDIV, QStringLiteral("8"));
        pressOk(&dlg);
    });
    EXPECT_EQ(dlg.DoModal(), KwMB::IDOK);
    EXPECT_EQ(bubblesWhileOpen, 1);
    EXPECT_EQ(s->m_integers[IntMaxDivergence], 8);
}

TEST_F(NonlinearParametersDlgTest, withoutAViewTheMessageComesInABox)
{
    NL* s = setup(Static);
    for (QWidget* parent :
         {static_cast<QWidget*>(nullptr), static_cast<QWidget*>(host.view.get())}) {
        Dlg* d = new Dlg(s, parent); // parented to the view, it shows its messages there
        d->Create();
        d->show();
        set(d, IDC_MAXDIV, QStringLiteral("0"));
        const auto rec = kwtest::AnswerModals([&] { pressOk(d); });
        EXPECT_EQ(host.view->GetBubbleCount(), parent ? 1 : 0);
        ASSERT_EQ(rec.boxTexts.size(), parent ? 0 : 1);
        if (!parent) {
            EXPECT_TRUE(rec.boxTexts.first().startsWith(
                QStringLiteral("Maximum divergence conditions per iteration: - \n")));
        }
        delete d;
    }
}

TEST_F(NonlinearParametersDlgTest, aSetupOutsideAnyAnalysisHasNoValidNode)
{
    NL loose(9, QStringLiteral("Loose"));
    Dlg* d = new Dlg(&loose);
    d->SetFMView(host.view.get());
    d->Create();
    set(d, IDC_TDG, QStringLiteral("1"));
    pressOk(d);
    EXPECT_TRUE(host.view->GetLastBubbleText().endsWith(QStringLiteral("valid node ID.")));
    EXPECT_TRUE(IsMissingValue(loose.m_integers[IntTerminationNode]));
    delete d;

    Dlg none(nullptr); // nothing to edit: nothing breaks, nothing is written
    none.Create();
    EXPECT_TRUE(none.GetCloseAtOnce());
    EXPECT_TRUE(none.CheckParameters());
}

// ---------------------------------------------------------------------------------------------
// Languages.

TEST_F(NonlinearParametersDlgTest, everyVisibleCaptionIsTranslatedInBothVariants)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps")));
    for (Variant v : {Static, Transient}) {
        Dlg* d = open(v);
        EXPECT_EQ(kwtest::UntranslatedCaptions(d), QStringList()) << variantName(v);
        delete d;
    }
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST_F(NonlinearParametersDlgTest, stepCountLabelsUseTheCrossedKeys)
{
    QTemporaryDir dir;
    QFile f(dir.filePath(QStringLiteral("marks.xml")));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(R"(<KwLanguage code="xx"><Texts kind="PropPage">
        <Section name="NonlinearParametersDlg">
          <Text key="NLTransientKStep">key T</Text><Text key="NLStaticKStep">key S</Text>
        </Section></Texts></KwLanguage>)");
    f.close();
    ASSERT_TRUE(CKwXMLUtils::LoadLanguageFile(f.fileName()));
    EXPECT_EQ(text(open(Static), IDC_KSTEP + Dlg::kLabelIdOffset), QStringLiteral("key T:"));
    EXPECT_EQ(text(open(Transient), IDC_KSTEP + Dlg::kLabelIdOffset), QStringLiteral("key S:"));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST_F(NonlinearParametersDlgTest, speaksGerman)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    Dlg* d = open(Transient);
    EXPECT_EQ(d->windowTitle(), QStringLiteral("Nichtlineare transiente Parameter - 'Impact'"));
    EXPECT_EQ(text(d, IDC_KSTEP + Dlg::kLabelIdOffset),
              QStringLiteral("Zeitschritte vor Steifigkeitsaktualisierung:"));
    set(d, IDC_MSTEP, QStringLiteral("5"));
    pressOk(d);
    EXPECT_EQ(host.view->GetLastBubbleText(),
              QStringLiteral("Schritte zur Bestimmung der dominanten Periode: - \n 'Ungültige "
                             "Eingabe: Der eingegebene Wert muss sein: 10 <= value <= 200 ' "));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

// ---------------------------------------------------------------------------------------------
// Through the launch entry.

Dlg* openNonlinearDialog()
{
    Dlg* found = nullptr;
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* d = qobject_cast<Dlg*>(w))
            found = d;
    return found;
}

TEST_F(NonlinearParametersDlgTest, kind53OpensTheVariantOfTheSetupModeless)
{
    for (Variant v : {Static, Transient}) {
        SCOPED_TRACE(variantName(v));
        DialogLaunchRequest r = host.Request(53);
        r.object = static_cast<CKwFEBase*>(setup(v));
        EXPECT_EQ(kwtest::AnswerModals([&] { LaunchDialog(&r); }).count(), 0);
        Dlg* d = openNonlinearDialog();
        ASSERT_NE(d, nullptr);
        EXPECT_TRUE(d->isVisible());
        EXPECT_FALSE(d->IsModalDialog());
        EXPECT_EQ(d->GetLaunchKind(), 53u);
        EXPECT_EQ(d->IsTransient(), v == Transient);
        EXPECT_EQ(d->GetFMView(), host.view.get()); // messages reach the request's view
        delete d;
    }
}

TEST_F(NonlinearParametersDlgTest, kind53WithoutASetupOpensNothingAndCanBeCreatedHidden)
{
    CKwSubCase* subcase = setup(Static)->GetSubCase();
    for (CKwFEBase* object : {static_cast<CKwFEBase*>(nullptr), static_cast<CKwFEBase*>(subcase)}) {
        DialogLaunchRequest r = host.Request(53);
        r.object = object;
        EXPECT_EQ(kwtest::AnswerModals([&] { LaunchDialog(&r); }).count(), 0);
        EXPECT_EQ(openNonlinearDialog(), nullptr);
    }
    DialogLaunchRequest r = host.Request(53);
    r.object = static_cast<CKwFEBase*>(setup(Transient));
    r.createHidden = 1;
    LaunchDialog(&r);
    ASSERT_NE(openNonlinearDialog(), nullptr);
    EXPECT_FALSE(openNonlinearDialog()->isVisible());
}

} // namespace
