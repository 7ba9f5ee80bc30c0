#pragma once
// Stata's text log: the tables of `estat ic` and `estimates stats`
// (Obs or N, ll(null), ll(model), df, AIC, BIC), one record for each model
// they list, named as `estimates store` named it. The log around the tables
// tells what each fit was: a log pseudolikelihood (vce(robust), cluster,
// pweights) is of the kind that ranking refuses, a restricted likelihood
// (mixed, reml) is REML, and after regress K counts the residual variance
// that Stata's df leaves out.
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"

namespace drav::selection::fits {

bool LooksLikeStataOutput(std::string_view text);

// Refuses a row it cannot read whole and a SMCL log (which `translate` turns
// into text).
std::vector<FitRecord> ReadStataOutput(std::string_view text, const std::string& source, Diagnostics& diagnostics);

}  // namespace drav::selection::fits
