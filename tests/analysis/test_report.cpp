#include <gtest/gtest.h>

#include <fstream>
#include <limits>
#include <sstream>

#include "analysis/report.hpp"
#include "analysis/text.hpp"
#include "tests/analysis/scripted_host.hpp"

namespace drav {
namespace {

using testing_support::ScriptedHost;
using testing_support::WithLf;

std::string Blanks(int n) { return std::string(static_cast<std::size_t>(n), ' '); }

TEST(ReportRow, WorkedExampleCellsAndWidths) {
  struct Row {
    const char* name;
    double aic, diff, weight, ratio;
    std::string expected;
  };
  const Row rows[] = {
      {"A1", 204, 2, 0.22417610841353866, 2.7182818284590455,
       "A1" + Blanks(16) + "+204.0" + Blanks(13) + "2.0" + Blanks(19) + "0.2242" + Blanks(11) + "2.72" + Blanks(16)},
      {"A2", 202, 0, 0.6093738418751871, 1.0,
       "A2" + Blanks(16) + "+202.0" + Blanks(13) + "0.0" + Blanks(19) + "0.6094" + Blanks(11) + "1.0" + Blanks(17)},
      {"B1", 206, 4, 0.08246978148716128, 7.38905609893065,
       "B1" + Blanks(16) + "+206.0" + Blanks(13) + "4.0" + Blanks(19) + "0.0825" + Blanks(11) + "7.39" + Blanks(16)},
      {"C1", 214, 12, 0.0015104867369516613, 403.4287934927351,
       "C1" + Blanks(16) + "+214.0" + Blanks(13) + "12.0" + Blanks(17) + "0.0015" + Blanks(11) + "403.43" + Blanks(14)},
  };
  for (const Row& r : rows) {
    const std::string row = ReportRow(r.name, r.aic, r.diff, r.weight, r.ratio);
    EXPECT_EQ(row, r.expected) << r.name;
  }
  EXPECT_EQ(Len(ReportRow("A1", 204, 2, 0.22417610841353866, 2.7182818284590455)), 96);
  EXPECT_EQ(Len(ReportRow("C1", 214, 12, 0.0015104867369516613, 403.4287934927351)), 95);
}

TEST(ReportRow, EmptyNameIsTwentyBlanks) {
  EXPECT_EQ(ReportRow("", 0, 0, 1, 1).substr(0, 21), Blanks(20) + "+");
}

TEST(ReportRow, EightCharacterNameLeavesFourBlanks) {
  EXPECT_EQ(ReportRow("Model123", 1, 0, 1, 1).substr(0, 13), "Model123" + Blanks(4) + "+");
}

TEST(ReportRow, LongNumberTextsAreCut) {
  // 13 characters lose one, 15 lose five, and no blank follows either.
  const std::string row = ReportRow("A", 1234567.1234, 0, 1, 1);
  EXPECT_EQ(row.substr(19, 13), "+1234567.123" "0");
  EXPECT_EQ(ReportRow("A", 123456789.1234, 0, 1, 1).substr(19, 11), "+123456789" "0");
  // An AIC of 25 or more characters leaves its cell empty.
  EXPECT_EQ(ReportRow("A", 1e24, 0, 1, 1).substr(19, 3), "0.0");
}

TEST(ReportRow, ThresholdsJudgeThePrintedText) {
  auto weightCell = [](double w) { return ReportRow("", 0, 0, w, 1).substr(20 + 21 + 22, 6); };
  EXPECT_EQ(weightCell(0.0), "<.0001");
  EXPECT_EQ(weightCell(0.00004), "<.0001");
  EXPECT_EQ(weightCell(0.00005), "0.0001");
  EXPECT_EQ(weightCell(0.00006), "0.0001");
  // "<.0001" has six characters, so its cell is 23 - 6 wide.
  EXPECT_EQ(Len(ReportRow("", 0, 0, 0.0, 1)), 20 + 21 + 22 + 17 + 20);

  auto ratioCell = [](double er) { return ReportRow("", 0, 0, 1, er).substr(20 + 21 + 22 + 20); };
  EXPECT_EQ(ratioCell(99999.0), "99999.0" + Blanks(13));
  EXPECT_EQ(ratioCell(99999.004), "99999.0" + Blanks(13));
  EXPECT_EQ(ratioCell(99999.006), ">99999" + Blanks(14));
  EXPECT_EQ(ratioCell(7.2e10), ">99999" + Blanks(14));
  EXPECT_EQ(ratioCell(std::numeric_limits<double>::infinity()), ">99999" + Blanks(14));
}

TEST(ReportRow, NegativeAicPrintsItsMinus) {
  EXPECT_EQ(ReportRow("lin", -35403.436, 0, 1, 1).substr(0, 30), "lin" + Blanks(14) + "-35403.436" + Blanks(3));
}

std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::string ReportOf(const char* example, const char* count) {
  ScriptedHost host;
  host.window.count = count;
  host.dialog.answer = FolderItem(std::string(DRAV_SOURCE_DIR) + "/examples/" + example);
  EXPECT_EQ(host.Run(), RunOutcome::Reported) << example;
  return WithLf(host.window.results);
}

struct GoldenCase {
  const char* example;
  const char* count;
  const char* golden;
};

void PrintTo(const GoldenCase& c, std::ostream* out) { *out << c.example << " with count " << c.count; }

class GoldenReport : public testing::TestWithParam<GoldenCase> {};

TEST_P(GoldenReport, MatchesWholeText) {
  const GoldenCase& c = GetParam();
  EXPECT_EQ(ReportOf(c.example, c.count),
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

TEST(ComposeReport, HasTwelvePlusNLinesAndTheFixedLines) {
  const std::string report = ReportOf("five-models.txt", "5");
  std::istringstream lines(report);
  std::vector<std::string> all;
  for (std::string line; std::getline(lines, line);) all.push_back(line);
  ASSERT_EQ(all.size(), 12u + 5u);
  EXPECT_EQ(all[0], "Date: 11/22/26  9:58 PM");
  EXPECT_EQ(all[1], "File: five-models.txt");
  EXPECT_EQ(all[2], "");
  EXPECT_EQ(all[3], std::string(50, '='));
  EXPECT_EQ(all[4], "Model" + Blanks(15) + " AIC" + Blanks(16) + "Drav" + Blanks(16) + "weight" + Blanks(14) + "ER" +
                        Blanks(18));
  EXPECT_EQ(all[5], all[3]);
  EXPECT_EQ(all[11], all[3]);
  EXPECT_EQ(all[12], "");
  EXPECT_EQ(all[13], "");
  EXPECT_EQ(all[14], CreditLine);
  EXPECT_EQ(CreditLine.substr(0, 2), "  ");
  EXPECT_EQ(all[15], "");
  EXPECT_EQ(all[16], "");
}

}  // namespace
}  // namespace drav
