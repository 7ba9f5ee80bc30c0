#pragma once
// `drav-report fits FILE...`: the models found in statistics programs'
// printed outputs, listed; and the same models as the table that
// `drav-report table --fits FILE...` ranks.
#include "selection/selection_run.hpp"
#include "tools/selection_options.hpp"

namespace drav::cli {

// argv[0] is "fits". Returns the exit status.
int RunFitsCommand(int argc, char** argv);

// What fits and table --fits are asked to read. Throws UsageError for an
// --n that is no number of observations.
selection::FitsRequest FitsRequestOf(const SelectionOptions& options);

// The help of `drav-report fits`, which also tells what each program must print.
std::string FitsHelp();

}  // namespace drav::cli
