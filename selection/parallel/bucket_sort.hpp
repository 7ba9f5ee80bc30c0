#pragma once
// Orders that std::sort gives, made faster where a second thread may help
// and the items are many: a sort by buckets of a key's high bits, half of
// the buckets sorted on each thread, and the placing of items by an index
// that fills a range.
#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

#include "selection/parallel/in_two_halves.hpp"

namespace drav::selection {

// A double's bits as an unsigned number that orders as the double does;
// -0 as 0, to which it compares equal.
inline std::uint64_t OrderedBits(double x) {
  if (x == 0) x = 0;
  const auto bits = std::bit_cast<std::uint64_t>(x);
  return (bits >> 63) != 0 ? ~bits : bits | (std::uint64_t{1} << 63);
}

// Sorts as std::sort does, where a second thread may help and the items
// are many: the items go to buckets by the high bits of key(item), a number
// that orders as the items do (key(a) < key(b) makes a < b, and a < b makes
// key(a) <= key(b)); then each thread sorts half of the buckets. Items that
// no two compare equal come out in the one order std::sort gives them.
template <class Item, class Key>
void SortByKey(std::vector<Item>& items, const Key& key, unsigned threads) {
  const std::size_t count = items.size();
  if (ThreadsFor(count, threads) < 2) {
    std::sort(items.begin(), items.end());
    return;
  }
  std::uint64_t low = std::numeric_limits<std::uint64_t>::max(), high = 0;
  for (const Item& item : items) {
    low = std::min(low, key(item));
    high = std::max(high, key(item));
  }
  // Some thousands of buckets: each a few hundred items, sorted in cache.
  constexpr int kBucketBits = 12;
  const int shift = std::max(0, static_cast<int>(std::bit_width(high - low)) - kBucketBits);
  const std::size_t buckets = static_cast<std::size_t>((high - low) >> shift) + 1;
  const auto bucketOf = [&key, low, shift](const Item& item) {
    return static_cast<std::size_t>((key(item) - low) >> shift);
  };
  // Each half of the items counted, then placed, by its own thread: the
  // first half's items of a bucket before the second's.
  const std::size_t half = count / 2;
  std::vector<std::size_t> places[2] = {std::vector<std::size_t>(buckets + 1), std::vector<std::size_t>(buckets + 1)};
  InTwoHalves(2, 2, [&](std::size_t part, std::size_t) {
    for (std::size_t i = part ? half : 0; i < (part ? count : half); ++i) ++places[part][bucketOf(items[i])];
  });
  std::size_t at = 0;
  for (std::size_t b = 0; b < buckets; ++b) {
    const std::size_t first = places[0][b], second = places[1][b];
    places[0][b] = at;
    places[1][b] = at + first;
    at += first + second;
  }
  std::vector<Item> sorted(count);
  InTwoHalves(2, 2, [&](std::size_t part, std::size_t) {
    std::vector<std::size_t>& next = places[part];
    for (std::size_t i = part ? half : 0; i < (part ? count : half); ++i) sorted[next[bucketOf(items[i])]++] = items[i];
  });
  // places[0][b] now ends the first half's items of bucket b; where each
  // bucket starts is where the one before it ends.
  std::vector<std::size_t> starts(buckets + 1, 0);
  for (std::size_t b = 0; b < buckets; ++b) starts[b + 1] = places[1][b];
  // The buckets split where half the items lie on either side.
  const std::size_t middle =
      static_cast<std::size_t>(std::lower_bound(starts.begin(), starts.end(), half) - starts.begin());
  InTwoHalves(2, 2, [&](std::size_t part, std::size_t) {
    for (std::size_t b = part ? middle : 0; b < (part ? buckets : middle); ++b) {
      std::sort(sorted.begin() + static_cast<std::ptrdiff_t>(starts[b]),
                sorted.begin() + static_cast<std::ptrdiff_t>(starts[b + 1]));
    }
  });
  items.swap(sorted);
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
