#include "tools/selection_terms.hpp"

#include <cerrno>
#include <cstdio>
#include <memory>

#include "selection/errors.hpp"
#include "selection/importance.hpp"
#include "selection/long_coefficients.hpp"
#include "selection/term_averaging.hpp"

namespace drav::cli {

namespace sel = drav::selection;

sel::Coefficients ReadCoefficientsFile(const SelectionOptions& options, const sel::CandidateTable& table) {
  const std::string& path = options.coefficients;
  const bool standardInput = path == "-";
  std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(standardInput ? stdin : std::fopen(path.c_str(), "rb"),
                                                        standardInput ? [](std::FILE*) { return 0; } : &std::fclose);
  if (!file) throw IOException(path, errno);
  sel::DelimitedReader reader(file.get(), standardInput ? "standard input" : path, {}, options.encoding);
  return sel::ReadLongCoefficients(reader, table, options.load.decimal);
}

std::vector<sel::SetTerms> SummariseTerms(const SelectionOptions& options, const sel::CandidateTable& table,
                                          const std::vector<sel::RankedSet>& ranked,
                                          const sel::Coefficients& coefficients, std::vector<std::string>& warnings) {
  // A run without terms is a file of another kind, or the terms in a form
  // Drav did not see; an empty table would hide that.
  if (coefficients.terms.empty()) {
    throw sel::DataError(options.coefficients.empty()
                             ? (options.file == "-" ? std::string("standard input") : options.file) +
                                   ": no term columns beside the models (numbers, NA, empty or +); give the terms "
                                   "in long form with --coefficients FILE"
                             : options.coefficients + ": no coefficient rows");
  }
  std::vector<sel::SetTerms> sets;
  sets.reserve(ranked.size());
  for (const sel::RankedSet& set : ranked) {
    const std::vector<sel::Member> members = sel::MembersInTableOrder(set);
    const std::vector<sel::TermImportance> importance = sel::Importance(coefficients, members, options.fileOrder);
    if (const auto warning = sel::UnequalCountsWarning(coefficients, importance, members.size())) {
      warnings.push_back(table.sets.size() > 1 ? "set '" + table.sets[set.set] + "': " + *warning : *warning);
    }
    sel::SetTerms terms{set.set, {}};
    if (options.allTerms) {
      terms.terms = sel::AverageTerms(coefficients, members, importance, options.level);
    } else {
      terms.terms.reserve(importance.size());
      for (const sel::TermImportance& t : importance) terms.terms.push_back({t, 0, 0, 0, 0, 0, 0});
    }
    sets.push_back(std::move(terms));
  }
  return sets;
}

}  // namespace drav::cli
