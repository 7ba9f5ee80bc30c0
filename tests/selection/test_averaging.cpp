// The model-averaged estimate and its revised unconditional SE, worked by
// hand.
#include "selection/models/averaging.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "selection/models/normal_quantile.hpp"

namespace drav::selection {
namespace {

// Models of one set by their criterion, estimate and SE.
CandidateTable Table(const std::vector<std::array<double, 3>>& models) {
  CandidateTable table;
  table.sets = {""};
  for (const auto& [value, estimate, se] : models) {
    table.models.push_back({.model = "", .value = value});
    table.estimates.push_back({estimate, se});
  }
  return table;
}

TEST(Averaging, RenormalisedWeightsAndRevisedSe) {
  // Models B and C have the parameter; A, far better, does not. B's AIC is
  // 0 and C's 2 ln 3, so over B and C the weights are 1 : 1/3, i.e. 3/4 and
  // 1/4. Estimate 3/4 * 1 + 1/4 * 3 = 1.5. Variance
  // 3/4 (0.5^2 + 0.5^2) + 1/4 (1^2 + 1.5^2) = 0.375 + 0.8125 = 1.1875.
  const CandidateTable table = Table({{-10, kNotGiven, kNotGiven}, {0, 1, 0.5}, {2 * std::log(3.0), 3, 1}});
  const AveragedEstimate a = Average(table, Rank(table, {})[0], 0.95);
  EXPECT_DOUBLE_EQ(a.estimate, 1.5);
  EXPECT_DOUBLE_EQ(a.se, std::sqrt(1.1875));
  EXPECT_EQ(a.models, 2u);
  // z of a 95% interval is 1.959963984540054.
  EXPECT_NEAR(a.lower, 1.5 - 1.959963984540054 * std::sqrt(1.1875), 1e-12);
  EXPECT_NEAR(a.upper, 1.5 + 1.959963984540054 * std::sqrt(1.1875), 1e-12);
}

TEST(Averaging, ModelsFarBehindStillAverage) {
  // The models with the parameter trail by 3000: their set weights are 0,
  // but among themselves they weigh 1/2 each.
  const CandidateTable table = Table({{0, kNotGiven, kNotGiven}, {3000, 2, 0}, {3000, 4, 0}});
  const AveragedEstimate a = Average(table, Rank(table, {})[0], 0.95);
  EXPECT_DOUBLE_EQ(a.estimate, 3);
  EXPECT_DOUBLE_EQ(a.se, 1);  // sqrt(1/2 * 1 + 1/2 * 1)
}

TEST(Averaging, NoModelWithTheParameterGivesAnEmptyRow) {
  const CandidateTable table = Table({{0, kNotGiven, kNotGiven}});
  const AveragedEstimate a = Average(table, Rank(table, {})[0], 0.95);
  EXPECT_EQ(a.models, 0u);
  EXPECT_TRUE(std::isnan(a.estimate) && std::isnan(a.se) && std::isnan(a.lower) && std::isnan(a.upper));
}

// Textbook values; 0.8413447460685429 is P(Z <= 1) = 0.5 erfc(-1/sqrt 2).
TEST(NormalQuantile, InvertsTheCdf) {
  const std::pair<double, double> cases[] = {{0.5, 0},
                                             {0.8413447460685429, 1},
                                             {0.975, 1.959963984540054},
                                             {0.995, 2.5758293035489004},
                                             {0.05, -1.6448536269514722}};
  for (const auto& [p, z] : cases) EXPECT_NEAR(NormalQuantile(p), z, 1e-12) << p;
}

}  // namespace
}  // namespace drav::selection
