#pragma once
// The table for the terminal: columns aligned, numbers to the right and
// names to the left, numbers rounded, and a line under it that says what
// the table is ranked by.
#include <optional>

#include "selection/output/output_buffer.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

void WriteText(const OutputTable& table, std::optional<int> digits, OutputBuffer& out);

}  // namespace drav::selection
