#include "selection/output/delimited_writer.hpp"

#include "base/number_text.hpp"
#include "selection/output/row_blocks.hpp"

namespace drav::selection {
namespace {

void AppendField(std::string& out, std::string_view text, char separator) {
  if (text.find_first_of(std::string{separator, '"', '\n', '\r'}) == std::string_view::npos) {
    out += text;
    return;
  }
  out += '"';
  for (char c : text) {
    if (c == '"') out += '"';
    out += c;
  }
  out += '"';
}

}  // namespace

void WriteDelimited(const OutputTable& table, char separator, OutputBuffer& out) {
  std::string& text = out.Text();
  for (std::size_t c = 0; c < table.columns.size(); ++c) {
    if (c > 0) text += separator;
    AppendField(text, table.columns[c].key, separator);
  }
  text += '\n';
  WriteRowBlocks(0, table.rows, out, [&table, separator](std::size_t begin, std::size_t end, std::string& rows) {
    for (std::size_t row = begin; row < end; ++row) {
      for (std::size_t c = 0; c < table.columns.size(); ++c) {
        if (c > 0) rows += separator;
        const Cell cell = table.columns[c].cell(row);
        switch (cell.kind) {
          case CellKind::Empty: break;
          case CellKind::Text: AppendField(rows, cell.text, separator); break;
          case CellKind::Number:
          case CellKind::Count: AppendShortest(rows, cell.number); break;
          case CellKind::Flag: rows += cell.flag ? "true" : "false"; break;
        }
      }
      rows += '\n';
    }
  });
  out.Flush();
}

}  // namespace drav::selection
