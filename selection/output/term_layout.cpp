#include "selection/output/term_layout.hpp"

#include <cmath>
#include <memory>

#include "base/number_text.hpp"

namespace drav::selection {
namespace {

// The rows of every set one after another; each row knows its set and its
// term, which is all the columns need.
struct Rows {
  struct Row {
    const TermAverage* term;
    std::uint32_t set;
  };
  std::vector<Row> rows;
};

std::shared_ptr<Rows> Start(OutputTable& out, const CandidateTable& table, const std::vector<SetTerms>& sets) {
  auto rows = std::make_shared<Rows>();
  for (const SetTerms& set : sets) {
    const std::size_t begin = rows->rows.size();
    for (const TermAverage& t : set.terms) rows->rows.push_back({&t, set.set});
    out.groups.push_back({table.sets[set.set], begin, rows->rows.size()});
  }
  out.rows = rows->rows.size();
  if (!table.byName.empty()) {
    out.byKey = table.byName;
    out.columns.push_back({table.byName, table.byName, "", 0, true,
                           [rows, &table](std::size_t i) { return TextCell(table.sets[rows->rows[i].set]); }});
  }
  out.setFields.emplace_back("criterion", TextCell(Name(table.criterion)));
  out.rowsKey = "terms";
  return rows;
}

void AddSummary(OutputTable& out, const std::shared_ptr<Rows>& rows, const Coefficients& coefficients) {
  const auto t = [rows](std::size_t i) -> const TermAverage& { return *rows->rows[i].term; };
  out.columns.push_back({"term", "Term", "Term", 0, false, [t, &coefficients](std::size_t i) {
                           return TextCell(coefficients.terms[t(i).summary.term].name);
                         }});
  out.columns.push_back({"importance", "Importance", "Importance", 4, false,
                         [t](std::size_t i) { return NumberCell(t(i).summary.importance); }});
  out.columns.push_back({"models", "Models", "Models", 0, false,
                         [t](std::size_t i) { return CountCell(double(t(i).summary.models)); }});
}

}  // namespace

OutputTable ImportanceLayout(const CandidateTable& table, const Coefficients& coefficients,
                             const std::vector<SetTerms>& sets) {
  OutputTable out;
  const auto rows = Start(out, table, sets);
  AddSummary(out, rows, coefficients);
  const std::string criterion(Title(table.criterion));
  out.note = "Importance: the sum of the " + criterion + " weights of the models that hold the term.";
  out.chart = ChartPlan{"term", "importance", "models", "", "", "Importance (summed " + criterion + " weight)",
                        "", "", "terms", false};
  return out;
}

OutputTable TermAverageLayout(const CandidateTable& table, const Coefficients& coefficients,
                              const std::vector<SetTerms>& sets, double level) {
  OutputTable out;
  const auto rows = Start(out, table, sets);
  out.setFields.emplace_back("level", NumberCell(level));
  AddSummary(out, rows, coefficients);
  const auto t = [rows](std::size_t i) -> const TermAverage& { return *rows->rows[i].term; };
  const std::string ci = Percent(level) + " CI";
  out.columns.push_back({"estimate", "Estimate", "Estimate", 4, false, [t](std::size_t i) { return GivenCell(t(i).estimate); }});
  out.columns.push_back({"se", "Uncond. SE", "Uncond.\\ SE", 4, false, [t](std::size_t i) { return GivenCell(t(i).se); }});
  out.columns.push_back({"lower", "Lower " + ci, "Lower", 4, false, [t](std::size_t i) { return GivenCell(t(i).lower); }});
  out.columns.push_back({"upper", "Upper " + ci, "Upper", 4, false, [t](std::size_t i) { return GivenCell(t(i).upper); }});
  out.columns.push_back({"full_estimate", "Full estimate", "Full est.", 4, false,
                         [t](std::size_t i) { return GivenCell(t(i).fullEstimate); }});
  out.columns.push_back({"full_se", "Full SE", "Full SE", 4, false, [t](std::size_t i) { return GivenCell(t(i).fullSe); }});
  out.note = "Estimate: conditional average over the models that hold the term, weights by " +
             std::string(Title(table.criterion)) +
             " renormalised; revised unconditional SE. Full: every model, 0 where a model lacks the term.";
  return out;
}

}  // namespace drav::selection
