#pragma once
// The decimal mark of one file, settled by its cells. Comma-separated text
// has a full stop. With semicolons or tabs between fields either mark is
// met: write.csv2 and most of Europe's spreadsheets write 100,5, while
// write.table(sep = ";") writes 100.5. The first number cell that holds one
// of the two marks decides for the whole file; whole numbers read the same
// either way and decide nothing. A cell with the other mark after that is
// refused rather than misread.
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace drav::selection {

class DecimalMark {
 public:
  // `forced` is ',' or '.' when the user chose the mark, 0 to let the cells
  // decide.
  DecimalMark(char separator, char forced);

  // The number the cell holds, by ParseNumber's grammar with the file's
  // mark; `line` is where the cell stands, kept when the cell decides.
  std::optional<double> Read(std::string_view cell, std::int64_t line);

  // For a cell that Read refused: why, when the other mark would have read
  // it ("the file's decimal mark is ',' (line 2)"); none otherwise.
  std::optional<std::string> WhyRefused(std::string_view cell) const;

  // Whether the mark is known, so that Read no longer changes it: the user
  // chose it, the separator implies it, or a cell decided.
  bool Settled() const { return mark_ != 0; }

 private:
  char mark_;  // ',' or '.', or 0 while undecided
  bool forced_;
  std::int64_t decidedOn_ = 0;
};

}  // namespace drav::selection
