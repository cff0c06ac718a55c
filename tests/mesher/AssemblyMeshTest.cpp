// The sample assembly meshed by the real mesher: its classification, the remesh through the
// demo host's job with the ways it must fail, and a linear static solve of the meshed assembly.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwConnector.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMeshModel.h"
#include "CKwRestraint.h"
#include "CKwUIEntity.h"
#include "KwHostWindow.h"
#include "KwMesherJob.h"
#include "KwSampleAssembly.h"
#include "KwSolverJob.h"
#include "KwSolverResults.h"
#include "KwTestSupport.h"
#include "MesherTestSupport.h"

#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <set>

namespace {

// A coarse run keeps the tests fast.
KwMeshSettings coarse(bool parabolic = false)
{
    KwMeshSettings s;
    s.sizeLevel = 8;
    s.parabolic = parabolic;
    return s;
}

std::array<double, 3> at(const CKwMeshModel& mesh, int id)
{
    const CKwMeshModel::Node* n = mesh.FindNode(id);
    return {n->x, n->y, n->z};
}

// The volume a closed set of outward triangles encloses (divergence theorem).
double enclosed(const CKwMeshModel& mesh, const std::vector<int>& facets)
{
    double v = 0;
    for (std::size_t i = 0; i + 2 < facets.size(); i += 3) {
        const auto a = at(mesh, facets[i]), b = at(mesh, facets[i + 1]), c = at(mesh, facets[i + 2]);
        v += (a[0] * (b[1] * c[2] - b[2] * c[1]) - a[1] * (b[0] * c[2] - b[2] * c[0])
              + a[2] * (b[0] * c[1] - b[1] * c[0])) / 6.0;
    }
    return v;
}

double tetVolume(const CKwMeshModel& mesh, std::size_t e)
{
    const auto n = mesh.ElementNodes(e);
    const auto& p = mesh.Nodes();
    const auto& a = p[std::size_t(n[0])];
    const auto& b = p[std::size_t(n[1])];
    const auto& c = p[std::size_t(n[2])];
    const auto& d = p[std::size_t(n[3])];
    const double u[3] = {b.x - a.x, b.y - a.y, b.z - a.z}, w[3] = {c.x - a.x, c.y - a.y, c.z - a.z},
                 t[3] = {d.x - a.x, d.y - a.y, d.z - a.z};
    return (u[0] * (w[1] * t[2] - w[2] * t[1]) - u[1] * (w[0] * t[2] - w[2] * t[0])
            + u[2] * (w[0] * t[1] - w[1] * t[0])) / 6.0;
}

class AssemblyMesh : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_gmsh = KwTestMesher();
        if (m_gmsh.isEmpty())
            GTEST_SKIP() << "gmsh is not installed";
    }
    QString m_gmsh;
};

TEST_F(AssemblyMesh, ClassificationCoversTheAssembly)
{
    for (const bool parabolic : {false, true}) {
        SCOPED_TRACE(parabolic ? "parabolic" : "linear");
        const KwGmshMesh r = KwMeshAssembly(coarse(parabolic), nullptr, m_gmsh);
        ASSERT_TRUE(r.ok()) << r.error.toStdString();
        const CKwMeshModel& mesh = r.mesh;
        // Three named bodies; every element belongs to exactly one of them.
        std::map<int, QString> names;
        for (const KwGmshEntity& e : r.entities)
            if (e.kind == CKwUIEntity::Body)
                names[e.id] = e.Label();
        EXPECT_EQ(names, (std::map<int, QString>{{1, QStringLiteral("Bracket")},
                                                 {2, QStringLiteral("Cover")},
                                                 {3, QStringLiteral("Bolt")}}));
        std::size_t owned = 0;
        for (int body : {1, 2, 3})
            owned += mesh.FindGeometryMesh(CKwUIEntity::Body, body)->elementIds.size();
        EXPECT_EQ(owned, mesh.ElementCount());
        // The cover is shells, the other two solids of the chosen order.
        for (std::size_t e = 0; e < mesh.ElementCount(); ++e)
            EXPECT_EQ(CKwMeshModel::IsParabolic(mesh.ElementType(e)), parabolic);
        const auto* cover = mesh.FindGeometryMesh(CKwUIEntity::Body, 2);
        for (int id : cover->elementIds)
            EXPECT_TRUE(CKwMeshModel::IsShellType(mesh.ElementType(std::size_t(mesh.ElementIndex(id)))));
        // The bracket's faces close around its solids and face outward: the volume their
        // facets enclose is the volume of its tetrahedra.
        const auto* bracket = mesh.FindGeometryMesh(CKwUIEntity::Body, 1);
        double solid = 0;
        for (int id : bracket->elementIds)
            solid += tetVolume(mesh, std::size_t(mesh.ElementIndex(id)));
        EXPECT_GT(solid, 1e-4);
        EXPECT_NEAR(enclosed(mesh, bracket->facets), solid, 1e-9);
        // Faces hold the nodes of their facets and of their edges; vertices have one node.
        for (const CKwMeshModel::GeometryMesh& g : mesh.GeometryMeshes()) {
            const std::set<int> nodes(g.nodeIds.begin(), g.nodeIds.end());
            for (int id : g.facets) {
                ASSERT_TRUE(nodes.count(id)) << g.kind << " " << g.id;
            }
            if (g.kind == CKwUIEntity::Vertex) {
                EXPECT_EQ(g.nodeIds.size(), 1u);
            }
        }
    }
}

