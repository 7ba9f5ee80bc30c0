#pragma once
// The models read from programs' outputs as a table to rank, once it is
// sure that ranking them together means something: one kind of likelihood,
// one n, one way of counting parameters. What stands in the way is said
// with both models named (a warning, an error under --strict); a REML fit
// beside an ML fit, a model without a likelihood, or a criterion that needs
// an n nobody printed is refused.
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"
#include "selection/input/load_candidates.hpp"

namespace drav::selection::fits {

// The criterion is options.criterion, else AICc where every model has its
// n, else AIC; options.chat serves QAIC and QAICc as for a table. An n that
// --n gives is in the records already (GiveN), never in options. Notes and
// warnings go to `diagnostics`. Throws DataError for what cannot be ranked,
// every model held to what a table's rows are (candidate_faults.hpp), and
// UsageError for options that have no meaning here (--by, --k). With
// `leaveOut`, a model that cannot be ranked whatever the others are (no
// likelihood, no K, no n for AICc, a fault of a table's row) is left out
// with a warning instead, and the others ranked. `kept`, where given,
// receives the index in `records` of each model of the table.
CandidateTable CandidatesFromFits(const std::vector<FitRecord>& records, const LoadOptions& options,
                                  Diagnostics& diagnostics, bool leaveOut = false,
                                  std::vector<std::size_t>* kept = nullptr);

}  // namespace drav::selection::fits
