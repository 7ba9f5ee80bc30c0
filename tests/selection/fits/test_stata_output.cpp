// Stata's text logs read into records: every number held to R's fits of the
// same data, the names Stata shortens, lines wrapped with "> ", thousands
// separators, a model listed twice, and the fits that must not be ranked.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include <algorithm>

#include "base/errors.hpp"
#include "selection/fits/fit_candidates.hpp"
#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing::ExpectRecords;
using testing_support::LineOf;
using testing_support::SampleText;
const OutputReader& kStata = ReaderOf("Stata");

struct Sample {
  const char* name;
  const char* file;
  const char* expected;
};

class StataSamples : public ::testing::TestWithParam<Sample> {};

TEST_P(StataSamples, EveryNumberIsRs) {
  const std::string text = SampleText(GetParam().file);
  Diagnostics strict(true);  // nothing here is in doubt
  ExpectRecords(kStata.Read(text, GetParam().file, strict), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Logs, StataSamples,
    ::testing::Values(
        // Obs, a name shortened to weight_and~r, the first model in estat ic and again in estimates stats.
        Sample{"StoredAndListedTwice", "stata/stata-logit.log", "stata/stata-logit.expected"},
        // N as 53,940, every long line wrapped at 60 with "> ", no stored names.
        Sample{"WrappedUnnamed", "stata/stata-diamonds.log", "stata/stata-diamonds.expected"},
        // regress: AIC without the residual variance; estat ic, all with AICc and CAIC columns.
        Sample{"RegressAllCriteria", "stata/stata-regress.log", "stata/stata-regress.expected"},
        // arima fits each with its estat ic: one after dfuller's header, one fitted quietly.
        Sample{"ArimaEachItsOwnTable", "stata/stata-arima.log", "stata/stata-arima.expected"},
        // SPost 13's fitstat: one column, then Current and Saved beside their Difference; after regress.
        Sample{"FitstatCurrentAndSaved", "stata/stata-fitstat.log", "stata/stata-fitstat.expected"},
        // SPost 9's fitstat: measures two to a line, then using()'s columns.
        Sample{"Fitstat9UsingColumns", "stata/stata-fitstat9.log", "stata/stata-fitstat9.expected"},
        // nbreg: K counts lnalpha, which its table of estimates sets below the coefficients.
        Sample{"NbregWithFactorLevels", "stata/stata-nbreg.log", "stata/stata-nbreg.expected"}),
    [](const auto& info) { return std::string(info.param.name); });

const std::string kTableHead =
    "Akaike's information criterion and Bayesian information criterion\n\n" + std::string(77, '-') +
    "\n       Model |          N   ll(null)  ll(model)      df        AIC        BIC\n" + std::string(13, '-') + "+" +
    std::string(63, '-') + "\n";
const std::string kTableEnd = std::string(77, '-') + "\n";

std::vector<FitRecord> Read(const std::string& text, Diagnostics& diagnostics) {
  return kStata.Read(text, "fits.log", diagnostics);
}

TEST(StataOutput, RegressCountsItsOwnWay) {
  Diagnostics diagnostics;
  const auto records = kStata.Read(SampleText("stata/stata-regress.log"), "stata/stata-regress.log", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_NE(records[0].counting.find("residual variance"), std::string::npos);
  const auto logit = kStata.Read(SampleText("stata/stata-logit.log"), "stata/stata-logit.log", diagnostics);
  ASSERT_FALSE(logit.empty());
  EXPECT_TRUE(logit[0].counting.empty());
}

TEST(StataOutput, KindOfLikelihoodFollowsTheFitAndOneFitIsOneModel) {
  const std::string table = ". estat ic\n\n" + kTableHead +
                            "           . |        180          .     -740.5       4       1489   1501.772\n" + kTableEnd;
  const std::string text = ". mixed y x || id:, reml\n\nLog restricted-likelihood = -740.5\n\n" + table + table;
  Diagnostics diagnostics;
  const auto records = Read(text, diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::REML);
  EXPECT_EQ(records[0].model, "fits");
  EXPECT_EQ(records[0].line, 1);
}

TEST(StataOutput, AShortenedNameThatFitsTwoStoredModelsIsWarnedOf) {
  const std::string fit = "\nLog likelihood = -9.5\n\n";
  const std::string text = ". logit a b" + fit + ". estimates store weight_and_hp_r\n. logit a c" + fit +
                           ". est sto weight_and_mpg_r\n. estimates stats\n" + kTableHead +
                           "weight_and~r |         32  -21.61487       -9.5       2         23   26.10756\n" + kTableEnd;
  Diagnostics diagnostics;
  const auto records = Read(text, diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].model, "weight_and~r");
  ASSERT_EQ(records[0].warnings.size(), 1u);
  EXPECT_NE(records[0].warnings[0].find("2 models"), std::string::npos) << records[0].warnings[0];
  const auto warned = std::count_if(diagnostics.All().begin(), diagnostics.All().end(), [](const Diagnostic& d) {
    return d.severity == Severity::Warning && d.text.find("2 models") != std::string::npos;
  });
  EXPECT_EQ(warned, 1);
}

TEST(StataOutput, ANameListedAgainWithOtherNumbersIsWarnedOfAndTheLaterRead) {
  const std::string text = ". estimates stats m1\n" + kTableHead +
                           "          m1 |         32  -21.61487       -9.5       2         23   26.10756\n" +
                           kTableEnd + ". estimates stats m1\n" + kTableHead +
                           "          m1 |         32  -21.61487       -8.5       2         21   24.10756\n" + kTableEnd;
  Diagnostics diagnostics;
  const auto records = Read(text, diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].logLik, -8.5);
  EXPECT_EQ(records[0].aic, 21);
  EXPECT_EQ(diagnostics.All().size(), 3u);  // the warning, and a note for each row whose fit the log does not show
  ASSERT_EQ(records[0].warnings.size(), 1u);
  EXPECT_NE(records[0].warnings[0].find("listed again on line " + std::to_string(LineOf(text, "-8.5"))),
            std::string::npos)
      << records[0].warnings[0];
}

