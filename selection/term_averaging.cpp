#include "selection/term_averaging.hpp"

#include <cmath>
#include <limits>

#include "selection/normal_quantile.hpp"

namespace drav::selection {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TermAverage AverageTerm(const Term& term, const std::vector<Member>& members, const TermImportance& summary,
                        double z) {
  TermAverage a;
  a.summary = summary;
  // The conditional weights come from exp(-delta/2) against the best model
  // that holds the term, not from the set's weights: when every such model
  // sits far behind, their set weights have underflowed to 0 and could not
  // be renormalised.
  double bestDelta = INFINITY;
  for (const Member& m : members) {
    if (term.held[m.index]) bestDelta = std::fmin(bestDelta, m.delta);
  }
  double sum = 0;
  double weighted = 0;
  double full = 0;
  for (const Member& m : members) {
    if (!term.held[m.index]) continue;
    const double w = std::exp(-(m.delta - bestDelta) / 2);
    sum += w;
    weighted += w * term.estimate[m.index];
    full += m.weight * term.estimate[m.index];
  }
  a.estimate = summary.models > 0 ? weighted / sum : kNaN;
  a.fullEstimate = full;
  double variance = 0;
  double fullVariance = 0;
  for (const Member& m : members) {
    if (!term.held[m.index]) {
      fullVariance += m.weight * full * full;
      continue;
    }
    const double theta = term.estimate[m.index];
    const double se2 = term.se[m.index] * term.se[m.index];
    const double w = std::exp(-(m.delta - bestDelta) / 2) / sum;
    variance += w * (se2 + (theta - a.estimate) * (theta - a.estimate));
    fullVariance += m.weight * (se2 + (theta - full) * (theta - full));
  }
  a.se = summary.models > 0 ? std::sqrt(variance) : kNaN;
  a.fullSe = std::sqrt(fullVariance);
  a.lower = a.estimate - z * a.se;
  a.upper = a.estimate + z * a.se;
  return a;
}

}  // namespace

std::vector<TermAverage> AverageTerms(const Coefficients& coefficients, const std::vector<Member>& members,
                                      const std::vector<TermImportance>& terms, double level) {
  const double z = NormalQuantile(0.5 + level / 2);
  std::vector<TermAverage> result;
  result.reserve(terms.size());
  for (const TermImportance& t : terms) result.push_back(AverageTerm(coefficients.terms[t.term], members, t, z));
  return result;
}

}  // namespace drav::selection