TEST_F(AssemblyMesh, MeshControlsAndSizesReachTheMesher)
{
    // A finer level gives more elements; a length wins over the level.
    const KwGmshMesh coarseRun = KwMeshAssembly(coarse(), nullptr, m_gmsh);
    KwMeshSettings fine = coarse();
    fine.sizeLevel = 6;
    const KwGmshMesh fineRun = KwMeshAssembly(fine, nullptr, m_gmsh);
    ASSERT_TRUE(coarseRun.ok() && fineRun.ok());
    EXPECT_GT(fineRun.mesh.ElementCount(), coarseRun.mesh.ElementCount());
    KwMeshSettings length = fine;
    length.useLength = true;
    length.elementLength = 0.02;
    EXPECT_DOUBLE_EQ(KwAssemblyElementSize(length), 0.02);
    EXPECT_DOUBLE_EQ(KwAssemblyElementSize(coarse()), 0.006 * 2.0 * std::sqrt(2.0));
    // The bolt as a beam: a line part of beams along its axis, no bolt solids.
    KwMeshSettings beam = coarse();
    beam.bodyMesh[kKwBoltBody] = KwMeshSettings::AsBeam;
    const KwGmshMesh beamRun = KwMeshAssembly(beam, nullptr, m_gmsh);
    ASSERT_TRUE(beamRun.ok()) << beamRun.error.toStdString();
    const auto* bolt = beamRun.mesh.FindGeometryMesh(CKwUIEntity::Body, kKwBoltBody);
    ASSERT_TRUE(bolt && !bolt->elementIds.empty());
    for (int id : bolt->elementIds)
        EXPECT_TRUE(CKwMeshModel::IsBeamType(beamRun.mesh.ElementType(std::size_t(beamRun.mesh.ElementIndex(id)))));
}

// --- the sample model and the host's remesh ---

struct Snapshot
{
    std::size_t elements, nodes;
    std::array<double, 3> first;
    CKwMeshModel* object;
    explicit Snapshot(const CKwFEModel& m)
        : elements(m.m_mesh->ElementCount()), nodes(m.m_mesh->Nodes().size()),
          first(at(*m.m_mesh, m.m_mesh->Nodes().front().id)), object(m.m_mesh)
    {
    }
    bool operator==(const Snapshot&) const = default;
};

