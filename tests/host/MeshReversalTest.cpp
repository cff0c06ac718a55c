// Turning shells and beams round: every family keeps its size and the places of its mid-side
// nodes, flips its normal or direction, and comes back to itself when turned twice; solids and
// unknown ids are refused untouched; a beam's end releases change ends with it.
#include "CKwMeshModel.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <vector>

namespace {

using M = CKwMeshModel;
using V = std::array<double, 3>;

V sub(V a, V b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
V cross(V a, V b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
double dot(V a, V b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

V pos(const M& mesh, int nodeIndex)
{
    const M::Node& n = mesh.Nodes()[static_cast<std::size_t>(nodeIndex)];
    return {n.x, n.y, n.z};
}

std::vector<int> nodesOf(const M& mesh, int elementId)
{
    const auto span = mesh.ElementNodes(static_cast<std::size_t>(mesh.ElementIndex(elementId)));
    return {span.begin(), span.end()};
}

// Twice the signed area vector of the corner polygon (a shell's normal times its area), or the
// vector from the first to the second end of a beam.
V orientation(const M& mesh, int elementId)
{
    const int type = mesh.ElementType(static_cast<std::size_t>(mesh.ElementIndex(elementId)));
    const std::vector<int> n = nodesOf(mesh, elementId);
    if (M::IsBeamType(type))
        return sub(pos(mesh, n[1]), pos(mesh, n[0]));
    V sum{0, 0, 0};
    const int corners = M::CornerCount(type);
    for (int k = 0; k < corners; ++k) {
        const V c = cross(pos(mesh, n[k]), pos(mesh, n[(k + 1) % corners]));
        for (int i = 0; i < 3; ++i)
            sum[i] += c[i];
    }
    return sum;
}

// Each mid-side node lies halfway along the edge it belongs to (edge k runs from corner k to
// corner k+1; a beam's mid node between its two ends).
bool midNodesOnTheirEdges(const M& mesh, int elementId)
{
    const int type = mesh.ElementType(static_cast<std::size_t>(mesh.ElementIndex(elementId)));
    const std::vector<int> n = nodesOf(mesh, elementId);
    const int corners = M::CornerCount(type);
    const int edges = M::IsBeamType(type) ? 1 : corners;
    for (int k = 0; k < static_cast<int>(n.size()) - corners; ++k) {
        const V a = pos(mesh, n[k % edges]);
        const V b = pos(mesh, n[(k + 1) % corners]);
        const V m = pos(mesh, n[corners + k]);
        for (int i = 0; i < 3; ++i)
            if (std::fabs(m[i] - 0.5 * (a[i] + b[i])) > 1e-12)
                return false;
    }
    return true;
}

struct Case
{
    const char* name;
    int type;
    std::vector<V> corners;
};

// One element of the type on its corners, with mid-side nodes placed at the edge midpoints.
M meshOf(const Case& c)
{
    M mesh;
    std::vector<V> points = c.corners;
    const int corners = static_cast<int>(c.corners.size());
    const int mids = M::NodesPerElement(c.type) - corners;
    const int edges = M::IsBeamType(c.type) ? 1 : corners;
    for (int k = 0; k < mids; ++k) {
        const V a = c.corners[static_cast<std::size_t>(k % edges)];
        const V b = c.corners[static_cast<std::size_t>((k + 1) % corners)];
        points.push_back({0.5 * (a[0] + b[0]), 0.5 * (a[1] + b[1]), 0.5 * (a[2] + b[2])});
    }
    std::vector<int> ids;
    for (std::size_t i = 0; i < points.size(); ++i) {
        mesh.AddNode(static_cast<int>(i) + 1, points[i][0], points[i][1], points[i][2]);
        ids.push_back(static_cast<int>(i) + 1);
    }
    EXPECT_TRUE(mesh.AddElement(7, c.type, ids));
    return mesh;
}

const V kTri[] = {{0, 0, 0}, {2, 0, 0.5}, {0.5, 1.5, 1}};
const V kQuad[] = {{0, 0, 0}, {3, 0, 0}, {3.5, 2, 0.2}, {0.2, 1.8, 0.1}};

const Case kCases[] = {
    {"Tri3", M::Tri3, {kTri[0], kTri[1], kTri[2]}},
    {"Tri6", M::Tri6, {kTri[0], kTri[1], kTri[2]}},
    {"Quad4", M::Quad4, {kQuad[0], kQuad[1], kQuad[2], kQuad[3]}},
    {"Quad8", M::Quad8, {kQuad[0], kQuad[1], kQuad[2], kQuad[3]}},
    {"Beam2", M::Beam2, {{0, 0, 0}, {1, 2, 2}}},
    {"Beam3", M::Beam3, {{0, 0, 0}, {1, 2, 2}}},
};

} // namespace

TEST(MeshReversal, everyShellAndBeamFamilyFlipsKeepingItsSizeAndMidNodes)
{
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.name);
        M mesh = meshOf(c);
        const std::vector<int> original = nodesOf(mesh, 7);
        const V before = orientation(mesh, 7);
        ASSERT_TRUE(midNodesOnTheirEdges(mesh, 7));

        ASSERT_TRUE(mesh.ReverseElement(7));
        const V after = orientation(mesh, 7);
        // Same size (area or length), opposite normal or direction.
        EXPECT_NEAR(std::sqrt(dot(after, after)), std::sqrt(dot(before, before)), 1e-12);
        EXPECT_NEAR(dot(after, before), -dot(before, before), 1e-12);
        EXPECT_TRUE(midNodesOnTheirEdges(mesh, 7));
        // The same nodes, a shell still starting at its first corner.
        std::vector<int> sortedAfter = nodesOf(mesh, 7), sortedBefore = original;
        std::sort(sortedAfter.begin(), sortedAfter.end());
        std::sort(sortedBefore.begin(), sortedBefore.end());
        EXPECT_EQ(sortedAfter, sortedBefore);
        if (!M::IsBeamType(c.type)) {
            EXPECT_EQ(nodesOf(mesh, 7).front(), original.front());
        }

        ASSERT_TRUE(mesh.ReverseElement(7));
        EXPECT_EQ(nodesOf(mesh, 7), original);
    }
}

TEST(MeshReversal, solidsAndUnknownIdsAreRefusedUntouched)
{
    M mesh;
    mesh.BuildBlock(1, 1, 1, 1, 1, 1);
    const int hex = mesh.ElementID(0);
    const std::vector<int> nodes = nodesOf(mesh, hex);
    EXPECT_FALSE(mesh.ReverseElement(hex));
    EXPECT_EQ(nodesOf(mesh, hex), nodes);
    EXPECT_FALSE(mesh.ReverseElement(hex + 1000));
    EXPECT_TRUE(M::ReversedOrder(M::Tet10).empty());
    EXPECT_TRUE(M::ReversedOrder(0).empty());
}

TEST(MeshReversal, aBeamsEndReleasesChangeEndsWithIt)
{
    M mesh = meshOf(kCases[4]);
    ASSERT_TRUE(mesh.SetEndRelease(7, {0x30, 0x01}));
    ASSERT_TRUE(mesh.ReverseElement(7));
    EXPECT_EQ(mesh.GetEndRelease(7), (M::EndRelease{0x01, 0x30}));
    ASSERT_TRUE(mesh.ReverseElement(7));
    EXPECT_EQ(mesh.GetEndRelease(7), (M::EndRelease{0x30, 0x01}));
}
