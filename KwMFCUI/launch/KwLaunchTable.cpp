#include "KwLaunchTable.h"
#include "KwControls.h"

#include "CKwAboutDlg.h"
#include "CKwLicenseTypeDlg.h"
#include "CKwFEBase.h"
#include "CKwMFCUIMeshConvergencePlot.h"
#include "CKwMFCUILoad.h"
#include "CKwMFCUIMaterial.h"
#include "KwModelEditorsLaunch.h"
#include "CKwMFCUIMeshQuality.h"
#include "CKwMFCMeshTableDialog.h"
#include "CKwMeshModel.h"
#include "CKwMFCUIPhysicalProperty.h"
#include "CKwMFCUIRestraint.h"
#include "CKwMFCUITechPreview.h"
#include "CKwMsgDialog.h"
#include "CKwNonlinearParametersDlg.h"
#include "CKwNonlinearSetup.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwPhysicalProperty.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwiCKAddin.h"
#include "KwLaunchRules.h"
#include "KwLaunchStudies.h"
#include "KwStatusWindows.h"
#include "CKwTable.h"
#include "CKwTableDialog.h"
#include "CKwXYPlot.h"
#include "CKwXYPlotDlg.h"
#include "CKwAnalysis.h"
#include "CKwElementDeletion.h"
#include "CKwMFCUIElementDeletion.h"
#include "CKwMFCUIMaterialOrientation.h"
#include "CKwMFCUIMeshControl.h"
#include "CKwMFCUISurfaceContact.h"
#include "CKwMaterialOrient.h"
#include "CKwMeshLocal.h"
#include "CKwSurfaceContact.h"
#include "CKwMFCUIDamping.h"
#include "CKwMFCUISolutionFrequency.h"
#include "CKwMFCUISpectrumSetup.h"
#include "KwSetupFactories.h"
#include "KwHighlightLaunch.h"
#include "KwPlotLaunch.h"
#include "KwMeshToolsLaunch.h"

