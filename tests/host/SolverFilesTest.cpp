// The files between the model and the solver: the input deck written from the model, the
// console output read as progress, the result file read into result sets.
#include "CKwAnalysis.h"
#include "CKwFEModel.h"
#include "CKwLoad.h"
#include "CKwMaterial.h"
#include "CKwMeshModel.h"
#include "CKwRestraint.h"
#include "CKwSubCase.h"
#include "CKwUIEntity.h"
#include "KwSolverDeck.h"
#include "KwSolverProgress.h"
#include "KwSolverResults.h"

#include <QRegularExpression>
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <gtest/gtest.h>

namespace {

TEST(SolverStress, equivalentAndPrincipalStressesOfKnownStates)
{
    struct Case
    {
        const char* state;
        double s[6];
        double vonMises;
        double principal[3];
    };
    const Case cases[] = {
        {"uniaxial", {100, 0, 0, 0, 0, 0}, 100, {100, 0, 0}},
        {"uniaxial compression", {0, 0, -50, 0, 0, 0}, 50, {0, 0, -50}},
        {"pure shear", {0, 0, 0, 40, 0, 0}, 40 * std::sqrt(3.0), {40, 0, -40}},
        {"shear in yz", {0, 0, 0, 0, 30, 0}, 30 * std::sqrt(3.0), {30, 0, -30}},
        {"hydrostatic", {-7, -7, -7, 0, 0, 0}, 0, {-7, -7, -7}},
        {"plane with shear", {80, 20, 0, 40, 0, 0}, std::sqrt(80 * 80 + 20 * 20 - 80 * 20 + 3 * 1600.0),
         {50 + std::sqrt(900 + 1600.0), 0, 50 - std::sqrt(900 + 1600.0)}},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.state);
        EXPECT_NEAR(KwVonMises(c.s), c.vonMises, 1e-9 * (1 + c.vonMises));
        double p[3];
        KwPrincipalStresses(c.s, p);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(p[i], c.principal[i], 1e-9 * 100);
    }
    // A general tensor: the principal values keep its invariants and come in order.
    const double s[6] = {12, -3, 5, 4, -2, 7};
    double p[3];
    KwPrincipalStresses(s, p);
    EXPECT_GE(p[0], p[1]);
    EXPECT_GE(p[1], p[2]);
    EXPECT_NEAR(p[0] + p[1] + p[2], 12 - 3 + 5, 1e-9);
    const double det = 12 * (-3 * 5 - 4) - 4 * (4 * 5 - (-2) * 7) + 7 * (4 * -2 - (-3) * 7);
    EXPECT_NEAR(p[0] * p[1] * p[2], det, 1e-7);
    // Squaring a stress of 1e200 overflows; its equivalent stress must not.
    const double huge[6] = {1e200, 0, 0, 0, 0, 0};
    EXPECT_DOUBLE_EQ(KwVonMises(huge), 1e200);
    const double shear[6] = {0, 0, 0, 1e300, 0, 0};
    EXPECT_NEAR(KwVonMises(shear) / 1e300, std::sqrt(3.0), 1e-12);
}

