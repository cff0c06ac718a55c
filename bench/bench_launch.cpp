// Opening a modeless dialog through LaunchDialog, up to a shown and filled window.
// Target: under 5 ms per open after the first of its kind (median over repetitions).
#include "CFMView.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwCoordinateSystem.h"
#include "CKwAnalysis.h"
#include "CKwDynamicsSetup.h"
#include "CKwFEModel.h"
#include "CKwImpactWizard.h"
#include "CKwOptimObjective.h"
#include "CKwOptimVariable.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwModalSetup.h"
#include "CKwTimeStep.h"
#include "CKwPhysicalProperty.h"
#include "CKwMFCDialog.h"
#include "CKwNonlinearSetup.h"
#include "CKwPlot.h"
#include "CKwSubCase.h"
#include "CKwElementDeletion.h"
#include "CKwGroup.h"
#include "CKwMaterialOrient.h"
#include "CKwMeshLocal.h"
#include "CKwSurfaceContact.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"
#include "KwMFCUIEntry.h"
#include "KwRegistry.h"

#include <QApplication>
#include <QMainWindow>
#include <QSet>
#include <QTemporaryDir>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

struct BenchHost
{
    QMainWindow frame;
    std::unique_ptr<CKwFEModel> model{CKwFEModel::CreateSampleModel()};
    KW_UOM units{KW_UOM::MMNS};
    CKwiCKAddin addin;
    CFMView* view = new CFMView(model.get(), &frame);
    BenchHost()
    {
        frame.setCentralWidget(view);
        view->SetUnitHolder(&units);
        view->SetFrameWindow(&frame);
        TheApplication = &addin;
    }
};

CKwMFCDialog* openDialog()
{
    for (QWidget* w : QApplication::topLevelWidgets())
        if (auto* d = dynamic_cast<CKwMFCDialog*>(w); d && d->isVisible())
            return d;
    return nullptr;
}

// What a kind edits in the sample model.
using ObjectOf = void* (*)(CKwFEModel&, CKwAnalysis&);
void* nonlinearSetup(CKwFEModel&, CKwAnalysis& a)
{
    return a.GetSubCases().first()->GetNonlinearSetup();
}
void* firstConstraint(CKwFEModel& m, CKwAnalysis&) { return m.m_restraints.first(); }
void* firstMaterial(CKwFEModel& m, CKwAnalysis&) { return m.m_materials.first(); }
void* theMesh(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_mesh); }
// The beam property: its section text is computed on open.
void* beamProperty(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_properties.at(1)); }
// A force on faces: the load editor as most loads open it.
void* faceForce(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_loads.at(0)); }
// The remote force: the load editor's fullest panel.
void* remoteForce(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_loads.at(2)); }

// The drop test's impact, the study's objective and variable (analyses 4 and 6).
void* dropImpact(CKwFEModel&, CKwAnalysis& a) { return static_cast<CKwFEBase*>(a.GetImpactWizard()); }
void* firstObjective(CKwFEModel&, CKwAnalysis& a) { return static_cast<CKwFEBase*>(a.m_objectives.first()); }
void* firstVariable(CKwFEModel&, CKwAnalysis& a) { return static_cast<CKwFEBase*>(a.m_variables.first()); }
void* nothing(CKwFEModel&, CKwAnalysis&) { return nullptr; }
// The analysis settings of dynamic analyses; the spectrum and the solution frequencies hold
// their owner while open.
void* theDamping(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_dampings.first()); }
void* theSpectrum(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_spectrumSetups.first()); }
void* theFrequencies(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_solutionFrequencies.first()); }
// The analysis setups: a subcase, the analysis's modal setup and time stepping.
void* firstSubcase(CKwFEModel&, CKwAnalysis& a) { return static_cast<CKwFEBase*>(a.GetSubCases().first()); }
void* modalSetup(CKwFEModel&, CKwAnalysis& a) { return static_cast<CKwFEBase*>(a.GetModalSetup()); }
void* timeStep(CKwFEModel&, CKwAnalysis& a) { return static_cast<CKwFEBase*>(a.GetTimeStep()); }

