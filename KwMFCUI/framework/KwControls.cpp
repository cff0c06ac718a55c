#include "KwControls.h"

#include <QGuiApplication>
#include <QHash>
#include <QPointer>
#include <QVariant>
#include <atomic>

namespace {

// Bumped whenever a control gets an id in code, so that every index learns of re-numbering.
std::atomic<unsigned> g_idGeneration{0};

// Index of a dialog's controls by id, kept as a hidden child of the dialog so that it dies with
// it. Dialogs look controls up many times while they fill themselves; walking every child (and
// reading a dynamic property of each) on every look-up made that quadratic in the size of the
// template.
class ControlIndex : public QObject
{
public:
    explicit ControlIndex(QObject* owner) : QObject(owner)
    {
        setObjectName(QStringLiteral("kw_control_index"));
    }
    void rebuild(const QList<QWidget*>& children)
    {
        m_byId.clear();
        for (QWidget* w : children) {
            const QVariant v = w->property(kKwCtrlIdProperty);
            if (v.isValid() && !m_byId.contains(v.toInt()))
                m_byId.insert(v.toInt(), w);
        }
        m_childCount = children.size();
        m_generation = g_idGeneration.load(std::memory_order_relaxed);
    }
    QWidget* find(const QWidget* root, int id)
    {
        if (m_generation != g_idGeneration.load(std::memory_order_relaxed))
            rebuild(root->findChildren<QWidget*>());
        if (QWidget* w = lookup(id))
            return w;
        // A miss may mean controls were added (a template built into the dialog later) or a
        // control died since the index was built; a walk that finds the same children tells
        // the id is simply not there.
        const QList<QWidget*> children = root->findChildren<QWidget*>();
        if (children.size() == m_childCount && !m_byId.contains(id))
            return nullptr;
        rebuild(children);
        return lookup(id);
    }

private:
    QWidget* lookup(int id) const
    {
        const auto it = m_byId.constFind(id);
        return it == m_byId.constEnd() ? nullptr : it->data();
    }

    QHash<int, QPointer<QWidget>> m_byId;
    qsizetype m_childCount = -1;
    unsigned m_generation = 0;
};

} // namespace

QWidget* KwFindControl(const QWidget* root, int id)
{
    if (!root)
        return nullptr;
    auto* index = root->findChild<ControlIndex*>(QStringLiteral("kw_control_index"),
                                                 Qt::FindDirectChildrenOnly);
    if (!index) {
        index = new ControlIndex(const_cast<QWidget*>(root));
        index->rebuild(root->findChildren<QWidget*>());
    }
    return index->find(root, id);
}

void KwSetControlId(QWidget* w, int id)
{
    if (!w)
        return;
    w->setProperty(kKwCtrlIdProperty, id);
    g_idGeneration.fetch_add(1, std::memory_order_relaxed);
}

void KwBringWindowToTop(QWidget* w)
{
    if (!w || QGuiApplication::platformName() == QLatin1String("offscreen"))
        return;
    w->raise();
}

QIcon KwIcon(const QString& path)
{
    // Kept for the life of the process and never destroyed: icons must not outlive the
    // application object in a destructor that runs after it.
    static auto* cache = new QHash<QString, QIcon>;
    auto it = cache->constFind(path);
    if (it == cache->constEnd())
        it = cache->insert(path, QIcon(path));
    return *it;
}
