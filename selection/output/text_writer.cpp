#include "selection/output/text_writer.hpp"

#include <algorithm>
#include <cmath>
#include <future>
#include <vector>

#include "base/number_text.hpp"
#include "selection/output/display_width.hpp"
#include "selection/output/readable_cell.hpp"
#include "selection/output/row_blocks.hpp"
#include "selection/parallel/second_thread.hpp"

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

  // Takes in what another measured of other rows of the same column.
  void Merge(const ColumnWidth& other) {
    width_ = std::max(width_, other.width_);
    numbers_.Merge(other.numbers_);
    counts_.Merge(other.counts_);
    capped_ = capped_ || other.capped_;
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
    void Merge(const Extremes& other) {
      if (other.anyPositive) Add(other.largest);
      if (other.anyNegative) Add(other.smallest);
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

// The columns of rows [begin, end): how wide, and which hold names and so
// are aligned left.
struct Measured {
  std::vector<ColumnWidth> widths;
  std::vector<bool> right;

  Measured(const OutputTable& table, std::optional<int> digits, std::size_t begin, std::size_t end)
      : right(table.columns.size(), true) {
    widths.reserve(table.columns.size());
    for (const Column& column : table.columns) widths.emplace_back(column, digits);
    for (std::size_t row = begin; row < end; ++row) {
      for (std::size_t c = 0; c < table.columns.size(); ++c) {
        const Cell cell = table.columns[c].cell(row);
        if (cell.kind == CellKind::Text) right[c] = false;
        widths[c].Add(cell);
      }
    }
  }

  void Merge(const Measured& other) {
    for (std::size_t c = 0; c < widths.size(); ++c) {
      widths[c].Merge(other.widths[c]);
      right[c] = right[c] && other.right[c];
    }
  }
};

// Both halves of the table at once where a second thread may help.
Measured MeasureColumns(const OutputTable& table, std::optional<int> digits, unsigned threads) {
  if (threads < 2 || table.rows < 2 * kRowBlock) return Measured(table, digits, 0, table.rows);
  const std::size_t half = table.rows / 2;
  auto second = StartBeside([&] { return Measured(table, digits, half, table.rows); });
  Measured measured(table, digits, 0, half);
  measured.Merge(second.valid() ? second.get() : Measured(table, digits, half, table.rows));
  return measured;
}

}  // namespace

void WriteText(const OutputTable& table, std::optional<int> digits, OutputBuffer& out) {
  const std::size_t columns = table.columns.size();
  Measured measured = MeasureColumns(table, digits, out.Threads());
  const std::vector<bool>& right = measured.right;
  std::vector<std::int64_t> width(columns);
  for (std::size_t c = 0; c < columns; ++c) width[c] = measured.widths[c].Width();
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
  WriteRowBlocks(0, table.rows, out, [&](std::size_t begin, std::size_t end, std::string& rows) {
    std::string cell;
    for (std::size_t row = begin; row < end; ++row) {
      for (std::size_t c = 0; c < columns; ++c) {
        if (c > 0) rows += "  ";
        cell.clear();
        const Cell value = table.columns[c].cell(row);
        AppendReadable(cell, value, table.columns[c], digits);
        // Only names hold more than ASCII: numbers, stars and caps take a
        // column a byte.
        const auto shown = value.kind == CellKind::Text ? DisplayWidth(cell) : static_cast<std::int64_t>(cell.size());
        AppendPadded(rows, cell, shown, width[c], right[c]);
      }
      while (!rows.empty() && rows.back() == ' ') rows.pop_back();
      rows += '\n';
    }
  });
  if (!table.note.empty()) {
    text += '\n';
    text += table.note;
    text += '\n';
  }
  out.Flush();
}

}  // namespace drav::selection
