// MARK's output read into records: every number held to R's fit of the same
// encounter histories, and MARK's parameter-count warnings, which --strict
// turns into refusals. What a user sees of a likelihood below zero, a
// printed AICc, counts that disagree and aborted runs is in
// tests/golden/fits-mark.batch.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing::ExpectRecords;
using testing_support::SampleText;
const OutputReader& kMark = ReaderOf("MARK");

struct Sample {
  const char* name;
  const char* file;
  const char* expected;
  std::size_t warnings;  // each a reason to doubt K; --strict refuses the file for them
};

class MarkSamples : public ::testing::TestWithParam<Sample> {};

TEST_P(MarkSamples, EveryNumberIsRs) {
  const std::string text = SampleText(GetParam().file);
  Diagnostics diagnostics;
  ExpectRecords(kMark.Read(text, GetParam().file, diagnostics), GetParam().expected);
  std::size_t warnings = 0;
  for (const auto& item : diagnostics.All()) warnings += item.severity == Severity::Warning;
  EXPECT_EQ(warnings, GetParam().warnings);
  Diagnostics strict(true);
  EXPECT_THROW(kMark.Read(text, GetParam().file, strict), DataError);
}

INSTANTIATE_TEST_SUITE_P(
    Outputs, MarkSamples,
    ::testing::Values(
        // Phi(t)p(t): the last survival and recapture are confounded, 7 of 8 betas.
        Sample{"ThreeModels", "mark/mark-cjs.out", "mark/mark-cjs.expected", 1},
        // The same, with the gap and threshold methods apart as well.
        Sample{"TwoCountsApart", "mark/mark-two-counts.out", "mark/mark-two-counts.expected", 2}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav::selection::fits
