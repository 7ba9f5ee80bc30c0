// The criteria against values worked by hand, with the arithmetic written
// out beside each row.
#include "selection/criterion.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace drav::selection {
namespace {

struct Case {
  const char* name;
  Criterion criterion;
  Fit fit;
  double expected;
};

class CriterionValue : public ::testing::TestWithParam<Case> {};

TEST_P(CriterionValue, MatchesHandArithmetic) {
  const Case& c = GetParam();
  EXPECT_DOUBLE_EQ(Compute(c.criterion, c.fit), c.expected);
}

INSTANTIATE_TEST_SUITE_P(
    Hand, CriterionValue,
    ::testing::Values(
        // -2(-10) + 2*2 = 20 + 4
        Case{"Aic", Criterion::AIC, {-10, 2, 10, 1}, 24},
        // 24 + 2*2*3/(10-2-1) = 24 + 12/7
        Case{"Aicc", Criterion::AICc, {-10, 2, 10, 1}, 24 + 12.0 / 7},
        // n large against K: 2*3*4/(1000-3-1) = 24/996 on top of 20 + 6
        Case{"AiccLargeN", Criterion::AICc, {-10, 3, 1000, 1}, 26 + 24.0 / 996},
        // 20 + 2 ln 100 = 20 + 4 ln 10 = 20 + 9.210340371976184
        Case{"Bic", Criterion::BIC, {-10, 2, 100, 1}, 29.210340371976184},
        // -2(-10)/2 + 2*2 = 10 + 4
        Case{"Qaic", Criterion::QAIC, {-10, 2, 10, 2}, 14},
        // A positive log-likelihood (densities above 1): -2(3.5) + 2*1 = -5
        Case{"PositiveLogLik", Criterion::AIC, {3.5, 1, 10, 1}, -5}),
    [](const auto& info) { return info.param.name; });

TEST(Criterion, NamesReadBack) {
  for (Criterion c : {Criterion::AIC, Criterion::AICc, Criterion::BIC, Criterion::QAIC}) {
    EXPECT_EQ(CriterionNamed(Name(c)), c);
  }
  EXPECT_FALSE(CriterionNamed("dic"));
}

}  // namespace
}  // namespace drav::selection
