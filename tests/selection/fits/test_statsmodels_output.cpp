// statsmodels' summary() as statsmodels 0.13 printed it
// (tests/golden/fits/make-samples.sh), plain and inside a notebook; the
// log-likelihoods are R's logLik() of the same fits, except the Gamma
// GLM's, which statsmodels evaluates at another scale.
#include <gtest/gtest.h>

#include "selection/fits/output_readers.hpp"
#include "tests/selection/fits/expected_fit.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing_support::ExpectedFit;
constexpr double NA = kUnknown;
constexpr auto ML = LikelihoodKind::ML;

class StatsmodelsSample : public ::testing::TestWithParam<ExpectedFit> {};

// Read through the dispatcher, as the command reads a file: the notebook
// is JSON until its printed text is taken out.
TEST_P(StatsmodelsSample, ReadsTheFitAsRComputesIt) {
  Diagnostics diagnostics;
  const auto records =
      ReadProgramOutput(testing_support::SampleText(GetParam().file), GetParam().file, diagnostics);
  testing_support::ExpectFit(records, GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Samples, StatsmodelsSample,
    ::testing::Values(
        // OLS: 4 coefficients (Df Model 3 leaves out the constant) and the
        // variance, as R's logLik(lm) has df = 5.
        ExpectedFit{"Ols", "statsmodels/ols.txt", 0, "ols", 1, -12.97824617, 5, 32, 33.96},
        // Logit prints no AIC.
        ExpectedFit{"LogitWithoutAic", "statsmodels/logit.txt", 0, "logit", 1, -12.88963422, 4, 32, NA},
        ExpectedFit{"GammaGlmScale", "statsmodels/gamma-glm.txt", 0, "gamma-glm", 1, -94.49426388, 4, 32, NA},
        ExpectedFit{"Notebook", "statsmodels/notebook.ipynb", 0, "notebook", 3, -12.97824617, 5, 32, 33.96}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(StatsmodelsOutput, SaysHowItsAicsCount) {
  Diagnostics diagnostics;
  const auto ols = ReaderOf("statsmodels").Read(testing_support::SampleText("statsmodels/ols.txt"), "o", diagnostics);
  EXPECT_NE(ols[0].counting.find("leaves out the error variance"), std::string::npos);
  // Its printed AIC is R's less 2: -2 logLik + 2K with K = 5 is R's AIC().
  EXPECT_NEAR(-2 * ols[0].logLik + 2 * ols[0].k - ols[0].aic, 2, 0.01);
  const auto logit = ReaderOf("statsmodels").Read(testing_support::SampleText("statsmodels/logit.txt"), "l", diagnostics);
  EXPECT_TRUE(logit[0].counting.empty());
}

}  // namespace
}  // namespace drav::selection::fits
