#include "KwStyleCheck.h"

#include "CKwXMLUtils.h"
#include "KwNumbers.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSlider>
#include <QAbstractSpinBox>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScrollArea>
#include <QSizeGrip>
#include <QSplitterHandle>
#include <QProgressBar>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QStyleOptionComboBox>
#include <QStyleOptionViewItem>
#include <QTabWidget>
#include <QTableView>
#include <QTextEdit>
#include <QToolButton>
#include <QTreeView>
#include <QSet>
#include <QtMath>
#include <algorithm>
#include <climits>
#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <tuple>

namespace {

// Two positions closer than this are the same column; smaller overlaps are rounding.
constexpr int kTolerance = 2;

struct Node
{
    QWidget* w;
    QWidget* parent; // the designed parent (a tab page's is its tab widget)
    QString name;
    bool scrolled;   // the content of a scroll area: its own bounds are the area's business
};

bool isInternal(const QWidget* w)
{
    return w->isWindow() || w->objectName().startsWith(QLatin1String("qt_")) ||
           qobject_cast<const QSplitterHandle*>(w) || qobject_cast<const QSizeGrip*>(w);
}

// Widgets whose children are theirs alone (the line edit of a spin box, the viewport of a list).
bool isLeaf(const QWidget* w)
{
    return qobject_cast<const QAbstractItemView*>(w) || qobject_cast<const QAbstractSpinBox*>(w) ||
           qobject_cast<const QComboBox*>(w) || qobject_cast<const QLineEdit*>(w) ||
           qobject_cast<const QTextEdit*>(w) || qobject_cast<const QPlainTextEdit*>(w) ||
           qobject_cast<const QAbstractButton*>(w) || qobject_cast<const QLabel*>(w) ||
           qobject_cast<const QMenuBar*>(w) || qobject_cast<const QStatusBar*>(w) ||
           qobject_cast<const QAbstractSlider*>(w);
}

QList<QWidget*> designedChildren(QWidget* w)
{
    QList<QWidget*> out;
    if (isLeaf(w))
        return out;
    if (auto* tabs = qobject_cast<QTabWidget*>(w)) {
        if (QWidget* page = tabs->currentWidget())
            out << page;
        return out;
    }
    if (auto* area = qobject_cast<QScrollArea*>(w)) {
        if (area->widget())
            out << area->widget();
        return out;
    }
    for (QObject* o : w->children())
        if (auto* c = qobject_cast<QWidget*>(o); c && !isInternal(c))
            out << c;
    return out;
}

QString nameOf(const QWidget* w, const QString& parentName, const QList<QWidget*>& siblings)
{
    const QString own = w->objectName();
    if (!own.isEmpty())
        return own;
    const QVariant id = w->property("ctrlId");
    if (id.isValid())
        return QStringLiteral("#%1").arg(id.toInt());
    int index = 0;
    for (const QWidget* s : siblings) {
        if (s == w)
            break;
        if (s->metaObject() == w->metaObject())
            ++index;
    }
    return QStringLiteral("%1/%2[%3]").arg(parentName, QLatin1String(w->metaObject()->className()))
        .arg(index);
}

void collect(QWidget* root, QWidget* w, const QString& name, QList<Node>& out)
{
    const QList<QWidget*> kids = designedChildren(w);
    for (QWidget* c : kids) {
        if (!c->isVisibleTo(root) || c->width() <= 0 || c->height() <= 0)
            continue;
        const QString n = nameOf(c, name, kids);
        const bool inArea = qobject_cast<QScrollArea*>(w) != nullptr;
        out.push_back({c, w, n, inArea});
        collect(root, c, n, out);
    }
}

QRect rectIn(const QWidget* w, const QWidget* root)
{
    return QRect(w->mapTo(root, QPoint(0, 0)), w->size());
}

QString plainText(QString text)
{
    text.remove(QRegularExpression(QStringLiteral("<[^>]*>")));
    text.replace(QStringLiteral("&nbsp;"), QStringLiteral(" "));
    text.replace(QStringLiteral("&&"), QStringLiteral("\x01"));
    text.remove(QLatin1Char('&'));
    text.replace(QLatin1Char('\x01'), QLatin1Char('&'));
    return text;
}

int widestLine(const QFontMetrics& fm, const QString& text)
{
    int widest = 0;
    for (const QString& line : text.split(QLatin1Char('\n')))
        widest = std::max(widest, fm.horizontalAdvance(line));
    return widest;
}

bool isField(const QWidget* w)
{
    if (auto* l = qobject_cast<const QLabel*>(w))
        return l->property("kwData").toBool();
    if (qobject_cast<const QPushButton*>(w))
        return w->inherits("CKwColorSwatch");
    return qobject_cast<const QLineEdit*>(w) || qobject_cast<const QAbstractSpinBox*>(w) ||
           qobject_cast<const QComboBox*>(w) || qobject_cast<const QTextEdit*>(w) ||
           qobject_cast<const QPlainTextEdit*>(w) || qobject_cast<const QAbstractSlider*>(w) ||
           qobject_cast<const QAbstractItemView*>(w) || qobject_cast<const QCheckBox*>(w) ||
           qobject_cast<const QRadioButton*>(w) || qobject_cast<const QProgressBar*>(w);
}

// A label the dialog designs: a text, not a picture, not a value.
bool isDesignedLabel(const QWidget* w)
{
    auto* l = qobject_cast<const QLabel*>(w);
    if (!l || l->property("kwData").toBool() || !l->pixmap().isNull())
        return false;
    const QString t = plainText(l->text()).trimmed();
    return !t.isEmpty() && !IsNumber(t);
}

// A cell's alignment as a model gives it: as flags, as one flag or as an int; none is left.
Qt::Alignment alignmentOf(const QVariant& v)
{
    if (!v.isValid())
        return Qt::AlignLeft;
    if (v.metaType() == QMetaType::fromType<Qt::Alignment>())
        return v.value<Qt::Alignment>();
    if (v.metaType() == QMetaType::fromType<Qt::AlignmentFlag>())
        return v.value<Qt::AlignmentFlag>();
    return Qt::Alignment(v.toInt());
}

bool sameRow(const QRect& a, const QRect& b)
{
    return a.center().y() >= b.top() && a.center().y() <= b.bottom() + 1 &&
           b.center().y() >= a.top() - 1 && b.center().y() <= a.bottom() + 1;
}

// The nearest widget right of `label` on its row among `nodes` (leaves only), or null.
QWidget* groupOf(const QWidget* w, QWidget* root);

const Node* rightNeighbour(const Node& label, const QList<Node>& nodes, QWidget* root)
{
    QWidget* group = groupOf(label.w, root);
    const QRect lr = rectIn(label.w, root);
    const Node* best = nullptr;
    int bestX = INT_MAX;
    for (const Node& n : nodes) {
        if (n.w == label.w || !designedChildren(n.w).isEmpty() || groupOf(n.w, root) != group)
            continue;
        const QRect r = rectIn(n.w, root);
        if (r.left() < lr.right() - kTolerance || !sameRow(lr, r))
            continue;
        if (r.left() < bestX) {
            bestX = r.left();
            best = &n;
        }
    }
    return best;
}

// A field just below the label and starting under it (a list under its caption).
bool fieldBelow(const Node& label, const QList<Node>& nodes, QWidget* root)
{
    const QRect lr = rectIn(label.w, root);
    for (const Node& n : nodes) {
        if (!isField(n.w))
            continue;
        const QRect r = rectIn(n.w, root);
        if (r.top() >= lr.bottom() - kTolerance && r.top() - lr.bottom() <= 12 &&
            r.left() <= lr.left() + 3 * kTolerance && r.right() > lr.left())
            return true;
    }
    return false;
}

QWidget* groupOf(const QWidget* w, QWidget* root)
{
    for (QWidget* p = w->parentWidget(); p; p = p->parentWidget()) {
        if (p == root || qobject_cast<QGroupBox*>(p))
            return p;
        if (p->parentWidget() && qobject_cast<QStackedWidget*>(p->parentWidget()) &&
            p->parentWidget()->parentWidget() &&
            qobject_cast<QTabWidget*>(p->parentWidget()->parentWidget()))
            return p;
    }
    return root;
}

class Checker
{
public:
    Checker(QWidget* root, const KwStyleOptions& options) : m_root(root), m_options(options)
    {
        m_nodes.push_back({root, nullptr, root->objectName().isEmpty()
                                              ? QString::fromLatin1(root->metaObject()->className())
                                              : root->objectName(),
                           false});
        // A copy: the list grows under collect, which would leave a reference into it dangling.
        const QString rootName = m_nodes.front().name;
        collect(root, root, rootName, m_nodes);
        for (const QString& e : options.colonExceptions)
            m_exceptions.insert(plainText(e).trimmed());
    }

