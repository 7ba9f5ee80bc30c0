#include "selection/selection_run.hpp"

#include <cmath>
#include <string>
#include <utility>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "selection/fits/fit_candidates.hpp"
#include "selection/fits/fit_files.hpp"
#include "selection/fits/fit_terms.hpp"
#include "selection/fits/fits_layout.hpp"
#include "selection/input/long_coefficients.hpp"
#include "selection/input/wide_coefficients.hpp"
#include "selection/models/importance.hpp"
#include "selection/models/term_averaging.hpp"
#include "selection/output/table_layout.hpp"

namespace drav::selection {

Selection::Selection(DelimitedReader& models, DelimitedReader* coefficients, const SelectionRequest& request,
                     Diagnostics& diagnostics) {
  const bool terms = request.command == Command::Importance || request.command == Command::AverageAll;
  LoadOptions load = request.load;
  load.threads = request.threads;
  // The wide form's terms are read beside the models, from the same rows.
  WideCoefficients wide(models.Name(), load.byColumn, load.modelColumn);
  if (terms && !coefficients) load.observer = &wide;
  table_ = LoadCandidates(models, load, diagnostics);
  NoteOverdispersion(request, diagnostics);
  const std::size_t kept = RankSubset(request, diagnostics);
  switch (request.command) {
    case Command::Table: layout_ = SelectionLayout(table_, ranked_, request.level); break;
    case Command::Average: AverageOne(request, diagnostics); break;
    case Command::Importance:
    case Command::AverageAll:
      coefficients_ = coefficients ? ReadLongCoefficients(*coefficients, table_, load.decimal, diagnostics,
                                                                   request.coefficientsAhead)
                                   : wide.Finish(diagnostics);
      Summarise(coefficients, request, diagnostics);
      break;
  }
  MarkSubset(layout_, request.subset, kept, table_.models.size());
}

Selection::Selection(const FitsRequest& fits, const SelectionRequest& request, Diagnostics& diagnostics) {
  const std::vector<fits::FitRecord> records =
      fits::ReadFitFiles(fits.files, fits.modelNames, fits.n, diagnostics,
                         fits.onlyRankable ? fits::BadFile::LeaveOut : fits::BadFile::Refuse);
  fromFits_ = true;
  // Read first: a fault of its own is told before the outputs are.
  const fits::TermNames names = fits.termNames.empty() ? fits::TermNames() : fits::TermNames::Read(fits.termNames);
  std::vector<std::size_t> rows;  // the record of each model of the table
  table_ = fits::CandidatesFromFits(records, request.load, diagnostics, fits.onlyRankable, &rows);
  if (fits.verbose) {
    for (const fits::FitRecord& r : records) {
      if (!r.derivation.empty()) diagnostics.Note("'" + r.model + "': " + r.derivation, r.source, r.line);
    }
  }
  if (request.command != Command::Table) {
    std::vector<const fits::FitRecord*> ranked;
    std::vector<std::uint32_t> sets;
    for (std::size_t m = 0; m < rows.size(); ++m) {
      ranked.push_back(&records[rows[m]]);
      sets.push_back(table_.models[m].set);
    }
    coefficients_ = fits::TermsOfFits(
        ranked,
        {.names = &names,
         .averages = request.command != Command::Importance,
         .estimate = request.command == Command::Average ? request.load.estimateColumn : std::string(),
         .verbose = fits.verbose,
         .sets = &sets},
        diagnostics);
    NoteOverdispersion(request, diagnostics);
  }
  const std::size_t kept = RankSubset(request, diagnostics);
  switch (request.command) {
    case Command::Table: layout_ = SelectionLayout(table_, ranked_, request.level); break;
    case Command::Average:
      table_.estimates = fits::EstimatesOfTerm(coefficients_, request.load.estimateColumn, table_.models.size());
      for (Estimate& e : table_.estimates) e.se *= std::sqrt(table_.chat);
      AverageOne(request, diagnostics);
      break;
    case Command::Importance:
    case Command::AverageAll: Summarise(nullptr, request, diagnostics); break;
  }
  MarkSubset(layout_, request.subset, kept, table_.models.size());
}

void Selection::NoteOverdispersion(const SelectionRequest& request, Diagnostics& diagnostics) const {
  if ((request.command != Command::Average && request.command != Command::AverageAll) || table_.chat <= 1) return;
  std::string factor;
  AppendShortest(factor, std::sqrt(table_.chat));
  diagnostics.Note("the standard errors are multiplied by sqrt(--chat) = " + factor +
                   " before averaging, as QAIC assumes variances c times an ordinary fit's; give SEs of an "
                   "ordinary fit, not of a quasi-likelihood one");
}

std::size_t Selection::RankSubset(const SelectionRequest& request, Diagnostics& diagnostics) {
  ranked_ = Rank(table_, {request.level, request.fileOrder, nullptr, request.threads});
  if (!request.subset.Any()) return table_.models.size();
  const std::vector<bool> keep = SubsetMask(table_, ranked_, request.subset, diagnostics);
  ranked_ = Rank(table_, {request.level, request.fileOrder, &keep, request.threads});
  std::size_t kept = 0;
  for (const RankedSet& set : ranked_) kept += set.models.size();
  return kept;
}

void Selection::Summarise(DelimitedReader* coefficients, const SelectionRequest& request, Diagnostics& diagnostics) {
  // A run without terms is a file of another kind, or the terms in a form
  // Drav did not see; an empty table would hide that.
  if (coefficients_.terms.empty()) {
    Refuse(coefficients ? Diagnostic{.file = coefficients->Name(), .text = "no coefficient rows"}
                        : Diagnostic{.file = table_.source,
                                     .text = "no term columns beside the models (numbers, NA, empty or +); give the "
                                             "terms in long form with --coefficients FILE"});
  }
  const bool averages = request.command == Command::AverageAll;
  if (averages && !coefficients_.standardErrors) {
    diagnostics.Warn(fromFits_ ? "no printed coefficient table has standard errors (summary() prints them), so "
                                 "the averages have no SE and no interval"
                               : "no column of standard errors (std.error, se, Std. Error; TERM_se beside a term), "
                                 "so the averages have no SE and no interval",
                     table_.source);
  }
  if (averages) InflateForOverdispersion(coefficients_, table_.chat);
  terms_.reserve(ranked_.size());
  for (const RankedSet& set : ranked_) {
    const std::vector<Member> members = MembersInTableOrder(set);
    std::vector<TermImportance> importance = Importance(coefficients_, members, request.fileOrder, request.threads);
    // A table's term columns are the same for every set; the outputs of
    // one set print terms of their own, which the other sets' do not.
    if (fromFits_) std::erase_if(importance, [](const TermImportance& t) { return t.models == 0; });
    if (const auto warning = UnequalCountsWarning(coefficients_, importance, members.size())) {
      diagnostics.Warn(table_.sets.size() > 1 ? "set '" + table_.sets[set.set] + "': " + *warning : *warning,
                       table_.source);
    }
    SetTerms summary{set.set, {}};
    if (averages) {
      summary.terms = AverageTerms(coefficients_, members, importance, request.level, request.threads);
    } else {
      summary.terms.reserve(importance.size());
      for (const TermImportance& t : importance) summary.terms.push_back({t, 0, 0, 0, 0, 0, 0});
    }
    terms_.push_back(std::move(summary));
  }
  layout_ = averages ? TermAverageLayout(table_, coefficients_, terms_, request.level)
                     : ImportanceLayout(table_, coefficients_, terms_);
}

void Selection::AverageOne(const SelectionRequest& request, Diagnostics& diagnostics) {
  const std::string& column = request.load.estimateColumn;
  std::size_t without = 0;
  for (const RankedSet& set : ranked_) {
    averages_.push_back(Average(table_, set, request.level));
    without += averages_.back().models == 0;
  }
  if (without == averages_.size()) {
    Refuse(fromFits_ ? Diagnostic{.text = "no model's coefficient table has a term '" + column + "'"}
                     : Diagnostic{.file = table_.source, .column = column,
                                  .text = "no model has an estimate in column '" + column + "'"});
  }
  for (const AveragedEstimate& average : averages_) {
    if (average.models > 0) continue;
    diagnostics.Warn("no model of set '" + table_.sets[average.set] + "' has an estimate in column '" + column +
                         "'; its row is left empty",
                     table_.source);
  }
  layout_ = AverageLayout(table_, averages_, request.level);
}

FitsListing::FitsListing(const FitsRequest& fits, Diagnostics& diagnostics)
    : records_(fits::ReadFitFiles(fits.files, fits.modelNames, fits.n, diagnostics, fits::BadFile::Tell, &leftOut_)),
      layout_(fits::FitsLayout(records_, fits.verbose)) {}

}  // namespace drav::selection
