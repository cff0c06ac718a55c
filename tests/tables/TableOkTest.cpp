// What OK of the point-table dialogs hands to the host: rows never typed into stay out, a
// value is judged as OK will read it, a stress-strain point needs both values; and what the
// user sees of the list: column heads with units, a list that grows up to its height.
#include "CFMView.h"
#include "CKwFunction.h"
#include "CKwMaterialNonlinearDialog.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "KW_UOM.h"
#include "KwControls.h"
#include "KwNumbers.h"
#include "KwTableMath.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScopeGuard>
#include <QTest>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace {

// One point-table dialog of any kind over a table of two stored points, shown and active.
struct OpenTable
{
    OpenTable(kwtest::Host& host, CKwTable::TableType type, KW_UOM::System system = KW_UOM::SI)
        : units(system), table(3, QStringLiteral("T"), type)
    {
        if (type == CKwTable::StressStrainCurve) {
            table.AddPoint(0, 0);
            table.AddPoint(0.01, 2e8);
            auto* m = new CKwMaterialNonlinearDialog(&table, &units, host.view.get());
            base = m;
            dialog = m;
        } else {
            table.AddPoint(0, 0);
            table.AddPoint(1, 2);
            CKwTableDialog* t = CKwTableDialog::NewFor(&table);
            t->SetTable(host.view.get(), &table, &units);
            base = t;
            dialog = t;
        }
        static_cast<CKwMFCDialog*>(dialog.data())->Create();
        dialog->show();
        dialog->activateWindow();
        (void)QTest::qWaitForWindowActive(dialog.data());
    }
    ~OpenTable() { delete dialog.data(); }
    CKwNonLinearEditList& list() { return base->GetList(); }
    QRect cell(int row, int col) { return list().visualRect(list().Model()->index(row, col)); }
    QLineEdit* editor() { return list().viewport()->findChild<QLineEdit*>(); }
    // A line edit of the dialog outside the list (the name, or the strain box).
    QLineEdit* elsewhere()
    {
        for (QLineEdit* e : dialog->findChildren<QLineEdit*>())
            if (!list().isAncestorOf(e))
                return e;
        return nullptr;
    }
    void ok()
    {
        const int id = table.GetTableType() == CKwTable::StressStrainCurve
                           ? int(CKwMaterialNonlinearDialog::IDC_BUTTON_OK)
                           : int(CKwTableDialog::IDC_BUTTON_OK);
        KwControl<QPushButton>(dialog.data(), id)->click();
        QApplication::processEvents();
    }
    std::vector<double> column(bool x) const
    {
        const CKwFunction* f = x ? table.GetXFunction() : table.GetYFunction();
        std::vector<double> v;
        for (int i = 0; i < f->GetSize(); ++i)
            v.push_back(f->GetValue(i));
        return v;
    }

    KW_UOM units;
    CKwTable table;
    CKwNonlinearDialogBase* base = nullptr;
    // Guarded: OK of a modeless dialog deletes it later.
    QPointer<QWidget> dialog;
};

const CKwTable::TableType kAllKinds[] = {CKwTable::General, CKwTable::TimeCurve,
                                         CKwTable::TemperatureTable, CKwTable::FrequencyTable,
                                         CKwTable::StressStrainCurve};

