#pragma once
// The command line of `drav-report table`, `average` and `importance`.
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "selection/input/load_candidates.hpp"
#include "selection/models/subset.hpp"

namespace drav::cli {

enum class OutputFormat { Text, Csv, Tsv, Markdown, Latex, Json, Svg };

struct SelectionOptions {
  bool average = false;  // `average` rather than `table`
  bool importance = false;  // `importance`
  bool allTerms = false;    // average --all: every term rather than --estimate
  std::string coefficients;  // --coefficients FILE: the terms in long form; empty: the table's own columns
  selection::SubsetOptions subset;
  bool help = false;
  selection::LoadOptions load;
  selection::InputEncoding encoding = selection::InputEncoding::Detect;
  double level = 0.95;
  bool fileOrder = false;
  bool strict = false;
  OutputFormat format = OutputFormat::Text;
  std::optional<int> digits;
  unsigned threads = 1;  // how many threads may share the work: the cores this process may use, at most 2
  std::string file;  // "-" for standard input
  // --fits: FILE... are programs' printed outputs, one model or more each,
  // rather than one table.
  bool fits = false;
  std::vector<std::string> fitFiles;
  std::string modelNames;  // --model-names FILE: the models' names, one a line
  bool verbose = false;    // --verbose: how K, n and logLik were found
  bool onlyRankable = false;  // --only-rankable: leave out what cannot be ranked, with a warning
  std::string termNames;      // --term-names FILE: the printed names of terms mapped to common ones
};

// argv[0] is the subcommand. Throws selection::UsageError, its message
// saying what is wrong with the command line.
SelectionOptions ParseSelectionOptions(int argc, char** argv);

// The subcommands' own help, and the lines about them in drav-report --help.
std::string SelectionHelp();
std::string_view SelectionSummary();

}  // namespace drav::cli
