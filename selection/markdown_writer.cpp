#include "selection/markdown_writer.hpp"

#include "selection/readable_cell.hpp"

namespace drav::selection {
namespace {

// A bar would end the cell and a line end the row; the other characters
// that Markdown reads as markup (emphasis, code, links, raw HTML, entities,
// strikethrough, the dollar of math) are escaped by a backslash, so that a
// name such as wt*hp + qsec*am shows as it is written.
void AppendCell(std::string& out, std::string_view text) {
  static constexpr std::string_view kMarkup = "\\`*_[]<>|~&$";
  out += ' ';
  for (char c : text) {
    if (kMarkup.find(c) != std::string_view::npos) {
      out += '\\';
      out += c;
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
