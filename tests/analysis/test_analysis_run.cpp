#include <gtest/gtest.h>

#include "analysis/runtime_exception.hpp"
#include "tests/analysis/scripted_host.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

using testing_support::TempFile;

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

// Which counts are refused, with which message, is the classic goldens'
// (tests/golden/classic.batch); what a refusal does to the window, the
// windows' fault tests'. Here what only the run itself can be handed: a
// file that is gone by the time it is read.
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
  press.window.count = std::string(1, '2');  // not = "2", which GCC 12 at -O3 warns of wrongly (-Wrestrict)
  press.dialog.answer = FolderItem(second.Path());
  ASSERT_EQ(press.Run(), RunOutcome::Reported);
  EXPECT_TRUE(press.window.resultsVisible);
  EXPECT_EQ(press.window.focusCalls, 0);
  EXPECT_EQ(press.dialog.shown, 2);
  EXPECT_TRUE(press.alert.messages.empty());
  EXPECT_EQ(press.window.results, "earlier report" + ReportOf("3", first.Path()) + ReportOf("2", second.Path()));
}

}  // namespace
}  // namespace drav
