#pragma once
// JSON for programs: numbers in full precision (shortest round-trip text),
// infinities and missing values as null. One set is one object; with --by
// the output is one object too, {"by": COLUMN, "sets": [...]}, each set's
// object as it would stand alone, plus its value of the column.
#include "selection/output/output_buffer.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

void WriteJson(const OutputTable& table, OutputBuffer& out);

}  // namespace drav::selection
