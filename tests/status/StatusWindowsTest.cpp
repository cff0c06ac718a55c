// The module-wide status windows and the convergence plot, driven through the exported
// entries as a host drives them during a solver run.
#include "CFMView.h"
#include "CKwMFCUIMeshConvergencePlot.h"
#include "CKwXMLUtils.h"
#include "CKwiCKAddin.h"
#include "CNLstatusDialog.h"
#include "CTransientStatusDialog.h"
#include "KwControls.h"
#include "KwConvergenceChart.h"
#include "KwConvergenceData.h"
#include "KwLangText.h"
#include "KwStyle.h"
#include "KwStyleCheck.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QScopeGuard>
#include <QScreen>
#include <QTest>
#include <QDeadlineTimer>
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace {

// Control ids of the status window template.
constexpr int kValueIds[3] = {4101, 4102, 4103};
constexpr int kBarIds[3] = {4121, 4122, 4123};
constexpr int kLoadCaption = 4114;
constexpr int kStepCaption = 4116;

template <class T> QList<T*> live()
{
    QList<T*> out;
    for (QWidget* w : QApplication::allWidgets())
        if (auto* t = qobject_cast<T*>(w))
            if (std::strcmp(t->metaObject()->className(), T::staticMetaObject.className()) == 0)
                out << t;
    return out;
}

template <class T> T* only()
{
    const auto all = live<T>();
    return all.size() == 1 ? all.first() : nullptr;
}

QString value(QWidget* w, int i) { return KwGetControlText(w, kValueIds[i]); }
int bar(QWidget* w, int i) { return KwControl<QProgressBar>(w, kBarIds[i])->value(); }
// The three values and the three bar positions, as "v|v|v|b|b|b".
std::string shown(QWidget* w)
{
    QStringList out;
    for (int i = 0; i < 6; ++i)
        out << (i < 3 ? value(w, i) : QString::number(bar(w, i - 3)));
    return out.join('|').toStdString();
}

int call(unsigned id, unsigned function, const wchar_t* text = L"", int v = 0,
         CFMView* view = nullptr, void* data = nullptr)
{
    return CallKwDialogFunction(id, function, text, v, view, data);
}

int call(unsigned id, unsigned function, const std::wstring& text)
{
    return call(id, function, text.c_str());
}
QString caption(QWidget* w, int id) { return KwGetControlText(w, id); }

// The module's "first line shown" record outlives the windows; a reset of a running window
// is the one way to clear it, as a host does at the end of a run.
void ClearTitleFlag()
{
    call(41, 5, L"");
    call(41, 2);
}

class StatusWindows : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        ClearTitleFlag();
        dropAll();
    }
    void TearDown() override
    {
        dropAll();
        kwtest::CloseAllWindows();
    }
    static void dropAll()
    {
        for (unsigned id : {41u, 42u, 89u})
            DeleteKwDialog(id);
    }
};


TEST_F(StatusWindows, destroyBeforeAnythingCreatesBothStatusWindowsButNoPlot)
{
    EXPECT_EQ(call(41, 1), 0);
    ASSERT_EQ(live<CNLstatusDialog>().size(), 1);
    ASSERT_EQ(live<CTransientStatusDialog>().size(), 1);
    EXPECT_TRUE(live<CKwMFCUIMeshConvergencePlot>().isEmpty());

    // The destroyed window is still the object calls reach; it only never shows again.
    CNLstatusDialog* nl = only<CNLstatusDialog>();
    call(41, 5, L"4,5,6,10,20,30,x,S");
    call(41, 3, L"", 1);
    EXPECT_FALSE(nl->isVisible());
    EXPECT_EQ(shown(nl), "4|5|6|10|20|30");
    EXPECT_TRUE(nl->IsRunning());

    // That line counted as the run's first: a new window stays hidden until a reset.
    DeleteKwDialog(41);
    EXPECT_TRUE(live<CNLstatusDialog>().isEmpty());
    call(41, 5, L"4,5,6,10,20,30,x,S");
    ASSERT_NE(only<CNLstatusDialog>(), nullptr);
    EXPECT_FALSE(only<CNLstatusDialog>()->isVisible());
    call(41, 2);
    call(41, 5, L"4,5,6,10,20,30,x,S");
    EXPECT_TRUE(only<CNLstatusDialog>()->isVisible());
}