    QList<KwStyleFinding> run()
    {
        labels();
        columns();
        geometry();
        texts();
        views();
        std::stable_sort(m_found.begin(), m_found.end(),
                         [](const KwStyleFinding& a, const KwStyleFinding& b) {
                             return std::tie(a.rule, a.widget) < std::tie(b.rule, b.widget);
                         });
        return m_found;
    }

private:
    void add(const QString& rule, const QString& widget, const QString& detail)
    {
        const KwStyleFinding f{rule, widget, detail};
        if (!m_found.contains(f))
            m_found.push_back(f);
    }

    void labels()
    {
        for (const Node& n : m_nodes) {
            if (!isDesignedLabel(n.w))
                continue;
            const QString text = plainText(static_cast<QLabel*>(n.w)->text()).trimmed();
            if (m_exceptions.contains(text))
                continue;
            const Node* right = rightNeighbour(n, m_nodes, m_root);
            const bool beforeField = right && isField(right->w);
            const bool colon = text.endsWith(QLatin1Char(':'));
            if (beforeField && !colon)
                add(KwStyleRule::ColonMissing, n.name,
                    QStringLiteral("\"%1\" precedes %2").arg(text, right->name));
            else if (!beforeField && colon && !fieldBelow(n, m_nodes, m_root))
                add(KwStyleRule::ColonMisplaced, n.name,
                    QStringLiteral("\"%1\" precedes no field").arg(text));
        }
    }