namespace {

CKwMFCDialog* makeAbout(const KwLaunchArgs&) { return new CKwAboutDlg(); }
CKwMFCDialog* makeLicenseType(const KwLaunchArgs&) { return new CKwLicenseTypeDlg(); }
CKwMFCDialog* makeTechPreview(const KwLaunchArgs& a) { return new CKwMFCUITechPreview(a.view); }

// The object is a model entity; anything but a nonlinear setup opens nothing.
CKwMFCDialog* makeNonlinearParameters(const KwLaunchArgs& a)
{
    auto* setup = dynamic_cast<CKwNonlinearSetup*>(static_cast<CKwFEBase*>(a.object));
    if (!setup)
        return nullptr;
    auto* dlg = new CKwNonlinearParametersDlg(setup, nullptr);
    dlg->SetFMView(a.view);
    dlg->Create();
    return dlg;
}

// Kind 1: object is the constraint to edit (anything else edits a new one), context the
// subcase it is edited in.
CKwMFCDialog* makeRestraint(const KwLaunchArgs& a)
{
    auto* restraint = dynamic_cast<CKwRestraint*>(static_cast<CKwFEBase*>(a.object));
    auto* dlg = new CKwMFCUIRestraint(restraint, static_cast<CKwSubCase*>(a.context),
                                      static_cast<int>(a.option), a.view, a.units, a.analysis);
    dlg->Create();
    return dlg;
}

// Kind 0: object is the load to edit (anything else edits a new one), context the subcase it
// is edited in.
CKwMFCDialog* makeLoad(const KwLaunchArgs& a)
{
    auto* load = dynamic_cast<CKwLoad*>(static_cast<CKwFEBase*>(a.object));
    auto* dlg = new CKwMFCUILoad(load, static_cast<CKwSubCase*>(a.context),
                                 static_cast<int>(a.option), a.view, a.units, a.analysis);
    dlg->Create();
    return dlg;
}

// Kind 2: object is the material to edit (anything else edits a new one), analysis the one
// it is edited for.
CKwMFCDialog* makeMaterial(const KwLaunchArgs& a)
{
    auto* material = dynamic_cast<CKwMaterial*>(static_cast<CKwFEBase*>(a.object));
    auto* dlg = new CKwMFCUIMaterial(a.view, a.units, material, nullptr, a.analysis);
    dlg->Create();
    return dlg;
}

// Kind 9: object is the mesh whose quality checks are edited; without a mesh nothing opens.
CKwMFCDialog* makeMeshQuality(const KwLaunchArgs& a)
{
    auto* mesh = dynamic_cast<CKwMeshModel*>(static_cast<CKwFEBase*>(a.object));
    if (!mesh)
        return nullptr;
    auto* dlg = new CKwMFCUIMeshQuality(mesh, a.view, a.units);
    dlg->Create();
    return dlg;
}

// Kind 49: object is the mesh to list; without a mesh nothing opens. The table puts itself
// into the view's open dialogs as it is constructed, before its window is created.
CKwMFCDialog* makeMeshTable(const KwLaunchArgs& a)
{
    auto* mesh = dynamic_cast<CKwMeshModel*>(static_cast<CKwFEBase*>(a.object));
    if (!mesh)
        return nullptr;
    auto* dlg = new CKwMFCMeshTableDialog(mesh, a.view, a.units);
    dlg->Create();
    return dlg;
}

// Kind 34: object is the property to edit (anything else edits a new one, whose idealization
// the option may give).
CKwMFCDialog* makePhysicalProperty(const KwLaunchArgs& a)
{
    auto* property = dynamic_cast<CKwPhysicalProperty*>(static_cast<CKwFEBase*>(a.object));
    auto* dlg = new CKwMFCUIPhysicalProperty(a.view, property, a.units,
                                             property ? -1 : static_cast<int>(a.option));
    dlg->Create();
    return dlg;
}

// Kind 70: object is the list of IDs (QList<int>) that do not exist.
CKwMFCDialog* makeMsgDialog(const KwLaunchArgs& a)
{
    const auto* ids = static_cast<const QList<int>*>(a.object);
    return new CKwMsgDialog(ids ? *ids : QList<int>());
}

// Kind 89: the one convergence plot, then the add-in fills it for the request's object.
CKwMFCDialog* openConvergencePlot(const KwLaunchArgs& a)
{
    CKwMFCUIMeshConvergencePlot* plot = KwStatusWindows::ConvergencePlotFor(a.view);
    if (plot && !a.createHidden)
        plot->ShowPlot();
    if (TheApplication)
        TheApplication->OnKwCommand(89, 3, QString(), 1, a.view, a.object);
    return plot;
}

// Kind 36: object is the table; the dialog of the table's kind edits it.
CKwMFCDialog* makeTableDialog(const KwLaunchArgs& a)
{
    auto* table = dynamic_cast<CKwTable*>(static_cast<CKwFEBase*>(a.object));
    if (!table)
        return nullptr;
    CKwTableDialog* dlg = CKwTableDialog::NewFor(table);
    dlg->Create(a.view, table, a.units);
    return dlg;
}

// Kind 39: the one XY-plot window, on the request's plot (reused when open).
CKwMFCDialog* openXYPlot(const KwLaunchArgs& a)
{
    auto* plot = a.object ? dynamic_cast<CKwXYPlot*>(static_cast<CKwFEBase*>(a.object)) : nullptr;
    CKwXYPlotDlg* dlg = CKwXYPlotDlg::GetXYPlotDlg();
    if (dlg) {
        if (plot)
            dlg->SetPlot(plot, a.units);
    } else {
        dlg = new CKwXYPlotDlg();
        dlg->SetFMView(a.view);
        dlg->Create(plot, a.units);
    }
    if (!a.createHidden) {
        dlg->show();
        KwBringWindowToTop(dlg);
    }
    return dlg;
}

// Kinds 6 and 54 find their context in the 101st 64-bit word of `extra`: a model entity, or
// nothing when `extra` is null.
CKwFEBase* extraWord101(const KwLaunchArgs& a)
{
    const auto* words = static_cast<void* const*>(a.extra);
    return words ? static_cast<CKwFEBase*>(words[100]) : nullptr;
}

// Kind 3: object is the mesh control to edit (anything else edits a new one), `extra` the
// entities picked before (a QList<CKwUIEntity*>, may be null).
CKwMFCDialog* makeMeshControl(const KwLaunchArgs& a)
{
    auto* control = dynamic_cast<CKwMeshLocal*>(static_cast<CKwFEBase*>(a.object));
    auto* dlg = new CKwMFCUIMeshControl(a.view, static_cast<const QList<CKwUIEntity*>*>(a.extra),
                                        control, a.units);
    dlg->Create();
    return dlg;
}

// Kind 6: object is the orientation to edit (anything else edits a new one); the word of
// `extra` is the shell property a new one is made for.
CKwMFCDialog* makeMaterialOrientation(const KwLaunchArgs& a)
{
    auto* orientation = dynamic_cast<CKwMaterialOrient*>(static_cast<CKwFEBase*>(a.object));
    auto* property = dynamic_cast<CKwPhysicalProperty*>(extraWord101(a));
    auto* dlg = new CKwMFCUIMaterialOrientation(a.view, property, orientation, a.units);
    dlg->Create();
    return dlg;
}

// Kind 54: object is the deletion to edit (anything else edits a new one); the word of
// `extra` is the explicit analysis a new one belongs to.
CKwMFCDialog* makeElementDeletion(const KwLaunchArgs& a)
{
    auto* deletion = dynamic_cast<CKwElementDeletion*>(static_cast<CKwFEBase*>(a.object));
    auto* analysis = dynamic_cast<CKwAnalysis*>(extraWord101(a));
    auto* dlg = new CKwMFCUIElementDeletion(a.view, analysis, deletion, a.units);
    dlg->Create();
    return dlg;
}

// Kind 12: object is the contact to edit (anything else edits a new one, of the option's
// kind).
CKwMFCDialog* makeSurfaceContact(const KwLaunchArgs& a)
{
    auto* contact = dynamic_cast<CKwSurfaceContact*>(static_cast<CKwFEBase*>(a.object));
    auto* dlg = new CKwMFCUISurfaceContact(a.view, contact, a.analysis,
                                           static_cast<int>(a.option), a.units);
    dlg->Create();
    return dlg;
}

// Kinds 15, 30 and 31: object is the damping, spectrum setup or solution frequencies to edit
// (anything else edits a new one, which belongs to the request's analysis).
template <class Editor, class Entity> CKwMFCDialog* makeAnalysisSetup(const KwLaunchArgs& a)
{
    auto* entity = dynamic_cast<Entity*>(static_cast<CKwFEBase*>(a.object));
    auto* dlg = new Editor(entity, a.view, a.units, a.analysis);
    dlg->Create();
    return dlg;
}

using H = KwLaunchHow;
namespace R = KwLaunchRules;
constexpr bool kShowsResults = true;

// Read top to bottom: kind, class, template (the one the dialog is built on), how, factory
// (nullptr: not in this build), then the kind's own check and whether it leaves the result
// display alone (both optional).
const KwLaunchEntry kTable[] = {
    {0, "CKwMFCUILoad", 370, H::Modeless, makeLoad},
    {1, "CKwMFCUIRestraint", 368, H::Modeless, makeRestraint},
    {2, "CKwMFCUIMaterial", 354, H::Modeless, makeMaterial, R::UnlessOpenMaterialEditorTakesIt},
    {3, "CKwMFCUIMeshControl", 359, H::Modeless, makeMeshControl},
    {4, "CKwMFCUISPCSummationForce", 1203, H::Modeless, KwMakeReactionSum},
    {6, "CKwMFCUIMaterialOrientation", 364, H::Modeless, makeMaterialOrientation},
    {7, "CKwMFCUIPlot", 358, H::Modeless, KwMakePlot, R::NeedsValidResults, kShowsResults},
    {8, "CKwMFCUISubcase", 357, H::Modeless, KwMakeSubcase},
    {9, "CKwMFCUIMeshQuality", 7013, H::Modeless, makeMeshQuality},
    {12, "CKwMFCUISurfaceContact", 360, H::Modeless, makeSurfaceContact},
    {13, "CKwMFCUIConMass", 353, H::Modeless, KwMakeConMass},
    {14, "CKwMFCUIConnector", 7001, H::Modeless, KwMakeConnector},
    {15, "CKwMFCUIDamping", 361, H::Modeless, makeAnalysisSetup<CKwMFCUIDamping, CKwDamping>},
    {16, "CKwMFCUIOptimObjective", 7187, H::Modeless, KwLaunchStudies::MakeOptimObjective},
    {17, "CKwMFCUIOptimVariable", 7197, H::Modeless, KwLaunchStudies::MakeOptimVariable},
    {19, "", 0, H::Ignored, nullptr},
    {21, "CKwMFCUIReverseNormals", 7011, H::Modeless, KwMakeReverseNormals},
    {22, "CKwMFCUIReverseLineElementDirection", 7042, H::Modeless,
     KwMakeReverseLineElementDirection},
    {23, "CKwMFCUIHighlightNodeElem", 7010, H::Modeless, KwMakeHighlight},
    {24, "CKwMFCUIHighlightNodeElem", 7010, H::Modeless, KwMakeHighlight},
    {25, "CKwMFCUIXYPlot", 7014, H::Modeless, KwMakeXYPlotEditor},
    {26, "CKwMFCUIPlot", 358, H::Modeless, KwMakePlotQuietly, R::NeedsResultsQuietly},
    {27, "CKwMFCUIFEModel", 1206, H::Modeless, KwMakeFEModel},
    {28, "CKwMFCUICoordSystem", 7012, H::Modeless, KwMakeCoordSystem},
    {29, "CKwMFCUITimeStep", 7008, H::Modeless, KwMakeTimeStep},
    {30, "CKwMFCUISpectrumSetup", 7302, H::ModelessHoldOwner,
     makeAnalysisSetup<CKwMFCUISpectrumSetup, CKwSpectrumSetup>},
    {31, "CKwMFCUISolutionFrequency", 7015, H::ModelessHoldOwner,
     makeAnalysisSetup<CKwMFCUISolutionFrequency, CKwSolutionFrequency>},
    {32, "CKwMFCUIModalSetup", 7007, H::Modeless, KwMakeModalSetup},
    {33, "CKwMFCUIImpactAnalysis", 7036, H::Modeless, KwLaunchStudies::MakeImpactAnalysis},
    {34, "CKwMFCUIPhysicalProperty", 367, H::Modeless, makePhysicalProperty},
    {35, "CKwMFCUIPlot", 358, H::Modeless, KwMakeStoredPlot},
    {36, "CKwTableDialog", 7400, H::Modeless, makeTableDialog},
    {37, "CTreeOptionDialog", 0, H::Modeless, nullptr},
    {39, "CKwXYPlotDlg", 7440, H::Special, openXYPlot},
    {40, "CKwXYPlotDlg", 0, H::Special, R::AddToOpenXYPlot},
    {43, "report", 0, H::Modal, nullptr},
    {44, "CKwAboutDlg", 0, H::Modal, makeAbout},
    {45, "CKwMFCUIHighlightNodeElem", 7010, H::Modeless, KwMakeHighlight},
    {46, "CKwMFCUIHighlightNodeElem", 7010, H::Modeless, KwMakeHighlight},
    {47, "CKwMFCUIHighlightNodeElem", 7010, H::Modeless, KwMakeHighlightSet, R::NeedsObject},
    {48, "CKwMFCUIMeshModel2", 7201, H::Modeless, KwMakeMeshSettings},
    {49, "CKwMFCMeshTableDialog", 102, H::Modeless, makeMeshTable},
    {52, "CKwMFCUINonlinearSetup", 7217, H::Modeless, KwMakeNonlinearSetup},
    {53, "CKwNonlinearParametersDlg", 7218, H::Modeless, makeNonlinearParameters},
    {54, "CKwMFCUIElementDeletion", 7225, H::Modeless, makeElementDeletion},
    {55, "CKwMFCUIEndRelease", 7231, H::Modeless, KwMakeEndRelease},
    {56, "CKwFatigueSetupDialog", 0, H::Modeless, KwLaunchStudies::MakeFatigueSetup},
    {68, "display preferences", 0, H::Modal, nullptr},
    {70, "CKwMsgDialog", 1150, H::Modal, makeMsgDialog},
    {82, "", 0, H::Message, R::DeliverStatusMessage},
    {83, "", 0, H::Message, R::RunMessageBox},
    {85, "CKwLicenseTypeDlg", 7306, H::Modal, makeLicenseType},
    {86, "CKwMFCUIStressLinearization", 7319, H::Modeless, nullptr, nullptr, kShowsResults},
    {87, "CKwMFCUITechPreview", 7322, H::Modal, makeTechPreview},
    {88, "CKwMFCUIMeshConvergence", 0, H::Modeless, nullptr},
    {89, "CKwMFCUIMeshConvergencePlot", 7335, H::Special, openConvergencePlot},
};

} // namespace

const KwLaunchEntry* KwFindLaunchEntry(std::uint32_t kind)
{
    for (const KwLaunchEntry& e : kTable)
        if (e.kind == kind)
            return &e;
    return nullptr;
}
