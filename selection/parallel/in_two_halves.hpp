#pragma once
// Work over independent items split in two, the second half on a second
// thread where one may help: each item's result is computed alone, so the
// results are the same whichever thread computed them.
#include <cstddef>
#include <future>

#include "selection/parallel/second_thread.hpp"

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
  // However the first half ends, the future of std::async waits for the
  // second as it goes.
  auto second = StartBeside([&work, half, count] { work(half, count); });
  work(std::size_t{0}, half);
  if (second.valid()) {
    second.get();
  } else {
    work(half, count);
  }
}

}  // namespace drav::selection