    void columns()
    {
        // group -> (field x, label name) of each row's first labelled field
        std::map<QWidget*, QList<std::pair<int, QString>>> starts;
        for (const Node& n : m_nodes) {
            if (!isDesignedLabel(n.w))
                continue;
            const Node* right = rightNeighbour(n, m_nodes, m_root);
            if (!right || !isField(right->w) || qobject_cast<QCheckBox*>(right->w) ||
                qobject_cast<QRadioButton*>(right->w))
                continue;
            QWidget* group = groupOf(n.w, m_root);
            if (groupOf(right->w, m_root) != group)
                continue;
            // Only the first label of a row: the X, Y and Z of a triple start no column.
            const QRect lr = rectIn(n.w, m_root);
            bool first = true;
            for (const Node& o : m_nodes)
                if (o.w != n.w && isDesignedLabel(o.w) && groupOf(o.w, m_root) == group &&
                    sameRow(lr, rectIn(o.w, m_root)) && rectIn(o.w, m_root).left() < lr.left())
                    first = false;
            if (first)
                starts[group].push_back({rectIn(right->w, m_root).left(), n.name});
        }
        for (const auto& [group, list] : starts) {
            QList<int> xs;
            for (const auto& s : list)
                if (std::none_of(xs.begin(), xs.end(),
                                 [&](int x) { return std::abs(x - s.first) <= kTolerance; }))
                    xs << s.first;
            if (xs.size() < 2)
                continue;
            QStringList where;
            for (const auto& s : list)
                where << QStringLiteral("%1@%2").arg(s.second).arg(s.first);
            add(KwStyleRule::FieldColumns, nameFor(group),
                QStringLiteral("%1 field columns: %2").arg(xs.size()).arg(where.join(QLatin1String(", "))));
        }
    }

