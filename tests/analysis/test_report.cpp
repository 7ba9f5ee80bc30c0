#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>

#include "analysis/report.hpp"
#include "analysis/text.hpp"
#include "tests/analysis/scripted_host.hpp"

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
// ER cell 20; a text longer than its cell is cut, and no blank follows it.
const std::string kEmptyNameZeros = Blanks(20) + "+0.0" + Blanks(17) + "0.0" + Blanks(19);
const std::string kOnes = "1.0" + Blanks(17) + "1.0" + Blanks(17);
const std::string kZeroDiffAndOnes = "0.0" + Blanks(19) + kOnes;

INSTANTIATE_TEST_SUITE_P(
    Cells, ReportRowOf,
    testing::Values(
        RowCase{"WorkedA1", "A1", 204, 2, 0.22417610841353866, 2.7182818284590455,
                "A1" + Blanks(16) + "+204.0" + Blanks(13) + "2.0" + Blanks(19) + "0.2242" + Blanks(11) + "2.72" +
                    Blanks(16)},
        RowCase{"WorkedC1", "C1", 214, 12, 0.0015104867369516613, 403.4287934927351,
                "C1" + Blanks(16) + "+214.0" + Blanks(13) + "12.0" + Blanks(17) + "0.0015" + Blanks(11) + "403.43" +
                    Blanks(14)},
        RowCase{"EmptyName", "", 0, 0, 1, 1, kEmptyNameZeros + kOnes},
        RowCase{"EightCharacterName", "Model123", 1, 0, 1, 1, "Model123" + Blanks(4) + "+1.0" + Blanks(17) + kZeroDiffAndOnes},
        RowCase{"NegativeAic", "lin", -35403.436, 0, 1, 1, "lin" + Blanks(14) + "-35403.436" + Blanks(5) + kZeroDiffAndOnes},
        RowCase{"ThirteenCharactersLoseOne", "A", 1234567.1234, 0, 1, 1, "A" + Blanks(18) + "+1234567.123" + kZeroDiffAndOnes},
        RowCase{"FifteenLoseFive", "A", 123456789.1234, 0, 1, 1, "A" + Blanks(18) + "+123456789" + kZeroDiffAndOnes},
        RowCase{"TwentyFiveOrMoreLeaveNothing", "A", 1e24, 0, 1, 1, "A" + Blanks(18) + kZeroDiffAndOnes},
        // Both thresholds judge the printed text, not the number.
        RowCase{"WeightPrintedAsZero", "", 0, 0, 0.00004, 1, kEmptyNameZeros + "<.0001" + Blanks(11) + "1.0" + Blanks(17)},
        RowCase{"WeightPrintedAsLimit", "", 0, 0, 0.00005, 1, kEmptyNameZeros + "0.0001" + Blanks(11) + "1.0" + Blanks(17)},
        RowCase{"RatioPrintedAsLimit", "", 0, 0, 1, 99999.004, kEmptyNameZeros + "1.0" + Blanks(17) + "99999.0" + Blanks(13)},
        RowCase{"RatioPrintedAbove", "", 0, 0, 1, 99999.006, kEmptyNameZeros + "1.0" + Blanks(17) + ">99999" + Blanks(14)},
        RowCase{"InfiniteRatio", "", 0, 0, 1, std::numeric_limits<double>::infinity(),
                kEmptyNameZeros + "1.0" + Blanks(17) + ">99999" + Blanks(14)}),
    [](const auto& info) { return std::string(info.param.label); });

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

struct GoldenCase {
  const char* example;
  const char* count;
  const char* golden;
};

void PrintTo(const GoldenCase& c, std::ostream* out) { *out << c.example << " with count " << c.count; }

class GoldenReport : public testing::TestWithParam<GoldenCase> {};

// The whole text a run appends, heading and foot included, as a window shows it.
TEST_P(GoldenReport, MatchesWholeText) {
  const GoldenCase& c = GetParam();
  testing_support::ScriptedHost host;
  host.window.count = c.count;
  host.dialog.answer = FolderItem(std::string(DRAV_SOURCE_DIR) + "/examples/" + c.example);
  ASSERT_EQ(host.Run(), RunOutcome::Reported);
  // Golden files hold LF line ends.
  EXPECT_EQ(ReplaceAll(host.window.results, "\r", "\n"),
            ReadFile(std::string(DRAV_SOURCE_DIR) + "/tests/golden/" + c.golden));
}

INSTANTIATE_TEST_SUITE_P(
    Examples, GoldenReport,
    testing::Values(GoldenCase{"five-models.txt", "5", "five-models.report"},
                    GoldenCase{"cr-line-ends.txt", "5", "cr-line-ends.report"},
                    GoldenCase{"negative-aic.txt", "6", "negative-aic.report"},
                    GoldenCase{"comma-separated.csv", "5", "comma-separated.report"},
                    GoldenCase{"with-header.txt", "5", "with-header.report"},
                    GoldenCase{"ninety-nine-models.txt", "99", "ninety-nine-models.report"}),
    [](const auto& info) {
      std::string name = info.param.golden;
      std::erase(name, '-');
      return name.substr(0, name.find('.'));
    });

}  // namespace
}  // namespace drav
