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
#include "tools/table_output.hpp"
#include "tools/trouble.hpp"

namespace drav::cli {
namespace {

namespace sel = drav::selection;
namespace fits = drav::selection::fits;

struct FitsOptions {
  std::vector<std::string> files;
  std::string modelNames;
  std::optional<double> n;  // --n N for outputs that print none
  bool verbose = false;
  bool strict = false;
  bool help = false;
  OutputFormat format = OutputFormat::Text;
  std::optional<int> digits;
};

// --n N: the n of the models whose outputs print none; `option` as the
// message calls it.
std::optional<double> GivenN(const std::string& text, const std::string& option) {
  if (text.empty()) return std::nullopt;
  const auto n = sel::ParseNumber(text, false);
  if (!n || *n <= 0) throw sel::UsageError(option + " is the number of observations, not '" + text + "'");
  return n;
}

FitsOptions Parse(int argc, char** argv) {
  FitsOptions options;
  bool optionsEnded = false;
  for (int i = 1; i < argc; ++i) {
    const std::string_view arg = argv[i];
    if (optionsEnded || arg == "-" || !arg.starts_with("--")) {
      options.files.emplace_back(arg);
      continue;
    }
    if (arg == "--") {
      optionsEnded = true;
    } else if (arg == "--help") {
      options.help = true;
      return options;
    } else if (arg == "--verbose") {
      options.verbose = true;
    } else if (arg == "--strict") {
      options.strict = true;
    } else {
      const auto option = OptionWithValue(argc, argv, i);
      const std::string_view name = option.first;
      const std::string_view value = option.second;
      if (value.empty()) throw sel::UsageError(std::string(name) + " needs a value");
      if (name == "--model-names") {
        options.modelNames = value;
      } else if (name == "--n") {
        options.n = GivenN(std::string(value), "--n");
      } else if (name == "--format") {
        if (value == "svg") throw sel::UsageError("--format svg draws a ranking; fits lists");
        options.format = FormatNamed(value, false);
      } else if (name == "--digits") {
        // The table's own parser knows its values and their message.
        std::string nameText(name), valueText(value), command("table"), file("-");
        char* args[] = {command.data(), nameText.data(), valueText.data(), file.data()};
        options.digits = ParseSelectionOptions(4, args).digits;
      } else {
        throw sel::UsageError("unknown option " + std::string(name) + " for fits");
      }
    }
  }
  if (options.files.empty()) throw sel::UsageError("no FILE given (- reads standard input)");
  return options;
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
    const FitsOptions options = Parse(argc, argv);
    if (options.help) {
      WriteOut(FitsHelp());
      FinishOutput();
      return Code(ExitStatus::Done);
    }
    diagnostics.emplace(options.strict);
    std::vector<fits::FitRecord> records = ReadFitFiles(options.files, options.modelNames, options.n, *diagnostics);
    Tell(*diagnostics);
    WriteTable(fits::FitsLayout(records, options.verbose), options.format, options.digits);
    return Code(ExitStatus::Done);
  });
}

}  // namespace drav::cli
