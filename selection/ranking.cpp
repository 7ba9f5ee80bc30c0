#include "selection/ranking.hpp"

#include <algorithm>
#include <cmath>

namespace drav::selection {
namespace {

RankedSet RankOne(const CandidateTable& table, std::uint32_t set, const std::vector<std::size_t>& members,
                  const RankOptions& options) {
  // Sorted as (criterion, file position) pairs: ties fall in file order, and
  // the sort walks a compact array rather than the candidates themselves.
  std::vector<std::pair<double, std::size_t>> order;
  order.reserve(members.size());
  for (std::size_t index : members) order.emplace_back(table.models[index].value, index);
  std::sort(order.begin(), order.end());
  std::vector<RankedModel> models(order.size());
  const double best = order.front().first;
  // Likelihoods are exp(-delta/2) of differences, never of the criteria
  // themselves, so a set of criteria near 1e6 does not underflow to 0/0.
  double sum = 0;
  for (std::size_t i = 0; i < order.size(); ++i) {
    RankedModel& m = models[i];
    m.index = order[i].second;
    m.delta = order[i].first - best;
    m.likelihood = std::exp(-m.delta / 2);
    sum += m.likelihood;
  }
  double cumulative = 0;
  bool reached = false;
  for (std::size_t i = 0; i < models.size(); ++i) {
    RankedModel& m = models[i];
    m.rank = static_cast<std::int64_t>(i + 1);
    m.weight = m.likelihood / sum;
    cumulative += m.weight;
    m.cumulative = std::min(cumulative, 1.0);
    // exp(delta/2) rather than w_best / w: the weight of a model far behind
    // underflows to 0 long before this ratio overflows to infinity.
    m.evidenceRatio = std::exp(m.delta / 2);
    m.inConfidenceSet = !reached;
    // The last model closes the set even when rounding leaves the sum a hair
    // under a level of 1.
    reached = reached || m.cumulative >= options.level;
  }
  if (options.fileOrder) {
    std::sort(models.begin(), models.end(),
              [](const RankedModel& a, const RankedModel& b) { return a.index < b.index; });
  }
  return {set, std::move(models)};
}

}  // namespace

std::vector<RankedSet> Rank(const CandidateTable& table, const RankOptions& options) {
  std::vector<std::vector<std::size_t>> members(table.sets.size());
  if (table.sets.size() == 1) members[0].reserve(table.models.size());
  for (std::size_t i = 0; i < table.models.size(); ++i) {
    if (!options.keep || (*options.keep)[i]) members[table.models[i].set].push_back(i);
  }
  std::vector<RankedSet> ranked;
  ranked.reserve(members.size());
  for (std::uint32_t set = 0; set < members.size(); ++set) {
    ranked.push_back(RankOne(table, set, members[set], options));
  }
  return ranked;
}

}  // namespace drav::selection
