#include <gtest/gtest.h>

#include <limits>

#include "analysis/format.hpp"
#include "analysis/text.hpp"

namespace drav {
namespace {

struct FormatCase {
  const char* name;
  double input;
  const char* text;
};

const char* const kAicMask = "+########0.0###";
const char* const kDifferenceMask = "#######0.0###";
const char* const kWeightMask = "0.0###";
const char* const kRatioMask = "#####0.0#";

std::string RowName(const testing::TestParamInfo<FormatCase>& info) { return info.param.name; }

class AicMask : public testing::TestWithParam<FormatCase> {};
TEST_P(AicMask, Prints) { EXPECT_EQ(Format(GetParam().input, kAicMask), GetParam().text); }
INSTANTIATE_TEST_SUITE_P(
    Table, AicMask,
    testing::Values(FormatCase{"A204", 204, "+204.0"}, FormatCase{"A202", 202, "+202.0"},
                    FormatCase{"A206", 206, "+206.0"}, FormatCase{"A214", 214, "+214.0"},
                    FormatCase{"Zero", 0, "+0.0"}, FormatCase{"Negative", -204, "-204.0"},
                    FormatCase{"NegativeFraction", -35403.436, "-35403.436"},
                    FormatCase{"Fraction", 70896.872, "+70896.872"}, FormatCase{"Rounds", 0.12345, "+0.1235"},
                    FormatCase{"Million", 1234567.5, "+1234567.5"},
                    FormatCase{"CarryIntoInteger", 999999999.99999, "+1000000000.0"},
                    FormatCase{"MoreDigitsThanPlaces", 123456789012.5, "+123456789012.5"},
                    FormatCase{"NegativeRoundsToZero", -0.00001, "+0.0"},
                    FormatCase{"NegativeZero", -0.0, "+0.0"}),
    RowName);

class DifferenceMask : public testing::TestWithParam<FormatCase> {};
TEST_P(DifferenceMask, Prints) { EXPECT_EQ(Format(GetParam().input, kDifferenceMask), GetParam().text); }
INSTANTIATE_TEST_SUITE_P(
    Table, DifferenceMask,
    testing::Values(FormatCase{"Two", 2, "2.0"}, FormatCase{"Zero", 0, "0.0"}, FormatCase{"Four", 4, "4.0"},
                    FormatCase{"Twelve", 12, "12.0"}, FormatCase{"Half", 0.5, "0.5"},
                    FormatCase{"Rounds", 1.23456, "1.2346"}, FormatCase{"DropsZeros", 2.00001, "2.0"},
                    FormatCase{"RoundsDown", 0.00004, "0.0"}, FormatCase{"RoundsUp", 0.00005, "0.0001"},
                    FormatCase{"Million", 1000000, "1000000.0"}),
    RowName);

class WeightMask : public testing::TestWithParam<FormatCase> {};
TEST_P(WeightMask, Prints) { EXPECT_EQ(Format(GetParam().input, kWeightMask), GetParam().text); }
INSTANTIATE_TEST_SUITE_P(
    Table, WeightMask,
    testing::Values(FormatCase{"A1", 0.2241761084, "0.2242"}, FormatCase{"A2", 0.6093738419, "0.6094"},
                    FormatCase{"B1", 0.0824697815, "0.0825"}, FormatCase{"C1", 0.0015104867, "0.0015"},
                    FormatCase{"One", 1, "1.0"}, FormatCase{"Half", 0.5, "0.5"}, FormatCase{"Quarter", 0.25, "0.25"},
                    FormatCase{"CarriesToOne", 0.99999, "1.0"}, FormatCase{"SixE5", 0.00006, "0.0001"},
                    FormatCase{"FiveE5", 0.00005, "0.0001"}, FormatCase{"FourE5", 0.00004, "0.0"},
                    FormatCase{"KeepsFourPlaces", 0.123456, "0.1235"}),
    RowName);

class RatioMask : public testing::TestWithParam<FormatCase> {};
TEST_P(RatioMask, Prints) { EXPECT_EQ(Format(GetParam().input, kRatioMask), GetParam().text); }
INSTANTIATE_TEST_SUITE_P(
    Table, RatioMask,
    testing::Values(FormatCase{"E", 2.7182818285, "2.72"}, FormatCase{"One", 1, "1.0"},
                    FormatCase{"ESquared", 7.3890560989, "7.39"}, FormatCase{"Big", 403.4287934927, "403.43"},
                    FormatCase{"OneAndHalf", 1.5, "1.5"}, FormatCase{"BelowHalfCent", 1.004, "1.0"},
                    // 1.005 is stored a little below 1.005: judged on the exact value.
                    FormatCase{"StoredBelowTie", 1.005, "1.0"}, FormatCase{"AboveHalfCent", 1.006, "1.01"},
                    FormatCase{"Limit", 99999, "99999.0"}, FormatCase{"JustBelowLimit", 99999.004, "99999.0"},
                    FormatCase{"JustAboveLimit", 99999.006, "99999.01"}, FormatCase{"HundredThousand", 100000, "100000.0"},
                    FormatCase{"Huge", 72004899337.38588, "72004899337.39"},
                    FormatCase{"SevenIntegerDigits", 1000000, "1000000.0"}),
    RowName);

TEST(Format, NonFiniteNumbersPrintAsWords) {
  const double inf = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Format(inf, kRatioMask), "INF");
  EXPECT_EQ(Format(inf, kAicMask), "+INF");
  EXPECT_EQ(Format(-inf, kAicMask), "-INF");
  EXPECT_EQ(Format(std::numeric_limits<double>::quiet_NaN(), kWeightMask), "NAN");
}

TEST(Format, LargestDoublePrintsEveryIntegerDigit) {
  const std::string text = Format(std::numeric_limits<double>::max(), kAicMask);
  EXPECT_EQ(text.substr(0, 4), "+179");
  EXPECT_EQ(text.size(), 1 + 309 + 2u);  // sign, 309 digits, ".0"
}

TEST(Format, MaskWithoutIntegerZeroLeavesOutALoneZero) {
  EXPECT_EQ(Format(0.5, "#.##"), ".5");
  EXPECT_EQ(Format(10.5, "#.##"), "10.5");
}

}  // namespace
}  // namespace drav
