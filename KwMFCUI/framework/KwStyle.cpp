#include "KwStyle.h"

#include <QAbstractItemView>
#include <QFontMetrics>
#include <QGridLayout>
#include <QHeaderView>
#include <QLayout>
#include <QStyle>
#include <QStyleOptionHeader>
#include <QTableView>
#include <QTreeView>
#include <cmath>

namespace KwStyle {

namespace {

QString printed(const char* format, double value)
{
    if (!std::isfinite(value))
        return {};
    return QString::asprintf(format, value);
}

} // namespace

QString EditableNumber(double value) { return printed("%.10g", value); }
QString FixedNumber(double value) { return printed("%0.3f", value); }
QString ScientificNumber(double value) { return printed("%0.3E", value); }

QString FieldLabel(const QString& text)
{
    QString t = text.trimmed();
    if (t.endsWith(QLatin1Char(':')))
        t.chop(1);
    t = t.trimmed();
    if (t.isEmpty())
        return {};
    return t + QLatin1Char(':');
}

QString WithUnit(const QString& title, const QString& unit)
{
    const QString u = unit.trimmed();
    if (u.isEmpty())
        return title;
    return QStringLiteral("%1 (%2)").arg(title, u);
}

int CharsWidth(const QFontMetrics& metrics, int chars)
{
    return metrics.averageCharWidth() * chars;
}

void ApplyDialogLayout(QLayout* layout)
{
    if (!layout)
        return;
    layout->setContentsMargins(DialogMargin, DialogMargin, DialogMargin, DialogMargin);
    layout->setSpacing(GroupSpacing);
}

void ApplyGroupLayout(QLayout* layout)
{
    if (!layout)
        return;
    layout->setContentsMargins(GroupMargin, GroupMargin, GroupMargin, GroupMargin);
    layout->setSpacing(RowSpacing);
}

void ApplyFormGrid(QGridLayout* grid)
{
    if (!grid)
        return;
    grid->setHorizontalSpacing(ColumnSpacing);
    grid->setVerticalSpacing(RowSpacing);
    grid->setColumnStretch(0, 0);
    grid->setColumnStretch(1, 1);
    for (int r = 0; r < grid->rowCount(); ++r)
        if (QLayoutItem* item = grid->itemAtPosition(r, 0); item && item->widget())
            item->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
}

void FitHeaders(QAbstractItemView* view)
{
    if (!view || !view->model())
        return;
    QHeaderView* header = nullptr;
    if (auto* table = qobject_cast<QTableView*>(view))
        header = table->horizontalHeader();
    else if (auto* tree = qobject_cast<QTreeView*>(view))
        header = tree->header();
    if (!header)
        return;
    const QFontMetrics fm(header->font());
    const int columns = view->model()->columnCount();
    for (int c = 0; c < columns; ++c) {
        if (header->isSectionHidden(c))
            continue;
        const QString text =
            view->model()->headerData(c, Qt::Horizontal, Qt::DisplayRole).toString();
        int textWidth = 0;
        for (const QString& line : text.split(QLatin1Char('\n')))
            textWidth = std::max(textWidth, fm.horizontalAdvance(line));
        const int margin = header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
        const int needed = textWidth + 2 * margin + CellPadding;
        if (header->sectionSize(c) < needed)
            header->resizeSection(c, needed);
    }
    header->setStretchLastSection(true);
}

} // namespace KwStyle
