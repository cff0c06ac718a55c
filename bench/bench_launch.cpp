// Opening a modeless dialog through LaunchDialog, up to a shown and filled window.
// Target: under 5 ms per open after the first of its kind (median over repetitions).
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwModalSetup.h"
#include "CKwTimeStep.h"
#include "CKwPhysicalProperty.h"
#include "CKwMFCDialog.h"
#include "CKwNonlinearSetup.h"
#include "CKwSubCase.h"
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
BENCHMARK_CAPTURE(BM_LaunchModeless, subcase, 8u, 1, firstSubcase)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, nonlinear_setup, 52u, 2, nonlinearSetup)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, modal_setup, 32u, 6, modalSetup)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
BENCHMARK_CAPTURE(BM_LaunchModeless, time_step, 29u, 2, timeStep)
    ->Unit(benchmark::kMillisecond)
    ->Repetitions(9)
    ->ReportAggregatesOnly(true);
