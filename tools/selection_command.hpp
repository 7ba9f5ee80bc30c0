#pragma once

namespace drav::cli {

// Runs `drav-report table` or `drav-report average`; argv[0] is the
// subcommand. Returns the exit status.
int RunSelectionCommand(int argc, char** argv);

}  // namespace drav::cli
