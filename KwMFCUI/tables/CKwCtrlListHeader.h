#pragma once
// Header of the point list: column heads with their units, left-aligned; it shares the
// list's width between the two columns (column 0 half of it, column 1 the rest less 4 pixels).
#include "KwMFCUIExport.h"

#include <QHeaderView>

class KWMFCUI_EXPORT CKwCtrlListHeader : public QHeaderView
{
    Q_OBJECT
public:
    explicit CKwCtrlListHeader(QWidget* parent = nullptr);
    // Gives column 0 half of `width` and column 1 the rest less 4 pixels.
    void SizeColumns(int width);
    // Height of the head row (of item 0).
    int HeaderHeight() const;
};
