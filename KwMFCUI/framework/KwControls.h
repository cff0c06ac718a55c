#pragma once
// Controls of a dialog template carry their original id in the dynamic property "ctrlId";
// these helpers find a control by that id.
#include "KwMFCUIExport.h"

#include <QIcon>
#include <QWidget>

inline constexpr const char* kKwCtrlIdProperty = "ctrlId";

// The first descendant of `root` whose ctrlId equals `id`, or nullptr (also for a null root).
KWMFCUI_EXPORT QWidget* KwFindControl(const QWidget* root, int id);

template <class T> T* KwControl(const QWidget* root, int id)
{
    return qobject_cast<T*>(KwFindControl(root, id));
}

// The icon of a resource picture, loaded once per module: an SVG is parsed and rendered the
// first time only, not on every opening of a dialog.
KWMFCUI_EXPORT QIcon KwIcon(const QString& path);

// Gives a control its id (for controls built in code rather than in a template).
KWMFCUI_EXPORT void KwSetControlId(QWidget* w, int id);

// Brings a window to the top of the stack. Platforms without a window stack (the offscreen
// one the gallery and tests use) have nothing to raise and are left alone.
KWMFCUI_EXPORT void KwBringWindowToTop(QWidget* w);
