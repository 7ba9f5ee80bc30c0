#pragma once
// A SAS procedure's table of estimates, for importance and averages:
// LOGISTIC's "Analysis of Maximum Likelihood Estimates", GENMOD's
// "Analysis Of Maximum Likelihood Parameter Estimates", MIXED's and
// GLIMMIX's "Solution for Fixed Effects". SAS right-aligns each column
// under its heading, so a row's estimate is the word that ends where
// "Estimate" ends, its SE the one under "Error", and its name what stands
// before them and the DF: the parameter and a CLASS variable's level,
// "wool B". A level SAS sets to 0 (DF 0, an SE of ".") is not estimated,
// and so not held; GENMOD's Scale is no term.
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

// Whether a listing's line (trimmed) is the title of such a table.
bool IsSasEstimatesTitle(std::string_view title);

// The lines after the title, one at a time, page headers left out.
class SasEstimates {
 public:
  // False once the table has ended, at the blank line after its rows.
  bool Take(std::string_view line);

  std::vector<PrintedTerm> terms;

 private:
  std::size_t estimateEnd_ = std::string_view::npos;
  std::size_t errorEnd_ = std::string_view::npos;
  std::size_t dfEnd_ = std::string_view::npos;
  bool rows_ = false;
};

}  // namespace drav::selection::fits
