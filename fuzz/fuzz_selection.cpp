// Any bytes through the reader, the loader, the ranking and every writer:
// the only ways out are a table or one of the library's own errors, and the
// weights of a table add up to one.
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <string>

#include "base/errors.hpp"
#include "fuzz/fuzz_checks.hpp"
#include "selection/input/load_candidates.hpp"
#include "selection/models/ranking.hpp"
#include "selection/output/delimited_writer.hpp"
#include "selection/output/json_writer.hpp"
#include "selection/output/latex_writer.hpp"
#include "selection/output/markdown_writer.hpp"
#include "selection/output/table_layout.hpp"
#include "selection/output/text_writer.hpp"

using namespace drav::selection;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::FILE* file = std::tmpfile();
  std::fwrite(data, 1, size, file);
  std::rewind(file);
  try {
    Diagnostics diagnostics;
    DelimitedReader reader(file, "fuzz", diagnostics, {4096, 7});
    LoadOptions options;
    options.byColumn = size % 2 ? "set" : "";
    options.chat = 1.5;
    const CandidateTable table = LoadCandidates(reader, options, diagnostics);
    const auto ranked = Rank(table, {0.95, size % 3 == 0});
    for (const RankedSet& set : ranked) {
      double sum = 0;
      for (const RankedModel& m : set.models) sum += m.weight;
      FUZZ_CHECK(std::fabs(sum - 1) < 1e-9);
    }
    const OutputTable layout = SelectionLayout(table, ranked, 0.95);
    std::string text;
    OutputBuffer out([&](std::string_view chunk) { text += chunk; });
    WriteText(layout, 3, out);
    WriteDelimited(layout, ',', out);
    WriteMarkdown(layout, std::nullopt, out);
    WriteLatex(layout, 2, out);
    WriteJson(layout, out);
    FUZZ_CHECK(!text.empty());
  } catch (const DataError&) {
  } catch (const UsageError&) {
  }
  std::fclose(file);
  return 0;
}