// A robust fit's pseudolikelihood is listed for what it is, and ranking it
// is refused with the reason, naming the fit's command.
TEST(StataOutput, APseudolikelihoodIsListedAsSuchAndNeverRanked) {
  const std::string text = SampleText("stata/stata-robust.log");
  Diagnostics diagnostics;
  const auto records = Read(text, diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::Pseudo);
  EXPECT_EQ(records[0].line, LineOf(text, ". logit am wt hp, vce(robust)"));
  ASSERT_EQ(records[0].warnings.size(), 1u);
  const std::string header = "(line " + std::to_string(LineOf(text, "Log pseudolikelihood =")) + ")";
  EXPECT_NE(records[0].warnings[0].find(header), std::string::npos) << records[0].warnings[0];
  try {
    CandidatesFromFits(records, LoadOptions{}, diagnostics);
    FAIL() << "ranked a pseudolikelihood";
  } catch (const DataError& error) {
    EXPECT_EQ(std::string(error.what()).rfind("fits.log:1: model 'fits' cannot be ranked: Stata fitted it", 0), 0u)
        << error.what();
  }
}

// A robust fit's kind stays its own through a postestimation command that
// prints a header of its own (margins), and a fit quietly hides is known
// by its options, stored by eststo's prefix under its name.
TEST(StataOutput, TheFitInMemoryKeepsItsKind) {
  const std::string row = " |         32  -21.61487  -5.029555       3   16.05911   20.45632\n";
  const std::string table = ". estat ic\n" + kTableHead + "           ." + row + kTableEnd;
  const std::string shown = ". logit am wt hp, vce(robust)\n\nLogistic regression   Number of obs = 32\n"
                            "Log pseudolikelihood = -5.0295552\n\n. margins\n\nPredictive margins   Number of obs = 32\n\n";
  const std::string hidden = ". quietly logit am wt hp, vce(robust)\n\n";
  const std::string stored = ". eststo both: quietly logit am wt hp, vce(robust)\n\n. estimates stats both\n" +
                             kTableHead + "        both" + row + kTableEnd;
  for (const std::string& text : {shown + table, hidden + table, stored}) {
    Diagnostics diagnostics;
    const auto records = Read(text, diagnostics);
    ASSERT_EQ(records.size(), 1u) << text;
    EXPECT_EQ(records[0].kind, LikelihoodKind::Pseudo) << text;
    EXPECT_EQ(records[0].line, 1) << text;
  }
}

struct Refused {
  const char* name;
  std::string text;
  const char* at;  // what stands on the line the refusal names
};

class StataRefused : public ::testing::TestWithParam<Refused> {};

TEST_P(StataRefused, NamesWhere) {
  Diagnostics diagnostics;
  const std::string where = "fits.log:" + std::to_string(LineOf(GetParam().text, GetParam().at)) + ": ";
  try {
    Read(GetParam().text, diagnostics);
    FAIL() << "read what cannot be ranked";
  } catch (const DataError& error) {
    EXPECT_EQ(std::string(error.what()).rfind(where, 0), 0u) << error.what();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Logs, StataRefused,
    ::testing::Values(Refused{"Smcl", "{smcl}\n{com}{sf}{ul off}{txt}\n", "{smcl}"},
                      Refused{"NoModelLikelihood",
                              ". estat ic\n" + kTableHead +
                                  "           . |         32          .          .       2          .          .\n" +
                                  kTableEnd,
                              "           . |"},
                      Refused{"SplitThousandsWrongly",
                              ". estat ic\n" + kTableHead +
                                  "           . |      5,39,40  -21.61487       -9.5       2         23   26.10756\n" +
                                  kTableEnd,
                              "           . |"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav::selection::fits
