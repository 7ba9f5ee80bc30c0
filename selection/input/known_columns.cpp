#include "selection/input/known_columns.hpp"

#include <algorithm>
#include <array>

namespace drav::selection {
namespace {

std::string Lowered(std::string_view name) {
  while (!name.empty() && (name.front() == ' ' || name.front() == '\t')) name.remove_prefix(1);
  while (!name.empty() && (name.back() == ' ' || name.back() == '\t')) name.remove_suffix(1);
  std::string lower(name);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

bool OneOf(std::string_view lower, std::span<const std::string_view> names) {
  return std::find(names.begin(), names.end(), lower) != names.end();
}

// Whole names, lower case.
constexpr std::string_view kStatistics[] = {
    // What Drav and the all-subsets exports compute from the criterion.
    "delta", "weight", "rank", "likelihood", "cumulative_weight", "evidence_ratio", "confidence_set", "modellik",
    "cum.wt",
    // broom's glance() of lm, glm and lme4 fits.
    "r.squared", "adj.r.squared", "sigma", "statistic", "p.value", "deviance", "df.residual", "null.deviance",
    "df.null",
    // broom's tidy().
    "estimate", "conf.low", "conf.high", "effect", "group",
    // coef(summary()) as written, and as data.frame() renames it; anova().
    "t value", "z value", "t.value", "z.value", "pr(>|t|)", "pr(>|z|)", "pr...t..", "pr...z..", "pr(>chisq)",
    "pr(>f)", "f value", "sum sq", "mean sq", "chisq"};

// The criterion differences and weights of bbmle, AICcmodavg and the like:
// dAICc, dLogLik, Delta_AICc, deltaBIC, AICcWt, QAICc.weight.
bool IsDifferenceOrWeight(std::string_view lower) {
  constexpr std::string_view kDifferences[] = {"daic", "daicc", "dbic", "dqaic", "dqaicc", "dloglik", "dic"};
  if (OneOf(lower, kDifferences) || lower.starts_with("delta")) return true;
  const bool ofCriterion = lower.find("aic") != std::string_view::npos || lower.find("bic") != std::string_view::npos;
  return ofCriterion && (lower.ends_with("wt") || lower.ends_with("weight"));
}

constexpr std::string_view kEstimateParts[] = {"estimate", "coefficient", "coef"};
constexpr std::string_view kOtherParts[] = {"statistic", "p.value", "conf.low", "conf.high", "t value",
                                            "z value",   "t.value", "z.value",  "pr(>|t|)",  "pr(>|z|)"};
constexpr char kJoiners[] = {'.', '_', ' '};

bool IsJoiner(char c) { return std::find(std::begin(kJoiners), std::end(kJoiners), c) != std::end(kJoiners); }

// The term when `lower` is PART, a joiner and a term, or a term, a joiner
// and PART, for one of `parts`; `name` gives the term its own case.
std::optional<std::string> TermBeside(std::string_view lower, std::string_view name,
                                      std::span<const std::string_view> parts) {
  const std::size_t lead = name.find_first_not_of(" \t");
  name = name.substr(lead == std::string_view::npos ? name.size() : lead);
  name = name.substr(0, lower.size());
  for (std::string_view part : parts) {
    if (lower.size() <= part.size() + 1) continue;
    if (lower.starts_with(part) && IsJoiner(lower[part.size()])) return std::string(name.substr(part.size() + 1));
    const std::size_t at = lower.size() - part.size() - 1;
    if (lower.ends_with(part) && IsJoiner(lower[at])) return std::string(name.substr(0, at));
  }
  return std::nullopt;
}

}  // namespace

bool IsStatisticColumn(std::string_view name) {
  const std::string lower = Lowered(name);
  return OneOf(lower, kStatistics) || OneOf(lower, kSeSpellings) || IsDifferenceOrWeight(lower);
}

std::optional<SpreadColumn> SpreadColumnOf(std::string_view name) {
  const std::string lower = Lowered(name);
  if (auto term = TermBeside(lower, name, kSeSpellings)) return SpreadColumn{SpreadColumn::Kind::StandardError, *term};
  if (auto term = TermBeside(lower, name, kEstimateParts)) return SpreadColumn{SpreadColumn::Kind::Estimate, *term};
  if (auto term = TermBeside(lower, name, kOtherParts)) return SpreadColumn{SpreadColumn::Kind::Other, *term};
  return std::nullopt;
}

}  // namespace drav::selection
