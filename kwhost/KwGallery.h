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

// Called for every window before it is photographed (tests look at it closely), with the kind
// it was opened for (0 for windows the gallery opens itself) and the picture's file name. The
// dialogs of the section gallery are photographed by their own code: they are named
// "<class>-<n>" (n counting from 1 per class), as their file names are not known beforehand.
using KwGalleryInspector =
    std::function<void(unsigned kind, QWidget* window, const QString& picture)>;

// The file the kinds that opened nothing are listed in, in the gallery folder.
inline constexpr const char* kKwGalleryUnavailableFile = "not-available.txt";

// A picture's file name from a kind and a menu title: lower case, every run of other characters
// than letters and digits one dash, none at either end ("kind00-load-remote-force").
QString KwGalleryFileName(unsigned kind, const QString& title, int index);

KwGalleryResult KwRenderGallery(KwHostWindow* host, const QString& directory,
                                const KwGalleryInspector& inspect = {});
