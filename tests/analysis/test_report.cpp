#include <gtest/gtest.h>

#include <limits>

#include "analysis/report.hpp"

namespace drav {
namespace {

std::string Blanks(int n) { return std::string(static_cast<std::size_t>(n), ' '); }

struct RowCase {
  const char* label;
  const char* name;
  double aic, diff, weight, ratio;
  std::string expected;
};

class ReportRowOf : public testing::TestWithParam<RowCase> {};

TEST_P(ReportRowOf, IsExactly) {
  const RowCase& c = GetParam();
  EXPECT_EQ(ReportRow(c.name, c.aic, c.diff, c.weight, c.ratio), c.expected);
}

// Cells 1 to 4 are their constant (20, 25, 25, 23) less their text wide, the
// ER cell 20. Whole reports, cut cells among them, are the classic goldens'
// (tests/golden/classic.batch); here the thresholds, at their edges.
const std::string kEmptyNameZeros = Blanks(20) + "+0.0" + Blanks(17) + "0.0" + Blanks(19);
const std::string kOnes = "1.0" + Blanks(17) + "1.0" + Blanks(17);

INSTANTIATE_TEST_SUITE_P(
    Cells, ReportRowOf,
    testing::Values(
        RowCase{"EmptyName", "", 0, 0, 1, 1, kEmptyNameZeros + kOnes},
        // Both thresholds judge the printed text, not the number.
        RowCase{"WeightPrintedAsZero", "", 0, 0, 0.00004, 1, kEmptyNameZeros + "<.0001" + Blanks(11) + "1.0" + Blanks(17)},
        RowCase{"WeightPrintedAsLimit", "", 0, 0, 0.00005, 1, kEmptyNameZeros + "0.0001" + Blanks(11) + "1.0" + Blanks(17)},
        RowCase{"RatioPrintedAsLimit", "", 0, 0, 1, 99999.004, kEmptyNameZeros + "1.0" + Blanks(17) + "99999.0" + Blanks(13)},
        RowCase{"RatioPrintedAbove", "", 0, 0, 1, 99999.006, kEmptyNameZeros + "1.0" + Blanks(17) + ">99999" + Blanks(14)},
        RowCase{"InfiniteRatio", "", 0, 0, 1, std::numeric_limits<double>::infinity(),
                kEmptyNameZeros + "1.0" + Blanks(17) + ">99999" + Blanks(14)}),
    [](const auto& info) { return std::string(info.param.label); });

}  // namespace
}  // namespace drav
