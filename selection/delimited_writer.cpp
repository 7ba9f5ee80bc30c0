#include "selection/delimited_writer.hpp"

#include "selection/number_text.hpp"

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
  for (std::size_t row = 0; row < table.rows; ++row) {
    for (std::size_t c = 0; c < table.columns.size(); ++c) {
      if (c > 0) text += separator;
      const Cell cell = table.columns[c].cell(row);
      switch (cell.kind) {
        case CellKind::Empty: break;
        case CellKind::Text: AppendField(text, cell.text, separator); break;
        case CellKind::Number:
        case CellKind::Count: AppendShortest(text, cell.number); break;
        case CellKind::Flag: text += cell.flag ? "true" : "false"; break;
      }
    }
    text += '\n';
    out.Spill();
  }
  out.Flush();
}

}  // namespace drav::selection
