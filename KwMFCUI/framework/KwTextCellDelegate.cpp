#include "KwTextCellDelegate.h"

#include <QApplication>
#include <QPainter>

void KwTextCellDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                               const QModelIndex& index) const
{
    QStyleOptionViewItem opt = option;
    initStyleOption(&opt, index);
    if (opt.features &
        (QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDecoration)) {
        QStyledItemDelegate::paint(painter, option, index);
        return;
    }
    const QWidget* widget = opt.widget;
    const QStyle* style = widget ? widget->style() : QApplication::style();
    const QPalette::ColorGroup group = !(opt.state & QStyle::State_Enabled) ? QPalette::Disabled
                                       : (opt.state & QStyle::State_Active) ? QPalette::Active
                                                                            : QPalette::Inactive;
    const bool selected = opt.state & QStyle::State_Selected;
    if (selected)
        painter->fillRect(opt.rect, opt.palette.brush(group, QPalette::Highlight));
    else if (opt.backgroundBrush.style() != Qt::NoBrush)
        painter->fillRect(opt.rect, opt.backgroundBrush);

    if (!opt.text.isEmpty()) {
        // The same text margin as the style's cells, so columns read alike in every table.
        const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, widget) + 1;
        const QRect box = opt.rect.adjusted(margin, 0, -margin, 0);
        QString text = opt.text;
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
        int advance = opt.fontMetrics.horizontalAdvance(text);
        if (advance > box.width()) {
            text = opt.fontMetrics.elidedText(text, opt.textElideMode, box.width());
            advance = opt.fontMetrics.horizontalAdvance(text);
        }
        // One line placed by hand: a text layout per cell would cost more than the glyphs.
        const Qt::Alignment align = QStyle::visualAlignment(opt.direction, opt.displayAlignment);
        int x = box.left();
        if (align & Qt::AlignRight)
            x = box.right() + 1 - advance;
        else if (align & Qt::AlignHCenter)
            x = box.left() + (box.width() - advance) / 2;
        const int height = opt.fontMetrics.height();
        int y = box.top() + (box.height() - height) / 2;
        if (align & Qt::AlignTop)
            y = box.top();
        else if (align & Qt::AlignBottom)
            y = box.bottom() + 1 - height;
        painter->save();
        painter->setFont(opt.font);
        painter->setPen(
            opt.palette.color(group, selected ? QPalette::HighlightedText : QPalette::Text));
        painter->setClipRect(opt.rect);
        painter->drawText(QPoint(x, y + opt.fontMetrics.ascent()), text);
        painter->restore();
    }

    if (opt.state & QStyle::State_HasFocus) {
        QStyleOptionFocusRect focus;
        focus.QStyleOption::operator=(opt);
        focus.rect = style->subElementRect(QStyle::SE_ItemViewItemFocusRect, &opt, widget);
        focus.state |= QStyle::State_KeyboardFocusChange | QStyle::State_Item;
        focus.backgroundColor =
            opt.palette.color(group, selected ? QPalette::Highlight : QPalette::Window);
        style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, widget);
    }
}
