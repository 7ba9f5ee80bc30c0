#pragma once
// The model-averaged estimate of one parameter over a ranked set, with the
// unconditional standard error in its revised form (Burnham & Anderson 2002,
// equation 6.12): sqrt(sum w_i (se_i^2 + (theta_i - theta_bar)^2)).
#include <cstddef>
#include <cstdint>

#include "selection/input/load_candidates.hpp"
#include "selection/models/ranking.hpp"

namespace drav::selection {

struct AveragedEstimate {
  std::uint32_t set = 0;
  double estimate = 0;
  double se = 0;
  double lower = 0;   // estimate - z se, z the normal quantile for the level
  double upper = 0;
  std::size_t models = 0;  // how many models have the parameter
};

// Averages over the models that have the parameter (estimate not NaN), with
// their weights renormalised to sum to 1 over them. When no model of the set
// has it, `models` is 0 and the numbers are NaN.
AveragedEstimate Average(const CandidateTable& table, const RankedSet& set, double level);

}  // namespace drav::selection
