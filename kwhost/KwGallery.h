#pragma once
// Renders every dialog the library opens into PNG files: the gallery is both a picture book
// for reviewers and a smoke test of every dialog.
#include <QString>
#include <QStringList>
#include <functional>

class KwHostWindow;

class QWidget;

struct KwGalleryResult
{
    QStringList written;      // PNG paths
    QStringList titles;       // window title of each dialog picture, in the same order
    QStringList unavailable;  // kinds that answered "not available" or opened nothing
};

// Called for every dialog window before it is photographed (tests look at it closely).
using KwGalleryInspector = std::function<void(unsigned kind, QWidget* window)>;

KwGalleryResult KwRenderGallery(KwHostWindow* host, const QString& directory,
                                const KwGalleryInspector& inspect = {});
