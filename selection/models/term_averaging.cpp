#include "selection/models/term_averaging.hpp"

#include <cmath>
#include <limits>

#include "selection/models/normal_quantile.hpp"
#include "selection/models/revised_average.hpp"
#include "selection/parallel/bucket_sort.hpp"

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
  if (summary.models > 0) {
    const AverageWithSe conditional = RevisedAverage([&](auto visit) {
      for (const Member& m : members) {
        if (term.held[m.index]) {
          visit(std::exp(-(m.delta - bestDelta) / 2), term.estimate[m.index], term.se[m.index]);
        }
      }
    });
    a.estimate = conditional.estimate;
    a.se = conditional.se;
  } else {
    a.estimate = a.se = kNaN;
  }
  // A model without the term counts as an estimate of 0 with SE 0.
  const AverageWithSe full = RevisedAverage(
      [&](auto visit) {
        for (const Member& m : members) {
          const bool held = term.held[m.index];
          visit(m.weight, held ? term.estimate[m.index] : 0.0, held ? term.se[m.index] : 0.0);
        }
      },
      true);
  a.fullEstimate = full.estimate;
  a.fullSe = full.se;
  a.lower = a.estimate - z * a.se;
  a.upper = a.estimate + z * a.se;
  return a;
}

}  // namespace

std::vector<TermAverage> AverageTerms(const Coefficients& coefficients, const std::vector<Member>& members,
                                      const std::vector<TermImportance>& terms, double level, unsigned threads) {
  const double z = NormalQuantile(0.5 + level / 2);
  std::vector<TermAverage> result(terms.size());
  InTwoHalves(terms.size(), threads, [&](std::size_t begin, std::size_t end) {
    for (std::size_t t = begin; t < end; ++t) result[t] = AverageTerm(coefficients.terms[terms[t].term], members, terms[t], z);
  });
  return result;
}

}  // namespace drav::selection
