#pragma once
// Records handed from the thread that reads a file and finds its records
// to the threads that split them and make models of them, a batch at a
// time. A reading error travels in its place, after the records before it,
// and so does each note the reading found, before the record it was found
// with: the thread that uses the records tells the notes as it comes to
// them, and none found past the first fault, so that what is said is what
// reading on one thread says, however the work was shared.
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <exception>
#include <mutex>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/diagnostics.hpp"
#include "selection/input/record_split.hpp"

namespace drav::selection {

// Records as the file has them, split into fields by whichever thread
// uses them.
struct RecordBatch {
  std::string bytes;                      // the records' text, one after another
  std::vector<std::uint32_t> recordEnds;  // where each record ends in bytes
  std::vector<std::int64_t> lines;        // each record's line
  RecordSyntax syntax;                    // how the records before escapedFrom split
  std::size_t escapedFrom = 0;            // from this record on, \" is a quote (write.table)
  bool last = false;                      // no batch follows
  std::exception_ptr error;               // with `last`: what stopped the reading
  // Notes found while reading, each with the record it comes before
  // (Records() for those found after the last record), in file order.
  std::vector<std::pair<std::size_t, Diagnostic>> notes;

  std::size_t Records() const { return lines.size(); }
  // Tells the notes that come before records [begin, end) of the batch
  // (end Records() + 1 for those after the last).
  void TellNotes(std::size_t begin, std::size_t end, Diagnostics& diagnostics) const {
    for (const auto& [before, note] : notes) {
      if (before >= begin && before < end) diagnostics.Add(note);
    }
  }
  void Add(std::string_view record, std::int64_t line, RecordSyntax recordSyntax) {
    if (Records() == 0) syntax = recordSyntax;
    if (recordSyntax.backslashEscapes == syntax.backslashEscapes) escapedFrom = Records() + 1;
    bytes.append(record);
    recordEnds.push_back(static_cast<std::uint32_t>(bytes.size()));
    lines.push_back(line);
  }
  // Record r's fields, as the reader splits them: views into `bytes` or
  // into `unquoted`, valid until `unquoted` is next used.
  void Fields(std::size_t r, std::string& unquoted, std::vector<std::string_view>& fields) const {
    const std::uint32_t begin = r == 0 ? 0 : recordEnds[r - 1];
    RecordSyntax recordSyntax = syntax;
    if (r >= escapedFrom) recordSyntax.backslashEscapes = true;
    SplitRecord(std::string_view(bytes).substr(begin, recordEnds[r] - begin), recordSyntax, unquoted, fields);
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
  // is dropped. Waits while enough batches are waiting. Where the batch
  // cannot be queued (no memory for it), the using side is handed that
  // fault instead, as the last batch, and the reading side is done.
  bool Push(RecordBatch batch) {
    std::unique_lock lock(mutex_);
    room_.wait(lock, [this] { return stopped_ || waiting_.size() < kDepth; });
    if (stopped_) return false;
    try {
      waiting_.push_back(std::move(batch));
    } catch (...) {
      failed_ = std::current_exception();
      ready_.notify_one();
      return false;
    }
    ready_.notify_one();
    return true;
  }

  // The using side: the next batch, waiting for it.
  RecordBatch Pop() {
    std::unique_lock lock(mutex_);
    ready_.wait(lock, [this] { return !waiting_.empty() || failed_; });
    if (waiting_.empty()) {
      RecordBatch failed;
      failed.last = true;
      failed.error = failed_;
      return failed;
    }
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
  std::exception_ptr failed_;  // why a batch could not be queued; none follow it
};

}  // namespace drav::selection
