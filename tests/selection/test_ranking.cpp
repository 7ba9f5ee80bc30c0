// Ranks, weights, cumulative weights, evidence ratios and the confidence
// set, against values worked by hand.
#include "selection/ranking.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace drav::selection {
namespace {

CandidateTable Set(std::vector<double> values, std::vector<std::uint32_t> sets = {}) {
  CandidateTable table;
  table.sets = {"x", "y"};
  for (std::size_t i = 0; i < values.size(); ++i) {
    Candidate c;
    c.model = std::to_string(i + 1);
    c.model.insert(0, 1, 'm');
    c.value = values[i];
    c.set = sets.empty() ? 0 : sets[i];
    table.models.push_back(c);
  }
  if (sets.empty()) table.sets.pop_back();
  return table;
}

TEST(Ranking, WeightsOfThreeModels) {
  // Criteria 104, 100, 102: deltas 4, 0, 2; likelihoods e^-2, 1, e^-1;
  // sum S = 1 + e^-1 + e^-2 = 1.5032147244080551.
  const auto ranked = Rank(Set({104, 100, 102}), {});
  ASSERT_EQ(ranked.size(), 1u);
  const auto& m = ranked[0].models;
  const double s = 1 + std::exp(-1.0) + std::exp(-2.0);
  const std::size_t order[] = {1, 2, 0};
  const double delta[] = {0, 2, 4};
  for (std::size_t i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    EXPECT_EQ(m[i].index, order[i]);
    EXPECT_EQ(m[i].rank, static_cast<std::int64_t>(i + 1));
    EXPECT_DOUBLE_EQ(m[i].delta, delta[i]);
    EXPECT_DOUBLE_EQ(m[i].likelihood, std::exp(-delta[i] / 2));
    EXPECT_DOUBLE_EQ(m[i].weight, std::exp(-delta[i] / 2) / s);
    EXPECT_DOUBLE_EQ(m[i].evidenceRatio, std::exp(delta[i] / 2));  // 1, e, e^2
  }
  EXPECT_NEAR(m[0].weight, 0.66524096, 1e-8);
  EXPECT_DOUBLE_EQ(m[1].cumulative, (1 + std::exp(-1.0)) / s);  // 0.9100
  EXPECT_DOUBLE_EQ(m[2].cumulative, 1);
}

struct Level {
  const char* name;
  double level;
  int inSet;  // of the three models above, cumulative 0.6652, 0.9100, 1
};

class ConfidenceSet : public ::testing::TestWithParam<Level> {};

TEST_P(ConfidenceSet, EndsAtTheFirstModelThatReachesTheLevel) {
  const auto ranked = Rank(Set({104, 100, 102}), {GetParam().level, false});
  int inSet = 0;
  for (const RankedModel& m : ranked[0].models) inSet += m.inConfidenceSet;
  EXPECT_EQ(inSet, GetParam().inSet);
}

INSTANTIATE_TEST_SUITE_P(Levels, ConfidenceSet,
                         ::testing::Values(Level{"Half", 0.5, 1}, Level{"JustUnderSecond", 0.91, 3},
                                           Level{"NinetyPercent", 0.90, 2}, Level{"NinetyFive", 0.95, 3},
                                           // the best model alone reaches a level equal to its weight
                                           Level{"ExactlyTheFirst", 1 / (1 + std::exp(-1.0) + std::exp(-2.0)), 1}),
                         [](const auto& info) { return info.param.name; });

TEST(Ranking, TiesKeepFileOrderAndFileOrderKeepsRanks) {
  const auto ranked = Rank(Set({5, 3, 3, 1}), {});
  const std::size_t byRank[] = {3, 1, 2, 0};
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(ranked[0].models[i].index, byRank[i]);
  // Enough ties that a sort which is not stable by nature would show it.
  const auto many = Rank(Set(std::vector<double>(40, 7.5)), {});
  for (std::size_t i = 0; i < 40; ++i) EXPECT_EQ(many[0].models[i].index, i);
  const auto inFile = Rank(Set({5, 3, 3, 1}), {0.95, true});
  const std::int64_t ranks[] = {4, 2, 3, 1};
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(inFile[0].models[i].index, i);
    EXPECT_EQ(inFile[0].models[i].rank, ranks[i]);
  }
}

TEST(Ranking, LargeCriteriaAndFarBehindModels) {
  // Criteria near a million: differences, not the values, are exponentiated.
  const auto near = Rank(Set({1e6 + 2, 1e6}), {});
  EXPECT_DOUBLE_EQ(near[0].models[1].weight, std::exp(-1.0) / (1 + std::exp(-1.0)));
  // Delta 1600: the weight underflows to 0, the ratio is infinite, not 1/0
  // of a weight; delta 1000 still has a finite ratio e^500.
  const auto far = Rank(Set({0, 1000, 1600}), {});
  EXPECT_EQ(far[0].models[2].weight, 0);
  EXPECT_TRUE(std::isinf(far[0].models[2].evidenceRatio));
  EXPECT_DOUBLE_EQ(far[0].models[1].evidenceRatio, std::exp(500.0));
}

TEST(Ranking, EachSetOnItsOwn) {
  // Sets x: 10, 12 and y: 50; y's only model has weight 1 whatever x holds.
  const auto ranked = Rank(Set({10, 50, 12}, {0, 1, 0}), {});
  ASSERT_EQ(ranked.size(), 2u);
  EXPECT_EQ(ranked[0].models.size(), 2u);
  EXPECT_DOUBLE_EQ(ranked[0].models[1].delta, 2);
  EXPECT_EQ(ranked[1].models[0].rank, 1);
  EXPECT_DOUBLE_EQ(ranked[1].models[0].weight, 1);
}

}  // namespace
}  // namespace drav::selection