    QString nameFor(const QWidget* w) const
    {
        for (const Node& n : m_nodes)
            if (n.w == w)
                return n.name;
        return QString::fromLatin1(w->metaObject()->className());
    }

    void geometry()
    {
        for (const Node& n : m_nodes) {
            if (!n.parent || n.scrolled)
                continue;
            const QRect r = rectIn(n.w, m_root);
            const QRect p = rectIn(n.parent, m_root);
            const QRect inside = r.intersected(p);
            if (r.width() - inside.width() > kTolerance || r.height() - inside.height() > kTolerance)
                add(KwStyleRule::Clipped, n.name,
                    QStringLiteral("%1x%2 at %3,%4 outside %5").arg(r.width()).arg(r.height())
                        .arg(r.x()).arg(r.y()).arg(nameFor(n.parent)));
        }
        for (int i = 0; i < m_nodes.size(); ++i) {
            const Node& a = m_nodes[i];
            if (!a.parent || a.w->property("kwOverlay").toBool())
                continue;
            for (int j = i + 1; j < m_nodes.size(); ++j) {
                const Node& b = m_nodes[j];
                if (b.parent != a.parent || b.w->property("kwOverlay").toBool())
                    continue;
                const QRect x = rectIn(a.w, m_root).intersected(rectIn(b.w, m_root));
                if (x.width() > kTolerance && x.height() > kTolerance)
                    add(KwStyleRule::Overlap, a.name,
                        QStringLiteral("lies on %1 (%2x%3)").arg(b.name).arg(x.width()).arg(x.height()));
            }
        }
    }

    void texts()
    {
        for (const Node& n : m_nodes) {
            QWidget* w = n.w;
            const QFontMetrics fm = w->fontMetrics();
            int needed = 0;
            int room = w->width();
            QString text;
            if (auto* l = qobject_cast<QLabel*>(w)) {
                if (!l->pixmap().isNull())
                    continue;
                text = plainText(l->text());
                if (l->wordWrap()) {
                    if (!text.trimmed().isEmpty() && l->heightForWidth(l->width()) > l->height() + 1)
                        add(KwStyleRule::TextWider, n.name,
                            QStringLiteral("wrapped \"%1\" needs %2 px of height, has %3")
                                .arg(text.left(40)).arg(l->heightForWidth(l->width()))
                                .arg(l->height()));
                    continue;
                }
                needed = widestLine(fm, text) + 2 * l->margin() + std::max(0, l->indent());
                room = l->contentsRect().width();
            } else if (auto* c = qobject_cast<QCheckBox*>(w)) {
                text = plainText(c->text());
                needed = text.isEmpty() ? 0 : c->sizeHint().width();
            } else if (auto* r = qobject_cast<QRadioButton*>(w)) {
                text = plainText(r->text());
                needed = text.isEmpty() ? 0 : r->sizeHint().width();
            } else if (auto* b = qobject_cast<QAbstractButton*>(w)) {
                text = plainText(b->text());
                auto* tool = qobject_cast<QToolButton*>(w);
                if (text.isEmpty() ||
                    (tool && tool->toolButtonStyle() == Qt::ToolButtonIconOnly && !b->icon().isNull()))
                    continue; // the text is not drawn
                // The text is drawn inside the button's frame; what the style adds around it
                // beyond that is comfort, not room the text needs.
                const int frame = w->style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, w);
                needed = widestLine(fm, text) + 2 * frame + 2 +
                         (b->icon().isNull() ? 0 : b->iconSize().width() + 4);
            } else if (auto* g = qobject_cast<QGroupBox*>(w)) {
                text = plainText(g->title());
                needed = text.isEmpty() ? 0 : fm.horizontalAdvance(text) + 2 * kTolerance;
            } else if (auto* c = qobject_cast<QComboBox*>(w)) {
                text = c->currentText();
                QStyleOptionComboBox opt;
                opt.initFrom(c);
                opt.editable = c->isEditable();
                room = w->style()->subControlRect(QStyle::CC_ComboBox, &opt,
                                                  QStyle::SC_ComboBoxEditField, c).width();
                needed = fm.horizontalAdvance(text) - kTolerance;
            } else if (auto* e = qobject_cast<QLineEdit*>(w)) {
                if (e->echoMode() != QLineEdit::Normal)
                    continue;
                text = e->text();
                const QMargins tm = e->textMargins();
                room = e->contentsRect().width() - tm.left() - tm.right() - 4;
                needed = fm.horizontalAdvance(text);
            } else {
                continue;
            }
            if (!text.trimmed().isEmpty() && needed > room + 1)
                add(KwStyleRule::TextWider, n.name,
                    QStringLiteral("\"%1\" needs %2 px, has %3").arg(text.left(40)).arg(needed).arg(room));
        }
    }

