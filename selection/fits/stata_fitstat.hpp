#pragma once
// SPost's fitstat in a Stata log, in either package's layout. SPost 9
// (fitstat 1.x) lists its measures two to a line under "Measures of Fit
// for logit of am", or, with using(), in columns Current, Saved and
// Difference; SPost 13 (fitstat 4.x) prints a table with one column headed
// by the command, or, with diff, the same three. Current is the model in
// memory, Saved one fitted before it; Difference is no model.
#include <cstdint>
#include <string>
#include <vector>

#include "selection/fits/fit_record.hpp"
#include "selection/fits/printed_text.hpp"
#include "selection/fits/stata_log.hpp"

namespace drav::selection::fits {

struct FitstatModel {
  std::int64_t line = 0;  // the table's first line
  bool saved = false;     // the Saved column: a model fitted before the one in memory
  Printed logLik{kUnknown, 0};
  double k = kUnknown;    // as Stata's estat ic counts; after regress without the residual variance
  double n = kUnknown;
  double aic = kUnknown;  // Stata's, as printed
  double bic = kUnknown;
  bool regress = false;
  std::string derivation;
};

// Whether lines[at] starts a fitstat table.
bool StartsFitstat(const std::vector<StataLogLine>& lines, std::size_t at);

// The models of the table that starts at lines[at], the one column or
// Current first, then Saved; `at` moves to the table's last line. A column
// without a log-likelihood, or K, is no model.
std::vector<FitstatModel> ReadFitstat(const std::vector<StataLogLine>& lines, std::size_t& at);

}  // namespace drav::selection::fits
