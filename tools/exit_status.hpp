#pragma once
// The statuses drav-report ends with, for every command form: one table,
// from which --help prints its list and against which a test holds the
// README and the manual page.
#include <string>
#include <string_view>

namespace drav::cli {

enum class ExitStatus : int {
  Done = 0,         // the report or table was written
  Unreadable = 1,   // FILE (or CFILE) cannot be opened or read
  BadUsage = 2,     // an unknown option, a missing operand, a bad COUNT or option value
  NoLowestAic = 3,  // the classic report: no lowest AIC in the data
  BadData = 4,      // the data cannot give a report or table, or a warning under --strict
  Unwritable = 5,   // the output could not be written, such as to a full disk
  OutOfMemory = 6,  // the input is too large for this machine's memory
  Internal = 7,     // a fault of drav-report itself, which no input should cause
};

struct ExitStatusEntry {
  ExitStatus status;
  std::string_view meaning;
};

inline constexpr ExitStatusEntry kExitStatuses[] = {
    {ExitStatus::Done, "the report or table written"},
    {ExitStatus::Unreadable, "FILE or CFILE cannot be opened or read"},
    {ExitStatus::BadUsage, "bad usage: an unknown option, a missing operand, a bad COUNT or value"},
    {ExitStatus::NoLowestAic, "no lowest AIC in the data (the classic report)"},
    {ExitStatus::BadData, "the data cannot give a report or table, or a warning under --strict"},
    {ExitStatus::Unwritable, "the output could not be written (a full disk)"},
    {ExitStatus::OutOfMemory, "the input is too large for this machine's memory"},
    {ExitStatus::Internal, "a fault of drav-report itself, not of the input: please report it"},
};

constexpr int Code(ExitStatus status) { return static_cast<int>(status); }

// "Exit status:" and one line a status, as --help prints them.
std::string ExitStatusHelp();

}  // namespace drav::cli
