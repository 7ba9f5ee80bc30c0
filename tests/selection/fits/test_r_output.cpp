// R's printed output, read from transcripts that R, lme4 and knitr wrote
// (tests/golden/fits/make-samples.sh): every model found with the numbers
// R's own logLik(), nobs() and AIC() give for the same fits.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>


#include "base/errors.hpp"
#include "tests/selection/fits/expected_fit.hpp"
#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing_support::ExpectedFit;
constexpr double NA = kUnknown;
constexpr auto REML = LikelihoodKind::REML;
const OutputReader& kR = ReaderOf("R");

class RSample : public ::testing::TestWithParam<ExpectedFit> {};

TEST_P(RSample, ReadsTheFitAsRComputesIt) {
  const std::string text = testing_support::SampleText(GetParam().file);
  Diagnostics diagnostics;
  testing_support::ExpectFit(kR.Read(text, GetParam().file, diagnostics), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Samples, RSample,
    ::testing::Values(
        // summary(glm): n and K from the residual df and the coefficients;
        // the logLik() line after it gives the log-likelihood's digits.
        ExpectedFit{"PoissonWithLogLikLine", "r/glm-transcript.Rout", 0, "count ~ spray", 21, -182.294604, 6, 72, 376.59},
        // Gaussian: one more parameter for the dispersion; two rows dropped
        // for missing values are not in n.
        ExpectedFit{"GaussianWithMissing", "r/glm-transcript.Rout", 1, "mpg ~ wt + hp", 54, -69.980570, 4, 30, 147.96},
        ExpectedFit{"GammaDispersion", "r/glm-transcript.Rout", 2, "mpg ~ wt", 81, -75.554359, 3, 32, 157.11},
        ExpectedFit{"KnitrPrefixes", "r/knitted.md", 1, "count ~ 1", 48, -337.650869, 1, 72, 677.3},
        // lme4 ML: K = n - df.resid; logLik from the deviance's digits.
        ExpectedFit{"LmerMl", "r/lme4-ml.txt", 1, "Reaction ~ Days + (Days | Subject)", 26, -875.969672, 6, 180, 1763.9},
        ExpectedFit{"NewerDevianceHeading", "r/lme4-newer-heading.txt", 0, "Reaction ~ Days + (1 | Subject)", 1,
                    -897.039322, 4, 180, 1802.1},
        ExpectedFit{"Glmer", "r/lme4-ml.txt", 4, "cbind(incidence, size - incidence) ~ period + (1 | herd)", 61,
                    -92.026566, 5, 56, 194.1},
        // anova(): npar and logLik per row, named by the Models: list; n
        // from the summary of the same formula.
        ExpectedFit{"AnovaRow", "r/lme4-ml.txt", 3, "Reaction ~ Days + (Days | Subject)", 58, -875.969672, 6, 180, 1763.9},
        // REML: no AIC; K counted from the random and fixed effects, with
        // correlated terms of one factor and print()'s layout.
        ExpectedFit{"RemlSummary", "r/lme4-reml.txt", 0, "Reaction ~ Days + (Days | Subject)", 1, -871.814136, 6, 180,
                    NA, REML},
        ExpectedFit{"RemlPrintUncorrelated", "r/lme4-reml.txt", 1, "Reaction ~ Days + (1 | Subject) + (0 + Days | Subject)",
                    26, -871.834647, 5, 180, NA, REML},
        // logLik() alone: K from df, no n.
        ExpectedFit{"LogLikOnly", "r/loglik-only.txt", 0, "loglik-only", 1, -182.294604, 6, NA, NA}),
    [](const auto& info) { return std::string(info.param.name); });

// What is read with a word of doubt, or refused with the reason, is in
// tests/golden/fits-r.batch.

// The inverse Gaussian family, like the Gamma, has a dispersion that R's AIC
// counts: K, and so logLik = K - AIC/2, as R's logLik() and nobs() give them
// (inverse-gaussian.expected, written beside the output by make-samples.sh).
TEST(ROutput, InverseGaussianDispersionIsCounted) {
  const std::string text = testing_support::SampleText("r/inverse-gaussian.log");
  Diagnostics strict(true);  // nothing here is in doubt
  testing::ExpectRecords(kR.Read(text, "r/inverse-gaussian.log", strict), "r/inverse-gaussian.expected");
}

}  // namespace
}  // namespace drav::selection::fits
