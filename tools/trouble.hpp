#pragma once
// The one way the command forms of drav-report report trouble: notes and
// warnings on standard error as "drav-report: note: ..." and
// "drav-report: warning: FILE:LINE: ...", a refusal as "drav-report: ..."
// with its status from the one table, and what was said before a refusal
// said first.
#include <functional>
#include <optional>
#include <string_view>

#include "base/diagnostics.hpp"

namespace drav::cli {

// Every note and warning not yet told, in the order they were found: a
// body that tells them and then fails to write has them told once.
void ReportUnshown(selection::Diagnostics& diagnostics);

// Runs a command form's body, which makes `diagnostics` once it knows
// whether --strict was given, and returns its status; what the body throws
// becomes the message and status of its kind. `command` names the form in
// the usage line after a usage error.
int RunReporting(std::string_view command,
                 const std::function<int(std::optional<selection::Diagnostics>& diagnostics)>& body);

}  // namespace drav::cli
