#pragma once
// Work over independent items split in two, the second half on a second
// thread where one may help: each item's result is computed alone, so the
// results are the same whichever thread computed them.
#include <algorithm>
#include <cstddef>
#include <future>
#include <vector>

namespace drav::selection {

// Calls work(begin, end) over [0, count): once where `threads` < 2 or the
// items are fewer than two, else for each half, both at once.
template <class Work>
void InTwoHalves(std::size_t count, unsigned threads, const Work& work) {
  if (threads < 2 || count < 2) {
    work(std::size_t{0}, count);
    return;
  }
  const std::size_t half = count / 2;
  auto second = std::async(std::launch::async, [&work, half, count] { work(half, count); });
  work(std::size_t{0}, half);
  second.get();
}

// Sorts as std::sort does, each half on its own thread and then the two
// merged, where a second thread may help and the items are many. Items that
// no two compare equal come out in the one order std::sort gives them.
template <class Item>
void SortInTwoHalves(std::vector<Item>& items, unsigned threads) {
  constexpr std::size_t kWorthSplitting = 1 << 16;
  if (threads < 2 || items.size() < kWorthSplitting) {
    std::sort(items.begin(), items.end());
    return;
  }
  const auto middle = items.begin() + static_cast<std::ptrdiff_t>(items.size() / 2);
  auto second = std::async(std::launch::async, [&items, middle] { std::sort(middle, items.end()); });
  std::sort(items.begin(), middle);
  second.get();
  std::inplace_merge(items.begin(), middle, items.end());
}

}  // namespace drav::selection
