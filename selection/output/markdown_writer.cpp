#include "selection/output/markdown_writer.hpp"

#include <array>

#include "selection/output/readable_cell.hpp"
#include "selection/output/row_blocks.hpp"

namespace drav::selection {
namespace {

// A bar would end the cell and a line end the row; the other characters
// that Markdown reads as markup (emphasis, code, links, raw HTML, entities,
// strikethrough, the dollar of math) are escaped by a backslash, so that a
// name such as wt*hp + qsec*am shows as it is written.
constexpr std::string_view kMarkup = "\\`*_[]<>|~&$";

constexpr std::array<bool, 256> MarkupTable() {
  std::array<bool, 256> table{};
  for (char c : kMarkup) table[static_cast<unsigned char>(c)] = true;
  return table;
}

void AppendCell(std::string& out, std::string_view text) {
  static constexpr std::array<bool, 256> kIsMarkup = MarkupTable();
  out += ' ';
  for (char c : text) {
    if (kIsMarkup[static_cast<unsigned char>(c)]) {
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
  WriteRowBlocks(0, table.rows, out, [&table, digits](std::size_t begin, std::size_t end, std::string& rows) {
    std::string cell;
    for (std::size_t row = begin; row < end; ++row) {
      rows += '|';
      for (const Column& column : table.columns) {
        cell.clear();
        AppendReadable(cell, column.cell(row), column, digits);
        AppendCell(rows, cell);
      }
      rows += '\n';
    }
  });
  out.Flush();
}

}  // namespace drav::selection
