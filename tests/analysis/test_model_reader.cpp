#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "analysis/model_reader.hpp"
#include "analysis/number_scanner.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

struct Model {
  std::string name;
  std::string aicText;
  double aic;
  bool operator==(const Model&) const = default;
};

void PrintTo(const Model& m, std::ostream* out) { *out << '{' << m.name << '|' << m.aicText << '|' << m.aic << '}'; }

struct FileCase {
  const char* name;
  std::string contents;
  std::vector<Model> rows;  // one per model asked for
};

// One line, followed by a line that must land in the next row.
FileCase Line(const char* name, const std::string& line, Model model) {
  return {name, line + "\nZ\t1\n", {std::move(model), {"Z", "1", 1}}};
}

class ReadModelsFrom : public testing::TestWithParam<FileCase> {};

TEST_P(ReadModelsFrom, FillsOneRowPerModel) {
  const auto count = static_cast<std::int32_t>(GetParam().rows.size());
  TextTable text(count, kTextColumns);
  NumberTable stat(count, kStatColumns);
  TextInputStream stream = testing_support::OpenAsRunDoes(GetParam().contents);
  ReadModels(stream, count, text, stat);
  std::vector<Model> rows;
  for (std::int32_t i = 1; i <= count; ++i) rows.push_back({text(i, kNameColumn), text(i, kAicTextColumn), stat(i, kAicColumn)});
  EXPECT_EQ(rows, GetParam().rows);
}

// Lines far longer than anything kept of them: the name is still cut to its
// eight characters, the value read in full and kept as the scanner's
// stand-in, and the next line found.
const std::size_t kHuge = 3 * TextInputStream::kChunkSize + 17;
const std::string kHugeLines = "\xC3\xA9" + std::string(kHuge, 'n') + "\t-1" + std::string(kHuge, '0') + "e-" +
                               std::to_string(kHuge) + "\t" + std::string(kHuge, 'x') + "\n" +
                               std::string(kHuge, 'm') + ",7.25\n" + "c," + std::string(kHuge, '9') + "\n";
const std::string kEightE = "\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9\xC3\xA9";

INSTANTIATE_TEST_SUITE_P(
    Files, ReadModelsFrom,
    testing::Values(
        Line("Tab", "A1\t204", {"A1", "204", 204}), Line("Comma", "A1,204", {"A1", "204", 204}),
        Line("LongName", "Model1234567\t70896.872", {"Model123", "70896.872", 70896.872}),
        Line("Negative", "A1\t-35.5", {"A1", "-35.5", -35.5}), Line("CommaInName", "A,1\t204", {"A", "1", 1}),
        Line("DecimalComma", "A1\t204,5", {"A1", "204", 204}), Line("TwoTabs", "A1\t\t204", {"A1", "", 0}),
        Line("BlankOnly", "A1 204", {"A1 204", "", 0}), Line("NoName", "\t204", {"", "204", 204}),
        Line("NotANumber", "A1\tabc", {"A1", "abc", 0}), Line("Empty", "", {"", "", 0}),
        Line("ThirdFieldIgnored", "A1\t204\tnote", {"A1", "204", 204}),
        Line("BlankAfterSeparator", "A1, 204", {"A1", " 204", 204}),
        Line("Exponent", "A1\t1.5E+3", {"A1", "1.5E+3", 1500}),
        Line("MultiByteName", kEightE + "\xC3\xA9\t3", {kEightE, "3", 3}),
        Line("HeaderIsAModel", "Model\tAIC", {"Model", "AIC", 0}),
        FileCase{"ShortFileLeavesEmptyRows", "A1\t204\nA2\t202", {{"A1", "204", 204}, {"A2", "202", 202}, {}, {}}},
        FileCase{"LinesBehindTheCountUnread", "A1\t204\nA2\t202\nA3\t1\n", {{"A1", "204", 204}, {"A2", "202", 202}}},
        FileCase{"EmptyLineShiftsTheRest", "A1\t204\n\nA2\t202\n", {{"A1", "204", 204}, {}, {"A2", "202", 202}}},
        FileCase{"CrLineEnds", "A1\t204\rA2,202\r", {{"A1", "204", 204}, {"A2", "202", 202}}},
        FileCase{"CrLfLineEnds", "A1\t204\r\nA2,202\r\n", {{"A1", "204", 204}, {"A2", "202", 202}}},
        FileCase{"HugeFields", kHugeLines,
                 {{"\xC3\xA9nnnnnnn", "-0.1" + std::string(NumberScanner::kMaxDigits - 1, '0') + "e1", -1}, {"mmmmmmmm", "7.25", 7.25},
                  {"c", "0." + std::string(NumberScanner::kMaxDigits, '9') + "1e" + std::to_string(kHuge),
                   std::numeric_limits<double>::max()}}}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav
