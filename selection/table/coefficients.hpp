#pragma once
// The terms of the candidate models, stored by term as dense columns over
// the models of the table: a million models of ten terms are ten arrays of a
// million numbers, not a million small maps, so that summing a term's
// weights walks memory in order.
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "selection/table/large_page_allocator.hpp"

namespace drav::selection {

struct Term {
  std::string name;
  // By model index of CandidateTable::models. A model holds the term when
  // `held` is 1; its estimate and SE are NaN where the file gives no number
  // (a factor marked only "+", a missing SE).
  // Read in rank order, so on huge pages where the kernel has them.
  std::vector<double, LargePageAllocator<double>> estimate;
  std::vector<double, LargePageAllocator<double>> se;
  std::vector<std::uint8_t, LargePageAllocator<std::uint8_t>> held;

  explicit Term(std::string termName, std::size_t models = 0)
      : name(std::move(termName)),
        estimate(models, std::numeric_limits<double>::quiet_NaN()),
        se(models, std::numeric_limits<double>::quiet_NaN()),
        held(models, 0) {}
};

struct Coefficients {
  std::vector<Term> terms;  // in the order the file first names them
  bool standardErrors = false;  // whether the file has a column of standard errors
};

// An overdispersion factor c widens the variances of the estimates c
// times, as QAIC assumes; standard errors from an ordinary fit are
// multiplied by its root before they are averaged.
inline void InflateForOverdispersion(Coefficients& coefficients, double chat) {
  const double factor = std::sqrt(chat);
  for (Term& term : coefficients.terms) {
    for (double& se : term.se) se *= factor;
  }
}

}  // namespace drav::selection
