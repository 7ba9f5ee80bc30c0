#pragma once
// Mplus's .out files: one run a file, or several runs one after another.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

bool LooksLikeMplusOutput(std::string_view text);

// One record per run, named by its TITLE. Throws DataError where no run
// is found.
std::vector<FitRecord> ReadMplusOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
