// Stata's text logs read into records, every number held to R's fits of the
// same data: names Stata shortens, lines wrapped with "> ", thousands
// separators, a model listed twice. What a user sees of the kinds, names,
// warnings and refusals is in tests/golden/fits-stata.batch.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing::ExpectRecords;
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

}  // namespace
}  // namespace drav::selection::fits