class AssemblyHost : public AssemblyMesh
{
protected:
    void SetUp() override
    {
        AssemblyMesh::SetUp();
        if (IsSkipped())
            return;
        QString why;
        CKwFEModel* model = KwSampleAssembly(&why, m_gmsh);
        ASSERT_NE(model, nullptr) << why.toStdString();
        m_window = std::make_unique<KwHostWindow>(nullptr, model);
        KwMeshSettings s = model->m_mesh->GetSettings();
        s.sizeLevel = 8;
        model->m_mesh->SetSettings(s);
        m_window->MesherJob()->SetProgram(m_gmsh);
    }
    CKwFEModel& model() { return *m_window->Model(); }
    CKwAnalysis* linearStatic()
    {
        for (CKwAnalysis* a : model().m_analyses)
            if (a->GetAnalysisTypeCode() == CKwAnalysis::LinearStatic)
                return a;
        return nullptr;
    }
    KwMesherJob& job() { return *m_window->MesherJob(); }
    // A stand-in mesher: a shell script with the given body ($3 is the script, $6 the mesh file).
    QString fake(const QString& body)
    {
        const QString path = m_dir.filePath(QStringLiteral("fake-gmsh-%1").arg(++m_fakes));
        QFile f(path);
        EXPECT_TRUE(f.open(QIODevice::WriteOnly));
        f.write(("#!/bin/sh\n" + body + "\n").toUtf8());
        f.close();
        f.setPermissions(f.permissions() | QFileDevice::ExeOwner);
        return path;
    }
    std::unique_ptr<KwHostWindow> m_window;
    QTemporaryDir m_dir;
    int m_fakes = 0;
};

TEST_F(AssemblyHost, SampleReferencesLieOnTheAssembly)
{
    const CKwMeshModel& mesh = *model().m_mesh;
    // Every constraint, load with a place, and connector end names geometry with a mesh on it.
    const auto meshed = [&](const CKwUIEntity* e) {
        const auto* g = e ? mesh.FindGeometryMesh(e->GetKind(), e->GetID()) : nullptr;
        return g && !g->nodeIds.empty();
    };
    ASSERT_EQ(model().m_restraints.first()->m_entities.size(), 2);
    for (const CKwUIEntity* e : model().m_restraints.first()->m_entities) {
        EXPECT_TRUE(meshed(e));
        EXPECT_EQ(e->GetBodyID(), kKwBracketBody);
        EXPECT_TRUE(e->IsCurved()); // the bolt holes
    }
    for (const CKwLoad* l : model().m_loads)
        for (const CKwUIEntity* e : l->m_entities)
            EXPECT_TRUE(meshed(e)) << l->GetName().toStdString();
    const CKwConnector* bolt = model().m_connectors.first();
    EXPECT_EQ(bolt->m_end1.first()->GetBodyID(), kKwCoverBody);
    EXPECT_EQ(bolt->m_end2.first()->GetBodyID(), kKwBracketBody);
    EXPECT_TRUE(meshed(bolt->m_end1.first()) && meshed(bolt->m_end2.first()));
    const CKwUIEntity* force = model().m_loads.first()->m_entities.first();
    EXPECT_EQ(force->GetLabel(), QStringLiteral("Face %1 (Cover)").arg(force->GetID()));
}

TEST_F(AssemblyHost, RemeshKeepsLoadsOnTheirFaces)
{
    CKwLoad* load = model().m_loads.first();
    CKwUIEntity* face = load->m_entities.first();
    const std::size_t before = model().m_mesh->ElementCount();
    const auto nodesBefore = model().m_mesh->FindGeometryMesh(CKwUIEntity::Face, face->GetID())->nodeIds;
    KwMeshSettings s = model().m_mesh->GetSettings();
    s.sizeLevel = 8;
    model().m_mesh->SetSettings(s);
    QSignalSpy replaced(m_window->View(), &CFMView::meshReplaced);
    QSignalSpy progress(&job(), &KwMesherJob::progressChanged);
    m_window->View()->RequestRemesh();
    ASSERT_TRUE(job().Wait(120000));
    ASSERT_TRUE(job().Succeeded()) << job().Message().toStdString();
    EXPECT_EQ(replaced.count(), 1);
    EXPECT_GT(progress.count(), 2);
    EXPECT_EQ(job().Progress(), 100);
    EXPECT_LT(model().m_mesh->ElementCount(), before);
    EXPECT_EQ(model().m_mesh->GetSettings().sizeLevel, 8);
    // The same face object, now carrying the new, coarser mesh.
    EXPECT_EQ(load->m_entities.first(), face);
    EXPECT_EQ(model().FindGeometry(CKwUIEntity::Face, face->GetID()), face);
    const auto* g = model().m_mesh->FindGeometryMesh(CKwUIEntity::Face, face->GetID());
    ASSERT_NE(g, nullptr);
    EXPECT_LT(g->nodeIds.size(), nodesBefore.size());
    EXPECT_TRUE(job().Message().contains(QString::number(model().m_mesh->ElementCount())));
}