TEST_F(StatusWindows, bothWindowsShareOneFirstLineRecordThatOnlyARunningResetClears)
{
    call(41, 5, L"1,1,1,1,1,1,x,F");
    CNLstatusDialog* nl = only<CNLstatusDialog>();
    CTransientStatusDialog* tr = only<CTransientStatusDialog>();
    EXPECT_TRUE(nl->isVisible());
    call(42, 7, L"1,1,1,1,1,1,x,F");
    EXPECT_FALSE(tr->isVisible()) << "the nonlinear run's first line already counted";

    CreateKwDialog(42); // a new window is no new run
    tr = only<CTransientStatusDialog>();
    call(42, 2);        // reset of a window that is not running: the record stays
    call(42, 7, L"2,2,2,2,2,2,x,F");
    EXPECT_FALSE(tr->isVisible());

    call(42, 2); // now running: the reset clears the record for both windows
    call(41, 3, L"", 0);
    call(41, 5, L"3,3,3,3,3,3,x,F");
    EXPECT_TRUE(nl->isVisible());
    EXPECT_FALSE(tr->isVisible());
}

TEST_F(StatusWindows, anyIdCreatesTheStatusWindowsAndAnyFunctionButOneThePlot)
{
    EXPECT_EQ(call(7, 5, L"1,1,1,1,1,1,x,F"), 0);
    ASSERT_EQ(live<CNLstatusDialog>().size(), 1);
    ASSERT_EQ(live<CTransientStatusDialog>().size(), 1);
    ASSERT_EQ(live<CKwMFCUIMeshConvergencePlot>().size(), 1);
    // Nothing was shown for an unknown id.
    EXPECT_FALSE(only<CNLstatusDialog>()->isVisible() ||
                 only<CTransientStatusDialog>()->isVisible() ||
                 only<CKwMFCUIMeshConvergencePlot>()->isVisible());
}

TEST_F(StatusWindows, createPlacesTheWindowAQuarterScreenInWithFullRangeBars)
{
    CreateKwDialog(41);
    CNLstatusDialog* nl = only<CNLstatusDialog>();
    ASSERT_NE(nl, nullptr);
    EXPECT_EQ(nl->frameGeometry().left(), QGuiApplication::primaryScreen()->geometry().width() / 4);
    for (int id : kBarIds) {
        auto* b = KwControl<QProgressBar>(nl, id);
        EXPECT_EQ(std::pair(b->minimum(), b->maximum()), std::pair(0, 100));
    }
    EXPECT_FALSE(nl->isVisible());
    EXPECT_TRUE(nl->property("kwSingleton").toBool());
}

TEST_F(StatusWindows, createTwiceAndDeleteInAnyOrderLeavesAtMostOneWindow)
{
    DeleteKwDialog(41);
    DeleteKwDialog(42);
    CreateKwDialog(41);
    CreateKwDialog(41);
    CreateKwDialog(42);
    CreateKwDialog(42);
    EXPECT_EQ(live<CNLstatusDialog>().size(), 1);
    EXPECT_EQ(live<CTransientStatusDialog>().size(), 1);
    DeleteKwDialog(41);
    DeleteKwDialog(41);
    EXPECT_TRUE(live<CNLstatusDialog>().isEmpty());
    EXPECT_EQ(live<CTransientStatusDialog>().size(), 1);
    // Ids without a module window are ignored by both entries.
    CreateKwDialog(89);
    CreateKwDialog(0);
    DeleteKwDialog(40);
    EXPECT_TRUE(live<CKwMFCUIMeshConvergencePlot>().isEmpty());
}

TEST_F(StatusWindows, firstLineShowsTheWindowWithTitleValuesAndPositions)
{
    call(41, 5, L"3,12,4,40,55,70,1.0E-03,F");
    CNLstatusDialog* nl = only<CNLstatusDialog>();
    ASSERT_NE(nl, nullptr);
    EXPECT_TRUE(nl->isVisible());
    EXPECT_EQ(nl->windowTitle(), QStringLiteral("Nonlinear Status"));
    EXPECT_EQ(shown(nl), "3|12|4|40|55|70");
    EXPECT_EQ(caption(nl, kStepCaption), QStringLiteral("Increment:"));
    EXPECT_EQ(caption(nl, kLoadCaption), QStringLiteral("Load:"));
}

