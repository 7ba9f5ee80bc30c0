#include <gtest/gtest.h>

#include <algorithm>

#include "analysis/end_of_line.hpp"
#include "analysis/runtime_exception.hpp"
#include "tests/analysis/scripted_host.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

using testing_support::TempFile;

const std::string kMissingMessage = std::string(kCountMissingMessage) + EndOfLine::Platform();
const std::string kInvalidMessage = std::string(kCountInvalidMessage) + EndOfLine::Platform();

// A host whose window already shows an earlier report, hidden, and whose
// dialog answers with `file` (or is cancelled).
struct Press : testing_support::ScriptedHost {
  Press(const std::string& count, std::optional<std::filesystem::path> file) {
    window.count = count;
    window.results = "earlier report";
    if (file) dialog.answer = FolderItem(*file);
  }
};

// The window as a press left it that did not report.
void ExpectUntouched(const Press& press, int focusCalls) {
  EXPECT_EQ(press.window.results, "earlier report");
  EXPECT_FALSE(press.window.resultsVisible);
  EXPECT_EQ(press.window.focusCalls, focusCalls);
}

struct CountCase {
  const char* count;
  RunOutcome outcome;
  int reportRows;  // models in the report when there is one
};

class Count : public testing::TestWithParam<CountCase> {};

// Both limits are judged on the full value, which is then truncated; the
// field keeps whatever was typed.
TEST_P(Count, IsCheckedBeforeTheDialog) {
  const CountCase& c = GetParam();
  const TempFile file("A1\t204\nA2\t202\nB1\t206\n");
  Press press(c.count, file.Path());
  ASSERT_EQ(press.Run(), c.outcome);
  EXPECT_EQ(press.window.count, c.count);
  if (c.outcome == RunOutcome::Reported) {
    EXPECT_EQ(press.dialog.shown, 1);
    EXPECT_TRUE(press.alert.messages.empty());
    EXPECT_EQ(std::ranges::count(press.window.results, EndOfLine::Build().back()), 12 + c.reportRows);
    return;
  }
  EXPECT_EQ(press.dialog.shown, 0);
  EXPECT_EQ(press.alert.messages,
            std::vector<std::string>{c.outcome == RunOutcome::CountMissing ? kMissingMessage : kInvalidMessage});
  ExpectUntouched(press, 1);
}

INSTANTIATE_TEST_SUITE_P(
    Table, Count,
    testing::Values(CountCase{"", RunOutcome::CountMissing, 0}, CountCase{" ", RunOutcome::CountInvalid, 0},
                    CountCase{"abc", RunOutcome::CountInvalid, 0}, CountCase{"-5", RunOutcome::CountInvalid, 0},
                    CountCase{"0", RunOutcome::CountInvalid, 0}, CountCase{"1", RunOutcome::CountInvalid, 0},
                    CountCase{"1.9", RunOutcome::CountInvalid, 0}, CountCase{"2", RunOutcome::Reported, 2},
                    CountCase{"2.5", RunOutcome::Reported, 2}, CountCase{"02", RunOutcome::Reported, 2},
                    CountCase{"3abc", RunOutcome::Reported, 3}, CountCase{"99", RunOutcome::Reported, 99},
                    CountCase{"99.5", RunOutcome::CountInvalid, 0}, CountCase{"100", RunOutcome::CountInvalid, 0}),
    // The count as typed, spelled in the letters a test name may hold.
    [](const testing::TestParamInfo<CountCase>& info) {
      std::string name = *info.param.count == '\0' ? "none" : "typed_";
      for (const char* c = info.param.count; *c != '\0'; ++c) {
        name += *c == ' ' ? "blank" : *c == '-' ? "minus" : *c == '.' ? "point" : std::string(1, *c);
      }
      return name;
    });

TEST(FileChoice, CancelOrAVanishedFileEndsSilently) {
  std::filesystem::path vanished;
  {
    const TempFile file("A1\t204\nA2\t202\n");
    vanished = file.Path();
  }
  for (const auto& answer : {std::optional<std::filesystem::path>(), std::optional(vanished)}) {
    Press press("2", answer);
    EXPECT_EQ(press.Run(), RunOutcome::NoFile);
    EXPECT_TRUE(press.alert.messages.empty());
    ExpectUntouched(press, 0);
  }
}

TEST(FileChoice, UnreadableFileThrowsAndLeavesTheWindowAlone) {
  const TempFile file("");
  Press press("2", file.Folder());  // a folder exists but cannot be read
  EXPECT_THROW(press.Run(), IOException);
  EXPECT_TRUE(press.alert.messages.empty());
  ExpectUntouched(press, 0);
}

TEST(LowestAic, MissingLowestShowsTheMessageAndLeavesTheAreaAlone) {
  const TempFile file("A\t99999999999\nB\t1e12\n");
  Press press("2", file.Path());
  EXPECT_EQ(press.Run(), RunOutcome::NoLowestAIC);
  EXPECT_EQ(press.alert.messages, std::vector<std::string>{kNoLowestAICMessage});
  ExpectUntouched(press, 1);
}

// The report one press gives behind the earlier text.
std::string ReportOf(const std::string& count, const std::filesystem::path& file) {
  Press press(count, file);
  EXPECT_EQ(press.Run(), RunOutcome::Reported);
  return press.window.results.substr(std::string("earlier report").size());
}

TEST(Report, EachRunAppendsItsReportAndShowsTheArea) {
  const TempFile first("A1\t204\nA2\t202\nB1\t206\n", "first.txt");
  const TempFile second("X\t1\nY\t3\n", "second.txt");
  Press press("3", first.Path());
  ASSERT_EQ(press.Run(), RunOutcome::Reported);
  press.window.count = "2";
  press.dialog.answer = FolderItem(second.Path());
  ASSERT_EQ(press.Run(), RunOutcome::Reported);
  EXPECT_TRUE(press.window.resultsVisible);
  EXPECT_EQ(press.window.focusCalls, 0);
  EXPECT_EQ(press.window.results, "earlier report" + ReportOf("3", first.Path()) + ReportOf("2", second.Path()));
}

}  // namespace
}  // namespace drav