    // Cells whose text the view cuts short (it elides what does not fit): one finding per
    // column, over the rows on screen (and the expanded branches of a tree).
    void elidedCells(const Node& n, QAbstractItemView* view, QHeaderView* header, int columns)
    {
        // A stretching last column is painted to the viewport's right edge, whatever size its
        // header holds between two paints.
        int stretched = -1;
        if (header && header->stretchLastSection())
            for (int v = header->count() - 1; v >= 0 && stretched < 0; --v)
                if (!header->isSectionHidden(header->logicalIndex(v)))
                    stretched = header->logicalIndex(v);
        const QAbstractItemModel* model = view->model();
        const int pad = 2 * (view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1);
        auto* tree = qobject_cast<QTreeView*>(view);
        std::set<int> reported;
        int seen = 0;
        std::function<void(const QModelIndex&)> walk = [&](const QModelIndex& parent) {
            const int rows = model->rowCount(parent);
            for (int r = 0; r < rows && seen < 500; ++r, ++seen) {
                for (int c = 0; c < columns; ++c) {
                    if (reported.count(c))
                        continue;
                    const QModelIndex i = model->index(r, c, parent);
                    QRect rect = view->visualRect(i);
                    if (c == stretched)
                        rect.setRight(std::max(rect.right(), view->viewport()->width() - 1));
                    if (rect.isEmpty() || !view->viewport()->rect().intersects(rect))
                        continue;
                    const QString text = i.data(Qt::DisplayRole).toString();
                    if (text.isEmpty())
                        continue;
                    QFont font = view->font();
                    if (const QVariant f = i.data(Qt::FontRole); f.isValid())
                        font = f.value<QFont>();
                    // The room the style gives the text, as it paints the cell.
                    QStyleOptionViewItem opt;
                    opt.initFrom(view);
                    opt.rect = rect;
                    opt.text = text;
                    opt.font = font;
                    opt.fontMetrics = QFontMetrics(font);
                    opt.features |= QStyleOptionViewItem::HasDisplay;
                    if (i.data(Qt::DecorationRole).isValid()) {
                        opt.features |= QStyleOptionViewItem::HasDecoration;
                        opt.decorationSize = view->iconSize().isValid() ? view->iconSize()
                                                                        : QSize(16, 16);
                    }
                    if (i.data(Qt::CheckStateRole).isValid())
                        opt.features |= QStyleOptionViewItem::HasCheckIndicator;
                    const int room =
                        view->style()->subElementRect(QStyle::SE_ItemViewItemText, &opt, view).width() -
                        pad;
                    // Fractions of a pixel count: the view elides a text that overflows by less.
                    const qreal needed = QFontMetricsF(font).horizontalAdvance(text);
                    if (needed > room) {
                        reported.insert(c);
                        add(KwStyleRule::TextWider, QStringLiteral("%1/col%2").arg(n.name).arg(c),
                            QStringLiteral("cell \"%1\" needs %2 px, has %3")
                                .arg(text.left(40)).arg(qCeil(needed)).arg(room));
                    }
                }
                const QModelIndex first = model->index(r, 0, parent);
                if (tree && tree->isExpanded(first))
                    walk(first);
            }
        };
        walk(view->rootIndex());
    }

