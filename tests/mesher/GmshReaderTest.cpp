// The mesh-file reader: good files become our elements in our node order with their
// classification; bad files are refused with the line where reading stopped and leave nothing.
#include "CKwMeshModel.h"
#include "CKwUIEntity.h"
#include "KwGmshMesh.h"
#include "KwMeshTopology.h"
#include "MesherTestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace {

// One tetrahedron in volume 1, whose four faces are surface 1 (two triangles written, the
// others left out), its corners points 1..4.
const std::string kHead = "$MeshFormat\n4.1 0 8\n$EndMeshFormat\n";
const std::string kEntities =
    "$Entities\n0 0 1 1\n"
    "1 0 0 0 1 1 1 0 0\n"
    "1 0 0 0 1 1 1 1 7 1 1\n"
    "$EndEntities\n";
const std::string kNodes = "$Nodes\n1 4 1 4\n3 1 0 4\n1\n2\n3\n4\n0 0 0\n1 0 0\n0 1 0\n0 0 1\n$EndNodes\n";
const std::string kTet = "$Elements\n2 3 1 3\n3 1 4 1\n1 1 2 3 4\n2 1 2 2\n2 1 3 2\n3 1 2 4\n$EndElements\n";

struct GoodCase
{
    const char* name;
    std::string text;
    std::size_t elements;
    int type;
};

TEST(GmshReader, GoodFilesBecomeOurElements)
{
    const GoodCase cases[] = {
        {"tetrahedron with boundary triangles", kHead + kEntities + kNodes + kTet, 1, CKwMeshModel::Tet4},
        {"no entities: a free triangle is a shell",
         kHead + "$Nodes\n1 3 1 3\n2 5 0 3\n1\n2\n3\n0 0 0\n1 0 0\n0 1 0\n$EndNodes\n"
                 "$Elements\n1 1 1 1\n2 5 2 1\n9 1 2 3\n$EndElements\n",
         1, CKwMeshModel::Tri3},
        {"a free line is a beam; unknown sections are skipped",
         kHead + "$Comments\nanything $Nodes\n$EndComments\n"
                 "$Nodes\n1 2 1 2\n1 3 0 2\n1\n2\n0 0 0\n2 0 0\n$EndNodes\n"
                 "$Elements\n1 1 1 1\n1 3 1 1\n4 1 2\n$EndElements\n",
         1, CKwMeshModel::Beam2},
        {"parametric coordinates are read past",
         kHead + "$Nodes\n1 2 1 2\n1 3 1 2\n1\n2\n0 0 0 0.5\n2 0 0 0.7\n$EndNodes\n"
                 "$Elements\n1 1 1 1\n1 3 1 1\n4 1 2\n$EndElements\n",
         1, CKwMeshModel::Beam2},
        {"a nine-node quadrilateral loses its centre",
         kHead + "$Nodes\n1 9 1 9\n2 1 0 9\n1\n2\n3\n4\n5\n6\n7\n8\n9\n"
                 "0 0 0\n2 0 0\n2 2 0\n0 2 0\n1 0 0\n2 1 0\n1 2 0\n0 1 0\n1 1 0\n$EndNodes\n"
                 "$Elements\n1 1 1 1\n2 1 10 1\n1 1 2 3 4 5 6 7 8 9\n$EndElements\n",
         1, CKwMeshModel::Quad8},
    };
    for (const GoodCase& c : cases) {
        SCOPED_TRACE(c.name);
        const KwGmshMesh r = KwReadGmshMesh(c.text);
        ASSERT_TRUE(r.ok()) << r.error.toStdString();
        ASSERT_EQ(r.mesh.ElementCount(), c.elements);
        EXPECT_EQ(r.mesh.ElementType(0), c.type);
    }
}

TEST(GmshReader, TetrahedronClassification)
{
    const KwGmshMesh r = KwReadGmshMesh(kHead + kEntities + kNodes + kTet);
    ASSERT_TRUE(r.ok()) << r.error.toStdString();
    // Only the tetrahedron carries load; the triangles describe surface 1.
    ASSERT_EQ(r.mesh.ElementCount(), 1u);
    const auto* face = r.mesh.FindGeometryMesh(CKwUIEntity::Face, 1);
    ASSERT_NE(face, nullptr);
    EXPECT_TRUE(face->elementIds.empty());
    EXPECT_EQ(face->nodeIds, (std::vector<int>{1, 2, 3, 4}));
    EXPECT_EQ(face->body, 7);
    // The triangles were written inward (1 2 3 looks into the tetrahedron): they come out as the
    // skin runs, outward.
    ASSERT_EQ(face->facets.size(), 6u);
    const std::vector<int> first(face->facets.begin(), face->facets.begin() + 3);
    EXPECT_TRUE(first == std::vector<int>({1, 3, 2}) || first == std::vector<int>({3, 2, 1})
                || first == std::vector<int>({2, 1, 3}));
    const auto* body = r.mesh.FindGeometryMesh(CKwUIEntity::Body, 7);
    ASSERT_NE(body, nullptr);
    EXPECT_EQ(body->elementIds, std::vector<int>{1});
    // Body 7 is the volume's physical group; without a name it reads "Body 7".
    ASSERT_FALSE(r.entities.empty());
    EXPECT_EQ(r.entities.front().Label(), QStringLiteral("Body 7"));
    bool faceLabel = false;
    for (const KwGmshEntity& e : r.entities)
        faceLabel = faceLabel || e.Label() == QStringLiteral("Face 1 (Body 7)");
    EXPECT_TRUE(faceLabel);
}

