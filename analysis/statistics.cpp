#include "analysis/statistics.hpp"

#include "analysis/exp.hpp"

namespace drav {

std::int64_t ComputeStatistics(NumberTable& ModelStatTable, std::int64_t modelCount) {
  const auto rows = static_cast<std::int32_t>(modelCount);
  auto& t = ModelStatTable;

  // The start value is a large finite constant, not infinity: a file whose
  // every value is at or above it has no lowest model.
  double lowAIC = 99999999999.0;
  std::int32_t lowIndex = 0;
  for (std::int32_t i = 1; i <= rows; ++i) {
    if (lowAIC > t(i, kAicColumn)) {
      lowAIC = t(i, kAicColumn);
      lowIndex = i;
    }
  }
  if (lowIndex < 1 || lowIndex > rows) return 0;

  for (std::int32_t i = 1; i <= rows; ++i) t(i, kDifferenceColumn) = t(i, kAicColumn) - t(lowIndex, kAicColumn);
  for (std::int32_t i = 1; i <= rows; ++i) t(i, kWeightColumn) = Exp(-t(i, kDifferenceColumn) / 2.0);
  double weightSum = 0.0;
  for (std::int32_t i = 1; i <= rows; ++i) weightSum = t(i, kWeightColumn) + weightSum;
  for (std::int32_t i = 1; i <= rows; ++i) t(i, kWeightColumn) = t(i, kWeightColumn) / weightSum;
  // A weight that underflowed to 0.0 gives a ratio of +infinity, no failure.
  for (std::int32_t i = 1; i <= rows; ++i) t(i, kRatioColumn) = t(lowIndex, kWeightColumn) / t(i, kWeightColumn);
  return lowIndex;
}

}  // namespace drav
