#pragma once
// A pipe table for Markdown documents (GitHub, Pandoc, R Markdown, Quarto),
// numbers rounded and aligned to the right.
#include <optional>

#include "selection/output/output_buffer.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

void WriteMarkdown(const OutputTable& table, std::optional<int> digits, OutputBuffer& out);

}  // namespace drav::selection
