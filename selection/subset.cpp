#include "selection/subset.hpp"

#include "selection/number_text.hpp"

namespace drav::selection {

std::vector<bool> SubsetMask(const CandidateTable& table, const std::vector<RankedSet>& ranked,
                             const SubsetOptions& options) {
  std::vector<bool> keep(table.models.size(), false);
  for (const RankedSet& set : ranked) {
    for (const RankedModel& m : set.models) {
      const bool near = !options.deltaMax || m.delta <= *options.deltaMax;
      const bool high = !options.top || m.rank <= static_cast<std::int64_t>(*options.top);
      keep[m.index] = near && high;  // the best model has delta 0 and rank 1: always kept
    }
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
