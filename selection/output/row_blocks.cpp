#include "selection/output/row_blocks.hpp"

#include <algorithm>
#include <array>
#include <condition_variable>
#include <exception>
#include <future>
#include <mutex>

#include "selection/parallel/second_thread.hpp"

namespace drav::selection {
namespace {

// The blocks of one call, handed out to two threads and written in order
// by the one that called. The text of a block waits in the slot of its
// number modulo kAhead until it is written.
class SharedBlocks {
 public:
  SharedBlocks(std::size_t first, std::size_t last, const RowFormat& format)
      : first_(first), last_(last), end_((last - first + kRowBlock - 1) / kRowBlock), format_(format) {}

  // The second thread: formats blocks until none is left or the calling
  // thread stops it.
  void FormatWhileNeeded() {
    std::unique_lock lock(mutex_);
    for (;;) {
      changed_.wait(lock, [this] { return stopped_ || taken_ >= end_ || CanTake(); });
      if (stopped_ || taken_ >= end_) return;
      const std::size_t block = taken_++;
      lock.unlock();
      std::exception_ptr fault = Format(block);
      lock.lock();
      Formatted(block, fault);
      changed_.notify_all();
    }
  }

  // The calling thread: writes each block in order as it is ready,
  // formatting the next untaken one itself while the one due is not. A
  // block that could not be formatted is thrown for when its turn comes,
  // so that the blocks before it go out as one thread would have written
  // them.
  void Write(OutputBuffer& out) {
    std::unique_lock lock(mutex_);
    while (written_ < end_) {
      const std::size_t slot = written_ % kAhead;
      if (slots_[slot].ready) {
        lock.unlock();
        out.Put(slots_[slot].text);
        slots_[slot].text.clear();
        lock.lock();
        slots_[slot].ready = false;
        ++written_;
        changed_.notify_all();
      } else if (CanTake()) {
        const std::size_t block = taken_++;
        lock.unlock();
        std::exception_ptr fault = Format(block);
        lock.lock();
        Formatted(block, fault);
      } else {
        changed_.wait(lock);
      }
    }
    if (fault_) std::rethrow_exception(fault_);
  }

  void Stop() {
    std::lock_guard lock(mutex_);
    stopped_ = true;
    changed_.notify_all();
  }

 private:
  // Blocks formatted and not yet written at most: the memory two threads
  // hold is a few blocks, whatever the table's length.
  static constexpr std::size_t kAhead = 4;

  // Whether a block may be taken now; with the lock held.
  bool CanTake() const { return taken_ < end_ && taken_ < written_ + kAhead; }

  std::exception_ptr Format(std::size_t block) {
    const std::size_t begin = first_ + block * kRowBlock;
    try {
      format_(begin, std::min(last_, begin + kRowBlock), slots_[block % kAhead].text);
    } catch (...) {
      return std::current_exception();
    }
    return nullptr;
  }

  // With the lock held: a block is ready, or the blocks end before it.
  void Formatted(std::size_t block, std::exception_ptr fault) {
    if (!fault) {
      slots_[block % kAhead].ready = true;
    } else if (block < end_) {
      end_ = block;
      fault_ = fault;
    }
  }

  const std::size_t first_, last_;
  std::size_t end_;  // the blocks to write: all, or those before the first that could not be formatted
  const RowFormat& format_;
  std::mutex mutex_;
  std::condition_variable changed_;
  // Each slot's text on a cache line of its own: the two threads append
  // to two slots at once, and a shared line would pass between the cores
  // at every append.
  struct alignas(64) Slot {
    std::string text;
    bool ready = false;
  };
  std::array<Slot, kAhead> slots_;
  std::size_t taken_ = 0;    // blocks handed to a thread
  std::size_t written_ = 0;  // blocks written
  bool stopped_ = false;
  std::exception_ptr fault_;  // why block end_ could not be formatted
};

}  // namespace

void WriteRowBlocks(std::size_t first, std::size_t last, OutputBuffer& out, const RowFormat& format) {
  if (out.Threads() < 2 || last - first < 2 * kRowBlock) {
    for (std::size_t begin = first; begin < last; begin += kRowBlock) {
      format(begin, std::min(last, begin + kRowBlock), out.Text());
      out.FlushIfFull();
    }
    return;
  }
  SharedBlocks blocks(first, last, format);
  // Where no second thread starts, Write formats every block itself.
  std::future<void> helper = StartBeside([&blocks] { blocks.FormatWhileNeeded(); });
  try {
    blocks.Write(out);
  } catch (...) {
    blocks.Stop();
    if (helper.valid()) helper.wait();
    throw;
  }
  if (helper.valid()) helper.get();
}

}  // namespace drav::selection
