// statsmodels' summary() as statsmodels 0.13 printed it
// (tests/golden/fits/make-samples.sh), plain and inside a notebook; the
// log-likelihoods are R's logLik() of the same fits, except the Gamma
// GLM's, which statsmodels evaluates at another scale.
#include <gtest/gtest.h>

#include <cmath>
#include <string_view>

#include "base/errors.hpp"
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

// MixedLM's summary with a random slope, as statsmodels lays it out: the
// random effects' two variances and their covariance are rows of the
// coefficient table, each a parameter, and a fixed effect's name may hold
// blanks.
std::string MixedSummary(std::string_view method, std::string_view table) {
  return "             Mixed Linear Model Regression Results\n"
         "==============================================================\n"
         "Model:              MixedLM   Dependent Variable:   w        \n"
         "No. Observations:   240       Method:               " + std::string(method) + "\n"
         "No. Groups:         30        Scale:                0.8770   \n"
         "Min. group size:    8         Log-Likelihood:       -398.1153\n"
         "Max. group size:    8         Converged:            Yes      \n"
         "Mean group size:    8.0                                      \n"
         "--------------------------------------------------------------\n" + std::string(table);
}

constexpr std::string_view kRandomSlope =
    "                  Coef.  Std.Err.   z    P>|z| [0.025 0.975]\n"
    "--------------------------------------------------------------\n"
    "Intercept         10.211    0.901 11.333 0.000  8.445 11.977\n"
    "np.log(t + 1)      2.020    0.036 56.111 0.000  1.949  2.091\n"
    "Group Var          7.912    2.361                           \n"
    "Group x t Cov      0.107    0.093                           \n"
    "t Var              0.011    0.005                           \n"
    "==============================================================\n";

TEST(StatsmodelsOutput, MixedLmCountsEveryRowOfItsTableAndTheScale) {
  Diagnostics diagnostics;
  const auto records = ReaderOf("statsmodels").Read(MixedSummary("REML", kRandomSlope), "slope.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::REML);
  EXPECT_DOUBLE_EQ(records[0].logLik, -398.1153);
  EXPECT_EQ(records[0].k, 6) << records[0].derivation;
  EXPECT_EQ(records[0].n, 240);
  EXPECT_EQ(records[0].derivation,
            "K = 2 fixed effects + 3 variance and covariance parameters of the random effects + 1 for the scale");
  EXPECT_TRUE(diagnostics.All().empty());
  // The terms to average are the fixed effects, a name's blanks kept.
  ASSERT_EQ(records[0].terms.size(), 2u);
  EXPECT_EQ(records[0].terms[1].name, "np.log(t + 1)");
  EXPECT_EQ(records[0].terms[1].estimate, 2.020);
  EXPECT_EQ(records[0].terms[1].se, 0.036);
  EXPECT_EQ(records[0].notTerms, (std::vector<std::string>{"Group Var", "Group x t Cov", "t Var"}));
}

TEST(StatsmodelsOutput, MixedLmByMlIsMl) {
  Diagnostics diagnostics;
  const auto records = ReaderOf("statsmodels").Read(MixedSummary("ML", kRandomSlope), "slope.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::ML);
}

// Cut off before the rule that closes its table, a MixedLM summary may have
// rows not shown: its K is not guessed.
TEST(StatsmodelsOutput, MixedLmTableCutOffLeavesKUnknown) {
  const std::string table(kRandomSlope.substr(0, kRandomSlope.find("t Var")));
  Diagnostics diagnostics;
  const auto records = ReaderOf("statsmodels").Read(MixedSummary("REML", table), "cut.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_TRUE(std::isnan(records[0].k));
  EXPECT_EQ(records[0].kind, LikelihoodKind::REML);
  ASSERT_EQ(diagnostics.All().size(), 1u);
  EXPECT_NE(diagnostics.All()[0].text.find("K is unknown"), std::string::npos);
}

// Without its Method, REML or ML, the likelihood's kind is not known, and
// the model is not listed as either.
TEST(StatsmodelsOutput, MixedLmWithoutMethodIsLeftOut) {
  std::string text = MixedSummary("REML", kRandomSlope);
  text.replace(text.find("Method:"), 7, "       ");
  Diagnostics diagnostics;
  EXPECT_THROW(ReaderOf("statsmodels").Read(text, "m.txt", diagnostics), DataError);
  ASSERT_EQ(diagnostics.All().size(), 1u);
  EXPECT_NE(diagnostics.All()[0].text.find("Method"), std::string::npos);
}

TEST(StatsmodelsOutput, MixedLmSummaryIsStatsmodels) {
  EXPECT_TRUE(ReaderOf("statsmodels").LooksLike(MixedSummary("REML", kRandomSlope)));
}

// summary2()'s title, "Results: Logit", stands over a rule; a line of prose
// that starts so, among the same labels, is no summary.
TEST(StatsmodelsOutput, Summary2TitleStandsOverItsRule) {
  const std::string summary2 =
      "                         Results: Logit\n"
      "================================================================\n"
      "Model:              Logit            Pseudo R-squared: 0.374    \n"
      "Dependent Variable: GRADE            AIC:              33.7793  \n"
      "No. Observations:   32               Log-Likelihood:   -12.890  \n"
      "Df Model:           3                LL-Null:          -20.592  \n"
      "Df Residuals:       28               LLR p-value:      0.0015019\n"
      "----------------------------------------------------------------\n";
  const OutputReader& statsmodels = ReaderOf("statsmodels");
  ASSERT_TRUE(statsmodels.LooksLike(summary2));
  Diagnostics diagnostics;
  const auto records = statsmodels.Read(summary2, "logit.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].k, 4);
  EXPECT_DOUBLE_EQ(records[0].aic, 33.7793);
  std::string prose = summary2;
  prose.replace(prose.find("\n====="), 1, " as below.\n\n");
  EXPECT_FALSE(statsmodels.LooksLike(prose));
}

}  // namespace
}  // namespace drav::selection::fits
