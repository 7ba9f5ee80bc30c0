#pragma once
// A booktabs tabular for LaTeX papers (\usepackage{booktabs}); every
// character of a name that LaTeX would take as a command is escaped, and
// the sets of a --by table are parted by a rule.
#include <optional>

#include "selection/output/output_buffer.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

void WriteLatex(const OutputTable& table, std::optional<int> digits, OutputBuffer& out);

}  // namespace drav::selection
