#include "selection/output/readable_cell.hpp"

#include <cmath>

#include "base/number_text.hpp"

namespace drav::selection {

void AppendReadable(std::string& out, const Cell& cell, const Column& column, std::optional<int> digits) {
  switch (cell.kind) {
    case CellKind::Empty: break;
    case CellKind::Text:
      // A table for people has one line a row, and a terminal would act on
      // a control character: a name's line ends, tabs and the like are
      // blanks there.
      for (char c : cell.text) out.push_back(static_cast<unsigned char>(c) < 0x20 ? ' ' : c);
      break;
    case CellKind::Number: {
      const double cap = column.shownAtMost;
      // The printed value decides, as in the classic report: 99999.001 at
      // two decimals is 99999.00, not above the cap. Twice the cap is past
      // any rounding, and needs no printing to tell.
      if (cell.number > 2 * cap) {
        out.push_back('>');
        AppendShortest(out, cap);
        break;
      }
      const std::size_t start = out.size();
      AppendRounded(out, cell.number, digits.value_or(column.digits));
      if (cell.number > cap &&
          ParseNumber(std::string_view(out).substr(start), false).value_or(HUGE_VAL) > cap) {
        out.resize(start);
        out.push_back('>');
        AppendShortest(out, cap);
      }
      break;
    }
    case CellKind::Count: AppendShortest(out, cell.number); break;
    case CellKind::Flag:
      if (cell.flag) out.push_back('*');
      break;
  }
}

std::string ReadableCell(const Cell& cell, const Column& column, std::optional<int> digits) {
  std::string text;
  AppendReadable(text, cell, column, digits);
  return text;
}

}  // namespace drav::selection
