// The style checker on a small dialog built here: clean, it reports nothing; with one fault
// put in for each rule, it reports that fault (and only faults of that rule).
#include "KwStyle.h"
#include "KwStyleCheck.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>
#include <QTableWidget>
#include <QVBoxLayout>
#include <functional>
#include <gtest/gtest.h>
#include <memory>

namespace {

// The faults a fixture can carry, one per rule.
struct Faults
{
    bool labelWithoutColon = false; // "Name" before its field
    bool colonBeforeButton = false; // "Ready:" before the OK button
    bool secondColumn = false;      // the third field starts in a column of its own
    bool clippedChild = false;      // a label reaching out of its group
    bool overlap = false;           // a frame laid on the name field
    bool longCaption = false;       // a check box too narrow for its text
    bool narrowHeader = false;      // a column narrower than its head
    bool leftNumbers = false;       // numbers left-aligned in the table
    bool elidedCell = false;        // a cell's text cut short by its column
    QString sliderLabel = QStringLiteral("Density:");
};

struct Fixture
{
    std::unique_ptr<QDialog> dialog;
    QGroupBox* group = nullptr;
};

Fixture build(const Faults& f)
{
    Fixture x;
    x.dialog = std::make_unique<QDialog>();
    QDialog* d = x.dialog.get();
    d->setObjectName(QStringLiteral("fixture"));
    auto* top = new QVBoxLayout(d);
    KwStyle::ApplyDialogLayout(top);

    x.group = new QGroupBox(QStringLiteral("Values"), d);
    x.group->setObjectName(QStringLiteral("group"));
    auto* grid = new QGridLayout(x.group);
    KwStyle::ApplyGroupLayout(grid);
    const auto row = [&](int r, const char* name, const QString& text, QWidget* field, int col) {
        auto* label = new QLabel(text, x.group);
        label->setObjectName(QString::fromLatin1(name));
        grid->addWidget(label, r, 0);
        grid->addWidget(field, r, col);
    };
    auto* name = new QLineEdit(QStringLiteral("Bracket"), x.group);
    name->setObjectName(QStringLiteral("name"));
    row(0, "labelName", f.labelWithoutColon ? QStringLiteral("Name") : QStringLiteral("Name:"),
        name, 1);
    auto* value = new QLineEdit(QStringLiteral("200000"), x.group);
    value->setObjectName(QStringLiteral("value"));
    row(1, "labelValue", QStringLiteral("Value:"), value, 1);
    auto* depth = new QLineEdit(QStringLiteral("12.5"), x.group);
    depth->setObjectName(QStringLiteral("depth"));
    row(2, "labelDepth", QStringLiteral("Depth:"), depth, f.secondColumn ? 2 : 1);
    auto* slider = new QSlider(Qt::Horizontal, x.group);
    slider->setObjectName(QStringLiteral("density"));
    row(3, "labelDensity", f.sliderLabel, slider, 1);
    auto* check = new QCheckBox(QStringLiteral("Switch the long option on"), x.group);
    check->setObjectName(QStringLiteral("option"));
    if (f.longCaption)
        check->setMaximumWidth(60);
    grid->addWidget(check, 4, 0, 1, 3);
    KwStyle::ApplyFormGrid(grid);
    top->addWidget(x.group);

    auto* table = new QTableWidget(3, 2, d);
    table->setObjectName(QStringLiteral("table"));
    table->setHorizontalHeaderLabels({QStringLiteral("Step"), QStringLiteral("Force")});
    for (int r = 0; r < 3; ++r) {
        auto* step = new QTableWidgetItem(f.elidedCell && r == 1
                                              ? QStringLiteral("second step, held for a while")
                                              : QString::number(r + 1));
        auto* force = new QTableWidgetItem(KwStyle::EditableNumber(1500.25 * (r + 1)));
        if (!f.leftNumbers) {
            step->setTextAlignment(KwStyle::NumberAlignment);
            force->setTextAlignment(KwStyle::NumberAlignment);
        }
        table->setItem(r, 0, step);
        table->setItem(r, 1, force);
    }
    if (f.narrowHeader) {
        table->setHorizontalHeaderLabels(
            {QStringLiteral("Step"), QStringLiteral("Force per unit length of the edge")});
        table->setColumnWidth(1, 60);
        table->horizontalHeader()->setStretchLastSection(false);
    } else {
        KwStyle::FitHeaders(table);
    }
    top->addWidget(table);

    auto* buttons = new QHBoxLayout;
    if (f.colonBeforeButton) {
        auto* ready = new QLabel(QStringLiteral("Ready:"), d);
        ready->setObjectName(QStringLiteral("ready"));
        buttons->addWidget(ready);
    }
    buttons->addStretch(1);
    auto* ok = new QPushButton(QStringLiteral("OK"), d);
    ok->setObjectName(QStringLiteral("ok"));
    buttons->addWidget(ok);
    top->addLayout(buttons);

    d->resize(420, 380);
    d->show();
    QApplication::processEvents();
    // Faults of placement come after the layout has done its work.
    if (f.clippedChild) {
        auto* stray = new QLabel(QStringLiteral("x"), x.group);
        stray->setObjectName(QStringLiteral("stray"));
        stray->setGeometry(x.group->width() - 5, 0, 40, 16);
        stray->show();
    }
    if (f.overlap) {
        auto* frame = new QFrame(x.group);
        frame->setObjectName(QStringLiteral("cover"));
        frame->setGeometry(name->geometry());
        frame->show();
    }
    QApplication::processEvents();
    return x;
}

QStringList check(const Faults& f, const KwStyleOptions& options = KwDefaultStyleOptions())
{
    const Fixture x = build(f);
    return KwStyleKeys(KwCheckStyle(x.dialog.get(), options));
}

} // namespace

