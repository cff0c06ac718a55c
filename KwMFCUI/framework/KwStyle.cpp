#include "KwStyle.h"

#include "KwLangText.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QFontMetrics>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QStyle>
#include <QStyleOptionHeader>
#include <QTableView>
#include <QTreeView>
#include <algorithm>
#include <cmath>
#include <utility>

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

namespace {

void spaceLayout(QLayout* layout)
{
    if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
        grid->setHorizontalSpacing(ColumnSpacing);
        grid->setVerticalSpacing(RowSpacing);
    } else if (auto* form = qobject_cast<QFormLayout*>(layout)) {
        form->setHorizontalSpacing(ColumnSpacing);
        form->setVerticalSpacing(RowSpacing);
    } else if (auto* box = qobject_cast<QBoxLayout*>(layout)) {
        box->setSpacing(box->direction() == QBoxLayout::LeftToRight ||
                                box->direction() == QBoxLayout::RightToLeft
                            ? ButtonSpacing
                            : RowSpacing);
    }
}

// The layouts nested in `layout` (not those of child widgets): no margins of their own.
void spaceNested(QLayout* layout)
{
    for (int i = 0; i < layout->count(); ++i) {
        if (QLayout* inner = layout->itemAt(i)->layout()) {
            inner->setContentsMargins(0, 0, 0, 0);
            spaceLayout(inner);
            spaceNested(inner);
        }
    }
}

} // namespace

void ApplyHouseLayout(QWidget* dialog)
{
    if (!dialog)
        return;
    if (QLayout* top = dialog->layout()) {
        ApplyDialogLayout(top);
        // A grid of labels and fields as the dialog's own layout keeps its row spacing.
        if (qobject_cast<QGridLayout*>(top) || qobject_cast<QFormLayout*>(top))
            spaceLayout(top);
        spaceNested(top);
    }
    for (QWidget* w : dialog->findChildren<QWidget*>()) {
        QLayout* layout = w->layout();
        if (!layout || w->isWindow())
            continue;
        if (qobject_cast<QGroupBox*>(w))
            ApplyGroupLayout(layout);
        spaceLayout(layout);
        spaceNested(layout);
    }
}

void LabelTriple(QLineEdit* x, QLineEdit* y, QLineEdit* z)
{
    struct Axis
    {
        QLineEdit* field;
        const char* axis;
        const char* key;
    };
    const Axis fields[] = {{x, "X", "LabelAxisX"}, {y, "Y", "LabelAxisY"}, {z, "Z", "LabelAxisZ"}};
    for (const auto& [field, axis, key] : fields) {
        if (!field)
            continue;
        const QString objectName = QStringLiteral("kwAxis%1").arg(QLatin1String(axis));
        auto* letter = field->findChild<QLabel*>(objectName, Qt::FindDirectChildrenOnly);
        if (!letter) {
            letter = new QLabel(field);
            letter->setObjectName(objectName);
            letter->setProperty("kwOverlay", true);
            letter->setAttribute(Qt::WA_TransparentForMouseEvents);
            letter->setForegroundRole(QPalette::PlaceholderText);
        }
        letter->setText(KwPropText("General", key, axis));
        const QFontMetrics fm(field->font());
        const int w = std::max(fm.horizontalAdvance(QStringLiteral("W")),
                               fm.horizontalAdvance(letter->text()));
        letter->setGeometry(ColumnSpacing / 2, 0, w, field->sizeHint().height());
        letter->setAlignment(Qt::AlignCenter);
        field->setTextMargins(w + ColumnSpacing / 2, 0, 0, 0);
    }
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
