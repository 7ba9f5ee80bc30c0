// The work that two threads share gives what one thread gives: sorting by
// buckets of a key, on criteria and hashes laid out as real files and as
// hostile ones lay them out, and putting items back in the table's order.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <utility>
#include <vector>

#include "selection/parallel/bucket_sort.hpp"

namespace drav::selection {
namespace {

using Criterion = std::pair<double, std::uint32_t>;

std::vector<Criterion> Numbered(const std::vector<double>& values) {
  std::vector<Criterion> items;
  for (std::uint32_t i = 0; i < values.size(); ++i) items.emplace_back(values[i], i);
  return items;
}

TEST(BucketSort, SortByKeyOrdersAsStdSort) {
  constexpr std::size_t kMany = 3 * kWorthSplitting + 17;
  std::mt19937_64 random(5);
  std::uniform_real_distribution<double> aic(1900, 2300);
  std::vector<std::vector<double>> cases;
  // Criteria of real fits: a few hundred units apart, many distinct.
  cases.emplace_back(kMany);
  for (double& v : cases.back()) v = aic(random);
  // Every model tied: one bucket, the order left to the indices.
  cases.emplace_back(kMany, 1234.5);
  // Few values far apart (most buckets empty), negatives, both zeros, the
  // infinities, and the extremes of the doubles.
  const double few[] = {-std::numeric_limits<double>::infinity(), -1e308, -3.5, -0.0, 0.0, 1e-300, 2.0,
                        1e308, std::numeric_limits<double>::infinity()};
  cases.emplace_back(kMany);
  for (double& v : cases.back()) v = few[random() % std::size(few)];
  // Zeros of both signs alone: equal, though their bits differ by one.
  cases.emplace_back(kMany);
  for (double& v : cases.back()) v = random() % 2 ? -0.0 : 0.0;
  // One outlier stretches the range: everything else falls in a bucket.
  cases.emplace_back(kMany);
  for (double& v : cases.back()) v = 2000 + (random() % 1000) * 1e-9;
  cases.back()[kMany / 3] = 1e9;
  for (const std::vector<double>& values : cases) {
    std::vector<Criterion> expected = Numbered(values);
    std::sort(expected.begin(), expected.end());
    for (const unsigned threads : {1u, 2u}) {
      std::vector<Criterion> items = Numbered(values);
      SortByKey(items, [](const Criterion& c) { return OrderedBits(c.first); }, threads);
      ASSERT_EQ(items.size(), expected.size());
      // Bits, not ==: -0 and 0 compare equal but must keep their places.
      EXPECT_TRUE(std::equal(items.begin(), items.end(), expected.begin(), [](const Criterion& a, const Criterion& b) {
        return std::signbit(a.first) == std::signbit(b.first) && a == b;
      })) << "threads " << threads << ", first value " << values.front();
    }
  }
  // Hashes: uniform over all 64 bits.
  std::vector<std::pair<std::size_t, std::size_t>> hashes(kMany);
  for (std::size_t i = 0; i < kMany; ++i) hashes[i] = {random() % (kMany / 2) * 0x9E3779B97F4A7C15ULL, i};
  auto expected = hashes;
  std::sort(expected.begin(), expected.end());
  SortByKey(hashes, [](const std::pair<std::size_t, std::size_t>& h) { return std::uint64_t{h.first}; }, 2);
  EXPECT_EQ(hashes, expected);
}

TEST(BucketSort, OrderByIndexAsASortByIndex) {
  struct Item {
    std::size_t index = 0;
    int payload = 0;
  };
  std::mt19937 random(3);
  // Every index of a range (placed), and every other one (sorted).
  for (const std::size_t step : {1u, 2u}) {
    std::vector<Item> items;
    for (std::size_t i = 0; i < 1000; ++i) items.push_back({40 + i * step, static_cast<int>(i)});
    std::shuffle(items.begin(), items.end(), random);
    OrderByIndex(items, [](const Item& item) { return item.index; });
    for (std::size_t i = 0; i < items.size(); ++i) {
      EXPECT_EQ(items[i].index, 40 + i * step);
      EXPECT_EQ(items[i].payload, static_cast<int>(i));
    }
  }
}

}  // namespace
}  // namespace drav::selection
