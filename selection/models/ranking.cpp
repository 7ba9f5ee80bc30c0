#include "selection/models/ranking.hpp"

#include <algorithm>
#include <cmath>

#include "selection/parallel/bucket_sort.hpp"

namespace drav::selection {
namespace {

// A set's models as (criterion, file position) pairs. Sorted, ties fall in
// file order, and the sort walks a compact array rather than the candidates
// themselves.
using Order = std::vector<std::pair<double, std::uint32_t>>;

RankedSet RankOne(std::uint32_t set, Order order, const RankOptions& options) {
  SortByKey(order, [](const std::pair<double, std::uint32_t>& m) { return OrderedBits(m.first); }, options.threads);
  std::vector<RankedModel> models(order.size());
  const double best = order.front().first;
  // Likelihoods are exp(-delta/2) of differences, never of the criteria
  // themselves, so a set of criteria near 1e6 does not underflow to 0/0.
  // Each is computed alone, on either thread; they are summed in rank
  // order on one, so the sum is the same however many threads there are.
  std::vector<double> likelihood(order.size());
  InTwoHalves(order.size(), ThreadsFor(order.size(), options.threads), [&](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) {
      RankedModel& m = models[i];
      m.index = static_cast<std::uint32_t>(order[i].second);
      m.rank = static_cast<std::uint32_t>(i + 1);
      m.delta = order[i].first - best;
      likelihood[i] = m.Likelihood();
    }
  });
  double sum = 0;
  for (const double l : likelihood) sum += l;
  double cumulative = 0;
  bool reached = false;
  double last = 0;  // the criterion of the set's last member
  for (std::size_t i = 0; i < models.size(); ++i) {
    RankedModel& m = models[i];
    m.weight = likelihood[i] / sum;
    cumulative += m.weight;
    m.cumulative = std::min(cumulative, 1.0);
    // A model tied with the set's last member is as good as it, so it is in
    // too: which of two equal models the file lists first must not decide.
    m.inConfidenceSet = !reached || order[i].first == last;
    if (m.inConfidenceSet) last = order[i].first;
    // The last model closes the set even when rounding leaves the sum a hair
    // under a level of 1.
    reached = reached || m.cumulative >= options.level;
  }
  if (options.fileOrder) OrderByIndex(models, [](const RankedModel& m) { return std::size_t{m.index}; });
  return {set, std::move(models)};
}

}  // namespace

std::vector<RankedSet> Rank(const CandidateTable& table, const RankOptions& options) {
  std::vector<Order> orders(table.sets.size());
  if (orders.size() == 1) orders[0].reserve(table.models.size());
  for (std::size_t i = 0; i < table.models.size(); ++i) {
    if (options.keep && !(*options.keep)[i]) continue;
    const Candidate& c = table.models[i];
    orders[c.set].emplace_back(c.value, static_cast<std::uint32_t>(i));
  }
  std::vector<RankedSet> ranked;
  ranked.reserve(orders.size());
  for (std::uint32_t set = 0; set < orders.size(); ++set) {
    ranked.push_back(RankOne(set, std::move(orders[set]), options));
  }
  return ranked;
}

}  // namespace drav::selection
