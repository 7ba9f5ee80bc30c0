#pragma once
// The one list of column names that the statistics packages write beside a
// model and that never hold a term: Drav's own computed columns and those of
// the all-subsets exports (delta, weight, AICcWt), bbmle's dAICc and
// dLogLik, broom's glance() and tidy() columns, R's coef(summary()) and
// anova() columns. The wide reader never takes them for terms; the long
// reader finds its term, estimate and SE columns by the spellings here.
// Names are matched without case and surrounding blanks.
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace drav::selection {

// A statistic of the model or of a term that is not a term itself:
// r.squared, p.value, "t value", "Pr(>|t|)", dAICc, delta_AICc, AICcWt...
bool IsStatisticColumn(std::string_view name);

// A wide column that spreads one statistic of a term over the models, as
// reshape(direction = "wide") and pivot_wider() spread tidy(): estimate.X,
// std.error_X, X_se, se.X, p.value.X.
struct SpreadColumn {
  enum class Kind {
    Estimate,       // estimate.X, estimate_X: the term X itself
    StandardError,  // std.error.X, X_se, se_X...: X's standard errors
    Other,          // statistic.X, p.value_X, conf.low.X: never a term
  };
  Kind kind;
  std::string term;  // X, as the header spells it
};
std::optional<SpreadColumn> SpreadColumnOf(std::string_view name);

// The long form's columns, each by its spellings, the first listed read
// where a file has two.
inline constexpr std::string_view kTermSpellings[] = {"term", "parameter"};
inline constexpr std::string_view kEstimateSpellings[] = {"estimate", "coefficient", "coef"};
inline constexpr std::string_view kSeSpellings[] = {"std.error", "se",         "std. error", "std..error",
                                                    "std_error", "std.err",    "stderr",     "standard error",
                                                    "s.e."};

}  // namespace drav::selection
