#include "selection/models/averaging.hpp"

#include <cmath>

#include "selection/models/normal_quantile.hpp"
#include "selection/models/revised_average.hpp"

namespace drav::selection {

AveragedEstimate Average(const CandidateTable& table, const RankedSet& set, double level) {
  AveragedEstimate result;
  result.set = set.set;
  // The weights renormalised over the models with the parameter, taken from
  // exp(-delta/2) against the best of those models rather than from the
  // set's weights: when all of them sit far behind, their set weights have
  // underflowed to 0 and could not be renormalised.
  double bestDelta = INFINITY;
  for (const RankedModel& m : set.models) {
    if (std::isnan(table.estimates[m.index].value)) continue;
    bestDelta = std::fmin(bestDelta, m.delta);
    ++result.models;
  }
  if (result.models == 0) {
    result.estimate = result.se = result.lower = result.upper = kNotGiven;
    return result;
  }
  const AverageWithSe average = RevisedAverage([&](auto visit) {
    for (const RankedModel& m : set.models) {
      const Estimate& e = table.estimates[m.index];
      if (!std::isnan(e.value)) visit(std::exp(-(m.delta - bestDelta) / 2), e.value, e.se);
    }
  });
  result.estimate = average.estimate;
  result.se = average.se;
  const double z = NormalQuantile(0.5 + level / 2);
  result.lower = average.estimate - z * result.se;
  result.upper = average.estimate + z * result.se;
  return result;
}

}  // namespace drav::selection
