// Ranks, weights, cumulative weights, evidence ratios and the confidence
// set, against values worked by hand.
#include "selection/ranking.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace drav::selection {
namespace {

CandidateTable Set(const std::vector<double>& values, const std::vector<std::uint32_t>& sets = {}) {
  CandidateTable table;
  table.sets = sets.empty() ? std::vector<std::string>{"x"} : std::vector<std::string>{"x", "y"};
  for (std::size_t i = 0; i < values.size(); ++i)
    table.models.push_back({.model = "", .value = values[i], .set = sets.empty() ? 0 : sets[i]});
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
    EXPECT_DOUBLE_EQ(m[i].Likelihood(), std::exp(-delta[i] / 2));
    EXPECT_DOUBLE_EQ(m[i].weight, std::exp(-delta[i] / 2) / kSum);
    EXPECT_DOUBLE_EQ(m[i].cumulative, cumulative[i]);
    EXPECT_DOUBLE_EQ(m[i].EvidenceRatio(), std::exp(delta[i] / 2));  // 1, e, e^2
  }
}

// The set ends at the first model whose cumulative weight (0.6652, 0.9100,
// 1) reaches the level; the best model alone reaches a level equal to its weight.
TEST(Ranking, ConfidenceSetEndsAtTheFirstModelThatReachesTheLevel) {
  const std::pair<double, int> levels[] = {{0.5, 1}, {1 / kSum, 1}, {0.90, 2}, {0.91, 3}, {0.95, 3}};
  for (const auto& [level, inSet] : levels) {
    const auto ranked = Rank(Set({104, 100, 102}), {level, false});
    int counted = 0;
    for (const RankedModel& m : ranked[0].models) counted += m.inConfidenceSet;
    EXPECT_EQ(counted, inSet) << level;
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

TEST(Ranking, LargeCriteriaAndFarBehindModels) {
  // Criteria near a million: differences, not the values, are exponentiated.
  EXPECT_DOUBLE_EQ(Rank(Set({1e6 + 2, 1e6}), {})[0].models[1].weight, std::exp(-1.0) / (1 + std::exp(-1.0)));
  // Delta 1600: the weight underflows to 0, the ratio is infinite, not 1/0
  // of a weight; delta 1000 still has a finite ratio e^500.
  const auto far = Rank(Set({0, 1000, 1600}), {});
  EXPECT_EQ(far[0].models[2].weight, 0);
  EXPECT_EQ(far[0].models[2].EvidenceRatio(), INFINITY);
  EXPECT_DOUBLE_EQ(far[0].models[1].EvidenceRatio(), std::exp(500.0));
}

TEST(Ranking, EachSetOnItsOwn) {
  // Sets x: 10, 12 and y: 50; y's only model has weight 1 whatever x holds.
  const auto ranked = Rank(Set({10, 50, 12}, {0, 1, 0}), {});
  ASSERT_EQ(ranked.size(), 2u);
  ASSERT_EQ(ranked[0].models.size(), 2u);
  EXPECT_DOUBLE_EQ(ranked[0].models[1].delta, 2);
  ASSERT_EQ(ranked[1].models.size(), 1u);
  EXPECT_EQ(std::int64_t{ranked[1].models[0].rank}, 1);
  EXPECT_DOUBLE_EQ(ranked[1].models[0].weight, 1);
}

}  // namespace
}  // namespace drav::selection
