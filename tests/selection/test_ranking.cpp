// Ranks, weights, cumulative weights, evidence ratios and the confidence
// set, worked by hand, are the table goldens' (tests/golden/table.batch).
// Here what a table of a few models cannot show: many ties in a row, where a
// sort that is not stable by nature would shuffle them.
#include "selection/models/ranking.hpp"

#include <gtest/gtest.h>

namespace drav::selection {
namespace {

CandidateTable Set(const std::vector<double>& values) {
  CandidateTable table;
  table.sets = {"x"};
  for (const double value : values) table.models.push_back({.model = "", .value = value, .set = 0});
  return table;
}

TEST(Ranking, ManyTiesKeepTheFileOrder) {
  const auto many = Rank(Set(std::vector<double>(40, 7.5)), {});
  for (std::size_t i = 0; i < 40; ++i) EXPECT_EQ(many[0].models[i].index, i);
}

}  // namespace
}  // namespace drav::selection
