#pragma once
// Model-averaged coefficients of every term at once, in the two forms of
// Burnham & Anderson (2002, section 4.2 and 6.3):
//  - conditional: over the models that hold the term, their weights
//    renormalised to sum to 1, with the revised unconditional SE
//    sqrt(sum w_i (se_i^2 + (theta_i - theta_bar)^2)) (equation 6.12) and
//    the interval theta_bar -/+ z se at the level;
//  - full: over every model, a model without the term counting as an
//    estimate of 0 with SE 0, by the set's weights; the same SE formula.
#include <vector>

#include "selection/models/importance.hpp"
#include "selection/table/coefficients.hpp"

namespace drav::selection {

struct TermAverage {
  TermImportance summary;
  // NaN where the models give no number to average: a factor held only as
  // "+", or a term no model holds; the SEs and bounds also where an SE is
  // missing.
  double estimate = 0;
  double se = 0;
  double lower = 0;
  double upper = 0;
  double fullEstimate = 0;
  double fullSe = 0;
};

// One average per term, in the order of `terms`.
// With `threads` 2 the terms are averaged in two halves at once.
std::vector<TermAverage> AverageTerms(const Coefficients& coefficients, const std::vector<Member>& members,
                                      const std::vector<TermImportance>& terms, double level, unsigned threads = 1);

}  // namespace drav::selection
