#pragma once
// lavaan's summary(fit, fit.measures = TRUE), as releases 0.5 and 0.6
// print it, one model or several in a file.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

bool LooksLikeLavaanOutput(std::string_view text);

// One record per summary, in file order. Throws DataError where the file
// holds no summary with a log-likelihood.
std::vector<FitRecord> ReadLavaanOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