// A result file as the solver writes it: a static step (displacements, stresses, nodal
// forces), then two modes of a frequency step.
std::string resultFile()
{
    const auto block = [](const char* head, const char* name, std::initializer_list<const char*> comps,
                          std::initializer_list<const char*> rows) {
        std::string s = std::string(head) + "\n -4  " + name + "\n";
        for (const char* c : comps)
            s += std::string(" -5  ") + c + "          1    2    1    0\n";
        for (const char* r : rows)
            s += std::string(r) + "\n";
        return s + " -3\n";
    };
    std::string f = "    1C\n    1UPGM               solver\n"
                    "    2C                             2                                     1\n"
                    " -1         1 0.00000E+00 0.00000E+00 0.00000E+00\n"
                    " -1         2 1.00000E+00 0.00000E+00 0.00000E+00\n -3\n";
    f += "    1PSTEP                         1           1           1\n";
    const char* staticHead = "  100CL  101 1.000000000           2                     0    1           1";
    f += block(staticHead, "DISP        4    1", {"D1", "D2", "D3", "ALL"},
               {" -1         1 0.00000E+00 0.00000E+00 0.00000E+00",
                " -1         2 1.50000E-03-2.50000E-04 0.00000E+00"});
    f += block(staticHead, "STRESS      6    1", {"SXX", "SYY", "SZZ", "SXY", "SYZ", "SZX"},
               {" -1         1 1.00000E+08 0.00000E+00 0.00000E+00 0.00000E+00 0.00000E+00 0.00000E+00",
                " -1         2 0.00000E+00 0.00000E+00 0.00000E+00 5.00000E+07 0.00000E+00 0.00000E+00"});
    f += block(staticHead, "FORC        4    1", {"F1", "F2", "F3", "ALL"},
               {" -1         1-1.00000E+03 0.00000E+00 0.00000E+00",
                " -1         2 1.00000E+03 0.00000E+00 0.00000E+00"});
    for (int mode = 1; mode <= 2; ++mode) {
        f += "    1PSTEP                         " + std::to_string(1 + mode) + "           1           2\n";
        f += "    1PMODE                         " + std::to_string(mode) + "\n";
        const std::string head = "  100CL  10" + std::to_string(1 + mode) + (mode == 1 ? " 83.19968193" : " 240.5000000")
                                 + "           2                     2    " + std::to_string(1 + mode) + "MODAL      1";
        f += block(head.c_str(), "DISP        4    1", {"D1", "D2", "D3", "ALL"},
                   {" -1         1 0.00000E+00 0.00000E+00 0.00000E+00",
                    " -1         2 0.00000E+00 0.00000E+00 1.00000E+00"});
    }
    return f + " 9999\n";
}

TEST(SolverResultFile, setsPerStepAndModeWithTheirFields)
{
    KwSolverResults r;
    QString error;
    ASSERT_TRUE(KwReadSolverResults(resultFile(), {7, 8}, r, error)) << error.toStdString();
    ASSERT_EQ(r.sets.size(), 3u);
    const KwResultSet& s = r.sets[0];
    EXPECT_EQ(s.step, 1);
    EXPECT_EQ(s.subcaseId, 7);
    EXPECT_FALSE(s.modal);
    ASSERT_NE(s.displacement.Find(2), nullptr);
    EXPECT_DOUBLE_EQ(s.displacement.Find(2)[0], 1.5e-3);
    EXPECT_DOUBLE_EQ(s.displacement.Find(2)[1], -2.5e-4);
    EXPECT_DOUBLE_EQ(s.reaction.Find(1)[0], -1000);
    EXPECT_DOUBLE_EQ(*s.vonMises.Find(1), 1e8);
    EXPECT_NEAR(*s.vonMises.Find(2), 5e7 * std::sqrt(3.0), 1);
    EXPECT_DOUBLE_EQ(s.principal.Find(2)[2], -5e7);
    EXPECT_EQ(s.displacement.Find(3), nullptr);
    const auto modes = r.Modes();
    ASSERT_EQ(modes.size(), 2u);
    EXPECT_EQ(modes[0]->increment, 1);
    EXPECT_EQ(modes[1]->increment, 2);
    EXPECT_EQ(modes[1]->subcaseId, 8);
    EXPECT_NEAR(modes[0]->value, 83.19968193, 1e-9);
    EXPECT_NEAR(modes[1]->value, 240.5, 1e-9);
    EXPECT_EQ(r.LastOfStep(2), modes[1]);
}