TEST(StyleCheck, aCleanDialogHasNoFindings)
{
    EXPECT_EQ(check(Faults{}), QStringList());
}

TEST(StyleCheck, eachRuleCatchesItsFault)
{
    struct Case
    {
        const char* name;
        std::function<void(Faults&)> fault;
        const char* expected;
    };
    const Case cases[] = {
        {"label without colon", [](Faults& f) { f.labelWithoutColon = true; },
         "colon-missing labelName"},
        {"colon before a button", [](Faults& f) { f.colonBeforeButton = true; },
         "colon-misplaced ready"},
        {"second field column", [](Faults& f) { f.secondColumn = true; },
         "field-columns group"},
        {"child out of its group", [](Faults& f) { f.clippedChild = true; }, "clipped stray"},
        {"widget on a widget", [](Faults& f) { f.overlap = true; }, "overlap name"},
        {"caption too long", [](Faults& f) { f.longCaption = true; }, "text-wider option"},
        {"head wider than column", [](Faults& f) { f.narrowHeader = true; },
         "header-wider table/col1"},
        {"numbers on the left", [](Faults& f) { f.leftNumbers = true; }, "number-left table/col0"},
        {"cell cut short", [](Faults& f) { f.elidedCell = true; }, "text-wider table/col0"},
    };
    for (const Case& c : cases) {
        Faults f;
        c.fault(f);
        const QStringList found = check(f);
        const QString expected = QString::fromLatin1(c.expected);
        EXPECT_TRUE(found.contains(expected))
            << c.name << ": " << qPrintable(found.join(QLatin1String("; ")));
        const QString rule = expected.section(QLatin1Char(' '), 0, 0);
        for (const QString& k : found)
            EXPECT_TRUE(k.startsWith(rule + QLatin1Char(' ')))
                << c.name << ": unrelated finding " << qPrintable(k);
    }
}

TEST(StyleCheck, exceptionsSpareTheFixedTextsAndThePointTables)
{
    Faults f;
    f.sliderLabel = QStringLiteral("Density"); // the system's own text, without colon
    EXPECT_EQ(check(f), QStringList());
    f.sliderLabel = QStringLiteral("Thickness");
    EXPECT_EQ(check(f), QStringList{QStringLiteral("colon-missing labelDensity")});

    Faults left;
    left.leftNumbers = true;
    KwStyleOptions options = KwDefaultStyleOptions();
    options.leftAlignedTables << QStringLiteral("table");
    EXPECT_EQ(check(left, options), QStringList());
}
