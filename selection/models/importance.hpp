#pragma once
// The importance of each term in a ranked set: the sum of the Akaike weights
// of the models that hold it (Burnham & Anderson 2002, section 4.2.8). Sums
// of weights compare terms fairly only when each term appears in about as
// many models as the others, so the counts come with them.
#include <optional>
#include <string>
#include <vector>

#include "selection/models/ranking.hpp"
#include "selection/table/coefficients.hpp"

namespace drav::selection {

// A model of a set with what the sums need, in the table's order so that a
// term's columns are walked front to back.
struct Member {
  std::size_t index;  // into CandidateTable::models
  double weight;
  double delta;
};
std::vector<Member> MembersInTableOrder(const RankedSet& set);

struct TermImportance {
  std::size_t term = 0;     // into Coefficients::terms
  double importance = 0;
  std::size_t models = 0;   // how many models of the set hold the term
};

// Every term, by importance from the highest (ties in the file's order of
// terms), or in the file's order with `fileOrder`.
// With `threads` 2 the terms are summed in two halves at once.
std::vector<TermImportance> Importance(const Coefficients& coefficients, const std::vector<Member>& members,
                                       bool fileOrder, unsigned threads = 1);

// Burnham & Anderson's caution, when the terms that some but not all models
// hold appear in very unequal numbers of models (one in more than twice as
// many as another): nothing when they are balanced. A term every model holds
// is left out, since its importance of 1 holds by construction.
std::optional<std::string> UnequalCountsWarning(const Coefficients& coefficients,
                                                const std::vector<TermImportance>& terms, std::size_t models);

}  // namespace drav::selection
