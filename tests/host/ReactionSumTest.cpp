// The sum of reactions and its moment against hand values: three loaded corners of a block,
// about the origin, about their centroid and about a point on the force's line; nodes given
// twice count once, nodes without a reaction are left out.
#include "CKwMeshModel.h"
#include "KwReactionSum.h"
#include "KwSolverResults.h"

#include <gtest/gtest.h>

namespace {

TEST(ReactionSum, forceAndMomentAboutTheOriginTheCentroidAndAPoint)
{
    CKwMeshModel mesh;
    mesh.BuildBlock(1, 1, 1, 1.0, 1.0, 1.0); // nodes 1 (0,0,0), 2 (1,0,0), 3 (0,1,0), 4 (1,1,0)
    KwResultSet set;
    set.reaction.components = 3;
    set.reaction.nodeIds = {1, 2, 3};
    set.reaction.values = {0, 0, 1, 0, 0, 2, 0, 0, 3};
    const struct
    {
        const char* about;
        std::array<double, 3> origin;
        bool centroid;
        std::array<double, 3> moment;
    } cases[] = {
        // (1,0,0) x (0,0,2) + (0,1,0) x (0,0,3) = (0,-2,0) + (3,0,0)
        {"origin", {0, 0, 0}, false, {3, -2, 0}},
        // centroid (1/3, 1/3, 0): M - c x F = (3,-2,0) - (2,-2,0)
        {"centroid", {9, 9, 9}, true, {1, 0, 0}},
        // the resultant's own line passes through (1/2, 1/2, z): M = (3,-2,0) - (0.5,0.5,0) x (0,0,6)
        {"a point", {0.5, 0.5, 7}, false, {0, 1, 0}},
    };
    for (const auto& c : cases) {
        // Node 1 twice, node 4 without a reaction, node 99 not in the mesh.
        const KwReactionSum s = KwSumReactions(set, mesh, {3, 1, 2, 1, 4, 99}, c.origin, c.centroid);
        EXPECT_EQ(s.nodes, 3) << c.about;
        EXPECT_DOUBLE_EQ(s.force[2], 6.0) << c.about;
        EXPECT_DOUBLE_EQ(s.force[0], 0.0) << c.about;
        for (int k = 0; k < 3; ++k)
            EXPECT_NEAR(s.moment[std::size_t(k)], c.moment[std::size_t(k)], 1e-12)
                << c.about << " moment " << k;
    }
    const KwReactionSum none = KwSumReactions(set, mesh, {4}, {0, 0, 0}, false);
    EXPECT_EQ(none.nodes, 0);
    EXPECT_EQ(none.force[2], 0.0);
}

} // namespace
