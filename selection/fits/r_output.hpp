#pragma once
// R's printed output: summary() of glm and of lme4 fits, anova() tables of
// several fits, and logLik(), from a console transcript, knitr's rendering
// or Rscript's output.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

bool LooksLikeROutput(std::string_view text);

// One record per model found, in file order. Throws DataError where the
// file is R's output but holds no model with a likelihood.
std::vector<FitRecord> ReadROutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
