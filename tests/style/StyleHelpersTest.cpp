// The shared number formats and label helpers, and the header fitting the checker agrees with.
#include "KwStyle.h"
#include "KwStyleCheck.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QHeaderView>
#include <QTableWidget>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

TEST(StyleHelpers, numberFormats)
{
    struct Case
    {
        double value;
        const char* editable;
        const char* fixed;
        const char* scientific;
    };
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const Case cases[] = {
        {200000, "200000", "200000.000", "2.000E+05"},
        {184220.5, "184220.5", "184220.500", "1.842E+05"},
        {0.1 + 0.2, "0.3", "0.300", "3.000E-01"},
        {-2.5e-7, "-2.5e-07", "-0.000", "-2.500E-07"},
        {1234567890123.0, "1.23456789e+12", "1234567890123.000", "1.235E+12"},
        {nan, "", "", ""},
        {std::numeric_limits<double>::infinity(), "", "", ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(KwStyle::EditableNumber(c.value), QString::fromLatin1(c.editable)) << c.editable;
        EXPECT_EQ(KwStyle::FixedNumber(c.value), QString::fromLatin1(c.fixed)) << c.fixed;
        EXPECT_EQ(KwStyle::ScientificNumber(c.value), QString::fromLatin1(c.scientific))
            << c.scientific;
    }
    // A value typed with up to ten digits reads back unchanged from what a field shows, and
    // any value shows the same text again after one open and OK.
    for (double v : {184220.5, 0.3, 2.5e-7, 6.02214076e23, 123456.7891, -1e-300})
        EXPECT_EQ(KwStyle::EditableNumber(v).toDouble(), v) << v;
    for (double v : {0.1 + 0.2, 2.0 / 3.0, 1.0 / 7.0}) {
        const QString once = KwStyle::EditableNumber(v);
        EXPECT_EQ(KwStyle::EditableNumber(once.toDouble()), once) << v;
    }
}

TEST(StyleHelpers, labelsAndUnits)
{
    const std::pair<const char*, const char*> labels[] = {
        {"Name", "Name:"}, {"Name:", "Name:"}, {" Name : ", "Name:"}, {"", ""}, {" : ", ""}};
    for (const auto& [in, out] : labels)
        EXPECT_EQ(KwStyle::FieldLabel(QString::fromUtf8(in)), QString::fromUtf8(out)) << in;
    EXPECT_EQ(KwStyle::WithUnit(QStringLiteral("Time"), QStringLiteral("s")),
              QStringLiteral("Time (s)"));
    EXPECT_EQ(KwStyle::WithUnit(QStringLiteral("Area"), QStringLiteral("mm²")),
              QStringLiteral("Area (mm²)"));
    EXPECT_EQ(KwStyle::WithUnit(QStringLiteral("Load factor"), QStringLiteral(" ")),
              QStringLiteral("Load factor"));
}

TEST(StyleHelpers, fittedHeadersPassTheCheckAndNeverShrink)
{
    QTableWidget table(2, 3);
    table.setObjectName(QStringLiteral("t"));
    table.setHorizontalHeaderLabels({QStringLiteral("ID"),
                                     QStringLiteral("Temperaturabhängigkeit der Dichte"),
                                     QStringLiteral("Wert")});
    table.horizontalHeader()->setStretchLastSection(false);
    for (int c = 0; c < 3; ++c)
        table.setColumnWidth(c, 30);
    table.setColumnWidth(0, 200);
    table.resize(600, 200);
    table.show();
    QApplication::processEvents();
    ASSERT_TRUE(KwStyleKeys(KwCheckStyle(&table)).contains(QStringLiteral("header-wider t/col1")));
    KwStyle::FitHeaders(&table);
    QApplication::processEvents();
    EXPECT_EQ(table.columnWidth(0), 200);
    for (const QString& k : KwStyleKeys(KwCheckStyle(&table)))
        EXPECT_FALSE(k.startsWith(QLatin1String("header-wider"))) << qPrintable(k);
}

// Every dialog's layouts get the house margins and spacings whatever its template set: the
// dialog's edge, a group's frame, the rows of a grid, a button row, a row nested in a group.
TEST(StyleHelpers, houseLayoutReachesEveryLayoutOfADialog)
{
    QWidget dialog;
    auto* top = new QVBoxLayout(&dialog);
    top->setContentsMargins(1, 2, 3, 4);
    top->setSpacing(1);
    auto* group = new QGroupBox(QStringLiteral("Group"), &dialog);
    auto* grid = new QGridLayout(group);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(0);
    grid->addWidget(new QLabel(QStringLiteral("Name:")), 0, 0);
    grid->addWidget(new QLineEdit, 0, 1);
    auto* nested = new QHBoxLayout;
    nested->setContentsMargins(5, 5, 5, 5);
    nested->addWidget(new QLineEdit);
    grid->addLayout(nested, 1, 1);
    top->addWidget(group);
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(7, 7, 7, 7);
    buttons->setSpacing(20);
    buttons->addWidget(new QPushButton(QStringLiteral("OK")));
    top->addLayout(buttons);

    KwStyle::ApplyHouseLayout(&dialog);
    const QMargins dialogMargins(KwStyle::DialogMargin, KwStyle::DialogMargin,
                                 KwStyle::DialogMargin, KwStyle::DialogMargin);
    const QMargins groupMargins(KwStyle::GroupMargin, KwStyle::GroupMargin,
                                KwStyle::GroupMargin, KwStyle::GroupMargin);
    EXPECT_EQ(top->contentsMargins(), dialogMargins);
    EXPECT_EQ(top->spacing(), KwStyle::GroupSpacing);
    EXPECT_EQ(grid->contentsMargins(), groupMargins);
    EXPECT_EQ(grid->horizontalSpacing(), KwStyle::ColumnSpacing);
    EXPECT_EQ(grid->verticalSpacing(), KwStyle::RowSpacing);
    EXPECT_EQ(nested->contentsMargins(), QMargins());
    EXPECT_EQ(buttons->contentsMargins(), QMargins());
    EXPECT_EQ(buttons->spacing(), KwStyle::ButtonSpacing);
}

// The letters of a triple sit inside their fields, in front of the text: a typed value is never
// drawn under its letter, and labelling again (a change of language) adds no second letter.
TEST(StyleHelpers, tripleLettersSitInFrontOfTheText)
{
    QWidget w;
    auto* x = new QLineEdit(&w);
    auto* y = new QLineEdit(&w);
    auto* z = new QLineEdit(&w);
    KwStyle::LabelTriple(x, y, z);
    KwStyle::LabelTriple(x, y, z);
    const std::pair<QLineEdit*, const char*> fields[] = {{x, "X"}, {y, "Y"}, {z, "Z"}};
    for (const auto& [field, axis] : fields) {
        const auto letters = field->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly);
        ASSERT_EQ(letters.size(), 1) << axis;
        EXPECT_EQ(letters.first()->text(), QString::fromLatin1(axis));
        EXPECT_GE(field->textMargins().left(), letters.first()->geometry().right()) << axis;
        EXPECT_TRUE(letters.first()->property("kwOverlay").toBool());
    }
    KwStyle::LabelTriple(nullptr, nullptr, nullptr); // nothing to label: no crash
}
