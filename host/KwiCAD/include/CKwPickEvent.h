#pragma once
// The events by which the model view tells the open editor about picks: entities picked,
// entities dropped, and the view's selection reset. The entity list travels in the event; the
// receiver may set a result.
#include "KwiCADExport.h"

#include <QEvent>
#include <QList>

class CKwUIEntity;

namespace KwViewEvent {
enum : int {
    Picked = 33000,   // entities were picked in the view
    Dropped = 33001,  // entities were dropped from the selection in the view
    Reset = 33002,    // the view reset its selection (Escape in the view)
    OptionChanged = 33003, // an option page changed one of its controls
};
}

class KWICAD_EXPORT CKwPickEvent : public QEvent
{
public:
    CKwPickEvent(int type, const QList<CKwUIEntity*>& entities)
        : QEvent(static_cast<QEvent::Type>(type)), m_entities(entities)
    {
    }
    QList<CKwUIEntity*>* Entities() { return &m_entities; }
    long m_result = 0;

private:
    QList<CKwUIEntity*> m_entities;
};
