#include "tools/fits_command.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "selection/errors.hpp"
#include "selection/fits/fit_candidates.hpp"
#include "selection/fits/fits_layout.hpp"
#include "selection/number_text.hpp"
#include "tools/exit_status.hpp"
#include "tools/fit_inputs.hpp"
#include "tools/option_table.hpp"
#include "tools/table_output.hpp"
#include "tools/trouble.hpp"

namespace drav::cli {
namespace {

namespace sel = drav::selection;
namespace fits = drav::selection::fits;

// --n N: the n of the models whose outputs print none; `option` as the
// message calls it.
std::optional<double> GivenN(const std::string& text, const std::string& option) {
  if (text.empty()) return std::nullopt;
  const auto n = sel::ParseNumber(text, false);
  if (!n || *n <= 0) throw sel::UsageError(option + " is the number of observations, not '" + text + "'");
  return n;
}

}  // namespace

sel::CandidateTable LoadFitCandidates(const SelectionOptions& options, sel::Diagnostics& diagnostics) {
  // A table's --n names a column; with --fits it is the n itself.
  const std::optional<double> n = GivenN(options.load.roles.n, "--n with --fits");
  std::vector<fits::FitRecord> records = ReadFitFiles(options.fitFiles, options.modelNames, n, diagnostics);
  sel::CandidateTable table = fits::CandidatesFromFits(records, options.load, diagnostics);
  if (options.verbose) {
    for (const fits::FitRecord& r : records) {
      if (!r.derivation.empty()) diagnostics.Note("'" + r.model + "': " + r.derivation, r.source, r.line);
    }
  }
  return table;
}

int RunFitsCommand(int argc, char** argv) {
  return RunReporting("fits", [argc, argv](std::optional<sel::Diagnostics>& diagnostics) {
    const SelectionOptions options = ParseCommandLine(kFits, argc, argv);
    if (options.help) {
      WriteOut(FitsHelp());
      FinishOutput();
      return Code(ExitStatus::Done);
    }
    diagnostics.emplace(options.strict);
    const std::optional<double> n = GivenN(options.load.roles.n, "--n");
    std::vector<fits::FitRecord> records = ReadFitFiles(options.fitFiles, options.modelNames, n, *diagnostics);
    ReportUnshown(*diagnostics);
    WriteTable(fits::FitsLayout(records, options.verbose), options.format, options.digits);
    return Code(ExitStatus::Done);
  });
}

}  // namespace drav::cli
