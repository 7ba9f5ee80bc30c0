#pragma once
// The model-averaged estimate and its unconditional standard error in the
// revised form of Burnham & Anderson (2002, equation 6.12):
//   theta_bar = sum w_i theta_i,  se = sqrt(sum w_i (se_i^2 + (theta_i - theta_bar)^2)),
// with the weights w_i summing to 1. One function for the single parameter
// of `average` and for every term of `average --all`, conditional or full.
#include <cmath>

namespace drav::selection {

struct AverageWithSe {
  double estimate = 0;
  double se = 0;
};

// `forEach(visit)` calls `visit(weight, estimate, se)` once for each model
// averaged over, the same models in the same order on each of its two
// calls. The weights are divided by their sum, unless they are a set's
// Akaike weights, which sum to 1 already and are taken as they are.
template <class ForEach>
AverageWithSe RevisedAverage(ForEach forEach, bool weightsSumToOne = false) {
  double sum = 0;
  double weighted = 0;
  forEach([&](double weight, double estimate, double) {
    sum += weight;
    weighted += weight * estimate;
  });
  const double scale = weightsSumToOne ? 1 : sum;
  const double mean = weighted / scale;
  double variance = 0;
  forEach([&](double weight, double estimate, double se) {
    const double deviation = estimate - mean;
    variance += weight / scale * (se * se + deviation * deviation);
  });
  return {mean, std::sqrt(variance)};
}

}  // namespace drav::selection
