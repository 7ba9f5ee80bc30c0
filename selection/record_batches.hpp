#pragma once
// Records handed from the thread that reads and splits a file to the thread
// that makes models of them, a batch at a time: reading on one core while
// the other converts numbers. A reading error travels in its place, after
// the records before it, so that the first fault of the file is told first
// however the work was shared.
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace drav::selection {

struct RecordBatch {
  std::string bytes;                     // the fields, one after another
  std::vector<std::uint32_t> fieldEnds;  // where each field ends in bytes
  std::vector<std::uint32_t> recordEnds; // where each record's fields end in fieldEnds
  std::vector<std::int64_t> lines;       // each record's line
  bool last = false;                     // no batch follows
  std::exception_ptr error;              // with `last`: what stopped the reading

  std::size_t Records() const { return lines.size(); }
  void Add(std::span<const std::string_view> fields, std::int64_t line) {
    for (std::string_view field : fields) {
      bytes.append(field);
      fieldEnds.push_back(static_cast<std::uint32_t>(bytes.size()));
    }
    recordEnds.push_back(static_cast<std::uint32_t>(fieldEnds.size()));
    lines.push_back(line);
  }
  // Record r's fields, as views into `bytes`.
  void Fields(std::size_t r, std::vector<std::string_view>& fields) const {
    const std::uint32_t firstField = r == 0 ? 0 : recordEnds[r - 1];
    std::uint32_t start = firstField == 0 ? 0 : fieldEnds[firstField - 1];
    fields.clear();
    for (std::uint32_t f = firstField; f < recordEnds[r]; ++f) {
      fields.emplace_back(bytes.data() + start, fieldEnds[f] - start);
      start = fieldEnds[f];
    }
  }
};

class RecordBatches {
 public:
  // A batch is full at this many records or bytes: enough to make the
  // handing over cheap. A record holds at most ReadLimits' 64 MiB, so a
  // batch stays well inside what its 32-bit offsets address.
  static constexpr std::size_t kRecords = 8192;
  static constexpr std::size_t kBytes = std::size_t{8} << 20;

  // The reading side: false once the using side has stopped, and the batch
  // is dropped. Waits while enough batches are waiting.
  bool Push(RecordBatch batch) {
    std::unique_lock lock(mutex_);
    room_.wait(lock, [this] { return stopped_ || waiting_.size() < kDepth; });
    if (stopped_) return false;
    waiting_.push_back(std::move(batch));
    ready_.notify_one();
    return true;
  }

  // The using side: the next batch, waiting for it.
  RecordBatch Pop() {
    std::unique_lock lock(mutex_);
    ready_.wait(lock, [this] { return !waiting_.empty(); });
    RecordBatch batch = std::move(waiting_.front());
    waiting_.pop_front();
    room_.notify_one();
    return batch;
  }

  // The using side wants no more: the reading side's next Push says so.
  void Stop() {
    std::lock_guard lock(mutex_);
    stopped_ = true;
    room_.notify_all();
  }

 private:
  static constexpr std::size_t kDepth = 4;
  std::mutex mutex_;
  std::condition_variable ready_, room_;
  std::deque<RecordBatch> waiting_;
  bool stopped_ = false;
};

}  // namespace drav::selection
