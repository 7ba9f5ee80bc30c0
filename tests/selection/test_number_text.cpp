// Numbers as the tables read and print them: the grammar of a cell, the
// decimal mark a file settles on, and the shortest text that reads back.
#include "selection/number_text.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <optional>

#include "selection/decimal_mark.hpp"

namespace drav::selection {
namespace {

struct Cell {
  const char* name;
  const char* text;
  bool decimalComma;
  std::optional<double> value;  // none: refused
};

class NumberGrammar : public ::testing::TestWithParam<Cell> {};

TEST_P(NumberGrammar, ReadsWholeNumbersOnly) { EXPECT_EQ(ParseNumber(GetParam().text, GetParam().decimalComma), GetParam().value); }

INSTANTIATE_TEST_SUITE_P(
    Cells, NumberGrammar,
    ::testing::Values(Cell{"Plain", "-67.8", false, -67.8}, Cell{"Blanks", " \t12 ", false, 12},
                      Cell{"LeadingPlus", "+3", false, 3}, Cell{"Exponent", "1.5e-3", false, 0.0015},
                      Cell{"Comma", "101,5", true, 101.5},
                      // Refused: nothing may be read as some other number.
                      Cell{"Empty", "", false, std::nullopt}, Cell{"Blank", "  ", false, std::nullopt},
                      Cell{"Na", "NA", false, std::nullopt}, Cell{"TrailingText", "12abc", false, std::nullopt},
                      Cell{"PlusMinus", "+-5", false, std::nullopt}, Cell{"PlusAlone", "+", false, std::nullopt},
                      Cell{"OpenExponent", "1e", false, std::nullopt}, Cell{"Hex", "0x1p3", false, std::nullopt},
                      Cell{"NotANumber", "nan", false, std::nullopt}, Cell{"Infinity", "-Inf", false, std::nullopt},
                      Cell{"Overflow", "1e400", false, std::nullopt}, Cell{"Thousands", "1 000", false, std::nullopt},
                      Cell{"CommaWithPoint", "100,5", false, std::nullopt},
                      Cell{"PointWithComma", "100.5", true, std::nullopt},
                      Cell{"BothMarks", "1.234,5", true, std::nullopt}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(DecimalMark, FirstCellWithAMarkDecidesForTheFile) {
  DecimalMark semicolons(';', 0);
  EXPECT_EQ(semicolons.Read("12", 2), 12);  // decides nothing
  EXPECT_EQ(semicolons.Read("1.5", 3), 1.5);
  EXPECT_EQ(semicolons.Read("2,5", 4), std::nullopt);
  EXPECT_EQ(semicolons.WhyRefused("2,5"), "the file's decimal mark is '.' (line 3; --decimal chooses)");
  DecimalMark tabs('\t', 0);
  EXPECT_EQ(tabs.Read("2,5", 7), 2.5);
  EXPECT_EQ(tabs.Read("1.5", 8), std::nullopt);
  // Commas between fields leave the full stop; a forced mark is never in doubt.
  EXPECT_EQ(DecimalMark(',', 0).Read("2,5", 2), std::nullopt);
  DecimalMark forced(';', ',');
  EXPECT_EQ(forced.Read("1.5", 2), std::nullopt);
  EXPECT_EQ(forced.WhyRefused("1.5"), "the file's decimal mark is ',' (--decimal)");
  EXPECT_EQ(forced.WhyRefused("abc"), "");
}

TEST(NumberText, ShortestTextReadsBack) {
  const auto shortest = [](double x) {
    std::string text;
    AppendShortest(text, x);
    return text;
  };
  // 0.1 + 0.2 is 0.30000000000000004: it needs all 17 digits.
  for (double x : {0.1 + 0.2, 1.0 / 3, 1e-300, 123456789012345.0, 1e15, -2.5e-8, 5e-324}) {
    EXPECT_EQ(ParseNumber(shortest(x), false), x) << shortest(x);
  }
  EXPECT_EQ(shortest(0.1 + 0.2), "0.30000000000000004");
  EXPECT_EQ(shortest(1000000), "1000000");
  EXPECT_EQ(shortest(-INFINITY), "-Inf");
}

}  // namespace
}  // namespace drav::selection
