#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <string>
#include <limits>

#include "analysis/number_scanner.hpp"
#include "analysis/val.hpp"

namespace drav {
namespace {

struct ValCase {
  const char* name;
  const char* text;
  double expected;
};

class ValTable : public testing::TestWithParam<ValCase> {};

TEST_P(ValTable, ReadsTheNearestDouble) {
  // Exact equality on purpose: Val must give the double nearest the decimal.
  EXPECT_EQ(Val(GetParam().text), GetParam().expected) << '"' << GetParam().text << '"';
  // The same number streaming by a byte at a time, as a long line brings it.
  NumberScanner scanner;
  for (const char c : std::string_view(GetParam().text)) scanner.Feed(std::string_view(&c, 1));
  EXPECT_EQ(scanner.Value(), GetParam().expected) << '"' << GetParam().text << '"';
}

INSTANTIATE_TEST_SUITE_P(
    Texts, ValTable,
    testing::Values(ValCase{"Empty", "", 0}, ValCase{"Whole", "204", 204}, ValCase{"Negative", "-35403.436", -35403.436},
                    ValCase{"Plus", "+12.5", 12.5}, ValCase{"TrailingJunk", "12abc", 12}, ValCase{"NoNumber", "abc", 0},
                    ValCase{"Weight", "0.2242", 0.2242}, ValCase{"LeadingBlank", " 204", 204},
                    ValCase{"LeadingTab", "\t-3.5", -3.5}, ValCase{"Exponent", "1.5E+3", 1500},
                    ValCase{"SmallExponent", "25e-1", 2.5}, ValCase{"ExponentWithoutDigits", "12e", 12},
                    ValCase{"ExponentSignOnly", "12e+x", 12}, ValCase{"Underflow", "1e-999", 0},
                    ValCase{"Inf", "inf", 0}, ValCase{"Nan", "nan", 0}, ValCase{"Hex", "0x1A", 0},
                    ValCase{"HexFloat", "0x1p3", 0}, ValCase{"DecimalComma", "204,5", 204},
                    ValCase{"LeadingPoint", ".5", 0.5}, ValCase{"TrailingPoint", "5.", 5}, ValCase{"PointAlone", ".", 0},
                    ValCase{"SignAlone", "-", 0}, ValCase{"DoubleSign", "--5", 0}, ValCase{"BlankAfterSign", "- 5", 0},
                    ValCase{"ManyDigits", "0.1000000000000000055511151231257827", 0.1}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(Val, OverflowGivesTheLargestFiniteDoubleWithItsSign) {
  const double max = std::numeric_limits<double>::max();
  EXPECT_EQ(Val("1e999"), max);
  EXPECT_EQ(Val("-1e999"), -max);
  EXPECT_EQ(Val("1.8e308"), max);  // just past the range
  EXPECT_EQ(Val("0.000001e99999999999999999999"), max);
  EXPECT_EQ(Val("123456789e-999999999999"), 0.0);
}

// Numbers far longer than any double needs. Val has the whole text; the
// scanner that reads a line streaming by keeps only the digits that decide
// the rounding, and the rest by whether they were all zeros. Both must give
// what the full text spells.
void ExpectRead(const std::string& text, double expected) {
  EXPECT_EQ(Val(text), expected) << text.substr(0, 40);
  NumberScanner scanner;
  for (std::size_t i = 0; i < text.size(); i += 1000) scanner.Feed(std::string_view(text).substr(i, 1000));
  EXPECT_EQ(scanner.Value(), expected) << text.substr(0, 40);
  EXPECT_EQ(Val(scanner.Canonical()), expected) << "stand-in of " << text.substr(0, 40);
}

TEST(Val, LongNumbersRoundAsTheirFullText) {
  const std::string zeros(5000, '0');
  // Exactly halfway between 1 and the next double: ties go to even (1), but
  // one non-zero digit thousands of places later tips it up.
  const std::string halfway = "1.00000000000000011102230246251565404236316680908203125";
  ExpectRead(halfway, 1.0);
  ExpectRead(halfway + zeros + "1", std::nextafter(1.0, 2.0));
  ExpectRead(halfway + zeros, 1.0);
  // The exponent behind a long run of digits still counts.
  ExpectRead("1" + zeros + "e-5000", 1.0);
  ExpectRead("0." + zeros + "25e5001", 2.5);
  ExpectRead("-" + zeros + "7.5", -7.5);
  ExpectRead("-1" + zeros, -std::numeric_limits<double>::max());  // overflow, however long
  // glibc's strtod reads any length exactly: it is the reference here.
  std::string digits;
  for (int i = 0; i < 3000; ++i) digits += static_cast<char>('0' + (i * 7 + 3) % 10);
  for (const std::string& text : {"0." + digits, digits.substr(0, 300) + "." + digits, digits.substr(0, 20) + "e-330",
                                  "4.9406564584124654e-324" + zeros + "1", "2.4703282292062327e-324" + zeros + "1"}) {
    ExpectRead(text, std::strtod(text.c_str(), nullptr));
  }
}

}  // namespace
}  // namespace drav
