#pragma once
// CSV (RFC 4180) and tab-separated text for spreadsheets and statistics
// packages: every number in full precision, the shortest text that reads
// back to the same double; infinities as Inf, which R, pandas and the
// spreadsheets read as infinity; flags as true and false.
#include "selection/output/output_buffer.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

void WriteDelimited(const OutputTable& table, char separator, OutputBuffer& out);

}  // namespace drav::selection
