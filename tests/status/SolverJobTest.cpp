// Real solver runs through the path "Run analysis" takes (deck, separate solver program,
// output into the status windows, result file into the analysis), checked against closed-form
// answers; and the runs that must leave the model as it was.
#include "CFMView.h"
#include "CKwAnalysis.h"
#include "CKwConMass.h"
#include "CKwConnector.h"
#include "CKwDynamicsSetup.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwNonlinearSetup.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwSurfaceContact.h"
#include "CKwUIEntity.h"
#include "CKwUISPCSummationForce.h"
#include "CKwXYPlotDlg.h"
#include "CNLstatusDialog.h"
#include "KwHostWindow.h"
#include "KwMFCUIEntry.h"
#include "KwSolverDeck.h"
#include "KwSolverJob.h"
#include "KwSolverResults.h"
#include "KwTestSupport.h"

#include <QApplication>
#include <QElapsedTimer>
#include <set>
#include <QMessageBox>
#include <algorithm>
#include <QTest>
#include <cmath>
#include <functional>
#include <numbers>
#include <gtest/gtest.h>

namespace {

constexpr double E = 2.0e11, NU = 0.3, RHO = 7850.0;
constexpr double L = 1.0, H = 0.1; // a square bar of side H

// A bar of hexahedra along x, the first material steel-like, faces 1..6 pickable.
std::unique_ptr<CKwFEModel> bar(int nx, int nyz, int analysisType)
{
    auto m = std::make_unique<CKwFEModel>(1, QStringLiteral("Bar"));
    for (int f = 1; f <= 6; ++f)
        m->m_geometry.append(new CKwUIEntity(CKwUIEntity::Face, f, QStringLiteral("Face %1").arg(f)));
    m->m_mesh = new CKwMeshModel(1, QStringLiteral("Mesh"));
    m->m_mesh->BuildBlock(nx, nyz, nyz, L, H, H);
    auto* steel = new CKwMaterial(1, QStringLiteral("Steel"));
    steel->SetValue("EX", E);
    steel->SetValue("NUXY", NU);
    steel->SetValue("DENS", RHO);
    m->m_materials = {steel};
    auto* a = new CKwAnalysis(1, QStringLiteral("Run"), analysisType);
    a->AddSubCase(new CKwSubCase(1, QStringLiteral("Subcase 1")));
    a->SetMesh(m->m_mesh);
    m->m_analyses = {a};
    return m;
}

CKwRestraint* restrain(CKwFEModel& m, CKwUIEntity* on, std::array<bool, 6> dof)
{
    auto* r = new CKwRestraint(CKwFEModel::NextId(m.m_restraints), QStringLiteral("R"));
    r->m_dof = dof;
    r->m_entities = {on};
    m.m_restraints.append(r);
    return r;
}

CKwLoad* force(CKwFEModel& m, int face, double magnitude, std::array<double, 3> dir,
               QList<int> subcases = {1})
{
    auto* l = new CKwLoad(CKwFEModel::NextId(m.m_loads), QStringLiteral("F"));
    l->m_type = CKwLoad::Force;
    l->m_magnitude = magnitude;
    l->m_direction = dir;
    l->m_entities = {m.FindGeometry(CKwUIEntity::Face, face)};
    l->m_subcaseIds = subcases;
    m.m_loads.append(l);
    return l;
}

// The mean of one displacement component over the nodes of a face.
double meanOnFace(const CKwFEModel& m, const KwResultSet& set, int face, int axis)
{
    const auto nodes = KwGeometryNodes(*m.m_mesh, *m.FindGeometry(CKwUIEntity::Face, face));
    double sum = 0;
    for (int id : nodes) {
        const double* u = set.displacement.Find(id);
        EXPECT_NE(u, nullptr) << "node " << id;
        sum += u ? u[axis] : 0;
    }
    return nodes.empty() ? 0 : sum / double(nodes.size());
}

class SolverJob : public ::testing::Test
{
protected:
    void SetUp() override
    {
        kwtest::IsolateSettings();
        if (KwSolverJob::SolverProgram().isEmpty())
            GTEST_SKIP() << "the solver program ccx is not installed (tools/setup.sh installs it)";
    }
    void TearDown() override
    {
        for (unsigned id : {41u, 42u})
            DeleteKwDialog(id);
        kwtest::CloseAllWindows();
    }
    std::vector<KwLoadBalanceLine> lastBalance;
    KwSolverDeck lastDeck;
    // Runs the model's first analysis to its end; the results, or nullptr on failure.
    const KwSolverResults* solve(CKwFEModel& m)
    {
        CFMView view(&m);
        KwSolverJob job(&view);
        CKwAnalysis* a = m.m_analyses.first();
        if (!job.Start(&m, a, a->GetName())) {
            ADD_FAILURE() << job.Message().toStdString();
            return nullptr;
        }
        EXPECT_TRUE(view.IsSolvraRunning());
        EXPECT_TRUE(job.Wait(60000)) << "the solver did not end within a minute";
        EXPECT_FALSE(view.IsSolvraRunning());
        EXPECT_TRUE(job.Succeeded()) << job.Message().toStdString() << "\n" << job.Deck().text;
        // Every static closed-form case balances its loads with its reactions.
        const bool isStatic = a->GetAnalysisTypeCode() == CKwAnalysis::LinearStatic
                              || a->GetAnalysisTypeCode() == CKwAnalysis::NonlinearStatic;
        if (job.Succeeded() && isStatic) {
            EXPECT_EQ(job.Balance().size(), job.Deck().balances.size());
            EXPECT_FALSE(job.Balance().empty());
        }
        for (const KwLoadBalanceLine& line : job.Balance()) {
            EXPECT_TRUE(line.checked) << "subcase " << line.subcaseId;
            EXPECT_FALSE(line.Warn()) << KwSolverJob::BalanceText(job.Balance(), nullptr).toStdString();
        }
        lastBalance = job.Balance();
        lastDeck = job.Deck();
        return job.Succeeded() ? a->GetSolverResults() : nullptr;
    }
};

TEST_F(SolverJob, axialBarStretchesByForceTimesLengthOverAxialStiffness)
{
    auto m = bar(10, 2, CKwAnalysis::LinearStatic);
    // Held only as much as needed, so that the bar contracts freely across.
    restrain(*m, m->FindGeometry(CKwUIEntity::Face, 5), {true});
    const int nx = 10, ny = 2;
    const int origin = 1, acrossY = 1 + ny * (nx + 1);
    restrain(*m, m->FindGeometry(CKwUIEntity::Node, origin), {false, true, true});
    restrain(*m, m->FindGeometry(CKwUIEntity::Node, acrossY), {false, false, true});
    const double P = 1.0e5;
    force(*m, 6, P, {1, 0, 0});
    const KwSolverResults* r = solve(*m);
    ASSERT_NE(r, nullptr);
    const KwResultSet* set = r->LastOfStep(1);
    ASSERT_NE(set, nullptr);
    EXPECT_EQ(set->subcaseId, 1);
    const double expected = P * L / (E * H * H);
    EXPECT_NEAR(meanOnFace(*m, *set, 6, 0), expected, 0.01 * expected);
    // The reactions balance the load; the uniform axial stress is P/A everywhere.
    double reaction = 0;
    for (int id : KwGeometryNodes(*m->m_mesh, *m->FindGeometry(CKwUIEntity::Face, 5)))
        if (const double* f = set->reaction.Find(id))
            reaction += f[0];
    EXPECT_NEAR(reaction, -P, 1e-3 * P);
    const double* mid = set->stress.Find(6 + (nx + 1) * 1 + (nx + 1) * (ny + 1));
    ASSERT_NE(mid, nullptr);
    EXPECT_NEAR(mid[0], P / (H * H), 0.01 * P / (H * H));
    // Strains are read too: the stretch P/(EA) and the contraction across it.
    const double* strain = set->strain.Find(6 + (nx + 1) * 1 + (nx + 1) * (ny + 1));
    ASSERT_NE(strain, nullptr);
    const double axial = P / (E * H * H);
    EXPECT_NEAR(strain[0], axial, 0.01 * axial);
    EXPECT_NEAR(strain[1], -NU * axial, 0.01 * NU * axial);
    EXPECT_NEAR(strain[3], 0.0, 0.01 * axial);
    const double* vm = set->vonMises.Find(6);
    ASSERT_NE(vm, nullptr);
    EXPECT_NEAR(*vm, P / (H * H), 0.02 * P / (H * H));
    EXPECT_EQ(m->m_analyses.first()->GetFirstValidSubcaseInAnalysisResults()->GetID(), 1);
}

TEST_F(SolverJob, cantileverTipDeflectsAsABeamWithShear)
{
    auto m = bar(20, 2, CKwAnalysis::LinearStatic);
    restrain(*m, m->FindGeometry(CKwUIEntity::Face, 5), {true, true, true, true, true, true});
    const double P = 1000.0;
    force(*m, 6, P, {0, 0, -1});
    const KwSolverResults* r = solve(*m);
    ASSERT_NE(r, nullptr);
    const double I = H * H * H * H / 12.0, G = E / (2 * (1 + NU));
    const double expected = P * L * L * L / (3 * E * I) + P * L / (5.0 / 6.0 * G * H * H);
    EXPECT_NEAR(-meanOnFace(*m, *r->LastOfStep(1), 6, 2), expected, 0.03 * expected);
}

TEST_F(SolverJob, cantileverBendsFirstAtItsClosedFormFrequency)
{
    auto m = bar(20, 2, CKwAnalysis::Modal);
    restrain(*m, m->FindGeometry(CKwUIEntity::Face, 5), {true, true, true, true, true, true});
    const KwSolverResults* r = solve(*m);
    ASSERT_NE(r, nullptr);
    const auto modes = r->Modes();
    ASSERT_EQ(int(modes.size()), kKwDefaultModes);
    const double I = H * H * H * H / 12.0;
    const double f1 = 1.875104 * 1.875104 / (2 * std::numbers::pi)
                      * std::sqrt(E * I / (RHO * H * H * L * L * L * L));
    // The square section bends first about both axes at the same frequency.
    EXPECT_NEAR(modes[0]->value, f1, 0.03 * f1);
    EXPECT_NEAR(modes[1]->value, f1, 0.03 * f1);
    EXPECT_EQ(modes[0]->increment, 1);
    EXPECT_FALSE(modes[0]->displacement.empty());
}

// A heavy mass at the tip of a nearly massless cantilever: one spring (3 E I / L^3) and one mass.
TEST_F(SolverJob, tipMassLowersTheCantileverToItsSpringMassFrequency)
{
    auto m = bar(20, 2, CKwAnalysis::Modal);
    const double rho = 1.0, M = 1000.0;
    m->m_materials.first()->SetValue("DENS", rho);
    restrain(*m, m->FindGeometry(CKwUIEntity::Face, 5), {true, true, true, true, true, true});
    auto* mass = new CKwConMass(1, QStringLiteral("Tip"));
    mass->m_mass = M;
    mass->m_entities = {m->FindGeometry(CKwUIEntity::Face, 6)};
    m->m_conMasses.append(mass);
    const KwSolverResults* r = solve(*m);
    ASSERT_NE(r, nullptr);
    const auto modes = r->Modes();
    ASSERT_GE(modes.size(), 2u);
    const double I = H * H * H * H / 12.0, beamMass = rho * H * H * L;
    const double f = std::sqrt(3 * E * I / ((M + 0.2357 * beamMass) * L * L * L))
                     / (2 * std::numbers::pi);
    EXPECT_NEAR(modes[0]->value, f, 0.05 * f);
    EXPECT_NEAR(modes[1]->value, f, 0.05 * f);
}

// The same one-mode system shaken at its tip: at resonance the amplitude is the static
// deflection times 1 / (2 zeta), zeta = G / 2 of the structural damping.
TEST_F(SolverJob, dampedTipMassRespondsAtResonanceWithTheQualityFactor)
{
    auto m = bar(20, 2, CKwAnalysis::FrequencyResponse);
    const double M = 1000.0, P = 1000.0, G = 0.04, zeta = G / 2;
    m->m_materials.first()->SetValue("DENS", 1.0);
    restrain(*m, m->FindGeometry(CKwUIEntity::Face, 5), {true, true, true, true, true, true});
    auto* mass = new CKwConMass(1, QStringLiteral("Tip"));
    mass->m_mass = M;
    mass->m_entities = {m->FindGeometry(CKwUIEntity::Face, 6)};
    m->m_conMasses.append(mass);
    force(*m, 6, P, {0, 0, -1});
    const double I = H * H * H * H / 12.0, Gs = E / (2 * (1 + NU));
    const double f = std::sqrt(3 * E * I / (M * L * L * L)) / (2 * std::numbers::pi);
    auto* band = new CKwSolutionFrequency(1, QStringLiteral("Band"));
    band->m_analysisId = m->m_analyses.first()->GetID();
    band->m_rangeStart = 0.5 * f;
    band->m_rangeEnd = 1.5 * f;
    band->m_rangeIncrements = 10;
    m->m_solutionFrequencies.append(band);
    auto* damping = new CKwDamping(1, QStringLiteral("Damping"));
    damping->m_analysisId = band->m_analysisId;
    damping->m_structuralG = G;
    m->m_dampings.append(damping);
    const KwSolverResults* r = solve(*m);
    ASSERT_NE(r, nullptr);
    const auto tip = KwGeometryNodes(*m->m_mesh, *m->FindGeometry(CKwUIEntity::Face, 6));
    double peak = 0, peakAt = 0;
    int points = 0;
    for (const KwResultSet& set : r->sets) {
        if (set.modal || set.step != 2)
            continue;
        ++points;
        double amplitude = 0;
        for (int id : tip) {
            const double* re = set.displacement.Find(id);
            const double* im = set.displacementImaginary.Find(id);
            ASSERT_TRUE(re && im) << "node " << id;
            amplitude += std::hypot(re[2], im[2]) / double(tip.size());
        }
        if (amplitude > peak) {
            peak = amplitude;
            peakAt = set.value;
        }
    }
    ASSERT_GT(points, 5);
    const double deflection = P * L * L * L / (3 * E * I) + P * L / (5.0 / 6.0 * Gs * H * H);
    EXPECT_NEAR(peakAt, f, 0.05 * f);
    EXPECT_NEAR(peak / deflection, 1 / (2 * zeta), 0.1 / (2 * zeta));
}

// Two blocks of side B with a gap G between them: the left one held at its left face, the right
// one pulled along x and held across; the connector between the facing faces carries the pull.
TEST_F(SolverJob, connectorBetweenTwoBlocksStretchesByLoadOverItsStiffness)
{
    constexpr double B = 0.1, G = 0.1, P = 1000.0;
    const double pi = std::numbers::pi;
    struct Case
    {
        const char* what;
        int type;
        double stiffness, area, diameter;
        double expectedStretch;
    };
    const Case cases[] = {
        {"spring", CKwConnector::Spring, 1e6, 0, 0, P / 1e6},
        {"rod", CKwConnector::Rod, 0, 1e-6, 0, P * G / (E * 1e-6)},
        {"bolt", CKwConnector::Bolt, 0, 0, 2e-3, P * G / (E * pi * 1e-6)},
        {"rigid link", CKwConnector::Rigid, 0, 0, 0, 0.0},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        auto m = bar(1, 1, CKwAnalysis::LinearStatic);
        CKwMeshModel& mesh = *m->m_mesh;
        mesh.BuildBlock(1, 1, 1, B, B, B);
        for (int id = 1; id <= 8; ++id) {
            const auto* n = mesh.FindNode(id);
            mesh.AddNode(100 + id, n->x + B + G, n->y, n->z);
        }
        mesh.AddElement(2, CKwMeshModel::Hex8, {101, 102, 104, 103, 105, 106, 108, 107});
        const auto nodes = [&](std::initializer_list<int> ids) {
            QList<CKwUIEntity*> list;
            for (int id : ids) {
                list.append(new CKwUIEntity(CKwUIEntity::Node, id, QStringLiteral("Node %1").arg(id)));
                m->m_geometry.append(list.back());
            }
            return list;
        };
        // Nodes at x = 0 are 1 3 5 7, at x = B 2 4 6 8; the right block's are 100 more.
        auto* fixed = restrain(*m, nullptr, {true, true, true});
        fixed->m_entities = nodes({1, 3, 5, 7});
        auto* across = restrain(*m, nullptr, {false, true, true});
        across->m_entities = nodes({101, 102, 104, 103, 105, 106, 108, 107});
        auto* pull = new CKwLoad(1, QStringLiteral("Pull"));
        pull->m_type = CKwLoad::Force;
        pull->m_magnitude = P;
        pull->m_direction = {1, 0, 0};
        pull->m_entities = nodes({102, 104, 106, 108});
        pull->m_subcaseIds = {1};
        m->m_loads.append(pull);
        auto* link = new CKwConnector(1, QStringLiteral("Link"));
        link->m_type = c.type;
        link->m_materialId = 1;
        if (c.stiffness)
            link->m_axialStiffness = c.stiffness;
        if (c.area)
            link->m_area = c.area;
        if (c.diameter)
            link->m_diameter = c.diameter;
        link->m_end1 = nodes({2, 4, 6, 8});
        link->m_end2 = nodes({101, 103, 105, 107});
        m->m_connectors.append(link);
        const KwSolverResults* r = solve(*m);
        ASSERT_NE(r, nullptr);
        const KwResultSet* set = r->LastOfStep(1);
        ASSERT_NE(set, nullptr);
        double stretch = 0;
        for (int id : {2, 4, 6, 8}) {
            ASSERT_TRUE(set->displacement.Find(id) && set->displacement.Find(id + 99));
            stretch += (set->displacement.Find(id + 99)[0] - set->displacement.Find(id)[0]) / 4;
        }
        // The steel blocks themselves stretch by P B / (E B^2), far below every connector.
        EXPECT_NEAR(stretch, c.expectedStretch, 0.02 * c.expectedStretch + 1e-9);
        EXPECT_GT(set->displacement.Find(102)[0], 0.0);
    }
}

// Connectors and masses the solver cannot take are refused by name before anything runs.
TEST(SolverDeckParts, incompleteMassesAndConnectorsAreRefusedByName)
{
    struct Case
    {
        const char* what;
        std::function<void(CKwFEModel&)> add;
        const char* refusal;
    };
    const auto connector = [](int type, std::function<void(CKwConnector&)> set) {
        return [type, set](CKwFEModel& m) {
            auto* c = new CKwConnector(1, QStringLiteral("Link"));
            c->m_type = type;
            c->m_end1 = {m.FindGeometry(CKwUIEntity::Face, 5)};
            c->m_end2 = {m.FindGeometry(CKwUIEntity::Face, 6)};
            set(*c);
            m.m_connectors.append(c);
        };
    };
    const Case cases[] = {
        {"mass without mass",
         [](CKwFEModel& m) {
             auto* c = new CKwConMass(1, QStringLiteral("Lump"));
             c->m_entities = {m.FindGeometry(CKwUIEntity::Face, 6)};
             m.m_conMasses.append(c);
         },
         "Mass \"Lump\" has no mass."},
        {"spring without stiffness", connector(CKwConnector::Spring, [](CKwConnector&) {}),
         "Connector \"Link\" has no axial stiffness."},
        {"rod of a missing material",
         connector(CKwConnector::Rod, [](CKwConnector& c) { c.m_materialId = 9; c.m_area = 1e-4; }),
         "Connector \"Link\" has no material with an elastic modulus."},
        {"rod without area", connector(CKwConnector::Rod, [](CKwConnector& c) { c.m_materialId = 1; }),
         "Connector \"Link\" has no cross-section area."},
        {"bolt without diameter", connector(CKwConnector::Bolt, [](CKwConnector& c) { c.m_materialId = 1; }),
         "Connector \"Link\" has no shank diameter."},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        auto m = bar(2, 1, CKwAnalysis::Modal);
        c.add(*m);
        const KwSolverDeck deck = KwWriteSolverDeck(*m, *m->m_analyses.first());
        EXPECT_EQ(deck.refusal.toStdString(), c.refusal);
        EXPECT_TRUE(deck.text.empty());
    }
    // Complete, they go into the deck: a mass element per face node, a spring per node pair.
    auto m = bar(2, 1, CKwAnalysis::Modal);
    auto* mass = new CKwConMass(1, QStringLiteral("Lump"));
    mass->m_mass = 8.0;
    mass->m_entities = {m->FindGeometry(CKwUIEntity::Face, 6)};
    m->m_conMasses.append(mass);
    connector(CKwConnector::Spring, [](CKwConnector& c) { c.m_axialStiffness = 400.0; })(*m);
    const KwSolverDeck deck = KwWriteSolverDeck(*m, *m->m_analyses.first());
    ASSERT_TRUE(deck.ok()) << deck.refusal.toStdString();
    EXPECT_NE(deck.text.find("*MASS, ELSET=EMASS1\n2\n"), std::string::npos) << deck.text;
    EXPECT_NE(deck.text.find("*SPRING, ELSET=ECON7\n100.\n"), std::string::npos) << deck.text;
}

TEST_F(SolverJob, subcasesAreStepsWhoseResultsSuperpose)
{
    auto m = bar(10, 2, CKwAnalysis::LinearStatic);
    CKwAnalysis* a = m->m_analyses.first();
    a->AddSubCase(new CKwSubCase(2, QStringLiteral("Sideways")));
    a->AddSubCase(new CKwSubCase(3, QStringLiteral("Both")));
    restrain(*m, m->FindGeometry(CKwUIEntity::Face, 5), {true, true, true, true, true, true});
    force(*m, 6, 800.0, {0, 0, -1}, {1, 3});
    force(*m, 6, 500.0, {0, 1, 0}, {2, 3});
    const KwSolverResults* r = solve(*m);
    ASSERT_NE(r, nullptr);
    const KwResultSet *s1 = r->LastOfStep(1), *s2 = r->LastOfStep(2), *s3 = r->LastOfStep(3);
    ASSERT_TRUE(s1 && s2 && s3);
    EXPECT_EQ(s2->subcaseId, 2);
    EXPECT_EQ(s3->subcaseId, 3);
    double largest = 0, worst = 0;
    for (std::size_t i = 0; i < s3->displacement.nodeIds.size(); ++i) {
        const int id = s3->displacement.nodeIds[i];
        const double *u1 = s1->displacement.Find(id), *u2 = s2->displacement.Find(id);
        ASSERT_TRUE(u1 && u2);
        for (int k = 0; k < 3; ++k) {
            const double u3 = s3->displacement.values[3 * i + std::size_t(k)];
            largest = std::max(largest, std::abs(u3));
            worst = std::max(worst, std::abs(u3 - u1[k] - u2[k]));
        }
    }
    EXPECT_GT(largest, 0);
    // The result file keeps six digits.
    EXPECT_LT(worst, 2e-5 * largest);
    // Subcase 1 pushes down only: the sideways load did not carry over into it or out of 2.
    EXPECT_LT(meanOnFace(*m, *s1, 6, 2), 0);
    EXPECT_NEAR(meanOnFace(*m, *s1, 6, 1), 0, 2e-5 * largest);
    EXPECT_NEAR(meanOnFace(*m, *s2, 6, 2), 0, 2e-5 * largest);
}

TEST_F(SolverJob, runsThatCannotSucceedLeaveTheResultsAsTheyWere)
{
    struct Case
    {
        const char* what;
        int analysisType;
        bool constrained;
        bool stop;
        bool starts;
        const char* messagePart;
    };
    const Case cases[] = {
        {"no constraint: a singular model", CKwAnalysis::LinearStatic, false, false, false,
         "no constraint"},
        {"stopped", CKwAnalysis::NonlinearStatic, true, true, true, "stopped"},
        {"a kind the solver cannot do", CKwAnalysis::ResponseSpectrum, true, false, false,
         "spectrum"},
        {"explicit dynamics", CKwAnalysis::ExplicitDynamics, true, false, false, "explicit"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        auto m = bar(6, 1, c.analysisType);
        if (c.constrained)
            restrain(*m, m->FindGeometry(CKwUIEntity::Face, 5), {true, true, true});
        force(*m, 6, 1000.0, {0, 0, -1});
        CKwAnalysis* a = m->m_analyses.first();
        a->AddResultSet(1);
        auto before = std::make_shared<KwSolverResults>();
        before->sets.resize(1);
        before->sets[0].subcaseId = 1;
        a->SetSolverResults(before);
        CFMView view(m.get());
        KwSolverJob job(&view);
        ASSERT_EQ(job.Start(m.get(), a, a->GetName()), c.starts) << job.Message().toStdString();
        if (c.starts) {
            if (c.stop)
                job.Stop();
            EXPECT_TRUE(job.Wait(60000));
            EXPECT_FALSE(job.Succeeded());
        }
        EXPECT_FALSE(view.IsSolvraRunning());
        EXPECT_TRUE(job.Message().contains(QLatin1String(c.messagePart), Qt::CaseInsensitive))
            << job.Message().toStdString();
        EXPECT_EQ(a->GetSolverResults(), before.get());
        EXPECT_EQ(a->GetFirstValidSubcaseInAnalysisResults()->GetID(), 1);
    }
}

TEST_F(SolverJob, nonlinearRunDrivesTheStatusWindowFromTheSolversOwnOutput)
{
    auto* host = new KwHostWindow();
    CKwFEModel* m = host->Model();
    host->SetCurrentAnalysis(m->m_analyses.at(1)); // the sample's nonlinear static analysis
    ASSERT_TRUE(host->RunCurrentAnalysis()) << host->SolverJob()->Message().toStdString();
    // While it runs the editors refuse OK; a second run does not start.
    EXPECT_TRUE(host->View()->IsSolvraRunning());
    EXPECT_FALSE(host->RunCurrentAnalysis());
    // The XY plot window opens with the run and takes the curve point by point as the solver
    // writes its increments, not only at the end.
    ASSERT_NE(CKwXYPlotDlg::GetXYPlotDlg(), nullptr);
    std::set<std::size_t> seenWhileRunning;
    QElapsedTimer clock;
    clock.start();
    while (host->SolverJob()->IsRunning() && clock.elapsed() < 120000) {
        host->SolverJob()->Wait(20);
        if (host->SolverJob()->IsRunning() && host->SolverJob()->Curve())
            seenWhileRunning.insert(host->SolverJob()->Curve()->GetSeries(0).x.size());
    }
    EXPECT_GE(seenWhileRunning.size(), 3u) << "point counts seen during the run";
    ASSERT_TRUE(host->SolverJob()->Wait(120000));
    EXPECT_TRUE(host->SolverJob()->Succeeded()) << host->SolverJob()->Message().toStdString()
                                                << host->SolverJob()->Deck().text;
    EXPECT_GT(host->SolverJob()->ProgressLinesSent(), 2);
    const KwSolverResults* r = m->m_analyses.at(1)->GetSolverResults();
    ASSERT_NE(r, nullptr);
    // Several increments, the last one at the full load.
    ASSERT_GT(r->sets.size(), 1u);
    EXPECT_NEAR(r->sets.back().value, 1.0, 1e-9);
    // The loose test tabs are not part of the solved model.
    EXPECT_EQ(r->sets.back().displacement.Find(5001), nullptr);
    // The XY plot window shows the load factor against the watched corner's vertical
    // displacement: one point per increment, rising to the full load.
    const CKwXYPlot* curve = host->SolverJob()->Curve();
    ASSERT_NE(curve, nullptr);
    ASSERT_NE(CKwXYPlotDlg::GetXYPlotDlg(), nullptr);
    EXPECT_EQ(CKwXYPlotDlg::GetXYPlotDlg()->GetPlot(), curve);
    ASSERT_EQ(curve->GetSeriesCount(), 1);
    const auto& points = curve->GetSeries(0);
    ASSERT_EQ(points.y.size(), r->sets.size());
    EXPECT_NEAR(points.y.back(), 1.0, 1e-9);
    EXPECT_TRUE(std::is_sorted(points.y.begin(), points.y.end()));
    EXPECT_DOUBLE_EQ(points.x.back(), r->sets.back().displacement.Find(81)[2]);
    EXPECT_NE(points.x.back(), 0.0);
    delete host;
}

} // namespace

namespace {

// Every analysis of the sample model from the menu: those the solver can do end with results
// for their structural subcases; the others are refused before anything runs.
TEST_F(SolverJob, eachSampleAnalysisRunsOrIsRefusedByName)
{
    struct Case
    {
        const char* analysis;
        bool runs;
        QList<int> subcasesWithResults;
        const char* refusalPart;
    };
    const Case cases[] = {
        {"Linear Static", true, {1}, ""},
        {"Nonlinear Transient", true, {1}, ""},
        {"Modal", true, {1}, ""},
        {"Response Spectrum", false, {}, "modal combination"},
        {"Explicit Dynamics", false, {}, "explicit time integration"},
        {"Fatigue", false, {}, "fatigue life evaluation"},
        {"Optimization", false, {}, "loop over design variables"},
        {"Frequency Response", true, {1}, ""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.analysis);
        auto* host = new KwHostWindow();
        CKwAnalysis* a = nullptr;
        for (CKwAnalysis* x : host->Model()->m_analyses)
            if (x->GetName() == QLatin1String(c.analysis))
                a = x;
        ASSERT_NE(a, nullptr);
        host->SetCurrentAnalysis(a);
        const bool hadResults = a->HasResultSet();
        ASSERT_EQ(host->RunCurrentAnalysis(), c.runs) << host->SolverJob()->Message().toStdString();
        if (c.runs) {
            ASSERT_TRUE(host->SolverJob()->Wait(120000));
            ASSERT_TRUE(host->SolverJob()->Succeeded())
                << host->SolverJob()->Message().toStdString();
            for (int id : c.subcasesWithResults)
                EXPECT_TRUE(std::any_of(a->GetSolverResults()->sets.begin(),
                                        a->GetSolverResults()->sets.end(),
                                        [id](const KwResultSet& s) { return s.subcaseId == id; }));
            EXPECT_EQ(a->GetFirstValidSubcaseInAnalysisResults()->GetID(),
                      c.subcasesWithResults.first());
            // After a static run the host shows the load balance (the sample holds shells at
            // its constraint: not checked then, never a false alarm).
            const bool isStatic = a->GetAnalysisTypeCode() == CKwAnalysis::LinearStatic;
            EXPECT_EQ(!host->SolverJob()->Balance().empty(), isStatic);
            for (const KwLoadBalanceLine& line : host->SolverJob()->Balance())
                EXPECT_FALSE(line.Warn()) << KwSolverJob::BalanceText(host->SolverJob()->Balance(),
                                                                     nullptr).toStdString();
            QApplication::processEvents();
            auto* box = host->findChild<QMessageBox*>(QStringLiteral("LoadBalance"));
            EXPECT_EQ(box != nullptr, isStatic);
            if (box) {
                EXPECT_TRUE(box->text().contains(QStringLiteral("Subcase 1")));
            }
        } else {
            EXPECT_TRUE(host->SolverJob()->Message().contains(QLatin1String(c.refusalPart),
                                                              Qt::CaseInsensitive))
                << host->SolverJob()->Message().toStdString();
            EXPECT_EQ(a->HasResultSet(), hadResults);
            EXPECT_FALSE(host->View()->IsSolvraRunning());
        }
        delete host;
    }
}

} // namespace

namespace {

// Stop while the solver is in the middle of its increments: the solver ends, the status
// window is put back, and the analysis keeps the results it had.
TEST_F(SolverJob, stopInTheMiddleOfARunKeepsTheEarlierResults)
{
    auto* host = new KwHostWindow();
    CKwAnalysis* a = host->Model()->m_analyses.at(1);
    host->SetCurrentAnalysis(a);
    ASSERT_TRUE(host->RunCurrentAnalysis());
    ASSERT_TRUE(host->SolverJob()->Wait(120000));
    const KwSolverResults* first = a->GetSolverResults();
    ASSERT_NE(first, nullptr);

    // Small increments: the second run lasts long enough to be stopped halfway.
    CKwNonlinearSetup* setup = a->GetSubCases().first()->GetNonlinearSetup();
    setup->m_increments = 500;
    ASSERT_TRUE(host->RunCurrentAnalysis());
    // Wait for the solver's first iteration to reach the status window.
    ASSERT_TRUE(QTest::qWaitFor([&] {
        return host->SolverJob()->ProgressLinesSent() >= 2 || !host->SolverJob()->IsRunning();
    }, 20000));
    ASSERT_TRUE(host->SolverJob()->IsRunning()) << "the run ended before it could be stopped";
    CNLstatusDialog* status = nullptr;
    for (QWidget* w : QApplication::allWidgets())
        if (auto* d = qobject_cast<CNLstatusDialog*>(w); d && d->isVisible())
            status = d;
    ASSERT_NE(status, nullptr) << "no status window shows the run";
    host->SolverJob()->Stop();
    ASSERT_TRUE(host->SolverJob()->Wait(30000));
    EXPECT_FALSE(host->SolverJob()->Succeeded());
    EXPECT_TRUE(host->SolverJob()->Message().contains(QLatin1String("stopped")));
    EXPECT_FALSE(host->View()->IsSolvraRunning());
    EXPECT_FALSE(status->isVisible());
    EXPECT_EQ(a->GetSolverResults(), first);
    delete host;
}

} // namespace

namespace {

// The reaction sum over the fixed end of a cantilever with a tip load: the load itself, and
// its moment (P L about the fixed end's centroid, nothing about a point on its line).
TEST_F(SolverJob, reactionSumOfTheFixedEndBalancesTheTipLoad)
{
    auto m = bar(20, 2, CKwAnalysis::LinearStatic);
    CKwUIEntity* fixedEnd = m->FindGeometry(CKwUIEntity::Face, 5);
    restrain(*m, fixedEnd, {true, true, true, true, true, true});
    const double P = 1000.0;
    force(*m, 6, P, {0, 0, -1});
    ASSERT_NE(solve(*m), nullptr);
    CFMView view(m.get());
    CKwUISPCSummationForce sum;
    sum.SetAnalysis(m->m_analyses.first());
    sum.OnCreate(&view, nullptr, nullptr);
    sum.SetSummedEntities({fixedEnd});
    sum.SetValue(CKwUISPCSummationForce::FieldOrigin, CKwUISPCSummationForce::OriginCentroid);
    ASSERT_GT(sum.GetSum().nodes, 0);
    EXPECT_NEAR(sum.GetSum().force[2], P, 1e-3 * P);
    EXPECT_NEAR(sum.GetSum().force[0], 0.0, 1e-3 * P);
    EXPECT_NEAR(sum.GetSum().centroid[1], H / 2, 1e-12);
    EXPECT_NEAR(sum.GetSum().moment[1], -P * L, 1e-3 * P * L);
    EXPECT_NEAR(sum.GetSum().moment[0], 0.0, 1e-3 * P * L);
    sum.SetValue(CKwUISPCSummationForce::FieldOrigin, CKwUISPCSummationForce::OriginTyped);
    sum.SetTypedOrigin({L, H / 2, 0.0});
    for (double c : sum.GetSum().moment)
        EXPECT_NEAR(c, 0.0, 1e-3 * P * L);
    // The loaded free end and a side face hold no support: only the side's nodes on the fixed
    // end count, and the free end has nothing to sum.
    sum.SetSummedEntities({m->FindGeometry(CKwUIEntity::Face, 6)});
    EXPECT_EQ(sum.GetSum().nodes, 0);
    sum.SetSummedEntities({m->FindGeometry(CKwUIEntity::Face, 1)});
    EXPECT_EQ(sum.GetSum().nodes,
              int(m->m_mesh->FindGeometryMesh(CKwUIEntity::Edge, 4)->nodeIds.size()));
}

} // namespace

// The applied total of each kind of load, against the reactions: pressure on a face next to the
// support (part of it lands on constrained nodes), the weight, and a force partly on the
// supported face itself. A reaction left out of the sum must show as a warning.
TEST_F(SolverJob, reactionsBalanceEveryKindOfLoadAndAMissingOneWarns)
{
    constexpr double p = 1.0e5, g = 9.81, P = 2000.0;
    struct Case
    {
        const char* what;
        std::function<void(CKwFEModel&)> load;
        std::array<double, 3> applied;
    };
    const Case cases[] = {
        {"pressure on the top", [](CKwFEModel& m) {
             auto* l = force(m, 2, p, {0, 0, 1});
             l->m_type = CKwLoad::Pressure;
         }, {0, 0, -p * L * H}},
        {"pressure on the free end", [](CKwFEModel& m) {
             auto* l = force(m, 6, p, {0, 0, 1});
             l->m_type = CKwLoad::Pressure;
         }, {-p * H * H, 0, 0}},
        {"weight", [](CKwFEModel& m) {
             auto* l = force(m, 2, g, {0, 0, -1});
             l->m_type = CKwLoad::Gravity;
         }, {0, 0, -RHO * L * H * H * g}},
        {"force on both ends", [](CKwFEModel& m) {
             force(m, 6, P, {0, 0, -1});
             force(m, 5, P, {0, 1, 0});
         }, {0, P, -P}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        auto m = bar(10, 2, CKwAnalysis::LinearStatic);
        restrain(*m, m->FindGeometry(CKwUIEntity::Face, 5), {true, true, true});
        c.load(*m);
        ASSERT_NE(solve(*m), nullptr);
        ASSERT_EQ(lastBalance.size(), 1u);
        const KwLoadBalanceLine& line = lastBalance.front();
        for (int a = 0; a < 3; ++a) {
            const double size = std::max({std::abs(c.applied[0]), std::abs(c.applied[1]),
                                          std::abs(c.applied[2])});
            EXPECT_NEAR(line.applied[a], c.applied[std::size_t(a)], 1e-9 * size) << "axis " << a;
            EXPECT_NEAR(line.reaction[a], -c.applied[std::size_t(a)], 1e-3 * size) << "axis " << a;
        }
        // Without the reactions of one supported node the balance is off.
        KwSolverDeck deck = lastDeck;
        for (auto& along : deck.balances.front().constrained)
            along.erase(along.begin());
        const auto lines = KwCheckLoadBalance(deck, *m->m_analyses.first()->GetSolverResults());
        ASSERT_EQ(lines.size(), 1u);
        EXPECT_TRUE(lines.front().Warn()) << lines.front().difference;
        EXPECT_TRUE(KwSolverJob::BalanceText(lines, nullptr).contains(QStringLiteral("Warning")));
    }
}

// A plate under tension with a small round hole: the stress at the hole's edge across the pull
// is three times the far stress (plane strain; a quarter of the plate, held on its planes of
// symmetry). Hexahedra in rings around the hole, finer towards it.
TEST_F(SolverJob, plateWithASmallHoleConcentratesStressThreefold)
{
    constexpr double a = 0.01, B = 10 * a, T = 0.002, S = 1.0e6;
    constexpr int nTheta = 24, nR = 16;
    auto m = bar(1, 1, CKwAnalysis::LinearStatic);
    delete m->m_mesh;
    m->m_mesh = new CKwMeshModel(1, QStringLiteral("Plate"));
    m->m_analyses.first()->SetMesh(m->m_mesh);
    CKwMeshModel& mesh = *m->m_mesh;
    const auto id = [&](int k, int i, int j) { return 1 + (k * (nR + 1) + i) * (nTheta + 1) + j; };
    const double q = 1.18; // each ring this much deeper than the one inside it
    for (int k = 0; k < 2; ++k)
        for (int i = 0; i <= nR; ++i)
            for (int j = 0; j <= nTheta; ++j) {
                const double th = std::numbers::pi / 2 * j / nTheta;
                const double ox = th <= std::numbers::pi / 4 ? B : B / std::tan(th);
                const double oy = th <= std::numbers::pi / 4 ? B * std::tan(th) : B;
                const double hx = a * std::cos(th), hy = a * std::sin(th);
                const double s = (std::pow(q, i) - 1) / (std::pow(q, nR) - 1);
                mesh.AddNode(id(k, i, j), hx + s * (ox - hx), hy + s * (oy - hy), k * T);
            }
    int e = 0;
    for (int i = 0; i < nR; ++i)
        for (int j = 0; j < nTheta; ++j)
            mesh.AddElement(++e, CKwMeshModel::Hex8,
                            {id(0, i, j), id(0, i + 1, j), id(0, i + 1, j + 1), id(0, i, j + 1),
                             id(1, i, j), id(1, i + 1, j), id(1, i + 1, j + 1), id(1, i, j + 1)});
    const auto nodesWhere = [&](const std::function<bool(const CKwMeshModel::Node&)>& take) {
        QList<CKwUIEntity*> list;
        for (const auto& n : mesh.Nodes())
            if (take(n)) {
                list.append(new CKwUIEntity(CKwUIEntity::Node, n.id, QString()));
                m->m_geometry.append(list.back());
            }
        return list;
    };
    const double tol = 1e-9;
    restrain(*m, nullptr, {true, false, false})->m_entities =
        nodesWhere([&](const auto& n) { return std::abs(n.x) < tol; });
    restrain(*m, nullptr, {false, true, false})->m_entities =
        nodesWhere([&](const auto& n) { return std::abs(n.y) < tol; });
    restrain(*m, nullptr, {false, false, true})->m_entities =
        nodesWhere([](const auto&) { return true; });
    auto* pull = force(*m, 6, S * B * T, {1, 0, 0});
    pull->m_entities = nodesWhere([&](const auto& n) { return std::abs(n.x - B) < tol; });
    const KwSolverResults* r = solve(*m);
    ASSERT_NE(r, nullptr);
    const KwResultSet* set = r->LastOfStep(1);
    ASSERT_NE(set, nullptr);
    // The top of the hole (x = 0, y = a) and, for reference, the far end of the plate.
    const double* top = set->stress.Find(id(0, 0, nTheta));
    const double* far = set->stress.Find(id(0, nR, 0));
    ASSERT_TRUE(top && far);
    EXPECT_NEAR(far[0], S, 0.1 * S);
    EXPECT_NEAR(top[0] / S, 3.0, 0.3);
    // Along the pull the edge of the hole carries compression of about the far stress.
    const double* side = set->stress.Find(id(0, 0, 0));
    ASSERT_NE(side, nullptr);
    EXPECT_NEAR(side[1] / S, -1.0, 0.2);
}

// Two blocks of side B touching along x, each with its own nodes: a bonded contact ties them
// into one bar of length 2 B, which a pull stretches by P 2 B / (E B^2). A separating contact
// is not written and says so.
TEST_F(SolverJob, bondedContactTiesTwoBlocksIntoOneBar)
{
    constexpr double B = 0.1, P = 1.0e4;
    auto m = bar(1, 1, CKwAnalysis::LinearStatic);
    CKwMeshModel& mesh = *m->m_mesh;
    mesh.BuildBlock(1, 1, 1, B, B, B);
    for (int id = 1; id <= 8; ++id) {
        const auto* n = mesh.FindNode(id);
        mesh.AddNode(100 + id, n->x + B, n->y, n->z);
    }
    mesh.AddElement(2, CKwMeshModel::Hex8, {101, 102, 104, 103, 105, 106, 108, 107});
    const auto nodes = [&](std::initializer_list<int> ids) {
        QList<CKwUIEntity*> list;
        for (int id : ids) {
            list.append(new CKwUIEntity(CKwUIEntity::Node, id, QString()));
            m->m_geometry.append(list.back());
        }
        return list;
    };
    // Held as much as needed at x = 0 (nodes 1 3 5 7): the bar contracts freely across.
    restrain(*m, nullptr, {true, false, false})->m_entities = nodes({1, 3, 5, 7});
    restrain(*m, nullptr, {false, true, true})->m_entities = nodes({1});
    restrain(*m, nullptr, {false, false, true})->m_entities = nodes({3});
    auto* pull = force(*m, 6, P, {1, 0, 0});
    pull->m_entities = nodes({102, 104, 106, 108});
    auto* contact = new CKwSurfaceContact(1, QStringLiteral("Glue"));
    contact->m_kind = CKwSurfaceContact::Bonded;
    contact->m_master = nodes({2, 4, 6, 8});
    contact->m_slave = nodes({101, 103, 105, 107});
    m->m_surfaceContacts.append(contact);
    const KwSolverResults* r = solve(*m);
    ASSERT_NE(r, nullptr);
    EXPECT_NE(lastDeck.text.find("*TIE"), std::string::npos);
    const KwResultSet* set = r->LastOfStep(1);
    ASSERT_NE(set, nullptr);
    const double expected = P * 2 * B / (E * B * B);
    for (int id : {102, 104, 106, 108}) {
        const double* u = set->displacement.Find(id);
        ASSERT_NE(u, nullptr);
        EXPECT_NEAR(u[0], expected, 0.01 * expected) << "node " << id;
    }

    contact->m_kind = CKwSurfaceContact::Separating;
    const KwSolverDeck separate = KwWriteSolverDeck(*m, *m->m_analyses.first());
    EXPECT_EQ(separate.text.find("*TIE"), std::string::npos);
    EXPECT_TRUE(separate.notes.join(QLatin1Char(' ')).contains(QStringLiteral("Contact \"Glue\" left out")));
}