TEST(SolverResultFile, damagedFilesGiveAnErrorAndNoSets)
{
    const std::string good = resultFile();
    const auto replace = [&](const std::string& from, const std::string& to) {
        std::string s = good;
        const std::size_t at = s.find(from);
        EXPECT_NE(at, std::string::npos) << from;
        return at == std::string::npos ? s : s.replace(at, from.size(), to);
    };
    struct Case
    {
        const char* what;
        std::string text;
    };
    const Case cases[] = {
        {"ends before its end mark", good.substr(0, good.size() - 7)},
        {"cut inside a block", good.substr(0, good.size() / 2)},
        {"a letter in a number", replace("1.50000E-03", "1.5x000E-03")},
        {"a node without all its values", replace(" 1.50000E-03-2.50000E-04 0.00000E+00", " 1.50000E-03")},
        {"a value too many", replace(" 1.50000E-03-2.50000E-04 0.00000E+00",
                                     " 1.50000E-03-2.50000E-04 0.00000E+00 1.00000E+00")},
        {"a line that is no result line", replace(" -1         2 1.50000E-03", " 77         2 1.50000E-03")},
        {"a binary block", replace("0    1           1\n -4  DISP", "0    1           2\n -4  DISP")},
        {"an overflowing number", replace("1.50000E-03", "1.50000E+99999")},
        {"a step header without its step", replace("    1PSTEP                         1           1           1",
                                                   "    1PSTEP")},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        KwSolverResults r;
        r.sets.resize(2);
        QString error;
        EXPECT_FALSE(KwReadSolverResults(c.text, {1, 2}, r, error));
        EXPECT_TRUE(r.sets.empty());
        EXPECT_FALSE(error.isEmpty());
    }
}

TEST(SolverProgress, consoleOutputBecomesStatusLines)
{
    // Output of a two-step run, the second step nonlinear with a cut-back increment.
    const char* output[] = {
        " STEP            1",          // 0
        " Static analysis was selected",
        " STEP            2",          // 2
        " increment 1 attempt 1 ",
        " increment size= 2.500000e-01",
        " actual step time=2.500000e-01",
        " iteration 1",                // 6
        " largest residual force= 11.022082 in node 4 and dof 3",
        " largest increment of disp= 4.0e-05",
        " largest correction to disp= 1.0e-05 in node 20 and dof 3",
        " no convergence",
        " iteration 2",                // 11
        " convergence",                // 12
        " increment 2 attempt 2 ",
        " actual step time=5.000000e-01",
        " iteration 1",                // 15
        " convergence",
        " Job finished",               // 17
    };
    struct Expect
    {
        int line;
        const char* status;
    };
    const Expect expected[] = {
        {0, "11,1,0,0,0,0,0.00E+00,F"},
        {2, "12,1,0,0,0,0,0.00E+00,F"},
        {6, "12,1,1,25,0,13,0.00E+00,F"},
        {11, "12,1,2,25,75,25,1.10E+01,F"},
        {12, "12,1,2,25,100,25,1.10E+01,F"},
        {15, "12,2,1,50,100,13,1.10E+01,S"},
        {16, "12,2,1,50,100,13,1.10E+01,S"},
        {17, "12,2,1,100,100,100,1.10E+01,S"},
    };
    KwSolverProgress p({11, 12}, 1.0, 8);
    std::size_t next = 0;
    for (int i = 0; i < int(std::size(output)); ++i) {
        const bool moved = p.AddLine(output[i]);
        const bool wanted = next < std::size(expected) && expected[next].line == i;
        EXPECT_EQ(moved, wanted) << "line " << i;
        if (moved && wanted) {
            EXPECT_EQ(p.CurrentLine().toStdString(), expected[next].status) << "line " << i;
        }
        next += wanted ? 1 : 0;
    }
    EXPECT_TRUE(p.Finished());
    EXPECT_TRUE(p.Errors().isEmpty());
}

TEST(SolverProgress, errorsAreKeptInTheSolversWords)
{
    KwSolverProgress p;
    for (const char* line : {" *ERROR in e_c3d: nonpositive jacobian", "        determinant in element 12",
                             "", " iteration 1", " *ERROR reading *BOUNDARY. Card image:"})
        p.AddLine(line);
    ASSERT_EQ(p.Errors().size(), 3);
    EXPECT_EQ(p.Errors()[0], QLatin1String("*ERROR in e_c3d: nonpositive jacobian"));
    EXPECT_EQ(p.Errors()[1], QLatin1String("determinant in element 12"));
    EXPECT_EQ(p.Iteration(), 1);
}

