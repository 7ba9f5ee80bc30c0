#include "selection/input/table_warnings.hpp"

#include <algorithm>
#include <cmath>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/message_text.hpp"
#include "selection/parallel/bucket_sort.hpp"

namespace drav::selection {

void WarnOfDifferentN(const CandidateTable& table, Diagnostics& diagnostics) {
  std::vector<const Candidate*> first(table.sets.size(), nullptr);
  std::vector<bool> warned(table.sets.size(), false);
  for (const Candidate& c : table.models) {
    if (std::isnan(c.n)) continue;
    const Candidate*& seen = first[c.set];
    if (!seen) {
      seen = &c;
    } else if (seen->n != c.n && !warned[c.set]) {
      warned[c.set] = true;
      const std::string set = table.sets.size() > 1 ? " of set " + Quoted(table.sets[c.set]) : "";
      diagnostics.Warn("the models" + set + " were fitted to different numbers of observations (n = " +
                           Shown(seen->n) + " on line " + std::to_string(seen->line) + ", n = " + Shown(c.n) +
                           " on line " + std::to_string(c.line) + "); their criteria are not comparable",
                       table.source);
    }
  }
}

void WarnOfRepeatedNames(CandidateTable& table, Diagnostics& diagnostics, unsigned threads) {
  // Hashes sorted side by side find the repeats of a million names in a
  // fraction of the time a hash map of the names takes.
  std::vector<std::pair<std::size_t, std::size_t>> hashes(table.models.size());  // (hash of set and name, model)
  InTwoHalves(hashes.size(), ThreadsFor(hashes.size(), threads), [&table, &hashes](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      const Candidate& c = table.models[i];
      hashes[i] = {std::hash<std::string_view>()(c.model) ^ (std::size_t{c.set} * 0x9E3779B97F4A7C15ULL), i};
    }
  });
  SortByKey(hashes, [](const std::pair<std::size_t, std::size_t>& h) { return std::uint64_t{h.first}; }, threads);
  std::size_t repeats = 0;
  std::pair<std::size_t, std::size_t> first;  // the earliest repeat in file order
  for (std::size_t i = 1; i < hashes.size(); ++i) {
    if (hashes[i].first != hashes[i - 1].first) continue;
    // Equal hashes; compare with every earlier model of the run.
    for (std::size_t j = i; j-- > 0 && hashes[j].first == hashes[i].first;) {
      const Candidate& a = table.models[hashes[j].second];
      const Candidate& b = table.models[hashes[i].second];
      if (a.set != b.set || a.model != b.model) continue;
      if (repeats++ == 0 || hashes[i].second < first.second) first = {hashes[j].second, hashes[i].second};
      break;
    }
  }
  if (repeats == 0) return;
  table.repeatedNames = true;
  const Candidate& a = table.models[first.first];
  std::string warning = "the model name " + Quoted(a.model) + " is given twice (lines " + std::to_string(a.line) +
                        " and " + std::to_string(table.models[first.second].line) + ")";
  if (repeats > 1) warning += ", and " + std::to_string(repeats - 1) + " more names are repeated";
  diagnostics.Warn(warning, table.source);
}

void WarnOfEmptySet(const CandidateTable& table, std::optional<std::int64_t> firstWithout, Diagnostics& diagnostics) {
  if (!firstWithout) return;
  diagnostics.Warn("line " + std::to_string(*firstWithout) + " has no value in column " + Quoted(table.byName) +
                       "; such models are a set of their own",
                   table.source);
}

}  // namespace drav::selection
