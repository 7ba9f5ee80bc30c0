// lavaan's summary(fit, fit.measures = TRUE) as lavaan 0.6.14 printed it
// (tests/golden/fits/make-samples.sh) and in release 0.5's layout: every
// model with the numbers lavaan's own logLik(), nobs() and AIC() give.
#include <gtest/gtest.h>

#include <cmath>
#include <string_view>

#include "base/errors.hpp"
#include "selection/fits/output_readers.hpp"
#include "tests/selection/fits/expected_fit.hpp"
#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing_support::ExpectedFit;
constexpr double NA = kUnknown;
const OutputReader& kLavaan = ReaderOf("lavaan");

class LavaanSample : public ::testing::TestWithParam<ExpectedFit> {};

TEST_P(LavaanSample, ReadsTheFitAsLavaanComputesIt) {
  const std::string text = testing_support::SampleText(GetParam().file);
  Diagnostics diagnostics;
  testing_support::ExpectFit(kLavaan.Read(text, GetParam().file, diagnostics), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Samples, LavaanSample,
    ::testing::Values(
        ExpectedFit{"Ml", "lavaan/two-models.txt", 0, "two-models (1)", 1, -3737.744927, 21, 301, 7517.49},
        // MLR: two columns, the first read; K = 21 parameters less 1 equality constraint.
        ExpectedFit{"MlrWithEqualityConstraint", "lavaan/two-models.txt", 1, "two-models (2)", 91, -3739.077421, 20, 301,
                    7518.155},
        // Two groups with missing rows: n is the used rows of both groups.
        ExpectedFit{"GroupsUsedRows", "lavaan/groups-missing.txt", 0, "groups-missing", 1, -3438.505981, 60, 281,
                    6997.012},
        // Release 0.5: free parameters in the log-likelihood section; knitr
        // code names the models.
        ExpectedFit{"Release05", "lavaan/release-0.5-layout.md", 0, "fit", 9, -3737.744927, 21, 301, 7517.49},
        ExpectedFit{"Release05Robust", "lavaan/release-0.5-layout.md", 1, "fit_mlr", 43, -3739.077421, 20, 301,
                    7518.155},
        // The log-likelihood sections of the same two summaries pasted
        // alone: K from the count in each, n where it is pasted above.
        ExpectedFit{"Release05Excerpt", "lavaan/release-0.5-excerpts.txt", 0, "release-0.5-excerpts (1)", 6,
                    -3737.744927, 21, 301, 7517.49},
        ExpectedFit{"Release05ExcerptRobust", "lavaan/release-0.5-excerpts.txt", 1, "release-0.5-excerpts (2)", 20,
                    -3739.077421, 20, NA, 7518.155}),
    [](const auto& info) { return std::string(info.param.name); });

// A whole summary, then another model's section with its own n pasted
// below it, as release 0.6 prints it (no count of parameters there): each
// number stays with its own model, K from the AIC.
TEST(LavaanOutput, ASectionAfterASummaryIsAModelOfItsOwn) {
  std::string text = testing_support::SampleText("lavaan/release-0.5-excerpts.txt");
  text.insert(text.find("Model A"), "lavaan (0.5-23.1097) converged normally after  35 iterations\n\n");
  text.insert(text.find("Loglikelihood", text.find("Model B")), "  Number of observations   280\n\n");
  const std::size_t count = text.rfind("  Number of free parameters");
  text.erase(count, text.find('\n', count) + 1 - count);
  Diagnostics diagnostics;
  const auto records = kLavaan.Read(text, "notes.txt", diagnostics);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].logLik, -3737.745);
  EXPECT_EQ(records[0].n, 301);
  EXPECT_EQ(records[1].logLik, -3739.077);
  EXPECT_EQ(records[1].n, 280);
  EXPECT_EQ(records[1].k, 20);
}

