// Importance and the conditional and full averages of every term, on a set
// small enough to work by hand. The subsets they can be taken over are
// tests/golden/subsets.batch's.
#include "selection/models/term_averaging.hpp"

#include <gtest/gtest.h>

#include <cmath>

#include "selection/models/importance.hpp"

namespace drav::selection {
namespace {

constexpr double kNaN = NAN;

// Models A, B, C with AIC 0, 2 ln 3 and 2 ln 6: likelihoods 1, 1/3, 1/6,
// which sum to 3/2, so the weights are 2/3, 2/9 and 1/9.
CandidateTable ThreeModels() {
  CandidateTable table;
  table.sets = {""};
  table.models = {Candidate{.model = "A", .value = 0}, Candidate{.model = "B", .value = 2 * std::log(3.0)},
                  Candidate{.model = "C", .value = 2 * std::log(6.0)}};
  return table;
}

Term Held(const char* name, const std::vector<double>& estimate, const std::vector<double>& se,
          const std::vector<std::uint8_t>& held) {
  Term term(name);
  term.estimate.assign(estimate.begin(), estimate.end());
  term.se.assign(se.begin(), se.end());
  term.held.assign(held.begin(), held.end());
  return term;
}

Coefficients FourTerms() {
  Coefficients c;
  // x: A 1 (SE 0.5), B 4 (SE 1), not C. y: every model. f: C as a factor
  // with no number. z: no model.
  c.terms.push_back(Held("x", {1, 4, kNaN}, {0.5, 1, kNaN}, {1, 1, 0}));
  c.terms.push_back(Held("y", {2, 2, 2}, {0, 0, 0}, {1, 1, 1}));
  c.terms.push_back(Held("f", {kNaN, kNaN, kNaN}, {kNaN, kNaN, kNaN}, {0, 0, 1}));
  c.terms.push_back(Held("z", {kNaN, kNaN, kNaN}, {kNaN, kNaN, kNaN}, {0, 0, 0}));
  return c;
}

struct Expected {
  const char* term;
  double importance;
  std::size_t models;
  double estimate, se, fullEstimate, fullSe;  // NaN: no value
};

// Sorted by importance: y 1, x 8/9, f 1/9, z 0.
//  x conditional: over A and B the weights are 1 : 1/3, so 3/4 and 1/4;
//    estimate 3/4 * 1 + 1/4 * 4 = 1.75; variance
//    3/4 (0.25 + 0.75^2) + 1/4 (1 + 2.25^2) = 0.609375 + 1.515625 = 2.125.
//  x full: 2/3 * 1 + 2/9 * 4 + 1/9 * 0 = 14/9; variance
//    2/3 (1/4 + (5/9)^2) + 2/9 (1 + (22/9)^2) + 1/9 (14/9)^2
//    = 1/6 + 150/729 + 162/729 + 968/729 + 196/729 = 1/6 + 164/81 = 1065/486.
//  y: 2 in every model, SE 0: 2 and 0 both ways.
//  f: held without a number: no averages. z: held by no model: the full
//    average is 0 with SE 0, the conditional one does not exist.
const Expected kExpected[] = {
    {"y", 1, 3, 2, 0, 2, 0},
    {"x", 8.0 / 9, 2, 1.75, std::sqrt(2.125), 14.0 / 9, std::sqrt(1065.0 / 486)},
    {"f", 1.0 / 9, 1, kNaN, kNaN, kNaN, kNaN},
    {"z", 0, 0, kNaN, kNaN, 0, 0},
};

void ExpectSame(double got, double expected, const std::string& what) {
  if (std::isnan(expected)) {
    EXPECT_TRUE(std::isnan(got)) << what << " is " << got;
  } else {
    EXPECT_NEAR(got, expected, 1e-12 * std::max(1.0, std::fabs(expected))) << what;
  }
}

TEST(TermAveraging, ImportanceConditionalAndFullAverages) {
  const CandidateTable table = ThreeModels();
  const Coefficients coefficients = FourTerms();
  const auto members = MembersInTableOrder(Rank(table, {})[0]);
  // One thread, or two taking half the terms each: the same numbers.
  for (unsigned threads : {1u, 2u}) {
    SCOPED_TRACE(threads);
    const auto importance = Importance(coefficients, members, false, threads);
    const auto averages = AverageTerms(coefficients, members, importance, 0.9, threads);
    ASSERT_EQ(averages.size(), std::size(kExpected));
    for (std::size_t i = 0; i < averages.size(); ++i) {
      const TermAverage& a = averages[i];
      const Expected& e = kExpected[i];
      const std::string term = coefficients.terms[a.summary.term].name;
      EXPECT_EQ(term, e.term) << "row " << i;
      ExpectSame(a.summary.importance, e.importance, term + " importance");
      EXPECT_EQ(a.summary.models, e.models) << term;
      ExpectSame(a.estimate, e.estimate, term + " estimate");
      ExpectSame(a.se, e.se, term + " se");
      ExpectSame(a.fullEstimate, e.fullEstimate, term + " full estimate");
      ExpectSame(a.fullSe, e.fullSe, term + " full se");
      // z for 90% is 1.6448536269514722.
      ExpectSame(a.lower, e.estimate - 1.6448536269514722 * e.se, term + " lower");
      ExpectSame(a.upper, e.estimate + 1.6448536269514722 * e.se, term + " upper");
    }
  }
  const auto importance = Importance(coefficients, members, false);
  // y in every model is left out of the caution; x (2 models) against z (0).
  EXPECT_EQ(UnequalCountsWarning(coefficients, importance, 3),
            "terms appear in unequal numbers of models ('x' in 2, 'z' in 0 of 3); their summed weights do not "
            "compare fairly unless each term is in as many models as the others");
  EXPECT_FALSE(UnequalCountsWarning(coefficients, {importance[0], importance[1]}, 3));
}

TEST(TermAveraging, ModelsFarBehindStillAverage) {
  // The two models with the term trail by 3000: their set weights are 0,
  // but among themselves they weigh 1/2 each; estimate 3, SE sqrt(1/2 + 1/2).
  CandidateTable table;
  table.sets = {""};
  table.models = {Candidate{.model = "", .value = 0}, Candidate{.model = "", .value = 3000},
                  Candidate{.model = "", .value = 3000}};
  Coefficients c;
  c.terms.push_back(Held("x", {kNaN, 2, 4}, {kNaN, 0, 0}, {0, 1, 1}));
  const auto members = MembersInTableOrder(Rank(table, {})[0]);
  const auto a = AverageTerms(c, members, Importance(c, members, false), 0.95)[0];
  EXPECT_DOUBLE_EQ(a.estimate, 3);
  EXPECT_DOUBLE_EQ(a.se, 1);
  EXPECT_EQ(a.fullEstimate, 0);
}

}  // namespace
}  // namespace drav::selection