void BM_LaunchModeless(benchmark::State& state, unsigned kind, int analysisIndex, ObjectOf of)
{
    static BenchHost host;
    CKwAnalysis* analysis = host.model->m_analyses.at(analysisIndex);
    DialogLaunchRequest r{};
    r.kind = kind;
    r.view = host.view;
    r.analysis = analysis;
    r.object = of(*host.model, *analysis);
    // The fatigue setup takes nothing from the request: it edits the view's current analysis.
    if (kind == 56)
        host.view->SetCurrentAnalysis(analysis);
    // The first open pays for loading fonts and styles once; it is not what is measured.
    static QSet<unsigned> warmed;
    if (!warmed.contains(kind)) {
        warmed.insert(kind);
        LaunchDialog(&r);
        QApplication::processEvents();
        if (CKwMFCDialog* d = openDialog())
            d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    for (auto _ : state) {
        LaunchDialog(&r);
        QApplication::processEvents();
        state.PauseTiming();
        CKwMFCDialog* d = openDialog();
        if (!d) {
            state.SkipWithError("no dialog opened");
            break;
        }
        d->OnCancel();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        // The placement saved on close reaches the disk in the idle time between two opens,
        // not inside the next one.
        KwFlushRegistry();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations());
}

} // namespace

BENCHMARK_CAPTURE(BM_LaunchModeless, load_editor_force, 0u, 0, faceForce)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, load_editor, 0u, 0, remoteForce)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, constraint, 1u, 0, firstConstraint)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, nonlinear_parameters_static, 53u, 1, nonlinearSetup)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, nonlinear_parameters_transient, 53u, 2, nonlinearSetup)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, material, 2u, 0, firstMaterial)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, mesh_quality, 9u, 0, theMesh)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, physical_property, 34u, 0, beamProperty)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

// The model editors that pick what they act on, each on the sample model's entity.
BENCHMARK_CAPTURE(BM_LaunchModeless, concentrated_mass, 13u, 0,
                  +[](CKwFEModel& m, CKwAnalysis&) -> void* {
                      return static_cast<CKwFEBase*>(m.m_conMasses.first());
                  })
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, connector, 14u, 0,
                  +[](CKwFEModel& m, CKwAnalysis&) -> void* {
                      return static_cast<CKwFEBase*>(m.m_connectors.first());
                  })
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, coordinate_system, 28u, 0,
                  +[](CKwFEModel& m, CKwAnalysis&) -> void* {
                      return static_cast<CKwFEBase*>(m.m_coordSystems.first());
                  })
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, end_release, 55u, 0, theMesh)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, impact, 33u, 4, dropImpact)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, fatigue_setup, 56u, 5, nothing)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, optim_objective, 16u, 6, firstObjective)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, optim_variable, 17u, 6, firstVariable)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

// The mesh control, material orientation, element deletion and surface contact editors, each
// on its sample entity.
namespace {
void* filletControl(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_meshControls.first()); }
void* coverOrientation(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_materialOrients.first()); }
void* coverDeletion(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_elementDeletions.first()); }
void* coverContact(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_surfaceContacts.first()); }
} // namespace

BENCHMARK_CAPTURE(BM_LaunchModeless, mesh_control, 3u, 0, filletControl)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, material_orientation, 6u, 0, coverOrientation)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, element_deletion, 54u, 4, coverDeletion)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, surface_contact, 12u, 0, coverContact)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, damping, 15u, 8, theDamping)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, spectrum_setup, 30u, 3, theSpectrum)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, solution_frequencies, 31u, 8, theFrequencies)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, subcase, 8u, 1, firstSubcase)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, nonlinear_setup, 52u, 2, nonlinearSetup)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, modal_setup, 32u, 7, modalSetup)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, time_step, 29u, 2, timeStep)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, mesh_table, 49u, 0, theMesh)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

// The FE model editor on the sample model: its three lists filled.
BENCHMARK_CAPTURE(BM_LaunchModeless, fe_model, 27u, 0,
                  +[](CKwFEModel& m, CKwAnalysis&) -> void* { return static_cast<CKwFEBase*>(&m); })
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

// The highlight editor: elements by a new list, and the sample node set (kind 47).
static void* firstIdSet(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_idSets.first()); }
BENCHMARK_CAPTURE(BM_LaunchModeless, highlight_elements, 24u, 0, nothing)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, highlight_set, 47u, 0, firstIdSet)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
// The plot editor: a new plot of the linear analysis (kind 7) and the sample's stored plot
// (kind 35).
static void* firstPlot(CKwFEModel& m, CKwAnalysis&) { return static_cast<CKwFEBase*>(m.m_plots.first()); }
BENCHMARK_CAPTURE(BM_LaunchModeless, plot, 7u, 0, nothing)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, stored_plot, 35u, 0, firstPlot)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);

// The mesh tools on the sample mesh: mesh settings (its body table), reverse normals and
// reverse line element direction (each sets the view's direction display).
BENCHMARK_CAPTURE(BM_LaunchModeless, mesh_settings, 48u, 0, theMesh)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, reverse_normals, 21u, 0, theMesh)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, reverse_line_element_direction, 22u, 0, theMesh)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
