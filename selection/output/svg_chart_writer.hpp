#pragma once
// A bar chart of a table as a standalone SVG file: one horizontal bar per
// row, its name on the left where any length of name stays readable, the
// value at the bar's end, an optional line across the bars (the cumulative
// weight) and the rows of a flag column in a darker colour (the confidence
// set). Past 40 rows a set's remaining rows are one bar. With several sets,
// one panel per set, one under the other. Plain SVG 1.1 text, so that
// browsers, Inkscape and rsvg-convert (for LaTeX) show it as it is.
#include "selection/output/output_buffer.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

inline constexpr std::size_t kChartBars = 40;

// The table must have a chart plan.
void WriteSvg(const OutputTable& table, OutputBuffer& out);

}  // namespace drav::selection
