// Picking many entities into a model editor: one pick event from the view carrying N entities,
// through the editor's selection box and its logic, up to the view highlighting them.
// Target: 10,000 entities under 50 ms.
#include "CFMView.h"
#include "CKwFEModel.h"
#include "CKwMFCUIConMass.h"
#include "CKwMFCUIEndRelease.h"
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "CKwiCKAddin.h"
#include "KW_UOM.h"

#include <QApplication>
#include <QMainWindow>
#include <benchmark/benchmark.h>
#include <memory>

namespace {

constexpr int kEntities = 10000;

// A model with a line of N beam elements and N points, in a view on a frame.
struct PickHost
{
    QMainWindow frame;
    std::unique_ptr<CKwFEModel> model = std::make_unique<CKwFEModel>(1, QStringLiteral("Picks"));
    KW_UOM units{KW_UOM::MMNS};
    CKwiCKAddin addin;
    CFMView* view = nullptr;
    QList<CKwUIEntity*> beams;
    QList<CKwUIEntity*> points;

    PickHost()
    {
        model->m_mesh = new CKwMeshModel(1, QStringLiteral("Line"));
        for (int i = 0; i <= kEntities; ++i)
            model->m_mesh->AddNode(i + 1, 0.001 * i, 0, 0);
        for (int i = 1; i <= kEntities; ++i) {
            model->m_mesh->AddElement(i, CKwMeshModel::Beam2, {i, i + 1});
            beams.append(model->m_mesh->ElementEntity(i));
            auto* p = new CKwUIEntity(CKwUIEntity::Point, i, QStringLiteral("Point %1").arg(i));
            model->m_geometry.append(p);
            points.append(p);
        }
        view = new CFMView(model.get(), &frame);
        frame.setCentralWidget(view);
        view->SetUnitHolder(&units);
        view->SetFrameWindow(&frame);
        TheApplication = &addin;
    }
};

PickHost& host()
{
    static PickHost h;
    return h;
}

template <class Editor, class Make>
void pickInto(benchmark::State& state, const QList<CKwUIEntity*>& entities, Make make)
{
    for (auto _ : state) {
        state.PauseTiming();
        std::unique_ptr<Editor> editor(make());
        editor->Create();
        editor->show();
        QApplication::processEvents();
        state.ResumeTiming();
        host().view->SendPickEvent(entities, false);
        QApplication::processEvents(); // the box lays out what it lists
        state.PauseTiming();
        if (editor->GetSelectedEntities().size() != entities.size())
            state.SkipWithError("not every entity was taken");
        editor->OnCancel();
        editor.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * entities.size());
}

void BM_PickBeamsIntoEndRelease(benchmark::State& state)
{
    pickInto<CKwMFCUIEndRelease>(state, host().beams, [] {
        return new CKwMFCUIEndRelease(host().model->m_mesh, false, host().view);
    });
}

void BM_PickPointsIntoConcentratedMass(benchmark::State& state)
{
    pickInto<CKwMFCUIConMass>(state, host().points, [] {
        return new CKwMFCUIConMass(nullptr, host().view, &host().units);
    });
}

} // namespace

BENCHMARK(BM_PickBeamsIntoEndRelease)->Unit(benchmark::kMillisecond)->Repetitions(5)
    ->ReportAggregatesOnly(true);
BENCHMARK(BM_PickPointsIntoConcentratedMass)->Unit(benchmark::kMillisecond)->Repetitions(5)
    ->ReportAggregatesOnly(true);