TEST(TableOk, rowsTheUserNeverTypedIntoNeverReachTheTable)
{
    kwtest::Host host;
    for (const CKwTable::TableType kind : kAllKinds) {
        OpenTable t(host, kind);
        const std::vector<double> x = t.column(true), y = t.column(false);
        // Click into the blank edit row and away: the list keeps the row it grew by.
        QTest::mouseClick(t.list().viewport(), Qt::LeftButton, {}, t.cell(2, 0).center());
        ASSERT_NE(t.editor(), nullptr) << kind;
        QTest::mouseClick(t.elsewhere(), Qt::LeftButton);
        QApplication::processEvents();
        EXPECT_EQ(t.base->GetRowCount(), 3) << kind;
        // Enter on the empty editor of the new edit row.
        QTest::mouseClick(t.list().viewport(), Qt::LeftButton, {}, t.cell(3, 1).center());
        ASSERT_NE(t.editor(), nullptr) << kind;
        QTest::keyClick(t.editor(), Qt::Key_Return);
        QApplication::processEvents();
        ASSERT_EQ(t.base->GetRowCount(), 4) << kind;

        host.view->ClearBubbleRecord();
        t.ok();
        EXPECT_FALSE(t.dialog->isVisible()) << kind;
        EXPECT_EQ(host.view->GetBubbleCount(), 0) << kind << ": " << host.view->GetLastBubbleText().toStdString();
        EXPECT_EQ(t.column(true), x) << kind;
        EXPECT_EQ(t.column(false), y) << kind;
    }
}

TEST(TableOk, aNegativeValueIsJudgedAsOkWillReadIt)
{
    kwtest::Host host;
    const struct
    {
        const char* text;
        bool nonNegativeColumn; // accepted where X may not be negative
        bool anyColumn;         // accepted where any number goes
    } texts[] = {
        {"- 1", false, true},      {" -1 ", false, true}, {"- 0.5e1", false, true},
        {"-\t2", false, true},     {"1 0", true, true},   {"-0", true, true},
        {"", true, true},          {"  ", true, true},    {"-", false, false},
        {"- 1x", false, false},
    };
    const struct
    {
        CKwTable::TableType kind;
        bool xNonNegative;
    } kinds[] = {{CKwTable::TimeCurve, true},
                 {CKwTable::FrequencyTable, true},
                 {CKwTable::TemperatureTable, false},
                 {CKwTable::General, false}};
    for (const auto& k : kinds) {
        OpenTable t(host, k.kind);
        for (const auto& c : texts) {
            const QString text = QString::fromLatin1(c.text);
            EXPECT_EQ(t.base->IsValidDataInput(text, 0, 0, 0),
                      k.xNonNegative ? c.nonNegativeColumn : c.anyColumn)
                << k.kind << " X '" << c.text << "'";
            EXPECT_EQ(t.base->IsValidDataInput(text, 0, 1, 0), c.anyColumn)
                << k.kind << " Y '" << c.text << "'";
        }
    }
    // The stress-strain curve: neither value may be negative.
    OpenTable curve(host, CKwTable::StressStrainCurve);
    for (const auto& c : texts)
        for (int col = 0; col < 2; ++col)
            EXPECT_EQ(curve.base->IsValidDataInput(QString::fromLatin1(c.text), 1, col, 0),
                      c.nonNegativeColumn)
                << col << " '" << c.text << "'";
}

TEST(TableOk, aNegativeTimeTypedOrPastedNeverReachesTheTable)
{
    kwtest::Host host;
    // Typed: the editor stays open with the text and says why.
    {
        OpenTable t(host, CKwTable::TimeCurve);
        host.view->ClearBubbleRecord();
        QTest::mouseClick(t.list().viewport(), Qt::LeftButton, {}, t.cell(1, 0).center());
        ASSERT_NE(t.editor(), nullptr);
        QTest::keyClicks(t.editor(), QStringLiteral("- 1"));
        QTest::keyClick(t.editor(), Qt::Key_Return);
        QApplication::processEvents();
        ASSERT_NE(t.editor(), nullptr);
        EXPECT_EQ(t.editor()->text(), QStringLiteral("- 1"));
        EXPECT_EQ(host.view->GetLastBubbleText(), QStringLiteral("A time cannot be negative."));
        EXPECT_EQ(t.list().Model()->cellText(1, 0), QStringLiteral("1"));
    }
    // Pasted into the edit row (X lands there unchecked) or set in a cell: OK refuses it,
    // selects its row and leaves the table as it was.
    for (const char* text : {"-1\t5", "- 2\t5", "3\t5\r\n-0.5\t6"}) {
        OpenTable t(host, CKwTable::FrequencyTable);
        t.base->PasteToCell(QString::fromLatin1(text), 2, 0, nullptr);
        host.view->ClearBubbleRecord();
        t.ok();
        EXPECT_TRUE(t.dialog->isVisible()) << text;
        EXPECT_EQ(host.view->GetLastBubbleText(),
                  QStringLiteral("A frequency cannot be negative."))
            << text;
        EXPECT_EQ(t.list().SelectedRows(), std::vector<int>{t.base->GetRowCount() - 1}) << text;
        EXPECT_EQ(t.column(true), (std::vector<double>{0, 1})) << text;
    }
}

