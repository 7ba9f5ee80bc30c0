#pragma once
// Work over independent items split in two, the second half on a second
// thread where one may help: each item's result is computed alone, so the
// results are the same whichever thread computed them.
#include <algorithm>
#include <cstddef>
#include <future>
#include <vector>

namespace drav::selection {

// Items below this many are not worth a second thread when each is cheap
// (a model's hash or likelihood): starting one costs more than it saves.
inline constexpr std::size_t kWorthSplitting = std::size_t{1} << 16;

// The threads to use on `items` cheap items: `threads` for many, else one.
inline unsigned ThreadsFor(std::size_t items, unsigned threads) { return items >= kWorthSplitting ? threads : 1; }

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
  if (ThreadsFor(items.size(), threads) < 2) {
    std::sort(items.begin(), items.end());
    return;
  }
  const auto middle = items.begin() + static_cast<std::ptrdiff_t>(items.size() / 2);
  auto second = std::async(std::launch::async, [&items, middle] { std::sort(middle, items.end()); });
  std::sort(items.begin(), middle);
  second.get();
  std::inplace_merge(items.begin(), middle, items.end());
}

// Puts items in the order of their distinct indices (index(item) is a
// model's place in the table), as a sort by index would. Where the indices
// are every number of a range, as a set's models are when the table is one
// set, each item goes straight to its place; else they are sorted.
template <class Item, class Index>
void OrderByIndex(std::vector<Item>& items, const Index& index) {
  if (items.empty()) return;
  const auto [low, high] = std::minmax_element(items.begin(), items.end(), [&index](const Item& a, const Item& b) {
    return index(a) < index(b);
  });
  const std::size_t first = index(*low);
  if (index(*high) - first + 1 == items.size()) {
    std::vector<Item> placed(items.size());
    for (const Item& item : items) placed[index(item) - first] = item;
    items = std::move(placed);
    return;
  }
  std::sort(items.begin(), items.end(), [&index](const Item& a, const Item& b) { return index(a) < index(b); });
}

}  // namespace drav::selection
