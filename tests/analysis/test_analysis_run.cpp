#include <gtest/gtest.h>

#include "tests/analysis/scripted_host.hpp"
#include "tests/analysis/temp_file.hpp"

namespace drav {
namespace {

using testing_support::TempFile;

// Which counts are refused, with which message, is the classic goldens'
// (tests/golden/classic.batch); what a run does to the window, the windows'
// tests'. Here what only the run itself can be handed: a dialog that
// answers with a file gone by the time it is read, which ends the run as
// silently as a cancel, the window as it was.
TEST(FileChoice, CancelOrAVanishedFileEndsSilently) {
  std::filesystem::path vanished;
  {
    const TempFile file("A1\t204\nA2\t202\n");
    vanished = file.Path();
  }
  for (const auto& answer : {std::optional<std::filesystem::path>(), std::optional(vanished)}) {
    testing_support::ScriptedHost host;
    host.window.count = "2";
    host.window.results = "earlier report";
    if (answer) host.dialog.answer = FolderItem(*answer);
    EXPECT_EQ(host.Run(), RunOutcome::NoFile);
    EXPECT_EQ(host.dialog.shown, 1);
    EXPECT_TRUE(host.alert.messages.empty());
    EXPECT_EQ(host.window.results, "earlier report");
    EXPECT_FALSE(host.window.resultsVisible);
    EXPECT_EQ(host.window.focusCalls, 0);
  }
}

}  // namespace
}  // namespace drav
