#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "analysis/statistics.hpp"

namespace drav {
namespace {

struct Result {
  std::int64_t lowIndex;
  NumberTable table;
};

Result Compute(const std::vector<double>& aics) {
  const auto n = static_cast<std::int32_t>(aics.size());
  NumberTable table(n, kStatColumns);
  for (std::int32_t i = 1; i <= n; ++i) table(i, kAicColumn) = aics[static_cast<std::size_t>(i - 1)];
  const std::int64_t low = ComputeStatistics(table, n);
  return {low, table};
}

TEST(ComputeStatistics, WorkedExampleExactly) {
  const Result r = Compute({204, 202, 206, 206, 214});
  ASSERT_EQ(r.lowIndex, 2);
  const double diffs[] = {2, 0, 4, 4, 12};
  const double weights[] = {0.22417610841353866, 0.6093738418751871, 0.08246978148716128, 0.08246978148716128,
                            0.0015104867369516613};
  const double ratios[] = {2.7182818284590455, 1.0, 7.38905609893065, 7.38905609893065, 403.4287934927351};
  for (int i = 1; i <= 5; ++i) {
    EXPECT_EQ(r.table(i, kDifferenceColumn), diffs[i - 1]) << i;
    EXPECT_EQ(r.table(i, kWeightColumn), weights[i - 1]) << i;
    EXPECT_EQ(r.table(i, kRatioColumn), ratios[i - 1]) << i;
  }
}

TEST(ComputeStatistics, TiesKeepTheFirstLowestRow) { EXPECT_EQ(Compute({10, 8, 8, 12}).lowIndex, 2); }

// The search starts below 99999999999, not at infinity.
TEST(ComputeStatistics, NoValueBelowTheStartValueMeansNoLowestRow) {
  const Result r = Compute({99999999999.0, 1e12, std::numeric_limits<double>::infinity()});
  EXPECT_EQ(r.lowIndex, 0);
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(r.table(i, kDifferenceColumn), 0.0);  // untouched
  EXPECT_EQ(Compute({1e12, 99999999998.0}).lowIndex, 2);
}

TEST(ComputeStatistics, HugeDifferenceUnderflowsToZeroWeightAndInfiniteRatio) {
  const Result r = Compute({0, 1500});
  EXPECT_EQ(r.table(1, kWeightColumn), 1.0);
  EXPECT_EQ(r.table(2, kWeightColumn), 0.0);
  EXPECT_EQ(r.table(2, kRatioColumn), std::numeric_limits<double>::infinity());
}

}  // namespace
}  // namespace drav