TEST(NonlinearMaterialOk, aPointNeedsBothItsStrainAndItsStress)
{
    kwtest::Host host;
    const struct
    {
        const char* strain;
        const char* stress;
        const char* message; // empty: OK writes the curve
    } rows[] = {
        {"0.02", "", "Row 3 has no stress."},
        {"", "3e8", "Row 3 has no strain."},
        {" ", " 3e8 ", "Row 3 has no strain."},
        {"0.02", "- ", "'-' is not a valid number. Enter a number in Pa."},
        {"0.02", "3e8", ""},
    };
    for (const auto& r : rows) {
        OpenTable t(host, CKwTable::StressStrainCurve);
        t.base->Add(QString::fromLatin1(r.strain), QString::fromLatin1(r.stress));
        host.view->ClearBubbleRecord();
        t.ok();
        const std::string what = std::string(r.strain) + "|" + r.stress;
        if (*r.message) {
            EXPECT_TRUE(t.dialog->isVisible()) << what;
            EXPECT_EQ(host.view->GetLastBubbleText().toStdString(), r.message) << what;
            EXPECT_EQ(t.list().SelectedRows(), std::vector<int>{2}) << what;
            EXPECT_EQ(t.column(true), (std::vector<double>{0, 0.01})) << what;
            EXPECT_EQ(t.base->GetRowCount(), 3) << what; // nothing merged into the origin
        } else {
            EXPECT_FALSE(t.dialog->isVisible()) << what;
            EXPECT_EQ(t.column(true), (std::vector<double>{0, 0.01, 0.02})) << what;
            EXPECT_EQ(t.column(false), (std::vector<double>{0, 2e8, 3e8})) << what;
        }
    }
}

TEST(TableLabels, columnHeadsAndBoxLabelsCarryTheUnits)
{
    kwtest::Host host;
    const struct
    {
        CKwTable::TableType kind;
        KW_UOM::System system;
        const char* x;
        const char* y;
    } heads[] = {
        {CKwTable::TimeCurve, KW_UOM::MMNS, "Time (s)", "Factor"},
        {CKwTable::FrequencyTable, KW_UOM::SI, "Frequency (Hz)", "Factor"},
        {CKwTable::TemperatureTable, KW_UOM::SI, "Temperature (K)", "Value"},
        {CKwTable::TemperatureTable, KW_UOM::IPS, "Temperature (°F)", "Value"},
        {CKwTable::General, KW_UOM::SI, "X", "Y"},
        {CKwTable::StressStrainCurve, KW_UOM::MMNS, "Strain", "Stress (MPa)"},
        {CKwTable::StressStrainCurve, KW_UOM::IPS, "Strain", "Stress (psi)"},
    };
    for (const auto& h : heads) {
        OpenTable t(host, h.kind, h.system);
        const KwPointTableModel* m = t.list().Model();
        EXPECT_EQ(m->headerData(0, Qt::Horizontal).toString().toStdString(), h.x);
        EXPECT_EQ(m->headerData(1, Qt::Horizontal).toString().toStdString(), h.y);
        if (h.kind == CKwTable::StressStrainCurve) {
            auto label = [&](int id) {
                return KwControl<QLabel>(t.dialog.data(), id)->text().toStdString();
            };
            EXPECT_EQ(label(CKwMaterialNonlinearDialog::IDC_LABEL_STRAIN), "Strain:");
            EXPECT_EQ(label(CKwMaterialNonlinearDialog::IDC_LABEL_STRESS),
                      std::string(h.y) + ":");
        }
    }
    // A general table whose Y is a force shows its unit too.
    KW_UOM units(KW_UOM::IPS);
    CKwTable force(9, QStringLiteral("F"), CKwTable::General);
    force.GetYFunction()->SetUnitType(KwUnitKind::Force);
    std::unique_ptr<CKwTableDialog> d(CKwTableDialog::NewFor(&force));
    d->SetTable(host.view.get(), &force, &units);
    d->Create();
    EXPECT_EQ(d->GetList().Model()->headerData(1, Qt::Horizontal).toString(),
              QStringLiteral("Y (lbf)"));
}

