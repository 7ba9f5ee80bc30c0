#pragma once
// The candidate models of a table, however they were read: each model's
// name, its criterion (from its column or computed), what it was computed
// from, and the model set it belongs to. Every stage after reading works
// on this, and it knows nothing of the stages.
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "selection/table/criterion.hpp"
#include "selection/table/large_page_allocator.hpp"

namespace drav::selection {

inline constexpr double kNotGiven = std::numeric_limits<double>::quiet_NaN();

struct Candidate {
  std::string model;
  double value = 0;          // the criterion
  double logLik = kNotGiven;  // NaN where the file has no such column or no number in it
  double k = kNotGiven;
  double n = kNotGiven;
  std::int64_t line = 0;
  std::uint32_t set = 0;  // index into CandidateTable::sets
};

// One model's value of the parameter that `average` averages, with its
// standard error; NaN where the model does not have the parameter.
struct Estimate {
  double value = kNotGiven;
  double se = kNotGiven;
};

struct CandidateTable {
  std::string source;             // the file the models came from, as messages name it
  Criterion criterion = Criterion::AIC;
  double chat = 1;                // the overdispersion factor a computed QAIC or QAICc used; 1 otherwise
  std::string byName;             // the --by column as the header writes it
  std::vector<std::string> sets;  // values of the --by column by first appearance; one "" without
  std::vector<Candidate, LargePageAllocator<Candidate>> models;  // in file order
  std::vector<Estimate> estimates;  // by model, when a parameter is averaged; empty otherwise
  bool repeatedNames = false;      // two models of one set share a name
};

}  // namespace drav::selection
