#pragma once
// One model as a reader must find it in a sample output, and the check
// that it does: the numbers are what the program itself computes on the
// same fit (R's logLik(), nobs() and AIC(); lavaan's and statsmodels' own),
// so a reader that derives a log-likelihood from a rounded AIC must land
// within the rounding it reports.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "selection/fits/fit_record.hpp"

namespace drav::testing_support {

struct ExpectedFit {
  const char* name;  // the case's name, for the test's
  std::string file;
  std::size_t index;  // which record of the file
  std::string model;
  std::int64_t line;
  double logLik;  // the program's own, to its full precision
  double k;
  double n;    // NaN: not printed
  double aic;  // as printed; NaN: none
  selection::fits::LikelihoodKind kind = selection::fits::LikelihoodKind::ML;
  double printedTo = 0.05;  // the most the printed digits may leave open of logLik
};

inline void ExpectFit(const std::vector<selection::fits::FitRecord>& records, const ExpectedFit& want) {
  ASSERT_LT(want.index, records.size());
  const selection::fits::FitRecord& r = records[want.index];
  EXPECT_EQ(r.model, want.model);
  EXPECT_EQ(r.line, want.line);
  EXPECT_EQ(r.kind, want.kind);
  // Within what the printed digits allow, which are no coarser than said.
  EXPECT_LE(r.logLikHalfUnit, want.printedTo);
  EXPECT_NEAR(r.logLik, want.logLik, r.logLikHalfUnit + 1e-9) << r.derivation;
  EXPECT_EQ(r.k, want.k) << r.derivation;
  if (std::isnan(want.n)) {
    EXPECT_TRUE(std::isnan(r.n));
  } else {
    EXPECT_EQ(r.n, want.n) << r.derivation;
  }
  if (std::isnan(want.aic)) {
    EXPECT_TRUE(std::isnan(r.aic));
  } else {
    EXPECT_DOUBLE_EQ(r.aic, want.aic);
  }
}

}  // namespace drav::testing_support
