#pragma once
// The columns of the two tables Drav prints: the model-selection table and
// the model-averaged estimate. The layouts refer to the results, which must
// outlive them.
#include <vector>

#include "selection/input/load_candidates.hpp"
#include "selection/models/averaging.hpp"
#include "selection/models/ranking.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

// rank, model, k, loglik, the criterion, delta, likelihood, weight,
// cumulative_weight, evidence_ratio, confidence_set; the --by column first.
OutputTable SelectionLayout(const CandidateTable& table, const std::vector<RankedSet>& ranked, double level);

// criterion, estimate, se, lower, upper, models; the --by column first.
OutputTable AverageLayout(const CandidateTable& table, const std::vector<AveragedEstimate>& averages,
                          double level);

}  // namespace drav::selection
