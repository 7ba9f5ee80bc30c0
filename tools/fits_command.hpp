#pragma once
// `drav-report fits FILE...`: the models found in statistics programs'
// printed outputs, listed; and the same models as the table that
// `drav-report table --fits FILE...` ranks.
#include "selection/candidates.hpp"
#include "selection/diagnostics.hpp"
#include "tools/selection_options.hpp"

namespace drav::cli {

// argv[0] is "fits". Returns the exit status.
int RunFitsCommand(int argc, char** argv);

// table --fits: every model of options.fitFiles as candidates, their notes
// and warnings in `diagnostics` (a warning refuses under --strict), and
// with --verbose how each K, n and logLik were found. Throws as the readers
// do.
selection::CandidateTable LoadFitCandidates(const SelectionOptions& options, selection::Diagnostics& diagnostics);

// The help of `drav-report fits`, which also tells what each program must print.
std::string FitsHelp();

}  // namespace drav::cli
