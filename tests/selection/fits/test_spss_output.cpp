// SPSS's viewer output as text read into records: every number held to R's
// fits of the same data as SPSS works them out (REML's AIC of covariance
// parameters, n - p in its BIC), pasted, exported a cell to a line, aligned
// with decimal commas; the kernel of a likelihood; the binary viewer file
// refused with how to export text.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include "base/errors.hpp"
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

TEST(SpssOutput, DecimalPointsWithThousandsSeparatorsAreNotDecimalCommas) {
  std::string text = SampleText("spss/spss-genlin.txt");
  for (char& c : text) c = c == ',' ? '.' : c;
  text.replace(text.find("210.392"), 7, "1,210.392");  // a deviance no criterion is made from
  Diagnostics diagnostics;
  testing::ExpectRecords(kSpss.Read(text, "spss/spss-genlin.txt", diagnostics), "spss/spss-genlin.expected");
}

TEST(SpssOutput, TheKernelOfTheLikelihoodIsAKindOfItsOwn) {
  std::string text = SampleText("spss/spss-genlin.txt");
  const std::string full = "The full log likelihood function is displayed";
  text.replace(text.find(full), full.size(), "The kernel of the log likelihood function is displayed");
  Diagnostics diagnostics;
  const auto records = kSpss.Read(text, "kernel.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::ConstantsDropped);
}

// Tables under no TITLE are named after the file, told apart by their order.
TEST(SpssOutput, UntitledModelsAreNumberedInFileOrder) {
  const std::string genlin = SampleText("spss/spss-genlin.txt");
  Diagnostics diagnostics;
  const auto records = kSpss.Read(genlin + genlin, "exports/fits.txt", diagnostics);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].model, "fits (1)");
  EXPECT_EQ(records[1].model, "fits (2)");
}

TEST(SpssOutput, RemlWithoutModelDimensionLeavesNUnknown) {
  std::string text = SampleText("spss/spss-mixed.txt");
  text = text.substr(text.find("Information Criteriaa"));
  text = text.substr(0, text.find("TITLE"));
  Diagnostics diagnostics;
  const auto records = kSpss.Read(text, "reml.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].k, 2);
  EXPECT_TRUE(std::isnan(records[0].n));
  EXPECT_EQ(diagnostics.All().size(), 1u);
}

// The ML model alone, as exported a cell to a line: its labels broken over
// lines are still SPSS's, and read.
TEST(SpssOutput, AnExportedTableAloneIsRecognisedAndRead) {
  std::string text = SampleText("spss/spss-mixed.txt");
  text = text.substr(text.find("TITLE 'Sleep study ML'"));
  ASSERT_EQ(text.find("Akaike's Information Criterion"), std::string::npos);  // broken in this layout
  ASSERT_TRUE(kSpss.LooksLike(text));
  Diagnostics diagnostics;
  const auto records = kSpss.Read(text, "ml.txt", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].model, "Sleep study ML");
  EXPECT_EQ(records[0].k, 4);
  EXPECT_EQ(records[0].n, 180);
  EXPECT_NEAR(records[0].logLik, -897.0393215, records[0].logLikHalfUnit);
}

TEST(SpssOutput, TheViewersBinaryFileIsRefusedWithHowToExportText) {
  const std::string spv = std::string("PK\x03\x04", 4) + std::string(26, '\0') + "outputViewer0000000001.xml";
  ASSERT_TRUE(kSpss.LooksLike(spv));
  Diagnostics diagnostics;
  try {
    kSpss.Read(spv, "fits.spv", diagnostics);
    FAIL() << "read a binary viewer file";
  } catch (const DataError& error) {
    EXPECT_NE(std::string(error.what()).find("Export"), std::string::npos) << error.what();
    EXPECT_EQ(std::string(error.what()).rfind("fits.spv: ", 0), 0u) << error.what();
  }
}

}  // namespace
}  // namespace drav::selection::fits
