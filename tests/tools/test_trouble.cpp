// Every way a command form's body can end becomes one status and one
// message, with what was found before it said first and said once; what no
// refusal names (a fault of the program) still ends the run, never aborts it.
#include <gtest/gtest.h>

#include <new>
#include <stdexcept>
#include <string>

#include "base/errors.hpp"
#include "tools/exit_status.hpp"
#include "tools/table_output.hpp"
#include "tools/trouble.hpp"

namespace drav::cli {
namespace {

namespace sel = drav::selection;

struct Ending {
  const char* name;
  void (*raise)();
  ExitStatus status;
  const char* told;  // standard error after the note
};

class Endings : public ::testing::TestWithParam<Ending> {};

TEST_P(Endings, OneStatusOneMessageAndTheNoteOnce) {
  testing::internal::CaptureStderr();
  const int status = RunReporting("table", [](std::optional<sel::Diagnostics>& diagnostics) {
    diagnostics.emplace();
    diagnostics->Note("found first");
    // A body that tells what it found before it fails, as one that has
    // written its table and then cannot flush it does.
    ReportUnshown(*diagnostics);
    GetParam().raise();
    return 0;
  });
  const std::string err = testing::internal::GetCapturedStderr();
  EXPECT_EQ(status, Code(GetParam().status));
  EXPECT_EQ(err, std::string("drav-report: note: found first\n") + GetParam().told);
}

INSTANTIATE_TEST_SUITE_P(
    Trouble, Endings,
    ::testing::Values(
        Ending{"Done", [] {}, ExitStatus::Done, ""},
        Ending{"Refused", [] { sel::Refuse({.file = "m.csv", .line = 3, .column = "k", .text = "column 'k' holds '-1'"}); }, ExitStatus::BadData,
               "drav-report: m.csv:3: column 'k' holds '-1'\n"},
        Ending{"Unwritable", [] { throw WriteFailure(28); }, ExitStatus::Unwritable,
               "drav-report: cannot write the output: No space left on device\n"},
        Ending{"OutOfMemory", [] { throw std::bad_alloc(); }, ExitStatus::OutOfMemory,
               "drav-report: out of memory: the input is too large for this machine's memory\n"},
        Ending{"LogicError", [] { throw std::out_of_range("map::at"); }, ExitStatus::Internal,
               "drav-report: a fault of drav-report itself: map::at\n"},
        Ending{"NotAnException", [] { throw 42; }, ExitStatus::Internal,
               "drav-report: a fault of drav-report itself\n"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav::cli
