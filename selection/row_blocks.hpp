#pragma once
// The rows of a table formatted block by block, and with a second thread
// every other block at the same time: the blocks go out in their order, so
// the output is the same byte for byte however many threads made it.
#include <algorithm>
#include <cstddef>
#include <future>
#include <string>

#include "selection/output_buffer.hpp"

namespace drav::selection {

// Rows a block: enough that starting a thread costs nothing beside it, few
// enough that a table of a hundred thousand models still splits.
inline constexpr std::size_t kRowBlock = 16384;

// Appends rows [first, last) to `out` by `format(begin, end, text)`, which
// appends rows [begin, end) to `text` and must be safe to run on two
// threads at once (it reads the table and writes only its `text`).
template <class Format>
void WriteRows(std::size_t first, std::size_t last, OutputBuffer& out, const Format& format) {
  if (out.Threads() < 2 || last - first < 2 * kRowBlock) {
    for (std::size_t begin = first; begin < last; begin += kRowBlock) {
      format(begin, std::min(last, begin + kRowBlock), out.Text());
      out.Spill();
    }
    return;
  }
  const auto launch = [&format, last](std::size_t begin) {
    return std::async(std::launch::async, [&format, begin, last] {
      std::string text;
      format(begin, std::min(last, begin + kRowBlock), text);
      return text;
    });
  };
  // This thread takes the even blocks, the other the odd ones.
  std::future<std::string> odd = launch(first + kRowBlock);
  for (std::size_t begin = first; begin < last; begin += 2 * kRowBlock) {
    format(begin, std::min(last, begin + kRowBlock), out.Text());
    out.Spill();
    if (begin + kRowBlock >= last) break;
    std::string text = odd.get();
    if (begin + 3 * kRowBlock < last) odd = launch(begin + 3 * kRowBlock);
    out.Text() += text;
    out.Spill();
  }
}

}  // namespace drav::selection
