// MARK's output read into records: every number held to R's fit of the same
// encounter histories, MARK's parameter-count warnings, and the aborted runs
// that must never be ranked.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing::ExpectRecords;
using testing_support::LineOf;
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

TEST(MarkOutput, NegativeMinusTwoLogLIsRead) {
  // Without its constants -2logL may fall below zero; the sign is the value's.
  const std::string text =
      " Effective Sample Size = 40\n"
      " -2logL { S(.) } = -12.34560\n"
      " Number of Estimated Parameters { S(.) } = 1\n"
      " AICc { S(.) } = -10.24034\n";
  Diagnostics diagnostics;
  const auto records = kMark.Read(text, "known-fate.out", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].model, "S(.)");
  EXPECT_DOUBLE_EQ(records[0].logLik, 6.1728);
  EXPECT_EQ(records[0].k, 1);
  EXPECT_EQ(records[0].n, 40);
  EXPECT_TRUE(diagnostics.All().empty());
}

TEST(MarkOutput, AnAICcThatIsNotMARKsOwnIsReported) {
  const std::string text =
      " Effective Sample Size = 40\n"
      " -2logL { S(.) } = 100.00000\n"
      " Number of Estimated Parameters { S(.) } = 2\n"
      " AICc { S(.) } = 104.00000\n";  // 104.32432 with n = 40
  Diagnostics diagnostics;
  kMark.Read(text, "s.out", diagnostics);
  ASSERT_EQ(diagnostics.All().size(), 1u);
  EXPECT_NE(diagnostics.All()[0].text.find("AICc"), std::string::npos);
}

TEST(MarkOutput, ACountBeyondAnyIntegerIsShownAsRead) {
  // Converting 1e85 to an integer was undefined; it showed as the most
  // negative long long.
  const std::string text =
      " Effective Sample Size = 40\n"
      " -2logL { S(.) } = 100.00000\n"
      " Gap Method for Num. of Estimated Parameters { S(.) } = 2\n"
      " Numerical Threshold Method for Num. of Estimated Parameters { S(.) } = 1e85\n"
      " Number of Estimated Parameters { S(.) } = 2\n";
  Diagnostics diagnostics;
  const auto records = kMark.Read(text, "s.out", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  ASSERT_EQ(records[0].warnings.size(), 1u);
  EXPECT_EQ(records[0].warnings[0],
            "MARK's two counts of estimable parameters disagree (gap method 2, threshold method 1e+85); it used K = 2. "
            "See which parameters are confounded before ranking it");
}

struct Aborted {
  const char* name;
  std::string text;
  const char* at;  // what stands on the line the refusal names
};

class MarkAborted : public ::testing::TestWithParam<Aborted> {};

TEST_P(MarkAborted, IsRefusedWithWhere) {
  Diagnostics diagnostics;
  const std::string where = "run.out:" + std::to_string(LineOf(GetParam().text, GetParam().at)) + ": ";
  try {
    kMark.Read(GetParam().text, "run.out", diagnostics);
    FAIL() << "read an aborted run";
  } catch (const DataError& error) {
    EXPECT_EQ(std::string(error.what()).rfind(where, 0), 0u) << error.what();
  }
}

const std::string kFinished =
    "  INPUT --- proc estimate link=Logit;\n"
    "  INPUT --- model={ Phi(.)p(.) };\n"
    " Effective Sample Size = 312\n"
    " -2logL { Phi(.)p(.) } = 581.88413\n"
    " Number of Estimated Parameters { Phi(.)p(.) } = 2\n";

INSTANTIATE_TEST_SUITE_P(
    Runs, MarkAborted,
    ::testing::Values(
        Aborted{"CutInsideAModel", SampleText("mark/mark-aborted.out"), "-2logL { Phi(t)p(.) }"},
        Aborted{"ErrorInsideAModel",
                kFinished + "  INPUT --- proc estimate link=Logit;\n  INPUT --- model={ Phi(t)p(t) };\n"
                            "  * * ERROR * * Numerical overflow while computing the likelihood.\n"
                            " -2logL { Phi(t)p(t) } = 575.00000\n"
                            " Number of Estimated Parameters { Phi(t)p(t) } = 7\n  INPUT --- proc stop;\n",
                "* * ERROR * *"},
        Aborted{"BegunNeverEstimated",
                kFinished + "  INPUT --- proc estimate link=Logit;\n  INPUT --- model={ Phi(t)p(t) };\n"
                            "  INPUT --- proc stop;\n",
                "model={ Phi(t)p(t) }"},
        Aborted{"NoProcStop", kFinished + "   CPU Time in seconds for last procedure was 0.02\n", "CPU Time"}),
    [](const auto& info) { return std::string(info.param.name); });

}  // namespace
}  // namespace drav::selection::fits