TEST(LavaanOutput, LeastSquaresEstimatorHasNoLikelihood) {
  const std::string text = testing_support::SampleText("lavaan/wlsmv.txt");
  Diagnostics diagnostics;
  const auto records = kLavaan.Read(text, "wlsmv.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::None);
  ASSERT_EQ(diagnostics.All().size(), 1u);
  EXPECT_NE(diagnostics.All()[0].text.find("DWLS estimator fits no likelihood"), std::string::npos);
}

TEST(LavaanOutput, IsNotTakenForROutput) {
  // lavaan's output holds nothing of R's own summaries: R's reader would
  // not claim it even if it were tried first.
  EXPECT_FALSE(ReaderOf("R").LooksLike(testing_support::SampleText("lavaan/two-models.txt")));
}

// One group with rows left out: lavaan prints "Used" and "Total" beside
// "Number of observations", and n is the rows used, as lavaan's nobs() says
// (one-group-missing.expected, written beside the output by make-samples.sh).
TEST(LavaanOutput, OneGroupCountsTheRowsUsed) {
  const std::string text = testing_support::SampleText("lavaan/one-group-missing.log");
  Diagnostics strict(true);  // nothing here is in doubt
  testing::ExpectRecords(kLavaan.Read(text, "lavaan/one-group-missing.log", strict),
                         "lavaan/one-group-missing.expected");
}

// fitMeasures(fit) of the model of two-models.txt, every measure, wrapped
// as R wraps a named vector at 80 columns: logl and ntotal lines below npar.
constexpr std::string_view kAllMeasures =
    "             npar              fmin             chisq                df \n"
    "           21.000             0.142            85.306            24.000 \n"
    "           pvalue    baseline.chisq       baseline.df   baseline.pvalue \n"
    "            0.000           918.852            36.000             0.000 \n"
    "              cfi               tli              nnfi               rfi \n"
    "            0.931             0.896             0.896             0.861 \n"
    "              nfi              pnfi               ifi               rni \n"
    "            0.907             0.605             0.931             0.931 \n"
    "             logl unrestricted.logl               aic               bic \n"
    "        -3737.745         -3695.092          7517.490          7595.339 \n"
    "           ntotal              bic2             rmsea    rmsea.ci.lower \n"
    "          301.000          7528.739             0.092             0.071 \n"
    "   rmsea.ci.upper      rmsea.pvalue \n"
    "            0.114             0.001 \n";

constexpr std::string_view kSomeMeasures =
    "     npar      logl       aic       bic    ntotal \n"
    "   21.000 -3737.745  7517.490  7595.339   301.000 \n";

TEST(LavaanOutput, FitMeasuresWrappedIsOneModel) {
  ASSERT_TRUE(kLavaan.LooksLike(kAllMeasures));
  Diagnostics diagnostics(true);
  const auto records = kLavaan.Read(kAllMeasures, "all.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].model, "all");
  EXPECT_EQ(records[0].line, 1);
  EXPECT_DOUBLE_EQ(records[0].logLik, -3737.745);
  EXPECT_DOUBLE_EQ(records[0].logLikHalfUnit, 0.0005);
  EXPECT_EQ(records[0].k, 21);
  EXPECT_EQ(records[0].n, 301);
  EXPECT_DOUBLE_EQ(records[0].aic, 7517.49);
  EXPECT_DOUBLE_EQ(records[0].bic, 7595.339);
  EXPECT_EQ(records[0].kind, LikelihoodKind::ML);
}

// A line of a wrapped vector holds as many as the first holds, the last
// fewer: a line after a shorter one, or longer than the first, is another
// vector's, whose ntotal is not this model's.
TEST(LavaanOutput, FitMeasuresEndsWhereItsLinesCannotBeOneWrap) {
  const std::string shorter =
      "     npar      fmin     chisq        df \n"
      "   21.000     0.142    85.306    24.000 \n"
      "     logl       aic \n"
      "-3737.745  7517.490 \n"
      "   ntotal      bic2 \n"
      "  301.000  7528.739 \n";
  const std::string longer =
      "     npar      logl \n"
      "   21.000 -3737.745 \n"
      "      aic       bic    ntotal \n"
      " 7517.490  7595.339   301.000 \n";
  for (const std::string& text : {shorter, longer}) {
    Diagnostics diagnostics;
    const auto records = kLavaan.Read(text, "cut.txt", diagnostics);
    ASSERT_EQ(records.size(), 1u) << text;
    EXPECT_EQ(records[0].k, 21);
    EXPECT_TRUE(std::isnan(records[0].n)) << text;
  }
}

// Printed one after the other, two vectors of the same measures are two
// models, not one vector wrapped; each named by the object its command printed.
TEST(LavaanOutput, FitMeasuresOfTwoFitsAreTwoModels) {
  const std::string text = "> fitMeasures(one, c(\"npar\", \"logl\", \"aic\", \"bic\", \"ntotal\"))\n" +
                           std::string(kSomeMeasures) +
                           "> fitMeasures(two, c(\"npar\", \"logl\", \"aic\", \"bic\", \"ntotal\"))\n"
                           "     npar      logl       aic       bic    ntotal \n"
                           "   20.000 -3739.077  7518.155  7592.297   301.000 \n";
  Diagnostics diagnostics(true);
  const auto records = kLavaan.Read(text, "two.txt", diagnostics);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].model, "one");
  EXPECT_EQ(records[0].k, 21);
  EXPECT_EQ(records[1].model, "two");
  EXPECT_EQ(records[1].line, 5);
  EXPECT_EQ(records[1].k, 20);
  EXPECT_DOUBLE_EQ(records[1].logLik, -3739.077);
  // Without the commands, the same: the second npar starts another vector.
  std::string plain;
  for (std::string_view line : {kSomeMeasures, kSomeMeasures}) plain += line;
  plain.replace(plain.rfind("21.000 -3737.745"), 16, "20.000 -3739.077");
  EXPECT_EQ(kLavaan.Read(plain, "two.txt", diagnostics).size(), 2u);
}

