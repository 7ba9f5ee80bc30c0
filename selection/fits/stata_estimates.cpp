#include "selection/fits/stata_estimates.hpp"

#include <algorithm>

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {
namespace {

bool IsRule(std::string_view line) {
  const std::string_view t = Trimmed(line);
  return t.size() >= 10 && t.find_first_not_of("-+") == std::string_view::npos;
}

double Value(std::string_view word) {
  const auto printed = ReadPrinted(word);
  return printed ? printed->value : kUnknown;
}

}  // namespace

bool IsStataEstimatesHeading(std::string_view line) {
  const std::size_t bar = line.find('|');
  if (bar == std::string_view::npos) return false;
  const auto words = Words(line.substr(bar + 1));
  return words.size() >= 2 && (words[0] == "Coefficient" || words[0] == "Coef.") &&
         (words[1] == "Std." || words[1] == "Robust");
}

bool StataEstimates::Take(std::string_view line) {
  if (ended_) return false;
  if (IsRule(line)) {
    // A rule crossed by the bar parts the equations; one of dashes alone,
    // after the rows, closes the table.
    ended_ = line.find('+') == std::string_view::npos && (!terms.empty() || !notTerms.empty());
    return true;
  }
  const std::size_t bar = line.find('|');
  if (bar == std::string_view::npos) return false;
  const std::string name(Trimmed(line.substr(0, bar)));
  const auto words = Words(line.substr(bar + 1));
  if (words.empty()) {
    // A heading: an equation's at the left margin, else a factor's; a row
    // without a name ends a factor's levels.
    if (name.empty()) {
      factor_.clear();
    } else if (line[0] != ' ') {
      equation_ = name;
      factor_.clear();
    } else {
      factor_ = name;
    }
    return true;
  }
  if (name.starts_with('/')) ancillary_ = true;
  std::string term = factor_.empty() ? name : name + "." + factor_;
  if (!equation_.empty()) term = equation_ + ":" + term;
  if (ancillary_) {
    notTerms.push_back(term);
    return true;
  }
  // "1  |          0  (base)", "(omitted)", "(empty)": not estimated; a
  // "(constrained)" one is, without an SE.
  if (std::any_of(words.begin(), words.end(),
                  [](std::string_view w) { return w == "(base)" || w == "(omitted)" || w == "(empty)"; })) {
    return true;
  }
  terms.push_back({term, Value(words[0]), words.size() > 1 ? Value(words[1]) : kUnknown});
  return true;
}

}  // namespace drav::selection::fits
