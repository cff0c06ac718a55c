#pragma once
// Renders every dialog the library opens into PNG files: the gallery is both a picture book
// for reviewers and a smoke test of every dialog.
#include <QString>
#include <QStringList>

class KwHostWindow;

struct KwGalleryResult
{
    QStringList written;      // PNG paths
    QStringList unavailable;  // kinds that answered "not available" or opened nothing
};

KwGalleryResult KwRenderGallery(KwHostWindow* host, const QString& directory);
