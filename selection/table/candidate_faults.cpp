#include "selection/table/candidate_faults.hpp"

#include <cmath>

#include "base/message_text.hpp"

namespace drav::selection {

CandidateFault FaultOf(const Candidate& c, Criterion criterion) {
  if (c.k < 0) return CandidateFault::NegativeK;
  if (c.k != std::floor(c.k) && !std::isnan(c.k)) return CandidateFault::FractionalK;
  if (c.n <= 0) return CandidateFault::NoObservations;
  // A criterion given in its column is held to n > K + 1 as one computed
  // is: an AICc of 10 parameters from 10 rows has no meaning either way.
  if (HasSmallSampleTerm(criterion) && !std::isnan(c.n) && !std::isnan(c.k) && !(c.n > c.k + 1)) {
    return CandidateFault::SmallSample;
  }
  // Numbers near the largest double can give an infinite criterion, and
  // an infinite best would make every difference NaN.
  if (!std::isfinite(c.value)) return CandidateFault::NotFinite;
  return CandidateFault::None;
}

bool InK(CandidateFault fault) { return fault == CandidateFault::NegativeK || fault == CandidateFault::FractionalK; }

bool InN(CandidateFault fault) { return fault == CandidateFault::NoObservations; }

std::string Why(CandidateFault fault, const Candidate& c, Criterion criterion) {
  switch (fault) {
    case CandidateFault::None: break;
    case CandidateFault::NegativeK: return "K, the number of estimated parameters, cannot be negative";
    case CandidateFault::FractionalK: return "K, the number of estimated parameters, must be a whole number";
    case CandidateFault::NoObservations: return "the number of observations must be positive";
    case CandidateFault::SmallSample:
      return std::string(Title(criterion)) + " needs n > K + 1, and here n = " + Shown(c.n) + " with K = " + Shown(c.k);
    case CandidateFault::NotFinite:
      return std::string(Title(criterion)) + " computed from this line is not a finite number";
  }
  return {};
}

}  // namespace drav::selection