TEST_F(StatusWindows, progressLinesOfEveryShape)
{
    const std::wstring longField(1000, L'A');
    const std::wstring padded = L"1,2,3,10,20,30," + std::wstring(490, L'x') + L",S";
    // The step caption afterwards: the previous line named "F".
    const struct { const char* name; std::wstring line; const char *shown, *step; } cases[] = {
        {"sub-increment", L"1,2,3,10,20,30,x,S", "1|2|3|10|20|30", "SubIncrement:"},
        {"unknown step type", L"1,2,3,10,20,30,x,X", "1|2|3|10|20|30", "Increment:"},
        {"lower-case step type", L"1,2,3,1,2,3,x,s", "1|2|3|1|2|3", "Increment:"},
        {"one field", L"5", "5|||0|0|0", "Increment:"},
        {"empty", L"", "|||0|0|0", "Increment:"},
        {"empty fields", L"1,,3,,20,,,", "1||3|0|20|0", "Increment:"},
        {"not numbers", L"a,b,c,x,y,z,w,S", "a|b|c|0|0|0", "SubIncrement:"},
        {"leading digits", L"a,b,c, 12abc,+7,9.9", "a|b|c|12|7|9", "Increment:"},
        {"out of range", L"1,1,1,-5,250,100", "1|1|1|0|100|100", "Increment:"},
        {"beyond int", L"1,1,1,99999999999999,-99999999999999,100000000000000000000",
         "1|1|1|100|0|100", "Increment:"},
        {"values kept as they stand", L" a b ,  , x\t", " a b |  | x\t|0|0|0", "Increment:"},
        {"extra fields", L"1,2,3,4,5,6,7,S,8,9,F", "1|2|3|4|5|6", "SubIncrement:"},
        {"field past the limit", padded, "1|2|3|10|20|30", "Increment:"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        call(41, 5, L"9,9,9,50,50,50,0,F");
        call(41, 5, c.line);
        CNLstatusDialog* nl = only<CNLstatusDialog>();
        ASSERT_NE(nl, nullptr);
        EXPECT_EQ(shown(nl), c.shown);
        EXPECT_EQ(caption(nl, kStepCaption), QString::fromLatin1(c.step));
    }

    // A long value is cut where the line ends, 500 characters in.
    call(41, 5, longField);
    EXPECT_EQ(value(only<CNLstatusDialog>(), 0).size(), CNLstatusDialog::kProgressLineMax);
    // A null text is an empty line.
    call(41, 5, L"9,9,9,50,50,50,0,F");
    CallKwDialogFunction(41, 5, nullptr, 0, nullptr, nullptr);
    EXPECT_EQ(shown(only<CNLstatusDialog>()), "|||0|0|0");
}

TEST_F(StatusWindows, resetRestoresOnlyARunningWindowAndRearmsTheFirstLine)
{
    // Never fed: the reset leaves the window as it was built.
    CreateKwDialog(41);
    call(41, 2);
    EXPECT_EQ(value(only<CNLstatusDialog>(), 0), QString());

    call(41, 5, L"2,3,4,10,20,30,x,F");
    call(41, 3, L"", 0); // the host hides it mid-run
    call(41, 5, L"2,3,5,10,20,30,x,F");
    CNLstatusDialog* nl = only<CNLstatusDialog>();
    EXPECT_FALSE(nl->isVisible()) << "only the first line of a run shows the window";

    call(41, 2);
    EXPECT_EQ(shown(nl), "1|1|1|0|0|0");
    // A second reset finds nothing running and changes nothing.
    call(41, 5, L"7,7,7,7,7,7,x,F");
    call(41, 2);
    call(41, 2);
    EXPECT_EQ(value(nl, 0), QStringLiteral("1"));

    call(41, 3, L"", 0);
    call(41, 5, L"8,8,8,8,8,8,x,F");
    EXPECT_TRUE(nl->isVisible()) << "the first line after a reset shows the window again";
}

TEST_F(StatusWindows, showFollowsTheVisibleFlagNotTheWindow)
{
    CreateKwDialog(41);
    CNLstatusDialog* nl = only<CNLstatusDialog>();
    call(41, 3, L"", 1);
    EXPECT_TRUE(nl->isVisible());
    nl->hide(); // hidden behind the module's back
    call(41, 3, L"", 1);
    EXPECT_FALSE(nl->isVisible()) << "already marked visible: nothing to do";
    call(41, 3, L"", 2); // anything but 1 hides
    call(41, 3, L"", 1);
    EXPECT_TRUE(nl->isVisible());
    // Closed by the user: the next show brings it back.
    nl->close();
    EXPECT_FALSE(nl->isVisible());
    call(41, 3, L"", 1);
    EXPECT_TRUE(nl->isVisible());
    EXPECT_EQ(live<CNLstatusDialog>().size(), 1);
}

TEST_F(StatusWindows, titleNamesTheRunAndTemperatureRenamesTheFirstBar)
{
    call(41, 4, L"Bracket - Nonlinear");
    call(41, 6, L"1,1,1,5,5,5,x,F");
    CNLstatusDialog* nl = only<CNLstatusDialog>();
    EXPECT_EQ(nl->windowTitle(), QStringLiteral("Nonlinear Status - 'Bracket - Nonlinear'"));
    EXPECT_EQ(caption(nl, kLoadCaption), QStringLiteral("Temperature:"));
    EXPECT_EQ(bar(nl, 0), 5);

    call(42, 7, L"2,3,1,60,40,20,x,S");
    CTransientStatusDialog* tr = only<CTransientStatusDialog>();
    EXPECT_EQ(tr->windowTitle(), QStringLiteral("Transient Status"));
    EXPECT_EQ(caption(tr, kLoadCaption), QStringLiteral("Load:"));
    EXPECT_EQ(caption(tr, kStepCaption), QStringLiteral("SubIncrement:"));
    call(42, 8, L"2,3,2,61,41,21,x,S");
    EXPECT_EQ(caption(tr, kLoadCaption), QStringLiteral("Temperature:"));
}

TEST_F(StatusWindows, eachWindowTakesOnlyItsOwnFunctions)
{
    call(41, 7, L"1,2,3,10,20,30,x,S"); // transient line to the nonlinear window
    call(41, 8, L"1,2,3,10,20,30,x,S");
    call(42, 5, L"1,2,3,10,20,30,x,S"); // nonlinear lines to the transient window
    call(42, 6, L"1,2,3,10,20,30,x,S");
    for (unsigned f : {0u, 9u, 10u, 11u, 12u, 1000u, 0xFFFFFFFFu})
        EXPECT_EQ(
            std::pair(call(41, f, L"1,2,3,10,20,30,x,S", 1), call(42, f, L"1,2,3,10,20,30,x,S", 1)),
            std::pair(0, 0));
    CNLstatusDialog* nl = only<CNLstatusDialog>();
    CTransientStatusDialog* tr = only<CTransientStatusDialog>();
    EXPECT_FALSE(nl->isVisible());
    EXPECT_FALSE(tr->isVisible());
    EXPECT_EQ(value(nl, 0), QString());
    EXPECT_EQ(value(tr, 0), QString());
    EXPECT_EQ(caption(nl, kLoadCaption), QStringLiteral("Load:"));
}

TEST_F(StatusWindows, windowsDeletedBehindTheModulesBackAreMadeAfresh)
{
    call(41, 5, L"1,2,3,10,20,30,x,F");
    call(89, 3, L"", 4);
    kwtest::CloseAllWindows(); // a host closing every window it finds
    EXPECT_TRUE(live<CNLstatusDialog>().isEmpty());
    EXPECT_EQ(call(89, 11), 0);
    call(41, 5, L"4,5,6,10,20,30,x,F");
    ASSERT_NE(only<CNLstatusDialog>(), nullptr);
    EXPECT_EQ(value(only<CNLstatusDialog>(), 0), QStringLiteral("4"));
}

TEST_F(StatusWindows, everyCaptionGoesThroughTheLanguageService)
{
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("qps"));
    call(41, 5, L"1,2,3,10,20,30,x,S");
    call(42, 8, L"1,2,3,10,20,30,x,F");
    call(89, 3, L"", 1);
    only<CKwMFCUIMeshConvergencePlot>()->show();
    QStringList bad = kwtest::UntranslatedCaptions(only<CNLstatusDialog>()) +
                      kwtest::UntranslatedCaptions(only<CTransientStatusDialog>()) +
                      kwtest::UntranslatedCaptions(only<CKwMFCUIMeshConvergencePlot>());
    // The plot's axis titles are painted, not widgets: ask the chart for them.
    const KwChart* chart = only<CKwMFCUIMeshConvergencePlot>()->Chart();
    for (const QString& axis : {chart->XAxisCaption(), chart->YAxisCaption()})
        if (!axis.contains(CKwXMLUtils::PseudoPrefix()))
            bad << QStringLiteral("axis \"%1\"").arg(axis);
    CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    EXPECT_TRUE(bad.isEmpty()) << bad.join(", ").toStdString();
}

