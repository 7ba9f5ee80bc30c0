#pragma once
// Text on its way out: writers append to it, and it hands what has gathered
// to its sink a megabyte at a time, so a table of a million models never
// stands in memory whole.
#include <functional>
#include <string>
#include <string_view>

namespace drav::selection {

class OutputBuffer {
 public:
  using Sink = std::function<void(std::string_view)>;
  // `threads` is how many may format rows at once: 2 where a second core
  // is free for it, else 1.
  explicit OutputBuffer(Sink sink, unsigned threads = 1) : sink_(std::move(sink)), threads_(threads) {
    text_.reserve(kFlushBytes + 4096);
  }
  OutputBuffer(const OutputBuffer&) = delete;
  OutputBuffer& operator=(const OutputBuffer&) = delete;

  // What writers append to.
  std::string& Text() { return text_; }
  unsigned Threads() const { return threads_; }
  // Hands the text to the sink when enough has gathered; writers call it
  // once per row.
  void FlushIfFull() {
    if (text_.size() >= kFlushBytes) Flush();
  }
  void Flush() {
    if (!text_.empty()) sink_(text_);
    text_.clear();
  }
  // Hands `text` to the sink after what has gathered, without copying it.
  void Put(std::string_view text) {
    Flush();
    if (!text.empty()) sink_(text);
  }

 private:
  static constexpr std::size_t kFlushBytes = std::size_t{1} << 20;
  Sink sink_;
  unsigned threads_;
  std::string text_;
};

}  // namespace drav::selection
