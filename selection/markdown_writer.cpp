#include "selection/markdown_writer.hpp"

#include "selection/readable_cell.hpp"

namespace drav::selection {
namespace {

// A bar would end the cell and a line end the row; neither may pass.
void AppendCell(std::string& out, std::string_view text) {
  out += ' ';
  for (char c : text) {
    if (c == '|') {
      out += "\\|";
    } else if (c == '\n' || c == '\r') {
      out += ' ';
    } else {
      out += c;
    }
  }
  out += " |";
}

}  // namespace

void WriteMarkdown(const OutputTable& table, std::optional<int> digits, OutputBuffer& out) {
  std::string& text = out.Text();
  text += '|';
  for (const Column& column : table.columns) AppendCell(text, column.title);
  text += "\n|";
  for (const Column& column : table.columns) {
    const bool name = table.rows > 0 && column.cell(0).kind == CellKind::Text;
    text += name ? ":---|" : "---:|";
  }
  text += '\n';
  for (std::size_t row = 0; row < table.rows; ++row) {
    text += '|';
    for (const Column& column : table.columns) AppendCell(text, ReadableCell(column.cell(row), column, digits));
    text += '\n';
    out.Spill();
  }
  out.Flush();
}

}  // namespace drav::selection
