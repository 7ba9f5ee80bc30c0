#pragma once
// The one way into the model-selection library, for every command form: a
// request and the readers of its files (or the programs' printed outputs)
// in, a table for the writers out, and everything there is to tell on the
// way in one list of diagnostics. The command line parses
// arguments, opens files, calls this and prints; every rule of the data
// lives here or below.
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_files.hpp"
#include "selection/fits/fit_record.hpp"
#include "selection/input/delimited_reader.hpp"
#include "selection/input/load_candidates.hpp"
#include "selection/models/averaging.hpp"
#include "selection/models/ranking.hpp"
#include "selection/models/subset.hpp"
#include "selection/output/term_layout.hpp"
#include "selection/table/coefficients.hpp"
#include "selection/table/output_table.hpp"

namespace drav::selection {

enum class Command {
  Table,       // rank every set
  Average,     // average one parameter, LoadOptions' estimate and SE columns
  Importance,  // sum the weights of the models that hold each term
  AverageAll,  // importance, and the average of every term
};

// Programs' printed outputs, as fits lists them and table --fits ranks them.
struct FitsRequest {
  std::vector<std::string> files;  // "-" for standard input; a pattern that names no file is expanded
  std::string modelNames;          // a file of the models' names, one a line, in listing order; empty: their own
  std::optional<double> n;         // the n of the models whose outputs print none
  bool verbose = false;            // how K, n and logLik were found: a column of the listing, a note a model
  bool onlyRankable = false;       // rank what can be, leaving out with a warning what cannot
  std::string termNames;           // a file mapping the terms' printed names to common ones; empty: none
};

struct SelectionRequest {
  Command command = Command::Table;
  LoadOptions load;
  double level = 0.95;     // the confidence set's cumulative weight, and the interval's level
  bool fileOrder = false;  // list models and terms as the file has them
  SubsetOptions subset;
  unsigned threads = 1;    // 2 where a second core may share the sums over terms
  // Read the coefficients file on a second thread while its rows are used:
  // only for a file that ends (a regular file), as LoadOptions::readAhead.
  bool coefficientsAhead = false;
};

// Owns every number its table's cells show, so it is neither copied nor
// moved: the table reads it in place.
class Selection {
 public:
  // Reads the models (and, for the terms in long form, `coefficients`;
  // null: the terms are the models' own columns), ranks, subsets and
  // averages. Notes and warnings go to `diagnostics`, which refuses at the
  // first warning when strict. Throws DataError for data that cannot give a
  // table, UsageError for a request the data cannot answer, IOException for
  // a file that cannot be read.
  Selection(DelimitedReader& models, DelimitedReader* coefficients, const SelectionRequest& request,
            Diagnostics& diagnostics);
  // Ranks the models of programs' printed outputs; importance and averages
  // take their terms from the coefficient tables printed with them, and
  // `average` the term LoadOptions' estimate column names.
  Selection(const FitsRequest& fits, const SelectionRequest& request, Diagnostics& diagnostics);
  Selection(const Selection&) = delete;
  Selection& operator=(const Selection&) = delete;

  const OutputTable& Layout() const { return layout_; }
  const CandidateTable& Table() const { return table_; }

 private:
  // Ranks the table, over the subset where one is asked; the models kept.
  std::size_t RankSubset(const SelectionRequest& request, Diagnostics& diagnostics);
  void Summarise(DelimitedReader* coefficients, const SelectionRequest& request, Diagnostics& diagnostics);
  void AverageOne(const SelectionRequest& request, Diagnostics& diagnostics);
  void NoteOverdispersion(const SelectionRequest& request, Diagnostics& diagnostics) const;

  CandidateTable table_;
  std::vector<RankedSet> ranked_;
  Coefficients coefficients_;
  std::vector<SetTerms> terms_;
  std::vector<AveragedEstimate> averages_;
  OutputTable layout_;
  bool fromFits_ = false;  // the models and terms were read from programs' printed outputs
};

// Every model of programs' printed outputs listed, as they were read.
class FitsListing {
 public:
  FitsListing(const FitsRequest& fits, Diagnostics& diagnostics);
  FitsListing(const FitsListing&) = delete;
  FitsListing& operator=(const FitsListing&) = delete;

  const OutputTable& Layout() const { return layout_; }
  // The files that could not be read, or that no reader knows, each told as
  // an error; the others are listed all the same.
  const fits::FilesLeftOut& LeftOut() const { return leftOut_; }

 private:
  fits::FilesLeftOut leftOut_;
  std::vector<fits::FitRecord> records_;
  OutputTable layout_;
};

}  // namespace drav::selection