TEST(TableLayout, theListGrowsWithItsRowsUpToItsHeight)
{
    kwtest::Host host;
    for (const CKwTable::TableType kind : {CKwTable::General, CKwTable::StressStrainCurve}) {
        OpenTable t(host, kind);
        auto& list = t.list();
        const int full = kind == CKwTable::General ? 320 : 300; // the height it was laid out in
        const int rowHeight = list.verticalHeader()->defaultSectionSize();
        // The height the list asks for (fixed), and the one it got.
        const auto asked = [&list] { return list.maximumHeight(); };
        const int two = asked();
        EXPECT_LT(two, full) << kind;
        EXPECT_EQ(list.height(), two) << kind;
        t.base->Add(QStringLiteral("5"), QStringLiteral("5"));
        EXPECT_EQ(asked(), two + rowHeight) << kind;
        for (int i = 0; i < 40; ++i)
            t.base->Add(QString::number(6 + i), QStringLiteral("5"));
        EXPECT_EQ(asked(), full) << kind;
        QApplication::processEvents();
        EXPECT_EQ(list.height(), full) << kind;
        // And shrinks again when rows go.
        list.SelectAllRows();
        list.DeleteSelectedRows();
        EXPECT_LT(asked(), two) << kind;
        // A large paste lays the list out once, from a few rows to many: still capped.
        std::string text;
        for (int i = 0; i < 600; ++i)
            text += std::to_string(100 + i) + ".5\t5\r\n";
        const int kept = t.base->GetRowCount(); // the curve's origin cannot be deleted
        t.base->PasteToCell(std::string_view(text), kept, 0, nullptr);
        ASSERT_EQ(t.base->GetRowCount(), kept + 600) << kind;
        EXPECT_EQ(asked(), full) << kind;
    }
}

TEST(TableRows, compressDropsPointsExactlyTheToleranceApart)
{
    // The host rule: a point no more than the tolerance above the last kept one goes.
    const struct
    {
        std::vector<double> x;
        double tol;
        std::vector<double> kept;
    } cases[] = {
        {{0, 0.25, 0.5, 1}, 0.25, {0, 0.5, 1}},
        {{0, 0.25, 0.5, 1}, 0.24, {0, 0.25, 0.5, 1}},
        {{-1, -0.5, 0, 0.5}, 0.5, {-1, 0, }},
        {{2, 2, 2}, 0, {2}},
    };
    for (const auto& c : cases) {
        std::vector<double> x = c.x, y(x.size());
        int n = int(x.size());
        compress_double_two_arrays_tol(x.data(), &n, y.data(), c.tol);
        x.resize(std::size_t(n));
        EXPECT_EQ(x, c.kept) << c.tol;
    }
    // The dialog's Sort button compresses at 1e-15: 1e-15 goes, 2e-15 stays.
    kwtest::Host host;
    OpenTable t(host, CKwTable::General);
    t.list().SelectAllRows();
    t.list().DeleteSelectedRows();
    for (const char* x : {"2e-15", "1e-15", "0"})
        t.base->Add(QString::fromLatin1(x), QString::fromLatin1(x));
    KwControl<QPushButton>(t.dialog.data(), CKwTableDialog::IDC_SORT)->click();
    ASSERT_EQ(t.base->GetRowCount(), 2);
    EXPECT_EQ(t.list().Model()->cellText(0, 1), QStringLiteral("0"));
    EXPECT_EQ(t.list().Model()->cellText(1, 1), QStringLiteral("2e-15"));
}