TEST_F(StatusWindows, longValuesFitTheirBoxesInEveryLanguageAndFontSize)
{
    const QFont normal = QApplication::font();
    const auto restore = qScopeGuard([&] {
        QApplication::setFont(normal);
        CKwXMLUtils::SetCurrentLanguage(QStringLiteral("en"));
    });
    const struct
    {
        const char* language;
        int pointSize; // 0: the normal font
    } cases[] = {{"en", 0}, {"de", 0}, {"en", 26}, {"de", 26}};
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.language) + " " + std::to_string(c.pointSize));
        CKwXMLUtils::SetCurrentLanguage(QString::fromLatin1(c.language));
        QFont f = normal;
        if (c.pointSize)
            f.setPointSize(c.pointSize);
        QApplication::setFont(f);
        call(41, 5, L"-1.234567e+08,100000,100000,35,28,60,x,S");
        call(42, 7, L"100000,1.234567e+08,100000,70,55,100,x,F");
        for (QWidget* w : {static_cast<QWidget*>(only<CNLstatusDialog>()),
                           static_cast<QWidget*>(only<CTransientStatusDialog>())}) {
            ASSERT_NE(w, nullptr);
            w->show();
            QApplication::processEvents();
            EXPECT_EQ(KwStyleKeys(KwCheckStyle(w)), QStringList());
            for (int i = 0; i < 3; ++i)
                EXPECT_TRUE(KwControl<QLabel>(w, kValueIds[i])->alignment() & Qt::AlignRight)
                    << "value " << i;
        }
        call(41, 2);
        dropAll();
    }
}

