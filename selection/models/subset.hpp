#pragma once
// A subset of each model set by rank: the models within a distance of the
// best, or the best few. Weights, importance and averages are then taken
// over the subset alone, as if the file had held no other model.
#include <optional>
#include <string>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/input/load_candidates.hpp"
#include "selection/models/ranking.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

struct SubsetOptions {
  std::optional<double> deltaMax;    // keep the models with delta <= this
  std::optional<std::size_t> top;    // keep the models ranked 1 to this and their ties; with both, the models both keep

  bool Any() const { return deltaMax || top; }
};

// By model of the table, whether the subset keeps it; the best model of
// every set is always kept, and so are the models tied at the cut of --top,
// each set's so kept said in a note.
std::vector<bool> SubsetMask(const CandidateTable& table, const std::vector<RankedSet>& ranked,
                             const SubsetOptions& options, Diagnostics& diagnostics);

// The line under a text table that says which subset it shows, such as
// "Subset: the models with delta <= 2 and rank <= 20 (12 of 64); ...";
// kept and total summed over the sets.
std::string SubsetNote(const SubsetOptions& options, std::size_t kept, std::size_t total);

// Says so in the table: the note under it, and in JSON the fields
// delta_max and top of each set, those that were given.
void MarkSubset(OutputTable& out, const SubsetOptions& options, std::size_t kept, std::size_t total);

}  // namespace drav::selection