// --- the deck ---

int count(const std::string& text, const char* what)
{
    int n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1))
        ++n;
    return n;
}

TEST(SolverDeck, sampleFacesAndVerticesFindTheirMeshNodes)
{
    std::unique_ptr<CKwFEModel> m(CKwFEModel::CreateSampleModel());
    const CKwMeshModel& mesh = *m->m_mesh;
    // The sample's solid is a 9 x 3 x 3 grid of nodes over 0.2 x 0.05 x 0.04.
    struct Case
    {
        int kind, id;
        std::size_t nodes;
        int axis;
        double at;
    };
    const Case cases[] = {
        {CKwUIEntity::Face, 1, 27, 2, 0.0},  {CKwUIEntity::Face, 2, 27, 2, 0.04},
        {CKwUIEntity::Face, 3, 27, 1, 0.0},  {CKwUIEntity::Face, 4, 27, 1, 0.05},
        {CKwUIEntity::Face, 5, 9, 0, 0.0},   {CKwUIEntity::Face, 6, 9, 0, 0.2},
        {CKwUIEntity::Vertex, 7, 1, 0, 0.2}, {CKwUIEntity::Vertex, 1, 1, 2, 0.0},
        {CKwUIEntity::Edge, 1, 9, 1, 0.0},   {CKwUIEntity::Edge, 11, 3, 0, 0.2},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.kind * 100 + c.id);
        const auto ids = KwGeometryNodes(mesh, *m->FindGeometry(c.kind, c.id));
        ASSERT_EQ(ids.size(), c.nodes);
        for (int id : ids) {
            const auto* n = mesh.FindNode(id);
            const double p[3] = {n->x, n->y, n->z};
            EXPECT_NEAR(p[c.axis], c.at, 1e-12);
        }
    }
    // The skin of the top is the 8 x 2 cells' triangles; edge 1 runs along the 8 cells; the
    // cover's shells lie on the top and the stiffener's beams on the top back edge.
    EXPECT_EQ(mesh.FindGeometryMesh(CKwUIEntity::Face, 2)->facets.size(), 8u * 2 * 2 * 3);
    EXPECT_EQ(mesh.FindGeometryMesh(CKwUIEntity::Edge, 1)->facets.size(), 8u * 2);
    EXPECT_EQ(mesh.FindGeometryMesh(CKwUIEntity::Face, 2)->elementIds.size(),
              mesh.CountOfType(CKwMeshModel::Quad4) - 5 + mesh.CountOfType(CKwMeshModel::Tri3) - 1);
    EXPECT_EQ(mesh.FindGeometryMesh(CKwUIEntity::Edge, 7)->elementIds.size(), 8u);
    // The test tabs above the part belong to no face; the body holds every node of the solid.
    EXPECT_EQ(KwGeometryNodes(mesh, *m->FindGeometry(CKwUIEntity::Body, 1)).size(), 81u);
    EXPECT_EQ(KwGeometryNodes(mesh, *m->FindGeometry(CKwUIEntity::Node, 5001)),
              std::vector<int>{5001});
}

