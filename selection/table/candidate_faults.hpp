#pragma once
// What a candidate model must be to be ranked, whichever reader found it: a
// row of a table, or a fit in a program's printed output. Each reader says
// where the model is and what it was read from; the faults and the words
// for them are these, so one fault reads the same from every reader.
#include <string>

#include "selection/table/candidate_table.hpp"
#include "selection/table/criterion.hpp"

namespace drav::selection {

enum class CandidateFault {
  None,
  NegativeK,       // K < 0
  FractionalK,     // K is not a whole number; it counts parameters
  NoObservations,  // n <= 0
  SmallSample,     // AICc or QAICc with n <= K + 1, where the criterion has no value
  NotFinite,       // the criterion is infinite or NaN: every difference from it would be NaN
};

// The first fault of `c` when ranked by `criterion`, its value in c.value,
// computed or read. K and n that are NaN were not given and are held to
// nothing; the reader refuses them where the criterion needs them.
CandidateFault FaultOf(const Candidate& c, Criterion criterion);

// Whether the fault lies in K or in n, whose reader names what held it.
bool InK(CandidateFault fault);
bool InN(CandidateFault fault);

// Why the fault keeps `c` from being ranked: "K, the number of estimated
// parameters, cannot be negative", "AICc needs n > K + 1, and here n = 4
// with K = 3".
std::string Why(CandidateFault fault, const Candidate& c, Criterion criterion);

}  // namespace drav::selection