TEST_F(StatusWindows, countersAndBarsStandInTwoBlocksSoTheTwoIncrementRowsReadApart)
{
    for (unsigned id : {41u, 42u}) {
        call(id, id == 41 ? 5 : 7, L"1,2,3,10,20,30,x,F");
        QWidget* w = id == 41 ? static_cast<QWidget*>(only<CNLstatusDialog>())
                              : static_cast<QWidget*>(only<CTransientStatusDialog>());
        ASSERT_NE(w, nullptr);
        QApplication::processEvents();
        // The same caption twice, as the solver's step type asks; only their places differ.
        EXPECT_EQ(caption(w, 4112), caption(w, kStepCaption));
        int counters = 0;
        for (QLabel* l : w->findChildren<QLabel*>())
            if (l->property("kwData").toBool())
                counters = std::max(counters, l->geometry().bottom());
        int bars = w->height();
        for (QProgressBar* b : w->findChildren<QProgressBar*>())
            bars = std::min(bars, b->geometry().top());
        EXPECT_GE(bars - counters, 2 * KwStyle::RowSpacing + KwStyle::GroupSpacing / 2)
            << "window " << id;
        call(id, 2);
    }
}

TEST_F(StatusWindows, elapsedTimeRunsOnTheWindowsOwnClockFromTheFirstLineToTheReset)
{
    const struct
    {
        qint64 ms;
        const char* text;
    } formats[] = {{0, "0:00:00"},       {999, "0:00:00"},         {61000, "0:01:01"},
                   {3599999, "0:59:59"}, {3600000, "1:00:00"},     {-5, "0:00:00"},
                   {360000000, "100:00:00"}};
    for (const auto& f : formats)
        EXPECT_EQ(CNLstatusDialog::ElapsedText(f.ms), QString::fromLatin1(f.text)) << f.ms;

    constexpr int kElapsed = 4104;
    call(41, 5, L"1,1,1,0,0,0,x,F");
    CNLstatusDialog* w = only<CNLstatusDialog>();
    ASSERT_NE(w, nullptr);
    EXPECT_EQ(caption(w, kElapsed), QStringLiteral("0:00:00"));
    // No line comes for a while: the window's clock still moves the time on (waited for with a
    // generous deadline, since a busy machine may deliver the ticks late).
    QDeadlineTimer deadline(10000);
    while (caption(w, kElapsed) == QStringLiteral("0:00:00") && !deadline.hasExpired())
        QTest::qWait(50);
    EXPECT_NE(caption(w, kElapsed), QStringLiteral("0:00:00"));
    call(41, 5, L"1,1,2,0,0,0,x,F");
    EXPECT_NE(caption(w, kElapsed), QStringLiteral("0:00:00"));
    call(41, 2);
    EXPECT_EQ(caption(w, kElapsed), QStringLiteral("0:00:00"));
    QTest::qWait(1100);
    EXPECT_EQ(caption(w, kElapsed), QStringLiteral("0:00:00")) << "a reset stops the clock";
    call(41, 5, L"1,1,1,0,0,0,x,F");
    EXPECT_EQ(caption(w, kElapsed), QStringLiteral("0:00:00")) << "a new run starts at zero";
}

