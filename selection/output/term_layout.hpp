#pragma once
// The columns of the two term tables: the importance of each term, and the
// model-averaged coefficients of every term. The layouts refer to the
// results, which must outlive them.
#include <cstdint>
#include <vector>

#include "selection/input/load_candidates.hpp"
#include "selection/models/term_averaging.hpp"
#include "selection/table/coefficients.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

// The terms of one model set; for importance only `summary` of each is
// filled.
struct SetTerms {
  std::uint32_t set = 0;  // into CandidateTable::sets
  std::vector<TermAverage> terms;
};

// term, importance, models; the --by column first.
OutputTable ImportanceLayout(const CandidateTable& table, const Coefficients& coefficients,
                             const std::vector<SetTerms>& sets);

// term, importance, models, estimate, se, lower, upper, full_estimate,
// full_se; the --by column first.
OutputTable TermAverageLayout(const CandidateTable& table, const Coefficients& coefficients,
                              const std::vector<SetTerms>& sets, double level);

}  // namespace drav::selection
