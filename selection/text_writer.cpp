#include "selection/text_writer.hpp"

#include <algorithm>
#include <vector>

#include "selection/display_width.hpp"
#include "selection/readable_cell.hpp"

namespace drav::selection {
namespace {

void AppendPadded(std::string& out, const std::string& text, std::int64_t width, bool right) {
  const auto pad = static_cast<std::size_t>(std::max<std::int64_t>(0, width - DisplayWidth(text)));
  if (right) out.append(pad, ' ');
  out += text;
  if (!right) out.append(pad, ' ');
}

}  // namespace

void WriteText(const OutputTable& table, std::optional<int> digits, OutputBuffer& out) {
  // Two passes over the cells: one for the widths, one to print. Cheaper
  // than keeping every cell's text of a long table.
  const std::size_t columns = table.columns.size();
  std::vector<std::int64_t> width(columns);
  std::vector<bool> right(columns, true);
  for (std::size_t c = 0; c < columns; ++c) width[c] = DisplayWidth(table.columns[c].title);
  for (std::size_t row = 0; row < table.rows; ++row) {
    for (std::size_t c = 0; c < columns; ++c) {
      const Cell cell = table.columns[c].cell(row);
      if (cell.kind == CellKind::Text) right[c] = false;
      width[c] = std::max(width[c], DisplayWidth(ReadableCell(cell, table.columns[c], digits)));
    }
  }
  std::string& text = out.Text();
  const auto endLine = [&text] {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    text += '\n';
  };
  for (std::size_t c = 0; c < columns; ++c) {
    if (c > 0) text += "  ";
    AppendPadded(text, table.columns[c].title, width[c], right[c]);
  }
  endLine();
  for (std::size_t row = 0; row < table.rows; ++row) {
    for (std::size_t c = 0; c < columns; ++c) {
      if (c > 0) text += "  ";
      AppendPadded(text, ReadableCell(table.columns[c].cell(row), table.columns[c], digits), width[c], right[c]);
    }
    endLine();
    out.Spill();
  }
  if (!table.note.empty()) {
    text += '\n';
    text += table.note;
    text += '\n';
  }
  out.Flush();
}

}  // namespace drav::selection
