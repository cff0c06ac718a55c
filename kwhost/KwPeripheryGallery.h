#pragma once
// The gallery's pictures of the material library browser, the comparison of two materials and
// the S-N curve dialog, each on the shipped library or the sample model.
#include <functional>

class KwHostWindow;
class QWidget;

// `shoot` photographs a shown window into the named file of the gallery.
void KwPeripheryGallery(KwHostWindow* host,
                        const std::function<void(QWidget* window, const char* file)>& shoot);
