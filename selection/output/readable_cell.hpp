#pragma once
// A cell as the tables for people (text, markdown, latex) print it.
#include <optional>
#include <string>

#include "selection/table/output_table.hpp"

namespace drav::selection {

// Numbers rounded to `digits` (the column's own unless the user chose),
// counts whole, flags as a star or nothing, empty cells as nothing.
std::string ReadableCell(const Cell& cell, const Column& column, std::optional<int> digits);
// The same, appended to `out`: no text of its own for each of a million cells.
void AppendReadable(std::string& out, const Cell& cell, const Column& column, std::optional<int> digits);

}  // namespace drav::selection
