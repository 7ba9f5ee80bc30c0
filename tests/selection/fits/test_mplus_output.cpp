// Mplus outputs written from the layout of its user's guide's examples
// (tests/golden/fits/samples/mplus/README); the CFA's numbers are those
// lavaan computes with mimic = "Mplus" for the same model.
#include "selection/fits/output_readers.hpp"

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "tests/selection/fits/expected_fit.hpp"
#include "tests/selection/fits/sample_file.hpp"

namespace drav::selection::fits {
namespace {

using testing_support::ExpectedFit;
constexpr double NA = kUnknown;
constexpr auto ML = LikelihoodKind::ML;
const OutputReader& kMplus = ReaderOf("Mplus");

class MplusSample : public ::testing::TestWithParam<ExpectedFit> {};

TEST_P(MplusSample, ReadsTheFittedModelOnly) {
  const std::string text = testing_support::SampleText(GetParam().file);
  Diagnostics diagnostics;
  testing_support::ExpectFit(kMplus.Read(text, GetParam().file, diagnostics), GetParam());
}

INSTANTIATE_TEST_SUITE_P(
    Samples, MplusSample,
    ::testing::Values(
        ExpectedFit{"Cfa", "mplus/cfa-ml.out", 0, "Three abilities, nine tests", 1, -3737.744927, 30, 301, 7535.49},
        // Two groups: n is the total sample size; under MLR the H0 value is
        // the unscaled log-likelihood, as lavaan's logLik() is.
        ExpectedFit{"GroupsMlr", "mplus/groups-mlr.out", 0, "Three abilities by school, robust", 1, -3706.323256, 48,
                    301, 7508.647},
        // A mixture: TECH11's and TECH14's H0 values, and the random starts'
        // other maxima, belong to other solutions and are not read.
        ExpectedFit{"MixtureWithTech11And14", "mplus/lca-three-classes.out", 0, "Three latent classes of six symptoms", 1,
                    -3567.987, 20, 1000, 7175.974},
        // Fortran's D exponents; seven digits leave logLik open by 0.5.
        ExpectedFit{"FortranExponents", "mplus/large-sample.out", 0, "One factor, a register's worth of rows", 1,
                    -4127713, 12, 812344, 8255450, ML, 0.5}),
    [](const auto& info) { return std::string(info.param.name); });

// Runs that cannot be ranked, and runs one after another in one file, are
// in tests/golden/fits.batch and fits-mplus.batch.

// An empty text is refused: it has no line for a run to start on, and
// reading one there read past the end of its lines.
TEST(MplusOutput, EmptyTextHoldsNoRun) {
  Diagnostics diagnostics;
  try {
    kMplus.Read("", "empty.out", diagnostics);
    FAIL() << "read";
  } catch (const DataError& error) {
    EXPECT_STREQ(error.what(), "empty.out: empty; no Mplus run in it");
  }
}

}  // namespace
}  // namespace drav::selection::fits
