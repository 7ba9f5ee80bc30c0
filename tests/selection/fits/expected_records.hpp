#pragma once
// The numbers R computed for the fits of a sample output that R printed in
// another program's layout (NAME.expected beside it, written by
// make-samples.sh), and the check that a reader's records are those: what
// the MARK, Stata, SAS and SPSS readers are held to.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "selection/fits/fit_record.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits::testing {

struct ExpectedRecord {
  std::string model;
  std::int64_t line = 0;
  std::string kind;
  double logLik = 0, k = 0, n = 0, aic = 0, bic = 0, tolerance = 0;
};

inline double Cell(const std::string& cell) { return cell == "NA" ? kUnknown : std::stod(cell); }

inline std::vector<ExpectedRecord> ReadExpected(const std::string& name) {
  std::istringstream text(testing_support::SampleText(name));
  std::string row;
  std::getline(text, row);  // header
  std::vector<ExpectedRecord> fits;
  while (std::getline(text, row)) {
    std::vector<std::string> cells;
    std::istringstream fields(row);
    for (std::string cell; std::getline(fields, cell, '\t');) cells.push_back(cell);
    if (cells.size() != 9) {
      ADD_FAILURE() << name << ": " << row;
      continue;
    }
    fits.push_back({cells[0], std::stoll(cells[1]), cells[2], Cell(cells[3]), Cell(cells[4]), Cell(cells[5]),
                    Cell(cells[6]), Cell(cells[7]), Cell(cells[8])});
  }
  return fits;
}

inline const char* KindText(LikelihoodKind kind) {
  switch (kind) {
    case LikelihoodKind::ML: return "ML";
    case LikelihoodKind::REML: return "REML";
    case LikelihoodKind::Pseudo: return "Pseudo";
    case LikelihoodKind::ConstantsDropped: return "ConstantsDropped";
    case LikelihoodKind::Scaled: return "Scaled";
    case LikelihoodKind::Partial: return "Partial";
    case LikelihoodKind::None: return "None";
  }
  return "?";
}

// Unknown on both sides is agreement; a number is held to R's within what
// printing it to the sample's digits allows.
inline void ExpectNear(double got, double expected, double tolerance, const std::string& what) {
  if (std::isnan(expected)) {
    EXPECT_TRUE(std::isnan(got)) << what << " should be unknown, is " << got;
  } else {
    EXPECT_NEAR(got, expected, tolerance) << what;
  }
}

inline void ExpectRecords(const std::vector<FitRecord>& records, const std::string& expectedName) {
  const auto expected = ReadExpected(expectedName);
  ASSERT_EQ(records.size(), expected.size()) << expectedName;
  for (std::size_t i = 0; i < records.size(); ++i) {
    const auto& got = records[i];
    const auto& want = expected[i];
    const std::string what = expectedName + " row " + std::to_string(i + 1) + " (" + want.model + ")";
    EXPECT_EQ(got.model, want.model) << what;
    EXPECT_EQ(got.line, want.line) << what;
    EXPECT_STREQ(KindText(got.kind), want.kind.c_str()) << what;
    ExpectNear(got.logLik, want.logLik, want.tolerance, what + " logLik");
    // The digits the log-likelihood was printed to are known, and R's value
    // lies within them: a ranking told that two models cannot be ordered
    // is told so from these.
    if (!std::isnan(want.logLik)) {
      EXPECT_GT(got.logLikHalfUnit, 0) << what;
      EXPECT_LE(got.logLikHalfUnit, want.tolerance) << what;
      EXPECT_NEAR(got.logLik, want.logLik, got.logLikHalfUnit + 1e-9) << what << " to its printed digits";
    }
    ExpectNear(got.k, want.k, 1e-9, what + " K");
    ExpectNear(got.n, want.n, 1e-9, what + " n");
    ExpectNear(got.aic, want.aic, want.tolerance, what + " AIC");
    ExpectNear(got.bic, want.bic, want.tolerance, what + " BIC");
  }
}

}  // namespace drav::selection::fits::testing
