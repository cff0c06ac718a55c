// The frequencies a solution frequency set asks the solver for, per method, from its fields
// and the natural frequencies of the model.
#include "CKwDynamicsSetup.h"

#include <gtest/gtest.h>

namespace {

struct Case
{
    const char* what;
    void (*setup)(CKwSolutionFrequency&);
    QList<double> modes;
    QList<double> expected;
};

const Case kCases[] = {
    {"discrete: sorted, each once, negatives dropped",
     [](CKwSolutionFrequency& f) {
         f.m_method = CKwSolutionFrequency::Discrete;
         f.m_discrete = {50, 10, -3, 50, 20};
     },
     {}, {10, 20, 50}},
    {"linear range: both ends and the increments between",
     [](CKwSolutionFrequency& f) {
         f.m_method = CKwSolutionFrequency::Range;
         f.m_rangeStart = 10;
         f.m_rangeEnd = 50;
         f.m_rangeIncrements = 4;
     },
     {}, {10, 20, 30, 40, 50}},
    {"logarithmic range: a constant ratio",
     [](CKwSolutionFrequency& f) {
         f.m_method = CKwSolutionFrequency::Range;
         f.m_rangeStart = 1;
         f.m_rangeEnd = 1000;
         f.m_rangeIncrements = 3;
         f.m_rangeSpacing = CKwSolutionFrequency::Logarithmic;
     },
     {}, {1, 10, 100, 1000}},
    {"range with its limits in the wrong order gives nothing",
     [](CKwSolutionFrequency& f) {
         f.m_method = CKwSolutionFrequency::Range;
         f.m_rangeStart = 100;
         f.m_rangeEnd = 10;
     },
     {}, {}},
    {"cluster without bias: evenly between the modes of the band, modes included",
     [](CKwSolutionFrequency& f) {
         f.m_method = CKwSolutionFrequency::ClusterModes;
         f.m_clusterLow = 5;
         f.m_clusterHigh = 100;
         f.m_clusterPoints = 3;
         f.m_clusterBias = 1;
     },
     {2, 10, 30, 200}, {10, 15, 20, 25, 30}},
    {"cluster with bias 2: points pulled towards the modes",
     [](CKwSolutionFrequency& f) {
         f.m_method = CKwSolutionFrequency::ClusterModes;
         f.m_clusterLow = 0;
         f.m_clusterHigh = 100;
         f.m_clusterPoints = 1;
         f.m_clusterBias = 2;
     },
     {10, 30}, {10, 20, 30}},
    {"spread: evenly over plus and minus the fraction of each mode in the band",
     [](CKwSolutionFrequency& f) {
         f.m_method = CKwSolutionFrequency::SpreadAround;
         f.m_spreadLow = 50;
         f.m_spreadHigh = 500;
         f.m_spreadFraction = 0.1;
         f.m_spreadPoints = 3;
     },
     {20, 100, 200}, {90, 100, 110, 180, 200, 220}},
    {"spread with one point: the modes themselves",
     [](CKwSolutionFrequency& f) {
         f.m_method = CKwSolutionFrequency::SpreadAround;
         f.m_spreadPoints = 1;
     },
     {40, 12}, {12, 40}},
};

TEST(SolutionFrequencies, eachMethodGivesTheFrequenciesItsFieldsDescribe)
{
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.what);
        CKwSolutionFrequency f;
        c.setup(f);
        const QList<double> got = f.Frequencies(c.modes);
        ASSERT_EQ(got.size(), c.expected.size());
        for (qsizetype i = 0; i < got.size(); ++i)
            EXPECT_NEAR(got[i], c.expected[i], 1e-9 * std::max(1.0, c.expected[i])) << i;
    }
}

} // namespace
