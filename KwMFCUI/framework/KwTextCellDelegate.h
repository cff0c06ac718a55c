#pragma once
// A delegate for tables of plain text cells: it paints a cell's background, selection, text
// and focus frame itself and leaves editing to QStyledItemDelegate.
//
// The style's own item painting lays every cell out as a rich item (check box, decoration,
// text layout with wrapping and elision rules) and was most of the work of opening a dialog
// whose first picture is a table of values. Cells with a check box or a decoration are
// handed to the style as before.
#include "KwMFCUIExport.h"

#include <QStyledItemDelegate>

class KWMFCUI_EXPORT KwTextCellDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
};
