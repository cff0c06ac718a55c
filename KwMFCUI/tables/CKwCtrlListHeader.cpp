#include "CKwCtrlListHeader.h"

CKwCtrlListHeader::CKwCtrlListHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent)
{
    setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    setSectionsClickable(false);
    setHighlightSections(false);
    setStretchLastSection(false);
}

void CKwCtrlListHeader::SizeColumns(int width)
{
    if (count() < 2)
        return;
    const int first = width / 2;
    resizeSection(0, first);
    resizeSection(1, qMax(10, width - first - 4));
}

int CKwCtrlListHeader::HeaderHeight() const
{
    return isHidden() ? 0 : qMax(sizeHint().height(), height());
}
