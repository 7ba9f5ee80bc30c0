#include <gtest/gtest.h>

#include <limits>

#include "analysis/format.hpp"

namespace drav {
namespace {

// The report's four masks, and one without an integer zero.
const char* const kAic = "+########0.0###";
const char* const kDifference = "#######0.0###";
const char* const kWeight = "0.0###";
const char* const kRatio = "#####0.0#";

struct FormatCase {
  const char* name;
  const char* mask;
  double input;
  const char* text;
};

class FormatWith : public testing::TestWithParam<FormatCase> {};

// One process, many masks: each call must use its own mask, however they follow each other.
TEST_P(FormatWith, Prints) { EXPECT_EQ(Format(GetParam().input, GetParam().mask), GetParam().text); }

constexpr double kInf = std::numeric_limits<double>::infinity();
const char* const kLargestDouble =
    "+17976931348623157081452742373170435679807056752584499659891747680315726078002853876058955863276687817154045"
    "8953514382464234321326889464182768467546703537516986049910576551282076245490090389328944075868508455133942"
    "304583236903222948165808559332123348274797826204144723168738177180919299881250404026184124858368.0";

INSTANTIATE_TEST_SUITE_P(
    Masks, FormatWith,
    testing::Values(
        FormatCase{"AicWhole", kAic, 204, "+204.0"}, FormatCase{"AicZero", kAic, 0, "+0.0"},
        FormatCase{"AicNegativeFraction", kAic, -35403.436, "-35403.436"},
        FormatCase{"AicFraction", kAic, 70896.872, "+70896.872"}, FormatCase{"AicRounds", kAic, 0.12345, "+0.1235"},
        FormatCase{"AicCarryIntoInteger", kAic, 999999999.99999, "+1000000000.0"},
        FormatCase{"AicMoreDigitsThanPlaces", kAic, 123456789012.5, "+123456789012.5"},
        FormatCase{"AicNegativeRoundsToZero", kAic, -0.00001, "+0.0"},
        FormatCase{"AicNegativeZero", kAic, -0.0, "+0.0"},
        FormatCase{"AicLargestDouble", kAic, std::numeric_limits<double>::max(), kLargestDouble},
        FormatCase{"AicInfinity", kAic, kInf, "+INF"}, FormatCase{"AicMinusInfinity", kAic, -kInf, "-INF"},
        FormatCase{"DifferenceHalf", kDifference, 0.5, "0.5"},
        FormatCase{"DifferenceRounds", kDifference, 1.23456, "1.2346"},
        FormatCase{"DifferenceDropsZeros", kDifference, 2.00001, "2.0"},
        FormatCase{"DifferenceRoundsDown", kDifference, 0.00004, "0.0"},
        FormatCase{"DifferenceRoundsUp", kDifference, 0.00005, "0.0001"},
        FormatCase{"DifferenceMillion", kDifference, 1000000, "1000000.0"},
        FormatCase{"WeightFourPlaces", kWeight, 0.2241761084, "0.2242"}, FormatCase{"WeightOne", kWeight, 1, "1.0"},
        FormatCase{"WeightQuarter", kWeight, 0.25, "0.25"}, FormatCase{"WeightCarriesToOne", kWeight, 0.99999, "1.0"},
        FormatCase{"WeightFiveE5", kWeight, 0.00005, "0.0001"}, FormatCase{"WeightFourE5", kWeight, 0.00004, "0.0"},
        FormatCase{"WeightNan", kWeight, std::numeric_limits<double>::quiet_NaN(), "NAN"},
        FormatCase{"RatioE", kRatio, 2.7182818285, "2.72"}, FormatCase{"RatioOne", kRatio, 1, "1.0"},
        FormatCase{"RatioBelowHalfCent", kRatio, 1.004, "1.0"},
        // 1.005 is stored a little below 1.005: judged on the exact value.
        FormatCase{"RatioStoredBelowTie", kRatio, 1.005, "1.0"},
        FormatCase{"RatioAboveHalfCent", kRatio, 1.006, "1.01"},
        FormatCase{"RatioJustBelowLimit", kRatio, 99999.004, "99999.0"},
        FormatCase{"RatioJustAboveLimit", kRatio, 99999.006, "99999.01"},
        FormatCase{"RatioHuge", kRatio, 72004899337.38588, "72004899337.39"},
        FormatCase{"RatioInfinity", kRatio, kInf, "INF"},
        FormatCase{"NoIntegerZeroLeavesOutALoneZero", "#.##", 0.5, ".5"},
        FormatCase{"NoIntegerZeroKeepsOtherDigits", "#.##", 10.5, "10.5"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav
