#include "tools/fits_command.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "tools/exit_status.hpp"
#include "tools/option_table.hpp"
#include "tools/table_output.hpp"
#include "tools/trouble.hpp"

namespace drav::cli {
namespace {

namespace sel = drav::selection;

// --n N: the n of the models whose outputs print none; `option` as the
// message calls it.
std::optional<double> GivenN(const std::string& text, const std::string& option) {
  if (text.empty()) return std::nullopt;
  const auto n = sel::ParseNumber(text, false);
  if (!n || *n <= 0) throw sel::UsageError(option + " is the number of observations, not '" + text + "'");
  return n;
}

}  // namespace

sel::FitsRequest FitsRequestOf(const SelectionOptions& options) {
  // A table's --n names a column; with --fits it is the n itself.
  return {options.fitFiles, options.modelNames, GivenN(options.load.roles.n, options.fits ? "--n with --fits" : "--n"),
          options.verbose, options.onlyRankable, options.termNames};
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
    const sel::FitsListing listing(FitsRequestOf(options), *diagnostics);
    ReportUnshown(*diagnostics);
    // As grep does: every model of the files that could be read, each file
    // that could not told, and a status that says some were not.
    if (listing.Layout().rows > 0 || (listing.LeftOut().unreadable == 0 && listing.LeftOut().refused == 0)) {
      WriteTable(listing.Layout(), options.format, options.digits);
    }
    if (listing.LeftOut().unreadable > 0) return Code(ExitStatus::Unreadable);
    return Code(listing.LeftOut().refused > 0 ? ExitStatus::BadData : ExitStatus::Done);
  });
}

}  // namespace drav::cli
