#include "selection/output/table_layout.hpp"

#include <algorithm>
#include <cmath>
#include <memory>

#include "base/number_text.hpp"

namespace drav::selection {

OutputTable SelectionLayout(const CandidateTable& table, const std::vector<RankedSet>& ranked, double level) {
  // Rows are the sets' models one set after another. A row finds its set
  // among the sets' first rows, rather than each row keeping a pointer of its
  // own: that took as much memory again as the ranking itself.
  OutputTable out;
  auto firstRows = std::make_shared<std::vector<std::size_t>>();
  for (const RankedSet& set : ranked) {
    const std::size_t begin = out.rows;
    firstRows->push_back(begin);
    out.rows += set.models.size();
    out.groups.push_back({table.sets[set.set], begin, out.rows});
  }
  const auto setOf = [firstRows, &ranked](std::size_t i) -> const RankedSet& {
    if (ranked.size() == 1) return ranked[0];
    return ranked[std::upper_bound(firstRows->begin(), firstRows->end(), i) - firstRows->begin() - 1];
  };
  const auto r = [setOf, firstRows, &ranked](std::size_t i) -> const RankedModel& {
    const RankedSet& set = setOf(i);
    return set.models[i - (*firstRows)[&set - ranked.data()]];
  };
  const auto model = [r, &table](std::size_t i) -> const Candidate& { return table.models[r(i).index]; };
  const std::string criterion(Title(table.criterion));

  if (!table.byName.empty()) {
    out.byKey = table.byName;
    out.columns.push_back({table.byName, table.byName, "", 0, true,
                           [setOf, &table](std::size_t i) { return TextCell(table.sets[setOf(i).set]); }});
  }
  out.columns.push_back({"rank", "Rank", "Rank", 0, false, [r](std::size_t i) { return CountCell(double(r(i).rank)); }});
  // The writers ask for rows in rank order, which jumps about the models
  // kept in file order: each row's model is a trip to memory. The name is the
  // first cell of a row to read its model, so it asks for the model a few
  // rows on as well, which then arrives while these rows are written.
  const std::size_t rows = out.rows;
  out.columns.push_back({"model", "Model", "Model", 0, false, [model, r, rows, &table](std::size_t i) {
#if defined(__GNUC__)
                           constexpr std::size_t kAhead = 16;
                           if (i + kAhead < rows) __builtin_prefetch(&table.models[r(i + kAhead).index]);
#endif
                           return TextCell(model(i).model);
                         }});
  out.columns.push_back({"k", "K", "$K$", 0, false, [model](std::size_t i) {
                           const double k = model(i).k;
                           return std::isnan(k) ? Cell{} : CountCell(k);
                         }});
  out.columns.push_back({"loglik", "logLik", "$\\log L$", 2, false, [model](std::size_t i) { return GivenCell(model(i).logLik); }});
  out.columns.push_back({std::string(Name(table.criterion)), criterion,
                         HasSmallSampleTerm(table.criterion) ? criterion.substr(0, criterion.size() - 1) + "$_c$" : criterion, 2, false,
                         [model](std::size_t i) { return NumberCell(model(i).value); }});
  out.columns.push_back({"delta", "Delta", "$\\Delta$", 2, false, [r](std::size_t i) { return NumberCell(r(i).delta); }});
  out.columns.push_back({"likelihood", "Likelihood", "$\\mathcal{L}$", 4, false,
                         [r](std::size_t i) { return NumberCell(r(i).Likelihood()); }});
  out.columns.push_back({"weight", "Weight", "$w$", 4, false, [r](std::size_t i) { return NumberCell(r(i).weight); }});
  out.columns.push_back({"cumulative_weight", "Cum. weight", "Cum.\\ $w$", 4, false,
                         [r](std::size_t i) { return NumberCell(r(i).cumulative); }});
  out.columns.push_back({"evidence_ratio", "Evidence ratio", "ER", 2, false,
                         [r](std::size_t i) { return NumberCell(r(i).EvidenceRatio()); }});
  out.columns.back().shownAtMost = 99999;  // as the classic report caps it
  const std::string set = Percent(level) + " set";
  std::string latexSet = Percent(level);
  latexSet.insert(latexSet.size() - 1, "\\");
  out.columns.push_back({"confidence_set", set, latexSet + " set", 0, false, [r](std::size_t i) { return FlagCell(r(i).inConfidenceSet); }});

  out.setFields.emplace_back("criterion", TextCell(Name(table.criterion)));
  out.setFields.emplace_back("level", NumberCell(level));
  out.rowsKey = "models";
  out.chart = ChartPlan{"model", "weight", "", "cumulative_weight", "confidence_set", criterion + " weight",
                        "Cumulative weight", Percent(level) + " confidence set", "models"};
  out.note = "Ranked by " + criterion + "; * marks the " + Percent(level) +
             " confidence set, the best models whose weights add up to " + Percent(level) + ".";
  return out;
}

OutputTable AverageLayout(const CandidateTable& table, const std::vector<AveragedEstimate>& averages,
                          double level) {
  OutputTable out;
  out.rows = averages.size();
  for (std::size_t i = 0; i < averages.size(); ++i) out.groups.push_back({table.sets[averages[i].set], i, i + 1});
  const auto a = [&averages](std::size_t i) -> const AveragedEstimate& { return averages[i]; };
  if (!table.byName.empty()) {
    out.byKey = table.byName;
    out.columns.push_back({table.byName, table.byName, "", 0, false,
                           [a, &table](std::size_t i) { return TextCell(table.sets[a(i).set]); }});
  }
  const std::string ci = Percent(level) + " CI";
  out.columns.push_back({"criterion", "Criterion", "Criterion", 0, false,
                         [&table](std::size_t) { return TextCell(Name(table.criterion)); }});
  out.columns.push_back({"estimate", "Estimate", "Estimate", 4, false, [a](std::size_t i) { return GivenCell(a(i).estimate); }});
  out.columns.push_back({"se", "Uncond. SE", "Uncond.\\ SE", 4, false, [a](std::size_t i) { return GivenCell(a(i).se); }});
  out.columns.push_back({"lower", "Lower " + ci, "Lower", 4, false, [a](std::size_t i) { return GivenCell(a(i).lower); }});
  out.columns.push_back({"upper", "Upper " + ci, "Upper", 4, false, [a](std::size_t i) { return GivenCell(a(i).upper); }});
  out.columns.push_back({"models", "Models", "Models", 0, false,
                         [a](std::size_t i) { return CountCell(double(a(i).models)); }});
  out.note = "Weights by " + std::string(Title(table.criterion)) +
             ", renormalised over the models that have the parameter; revised unconditional SE.";
  return out;
}

}  // namespace drav::selection
