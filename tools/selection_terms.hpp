#pragma once
// The terms of importance and average --all: read from FILE's own columns
// or from a long coefficient file, and summed over each ranked set.
#include <string>
#include <vector>

#include "selection/candidates.hpp"
#include "selection/coefficients.hpp"
#include "selection/ranking.hpp"
#include "selection/term_layout.hpp"
#include "tools/selection_options.hpp"

namespace drav::cli {

// Opens and reads --coefficients FILE; throws IOException when it cannot be
// read and DataError as ReadLongCoefficients does.
selection::Coefficients ReadCoefficientsFile(const SelectionOptions& options, const selection::CandidateTable& table);

// Each set's terms: importance only, or with every average for --all.
// Adds to `warnings` the sets whose terms appear in unequal numbers of
// models.
std::vector<selection::SetTerms> SummariseTerms(const SelectionOptions& options,
                                                const selection::CandidateTable& table,
                                                const std::vector<selection::RankedSet>& ranked,
                                                const selection::Coefficients& coefficients,
                                                std::vector<std::string>& warnings);

}  // namespace drav::cli
