#pragma once
// Work over independent items split in two, the second half on a second
// thread where one may help: each item's result is computed alone, so the
// results are the same whichever thread computed them.
#include <cstddef>
#include <future>

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

}  // namespace drav::selection
