#include "selection/models/subset.hpp"

#include <cmath>

#include "base/number_text.hpp"

namespace drav::selection {

std::vector<bool> SubsetMask(const CandidateTable& table, const std::vector<RankedSet>& ranked,
                             const SubsetOptions& options, Diagnostics& diagnostics) {
  std::vector<bool> keep(table.models.size(), false);
  for (const RankedSet& set : ranked) {
    // Models tied with the last one --top keeps are as good as it: which of
    // them the file lists first must not decide, so all are kept, as the
    // confidence set keeps its ties.
    double cut = INFINITY;
    std::size_t kept = 0;
    if (options.top) {
      for (const RankedModel& m : set.models) {
        if (m.rank == *options.top) cut = m.delta;
      }
    }
    for (const RankedModel& m : set.models) {
      const bool near = !options.deltaMax || m.delta <= *options.deltaMax;
      const bool high = !options.top || m.rank <= static_cast<std::int64_t>(*options.top) || m.delta <= cut;
      keep[m.index] = near && high;  // the best model has delta 0 and rank 1: always kept
      kept += options.top && m.delta <= cut && m.rank > *options.top && near;
    }
    if (kept == 0) continue;
    std::string note = "--top " + std::to_string(*options.top) + " keeps " + std::to_string(kept) +
                       (kept == 1 ? " model" : " models") + " more";
    if (table.sets.size() > 1) note += " in set '" + table.sets[set.set] + "'";
    note += ", tied with the model ranked " + std::to_string(*options.top) + " at delta ";
    AppendShortest(note, cut);
    diagnostics.Note(note + "; tied models are kept together");
  }
  return keep;
}

std::string SubsetNote(const SubsetOptions& options, std::size_t kept, std::size_t total) {
  std::string what;
  if (options.deltaMax) {
    what = "delta <= ";
    AppendShortest(what, *options.deltaMax);
  }
  if (options.top) {
    if (!what.empty()) what += " and ";
    what += "rank <= ";
    what += std::to_string(*options.top);
  }
  std::string note = "Subset: the models with ";
  note += what;
  note += " (" + std::to_string(kept) + " of " + std::to_string(total) + "); weights computed again over them.";
  return note;
}

void MarkSubset(OutputTable& out, const SubsetOptions& options, std::size_t kept, std::size_t total) {
  if (!options.Any()) return;
  if (!out.note.empty()) out.note += '\n';
  out.note += SubsetNote(options, kept, total);
  if (options.deltaMax) out.setFields.emplace_back("delta_max", NumberCell(*options.deltaMax));
  if (options.top) out.setFields.emplace_back("top", CountCell(static_cast<double>(*options.top)));
}

}  // namespace drav::selection
