#pragma once
// Stata's table of estimates, as its estimation commands print it, for
// importance and averages: a row a coefficient, its name left of the bar,
// named as _b[] names it: "weight", "_cons", "2.rep78" (a level under its
// factor's heading; "B.wool" where the level shows its value label),
// "inflate:age" (under an equation's heading, which stands at the left
// margin). Base and omitted levels are not estimated,
// and so not held; ancillary parameters ("/sigma", "/lnalpha" and what
// follows them) are no terms; a constrained coefficient has no SE.
#include <string>
#include <string_view>
#include <vector>

#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

// Whether `line` heads a table of estimates: "am | Coefficient  Std. err."
// (Stata 17 and later) or "am |      Coef.   Std. Err." (before).
bool IsStataEstimatesHeading(std::string_view line);

// The lines under a heading, one at a time.
class StataEstimates {
 public:
  // False once the table has ended (its closing rule, or a line that is no
  // row); that line is not the table's.
  bool Take(std::string_view line);

  std::vector<PrintedTerm> terms;
  std::vector<std::string> notTerms;

 private:
  std::string equation_;  // the heading at the left margin the rows stand under
  std::string factor_;    // the factor variable whose levels the rows are
  bool ancillary_ = false;
  bool ended_ = false;
};

}  // namespace drav::selection::fits
