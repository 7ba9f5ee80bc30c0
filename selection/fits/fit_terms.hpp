#pragma once
// The terms of models read from programs' printed outputs, for importance
// and averages: each model's coefficient table, read from the block its
// likelihood came from, gathered by term over the ranked models as a
// table's term columns are. A term a model's table does not print is one
// it does not hold; one printed NA (aliased) too, said under --verbose; a
// term printed without an SE is held, its SE unknown and said, never
// guessed. Names from two programs do not mix ("_cons", "Intercept",
// "(Intercept)") unless --term-names maps them.
#include <cstdint>
#include <string>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/fits/fit_record.hpp"
#include "selection/fits/term_names.hpp"
#include "selection/table/candidate_table.hpp"
#include "selection/table/coefficients.hpp"

namespace drav::selection::fits {

struct TermsRequest {
  const TermNames* names = nullptr;  // --term-names; null or empty: the printed names
  bool averages = false;             // the estimates are averaged, not only counted: a missing SE matters
  std::string estimate;              // the one term averaged (average --estimate); empty: every term
  bool verbose = false;              // say what each table printed that is no term
  // The set of each model under --by, one for one with the models; null:
  // one set. Programs mix only where a set holds both.
  const std::vector<std::uint32_t>* sets = nullptr;
};

// `ranked` holds the record of each model of the table, one for one.
// Throws DataError where a model's output prints no coefficient table, or
// the models come from programs that name terms their own ways and
// --term-names maps none of them.
Coefficients TermsOfFits(const std::vector<const FitRecord*>& ranked, const TermsRequest& request,
                         Diagnostics& diagnostics);

// Each model's estimate and SE of the term named `term` (by its common
// name), NaN where the model does not hold it: what `average --estimate
// TERM` averages.
std::vector<Estimate> EstimatesOfTerm(const Coefficients& coefficients, const std::string& term, std::size_t models);

}  // namespace drav::selection::fits
