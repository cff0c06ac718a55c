#include "KwControls.h"

#include <QGuiApplication>
#include <QHash>
#include <QPointer>
#include <QVariant>

namespace {

// Index of a dialog's controls by id, kept as a hidden child of the dialog so that it dies with
// it. Dialogs look controls up many times while they fill themselves; walking every child each
// time made that quadratic in the size of the template.
class ControlIndex : public QObject
{
public:
    explicit ControlIndex(QObject* owner) : QObject(owner)
    {
        setObjectName(QStringLiteral("kw_control_index"));
    }
    void rebuild(const QWidget* root)
    {
        m_byId.clear();
        const QList<QWidget*> children = root->findChildren<QWidget*>();
        for (QWidget* w : children) {
            const QVariant v = w->property(kKwCtrlIdProperty);
            if (v.isValid() && !m_byId.contains(v.toInt()))
                m_byId.insert(v.toInt(), w);
        }
        m_childCount = children.size();
    }
    // A hit is trusted only while the control lives and still carries the id.
    QWidget* find(int id) const
    {
        const auto it = m_byId.constFind(id);
        if (it == m_byId.constEnd() || it->isNull())
            return nullptr;
        const QVariant v = (*it)->property(kKwCtrlIdProperty);
        return v.isValid() && v.toInt() == id ? it->data() : nullptr;
    }
    qsizetype childCount() const { return m_childCount; }

private:
    QHash<int, QPointer<QWidget>> m_byId;
    qsizetype m_childCount = -1;
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
        index->rebuild(root);
    }
    if (QWidget* w = index->find(id))
        return w;
    // A miss may mean controls were added or re-numbered since the index was built.
    index->rebuild(root);
    return index->find(id);
}

void KwSetControlId(QWidget* w, int id)
{
    if (w)
        w->setProperty(kKwCtrlIdProperty, id);
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