struct BadCase
{
    const char* name;
    std::string text;
    int line;
    const char* says;
};

TEST(GmshReader, BadFilesAreRefusedWithTheirLine)
{
    const std::string nodes4 = kHead + kEntities + kNodes;
    const BadCase cases[] = {
        {"empty", "", 1, "empty"},
        {"not a mesh file", "hello world\n", 1, "$MeshFormat"},
        {"old format", "$MeshFormat\n2.2 0 8\n$EndMeshFormat\n", 2, "2.2"},
        {"binary", "$MeshFormat\n4.1 1 8\n$EndMeshFormat\n", 2, "binary"},
        {"no elements", kHead + kEntities + kNodes, 21, "$Elements"},
        {"truncated inside the nodes", kHead + "$Nodes\n1 4 1 4\n3 1 0 4\n1\n2\n3\n4\n0 0 0\n1 0", 5,
         "rest of the file"},
        {"truncated inside a coordinate", kHead + "$Nodes\n1 1 1 1\n3 1 0 1\n1\n0 0            ", 8, "ends"},
        {"a node count the file cannot hold", kHead + "$Nodes\n1 999999999999 1 4\n", 5, "rest of the file"},
        {"a negative count", kHead + "$Nodes\n-1 4 1 4\n", 5, "out of range"},
        {"blocks hold more nodes than announced",
         kHead + "$Nodes\n1 1 1 2\n3 1 0 2\n1\n2\n0 0 0\n1 1 1\n$EndNodes\n", 6, "more nodes"},
        {"text for a coordinate", kHead + "$Nodes\n1 1 1 1\n3 1 0 1\n1\n0 zero 0\n$EndNodes\n", 8,
         "coordinate"},
        {"not a number coordinate", kHead + "$Nodes\n1 1 1 1\n3 1 0 1\n1\n0 nan 0\n$EndNodes\n", 8,
         "coordinate"},
        {"a node twice", kHead + "$Nodes\n1 2 1 2\n3 1 0 2\n1\n1\n0 0 0\n1 1 1\n$EndNodes\n", 10, "twice"},
        {"a node tag beyond int", kHead + "$Nodes\n1 1 1 1\n3 1 0 1\n99999999999\n0 0 0\n$EndNodes\n",
         7, "out of range"},
        {"an unknown element type", nodes4 + "$Elements\n1 1 1 1\n3 1 99 1\n1 1 2 3 4\n$EndElements\n",
         23, "type 99"},
        {"an element on a missing node",
         nodes4 + "$Elements\n1 1 1 1\n3 1 4 1\n1 1 2 3 5\n$EndElements\n", 24, "node 5"},
        {"an element short of nodes",
         nodes4 + "$Elements\n1 1 1 1\n3 1 4 1\n1 1 2 3\n$EndElements\n", 25, "node tag"},
        {"elements before nodes", kHead + "$Elements\n0 0 0 0\n$EndElements\n", 4, "before"},
        {"a section left open", kHead + "$Comments\nno end\n", 6, "inside"},
        {"a missing end marker", kHead + "$Nodes\n0 0 0 0\n$EndNode\n", 6, "$EndNodes"},
        {"an unterminated physical name", kHead + "$PhysicalNames\n1\n3 1 \"Bracket\n$EndPhysicalNames\n",
         6, "double quotes"},
        {"an entity listed twice", kHead + "$Entities\n2 0 0 0\n1 0 0 0 0\n1 0 0 0 0\n$EndEntities\n",
         7, "twice"},
    };
    for (const BadCase& c : cases) {
        SCOPED_TRACE(c.name);
        const KwGmshMesh r = KwReadGmshMesh(c.text);
        ASSERT_FALSE(r.ok());
        EXPECT_TRUE(r.error.startsWith(QStringLiteral("Line %1:").arg(c.line))) << r.error.toStdString();
        EXPECT_TRUE(r.error.contains(QLatin1String(c.says))) << r.error.toStdString();
        EXPECT_EQ(r.mesh.ElementCount(), 0u);
        EXPECT_TRUE(r.mesh.Nodes().empty());
        EXPECT_TRUE(r.entities.empty());
    }
}