TEST(TableOpen, storedPointsBecomeTextWhenTheyAreNeeded)
{
    // A stored table opens with its rows as numbers: painted rows are formatted for the paint,
    // idle time formats slices, and anything that reads or changes cells formats all first.
    kwtest::Host host;
    constexpr int n = 50000;
    KW_UOM units(KW_UOM::MMNS);
    CKwTable table(4, QStringLiteral("Big"), CKwTable::General);
    table.GetYFunction()->SetUnitType(KwUnitKind::Stress);
    for (int i = 0; i < n; ++i)
        table.AddPoint(i * 0.5, i % 7 == 0 ? MissingDouble : i * 1e6);
    // What a row shows: X as it is, Y in MPa, a missing Y empty.
    const auto shown = [](int i, int col) {
        if (col == 0)
            return CKwNonlinearDialogBase::FormatValue(i * 0.5);
        return i % 7 == 0 ? QString() : CKwNonlinearDialogBase::FormatValue(i * 1.0);
    };
    const struct
    {
        const char* change;
    } changes[] = {{"read"}, {"delete"}, {"edit"}, {"insert"}, {"ok"}};
    for (const auto& c : changes) {
        const std::string what = c.change;
        QPointer<CKwTableDialog> d(CKwTableDialog::NewFor(&table));
        const auto cleanup = qScopeGuard([&d] { delete d.data(); });
        d->SetTable(host.view.get(), &table, &units);
        d->Create();
        KwPointTableModel* m = d->GetList().Model();
        ASSERT_EQ(d->GetRowCount(), n);
        ASSERT_EQ(m->rows(), n + 1);
        EXPECT_EQ(m->pendingRows(), n) << what;
        for (int r : {0, 7, 8, n - 1})
            for (int col = 0; col < 2; ++col)
                EXPECT_EQ(m->data(m->index(r, col)).toString(), shown(r, col)) << what << r;
        QApplication::processEvents(); // one idle slice
        EXPECT_GT(m->pendingRows(), 0) << what;
        EXPECT_LT(m->pendingRows(), n) << what;
        std::vector<int> expect(n); // the original row each row holds afterwards
        for (int i = 0; i < n; ++i)
            expect[std::size_t(i)] = i;
        if (what == "read") {
            EXPECT_EQ(m->cellText(n - 2, 0), shown(n - 2, 0));
        } else if (what == "delete") {
            d->GetList().SelectRow(40000);
            d->GetList().DeleteSelectedRows();
            expect.erase(expect.begin() + 40000);
        } else if (what == "edit") {
            m->setCellText(45000, 1, QStringLiteral("12.5"));
        } else if (what == "insert") {
            d->InsertRow(30000, QStringLiteral("-1"), QStringLiteral("-2"));
            expect.insert(expect.begin() + 30000, -1);
        } else {
            d->OnOK();
        }
        EXPECT_EQ(m->pendingRows(), 0) << what;
        ASSERT_EQ(d->GetRowCount(), int(expect.size())) << what;
        ASSERT_EQ(m->rows(), d->GetRowCount() + 1) << what;
        for (int r = 0; r < d->GetRowCount(); r += 997) {
            const int i = expect[std::size_t(r)];
            if (i < 0)
                continue;
            EXPECT_EQ(m->cellText(r, 0), shown(i, 0)) << what << " row " << r;
            if (!(what == "edit" && r == 45000)) {
                EXPECT_EQ(m->cellText(r, 1), shown(i, 1)) << what << " row " << r;
            }
        }
        EXPECT_EQ(m->cellText(30000, 0),
                  expect[30000] < 0 ? QStringLiteral("-1") : shown(expect[30000], 0))
            << what;
        EXPECT_EQ(m->cellText(45000, 1),
                  what == "edit" ? QStringLiteral("12.5") : shown(expect[45000], 1))
            << what;
        if (what == "ok") {
            // Back in internal units, missing stays missing.
            ASSERT_EQ(table.GetPointCount(), n);
            EXPECT_DOUBLE_EQ(table.GetYFunction()->GetValue(12345), 12345e6);
            EXPECT_TRUE(IsMissingValue(table.GetYFunction()->GetValue(14)));
            EXPECT_EQ(table.GetYFunction()->GetUnitType(), KwUnitKind::Stress);
        }
    }
}

} // namespace

