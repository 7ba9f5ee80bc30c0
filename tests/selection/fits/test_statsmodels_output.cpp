// statsmodels' summary() as statsmodels 0.13 printed it
// (tests/golden/fits/make-samples.sh), plain and inside a notebook; the
// log-likelihoods are R's logLik() of the same fits, except the Gamma
// GLM's, which statsmodels evaluates at another scale.
#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "selection/fits/output_readers.hpp"
#include "tests/selection/fits/expected_fit.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing_support::ExpectedFit;
constexpr double NA = kUnknown;

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

// What each summary reads as, MixedLM's and summary2()'s among them, is
// in tests/golden/fits-statsmodels.batch.

}  // namespace
}  // namespace drav::selection::fits