// Only a vector in R's columns, with npar and logl both, is a model: the same
// names in a data frame (row names before the values), or a vector of other
// measures, are not fitMeasures()'s, and the file is not lavaan's.
TEST(LavaanOutput, OnlyAVectorWithNparAndLoglIsTakenForFitMeasures) {
  EXPECT_FALSE(kLavaan.LooksLike("  npar      logl\n1   21 -3737.745\n"));
  // A data frame printed without row names: its columns are of two widths.
  EXPECT_FALSE(kLavaan.LooksLike(" npar      logl\n   21 -3737.745\n"));
  // Out of its columns: not R's print of a vector.
  EXPECT_FALSE(kLavaan.LooksLike("   npar   logl\n 21.000 -3737.745\n"));
  EXPECT_FALSE(kLavaan.LooksLike("     npar       cfi     rmsea \n   21.000     0.931     0.092 \n"));
  EXPECT_TRUE(kLavaan.LooksLike(kSomeMeasures));
  EXPECT_FALSE(ReaderOf("R").LooksLike(kSomeMeasures));
  // Measures without npar after a summary printed without fit.measures
  // give it no K to check them by: they are not taken for its model.
  const std::string summary = testing_support::SampleText("lavaan/two-models.txt");
  const std::string bare = summary.substr(0, summary.find("Model Test User Model:"));
  Diagnostics diagnostics;
  const auto records = kLavaan.Read(bare + "     logl       aic \n-3737.745  7517.490 \n", "bare.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_TRUE(std::isnan(records[0].logLik));
}

// An estimator without a likelihood: fitMeasures() gives logl NA.
TEST(LavaanOutput, FitMeasuresWithoutLoglHasNoLikelihood) {
  Diagnostics diagnostics;
  const auto records =
      kLavaan.Read("     npar      logl    ntotal \n   19.000        NA   301.000 \n", "dwls.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::None);
  EXPECT_TRUE(std::isnan(records[0].logLik));
  EXPECT_EQ(records[0].k, 19);
  ASSERT_EQ(diagnostics.All().size(), 1u);
  EXPECT_NE(diagnostics.All()[0].text.find("logl as NA"), std::string::npos);
}

// The summary and fitMeasures() of one fit are one model, whose
// log-likelihood comes from the vector where the summary has none.
TEST(LavaanOutput, FitMeasuresAfterTheSameFitsSummaryIsThatModel) {
  const std::string summary = testing_support::SampleText("lavaan/two-models.txt");
  const std::string first = summary.substr(0, summary.find("lavaan ", 10));
  Diagnostics diagnostics(true);
  const auto again = kLavaan.Read(first + std::string(kSomeMeasures), "again.txt", diagnostics);
  ASSERT_EQ(again.size(), 1u);
  EXPECT_NE(again[0].derivation.find("fitMeasures() on line"), std::string::npos);
  // Without fit.measures = TRUE the summary prints no log-likelihood.
  std::string bare = first.substr(0, first.find("Model Test User Model:"));
  const auto filled = kLavaan.Read(bare + std::string(kSomeMeasures), "bare.txt", diagnostics);
  ASSERT_EQ(filled.size(), 1u);
  EXPECT_EQ(filled[0].kind, LikelihoodKind::ML);
  EXPECT_DOUBLE_EQ(filled[0].logLik, -3737.745);
  EXPECT_EQ(filled[0].k, 21);
  // Another fit's measures after it are another model, though its K and n
  // are the same.
  std::string other(kSomeMeasures);
  other.replace(other.find("-3737.745  7517.490  7595.339"), 29, "-3741.020  7524.040  7601.889");
  Diagnostics lenient;
  EXPECT_EQ(kLavaan.Read(first + other, "other.txt", lenient).size(), 2u);
}

// A summary printed without fit.measures, and another after it: the first
// is told as having no likelihood before its measures come, and they are
// listed as a model of their own rather than given to a model already told.
TEST(LavaanOutput, FitMeasuresOfASummaryAlreadyToldAreListedApart) {
  const std::string summary = testing_support::SampleText("lavaan/two-models.txt");
  const std::string bare = summary.substr(0, summary.find("Model Test User Model:"));
  const std::string text = "> summary(fit)\n" + bare + "> summary(fit2)\n" + bare +
                           "> fitMeasures(fit, c(\"npar\", \"logl\", \"aic\", \"bic\", \"ntotal\"))\n" +
                           std::string(kSomeMeasures);
  Diagnostics diagnostics;
  const auto records = kLavaan.Read(text, "told.txt", diagnostics);
  ASSERT_EQ(records.size(), 3u);
  EXPECT_EQ(records[0].model, "fit");
  EXPECT_EQ(records[0].kind, LikelihoodKind::None);
  EXPECT_TRUE(std::isnan(records[0].logLik));
  EXPECT_EQ(records[2].model, "fit");
  EXPECT_EQ(records[2].kind, LikelihoodKind::ML);
  EXPECT_DOUBLE_EQ(records[2].logLik, -3737.745);
}

}  // namespace
}  // namespace drav::selection::fits
