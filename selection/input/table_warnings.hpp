#pragma once
// What a whole table may hold that makes its numbers doubtful, found once
// every row is read: each said as a warning, which --strict refuses.
#include <cstdint>
#include <optional>

#include "base/diagnostics.hpp"
#include "selection/input/load_candidates.hpp"

namespace drav::selection {

// Models of one set fitted to different numbers of observations, whose
// criteria are not comparable: the first pair of each set.
void WarnOfDifferentN(const CandidateTable& table, Diagnostics& diagnostics);

// A name given twice within a set: the earliest repeat, and how many more.
// Marks the table's repeatedNames, so that a coefficient file is not joined
// by names that stand for two models.
void WarnOfRepeatedNames(CandidateTable& table, Diagnostics& diagnostics, unsigned threads = 1);

// Rows without a value in the --by column, which form a set of their own;
// `emptyByLine` is the first such row's line, 0 for none.
void WarnOfEmptySet(const CandidateTable& table, std::optional<std::int64_t> firstWithout, Diagnostics& diagnostics);

}  // namespace drav::selection