    void views()
    {
        for (const Node& n : m_nodes) {
            auto* view = qobject_cast<QAbstractItemView*>(n.w);
            if (!view || !view->model())
                continue;
            const QAbstractItemModel* model = view->model();
            QHeaderView* header = nullptr;
            if (auto* t = qobject_cast<QTableView*>(view))
                header = t->horizontalHeader();
            else if (auto* t = qobject_cast<QTreeView*>(view))
                header = t->isHeaderHidden() ? nullptr : t->header();
            const int columns = model->columnCount(view->rootIndex());
            elidedCells(n, view, header, columns);
            if (header && header->isVisible()) {
                const QFontMetrics fm(header->font());
                const int margin = header->style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, header);
                for (int c = 0; c < columns; ++c) {
                    if (header->isSectionHidden(c))
                        continue;
                    const QString text = model->headerData(c, Qt::Horizontal).toString();
                    const int needed = widestLine(fm, text) + 2 * margin;
                    if (!text.isEmpty() && needed > header->sectionSize(c) + 1)
                        add(KwStyleRule::HeaderWider, QStringLiteral("%1/col%2").arg(n.name).arg(c),
                            QStringLiteral("\"%1\" needs %2 px, column has %3")
                                .arg(text).arg(needed).arg(header->sectionSize(c)));
                }
            }
            if (std::any_of(m_options.leftAlignedTables.cbegin(), m_options.leftAlignedTables.cend(),
                            [&](const QString& t) {
                                return t == n.name || n.w->inherits(t.toLatin1().constData());
                            }))
                continue;
            const int rows = std::min(model->rowCount(view->rootIndex()), 50);
            for (int c = 0; c < columns; ++c) {
                if (header && header->isSectionHidden(c))
                    continue;
                for (int r = 0; r < rows; ++r) {
                    const QModelIndex i = model->index(r, c, view->rootIndex());
                    const QString text = i.data(Qt::DisplayRole).toString();
                    if (!IsNumber(text))
                        continue;
                    const Qt::Alignment h =
                        alignmentOf(i.data(Qt::TextAlignmentRole)) & Qt::AlignHorizontal_Mask;
                    if (!(h & (Qt::AlignRight | Qt::AlignTrailing))) {
                        add(KwStyleRule::NumberLeft, QStringLiteral("%1/col%2").arg(n.name).arg(c),
                            QStringLiteral("row %1 \"%2\" is not right-aligned").arg(r).arg(text));
                        break;
                    }
                }
            }
        }
    }

    QWidget* m_root;
    const KwStyleOptions& m_options;
    QList<Node> m_nodes;
    QSet<QString> m_exceptions;
    QList<KwStyleFinding> m_found;
};

} // namespace

KwStyleOptions KwDefaultStyleOptions()
{
    KwStyleOptions o;
    // Labels whose form the system fixes without a colon before their controls: the display
    // options of the entity editors ("Size", "Density", "Color"), the constraint editor's
    // "Coordinate System" and the cross-section definition's shear factors.
    struct Text
    {
        const char* section;
        const char* key;
        const char* english;
    };
    static const Text fixed[] = {
        {"General", "LabelSize", "Size"},
        {"General", "LabelDensity", "Density"},
        {"General", "LabelColor", "Color"},
        {"General", "LabelCoordinateSystem", "Coordinate System"},
        {"PhysicalProperties", "LabelShearFactorInZ", "Shear factor in Z"},
        {"PhysicalProperties", "LabelShearFactorInY", "Shear factor in Y"},
    };
    // The point tables insert their numbers left-aligned.
    o.leftAlignedTables << QStringLiteral("CKwNonLinearEditList");
    for (const Text& t : fixed)
        o.colonExceptions << CKwXMLUtils::GetInternationalPropPageItemText(
            QString::fromLatin1(t.section), QString::fromLatin1(t.key),
            QString::fromLatin1(t.english));
    return o;
}

QList<KwStyleFinding> KwCheckStyle(QWidget* window, const KwStyleOptions& options)
{
    if (!window)
        return {};
    return Checker(window, options).run();
}

QStringList KwStyleKeys(const QList<KwStyleFinding>& findings)
{
    QStringList keys;
    for (const KwStyleFinding& f : findings)
        keys << f.rule + QLatin1Char(' ') + f.widget;
    return keys;
}
