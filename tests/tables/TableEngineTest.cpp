// The point-table engine through the real table dialogs: paste, copy, delete, sort, origin,
// number format, cell checks and OK/Cancel, with a model tester watching every change.
#include "CFMView.h"
#include "CKwFunction.h"
#include "CKwMaterialNonlinearDialog.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "KW_UOM.h"
#include "KwChart.h"
#include "KwControls.h"
#include "KwNumbers.h"
#include "KwTableMath.h"
#include "KwTestSupport.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QClipboard>
#include <QLineEdit>
#include <QLocale>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Rows = std::vector<std::pair<std::string, std::string>>;

// A table dialog over a table of these points, in mm-N-MPa, watched by a model tester.
struct Fixture
{
    // One host per test: a host's sweep at its end takes every top-level window.
    Fixture(kwtest::Host& h, const Rows& rows, CKwTable::TableType type = CKwTable::General)
        : host(h), units(KW_UOM::MMNS), table(7, QStringLiteral("T"), type)
    {
        dlg = CKwTableDialog::NewFor(&table);
        dlg->SetTable(host.view.get(), &table, &units);
        dlg->Create();
        tester = std::make_unique<QAbstractItemModelTester>(
            dlg->GetList().Model(), QAbstractItemModelTester::FailureReportingMode::Warning);
        for (const auto& r : rows)
            dlg->Add(QString::fromStdString(r.first), QString::fromStdString(r.second));
    }
    Rows rows() const
    {
        Rows out;
        const KwPointTableModel* m = dlg->GetList().Model();
        for (int r = 0; r < dlg->GetRowCount(); ++r)
            out.emplace_back(std::string(m->cellView(r, 0)), std::string(m->cellView(r, 1)));
        return out;
    }
    // The list keeps exactly one blank edit row after the real ones.
    bool editRowLast() const
    {
        const KwPointTableModel* m = dlg->GetList().Model();
        return m->rows() == dlg->GetRowCount() + 1 &&
               m->cellView(dlg->GetRowCount(), 0).empty() &&
               m->cellView(dlg->GetRowCount(), 1).empty();
    }
    void select(std::initializer_list<int> rows)
    {
        auto& list = dlg->GetList();
        list.clearSelection();
        for (int r : rows)
            list.selectionModel()->select(list.Model()->index(r, 0),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
    void key(int k, Qt::KeyboardModifiers mods = Qt::NoModifier)
    {
        QTest::keyClick(&dlg->GetList(), Qt::Key(k), mods);
    }

    kwtest::Host& host;
    KW_UOM units;
    CKwTable table;
    // Guarded: a closed modeless dialog deletes itself.
    QPointer<CKwTableDialog> dlg;
    std::unique_ptr<QAbstractItemModelTester> tester;
    ~Fixture()
    {
        tester.reset();
        delete dlg.data();
    }
};

TEST(TablePaste, piecesLandWhereTheSeparatorsSay)
{
    kwtest::Host host;
    const struct
    {
        Rows before;
        int row;
        const char* text;
        Rows after;
    } cases[] = {
        // Into the edit row of an empty table: two rows.
        {{}, 0, "1\t2\r\n3\t4", {{"1", "2"}, {"3", "4"}}},
        // A lone piece with no separator: X emptied, the text into Y.
        {{{"7", "8"}}, 0, "5", {{"", "5"}}},
        // Rows past the end append; a third column is dropped.
        {{{"1", "1"}}, 0, "2\t3\t9\r\n4\t5\r\n", {{"2", "3"}, {"4", "5"}}},
        // Bad pieces keep their text behind the prefix; pieces are trimmed of CR/LF/FF.
        {{{"1", "1"}, {"2", "2"}}, 0, "x\t\f1\r\n2\tkg\r\n",
         {{"Invalid Data: x", "1"}, {"2", "Invalid Data: kg"}}},
        // Only separators.
        {{}, 0, "\t\t\r\n\r\n", {{"", ""}}},
        // Text beyond ASCII keeps its characters (stored as UTF-8).
        {{{"1", "1"}}, 0, "\xc2\xb5m\t2\r\n3\t\xc3\xa4", {{"Invalid Data: \xc2\xb5m", "2"}, {"3", "Invalid Data: \xc3\xa4"}}},
    };
    for (const auto& c : cases) {
        Fixture f(host, c.before);
        QString first;
        kwtest::AnswerModals([&] { f.dlg->PasteToCell(QString::fromUtf8(c.text), c.row, 0, &first); });
        EXPECT_EQ(f.rows(), c.after) << c.text;
        EXPECT_TRUE(f.editRowLast()) << c.text;
    }
}

TEST(TablePaste, onlyTheFirstRejectionIsReportedAndProtectedRowsAreSkipped)
{
    kwtest::Host host;
    Fixture f(host, {{"1", "1"}, {"2", "2"}, {"3", "3"}});
    host.view->ClearBubbleRecord();
    QString first;
    f.dlg->PasteToCell(QStringLiteral("a\tb\r\nc\td\r\n"), 0, 0, &first);
    EXPECT_EQ(host.view->GetBubbleCount(), 1);
    EXPECT_EQ(first, QStringLiteral("a"));

    KW_UOM units(KW_UOM::SI);
    CKwTable curve(1, QStringLiteral("C"), CKwTable::StressStrainCurve);
    curve.AddPoint(0, 0);
    curve.AddPoint(0.01, 2e8);
    CKwMaterialNonlinearDialog mat(&curve, &units, host.view.get());
    mat.Create();
    mat.PasteToCell(QStringLiteral("5\t6\r\n7\t8"), 0, 0, nullptr);
    EXPECT_EQ(mat.GetList().Model()->cellText(0, 0), QStringLiteral("0")); // origin kept
    EXPECT_EQ(mat.GetList().Model()->cellText(1, 0), QStringLiteral("7"));
}

TEST(TableKeys, clipboardAndDeleteThroughTheKeyboard)
{
    kwtest::Host host;
    Fixture f(host, {{"1", "10"}, {"2", "20"}, {"3", "30"}});
    f.dlg->show();
    // Copy takes the selected rows from the top, CR LF between, none after the last.
    f.select({2, 0});
    f.key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), QStringLiteral("1\t10\r\n3\t30"));
    // Cut with the edit row selected too: two real rows go, the count drops by two.
    f.select({0, 1, 3});
    f.key(Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(f.rows(), (Rows{{"3", "30"}}));
    EXPECT_TRUE(f.editRowLast());
    // Paste from the lowest selected row: the edit row appends.
    QApplication::clipboard()->setText(QStringLiteral("4\t40\r\n5\t50"));
    f.select({1});
    f.key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(f.rows(), (Rows{{"3", "30"}, {"4", "40"}, {"5", "50"}}));
    // Ctrl+End selects the edit row, Ctrl+Home row 0, Tab moves the selection down.
    f.key(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(f.dlg->GetList().SelectedRows(), std::vector<int>{3});
    f.key(Qt::Key_Home, Qt::ControlModifier);
    f.key(Qt::Key_Tab);
    EXPECT_EQ(f.dlg->GetList().SelectedRows(), std::vector<int>{1});
    // Delete of one row selects the row that takes its place; the edit row never goes.
    f.key(Qt::Key_Delete);
    EXPECT_EQ(f.rows(), (Rows{{"3", "30"}, {"5", "50"}}));
    EXPECT_EQ(f.dlg->GetList().SelectedRows(), std::vector<int>{1});
    f.select({2});
    f.key(Qt::Key_Delete);
    EXPECT_EQ(f.dlg->GetRowCount(), 2);
    // Select all takes the real rows only; an empty clipboard pastes nothing.
    f.dlg->GetList().SelectAllRows();
    EXPECT_EQ(f.dlg->GetList().SelectedRows(), (std::vector<int>{0, 1}));
    QApplication::clipboard()->clear();
    f.key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(f.dlg->GetRowCount(), 2);
}

TEST(TableKeys, clickOpensTheEditorAndTheEditRowGrows)
{
    kwtest::Host host;
    Fixture f(host, Rows{{"1", "10"}});
    f.dlg->show();
    auto& list = f.dlg->GetList();
    const QRect cell = list.visualRect(list.Model()->index(1, 0));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, cell.center());
    auto* editor = list.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    QTest::keyClicks(editor, QStringLiteral("2.5"));
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(f.rows(), (Rows{{"1", "10"}, {"2.5", ""}}));
    EXPECT_TRUE(f.editRowLast());
}

TEST(TableRows, sortCompressAndOrigin)
{
    kwtest::Host host;
    Fixture f(host, {{"2", "5"}, {"1", "3"}, {"1.0000000000000001", "4"}});
    f.dlg->SortAndCompressTable(1);
    EXPECT_EQ(f.rows(), (Rows{{"1", "3"}, {"2", "5"}}));
    EXPECT_TRUE(f.editRowLast());

    const struct
    {
        const char* x;
        const char* y;
        bool origin;
    } origins[] = {{"1e-11", "1e-11", true}, {"1e-10", "0", false}, {"", "0", false},
                   {" -0 ", "0", true},      {"0", "", false}};
    for (const auto& o : origins) {
        Fixture g(host, {{"5", "5"}, {o.x, o.y}});
        int row = -7;
        EXPECT_EQ(g.dlg->IsOriginInTable(&row), o.origin) << o.x << "," << o.y;
        EXPECT_EQ(row, o.origin ? 1 : -7);
        g.dlg->DeleteOriginFromTable();
        EXPECT_EQ(g.dlg->GetRowCount(), o.origin ? 1 : 2);
    }
    Fixture h(host, Rows{{"5", "5"}});
    KwControl<QPushButton>(h.dlg.data(), CKwTableDialog::IDC_ADD_ORIGIN)->click();
    KwControl<QPushButton>(h.dlg.data(), CKwTableDialog::IDC_ADD_ORIGIN)->click();
    EXPECT_EQ(h.rows(), (Rows{{"0", "0"}, {"5", "5"}}));
    EXPECT_TRUE(h.editRowLast());
}

TEST(TableValues, formatAndReadBackInUnits)
{
    kwtest::Host host;
    const struct
    {
        double v;
        const char* text;
    } formats[] = {{1.0e7, "10000000"}, {1.5e10, "1.5e+10"}, {1.25e-5, "1.25e-5"}, {-2.5e-300, "-2.5e-300"},
                   {0.1, "0.1"},    {123456789012.0, "1.23456789e+11"}};
    for (const auto& c : formats)
        EXPECT_EQ(CKwNonlinearDialogBase::FormatValue(c.v), QString::fromLatin1(c.text));

    Fixture f(host, {{"1 000", " 2.5 "}, {"", "3"}});
    f.dlg->LoadTableValues(1, 0, KwUnitKind::Stress, 2.0e8);
    EXPECT_EQ(f.dlg->GetList().Model()->cellText(1, 0), QStringLiteral("200")); // MPa
    EXPECT_DOUBLE_EQ(f.dlg->TableUpdateValue(0, 0, -1), 1000.0);
    EXPECT_DOUBLE_EQ(f.dlg->TableUpdateValue(1, 0, KwUnitKind::Stress), 2.0e8);
    EXPECT_TRUE(IsMissingValue(f.dlg->GetItemValue(2, 0)));
    f.dlg->LoadTableValues(1, 1, -1, MissingDouble);
    EXPECT_TRUE(f.dlg->GetList().Model()->cellText(1, 1).isEmpty());
}

TEST(TableDialog, okWritesFunctionsInUnitsOrNamesTheBadCellAndStays)
{
    kwtest::Host host;
    Fixture f(host, Rows{}, CKwTable::TimeCurve);
    f.table.AddPoint(0, 1); // not shown: the dialog was filled before
    f.dlg->PasteToCell(QStringLiteral("0\t0\r\n1\t2\r\n2\tabc"), 0, 0, nullptr);
    host.view->ClearBubbleRecord();
    f.dlg->show();
    KwControl<QPushButton>(f.dlg.data(), CKwTableDialog::IDC_BUTTON_OK)->click();
    EXPECT_TRUE(f.dlg->isVisible());
    EXPECT_EQ(f.table.GetPointCount(), 1); // untouched
    EXPECT_TRUE(host.view->GetLastBubbleText().contains(QStringLiteral("InvalidData:abc")));

    f.dlg->GetList().Model()->setCellText(2, 1, QStringLiteral("4"));
    KwControl<QPushButton>(f.dlg.data(), CKwTableDialog::IDC_BUTTON_OK)->click();
    ASSERT_EQ(f.table.GetPointCount(), 3);
    EXPECT_EQ(f.table.GetXFunction()->GetUnitType(), KwUnitKind::Time);
    EXPECT_DOUBLE_EQ(f.table.GetYFunction()->GetValue(2), 4.0);
}

TEST(TableDialog, cancelLeavesTheTableAndRulesOfTheKinds)
{
    kwtest::Host host;
    Fixture f(host, Rows{}, CKwTable::FrequencyTable);
    f.dlg->Add(QStringLiteral("5"), QStringLiteral("1"));
    host.view->ClearBubbleRecord();
    EXPECT_FALSE(f.dlg->IsValidDataInput(QStringLiteral("-1"), 0, 0, 1));
    EXPECT_TRUE(f.dlg->IsValidDataInput(QStringLiteral("-1"), 0, 1, 1));
    EXPECT_TRUE(f.dlg->IsValidDataInput(QStringLiteral(" "), 0, 0, 1));
    EXPECT_EQ(host.view->GetBubbleCount(), 1);
    f.dlg->show();
    KwControl<QPushButton>(f.dlg.data(), CKwTableDialog::IDC_BUTTON_CANCEL)->click();
    EXPECT_EQ(f.table.GetPointCount(), 0);

    KW_UOM si;
    CKwTable curve(1, QStringLiteral("C"), CKwTable::StressStrainCurve);
    curve.AddPoint(0, 0);
    CKwMaterialNonlinearDialog mat(&curve, &si, host.view.get());
    mat.Create();
    EXPECT_FALSE(mat.IsEditableItem(0, 1));
    EXPECT_FALSE(mat.IsValidDataInput(QStringLiteral("-0.1"), 1, 0, 0));
    mat.GetList().SelectRow(0);
    mat.GetList().DeleteSelectedRows();
    EXPECT_EQ(mat.GetRowCount(), 1); // the origin goes only through its button
    mat.OnOK();                      // one point is no curve
    EXPECT_EQ(curve.GetPointCount(), 1);
    mat.Add(QStringLiteral("0.002"), QStringLiteral("400"));
    mat.Add(QStringLiteral("0.001"), QStringLiteral("200"));
    mat.OnOK();
    ASSERT_EQ(curve.GetPointCount(), 3);
    EXPECT_DOUBLE_EQ(curve.GetXFunction()->GetValue(1), 0.001); // sorted on OK
    EXPECT_DOUBLE_EQ(curve.GetYFunction()->GetValue(2), 400.0);
}

// The separator rules written out plainly, as the reference a paste of any size must match.
struct PasteResult
{
    Rows rows;
    int reports = 0;
    std::string first;
};

template <class Pasteable, class Valid>
PasteResult referencePaste(Rows rows, const std::string& text, int row, Pasteable pasteable,
                           Valid valid)
{
    PasteResult out;
    auto trim = [](std::string s) {
        const char* ws = " \t\r\n\f";
        s.erase(0, std::min(s.find_first_not_of(ws), s.size()));
        s.erase(s.find_last_not_of(ws) + 1);
        return s;
    };
    const std::size_t npos = std::string::npos;
    int col = 0;
    std::size_t pos = 0;
    bool lastButOne = false, last = false, firstDone = false;
    while (true) {
        std::size_t end, next;
        int nrow = row, ncol = col + 1;
        const std::size_t cr = text.find('\r', pos), tab = text.find('\t', pos);
        if (last) {
            end = next = text.size();
        } else if (cr != npos && tab != npos) {
            end = std::min(cr, tab);
            next = end + 1;
            if (cr < tab) {
                nrow = row + 1;
                ncol = 0;
            }
        } else {
            lastButOne = true;
            end = cr != npos ? cr : (tab != npos ? tab : pos);
            next = cr != npos || tab != npos ? end + 1 : pos;
        }
        const std::string piece = trim(text.substr(pos, end - pos));
        if (!firstDone) {
            firstDone = true;
            out.first = piece;
        }
        if (col < 2) {
            if (row == int(rows.size())) {
                rows.emplace_back(piece, "");
            } else if (row < int(rows.size()) && pasteable(row)) {
                std::string& cell = col == 0 ? rows[std::size_t(row)].first
                                             : rows[std::size_t(row)].second;
                if (valid(piece, col)) {
                    cell = piece;
                } else {
                    out.reports = 1;
                    cell = "Invalid Data: " + piece;
                }
            }
        }
        if (last || next > text.size())
            break;
        last = lastButOne;
        pos = next;
        row = nrow;
        col = ncol;
    }
    out.rows = std::move(rows);
    return out;
}

// Clipboard text of many shapes from a fixed seed: numbers, bad words, empty cells, ragged
// rows, CR LF / CR / LF line ends, blanks and form feeds at the ends of cells, a tail without
// line ends.
std::string pasteSample(unsigned seed, std::size_t bytes)
{
    std::string t;
    auto rnd = [&seed] { return (seed = seed * 1103515245u + 12345u) >> 16; };
    const char* words[] = {"1", "-2.5", "3e4", "0", "abc", "", " 7 ", "\f8", "x1", "12.125"};
    while (t.size() < bytes) {
        const unsigned cells = 1 + rnd() % 3;
        for (unsigned c = 0; c < cells; ++c) {
            t += words[rnd() % 10];
            if (c + 1 < cells)
                t += '\t';
        }
        const unsigned end = rnd() % 8;
        t += end < 5 ? "\r\n" : end == 5 ? "\r" : end == 6 ? "\n" : "\r\n\r\n";
    }
    if (seed % 3 == 0)
        t += "5\t6\t7"; // a tail with tabs only
    return t;
}

// The view's number check: blanks anywhere dropped, then empty or a number.
bool plainNumberOrEmpty(std::string s)
{
    s.erase(std::remove_if(s.begin(), s.end(), [](char c) { return c == ' ' || c == '\t'; }),
            s.end());
    if (s.empty())
        return true;
    char* end = nullptr;
    std::strtod(s.c_str(), &end);
    return end == s.c_str() + s.size() && s.find_first_of("xX") == std::string::npos;
}

TEST(TablePaste, largeAndSmallPastesFollowTheSameRules)
{
    kwtest::Host host;
    // Small texts take the cell-by-cell path, large ones the bulk path: both must give what
    // the plain rules give, in a table dialog and with the protected origin of a curve.
    for (const std::size_t bytes : {std::size_t(300), std::size_t(20000)}) {
        for (unsigned seed = 1; seed <= 6; ++seed) {
            const std::string text = pasteSample(seed, bytes);
            Rows before;
            for (int i = 0; i < int(seed * 40 % 150); ++i)
                before.emplace_back(std::to_string(i), std::to_string(2 * i));
            const int start = int(seed % 3 == 0 ? before.size() : seed % 2);
            const PasteResult want = referencePaste(
                before, text, start, [](int) { return true; },
                [](const std::string& s, int) { return plainNumberOrEmpty(s); });

            // The 8-bit entry and the UTF-16 one (the clipboard's) alike.
            for (const bool wide : {false, true}) {
                Fixture f(host, before);
                host.view->ClearBubbleRecord();
                QString first;
                if (wide)
                    f.dlg->PasteToCell(QString::fromLatin1(text.data(), qsizetype(text.size())), start,
                                       0, &first);
                else
                    f.dlg->PasteToCell(std::string_view(text), start, 0, &first);
                const Rows got = f.rows();
                std::size_t diff = 0;
                while (diff < got.size() && diff < want.rows.size() && got[diff] == want.rows[diff])
                    ++diff;
                ASSERT_EQ(got, want.rows) << "seed " << seed << ", " << bytes << " bytes, row "
                                          << diff << ": " << (diff < got.size() ? got[diff].first + "|" + got[diff].second : "-")
                                          << " want " << (diff < want.rows.size() ? want.rows[diff].first + "|" + want.rows[diff].second : "-");
                EXPECT_TRUE(f.editRowLast());
                EXPECT_EQ(host.view->GetBubbleCount(), want.reports) << seed;
                EXPECT_EQ(first.toStdString(), want.first) << seed;
            }
        }
        // A stress-strain curve: row 0 is the origin and takes no paste; negatives are bad.
        KW_UOM units(KW_UOM::SI);
        CKwTable curve(1, QStringLiteral("C"), CKwTable::StressStrainCurve);
        curve.AddPoint(0, 0);
        curve.AddPoint(0.01, 2e8);
        CKwMaterialNonlinearDialog mat(&curve, &units, host.view.get());
        mat.Create();
        Rows before;
        for (int r = 0; r < mat.GetRowCount(); ++r)
            before.emplace_back(std::string(mat.GetList().Model()->cellView(r, 0)),
                                std::string(mat.GetList().Model()->cellView(r, 1)));
        const std::string text = pasteSample(99, bytes);
        const PasteResult want = referencePaste(
            before, text, 0, [](int r) { return r != 0; },
            [](const std::string& s, int) {
                return plainNumberOrEmpty(s) && std::strtod(s.c_str(), nullptr) >= 0;
            });
        mat.PasteToCell(std::string_view(text), 0, 0, nullptr);
        Rows got;
        for (int r = 0; r < mat.GetRowCount(); ++r)
            got.emplace_back(std::string(mat.GetList().Model()->cellView(r, 0)),
                             std::string(mat.GetList().Model()->cellView(r, 1)));
        EXPECT_EQ(got, want.rows) << bytes << " bytes";
        EXPECT_EQ(mat.GetList().Model()->rows(), mat.GetRowCount() + 1);
    }
}

TEST(HostTables, sortIsStableAndCompressKeepsTheFirstOfARun)
{
    std::vector<double> x(200), y(200);
    for (int i = 0; i < 200; ++i) {
        x[i] = double((i * 37) % 50) - 25.0;
        y[i] = i;
    }
    qsort_double_two_arrays(x.data(), y.data(), 0, 199);
    for (int i = 1; i < 200; ++i) {
        ASSERT_LE(x[i - 1], x[i]);
        if (x[i - 1] == x[i]) {
            ASSERT_LT(y[i - 1], y[i]);
        }
    }
    double cx[] = {0, 1e-16, 2e-16, 3e-16, 1, 2}, cy[] = {1, 2, 3, 4, 5, 6};
    int n = 6;
    compress_double_two_arrays_tol(cx, &n, cy, 2.5e-16);
    EXPECT_EQ(n, 4); // 3e-16 is more than the tolerance above the kept 0
    EXPECT_EQ(cy[1], 4);
}

TEST(HostTables, numbersFollowTheUsersDecimalSeparator)
{
    const QLocale saved;
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_DOUBLE_EQ(KwAtof(QStringLiteral("1,5")), 1.5);
    EXPECT_DOUBLE_EQ(KwAtof(QStringLiteral("2.25")), 2.25);
    EXPECT_TRUE(CFMView::IsValidNumberString(QStringLiteral("-3,5e2"), -1));
    QLocale::setDefault(saved);
    EXPECT_DOUBLE_EQ(KwAtof(QStringLiteral("1,5")), 1.0);
}

} // namespace
