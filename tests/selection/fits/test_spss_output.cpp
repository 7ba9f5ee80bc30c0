// SPSS's viewer output as text read into records: every number held to R's
// fits of the same data as SPSS works them out (REML's AIC of covariance
// parameters, n - p in its BIC), pasted, exported a cell to a line, aligned
// with decimal commas. What a user sees of the kernel of a likelihood,
// untitled tables, a table cut alone and the binary viewer file is in
// tests/golden/fits-spss.batch.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing_support::SampleText;
const OutputReader& kSpss = ReaderOf("SPSS");

struct Sample {
  const char* name;
  const char* file;
  const char* expected;
};

class SpssSamples : public ::testing::TestWithParam<Sample> {};

TEST_P(SpssSamples, EveryNumberIsRs) {
  const std::string text = SampleText(GetParam().file);
  Diagnostics strict(true);  // nothing here is in doubt
  const auto records = kSpss.Read(text, GetParam().file, strict);
  testing::ExpectRecords(records, GetParam().expected);
  for (const auto& record : records) EXPECT_FALSE(record.derivation.empty()) << record.model;
}

INSTANTIATE_TEST_SUITE_P(
    Text, SpssSamples,
    ::testing::Values(
        // REML pasted (tabs), ML exported a cell to a line between bars; titled by TITLE.
        Sample{"MixedPastedAndExported", "spss/spss-mixed.txt", "spss/spss-mixed.expected"},
        // GENLIN aligned with blanks, decimal commas, a footnote letter on the label.
        Sample{"GenlinDecimalCommas", "spss/spss-genlin.txt", "spss/spss-genlin.expected"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav::selection::fits
