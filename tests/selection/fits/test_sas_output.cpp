// SAS listings read into records: several procedures in one file, every
// number held to R's fits of the same data as SAS works them out (the full
// log likelihood, not GENMOD's kernel; REML's AIC of covariance parameters
// and its BIC by subjects), page headers inside tables, and the fits whose
// criteria rank nothing.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "selection/fits/fit_candidates.hpp"
#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing_support::LineOf;
using testing_support::SampleText;
const OutputReader& kSas = ReaderOf("SAS");

TEST(SasOutput, EveryNumberOfSixFitsIsRs) {
  const std::string text = SampleText("sas/sas-listing.lst");
  Diagnostics strict(true);  // nothing here is in doubt
  const auto records = kSas.Read(text, "sas/sas-listing.lst", strict);
  testing::ExpectRecords(records, "sas/sas-listing.expected");
  ASSERT_EQ(records.size(), 6u);
  // REML's AIC counts the covariance parameters; its BIC took log(subjects).
  EXPECT_NE(records[2].counting.find("covariance parameters only"), std::string::npos);
  EXPECT_NE(records[2].derivation.find("18 subjects"), std::string::npos) << records[2].derivation;
  EXPECT_TRUE(records[0].counting.empty());
}

// The same listing pasted into Markdown and into Quarto (knitr's "## "
// before each line, indented under a list item): its form feeds lost, a
// page still starts at its titles, named and numbered as the listing's.
TEST(SasOutput, AListingPastedIntoADocumentReadsAsTheListing) {
  for (const std::string document : {"md", "qmd"}) {
    const std::string file = "sas/sas-listing." + document;
    Diagnostics strict(true);
    testing::ExpectRecords(kSas.Read(SampleText(file), file, strict), "sas/sas-listing-" + document + ".expected");
  }
}

std::string Page(const std::string& procedure, const std::string& body) {
  return "\f                    Fits                          1\n\n                 The " + procedure +
         " Procedure\n\n                 Model Information\n\n" + body;
}

TEST(SasOutput, EventsTrialsLikelihoodHasNoBinomialCoefficients) {
  const std::string text = Page("LOGISTIC",
                                "   Response Variable (Events)    r\n   Response Variable (Trials)    n\n"
                                "   Number of Observations Used   8\n\n   Model Fit Statistics\n\n"
                                "   AIC     120.000    100.500\n   SC      121.000    102.579\n"
                                "   -2 Log L   118.000    96.500\n");
  Diagnostics diagnostics;
  const auto records = kSas.Read(text, "trials.lst", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, LikelihoodKind::ConstantsDropped);
  EXPECT_EQ(records[0].k, 2);
  EXPECT_EQ(records[0].model, "Fits");
}

// Fits whose printed criteria rank nothing are listed with the reason,
// warned of where the listing shows it, and refused when ranked.
struct Unrankable {
  const char* name;
  std::string text;
  LikelihoodKind kind;
  const char* at;  // what stands on the line the warning names
  const char* why;
};

class SasUnrankable : public ::testing::TestWithParam<Unrankable> {};

TEST_P(SasUnrankable, IsListedWarnedOfAndRefusedWhenRanked) {
  const Unrankable& c = GetParam();
  Diagnostics diagnostics;
  const auto records = kSas.Read(c.text, "fits.lst", diagnostics);
  ASSERT_EQ(records.size(), 1u);
  EXPECT_EQ(records[0].kind, c.kind);
  ASSERT_FALSE(records[0].warnings.empty());
  EXPECT_NE(records[0].warnings[0].find(c.why), std::string::npos) << records[0].warnings[0];
  ASSERT_EQ(diagnostics.All().size(), 1u);
  EXPECT_EQ(diagnostics.All()[0].severity, Severity::Warning);
  EXPECT_EQ(diagnostics.All()[0].line, LineOf(c.text, c.at));
  try {
    CandidatesFromFits(records, LoadOptions{}, diagnostics);
    FAIL() << "ranked what cannot be ranked";
  } catch (const DataError& error) {
    EXPECT_NE(std::string(error.what()).find("cannot be ranked: " + records[0].warnings[0]), std::string::npos)
        << error.what();
  }
}

INSTANTIATE_TEST_SUITE_P(
    Listings, SasUnrankable,
    ::testing::Values(
        Unrankable{"GeeCriteriaAreTheIndependenceModels", SampleText("sas/sas-gee.lst"), LikelihoodKind::None,
                   "GEE Model Information", "independence model"},
        Unrankable{"GlimmixPseudoLikelihood",
                   Page("GLIMMIX", "   Fit Statistics\n\n   -2 Res Log Pseudo-Likelihood   220.51\n"
                                   "   Generalized Chi-Square          40.20\n"),
                   LikelihoodKind::Pseudo, "Fit Statistics", "METHOD=LAPLACE"},
        Unrankable{"SurveyWeights",
                   Page("SURVEYLOGISTIC",
                        "   Model Fit Statistics\n\n   AIC   45.2  16.1\n   -2 Log L  43.2  10.1\n"),
                   LikelihoodKind::Pseudo, "Model Fit Statistics", "weighted pseudo-likelihood"}),
    [](const auto& info) { return std::string(info.param.name); });

TEST(SasOutput, FitStatisticsWithoutAnAicAreRefusedWithWhere) {
  const std::string text = Page("Mixed", "   Fit Statistics\n\n   -2 Res Log Likelihood   1786.5\n");
  Diagnostics diagnostics;
  try {
    kSas.Read(text, "fits.lst", diagnostics);
    FAIL() << "read fit statistics without an AIC";
  } catch (const DataError& error) {
    const std::string where = "fits.lst:" + std::to_string(LineOf(text, "Fit Statistics")) + ": ";
    EXPECT_EQ(std::string(error.what()).rfind(where, 0), 0u) << error.what();
  }
}

}  // namespace
}  // namespace drav::selection::fits