// --- the convergence plot ---

class ConvergencePlot : public StatusWindows
{
protected:
    static const std::vector<KwConvergenceChart::Point>& points()
    {
        return only<CKwMFCUIMeshConvergencePlot>()->Chart()->Points();
    }
};

TEST_F(ConvergencePlot, pointsStoredValueReplaceAndClear)
{
    KwConvergencePoint p{2, 0, 180.5};
    EXPECT_EQ(call(89, 3, L"", 7, nullptr, &p), 0);
    EXPECT_EQ(call(89, 11), 7);
    KwConvergencePoint q{1, 0, 150.0};
    call(89, 3, L"", 8, nullptr, &q);
    KwConvergencePoint again{2, 0, 181.0};
    call(89, 3, L"", 9, nullptr, &again);   // a step given twice keeps its latest value
    call(89, 3, L"", 10, nullptr, nullptr); // no point: only the value
    ASSERT_EQ(points().size(), 2u);
    EXPECT_EQ(points()[0].step, 1);
    EXPECT_DOUBLE_EQ(points()[1].value, 181.0);
    EXPECT_EQ(call(89, 11), 10);

    KwConvergencePoint host[4] = {{3, 0, 3.0}, {1, 0, 1.0}, {2, 0, NAN}, {4, 0, 4.0}};
    KwConvergenceData data{L"Displacement", L"mm", host, 4, 4};
    call(89, 9, L"", 0, nullptr, &data);
    ASSERT_EQ(points().size(), 3u) << "the value that cannot be drawn is left out";
    EXPECT_EQ(points()[0].step, 1);
    EXPECT_EQ(points()[2].step, 4);
    EXPECT_EQ(only<CKwMFCUIMeshConvergencePlot>()->Chart()->Units(), QStringLiteral("mm"));
    EXPECT_EQ(call(89, 11), 10) << "replacing data keeps the stored value";
    EXPECT_EQ(data.count, 4) << "the host's list is only read";

    call(89, 9, L"", 0, nullptr, nullptr);
    EXPECT_EQ(points().size(), 3u);

    call(89, 10, L"", 0, nullptr, &data);
    EXPECT_EQ(data.count, 0);
    EXPECT_EQ(data.capacity, 4);
    EXPECT_TRUE(points().empty());
    EXPECT_EQ(call(89, 11), 0);
    call(89, 10, L"", 0, nullptr, nullptr);
    EXPECT_EQ(call(89, 11), 0);
}

