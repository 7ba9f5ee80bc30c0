#include "selection/models/importance.hpp"

#include <algorithm>

#include "selection/parallel/bucket_sort.hpp"

namespace drav::selection {

std::vector<Member> MembersInTableOrder(const RankedSet& set) {
  std::vector<Member> members;
  members.reserve(set.models.size());
  for (const RankedModel& m : set.models) members.push_back({m.index, m.weight, m.delta});
  OrderByIndex(members, [](const Member& m) { return m.index; });
  return members;
}

std::vector<TermImportance> Importance(const Coefficients& coefficients, const std::vector<Member>& members,
                                       bool fileOrder, unsigned threads) {
  std::vector<TermImportance> result(coefficients.terms.size());
  InTwoHalves(result.size(), threads, [&](std::size_t begin, std::size_t end) {
    for (std::size_t t = begin; t < end; ++t) {
      const auto& held = coefficients.terms[t].held;
      TermImportance term{t, 0, 0};
      for (const Member& m : members) {
        if (!held[m.index]) continue;
        term.importance += m.weight;
        ++term.models;
      }
      result[t] = term;
    }
  });
  if (!fileOrder) {
    std::stable_sort(result.begin(), result.end(),
                     [](const TermImportance& a, const TermImportance& b) { return a.importance > b.importance; });
  }
  return result;
}

std::optional<std::string> UnequalCountsWarning(const Coefficients& coefficients,
                                                const std::vector<TermImportance>& terms, std::size_t models) {
  const TermImportance* fewest = nullptr;
  const TermImportance* most = nullptr;
  for (const TermImportance& t : terms) {
    if (t.models == models) continue;
    if (!fewest || t.models < fewest->models) fewest = &t;
    if (!most || t.models > most->models) most = &t;
  }
  if (!fewest || most->models <= 2 * fewest->models) return std::nullopt;
  const auto name = [&](const TermImportance& t) { return "'" + coefficients.terms[t.term].name + "'"; };
  return "terms appear in unequal numbers of models (" + name(*most) + " in " + std::to_string(most->models) +
         ", " + name(*fewest) + " in " + std::to_string(fewest->models) + " of " + std::to_string(models) +
         "); their summed weights do not compare fairly unless each term is in as many models as the others";
}

}  // namespace drav::selection
