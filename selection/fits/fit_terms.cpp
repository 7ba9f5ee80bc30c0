#include "selection/fits/fit_terms.hpp"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "base/errors.hpp"

namespace drav::selection::fits {
namespace {

// A model in a message that names its place already.
std::string Model(const FitRecord& r) { return "model '" + r.model + "'"; }

// Each program names terms its own way: the constant alone is "(Intercept)"
// in R, "Intercept" or "const" in statsmodels, "_cons" in Stata. Two
// programs' names are averaged together only where the user mapped them.
void CheckPrograms(const std::vector<const FitRecord*>& ranked, const TermsRequest& request) {
  if (request.names && !request.names->Empty()) return;
  // The first model of each set, and the first of another program in it.
  std::map<std::uint32_t, const FitRecord*> firstOf;
  const FitRecord* first = nullptr;
  const FitRecord* other = nullptr;
  for (std::size_t i = 0; i < ranked.size() && !other; ++i) {
    const FitRecord*& setFirst = firstOf.try_emplace(request.sets ? (*request.sets)[i] : 0, ranked[i]).first->second;
    if (setFirst->program != ranked[i]->program) std::tie(first, other) = std::pair(setFirst, ranked[i]);
  }
  if (!other) return;
  Refuse({.file = other->source, .line = other->line,
          .text = "model " + Named(*first) + " comes from " + first->program + " and model " + Named(*other) + " from " + other->program +
                  ", which name their terms differently; --term-names FILE maps one's names to the other's (one a "
                  "line: \"_cons = (Intercept)\")"});
}

// The terms of a model printed without an SE (print() shows estimates
// only; a parameter fixed in the model has none), said once a model.
void TellWithoutSe(const FitRecord& r, const std::vector<std::string>& names, Diagnostics& diagnostics) {
  if (names.empty()) return;
  std::string list;
  for (std::size_t i = 0; i < names.size() && i < 3; ++i) list += (i > 0 ? ", '" : "'") + names[i] + "'";
  if (names.size() > 3) list += " and " + std::to_string(names.size() - 3) + " more";
  diagnostics.Warn(Model(r) + ": " + (names.size() == 1 ? "term " : "terms ") + list +
                       (names.size() == 1 ? " is" : " are") +
                       " printed without a standard error (print() of a fit shows none, nor has a fixed or "
                       "inestimable parameter one), so " + (names.size() == 1 ? "its" : "their") + " averages have none",
                   r.source, r.line);
}

}  // namespace

Coefficients TermsOfFits(const std::vector<const FitRecord*>& ranked, const TermsRequest& request,
                         Diagnostics& diagnostics) {
  Coefficients coefficients;
  if (ranked.empty()) return coefficients;
  CheckPrograms(ranked, request);
  std::map<std::string, std::size_t, std::less<>> byName;
  const TermNames none;
  const TermNames& names = request.names ? *request.names : none;
  for (std::size_t model = 0; model < ranked.size(); ++model) {
    const FitRecord& r = *ranked[model];
    if (r.terms.empty()) {
      Refuse({.file = r.source, .line = r.line,
              .text = Model(r) + ": its output prints no coefficient table to take terms from" +
                      (r.program == "R" ? "; print summary() of the fit, or leave it out" : ", or leave it out")});
    }
    if (r.termsCutOff) {
      diagnostics.Warn(Model(r) + ": its coefficient table was cut short where it was printed; the terms past the "
                                  "cut are missing from it",
                       r.source, r.line);
    }
    if (request.verbose && !r.notTerms.empty()) {
      std::string list;
      for (const std::string& name : r.notTerms) list += (list.empty() ? "" : ", ") + name;
      diagnostics.Note(Model(r) + ": not terms, left out: " + list, r.source, r.line);
    }
    std::vector<std::string> withoutSe;
    for (const PrintedTerm& printed : r.terms) {
      const std::string& name = names.Of(printed.name);
      // A coefficient the fit could not estimate is one the model does not
      // hold, as a table's NA is: no term of its own where no model has it.
      if (std::isnan(printed.estimate)) {
        if (request.verbose) diagnostics.Note(Model(r) + ": term '" + name + "' is NA (aliased): the model does not hold it", r.source, r.line);
        continue;
      }
      const auto [at, added] = byName.emplace(name, coefficients.terms.size());
      if (added) coefficients.terms.emplace_back(name, ranked.size());
      Term& term = coefficients.terms[at->second];
      if (term.held[model]) {
        Refuse({.file = r.source, .line = r.line,
                .text = Model(r) + " prints term '" + name + "' twice" +
                        (names.Empty() ? std::string() : " (as --term-names maps it)")});
      }
      term.held[model] = 1;
      term.estimate[model] = printed.estimate;
      term.se[model] = printed.se;
      if (!std::isnan(printed.se)) {
        coefficients.standardErrors = true;
      } else if (request.estimate.empty() || request.estimate == name) {
        withoutSe.push_back(name);
      }
    }
    if (request.averages) TellWithoutSe(r, withoutSe, diagnostics);
  }
  return coefficients;
}

std::vector<Estimate> EstimatesOfTerm(const Coefficients& coefficients, const std::string& term, std::size_t models) {
  std::vector<Estimate> estimates(models);
  for (const Term& t : coefficients.terms) {
    if (t.name != term) continue;
    for (std::size_t i = 0; i < models; ++i) {
      if (t.held[i]) estimates[i] = {t.estimate[i], t.se[i]};
    }
  }
  return estimates;
}

}  // namespace drav::selection::fits
