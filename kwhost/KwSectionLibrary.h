#pragma once
// The demo host's beam sections: a library of standard profiles (public dimensions, in mm)
// mapped onto the section shapes, and the host's ways into the section dialogs.
#include <QString>
#include <QStringList>
#include <array>
#include <vector>

class CKwPhysicalProperty;
class KwHostWindow;
class QWidget;

struct KwStandardSection
{
    const char* name;
    const char* shape;
    std::array<double, 6> dimsMm; // DIM1..DIM6; 0 for unused
};

const std::vector<KwStandardSection>& KwStandardSections();
// The names and shapes of the standard sections an element kind takes (no L on a bar, only
// tubes on a pipe), as the selection dialog lists them.
void KwStandardSectionLists(int elementKind, QStringList& names, QStringList& shapes);
// Applies the section at `position` among those of `shape` to the property; false when there is
// no such section or the property's element kind does not take the shape.
bool KwApplyStandardSection(CKwPhysicalProperty* property, const QString& shape, int position);

// Modal dialogs on a beam property, as the demo host opens them. Each returns the dialog's
// result code.
int KwOpenSectionDefinition(KwHostWindow* host, CKwPhysicalProperty* property);
int KwOpenSectionReport(KwHostWindow* host, CKwPhysicalProperty* property);
int KwOpenSectionSelection(KwHostWindow* host, CKwPhysicalProperty* property);

// Pictures of the section dialogs for the gallery: the definition for several shapes, tapered
// and invalid, the report in both forms, and the selection tree.
void KwSectionGallery(KwHostWindow* host, const QString& directory, QStringList& written,
                      QStringList& titles);
