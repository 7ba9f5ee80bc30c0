// Any bytes as a statistics program's printed output: through the sniffing
// and the reader it picks, as `drav-report fits` reads a file, and through
// every reader on its own, so that a text one reader claims first still
// reaches the others. What comes back is listed and ranked as `fits` and
// `table --fits` do. The only ways out are records or the library's own
// refusals; every record names the file, a known program and a line of the
// text, and a ranking's weights add up to one.
#include <cmath>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/errors.hpp"
#include "fuzz/fuzz_checks.hpp"
#include "selection/fits/fit_candidates.hpp"
#include "selection/fits/fits_layout.hpp"
#include "selection/fits/notebook_text.hpp"
#include "selection/fits/output_readers.hpp"
#include "selection/fits/printed_text.hpp"
#include "selection/models/ranking.hpp"
#include "selection/output/delimited_writer.hpp"
#include "selection/output/text_writer.hpp"

using namespace drav::selection;
using namespace drav::selection::fits;

namespace {

bool KnownProgram(std::string_view program) {
  for (const OutputReader& reader : OutputReaders()) {
    if (reader.program == program) return true;
  }
  return false;
}

// A record's line is one of the text's, or 0 where none is named; a
// notebook's records count the lines its cells printed.
void CheckRecords(const std::vector<FitRecord>& records, const std::string& source, std::int64_t lines) {
  for (const FitRecord& r : records) {
    FUZZ_CHECK(r.source == source);
    FUZZ_CHECK(KnownProgram(r.program));
    FUZZ_CHECK(r.line >= 0);
    FUZZ_CHECK(lines < 0 || r.line <= lines);
    FUZZ_CHECK(!(r.logLikHalfUnit < 0));
  }
}

// The records listed as `fits` lists them, then ranked as `table --fits`
// ranks them, with the options varied by the input's size.
void ListAndRank(const std::vector<FitRecord>& records, std::size_t size) {
  std::string text;
  OutputBuffer out([&](std::string_view chunk) { text += chunk; });
  const OutputTable listing = FitsLayout(records, size % 2 == 0);
  WriteText(listing, 3, out);
  WriteDelimited(listing, ',', out);
  FUZZ_CHECK(!text.empty());

  LoadOptions options;
  if (size % 3 == 1) options.criterion = Criterion::AIC;
  if (size % 5 == 2) options.roles.n = "100";
  Diagnostics diagnostics;
  const CandidateTable table = CandidatesFromFits(records, options, diagnostics);
  FUZZ_CHECK(table.models.size() == records.size());
  // What ranks is held to what a table's row is.
  for (const Candidate& c : table.models) {
    FUZZ_CHECK(std::isfinite(c.value));
    FUZZ_CHECK(!(c.k < 0));
  }
  const auto ranked = Rank(table, {0.95, false});
  for (const RankedSet& set : ranked) {
    double sum = 0;
    for (const RankedModel& m : set.models) sum += m.weight;
    FUZZ_CHECK(std::fabs(sum - 1) < 1e-9);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string source = "fuzz.out";
  const bool notebook = LooksLikeNotebook(text);
  const auto lines = static_cast<std::int64_t>(SplitLines(text).size());

  // As the command reads a file: sniffed, read, listed and ranked.
  try {
    Diagnostics diagnostics(size % 7 == 3);
    const std::vector<FitRecord> records = ReadProgramOutput(text, source, diagnostics);
    CheckRecords(records, source, notebook ? -1 : lines);
    ListAndRank(records, size);
  } catch (const DataError&) {
  } catch (const UsageError&) {
  }

  // Each reader on its own, claimed or not: none may fail otherwise than
  // by refusing.
  for (const OutputReader& reader : OutputReaders()) {
    reader.LooksLike(text);
    try {
      Diagnostics diagnostics;
      const std::vector<FitRecord> records = reader.Read(text, source, diagnostics);
      CheckRecords(records, source, lines);
      for (const FitRecord& r : records) FUZZ_CHECK(r.program == reader.program);
    } catch (const DataError&) {
    } catch (const UsageError&) {
    }
  }
  return 0;
}
