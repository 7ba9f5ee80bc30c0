#pragma once
#include <cstdint>

#include "analysis/model_tables.hpp"

namespace drav {

// Fills the difference, Akaike weight and evidence ratio columns from the
// AIC column, rows 1 to modelCount, and gives the row of the lowest AIC (the
// first of equal ones). Gives 0 and writes nothing when no AIC lies below
// the search's start value, 99999999999.0.
std::int64_t ComputeStatistics(NumberTable& ModelStatTable, std::int64_t modelCount);

}  // namespace drav
