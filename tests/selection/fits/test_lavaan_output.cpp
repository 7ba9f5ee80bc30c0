// lavaan's summary(fit, fit.measures = TRUE) as lavaan 0.6.14 printed it
// (tests/golden/fits/make-samples.sh) and in release 0.5's layout: every
// model with the numbers lavaan's own logLik(), nobs() and AIC() give.
#include <gtest/gtest.h>

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

// lavaan's output, a summary or a fitMeasures() vector, holds nothing of
// R's own summaries: R's reader would not claim it even if it were tried
// first. (What each reads is in tests/golden/fits-lavaan.batch.)
TEST(LavaanOutput, IsNotTakenForROutput) {
  EXPECT_FALSE(ReaderOf("R").LooksLike(testing_support::SampleText("lavaan/two-models.txt")));
  constexpr std::string_view measures =
      "     npar      logl       aic       bic    ntotal \n"
      "   21.000 -3737.745  7517.490  7595.339   301.000 \n";
  EXPECT_TRUE(kLavaan.LooksLike(measures));
  EXPECT_FALSE(ReaderOf("R").LooksLike(measures));
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

}  // namespace
}  // namespace drav::selection::fits
