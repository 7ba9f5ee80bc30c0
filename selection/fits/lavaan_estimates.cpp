#include "selection/fits/lavaan_estimates.hpp"

#include <algorithm>
#include <array>
#include <vector>

#include "selection/fits/printed_text.hpp"

namespace drav::selection::fits {
namespace {

constexpr std::array<std::string_view, 10> kSections = {
    "Latent Variables", "Composites", "Regressions", "Covariances", "Intercepts",
    "Thresholds",       "Variances",  "Scales y*",   "Defined Parameters", "R-Square"};

bool IsOperator(std::string_view word) {
  return word == "=~" || word == "~" || word == "~~" || word == "<~" || word == "|";
}

// lavaan marks an observed variable's own parameters with a dot: ".x1".
std::string_view Undotted(std::string_view name) { return name.starts_with('.') ? name.substr(1) : name; }

}  // namespace

void LavaanEstimates::Take(std::string_view line, FitRecord& r) {
  const std::string_view trimmed = Trimmed(line);
  if (trimmed.starts_with("Parameter Estimates:") || trimmed.starts_with("Parameter estimates:")) {
    *this = LavaanEstimates();
    active_ = true;
    return;
  }
  if (!active_ || trimmed.empty()) return;
  if (line[0] != ' ') {
    const std::string_view heading = trimmed.ends_with(':') ? trimmed.substr(0, trimmed.size() - 1) : trimmed;
    if (std::find(kSections.begin(), kSections.end(), heading) != kSections.end()) {
      section_ = std::string(heading);
      lhs_.clear();
    } else if (heading.starts_with("Group ") || heading.starts_with("Level ")) {
      group_ = std::string(heading) + ": ";
      section_.clear();
    } else {
      active_ = false;  // past the estimates
    }
    return;
  }
  const std::vector<std::string_view> words = Words(line);
  if (section_.empty() || words[0] == "Estimate") return;
  // "visual =~", "y ~", ".x1 ~~": the left-hand side and the operator of
  // the rows under it.
  if (words.size() == 2 && IsOperator(words[1])) {
    lhs_ = std::string(Undotted(words[0]));
    op_ = std::string(words[1]);
    return;
  }
  // The name, a label in brackets where the model gave one, the numbers.
  std::size_t at = 1;
  while (at < words.size() && words[at].starts_with('(')) ++at;
  const auto estimate = at < words.size() ? ReadPrinted(words[at]) : std::nullopt;
  if (!estimate) return;
  const auto se = at + 1 < words.size() ? ReadPrinted(words[at + 1]) : std::nullopt;
  const std::string_view name = Undotted(words[0]);
  std::string term;
  bool isTerm = true;
  if (section_ == "Intercepts") {
    term = std::string(name) + " ~1";
  } else if (section_ == "Variances" || section_ == "Thresholds" || section_ == "Scales y*" || section_ == "R-Square") {
    term = section_ == "Variances" ? std::string(name) + " ~~ " + std::string(name) : std::string(name);
    isTerm = false;
  } else if (section_ == "Defined Parameters") {
    term = std::string(name) + " :=";
  } else if (!lhs_.empty()) {
    term = lhs_ + " " + op_ + " " + std::string(name);
  } else {
    return;
  }
  if (section_ == "R-Square") return;
  if (!isTerm) {
    r.notTerms.push_back(group_ + term);
    return;
  }
  r.terms.push_back({group_ + term, estimate->value, se ? se->value : kUnknown});
}

}  // namespace drav::selection::fits
