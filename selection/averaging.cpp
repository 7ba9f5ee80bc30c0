#include "selection/averaging.hpp"

#include <cmath>
#include <vector>

#include "selection/normal_quantile.hpp"

namespace drav::selection {

AveragedEstimate Average(const CandidateTable& table, const RankedSet& set, double level) {
  AveragedEstimate result;
  result.set = set.set;
  // The weights renormalised over the models with the parameter, taken from
  // exp(-delta/2) against the best of those models rather than from the
  // set's weights: when all of them sit far behind, their set weights have
  // underflowed to 0 and could not be renormalised.
  struct Term {
    double weight;
    const Estimate* model;
  };
  std::vector<Term> terms;
  double bestDelta = INFINITY;
  for (const RankedModel& m : set.models) {
    const Estimate& e = table.estimates[m.index];
    if (std::isnan(e.value)) continue;
    terms.push_back({m.delta, &e});
    bestDelta = std::fmin(bestDelta, m.delta);
  }
  if (terms.empty()) {
    result.estimate = result.se = result.lower = result.upper = kNotGiven;
    return result;
  }
  double sum = 0;
  for (Term& t : terms) {
    t.weight = std::exp(-(t.weight - bestDelta) / 2);
    sum += t.weight;
  }
  double estimate = 0;
  for (Term& t : terms) {
    t.weight /= sum;
    estimate += t.weight * t.model->value;
  }
  double variance = 0;
  for (const Term& t : terms) {
    const double deviation = t.model->value - estimate;
    variance += t.weight * (t.model->se * t.model->se + deviation * deviation);
  }
  result.estimate = estimate;
  result.se = std::sqrt(variance);
  result.models = terms.size();
  const double z = NormalQuantile(0.5 + level / 2);
  result.lower = estimate - z * result.se;
  result.upper = estimate + z * result.se;
  return result;
}

}  // namespace drav::selection
