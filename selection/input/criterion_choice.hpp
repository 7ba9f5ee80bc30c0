#pragma once
// Which criterion ranks a table, and whether it is read from its column or
// computed from logLik, K and n: settled once, from the header and the
// options, before any row is read.
#include <string>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/input/column_roles.hpp"
#include "selection/input/load_candidates.hpp"
#include "selection/table/criterion.hpp"

namespace drav::selection {

struct CriterionChoice {
  Criterion criterion = Criterion::AIC;
  bool computed = false;  // no column holds it: computed from logLik, K (and n)
  double chat = 1;        // the overdispersion factor of a computed QAIC or QAICc; 1 otherwise
};

// The criterion the user chose, else the first criterion column, else AICc
// where n is given, else AIC. Throws UsageError for --chat where it would
// change nothing or a computed QAIC without it, DataError where the columns
// to compute the criterion from are missing; a --chat below 1 is taken as
// 1, with a note.
CriterionChoice ChooseCriterion(const ColumnRoles& roles, const std::vector<std::string>& header,
                                const LoadOptions& options, const std::string& fileName, Diagnostics& diagnostics);

}  // namespace drav::selection
