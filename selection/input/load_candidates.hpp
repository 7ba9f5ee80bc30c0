#pragma once
// Candidate models read from delimited text: what the user asked of the
// reading, and the reading itself.
#include <cstdint>
#include <optional>
#include <string>

#include "base/diagnostics.hpp"
#include "selection/input/column_roles.hpp"
#include "selection/input/delimited_reader.hpp"
#include "selection/input/extra_column_reader.hpp"
#include "selection/table/candidate_table.hpp"

namespace drav::selection {

struct LoadOptions {
  std::optional<Criterion> criterion;  // none: the first criterion column, else AICc with n, else AIC
  std::optional<double> chat;          // the overdispersion factor for a computed QAIC
  std::string modelColumn;             // the column that names the models; empty: found by its name
  RoleChoices roles;                   // the K, n and term columns the user named
  char decimal = 0;                    // the decimal mark, ',' or '.'; 0: the file's cells decide
  std::string byColumn;                // the column that splits the rows into sets; empty for one set
  std::string estimateColumn;          // with seColumn: the parameter to average; empty for none
  std::string seColumn;
  std::size_t expectedModels = 0;      // room made at once, where the machine grants it; a guess
  std::uint64_t inputBytes = 0;        // the input's size where known (a regular file), else 0
  // An endless input of valid rows (`yes m,1`) would fill the memory; a
  // table takes about 130 bytes a model, so twenty million take 2.6 GB.
  std::size_t maxModels = 20'000'000;
  // Find the records on a second thread while this one (and, with
  // `threads` 2, one more) makes models of them. Only for a file that ends (a regular file): a reader
  // waiting on a quiet pipe would keep a refusal from being told.
  bool readAhead = false;
  unsigned threads = 1;  // 2 where a second core may share the work after reading
  // Shown the header and every record as the models are read, for what
  // else the rows hold (the terms of a wide coefficient table); none: nothing.
  ExtraColumnReader* observer = nullptr;
};

// Reads every record. Throws DataError for a cell that is not a number in a
// column the criterion needs (naming file:line and the column), for an
// impossible value (K < 0, n <= 0, a negative SE), for AICc or QAICc with
// n <= K + 1 whether computed or given in its column,
// for a missing column and for more than maxModels models; UsageError for a
// computed QAIC without an overdispersion factor and for an overdispersion
// factor that would change nothing.
// Warns in `diagnostics` of models of one set fitted to different n, names
// given twice, a criterion column that disagrees with logLik and K, rows
// without a --by value; notes what it decided where the file left it open,
// such as numbering models that have no names.
CandidateTable LoadCandidates(DelimitedReader& reader, const LoadOptions& options, Diagnostics& diagnostics);

}  // namespace drav::selection
