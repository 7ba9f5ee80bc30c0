#pragma once
// The parameter estimates of a lavaan summary, as terms for importance and
// averages, each named as parameterEstimates() names it, "lhs op rhs":
// "visual =~ x2", "y ~ x1", "visual ~~ textual", "x1 ~1" (an intercept);
// a multi-group model's with its group before them ("Group 1 [Pasteur]:
// visual =~ x2"). Variances (x ~~ x), thresholds and scales are no terms.
// A parameter fixed in the model prints no SE: its SE is unknown.
#include <string>
#include <string_view>

#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

class LavaanEstimates {
 public:
  // One line of the summary's output, from its first line; the estimates
  // start at "Parameter Estimates:".
  void Take(std::string_view line, FitRecord& record);
  // A command or another summary ends them.
  void Stop() { *this = LavaanEstimates(); }

 private:
  bool active_ = false;
  std::string section_;  // "Latent Variables", "Regressions", "Intercepts", ...
  std::string group_;    // "Group 1 [Pasteur]: ", empty for one group
  std::string lhs_, op_;
};

}  // namespace drav::selection::fits
