// R's printed output, read from transcripts that R, lme4 and knitr wrote
// (tests/golden/fits/make-samples.sh): every model found with the numbers
// R's own logLik(), nobs() and AIC() give for the same fits.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include <cmath>

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

TEST(ROutput, QuasiFamilyHasNoLikelihood) {
  Diagnostics diagnostics;
  const auto records = kR.Read(testing_support::SampleText("r/glm-transcript.Rout"), "t.Rout", diagnostics);
  ASSERT_EQ(records.size(), 4u);
  EXPECT_EQ(records[3].kind, LikelihoodKind::None);
  EXPECT_TRUE(std::isnan(records[3].logLik));
  ASSERT_EQ(diagnostics.All().size(), 1u);
  EXPECT_NE(diagnostics.All()[0].text.find("quasipoisson"), std::string::npos);
}

// glmer stopped short of the maximum (make-real-outputs.sh): read, and
// lme4's word on it is the model's warning.
TEST(ROutput, AFitThatDidNotConvergeIsWarnedOf) {
  Diagnostics diagnostics;
  const auto records =
      kR.Read(testing_support::SampleText("../real/glmer-convergence-warnings.txt"), "g.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  ASSERT_EQ(records[0].warnings.size(), 1u);
  EXPECT_NE(records[0].warnings[0].find("did not converge (\"optimizer (Nelder_Mead) convergence code: 4"),
            std::string::npos)
      << records[0].warnings[0];
}

// print() of lm shows no residual standard error, and a weighted fit's
// likelihood holds weights no summary prints: neither gives a
// log-likelihood, and the refusal says why.
TEST(ROutput, LmWithoutALikelihoodIsRefusedWithTheReason) {
  const std::string call = "\nCall:\nlm(formula = mpg ~ wt, data = mtcars)\n\n";
  const std::string printed = call + "Coefficients:\n(Intercept)           wt  \n     37.285       -5.344  \n";
  const std::string weighted = call + "Weighted Residuals:\n    Min      1Q  Median      3Q     Max \n-4.1 -2.2 -0.1 1.4 6.9\n\n"
                               "Coefficients:\n            Estimate Std. Error t value Pr(>|t|)\n"
                               "(Intercept)  37.2851     1.8776  19.858  < 2e-16 ***\n"
                               "wt           -5.3445     0.5591  -9.559 1.29e-10 ***\n\n"
                               "Residual standard error: 3.046 on 30 degrees of freedom\n";
  for (const auto& [text, why] : {std::pair{printed, "line 2: print() of lm prints no log-likelihood"},
                                  std::pair{weighted, "line 2: summary() of a weighted lm"}}) {
    Diagnostics diagnostics;
    try {
      kR.Read(text, "lm.txt", diagnostics);
      ADD_FAILURE() << "read " << text;
    } catch (const DataError& error) {
      EXPECT_NE(std::string(error.what()).find(why), std::string::npos) << error.what();
    }
  }
}

// logLik() of an object the transcript assigned a coxph fit to is a
// partial likelihood, though the line does not say so.
TEST(ROutput, LogLikOfACoxFitIsPartial) {
  const std::string text = "> cx <- coxph(Surv(futime, fustat) ~ rx, data = ovarian)\n> logLik(cx)\n"
                           "'log Lik.' -34.25774 (df=2)\n";
  Diagnostics diagnostics;
  const auto records = kR.Read(text, "cox.Rout", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::Partial);
  EXPECT_EQ(records[0].model, "cx");
}

// glance() of an lmer REML fit as a data frame, then a tibble that left
// nobs out for the console's width: REML as its REMLcrit says, K from AIC
// and logLik, and no n shared between two unnamed models.
TEST(ROutput, GlanceKeepsItsKindAndItsOwnN) {
  const std::string text =
      "  nobs    sigma    logLik      AIC      BIC REMLcrit df.residual\n"
      "1  180 30.99123 -893.2325 1794.465 1807.237 1786.465         176\n\n"
      "# A tibble: 1 \u00d7 8\n  null.deviance df.null    logLik      AIC      BIC deviance\n"
      "          <dbl>   <int>     <dbl>    <dbl>    <dbl>    <dbl>\n"
      "1      409.0412      71 -182.2946 376.5892 390.2492 98.32866\n"
      "# \u2026 with 2 more variables: df.residual <int>, nobs <int>\n";
  Diagnostics diagnostics;
  const auto records = kR.Read(text, "glance.txt", diagnostics);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].kind, REML);
  EXPECT_EQ(records[0].k, 4);
  EXPECT_EQ(records[0].n, 180);
  EXPECT_EQ(records[1].k, 6);
  EXPECT_TRUE(std::isnan(records[1].n));
}

// The inverse Gaussian family, like the Gamma, has a dispersion that R's AIC
// counts: K, and so logLik = K - AIC/2, as R's logLik() and nobs() give them
// (inverse-gaussian.expected, written beside the output by make-samples.sh).
TEST(ROutput, InverseGaussianDispersionIsCounted) {
  const std::string text = testing_support::SampleText("r/inverse-gaussian.log");
  Diagnostics strict(true);  // nothing here is in doubt
  testing::ExpectRecords(kR.Read(text, "r/inverse-gaussian.log", strict), "r/inverse-gaussian.expected");
}

// An lme4 summary cut off right after "Random effects:" has no table to
// count; its header was read from past the end of the lines (the sanitizer
// run sees it).
TEST(ROutput, RandomEffectsHeadingAtTheEndIsNoTable) {
  Diagnostics diagnostics;
  const auto records = kR.Read("Linear mixed model fit by REML\nREML criterion at convergence: 100\nRandom effects:",
                                   "cut.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].k, 0);
  EXPECT_EQ(records[0].logLik, -50);
}

}  // namespace
}  // namespace drav::selection::fits
