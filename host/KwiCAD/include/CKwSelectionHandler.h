#pragma once
// Routes the user's picks in the view to the dialog that is active.
#include "KwiCADExport.h"

#include <QPointer>
#include <QWidget>

class KWICAD_EXPORT CKwSelectionHandler
{
public:
    void ActivateDialog(QWidget* dialog) { m_active = dialog; }
    QWidget* GetActiveDialog() const { return m_active.data(); }

private:
    QPointer<QWidget> m_active;
};