// "Convert to True Values" turns the rows into true strain and stress once; with the
// material's modulus, OK refuses a curve whose plastic strain does not rise.
TEST(NonlinearMaterialOk, trueValuesOnRequestAndAPlasticCurveThatRises)
{
    kwtest::Host host;
    {
        OpenTable t(host, CKwTable::StressStrainCurve);
        auto* m = static_cast<CKwMaterialNonlinearDialog*>(t.dialog.data());
        t.base->Add(QStringLiteral("0.1"), QStringLiteral("3e8"));
        auto* button = KwControl<QPushButton>(t.dialog.data(),
                                              CKwMaterialNonlinearDialog::IDC_TRUE_VALUES);
        ASSERT_NE(button, nullptr);
        ASSERT_TRUE(button->isEnabled());
        button->click();
        EXPECT_TRUE(m->HoldsTrueValues());
        EXPECT_FALSE(button->isEnabled());
        host.view->ClearBubbleRecord();
        EXPECT_FALSE(m->OnTrueValues()); // never twice
        EXPECT_EQ(host.view->GetLastBubbleText(), QStringLiteral("The curve holds true values already."));
        m->SetElasticModulus(2e11);
        t.ok();
        EXPECT_FALSE(t.dialog->isVisible());
        const std::vector<double> x = t.column(true), y = t.column(false);
        ASSERT_EQ(x.size(), 3u);
        EXPECT_NEAR(x[1], std::log1p(0.01), 1e-9);
        EXPECT_NEAR(x[2], std::log1p(0.1), 1e-9);
        EXPECT_NEAR(y[1], 2e8 * 1.01, 1e-6 * y[1]);
        EXPECT_NEAR(y[2], 3e8 * 1.1, 1e-6 * y[2]);
        EXPECT_TRUE(t.table.m_trueValues);
    }
    {
        OpenTable t(host, CKwTable::StressStrainCurve);
        auto* m = static_cast<CKwMaterialNonlinearDialog*>(t.dialog.data());
        // Past yield, then a stress that rises faster than the elastic line: less plastic
        // strain at the larger strain.
        t.base->Add(QStringLiteral("0.02"), QStringLiteral("3e8"));
        t.base->Add(QStringLiteral("0.0205"), QStringLiteral("4.5e8"));
        m->SetElasticModulus(2e11);
        host.view->ClearBubbleRecord();
        t.ok();
        EXPECT_TRUE(t.dialog->isVisible());
        EXPECT_TRUE(host.view->GetLastBubbleText().startsWith(
            QStringLiteral("The plastic strain does not increase at row 4")))
            << host.view->GetLastBubbleText().toStdString();
        EXPECT_FALSE(t.table.m_trueValues);
        EXPECT_EQ(t.list().SelectedRows(), std::vector<int>{3});
    }
}
