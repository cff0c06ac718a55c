#pragma once
// What the material editor decides on its own, apart from its window: the entries of its type
// list, the advisories a type change shows, its width per type, and loading a material from the
// database folder into the editor's logic.
#include "KwMFCUIExport.h"

#include <QList>
#include <QString>
#include <QStringList>
#include <functional>

class CFMView;
class CKwAnalysis;
class KW_UOM;
class CKwMaterial;
class CKwUIMaterial;
class QWidget;

// One material of a file as a picker sees it.
struct KwMaterialEntry
{
    QString name;
    int type; // CKwMaterial::Type
};

struct KwMaterialTypeItem
{
    int type;     // CKwMaterial::Type
    QString text; // in the current language
};

// The type list in its order: the seven types always, "Crushable Foam" when explicit analyses
// are enabled in the tech preview, then "Rigid" and "Concrete" when the caller offers them.
KWMFCUI_EXPORT QList<KwMaterialTypeItem> KwMaterialTypeItems(bool explicitEnabled,
                                                             bool offerRigid = false,
                                                             bool offerConcrete = false);
// The display text of a type code (empty for an unknown one).
KWMFCUI_EXPORT QString KwMaterialTypeText(int type);

// The advisories a change to `type` shows for `analysis` (may be null), in order. The choice
// is kept whatever they say. `material` is the edit copy (its thermal values matter).
KWMFCUI_EXPORT QStringList KwMaterialTypeAdvisories(int type, const CKwAnalysis* analysis,
                                                    const CKwMaterial* material);

// Whether an analysis takes nonlinear material data and PPFA: its type code is one of the
// nonlinear codes 5, 13 and 18. False without an analysis.
KWMFCUI_EXPORT bool KwTakesNonlinearMaterialData(const CKwAnalysis* analysis);

// The editor's width in device-independent pixels before DPI scaling: wider for hyperelastic.
KWMFCUI_EXPORT int KwMaterialDialogWidth(int type);

// Picks a file: (folder, filter, default extension) -> path, empty when cancelled.
using KwMaterialFileChooser =
    std::function<QString(const QString& folder, const QString& filter, const QString& ext)>;

// Chooses one material of a file with several: its position, -1 when none is chosen.
using KwMaterialPicker = std::function<int(const QList<KwMaterialEntry>& materials)>;

// Loads a material from the database into the logic's edit copy. `ownFilesOnly` offers only
// the program's material files (default extension svrmat); otherwise the program's files and
// CAD material libraries (default extension xml). The folder comes from the settings (the
// data folder's Materials when none is stored) and the chosen folder is written back. Returns
// true when the edit copy was replaced; a cancelled choice or a refused file changes nothing.
// A file of several materials lets the user choose one (`picker`; without it the material
// library browser on the file's materials); a file of one material is loaded at once. Without a file chooser the standard
// open-file dialog is shown over `parent`.
KWMFCUI_EXPORT bool KwLoadMaterialFromDB(QWidget* parent, CKwUIMaterial* logic,
                                         bool ownFilesOnly,
                                         const KwMaterialFileChooser& chooser = {},
                                         const KwMaterialPicker& picker = {});

// "Load from Library...": the material library browser (CKwMaterialBrowserDlg) on the shipped
// library, every material file of the database folder, values in `units`; the user may open
// other library files in it. The material chosen with OK replaces the logic's edit copy
// through the logic's own file loading (all or nothing, the ID kept). True when it did.
KWMFCUI_EXPORT bool KwBrowseMaterialLibrary(QWidget* parent, CKwUIMaterial* logic, KW_UOM* units);

// Opens the point-table dialog of a material curve (CKwMaterial::Curve) on a table made from the
// edit copy's curve, in `units`: the nonlinear material dialog for the stress-strain curve, the
// table dialog for the others. Only the dialog's OK writes the points back into the edit copy;
// returns whether it did.
KWMFCUI_EXPORT bool KwEditMaterialCurve(QWidget* parent, CKwUIMaterial* logic, int curve,
                                        KW_UOM* units, CFMView* view);
