#pragma once
// Routes the user's picks in the view to the dialog that is active, and keeps the filter of
// the selection box that currently takes the picks.
#include "KwiCADExport.h"

#include <QPointer>
#include <QWidget>

class KWICAD_EXPORT CKwSelectionHandler
{
public:
    void ActivateDialog(QWidget* dialog) { m_active = dialog; }
    QWidget* GetActiveDialog() const { return m_active.data(); }
    // Bit mask of the kinds the active selection box admits (CKwUIEntity::FilterBit).
    void SetFilter(unsigned mask) { m_filter = mask; }
    unsigned GetFilter() const { return m_filter; }

private:
    QPointer<QWidget> m_active;
    unsigned m_filter = 0;
};
