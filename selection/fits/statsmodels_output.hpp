#pragma once
// Python statsmodels' summary() of a regression's results, as printed or
// as a notebook holds it.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

bool LooksLikeStatsmodelsOutput(std::string_view text);

// One record per summary table. Throws DataError where none has a
// log-likelihood.
std::vector<FitRecord> ReadStatsmodelsOutput(std::string_view text, const std::string& source,
                                             Diagnostics& diagnostics);

}  // namespace drav::selection::fits
