#include <gtest/gtest.h>

#include "analysis/end_of_line.hpp"
#include "analysis/runtime_exception.hpp"
#include "tests/analysis/scripted_host.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

using testing_support::ScriptedHost;
using testing_support::TempFile;

const std::string kFiveModels = "A1\t204\nA2\t202\nB1\t206\nB2\t206\nC1\t214\n";
const std::string kMissingMessage = std::string(kCountMissingMessage) + EndOfLine::Platform();
const std::string kInvalidMessage = std::string(kCountInvalidMessage) + EndOfLine::Platform();

TEST(CountValidation, EmptyFieldAsksForTheNumber) {
  ScriptedHost host;
  EXPECT_EQ(host.Run(), RunOutcome::CountMissing);
  EXPECT_EQ(host.alert.messages, std::vector<std::string>{kMissingMessage});
  EXPECT_EQ(host.window.focusCalls, 1);
  EXPECT_EQ(host.dialog.shown, 0);
  EXPECT_FALSE(host.window.resultsVisible);
}

TEST(CountValidation, OutOfRangeCountsAskForAValidNumber) {
  for (const char* count : {"0", "1", "100", "abc", "99.5", "1.9", "-5", " "}) {
    ScriptedHost host;
    host.window.count = count;
    host.window.results = "old report";
    host.window.resultsVisible = true;
    EXPECT_EQ(host.Run(), RunOutcome::CountInvalid) << count;
    EXPECT_EQ(host.alert.messages, std::vector<std::string>{kInvalidMessage}) << count;
    EXPECT_EQ(host.window.focusCalls, 1) << count;
    EXPECT_EQ(host.dialog.shown, 0) << count;
    EXPECT_EQ(host.window.count, count);  // the field keeps its bad text
    EXPECT_EQ(host.window.results, "old report");
    EXPECT_TRUE(host.window.resultsVisible);
  }
}

TEST(CountValidation, LimitsAndFractionsOpenTheDialog) {
  for (const char* count : {"2", "99", "2.5", "02"}) {
    ScriptedHost host;
    host.window.count = count;
    EXPECT_EQ(host.Run(), RunOutcome::NoFile) << count;
    EXPECT_EQ(host.dialog.shown, 1) << count;
    EXPECT_TRUE(host.alert.messages.empty()) << count;
  }
}

TEST(FractionalCount, TruncatesTowardZero) {
  TempFile file(kFiveModels);
  ScriptedHost host;
  host.window.count = "2.5";
  host.dialog.answer = FolderItem(file.Path());
  ASSERT_EQ(host.Run(), RunOutcome::Reported);
  EXPECT_NE(host.window.results.find("A2"), std::string::npos);
  EXPECT_EQ(host.window.results.find("B1"), std::string::npos);
}

TEST(FileChoice, CancelChangesNothing) {
  ScriptedHost host;
  host.window.count = "5";
  EXPECT_EQ(host.Run(), RunOutcome::NoFile);
  EXPECT_FALSE(host.window.resultsVisible);  // the very first run stays hidden
  EXPECT_EQ(host.window.focusCalls, 0);
  EXPECT_TRUE(host.alert.messages.empty());

  host.window.results = "earlier report";
  host.window.resultsVisible = true;
  EXPECT_EQ(host.Run(), RunOutcome::NoFile);
  EXPECT_EQ(host.window.results, "earlier report");
  EXPECT_TRUE(host.window.resultsVisible);
}

TEST(FileChoice, VanishedFileEndsSilently) {
  ScriptedHost host;
  host.window.count = "5";
  {
    TempFile file(kFiveModels);
    host.dialog.answer = FolderItem(file.Path());
  }
  EXPECT_EQ(host.Run(), RunOutcome::NoFile);
  EXPECT_TRUE(host.alert.messages.empty());
  EXPECT_FALSE(host.window.resultsVisible);
}

TEST(FileChoice, UnreadableFileThrowsAndLeavesTheWindowAlone) {
  TempFile file("");
  ScriptedHost host;
  host.window.count = "5";
  host.window.results = "earlier report";
  host.dialog.answer = FolderItem(file.Folder());  // a folder exists but cannot be read
  EXPECT_THROW(host.Run(), IOException);
  EXPECT_EQ(host.window.results, "earlier report");
  EXPECT_FALSE(host.window.resultsVisible);
  EXPECT_TRUE(host.alert.messages.empty());
}

TEST(LowestAic, MissingLowestShowsTheMessageAndLeavesTheAreaAlone) {
  TempFile file("A\t99999999999\nB\t1e12\n");
  ScriptedHost host;
  host.window.count = "2";
  host.dialog.answer = FolderItem(file.Path());
  EXPECT_EQ(host.Run(), RunOutcome::NoLowestAIC);
  EXPECT_EQ(host.alert.messages, std::vector<std::string>{kNoLowestAICMessage});
  EXPECT_EQ(host.window.focusCalls, 1);
  EXPECT_FALSE(host.window.resultsVisible);
  EXPECT_EQ(host.window.results, "");

  host.window.results = "old";
  host.window.resultsVisible = true;
  EXPECT_EQ(host.Run(), RunOutcome::NoLowestAIC);
  EXPECT_EQ(host.window.results, "old");
  EXPECT_TRUE(host.window.resultsVisible);
}

TEST(Report, SecondRunAppendsBehindTheFirst) {
  TempFile first(kFiveModels, "first.txt");
  TempFile second("X\t1\nY\t3\n", "second.txt");
  ScriptedHost host;
  host.window.count = "5";
  host.dialog.answer = FolderItem(first.Path());
  ASSERT_EQ(host.Run(), RunOutcome::Reported);
  EXPECT_TRUE(host.window.resultsVisible);
  EXPECT_EQ(host.window.focusCalls, 0);
  const std::string firstReport = host.window.results;
  EXPECT_EQ(firstReport.rfind("Date: ", 0), 0u);  // starts at the top

  host.window.count = "2";
  host.dialog.answer = FolderItem(second.Path());
  ASSERT_EQ(host.Run(), RunOutcome::Reported);
  ASSERT_GT(host.window.results.size(), firstReport.size());
  EXPECT_EQ(host.window.results.substr(0, firstReport.size()), firstReport);
  const std::string added = host.window.results.substr(firstReport.size());
  EXPECT_EQ(added.rfind("Date: ", 0), 0u);
  EXPECT_NE(added.find("File: second.txt"), std::string::npos);
  EXPECT_EQ(host.window.count, "2");
}

TEST(Report, ShortFileGivesEmptyRowsThatBecomeTheLowest) {
  TempFile file("A1\t204\nA2\t202\n");
  ScriptedHost host;
  host.window.count = "3";
  host.dialog.answer = FolderItem(file.Path());
  ASSERT_EQ(host.Run(), RunOutcome::Reported);
  EXPECT_NE(host.window.results.find(std::string(20, ' ') + "+0.0"), std::string::npos);
}

}  // namespace
}  // namespace drav
