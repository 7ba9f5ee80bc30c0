#pragma once
// One fitted model as a statistics program printed it: what Drav needs to
// rank it (log-likelihood, K, n) and what it must know to rank it fairly
// beside others (the kind of likelihood, how the program counts K).
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

namespace drav::selection::fits {

inline constexpr double kUnknown = std::numeric_limits<double>::quiet_NaN();

// What the printed log-likelihood is. Models of different kinds are never
// ranked together without a word.
enum class LikelihoodKind {
  ML,                // the maximised full likelihood
  REML,              // restricted: comparable only between fits with the same fixed effects
  Pseudo,            // a pseudolikelihood after robust or survey variance: no AIC ranks by it
  ConstantsDropped,  // a kernel without its constants (MARK, some SAS): comparable within one program only
  Scaled,            // divided by a scaling factor (a robust estimator's)
  Partial,           // Cox's partial likelihood: of the order of the events, not of the data; ranks only
                     // beside partial likelihoods of the same events
  None,              // the estimator gives no likelihood (WLSMV, Bayes): cannot be ranked
};

std::string_view Name(LikelihoodKind kind);

// A derivation's word that the output prints no n; GiveN puts where n came
// from in its place.
inline constexpr std::string_view kNNotPrinted = "n is not printed (--n gives it)";

// One row of a model's coefficient table, read from the block its
// likelihood came from, named as the program names it (R's coef() names,
// statsmodels' "Intercept", Stata's "_cons"), for importance and averages.
struct PrintedTerm {
  std::string name;
  double estimate = kUnknown;  // NaN where printed NA (aliased): the model does not hold it
  double se = kUnknown;        // NaN where none is printed (a fixed parameter, an aliased one)
};

struct FitRecord {
  std::string model;             // the output's own title, or the file's name without extension
  std::string source;            // the file, as the user named it
  std::int64_t line = 0;         // where the model's output starts in it
  std::string program;           // as the registry of readers (output_readers.cpp) names it
  double logLik = kUnknown;
  double k = kUnknown;           // every estimated parameter, as AIC counts them
  double n = kUnknown;
  double aic = kUnknown;         // as printed; NaN where none was
  double bic = kUnknown;         // as printed
  LikelihoodKind kind = LikelihoodKind::ML;
  // Where the program's own AIC counts parameters otherwise than -2 logL + 2K
  // with every parameter (statsmodels' OLS leaves out the variance): said
  // when such a model is ranked beside another program's.
  std::string counting;
  // How K and n were found where the output does not print them, for
  // --verbose: "K = residual df of the null model - residual df + 1 ...".
  std::string derivation;
  // Half a unit in the last digit the log-likelihood (or what it was
  // derived from) was printed with: 0.005 for "-123.45", 0.5 for
  // statsmodels' "-12346."; 0 where unknown. A ranking that hinges on
  // less than this is said to.
  double logLikHalfUnit = 0;
  // What the reader found amiss with this model, for the listing's
  // warnings column; each also went to the diagnostics.
  std::vector<std::string> warnings;
  // The coefficient table, where the reader reads one; empty where the
  // output prints none (an AIC table, logLik()).
  std::vector<PrintedTerm> terms;
  // The table was cut short where it was printed (R's max.print, an
  // ellipsis): the terms are those printed, and an average is warned of.
  bool termsCutOff = false;
  // What the table printed that is no term to average (random-effect
  // variances, thresholds, variance components), by name, for --verbose.
  std::vector<std::string> notTerms;
};

// "FILE:LINE" of a record, and "'NAME' (PROGRAM, FILE:LINE)": how messages
// name a model among others.
std::string Where(const FitRecord& r);
std::string Named(const FitRecord& r);

// `n`, as --n gives it, to every record whose output prints none, its
// derivation saying so. Done once, as the records are read, so that the
// listing, the notes of --verbose and the ranking all see the same n.
void GiveN(std::vector<FitRecord>& records, double n);

}  // namespace drav::selection::fits
