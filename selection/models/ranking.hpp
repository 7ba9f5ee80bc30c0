#pragma once
// Each model set ranked by its criterion, with the differences, relative
// likelihoods, Akaike weights, cumulative weights, evidence ratios and the
// confidence set (Burnham & Anderson 2002, section 2.9 and 4.2).
#include <cmath>
#include <cstdint>
#include <vector>

#include "selection/input/load_candidates.hpp"

namespace drav::selection {

// 32 bytes a model: what can be derived from the difference is, so that a
// table of twenty million models fits in a few gigabytes.
struct RankedModel {
  std::uint32_t index = 0;               // into CandidateTable::models
  std::uint32_t rank : 31 = 0;           // from 1, by the criterion; ties keep file order
  std::uint32_t inConfidenceSet : 1 = 0;
  double delta = 0;       // criterion less the set's lowest
  double weight = 0;      // likelihood over the set's sum of likelihoods
  double cumulative = 0;  // sum of the weights of this model and those ranked above it

  // exp(-delta/2), the likelihood of the model given the data, relative to the best.
  double Likelihood() const { return std::exp(-delta / 2); }
  // The best model's weight over this one's, as exp(delta/2): the weight of
  // a model far behind underflows to 0 long before this ratio overflows.
  double EvidenceRatio() const { return std::exp(delta / 2); }
};

struct RankedSet {
  std::uint32_t set = 0;             // index into CandidateTable::sets
  std::vector<RankedModel> models;   // by rank, or in file order when asked
};

struct RankOptions {
  double level = 0.95;      // the confidence set's cumulative weight
  bool fileOrder = false;   // list the models as the file does; ranks and sums stay by rank
  // By model of the table: which to rank, the others left out as if the file
  // had not held them; none: every model. Each set must keep one at least.
  const std::vector<bool>* keep = nullptr;
  unsigned threads = 1;  // 2 where a second core may share the sort
};

// One RankedSet per set, in order of the sets' first appearance.
std::vector<RankedSet> Rank(const CandidateTable& table, const RankOptions& options);

}  // namespace drav::selection