TEST_F(ConvergencePlot, faultyHostListsAreReadOnlyAsFarAsTheyVouch)
{
    KwConvergencePoint host[2] = {{1, 0, 1.0}, {2, 0, 2.0}};
    const struct { const char* name; KwConvergenceData data; std::size_t shown; } cases[] = {
        {"count beyond capacity", {nullptr, nullptr, host, 50, 2}, 2},
        {"negative count", {nullptr, nullptr, host, -3, 2}, 0},
        {"negative capacity", {nullptr, nullptr, host, 2, -1}, 0},
        {"no array", {L"x", L"y", nullptr, 2, 2}, 0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        KwConvergenceData d = c.data;
        call(89, 9, L"", 0, nullptr, &d);
        EXPECT_EQ(points().size(), c.shown);
    }
    // Values far beyond any axis are not drawn; everything else is, and painting copes.
    KwConvergencePoint extreme[3] = {{std::numeric_limits<int>::min(), 0, -1e300},
                                     {std::numeric_limits<int>::max(), 0, 1e300},
                                     {5, 0, std::numeric_limits<double>::infinity()}};
    KwConvergenceData d{nullptr, nullptr, extreme, 3, 3};
    call(89, 9, L"", 0, nullptr, &d);
    EXPECT_EQ(points().size(), 2u);
    EXPECT_FALSE(only<CKwMFCUIMeshConvergencePlot>()->grab().isNull());
}

TEST_F(ConvergencePlot, destroyedWindowStillAnswersUntilDeleted)
{
    EXPECT_EQ(call(89, 1), 0);
    EXPECT_TRUE(live<CKwMFCUIMeshConvergencePlot>().isEmpty()) << "1 creates no plot";
    call(89, 3, L"", 5);
    call(89, 1);
    EXPECT_EQ(call(89, 11), 5);
    KwConvergencePoint p{1, 0, 2.0};
    call(89, 3, L"", 6, nullptr, &p);
    EXPECT_EQ(call(89, 11), 6);
    EXPECT_EQ(points().size(), 1u);
    KwConvergencePoint host[1] = {{1, 0, 1.0}};
    KwConvergenceData data{nullptr, nullptr, host, 1, 1};
    call(89, 10, L"", 0, nullptr, &data);
    EXPECT_EQ(call(89, 11), 0);
    EXPECT_EQ(data.count, 0);
    EXPECT_TRUE(points().empty());
    EXPECT_FALSE(only<CKwMFCUIMeshConvergencePlot>()->isVisible());
    DeleteKwDialog(89);
    EXPECT_TRUE(live<CKwMFCUIMeshConvergencePlot>().isEmpty());
}

TEST_F(ConvergencePlot, launchKindOpensOneWindowAndHandsTheRequestToTheAddin)
{
    kwtest::Host host;
    using Seen = std::tuple<int, int, QString, int, CFMView*, void*>;
    QList<Seen> seen;
    host.addin->SetCommandHandler(
        [&](int c, int s, const QString& t, int v, CFMView* view, void* d) {
            seen.append({c, s, t, v, view, d});
            return 1;
        });
    int object = 0;
    DialogLaunchRequest r = host.Request(89);
    r.object = &object;
    LaunchDialog(&r);
    CKwMFCUIMeshConvergencePlot* plot = only<CKwMFCUIMeshConvergencePlot>();
    ASSERT_NE(plot, nullptr);
    EXPECT_TRUE(plot->isVisible());
    EXPECT_TRUE(plot->property("kwSingleton").toBool());
    LaunchDialog(&r);
    EXPECT_EQ(live<CKwMFCUIMeshConvergencePlot>(), QList{plot});
    ASSERT_EQ(seen.size(), 2);
    EXPECT_EQ(seen[0], Seen(89, 3, QString(), 1, host.view.get(), &object));

    // The remote calls reach the same window.
    call(89, 3, L"", 12);
    EXPECT_EQ(plot->GetResultValue(), 12);

    // A plot whose window the host destroyed gets it back, with what it held.
    call(89, 1);
    EXPECT_FALSE(plot->isVisible());
    LaunchDialog(&r);
    EXPECT_EQ(live<CKwMFCUIMeshConvergencePlot>(), QList{plot});
    EXPECT_TRUE(plot->isVisible());
    EXPECT_EQ(call(89, 11), 12);
    EXPECT_EQ(seen.size(), 3);

    DeleteKwDialog(89);
    EXPECT_TRUE(live<CKwMFCUIMeshConvergencePlot>().isEmpty());

    // Without an add-in the window still opens.
    TheApplication = nullptr;
    LaunchDialog(&r);
    EXPECT_EQ(live<CKwMFCUIMeshConvergencePlot>().size(), 1);
    TheApplication = host.addin.get();
    EXPECT_EQ(seen.size(), 3);
}

} // namespace
