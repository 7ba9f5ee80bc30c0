#include "selection/output/json_writer.hpp"

#include <algorithm>
#include <cmath>

#include "base/number_text.hpp"
#include "selection/output/row_blocks.hpp"

namespace drav::selection {
namespace {

void AppendString(std::string& out, std::string_view text) {
  static constexpr char kHex[] = "0123456789abcdef";
  out += '"';
  for (char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (byte < 0x20) {
      out += "\\u00";
      out += kHex[byte >> 4];
      out += kHex[byte & 15];
    } else {
      out += c;
    }
  }
  out += '"';
}

void AppendValue(std::string& out, const Cell& cell) {
  switch (cell.kind) {
    case CellKind::Empty: out += "null"; break;
    case CellKind::Text: AppendString(out, cell.text); break;
    case CellKind::Number:
    case CellKind::Count:
      if (std::isfinite(cell.number)) {
        AppendShortest(out, cell.number);
      } else {
        out += "null";
      }
      break;
    case CellKind::Flag: out += cell.flag ? "true" : "false"; break;
  }
}

void AppendField(std::string& out, bool& first, std::string_view key, const Cell& value) {
  if (!first) out += ", ";
  first = false;
  AppendString(out, key);
  out += ": ";
  AppendValue(out, value);
}

// A row that is its set's object carries the set's fields too (the subset's
// delta_max and top), after its columns and without repeating one.
void AppendRow(std::string& out, const OutputTable& table, std::size_t row, bool ofSetList) {
  out += '{';
  bool first = true;
  for (const Column& column : table.columns) {
    if (ofSetList && column.ofSet) continue;
    AppendField(out, first, column.key, column.cell(row));
  }
  if (!ofSetList) {
    for (const auto& [key, value] : table.setFields) {
      const bool column = std::any_of(table.columns.begin(), table.columns.end(),
                                      [&key = key](const Column& c) { return c.key == key; });
      if (!column) AppendField(out, first, key, value);
    }
  }
  out += '}';
}

void WriteSet(const OutputTable& table, const RowGroup& group, OutputBuffer& out) {
  std::string& text = out.Text();
  text += '{';
  bool first = true;
  if (!table.byKey.empty()) AppendField(text, first, table.byKey, TextCell(group.value));
  for (const auto& [key, value] : table.setFields) AppendField(text, first, key, value);
  if (!first) text += ", ";
  AppendString(text, table.rowsKey);
  text += ": [";
  WriteRowBlocks(group.begin, group.end, out, [&table, &group](std::size_t begin, std::size_t end, std::string& rows) {
    for (std::size_t row = begin; row < end; ++row) {
      rows += row == group.begin ? "\n  " : ",\n  ";
      AppendRow(rows, table, row, true);
    }
  });
  out.Text() += "\n]}";
}

}  // namespace

void WriteJson(const OutputTable& table, OutputBuffer& out) {
  std::string& text = out.Text();
  const bool sets = !table.byKey.empty();
  if (sets) {
    text += "{\"by\": ";
    AppendString(text, table.byKey);
    text += ", \"sets\": [";
  }
  for (std::size_t g = 0; g < table.groups.size(); ++g) {
    if (sets) text += g == 0 ? "\n" : ",\n";
    if (table.rowsKey.empty()) {
      for (std::size_t row = table.groups[g].begin; row < table.groups[g].end; ++row) {
        AppendRow(text, table, row, false);
      }
    } else {
      WriteSet(table, table.groups[g], out);
    }
    out.FlushIfFull();
  }
  if (sets) text += "\n]}";
  text += '\n';
  out.Flush();
}

}  // namespace drav::selection
