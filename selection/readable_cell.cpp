#include "selection/readable_cell.hpp"

#include "selection/number_text.hpp"

namespace drav::selection {

std::string ReadableCell(const Cell& cell, const Column& column, std::optional<int> digits) {
  std::string text;
  switch (cell.kind) {
    case CellKind::Empty: break;
    case CellKind::Text: text = cell.text; break;
    case CellKind::Number: text = Rounded(cell.number, digits.value_or(column.digits)); break;
    case CellKind::Count: AppendShortest(text, cell.number); break;
    case CellKind::Flag:
      if (cell.flag) text.push_back('*');
      break;
  }
  return text;
}

}  // namespace drav::selection
