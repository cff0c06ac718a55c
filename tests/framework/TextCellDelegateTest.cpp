// The plain-text cell delegate: backgrounds, selection, alignment and text kept inside its
// cell, checked on the pixels a table view paints.
#include "KwTextCellDelegate.h"

#include <QHeaderView>
#include <QImage>
#include <QStandardItemModel>
#include <QTableView>
#include <gtest/gtest.h>

namespace {

constexpr int kColumn = 120;
constexpr int kRow = 24;

struct Table
{
    QStandardItemModel model{3, 2};
    QTableView view;
    Table()
    {
        QPalette pal = view.palette();
        pal.setColor(QPalette::Base, Qt::white);
        pal.setColor(QPalette::Text, Qt::black);
        pal.setColor(QPalette::Highlight, QColor(0, 0, 200));
        pal.setColor(QPalette::HighlightedText, Qt::white);
        view.setPalette(pal);
        view.setModel(&model);
        view.setItemDelegate(new KwTextCellDelegate(&view));
        view.horizontalHeader()->hide();
        view.verticalHeader()->hide();
        view.setShowGrid(false);
        view.setFrameShape(QFrame::NoFrame);
        view.setSelectionBehavior(QAbstractItemView::SelectRows);
        for (int c = 0; c < 2; ++c)
            view.setColumnWidth(c, kColumn);
        for (int r = 0; r < 3; ++r)
            view.setRowHeight(r, kRow);
        view.resize(2 * kColumn + 10, 3 * kRow + 10);
    }
    QImage picture()
    {
        view.show();
        return view.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }
};

QRect cell(int row, int column)
{
    return {column * kColumn, row * kRow, kColumn, kRow};
}

// Pixels clearly darker than the background: the ink of the text.
int inkIn(const QImage& image, const QRect& r, QRgb background)
{
    int n = 0;
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            if (std::abs(qGray(image.pixel(x, y)) - qGray(background)) > 96)
                ++n;
    return n;
}

TEST(TextCellDelegate, paintsBackgroundSelectionAndInkWhereTheCellSays)
{
    Table t;
    t.model.setData(t.model.index(0, 0), QStringLiteral("EX"));
    t.model.setData(t.model.index(0, 1), QBrush(Qt::red), Qt::BackgroundRole);
    t.model.setData(t.model.index(1, 0), QStringLiteral("Poisson's Ratio"));
    t.model.setData(t.model.index(1, 1), QStringLiteral("0.29"));
    t.view.selectRow(1);
    t.view.clearFocus();
    const QImage img = t.picture();

    // A background from the model fills the cell, an empty one stays white.
    EXPECT_EQ(QColor(img.pixel(cell(0, 1).center())), QColor(Qt::red));
    EXPECT_EQ(inkIn(img, cell(2, 0), qRgb(255, 255, 255)), 0);
    // Text in black on white; a selected row in the highlight with light text on it.
    EXPECT_GT(inkIn(img, cell(0, 0), qRgb(255, 255, 255)), 10);
    EXPECT_EQ(QColor(img.pixel(cell(1, 1).right() - 2, cell(1, 1).center().y())),
              QColor(0, 0, 200));
    EXPECT_GT(inkIn(img, cell(1, 0), qRgb(0, 0, 200)), 10);
}

TEST(TextCellDelegate, textStaysInItsCellAndFollowsItsAlignment)
{
    struct Case
    {
        const char* name;
        Qt::Alignment align;
        bool inkLeft, inkRight;
    };
    const Case cases[] = {
        {"left", Qt::AlignLeft | Qt::AlignVCenter, true, false},
        {"right", Qt::AlignRight | Qt::AlignVCenter, false, true},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        Table t;
        t.model.setData(t.model.index(0, 0), QStringLiteral("1.5"));
        t.model.setData(t.model.index(0, 0), int(c.align), Qt::TextAlignmentRole);
        // Far wider than its column: cut short inside it, nothing spills into the next cell.
        t.model.setData(t.model.index(1, 0), QString(60, QLatin1Char('W')));
        const QImage img = t.picture();
        const QRect r = cell(0, 0);
        const QRect leftQuarter(r.left(), r.top(), r.width() / 4, r.height());
        const QRect rightQuarter(r.right() - r.width() / 4, r.top(), r.width() / 4, r.height());
        EXPECT_EQ(inkIn(img, leftQuarter, qRgb(255, 255, 255)) > 0, c.inkLeft);
        EXPECT_EQ(inkIn(img, rightQuarter, qRgb(255, 255, 255)) > 0, c.inkRight);
        EXPECT_GT(inkIn(img, cell(1, 0), qRgb(255, 255, 255)), 50);
        EXPECT_EQ(inkIn(img, cell(1, 1), qRgb(255, 255, 255)), 0);
    }
}

} // namespace
