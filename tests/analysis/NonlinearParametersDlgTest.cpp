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

namespace {

using Dlg = CKwNonlinearParametersDlg;
using NL = CKwNonlinearSetup;

enum Variant
{
    Static,
    Transient
};
const char* variantName(Variant v)
{
    return v == Static ? "static" : "transient";
}

struct SetupState
{
    int method, component;
    std::array<bool, 3> convergence;
    std::array<int, NL::IntegerCount> integers;
    std::array<float, NL::RealCount> reals;
    bool operator==(const SetupState&) const = default;
};

SetupState stateOf(const NL* s)
{
    return {s->m_methodIndex, s->m_componentIndex, s->m_convergence, s->m_integers, s->m_reals};
}

void restore(NL* s, const SetupState& st)
{
    s->m_methodIndex = st.method;
    s->m_componentIndex = st.component;
    s->m_convergence = st.convergence;
    s->m_integers = st.integers;
    s->m_reals = st.reals;
}

// Where each field is kept in the setup: true for the reals, and the slot.
struct Slot
{
    bool real;
    int index;
};
Slot slotOf(int field)
{
    switch (field) {
    case Dlg::IDC_KSTEP:
        return {false, NL::IntStiffnessUpdateSteps};
    case Dlg::IDC_MAXITER:
        return {false, NL::IntMaxIterations};
    case Dlg::IDC_MAXDIV:
        return {false, NL::IntMaxDivergence};
    case Dlg::IDC_MAXUBIS:
        return {false, NL::IntMaxUnbisecting};
    case Dlg::IDC_MAXLS:
        return {false, NL::IntMaxLineSearches};
    case Dlg::IDC_MAXBIS:
        return {false, NL::IntMaxBisections};
    case Dlg::IDC_ADJUST:
        return {false, NL::IntSkipFactor};
    case Dlg::IDC_MSTEP:
        return {false, NL::IntDominantPeriodSteps};
    case Dlg::IDC_TDG:
        return {false, NL::IntTerminationNode};
    case Dlg::IDC_DISPLACEMENT_TOL:
        return {true, NL::RealDisplacementTolerance};
    case Dlg::IDC_LOAD_TOL:
        return {true, NL::RealLoadTolerance};
    case Dlg::IDC_WORK_TOL:
        return {true, NL::RealWorkTolerance};
    case Dlg::IDC_FSTRESS:
        return {true, NL::RealFractionOfStress};
    case Dlg::IDC_INITIAL_INCREMENT:
        return {true, NL::RealInitialIncrement};
    case Dlg::IDC_MIN_INCREMENT:
        return {true, NL::RealMinIncrement};
    case Dlg::IDC_MAX_INCREMENT:
        return {true, NL::RealMaxIncrement};
    case Dlg::IDC_LSTOL:
        return {true, NL::RealLineSearchTolerance};
    case Dlg::IDC_RB:
        return {true, NL::RealSteppingBounds};
    case Dlg::IDC_MAXR:
        return {true, NL::RealMaxTimeRatio};
    case Dlg::IDC_UTOL:
        return {true, NL::RealFilterTolerance};
    case Dlg::IDC_RTOLB:
        return {true, NL::RealMaxRotation};
    case Dlg::IDC_TDV:
        return {true, NL::RealTerminationValue};
    }
    ADD_FAILURE() << "no slot for field " << field;
    return {false, 0};
}

// The label control of a field: check boxes label their own tolerance and count.
int labelControlOf(int field)
{
    switch (field) {
    case Dlg::IDC_MAXITER:
        return Dlg::IDC_CHECK_MAXITER;
    case Dlg::IDC_DISPLACEMENT_TOL:
        return Dlg::IDC_CHECK_DISPLACEMENT;
    case Dlg::IDC_LOAD_TOL:
        return Dlg::IDC_CHECK_LOAD;
    case Dlg::IDC_WORK_TOL:
        return Dlg::IDC_CHECK_WORK;
    case Dlg::IDC_TDG:
        return Dlg::IDC_MSTEP + Dlg::kLabelIdOffset;
    default:
        return field + Dlg::kLabelIdOffset;
    }
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
    Dlg* open(Variant v, QWidget* parent = nullptr)
    {
        auto* d = new Dlg(setup(v), parent);
        d->SetFMView(host.view.get());
        d->Create();
        d->show();
        return d;
    }

    static QLineEdit* edit(Dlg* d, int id) { return KwControl<QLineEdit>(d, id); }
    static void set(Dlg* d, int id, const QString& text) { edit(d, id)->setText(text); }
    static QString text(Dlg* d, int id) { return KwGetControlText(d, id); }
    static void pressOk(Dlg* d) { KwControl<QPushButton>(d, Dlg::IDC_BUTTON_OK)->click(); }

    kwtest::Host host;
};

// ---------------------------------------------------------------------------------------------
// Bounds: both sides of every bound, in the variant where the field is checked, plus fields
// the other variant never checks whatever they hold.

constexpr double kMissing = -1.0e30;

struct BoundCase
{
    Variant variant;
    int field;
    const char* text;
    bool accepted;
    double stored; // what the setup holds afterwards when accepted
};

const BoundCase kBoundCases[] = {
    {Static, Dlg::IDC_KSTEP, "1", true, 1},
    {Static, Dlg::IDC_KSTEP, "0", false, 0},
    {Transient, Dlg::IDC_KSTEP, "1", true, 1},
    {Transient, Dlg::IDC_KSTEP, "0", false, 0},
    {Static, Dlg::IDC_MAXITER, "1", true, 1},
    {Static, Dlg::IDC_MAXITER, "0", false, 0},
    {Static, Dlg::IDC_MAXDIV, "1", true, 1},
    {Transient, Dlg::IDC_MAXDIV, "0", false, 0},
    {Static, Dlg::IDC_MAXUBIS, "1", true, 1},
    {Transient, Dlg::IDC_MAXUBIS, "0", false, 0},
    {Static, Dlg::IDC_MAXLS, "0", true, 0},
    {Transient, Dlg::IDC_MAXLS, "-1", false, 0},
    {Static, Dlg::IDC_MAXBIS, "1", true, 1},
    {Transient, Dlg::IDC_MAXBIS, "0", false, 0},
    {Transient, Dlg::IDC_ADJUST, "0", true, 0},
    {Transient, Dlg::IDC_ADJUST, "-1", false, 0},
    {Transient, Dlg::IDC_MSTEP, "9", false, 0},
    {Transient, Dlg::IDC_MSTEP, "10", true, 10},
    {Transient, Dlg::IDC_MSTEP, "200", true, 200},
    {Transient, Dlg::IDC_MSTEP, "201", false, 0},
    {Transient, Dlg::IDC_MSTEP, "", true, kMissing},
    {Static, Dlg::IDC_TDG, "1", true, 1},
    {Static, Dlg::IDC_TDG, "81", true, 81},
    {Static, Dlg::IDC_TDG, "82", false, 0},
    {Transient, Dlg::IDC_TDG, "0", false, 0},
    {Static, Dlg::IDC_TDG, "", true, kMissing},
    {Static, Dlg::IDC_DISPLACEMENT_TOL, "1e-9", true, 1e-9},
    {Static, Dlg::IDC_DISPLACEMENT_TOL, "0", false, 0},
    {Static, Dlg::IDC_LOAD_TOL, "-0.001", false, 0},
    {Transient, Dlg::IDC_WORK_TOL, "0", false, 0},
    {Transient, Dlg::IDC_WORK_TOL, "2.5", true, 2.5},
    {Static, Dlg::IDC_FSTRESS, "0", false, 0},
    {Static, Dlg::IDC_FSTRESS, "0.000001", true, 0.000001},
    {Transient, Dlg::IDC_FSTRESS, "0.999", true, 0.999},
    {Transient, Dlg::IDC_FSTRESS, "1", false, 0},
    {Static, Dlg::IDC_INITIAL_INCREMENT, "0", false, 0},
    {Static, Dlg::IDC_INITIAL_INCREMENT, "0.25", true, 0.25},
    {Static, Dlg::IDC_MIN_INCREMENT, "1", false, 0},
    {Static, Dlg::IDC_MIN_INCREMENT, "0.999", true, 0.999},
    {Static, Dlg::IDC_MAX_INCREMENT, "1.0", false, 0},
    {Static, Dlg::IDC_MAX_INCREMENT, "0.75", true, 0.75},
    {Static, Dlg::IDC_LSTOL, "0.01", false, 0},
    {Static, Dlg::IDC_LSTOL, "0.0101", true, 0.0101},
    {Transient, Dlg::IDC_LSTOL, "0.9", true, 0.9},
    {Transient, Dlg::IDC_LSTOL, "0.9001", false, 0},
    {Transient, Dlg::IDC_RB, "0.05", false, 0}, // the message says 0.0; 0.1 is enforced
    {Transient, Dlg::IDC_RB, "0.0999", false, 0},
    {Transient, Dlg::IDC_RB, "0.1", true, 0.1},
    {Transient, Dlg::IDC_RB, "1", true, 1},
    {Transient, Dlg::IDC_RB, "1.001", false, 0},
    {Transient, Dlg::IDC_MAXR, "0.999", false, 0},
    {Transient, Dlg::IDC_MAXR, "1", true, 1}, // the message says "1.0 <"; 1.0 passes
    {Transient, Dlg::IDC_MAXR, "32", true, 32},
    {Transient, Dlg::IDC_MAXR, "32.01", false, 0},
    {Transient, Dlg::IDC_UTOL, "0.001", false, 0},
    {Transient, Dlg::IDC_UTOL, "0.0011", true, 0.0011},
    {Transient, Dlg::IDC_UTOL, "1", true, 1},
    {Transient, Dlg::IDC_UTOL, "1.0001", false, 0},
    {Static, Dlg::IDC_RTOLB, "0", false, 0},
    {Static, Dlg::IDC_RTOLB, "0.5", true, 0.5}, // the message says "> 2.0"; static needs > 0
    {Transient, Dlg::IDC_RTOLB, "2", false, 0},
    {Transient, Dlg::IDC_RTOLB, "2.001", true, 2.001},
    {Static, Dlg::IDC_TDV, "-5", true, -5},
    {Static, Dlg::IDC_TDV, "x", false, 0},
    // Plain number forms, and boxes holding only blanks, which count as empty.
    {Static, Dlg::IDC_MAXDIV, "+7", true, 7},
    {Static, Dlg::IDC_MAXDIV, "007", true, 7},
    {Static, Dlg::IDC_MAXDIV, "   ", true, kMissing},
    {Static, Dlg::IDC_FSTRESS, ".5", true, 0.5},
    {Static, Dlg::IDC_FSTRESS, "5E-1", true, 0.5},
    {Static, Dlg::IDC_TDV, "-1e3", true, -1000},
    {Static, Dlg::IDC_TDV, "\t", true, kMissing},
    // Never checked in the other variant, and then not kept.
    {Static, Dlg::IDC_MSTEP, "5", true, kMissing},
    {Static, Dlg::IDC_ADJUST, "-3", true, kMissing},
    {Static, Dlg::IDC_RB, "junk", true, kMissing},
    {Static, Dlg::IDC_MAXR, "0", true, kMissing},
    {Static, Dlg::IDC_UTOL, "5", true, kMissing},
    {Transient, Dlg::IDC_INITIAL_INCREMENT, "7", true, kMissing},
    {Transient, Dlg::IDC_MIN_INCREMENT, "junk", true, kMissing},
    {Transient, Dlg::IDC_MAX_INCREMENT, "-1", true, kMissing},
    // The transient setup names no node, so its termination value is never read.
    {Transient, Dlg::IDC_TDV, "junk", true, kMissing},
};

TEST_F(NonlinearParametersDlgTest, checksBothSidesOfEveryBound)
{
    for (const BoundCase& c : kBoundCases) {
        SCOPED_TRACE(testing::Message() << variantName(c.variant) << " field " << c.field
                                        << " text \"" << c.text << "\"");
        NL* s = setup(c.variant);
        const SetupState before = stateOf(s);
        QPointer<Dlg> d = open(c.variant);
        set(d, c.field, QString::fromLatin1(c.text));
        host.view->ClearBubbleRecord();
        pressOk(d);
        const Slot slot = slotOf(c.field);
        if (c.accepted) {
            EXPECT_EQ(host.view->GetBubbleCount(), 0)
                << host.view->GetLastBubbleText().toStdString();
            EXPECT_FALSE(d && d->isVisible());
            if (c.stored == kMissing)
                EXPECT_TRUE(slot.real ? IsMissingValue(s->m_reals[slot.index])
                                      : IsMissingValue(s->m_integers[slot.index]));
            else if (slot.real)
                EXPECT_EQ(s->m_reals[slot.index], static_cast<float>(c.stored));
            else
                EXPECT_EQ(s->m_integers[slot.index], static_cast<int>(c.stored));
        } else {
            EXPECT_EQ(host.view->GetBubbleCount(), 1);
            EXPECT_EQ(host.view->GetLastBubbleKind(), CFMView::BubbleError);
            ASSERT_TRUE(d);
            EXPECT_TRUE(d->isVisible());
            EXPECT_TRUE(host.view->GetLastBubbleText().startsWith(text(d, labelControlOf(c.field)) +
                                                                  QStringLiteral(" - \n")))
                << host.view->GetLastBubbleText().toStdString();
            EXPECT_EQ(stateOf(s), before);
        }
        delete d.data();
        restore(s, before);
    }
}

// ---------------------------------------------------------------------------------------------
// Exact messages, one per format and wording.

struct MessageCase
{
    Variant variant;
    int field;
    const char* text;
    const char* message;
};

const MessageCase kMessageCases[] = {
    {Static, Dlg::IDC_KSTEP, "0",
     "Iterations before stiffness update: - \n 'Invalid Input. The entered value should be > 0'"},
    {Transient, Dlg::IDC_KSTEP, "0",
     "Time steps before stiffness update: - \n 'Invalid Input. The entered value should be > 0'"},
    {Static, Dlg::IDC_MAXITER, "0",
     "Maximum iterations for an increment: - \n 'Invalid Input. The entered value should be > "
     "0'"},
    {Static, Dlg::IDC_MAXLS, "-1",
     "Maximum line searches for an iteration: - \n 'Invalid Input: The entered value should be "
     ">= 0'"},
    {Transient, Dlg::IDC_ADJUST, "-1",
     "Skip factor for time step adjustment: - \n 'Invalid Input: The entered value should be >= "
     "0'"},
    {Transient, Dlg::IDC_MSTEP, "201",
     "Steps to obtain dominant period: - \n 'Invalid Input: The entered value should be: 10 <= "
     "value <= 200 ' "},
    {Static, Dlg::IDC_TDG, "82",
     "Steps to obtain dominant period: - \n Please enter a valid node ID."},
    {Static, Dlg::IDC_DISPLACEMENT_TOL, "0",
     "Displacement - \n 'Invalid Input. The entered value should be > 0'"},
    {Transient, Dlg::IDC_WORK_TOL, "0",
     "Work - \n 'Invalid Input. The entered value should be > 0'"},
    {Static, Dlg::IDC_FSTRESS, "1",
     "Fraction of effective stress: - \n 'Invalid Input: The entered value should be: 0.0 < value "
     "< 1.0 '"},
    {Static, Dlg::IDC_MIN_INCREMENT, "0",
     "Minimum load increment: - \n 'Invalid Input: The entered value should be: 0.0 < value < "
     "1.0 '"},
    {Static, Dlg::IDC_LSTOL, "0.01",
     "Line search tolerance: - \n 'Invalid Input: The entered value should be: 0.01 < value <= "
     "0.9 '"},
    {Transient, Dlg::IDC_RB, "0.05",
     "Bounds for stepping function: - \n 'Invalid Input: The entered value should be: 0.0 <= value "
     "<= 1.0 '"},
    {Transient, Dlg::IDC_MAXR, "33",
     "Maximum ratio of incremental time to time step: - \n 'Invalid Input: The entered value "
     "should be: 1.0 < value < 32.0 '"},
    {Transient, Dlg::IDC_UTOL, "0.001",
     "Tolerance on displacement to filter time step: - \n 'Invalid Input: The entered value should "
     "be: 0.001 < value <= 1.0 '"},
    {Static, Dlg::IDC_RTOLB, "0",
     "Maximum incremental rotation (Degree): - \n 'Invalid Input: The entered value should be: > "
     "2.0 '"},
    {Transient, Dlg::IDC_RTOLB, "1",
     "Maximum incremental rotation (Degree): - \n 'Invalid Input: The entered value should be: > "
     "2.0 '"},
    {Static, Dlg::IDC_TDV, "1.2.3", "Terminate on displacement value: - \n 'ERROR'"},
};

TEST_F(NonlinearParametersDlgTest, showsTheExactMessageOfEachFormat)
{
    for (const MessageCase& c : kMessageCases) {
        SCOPED_TRACE(testing::Message() << variantName(c.variant) << " field " << c.field);
        Dlg* d = open(c.variant);
        set(d, c.field, QString::fromLatin1(c.text));
        pressOk(d);
        EXPECT_EQ(host.view->GetLastBubbleText().toStdString(), std::string(c.message));
        delete d;
    }
}

// ---------------------------------------------------------------------------------------------
// Bad input of every sort, on an integer, a real and the node field.

struct BadInputCase
{
    int field;
    const char* text;
};

const BadInputCase kBadInput[] = {
    {Dlg::IDC_MAXDIV, "abc"},
    {Dlg::IDC_MAXDIV, "5x"},
    {Dlg::IDC_MAXDIV, "x5"},
    {Dlg::IDC_MAXDIV, "2.5"},
    {Dlg::IDC_MAXDIV, "1e3"},
    {Dlg::IDC_MAXDIV, "2147483648"},
    {Dlg::IDC_MAXDIV, "-2147483649"},
    {Dlg::IDC_MAXDIV, "99999999999999999999"},
    {Dlg::IDC_MAXDIV, "nan"},
    {Dlg::IDC_MAXDIV, "inf"},
    {Dlg::IDC_MAXDIV, " 5"},
    {Dlg::IDC_MAXDIV, "5 "},
    {Dlg::IDC_MAXDIV, "\t5"},
    {Dlg::IDC_MAXDIV, "0x10"},
    {Dlg::IDC_MAXDIV, "+"},
    {Dlg::IDC_MAXDIV, "5,0"},
    {Dlg::IDC_FSTRESS, "abc"},
    {Dlg::IDC_FSTRESS, "0.5x"},
    {Dlg::IDC_FSTRESS, "0.5.1"},
    {Dlg::IDC_FSTRESS, "NaN"},
    {Dlg::IDC_FSTRESS, "nan"},
    {Dlg::IDC_FSTRESS, "inf"},
    {Dlg::IDC_FSTRESS, "-inf"},
    {Dlg::IDC_FSTRESS, "Infinity"},
    {Dlg::IDC_FSTRESS, "1e999"},
    {Dlg::IDC_FSTRESS, " 0.5"},
    {Dlg::IDC_FSTRESS, "0.5 "},
    {Dlg::IDC_FSTRESS, "0,5"},
    {Dlg::IDC_FSTRESS, "."},
    {Dlg::IDC_FSTRESS, "1e"},
    {Dlg::IDC_FSTRESS, "0x0.8p0"},
    {Dlg::IDC_FSTRESS, "1e-50"}, // zero in single precision
    {Dlg::IDC_RTOLB, "1e39"},    // beyond single precision
    {Dlg::IDC_TDG, "999"},
    {Dlg::IDC_TDG, "-3"},
    {Dlg::IDC_TDG, "81.0"},
    {Dlg::IDC_TDG, "n81"},
    {Dlg::IDC_TDG, " 81"},
    {Dlg::IDC_TDG, "4294967377"}, // 81 beyond 32 bits
    {Dlg::IDC_TDV, "nan"},
    {Dlg::IDC_TDV, "-1e30"}, // the missing sentinel itself
    {Dlg::IDC_TDV, "1e39"},
};

TEST_F(NonlinearParametersDlgTest, refusesBadInputAndLeavesTheSetupUntouched)
{
    NL* s = setup(Static);
    const SetupState before = stateOf(s);
    for (const BadInputCase& c : kBadInput) {
        SCOPED_TRACE(testing::Message() << "field " << c.field << " text \"" << c.text << "\"");
        Dlg* d = open(Static);
        // Changes elsewhere in the dialog must not leak into the setup either.
        KwControl<QComboBox>(d, Dlg::IDC_METHOD)->setCurrentIndex(3);
        KwControl<QComboBox>(d, Dlg::IDC_TDC)->setCurrentIndex(8);
        KwControl<QCheckBox>(d, Dlg::IDC_CHECK_WORK)->click();
        set(d, c.field, QString::fromLatin1(c.text));
        host.view->ClearBubbleRecord();
        pressOk(d);
        EXPECT_EQ(host.view->GetBubbleCount(), 1);
        EXPECT_TRUE(host.view->GetLastBubbleText().startsWith(text(d, labelControlOf(c.field))));
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

void checkOrder(Dlg* d, CFMView* view, const std::vector<OrderStep>& steps)
{
    for (QLineEdit* e : d->findChildren<QLineEdit*>())
        e->setText(QStringLiteral("-1"));
    KwControl<QLineEdit>(d, Dlg::IDC_TDV)->setText(QStringLiteral("x"));
    for (const OrderStep& s : steps) {
        SCOPED_TRACE(testing::Message() << "field " << s.field);
        view->ClearBubbleRecord();
        KwControl<QPushButton>(d, Dlg::IDC_BUTTON_OK)->click();
        ASSERT_EQ(view->GetBubbleCount(), 1);
        const QString msg = view->GetLastBubbleText();
        EXPECT_TRUE(msg.startsWith(KwGetControlText(d, labelControlOf(s.field)) + " - \n"))
            << msg.toStdString();
        EXPECT_TRUE(msg.contains(QString::fromLatin1(s.marker))) << msg.toStdString();
        KwControl<QLineEdit>(d, s.field)->setText(QString::fromLatin1(s.fix));
    }
    view->ClearBubbleRecord();
    KwControl<QPushButton>(d, Dlg::IDC_BUTTON_OK)->click();
    EXPECT_EQ(view->GetBubbleCount(), 0) << view->GetLastBubbleText().toStdString();
}

TEST_F(NonlinearParametersDlgTest, reportsStaticFieldsInCheckOrder)
{
    Dlg* d = open(Static);
    KwControl<QCheckBox>(d, Dlg::IDC_CHECK_WORK)->click(); // all three tolerances checked
    checkOrder(d, host.view.get(),
               {{Dlg::IDC_KSTEP, "3", "> 0"},
                {Dlg::IDC_MAXITER, "3", "> 0"},
                {Dlg::IDC_MAXDIV, "3", "> 0"},
                {Dlg::IDC_MAXUBIS, "3", "> 0"},
                {Dlg::IDC_MAXLS, "3", ">= 0"},
                {Dlg::IDC_MAXBIS, "3", "> 0"},
                {Dlg::IDC_TDG, "5", "valid node"},
                {Dlg::IDC_DISPLACEMENT_TOL, "0.1", "> 0"},
                {Dlg::IDC_LOAD_TOL, "0.1", "> 0"},
                {Dlg::IDC_WORK_TOL, "0.1", "> 0"},
                {Dlg::IDC_FSTRESS, "0.1", "0.0 < value < 1.0"},
                {Dlg::IDC_INITIAL_INCREMENT, "0.1", "0.0 < value < 1.0"},
                {Dlg::IDC_MIN_INCREMENT, "0.1", "0.0 < value < 1.0"},
                {Dlg::IDC_MAX_INCREMENT, "0.1", "0.0 < value < 1.0"},
                {Dlg::IDC_LSTOL, "0.1", "0.01 < value"},
                {Dlg::IDC_RTOLB, "0.1", "> 2.0"},
                {Dlg::IDC_TDV, "0.1", "ERROR"}});
}

TEST_F(NonlinearParametersDlgTest, reportsTransientFieldsInCheckOrder)
{
    Dlg* d = open(Transient);
    KwControl<QComboBox>(d, Dlg::IDC_METHOD)->setCurrentIndex(0);
    KwControl<QCheckBox>(d, Dlg::IDC_CHECK_MAXITER)->click();
    KwControl<QCheckBox>(d, Dlg::IDC_CHECK_LOAD)->click();
    checkOrder(d, host.view.get(),
               {{Dlg::IDC_KSTEP, "3", "> 0"},
                {Dlg::IDC_MAXITER, "3", "> 0"},
                {Dlg::IDC_MAXDIV, "3", "> 0"},
                {Dlg::IDC_MAXUBIS, "3", "> 0"},
                {Dlg::IDC_MAXLS, "3", ">= 0"},
                {Dlg::IDC_MAXBIS, "3", "> 0"},
                {Dlg::IDC_ADJUST, "3", ">= 0"},
                {Dlg::IDC_MSTEP, "30", "10 <= value <= 200"},
                {Dlg::IDC_TDG, "5", "valid node"},
                {Dlg::IDC_DISPLACEMENT_TOL, "0.1", "> 0"},
                {Dlg::IDC_LOAD_TOL, "0.1", "> 0"},
                {Dlg::IDC_WORK_TOL, "0.1", "> 0"},
                {Dlg::IDC_FSTRESS, "0.1", "0.0 < value < 1.0"},
                {Dlg::IDC_LSTOL, "0.1", "0.01 < value"},
                {Dlg::IDC_RB, "0.5", "0.0 <= value <= 1.0"},
                {Dlg::IDC_MAXR, "4", "1.0 < value < 32.0"},
                {Dlg::IDC_UTOL, "0.5", "0.001 < value"},
                {Dlg::IDC_RTOLB, "3", "> 2.0"},
                {Dlg::IDC_TDV, "0.1", "ERROR"}});
}

TEST_F(NonlinearParametersDlgTest, transientAutoMethodSkipsStepCountAndSteppingFields)
{
    NL* s = setup(Transient);
    Dlg* d = open(Transient);
    KwControl<QComboBox>(d, Dlg::IDC_METHOD)->setCurrentIndex(2); // AUTO
    for (int id : {Dlg::IDC_KSTEP, Dlg::IDC_ADJUST, Dlg::IDC_MSTEP, Dlg::IDC_RB})
        set(d, id, QStringLiteral("-1"));
    pressOk(d);
    EXPECT_EQ(host.view->GetBubbleCount(), 0) << host.view->GetLastBubbleText().toStdString();
    EXPECT_EQ(s->m_methodIndex, 2);
    EXPECT_TRUE(IsMissingValue(s->m_integers[NL::IntStiffnessUpdateSteps]));
    EXPECT_TRUE(IsMissingValue(s->m_integers[NL::IntDominantPeriodSteps]));
    EXPECT_TRUE(IsMissingValue(s->m_reals[NL::RealSteppingBounds]));
}

// ---------------------------------------------------------------------------------------------
// Writing back.

TEST_F(NonlinearParametersDlgTest, writesTheWholeSetupOnSuccess)
{
    NL* s = setup(Static);
    QPointer<Dlg> d = open(Static);
    const std::pair<int, const char*> entries[] = {
        {Dlg::IDC_KSTEP, "11"},
        {Dlg::IDC_MAXITER, "12"},
        {Dlg::IDC_MAXDIV, "13"},
        {Dlg::IDC_MAXUBIS, "14"},
        {Dlg::IDC_MAXLS, "0"},
        {Dlg::IDC_MAXBIS, "16"},
        {Dlg::IDC_TDG, "17"},
        {Dlg::IDC_LOAD_TOL, "0.125"},
        {Dlg::IDC_FSTRESS, "0.3"},
        {Dlg::IDC_INITIAL_INCREMENT, "0.4"},
        {Dlg::IDC_MIN_INCREMENT, "0.05"},
        {Dlg::IDC_MAX_INCREMENT, "0.6"},
        {Dlg::IDC_LSTOL, "0.7"},
        {Dlg::IDC_RTOLB, "45"},
        {Dlg::IDC_TDV, "-0.02"},
        {Dlg::IDC_DISPLACEMENT_TOL, "0.5"},
    };
    for (const auto& [id, t] : entries)
        set(d, id, QString::fromLatin1(t));
    KwControl<QComboBox>(d, Dlg::IDC_METHOD)->setCurrentIndex(3);
    KwControl<QComboBox>(d, Dlg::IDC_TDC)->setCurrentIndex(8);
    KwControl<QCheckBox>(d, Dlg::IDC_CHECK_DISPLACEMENT)->click(); // off: its value goes
    pressOk(d);
    ASSERT_EQ(host.view->GetBubbleCount(), 0) << host.view->GetLastBubbleText().toStdString();
    EXPECT_EQ(s->m_methodIndex, 3);
    EXPECT_EQ(s->m_componentIndex, 8);
    EXPECT_EQ(s->m_convergence, (std::array<bool, 3>{false, true, false}));
    const std::array<int, NL::IntegerCount> ints = {
        11, 12, 13, 14, 0, 16, MissingInteger, MissingInteger, 17};
    EXPECT_EQ(s->m_integers, ints);
    const std::array<float, NL::RealCount> reals = {
        MissingFloat, 0.125f,       MissingFloat, 0.3f,         0.4f,  0.05f, 0.6f,
        0.7f,         MissingFloat, MissingFloat, MissingFloat, 45.0f, -0.02f};
    EXPECT_EQ(s->m_reals, reals);
    QApplication::processEvents();
    QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(d.isNull()) << "a modeless dialog goes away after OK";
}

TEST_F(NonlinearParametersDlgTest, fillsFieldsFromTheSetup)
{
    NL* s = setup(Static);
    s->m_reals[NL::RealMaxRotation] = 1234567.0f;
    s->m_reals[NL::RealDisplacementTolerance] = 1e-4f;
    s->m_integers[NL::IntMaxBisections] = MissingInteger;
    s->m_componentIndex = 42; // out of range: shown blank
    Dlg* d = open(Static);
    EXPECT_EQ(text(d, Dlg::IDC_RTOLB), QStringLiteral("1.23457e+06"));
    EXPECT_EQ(text(d, Dlg::IDC_DISPLACEMENT_TOL), QStringLiteral("0.0001"));
    EXPECT_EQ(text(d, Dlg::IDC_MAXBIS), QString());
    EXPECT_EQ(text(d, Dlg::IDC_KSTEP), QStringLiteral("5"));
    EXPECT_EQ(text(d, Dlg::IDC_TDG), QStringLiteral("81"));
    EXPECT_EQ(KwControl<QComboBox>(d, Dlg::IDC_METHOD)->currentText(), QStringLiteral("AUTO"));
    EXPECT_EQ(KwControl<QComboBox>(d, Dlg::IDC_TDC)->currentIndex(), 0);
}

// ---------------------------------------------------------------------------------------------
// What each variant shows, and the enabling rules.

TEST_F(NonlinearParametersDlgTest, showsOnlyTheControlsOfItsVariant)
{
    for (Variant v : {Static, Transient}) {
        SCOPED_TRACE(variantName(v));
        Dlg* d = open(v);
        const bool transient = v == Transient;
        EXPECT_EQ(d->IsTransient(), transient);
        for (int id : {Dlg::IDC_MSTEP, Dlg::IDC_ADJUST, Dlg::IDC_RB, Dlg::IDC_MAXR, Dlg::IDC_UTOL,
                       Dlg::IDC_GROUP_DYNAMIC})
            EXPECT_EQ(KwFindControl(d, id)->isVisibleTo(d), transient) << id;
        for (int id : {Dlg::IDC_INITIAL_INCREMENT, Dlg::IDC_MIN_INCREMENT, Dlg::IDC_MAX_INCREMENT})
            for (int c : {id, id + Dlg::kLabelIdOffset})
                EXPECT_EQ(KwFindControl(d, c)->isVisibleTo(d), !transient) << c;
        QStringList methods;
        auto* combo = KwControl<QComboBox>(d, Dlg::IDC_METHOD);
        for (int i = 0; i < combo->count(); ++i)
            methods << combo->itemText(i);
        const QStringList expected = transient ? QStringList{"", "ADAPT", "AUTO", "TSTEP"}
                                               : QStringList{"", "AUTO", "ITER", "SEMI"};
        EXPECT_EQ(methods, expected);
        QStringList components;
        auto* tdc = KwControl<QComboBox>(d, Dlg::IDC_TDC);
        for (int i = 0; i < tdc->count(); ++i)
            components << tdc->itemText(i);
        EXPECT_EQ(components,
                  (QStringList{"", "TX", "TY", "TZ", "RX", "RY", "RZ", "MAXT", "MAXR"}));
        EXPECT_EQ(d->windowTitle(),
                  transient ? QStringLiteral("Nonlinear transient parameters - 'Impact'")
                            : QStringLiteral("Nonlinear static parameters - 'Loading'"));
        EXPECT_EQ(text(d, Dlg::IDC_KSTEP + Dlg::kLabelIdOffset),
                  transient ? QStringLiteral("Time steps before stiffness update:")
                            : QStringLiteral("Iterations before stiffness update:"));
        delete d;
    }
}

TEST_F(NonlinearParametersDlgTest, methodDecidesWhichStepFieldsAreEnabled)
{
    const struct
    {
        Variant v;
        int method;
        bool kstep, stepping;
    } cases[] = {
        {Transient, 0, true, true},  {Transient, 1, true, true}, {Transient, 2, false, false},
        {Transient, 3, true, false}, {Static, 0, true, false},   {Static, 1, true, false},
        {Static, 2, true, false},    {Static, 3, true, false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(testing::Message() << variantName(c.v) << " method " << c.method);
        Dlg* d = open(c.v);
        auto* combo = KwControl<QComboBox>(d, Dlg::IDC_METHOD);
        combo->setCurrentIndex(c.method == 0 ? 1 : 0); // make sure the selection changes
        combo->setCurrentIndex(c.method);
        EXPECT_EQ(edit(d, Dlg::IDC_KSTEP)->isEnabled(), c.kstep);
        if (c.v == Transient) {
            for (int id : {Dlg::IDC_MSTEP, Dlg::IDC_ADJUST, Dlg::IDC_RB})
                EXPECT_EQ(edit(d, id)->isEnabled(), c.stepping) << id;
            for (int id : {Dlg::IDC_MAXR, Dlg::IDC_UTOL})
                EXPECT_TRUE(edit(d, id)->isEnabled()) << id;
        }
        delete d;
    }
}

TEST_F(NonlinearParametersDlgTest, openedAutoMethodStartsWithStepFieldsDisabled)
{
    setup(Transient)->m_methodIndex = 2;
    Dlg* d = open(Transient);
    EXPECT_FALSE(edit(d, Dlg::IDC_KSTEP)->isEnabled());
    EXPECT_FALSE(edit(d, Dlg::IDC_MSTEP)->isEnabled());
}

TEST_F(NonlinearParametersDlgTest, convergenceBoxesEnableTheirTolerances)
{
    Dlg* d = open(Transient); // displacement on, load off, work on
    const std::pair<int, int> pairs[] = {{Dlg::IDC_CHECK_DISPLACEMENT, Dlg::IDC_DISPLACEMENT_TOL},
                                         {Dlg::IDC_CHECK_LOAD, Dlg::IDC_LOAD_TOL},
                                         {Dlg::IDC_CHECK_WORK, Dlg::IDC_WORK_TOL}};
    for (const auto& [check, tol] : pairs) {
        auto* box = KwControl<QCheckBox>(d, check);
        EXPECT_EQ(edit(d, tol)->isEnabled(), box->isChecked()) << check;
        box->click();
        EXPECT_EQ(edit(d, tol)->isEnabled(), box->isChecked()) << check;
        box->click();
        EXPECT_EQ(edit(d, tol)->isEnabled(), box->isChecked()) << check;
    }
}

TEST_F(NonlinearParametersDlgTest, maximumIterationsBoxSwitchesBetweenValueAndAuto)
{
    NL* s = setup(Transient); // maximum iterations missing: AUTO
    QPointer<Dlg> d = open(Transient);
    auto* box = KwControl<QCheckBox>(d, Dlg::IDC_CHECK_MAXITER);
    QLineEdit* e = edit(d, Dlg::IDC_MAXITER);
    EXPECT_FALSE(box->isChecked());
    EXPECT_FALSE(e->isEnabled());
    EXPECT_EQ(e->text(), QStringLiteral("AUTO"));
    box->click();
    EXPECT_TRUE(e->isEnabled());
    EXPECT_EQ(e->text(), QString());
    e->setText(QStringLiteral("0")); // would fail, but is not read once cleared
    box->click();
    EXPECT_FALSE(e->isEnabled());
    EXPECT_EQ(e->text(), QStringLiteral("AUTO"));
    s->m_integers[NL::IntMaxIterations] = 99;
    pressOk(d);
    EXPECT_EQ(host.view->GetBubbleCount(), 0) << host.view->GetLastBubbleText().toStdString();
    EXPECT_TRUE(IsMissingValue(s->m_integers[NL::IntMaxIterations]));

    Dlg* st = open(Static); // 25 stored
    EXPECT_TRUE(KwControl<QCheckBox>(st, Dlg::IDC_CHECK_MAXITER)->isChecked());
    EXPECT_TRUE(edit(st, Dlg::IDC_MAXITER)->isEnabled());
    EXPECT_EQ(edit(st, Dlg::IDC_MAXITER)->text(), QStringLiteral("25"));
}

// ---------------------------------------------------------------------------------------------
// Keys, buttons, help.

TEST_F(NonlinearParametersDlgTest, enterDoesNotCloseButEscapeCancels)
{
    NL* s = setup(Static);
    const SetupState before = stateOf(s);
    QPointer<Dlg> d = open(Static);
    set(d, Dlg::IDC_MAXDIV, QStringLiteral("9"));
    for (QWidget* target : {static_cast<QWidget*>(edit(d, Dlg::IDC_MAXDIV)),
                            static_cast<QWidget*>(KwFindControl(d, Dlg::IDC_BUTTON_OK)),
                            static_cast<QWidget*>(d.data())}) {
        target->setFocus();
        QTest::keyClick(target, Qt::Key_Return);
        QTest::keyClick(target, Qt::Key_Enter);
        ASSERT_TRUE(d);
        EXPECT_TRUE(d->isVisible());
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
        KwControl<QPushButton>(d, Dlg::IDC_HELP_BUTTON)->click();
        EXPECT_EQ(host.addin->GetLastHelpTopic(),
                  v == Static ? QStringLiteral("NLPARM") : QStringLiteral("TSTEPNL"));
        delete d;
    }
    TheApplication = nullptr; // a process without an add-in: nothing happens
    Dlg* d = open(Static);
    KwControl<QPushButton>(d, Dlg::IDC_HELP_BUTTON)->click();
    TheApplication = host.addin.get();
}

TEST_F(NonlinearParametersDlgTest, runsModallyForAHost)
{
    NL* s = setup(Static);
    Dlg dlg(s);
    dlg.SetFMView(host.view.get());
    int bubblesWhileOpen = -1;
    QTimer::singleShot(0, &dlg, [&] {
        set(&dlg, Dlg::IDC_MAXDIV, QStringLiteral("0"));
        pressOk(&dlg); // refused: stays open
        bubblesWhileOpen = dlg.isVisible() ? host.view->GetBubbleCount() : -1;
        set(&dlg, Dlg::IDC_MAXDIV, QStringLiteral("8"));
        pressOk(&dlg);
    });
    EXPECT_EQ(dlg.DoModal(), KwMB::IDOK);
    EXPECT_EQ(bubblesWhileOpen, 1);
    EXPECT_EQ(s->m_integers[NL::IntMaxDivergence], 8);
}

TEST_F(NonlinearParametersDlgTest, withoutAViewTheMessageComesInABox)
{
    NL* s = setup(Static);
    Dlg* d = new Dlg(s);
    d->Create();
    d->show();
    set(d, Dlg::IDC_MAXDIV, QStringLiteral("0"));
    const auto rec = kwtest::AnswerModals([&] { pressOk(d); });
    ASSERT_EQ(rec.boxTexts.size(), 1);
    EXPECT_TRUE(rec.boxTexts.first().startsWith(
        QStringLiteral("Maximum divergence conditions per iteration: - \n")));
    EXPECT_EQ(host.view->GetBubbleCount(), 0);
    delete d;

    // A dialog parented to the view shows its messages there.
    Dlg* child = new Dlg(s, host.view.get());
    child->Create();
    child->show();
    set(child, Dlg::IDC_MAXDIV, QStringLiteral("0"));
    pressOk(child);
    EXPECT_EQ(host.view->GetBubbleCount(), 1);
    delete child;
}

TEST_F(NonlinearParametersDlgTest, aSetupOutsideAnyAnalysisHasNoValidNode)
{
    NL loose(9, QStringLiteral("Loose"));
    Dlg* d = new Dlg(&loose);
    d->SetFMView(host.view.get());
    d->Create();
    set(d, Dlg::IDC_TDG, QStringLiteral("1"));
    pressOk(d);
    EXPECT_TRUE(host.view->GetLastBubbleText().endsWith(QStringLiteral("valid node ID.")));
    EXPECT_TRUE(IsMissingValue(loose.m_integers[NL::IntTerminationNode]));
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
    const QString path = dir.filePath(QStringLiteral("marks.xml"));
    QFile f(path);
    ASSERT_TRUE(f.open(QIODevice::WriteOnly));
    f.write(R"(<KwLanguage code="xx"><Texts kind="PropPage">
        <Section name="NonlinearParametersDlg">
          <Text key="NLTransientKStep">key T</Text><Text key="NLStaticKStep">key S</Text>
        </Section></Texts></KwLanguage>)");
    f.close();
    ASSERT_TRUE(CKwXMLUtils::LoadLanguageFile(path));
    Dlg* st = open(Static);
    Dlg* tr = open(Transient);
    EXPECT_EQ(text(st, Dlg::IDC_KSTEP + Dlg::kLabelIdOffset), QStringLiteral("key T:"));
    EXPECT_EQ(text(tr, Dlg::IDC_KSTEP + Dlg::kLabelIdOffset), QStringLiteral("key S:"));
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
}

TEST_F(NonlinearParametersDlgTest, speaksGerman)
{
    ASSERT_TRUE(CKwXMLUtils::SetCurrentLanguage(QStringLiteral("de")));
    Dlg* d = open(Transient);
    EXPECT_EQ(d->windowTitle(), QStringLiteral("Nichtlineare transiente Parameter - 'Impact'"));
    EXPECT_EQ(text(d, Dlg::IDC_KSTEP + Dlg::kLabelIdOffset),
              QStringLiteral("Zeitschritte vor Steifigkeitsaktualisierung:"));
    set(d, Dlg::IDC_MSTEP, QStringLiteral("5"));
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
        const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
        EXPECT_EQ(rec.count(), 0);
        Dlg* d = openNonlinearDialog();
        ASSERT_NE(d, nullptr);
        EXPECT_TRUE(d->isVisible());
        EXPECT_FALSE(d->IsModalDialog());
        EXPECT_EQ(d->GetLaunchKind(), 53u);
        EXPECT_EQ(d->IsTransient(), v == Transient);
        EXPECT_EQ(d->GetFMView(), host.view.get());
        // Messages reach the request's view.
        set(d, Dlg::IDC_MAXDIV, QStringLiteral("0"));
        pressOk(d);
        EXPECT_EQ(host.view->GetBubbleCount(), 1);
        host.view->ClearBubbleRecord();
        delete d;
    }
}

TEST_F(NonlinearParametersDlgTest, kind53WithoutASetupOpensNothing)
{
    CKwSubCase* subcase = setup(Static)->GetSubCase();
    for (CKwFEBase* object : {static_cast<CKwFEBase*>(nullptr), static_cast<CKwFEBase*>(subcase)}) {
        DialogLaunchRequest r = host.Request(53);
        r.object = object;
        const auto rec = kwtest::AnswerModals([&] { LaunchDialog(&r); });
        EXPECT_EQ(rec.count(), 0);
        EXPECT_EQ(openNonlinearDialog(), nullptr);
    }
}

TEST_F(NonlinearParametersDlgTest, kind53CanBeCreatedHidden)
{
    DialogLaunchRequest r = host.Request(53);
    r.object = static_cast<CKwFEBase*>(setup(Transient));
    r.createHidden = 1;
    LaunchDialog(&r);
    Dlg* d = openNonlinearDialog();
    ASSERT_NE(d, nullptr);
    EXPECT_FALSE(d->isVisible());
}

} // namespace