TEST(SolverDeck, sampleLinearStaticGoesOutInModelUnitsWithoutWhatCannotBeSolved)
{
    std::unique_ptr<CKwFEModel> m(CKwFEModel::CreateSampleModel());
    const KwSolverDeck deck = KwWriteSolverDeck(*m, *m->m_analyses.first());
    ASSERT_TRUE(deck.ok()) << deck.refusal.toStdString();
    const std::string& t = deck.text;
    // SI as stored: the steel's modulus in pascals, the shell's thickness in metres.
    EXPECT_NE(t.find("*ELASTIC\n200000000000, 0.29"), std::string::npos);
    EXPECT_NE(t.find("*SHELL SECTION, ELSET=ESHELL, MATERIAL=M2\n0.003\n"), std::string::npos);
    EXPECT_NE(t.find("SECTION=BOX\n0.02, 0.02, 0.002, 0.002, 0.002, 0.002\n"), std::string::npos);
    // The loose tabs and the thermal subcase stay out; one step for the one structural subcase.
    EXPECT_EQ(t.find("\n5001,"), std::string::npos);
    EXPECT_EQ(count(t, "*STEP"), 1);
    EXPECT_EQ(deck.stepSubcases, std::vector<int>{1});
    EXPECT_TRUE(deck.notes.join(QLatin1Char('\n')).contains(QLatin1String("Subcase 2")));
    // The tip force of 1500 N, spread over the end face, adds up to 1500 N downwards.
    double fz = 0;
    const QRegularExpression cload(QStringLiteral("^(\\d+), 3, (\\S+)$"),
                                   QRegularExpression::MultilineOption);
    const std::string cloads = t.substr(t.find("*CLOAD"), t.find("*DLOAD") - t.find("*CLOAD"));
    for (auto it = cload.globalMatch(QString::fromStdString(cloads)); it.hasNext();)
        fz += it.next().captured(2).toDouble();
    EXPECT_NEAR(fz, -1500.0, 1e-6);
}

TEST(SolverDeck, refusalsNameWhatIsMissing)
{
    struct Case
    {
        const char* what;
        std::function<void(CKwFEModel&)> change;
        int analysis;
        const char* part;
    };
    const Case cases[] = {
        {"no modulus", [](CKwFEModel& m) { m.m_materials[0]->SetValue("EX", -1.0e30); }, 0,
         "elastic modulus"},
        {"no density for a transient run",
         [](CKwFEModel& m) {
             for (CKwMaterial* mat : m.m_materials)
                 mat->SetValue("DENS", -1.0e30);
         },
         2, "mass density"},
        {"no constraint", [](CKwFEModel& m) { m.m_restraints[0]->m_subcaseIds = {7}; }, 0,
         "no constraint"},
        {"no structural load",
         [](CKwFEModel& m) {
             for (CKwLoad* l : m.m_loads)
                 l->m_subcaseIds = {9};
             m.m_restraints[0]->m_subcaseIds = {9};
         },
         0, "structural load"},
        {"response spectrum", [](CKwFEModel&) {}, 3, "spectrum"},
        {"fatigue", [](CKwFEModel&) {}, 5, "fatigue"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        std::unique_ptr<CKwFEModel> m(CKwFEModel::CreateSampleModel());
        c.change(*m);
        const KwSolverDeck deck = KwWriteSolverDeck(*m, *m->m_analyses[c.analysis]);
        EXPECT_FALSE(deck.ok());
        EXPECT_TRUE(deck.refusal.contains(QLatin1String(c.part), Qt::CaseInsensitive))
            << deck.refusal.toStdString();
        EXPECT_TRUE(deck.text.empty());
    }
}

TEST(SolverDeck, laterSubcasesReplaceTheLoadsAndConstraintsOfEarlierOnes)
{
    std::unique_ptr<CKwFEModel> m(CKwFEModel::CreateSampleModel());
    CKwAnalysis* a = m->m_analyses.first();
    a->GetSubCases().at(1)->m_thermal = false; // a structural second subcase
    m->m_restraints[0]->m_subcaseIds = {1, 2};
    m->m_loads[0]->m_subcaseIds = {2};
    const KwSolverDeck deck = KwWriteSolverDeck(*m, *a);
    ASSERT_TRUE(deck.ok()) << deck.refusal.toStdString();
    EXPECT_EQ(deck.stepSubcases, (std::vector<int>{1, 2}));
    const std::string second = deck.text.substr(deck.text.rfind("*STEP"));
    EXPECT_NE(second.find("*BOUNDARY, OP=NEW"), std::string::npos);
    EXPECT_NE(second.find("*CLOAD, OP=NEW"), std::string::npos);
    EXPECT_NE(second.find("*DLOAD, OP=NEW"), std::string::npos);
    // Only the tip force acts in subcase 2: no pressure, no gravity.
    EXPECT_EQ(second.find(", P"), std::string::npos);
    EXPECT_EQ(second.find("GRAV"), std::string::npos);
}

} // namespace
