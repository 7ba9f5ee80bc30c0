// Ranks, weights, cumulative weights, evidence ratios and the confidence
// set, against values worked by hand. The levels at their edges, sets,
// criteria far apart and near a million are the table goldens'
// (tests/golden/table.batch).
#include "selection/ranking.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace drav::selection {
namespace {

CandidateTable Set(const std::vector<double>& values) {
  CandidateTable table;
  table.sets = {"x"};
  for (const double value : values) table.models.push_back({.model = "", .value = value, .set = 0});
  return table;
}

// Criteria 104, 100, 102: deltas 4, 0, 2; likelihoods e^-2, 1, e^-1;
// their sum S = 1 + e^-1 + e^-2.
const double kSum = 1 + std::exp(-1.0) + std::exp(-2.0);

TEST(Ranking, WeightsOfThreeModels) {
  const auto ranked = Rank(Set({104, 100, 102}), {});
  ASSERT_EQ(ranked.size(), 1u);
  const auto& m = ranked[0].models;
  const std::size_t order[] = {1, 2, 0};
  const double delta[] = {0, 2, 4};
  const double cumulative[] = {1 / kSum, (1 + std::exp(-1.0)) / kSum, 1};
  for (std::size_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(m[i].index, order[i]);
    EXPECT_EQ(std::size_t{m[i].rank}, i + 1);
    EXPECT_DOUBLE_EQ(m[i].delta, delta[i]);
    EXPECT_DOUBLE_EQ(m[i].weight, std::exp(-delta[i] / 2) / kSum);
    EXPECT_DOUBLE_EQ(m[i].cumulative, cumulative[i]);
    EXPECT_DOUBLE_EQ(m[i].EvidenceRatio(), std::exp(delta[i] / 2));  // 1, e, e^2
  }
}

// A 100, B 102, C 102: weights 1, e^-1, e^-1 over 1 + 2/e, so A alone has
// 0.5761 and A with the first of B and C 0.7881. At a level of 0.7 the set
// closes on that one; C, tied with it, is in too, whichever comes first.
TEST(Ranking, ModelsTiedWithTheSetsLastMemberJoinIt) {
  for (const std::vector<double>& values : {std::vector<double>{100, 102, 102}, {102, 100, 102}, {102, 102, 100}}) {
    const auto ranked = Rank(Set(values), {0.7, false});
    for (const RankedModel& m : ranked[0].models) EXPECT_TRUE(m.inConfidenceSet != 0) << m.index;
  }
  // A model behind the tie stays out: 100, 102, 102, 103.
  const auto ranked = Rank(Set({100, 102, 102, 103}), {0.7, false});
  EXPECT_FALSE(ranked[0].models[3].inConfidenceSet != 0);
  EXPECT_TRUE(ranked[0].models[2].inConfidenceSet != 0);
}

TEST(Ranking, TiesKeepFileOrderAndFileOrderKeepsRanks) {
  const auto ranked = Rank(Set({5, 3, 3, 1}), {});
  const auto inFile = Rank(Set({5, 3, 3, 1}), {0.95, true});
  const std::size_t byRank[] = {3, 1, 2, 0};
  const std::int64_t ranks[] = {4, 2, 3, 1};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(ranked[0].models[i].index, byRank[i]);
    EXPECT_EQ(inFile[0].models[i].index, i);
    EXPECT_EQ(std::int64_t{inFile[0].models[i].rank}, ranks[i]);
  }
  // Enough ties that a sort which is not stable by nature would show it.
  const auto many = Rank(Set(std::vector<double>(40, 7.5)), {});
  for (std::size_t i = 0; i < 40; ++i) EXPECT_EQ(many[0].models[i].index, i);
}

}  // namespace
}  // namespace drav::selection
