#pragma once
#include <cstdint>

#include "analysis/model_tables.hpp"
#include "analysis/text_input_stream.hpp"

namespace drav {

// Reads exactly `modelCount` lines, one model per line and row, whatever they
// hold: name and AIC separated by a tab or a comma, anything behind the
// second field ignored. Names are cut to 8 characters. A missing or
// unreadable value stands as 0.0; an empty line is a model like any other,
// and rows behind the end of the file get an empty name and 0.0.
void ReadModels(TextInputStream& modelStream, std::int64_t modelCount, TextTable& ModelTextTable,
                NumberTable& ModelStatTable);

}  // namespace drav