// Every prefix of a good file is refused or read, never crashes (the fuzz target does this
// at random; here every cut of one small file).
TEST(GmshReader, EveryTruncationIsRefused)
{
    const std::string good = kHead + kEntities + kNodes + kTet;
    for (std::size_t n = 0; n + 1 < good.size(); ++n) {
        const KwGmshMesh r = KwReadGmshMesh(std::string_view(good).substr(0, n));
        EXPECT_FALSE(r.ok()) << n;
    }
    EXPECT_TRUE(KwReadGmshMesh(good).ok());
}

// The middle nodes of parabolic elements, meshed by the real mesher on straight-edged
// geometry: each sits at the middle of the edge our order says.
TEST(GmshReader, ParabolicNodeOrderByGeometry)
{
    const QString gmsh = KwTestMesher();
    if (gmsh.isEmpty())
        GTEST_SKIP() << "gmsh is not installed";
    struct Run
    {
        const char* name;
        const char* geometry;
        int type;
    };
    const Run runs[] = {
        {"tetrahedra", "Box(1) = {0, 0, 0, 1, 0.6, 0.4};\nMesh.MeshSizeMax = 0.3;\n", CKwMeshModel::Tet10},
        {"hexahedra",
         "Box(1) = {0, 0, 0, 1, 0.6, 0.4};\nTransfinite Curve{:} = 3;\nTransfinite Surface{:};\n"
         "Recombine Surface{:};\nTransfinite Volume{1};\n",
         CKwMeshModel::Hex20},
        {"wedges",
         "Rectangle(1) = {0, 0, 0, 1, 0.6};\nMesh.MeshSizeMax = 0.4;\n"
         "Extrude {0, 0, 0.3} { Surface{1}; Layers{2}; Recombine; }\n",
         CKwMeshModel::Wedge15},
        {"quadrilaterals", "Rectangle(1) = {0, 0, 0, 1, 0.6};\nMesh.MeshSizeMax = 0.3;\nRecombine Surface{1};\n",
         CKwMeshModel::Quad8},
        {"triangles", "Rectangle(1) = {0, 0, 0, 1, 0.6};\nMesh.MeshSizeMax = 0.3;\n", CKwMeshModel::Tri6},
        {"lines", "Point(1) = {0, 0, 0};\nPoint(2) = {1, 0.5, 0.2};\nLine(1) = {1, 2};\nMesh.MeshSizeMax = 0.3;\n",
         CKwMeshModel::Beam3},
    };
    for (const Run& run : runs) {
        SCOPED_TRACE(run.name);
        const QString script = QStringLiteral("SetFactory(\"OpenCASCADE\");\nMesh.MshFileVersion = 4.1;\n"
                                              "Mesh.ElementOrder = 2;\nMesh.SecondOrderIncomplete = 1;\n")
                               + QString::fromLatin1(run.geometry);
        const KwGmshMesh r = KwTestMeshScript(gmsh, script);
        ASSERT_TRUE(r.ok()) << r.error.toStdString();
        const auto edges = KwMidsideEdges(run.type);
        std::size_t checked = 0;
        for (std::size_t e = 0; e < r.mesh.ElementCount(); ++e) {
            if (r.mesh.ElementType(e) != run.type)
                continue;
            const auto nodes = r.mesh.ElementNodes(e);
            const int corners = CKwMeshModel::CornerCount(run.type);
            ASSERT_EQ(nodes.size(), std::size_t(corners) + edges.size());
            for (std::size_t k = 0; k < edges.size(); ++k) {
                const auto& a = r.mesh.Nodes()[std::size_t(nodes[std::size_t(edges[k].first)])];
                const auto& b = r.mesh.Nodes()[std::size_t(nodes[std::size_t(edges[k].second)])];
                const auto& m = r.mesh.Nodes()[std::size_t(nodes[std::size_t(corners) + k])];
                EXPECT_NEAR(m.x, 0.5 * (a.x + b.x), 1e-9);
                EXPECT_NEAR(m.y, 0.5 * (a.y + b.y), 1e-9);
                EXPECT_NEAR(m.z, 0.5 * (a.z + b.z), 1e-9);
            }
            // Solids keep a positive volume with our corner order: their skin faces outward.
            ++checked;
        }
        EXPECT_GT(checked, 0u);
    }
}

} // namespace
