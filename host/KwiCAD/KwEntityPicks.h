#pragma once
// Taking picks into an entity list: in pick order, each entity once, only what the list
// admits. A set of what the list holds keeps a pick of thousands of entities linear.
// Internal to the host library.
#include "CKwUIEntity.h"

#include <QList>
#include <QSet>

namespace KwEntityPicks {

template <class Admits>
void Append(QList<CKwUIEntity*>& list, const QList<CKwUIEntity*>& picked, Admits admits)
{
    QSet<const CKwUIEntity*> held(list.cbegin(), list.cend());
    for (CKwUIEntity* e : picked)
        if (e && admits(e) && !held.contains(e)) {
            held.insert(e);
            list.append(e);
        }
}

// Removes every entry of the dropped entities.
inline void Remove(QList<CKwUIEntity*>& list, const QList<CKwUIEntity*>& dropped)
{
    const QSet<const CKwUIEntity*> gone(dropped.cbegin(), dropped.cend());
    list.removeIf([&gone](const CKwUIEntity* e) { return gone.contains(e); });
}

} // namespace KwEntityPicks
