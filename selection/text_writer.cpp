#include "selection/text_writer.hpp"

#include <algorithm>
#include <cmath>
#include <vector>

#include "selection/display_width.hpp"
#include "selection/number_text.hpp"
#include "selection/readable_cell.hpp"

namespace drav::selection {
namespace {

// `shown` is how many columns the text takes on a terminal.
void AppendPadded(std::string& out, std::string_view text, std::int64_t shown, std::int64_t width, bool right) {
  const auto pad = static_cast<std::size_t>(std::max<std::int64_t>(0, width - shown));
  if (right) out.append(pad, ' ');
  out += text;
  if (!right) out.append(pad, ' ');
}

// The widest cell of a column, found without printing every cell: a
// number rounded to fixed decimals is never narrower than one of smaller
// magnitude and the same sign, and a whole count likewise, so of those only
// the largest and the most negative are printed. The rest (names, counts
// with a fraction, infinities) are measured one by one.
class ColumnWidth {
 public:
  ColumnWidth(const Column& column, std::optional<int> digits)
      : column_(column), digits_(digits), width_(DisplayWidth(column.title)) {}

  void Add(const Cell& cell) {
    switch (cell.kind) {
      case CellKind::Empty: return;
      case CellKind::Text: width_ = std::max(width_, DisplayWidth(cell.text)); return;
      case CellKind::Flag:
        if (cell.flag) width_ = std::max<std::int64_t>(width_, 1);
        return;
      case CellKind::Count:
        if (std::fabs(cell.number) < 1e15 && cell.number == std::trunc(cell.number)) return counts_.Add(cell.number);
        return Measure(cell);
      case CellKind::Number:
        if (!std::isfinite(cell.number)) return Measure(cell);
        // Far above the cap a number prints as the cap, whatever it is;
        // near it, rounding decides, so it is printed.
        if (cell.number > column_.shownAtMost) {
          if (cell.number > 2 * column_.shownAtMost) {
            capped_ = true;
          } else {
            Measure(cell);
          }
          return;
        }
        return numbers_.Add(cell.number);
    }
  }

  std::int64_t Width() {
    numbers_.Measure(*this, CellKind::Number);
    counts_.Measure(*this, CellKind::Count);
    if (capped_) Measure({CellKind::Number, {}, HUGE_VAL, false});
    return width_;
  }

 private:
  // The largest number of a kind and the most negative, which print the
  // widest of their sign.
  struct Extremes {
    bool anyPositive = false, anyNegative = false;
    double largest = 0, smallest = 0;

    void Add(double number) {
      if (number >= 0) {
        largest = anyPositive ? std::max(largest, number) : number;
        anyPositive = true;
      } else {
        smallest = anyNegative ? std::min(smallest, number) : number;
        anyNegative = true;
      }
    }
    void Measure(ColumnWidth& width, CellKind kind) const {
      if (anyPositive) width.Measure({kind, {}, largest, false});
      if (anyNegative) width.Measure({kind, {}, smallest, false});
    }
  };

  void Measure(const Cell& cell) { width_ = std::max(width_, DisplayWidth(ReadableCell(cell, column_, digits_))); }

  const Column& column_;
  std::optional<int> digits_;
  std::int64_t width_;
  Extremes numbers_, counts_;
  bool capped_ = false;
};

}  // namespace

void WriteText(const OutputTable& table, std::optional<int> digits, OutputBuffer& out) {
  const std::size_t columns = table.columns.size();
  std::vector<ColumnWidth> widths;
  widths.reserve(columns);
  for (const Column& column : table.columns) widths.emplace_back(column, digits);
  std::vector<bool> right(columns, true);
  for (std::size_t row = 0; row < table.rows; ++row) {
    for (std::size_t c = 0; c < columns; ++c) {
      const Cell cell = table.columns[c].cell(row);
      if (cell.kind == CellKind::Text) right[c] = false;
      widths[c].Add(cell);
    }
  }
  std::vector<std::int64_t> width(columns);
  for (std::size_t c = 0; c < columns; ++c) width[c] = widths[c].Width();
  std::string& text = out.Text();
  const auto endLine = [&text] {
    while (!text.empty() && text.back() == ' ') text.pop_back();
    text += '\n';
  };
  for (std::size_t c = 0; c < columns; ++c) {
    if (c > 0) text += "  ";
    AppendPadded(text, table.columns[c].title, DisplayWidth(table.columns[c].title), width[c], right[c]);
  }
  endLine();
  std::string cell;
  for (std::size_t row = 0; row < table.rows; ++row) {
    for (std::size_t c = 0; c < columns; ++c) {
      if (c > 0) text += "  ";
      cell.clear();
      const Cell value = table.columns[c].cell(row);
      AppendReadable(cell, value, table.columns[c], digits);
      // Only names hold more than ASCII: numbers, stars and caps take a
      // column a byte.
      const auto shown = value.kind == CellKind::Text ? DisplayWidth(cell) : static_cast<std::int64_t>(cell.size());
      AppendPadded(text, cell, shown, width[c], right[c]);
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
