// SAS listings read into records: several procedures in one file, every
// number held to R's fits of the same data as SAS works them out (the full
// log likelihood, not GENMOD's kernel; REML's AIC of covariance parameters
// and its BIC by subjects), page headers inside tables. What a user sees of
// the kinds, warnings and refusals is in tests/golden/fits-sas.batch.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include "tests/selection/fits/expected_records.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing_support::SampleText;
const OutputReader& kSas = ReaderOf("SAS");

TEST(SasOutput, EveryNumberOfSixFitsIsRs) {
  Diagnostics strict(true);  // nothing here is in doubt
  testing::ExpectRecords(kSas.Read(SampleText("sas/sas-listing.lst"), "sas/sas-listing.lst", strict),
                         "sas/sas-listing.expected");
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

}  // namespace
}  // namespace drav::selection::fits