TEST_F(AssemblyHost, FailedRunsKeepThePreviousMesh)
{
    // A real mesh file cut short, to stand in for a mesher that dies while writing.
    const KwGmshMesh real = KwMeshAssembly(coarse(), nullptr, m_gmsh);
    ASSERT_TRUE(real.ok());
    struct Case
    {
        const char* name;
        QString program;
        const char* says;
    };
    const Case cases[] = {
        {"missing program", m_dir.filePath(QStringLiteral("no-such-gmsh")), "could not be started"},
        {"error exit", fake(QStringLiteral("echo 'Info    : Meshing 1D...'\necho 'Error   : Unable to recover the edge 7' \nexit 1")),
         "Unable to recover the edge 7"},
        {"error line, exit 0", fake(QStringLiteral("echo 'Error   : No elements in volume 1'\nexit 0")),
         "No elements in volume 1"},
        {"garbage file", fake(QStringLiteral("echo garbage > \"$6\"")), "Line 1"},
        {"truncated file", fake(QStringLiteral("printf '$MeshFormat\\n4.1 0 8\\n$EndMeshFormat\\n$Nodes\\n1 3 1 3\\n' > \"$6\"")),
         "Line 5"},
        {"no file", fake(QStringLiteral("exit 0")), "no mesh"},
        {"empty mesh", fake(QStringLiteral("printf '$MeshFormat\\n4.1 0 8\\n$EndMeshFormat\\n$Nodes\\n0 0 0 0\\n$EndNodes\\n$Elements\\n0 0 0 0\\n$EndElements\\n' > \"$6\"")),
         "no element"},
        {"killed", fake(QStringLiteral("kill -9 $$")), "failed"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        const Snapshot before(model());
        const QList<CKwUIEntity*> geometry = model().m_geometry;
        QSignalSpy replaced(m_window->View(), &CFMView::meshReplaced);
        job().SetProgram(c.program);
        job().Start();
        ASSERT_TRUE(job().Wait(30000));
        EXPECT_FALSE(job().Succeeded());
        EXPECT_TRUE(job().Message().contains(QLatin1String(c.says))) << job().Message().toStdString();
        EXPECT_TRUE(job().Message().contains(QLatin1String("previous mesh is kept")));
        EXPECT_EQ(replaced.count(), 0);
        EXPECT_TRUE(Snapshot(model()) == before);
        EXPECT_EQ(model().m_geometry, geometry);
    }
}

TEST_F(AssemblyHost, CancelAndBusyModelKeepThePreviousMesh)
{
    const Snapshot before(model());
    // Cancel while the mesher works.
    job().SetProgram(fake(QStringLiteral("echo 'Info    : Meshing 1D...'\nsleep 30")));
    ASSERT_TRUE(job().Start());
    job().Wait(300);
    job().Cancel();
    ASSERT_TRUE(job().Wait(10000));
    EXPECT_FALSE(job().Succeeded());
    EXPECT_TRUE(job().Message().contains(QLatin1String("cancelled")));
    EXPECT_TRUE(Snapshot(model()) == before);

    // An editor open on the model: no run starts.
    job().SetProgram(m_gmsh);
    QWidget editor;
    editor.setWindowTitle(QStringLiteral("Constraint"));
    editor.setProperty("templateId", 7061u);
    m_window->View()->AddOpenDialog(&editor);
    EXPECT_FALSE(job().Start());
    EXPECT_TRUE(job().Message().contains(QLatin1String("\"Constraint\" is open")));
    // The mesh settings dialog itself may stay open.
    editor.setProperty("templateId", 7201u);
    EXPECT_TRUE(job().Obstacle().isEmpty());
    m_window->View()->LeaveDialogStack(&editor);
    // The solver running: no run.
    m_window->View()->SetSolvraRunning(true);
    EXPECT_FALSE(job().Start());
    EXPECT_TRUE(job().Message().contains(QLatin1String("solver")));
    // The solver starting while the mesher runs: the finished mesh is not put in.
    m_window->View()->SetSolvraRunning(false);
    ASSERT_TRUE(job().Start());
    m_window->View()->SetSolvraRunning(true);
    ASSERT_TRUE(job().Wait(120000));
    EXPECT_FALSE(job().Succeeded());
    EXPECT_TRUE(job().Message().contains(QLatin1String("previous mesh is kept")));
    EXPECT_TRUE(Snapshot(model()) == before);
    m_window->View()->SetSolvraRunning(false);
}

TEST_F(AssemblyHost, LinearStaticSolvesOnTheAssembly)
{
    if (KwSolverJob::SolverProgram().isEmpty())
        GTEST_SKIP() << "the solver is not installed";
    CKwAnalysis* linear = linearStatic();
    ASSERT_NE(linear, nullptr);
    KwSolverJob solver(m_window->View());
    ASSERT_TRUE(solver.Start(&model(), linear, QStringLiteral("Linear Static"))) << solver.Message().toStdString();
    ASSERT_TRUE(solver.Wait(300000));
    EXPECT_TRUE(solver.Succeeded()) << solver.Message().toStdString();
    // The cover is in the deck (the connector joins it to the fixed bracket).
    EXPECT_NE(solver.Deck().text.find("TYPE=S"), std::string::npos);
    EXPECT_NE(solver.Deck().text.find("TYPE=C3D4"), std::string::npos);
}

// The same analysis on linear and on parabolic elements of one size: every element reaches
// the solver in its own family, and the parabolic mesh, less stiff than linear tetrahedra,
// moves at least as far.
TEST_F(AssemblyHost, ParabolicMeshSolvesInItsOwnFamilies)
{
    if (KwSolverJob::SolverProgram().isEmpty())
        GTEST_SKIP() << "the solver is not installed";
    CKwAnalysis* linear = linearStatic();
    ASSERT_NE(linear, nullptr);
    const auto largestMove = [&](bool parabolic, std::string* deck) {
        KwMeshSettings s = model().m_mesh->GetSettings();
        s.parabolic = parabolic;
        model().m_mesh->SetSettings(s);
        m_window->View()->RequestRemesh();
        EXPECT_TRUE(job().Wait(180000));
        EXPECT_TRUE(job().Succeeded()) << job().Message().toStdString();
        KwSolverJob solver(m_window->View());
        EXPECT_TRUE(solver.Start(&model(), linear, QStringLiteral("Linear Static")))
            << solver.Message().toStdString();
        EXPECT_TRUE(solver.Wait(300000));
        EXPECT_TRUE(solver.Succeeded()) << solver.Message().toStdString();
        *deck = solver.Deck().text;
        double most = 0;
        if (const KwSolverResults* r = linear->GetSolverResults(); r && !r->sets.empty()) {
            const auto& u = r->sets.front().displacement.values;
            for (std::size_t i = 0; i + 2 < u.size(); i += 3)
                most = std::max(most, std::sqrt(u[i] * u[i] + u[i + 1] * u[i + 1] + u[i + 2] * u[i + 2]));
        }
        return most;
    };
    std::string linearDeck, parabolicDeck;
    const double uLinear = largestMove(false, &linearDeck);
    const double uParabolic = largestMove(true, &parabolicDeck);
    EXPECT_EQ(parabolicDeck.find("TYPE=C3D4,"), std::string::npos);
    EXPECT_NE(parabolicDeck.find("TYPE=C3D10"), std::string::npos);
    EXPECT_NE(parabolicDeck.find("TYPE=S8R"), std::string::npos);
    std::size_t elements = 0;
    for (std::size_t e = 0; e < model().m_mesh->ElementCount(); ++e)
        elements += CKwMeshModel::IsParabolic(model().m_mesh->ElementType(e)) ? 1 : 0;
    EXPECT_EQ(elements, model().m_mesh->ElementCount());
    ASSERT_GT(uLinear, 0.0);
    EXPECT_GE(uParabolic, 0.95 * uLinear);
    EXPECT_LT(uParabolic, 3.0 * uLinear);
}

} // namespace
