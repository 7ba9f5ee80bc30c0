#include "selection/readable_cell.hpp"

#include <cmath>
#include <utility>

#include "selection/number_text.hpp"

namespace drav::selection {

std::string ReadableCell(const Cell& cell, const Column& column, std::optional<int> digits) {
  std::string text;
  switch (cell.kind) {
    case CellKind::Empty: break;
    case CellKind::Text:
      // A table for people has one line a row, and a terminal would act on
      // a control character: a name's line ends, tabs and the like are
      // blanks there.
      text = cell.text;
      for (char& c : text) {
        if (static_cast<unsigned char>(c) < 0x20) c = ' ';
      }
      break;
    case CellKind::Number:
      text = Rounded(cell.number, digits.value_or(column.digits));
      // The printed value decides, as in the classic report: 99999.001 at
      // two decimals is 99999.00, not above the cap.
      if (cell.number > column.shownAtMost && ParseNumber(text, false).value_or(HUGE_VAL) > column.shownAtMost) {
        std::string capped(1, '>');
        AppendShortest(capped, column.shownAtMost);
        text = std::move(capped);
      }
      break;
    case CellKind::Count: AppendShortest(text, cell.number); break;
    case CellKind::Flag:
      if (cell.flag) text.push_back('*');
      break;
  }
  return text;
}

}  // namespace drav::selection
